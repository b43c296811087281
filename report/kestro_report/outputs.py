"""The writers that the options ask for, and the files behind them."""

import argparse
import io
import sys
from collections.abc import Callable
from contextlib import ExitStack
from pathlib import Path
from typing import BinaryIO, TextIO

from kestro_report.errors import InputError
from kestro_report.records import Writer
from kestro_report.writers.junit import JUnit
from kestro_report.writers.ocp import OcpLines
from kestro_report.writers.page import Page
from kestro_report.writers.summary import Summary
from kestro_report.writers.tap import Tap


class NamedFile(io.FileIO):
    """A file whose faults, such as a full disk, tell its name."""

    def write(self, data: bytes) -> int:
        try:
            return super().write(data)
        except OSError as error:
            error.filename = self.name
            raise


class Outputs:
    def __init__(self, options: argparse.Namespace, stack: ExitStack) -> None:
        self.options = options
        self.stack = stack
        self.prints_report = False
        self.opened: dict[Path, str] = {Path(name).resolve(): name for name in inputs_of(options)}
        self.writers: list[Writer] = []

    def open(self, name: str) -> TextIO:
        if name == "-":
            if self.prints_report:
                raise InputError("two formats cannot both go to standard output; give one of them a file")
            self.prints_report = True
            return standard_output()
        stream = io.TextIOWrapper(self.file(name), encoding="utf-8", errors="backslashreplace")
        return self.stack.enter_context(stream)

    def open_bytes(self, name: str) -> BinaryIO:
        return self.stack.enter_context(self.file(name))

    def file(self, name: str) -> BinaryIO:
        """Opening empties a file, so one that is read or written already is refused."""
        place = Path(name).resolve()
        if place in self.opened and (place.is_file() or not place.exists()):
            raise InputError(f"{name}: it is named twice, and would be written over; name another file")
        self.opened[place] = name
        try:
            return io.BufferedWriter(NamedFile(name, "w"))
        except OSError as error:
            raise InputError(f"{name}: {error.strerror}; a file that can be written is wanted") from error

    @property
    def in_colour(self) -> bool:
        colour = self.options.color
        return colour == "always" or (colour == "auto" and standard_output().isatty())

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
        stream = standard_output()
        many = len(getattr(self.options, "files", ())) > 1
        self.writers.append(Summary(stream, self.in_colour, is_short=many))


def standard_output() -> TextIO:
    if sys.stdout is None:
        raise InputError("standard output is closed; give the report a file, or --quiet")
    return sys.stdout


def inputs_of(options: argparse.Namespace) -> list[str]:
    options_of_files = ("limits", "description", "expect", "trace", "before", "after")
    names = [*(getattr(options, option, None) for option in options_of_files), *getattr(options, "files", ())]
    return [name for name in names if name and name != "-"]


def format_makers() -> dict[str, Callable[[TextIO, argparse.Namespace], Writer]]:
    return {"junit": lambda stream, options: JUnit(stream, options.name or "kestro_test"),
            "tap": lambda stream, options: Tap(stream),
            "jsonl": lambda stream, options: OcpLines(stream, options.name or "", parameters_of(options)),
            "html": lambda stream, options: Page(stream, options.name or "")}


def parameters_of(options: argparse.Namespace) -> dict[str, object]:
    """What else the verdict depends on."""
    judged_by = {name: getattr(options, name) for name in ("limits", "description", "expect")}
    return {name: value for name, value in judged_by.items() if value}
