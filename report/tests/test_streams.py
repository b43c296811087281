"""What lines, consoles and files do to an output on its way: nothing of it may make a bad run look good."""

import os
import random
import re
import subprocess
import threading
from pathlib import Path

import pytest

from kestro_report import grammar
from kestro_report.reader import LONGEST_KEPT
from kestro_report.records import KEPT
from kestro_report.settings import Settings
from kestro_report.texts import CHUNK, LONGEST, text_lines
from kestro_report.verdict import exit_status
from outputs_for_tests import (BAD, BANNER, CUT, END, FAILED_LINE, GOOD, KESTRO_REPORT, PASSED_LINE, in_pieces,
                               kestro_report, reading)

WHOLE_GIB = os.environ.get("KESTRO_TESTS_FULL") == "1"
MIB = 1 << 20


@pytest.fixture(scope="module")
def rules() -> grammar.Grammar:
    return grammar.load()


@pytest.fixture(scope="module")
def onekey(rules) -> str:
    """A whole board self-test of a board that is neither master nor slave: a banner and a check for each part."""
    order = rules.orders["board_onekey_test"]
    return "".join(f"\n##### {name} test begin \n{PASSED_LINE}" for name in order.sections) + END


def status(rules, data: bytes | str, **how) -> int:
    return exit_status(reading(rules, data, **how)[0].outcomes)


# --- cut --------------------------------------------------------------------------------------------------------------


@pytest.mark.parametrize("output", [GOOD, BAD])
def test_an_output_that_is_cut_anywhere_is_not_complete(rules, output: str):
    data = output.encode()
    whole = data.index(b"cmd_exec used millisecond:")
    for length in range(whole + len(b"cmd_exec used millisecond:")):
        assert status(rules, data[:length]) == 3, data[:length]


def test_an_output_that_is_cut_in_front_is_not_taken_for_whole(rules, onekey: str):
    """Where a banner is left of a test that has an order; what no banner precedes may be a command of its own."""
    for at in range(1, onekey.index("##### msc"), 7):
        if "board mng test begin" not in onekey[at:]:
            assert status(rules, onekey[at:]) == 3, onekey[at:at + 60]


def test_a_whole_self_test_passes(rules, onekey: str):
    assert status(rules, onekey) == 0


def test_a_self_test_that_is_cut_anywhere_is_not_complete(rules, onekey: str):
    for length in range(0, onekey.index("cmd_exec used millisecond:"), 5):
        assert status(rules, onekey[:length]) == 3, onekey[:length][-60:]


def test_a_part_that_is_lost_is_missed(rules, onekey: str):
    parts = onekey.split("\n#####")
    for lost in range(1, len(parts) - 1):
        assert status(rules, "\n#####".join(parts[:lost] + parts[lost + 1:])) == 3, parts[lost]


# --- two runs in one log ----------------------------------------------------------------------------------------------


def test_two_runs_that_are_mixed_line_by_line_are_not_complete(rules, onekey: str):
    lines = onekey.splitlines(keepends=True)
    for behind in (1, 5, 30):
        mixed = []
        for at in range(len(lines) + behind):
            mixed += lines[at:at + 1] + (lines[at - behind:at - behind + 1] if at >= behind else [])
        assert status(rules, "".join(mixed)) == 3, behind


def test_a_run_that_begins_before_the_other_has_ended_cuts_it(rules, onekey: str):
    half = onekey[:onekey.index("\n##### digital")]
    reader, recorder = reading(rules, half + onekey)
    assert (exit_status(reader.outcomes), len(recorder.runs)) == (3, 2)
    assert "begins anew" in recorder.runs[0].problems[0] and not recorder.runs[1].problems


def test_runs_one_behind_the_other_are_runs_of_their_own(rules):
    _, recorder = reading(rules, GOOD + BAD + GOOD)
    assert [run.outcome for run in recorder.runs] == ["passed", "failed", "passed"]


# --- line ends, bytes, colours ----------------------------------------------------------------------------------------


@pytest.mark.parametrize("end", ["\n", "\r\n", "\r\r\n", "\r\r\r\n", "\r", "\n\n", "\r\n\n"])
@pytest.mark.parametrize("size", [1, 2, 3, 7, 1 << 16])
def test_line_ends_of_every_kind_say_the_same(rules, end: str, size: int):
    _, plain = reading(rules, BAD)
    _, recorder = reading(rules, BAD.replace("\n", end), size)
    assert recorder.said() == plain.said()
    assert recorder.runs[0].outcome == "failed"


