"""The formats, read back by readers of theirs and held against their rules."""

import io
import random
import xml.etree.ElementTree

import junitparser
import pytest
import tap.parser
from formats import artifacts, ocp_records, tap_points
from junitparser import Error, Failure, JUnitXml, Skipped
from junitparser.junitparser import SystemErr, SystemOut
from readings import BAD, END, GOOD, RAILS, RELAYS, written

from kestro_report.records import Limit
from kestro_report.settings import Expected, Settings
from kestro_report.writers import junit
from kestro_report.writers.junit import JUnit
from kestro_report.writers.ocp import OcpLines
from kestro_report.writers.summary import Summary
from kestro_report.writers.tap import Tap

HEALTHY = [RAILS, GOOD, "Success: rail 2 is 1012mV", "Success: rail 3 not support trim", RELAYS, "mode 0x0", END]
SICK = [RAILS, BAD, "Error: rail 0x2 set fail. ret 0x8111010f", "a remark", RELAYS, "mode 0x0", END]
CUT = [RAILS, GOOD, RELAYS]
BINARY = [GOOD, *(bytes(range(256)).decode("latin-1").replace("\n", "").replace("\r", "") for _ in range(3)),
          "\udc80\udcff\x00\x01 Success: nothing", "\x1b[31mError: \udcff is new\x1b[0m", END]
# Names with everything that a format could take for a sign of its own.
HOSTILE = ["Success: label # SKIP a\\b & <c> \"d\" ]]> 'e' --- %s {x} \u2028\ufeff\ufffe\U0001f600 pass",
           "##### <&#\"1.. test begin ", "Success: label  ok 7 - x pass", "Error: label \udcff\x07\x85 is new", END]
SEVERAL = [HEALTHY, SICK, CUT, [], HEALTHY]
INPUTS = {"healthy": [HEALTHY], "sick": [SICK], "cut": [CUT], "empty": [[]], "binary": [BINARY], "hostile": [HOSTILE],
          "several": SEVERAL, "none": []}
WRITERS = {"junit": JUnit, "tap": Tap, "jsonl": OcpLines}


def text_of(make, *inputs, **how) -> str:
    stream = io.StringIO()
    written(make(stream), *inputs, **how)
    return stream.getvalue()


# --- JUnit ------------------------------------------------------------------------------------------------------------

def suites_of(*inputs, **how) -> JUnitXml:
    """As a reader has them, after the counts in the file have been held against what is there."""
    text = text_of(JUnit, *inputs, **how)
    root = xml.etree.ElementTree.fromstring(text)
    assert root.tag == "testsuites"
    counts = {"tests": "testcase", "failures": "testcase/failure", "errors": "testcase/error",
              "skipped": "testcase/skipped"}
    for suite in root:
        for name, path in counts.items():
            assert int(suite.get(name)) == len(suite.findall(path)), (suite.get("name"), name)
    for name, path in counts.items():
        assert int(root.get(name)) == len(root.findall(f"testsuite/{path}")), name
    return JUnitXml.fromstring(text.encode())


def cases_of(*inputs, **how) -> list[tuple[str, str, list]]:
    return [(case.classname, case.name, [type(each) for each in case.result]) for suite in suites_of(*inputs, **how)
            for case in suite]


def output_of(suite: junitparser.TestSuite) -> str | None:
    element = suite.child(SystemOut)
    return element and element.text


def unknown_of(suite: junitparser.TestSuite) -> str | None:
    element = suite.child(SystemErr)
    return element and element.text


@pytest.mark.parametrize("name, counts", [
    ("healthy", (4, 0, 0, 1)), ("sick", (3, 2, 0, 0)), ("cut", (2, 0, 1, 0)), ("empty", (1, 0, 1, 0)),
    ("binary", (2, 0, 1, 0)), ("hostile", (3, 0, 1, 0)), ("several", (14, 2, 2, 2)), ("none", (0, 0, 0, 0))])
def test_junit_counts(name, counts):
    suites = suites_of(*INPUTS[name])
    assert (suites.tests, suites.failures, suites.errors, suites.skipped) == counts


