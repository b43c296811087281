"""A command that is run and read while it prints: how it ends, how it is ended, what is left behind."""

import os
import pty
import re
import select
import signal
import subprocess
import sys
import time
from pathlib import Path

import pytest

from kestro_report import grammar, live
from kestro_report.command_line import main
from kestro_report.errors import InputError
from kestro_report.live import Wishes, command_line_of, start, words_of_product
from outputs_for_tests import BAD, CUT, GOOD, KESTRO_REPORT, TREE, kestro_report

ENDLESS = "exec tail -f /dev/null"


@pytest.fixture
def said(tmp_path: Path):
    """Makes a file of an output, for a shell to print."""
    def make(output: str) -> Path:
        file = tmp_path / f"said{len(list(tmp_path.iterdir()))}.txt"
        file.write_text(output)
        return file
    return make


@pytest.fixture
def soon(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(live, "GRACE_SECONDS", 0.2)
    monkeypatch.setattr(live, "LEFT_OPEN_SECONDS", 0.2)
    monkeypatch.setattr(live, "TICK_SECONDS", 0.05)


def run_to_end(command: str, timeout: float | None = None) -> tuple[bytes, int | None, live.LiveRun]:
    with Wishes() as wishes, start(["/bin/sh", "-c", command], wishes, timeout) as run:
        data = b""
        while piece := run.read(1 << 16):
            data += piece
        return data, run.finish(), run


def lives(process: int) -> bool:
    """A process that has ended and waits for its parent's look is none that lives."""
    try:
        return Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()[0] != "Z"
    except OSError:
        return False


def wait_until(is_so) -> bool:
    until = time.monotonic() + 20
    while not is_so() and time.monotonic() < until:
        select.select([], [], [], 0.01)
    return is_so()


# --- how a command ends -----------------------------------------------------------------------------------------------


@pytest.mark.parametrize(("output", "status"), [(GOOD, 0), (BAD, 1), (CUT, 3), ("", 3)])
def test_a_run_has_the_verdict_of_its_output(said, output: str, status: int):
    assert kestro_report("run", "--", "cat", said(output)).returncode == status


@pytest.mark.parametrize(("ending", "problem"), [
    ("exit 1", "ended with status 1"), ("exit 99", "ended with status 99"), ("kill -SEGV $$", "ended by signal 11"),
    ("kill -KILL $$", "ended by signal 9")])
def test_a_bad_end_is_no_verdict_of_the_board(said, ending: str, problem: str):
    ended = kestro_report("run", "--", "sh", "-c", f"cat {said(GOOD)}; {ending}")
    assert (ended.returncode, problem in ended.stdout) == (3, True)


def test_status_255_says_that_a_check_failed(said):
    assert kestro_report("run", "--", "sh", "-c", f"cat {said(BAD)}; exit 255").returncode == 1


def test_a_module_that_tells_no_time_is_known_by_how_it_ended(said):
    """Its output may be cut behind any line and look whole; the page says so, and of which modules."""
    file = said("i2c_read address:[0x10], value:[0x3f].\n")
    assert kestro_report(file).returncode == 0
    assert kestro_report("run", "--", "sh", "-c", f"cat {file}; kill -9 $$").returncode == 3
    file.with_name(f"{file.stem}.facts.yaml").write_text("status: -9\n")
    assert kestro_report(file).returncode == 3
    paragraphs = (TREE / "docs/report.md").read_text().split("\n\n")
    told = next(each for each in paragraphs if "tells their time" in each)
    assert set(re.findall(r"`(\w+_test)`", told)) == grammar.load().untimed


def test_standard_error_of_the_command_is_not_read(said):
    ended = kestro_report("run", "--", "sh", "-c", f"cat {said(GOOD)}; cat {said(BAD)} >&2")
    assert (ended.returncode, "voltage_id 3" in ended.stderr, "voltage_id 3" in ended.stdout) == (0, True, False)


def test_the_command_has_no_standard_input():
    data, status, _ = run_to_end("cat; echo end")
    assert (data, status) == (b"end\n", 0)


def test_files_that_the_shell_opened_are_handed_on(said):
    ended = subprocess.run(["bash", "-c", f"'{KESTRO_REPORT}' run -- cat <(cat '{said(GOOD)}')"], capture_output=True,
                           check=False)
    assert (ended.returncode, ended.stderr) == (0, b"")


def test_files_of_this_program_are_not_handed_on(tmp_path: Path):
    data, _, _ = run_to_end("ls -l /proc/$$/fd")
    with (tmp_path / "a report").open("w"):
        assert run_to_end("ls -l /proc/$$/fd")[0].count(b"->") == data.count(b"->")


def test_the_raw_output_is_kept_byte_for_byte(tmp_path: Path):
    output = b"\x1b[1m" + GOOD.replace("\n", "\r\n").encode() + b"\xff\0\rno line end"
    (tmp_path / "raw").write_bytes(output)
    kestro_report("run", "--keep", tmp_path / "kept", "--", "cat", tmp_path / "raw")
    assert (tmp_path / "kept").read_bytes() == output


@pytest.mark.parametrize("words", [["--keep", "-"], ["--keep=-"]])
def test_the_raw_output_is_not_kept_on_standard_output(tmp_path: Path, words: list[str]):
    report = tmp_path / "result.xml"
    report.write_text("of yesterday")
    ended = kestro_report("run", "--junit", report, *words, "--", "touch", "started", cwd=tmp_path)
    assert (ended.returncode, ended.stdout) == (2, "")
    assert ended.stderr == ("kestro_report: argument --keep: '-' is no file here, for standard output is the report's; "
                            "the name of a file is wanted; 'kestro_report run --help' tells what there is\n")
    assert [each.name for each in tmp_path.iterdir()] == ["result.xml"] and report.read_text() == "of yesterday"


def test_what_cannot_be_kept_ends_the_command(tmp_path: Path):
    mark = tmp_path / "process"
    ended = kestro_report("run", "--keep", "/dev/full", "--", "sh", "-c", f"echo $$ > {mark}; echo a line; {ENDLESS}")
    assert (ended.returncode, ended.stderr) == (2, "kestro_report: /dev/full: No space left on device\n")
    assert not lives(int(mark.read_text()))


# --- how it is ended --------------------------------------------------------------------------------------------------


def test_a_command_that_takes_too_long_is_ended(said):
    ended = kestro_report("run", "--timeout", "0.3", "--", "sh", "-c", f"cat {said(CUT)}; {ENDLESS}")
    assert (ended.returncode, "not ended after 0.3 seconds" in ended.stdout) == (3, True)


def test_what_is_printed_at_the_end_is_read(soon):
    data, status, run = run_to_end("trap 'echo last; exit 0' TERM; echo first; while :; do sleep 0.02; done", 0.3)
    assert (data, status, run.problem) == (b"first\nlast\n", None, "not ended after 0.3 seconds")


def test_a_command_that_ignores_the_request_is_killed(soon):
    data, status, run = run_to_end("trap '' TERM; echo $$; while :; do sleep 0.02; done", 0.3)
    assert status is None and not lives(int(data))


def test_a_command_that_prints_for_ever_is_ended(soon):
    data, status, _ = run_to_end("trap '' TERM; while :; do echo x; done", 0.3)
    assert status is None and data.startswith(b"x\n")


def test_a_command_that_closes_its_output_and_lives_on_is_ended(soon):
    data, status, run = run_to_end(f"echo $$; exec >/dev/null; {ENDLESS}", 0.3)
    assert (status, run.problem) == (None, "not ended after 0.3 seconds") and not lives(int(data))


def test_a_status_comes_after_the_output_has_been_closed(soon):
    data, status, run = run_to_end("echo x; exec >&-; sleep 0.2; exit 7", 20)
    assert (data, status, run.problem) == (b"x\n", 7, "")


def test_who_holds_the_output_open_is_not_waited_for(soon):
    data, status, run = run_to_end("tail -f /dev/null & echo $!; exit 4")
    assert (status, run.problem) == (4, "") and wait_until(lambda: not lives(int(data)))


def test_who_left_the_group_and_prints_on_is_left_alone_at_the_end(soon):
    data, status, _ = run_to_end("setsid sh -c 'echo $$; while :; do echo x; sleep 0.01; done'", 0.3)
    stray = int(data.split()[0])
    try:
        assert status is None
    finally:
        os.kill(stray, signal.SIGKILL)


def test_nothing_stays_behind_after_an_error_here(soon):
    with pytest.raises(ZeroDivisionError), start(["/bin/sh", "-c", ENDLESS], Wishes()) as run:
        raise ZeroDivisionError
    assert not lives(run.process.pid)


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM, signal.SIGHUP])
def test_an_interrupt_ends_the_command_and_leaves_whole_reports(tmp_path: Path, said, number: signal.Signals):
    mark, report = tmp_path / "process", tmp_path / "result.xml"
    process = subprocess.Popen([KESTRO_REPORT, "run", "--junit", report, "--", "sh", "-c",
                                f"cat {said(BAD)}; echo $$ > {mark}.new; mv {mark}.new {mark}; {ENDLESS}"],
                               stdout=subprocess.PIPE, text=True)
    assert wait_until(mark.exists)
    process.send_signal(number)
    said_of_it, _ = process.communicate(timeout=20)
    assert (process.returncode, "interrupted" in said_of_it) == (3, True)
    assert report.read_text().endswith("</testsuites>\n") and "voltage_id 3" in report.read_text()
    assert not lives(int(mark.read_text()))


