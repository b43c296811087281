"""What the reader makes of each kind of line, and of lines that are none."""

import re

import pytest
from readings import BAD, END, GOOD, RAILS, RELAYS, RULES, read

from kestro_report.records import FAILED, INCOMPLETE, PASSED, UNSUPPORTED, Limit
from kestro_report.settings import Settings


@pytest.mark.parametrize("line, name, outcome", [
    ("Success: rail 2 set and get pass. value 1000", "rail 2 set", PASSED),
    ("Error: rail 0x2 set fail. ret 0x8111010f", "rail 2 set", FAILED),
    ("Error: rail 0x1f set fail. ret 0x8111010f", "rail 31 set", FAILED),
    ("Success: rail 3 not support trim", "rail 3 trim", UNSUPPORTED),
    ("Success: rail 3 is 1000mV", "rail 3", PASSED),
    ("Error: rail 3 is 1000mV", "rail 3", FAILED),
    ("rounds 5, 0 bad", "rounds", PASSED),
    ("rounds 5, 2 bad", "rounds", FAILED),
    ("mode 0x0", "mode", PASSED),
    ("mode 0x10", "mode", UNSUPPORTED),
    ("drv_relay_get::id:1 ret:0x0 value:7", "drv_relay_get", PASSED),
    ("drv_relay_get::id:1 ret:0x81110103 value:7", "drv_relay_get", FAILED),
    ("drv_relay_get::id:1 ret:0x811101a4 value:7", "drv_relay_get", UNSUPPORTED),
    ("drv_relay_set:0", "drv_relay_set", PASSED),
    ("drv_relay_set:-1", "drv_relay_set", FAILED),
    # The name of a check without one: what stands behind the prefix, up to the word that tells the outcome.
    (GOOD, "board weld check", PASSED),
    (BAD, "board weld check", FAILED),
])
def test_the_check_of_a_line(line, name, outcome):
    assert read(line, END).said() == [(name, outcome)]


def test_a_value_that_no_outcome_names_checks_nothing():
    kept = read("mode 0x7", GOOD, END)
    assert kept.said() == [("board weld check", PASSED)]


def test_a_code_weighs_more_than_the_value_beside_it():
    """A call that failed has left the value as it was."""
    assert read("relay 1 state 1 ret 0x81110103", END).said() == [("relay 1", FAILED)]
    assert read("relay 1 state 1 ret 0x811101a4", END).said() == [("relay 1", UNSUPPORTED)]
    assert read("relay 1 state 0 ret 0x0", END).said() == [("relay 1", FAILED)]
    assert read("relay 1 state 1 ret 0x0", END).said() == [("relay 1", PASSED)]


def test_what_a_failed_check_means_and_its_code():
    check = read("Error: rail 0x2 set fail. ret 0x8111010f", END).checks[0]
    assert (check.means, check.code, check.line.number) == ("Rail 2 did not answer.", 0x8111010F, 1)
    assert read("Success: rail 2 is 5mV", END).checks[0].means == ""


def test_measurements_have_units_and_scales():
    kept = read("Success: rail 2 is 1012mV", "fan 3 turns 6000 of 0.5", END)
    assert [(each.name, each.value, each.unit) for each in kept.measurements] == [
        ("rail 2 value", pytest.approx(1.012), "V"), ("fan 3", 6000, "rpm"), ("fan 3 ratio", 50, "percent")]


@pytest.mark.parametrize("lines", [
    ["drv_relay_get::id:1 ret:0x81110103 value:7"],  # the call failed
    ["Error: rail 2 get fail. ret 0x81110103", "Error: rail 2 is 0mV"],  # the call of the line before did
    ["fan 3 turns N/A of nan"],
    # No number that a report could hold.
    ["fan 3 turns N/A of inf", "fan 3 turns N/A of 1.0e999", f"fan 3 turns {'9' * 400} of nan"],
])
def test_what_is_no_value_is_no_measurement(lines):
    assert read(GOOD, *lines, END).measurements == []


