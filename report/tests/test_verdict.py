"""What a run as a whole came out as: parts missing or mixed, cut runs, and what a good run has and this one lacks."""

import io
import sys
from contextlib import redirect_stderr, redirect_stdout
from dataclasses import dataclass
from functools import cache
from unittest import mock

import pytest
from readings import BAD, END, GOOD, RAILS, RELAYS, RULES, Kept, feed, read

from kestro_report import grammar
from kestro_report.command_line import main
from kestro_report.inputs import facts_beside
from kestro_report.reader import Reader
from kestro_report.records import FAILED, INCOMPLETE, MISSING, PASSED, UNSUPPORTED
from kestro_report.settings import Expected, ExpectedWriter, Settings
from kestro_report.verdict import exit_status, outcome_of

LOAD = grammar.load
MASTER, SLAVE, CARDS = "##### master test begin ", "##### slave test begin ", "##### cards test begin "


# --- one run ----------------------------------------------------------------------------------------------------------

@pytest.mark.parametrize("lines, outcome", [
    ([GOOD, END], PASSED),
    ([GOOD, BAD, END], FAILED),
    ([GOOD], INCOMPLETE),  # its end line is missing
    ([BAD], INCOMPLETE),
    ([], INCOMPLETE),
    (["no line of the program"], INCOMPLETE),
    ([RAILS, "Info: nothing to do", END], INCOMPLETE),  # nothing was checked
    (["Success: rail 3 not support trim", END], INCOMPLETE),
    ([GOOD, "Success: rail 3 not support trim", END], PASSED),
    (["plain ret 0x0"], PASSED),  # such sub-commands tell no end
    (["plain ret 0x81110103"], FAILED),
    (["Usage: kestro_test [OPTION]", " rail_set", " rail_get"], INCOMPLETE),  # only lists what there is
    (["Usage: kestro_test [OPTION]", " rail_set", BAD], FAILED),
    # A sub-command that shows nothing to judge has ended without the failure that the dispatcher would tell.
    (["relay driver text", "Info: relay 1 turned", END], INCOMPLETE),  # but the group judges itself
    (["fan 3 turns 6000 of 0.5", END], PASSED),
    (["fan 3 turns 6000 of 0.5", END, "kestro_test operate fan_get fail! "], FAILED),
])
def test_the_outcome_of_a_run(lines, outcome):
    assert read(*lines).run.outcome == outcome


def test_a_cut_run_says_so():
    assert read(RAILS, GOOD).run.problems == ["the output ends before the program did"]
    assert read(RAILS, GOOD, problem="not ended after 5 seconds").run.problems[0] == "not ended after 5 seconds"
    assert read(problem="cannot be reached").run.problems == ["cannot be reached"]


@pytest.mark.parametrize("status, outcome", [(0, PASSED), (-11, INCOMPLETE), (-9, INCOMPLETE), (1, INCOMPLETE),
                                             (99, INCOMPLETE)])
def test_the_exit_status_of_the_program_weighs(status, outcome):
    for run in (read(GOOD, END, status=status).run, read(GOOD, END, facts={"status": str(status)}).run):
        assert (run.outcome, run.status) == (outcome, status)


def test_a_failed_command_ends_with_255():
    run = read(GOOD, END, "kestro_test operate rail_set fail! ", status=255).run
    assert (run.outcome, run.problems) == (FAILED, [])


def test_a_problem_beside_the_file_is_the_runs():
    assert read(GOOD, END, facts={"problem": "power was cut"}).run.problems == ["power was cut"]
    assert read(facts={"problem": "unreachable"}).run.problems == ["unreachable"]


@pytest.mark.parametrize("outcomes, outcome, status", [
    ({PASSED: 3}, PASSED, 0), ({PASSED: 3, FAILED: 1}, FAILED, 1), ({FAILED: 2, INCOMPLETE: 1}, INCOMPLETE, 3),
    ({PASSED: 1, INCOMPLETE: 1}, INCOMPLETE, 3), ({}, INCOMPLETE, 3)])
def test_of_several_runs_the_worst_counts(outcomes, outcome, status):
    assert (outcome_of(outcomes), exit_status(outcomes)) == (outcome, status)


