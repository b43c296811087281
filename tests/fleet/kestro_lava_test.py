"""What fleet/lava/kestro-lava makes of JSON lines.

usage: kestro_lava_test.py SOURCE_DIR BUILD_DIR
"""

import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(sys.argv[1])
PROGRAM = SOURCE / "fleet/lava/kestro-lava"
BEGIN = {"schemaVersion": {"major": 2, "minor": 0}}
PASSED = {"testRunArtifact": {"testRunEnd": {"status": "COMPLETE", "result": "PASS"}}}


def step(identifier: str, **what) -> dict:
    return {"testStepArtifact": {"testStepId": identifier, **what}}


def start(identifier: str, name: str) -> dict:
    return step(identifier, testStepStart={"name": name})


def check(name: str, kind: str, identifier: str = "1") -> dict:
    return step(identifier, diagnosis={"verdict": name, "type": kind, "message": "a line"})


def measured(value: object, *validators: tuple[str, object], name: str = "rail 3", unit: str = "mV") -> dict:
    limits = {"validators": [{"type": kind, "value": bound} for kind, bound in validators]} if validators else {}
    return step("1", measurement={"name": name, "value": value, "unit": unit, **limits})


def call(text: str, *words: str, environment: dict | None = None) -> subprocess.CompletedProcess:
    return subprocess.run([sys.executable, "-B", PROGRAM, *words], input=text, capture_output=True, text=True, check=False,
                          env=environment)


def lines_of(*artifacts: dict) -> str:
    return "".join(json.dumps(artifact) + "\n" for artifact in artifacts)


