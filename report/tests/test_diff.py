"""What diff tells of two outputs, and its exit status."""

import html.parser
from pathlib import Path

import pytest
from small_outputs import END, output, temperature_line, written

from kestro_report import command_line
from kestro_report.comparison import (GONE, MISSING, NEW, NEW_FAILURE, NOW_FAILS, NOW_PASSES, STILL_FAILS,
                                      check_change, said_number)
from kestro_report.digest import CheckDigest
from kestro_report.errors import InputError
from kestro_report.records import Line
from kestro_report.units import Tolerances

SILENT = "Error: temperature get fail. temperature_id 1 ret 0x81110103\r\n"
PROMPT = "root@board:~# kestro_test {words}\n"


class Diff:
    """Runs diff on texts, and keeps what it said."""

    def __init__(self, tmp_path: Path, capsys: pytest.CaptureFixture) -> None:
        self.folder, self.capsys = tmp_path, capsys

    def __call__(self, before: str, after: str, *options: str) -> int:
        files = [written(self.folder / "before.txt", before), written(self.folder / "after.txt", after)]
        self.status = command_line.main(["diff", *options, *files])
        self.out, self.err = self.capsys.readouterr()
        return self.status


@pytest.fixture
def diff(tmp_path, capsys):
    return Diff(tmp_path, capsys)


def without(text: str, part: str) -> str:
    left = "".join(line for line in text.splitlines(True) if part not in line)
    assert left != text
    return left


# --- checks -------------------------------------------------------------------------------------------------------


def test_equal_outputs_have_nothing_to_tell(diff):
    assert diff(output(), output()) == 0
    assert diff.out.splitlines()[0].endswith("after.txt: nothing has changed") and len(diff.out.splitlines()) == 2


def test_what_passed_and_now_fails_is_worse(diff):
    good = output()
    assert diff(good, good.replace(temperature_line(1, 62), SILENT)) == 1
    assert "! temperature: temperature 1: passed and now fails\n" in diff.out
    assert "before: line 9: Success: get temperature_id 1" in diff.out
    assert "now: line 9: Error: temperature get fail. temperature_id 1 ret 0x81110103" in diff.out
    assert "run 1, beginning with 'voltage': passed -> FAILED" in diff.out and "1 of 1 run got worse" in diff.out
    assert diff.out.count("passed and now fails") == 1


def test_what_failed_and_now_passes_is_better(diff):
    good = output()
    assert diff(good.replace(temperature_line(1, 62), SILENT), good) == 0
    assert "  temperature: temperature 1: failed and now passes\n" in diff.out and "!" not in diff.out
    assert "nothing got worse, 1 change" in diff.out and "FAILED -> passed" in diff.out


def test_what_fails_as_before_is_told_and_not_worse(diff):
    bad = output().replace(temperature_line(1, 62), SILENT)
    assert diff(bad, bad) == 0
    assert "temperature 1: fails as before" in diff.out


def test_a_check_that_is_gone_is_worse(diff):
    good = output()
    assert diff(good, without(good, "voltage_id 2")) == 1
    assert "! voltage: voltage 2: passed and is not checked now\n" in diff.out and "now: not there" in diff.out
    assert "! voltage: voltage 2 1V0 processor core: is not measured now" in diff.out


def test_a_new_check_is_told_and_a_new_failure_is_worse(diff):
    good = output()
    assert diff(without(good, "voltage_id 2"), good) == 0
    assert "  voltage: voltage 2: is checked now, and was not" in diff.out
    assert diff(without(good, "temperature_id 1"), good.replace(temperature_line(1, 62), SILENT)) == 1
    assert "! temperature: temperature 1: was not checked and now fails" in diff.out


P, F, U = (1, 0, 0), (0, 1, 0), (0, 0, 1)


