"""What a reading of an output consists of: runs, their sections, lines, checks and measurements."""

from dataclasses import dataclass, field

# How a check came out. "missing" is a check that a good run has and this one lacks; "unsupported" is one that the
# board's driver does not have.
PASSED, FAILED, UNSUPPORTED, MISSING = "passed", "failed", "unsupported", "missing"
BAD = (FAILED, MISSING)

# How a whole run came out; INCOMPLETE is a run that did not end properly or checked nothing.
INCOMPLETE = "incomplete"

# Failed checks and problems that a run keeps; the rest is counted only, so that memory does not grow with the input.
KEPT = 1000


@dataclass(slots=True)
class Line:
    """One line of an output. `text` is fit for printing; `kind` is a rule's, or unknown, text, ignored, outside."""
    number: int
    text: str
    kind: str
    values: dict[str, str] = field(default_factory=dict)
    time: float | None = None  # seconds since 1970 where the log tells a date, otherwise on the log's own clock


@dataclass(slots=True, frozen=True)
class Limit:
    """A bound of a measurement: type as in the JSON lines' validators, in the measurement's unit."""
    type: str  # EQUAL, LESS_THAN_OR_EQUAL, GREATER_THAN_OR_EQUAL
    value: float
    source: str  # file and line, or element, that says so
    severity: str = "alarm"  # a "warning" bound does not fail the check

    @property
    def side(self) -> str:
        """Where a value stands that breaks it."""
        return {"LESS_THAN_OR_EQUAL": "above", "GREATER_THAN_OR_EQUAL": "below"}.get(self.type, "not")

    def holds(self, value: float) -> bool:
        match self.type:
            case "LESS_THAN_OR_EQUAL":
                return value <= self.value
            case "GREATER_THAN_OR_EQUAL":
                return value >= self.value
            case _:
                return value == self.value


@dataclass(slots=True)
class Measurement:
    name: str
    value: float
    unit: str
    section: "Section"
    line: Line
    limits: tuple[Limit, ...] = ()
    series: str = ""  # the curve that it is a point of

    @property
    def broken(self) -> list[Limit]:
        return [limit for limit in self.limits if not limit.holds(self.value)]


@dataclass(slots=True)
class Check:
    name: str
    outcome: str
    section: "Section"
    line: Line | None  # None: a missing check has no line
    means: str = ""  # what is wrong, for the operator; empty where the line says it itself
    code: int | None = None  # the driver's result, where the line tells one
    calls: tuple[str, ...] = ()  # the driver calls behind it, from a probe trace

    @property
    def bad(self) -> bool:
        return self.outcome in BAD


@dataclass(slots=True)
class Section:
    """A part of a run that has a banner of its own; a run's lines before the first banner are in one named ""."""
    name: str
    run: "Run"
    number: int
    line: Line | None = None
    counts: dict[str, int] = field(default_factory=lambda: {PASSED: 0, FAILED: 0, UNSUPPORTED: 0, MISSING: 0})
    began: float | None = None
    ended: float | None = None

    @property
    def outcome(self) -> str:
        """What the section as a whole is: failed, passed, or unsupported when nothing was checked."""
        if self.counts[FAILED] or self.counts[MISSING]:
            return FAILED
        return PASSED if self.counts[PASSED] else UNSUPPORTED


@dataclass(slots=True)
class Run:
    """One start of kestro_test, as far as an output tells of it."""
    number: int
    source: str  # the file it was read from
    command: str = ""  # its words, where known
    facts: dict[str, str] = field(default_factory=dict)  # dut, serial and the like
    status: int | None = None  # exit status where known; below 0 the signal that ended it
    began: float | None = None
    ended: float | None = None
    counts: dict[str, int] = field(default_factory=lambda: {PASSED: 0, FAILED: 0, UNSUPPORTED: 0, MISSING: 0})
    lines: int = 0
    unknown: int = 0  # lines that no rule knows
    unknown_lines: list[Line] = field(default_factory=list)
    failures: list[Check] = field(default_factory=list)
    problems: list[str] = field(default_factory=list)  # why it did not end properly

    @property
    def checked(self) -> int:
        return self.counts[PASSED] + self.counts[FAILED] + self.counts[MISSING]

    @property
    def outcome(self) -> str:
        if self.problems:
            return INCOMPLETE
        return FAILED if self.counts[FAILED] or self.counts[MISSING] else PASSED

    @property
    def title(self) -> str:
        """How people call it: the device, or the file, and what was run there."""
        name = self.facts.get("dut") or self.source
        return f"{name}: {self.command}" if self.command else name


class Writer:
    """What a format does with a reading. Every event comes once, in the order of the output; nothing need be kept."""

    def report_begins(self) -> None: ...
    def run_begins(self, run: Run) -> None: ...
    def section_begins(self, section: Section) -> None: ...
    def line(self, section: Section | None, line: Line) -> None: ...
    def check(self, check: Check) -> None: ...
    def measurement(self, measurement: Measurement) -> None: ...
    def section_ends(self, section: Section) -> None: ...
    def run_ends(self, run: Run) -> None: ...
    def report_ends(self) -> None: ...
