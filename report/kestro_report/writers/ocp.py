"""JSON lines in the form of OCP Test and Validation 2.0.

The form has one test run in a file. Several runs are one test run whose steps are named by their run; its head lists
every board that was read, so the artifacts behind it wait in a temporary file until the end.
"""

import json
import shutil
import tempfile
from datetime import datetime, timezone
from typing import TextIO

from kestro_report import VERSION
from kestro_report.records import (FAILED, INCOMPLETE, MISSING, PASSED, UNSUPPORTED, Check, Line, Measurement, Run,
                                   Section, Writer)

DIAGNOSES = {PASSED: "PASS", FAILED: "FAIL", MISSING: "FAIL", UNSUPPORTED: "UNKNOWN"}
SEVERITIES = {"note": "INFO", "unknown": "WARNING", "text": "DEBUG", "data": "DEBUG"}
# The schema's version and the begin of the test run come before all that waits.
HEAD_LINES = 2
IN_MEMORY = 1 << 20


def stamp(time: float | None) -> str:
    """RFC 3339 in UTC. A log without dates has the moment of the reading."""
    moment = datetime.now(timezone.utc) if time is None or time < 1e8 else datetime.fromtimestamp(time, timezone.utc)
    return moment.isoformat(timespec="milliseconds").replace("+00:00", "Z")


def number(value: float) -> int | float:
    return int(value) if float(value).is_integer() else value


def plain(text: str) -> str:
    return text.encode("utf-8", "replace").decode("utf-8")