def test_a_second_interrupt_does_not_wait(monkeypatch: pytest.MonkeyPatch):
    monkeypatch.setattr(live, "GRACE_SECONDS", 1000.0)
    stubborn = ["/bin/sh", "-c", "trap '' TERM; echo x; while :; do sleep 0.02; done"]
    with Wishes() as wishes, start(stubborn, wishes) as run:
        assert run.read(10) == b"x\n"
        os.kill(os.getpid(), signal.SIGINT)
        os.kill(os.getpid(), signal.SIGINT)
        while run.read(10):
            pass
        assert (run.finish(), run.problem) == (None, "interrupted")


def started(monkeypatch: pytest.MonkeyPatch, then) -> list[subprocess.Popen]:
    """What the tool starts, each followed at once by `then`: before the tool could have looked at it."""
    processes, popen = [], subprocess.Popen

    def make(*words, **options):
        processes.append(popen(*words, **options))
        then()
        return processes[-1]
    monkeypatch.setattr(subprocess, "Popen", make)
    return processes


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM, signal.SIGHUP])
def test_an_interrupt_while_the_command_starts_does_not_leave_it_behind(tmp_path: Path, capsys, monkeypatch, number):
    report = tmp_path / "result.xml"
    processes = started(monkeypatch, lambda: os.kill(os.getpid(), number))
    assert main(["run", "--junit", str(report), "--", "sh", "-c", ENDLESS]) == 3
    assert "interrupted" in capsys.readouterr().out and report.read_text().endswith("</testsuites>\n")
    assert [lives(process.pid) for process in processes] == [False]


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM, signal.SIGHUP])
def test_an_interrupt_behind_the_command_leaves_whole_reports(tmp_path: Path, said, monkeypatch, number):
    report, leave = tmp_path / "result.xml", live.LiveRun.__exit__

    def leave_and_signal(run: live.LiveRun, *error: object) -> None:
        leave(run, *error)
        os.kill(os.getpid(), number)
    monkeypatch.setattr(live.LiveRun, "__exit__", leave_and_signal)
    assert main(["run", "--junit", str(report), "--", "cat", str(said(GOOD))]) == 0
    assert report.read_text().endswith("</testsuites>\n")


