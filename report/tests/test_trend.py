"""What trend tells of many runs, and the figures behind it."""

import io
import math
import random
from pathlib import Path

import pytest
from small_outputs import END, output, temperature_line, written
from test_diff import SILENT, Page, commands, without

from kestro_report import command_line, grammar
from kestro_report.history import History
from kestro_report.reader import Reader
from kestro_report.robust import EXTREMES_KEPT, POINTS_KEPT, SAMPLE_KEPT, Sample, Series, drift
from kestro_report.texts import text_lines
from kestro_report.trend import percent

BAD = output().replace(temperature_line(1, 62), SILENT)


class Trend:
    """Runs trend on texts, each in a file of its own, and keeps what it said."""

    def __init__(self, tmp_path: Path, capsys: pytest.CaptureFixture) -> None:
        self.folder, self.capsys = tmp_path, capsys

    def __call__(self, *texts: str | tuple[str, str], options: tuple[str, ...] = ()) -> int:
        files = []
        for number, each in enumerate(texts):
            text, facts = each if isinstance(each, tuple) else (each, "")
            files.append(written(self.folder / f"log{number:04}.txt", text, facts))
        self.status = command_line.main(["trend", *options, *files])
        self.out, self.err = self.capsys.readouterr()
        return self.status

    def rows(self, title: str) -> list[list[str]]:
        """The cells of a table; two blanks or more part them."""
        lines = self.out.splitlines()
        start = next((at for at, line in enumerate(lines) if line.startswith(title)), None)
        if start is None:
            return []
        block = lines[start + 2:]
        block = block[:block.index("")] if "" in block else block
        return [[cell.strip() for cell in line.split("  ") if cell.strip()] for line in block]


@pytest.fixture
def trend(tmp_path, capsys):
    return Trend(tmp_path, capsys)


# --- yield --------------------------------------------------------------------------------------------------------


def test_the_yield_is_of_all_runs(trend):
    assert trend(output(), BAD, output(end=""), output()) == 0
    assert trend.out.splitlines()[0] == \
        "4 runs of 4 boards: 2 passed, 1 FAILED, 1 NOT COMPLETE; yield 50.0 %"


@pytest.mark.parametrize("part, whole, said", [(0, 0, "-"), (0, 5, "0.0 %"), (5, 5, "100.0 %"), (1, 3, "33.3 %"),
                                               (999999, 1000000, "99.9 %"), (1, 1000000, "0.1 %")])
def test_a_yield_is_never_said_to_be_more_than_it_is(part, whole, said):
    assert percent(part, whole) == said


def test_the_checks_that_fail_most_come_first(trend):
    worse = BAD.replace(temperature_line(0, 25), SILENT.replace("id 1", "id 0"))
    trend(output(), BAD, worse, output())
    assert trend.rows("Checks that fail most (2 of 5 have ever failed)") == [
        ["2", "4", "50.0 %", "2", "-", "temperature: temperature 1"],
        ["1", "4", "75.0 %", "1", "-", "temperature: temperature 0"]]
    trend(output(), output())
    assert "Checks that fail most" not in trend.out


def test_a_check_that_comes_and_goes_on_a_board_is_told(trend):
    trend((output(), "serial: 17"), (BAD, "serial: 17"), (output(), "serial: 18"), (BAD, "serial: 19"))
    assert trend.rows("Checks that fail most") == [["2", "4", "50.0 %", "2", "1", "temperature: temperature 1"]]


def test_boards_are_known_by_serial_number_then_name_then_file(trend):
    trend((output(), "serial: 17"), (BAD, "serial: 17"), (BAD, "dut: rack 3"), BAD)
    assert trend.out.startswith("4 runs of 3 boards: ")
    assert trend.rows("Boards with runs that did not pass") == [
        ["1", "1", "0", "FAILED", str(trend.folder / "log0003.txt")], ["1", "1", "0", "FAILED", "rack 3"],
        ["2", "1", "0", "FAILED", "17"]]
    assert "1 of 3 boards passed in their first run (33.3 %), 0 in their last" in trend.out