def test_a_line_end_between_two_chunks_is_one(rules):
    filler = "x" * (CHUNK - 1)
    lines = list(text_lines(in_pieces(f"{filler}\r\nnext".encode(), CHUNK)))
    assert [(line.number, len(line.text)) for line in lines] == [(1, CHUNK - 1), (2, 4)]


@pytest.mark.parametrize("noise", [b"\0", b"\x1b[0m", b"\x1b[1;31m", b"\x1b[K", b"\x1b[?25h", b"\x1bM"])
def test_noise_of_terminals_is_not_read(rules, noise: bytes):
    data = noise.join(bytes([byte]) for byte in BAD.encode())
    assert reading(rules, data)[1].said() == reading(rules, BAD)[1].said()


def test_bytes_that_are_no_text_are_shown_and_mistaken_for_nothing(rules):
    spoiled = BAD.encode().replace(b"Error: voltage", b"Error: \xffvoltage")
    reader, recorder = reading(rules, spoiled)
    assert exit_status(reader.outcomes) == 3
    assert recorder.runs[0].unknown_lines[0].text == "Error: \\xffvoltage get fail. voltage_id 3 ret 0x8111010f"


@pytest.mark.parametrize("option", ["--junit", "--tap", "--jsonl", "--quiet"])
def test_no_byte_at_all_breaks_a_report(tmp_path: Path, option: str):
    """In lines, in values that stand in names, and in the name of the file."""
    file = tmp_path / os.fsdecode(b"out\xff\n<&\x01")
    text = b"".join(bytes([byte]) * 3 for byte in range(256))
    file.write_bytes(GOOD.encode() + text + b"\n*********   " + text.translate(None, b"\r\n\0") + b" test begin:  ********\n"
                     + PASSED_LINE.encode() + END.encode())
    for encoding in ("utf-8", "ascii", "iso-8859-1"):
        ended = kestro_report(*([option] if option == "--quiet" else [option, "-"]), os.fsdecode(file), text=False,
                              env={**os.environ, "PYTHONIOENCODING": encoding})
        assert (ended.returncode in (0, 3), ended.stderr) == (True, b"")


def test_random_bytes_are_nothing_that_was_checked(rules):
    assert status(rules, random.Random(13).randbytes(MIB)) == 3


# --- what a console puts around ---------------------------------------------------------------------------------------


@pytest.mark.parametrize(("stamp", "first"), [
    ("[2031-05-06T07:08:{n:02d}.123456] ", 1935817680.123456), ("2031-05-06 07:08:{n:02d},250 ", 1935817680.25),
    ("2031-05-06T07:08:{n:02d}Z | ", 1935817680), ("[2031-05-06 09:08:{n:02d}+02:00] ", 1935817680),
    ("[   {n}.000250] ", 0.00025), ("[{n:05d}.125] ", 0.125)])
def test_time_stamps_are_taken_off_and_taken_over(rules, stamp: str, first: float):
    lines = [line for line in BAD.split("\n") if line]
    stamped = "".join(stamp.format(n=number) + line + "\n" for number, line in enumerate(lines))
    _, recorder = reading(rules, stamped)
    assert recorder.said() == reading(rules, BAD)[1].said()
    assert recorder.runs[0].began == pytest.approx(first, abs=1e-6)
    assert recorder.runs[0].ended - recorder.runs[0].began == pytest.approx(len(lines) - 1)


def test_a_stamp_that_is_no_moment_is_still_taken_off(rules):
    _, recorder = reading(rules, "".join(f"[2031-99-99T07:08:09] {line}\n" for line in GOOD.split("\n") if line))
    assert (recorder.runs[0].outcome, recorder.runs[0].began) == ("passed", None)


def test_a_console_log_holds_several_commands(rules):
    log = ("Booting: voltage ok\n[    0.000000] Linux\nboard login: root\n"
           f"root@board:~# kestro_test voltage_test a b\n{GOOD}root@board:~# ls\nno such file: error\n"
           f"root@board:~# /bin/kestro_test voltage_test  c\n{BAD}$ kestro_test x_test\n$ kestro_test y_test\n{GOOD}")
    _, recorder = reading(rules, log)
    assert [(run.command, run.outcome) for run in recorder.runs] == [
        ("voltage_test a b", "passed"), ("voltage_test c", "failed"), ("x_test", "incomplete"), ("y_test", "passed")]


def test_a_board_that_boots_in_the_middle_has_cut_the_run(rules, onekey: str):
    half = onekey[:onekey.index("\n##### digital")]
    boot = "U-Boot 2030.01\nbootrom: memory test error: none\n[    0.000000] Linux\nboard login: root\n"
    assert status(rules, half + boot) == 3
    assert status(rules, half + boot + "# kestro_test board_test board_onekey_test\n" + onekey) == 3


