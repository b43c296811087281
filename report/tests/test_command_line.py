"""The command line itself: help, version, words that are wrong."""

import re
import subprocess
from pathlib import Path

import pytest

from outputs_for_tests import BAD, CUT, GOOD, KESTRO_REPORT, TREE, kestro_report

from kestro_report import command_line


@pytest.fixture
def outputs(tmp_path: Path) -> Path:
    for name, output in (("good", GOOD), ("bad", BAD), ("cut", CUT)):
        (tmp_path / name).write_text(output)
    return tmp_path


@pytest.mark.parametrize("words", [["--help"], ["-h"], ["read", "--help"], ["run", "--help"]])
def test_help_is_standard_output_and_status_0(words: list[str]):
    ended = kestro_report(*words)
    assert (ended.returncode, ended.stderr, ended.stdout.startswith("usage: kestro_report")) == (0, "", True)
    assert "exit status" in ended.stdout and all(len(line) <= 120 for line in ended.stdout.splitlines())


def test_help_of_the_commands_names_what_both_take():
    options = ("--junit", "--tap", "--jsonl", "--html", "--limits", "--description", "--expect", "--trace", "--ignore",
               "--dut", "--serial", "--name", "--color", "--quiet")
    for command in ("read", "run"):
        said = kestro_report(command, "--help").stdout
        assert [option for option in options if option not in said] == []


def test_the_manual_page_says_which_formats_diff_and_trend_take_too():
    page = (TREE / "docs/kestro_report.1").read_text().replace("\\-", "-")
    formats = page.split(".SS Of read and run: formats\n")[1].split(".SS ")[0]
    too, entries = formats.split(".TP\n", 1)
    for command in ("diff", "trend"):
        said = kestro_report(command, "--help").stdout
        taken = {option for option in re.findall(r"--[a-z]+", entries) if f"  {option} " in said}
        assert f".B {command}\n" in too and set(re.findall(r"--[a-z]+", too)) == taken


def test_the_version_is_told():
    ended = kestro_report("--version")
    assert (ended.returncode, ended.stderr) == (0, "") and ended.stdout.startswith("kestro_report ")
    for command in ("read", "run", "diff", "trend"):
        told = kestro_report(command, "--version")
        assert (told.returncode, told.stdout, told.stderr) == (0, ended.stdout, ""), command


@pytest.mark.parametrize(("names", "status"), [
    (["good"], 0), (["bad"], 1), (["cut"], 3), (["good", "bad"], 1), (["bad", "cut", "good"], 3)])
def test_of_several_outputs_the_worst_counts(outputs: Path, names: list[str], status: int):
    for words in ((), ("read",)):
        assert kestro_report(*words, *(outputs / name for name in names)).returncode == status


@pytest.mark.parametrize("words", [[], ["-"], ["read"], ["read", "-"]])
def test_standard_input_is_read(outputs: Path, words: list[str]):
    with (outputs / "bad").open() as stream:
        ended = kestro_report(*words, stdin=stream)
    assert (ended.returncode, "standard input" in ended.stdout) == (1, True)


@pytest.mark.parametrize(("words", "said"), [
    (["--no-such"], "unrecognized arguments: --no-such"), (["--color", "blue"], "argument --color: invalid choice"),
    (["--ignore", "("], "argument --ignore: '(' is no regular expression"), (["--junit"], "argument --junit: expected"),
    (["--limits", "/no/such"], "/no/such"), (["--description", "/no/such"], "/no/such"),
    (["--expect", "/no/such"], "/no/such"), (["--trace", "/no/such"], "/no/such")])
def test_wrong_words_are_a_line_and_status_2(outputs: Path, words: list[str], said: str):
    ended = kestro_report(outputs / "good", *words)
    assert (ended.returncode, ended.stdout, ended.stderr.count("\n")) == (2, "", 1)
    assert ended.stderr.startswith("kestro_report: ") and said in ended.stderr