def test_a_check_that_is_missing_in_some_runs_is_told(trend):
    gap = without(output(), "voltage_id 2")
    trend(output(), output(), gap, output(end=""))
    assert trend.rows("Checks that are not in every run") == [["1", "3", "voltage: voltage 2"]]
    trend(output(), output(), output(end="").replace("Success: get voltage_id 2", "x"))
    assert "not in every run" not in trend.out  # a run that was cut tells nothing of what it would have checked


def test_checks_of_one_command_are_not_missing_in_another(trend):
    trend(commands(("board_test board_onekey_test", output()),
                   ("temp_test temp_get", without(output(), "voltage_id"))))
    assert "not in every run" not in trend.out
    assert trend.rows("Commands") == [["1", "100.0 %", "board_test board_onekey_test"],
                                      ["1", "100.0 %", "temp_test temp_get"]]


# --- values -------------------------------------------------------------------------------------------------------


def test_a_value_far_from_what_is_usual_stands_out(trend):
    usual = [output({3: 903 + at % 3}) for at in range(9)]
    trend(*usual, output({3: 990}))
    rows = trend.rows("Values that stand out")
    file = trend.folder / "log0009.txt"
    assert [(*row[:2], *row[3:]) for row in rows] == [
        ("990 mV", "904 mV", "1", f"voltage: voltage 3 0V9 switch core{which}; {file} ({file}: line 5)")
        for which in ("", " highest", " lowest")]


def test_a_single_step_of_a_scale_does_not_stand_out(trend):
    trend(*[output(temperatures={1: 62})] * 9, output(temperatures={1: 63}))
    assert "stand out" not in trend.out
    trend(*[output(temperatures={1: 62})] * 9, output(temperatures={1: 66}))
    assert [row[0] for row in trend.rows("Values that stand out")] == ["66 degC"]


def test_four_runs_are_too_few_to_know_what_is_usual(trend):
    trend(*[output()] * 3, output({3: 990}))
    assert "stand out" not in trend.out
    trend(*[output()] * 4, output({3: 990}))
    assert "stand out" in trend.out


def of_board(values: list[int], serial: int = 17, began: str = "2026-10-{day:02} 08:00:00") -> list[tuple[str, str]]:
    return [(output(temperatures={1: value}), f"serial: {serial}\nbegan: {began.format(day=at + 1)}\n")
            for at, value in enumerate(values)]


def test_a_value_that_rises_from_run_to_run_drifts(trend):
    trend(*of_board([60, 62, 64, 66, 68, 70, 72, 74]))
    assert trend.rows("Values that drift") == [
        ["60 degC", "74 degC", "+14 degC", "temperature: temperature 1 processor; 17 (8 runs, 7 days)"]]


def test_the_order_of_a_drift_is_that_of_the_times(trend):
    trend(*reversed(of_board([60, 62, 64, 66, 68, 70])))
    assert [row[:3] for row in trend.rows("Values that drift")] == [["60 degC", "70 degC", "+10 degC"]]
    trend(*reversed(of_board([60, 62, 64, 66, 68, 70], began="one day")))
    assert trend.rows("Values that drift")[0][:3] == ["70 degC", "60 degC", "-10 degC"]
    assert "6 runs, in their order" in trend.out


def test_times_come_from_the_logs_stamps_too(trend):
    stamped = ["".join(f"2026-10-{30 - at:02} 08:00:00 {line}" if line.strip() else line
                       for line in output(temperatures={1: 60 + 2 * at}).splitlines(True)) for at in range(6)]
    trend(*[(text, "serial: 17") for text in stamped])
    assert [row[:2] for row in trend.rows("Values that drift")] == [["70 degC", "60 degC"]]


