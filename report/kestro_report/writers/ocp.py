"""JSON lines in the form of OCP Test and Validation 2.0: one test run for each run, a test step for each section."""

import json
from datetime import datetime, timezone
from typing import TextIO

from kestro_report import VERSION
from kestro_report.records import (FAILED, INCOMPLETE, MISSING, PASSED, UNSUPPORTED, Check, Line, Measurement, Run,
                                   Section, Writer)

DIAGNOSES = {PASSED: "PASS", FAILED: "FAIL", MISSING: "FAIL", UNSUPPORTED: "UNKNOWN"}


def stamp(time: float | None) -> str:
    """RFC 3339 in UTC. A log without dates has the moment of the reading."""
    moment = datetime.now(timezone.utc) if time is None or time < 1e8 else datetime.fromtimestamp(time, timezone.utc)
    return moment.isoformat(timespec="milliseconds").replace("+00:00", "Z")


def number(value: float) -> int | float:
    return int(value) if float(value).is_integer() else value


def plain(text: str) -> str:
    return text.encode("utf-8", "replace").decode("utf-8")


class OcpLines(Writer):
    """The artifacts of one file count on from run to run; the format has one test run in a file, so several runs go
    into one test run whose steps are named by their run."""

    def __init__(self, stream: TextIO, name: str = "", parameters: dict[str, object] | None = None) -> None:
        self.stream = stream
        self.name = name or "kestro_test"
        self.parameters = parameters or {}
        self.sequence = 0
        self.time: float | None = None
        self.step = ""
        self.has_begun = False
        self.outcomes: dict[str, int] = {}
        self.pending: Section | None = None

    def write(self, artifact: dict[str, object]) -> None:
        record = {**artifact, "sequenceNumber": self.sequence, "timestamp": stamp(self.time)}
        self.stream.write(json.dumps(record, ensure_ascii=False) + "\n")
        self.sequence += 1

    def write_run(self, what: dict[str, object]) -> None:
        self.write({"testRunArtifact": what})

    def write_step(self, what: dict[str, object]) -> None:
        self.write({"testStepArtifact": {"testStepId": self.step, **what}})

    def report_begins(self) -> None:
        self.write({"schemaVersion": {"major": 2, "minor": 0}})

    def begin_test_run(self, run: Run | None) -> None:
        facts = run.facts if run else {}
        dut = facts.get("dut") or facts.get("serial") or (run.source if run else "unknown")
        hardware = {"hardwareInfoId": "board", "name": facts.get("dut") or "board"}
        hardware |= {"serialNumber": facts["serial"]} if facts.get("serial") else {}
        hardware |= {"location": facts["location"]} if facts.get("location") else {}
        self.write_run({"testRunStart": {
            "name": facts.get("name") or self.name, "version": VERSION, "commandLine": run.command if run else "",
            "parameters": self.parameters,
            "dutInfo": {"dutInfoId": plain(dut), "hardwareInfos": [hardware],
                        "softwareInfos": [{"softwareInfoId": "kestro_test", "name": "kestro_test",
                                           "softwareType": "APPLICATION"}]}}})
        self.has_begun = True

    def run_begins(self, run: Run) -> None:
        self.time = run.began
        if not self.has_begun:
            self.begin_test_run(run)
        else:
            self.write_run({"log": {"severity": "INFO", "message": plain(f"run {run.number}: {run.title}")}})

    def section_begins(self, section: Section) -> None:
        self.time = section.began or self.time
        self.step = f"{section.run.number}.{section.number}"
        self.pending = section

    def begin_step(self) -> None:
        """A section that says nothing is no step, except where it has a banner."""
        if self.pending is not None:
            section, self.pending = self.pending, None
            self.write_step({"testStepStart": {"name": plain(section.name or section.run.title)}})

    def line(self, section: Section | None, line: Line) -> None:
        self.time = line.time or self.time
        if section is None or line.kind not in ("note", "unknown", "text", "data"):
            return
        self.begin_step()
        severity = "WARNING" if line.kind == "unknown" else "INFO" if line.kind == "note" else "DEBUG"
        self.write_step({"log": {"severity": severity, "message": plain(line.text.strip())}})

    def measurement(self, measurement: Measurement) -> None:
        self.begin_step()
        validators = [{"type": limit.type, "value": number(limit.value), "name": plain(limit.source)}
                      for limit in measurement.limits if limit.severity == "alarm"]
        what = {"name": plain(measurement.name), "value": number(measurement.value), "unit": measurement.unit,
                "hardwareInfoId": "board"}
        self.write_step({"measurement": what | ({"validators": validators} if validators else {})})

    def check(self, check: Check) -> None:
        self.begin_step()
        said = [check.line.text.strip()] if check.line else []
        said += [check.means] if check.means else []
        said += [f"call: {call}" for call in check.calls]
        self.write_step({"diagnosis": {"verdict": plain(check.name), "type": DIAGNOSES[check.outcome],
                                       "message": plain("\n".join(said)), "hardwareInfoId": "board"}})

    def section_ends(self, section: Section) -> None:
        self.time = section.ended or self.time
        if section.name:
            self.begin_step()
        if self.pending is None:
            self.write_step({"testStepEnd": {"status": "COMPLETE"}})
        self.pending = None

    def run_ends(self, run: Run) -> None:
        self.time = run.ended or self.time
        self.outcomes[run.outcome] = self.outcomes.get(run.outcome, 0) + 1
        for problem in run.problems:
            self.write_run({"error": {"symptom": "run-not-complete", "message": plain(f"{run.title}: {problem}")}})

    def report_ends(self) -> None:
        if not self.has_begun:
            self.begin_test_run(None)
        is_whole = not self.outcomes.get(INCOMPLETE)
        result = "NOT_APPLICABLE" if not is_whole else "FAIL" if self.outcomes.get(FAILED) else "PASS"
        self.write_run({"testRunEnd": {"status": "COMPLETE" if is_whole else "ERROR", "result": result}})
