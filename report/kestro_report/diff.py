"""The command diff: what has changed between two outputs of a board."""

import argparse
import sys
from contextlib import ExitStack, nullcontext
from typing import TextIO

from kestro_report import grammar
from kestro_report.comparison import MOVED, TITLES, UNKNOWN, WORSE, Change, Pair, comparison
from kestro_report.digest import DigestWriter, RunDigest
from kestro_report.errors import InputError
from kestro_report.inputs import check_input, open_input
from kestro_report.options import Parser, judged_by, page_options
from kestro_report.outputs import Outputs
from kestro_report.reader import Reader
from kestro_report.reading import read_input, settings_of, tell_notes
from kestro_report.settings import Settings
from kestro_report.texts import printable
from kestro_report.units import Tolerances
from kestro_report.verdict import ALL_PASSED, CHECK_FAILED, NOT_ENDED
from kestro_report.writers.pages import render
from kestro_report.writers.summary import COLOURS, WORDS, counted

# A log with more runs is a history, and whoever compares two of them wants a trend.
MOST_RUNS = 1000
# More changes of one kind than a person reads; the page has them all.
SHOWN = 50
ENDS = """exit status: 0 nothing got worse; 1 something did: a check that passed fails or is missing, a new one fails, a
value moved beyond the tolerance or is not measured any more; 2 this tool or its input is at fault; 3 a run did not end
properly, so that nobody knows"""
TOLERANCES = """how far a value may move: 5%% is for all units with a usual part, UNIT=N%%, UNIT=N or UNIT=any for one
unit (mV=2%%, degC=10, byte=any); may be given again. Usual are 5 %%, for temperatures 10 degC, for times half of them,
and for counters anything"""


class Keeper(DigestWriter):
    def __init__(self, source: str) -> None:
        super().__init__()
        self.source = source
        self.runs: list[RunDigest] = []

    def take(self, digest: RunDigest) -> None:
        if len(self.runs) >= MOST_RUNS:
            raise InputError(f"{self.source}: more than {MOST_RUNS} runs; 'kestro_report trend' looks at so many")
        self.runs.append(digest)


def parser_of_diff() -> Parser:
    parser = Parser(prog="kestro_report diff", epilog=ENDS, description="Compares two outputs of a board: what passed "
                    "and now fails, what is gone or new, which values moved. Runs are compared command by command.")
    parser.add_argument("before", metavar="BEFORE", help="output of before; - is standard input")
    parser.add_argument("after", metavar="AFTER", help="output of now; - is standard input")
    parser.add_argument("--tolerance", metavar="N%", action="append", default=[], help=TOLERANCES)
    page_options(parser)
    judged_by(parser)
    return parser


def read_runs(name: str, rules: grammar.Grammar, settings: Settings) -> list[RunDigest]:
    keeper = Keeper(name)
    source = open_input(name, {})
    with source.stream if name != "-" else nullcontext():
        read_input(Reader(rules, [keeper], settings), source)
    return keeper.runs


def status_of(pairs: list[Pair]) -> int:
    if any(pair.is_incomplete for pair in pairs):
        return NOT_ENDED
    return CHECK_FAILED if any(pair.is_worse for pair in pairs) else ALL_PASSED


def conclusion(pairs: list[Pair]) -> str:
    """In words, and one that is worse is told before one that did not end."""
    worse = sum(pair.is_worse for pair in pairs)
    said = [f"{worse} of {counted(len(pairs), 'run')} got worse"] if worse else []
    cut = sum(pair.is_incomplete for pair in pairs)
    said += [f"{cut} of {counted(len(pairs), 'run')} did not end properly"] if cut else []
    if said:
        return ", ".join(said)
    changed = sum(len(pair.changes) for pair in pairs)
    return f"nothing got worse, {counted(changed, 'change')}" if changed else "nothing has changed"


class Text:
    """The comparison for people."""

    def __init__(self, stream: TextIO, in_colour: bool) -> None:
        self.stream = stream
        self.in_colour = in_colour

    def print(self, text: str = "") -> None:
        print(text, file=self.stream)

    def verdict(self, outcome: str) -> str:
        word = WORDS.get(outcome, outcome)
        return f"\x1b[{COLOURS[outcome]}m{word}\x1b[0m" if self.in_colour and outcome in COLOURS else word

    def write(self, pairs: list[Pair], before: str, after: str) -> None:
        self.print(f"{printable(before)} -> {printable(after)}: {conclusion(pairs)}")
        for pair in pairs:
            self.print_pair(pair)

    def print_pair(self, pair: Pair) -> None:
        self.print(f"  {pair.title}: {' -> '.join(self.verdict(each) for each in pair.verdicts)}")
        for digest, when in ((pair.before, "before"), (pair.after, "now")):
            for problem in digest.run.problems[:SHOWN] if digest else ():
                self.print(f"    {when}: {problem}")
        for kind, title in enumerate(TITLES):
            changes = pair.of_kind(kind)
            for change in changes[:SHOWN]:
                self.print_change(change, title)
            if len(changes) > SHOWN:
                self.print(f"    and {len(changes) - SHOWN} more: {title}")

    def print_change(self, change: Change, title: str) -> None:
        mark = "!" if change.kind in WORSE else " "
        if change.kind == MOVED:
            self.print(f"  {mark} {change.where}: {change.before} -> {change.after} ({change.means})")
            return
        if change.kind == UNKNOWN:
            self.print(f"  {mark} {change.name}: {title}")
            return
        self.print(f"  {mark} {change.where}: {title}")
        for when, said in (("before", change.before), ("now", change.after)):
            if said:
                self.print(f"        {when}: {said}")
        if change.means:
            self.print(f"        {change.means}")


def tolerances_of(options: argparse.Namespace) -> Tolerances:
    tolerances = Tolerances()
    for text in options.tolerance:
        tolerances.take(text)
    return tolerances


def command_diff(words: list[str]) -> int:
    options = parser_of_diff().parse_args(words)
    if options.before == options.after == "-":
        raise InputError("BEFORE and AFTER cannot both be standard input")
    tolerances = tolerances_of(options)
    rules = grammar.load()
    settings = settings_of(options, rules)
    for name in (options.before, options.after):
        check_input(name)
    with ExitStack() as stack:
        outputs = Outputs(options, stack)
        page = outputs.open(options.html) if options.html else None
        pairs = comparison(read_runs(options.before, rules, settings), read_runs(options.after, rules, settings),
                           tolerances)
        if page is not None:
            page.write(render("diff.html.j2", pairs=pairs, before=printable(options.before), titles=TITLES,
                              after=printable(options.after), conclusion=conclusion(pairs), worse=WORSE,
                              worse_runs=status_of(pairs) != ALL_PASSED))
        if not (options.quiet or outputs.prints_report):
            Text(sys.stdout, outputs.in_colour).write(pairs, options.before, options.after)
    tell_notes(settings)
    return status_of(pairs)