@pytest.mark.parametrize("before, after, kind", [
    (P, P, None), (P, F, NOW_FAILS), (P, U, MISSING), (P, None, MISSING),
    (F, P, NOW_PASSES), (F, F, STILL_FAILS), (F, U, GONE), (F, None, GONE),
    (U, P, None), (U, F, NEW_FAILURE), (U, U, None), (U, None, GONE),
    (None, P, NEW), (None, F, NEW_FAILURE), (None, U, None),
    ((3, 0, 0), (2, 0, 0), MISSING), ((3, 0, 0), (2, 1, 0), NOW_FAILS), ((2, 1, 0), (1, 2, 0), NOW_FAILS),
    ((2, 1, 0), (1, 1, 0), MISSING), ((2, 1, 0), (2, 1, 0), STILL_FAILS), ((1, 2, 0), (2, 1, 0), STILL_FAILS),
    ((0, 1, 0), (0, 2, 0), NEW_FAILURE), ((2, 1, 0), (3, 0, 0), NOW_PASSES), ((2, 0, 0), (3, 0, 0), None)])
def test_a_check_changes_by_how_often_it_passed_and_failed(before, after, kind):
    line = Line(1, "a line", "passed")
    digests = [CheckDigest(*counts, line) if counts else None for counts in (before, after)]
    change = check_change(("section", "name"), *digests)
    assert (change.kind if change else None) == kind


def test_a_line_that_nobody_knows_is_told_when_it_is_new(diff):
    good, text = output(), "the hamster has left the wheel\n"
    assert diff(good, good.replace(END, text + END)) == 0
    assert "line 10: the hamster has left the wheel: is a line that nobody knows" in diff.out
    assert diff(good, good.replace(END, text * 3 + END)) == 0 and diff.out.count("hamster") == 1
    assert diff(good.replace(END, text + END), good.replace(END, text + END)) == 0 and "hamster" not in diff.out


# --- values -------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("millivolts, status", [(903, 0), (948, 0), (949, 1), (858, 0), (857, 1)])
def test_a_voltage_may_move_by_a_twentieth(diff, millivolts, status):
    assert diff(output({3: 903}), output({3: millivolts})) == status


@pytest.mark.parametrize("celsius, status", [(35, 0), (36, 1), (15, 0), (14, 1)])
def test_a_temperature_may_move_by_ten_degrees(diff, celsius, status):
    assert diff(output(temperatures={0: 25}), output(temperatures={0: celsius})) == status


def test_a_value_that_moved_tells_how_far(diff):
    assert diff(output({3: 903}), output({3: 1003})) == 1
    assert "! voltage: voltage 3 0V9 switch core: 903 mV -> 1003 mV (+100 mV, +11.1 %; allowed is 5 % or 10 mV)" \
        in diff.out
    assert diff(output(temperatures={0: 25}), output(temperatures={0: 5})) == 1
    assert "temperature 0 air inlet: 25 degC -> 5 degC (-20 degC, -80.0 %; allowed is 10 degC)" in diff.out


@pytest.mark.parametrize("options, status", [
    (["--tolerance", "12%"], 0), (["--tolerance", "11%"], 1), (["--tolerance", "mV=100"], 0),
    (["--tolerance", "mV=99"], 1), (["--tolerance", "V=0.1"], 0), (["--tolerance", "V=0.09"], 1),
    (["--tolerance", "mV=any"], 0), (["--tolerance", "1%", "--tolerance", "mV=100"], 0),
    (["--tolerance", "degC=50"], 1)])
def test_a_tolerance_is_for_all_or_for_a_unit(diff, options, status):
    assert diff(output({3: 903}), output({3: 1003}), *options) == status


def test_a_part_for_all_does_not_take_in_temperatures_and_counters():
    tolerances = Tolerances()
    tolerances.take("1%")
    assert not tolerances.is_moved(25, 35, "degC") and tolerances.is_moved(25, 35.1, "degC")
    assert tolerances.is_moved(1000, 1011, "mV") and not tolerances.is_moved(1000, 1010, "mV")
    assert not tolerances.is_moved(0, 1e9, "count")
    assert not tolerances.is_moved(0, 0, "byte") and tolerances.is_moved(0, 1, "byte")
    tolerances.take("V=10%")  # of 0.3 to 0.33 it is a hair more in binary
    assert not tolerances.is_moved(0.3, 0.33, "V") and tolerances.is_moved(0.3, 0.3301, "V")
    assert tolerances.is_moved(1, float("inf"), "mV") and not tolerances.is_moved(float("inf"), float("inf"), "mV")
    assert tolerances.is_moved(float("inf"), 1, "mV")