def test_who_asks_again_and_again_waits_for_nothing(monkeypatch: pytest.MonkeyPatch, capsys):
    processes = started(monkeypatch, lambda: [os.kill(os.getpid(), signal.SIGINT) for _ in range(live.IMPATIENT)])
    try:
        assert main(["run", "--", "sh", "-c", ENDLESS]) == 2
        assert capsys.readouterr() == ("", "kestro_report: interrupted\n")
    finally:
        processes[0].kill()
        processes[0].wait()


def test_handlers_are_put_back():
    before = signal.getsignal(signal.SIGINT)
    run_to_end("true")
    assert signal.getsignal(signal.SIGINT) is before


# --- progress on a terminal -------------------------------------------------------------------------------------------


def test_progress_is_shown_on_a_terminal_and_cleared(said):
    master, terminal = pty.openpty()
    ended = kestro_report("run", "--", "cat", said(BAD), capture_output=False, stdout=subprocess.PIPE, stderr=terminal)
    os.close(terminal)
    shown = os.read(master, 1 << 16).decode()
    os.close(master)
    assert "0 checks, 0 failed  test_voltage_get" in shown
    assert shown.endswith("\r\x1b[K")
    assert "\x1b[K" not in ended.stdout


def test_no_progress_goes_into_a_file(said):
    assert kestro_report("run", "--", "cat", said(BAD)).stderr == ""


