"""The command line of kestro_report."""

import argparse
import dataclasses
import re
import sys
import time
from collections.abc import Callable, Iterable, Iterator
from contextlib import ExitStack, nullcontext
from pathlib import Path
from typing import BinaryIO, TextIO

from kestro_report import VERSION, grammar, live
from kestro_report.errors import InputError
from kestro_report.inputs import check_input, open_input
from kestro_report.limits import Limits
from kestro_report.reader import ExpectedWriter, Reader, Settings
from kestro_report.records import Writer
from kestro_report.texts import TextLine, text_lines
from kestro_report.verdict import TOOL_AT_FAULT, exit_status
from kestro_report.writers.junit import JUnit
from kestro_report.writers.ocp import OcpLines
from kestro_report.writers.summary import Summary
from kestro_report.writers.tap import Tap

COMMANDS = ("read", "run", "diff", "trend")
ENDS = """exit status: 0 all passed; 1 a check failed; 2 this tool or its input is at fault; 3 the run did not end
properly: crashed, timed out, cut off, a part missing, or nothing checked"""


class Parser(argparse.ArgumentParser):
    def error(self, message: str) -> None:
        raise InputError(f"{message}; '{self.prog} --help' tells what there is")


def regular_expression(text: str) -> re.Pattern:
    try:
        return re.compile(text)
    except re.error as error:
        raise argparse.ArgumentTypeError(f"'{text}' is no regular expression: {error}") from error


def add_report_options(parser: argparse.ArgumentParser) -> None:
    formats = parser.add_argument_group("formats; FILE may be - for standard output")
    formats.add_argument("--junit", metavar="FILE", help="JUnit XML: a suite for each section")
    formats.add_argument("--tap", metavar="FILE", help="TAP 14")
    formats.add_argument("--jsonl", metavar="FILE", help="JSON lines in the form of OCP Test and Validation 2.0")
    formats.add_argument("--html", metavar="FILE", help="a page that needs nothing else")
    formats.add_argument("--color", choices=("auto", "always", "never"), default="auto", help="of the summary")
    formats.add_argument("--quiet", action="store_true", help="no summary, the exit status only")
    judged = parser.add_argument_group("what it is judged by")
    judged.add_argument("--limits", metavar="FILE", help="limits of measurements, YAML")
    judged.add_argument("--description", metavar="FILE", help="board description whose thresholds are limits, XML")
    judged.add_argument("--expect", metavar="OUTPUT", help="output of a good run: checks that it has must be there")
    judged.add_argument("--trace", metavar="FILE", help="the probe's trace of the run: calls behind each failed check")
    judged.add_argument("--ignore", metavar="REGEX", type=regular_expression, action="append", default=[],
                        help="lines that are not kestro_test's; may be given again")
    about = parser.add_argument_group("whose run it is")
    about.add_argument("--dut", metavar="NAME", help="name of the device under test")
    about.add_argument("--serial", metavar="NUMBER", help="its serial number")
    about.add_argument("--name", metavar="TEXT", help="title of the report")


def parser_of_read() -> Parser:
    parser = Parser(prog="kestro_report read", epilog=ENDS, description="Reads what kestro_test printed and judges it.")
    parser.add_argument("files", nargs="*", metavar="FILE", help="outputs; - or none: standard input")
    add_report_options(parser)
    return parser


def top_help() -> str:
    return ("usage: kestro_report [read] [options] [FILE...]\n"
            "       kestro_report run [options] -- WORDS...\n"
            "       kestro_report diff [options] BEFORE AFTER\n"
            "       kestro_report trend [options] FILE...\n\n"
            "Gives what kestro_test prints an honest verdict, and makes reports of it.\n\n"
            "  read    reads outputs from files or standard input\n"
            "  run     starts kestro_test, or any command that starts it, and reads what it prints\n"
            "  diff    compares two runs of a board\n"
            "  trend   looks at many runs, of one board or many\n\n"
            "Each has a --help of its own; --version prints the version.\n\n" + ENDS + "\n")