@pytest.mark.parametrize("text", ["5", "five%", "-5%", "%", "", "mV", "mV=", "mV=five", "=5%", "mV=5%%", "5 %", "nan%",
                                  "mv=5", "degF=3", "mV=inf"])
def test_a_bad_tolerance_is_told(text, diff):
    with pytest.raises(InputError):
        Tolerances().take(text)
    assert diff(output(), output(), f"--tolerance={text}") == 2
    assert diff.out == "" and diff.err.startswith(f"kestro_report: --tolerance {text}: ")


def test_values_of_one_name_are_compared_one_by_one(diff):
    before = output(more="".join(temperature_line(1, value) for value in (40, 60, 80)))
    after = output(more="".join(temperature_line(1, value) for value in (40, 75, 80)))
    assert diff(before, after) == 1
    assert "temperature 1 processor: 60 degC -> 75 degC (+15 degC, +25.0 %; 1 of 4 values; allowed is 10 degC)" \
        in diff.out


def test_limits_judge_both_outputs(diff, tmp_path):
    limits = written(tmp_path / "limits.yaml", "limits: [{measurement: 'temperature 1 *', max: 65}]\n")
    assert diff(output(), output(temperatures={1: 68})) == 0
    assert diff(output(), output(temperatures={1: 68}), "--limits", limits) == 1
    assert "! temperature: temperature 1 processor within limits: passed and now fails" in diff.out
    assert "68 degC is above 65 degC" in diff.out


# --- runs ---------------------------------------------------------------------------------------------------------


def test_a_run_that_was_cut_gives_3(diff):
    good = output()
    assert diff(good, output(end="")) == 3 and "now: the output ends before the program did" in diff.out
    assert diff(output(end=""), good) == 3 and "before: the output ends before" in diff.out
    assert diff(good, without(output(end=""), "temperature_id 1")) == 3 and "1 of 1 run got worse" in diff.out
    assert diff(good, "no line of the program\n") == 3


def commands(*named: tuple[str, str]) -> str:
    return "".join(PROMPT.format(words=words) + text for words, text in named)


def test_runs_belong_together_by_command_and_order(diff):
    first, second = "board_test board_onekey_test", "temp_test temp_get"
    before = commands((first, output()), (second, output()), (first, output({3: 800})))
    after = commands((second, output()), (first, output()), (first, output({3: 800})))
    assert diff(before, after) == 0 and "nothing has changed" in diff.out
    assert diff(before, commands((second, output()), (first, output({3: 800})), (first, output()))) == 1
    assert "2 of 3 runs got worse" in diff.out


def test_a_run_that_is_gone_is_worse_and_a_new_one_is_told(diff):
    first, second = "board_test board_onekey_test", "temp_test temp_get"
    both, one = commands((first, output()), (second, output())), commands((first, output()))
    assert diff(both, one) == 1 and "temp_test temp_get: passed -> not run" in diff.out
    assert diff(one, both) == 0 and "temp_test temp_get: not run -> passed" in diff.out
    bad = output().replace(temperature_line(1, 62), SILENT)
    assert diff(one, commands((first, output()), (second, bad))) == 1 and "not run -> FAILED" in diff.out


def test_a_run_without_its_command_belongs_to_the_one_that_is_left(diff):
    named = commands(("board_test board_onekey_test", output()))
    assert diff(named, output()) == 0 and diff(output(), named) == 0 and "not run" not in diff.out


def test_more_runs_than_a_comparison_is_for_are_told(diff):
    assert diff("".join([output()] * 1001), output()) == 2
    assert "more than 1000 runs; 'kestro_report trend'" in diff.err


# --- input and output ---------------------------------------------------------------------------------------------


