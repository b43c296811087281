"""Runs the commands of README, the documents and the manual pages in a copy of the sources, beside the build.

usage: commands_test.py SOURCE_DIR BUILD_DIR
"""

import json
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(sys.argv[1]) / "sim"))
import sick_boards
from document import Command, Document, read_document, read_markdown

HERE = Path(__file__).resolve().parent
SOURCE, BUILD = (Path(word) for word in sys.argv[1:3])
# The examples of kestro_report read outputs that only the reader of its page has.
DOCUMENTS = ["README.md", *sorted(str(path.relative_to(SOURCE)) for path in (SOURCE / "docs").glob("*.md")),
             *sorted(str(path.relative_to(SOURCE)) for path in (SOURCE / "docs").glob("*.[17]")
                      if path.stem != "kestro_report")]


def special_commands() -> list[tuple[str, re.Pattern]]:
    lines = (HERE / "special_commands.txt").read_text(encoding="utf-8").split("\n")
    rows = [[cell.strip() for cell in re.split(r"\s\|\s", line)] for line in lines if line and line[0] != "#"]
    assert all(len(row) == 3 and re.fullmatch(r"not run|status \d+", row[0]) and row[2] for row in rows), rows
    return [(how, re.compile(command)) for how, command, _ in rows]


class Copy:
    """The sources without their history; build/ leads to the programs. What commands write stays in here."""

    def __init__(self, root: str) -> None:
        self.tree = Path(root) / "tree"
        # Shell commands are found by name as on a board; what would build finds its work done.
        tools = Path(root) / "tools"
        shutil.copytree(SOURCE, self.tree, symlinks=True,
                        ignore=shutil.ignore_patterns(".git", "build", "build-*", "tests", "__pycache__"))
        (self.tree / "build").symlink_to(BUILD)
        tools.mkdir()
        for name, script in {"cmake": "exit 0", "kestro_test": f'exec "{BUILD}/kestro_sim" -- "$@"',
                             "kestro_make_image": f'exec "{self.tree}/scripts/make_image" "$@"',
                             "dpkg-query": "echo all installed"}.items():
            (tools / name).write_text(f"#!/bin/sh\n{script}\n", encoding="utf-8")
            (tools / name).chmod(0o755)
        shutil.copy(BUILD / "probe/libkestro_probe.so", root)
        self.root = root
        self.environment = {"PATH": f"{tools}:{BUILD}:{os.environ['PATH']}", "HOME": root, "TZ": "UTC", "LC_ALL": "C"}

    def run(self, text: str) -> subprocess.CompletedProcess:
        environment = dict(self.environment)
        if "LD_PRELOAD=" in text:
            # As on a board: the program itself, on driver libraries that answer everything with 0.
            text = text.replace("/tmp/", self.root + "/").replace(" kestro_test ", f" {BUILD}/kestro_test ")
            environment["LD_LIBRARY_PATH"] = str(BUILD / "noop")
        text = text.replace("LD_LIBRARY_PATH=/lib/drivers ", f"LD_LIBRARY_PATH={BUILD}/noop ")
        return subprocess.run(["bash", "-c", text], cwd=self.tree, env=environment, stdin=subprocess.DEVNULL,
                              capture_output=True, timeout=120, check=False)


def without_line_ends(text: str) -> list[str]:
    lines = [line.rstrip() for line in re.split(r"\r\n|\n|\r", text)]
    while lines and not lines[-1]:
        lines.pop()
    return lines


def shows(document: list[str], printed: list[str]) -> bool:
    """A line '...' stands for any lines."""
    pattern = "".join(r"(?:.*\n)*" if line.strip() == "..." else re.escape(line.rstrip()) + r"\n" for line in document)
    return re.fullmatch(pattern, "".join(line + "\n" for line in printed)) is not None


def part_of(program: str, words: list[str]) -> list[str]:
    """The command of a tool that has several, each with a help of its own."""
    if not program.endswith("kestro_report"):
        return []
    following = words[words.index(program) + 1]
    return [following] if following in ("run", "diff", "trend") else ["read"]


def option_faults(command: Command, tree: Path) -> list[str]:
    """Options of ours that the program's help does not name. Words behind -- are another program's."""
    words = [word for word in re.split(r"[\s\[\]|]+", command.text.split(" -- ")[0]) if word]
    program = next(word for word in words if "=" not in word)
    found = tree / program
    if program.startswith("kestro_") or program.startswith("build/kestro_"):
        found = BUILD / program.removeprefix("build/")
        if program == "kestro_make_image":
            found = tree / "scripts/make_image"
    elif "/" not in program:
        return []
    if not os.access(found, os.X_OK):
        return [f"there is no program {program}"]
    options = [word.split("=")[0] for word in words if word.startswith("--") and word != "--"]
    if not options or program.endswith("kestro_test"):
        return []
    text = subprocess.run([found, *part_of(program, words), "--help"], capture_output=True, text=True,
                          check=False).stdout
    return [f"{program} --help does not name {option}" for option in options
            if not re.search(rf"(?<![\w-]){re.escape(option)}(?![\w-])", text)]