@pytest.mark.parametrize("values", [[60] * 8, [60, 63, 60, 63, 60, 63, 60, 63], [60, 60, 60, 60, 60, 60, 60, 72],
                                    [60, 70, 61, 75, 66],
                                    [60, 61, 62, 63], [60, 61, 62, 63, 64]])
def test_what_swings_jumps_once_or_hardly_moves_does_not_drift(trend, values):
    trend(*of_board(values))
    assert "drift" not in trend.out


def test_the_same_values_on_many_boards_are_no_drift(trend):
    trend(*[(output(temperatures={1: 60 + 2 * at}), f"serial: {at}") for at in range(8)])
    assert "drift" not in trend.out


def test_limits_make_checks_of_values(trend):
    limits = written(trend.folder / "limits.yaml", "limits: [{measurement: 'temperature 1 *', max: 65}]\n")
    trend(output(), output(temperatures={1: 68}), options=("--limits", limits))
    assert trend.rows("Checks that fail most") == \
        [["1", "2", "50.0 %", "1", "-", "temperature: temperature 1 processor within limits"]]


# --- figures ------------------------------------------------------------------------------------------------------


def test_drift_is_the_median_of_all_slopes():
    change, sure = drift([(0, 10), (1, 11), (2, 12), (3, 13), (4, 14)])
    assert change == 4 and sure == pytest.approx(9 / math.sqrt(5 * 4 * 15 / 18))
    assert drift([(at, value) for at, value in enumerate([10, 11, 99, 13, 14, 15, 16])])[0] == 6
    assert drift([(0, 5), (1, 5), (2, 5)]) == (0, 0) and drift([(3, 1), (3, 2), (3, 3)]) == (0, 0)
    assert drift([(at, -value) for at, value in enumerate(range(9))])[1] < -3


def test_a_sample_keeps_a_fair_choice_and_the_extremes():
    sample, values = Sample(), list(range(20000))
    random.Random(5).shuffle(values)
    for at, value in enumerate(values):
        sample.add((float(value), at, 0, "log", 1))
    found = {entry[0] for entry in sample.entries()}
    assert sample.count == 20000 and len(sample.kept) == SAMPLE_KEPT
    assert set(range(EXTREMES_KEPT)) <= found and set(range(20000 - EXTREMES_KEPT, 20000)) <= found
    centre, deviation = sample.middle()
    assert abs(centre - 10000) < 800 and abs(deviation - 5000) < 500


def test_extremes_before_the_sample_is_full_are_kept_too():
    sample = Sample()
    for at in range(20000):
        sample.add((1e6 if at == 3 else 1.0, at, 0, "log", 1))
    assert 1e6 in {entry[0] for entry in sample.entries()}


def test_a_series_puts_neighbours_together():
    series = Series()
    for at in range(1001):
        series.add(float(at), 2.0 * at)
    points = series.history()
    assert series.count == 1001 and POINTS_KEPT / 2 <= len(points) <= POINTS_KEPT
    assert all(value == pytest.approx(2 * time) for time, value in points) and points[-1][0] > 980


def test_a_series_without_all_times_goes_by_its_order():
    series = Series()
    for time, value in ((5.0, 1.0), (None, 2.0), (3.0, 3.0)):
        series.add(time, value)
    assert series.history() == [(0, 1.0), (1, 2.0), (2, 3.0)]


# --- input and output ---------------------------------------------------------------------------------------------


def test_many_runs_in_one_file_are_looked_at_one_by_one(trend):
    assert trend(output() * 30 + BAD) == 0
    assert trend.out.startswith("31 runs of 1 board: 30 passed, 1 FAILED; yield 96.7 %")


def test_a_file_without_runs_is_a_run_that_is_not_complete(trend):
    assert trend("", "no line of the program\n") == 0
    assert trend.out.startswith("2 runs of 2 boards: 2 NOT COMPLETE; yield 0.0 %")


def test_a_list_is_as_long_as_wanted(trend):
    trend(*[BAD] * 7, options=("--top", "3"))
    assert len(trend.rows("Boards with runs that did not pass")) == 4 and "  and 4 more\n" in trend.out