@pytest.mark.parametrize("digits", [17, 41, 400, 5000])
@pytest.mark.parametrize("text", ["Success: rail 2 is {}mV", "mode 0xf{}", "Error: rail 0x2 set fail. ret 0xf{}",
                                  "rounds 5, {} bad", "drv_relay_set:{}", "fan 2 turns 1 of {}.0"])
def test_no_number_is_too_long_for_the_reading(text, digits):
    """What is longer than any that the program prints is no line of its."""
    kept = read(text.replace("{}", "9" * digits), GOOD, END)
    assert kept.said()[-1] == ("board weld check", PASSED)
    assert digits < 20 or (kept.measurements == [] and kept.kinds()[0] == "outside")


def test_rows_are_read_below_their_heading_only():
    kept = read("1 500", "table", "1 600", "2 700", "a remark", GOOD, "3 800", END)
    assert [(each.name, each.value, each.series) for each in kept.measurements] == [
        ("step 1", 600, "speed by step"), ("step 2", 700, "speed by step")]
    assert kept.kinds()[:6] == ["outside", "data", "data", "data", "text", "passed"]
    assert kept.run.unknown == 1  # the row behind the text's end


def test_text_follows_until_a_line_that_is_known():
    kept = read("dump of chip", "00: 11 22", "anything fails here", GOOD, "anything else", END)
    assert kept.kinds() == ["data", "text", "text", "passed", "unknown", "end"]
    assert kept.run.outcome == PASSED


@pytest.mark.parametrize("line", ["Error: sonar 3 is out", "Success: sonar 3 pass", "sonar 3 check failed",
                                  "the sonar has an error"])
def test_an_unknown_line_that_sounds_like_a_check_makes_the_verdict_unsure(line):
    run = read(GOOD, line, END).run
    assert run.outcome == INCOMPLETE
    assert run.problems == [f"line 2 sounds like a check and is not known: {line}"]


def test_a_check_that_nobody_knows_is_found_behind_any_number_of_unknown_lines():
    run = read(GOOD, *(f"remark {number}" for number in range(2000)), "Error: the hamster is gone", END).run
    assert run.problems == ["line 2002 sounds like a check and is not known: Error: the hamster is gone"]
    assert (run.unknown, len(run.unknown_lines)) == (2001, 1000)


@pytest.mark.parametrize("line", ["Error  : the hamster is gone", "Success: the hamster is there", "Info   : no hamster"])
def test_drivers_text_hides_no_check_that_nobody_knows(line):
    kept = read(GOOD, "dump of wheel", "turning, no error", line, END)
    assert kept.kinds()[2:4] == ["text", "unknown"] and kept.run.unknown == 1


@pytest.mark.parametrize("line", ["sonar 3 is at 17", "mirror 0x7 ready", "[12.5]"])
def test_another_unknown_line_is_told_and_no_more(line):
    run = read(GOOD, line, END).run
    assert (run.outcome, run.unknown, run.unknown_lines[0].text) == (PASSED, 1, line)


def test_the_dispatcher_says_a_failure_twice_and_it_counts_once():
    kept = read(BAD, END, "kestro_test operate rail_set fail! ", "kestro_test operate rail_test fail! ")
    assert kept.said() == [("board weld check", FAILED), ("rail_set", FAILED)]
    assert kept.run.counts[FAILED] == 2


def test_lines_outside_of_runs_do_not_matter():
    kept = read("Linux version 5.10", "error: no such device", GOOD, END, "login: failed", GOOD, END)
    assert [run.outcome for run in kept.runs] == [PASSED, PASSED]
    assert [run.unknown for run in kept.runs] == [0, 0]


def test_lines_to_be_ignored():
    settings = Settings(ignore=(re.compile("^sonar"),))
    run = read(GOOD, "sonar error", END, settings=settings).run
    assert (run.outcome, run.unknown) == (PASSED, 0)


def test_a_prompt_tells_the_command_of_the_run_behind_it():
    kept = read("root@board:~# kestro_test rail_test  rail_set 2", GOOD, END, "# /usr/bin/kestro_test relay_test get",
                GOOD, END)
    assert [run.command for run in kept.runs] == ["rail_test rail_set 2", "relay_test get"]


