"""Verdicts over whole self-tests: healthy boards pass, and of each sick one exactly the sick part is named.

What must have failed is taken from elsewhere than the report's own grammar: the lines that differ from the healthy
board's (the boards' .lines files), what the manual page says of failed checks, and sick_parts.yaml.

usage: boards_test.py SOURCE_DIR BUILD_DIR
"""

import re
import sys
import tempfile
import unittest
import xml.etree.ElementTree
from collections import Counter
from functools import cache
from pathlib import Path

import yaml
from verdicts import SELFTEST, SOURCE, Verdict, read_output, run_on

SICK = SOURCE / "sim/chassis/sick"
SEATS = {"9": "mpu_master", "10": "mpu_slave"}
PREFIX = re.compile(r"^\w+ *:\s*")
OUTCOME = re.compile(r"\bpass\b|\bis\b|\bsuccess\b|:")
FOLDER = tempfile.TemporaryDirectory(prefix="report.")
SCRATCH = Path(FOLDER.name)
# So many words of a line say what is checked; behind them, or behind its outcome, come values.
WORDS_OF_A_CHECK = 6


def healthy(seat: str) -> Path:
    output = SCRATCH / f"{seat}.txt"
    if not output.exists():
        output.write_bytes(run_on(seat, SCRATCH, SELFTEST)[0])
    return output


@cache
def healthy_verdict(seat: str) -> Verdict:
    return read_output(healthy(seat))


@cache
def failing_texts() -> tuple[str, ...]:
    """Beginnings of lines that mean a failed check, as the manual page lists them."""
    text = (SOURCE / "docs/kestro_test.1").read_text(encoding="utf-8")
    section = text[text.index(".SH FAILED CHECKS\n"):text.index(".SH EXAMPLES\n")]
    return tuple(re.findall(r"\.RS\n(.*?)\.RE\n", section, re.DOTALL)[0].splitlines())


def check_words(line: str) -> tuple[str, ...]:
    words = OUTCOME.split(PREFIX.sub("", line), maxsplit=1)[0].split()[:WORDS_OF_A_CHECK]
    while words and words[-1][0].isdigit():
        words.pop()
    return tuple(words)


def shown(line: str) -> str:
    """As a report shows it."""
    return "".join(sign if sign.isprintable() else f"\\x{ord(sign):02x}" for sign in line.strip())


class SickBoard:
    """A board's file, its lines, and what the table says of it."""

    def __init__(self, name: str, said: dict) -> None:
        self.name = name
        self.file = SICK / f"{name}.xml"
        self.seat = SEATS.get(xml.etree.ElementTree.parse(self.file).getroot().get("slot"), "lpu")
        self.parts = {said["part"]} if isinstance(said["part"], str) else set(said["part"])
        self.missing = set(said.get("missing", ()))
        self.unlike = said.get("unlike", [])
        self.remarks = said.get("remarks", [])
        lines = (SICK / f"{name}.lines").read_text(encoding="utf-8").splitlines()
        self.gone = [line[1:] for line in lines if line.startswith("-")]
        self.come = [line[1:] for line in lines if line.startswith("+")]

    def failing_lines(self) -> Counter[str]:
        failing = [line for line in self.come if line.startswith(failing_texts())]
        return Counter(line.strip() for line in failing + self.unlike)

    def passes_gone(self) -> list[str]:
        """Success lines of the healthy board behind which no other value of the same check has come."""
        come = Counter(check_words(line) for line in self.come if line.startswith("Success"))
        gone = []
        for line in self.gone:
            if line.startswith("Success"):
                come[check_words(line)] -= 1
                gone += [line] if come[check_words(line)] < 0 else []
        return gone


def sick_boards() -> list[SickBoard]:
    table = yaml.safe_load((SOURCE / "tests/report/sick_parts.yaml").read_text(encoding="utf-8"))
    return [SickBoard(name, said) for name, said in table.items()]


class Healthy(unittest.TestCase):
    def test_healthy_boards_pass_and_every_line_is_known(self) -> None:
        for seat in (*SEATS.values(), "lpu"):
            with self.subTest(seat):
                verdict = read_output(healthy(seat), "--expect", healthy(seat))
                self.assertEqual((verdict.status, verdict.bad, verdict.problems, verdict.unknown), (0, [], [], []))
                successes = [line for line in healthy(seat).read_text("utf-8", "replace").splitlines()
                             if line.startswith("Success")]
                self.assertGreater(len(verdict.passed), len(successes) * 3 // 4)


class Sick(unittest.TestCase):
    def test_the_table_has_every_sick_board(self) -> None:
        self.assertEqual({board.name for board in sick_boards()}, {file.stem for file in SICK.glob("*.xml")})

    def test_exactly_the_sick_part_is_named(self) -> None:
        for board in sick_boards():
            with self.subTest(board.name):
                output = SCRATCH / "sick.txt"
                output.write_bytes(run_on(board.file, SCRATCH, SELFTEST)[0])
                verdict = read_output(output, "--expect", healthy(board.seat))
                self.assertEqual((verdict.problems, verdict.unknown), ([], []))
                self.assertEqual(verdict.status, 1 if board.parts else 0)
                self.assertEqual({check.part for check in verdict.bad}, board.parts)
                self.check_failed(board, verdict)
                self.check_missing(board, verdict)
                # Without a good run only what prints a failure is found.
                self.assertEqual(read_output(output).status, 1 if board.failing_lines() else 0)

    def check_failed(self, board: SickBoard, verdict: Verdict) -> None:
        failed = Counter(check.text for check in verdict.bad if check.kind == "failed")
        self.assertEqual(failed, board.failing_lines())

    def check_missing(self, board: SickBoard, verdict: Verdict) -> None:
        """The table's are those whose Success lines are gone, and those that pass with another word than Success."""
        self.assertEqual(verdict.names("missing"), board.missing)
        names: dict[str, set[str]] = {line: set() for line in board.remarks}
        for name, line in healthy_verdict(board.seat).passed:
            names.setdefault(line, set()).add(name)
        gone = set().union(*(names[shown(line)] for line in board.passes_gone())) - verdict.names("failed")
        others = set().union(*(names.get(shown(line), set()) for line in board.gone if not line.startswith("Success")))
        self.assertLessEqual(gone, board.missing)
        self.assertLessEqual(board.missing - gone, others)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
