"""Small outputs of kestro_test, and how the tests start kestro_report."""

import subprocess
from pathlib import Path

from readings import Kept

from kestro_report.grammar import Grammar
from kestro_report.reader import Reader
from kestro_report.settings import Settings
from kestro_report.texts import text_lines

TREE = Path(__file__).resolve().parent.parent.parent
KESTRO_REPORT = TREE / "report" / "bin" / "kestro_report"

BANNER = "\n*********   test_voltage_get test begin:  ********\n"
PASSED_LINE = "Success: voltage 2 get and set value pass. original value 1000\n"
FAILED_LINE = "Error: voltage get fail. voltage_id 3 ret 0x8111010f\n"
END = "cmd_exec used second:0\ncmd_exec used millisecond:12\n"
GOOD = BANNER + PASSED_LINE + END
BAD = BANNER + PASSED_LINE + FAILED_LINE + END
# It ended somewhere in the middle, whatever it has found until then.
CUT = BANNER + PASSED_LINE


def in_pieces(data: bytes, size: int):
    """A read function that gives at most so many bytes at a time."""
    at = 0

    def read(wanted: int) -> bytes:
        nonlocal at
        piece = data[at:at + min(size, wanted)]
        at += len(piece)
        return piece
    return read


def reading(rules: Grammar, data: bytes | str, size: int = 1 << 16, settings: Settings | None = None,
            facts: dict[str, str] | None = None) -> tuple[Reader, Kept]:
    data = data.encode("utf-8", "surrogateescape") if isinstance(data, str) else data
    recorder = Kept()
    reader = Reader(rules, [recorder], settings)
    reader.begin_source("output", facts)
    for line in text_lines(in_pieces(data, size)):
        reader.feed(line)
    reader.end_source()
    return reader, recorder


def kestro_report(*words: object, **how) -> subprocess.CompletedProcess:
    how = {"capture_output": True, "text": True, "stdin": subprocess.DEVNULL, "timeout": 60, **how}
    return subprocess.run([str(KESTRO_REPORT), *map(str, words)], check=False, **how)