class OcpLines(Writer):
    def __init__(self, stream: TextIO, name: str = "", parameters: dict[str, object] | None = None) -> None:
        self.stream = stream
        self.name = name or "kestro_test"
        self.parameters = parameters or {}
        self.artifacts = tempfile.SpooledTemporaryFile(IN_MEMORY, "w+", encoding="utf-8")
        self.sequence = HEAD_LINES
        self.time: float | None = None
        self.first_run: Run | None = None
        self.boards: dict[tuple[str, str, str], str] = {}  # the hardwareInfoId of each
        self.outcomes: dict[str, int] = {}
        self.step = ""
        self.board = ""
        self.pending: Section | None = None
        self.problems = 0  # that the run had when the step began
        self.series: dict[str, tuple[str, int]] = {}  # id and length of each curve of the section

    def record(self, artifact: dict[str, object], sequence: int, time: float | None) -> str:
        record = {**artifact, "sequenceNumber": sequence, "timestamp": stamp(time)}
        return json.dumps(record, ensure_ascii=False, allow_nan=False) + "\n"

    def write(self, artifact: dict[str, object]) -> None:
        self.artifacts.write(self.record(artifact, self.sequence, self.time))
        self.sequence += 1

    def write_run(self, what: dict[str, object]) -> None:
        self.write({"testRunArtifact": what})

    def write_step(self, what: dict[str, object]) -> None:
        self.write({"testStepArtifact": {"testStepId": self.step, **what}})

    # --- runs ---------------------------------------------------------------------------------------------------------

    def run_begins(self, run: Run) -> None:
        self.time = run.began
        self.first_run = self.first_run or run
        facts = run.facts
        board = (facts.get("dut", ""), facts.get("serial", ""), facts.get("location", ""))
        self.board = self.boards.setdefault(board, f"board-{len(self.boards) + 1}")
        self.write_run({"log": {"severity": "INFO", "message": plain(f"run {run.number}: {run.title}")}})

    def run_ends(self, run: Run) -> None:
        self.time = run.ended or self.time
        self.outcomes[run.outcome] = self.outcomes.get(run.outcome, 0) + 1
        for problem in run.problems:
            self.write_run({"error": {"symptom": "run-not-complete", "message": plain(f"{run.title}: {problem}")}})

    # --- sections -----------------------------------------------------------------------------------------------------

    def section_begins(self, section: Section) -> None:
        self.time = section.began or self.time
        self.step = f"{section.run.number}.{section.number}"
        self.pending = section
        self.problems = len(section.run.problems)

    def begin_step(self) -> None:
        """A section that says nothing is no step, except where it has a banner."""
        if self.pending is not None:
            section, self.pending = self.pending, None
            self.write_step({"testStepStart": {"name": plain(section.name or section.run.title)}})

    def section_ends(self, section: Section) -> None:
        self.time = section.ended or self.time
        if section.name:
            self.begin_step()
        if self.pending is None:
            self.end_series()
            is_whole = len(section.run.problems) == self.problems
            self.write_step({"testStepEnd": {"status": "COMPLETE" if is_whole else "ERROR"}})
        self.pending = None

    def line(self, section: Section | None, line: Line) -> None:
        self.time = line.time or self.time
        if section is not None and line.kind in SEVERITIES:
            self.begin_step()
            self.write_step({"log": {"severity": SEVERITIES[line.kind], "message": plain(line.text.strip())}})

    def check(self, check: Check) -> None:
        self.begin_step()
        said = [check.line.text.strip()] if check.line else []
        said += [check.means] if check.means else []
        said += [f"call: {call}" for call in check.calls]
        self.write_step({"diagnosis": {"verdict": plain(check.name), "type": DIAGNOSES[check.outcome],
                                       "message": plain("\n".join(said)), "hardwareInfoId": self.board}})

    # --- measurements -------------------------------------------------------------------------------------------------

    def measurement(self, measurement: Measurement) -> None:
        self.begin_step()
        if measurement.series:
            self.write_element(measurement)
        else:
            value = {"name": plain(measurement.name), "value": number(measurement.value)}
            self.write_step({"measurement": value | self.said_of(measurement)})
        for limit in measurement.broken:
            if limit.severity == "warning":
                said = (f"{measurement.name}: {measurement.value:.10g} {measurement.unit} is beyond "
                        f"{limit.value:.10g} ({limit.source})")
                self.write_step({"log": {"severity": "WARNING", "message": plain(said)}})

    def said_of(self, measurement: Measurement) -> dict[str, object]:
        """Bounds that only warn are no validators: a value beyond one does not fail."""
        validators = [{"name": plain(limit.source), "type": limit.type, "value": number(limit.value)}
                      for limit in measurement.limits if limit.severity == "alarm"]
        said: dict[str, object] = {"unit": measurement.unit, "hardwareInfoId": self.board}
        return said | ({"validators": validators} if validators else {})

    def write_element(self, measurement: Measurement) -> None:
        """A section's points of one curve are one series, whatever stands between them."""
        if measurement.series not in self.series:
            identity = f"{self.step}.{len(self.series) + 1}"
            self.series[measurement.series] = (identity, 0)
            self.write_step({"measurementSeriesStart": {"measurementSeriesId": identity,
                                                        "name": plain(measurement.series)}
                             | self.said_of(measurement)})
        identity, index = self.series[measurement.series]
        self.write_step({"measurementSeriesElement": {
            "index": index, "measurementSeriesId": identity, "value": number(measurement.value),
            "timestamp": stamp(self.time), "metadata": {"name": plain(measurement.name)}}})
        self.series[measurement.series] = (identity, index + 1)

    def end_series(self) -> None:
        for identity, count in self.series.values():
            self.write_step({"measurementSeriesEnd": {"measurementSeriesId": identity, "totalCount": count}})
        self.series = {}

    # --- the whole ----------------------------------------------------------------------------------------------------

    def hardware(self) -> list[dict[str, str]]:
        infos = []
        for (dut, serial, location), identity in self.boards.items():
            facts = {"hardwareInfoId": identity, "name": dut or "board", "serialNumber": serial, "location": location}
            infos.append({name: plain(value) for name, value in facts.items() if value})
        return infos

    def dut(self) -> str:
        """The form has one device for a run; of several boards it is all of them together."""
        if len(self.boards) > 1:
            return f"{len(self.boards)} boards"
        dut, serial, _ = next(iter(self.boards), ("", "", ""))
        return dut or serial or (self.first_run.source if self.first_run else "") or "unknown"

    def start(self) -> dict[str, object]:
        run = self.first_run
        software = {"softwareInfoId": "kestro_test", "name": "kestro_test", "softwareType": "APPLICATION"}
        return {"testRunArtifact": {"testRunStart": {
            "name": plain(run and run.facts.get("name") or self.name), "version": VERSION,
            "commandLine": plain(run.command) if run else "", "parameters": self.parameters,
            "dutInfo": {"dutInfoId": plain(self.dut()), "hardwareInfos": self.hardware(),
                        "softwareInfos": [software]}}}}

    def report_ends(self) -> None:
        is_whole = bool(self.outcomes) and not self.outcomes.get(INCOMPLETE)
        result = "NOT_APPLICABLE" if not is_whole else "FAIL" if self.outcomes.get(FAILED) else "PASS"
        self.write_run({"testRunEnd": {"status": "COMPLETE" if is_whole else "ERROR", "result": result}})
        began = self.first_run.began if self.first_run else None
        self.stream.write(self.record({"schemaVersion": {"major": 2, "minor": 0}}, 0, began))
        self.stream.write(self.record(self.start(), 1, began))
        self.artifacts.seek(0)
        shutil.copyfileobj(self.artifacts, self.stream)
        self.artifacts.close()
