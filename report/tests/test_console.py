"""Console logs: command lines, programs and boards that die, lines that others write into, and several commands."""

from pathlib import Path

import pytest
from outputs_for_tests import kestro_report, reading
from readings import BAD, END, GOOD, RAILS, RULES, read

from kestro_report import grammar
from kestro_report.console import command_in
from kestro_report.records import INCOMPLETE, PASSED

PLAIN, CLOCK = "plain ret 0x0", "clock ret 0x0"
COMMAND = "root@board:~# kestro_test {}"
BY_KERNEL = "[  123.456789] eth0: link up"


def outcomes(kept) -> list[str]:
    return [run.outcome for run in kept.runs]


# --- command lines ----------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("line", [
    "# kestro_test temp_test temp_get 0", "root@b:~# ./kestro_test temp_test temp_get 0", "$ sudo kestro_test temp_test temp_get 0",
    "# LD_LIBRARY_PATH=/opt/lib:/lib time kestro_test temp_test temp_get 0", "+ kestro_test temp_test temp_get 0",
    "% kestro_test temp_test temp_get 0", "# timeout -k 5 60s /opt/bin/kestro_test  temp_test  temp_get 0",
    "# build/kestro_sim --board mpu_master -- temp_test temp_get 0", "$ kestro_sim temp_test temp_get 0"])
def test_command_lines(line: str):
    assert command_in(line) == "temp_test temp_get 0"


@pytest.mark.parametrize("line", [
    "kestro_test temp_test temp_get 0", " kestro_test bus_test i2c_read_basebus inst_id", "# kestro_test temp_test ^C",
    "# echo kestro_test temp_test", "# kestro_test", "kestro_test operate temp_test fail!", "kestro_sim: no such board"])
def test_no_command_lines(line: str):
    assert command_in(line) is None


@pytest.mark.parametrize("behind", [[], ["Segmentation fault"], ["Kernel panic - not syncing: hung task", "U-Boot 2020.01"]])
def test_a_command_that_prints_nothing_has_not_ended_well(behind: list[str]):
    died = COMMAND.format("rails_test")
    assert outcomes(read(COMMAND.format("plain_test"), PLAIN, died, *behind)) == [PASSED, INCOMPLETE]
    kept = read(died, *behind, COMMAND.format("plain_test"), PLAIN)
    assert [(run.command, run.outcome) for run in kept.runs] == [("rails_test", INCOMPLETE), ("plain_test", PASSED)]
    assert outcomes(read(died, died)) == [INCOMPLETE, INCOMPLETE]


def test_a_line_that_is_edited_is_one_command():
    kept = read(COMMAND.format("plain_test"), COMMAND.format("plain_test get"), PLAIN)
    assert (kept.run.command, kept.run.outcome) == ("plain_test get", PASSED)


# --- ends -------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("line", [
    "Segmentation fault (core dumped)", "Killed", "Aborted", "Bus error", "Illegal instruction",
    "/root/check.sh: line 3: 1234 Killed                  kestro_test plain_test"])
def test_the_shell_tells_of_a_program_that_died(line: str):
    assert read(PLAIN, line).run.problems == [f"line 2 tells that it died: {line}"]
    assert read(GOOD, END, line).run.problems == [f"line 3 tells that it died: {line}"]
    # Of another program.
    assert read(GOOD, END, "another program", line).run.outcome == PASSED


@pytest.mark.parametrize("line", ["U-Boot 2020.01 (Jan 20 2026)", "Kernel panic - not syncing: Attempted to kill init!"])
def test_a_board_that_starts_again_ends_what_runs(line: str):
    assert read(PLAIN, line).run.outcome == INCOMPLETE
    assert read(GOOD, END, line).run.outcome == PASSED


def test_a_last_line_without_an_end_is_cut():
    _, kept = reading(RULES, f"{PLAIN}\r\nplain re")
    assert kept.run.problems == ["line 2, the last one, is cut: plain re"]
    for behind in (PLAIN, f"{PLAIN}\r\n", f"{PLAIN}\r\na remark\r\n", f"{PLAIN}\r\n{GOOD}\r\n{END}\r\n# "):
        _, kept = reading(RULES, f"{PLAIN}\r\n{behind}")
        assert kept.run.outcome == PASSED, behind


