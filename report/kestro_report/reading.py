"""What every command does with its inputs: the settings that the options ask for, the reading, and what it ends with."""

import sys
from argparse import Namespace
from pathlib import Path

from kestro_report import grammar
from kestro_report.errors import InputError
from kestro_report.inputs import Input, open_input
from kestro_report.limits import Limits
from kestro_report.reader import Reader
from kestro_report.settings import Expected, ExpectedWriter, Settings
from kestro_report.texts import text_lines
from kestro_report.trace import Trace
from kestro_report.verdict import exit_status


def expected_of(rules: grammar.Grammar, name: str) -> Expected:
    """What a good run passes. A run that is not good cannot tell."""
    writer = ExpectedWriter()
    reader = Reader(rules, [writer])
    source = open_input(name, {})
    with source.stream:
        read_input(reader, source)
    if reader.run_count > 1:
        raise InputError(f"{name}: it holds {reader.run_count} runs; --expect wants the output of one")
    if exit_status(reader.outcomes) != 0:
        raise InputError(f"{name}: this run is not a good one; --expect wants the output of a run that passed")
    return writer.expected


def settings_of(options: Namespace, rules: grammar.Grammar, is_live: bool = False) -> Settings:
    settings = Settings(ignore=tuple(options.ignore))
    if options.limits or options.description:
        limits = Limits(Path(options.limits) if options.limits else None,
                        Path(options.description) if options.description else None)
        settings.limits_of = limits.of
        settings.notes.append(limits.unused)
    if getattr(options, "expect", None):
        settings.expected = expected_of(rules, options.expect)
    if getattr(options, "trace", None):
        trace = Trace(Path(options.trace), is_to_come=is_live)
        settings.calls_of = trace.calls_of
        settings.notes.append(trace.notes)
    return settings


def read_input(reader: Reader, source: Input) -> None:
    reader.begin_source(source.name, source.facts, source.facts.get("command", ""))
    for line in text_lines(source.read):
        reader.feed(line)
    reader.end_source()


def tell_notes(settings: Settings) -> None:
    for note in (note for notes in settings.notes for note in notes()):
        print(f"kestro_report: {note}", file=sys.stderr)


def ended(reader: Reader, settings: Settings) -> int:
    tell_notes(settings)
    return exit_status(reader.outcomes)
