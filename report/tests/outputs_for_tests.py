"""Small outputs of kestro_test, and how the tests start kestro_report."""

import subprocess
from pathlib import Path

from kestro_report.grammar import Grammar
from kestro_report.reader import Reader, Settings
from kestro_report.records import Check, Line, Measurement, Run, Section, Writer
from kestro_report.texts import text_lines

TREE = Path(__file__).resolve().parent.parent.parent
KESTRO_REPORT = TREE / "report" / "bin" / "kestro_report"

BANNER = "\n*********   test_voltage_get test begin:  ********\n"
PASSED_LINE = "Success: voltage 2 get and set value pass. original value 1000\n"
FAILED_LINE = "Error: voltage get fail. voltage_id 3 ret 0x8111010f\n"
END = "cmd_exec used second:0\ncmd_exec used millisecond:12\n"
GOOD = BANNER + PASSED_LINE + END
BAD = BANNER + PASSED_LINE + FAILED_LINE + END
# It ended somewhere in the middle, whatever it has found until then.
CUT = BANNER + PASSED_LINE


class Recorder(Writer):
    """Keeps all that a reading tells."""

    def __init__(self) -> None:
        self.runs: list[Run] = []
        self.sections: list[Section] = []
        self.checks: list[Check] = []
        self.lines: list[Line] = []
        self.measurements: list[Measurement] = []

    def run_begins(self, run: Run) -> None:
        self.runs.append(run)

    def section_begins(self, section: Section) -> None:
        self.sections.append(section)

    def check(self, check: Check) -> None:
        self.checks.append(check)

    def line(self, section: Section | None, line: Line) -> None:
        self.lines.append(line)

    def measurement(self, measurement: Measurement) -> None:
        self.measurements.append(measurement)

    def said(self) -> list[tuple[str, str]]:
        return [(check.name, check.outcome) for check in self.checks]


def in_pieces(data: bytes, size: int):
    """A read function that gives at most so many bytes at a time."""
    at = 0

    def read(wanted: int) -> bytes:
        nonlocal at
        piece = data[at:at + min(size, wanted)]
        at += len(piece)
        return piece
    return read


def reading(rules: Grammar, data: bytes | str, size: int = 1 << 16, settings: Settings | None = None,
            facts: dict[str, str] | None = None) -> tuple[Reader, Recorder]:
    data = data.encode("utf-8", "surrogateescape") if isinstance(data, str) else data
    recorder = Recorder()
    reader = Reader(rules, [recorder], settings)
    reader.begin_source("output", facts)
    for line in text_lines(in_pieces(data, size)):
        reader.feed(line)
    reader.end_source()
    return reader, recorder


def kestro_report(*words: object, **how) -> subprocess.CompletedProcess:
    how = {"capture_output": True, "text": True, "stdin": subprocess.DEVNULL, "timeout": 60, **how}
    return subprocess.run([str(KESTRO_REPORT), *map(str, words)], check=False, **how)
