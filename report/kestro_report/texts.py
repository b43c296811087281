"""From the bytes of a log to lines: line ends of every kind, terminal colours, time stamps, bytes that are no text."""

import re
from collections.abc import Callable, Iterator
from dataclasses import dataclass
from datetime import datetime, timezone

CHUNK = 1 << 16
# What is longer is no line of kestro_test; it is cut, so that a file without line ends takes no memory.
LONGEST = 1 << 16

# In seconds since 1970. No calendar goes on from there, and no log's own clock runs so long.
YEAR_10000 = 253402300800.0

LINE_ENDS = re.compile(rb"\r+\n")
ESCAPES = re.compile(rb"\x1b(?:\[[0-?]*[ -/]*[@-~]|[@-Z\\-_])")
# What console servers and loggers put in front of a line.
STAMPS = re.compile(
    r"\[?(?P<date>\d{4}-\d\d-\d\d[T ]\d\d:\d\d:\d\d(?:[.,]\d+)?(?:Z|[+-]\d\d:?\d\d)?)\]?(?: ?[:|] ?| |$)"
    r"|\[ *(?P<seconds>\d+\.\d{3,9})\](?: |$)")


@dataclass(slots=True, frozen=True)
class TextLine:
    number: int
    text: str
    time: float | None
    whole: bool  # ended by a line end and not cut


def byte_lines(read: Callable[[int], bytes]) -> Iterator[tuple[int, bytes, bool]]:
    """Number, bytes and whether it is whole, of each line. A carriage return alone ends a line as well."""
    rest, number = b"", 0
    while chunk := read(CHUNK):
        data = rest + chunk
        held = data[len(data.rstrip(b"\r")):]  # its line feed may be in the next chunk
        data = LINE_ENDS.sub(b"\n", data[:len(data) - len(held)]).replace(b"\r", b"\n")
        *lines, rest = data.split(b"\n")
        for line in lines:
            number += 1
            yield number, line[:LONGEST], len(line) <= LONGEST
        # The beginning of a line that is too long is enough to know that it is none.
        rest = (rest if len(rest) <= LONGEST else rest[:LONGEST + 1]) + held
    rest = rest.rstrip(b"\r")
    if rest:
        yield number + 1, rest[:LONGEST], False


def time_of(found: re.Match) -> float | None:
    """The stamp's time; nothing where it is no time that a calendar has."""
    if found["seconds"]:
        time = float(found["seconds"])
    else:
        try:
            moment = datetime.fromisoformat(found["date"].replace(",", "."))
        except ValueError:
            return None
        time = (moment if moment.tzinfo else moment.replace(tzinfo=timezone.utc)).timestamp()
    return time if time < YEAR_10000 else None


def text_lines(read: Callable[[int], bytes]) -> Iterator[TextLine]:
    """The lines that are not empty. Bytes that are no UTF-8 stay, as surrogates, so that nothing is mistaken."""
    is_stamped = False
    for number, line, whole in byte_lines(read):
        if b"\x1b" in line:
            line = ESCAPES.sub(b"", line)
        text = line.replace(b"\0", b"").decode("utf-8", "surrogateescape")
        time = None
        if text[:1].isdigit() or text[:1] == "[":
            found = STAMPS.match(text)
            # A clock's own line is nothing but a date. In a log with stamps such a line is an empty one.
            if found and (is_stamped or found["seconds"] or text[found.end():]):
                text, time, is_stamped = text[found.end():], time_of(found), True
        if text and not text.isspace():
            yield TextLine(number, text, time, whole)


def printable(text: str) -> str:
    """The text with control characters and bytes that are no text written as \\xNN; tabs stay."""
    if text.isprintable():
        return text
    return "".join(sign if sign.isprintable() or sign == "\t" else escaped(sign) for sign in text)


def escaped(sign: str) -> str:
    number = ord(sign)
    if 0xDC80 <= number <= 0xDCFF:
        number -= 0xDC00
    return f"\\x{number:02x}" if number < 0x100 else f"\\u{number:04x}"
