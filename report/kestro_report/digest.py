"""What is kept of a run to hold it against others: each check's outcomes, each measurement's values."""

from dataclasses import dataclass, field

from kestro_report.records import FAILED, MISSING, PASSED, UNSUPPORTED, Check, Line, Measurement, Run, Section, Writer
from kestro_report.texts import printable

# Values of one measurement in one run that are kept; a fan's speeds at all its steps are fewer.
VALUES_KEPT = 200

Key = tuple[str, str]  # section and name


@dataclass(slots=True)
class CheckDigest:
    passed: int = 0
    failed: int = 0
    unsupported: int = 0
    line: Line | None = None  # the first that failed, otherwise the first
    means: str = ""

    @property
    def outcome(self) -> str:
        return FAILED if self.failed else PASSED if self.passed else UNSUPPORTED

    def add(self, check: Check) -> None:
        if self.line is None or (check.bad and not self.failed):
            self.line, self.means = check.line, check.means
        self.passed += check.outcome == PASSED
        self.failed += check.outcome in (FAILED, MISSING)
        self.unsupported += check.outcome == UNSUPPORTED


@dataclass(slots=True)
class ValueDigest:
    unit: str
    values: list[float] = field(default_factory=list)
    line: Line | None = None

    @property
    def median(self) -> float:
        return median(self.values)


@dataclass(slots=True)
class RunDigest:
    run: Run
    checks: dict[Key, CheckDigest] = field(default_factory=dict)
    values: dict[Key, ValueDigest] = field(default_factory=dict)
    sections: list[str] = field(default_factory=list)

    @property
    def kind(self) -> str:
        """What was run: its words, or what it printed first."""
        first = self.sections[0] if self.sections else next((name for _, name in self.checks), "")
        return self.run.command or first

    @property
    def title(self) -> str:
        named = self.run.command or self.run.facts.get("name") or f"run {self.run.number}, beginning with '{self.kind}'"
        return printable(named)


def median(values: list[float]) -> float:
    """Of two in the middle the mean."""
    ordered = sorted(values)
    middle = len(ordered) // 2
    return ordered[middle] if len(ordered) % 2 else (ordered[middle - 1] + ordered[middle]) / 2


class DigestWriter(Writer):
    """Makes a digest of each run, and hands it on at the run's end."""

    def __init__(self) -> None:
        self.now: RunDigest | None = None

    def run_begins(self, run: Run) -> None:
        self.now = RunDigest(run)

    def section_begins(self, section: Section) -> None:
        if section.name:
            self.now.sections.append(section.name)

    def check(self, check: Check) -> None:
        key = (check.section.name, printable(check.name))
        self.now.checks.setdefault(key, CheckDigest()).add(check)

    def measurement(self, measurement: Measurement) -> None:
        key = (measurement.section.name, printable(measurement.name))
        digest = self.now.values.setdefault(key, ValueDigest(measurement.unit, line=measurement.line))
        if len(digest.values) < VALUES_KEPT:
            digest.values.append(measurement.value)

    def run_ends(self, run: Run) -> None:
        self.take(self.now)

    def take(self, digest: RunDigest) -> None:
        raise NotImplementedError
