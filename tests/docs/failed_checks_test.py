"""Holds what the manual page says of failed checks against self-tests in which something fails, one thing at a time.

usage: failed_checks_test.py SOURCE_DIR BUILD_DIR
"""

import os
import re
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

SOURCE, BUILD = (Path(word) for word in sys.argv[1:3])
BOARDS = ("mpu_master", "mpu_slave", "lpu")
# One needs a built-in text that does not fit its own area, the other an allocation that fails.
UNREACHABLE = {"elabel get write info fail", "malloc fail."}
TEST_BARCODE = "Hello test now..."


def manual_lists() -> tuple[list[str], list[str], list[str]]:
    """Beginnings of lines that mean a failed check, of those that do not, and operations that fail without a line."""
    text = (SOURCE / "docs/kestro_test.1").read_text(encoding="utf-8")
    section = text[text.index(".SH FAILED CHECKS\n"):text.index(".SH EXAMPLES\n")]
    failures, notes, silent = (block.splitlines() for block in re.findall(r"\.RS\n(.*?)\.RE\n", section, re.DOTALL))
    return failures, notes, silent


FAILURES, NOTES, SILENT = manual_lists()


class Run:
    def __init__(self, process: subprocess.CompletedProcess) -> None:
        self.status = process.returncode
        self.lines = [line for line in re.split(r"[\r\n]+", process.stdout.decode("utf-8", "replace"))
                      if line and not line.startswith("cmd_exec used")]

    def failures(self) -> list[str]:
        return [line for line in self.lines if line.startswith(tuple(FAILURES))]

    def marks(self) -> list[str]:
        """What a reader compares with a good run."""
        return [line for line in self.lines if line.startswith(("Success", "#####"))]