def test_junit_cases_of_a_healthy_run():
    assert cases_of(HEALTHY) == [("board-0.txt.rails", "board weld check", []), ("board-0.txt.rails", "rail 2", []),
                                 ("board-0.txt.rails", "rail 3 trim", [Skipped]), ("board-0.txt.relays", "mode", [])]


def test_junit_failures_say_line_and_meaning():
    failures = [case.result[0] for suite in suites_of(SICK) for case in suite if case.result]
    assert [(each.type, each.message, each.text) for each in failures] == [
        ("failed", BAD, BAD), ("failed", "Rail 2 did not answer.", SICK[2])]
    assert {type(each) for each in failures} == {Failure}


def test_junit_missing_check_and_its_calls():
    settings = Settings(expected=Expected({("rails", 1): {"rail 7": 1}}), calls_of=lambda check: ("drv_get(7) = 1",))
    (name, case), = [(suite.name, case) for suite in suites_of(HEALTHY, settings=settings) for case in suite
                     if case.result and isinstance(case.result[0], Failure)]
    assert (name, case.name) == ("board-0.txt / rails", "rail 7")
    assert (case.result[0].type, case.result[0].message) == ("missing", "A good run has it, this one does not.")
    assert case.result[0].text == "call: drv_get(7) = 1"


def test_junit_tells_a_run_that_was_cut():
    cases = cases_of(CUT, problem="not ended after 5 seconds")
    assert cases[-1] == ("board-0.txt.end of the run", "the run ended properly", [Error])
    error = [case for suite in suites_of(CUT, problem="no answer") for case in suite][-1].result[0]
    assert (error.message, error.text) == ("no answer", "no answer\nthe output ends before the program did")


def test_junit_output_and_unknown_lines():
    suite = next(iter(suites_of(SICK)))
    assert output_of(suite).split("\n") == SICK[:4]
    assert unknown_of(suite) == "line 4 is unknown: a remark"


def test_junit_suite_without_checks_shows_its_unknown_lines():
    suites = list(suites_of([GOOD, "supply 1 begins", "a remark", END]))
    assert [(suite.name, suite.tests, unknown_of(suite)) for suite in suites] == [
        ("board-0.txt", 1, None), ("board-0.txt / supplies: 1", 0, "line 3 is unknown: a remark")]


def test_junit_times_properties_and_names():
    facts = {"dut": "rack 3", "serial": "0042", "location": "row <B>", "command": "rail_test all"}
    lines = [f"2026-03-01T10:00:{second:02}Z {line}" for second, line in zip((0, 1, 5, 9), (RAILS, GOOD, RELAYS, END))]
    suites = suites_of([*lines[:3], "2026-03-01T10:00:06Z mode 0x0", lines[3]], facts=[facts])
    assert [(suite.name, suite.time, suite.timestamp, suite.hostname) for suite in suites] == [
        ("rack 3: rail_test all / rails", 5, "2026-03-01T10:00:00", "rack 3"),
        ("rack 3: rail_test all / relays", 4, "2026-03-01T10:00:05", "rack 3")]
    assert suites.time == 9
    for suite in suites:
        assert {each.name: each.value for each in suite.properties()} == {
            "source": "board-0.txt", "command": "rail_test all", "serial": "0042", "location": "row <B>"}


def test_junit_has_no_moments_of_a_log_that_tells_none():
    suite = next(iter(suites_of([f"[   12.500000] {GOOD}", f"[   14.000000] {END}"])))
    assert (suite.timestamp, suite.time) == (None, 1.5)


def test_junit_markup_and_signs_that_xml_forbids():
    names = [case.name for suite in suites_of(HOSTILE) for case in suite]
    assert names[0] == "label # SKIP a\\b & <c> \"d\" ]]> 'e' --- %s {x} \\ufeff\\ufffe\U0001f600"
    assert names[1] == "label ok 7 - x"
    errors = [unknown_of(suite) for suite in suites_of(HOSTILE) if unknown_of(suite)]
    assert errors == ["line 4 is unknown: Error: label \\xff\\x07\\x85 is new"]
    suite = next(iter(suites_of([GOOD, END], facts=[{"dut": "\udcff\x01]]>"}])))
    assert suite.name == "??]]>"


