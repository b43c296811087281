"""The driver calls behind a failed check, from the trace that the probe wrote of the same run.

A trace that shows the output too has the calls of a line between it and the line before. Without the output only a
check that tells the driver's result can be found: among the calls with that result, in their order.
"""

import re
from bisect import bisect_left
from collections import Counter
from collections.abc import Iterator
from dataclasses import dataclass
from pathlib import Path
from typing import BinaryIO

from kestro_report.errors import InputError
from kestro_report.records import Check
from kestro_report.texts import printable, text_lines

MOST_SHOWN = 10
# Of calls before one line so many are kept: a poll may make millions.
MOST_KEPT = 1000
LONGEST_SHOWN = 400
# A trace that lacks so many different lines is of another run, and need not be looked through for more.
MOST_MISSED = 50
# An area of 16 MiB, the greatest that the probe shows, takes three characters for a byte.
LONGEST_LINE = 1 << 26

CALL = re.compile(r'(?:# (?:callback|child): )?(?:@\d+ )?(?P<operation>[A-Za-z_]\w*)'
                  r'\((?P<inputs>(?:[^"()]++|"(?:[^"\\]++|\\.)*+")*+)\)'
                  r'(?: = (?P<result>0x[0-9a-fA-F]+|-?\d+|void|pass|crash|hang)\b|(?P<begun> \.\.\.)?$)')
OUTPUT = "# output: "
ESCAPE = re.compile(rb'\\(?:x([0-9a-f]{2})|(.))')
PLAIN_ESCAPES = {b"n": b"\n", b"r": b"\r", b"t": b"\t"}
NUMBER = re.compile(r"(?<![\w.])(?:0x[0-9a-fA-F]+|\d+)(?![\w.])")


@dataclass(slots=True, frozen=True)
class Call:
    text: str
    operation: str
    numbers: frozenset[int]  # what goes in
    result: int | None  # None: of an operation that returns nothing, or one that never came back


def numbers_in(text: str) -> frozenset[int]:
    return frozenset(int(number, 16 if number.startswith("0x") else 10) for number in NUMBER.findall(text))


def call_of(found: re.Match) -> Call:
    said = found["result"]
    result = int(said, 0) if said and said[-1].isalnum() and said.lstrip("-")[0].isdigit() else None
    text = found.string if len(found.string) <= LONGEST_SHOWN else found.string[:LONGEST_SHOWN] + " ..."
    return Call(printable(text), found["operation"], numbers_in(found["inputs"][:LONGEST_SHOWN]), result)


def lines_printed(quoted: str) -> list[str]:
    """What the program printed, as the reading of an output sees it."""
    data = ESCAPE.sub(lambda found: bytes.fromhex(found[1].decode()) if found[1] else
                      PLAIN_ESCAPES.get(found[2], found[2]), quoted.encode()[1:-1]) + b"\n"
    pieces = iter((data, b""))
    return [printable(line.text).strip() for line in text_lines(lambda size: next(pieces))]


