"""Runs kestro_test, or any command that starts it, and reads what it prints while it prints it."""

import os
import re
import selectors
import shutil
import signal
import subprocess
import sys
import time
from collections.abc import Callable, Sequence
from dataclasses import dataclass, field
from pathlib import Path
from typing import BinaryIO, Self

from kestro_report.errors import InputError

# A command that is asked to end has so long to do it.
GRACE_SECONDS = 5.0
# How long what a command has left behind may hold its output open in silence, once it has ended itself.
LEFT_OPEN_SECONDS = 1.0
TICK_SECONDS = 0.25

OWN_WORD = re.compile(r"\w+_test")
ASKING_TO_END = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)
# Who asks so often waits for nothing any more, not even for the reports.
IMPATIENT = 4


def is_own(word: str) -> bool:
    """Whether it is a module command of kestro_test, and no program."""
    return word != "kestro_test" and OWN_WORD.fullmatch(word) is not None


def program_place(name: str) -> str | None:
    """Beside this program, where both are installed or in one folder; else in PATH; else where the tree builds it."""
    started, package = Path(sys.argv[0]).resolve(), Path(__file__).resolve()
    for folder in (str(started.parent), None, str(package.parent.parent.parent / "build")):
        if found := shutil.which(name, path=folder):
            return found
    return None


def command_line_of(words: Sequence[str], board: str | None, trace: str | None = None) -> list[str]:
    """Words of kestro_test go to the board here or to a simulated one; any other command is started as it stands.

    A simulated board is asked to write the trace; whoever starts another command sees to its trace."""
    if board is not None and not is_own(words[0]):
        raise InputError("--board wants words of kestro_test, such as 'board_test board_onekey_test', "
                         f"not '{words[0]}'")
    program = "kestro_sim" if board is not None else "kestro_test" if is_own(words[0]) else words[0]
    place = program_place(program) if program is not words[0] else shutil.which(program)
    if place is None:
        raise InputError(f"{program}: no such program; one that lies in PATH, or its place, is wanted")
    options = ["--trace", trace, "--trace-output"] if trace else []
    options = ["--board", board, *options, "--"] if board is not None else []
    return [place, *options, *(words[1:] if program is words[0] else words)]


def words_of_product(command: Sequence[str]) -> str:
    """The part of a command line that kestro_test gets, for the title of the run."""
    for at, word in enumerate(command):
        if is_own(word):
            return " ".join(command[at:])
    return " ".join(command)


@dataclass
class Wishes:
    """How often somebody has asked for the end. Held from before the command starts until the reports are written:
    in between, the default action of a signal would leave the command behind on the board, or half a report."""
    count: int = 0
    handlers: dict[signal.Signals, object] = field(default_factory=dict)

    def __enter__(self) -> Self:
        for number in ASKING_TO_END:
            # What the caller ignores, as a shell lets a background job ignore Ctrl-C, stays ignored.
            if signal.getsignal(number) != signal.SIG_IGN:
                self.handlers[number] = signal.signal(number, self.note)
        return self

    def __exit__(self, *_: object) -> None:
        for number, handler in self.handlers.items():
            signal.signal(number, handler)

    def note(self, *_: object) -> None:
        """Only noted: an exception in the middle of a line would lose what the reports have to say."""
        self.count += 1
        if self.count >= IMPATIENT:
            raise KeyboardInterrupt


@dataclass
class LiveRun:
    """A command that runs. `read` gives what has come; at its end `problem` says why it did not end by itself."""
    process: subprocess.Popen
    wishes: Wishes
    timeout: float | None = None
    keep: BinaryIO | None = None
    on_tick: list[Callable[[], None]] = field(default_factory=list)
    problem: str = ""
    began: float = field(default_factory=time.monotonic)
    asked: float | None = None  # when it was asked to end
    killed: float | None = None
    seen_ended: float | None = None
    selector: selectors.BaseSelector = field(default_factory=selectors.DefaultSelector)

    def __enter__(self) -> Self:
        self.selector.register(self.process.stdout, selectors.EVENT_READ)
        return self

    def __exit__(self, *_: object) -> None:
        """Whatever went wrong here, nothing stays behind on the board."""
        self.kill()
        if not self.is_hopeless():
            self.process.wait()
        self.selector.close()
        self.process.stdout.close()

    def read(self, size: int) -> bytes:
        while not self.watch():
            if self.selector.select(TICK_SECONDS):
                return self.kept(os.read(self.process.stdout.fileno(), size))
            for tick in self.on_tick:
                tick()
            if self.is_left_open():
                break
        return b""

    def kept(self, data: bytes) -> bytes:
        if self.keep is not None and data:
            self.keep.write(data)
            self.keep.flush()
        return data

    def watch(self) -> bool:
        """Asks the command to end when it is time, and makes it end when it does not. True: no more is waited for."""
        now = time.monotonic()
        if self.asked is None and self.wishes.count:
            self.ask_to_end("interrupted", now)
        elif self.asked is None and self.timeout is not None and now - self.began > self.timeout:
            self.ask_to_end(f"not ended after {self.timeout:g} seconds", now)
        if self.asked is not None and self.killed is None and (now - self.asked > GRACE_SECONDS or self.wishes.count > 1):
            self.kill()
        if self.seen_ended is None and self.has_ended():
            self.seen_ended = now
        # What runs on outside of the group may print for ever; nobody waits for it once the end is asked for.
        return self.asked is not None and (self.is_left_open() or self.is_hopeless())

    def is_hopeless(self) -> bool:
        """A process that waits inside a device driver cannot even be killed."""
        return self.killed is not None and not self.has_ended() and time.monotonic() - self.killed > GRACE_SECONDS

    def is_left_open(self) -> bool:
        return self.seen_ended is not None and time.monotonic() - self.seen_ended > LEFT_OPEN_SECONDS

    def has_ended(self) -> bool:
        """Without taking its status: as long as that waits, its number is no other process's."""
        if self.process.returncode is not None:
            return True
        return os.waitid(os.P_PID, self.process.pid, os.WEXITED | os.WNOHANG | os.WNOWAIT) is not None

    def ask_to_end(self, why: str, now: float) -> None:
        self.problem, self.asked = why, now
        self.signal_all(signal.SIGTERM)

    def kill(self) -> None:
        self.killed = self.killed or time.monotonic()
        self.signal_all(signal.SIGKILL)

    def signal_all(self, number: signal.Signals) -> None:
        """The command's whole process group: a shell may have started what prints."""
        if self.process.returncode is not None:
            return
        try:
            os.killpg(self.process.pid, number)
        except (ProcessLookupError, PermissionError):
            pass

    def finish(self) -> int | None:
        """The exit status, below 0 a signal; None where it was stopped from here. Its output may end before it does."""
        while not self.has_ended():
            self.watch()
            for tick in self.on_tick:
                tick()
            if self.is_hopeless():
                self.problem += ", and it cannot be killed"
                return None
            time.sleep(TICK_SECONDS / 10)
        self.kill()
        status = self.process.wait()
        return None if self.problem else status


def start(command: Sequence[str], wishes: Wishes, timeout: float | None = None,
          keep: BinaryIO | None = None) -> LiveRun:
    """The command's standard error goes where ours goes; it has no standard input, and a process group of its own.

    Files that the shell opened for it, as for --script <(...), are handed on; ours are not."""
    try:
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, bufsize=0,
                                   start_new_session=True, close_fds=False)
    except OSError as error:
        raise InputError(f"{command[0]}: {error.strerror}; a program that can be started is wanted") from error
    return LiveRun(process, wishes, timeout, keep)