class Outputs:
    """The writers that the options ask for, and the files behind them."""

    def __init__(self, options: argparse.Namespace, stack: ExitStack) -> None:
        self.options = options
        self.stack = stack
        self.prints_report = False
        self.writers: list[Writer] = []

    def open(self, name: str) -> TextIO:
        if name == "-":
            if self.prints_report:
                raise InputError("two formats cannot both go to standard output; give one of them a file")
            self.prints_report = True
            return sys.stdout
        try:
            return self.stack.enter_context(Path(name).open("w", encoding="utf-8"))
        except OSError as error:
            raise InputError(f"{name}: {error.strerror}; a file that can be written is wanted") from error

    def open_bytes(self, name: str) -> BinaryIO:
        try:
            return self.stack.enter_context(Path(name).open("wb", buffering=0))
        except OSError as error:
            raise InputError(f"{name}: {error.strerror}; a file that can be written is wanted") from error

    def add_formats(self) -> list[Writer]:
        for option, make in format_makers().items():
            name = getattr(self.options, option)
            if name:
                self.writers.append(make(self.open(name), self.options))
        self.add_summary()
        return self.writers

    def add_summary(self) -> None:
        if self.options.quiet or self.prints_report:
            return
        colour = self.options.color
        in_colour = colour == "always" or (colour == "auto" and sys.stdout.isatty())
        many = len(getattr(self.options, "files", ())) > 1
        self.writers.append(Summary(sys.stdout, in_colour, is_short=many))


def format_makers() -> dict[str, Callable[[TextIO, argparse.Namespace], Writer]]:
    return {"junit": lambda stream, options: JUnit(stream, options.name or "kestro_test"),
            "tap": lambda stream, options: Tap(stream),
            "jsonl": lambda stream, options: OcpLines(stream, options.name or "", parameters_of(options))}


def parameters_of(options: argparse.Namespace) -> dict[str, object]:
    """What else the verdict depends on."""
    judged_by = {name: getattr(options, name) for name in ("limits", "description", "expect")}
    return {name: value for name, value in judged_by.items() if value}


def expected_of(rules: grammar.Grammar, name: str):
    """What a good run passes. A run that is not good cannot tell."""
    writer = ExpectedWriter()
    reader = Reader(rules, [writer])
    source = open_input(name, {})
    with source.stream:
        read_input(reader, source)
    if exit_status(reader.outcomes) != 0:
        raise InputError(f"{name}: this run is not a good one; --expect wants the output of a run that passed")
    return writer.expected


def settings_of(options: argparse.Namespace, rules: grammar.Grammar) -> Settings:
    settings = Settings(ignore=tuple(options.ignore))
    if options.limits or options.description:
        limits = Limits(Path(options.limits) if options.limits else None,
                        Path(options.description) if options.description else None)
        settings.limits_of = limits.of
        settings.notes = limits.unused
    if options.expect:
        settings.expected = expected_of(rules, options.expect)
    return settings


def read_input(reader: Reader, source) -> None:
    reader.begin_source(source.name, source.facts, source.facts.get("command", ""))
    for line in text_lines(source.read):
        reader.feed(line)
    reader.end_source()


def facts_given(options: argparse.Namespace) -> dict[str, str]:
    given = {"dut": options.dut, "serial": options.serial, "name": options.name}
    return {name: value for name, value in given.items() if value}


def command_read(words: list[str]) -> int:
    options = parser_of_read().parse_args(words)
    rules = grammar.load()
    settings = settings_of(options, rules)
    # All are opened first: a name that is wrong is told before the reports of yesterday are written over.
    names = options.files or ["-"]
    for name in names:
        check_input(name)
    with ExitStack() as stack:
        writers = Outputs(options, stack).add_formats()
        reader = Reader(rules, writers, settings)
        reader.tell("report_begins")
        for name in names:
            source = open_input(name, facts_given(options))
            with source.stream if name != "-" else nullcontext():
                read_input(reader, source)
        reader.tell("report_ends")
    for note in settings.notes():
        print(f"kestro_report: {note}", file=sys.stderr)
    return exit_status(reader.outcomes)