class Trace:
    def __init__(self, file: Path, is_to_come: bool = False) -> None:
        """A trace that is to come is written while the output is read; all others are looked through at once."""
        self.file = file
        self.is_to_come = is_to_come
        self.before = stamp_of(file)
        self.stream: BinaryIO | None = None
        self.number = 0  # of the line that was read last
        self.is_looked_through = self.shows_output = False
        self.group: list[Call] = []  # calls before the line that was printed last, and since
        self.is_printed = False  # that line has come
        self.missed: set[str] = set()
        self.failed: dict[int, list[tuple[int, Call]]] = {}  # by result; each with its place among all
        self.place = self.place_found = 0
        self.left_out: Counter[str] = Counter()
        self.unreturned = self.scripted_end = ""
        if not is_to_come:
            self.look_through()

    # --- the file -----------------------------------------------------------------------------------------------------

    def look_through(self) -> None:
        for call, printed in self.entries():
            self.take(call, printed)
        self.is_looked_through = True
        if self.shows_output:
            self.failed.clear()
            self.group, self.is_printed, self.number = [], False, 0
            self.opened().seek(0)

    def opened(self) -> BinaryIO:
        if self.stream is None:
            if self.file.exists() and not self.file.is_file():
                raise InputError(f"{self.file}: this is no file; a trace that the probe wrote is wanted")
            try:
                self.stream = self.file.open("rb")
            except OSError as error:
                raise InputError(f"{self.file}: {error.strerror}; a trace that the probe wrote is wanted") from error
        return self.stream

    def entries(self) -> Iterator[tuple[Call | None, list[str]]]:
        """What is there by now: calls that came back, and lines that were printed."""
        stream = self.opened()
        while line := self.next_line(stream):
            text = line.decode("utf-8", "surrogateescape").rstrip("\n")
            if text.startswith(OUTPUT):
                self.shows_output = True
                yield None, lines_printed(text.removeprefix(OUTPUT))
                continue
            found = CALL.match(text)
            if found is None and text.strip() and not text.startswith("#"):
                raise InputError(f"{self.file}: line {self.number}: '{printable(text[:60])}' is no line of a trace; "
                                 "right is, as in drv_mac_get_num(type_id=1) = 0x0 num=4")
            if found is not None and found["result"] in ("crash", "hang"):
                self.scripted_end = never_came_back(self.number, text)
            if found is not None and found["result"]:
                yield call_of(found), []

    def next_line(self, stream: BinaryIO) -> bytes:
        """A line that has no end yet is read when it has one: the driver may be at work on its call."""
        at = stream.tell()
        try:
            line = stream.readline(LONGEST_LINE)
        except OSError as error:
            raise InputError(f"{self.file}: {error.strerror}; a trace that the probe wrote is wanted") from error
        if line.endswith(b"\n"):
            self.number += 1
            return line
        if len(line) == LONGEST_LINE:
            raise InputError(f"{self.file}: line {self.number + 1}: it is longer than a line of a trace can be")
        found = CALL.match(line.decode("utf-8", "surrogateescape"))
        begun = found.string if found and not found["result"] else ""
        self.unreturned = never_came_back(self.number + 1, begun) if begun else self.scripted_end
        if line:
            stream.seek(at)
        return b""

    def take(self, call: Call | None, printed: list[str]) -> None:
        if call is None:
            self.is_printed = True
            return
        if self.is_printed:
            self.group, self.is_printed = [], False
        if len(self.group) >= MOST_KEPT:
            del self.group[:MOST_KEPT // 2]
        self.group.append(call)
        self.place += 1
        if call.result and not self.shows_output:
            self.failed.setdefault(call.result, []).append((self.place, call))

    # --- the calls of a check -----------------------------------------------------------------------------------------

    def calls_of(self, check: Check) -> tuple[str, ...]:
        if check.line is None:
            return ()
        if check.section.run.number > 1:
            self.left_out["of another run than the first, and a trace is of one run"] += 1
            return ()
        if self.is_stale():
            self.left_out["the run did not write this trace"] += 1
            return ()
        if not self.is_looked_through:
            self.look_through()
        return self.by_output(check) if self.shows_output else self.by_result(check)

    def is_stale(self) -> bool:
        """Whether the file is still that of an earlier run."""
        return self.is_to_come and stamp_of(self.file) == self.before

    def by_output(self, check: Check) -> tuple[str, ...]:
        wanted = check.line.text.strip()
        if wanted in self.missed or len(self.missed) >= MOST_MISSED:
            self.left_out["the trace does not show this line"] += 1
            return ()
        start = self.opened().tell(), self.number, list(self.group), self.is_printed
        for call, printed in self.entries():
            self.take(call, printed)
            if wanted in printed:
                return chosen(self.group, check)
        at, self.number, self.group, self.is_printed = start
        self.opened().seek(at)
        self.missed.add(wanted)
        self.left_out["the trace does not show this line"] += 1
        return ()

    def by_result(self, check: Check) -> tuple[str, ...]:
        if not check.code:
            self.left_out["the line tells no driver's result; a trace that shows the output "
                          "(--trace-output of kestro_sim) tells the calls of each line"] += 1
            return ()
        for call, printed in self.entries():
            self.take(call, printed)
        calls = self.failed.get(check.code, [])
        calls = narrowed(calls[bisect_left(calls, self.place_found + 1, key=lambda each: each[0]):] or calls, check)
        if not calls:
            self.left_out["no call of the trace has the result that the line tells"] += 1
            return ()
        self.place_found = calls[0][0]
        if len(calls) == 1:
            return (calls[0][1].text,)
        texts = tuple(call.text for _, call in calls[:MOST_SHOWN - 1])
        return (f"one of {len(calls)} calls with this result, likely the first:", *texts)

    def notes(self) -> list[str]:
        notes = [f"{self.file}: no calls for {count} failed check{'' if count == 1 else 's'}: {why}"
                 for why, count in self.left_out.items()]
        if self.is_to_come and not self.is_stale() and self.file.exists():
            for _ in self.entries():
                pass
        return notes + ([f"{self.file}: {self.unreturned}"] if self.unreturned else [])


def never_came_back(number: int, text: str) -> str:
    return f"line {number}: this call never came back: {printable(text[:LONGEST_SHOWN])}"


def stamp_of(file: Path) -> tuple[int, ...] | None:
    try:
        found = file.stat()
    except OSError:
        return None
    return found.st_ino, found.st_size, found.st_mtime_ns


def chosen(group: list[Call], check: Check) -> tuple[str, ...]:
    """All calls of a line, or of many those that tell most: with the check's result, that failed, that came last."""
    if len(group) <= MOST_SHOWN:
        return tuple(call.text for call in group)
    telling = ([call for call in group if check.code and call.result == check.code]
               or [call for call in group if call.result] or group)
    shown = telling[-(MOST_SHOWN - 1):]
    return (f"{len(shown)} of {len(group)} calls:", *(call.text for call in shown))


def narrowed(calls: list[tuple[int, Call]], check: Check) -> list[tuple[int, Call]]:
    """Those of the operation that the line names, and with the numbers that it tells, where there are such calls."""
    text = check.line.text
    values = (value for name, value in check.line.values.items() if name != "ret")
    told = frozenset().union(*(numbers_in(value) for value in values))
    for fits in (lambda call: call.operation in text, lambda call: told <= call.numbers):
        calls = [each for each in calls if fits(each[1])] or calls
    return calls