@pytest.mark.parametrize("status", ["SIGSEGV", "0x8b", "1.0", "abc"])
def test_a_status_that_is_no_number_is_refused(tmp_path: Path, status: str):
    (tmp_path / "board.txt").write_text(f"{GOOD}\n{END}\n")
    (tmp_path / "board.facts.yaml").write_text(f"status: {status}\n")
    ended = kestro_report(tmp_path / "board.txt")
    assert (ended.returncode, ended.stdout) == (2, "")
    assert ended.stderr == (f"kestro_report: {tmp_path}/board.facts.yaml: '{status}' is no status; the exit status is "
                            "wanted as a number, below 0 that of the signal\n")


# --- lines that others write into -------------------------------------------------------------------------------------


@pytest.mark.parametrize("line", [
    f"Success: label of{BY_KERNEL} pass", f"E{BY_KERNEL}", f"Error  : board weld{BY_KERNEL}", f"a remark{BY_KERNEL}"])
def test_a_line_that_the_kernel_writes_into_is_damaged(line: str):
    assert read(GOOD, line, END).run.problems == [f"line 2 is damaged: {line}"]
    assert read("dump of chip", line, GOOD, END).run.outcome == INCOMPLETE


@pytest.mark.parametrize("line", [
    f"eth0: link up{BAD}", f" {BAD}", f"root@board:~# {BAD}", BAD[1:], BAD[9:], "rror  : rail 0x2 set", "uccess: rail 2"])
def test_what_is_left_of_a_check_is_found_behind_other_words(line: str):
    assert read(GOOD, line, END).run.outcome == INCOMPLETE


@pytest.mark.parametrize("line", [f"{BY_KERNEL}{BAD}", f" {BAD}", f"root@board:~# {BAD}", BAD[1:], BAD[9:]])
def test_it_is_found_in_a_drivers_text_too(line: str):
    assert read("dump of chip", line, GOOD, END).run.outcome == INCOMPLETE


@pytest.mark.parametrize("line", [BY_KERNEL, "crc errors: 5", "rx Error: 0", "anything fails here", "<3>[   12.345678] eth0: down",
                                  "at 12:00 [ 1.5 ] of [3]"])
def test_a_drivers_text_may_speak_of_errors(line: str):
    assert read("dump of chip", line, GOOD, END).run.outcome == PASSED


# --- several commands -------------------------------------------------------------------------------------------------


def test_a_line_of_another_command_begins_another_run():
    assert outcomes(read(PLAIN, CLOCK, END)) == [PASSED, PASSED]
    assert outcomes(read(PLAIN, CLOCK)) == [PASSED, INCOMPLETE]
    assert outcomes(read(CLOCK, PLAIN)) == [INCOMPLETE, PASSED]
    assert outcomes(read(RAILS, GOOD, CLOCK, END)) == [INCOMPLETE, PASSED]


def test_a_self_test_begins_anew_behind_a_command_that_tells_no_end():
    assert outcomes(read(PLAIN, RAILS, GOOD)) == [PASSED, INCOMPLETE]
    assert outcomes(read(PLAIN, RAILS, GOOD, END)) == [PASSED, INCOMPLETE]  # its second part is missing


def test_help_does_not_hide_the_cut_of_what_follows():
    rules = grammar.load()
    shown = "Usage: kestro_test [OPTION]\t\n"
    cut = "drv_temperature_get_value:35\n"
    assert outcomes(reading(rules, shown + cut)[1])[-1] == INCOMPLETE
    assert outcomes(reading(rules, shown + cut + END + "\n")[1])[-1] == PASSED


def test_a_power_supply_is_a_part_of_a_part():
    """The self-test alone prints its banner; without the one above it the beginning is missing."""
    rules = grammar.load()
    supply = "##### slot 14 power 0 test begin \n"
    passed = "Success: slot 14 power 0 get POWER_ONLINE 0x1: 0x1\n"
    kept = reading(rules, supply + passed + END + "\n")[1]
    assert "the beginning is missing" in kept.run.problems[0]
