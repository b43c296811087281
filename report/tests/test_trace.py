"""The driver calls that a trace has of a failed check."""

from pathlib import Path

import pytest

from kestro_report import grammar
from kestro_report.errors import InputError
from kestro_report.records import Check, Line, Run, Section
from kestro_report.settings import Settings
from kestro_report.trace import MOST_KEPT, MOST_MISSED, MOST_SHOWN, Trace
from outputs_for_tests import BAD, END, FAILED_LINE, GOOD, kestro_report, reading

GET = "drv_voltage_get_value(inst_id=0xffffffff, voltage_id={id}) = {result}"


def get(number: int, result: str = "0x8111010f") -> str:
    return GET.format(id=number, result=result)


def printed(text: str) -> str:
    return f'# output: "{text}"'


def failed(text: str, code: int | None = 0x8111010F, run: int = 1, **values: str) -> Check:
    line = Line(1, text, "failed", values)
    return Check("a check", "failed", Section("", Run(run, "output"), 0), line, code=code)


@pytest.fixture
def written(tmp_path: Path):
    def write(*lines: str, end: str = "\n") -> Path:
        file = tmp_path / "a.trace"
        file.write_text("\n".join(lines) + end, encoding="utf-8", errors="surrogateescape")
        return file
    return write


@pytest.fixture(scope="module")
def rules() -> grammar.Grammar:
    return grammar.load()


# --- with the output in the trace -------------------------------------------------------------------------------------


def test_the_calls_between_two_lines_are_those_of_the_second(written):
    trace = Trace(written(get(1), printed("one"), get(2, "0x0"), get(3), printed("two"), get(4), printed("three")))
    assert trace.calls_of(failed("two")) == (get(2, "0x0"), get(3))


def test_a_line_without_calls_of_its_own_has_those_of_the_line_before(written):
    trace = Trace(written(get(1), printed("one"), printed("and so: failed"), get(2), printed("two")))
    assert trace.calls_of(failed("and so: failed")) == (get(1),)
    assert trace.calls_of(failed("two")) == (get(2),)


def test_lines_that_come_twice_are_taken_in_their_order(written):
    trace = Trace(written(get(1), printed("failed"), get(2), printed("failed")))
    assert [trace.calls_of(failed("failed")) for _ in range(2)] == [(get(1),), (get(2),)]


def test_a_line_that_the_trace_lacks_does_not_lose_the_place(written):
    trace = Trace(written(get(1), printed("one"), get(2), get(3), printed("two")))
    assert trace.calls_of(failed("one")) == (get(1),)
    assert trace.calls_of(failed("other")) == ()
    assert trace.calls_of(failed("two")) == (get(2), get(3))
    assert trace.notes() == [f"{trace.file}: no calls for 1 failed check: the trace does not show this line"]


def test_a_trace_of_another_run_is_not_searched_for_ever(written):
    trace = Trace(written(get(1), printed("one")))
    for number in range(MOST_MISSED):
        trace.calls_of(failed(f"other {number}"))
    assert trace.calls_of(failed("one")) == ()


def test_a_line_is_seen_as_the_reading_of_an_output_sees_it(written):
    trace = Trace(written(get(1), printed(r"\x1b[31mError: \xff\x01 \"a\\b\"\tc\x1b[0m\r"), get(2), printed(r"x\ry")))
    assert trace.calls_of(failed('Error: \\xff\\x01 "a\\b"\tc')) == (get(1),)
    assert trace.calls_of(failed("y")) == (get(2),)


def test_of_many_calls_those_with_the_result_come_first(written):
    calls = [get(number, "0x0") for number in range(50)]
    trace = Trace(written(*calls, get(50, "0x7"), get(51), *calls, printed("two")))
    assert trace.calls_of(failed("two")) == ("1 of 102 calls:", get(51))


def test_of_many_calls_without_the_result_those_that_failed_come_first(written):
    calls = [get(number, "0x0") for number in range(50)]
    trace = Trace(written(*calls, get(50, "0x7"), *calls, printed("two")))
    assert trace.calls_of(failed("two", None)) == ("1 of 101 calls:", get(50, "0x7"))


def test_no_more_calls_are_shown_than_a_person_reads(written):
    trace = Trace(written(*(get(number, "0x0") for number in range(5 * MOST_KEPT)), printed("two")))
    shown = trace.calls_of(failed("two"))
    assert len(shown) == MOST_SHOWN and shown[-1] == get(5 * MOST_KEPT - 1, "0x0")
    assert len(trace.group) <= MOST_KEPT


