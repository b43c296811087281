"""The command trend: what many runs tell together."""

import sys
from contextlib import ExitStack, nullcontext
from typing import TextIO

from markupsafe import Markup

from kestro_report import grammar
from kestro_report.comparison import said_number
from kestro_report.digest import Key
from kestro_report.history import BOARDS_FOLLOWED, History, ValueHistory
from kestro_report.inputs import check_input, open_input
from kestro_report.options import Parser, judged_by, page_options, whole_number
from kestro_report.outputs import Outputs
from kestro_report.reader import Reader
from kestro_report.reading import read_input, settings_of, tell_notes
from kestro_report.records import FAILED, INCOMPLETE, PASSED
from kestro_report.verdict import ALL_PASSED
from kestro_report.writers.pages import line_of_values, render
from kestro_report.writers.summary import WORDS, counted

ENDS = """A board is known by its serial number or its name (NAME.facts.yaml beside NAME.txt), otherwise by its file.
What is usual is the median of all runs; the runs' times are the log's stamps or 'began', otherwise the files' order
counts. exit status: 0 the report is made, whatever it says; 2 this tool or its input is at fault"""
# Rows of one table on the page.
ROWS = 500
# Points of a drawing, and those of them that are marked.
DRAWN, MARKED = 150, 50


def parser_of_trend() -> Parser:
    parser = Parser(prog="kestro_report trend", epilog=ENDS, description="Looks at many runs, of one board or many: "
                    "yield, the checks that fail most, values that stand out, values that drift.")
    parser.add_argument("files", nargs="+", metavar="FILE", help="outputs, of one run or several; - is standard input")
    parser.add_argument("--top", metavar="N", type=whole_number, default=20, help="rows of each list; %(default)s")
    page_options(parser)
    judged_by(parser)
    return parser


def where(key: Key) -> str:
    return f"{key[0]}: {key[1]}" if key[0] else key[1]


def percent(part: int, whole: int) -> str:
    """Rounded down: one failure in a million is not 100 %, and one pass in a million is not 0 %."""
    if not whole:
        return "-"
    tenths = part * 1000 // whole if part < whole else 1000
    return f"{max(tenths, 1 if part else 0) / 10:.1f} %"


class Text:
    """The report for people."""

    def __init__(self, stream: TextIO, history: History, top: int) -> None:
        self.stream = stream
        self.history = history
        self.top = top

    def print(self, text: str = "") -> None:
        print(text, file=self.stream)

    def write(self) -> None:
        for line in head_of(self.history):
            self.print(line)
        self.print_kinds()
        self.print_boards()
        self.print_checks()
        self.print_irregular()
        self.print_outliers()
        self.print_drifts()

    def table(self, title: str, names: list[str], rows: list[list[str]], total: int) -> None:
        """The last column is the text, the others are numbers."""
        if not rows:
            return
        self.print()
        self.print(title)
        widths = [max(len(row[at]) for row in [names, *rows]) for at in range(len(names) - 1)]
        for row in [names, *rows]:
            self.print("  " + "  ".join([*(cell.rjust(width) for cell, width in zip(row, widths)), row[-1]]))
        if total > len(rows):
            self.print(f"  and {total - len(rows)} more")

    def print_kinds(self) -> None:
        kinds = self.history.kinds
        rows = [[str(outcomes.total()), percent(outcomes[PASSED], outcomes.total()), kind or "(nothing)"]
                for kind, outcomes in kinds.items()]
        if len(kinds) > 1:
            self.table("Commands, or what their output begins with", ["runs", "yield", ""], rows[:self.top], len(rows))

    def print_boards(self) -> None:
        worst = worst_boards(self.history)
        rows = [[str(board.runs), str(board.outcomes[FAILED]), str(board.outcomes[INCOMPLETE]), WORDS[board.last],
                 board.name] for board in worst[:self.top]]
        self.table("Boards with runs that did not pass", ["runs", "failed", "not complete", "last", ""], rows,
                   len(worst))

    def print_checks(self) -> None:
        failing = self.history.failing()
        rows = [[str(check.failed), str(check.judged), percent(check.passed, check.judged),
                 str(check.boards_failed.bit_count()), str(check.comes_and_goes or "-"), where(key)]
                for key, check in failing[:self.top]]
        self.table(f"Checks that fail most ({len(failing)} of {len(self.history.checks)} have ever failed)",
                   ["failed", "of", "yield", "boards", "come and go", ""], rows, len(failing))

    def print_irregular(self) -> None:
        irregular = self.history.irregular()
        rows = [[str(self.history.absent(check)), str(check.passed), where(key)] for key, check in irregular[:self.top]]
        self.table("Checks that are not in every run of their command", ["not there", "passed", ""], rows,
                   len(irregular))

    def print_outliers(self) -> None:
        outliers = self.history.outliers()
        rows = [[f"{said_number(each.value)} {each.unit}", f"{said_number(each.median)} {each.unit}",
                 f"{each.times:.1f}", str(each.runs), f"{where(each.key)}; {each.board} ({each.where})"]
                for each in outliers[:self.top]]
        self.table("Values that stand out", ["value", "usual", "times the spread", "runs", ""], rows, len(outliers))

    def print_drifts(self) -> None:
        drifts = self.history.drifts()
        rows = [[f"{said_number(each.first)} {each.unit}", f"{said_number(each.last)} {each.unit}",
                 f"{each.change:+.4g} {each.unit}", f"{where(each.key)}; {each.board} ({each.span})"]
                for each in drifts[:self.top]]
        self.table("Values that drift", ["first", "last", "drift", ""], rows, len(drifts))