class Documents(unittest.TestCase):
    maxDiff = None

    def setUp(self) -> None:
        self.scratch = tempfile.TemporaryDirectory(prefix="docs.")
        self.addCleanup(self.scratch.cleanup)
        self.documents = [read_document(SOURCE / name, name) for name in DOCUMENTS]

    def faults_of(self, document: Document) -> list[str]:
        faults = list(document.faults)
        root = Path(self.scratch.name) / document.name.replace("/", "_")
        root.mkdir()
        copy = Copy(str(root))
        for name, content in document.files.items():
            (copy.tree / name).write_text(content, encoding="utf-8")
        for command in document.commands:
            faults += [f"{document.name}:{command.line}: {command.text}\n  {fault}"
                       for fault in self.faults_of_command(command, copy)]
        return faults

    def faults_of_command(self, command: Command, copy: Copy) -> list[str]:
        faults = option_faults(command, copy.tree)
        how = next((how for how, pattern in special_commands() if pattern.fullmatch(command.text)), "status 0")
        if faults or command.is_synopsis or how == "not run":
            return faults
        run = copy.run(command.text)
        printed = run.stdout.decode("utf-8", "replace")
        if run.returncode != int(how.split()[1]):
            faults.append(f"ends with {run.returncode}, not with {how.split()[1]}: "
                          f"{run.stderr.decode('utf-8', 'replace') or printed}")
        if command.output is not None:
            shown = without_line_ends("\n".join(command.output))
            lines = without_line_ends(printed + run.stderr.decode("utf-8", "replace"))
            if not shows(shown, lines):
                faults.append("prints something else than shown:\n" + "\n".join("    " + line for line in lines))
        return faults

    def test_every_command_runs_and_prints_what_is_shown(self) -> None:
        for document in self.documents:
            with self.subTest(document.name):
                faults = self.faults_of(document)
                self.assertFalse(faults, "\n" + "\n".join(faults))

    def test_special_commands_are_used(self) -> None:
        texts = [command.text for document in self.documents for command in document.commands]
        for _, pattern in special_commands():
            self.assertTrue(any(pattern.fullmatch(text) for text in texts), f"no document has {pattern.pattern}")

    def test_links_lead_to_files(self) -> None:
        for document in self.documents:
            for line, target in document.links:
                place = (SOURCE / document.name).parent / target
                self.assertTrue(":" in target or place.exists(), f"{document.name}:{line}: no file {target}")

    def test_build_commands_name_presets_and_targets(self) -> None:
        presets = json.loads((SOURCE / "CMakePresets.json").read_text(encoding="utf-8"))
        names = {preset["name"] for preset in presets["configurePresets"]}
        listing = subprocess.run(["cmake", "--build", BUILD, "--target", "help"], capture_output=True, text=True,
                                 check=True).stdout
        targets = set(re.findall(r"[\w.-]+", listing))
        for command in (command for document in self.documents for command in document.commands):
            self.assertLessEqual(set(re.findall(r"--preset (\w+)", command.text)), names, command)
            for words in re.findall(r"--target ((?:[\w.-]+ ?)+)", command.text):
                self.assertLessEqual(set(words.split()), targets, command)

    def test_files_copied_to_a_board_are_built(self) -> None:
        for command in (command for document in self.documents for command in document.commands):
            for word in shlex.split(command.text) if command.text.startswith("scp ") else []:
                if word.startswith("build-armhf/"):
                    self.assertTrue((BUILD / word.removeprefix("build-armhf/")).exists(), command)


class Reader(unittest.TestCase):
    """The test of the test: what it takes from a document, and that wrong ones are found out."""

    def test_blocks_are_told_apart(self) -> None:
        document = read_markdown("Text `scripts/run --board NAME`.\n\n    $ echo a\n    a\n\n`rules`:\n\n```\nx = 1\n"
                                 "```\n\n```\nkestro_sim a \\\n  b   # c\n```\n\n```cpp\ncat x\n```\n", "d")
        self.assertEqual([(c.text, c.output, c.is_synopsis) for c in document.commands],
                         [("scripts/run --board NAME", None, True), ("echo a", ["a"], False),
                          ("kestro_sim a b", None, False)])
        self.assertEqual(document.files, {"rules": "x = 1\n"})

    def test_blocks_within_lists_are_blocks(self) -> None:
        document = read_markdown("- A list:\n\n  ```cpp\n  f([&](board &b) {});\n  ```\n\n  ```\n  cat a\n  ```\n\n"
                                 "  Text with `[&](x)` and [a link](y.md).\n", "d")
        self.assertEqual([c.text for c in document.commands], ["cat a"])
        self.assertEqual([target for _, target in document.links], ["y.md"])

    def test_output_among_commands_is_a_fault(self) -> None:
        document = read_markdown("```\ncat a\nwhat it prints\n```\n", "d")
        self.assertIn("d:3:", document.faults[0])

    def test_shown_output_is_compared(self) -> None:
        self.assertTrue(shows(["a", "...", "d"], ["a", "b", "c", "d"]))
        self.assertFalse(shows(["a", "..."], ["b"]))
        self.assertFalse(shows(["a"], ["a", "b"]))

    def test_wrong_commands_are_found(self) -> None:
        with tempfile.TemporaryDirectory(prefix="docs.") as root:
            copy = Copy(root)
            for text, output in (("scripts/run --bord lpu", None), ("scripts/ran", None), ("cat no_such_file", None),
                                 ("kestro_sim --board no_such_board mac_test", None),
                                 ("kestro_test mac_test drv_mac_get_num 0xff000001 1", None), ("echo a", ["b"])):
                command = Command("d", 1, text, output)
                self.assertTrue(Documents().faults_of_command(command, copy), text)


class SickBoards(unittest.TestCase):
    def test_are_listed_as_they_are(self) -> None:
        text = (SOURCE / "docs/simulator.md").read_text(encoding="utf-8")
        self.assertEqual(sick_boards.with_list(text), text, "scripts/document writes the list anew")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