def test_junit_leaves_out_what_nobody_reads(monkeypatch):
    monkeypatch.setattr(junit, "LONGEST_OUTPUT", 200)
    monkeypatch.setattr(junit, "IN_MEMORY", 1000)
    suite = next(iter(suites_of([GOOD] * 1000 + [END])))
    assert (suite.tests, len(list(suite))) == (1000, 1000)
    assert output_of(suite).split("\n")[-2:] == [GOOD, "(the rest is left out)"]
    assert len(output_of(suite)) < 300


# --- TAP --------------------------------------------------------------------------------------------------------------

def points_of(*inputs, **how) -> list[tuple[str, str, bool, dict]]:
    """By the rules, and as a reader has them that knows no escapes."""
    text = text_of(Tap, *inputs, **how)
    points = tap_points(text)
    lines = list(tap.parser.Parser().parse_text(text))
    results = [line for line in lines if line.category == "test"]
    assert [line.ok for line in results] == [outcome == "ok" for outcome, *_ in points]
    for line, (_, name, skip, _) in zip(results, points, strict=True):
        assert "#" in name or bool(line.skip) == skip
    assert [line.expected_tests for line in lines if line.category == "plan"] == [len(points)]
    assert [line.category for line in lines if line.category in ("unknown", "bail")] == []
    assert [line.yaml_block or {} for line in results] == [block for _, _, _, block in points]
    return points


def test_tap_of_a_healthy_run():
    assert points_of(HEALTHY) == [("ok", "rails: board weld check", False, {}), ("ok", "rails: rail 2", False, {}),
                                  ("ok", "rails: rail 3 trim", True, {}), ("ok", "relays: mode", False, {})]


def test_tap_of_a_sick_run():
    assert points_of(SICK) == [
        ("not ok", "rails: board weld check", False, {"outcome": "failed", "line": 2, "text": BAD,
                                                      "result": "0x8111010f"}),
        ("not ok", "rails: rail 2 set", False, {"outcome": "failed", "line": 3, "text": SICK[2],
                                                "means": "Rail 2 did not answer.", "result": "0x8111010f"}),
        ("ok", "relays: mode", False, {})]


def test_tap_of_missing_checks_and_their_calls():
    settings = Settings(expected=Expected({("relays", 1): {"relay 7": 2}}), calls_of=lambda check: ("a: b", "- c # d"))
    assert points_of(HEALTHY, settings=settings)[-1] == (
        "not ok", "relays: relay 7", False, {"outcome": "missing", "calls": ["a: b", "- c # d"],
                                             "means": "A good run passes it 2 times, this one 0."})


@pytest.mark.parametrize("name, outcomes", [
    ("cut", ["ok", "not ok"]), ("empty", ["not ok"]), ("binary", ["ok", "not ok"]), ("hostile", ["ok", "ok", "not ok"]),
    ("several", ["ok"] * 4 + ["not ok"] * 2 + ["ok"] * 2 + ["not ok"] * 2 + ["ok"] * 4), ("none", [])])
def test_tap_outcomes(name, outcomes):
    assert [outcome for outcome, *_ in points_of(*INPUTS[name])] == outcomes


def test_tap_tells_a_run_that_was_cut():
    assert points_of(CUT, problem="no\u2028answer \U0001f600 \x07")[-1] == (
        "not ok", "board-0.txt: the run ended properly", False,
        {"problems": ["no\u2028answer \U0001f600 \x07", "the output ends before the program did"]})


def test_tap_escapes_what_would_be_a_directive():
    assert points_of(HOSTILE)[0][:3] == (
        "ok", "label # SKIP a\\b & <c> \"d\" ]]> 'e' --- %s {x} \\ufeff\\ufffe\U0001f600", False)
    assert " - label \\# SKIP a\\\\b &" in text_of(Tap, HOSTILE)


