"""Verdicts over one-key tests of fans and power supplies with a fault, and over runs that fail or do not end properly.

usage: runs_test.py SOURCE_DIR BUILD_DIR
"""

import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from verdicts import SELFTEST, SOURCE, Verdict, read_output, run_on, simulator, verdict_of

SICK = SOURCE / "sim/chassis/sick"
WHOLE = "the test as a whole"
# What a technician has broken, the test that shows it, and what must be named: parts and checks.
FANS = [
    ("fan/150/stalled=1", "fan_get_alarm_info", {("fan alarms", "fan15 0 alarms")}),
    ("fan/160/alarms=0x10", "fan_get_alarm_info", {("fan alarms", "fan16 0 alarms")}),
    ("fan/151/stalled=1", "fan_get_info_one_key_test", {("fan information", "fan15 1 information")}),
    ("tray/16/present=0", "fan_get_info_one_key_test", {
        ("FAN16", "present"), ("FAN16", "pcb version"), ("FAN16", "airflow direction"),
        ("fan information", "fan16 num")}),
    ("tray/16/present=0", "fan_get_elabel_info", {
        ("FAN16", "Elabel"), ("FAN16", "AbilityFile"), ("FAN16", "Expand Elabel")}),
    ("fan/150/stuck=1", "fan_speed_test 15 1", {("FAN15-0", "rounds")}),
    ("fan/161/stuck=1", "fan_shift_test 16 1", {("[FAN16] Shift Test", "rounds")}),
    ("tray/15/init_stuck=1", "fan_multi_init_test 15 1", {("[FAN15] Multi Init Test", "rounds")}),
    ("tray/15/lamp_stuck=1", "fan_led_one_key_test", {
        ("[FAN15] Led Test", f"lamp 0 color {color}") for color in (0, 2, 4)}),
    ("tray/16/lamp_stuck=1", "fan_one_key_test", {
        ("[FAN16] Led Test", f"lamp 0 color {color}") for color in (0, 2, 4)}),
    ("fan/161/stuck=1", "fan_one_key_test", {("FAN16-1", "rounds"), ("[FAN16] Shift Test", "rounds")}),
]
# The same of power supplies: a sick board, the test's kind, and the checks. A supply without mains passes its test.
SUPPLIES = [
    ("power_fan_stopped", "all", 1, {
        f"slot 13 power 1 {check}" for check in ("POWER_ALARM 1", "POWER_ALARM_HISTORY 43", "POWER_FAN_STATE 13",
                                                 "POWER_ALARM_FAN 10")}),
    ("power_latch_stuck", "config", 1, {"slot 13 power 0 set POWER_LATCH_STATE 24"}),
    ("power_bbox_torn", "display", 1, {"slot 13 power 0 bbox"}),
    ("power_rating_missing", "display", 1, {"slot 13 power 1 POWER_RATED_POWER 3"}),
    ("power_image_damaged", "software", 1, {"slot 13 power 0 load file", "slot 13 power 1 load file"}),
    ("power_program_lost", "software", 1, {"slot 13 power 0 programs kept"}),
    ("power_latch_stuck", "display", 0, set()),
    ("power_no_input", "all", 0, set()),
]