def test_messages_of_the_kernel_in_between_are_left_out_when_asked(rules):
    log = BANNER + "[   12.5] kernel: mmc error\n" + PASSED_LINE + END
    assert status(rules, log) == 3
    assert status(rules, log, settings=Settings(ignore=(re.compile("kernel:"),))) == 0


def test_messages_outside_of_a_run_do_not_matter(rules):
    noise = "watchdog: fail\nError: something of the boot loader\n"
    assert status(rules, noise + GOOD + noise) == 0


# --- size -------------------------------------------------------------------------------------------------------------


def peak_of(make, *words: str) -> tuple[int, int]:
    """Exit status and peak memory in MiB of a kestro_report that reads what the generator gives."""
    process = subprocess.Popen([KESTRO_REPORT, "--quiet", *words], stdin=subprocess.PIPE)
    for piece in make():
        process.stdin.write(piece)
    # While it waits for more: the use of resources that is told at the end counts in what the parent had.
    said = Path(f"/proc/{process.pid}/status").read_text()
    process.stdin.close()
    return process.wait(), int(re.search(r"VmHWM:\s+(\d+) kB", said)[1]) // 1024


@pytest.fixture(scope="module")
def usual_peak() -> int:
    return peak_of(lambda: [GOOD.encode() * 1000])[1]


def test_a_line_without_an_end_takes_no_memory(usual_peak: int):
    ended, peak = peak_of(lambda: [GOOD.encode(), *[b"x" * MIB] * 100, b"\n", GOOD.encode()])
    assert ended == 0 and peak < usual_peak + 16


def test_a_long_line_within_a_run_is_cut_and_unknown(rules):
    _, recorder = reading(rules, BANNER + PASSED_LINE + "x" * (3 * LONGEST) + "\n" + END)
    assert [len(line.text) for line in recorder.lines if line.kind == "unknown"] == [LONGEST]
    assert [line.text for line in recorder.runs[0].unknown_lines] == ["x" * LONGEST_KEPT + " ..."]


def test_long_lines_take_no_memory_either(usual_peak: int):
    lines = (f"{number} {'x' * 60_000}\n".encode() for number in range(900))
    ended, peak = peak_of(lambda: (BANNER.encode(), *lines, END.encode()))
    assert ended == 3 and peak < usual_peak + 32


def test_a_long_line_keeps_the_number_of_the_lines_behind_it(rules):
    assert [line.number for line in text_lines(in_pieces(b"y" * (5 * CHUNK) + b"\nz\n", CHUNK))] == [1, 2]


def mixed_runs(size: int):
    """Many runs, most of them with failures; checks with names of their own; long unknown lines."""
    made, number = 0, 0
    while made < size:
        piece = []
        for _ in range(500):
            number += 1
            piece.append(f"{BANNER}Success: voltage {number} get and set value pass. original value {number}\n"
                         f"Error: voltage get fail. voltage_id {number} ret 0x{number:x}\n"
                         f"what nobody knows {number} {'-' * 300}\n{END}")
        data = "".join(piece).encode()
        made += len(data)
        yield data


def one_run(size: int):
    """A run that does not end for a long time and fails all the time."""
    made, number = 0, 0
    yield BANNER.encode()
    while made < size:
        data = "".join(f"Error: voltage get fail. voltage_id {each} ret 0x1\nunknown {each} {'-' * 200}\n"
                       for each in range(number, number + 1000)).encode()
        number, made = number + 1000, made + len(data)
        yield data