def test_a_wrong_command_line_or_file_gives_2(tmp_path, capsys):
    log = written(tmp_path / "log.txt", output())
    for words in ([], [log], [log, log, log], [log, str(tmp_path / "none")], [str(tmp_path), log], ["-", "-"],
                  [log, log, "--jsonl", "x"], [log, log, "--html", "/nowhere/x.html"], [log, log, "--ignore", "("],
                  [log, log, "--limits", str(tmp_path / "none")], [log, log, "--html"]):
        assert command_line.main(["diff", *words]) == 2
        out, err = capsys.readouterr()
        assert out == "" and err.startswith("kestro_report: ") and err.count("\n") == 1


def test_help_tells_the_exit_statuses(capsys):
    with pytest.raises(SystemExit) as ended:
        command_line.main(["diff", "--help"])
    out = capsys.readouterr().out
    assert ended.value.code == 0 and "exit status: 0 nothing got worse" in out and "5%" in out


def test_colour_is_only_where_it_is_wanted(diff):
    bad = output().replace(temperature_line(1, 62), SILENT)
    diff(output(), bad)
    assert "\x1b" not in diff.out
    diff(output(), bad, "--color", "always")
    assert "\x1b[32mpassed\x1b[0m -> \x1b[31mFAILED\x1b[0m" in diff.out
    assert diff(output(), bad, "--quiet") == 1 and diff.out == ""


class Page(html.parser.HTMLParser):
    def __init__(self, text: str) -> None:
        super().__init__()
        self.tags: list[str] = []
        self.given: list[tuple[str, str]] = []
        self.text = ""
        self.feed(text)
        self.close()

    def handle_starttag(self, tag: str, attributes: list[tuple[str, str]]) -> None:
        self.tags.append(tag)
        self.given += attributes

    def handle_data(self, data: str) -> None:
        self.text += data


def test_the_page_says_what_the_text_says_and_needs_nothing_else(diff, tmp_path):
    bad = output({3: 1003}).replace(temperature_line(1, 62), SILENT)
    assert diff(output(), bad, "--html", str(tmp_path / "page.html")) == 1
    assert "passed and now fails" in diff.out
    page = Page((tmp_path / "page.html").read_text(encoding="utf-8"))
    for said in ("temperature: temperature 1", "0x81110103", "voltage 3 0V9 switch core", "1003 mV", "1 of 1 run got"):
        assert said in page.text
    assert not {"script", "img", "iframe"} & set(page.tags)
    assert [value for name, value in page.given if name in ("src", "href") or name.startswith("on")] == ["data:,"]
    policy = next(value for name, value in page.given if name == "content" and "default-src" in value)
    assert policy.startswith("default-src 'none'; style-src 'sha256-") and "unsafe" not in policy


def test_the_page_may_be_standard_output(diff):
    assert diff(output(), output(), "--html", "-") == 0
    assert diff.out.startswith("<!DOCTYPE html>") and "before.txt -> " not in diff.out


def test_markup_and_control_characters_of_an_output_stay_text(diff, tmp_path):
    hostile = output(more="</table><script>alert(1)</script> \x1b]0;x\x07 fail\n")
    diff(output(), hostile, "--html", str(tmp_path / "page.html"))
    text = (tmp_path / "page.html").read_text(encoding="utf-8")
    assert "script" not in Page(text).tags and "<script>alert(1)</script>" in Page(text).text
    assert "\x07" not in diff.out + text and "\x1b" not in diff.out + text


def test_a_file_name_that_is_no_text_is_no_obstacle(tmp_path, capsys):
    name = str(tmp_path / "log\udcff.txt")
    Path(name).write_text(output())
    assert command_line.main(["diff", name, name, "--html", str(tmp_path / "page.html")]) == 0
    assert "log\\xff.txt" in capsys.readouterr().out




@pytest.mark.parametrize("value, said", [(2097152.0, "2097152"), (0.0, "0"), (-12.0, "-12"), (0.0312345678, "0.0312346"),
                                         (1e300, "1e+300"), (float("inf"), "inf")])
def test_numbers_are_said_in_full_where_they_are_whole(value, said):
    assert said_number(value) == said