class Runs(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(prefix="report.")
        self.addCleanup(folder.cleanup)
        self.scratch = Path(folder.name)

    def verdict_on(self, board: str | Path, words: str, *options: str) -> tuple[Verdict, int]:
        """The verdict on what is printed, and the status of the program itself."""
        output, status = run_on(board, self.scratch, tuple(words.split()), *options)
        file = self.scratch / "output.txt"
        file.write_bytes(output)
        return read_output(file), status

    def live(self, *words: str, options: tuple[str, ...] = ()) -> Verdict:
        return verdict_of(self.scratch, "run", *options, "--", *words)

    # --- one-key tests ------------------------------------------------------------------------------------------------

    def test_fans(self) -> None:
        for setting, words, expected in FANS:
            with self.subTest(setting, words=words):
                verdict, status = self.verdict_on("mpu_master", f"fan_test {words}", "--set", f"chassis/fan/{setting}")
                parts = {(check.part, check.name) for check in verdict.bad if check.part != WHOLE}
                self.assertEqual((parts, verdict.status, verdict.unknown), (expected, 1, []))
                # Tests that only tell end with 0.
                self.assertEqual(status != 0, any(check.part == WHOLE for check in verdict.bad))

    def test_healthy_fans(self) -> None:
        for words in {words for _, words, _ in FANS}:
            with self.subTest(words):
                verdict, status = self.verdict_on("mpu_master", f"fan_test {words}")
                self.assertEqual((verdict.status, verdict.bad, verdict.unknown, status), (0, [], [], 0))

    def test_supplies(self) -> None:
        for board, kind, status, expected in SUPPLIES:
            with self.subTest(board, kind=kind):
                words = f"power_onekey_test_{kind}"
                verdict, ended = self.verdict_on(SICK / f"{board}.xml", f"power_test {words} 13")
                own = {words} if status else set()  # that it ended with a failure
                self.assertEqual(verdict.names("failed"), expected | own)
                self.assertEqual((verdict.status, verdict.unknown), (status, []))
                self.assertEqual(ended != 0, bool(status))

    def test_healthy_supplies(self) -> None:
        for kind in {kind for _, kind, _, _ in SUPPLIES}:
            with self.subTest(kind):
                verdict, status = self.verdict_on("mpu_master", f"power_test power_onekey_test_{kind} 13")
                self.assertEqual((verdict.status, verdict.bad, verdict.unknown, status), (0, [], [], 0))

    def test_what_a_test_leaves_out_shows_beside_a_good_run(self) -> None:
        words = ("power_test", "power_onekey_test_all", "13")
        good, output = self.scratch / "good.txt", self.scratch / "output.txt"
        good.write_bytes(run_on("mpu_master", self.scratch, words)[0])
        output.write_bytes(run_on(SICK / "power_no_input.xml", self.scratch, words)[0])
        verdict = read_output(output, "--expect", good)
        self.assertEqual(verdict.status, 1)
        self.assertIn("slot 13 power 0 POWER_INPUT_STATE 9", verdict.names("missing"))
        self.assertEqual({check.name.split(" POWER")[0] for check in verdict.bad}, {"slot 13 power 0"})

    # --- runs that fail -----------------------------------------------------------------------------------------------

    def test_a_driver_that_fails(self) -> None:
        for words in ("voltage_test voltage_get_value 2", "mac_test drv_mac_get_num 0xff000005 2",
                      "temp_test temp_get 0xffffffff 1", "board_test board_get_type"):
            with self.subTest(words):
                good, status = self.verdict_on("mpu_master", words)
                self.assertEqual((good.status, good.bad, good.unknown, status), (0, [], [], 0))
                failed, status = self.verdict_on("mpu_master", words, "--fail-call", "1+")
                self.assertEqual((failed.status, failed.problems, failed.unknown), (1, [], []))
                self.assertNotEqual(status, 0)

    def test_words_that_there_are_not(self) -> None:
        for words in ("voltage_test no_such_test", "no_such_module x", "voltage_test"):
            with self.subTest(words):
                verdict, _ = self.verdict_on("mpu_master", words)
                self.assertIn(verdict.status, (1, 3))
                self.assertEqual(verdict.passed, [])

    # --- runs that do not end properly --------------------------------------------------------------------------------

    def fifth_temperature(self, result: str) -> tuple[str, ...]:
        """Options by which that is what comes of the fifth sensor."""
        file = self.scratch / "rules"
        call = "drv_temperature_get_value"
        file.write_text(f"{call} = pass x4\n{call} = {result}\n", encoding="utf-8")
        return "--script", str(file)

    def test_a_driver_that_crashes(self) -> None:
        crashing = self.fifth_temperature("crash")
        output, status = run_on("mpu_master", self.scratch, SELFTEST, *crashing)
        self.assertNotEqual(status, 0)
        file = self.scratch / "output.txt"
        file.write_bytes(output)
        verdict = read_output(file)
        self.assertEqual((verdict.status, verdict.bad), (3, []))
        self.assertIn("the output ends before the program did", verdict.problems)
        self.assertGreater(len(verdict.passed), 20)
        verdict = self.live(*simulator("mpu_master", self.scratch / "state", *crashing), *SELFTEST)
        self.assertEqual((verdict.status, verdict.bad), (3, []))
        self.assertTrue(any("ended by signal 11" in problem or "ended with status 139" in problem
                            for problem in verdict.problems), verdict.problems)

    def test_a_driver_that_hangs(self) -> None:
        hanging = self.fifth_temperature("hang")
        verdict = self.live(*simulator("mpu_master", self.scratch / "state", *hanging), *SELFTEST,
                            options=("--timeout", "3"))
        self.assertEqual((verdict.status, verdict.bad), (3, []))
        self.assertEqual(verdict.problems[0], "not ended after 3 seconds")
        left = subprocess.run(["pgrep", "-f", str(self.scratch)], capture_output=True, text=True, check=False).stdout
        self.assertEqual(left, "", "what was started is still there")

    def test_runs_that_end_properly_live(self) -> None:
        for board, status in (("mpu_slave", 0), (SICK / "dimm_silent.xml", 1)):
            verdict = self.live(*simulator(board, self.scratch / "state"), *SELFTEST)
            self.assertEqual((verdict.status, verdict.problems, verdict.unknown), (status, [], []))

    def test_a_self_test_cut_anywhere(self) -> None:
        lines = run_on("lpu", self.scratch, SELFTEST)[0].splitlines(keepends=True)
        file = self.scratch / "cut.txt"
        for length in [*range(0, len(lines) - 1, 10), len(lines) - 1]:
            file.write_bytes(b"".join(lines[:length]))
            self.assertEqual(read_output(file).status, 3, f"{length} lines of {len(lines)}")
        file.write_bytes(b"".join(lines))
        self.assertEqual(read_output(file).status, 0)

    def test_a_part_that_is_not_there(self) -> None:
        text = run_on("lpu", self.scratch, SELFTEST)[0].decode("utf-8", "surrogateescape")
        banners = [line for line in text.splitlines() if line.startswith("#####")]
        self.assertGreater(len(banners), 15)
        file = self.scratch / "less.txt"
        for banner, following in zip(banners, [*banners[1:], "cmd_exec used second"], strict=True):
            begin, end = text.index(banner), text.index(following)
            file.write_text(text[:begin] + text[end:], encoding="utf-8", errors="surrogateescape")
            verdict = read_output(file)
            self.assertEqual((verdict.status, verdict.bad), (3, []), banner)

    def test_two_boards_in_one_log(self) -> None:
        """Whole runs one behind the other are two runs, mixed ones are none."""
        one, other = (run_on(board, self.scratch, SELFTEST)[0].splitlines(keepends=True)
                      for board in ("lpu", "mpu_slave"))
        file = self.scratch / "log.txt"
        file.write_bytes(b"".join(one + other))
        self.assertEqual(read_output(file).status, 0)
        mixed = [line for pair in zip(one, other, strict=False) for line in pair]
        file.write_bytes(b"".join(mixed + other[len(one):]))
        self.assertEqual(read_output(file).status, 3)


if __name__ == "__main__":
    assert shutil.which("pgrep"), "pgrep is missing: package procps"
    unittest.main(argv=sys.argv[:1] + sys.argv[3:])
