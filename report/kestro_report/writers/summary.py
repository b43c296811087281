"""The summary for people: failures first, each with its section, its line and what it means; then the sections."""

from typing import TextIO

from kestro_report.reader import said_of
from kestro_report.records import (FAILED, INCOMPLETE, MISSING, PASSED, UNSUPPORTED, Check, Measurement, Run, Section,
                                   Writer)

COLOURS = {PASSED: "32", FAILED: "31", MISSING: "31", INCOMPLETE: "35", UNSUPPORTED: "33"}
WORDS = {PASSED: "passed", FAILED: "FAILED", MISSING: "MISSING", INCOMPLETE: "NOT COMPLETE", UNSUPPORTED: "-"}
# More failures of one run than a person reads; the other formats have them all.
SHOWN = 50
# Above so many runs a run that passed is a line of its own and no more.
MANY_RUNS = 1


def counted(number: int, what: str) -> str:
    return f"{number} {what}" + ("" if number == 1 else "s")


class Summary(Writer):
    def __init__(self, stream: TextIO, in_colour: bool, is_short: bool = False) -> None:
        self.stream = stream
        self.in_colour = in_colour
        self.is_short = is_short
        self.outcomes: dict[str, int] = {}
        self.sections: list[tuple[str, dict[str, int], str]] = []
        self.warnings: list[str] = []
        self.warned = 0

    def coloured(self, outcome: str, width: int = 0) -> str:
        word = WORDS[outcome].ljust(width)
        return f"\x1b[{COLOURS[outcome]}m{word}\x1b[0m" if self.in_colour else word

    def print(self, text: str = "") -> None:
        print(text, file=self.stream)

    def run_begins(self, run: Run) -> None:
        self.sections, self.warnings, self.warned = [], [], 0

    def measurement(self, measurement: Measurement) -> None:
        for limit in measurement.broken:
            if limit.severity == "warning":
                self.warned += 1
                if len(self.warnings) < SHOWN:
                    where = f"{measurement.section.name}: " if measurement.section.name else ""
                    self.warnings.append(f"{where}{measurement.name}: {said_of(measurement, limit)}")

    def section_ends(self, section: Section) -> None:
        if section.name or any(section.counts.values()):
            self.sections.append((section.name or "(no section)", section.counts, section.outcome))

    def run_ends(self, run: Run) -> None:
        self.outcomes[run.outcome] = self.outcomes.get(run.outcome, 0) + 1
        self.print(f"{self.coloured(run.outcome)}  {run.title}: {self.said_of(run)}")
        for problem in run.problems[:SHOWN]:
            self.print(f"    {problem}")
        for check in run.failures[:SHOWN]:
            self.print_failure(check)
        more = run.counts[FAILED] + run.counts[MISSING] - min(len(run.failures), SHOWN)
        if more > 0:
            self.print(f"    and {more} more")
        self.print_warnings()
        self.print_unknown(run)
        if not self.is_short:
            self.print_sections()

    def said_of(self, run: Run) -> str:
        bad = run.counts[FAILED] + run.counts[MISSING]
        said = f"{bad} of {counted(run.checked, 'check')} failed" if bad else f"{counted(run.checked, 'check')} passed"
        if run.counts[UNSUPPORTED]:
            said += f", {run.counts[UNSUPPORTED]} not supported"
        return said

    def print_failure(self, check: Check) -> None:
        where = f"{check.section.name}: " if check.section.name else ""
        self.print(f"    {self.coloured(check.outcome)}  {where}{check.name}")
        if check.line is not None:
            self.print(f"        line {check.line.number}: {check.line.text.strip()}")
        if check.means:
            self.print(f"        {check.means}")
        for call in check.calls:
            self.print(f"        call: {call}")

    def print_warnings(self) -> None:
        for text in self.warnings:
            self.print(f"    {'warning':7}  {text}")
        if self.warned > len(self.warnings):
            self.print(f"    and {counted(self.warned - len(self.warnings), 'warning')} more")

    def print_unknown(self, run: Run) -> None:
        if run.unknown:
            self.print(f"    {counted(run.unknown, 'line')} unknown:")
            for line in run.unknown_lines[:5]:
                self.print(f"        line {line.number}: {line.text.strip()}")

    def print_sections(self) -> None:
        for name, counts, outcome in self.sections if len(self.sections) > 1 else ():
            bad = counts[FAILED] + counts[MISSING]
            said = ", ".join(f"{number} {what}" for number, what in
                             ((bad, "failed"), (counts[PASSED], "passed"), (counts[UNSUPPORTED], "not supported"))
                             if number) or "nothing checked"
            self.print(f"    {self.coloured(outcome, 7)} {name}: {said}")

    def report_ends(self) -> None:
        if sum(self.outcomes.values()) > MANY_RUNS:
            said = ", ".join(f"{number} {WORDS[outcome]}" for outcome, number in sorted(self.outcomes.items()))
            self.print(f"{sum(self.outcomes.values())} runs: {said}")
