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

# Looked for at the first carriage return only: from each of many, the search would go through all that follow it.
LINE_ENDS = re.compile(rb"(?<!\r)\r++\n")
# Colours and places; titles and what else is told to the terminal, ended by BEL or ESC \; sets of characters; others of
# two bytes. A title that does not end in its line hides none of it: only what begins it is taken away then.
ESCAPES = re.compile(rb"\x1b(?:\[[0-?]*[ -/]*[@-~]|\][^\x07\x1b]*+(?:\x07|\x1b\\)|[()*+\-./][0-~]|[0-Z\\-~])")
# Padding, and shifts between two sets of characters.
SILENT = b"\0\x0e\x0f"
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
    """Number, bytes and whether it is whole, of each line that is not empty. A carriage return alone ends a line."""
    rest, number, returns = b"", 0, 0
    while chunk := read(CHUNK):
        data = chunk.lstrip(b"\r")
        returns += len(chunk) - len(data)
        if not data:
            continue
        if returns and not data.startswith(b"\n"):
            if rest:
                yield number + 1, rest[:LONGEST], len(rest) <= LONGEST
            rest, number = b"", number + returns
        ended = data.rstrip(b"\r")
        returns = len(data) - len(ended)  # only counted: their line feed may be in the next chunk
        *lines, rest = (rest + LINE_ENDS.sub(b"\n", ended).replace(b"\r", b"\n")).split(b"\n")
        for number, line in enumerate(lines, number + 1):
            if line:
                yield number, line[:LONGEST], len(line) <= LONGEST
        # The beginning of a line that is too long is enough to know that it is none.
        rest = rest[:LONGEST + 1]
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
        line = line.translate(None, SILENT)
        if b"\x1b" in line:
            line = ESCAPES.sub(b"", line)
        text = line.decode("utf-8", "surrogateescape")
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