class KestroLava(unittest.TestCase):
    def handed_on(self, *artifacts: dict) -> list[str]:
        run = call(lines_of(BEGIN, *artifacts), "--print")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        return run.stdout.splitlines()

    def cases(self, *artifacts: dict) -> list[str]:
        """Without sets and without the verdict."""
        return [line.removeprefix("lava-test-case ") for line in self.handed_on(*artifacts, PASSED)
                if line.startswith("lava-test-case ") and " verdict " not in line]

    def assert_refused(self, text: str, *parts: str) -> None:
        run = call(text, "--print")
        self.assertEqual(run.returncode, 2, run)
        self.assertEqual(run.stdout.splitlines()[-1:], ["lava-test-case verdict --result fail"])
        self.assertEqual(len(run.stderr.splitlines()), 1, run.stderr)
        for part in parts:
            self.assertIn(part, run.stderr)

    def test_checks_are_test_cases_in_the_set_of_their_section(self) -> None:
        printed = self.handed_on(start("1", "voltage"), check("voltage 3", "PASS"), check("voltage 4", "FAIL"),
                                 start("2", "board mng"), check("fullin", "UNKNOWN", "2"), PASSED)
        self.assertEqual(printed, [
            "lava-test-set start voltage", "lava-test-case voltage_3 --result pass",
            "lava-test-case voltage_4 --result fail", "lava-test-set stop", "lava-test-set start board_mng",
            "lava-test-case fullin --result skip", "lava-test-set stop", "lava-test-case verdict --result pass"])

    def test_steps_that_overlap_keep_their_sets(self) -> None:
        printed = self.handed_on(start("1", "a"), start("2", "b"), check("x", "PASS", "2"), check("x", "PASS", "1"), PASSED)
        self.assertEqual(printed[:5], ["lava-test-set start b", "lava-test-case x --result pass", "lava-test-set stop",
                                       "lava-test-set start a", "lava-test-case x --result pass"])

    def test_sections_with_one_name_are_two_sets(self) -> None:
        printed = self.handed_on(start("1", "a"), check("x", "PASS"), start("2", "a"), check("x", "FAIL", "2"), PASSED)
        self.assertEqual([line for line in printed if "start" in line], ["lava-test-set start a", "lava-test-set start a_2"])

    def test_measurements_are_judged_by_their_limits(self) -> None:
        within = (("GREATER_THAN_OR_EQUAL", 855), ("LESS_THAN_OR_EQUAL", 945))
        for value, result in ((900, "pass"), (855, "pass"), (945, "pass"), (854, "fail"), (945.5, "fail")):
            self.assertEqual(self.cases(measured(value, *within)),
                             [f"rail_3 --result {result} --measurement {value} --units mV"])
        self.assertEqual(self.cases(measured(0, ("EQUAL", 0))), ["rail_3 --result pass --measurement 0 --units mV"])
        self.assertEqual(self.cases(measured(1, ("EQUAL", 0))), ["rail_3 --result fail --measurement 1 --units mV"])

    def test_values_of_a_series_are_measurements_with_their_places(self) -> None:
        limits = [{"type": "LESS_THAN", "value": 5000}]
        begin = step("1", measurementSeriesStart={"measurementSeriesId": "0", "name": "fan 0", "unit": "rpm",
                                                  "validators": limits})
        elements = [step("1", measurementSeriesElement={"measurementSeriesId": "0", "index": place, "value": value})
                    for place, value in enumerate((4900, 5100))]
        end = step("1", measurementSeriesEnd={"measurementSeriesId": "0", "totalCount": 2})
        self.assertEqual(self.cases(begin, *elements, end), ["fan_0_0 --result pass --measurement 4900 --units rpm",
                                                             "fan_0_1 --result fail --measurement 5100 --units rpm"])
        self.assert_refused(lines_of(BEGIN, elements[0]), "line 2")

    def test_nothing_that_was_not_judged_passes(self) -> None:
        self.assertEqual(self.cases(measured(900)), ["rail_3 --result unknown --measurement 900 --units mV"])
        self.assertEqual(self.cases(measured(900, ("REGEX_MATCH", "9"))),
                         ["rail_3 --result unknown --measurement 900 --units mV"])
        self.assertEqual(self.cases(check("x", "SOMETHING")), ["x --result unknown"])

    def test_what_is_no_number_is_no_measurement(self) -> None:
        for value in ("V1.02", True, float("nan"), float("inf")):
            self.assertEqual(self.cases(measured(value)), ["rail_3 --result unknown"])

    def test_names_and_units_are_one_word_that_a_signal_can_hold(self) -> None:
        for name, word in (("a b>c", "a_b_c"), ("x=1", "x_1"), ("../up", "up"), ("--result", "result"), ("°", "unnamed"),
                           ("", "unnamed"), ("0xff000002 set", "0xff000002_set"), ("a\nb\t<c>", "a_b_c")):
            self.assertEqual(self.cases(check(name, "PASS")), [f"{word} --result pass"])
        self.assertEqual(self.cases(measured(3, unit="deg C")), ["rail_3 --result unknown --measurement 3 --units deg_C"])
        self.assertEqual(self.cases(measured(3, unit="%")), ["rail_3 --result unknown --measurement 3 --units %"])
        self.assertEqual(self.cases(measured(3, unit="")), ["rail_3 --result unknown --measurement 3"])

    def test_one_name_twice_is_two_test_cases(self) -> None:
        self.assertEqual(self.cases(check("a", "PASS"), check("a b", "PASS"), check("a", "FAIL"), check("a_b", "PASS")),
                         ["a --result pass", "a_b --result pass", "a_2 --result fail", "a_b_2 --result pass"])
        self.assertEqual(self.cases(check("a_2", "PASS"), check("a", "PASS"), check("a", "FAIL")),
                         ["a_2 --result pass", "a --result pass", "a_2_2 --result fail"])

    def test_the_verdict_passes_only_a_run_that_ended_properly(self) -> None:
        for status, result, verdict in (("COMPLETE", "PASS", "pass"), ("COMPLETE", "FAIL", "fail"),
                                        ("COMPLETE", "NOT_APPLICABLE", "unknown"), ("ERROR", "NOT_APPLICABLE", "fail"),
                                        ("ERROR", "PASS", "fail"), ("SKIP", "NOT_APPLICABLE", "skip")):
            end = {"testRunArtifact": {"testRunEnd": {"status": status, "result": result}}}
            self.assertEqual(self.handed_on(end), [f"lava-test-case verdict --result {verdict}"])

    def test_an_error_of_a_step_fails(self) -> None:
        self.assertEqual(self.cases(step("1", error={"symptom": "no-answer", "message": "m"})), ["no-answer --result fail"])

    def test_input_that_is_at_fault_is_named_by_its_line_and_fails(self) -> None:
        self.assert_refused("", "line 1", "testRunEnd")
        self.assert_refused(lines_of(BEGIN, check("x", "PASS")), "line 3", "testRunEnd")
        self.assert_refused(lines_of(BEGIN) + "kestro_report: no such file\n", "line 2", "JSON")
        self.assert_refused("[1]\n", "line 1", "object")
        self.assert_refused(lines_of(BEGIN, step("1", diagnosis={"type": "PASS"})), "line 2", "verdict")
        self.assert_refused(lines_of(BEGIN, {"testStepArtifact": 5}), "line 2")
        self.assert_refused(lines_of(BEGIN, measured("a", ("LESS_THAN", 3))), "line 2")

    def test_files_are_read_and_those_that_cannot_be_are_named(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            file = Path(folder) / "lines"
            file.write_text(lines_of(BEGIN, PASSED), encoding="utf-8")
            self.assertEqual(call("", "--print", str(file)).stdout, "lava-test-case verdict --result pass\n")
            for name in (folder, folder + "/none"):
                run = call("", "--print", name)
                self.assertEqual(run.returncode, 2)
                self.assertIn(name, run.stderr)

    def test_lavas_commands_are_called_with_these_words(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            for name in ("lava-test-case", "lava-test-set"):
                program = Path(folder) / name
                program.write_text(f'#!/bin/sh\necho "{name}: $*"\n', encoding="utf-8")
                program.chmod(0o755)
            run = call(lines_of(start("1", "s"), check("x y", "PASS"), PASSED), environment={"PATH": f"{folder}:/usr/bin:/bin"})
            self.assertEqual(run.stdout.splitlines(), ["lava-test-set: start s", "lava-test-case: x_y --result pass",
                                                       "lava-test-set: stop", "lava-test-case: verdict --result pass"])

    def test_outside_of_a_job_it_says_what_is_missing(self) -> None:
        run = call(lines_of(PASSED), environment={"PATH": "/nowhere"})
        self.assertEqual(run.returncode, 2)
        self.assertIn("lava-test-case", run.stderr)
        self.assertIn("--print", run.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