# --- the order of parts -----------------------------------------------------------------------------------------------

@pytest.mark.parametrize("banners", [[RAILS, RELAYS], [RAILS, RELAYS, MASTER], [RAILS, RELAYS, SLAVE, CARDS]])
def test_parts_in_their_order(banners):
    assert read(*(line for banner in banners for line in (banner, GOOD)), END).run.outcome == PASSED


@pytest.mark.parametrize("banners, problem", [
    ([RAILS], "the part 'relays' is missing"),
    ([RAILS, RELAYS, SLAVE], "the part 'cards' is missing"),
    ([RAILS, SLAVE, CARDS], "line 3: the part 'slave' comes where 'relays' was due"),
    ([RAILS, RELAYS, CARDS], "line 5: the part 'cards' comes where 'master' or 'slave' was due"),
    ([RAILS, RELAYS, MASTER, SLAVE], "line 7: the part 'slave' comes where the end was due"),
    ([RAILS, RELAYS, MASTER, MASTER], "line 7: the part 'master' comes where the end was due"),
])
def test_parts_that_are_missing_or_out_of_order(banners, problem):
    run = read(*(line for banner in banners for line in (banner, GOOD)), END).run
    assert run.outcome == INCOMPLETE
    assert [each.split(": a part is missing")[0] for each in run.problems] == [problem]


def test_a_part_of_the_order_alone_is_the_rest_of_a_whole():
    run = read(RELAYS, GOOD, END).run
    assert run.outcome == INCOMPLETE and "the beginning is missing" in run.problems[0]


def test_a_test_that_begins_anew_is_two_runs():
    kept = read(RAILS, GOOD, RAILS, GOOD, RELAYS, BAD, END)
    assert [(run.outcome, run.counts[PASSED], run.counts[FAILED], run.lines) for run in kept.runs] == [
        (INCOMPLETE, 1, 0, 2), (FAILED, 1, 1, 5)]
    assert kept.runs[0].problems == ["the same test begins anew before it has ended: it was cut off, or two runs are "
                                     "mixed in one log"]


def test_two_runs_mixed_line_by_line_are_never_passed():
    run = [RAILS, GOOD, RELAYS, GOOD, MASTER, GOOD, END]
    for shift in range(1, len(run) - 1):  # by one more the second begins behind the first one's end
        ahead, behind = [*run, *[None] * shift], [*[None] * shift, *run]
        mixed = [line for pair in zip(ahead, behind, strict=True) for line in pair if line]
        kept = Kept()
        reader = Reader(RULES, [kept])
        feed(reader, "console.txt", mixed)
        assert exit_status(reader.outcomes) == 3, mixed


# --- what a good run has ----------------------------------------------------------------------------------------------

def expected_of(*lines: str) -> Expected:
    writer = ExpectedWriter()
    feed(Reader(RULES, [writer]), "good.txt", lines)
    return writer.expected


RAIL_2, RAIL_3 = "Success: rail 2 is 1000mV", "Success: rail 3 is 1000mV"


@pytest.mark.parametrize("good, lines, missing", [
    ([RAIL_2, RAIL_3], [RAIL_2, RAIL_3], []),
    ([RAIL_2], [RAIL_2, RAIL_3], []),
    ([RAIL_2, RAIL_3], [RAIL_3], ["rail 2"]),
    ([RAIL_2], ["Success: rail 2 is 1007mV"], []),  # another value of the same check
    ([RAIL_2], ["Error: rail 2 is 1007mV"], []),  # failed, which is more than missing
    ([GOOD, GOOD], [GOOD], ["board weld check"]),  # one of two
    ([GOOD], [GOOD, GOOD], []),
    (["mode 0x0", GOOD], ["mode 0x10", GOOD], ["mode"]),  # it does not have any more what it had
    (["mode 0x10", GOOD], [GOOD], []),  # it never had it
])
def test_checks_that_a_good_run_has(good, lines, missing):
    kept = read(*lines, END, settings=Settings(expected=expected_of(*good, END)))
    assert [check.name for check in kept.checks if check.outcome == MISSING] == missing
    assert kept.run.outcome == (FAILED if kept.run.counts[FAILED] or missing else PASSED)
    assert kept.run.counts[MISSING] == len(missing)


