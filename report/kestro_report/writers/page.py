"""The page: one HTML file that needs nothing else, with failures first and every line of the output behind them.

Runs are written to a temporary file as they end, and put together at the end, worst first. What the page leaves out,
because it would be too large otherwise, it says.
"""

import base64
import hashlib
import tempfile
from collections import Counter
from dataclasses import dataclass
from pathlib import Path
from typing import TextIO

from jinja2 import Environment, FileSystemLoader, StrictUndefined
from markupsafe import Markup

from kestro_report import VERSION
from kestro_report.records import FAILED, INCOMPLETE, MISSING, PASSED, UNSUPPORTED, Check, Line, Measurement, Run, \
    Section, Writer
from kestro_report.verdict import outcome_of
from kestro_report.writers import figures
from kestro_report.writers.curves import Curves, alike
from kestro_report.writers.page_runs import (OUTCOME_WORDS, KeptRun, counted, duration, fit, moment, quantities_of,
                                             said_of, short, time_line)

FOLDER = Path(__file__).parent
# So many bytes of the page for runs that passed and for others; the first run that passed is whole in any case.
# Failed runs beyond that have their failures only, and beyond the last bound no more than their line in the table.
PASSED_BYTES = 384 << 10
NOT_PASSED_BYTES = 8 << 20
FAILURES_BYTES = 16 << 20
# Lines of the table of runs, and checks that the list of frequent failures looks at.
MOST_ROWS = 10000
MOST_FREQUENT = 5000
FREQUENT_SHOWN = 15
# What a line of the table of runs names.
NAMED_IN_ROW = 3

# What is said of it.
SHORTENED = "raw text and passed checks of {} that did not pass, so that the page keeps a usable size"
PASSED_LEFT_OUT = "checks and raw text of {} that passed, so that the page keeps a usable size: see the table of runs"
NOT_PASSED_LEFT_OUT = "all but the line in the table of {} that did not pass, so that the page keeps a usable size"

WORST_FIRST = {INCOMPLETE: 0, FAILED: 1, PASSED: 2}


@dataclass(slots=True, frozen=True)
class RunRow:
    """A run in the table; its part of the page lies in the temporary file."""
    order: tuple[int, int, int]
    number: int
    outcome: str
    device: str
    serial: str
    command: str
    counts: str
    wrong: str
    began: str
    kinds: str
    at: int = 0
    size: int = 0


def environment() -> Environment:
    templates = Environment(loader=FileSystemLoader(FOLDER), autoescape=True, finalize=fit, undefined=StrictUndefined,
                            trim_blocks=True, lstrip_blocks=True)
    templates.filters["short"] = short
    return templates


def source_hash(text: str) -> str:
    """What the page's policy knows its own style and script by."""
    return "sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode()


def wrong_with(run: Run) -> str:
    bad = run.counts[FAILED] + run.counts[MISSING]
    named = [*run.problems, *(f"{check.section.name}: {check.name}" if check.section.name else check.name
                              for check in run.failures)]
    more = len(run.problems) + bad - min(len(named), NAMED_IN_ROW)
    return "; ".join(short(name) for name in named[:NAMED_IN_ROW]) + (f"; and {more:,} more" if more > 0 else "")


def kinds_of(run: Run) -> str:
    """Which of the page's filters the run is found by."""
    kinds = ["passed" if run.outcome == PASSED else "failed"]
    kinds += ["unsupported"] if run.counts[UNSUPPORTED] else []
    kinds += ["unknown"] if run.unknown else []
    return " ".join(kinds)