def test_a_command_line_in_the_middle_means_that_the_run_before_was_cut():
    kept = read(GOOD, "root@board:~# kestro_test relay_test get", GOOD, END)
    assert [run.outcome for run in kept.runs] == [INCOMPLETE, PASSED]
    assert kept.runs[0].problems == ["the next command line comes before this one has ended"]


def test_sections_count_what_is_theirs():
    kept = read(RAILS, GOOD, BAD, RELAYS, "supply 4 begins", "mode 0x10", END)
    assert [(section.name, section.outcome, section.counts[FAILED]) for section in kept.sections] == [
        ("", UNSUPPORTED, 0), ("rails", FAILED, 1), ("relays", UNSUPPORTED, 0), ("supplies: 4", UNSUPPORTED, 0)]
    assert kept.run.counts == {PASSED: 1, FAILED: 1, UNSUPPORTED: 1, "missing": 0}


def test_what_a_test_tells_of_itself_is_no_fault_of_its_last_part():
    kept = read("Success: rail 2 is 5mV", "supply 1 begins", BAD, "supply 2 begins", GOOD, "sum 0x1", "sum 0x0", END,
                "kestro_test operate rail_set fail! ")
    assert [(check.section.name, check.name) for check in kept.checks if check.bad] == [
        ("supplies: 1", "board weld check"), ("the test as a whole", "sum"), ("the test as a whole", "rail_set")]
    # One without parts has no place to be confused with.
    assert {check.section.name for check in read("Success: rail 2 is 5mV", "sum 0x1", END).checks} == {""}
    # A sub-command's own section is the one that its result belongs to.
    assert [check.section.name for check in read("supply 1 begins", "sum 0x1", END).checks] == ["supplies: 1"]


def test_time_stamps_are_those_of_runs_sections_and_lines():
    kept = read(f"2026-03-01T10:00:00Z {RAILS}", f"2026-03-01T10:00:02Z {GOOD}", f"2026-03-01T10:00:05Z {RELAYS}",
                f"2026-03-01T10:00:09Z {END}")
    begun = kept.run.began
    assert [kept.run.ended - begun, kept.checks[0].line.time - begun] == [9, 2]
    assert [(section.name, section.began - begun, section.ended - begun) for section in kept.sections] == [
        ("", 0, 0), ("rails", 0, 5), ("relays", 5, 9)]


def test_names_hold_nothing_that_is_no_text():
    kept = read("Success: label a\udcffb\x07 pass", "##### b\udcfe test begin ", END)
    assert kept.checks[0].name == "label a\\xffb\\x07"
    assert kept.sections[-1].name == "b\\xfe"


def limits_of(measurement):
    return (Limit("LESS_THAN_OR_EQUAL", 1.1, "limits.yaml: line 2: max"),
            Limit("GREATER_THAN_OR_EQUAL", 1.0, "limits.yaml: line 3: warning_min", "warning"))


@pytest.mark.parametrize("value, outcome, means", [
    (1050, PASSED, ""), (1100, PASSED, ""), (950, PASSED, ""),
    (1101, FAILED, "1.101 V is above 1.1 V (limits.yaml: line 2: max).")])
def test_a_value_with_an_alarm_limit_is_a_check(value, outcome, means):
    kept = read(f"Success: rail 2 is {value}mV", END, settings=Settings(limits_of=limits_of))
    assert kept.said() == [("rail 2 value within limits", outcome), ("rail 2", PASSED)]
    assert kept.checks[0].means == means


def test_calls_are_asked_for_failed_checks_alone():
    settings = Settings(calls_of=lambda check: (f"call of {check.name}",))
    assert [check.calls for check in read(GOOD, BAD, END, settings=settings).checks] == [
        (), ("call of board weld check",)]


def test_the_grammar_of_these_tests_has_a_rule_of_each_kind():
    from kestro_report.grammar import KINDS
    assert {rule.kind for rule in RULES.rules} == set(KINDS)