def test_a_missing_check_says_how_often_it_should_pass():
    settings = Settings(expected=expected_of(RAIL_2, *[GOOD] * 3, END))
    said = [(check.name, check.means, check.line) for check in read(GOOD, END, settings=settings).checks if check.bad]
    assert said == [("rail 2", "A good run has it, this one does not.", None),
                    ("board weld check", "A good run passes it 3 times, this one 1.", None)]


def test_the_same_check_in_another_part_is_another_check():
    settings = Settings(expected=expected_of(RAILS, GOOD, RELAYS, GOOD, END))
    kept = read(RAILS, GOOD, GOOD, RELAYS, "mode 0x0", END, settings=settings)
    assert [(check.section.name, check.name) for check in kept.checks if check.bad] == [("relays", "board weld check")]


def test_a_whole_part_that_a_good_run_has():
    settings = Settings(expected=expected_of(RAILS, GOOD, RELAYS, GOOD, MASTER, RAIL_2, RAIL_3, END))
    kept = read(RAILS, GOOD, RELAYS, GOOD, END, settings=settings)
    assert [(check.section.name, check.name, check.outcome) for check in kept.checks if check.bad] == [
        ("master", "rail 2", MISSING), ("master", "rail 3", MISSING)]
    assert kept.sections[-1].counts[MISSING] == 2


def test_each_of_several_runs_is_held_against_the_good_one():
    kept = Kept()
    reader = Reader(RULES, [kept], Settings(expected=expected_of(RAIL_2, RAIL_3, END)))
    for lines in ([RAIL_2, RAIL_3, END], [RAIL_3, END], [RAIL_2, RAIL_3, END]):
        feed(reader, "board.txt", lines)
    assert [run.outcome for run in kept.runs] == [PASSED, FAILED, PASSED]


def test_a_part_that_comes_twice_is_two_parts():
    settings = Settings(expected=expected_of(RELAYS, GOOD, MASTER, RELAYS, GOOD, GOOD, END))
    assert read(RELAYS, GOOD, MASTER, RELAYS, GOOD, GOOD, END, settings=settings).run.counts[MISSING] == 0
    for lines in ([RELAYS, MASTER, RELAYS, GOOD, GOOD], [RELAYS, GOOD, MASTER, RELAYS, GOOD], [RELAYS, GOOD, MASTER]):
        kept = read(*lines, END, settings=settings)
        assert [(check.section.name, check.name) for check in kept.checks if check.bad] == [
            ("relays", "board weld check")], lines


def test_missing_parts_have_numbers_of_their_own():
    settings = Settings(expected=expected_of("mode 0x0", RELAYS, GOOD, "supply 1 begins", GOOD, END))
    kept = read("mode 0x0", END, settings=settings)
    assert [(section.name, section.number) for section in kept.sections] == [("", 0), ("relays", 1), ("supplies: 1", 2)]


# --- the program ------------------------------------------------------------------------------------------------------

SELFTEST_LINE = "Success: voltage 3 get and set value pass. original value 900"
FAILED_LINE = "Error: voltage get fail. voltage_id 3 ret 0x8111010f"
PRODUCT_END = "cmd_exec used second:0\ncmd_exec used millisecond:12\n"
GOOD_TEXT, BAD_TEXT = f"{SELFTEST_LINE}\n{PRODUCT_END}", f"{FAILED_LINE}\n{PRODUCT_END}"


@dataclass
class Ended:
    returncode: int
    stdout: str
    stderr: str


def kestro_report(*words: object, given: str = "") -> Ended:
    """The program in this process: the grammar is read once for all."""
    out, told, stdin = io.StringIO(), io.StringIO(), io.TextIOWrapper(io.BytesIO(given.encode()))
    with (redirect_stdout(out), redirect_stderr(told), mock.patch.object(sys, "stdin", stdin),
          mock.patch.object(grammar, "load", product_rules)):
        status = main([str(word) for word in words])
    return Ended(status, out.getvalue(), told.getvalue())


@cache
def product_rules() -> grammar.Grammar:
    return LOAD()