class Page(Writer):
    def __init__(self, stream: TextIO, title: str = "") -> None:
        self.stream = stream
        self.title = title
        self.templates = environment()
        self.run_template = self.templates.get_template("page_run.html.j2")
        self.parts = tempfile.TemporaryFile()
        self.rows: list[RunRow] = []
        self.rows_left_out = 0
        self.outcomes: Counter[str] = Counter()
        self.counts = {PASSED: 0, FAILED: 0, UNSUPPORTED: 0, MISSING: 0}
        self.unknown = 0
        self.outside = 0
        self.frequent: Counter[tuple[str, str]] = Counter()
        self.section_names: dict[str, None] = {}
        self.curves = Curves()
        self.used = {PASSED: 0, FAILED: 0}
        self.left_out: Counter[str] = Counter()
        self.kept: KeptRun | None = None
        self.first_title = ""

    # --- events -------------------------------------------------------------------------------------------------------

    def run_begins(self, run: Run) -> None:
        self.kept = KeptRun(run)
        self.first_title = self.first_title or run.title
        self.curves.begin_run(run)

    def section_begins(self, section: Section) -> None:
        self.kept.add_section(section)
        if len(self.section_names) < 1000:
            self.section_names.setdefault(short(section.name))

    def line(self, section: Section | None, line: Line) -> None:
        if self.kept is None or section is None:
            self.outside += 1
        else:
            self.kept.add_line(line)

    def check(self, check: Check) -> None:
        self.kept.add_check(check)

    def measurement(self, measurement: Measurement) -> None:
        self.kept.add_measurement(measurement)
        self.curves.add(measurement)

    def section_ends(self, section: Section) -> None:
        self.kept.end_section(section)

    def run_ends(self, run: Run) -> None:
        kept, self.kept = self.kept, None
        kept.keep_last()
        self.outcomes[run.outcome] += 1
        self.unknown += run.unknown
        for outcome, number in run.counts.items():
            self.counts[outcome] += number
        for key in {(short(check.section.name), short(check.name)) for check in run.failures}:
            if key in self.frequent or len(self.frequent) < MOST_FREQUENT:
                self.frequent[key] += 1
        self.add_row(run, *self.write_part(kept))

    def add_row(self, run: Run, at: int, size: int) -> None:
        bad = run.counts[FAILED] + run.counts[MISSING]
        self.rows.append(RunRow(
            (WORST_FIRST[run.outcome], -bad, run.number), run.number, run.outcome,
            short(run.facts.get("dut") or run.source), short(run.facts.get("serial", "")), short(run.command),
            said_of(run.counts, run.unknown), wrong_with(run), moment(run.began), kinds_of(run), at, size))
        if len(self.rows) >= 2 * MOST_ROWS:
            self.keep_worst_rows()

    def keep_worst_rows(self) -> None:
        self.rows.sort(key=lambda row: row.order)
        self.rows_left_out += len(self.rows[MOST_ROWS:])
        del self.rows[MOST_ROWS:]

    # --- a run --------------------------------------------------------------------------------------------------------

    def write_part(self, kept: KeptRun) -> tuple[int, int]:
        """Where the run's part lies and how long it is; 0 bytes where there is no room for it."""
        text = self.part_within_bounds(kept)
        at = self.parts.seek(0, 2)
        return at, self.parts.write(text)

    def part_within_bounds(self, kept: KeptRun) -> bytes:
        group = PASSED if kept.run.outcome == PASSED else FAILED
        bound = PASSED_BYTES if group == PASSED else NOT_PASSED_BYTES
        if self.used[group] < bound:
            text = self.rendered(kept, True)
            if self.used[group] + len(text) <= bound or not self.used[group]:
                self.used[group] += len(text)
                return text
            self.used[group] = bound  # the next ones need not be tried
        if group == FAILED and self.used[group] < FAILURES_BYTES:
            text = self.rendered(kept, False)
            self.used[group] += len(text)
            self.left_out[SHORTENED] += 1
            return text
        self.left_out[PASSED_LEFT_OUT if group == PASSED else NOT_PASSED_LEFT_OUT] += 1
        return b""

    def rendered(self, kept: KeptRun, is_whole: bool) -> bytes:
        run = kept.run
        seconds = run.ended - run.began if run.began is not None and run.ended is not None else None
        text = self.run_template.render(
            run=run, kept=kept, is_whole=is_whole, words=OUTCOME_WORDS, said_of=said_of, moment=moment, counted=counted,
            lasted=duration(max(seconds, 0)) if seconds is not None else "",
            numbers=kept.kept_numbers if is_whole else frozenset(),
            values=kept.values_of_lines(), quantities=quantities_of(kept.measurements) if is_whole else [],
            time_line=time_line(run, kept.sections),
            failures_left_out=run.counts[FAILED] + run.counts[MISSING] - len(run.failures))
        return text.encode()

    # --- the whole ----------------------------------------------------------------------------------------------------

    def report_ends(self) -> None:
        self.keep_worst_rows()
        style, script = ((FOLDER / name).read_text(encoding="utf-8") for name in ("page.css", "page.js"))
        runs = sum(self.outcomes.values())
        outcome = outcome_of(self.outcomes)
        template = self.templates.get_template("page.html.j2")
        for text in template.generate(
                title=self.title or (self.first_title if runs == 1 else f"kestro_test: {counted(runs, 'run')}"),
                version=VERSION, style=Markup(style), script=Markup(script), style_hash=source_hash(style),
                script_hash=source_hash(script), outcome=outcome, words=OUTCOME_WORDS, said=self.said(runs),
                rows=self.rows, runs=runs, parts=self.stored_parts(), notes=self.notes(), frequent=self.most_frequent(),
                section_names=[name for name in self.section_names if name], curves=self.charts()):
            self.stream.write(text)
        self.parts.close()

    def said(self, runs: int) -> str:
        checks = said_of(self.counts, self.unknown)
        if runs == 1:
            return f"{checks}."
        by_outcome = [f"{self.outcomes[outcome]:,} {OUTCOME_WORDS[outcome]}" for outcome in WORST_FIRST
                      if self.outcomes[outcome]]
        return f"{counted(runs, 'run')}: {', '.join(by_outcome) or 'none'}. Checks: {checks}."

    def stored_parts(self):
        for row in self.rows:
            if row.size:
                self.parts.seek(row.at)
                yield Markup(self.parts.read(row.size).decode())

    def most_frequent(self) -> list[tuple[str, str, int]]:
        """Only where several runs can have a failure in common."""
        return [(section, name, count) for (section, name), count in
                sorted(self.frequent.items(), key=lambda item: (-item[1], item[0]))[:FREQUENT_SHOWN] if count > 1]

    def charts(self) -> list[dict[str, object]]:
        charts = []
        for chart, lines in self.curves.charts.items():
            curves = [(short(line), sorted(points)) for line, points in lines.items()]
            drawn = alike(curves)
            title = f"{short(chart.device)}: {short(chart.title)}"
            charts.append({
                "title": title, "across": chart.across, "up": chart.up, "curves": curves,
                "legend": [(figures.legend_mark(number), name) for number, (name, _) in
                           enumerate(drawn[:figures.SERIES])],
                "not_drawn": len(drawn[figures.SERIES:]),
                "svg": figures.chart(drawn, chart.across, chart.up, f"{title}, the values as in the table below")})
        return charts

    def notes(self) -> list[str]:
        """What is not on the page."""
        notes = [what.format(counted(number, "run")) for what, number in self.left_out.items()]
        if self.rows_left_out:
            notes.append(f"{counted(self.rows_left_out, 'run')} that came out no worse than those in the table: only "
                         "counted")
        if self.outside:
            notes.append(f"{counted(self.outside, 'line')} outside of the runs, such as boot messages")
        if self.curves.left_out:
            notes.append(f"{counted(self.curves.left_out, 'point')} of further curves")
        return notes
