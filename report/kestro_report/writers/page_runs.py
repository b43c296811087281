"""What the page keeps of one run while it is read, within bounds, and how that is shown."""

from collections.abc import Iterator
from dataclasses import dataclass, field
from datetime import datetime, timezone

from markupsafe import Markup, escape

from kestro_report.records import (FAILED, INCOMPLETE, KEPT, MISSING, PASSED, UNSUPPORTED, Check, Line, Measurement,
                                   Run, Section)
from kestro_report.texts import printable
from kestro_report.writers import figures

# Of one run. What is beyond is counted, and the page says so.
LONGEST_RAW = 2 << 20
MOST_LINES = 100000
MOST_SECTIONS = 2000
MOST_CHECKS = 20000
MOST_MEASUREMENTS = 2000
MOST_UNKNOWN = KEPT
# Of a name or a line outside of the raw text: a hostile or broken output has lines of any length.
LONGEST_NAME = 200
LONGEST_LINE = 1000

OUTCOME_WORDS = {PASSED: "passed", FAILED: "failed", MISSING: "missing", INCOMPLETE: "not complete",
                 UNSUPPORTED: "not supported"}
ROW_CLASSES = {PASSED: "p", FAILED: "f", MISSING: "f", UNSUPPORTED: "n"}
LINE_CLASSES = {"failed": "f", "passed": "p", "unsupported": "n", "unknown": "u", "begin": "b", "end": "b",
                "outside": "o", "ignored": "o"}
QUANTITIES = {"mV": "Voltages", "degC": "Temperatures", "rpm": "Speeds", "W": "Powers", "mA": "Currents",
              "dBm": "Optical powers"}
UNITS = {"degC": "°C", "percent": "%", "byte": "bytes", "count": ""}
# Behind the name of a measurement: it is the greatest or least that the monitor has seen of another one.
SEEN = (" highest", " lowest")


def fit(text: object) -> object:
    """For what stands in no line of an output: names of files and devices may hold anything."""
    if isinstance(text, Markup) or not isinstance(text, str):
        return text
    return printable(text)


def short(text: str, longest: int = LONGEST_NAME) -> str:
    text = printable(text)
    return text if len(text) <= longest else text[:longest] + "…"


def counted(number: int, what: str) -> str:
    return f"{number:,} {what}" + ("" if number == 1 else "s")


def said_of(counts: dict[str, int], unknown: int = 0) -> str:
    """The counts that are not zero, in words."""
    bad = counts[FAILED] + counts[MISSING]
    said = [f"{number:,} {what}" for number, what in
            ((bad, "failed"), (counts[PASSED], "passed"), (counts[UNSUPPORTED], "not supported")) if number]
    said += [counted(unknown, "unknown line")] if unknown else []
    return ", ".join(said) or "nothing checked"


def moment(time: float | None) -> str:
    """Stamps that begin with the log's own zero are no moments."""
    if time is None:
        return ""
    if time < 1e8:
        return f"{time:.3f} s on the log's own clock"
    return datetime.fromtimestamp(time, timezone.utc).strftime("%Y-%m-%d %H:%M:%S UTC")


def duration(seconds: float) -> str:
    if seconds < 60:
        return f"{seconds:.3g} s" if seconds else "0 s"
    minutes, rest = divmod(round(seconds), 60)
    hours, minutes = divmod(minutes, 60)
    return f"{hours} h {minutes:02d} min" if hours else f"{minutes} min {rest:02d} s"


def number(value: float) -> str:
    return f"{value:.10g}"


@dataclass(slots=True, frozen=True)
class Row:
    """A line of a section's table: a check, or a line that no rule knows."""
    kind: str  # class of the row
    outcome: str
    name: str
    line: int | None
    means: str = ""


@dataclass(slots=True)
class KeptSection:
    section: Section
    rows: list[Row] = field(default_factory=list)
    unknown: int = 0
    left_out: int = 0