def worst_boards(history: History) -> list:
    found = [board for board in history.boards.values() if board.outcomes[PASSED] < board.runs]
    return sorted(found, key=lambda board: (board.outcomes[PASSED] / board.runs, -board.runs, board.name))


def head_of(history: History) -> list[str]:
    outcomes, boards = history.outcomes, history.boards.values()
    said = ", ".join(f"{outcomes[outcome]} {WORDS[outcome]}" for outcome in (PASSED, FAILED, INCOMPLETE)
                     if outcomes[outcome])
    lines = [f"{counted(history.runs, 'run')} of {counted(len(boards), 'board')}: {said}; "
             f"yield {percent(outcomes[PASSED], history.runs)}"]
    if history.runs > len(boards) > 1:
        first, last = sum(board.first == PASSED for board in boards), sum(board.last == PASSED for board in boards)
        lines.append(f"{first} of {len(boards)} boards passed in their first run "
                     f"({percent(first, len(boards))}), {last} in their last")
    if any(values.not_followed for values in history.values.values()):
        lines.append(f"Drift is looked for on {BOARDS_FOLLOWED} of the boards only.")
    return lines


def drawing_of(history: History, values: ValueHistory, title: str) -> Markup:
    """All runs in their order; of many every so-manieth, and those that stand out in any case."""
    entries = values.sample.entries()
    far = set(history.far_out(values)[:MARKED])
    step = 1 + len(entries) // DRAWN
    shown = [entry for at, entry in enumerate(entries) if at % step == 0 or entry in far]
    marked = [at for at, entry in enumerate(shown) if entry in far]
    return line_of_values([entry[0] for entry in shown], marked, title)


def page_of(history: History) -> str:
    return render("trend.html.j2", history=history, head=head_of(history), boards=worst_boards(history),
                  failing=history.failing(), irregular=history.irregular(), outliers=history.outliers(),
                  drifts=history.drifts(), where=where, percent=percent, said=said_number, rows=ROWS,
                  drawing_of=lambda values, title: drawing_of(history, values, title))


def command_trend(words: list[str]) -> int:
    options = parser_of_trend().parse_args(words)
    rules = grammar.load()
    settings = settings_of(options, rules)
    for name in options.files:
        check_input(name)
    history = History()
    with ExitStack() as stack:
        outputs = Outputs(options, stack)
        page = outputs.open(options.html) if options.html else None
        reader = Reader(rules, [history], settings)
        for name in options.files:
            source = open_input(name, {})
            with source.stream if name != "-" else nullcontext():
                read_input(reader, source)
        if page is not None:
            page.write(page_of(history))
        if not (options.quiet or outputs.prints_report):
            Text(sys.stdout, history, options.top).write()
    tell_notes(settings)
    return ALL_PASSED