@pytest.fixture
def outputs(tmp_path):
    for name, text in {"good": GOOD_TEXT, "bad": BAD_TEXT, "cut": SELFTEST_LINE, "empty": ""}.items():
        (tmp_path / f"{name}.txt").write_text(text, encoding="utf-8")
    return tmp_path


@pytest.mark.parametrize("names, status", [
    (["good"], 0), (["bad"], 1), (["cut"], 3), (["empty"], 3), (["good", "good"], 0), (["good", "bad"], 1),
    (["bad", "good"], 1), (["bad", "cut"], 3), (["cut", "good"], 3), (["empty", "good"], 3)])
def test_exit_statuses(outputs, names, status):
    ended = kestro_report(*(outputs / f"{name}.txt" for name in names))
    assert (ended.returncode, ended.stderr) == (status, "")


def test_standard_input_and_files_one_behind_the_other(outputs):
    assert kestro_report(given=GOOD_TEXT).returncode == 0
    assert kestro_report("-", given=BAD_TEXT).returncode == 1
    assert kestro_report(outputs / "good.txt", "-", given=BAD_TEXT).returncode == 1
    ended = kestro_report(given=GOOD_TEXT + BAD_TEXT + GOOD_TEXT)
    assert ended.returncode == 1
    assert "3 runs: 1 FAILED, 2 passed" in ended.stdout


def test_facts_beside_the_files(outputs):
    (outputs / "good.facts.yaml").write_text("dut: rack 3\nserial: 0042\ncommand: voltage_test get 3\nstatus: -11\n",
                                             encoding="utf-8")
    ended = kestro_report(outputs / "good.txt", outputs / "bad.txt")
    assert ended.returncode == 3
    assert "NOT COMPLETE  rack 3: voltage_test get 3" in ended.stdout
    assert "ended by signal 11" in ended.stdout
    assert f"FAILED  {outputs}/bad.txt" in ended.stdout


@pytest.mark.parametrize("text, said", [
    ("- dut\n", "a list of names and values is wanted"), ("dut: [", "no YAML"),
    ("colour: red\n", "unknown name 'colour'"), ("dut: {a: b}\n", "'dut' wants a text"),
    ("dut: \udcff", "no YAML")])
def test_facts_that_are_none(outputs, text, said):
    file = outputs / "good.facts.yaml"
    file.write_bytes(text.encode("utf-8", "surrogateescape"))
    ended = kestro_report(outputs / "good.txt")
    assert ended.returncode == 2
    assert ended.stderr.startswith(f"kestro_report: {file}: ") and said in ended.stderr
    assert ended.stdout == ""


@pytest.mark.parametrize("written, serial", [
    ("0042", "0042"), ("2511040109", "2511040109"), ("1e5", "1e5"), ("12:30", "12:30"), ("no", "no"),
    ("2026-99-99", "2026-99-99"), ("'~'", None), ("", None), ("null", None)])
def test_facts_are_texts_as_they_stand(outputs, written, serial):
    (outputs / "good.facts.yaml").write_text(f"serial: {written}\n", encoding="utf-8")
    assert facts_beside(outputs / "good.txt").get("serial") == serial


def test_only_a_good_run_tells_what_to_expect(outputs):
    assert kestro_report("--expect", outputs / "good.txt", outputs / "good.txt").returncode == 0
    ended = kestro_report("--expect", outputs / "bad.txt", outputs / "good.txt")
    assert (ended.returncode, ended.stdout) == (2, "")
    assert f"{outputs}/bad.txt: this run is not a good one" in ended.stderr
    two = outputs / "two.txt"
    two.write_text(GOOD_TEXT * 2, encoding="utf-8")
    ended = kestro_report("--expect", two, outputs / "good.txt")
    assert (ended.returncode, ended.stdout) == (2, "")
    assert f"{two}: it holds 2 runs; --expect wants the output of one" in ended.stderr


def test_a_missing_check_fails_the_run(outputs):
    whole = outputs / "whole.txt"
    whole.write_text("Success: voltage 4 get and set value pass. original value 850\n" + GOOD_TEXT, encoding="utf-8")
    ended = kestro_report("--expect", whole, outputs / "good.txt")
    assert ended.returncode == 1
    assert "MISSING  voltage 4 set" in ended.stdout