def test_a_wrong_command_line_or_file_gives_2(tmp_path, capsys):
    log = written(tmp_path / "log.txt", output())
    for words in ([], [log, str(tmp_path / "none")], [str(tmp_path)], [log, "--top", "0"], [log, "--top", "-1"],
                  [log, "--top", "many"], [log, "--top", "1.5"], [log, "--junit", "x"], [log, "--html", "/nowhere/x"],
                  [log, "--limits", str(tmp_path / "none")], [log, "--description", log], [log, "--ignore", "("]):
        assert command_line.main(["trend", *words]) == 2
        out, err = capsys.readouterr()
        assert out == "" and err.startswith("kestro_report: ") and err.count("\n") == 1


def test_a_wrong_facts_file_is_told_before_anything_is_written(tmp_path, capsys):
    log = written(tmp_path / "log.txt", output(), "serial: [1, 2\n")
    assert command_line.main(["trend", log, "--html", str(tmp_path / "page.html")]) == 2
    assert "log.facts.yaml: no YAML" in capsys.readouterr().err and not (tmp_path / "page.html").exists()


def test_help_tells_what_a_board_is_known_by(capsys):
    with pytest.raises(SystemExit) as ended:
        command_line.main(["trend", "--help"])
    out = capsys.readouterr().out
    assert ended.value.code == 0 and "exit status: 0 the report is made" in out and "serial" in out


def test_the_page_says_what_the_text_says_and_needs_nothing_else(trend):
    runs = of_board([60, 62, 64, 66, 68, 70, 72, 74])
    assert trend(*runs, (BAD, "serial: 18"), output({3: 990}),
                 options=("--html", str(trend.folder / "page.html"))) == 0
    page = Page((trend.folder / "page.html").read_text(encoding="utf-8"))
    for said in ("10 runs of 3 boards", "temperature: temperature 1", "0x81110103", "990 mV", "+14 degC"):
        assert said in page.text
    assert page.tags.count("svg") >= 5 and "circle" in page.tags
    assert not {"script", "img", "iframe"} & set(page.tags)
    assert [value for name, value in page.given if name in ("src", "href") or name.startswith("on")] == ["data:,"]


def test_the_page_may_be_standard_output_and_is_the_same_again(trend):
    runs = [output({3: 900 + at % 7}) for at in range(20)]
    trend(*runs, options=("--html", "-"))
    first = trend.out
    trend(*runs, options=("--html", "-"))
    assert first == trend.out and first.startswith("<!DOCTYPE html>") and first.endswith("</html>\n")


def test_markup_in_names_and_lines_stays_text(trend):
    bad = BAD.replace(END, "x" + END)
    trend((bad, "serial: </td><script>alert(1)</script>"), options=("--html", str(trend.folder / "page.html")))
    page = Page((trend.folder / "page.html").read_text(encoding="utf-8"))
    assert "script" not in page.tags and "</td><script>alert(1)</script>" in page.text


def test_control_characters_in_a_name_do_not_reach_the_terminal(trend):
    trend((BAD, 'serial: "17\\x1b]0;owned\\x07"'))
    assert "\x1b" not in trend.out and "17\\x1b]0;owned\\x07" in trend.out


def test_what_is_kept_does_not_grow_with_the_runs():
    history = History()
    reader = Reader(grammar.load(), [history])
    data = io.BytesIO(output().encode() * 1500)
    reader.begin_source("log")
    for line in text_lines(data.read):
        reader.feed(line)
    reader.end_source()
    assert history.runs == 1500 and len(history.values) == 11 and len(history.checks) == 5
    assert max(len(values.sample.entries()) for values in history.values.values()) <= SAMPLE_KEPT + 2 * EXTREMES_KEPT
    assert max(len(values.boards[0].history()) for values in history.values.values()) <= POINTS_KEPT