def test_tap_comments():
    lines = text_of(Tap, [RAILS, "Success: rail 2 is 1012mV", "a # remark", END]).split("\n")
    assert [line for line in lines if line.startswith("#")] == [
        "# board-0.txt", "# rails", "# rail 2 value: 1.012 V", "# line 3 is unknown: a # remark"]


# --- JSON lines -------------------------------------------------------------------------------------------------------

def records_of(*inputs, make=OcpLines, **how) -> list[dict]:
    return ocp_records(text_of(make, *inputs, **how))


@pytest.mark.parametrize("name, end", [
    ("healthy", ("COMPLETE", "PASS")), ("sick", ("COMPLETE", "FAIL")), ("cut", ("ERROR", "NOT_APPLICABLE")),
    ("empty", ("ERROR", "NOT_APPLICABLE")), ("binary", ("ERROR", "NOT_APPLICABLE")),
    ("hostile", ("ERROR", "NOT_APPLICABLE")), ("several", ("ERROR", "NOT_APPLICABLE")),
    ("none", ("ERROR", "NOT_APPLICABLE"))])
def test_json_lines_keep_the_rules(name, end):
    assert artifacts(records_of(*INPUTS[name]), "testRunEnd") == [{"status": end[0], "result": end[1]}]


def test_json_lines_keep_the_rules_whatever_comes():
    signs = random.Random(1)
    pool = [*HEALTHY, *SICK, *HOSTILE, *BINARY, "table", "1 500", "2 600", "dump of x", "fan 1 turns 7 of 0.5",
            "supply 1 begins", "kestro_test operate x fail! ", "Usage: kestro_test [OPTION]",
            "# kestro_test rail_test x"]
    expected = Settings(expected=Expected({("rails", 1): {"rail 9": 1}, ("supplies: 1", 2): {"rail 8": 2}}))
    for _ in range(60):
        inputs = [signs.choices(pool, k=signs.randrange(30)) for _ in range(signs.randrange(3))]
        records_of(*inputs, settings=expected)
        points_of(*inputs, settings=expected)
        suites_of(*inputs, settings=expected)


def test_json_lines_say_what_was_checked():
    diagnoses = artifacts(records_of(HEALTHY, SICK), "diagnosis")
    said = [(each["verdict"], each["type"], each["message"]) for each in diagnoses]
    assert said == [("board weld check", "PASS", GOOD), ("rail 2", "PASS", HEALTHY[2]),
                    ("rail 3 trim", "UNKNOWN", HEALTHY[3]), ("mode", "PASS", "mode 0x0"),
                    ("board weld check", "FAIL", BAD), ("rail 2 set", "FAIL", SICK[2] + "\nRail 2 did not answer."),
                    ("mode", "PASS", "mode 0x0")]


def test_json_lines_steps_are_sections():
    records = records_of(HEALTHY, CUT)
    assert [each["name"] for each in artifacts(records, "testStepStart")] == ["rails", "relays", "rails", "relays"]
    assert [each["status"] for each in artifacts(records, "testStepEnd")] == [*["COMPLETE"] * 3, "ERROR"]
    assert artifacts(records, "error") == [{
        "symptom": "run-not-complete", "message": "board-1.txt: the output ends before the program did"}]


def limits_of(measurement):
    return (Limit("LESS_THAN_OR_EQUAL", 1.5, "limits.yaml: line 2: max"),
            Limit("GREATER_THAN_OR_EQUAL", 1.2, "limits.yaml: line 3: warning_min", "warning"))


def test_json_lines_measurements_and_their_limits():
    records = records_of(HEALTHY, settings=Settings(limits_of=limits_of))
    assert artifacts(records, "measurement") == [{
        "name": "rail 2 value", "value": 1.012, "unit": "V", "hardwareInfoId": "board-1",
        "validators": [{"name": "limits.yaml: line 2: max", "type": "LESS_THAN_OR_EQUAL", "value": 1.5}]}]
    said = "rail 2 value: 1.012 V is beyond 1.2 (limits.yaml: line 3: warning_min)"
    assert {"severity": "WARNING", "message": said} in artifacts(records, "log")
    assert [each["type"] for each in artifacts(records, "diagnosis")] == ["PASS", "PASS", "PASS", "UNKNOWN", "PASS"]


