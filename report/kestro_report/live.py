"""Runs kestro_test, or any command that starts it, and reads what it prints while it prints it."""

import os
import selectors
import shutil
import signal
import subprocess
import sys
import time
from collections.abc import Sequence
from dataclasses import dataclass, field
from pathlib import Path
from typing import BinaryIO, TextIO

from kestro_report.errors import InputError
from kestro_report.records import Check, Section, Writer

# A command that is asked to end has so long to do it.
GRACE_SECONDS = 5.0
# How long what a command has left behind may hold its output open, once it has ended itself.
LEFT_OPEN_SECONDS = 1.0
TICK_SECONDS = 0.25


def command_line_of(words: Sequence[str], board: str | None) -> list[str]:
    """Words of kestro_test go to the board here or to a simulated one; any other command is started as it stands."""
    is_own = words[0].endswith("_test") and Path(words[0]).name != "kestro_test"
    if board is not None and not is_own:
        raise InputError(f"--board wants words of kestro_test, such as 'board_test board_onekey_test', not '{words[0]}'")
    program = ["kestro_sim", "--board", board, "--"] if board is not None else ["kestro_test"] if is_own else []
    command = [*program, *words]
    if shutil.which(command[0]) is None:
        raise InputError(f"{command[0]}: no such program; one that lies in PATH, or its place, is wanted")
    return command


def words_of_product(command: Sequence[str]) -> str:
    """The part of a command line that kestro_test gets, for the title of the run."""
    for at, word in enumerate(command):
        if word.endswith("_test") and Path(word).name != "kestro_test" and "/" not in word:
            return " ".join(command[at:])
    return " ".join(command)


@dataclass
class LiveRun:
    """A command that runs. `read` gives what has come; at its end `problem` says why it did not end by itself."""
    process: subprocess.Popen
    timeout: float | None
    keep: BinaryIO | None = None
    on_tick: list = field(default_factory=list)
    problem: str = ""
    began: float = field(default_factory=time.monotonic)
    ended: float | None = None  # when the command itself was seen to have ended
    selector: selectors.BaseSelector = field(default_factory=selectors.DefaultSelector)

    def read(self, size: int) -> bytes:
        if not self.selector.get_map():
            self.selector.register(self.process.stdout, selectors.EVENT_READ)
        try:
            data = self.wait_for_data(size)
        except KeyboardInterrupt:
            self.stop("interrupted")
            data = b""
        if data and self.keep is not None:
            self.keep.write(data)
        return data

    def wait_for_data(self, size: int) -> bytes:
        while True:
            if self.selector.select(TICK_SECONDS):
                return os.read(self.process.stdout.fileno(), size)
            for tick in self.on_tick:
                tick()
            if self.is_over_time():
                return b""
            if self.process.poll() is not None:
                self.ended = self.ended or time.monotonic()
                if time.monotonic() - self.ended > LEFT_OPEN_SECONDS:
                    return b""

    def is_over_time(self) -> bool:
        if self.timeout is None or time.monotonic() - self.began <= self.timeout:
            return False
        self.stop(f"not ended after {self.timeout:g} seconds")
        return True

    def stop(self, why: str) -> None:
        self.problem = self.problem or why
        self.signal_all(signal.SIGTERM)
        try:
            self.process.wait(GRACE_SECONDS)
        except subprocess.TimeoutExpired:
            pass
        self.signal_all(signal.SIGKILL)

    def signal_all(self, number: signal.Signals) -> None:
        """The command's whole process group: a shell may have started what prints."""
        try:
            os.killpg(self.process.pid, number)
        except ProcessLookupError:
            pass

    def finish(self) -> int | None:
        """The exit status, below 0 a signal; None where it was stopped from here. Its output may end before it does."""
        try:
            while self.process.poll() is None and not self.is_over_time():
                try:
                    self.process.wait(TICK_SECONDS)
                except subprocess.TimeoutExpired:
                    continue
        except KeyboardInterrupt:
            self.stop("interrupted")
        self.signal_all(signal.SIGKILL)
        status = self.process.wait()
        self.selector.close()
        self.process.stdout.close()
        return None if self.problem else status


def start(command: Sequence[str], timeout: float | None, keep: BinaryIO | None = None) -> LiveRun:
    """The command's standard error goes where ours goes; it has no standard input, and a process group of its own."""
    try:
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, bufsize=0,
                                   start_new_session=True)
    except OSError as error:
        raise InputError(f"{command[0]}: {error.strerror}; a program that can be started is wanted") from error
    return LiveRun(process, timeout, keep)


class Progress(Writer):
    """One line on the terminal, written over and over: where the run is and how it goes."""

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
        if time.monotonic() - self.shown > TICK_SECONDS:
            self.show()

    def show(self) -> None:
        self.shown = time.monotonic()
        seconds = int(self.shown - self.began)
        text = f"{seconds // 60}:{seconds % 60:02d}  {self.checked} checks, {self.failed} failed  {self.section}"
        self.stream.write(f"\r\x1b[K{text[:78]}")
        self.stream.flush()

    def clear(self) -> None:
        self.stream.write("\r\x1b[K")
        self.stream.flush()


def progress_if_seen() -> Progress | None:
    return Progress(sys.stderr) if sys.stderr.isatty() else None
