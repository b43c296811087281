"""TAP 14: a test point for each check, a comment for each section and run; what failed has a YAML block."""

import json
from typing import TextIO

from kestro_report.records import INCOMPLETE, UNSUPPORTED, Check, Line, Measurement, Run, Section, Writer


def described(text: str) -> str:
    """A number sign would begin a directive, a backslash escapes."""
    return " ".join(text.replace("\\", "\\\\").replace("#", "\\#").split())


def quoted(value: object) -> str:
    """JSON is YAML too, and needs no rules for quotes; but signs that YAML takes for line ends, or for none, need an
    escape."""
    text = json.dumps(value, ensure_ascii=False)
    return text if text.isprintable() else "".join(
        sign if sign.isprintable() else f"\\U{ord(sign):08x}" for sign in text)


class Tap(Writer):
    def __init__(self, stream: TextIO) -> None:
        self.stream = stream
        self.count = 0

    def print(self, text: str) -> None:
        self.stream.write(text + "\n")

    def comment(self, text: str) -> None:
        self.print(f"# {' '.join(text.split())}")

    def report_begins(self) -> None:
        self.print("TAP version 14")

    def run_begins(self, run: Run) -> None:
        self.comment(run.title)

    def section_begins(self, section: Section) -> None:
        if section.name:
            self.comment(section.name)

    def line(self, section: Section | None, line: Line) -> None:
        if line.kind == "unknown":
            self.comment(f"line {line.number} is unknown: {line.text}")

    def point(self, is_good: bool, name: str, directive: str = "") -> None:
        self.count += 1
        self.print(f"{'ok' if is_good else 'not ok'} {self.count} - {described(name)}{directive}")

    def block(self, values: dict[str, object]) -> None:
        self.print("  ---")
        for name, value in values.items():
            self.print(f"  {name}: {quoted(value)}")
        self.print("  ...")

    def check(self, check: Check) -> None:
        name = f"{check.section.name}: {check.name}" if check.section.name else check.name
        self.point(not check.bad, name, " # SKIP the board does not support it" if check.outcome == UNSUPPORTED else "")
        if check.bad:
            values = {"outcome": check.outcome, "line": check.line and check.line.number,
                      "text": check.line and check.line.text, "means": check.means,
                      "result": None if check.code is None else f"0x{check.code:x}", "calls": list(check.calls)}
            self.block({name: value for name, value in values.items() if value not in (None, "", [])})

    def measurement(self, measurement: Measurement) -> None:
        self.comment(f"{measurement.name}: {measurement.value:.10g} {measurement.unit}")

    def run_ends(self, run: Run) -> None:
        if run.outcome == INCOMPLETE:
            self.point(False, f"{run.title}: the run ended properly")
            self.block({"problems": run.problems})

    def report_ends(self) -> None:
        self.print(f"1..{self.count}" + ("" if self.count else " # SKIP nothing was read"))
