"""Readings of short texts by a short grammar, for the tests of the reader and of the writers."""

from collections.abc import Iterable
from io import BytesIO
from pathlib import Path

from kestro_report import grammar
from kestro_report.reader import Reader
from kestro_report.records import Check, Line, Measurement, Run, Section, Writer
from kestro_report.settings import Settings
from kestro_report.texts import text_lines

END = "cmd_exec used millisecond:12"
GOOD = "Success: board weld check pass. status 0"
BAD = "Error  : board weld check fail. ret 0x8111010f"
RAILS, RELAYS = "##### rails test begin ", "##### relays test begin "
RULES = grammar.load(Path(__file__).with_name("small_grammar.yaml"))


class Kept(Writer):
    """Keeps what a reading tells."""

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

    def line(self, section: Section | None, line: Line) -> None:
        self.lines.append(line)

    def check(self, check: Check) -> None:
        self.checks.append(check)

    def measurement(self, measurement: Measurement) -> None:
        self.measurements.append(measurement)

    def said(self) -> list[tuple[str, str]]:
        return [(check.name, check.outcome) for check in self.checks]

    @property
    def run(self) -> Run:
        assert len(self.runs) == 1
        return self.runs[0]

    def kinds(self) -> list[str]:
        return [line.kind for line in self.lines]


def feed(reader: Reader, source: str, lines: Iterable[str], facts: dict[str, str] | None = None,
         problem: str = "", status: int | None = None) -> None:
    data = "".join(f"{line}\r\n" for line in lines).encode("utf-8", "surrogateescape")
    facts = facts or {}
    reader.begin_source(source, facts, facts.get("command", ""))
    for line in text_lines(BytesIO(data).read):
        reader.feed(line)
    reader.end_source(problem, status)


def read(*lines: str, settings: Settings | None = None, facts: dict[str, str] | None = None,
         problem: str = "", status: int | None = None) -> Kept:
    kept = Kept()
    feed(Reader(RULES, [kept], settings), "board.txt", lines, facts, problem, status)
    return kept


def written(writer: Writer, *inputs: Iterable[str], facts: Iterable[dict[str, str]] = (),
            settings: Settings | None = None, problem: str = "") -> Reader:
    """What a writer makes of inputs, the first of which may have facts; the last may not have ended by itself."""
    reader = Reader(RULES, [writer], settings)
    of_each = [*facts] + [{}] * len(inputs)
    reader.tell("report_begins")
    for number, lines in enumerate(inputs):
        is_last = number == len(inputs) - 1
        feed(reader, f"board-{number}.txt", lines, of_each[number], problem if is_last else "")
    reader.tell("report_ends")
    return reader