def test_a_bad_run_is_no_run_to_expect(outputs: Path):
    ended = kestro_report("--expect", outputs / "bad", outputs / "good")
    assert (ended.returncode, "is not a good one" in ended.stderr) == (2, True)


def test_colours_are_for_terminals_or_whoever_asks(outputs: Path):
    assert "\x1b" not in kestro_report(outputs / "bad").stdout
    assert "\x1b[31mFAILED\x1b[0m" in kestro_report("--color", "always", outputs / "bad").stdout


def test_quiet_says_nothing(outputs: Path):
    ended = kestro_report("--quiet", outputs / "bad")
    assert (ended.returncode, ended.stdout, ended.stderr) == (1, "", "")


def test_a_report_on_standard_output_has_no_summary_in_it(outputs: Path):
    assert kestro_report("--tap", "-", outputs / "good").stdout.startswith("TAP version 14\n")
    assert "passed  " not in kestro_report("--tap", "-", outputs / "good").stdout


def test_several_reports_are_written_at_once(outputs: Path):
    files = {option: outputs / f"report{option}" for option in ("--junit", "--tap", "--jsonl", "--html")}
    words = [word for option, file in files.items() for word in (option, file)]
    ended = kestro_report(*words, outputs / "bad")
    assert (ended.returncode, "FAILED" in ended.stdout) == (1, True)
    assert all("voltage" in file.read_text() for file in files.values())


def test_whose_run_it_is_stands_in_the_reports(outputs: Path):
    ended = kestro_report("--dut", "rack 3", "--serial", "17", "--junit", "-", outputs / "good")
    assert 'hostname="rack 3"' in ended.stdout and '<property name="serial" value="17"/>' in ended.stdout


def test_the_starter_works_from_anywhere_and_through_a_link(outputs: Path):
    link = outputs / "link"
    link.symlink_to(KESTRO_REPORT)
    assert subprocess.run([link, "--quiet", "good"], cwd=outputs, check=False).returncode == 0


@pytest.mark.parametrize("stamp", ["[99999999999999.123]", f"[{'9' * 400}.123]", "[253402300800.000]",
                                   "9999-12-31T23:59:59-23:59", "0001-01-01T00:00:00+23:59", "2026-02-31T10:00:00Z"])
@pytest.mark.parametrize("form", ["--junit", "--tap", "--jsonl", "--html"])
def test_a_stamp_that_no_calendar_has_breaks_no_report(tmp_path: Path, form: str, stamp: str):
    log = tmp_path / "log.txt"
    log.write_text("".join(f"{stamp} {line}\n" for line in GOOD.splitlines()), encoding="utf-8")
    ran = kestro_report(form, tmp_path / "report", log)
    assert (ran.returncode, ran.stderr) == (0, "")


def starter_with(folder: Path, package: str) -> subprocess.CompletedProcess:
    """Runs the starter beside a package of one module."""
    for name in ("bin", "kestro_report"):
        (folder / name).mkdir()
    (folder / "bin/kestro_report").write_bytes(KESTRO_REPORT.read_bytes())
    (folder / "kestro_report/command_line.py").write_text(package, encoding="utf-8")
    return subprocess.run(["/usr/bin/python3", "-B", folder / "bin/kestro_report"], capture_output=True, text=True,
                          check=False)


def test_a_library_that_is_missing_is_no_failed_check(tmp_path: Path):
    ran = starter_with(tmp_path, "import nothing_of_this_name\n")
    assert ran.returncode == 2 and ran.stderr.count("\n") == 1
    assert "no module 'nothing_of_this_name'; Debian has what is needed in python3-jinja2" in ran.stderr


def test_a_fault_of_the_tool_is_no_failed_check(monkeypatch, capsys):
    def broken(_: list[str]) -> int:
        raise ZeroDivisionError("a fault")
    monkeypatch.setattr(command_line, "command_read", broken)
    assert command_line.main(["read"]) == 2
    assert capsys.readouterr().err.endswith("this is a fault of the tool and no verdict\n")