def test_json_lines_curves_are_series():
    records = records_of([RAILS, GOOD, "table", "1 500", "2 700", "3 800", RELAYS, "table", "1 90", "mode 0x0", END])
    assert artifacts(records, "measurement") == []
    assert [(each["measurementSeriesId"], each["name"], each["unit"])
            for each in artifacts(records, "measurementSeriesStart")] == [
        ("1.1.1", "speed by step", "rpm"), ("1.2.1", "speed by step", "rpm")]
    assert [(each["measurementSeriesId"], each["value"], each["metadata"]["name"])
            for each in artifacts(records, "measurementSeriesElement")] == [
        ("1.1.1", 500, "step 1"), ("1.1.1", 700, "step 2"), ("1.1.1", 800, "step 3"), ("1.2.1", 90, "step 1")]
    assert [each["totalCount"] for each in artifacts(records, "measurementSeriesEnd")] == [3, 1]


def test_json_lines_logs():
    logs = artifacts(records_of([GOOD, "Info: so it is", "a remark", "dump of x", "00: 11", END]), "log")[1:]
    assert [(each["severity"], each["message"]) for each in logs] == [
        ("INFO", "Info: so it is"), ("WARNING", "a remark"), ("DEBUG", "dump of x"), ("DEBUG", "00: 11")]


def start_of(*inputs, **how) -> dict:
    return artifacts(records_of(*inputs, **how), "testRunStart")[0]


def test_json_lines_tell_whose_run_it_is():
    facts = {"dut": "rack 3", "serial": "0042", "location": "row B", "command": "rail_test all", "name": "evening"}
    start = start_of(HEALTHY, facts=[facts], make=lambda stream: OcpLines(stream, "x", {"limits": "limits.yaml"}))
    assert (start["name"], start["commandLine"], start["parameters"]) == (
        "evening", "rail_test all", {"limits": "limits.yaml"})
    assert start["dutInfo"]["dutInfoId"] == "rack 3"
    assert start["dutInfo"]["hardwareInfos"] == [
        {"hardwareInfoId": "board-1", "name": "rack 3", "serialNumber": "0042", "location": "row B"}]
    assert start_of(HEALTHY)["dutInfo"]["dutInfoId"] == "board-0.txt"


def test_json_lines_of_several_boards_name_each():
    facts = [{"dut": "a"}, {"dut": "b", "serial": "2"}, {"dut": "a"}]
    records = records_of(HEALTHY, SICK, HEALTHY, facts=facts)
    dut = artifacts(records, "testRunStart")[0]["dutInfo"]
    assert dut["dutInfoId"] == "2 boards"
    assert [(each["hardwareInfoId"], each["name"]) for each in dut["hardwareInfos"]] == [
        ("board-1", "a"), ("board-2", "b")]
    assert [each["hardwareInfoId"] for each in artifacts(records, "diagnosis")] == (
        ["board-1"] * 4 + ["board-2"] * 3 + ["board-1"] * 4)


def test_json_lines_have_the_times_of_the_log():
    lines = [f"2026-03-01 10:00:{second:02}.250 {line}" for second, line in enumerate([GOOD, "Info: x", BAD, END])]
    records = records_of(lines)
    assert [record["timestamp"] for record in records[:2]] == ["2026-03-01T10:00:00.250Z"] * 2
    stamps = [record["timestamp"] for record in records if "diagnosis" in record.get("testStepArtifact", {})]
    assert stamps == ["2026-03-01T10:00:00.250Z", "2026-03-01T10:00:02.250Z"]
    assert records[-1]["timestamp"] == "2026-03-01T10:00:03.250Z"


# --- all of them ------------------------------------------------------------------------------------------------------

@pytest.mark.parametrize("inputs", INPUTS.values(), ids=INPUTS)
@pytest.mark.parametrize("make", [*WRITERS.values(), lambda stream: Summary(stream, True)], ids=[*WRITERS, "summary"])
def test_every_report_can_be_written_as_utf_8(make, inputs):
    text_of(make, *inputs).encode("utf-8")