def parser_of_run() -> Parser:
    parser = Parser(prog="kestro_report run", epilog=ENDS, usage="%(prog)s [options] -- WORDS...",
                    description="Runs kestro_test and judges what it prints. WORDS are its words, such as 'board_test "
                                "board_onekey_test', or any command that starts it: over ssh, or one that prints a "
                                "serial console.")
    parser.add_argument("--timeout", metavar="SECONDS", type=seconds, help="ends a command that takes longer")
    parser.add_argument("--board", metavar="BOARD", help="on this simulated board, by kestro_sim")
    parser.add_argument("--keep", metavar="FILE", help="keeps what is printed, byte for byte")
    add_report_options(parser)
    return parser


def seconds(text: str) -> float:
    try:
        number = float(text)
    except ValueError:
        number = 0.0
    if not 0 < number < 1e9:
        raise argparse.ArgumentTypeError(f"'{text}' is no time; a number of seconds above 0 is wanted")
    return number


def lines_now(lines: Iterable[TextLine]) -> Iterator[TextLine]:
    """What comes without a time stamp has the time at which it came."""
    for line in lines:
        yield line if line.time is not None else dataclasses.replace(line, time=time.time())


def run_and_read(reader: Reader, run: live.LiveRun, source: str, facts: dict[str, str], command: str) -> None:
    reader.begin_source(source, facts, command)
    for line in lines_now(text_lines(run.read)):
        reader.feed(line)
    status = run.finish()
    reader.end_source(run.problem, status)


def command_run(words: list[str]) -> int:
    at = words.index("--") if "--" in words else len(words)
    options = parser_of_run().parse_args(words[:at])
    if not words[at + 1:]:
        raise InputError("behind '--' the words of kestro_test are wanted, such as 'board_test board_onekey_test'")
    command = live.command_line_of(words[at + 1:], options.board)
    rules = grammar.load()
    settings = settings_of(options, rules)
    with ExitStack() as stack:
        outputs = Outputs(options, stack)
        keep = outputs.open_bytes(options.keep) if options.keep else None
        writers = outputs.add_formats()
        progress = live.progress_if_seen()
        reader = Reader(rules, [*writers, *([progress] if progress else [])], settings)
        reader.tell("report_begins")
        run = live.start(command, options.timeout, keep)
        if progress:
            run.on_tick.append(progress.show)
        run_and_read(reader, run, command[0], facts_given(options), live.words_of_product(command))
        if progress:
            progress.clear()
        reader.tell("report_ends")
    for note in settings.notes():
        print(f"kestro_report: {note}", file=sys.stderr)
    return exit_status(reader.outcomes)


def command_of(words: list[str]) -> tuple[Callable[[list[str]], int], list[str]]:
    commands = {"read": command_read, "run": command_run}
    if words and words[0] in commands:
        return commands[words[0]], words[1:]
    return command_read, words


def main(words: list[str]) -> int:
    if words[:1] in (["--help"], ["-h"]):
        print(top_help(), end="")
        return 0
    if words[:1] == ["--version"]:
        print(f"kestro_report {VERSION}")
        return 0
    try:
        command, rest = command_of(words)
        status = command(rest)
        sys.stdout.flush()
        return status
    except InputError as error:
        print(f"kestro_report: {error}", file=sys.stderr)
    except BrokenPipeError:
        # Who reads the report has seen enough; the interpreter must not complain of it once more at its end.
        sys.stderr.close()
    except OSError as error:
        print(f"kestro_report: {error.filename or 'output'}: {error.strerror}", file=sys.stderr)
    except KeyboardInterrupt:
        print("kestro_report: interrupted", file=sys.stderr)
    return TOOL_AT_FAULT
