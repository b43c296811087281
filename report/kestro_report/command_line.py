"""The command line of kestro_report."""

import dataclasses
import importlib
import io
import os
import sys
import time
import traceback
from collections.abc import Callable, Iterable, Iterator
from contextlib import ExitStack, nullcontext
from pathlib import Path

from kestro_report import VERSION, grammar, live
from kestro_report.errors import InputError
from kestro_report.inputs import check_input, open_input
from kestro_report.options import ENDS, facts_given, parser_of_read, parser_of_run
from kestro_report.outputs import Outputs
from kestro_report.progress import progress_if_seen
from kestro_report.reader import Reader
from kestro_report.reading import ended, read_input, settings_of
from kestro_report.texts import TextLine, text_lines
from kestro_report.verdict import TOOL_AT_FAULT


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


def command_read(words: list[str]) -> int:
    options = parser_of_read().parse_args(words)
    if options.trace and len(options.files) > 1:
        raise InputError("--trace: a trace is of one run; give the output of that run alone")
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
    return ended(reader, settings)


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
    command = live.command_line_of(words[at + 1:], options.board, options.trace)
    rules = grammar.load()
    settings = settings_of(options, rules, is_live=True)
    with live.Wishes() as wishes, ExitStack() as stack:
        outputs = Outputs(options, stack)
        keep = outputs.open_bytes(options.keep) if options.keep else None
        writers = outputs.add_formats()
        progress = progress_if_seen()
        reader = Reader(rules, [*writers, *([progress] if progress else [])], settings)
        reader.tell("report_begins")
        with live.start(command, wishes, options.timeout, keep) as run:
            run.on_tick += [progress.show_in_time] if progress else []
            run_and_read(reader, run, Path(command[0]).name, facts_given(options), live.words_of_product(command))
        if progress:
            progress.clear()
        reader.tell("report_ends")
    return ended(reader, settings)


def command_of(words: list[str]) -> tuple[Callable[[list[str]], int], list[str]]:
    match words[:1]:
        case ["read"]:
            return command_read, words[1:]
        case ["run"]:
            return command_run, words[1:]
        case ["diff"] | ["trend"]:  # loaded when asked for: the others need nothing that they build on
            module = importlib.import_module(f"kestro_report.{words[0]}")
            return getattr(module, f"command_{words[0]}"), words[1:]
    return command_read, words


def main(words: list[str]) -> int:
    hold_standard_streams()
    if words[:1] in (["--help"], ["-h"]):
        print(top_help(), end="")
        return 0
    if words[:1] == ["--version"]:
        print(f"kestro_report {VERSION}")
        return 0
    try:
        command, rest = command_of(words)
        status = command(rest)
        if sys.stdout is not None:
            sys.stdout.flush()
        return status
    except InputError as error:
        print(f"kestro_report: {error}", file=sys.stderr)
    except BrokenPipeError:
        pass  # who reads the report has seen enough
    except OSError as error:
        print(f"kestro_report: {error.filename or 'standard output'}: {error.strerror}", file=sys.stderr)
    except KeyboardInterrupt:
        print("kestro_report: interrupted", file=sys.stderr)
    except Exception:  # the interpreter would end with 1, which says that a check has failed
        traceback.print_exc()
        print("kestro_report: this is a fault of the tool and no verdict", file=sys.stderr)
    give_up_output()
    return TOOL_AT_FAULT


def hold_standard_streams() -> None:
    """A closed standard error must not send its lines elsewhere; names may hold what the terminal's code has not."""
    if sys.stderr is None:
        sys.stderr = open(os.devnull, "w", encoding="utf-8")
    if isinstance(sys.stdout, io.TextIOWrapper):
        sys.stdout.reconfigure(errors="backslashreplace")


def give_up_output() -> None:
    """What could not be written is not tried once more at the interpreter's end, which would spoil the exit status."""
    if isinstance(sys.stdout, io.TextIOWrapper):
        sys.stdout = None
