"""Runs of the simulated boards, and what kestro_report says of them."""

import io
import json
import subprocess
import sys
import xml.etree.ElementTree
from contextlib import redirect_stderr, redirect_stdout
from dataclasses import dataclass, field
from functools import cache
from pathlib import Path
from unittest import mock

SOURCE, BUILD = (Path(word).resolve() for word in sys.argv[1:3])
sys.path.insert(0, str(SOURCE / "report"))

from kestro_report import grammar  # noqa: E402
from kestro_report.command_line import main  # noqa: E402

SELFTEST = ("board_test", "board_onekey_test")
LOAD = grammar.load


@cache
def rules() -> grammar.Grammar:
    """Read once for all verdicts of a test program."""
    return LOAD()


def simulator(board: str | Path, state: Path, *options: str) -> list[str]:
    return [str(BUILD / "kestro_sim"), "--board", str(board), "--state", str(state), "--reset", "--clock", "virtual",
            *options, "--"]


def run_on(board: str | Path, scratch: Path, words: tuple[str, ...], *options: str) -> tuple[bytes, int]:
    """What kestro_test prints there, and how it ends."""
    ended = subprocess.run([*simulator(board, scratch / "state", *options), *words], stdin=subprocess.DEVNULL,
                           stdout=subprocess.PIPE, timeout=120, check=False)
    return ended.stdout, ended.returncode


@dataclass
class Bad:
    """A check that failed or is missing."""
    part: str
    name: str
    kind: str
    text: str


@dataclass
class Verdict:
    status: int
    bad: list[Bad]
    problems: list[str]
    unknown: list[str]  # lines
    passed: list[tuple[str, str]] = field(default_factory=list)  # name and line of each
    said: str = ""  # by the program, for people

    def names(self, kind: str) -> set[str]:
        return {check.name for check in self.bad if check.kind == kind}


def call(*words: object) -> tuple[int, str]:
    """The program in this process; its exit status and what it prints."""
    out = io.StringIO()
    with redirect_stdout(out), redirect_stderr(out), mock.patch.object(grammar, "load", rules):
        return main([str(word) for word in words]), out.getvalue()


def read_output(output: Path, *options: object) -> Verdict:
    return verdict_of(output.parent, *options, output)


def verdict_of(scratch: Path, *words: object) -> Verdict:
    junit, lines = scratch / "verdict.xml", scratch / "verdict.jsonl"
    words = words if words[0] == "run" else ("read", *words)
    status, said = call(words[0], "--dut", "board", "--junit", junit, "--jsonl", lines, *words[1:])
    verdict = Verdict(status, [], [], [], said=said)
    for suite in xml.etree.ElementTree.parse(junit).getroot():
        verdict.unknown += (suite.findtext("system-err") or "").splitlines()
        for case in suite.findall("testcase"):
            take_case(case, verdict)
    for record in lines.read_text(encoding="utf-8").splitlines():
        diagnosis = json.loads(record).get("testStepArtifact", {}).get("diagnosis")
        if diagnosis and diagnosis["type"] == "PASS":
            verdict.passed.append((diagnosis["verdict"], diagnosis["message"]))
    return verdict


def take_case(case: xml.etree.ElementTree.Element, verdict: Verdict) -> None:
    failure, error = case.find("failure"), case.find("error")
    if failure is not None:
        part = case.get("classname").removeprefix("board").removeprefix(".")
        verdict.bad.append(Bad(part, case.get("name"), failure.get("type"), (failure.text or "").strip()))
    if error is not None:
        verdict.problems += (error.text or "").splitlines()