class FailedChecks(unittest.TestCase):
    def setUp(self) -> None:
        scratch = tempfile.TemporaryDirectory(prefix="docs.")
        self.addCleanup(scratch.cleanup)
        self.root = Path(scratch.name)

    def words(self, board: str, *options: str) -> list[str]:
        return [str(BUILD / "kestro_sim"), "--board", board, "--state", str(self.root / board), "--clock", "virtual",
                *options, "--"]

    def run_words(self, words: list[str]) -> Run:
        return Run(subprocess.run(words, capture_output=True, timeout=60, stdin=subprocess.DEVNULL,
                                  env={**os.environ, "HOME": str(self.root)}, check=False))

    def selftest(self, board: str, *options: str) -> Run:
        return self.run_words([*self.words(board, *options), "board_test", "board_onekey_test"])

    def good_run(self, board: str) -> tuple[Run, list[str]]:
        trace = self.root / "trace"
        good = self.selftest(board, "--reset", "--trace", str(trace))
        calls = [line.split("(")[0] for line in trace.read_text(encoding="utf-8").splitlines() if line[0] != "#"]
        self.assertGreater(len(calls), 30)
        self.assertEqual((good.status, good.failures()), (0, []))
        return good, calls

    def test_each_failing_call_shows_as_the_manual_says(self) -> None:
        seen: set[str] = set()
        known: set[str] = set()
        for board in BOARDS:
            good, calls = self.good_run(board)
            for number in self.failed_calls(calls, known):
                call = calls[number - 1]
                failed = self.selftest(board, "--reset", "--fail-call", str(number))
                place = f"{board}: call {number}, {call}"
                self.assertEqual(failed.status, 0, place)
                seen.update(text for text in FAILURES for line in failed.lines if line.startswith(text))
                with self.subTest(place):
                    self.assertTrue(failed.failures() or call in SILENT, "leaves no documented line")
        self.assertEqual(seen, set(FAILURES) - UNREACHABLE, "texts of the manual that no failure printed")

    @staticmethod
    def failed_calls(calls: list[str], known: set[str]) -> list[int]:
        """The first call of each operation that no board before made, and the last where texts name the operation or
        its chip; all calls in the full tier."""
        if os.environ.get("KESTRO_TESTS_FULL") == "1":
            return list(range(1, len(calls) + 1))
        new = set(calls) - known
        named = {call for call in new if "9555" in call or any(text.startswith(call) for text in FAILURES)}
        chosen = {calls.index(call) + 1 for call in new} | {len(calls) - calls[::-1].index(call) for call in named}
        known.update(calls)
        return sorted(chosen)

    def test_each_failing_allocation_of_a_check_shows(self) -> None:
        good, _ = self.good_run("mpu_master")
        last = self.last_allocation(good)
        for number in range(last - 20, last + 1):
            failed = self.selftest("mpu_master", "--reset", "--fail-alloc", str(number))
            if failed.marks() == good.marks():
                self.assertTrue(any(line.startswith((*NOTES, "kestro_test: strdup failed")) for line in failed.lines))
            else:
                # Without its buffer the section of the clock is left out.
                shows = failed.failures() or failed.status != 0 or len(failed.marks()) < len(good.marks())
                self.assertTrue(shows, f"{number}: {failed.lines}")

    def last_allocation(self, good: Run) -> int:
        """Of a whole run: the greatest number that makes a difference."""
        low, high = 1, 4096
        while high - low > 1:
            middle = (low + high) // 2
            failed = self.selftest("mpu_master", "--reset", "--fail-alloc", str(middle))
            low, high = (low, middle) if failed.lines == good.lines else (middle, high)
        return low

    def test_a_missing_label_file_is_no_failed_check(self) -> None:
        self.good_run("mpu_master")
        good = self.selftest("mpu_master")
        files = list((self.root / "mpu_master").rglob("elabel.txt"))
        self.assertTrue(files)
        for file in files:
            file.unlink()
        without = self.selftest("mpu_master")
        self.assertEqual(without.failures(), [])
        self.assertEqual(without.marks(), good.marks())
        noted = [line for line in without.lines if line.startswith(tuple(NOTES)) and line not in good.lines]
        self.assertEqual([line.split("[")[0].split(":")[0] for line in noted], ["open file", "there is no such file"])

    def test_texts_of_the_sources_are_in_the_manual(self) -> None:
        """Texts with a failure in them that a single failing call does not reach."""
        texts = [text for file in (SOURCE / "src/selftest").rglob("*.cpp")
                 for text in re.findall(r'"((?:[^"\\]|\\.)*)"', file.read_text(encoding="utf-8"))]
        spoken = [text for text in texts if re.search(r"\bfail", text)]
        self.assertGreater(len(spoken), 20)
        for text in spoken:
            # The log of the support functions goes to no check: its lines begin with a tag in brackets.
            if text.startswith(("Error", "Info", "Success", "Failed to run", "open so", "open file %s failed")):
                continue
            beginning = re.escape(re.split(r"fail", text)[0]).replace("%s", ".*").replace("%d", ".*")
            self.assertTrue(any(re.match(beginning, line) or re.match(re.escape(line), text)
                                for line in FAILURES + NOTES), f"the manual does not say what '{text}' means")

    def test_a_second_run_takes_the_first_ones_data_for_the_boards_own(self) -> None:
        self.good_run("mpu_master")
        rules = self.root / "rules"
        rules.write_text("drv_barcode_write(barcode_id=0) = pass x1\ndrv_barcode_write(barcode_id=0) = hang\n",
                         encoding="utf-8")
        with subprocess.Popen([*self.words("mpu_master", "--script", str(rules)), "board_test", "board_onekey_test"],
                              stdout=subprocess.DEVNULL, stdin=subprocess.DEVNULL) as first:
            try:
                end = time.monotonic() + 30
                while TEST_BARCODE not in self.stored_barcode() and time.monotonic() < end:
                    time.sleep(0.05)
                self.assertEqual(self.selftest("mpu_master").failures(), [])
                self.assertIn(TEST_BARCODE, self.stored_barcode())
            finally:
                first.kill()

    def stored_barcode(self) -> str:
        return "\n".join(self.run_words([*self.words("mpu_master"), "barcode_test", "barcode_read", "0xffffffff", "0",
                                         "32"]).lines)

    def test_typing_errors_end_with_0(self) -> None:
        for words in (["board_test", "no_such_test"], ["no_such_module", "x"]):
            self.assertEqual(self.run_words([*self.words("mpu_master"), *words]).status, 0)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