@dataclass
class KeptRun:
    """A run as far as the page keeps it. A line's kind is known only when the next event comes."""
    run: Run
    sections: list[KeptSection] = field(default_factory=list)
    sections_left_out: int = 0  # all behind the last that is kept
    failed_left_out: int = 0
    measurements: list[Measurement] = field(default_factory=list)
    measurements_left_out: int = 0
    lines: list[tuple[int, str, str]] = field(default_factory=list)  # number, class, text
    size: int = 0
    lines_left_out: int = 0
    last: Line | None = None
    rows: int = 0
    unknown: int = 0

    def add_section(self, section: Section) -> None:
        if len(self.sections) < MOST_SECTIONS:
            self.sections.append(KeptSection(section))
        else:
            self.sections_left_out += 1

    def end_section(self, section: Section) -> None:
        if self.sections_left_out and section.outcome == FAILED:
            self.failed_left_out += 1

    def add_line(self, line: Line) -> None:
        self.keep_last()
        self.last = line
        if line.kind == "unknown" and self.sections and not self.sections_left_out:
            section = self.sections[-1]
            section.unknown += 1
            self.unknown += 1
            if self.unknown <= MOST_UNKNOWN:
                section.rows.append(Row("u", "unknown", short(line.text.strip(), LONGEST_LINE), line.number))
            else:
                section.left_out += 1

    def keep_last(self) -> None:
        line, self.last = self.last, None
        if line is None:
            return
        self.size += len(line.text) + 1
        if self.size <= LONGEST_RAW and len(self.lines) < MOST_LINES:
            self.lines.append((line.number, LINE_CLASSES.get(line.kind, ""), line.text))
        else:
            self.lines_left_out += 1

    def add_check(self, check: Check) -> None:
        if self.sections_left_out:
            return
        section = self.sections[-1]
        if check.outcome == PASSED and self.rows >= MOST_CHECKS or self.rows >= 2 * MOST_CHECKS:
            section.left_out += 1
            return
        self.rows += 1
        section.rows.append(Row(ROW_CLASSES[check.outcome], check.outcome, short(check.name),
                                check.line.number if check.line else None, short(check.means, LONGEST_LINE)))

    def add_measurement(self, measurement: Measurement) -> None:
        if len(self.measurements) < MOST_MEASUREMENTS:
            self.measurements.append(measurement)
        else:
            self.measurements_left_out += 1

    @property
    def shown_sections(self) -> list[KeptSection]:
        return [kept for kept in self.sections if kept.section.name or kept.rows or kept.left_out]

    @property
    def kept_numbers(self) -> frozenset[int]:
        return frozenset(number for number, _, _ in self.lines)

    def values_of_lines(self) -> dict[int, str]:
        """The first measurement of each line, to stand with the line's check."""
        values: dict[int, str] = {}
        for each in self.measurements:
            values.setdefault(each.line.number, f"{number(each.value)} {UNITS.get(each.unit, each.unit)}".strip())
        return values

    def linked_numbers(self) -> set[int]:
        linked = {row.line for kept in self.sections for row in kept.rows if row.line is not None}
        linked |= {check.line.number for check in self.run.failures if check.line}
        return linked | {each.line.number for each in self.measurements}

    def raw(self) -> Iterator[Markup]:
        """The list's items. Numbers that follow one another need not be written, and only some lines are linked."""
        linked, due = self.linked_numbers(), 1
        for number, kind, text in self.lines:
            anchor = f' id="r{self.run.number}l{number}"' if number in linked else ""
            value = f' value="{number}"' if number != due else ""
            shown = f' class="{kind}"' if kind else ""
            due = number + 1
            yield Markup(f"<li{anchor}{value}{shown}>{escape(text)}\n")


@dataclass(slots=True, frozen=True)
class Value:
    """A measurement in its table."""
    name: str
    value: str
    unit: str
    limits: str
    state: str
    line: int
    bar: Markup
    seen: str = ""


def quantities_of(measurements: list[Measurement]) -> list[tuple[str, list[Value]]]:
    """Measurements by what they measure, each with its drawing; what has no quantity of its own comes last."""
    seen = {each.name: each for each in measurements if each.name.endswith(SEEN)}
    names = {each.name for each in measurements}
    groups: dict[str, list[Measurement]] = {title: [] for title in [*QUANTITIES.values(), "Other values"]}
    for each in measurements:
        base = each.name.removesuffix(SEEN[0]).removesuffix(SEEN[1])
        if each.name not in seen or base not in names:
            groups[QUANTITIES.get(each.unit, "Other values")].append(each)
    return [(title, values_of(group, seen, title != "Other values")) for title, group in groups.items() if group]


def values_of(group: list[Measurement], seen: dict[str, Measurement], is_drawn: bool) -> list[Value]:
    least = min(each.value for each in group)
    greatest = max(each.value for each in group)
    return [value_of(each, [seen[each.name + end].value for end in SEEN if each.name + end in seen],
                     least, greatest, is_drawn) for each in group]


def value_of(each: Measurement, seen: list[float], least: float, greatest: float, is_drawn: bool) -> Value:
    state = figures.state_of(each)
    bar = Markup()
    if each.limits:
        bar = figures.limit_bar(each.value, each.limits, seen, state)
    elif is_drawn:
        bar = figures.plain_bar(each.value, least, greatest)
    said = f"seen {number(min(seen))} to {number(max(seen))}" if len(seen) == 2 else ""
    return Value(short(each.name), number(each.value), UNITS.get(each.unit, each.unit),
                 figures.limits_said(each.limits), state, each.line.number, bar, said)


@dataclass(slots=True, frozen=True)
class Part:
    """A section on the time line."""
    name: str
    offset: str
    lasted: str
    outcome: str
    bar: Markup


def time_line(run: Run, sections: list[KeptSection]) -> list[Part]:
    """Empty where the log tells no times, or all at once."""
    timed = [kept.section for kept in sections
             if kept.section.began is not None and kept.section.ended is not None and kept.section.name]
    if run.began is None or run.ended is None or run.ended <= run.began or len(timed) < 2:
        return []
    return [Part(short(each.name), duration(max(each.began - run.began, 0)), duration(max(each.ended - each.began, 0)),
                 each.outcome, figures.time_bar(each.began, each.ended, run.began, run.ended, each.outcome))
            for each in timed]