def same_run(size: int):
    """The usual long log: one test over and over."""
    data = (BANNER + (PASSED_LINE * 20 + FAILED_LINE) * 10 + END) * 100
    for _ in range(-(-size // len(data))):
        yield data.encode()


@pytest.mark.parametrize(("make", "size", "ended"), [(same_run, 24 * MIB, 1), (mixed_runs, 4 * MIB, 1),
                                                     (one_run, 4 * MIB, 3)])
def test_memory_does_not_grow_with_the_input(usual_peak: int, make, size: int, ended: int):
    """Neither with its runs nor with its failures, nor with lines and checks that are all different."""
    status_of_it, peak = peak_of(lambda: make(1024 * MIB if WHOLE_GIB else size))
    assert status_of_it == ended and peak < usual_peak + 12


def test_of_a_run_that_fails_for_ever_the_first_failures_are_kept_and_all_are_counted(rules):
    _, recorder = reading(rules, BANNER + FAILED_LINE * (KEPT + 10) + END)
    run = recorder.runs[0]
    assert (len(run.failures), run.counts["failed"]) == (KEPT, KEPT + 10)


# --- places that cannot be read or written ----------------------------------------------------------------------------


@pytest.fixture
def good(tmp_path: Path) -> Path:
    file = tmp_path / "good.txt"
    file.write_text(GOOD)
    return file


@pytest.mark.parametrize("name", ["none.txt", ".", "good.txt/below"])
def test_a_file_that_cannot_be_read_is_told_before_a_report_is_written_over(tmp_path: Path, good: Path, name: str):
    report = tmp_path / "result.xml"
    report.write_text("of yesterday")
    ended = kestro_report("--junit", report, good, tmp_path / name)
    assert (ended.returncode, ended.stdout, report.read_text()) == (2, "", "of yesterday")
    assert ended.stderr.startswith(f"kestro_report: {tmp_path / name}: ") and ended.stderr.count("\n") == 1


def test_a_pipe_by_name_is_read_once_and_whole(tmp_path: Path):
    pipe = tmp_path / "pipe"
    os.mkfifo(pipe)
    writer = threading.Thread(target=lambda: pipe.write_text(BAD))
    writer.start()
    ended = kestro_report(pipe)
    writer.join()
    assert (ended.returncode, "1 of 2 checks failed" in ended.stdout) == (1, True)


def test_a_process_behind_a_name_is_read_whole(good: Path):
    ended = subprocess.run(["bash", "-c", f"'{KESTRO_REPORT}' <(cat '{good}')"], capture_output=True, check=False)
    assert (ended.returncode, b"1 check passed" in ended.stdout) == (0, True)


@pytest.mark.parametrize(("redirection", "words", "said"), [
    (">/dev/full", "", "standard output: No space left on device"),
    (">/dev/full", "--tap -", "standard output: No space left on device"),
    ("", "--junit /dev/full", "/dev/full: No space left on device"),
    (">&-", "", "standard output is closed; give the report a file, or --quiet"),
    (">&-", "--jsonl -", "standard output is closed; give the report a file, or --quiet"),
    ("", "--junit /no/such/place", "/no/such/place: No such file or directory; a file that can be written is wanted"),
    ("", "--junit - --tap -", "two formats cannot both go to standard output; give one of them a file")])
def test_a_report_that_cannot_be_written_is_status_2_and_a_line(good: Path, redirection: str, words: str, said: str):
    ended = subprocess.run(["sh", "-c", f"'{KESTRO_REPORT}' {words} '{good}' {redirection}"], capture_output=True,
                           text=True, check=False)
    assert (ended.returncode, ended.stderr) == (2, f"kestro_report: {said}\n")


def test_a_closed_standard_output_is_no_matter_where_nothing_goes_there(good: Path):
    ended = subprocess.run(["sh", "-c", f"'{KESTRO_REPORT}' --quiet '{good}' >&-"], capture_output=True, check=False)
    assert (ended.returncode, ended.stderr) == (0, b"")


def test_a_closed_standard_input_is_told():
    ended = subprocess.run(["sh", "-c", f"'{KESTRO_REPORT}' <&-"], capture_output=True, text=True, check=False)
    assert (ended.returncode, ended.stderr.startswith("kestro_report: standard input is closed")) == (2, True)


def test_a_closed_standard_error_sends_nothing_elsewhere():
    ended = subprocess.run(["sh", "-c", f"'{KESTRO_REPORT}' /no/such/file 2>&-"], capture_output=True, check=False)
    assert (ended.returncode, ended.stdout) == (2, b"")


def test_a_reader_that_has_seen_enough_is_no_fault_to_speak_of(tmp_path: Path):
    file = tmp_path / "long.txt"
    file.write_text(BANNER + PASSED_LINE * 20_000 + END)
    ended = subprocess.run(["bash", "-c", f"'{KESTRO_REPORT}' --tap - '{file}' | head -1; exit ${{PIPESTATUS[0]}}"],
                           capture_output=True, text=True, check=False)
    assert (ended.returncode, ended.stdout, ended.stderr) == (2, "TAP version 14\n", "")


@pytest.mark.parametrize("option", ["--junit", "--limits", "--expect"])
def test_an_input_is_not_written_over(good: Path, option: str):
    ended = kestro_report(option, good, "--tap", good, good)
    assert (ended.returncode, good.read_text()) == (2, GOOD)


def test_an_output_that_grows_is_read_to_where_it_is(good: Path, rules):
    """What is cut is told, as always; a file that is written while it is read is no special case."""
    with good.open("a") as stream:
        stream.write(CUT)
    assert kestro_report(good).returncode == 3