# --- without the output -----------------------------------------------------------------------------------------------


def test_the_only_call_with_the_result_is_the_one(written):
    trace = Trace(written(get(1, "0x0"), get(2), get(3, "0x7"), get(4, "0x0")))
    assert trace.calls_of(failed("Error")) == (get(2),)
    assert trace.notes() == []


def test_numbers_of_the_line_tell_calls_with_one_result_apart(written):
    trace = Trace(written(get(1), get(2), get(12), get(3)))
    assert trace.calls_of(failed("Error", id="2")) == (get(2),)


def test_the_operation_in_the_line_tells_calls_with_one_result_apart(written):
    other = "drv_voltage_get_desc(inst_id=0xffffffff, voltage_id=1, size=64) = 0x8111010f"
    trace = Trace(written(get(1), other))
    assert trace.calls_of(failed("drv_voltage_get_desc ret:0x8111010f")) == (other,)


def test_calls_with_one_result_are_taken_in_their_order(written):
    trace = Trace(written(get(1), get(1), get(1)))
    assert trace.calls_of(failed("Error"))[0] == "one of 3 calls with this result, likely the first:"
    assert trace.calls_of(failed("Error"))[0] == "one of 2 calls with this result, likely the first:"
    assert trace.calls_of(failed("Error")) == (get(1),)


def test_a_check_that_tells_no_result_has_no_calls_and_that_is_said(written):
    trace = Trace(written(get(1)))
    assert trace.calls_of(failed("Error", None)) == ()
    assert "no calls for 1 failed check: the line tells no driver's result; a trace that shows the output" in trace.notes()[0]


def test_a_result_that_no_call_has_is_said(written):
    trace = Trace(written(get(1, "0x7")))
    assert trace.calls_of(failed("Error")) == ()
    assert trace.notes() == [f"{trace.file}: no calls for 1 failed check: no call of the trace has the result that the line tells"]


def test_a_trace_is_of_one_run(written):
    trace = Trace(written(get(1)))
    assert trace.calls_of(failed("Error", run=2)) == ()
    assert "of another run than the first" in trace.notes()[0]


# --- every form of a line ---------------------------------------------------------------------------------------------


@pytest.mark.parametrize("line", [
    'drv_log_record(log_id=0, level=2, text="x) = 0x0 \\" (") = 0x8111010f', "@2 drv_a() = 0x8111010f",
    "# child: drv_a() = 0x8111010f", "# callback: @3 drv_a(x={a=[1 2] b=null}) = 0x8111010f y=[[1 2] [3]]",
    "nb_gpio_read(pin=3) = 2165375247 value=1", "drv_a(x=2.5) = 0x8111010f   # longer areas are shown up to 16 MiB"])
def test_every_form_of_a_call_is_read(written, line: str):
    assert Trace(written(line)).calls_of(failed("Error")) == (line,)


@pytest.mark.parametrize("line", ["", "   ", "# anything", "# event: drv_board_in_out_handler(slot_id=5, in=1)",
                                  "drv_a(x=1) ...", "drv_a() = void"])
def test_lines_that_are_no_failed_call_are_passed_over(written, line: str):
    assert Trace(written(line, get(1))).calls_of(failed("Error")) == (get(1),)


@pytest.mark.parametrize("line", ["no call", "drv_a(x=1) = ", "drv_a(x=1) = zero", "drv_a(x=1 = 0x0", "drv_a(x=1) =0x0",
                                  'drv_a(x="1) = 0x0', "\udcff\udcfe", "drv_a = 0x0", "Success: x"])
def test_a_broken_line_is_told_with_its_place(written, line: str):
    with pytest.raises(InputError, match=r"a\.trace: line 2: '.*' is no line of a trace; right is, as in"):
        Trace(written(get(1), line, get(2)))


def test_a_trace_may_end_anywhere(written):
    """A run that is killed leaves a line that is begun, or a part of one."""
    whole = f"{get(1)}\n{get(2)}"
    for length in range(len(get(1)) + 1, len(whole) + 1):
        trace = Trace(written(whole[:length], end=""))
        assert trace.calls_of(failed("Error")) == (get(1),), whole[:length]


def test_a_call_that_never_came_back_is_told(written):
    trace = Trace(written(get(1), "drv_mac_init(inst_id=0xffffffff)", end=""))
    assert trace.notes() == [f"{trace.file}: line 2: this call never came back: drv_mac_init(inst_id=0xffffffff)"]


