"""What the tests of completion share: a shell's surroundings, and what the sources have to offer."""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from shell import Offer, ask

SOURCE, BUILD = (Path(word).resolve() for word in sys.argv[1:3])
COMPLETIONS = SOURCE / "completion"
REPORT = SOURCE / "report/bin/kestro_report"


def row_names(file: Path) -> list[str]:
    return re.findall(r'command_row\{\s*"([^"]+)"', file.read_text(encoding="utf-8"))


def modules() -> list[str]:
    return row_names(SOURCE / "src/shell/root_commands.cpp")


def sub_commands(module: str) -> list[str]:
    place = SOURCE / "src/modules"
    files = sorted((place / module).glob("*.cpp")) or [place / f"{module}.cpp"]
    return [name for file in files for name in row_names(file)]


class Completion(unittest.TestCase):
    maxDiff = None

    def setUp(self) -> None:
        scratch = tempfile.TemporaryDirectory(prefix="completion.")
        self.addCleanup(scratch.cleanup)
        root = Path(scratch.name)
        self.home, self.temporary, self.tools, self.here = (root / name for name in ("home", "tmp", "tools", "here"))
        for folder in (self.home, self.temporary, self.tools, self.here):
            folder.mkdir()
        self.environment = {"PATH": f"{self.tools}:{BUILD}:{os.environ['PATH']}", "HOME": str(self.home),
                            "TMPDIR": str(self.temporary), "LC_ALL": "C.UTF-8", "TZ": "UTC"}

    def ask(self, *lines: str, settings: str = "", **variables: str) -> list[Offer]:
        return ask(COMPLETIONS, {**self.environment, **variables}, list(lines), settings, self.here)

    def words(self, line: str, **variables: str) -> list[str]:
        return self.ask(line, **variables)[0].words

    def assert_offers(self, expected: dict[str, list[str]], **variables: str) -> None:
        """Asked of one shell, as a new one takes longer than what it is asked."""
        offers = self.ask(*expected, **variables)
        self.assertEqual({line: offer.words for line, offer in zip(expected, offers, strict=True)}, expected)

    def on_a_board(self) -> dict[str, str]:
        """The program finds driver libraries, and there is no simulator."""
        shutil.copy(BUILD / "kestro_test", self.tools)
        return {"PATH": f"{self.tools}:{os.environ['PATH']}", "LD_LIBRARY_PATH": str(BUILD / "noop")}

    def tool(self, name: str, script: str) -> Path:
        file = self.tools / name
        file.write_text(f"#!/bin/bash\n{script}\n", encoding="utf-8")
        file.chmod(0o755)
        return file

    def sim(self, *words: str) -> subprocess.CompletedProcess:
        return subprocess.run([BUILD / "kestro_sim", "--state", self.home / "state", "--clock", "virtual", *words],
                              capture_output=True, text=True, timeout=60, check=False, stdin=subprocess.DEVNULL)