# --- what is started --------------------------------------------------------------------------------------------------


def program(folder: Path, name: str, output: Path) -> Path:
    folder.mkdir(exist_ok=True)
    file = folder / name
    file.write_text(f"#!/bin/sh\necho \"$@\" > {folder}/words\ncat {output}\n")
    file.chmod(0o755)
    return file


def test_words_of_kestro_test_go_to_kestro_test_in_the_path(tmp_path: Path, said):
    program(tmp_path / "bin", "kestro_test", said(GOOD))
    ended = kestro_report("run", "--", "voltage_test", "x",
                          env={**os.environ, "PATH": f"{tmp_path}/bin:{os.environ['PATH']}"})
    assert (ended.returncode, (tmp_path / "bin/words").read_text()) == (0, "voltage_test x\n")
    assert "kestro_test: voltage_test x" in ended.stdout


def test_a_board_is_simulated(tmp_path: Path, said, monkeypatch: pytest.MonkeyPatch):
    place = program(tmp_path / "bin", "kestro_sim", said(GOOD))
    monkeypatch.setenv("PATH", str(place.parent))
    monkeypatch.setattr(sys, "argv", ["kestro_report"])
    assert command_line_of(["mac_test", "x"], "lpu") == [str(place), "--board", "lpu", "--", "mac_test", "x"]
    assert command_line_of(["mac_test"], "lpu", "t") == [str(place), "--board", "lpu", "--trace", "t",
                                                         "--trace-output", "--", "mac_test"]


def test_a_program_beside_this_one_goes_before_one_in_the_path(tmp_path: Path, said, monkeypatch: pytest.MonkeyPatch):
    beside = program(tmp_path / "here", "kestro_sim", said(GOOD))
    monkeypatch.setenv("PATH", str(program(tmp_path / "bin", "kestro_sim", said(GOOD)).parent))
    monkeypatch.setattr(sys, "argv", [str(tmp_path / "here/kestro_report")])
    assert live.program_place("kestro_sim") == str(beside)


@pytest.mark.parametrize(("words", "title"), [
    (["kestro_test", "mac_test", "x"], "mac_test x"), (["ssh", "board", "kestro_test", "led_test"], "led_test"),
    (["kestro_sim", "--board", "lpu", "--", "mac_test"], "mac_test"), (["./kestro_test"], "./kestro_test"),
    (["sh", "-c", "kestro_test mac_test"], "sh -c kestro_test mac_test")])
def test_the_words_of_kestro_test_are_found_in_a_command(words: list[str], title: str):
    assert words_of_product(words) == title


def test_a_board_wants_words_of_kestro_test():
    with pytest.raises(InputError, match="--board wants words of kestro_test"):
        command_line_of(["ssh", "board"], "lpu")


@pytest.mark.parametrize("word", ["no_such_program", "/no/such/program", "/tmp", ""])
def test_what_cannot_be_started_is_told_before_reports_are_written_over(tmp_path: Path, word: str):
    report = tmp_path / "result.xml"
    report.write_text("of yesterday")
    ended = kestro_report("run", "--junit", report, "--", word)
    assert (ended.returncode, ended.stdout, report.read_text()) == (2, "", "of yesterday")
    assert ended.stderr.startswith(f"kestro_report: {word}: ") and ended.stderr.count("\n") == 1


def test_a_file_that_is_no_program_is_told(tmp_path: Path):
    file = tmp_path / "no_program"
    file.write_bytes(b"\x7fELF")
    file.chmod(0o755)
    ended = kestro_report("run", "--", file)
    assert (ended.returncode, ended.stderr.count("\n")) == (2, 1)


@pytest.mark.parametrize("words", [["run"], ["run", "--"], ["run", "--timeout", "-1", "--", "true"],
                                   ["run", "--timeout", "x", "--", "true"], ["run", "--no-such", "--", "true"],
                                   ["run", "true"]])
def test_wrong_words_are_told_in_a_line(words: list[str]):
    ended = kestro_report(*words)
    assert (ended.returncode, ended.stderr.count("\n")) == (2, 1)