def test_a_run_that_fails_nowhere_and_hangs_in_a_driver_is_told(tmp_path: Path):
    trace = Trace(tmp_path / "a.trace", is_to_come=True)
    trace.file.write_text(f"{get(1, '0x0')}\ndrv_mac_init()")
    assert trace.notes() == [f"{trace.file}: line 2: this call never came back: drv_mac_init()"]


@pytest.mark.parametrize("word", ["crash", "hang"])
def test_a_call_that_a_script_lets_end_the_run_is_told_too(written, word: str):
    trace = Trace(written(get(1), f"drv_mac_init() = {word}"))
    assert trace.notes() == [f"{trace.file}: line 2: this call never came back: drv_mac_init() = {word}"]


def test_an_empty_trace_has_no_calls(written):
    assert Trace(written(end="")).calls_of(failed("Error")) == ()


def test_hostile_lines_take_no_time(written):
    with pytest.raises(InputError):
        Trace(written("drv_a(" + '"\\' * 500_000))
    with pytest.raises(InputError):
        Trace(written("drv_a(" + "(" * 500_000))


@pytest.mark.parametrize("place", ["none.trace", "."])
def test_a_trace_that_cannot_be_read_is_told(tmp_path: Path, place: str):
    with pytest.raises(InputError, match="a trace that the probe wrote is wanted"):
        Trace(tmp_path / place)


# --- while it is written ----------------------------------------------------------------------------------------------


def test_a_trace_that_is_to_come_grows_while_it_is_read(tmp_path: Path):
    file = tmp_path / "a.trace"
    trace = Trace(file, is_to_come=True)
    with file.open("w", buffering=1) as stream:
        stream.write(f"{get(1)}\n{printed('one')}\n{get(2)}\n{printed('two')}\ndrv_a(x=1)")
        assert trace.calls_of(failed("two")) == (get(2),)
        stream.write(f" = 0x7\n{printed('three')}\n")
        assert trace.calls_of(failed("three")) == ("drv_a(x=1) = 0x7",)
    assert trace.notes() == []


def test_a_trace_without_output_that_is_to_come_grows_too(tmp_path: Path):
    file = tmp_path / "a.trace"
    trace = Trace(file, is_to_come=True)
    with file.open("w", buffering=1) as stream:
        stream.write(f"{get(1)}\n")
        assert trace.calls_of(failed("one")) == (get(1),)
        stream.write(f"{get(2)}\n")
        assert trace.calls_of(failed("two")) == (get(2),)


def test_the_trace_of_an_earlier_run_is_not_taken(written):
    trace = Trace(written(get(1)), is_to_come=True)
    assert trace.calls_of(failed("Error")) == ()
    assert "the run did not write this trace" in trace.notes()[0]


# --- in a report ------------------------------------------------------------------------------------------------------


def test_failed_checks_of_a_reading_have_their_calls(written, rules):
    trace = Trace(written(get(2, "0x0"), printed("Success: voltage 2 get and set value pass. original value 1000"),
                          get(3), printed(FAILED_LINE.strip())))
    _, recorder = reading(rules, BAD, settings=Settings(calls_of=trace.calls_of))
    assert [check.calls for check in recorder.checks] == [(), (get(3),)]


def test_the_summary_shows_the_calls(written, tmp_path: Path):
    (tmp_path / "output").write_text(BAD)
    ended = kestro_report("--trace", written(get(3)), tmp_path / "output")
    assert (ended.returncode, f"call: {get(3)}" in ended.stdout, ended.stderr) == (1, True, "")


def test_a_broken_trace_is_status_2(written, tmp_path: Path):
    (tmp_path / "output").write_text(GOOD)
    trace = written("no trace")
    ended = kestro_report("--trace", trace, tmp_path / "output")
    assert (ended.returncode, ended.stdout) == (2, "")
    assert ended.stderr == (f"kestro_report: {trace}: line 1: 'no trace' is no line of a trace; right is, as in "
                            "drv_mac_get_num(type_id=1) = 0x0 num=4\n")


def test_a_trace_goes_with_one_output(written, tmp_path: Path):
    (tmp_path / "output").write_text(GOOD + END)
    ended = kestro_report("--trace", written(get(1)), tmp_path / "output", tmp_path / "output")
    assert (ended.returncode, ended.stderr.startswith("kestro_report: --trace: a trace is of one run")) == (2, True)
