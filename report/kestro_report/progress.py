"""One line on the terminal, written over and over: where the run is and how it goes."""

import os
import sys
import time
from typing import TextIO

from kestro_report.records import Check, Section, Writer

SECONDS_BETWEEN = 0.25
USUAL_WIDTH = 79


class Progress(Writer):
    def __init__(self, stream: TextIO) -> None:
        self.stream = stream
        self.section = ""
        self.checked = self.failed = 0
        self.began = time.monotonic()
        self.shown = 0.0

    def section_begins(self, section: Section) -> None:
        self.section = section.name
        self.show()

    def check(self, check: Check) -> None:
        self.checked += 1
        self.failed += check.bad
        self.show_in_time()

    def show_in_time(self) -> None:
        if time.monotonic() - self.shown > SECONDS_BETWEEN:
            self.show()

    def width(self) -> int:
        """A line that the terminal breaks could not be written over."""
        try:
            return (os.get_terminal_size(self.stream.fileno()).columns or USUAL_WIDTH + 1) - 1
        except OSError:
            return USUAL_WIDTH

    def show(self) -> None:
        self.shown = time.monotonic()
        seconds = int(self.shown - self.began)
        text = f"{seconds // 60}:{seconds % 60:02d}  {self.checked} checks, {self.failed} failed  {self.section}"
        self.write(text[:self.width()])

    def clear(self) -> None:
        self.write("")

    def write(self, text: str) -> None:
        """A terminal that has gone away takes no report with it."""
        try:
            self.stream.write(f"\r\x1b[K{text}")
            self.stream.flush()
        except OSError:
            pass


def progress_if_seen() -> Progress | None:
    return Progress(sys.stderr) if sys.stderr.isatty() else None
