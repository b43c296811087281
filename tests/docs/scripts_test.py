"""What every script keeps to: help, a clear line for what it cannot do, from any directory, without git, with blanks in
the path. What takes minutes is not done: building finds its work done, the linter's tools answer that all is well.

usage: scripts_test.py SOURCE_DIR BUILD_DIR
"""

import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
import zlib
from pathlib import Path

SOURCE, BUILD = (Path(word) for word in sys.argv[1:3])
SCRIPTS = sorted(str(path.relative_to(SOURCE)) for folder in ("scripts", "bench", ".ci")
                 for path in (SOURCE / folder).iterdir() if path.is_file() and os.access(path, os.X_OK))
# They hand on words that they do not know: to the launcher, and to ctest.
HAND_ON = ("scripts/run", "scripts/test")
NOBODY = 65534


class Scripts(unittest.TestCase):
    def setUp(self) -> None:
        scratch = tempfile.TemporaryDirectory(prefix="docs.")
        self.addCleanup(scratch.cleanup)
        root = Path(scratch.name)
        self.tree, self.tools, self.elsewhere = root / "a tree", root / "tools", root / "elsewhere"
        self.copy("scripts", "bench", ".ci", "cmake")
        self.tools.mkdir()
        self.elsewhere.mkdir()
        self.tool("dpkg-query", "echo all installed")
        self.tool("cmake", "exit 0")

    def copy(self, *folders: str) -> None:
        for folder in folders:
            shutil.copytree(SOURCE / folder, self.tree / folder, ignore=shutil.ignore_patterns("__pycache__"))

    def tool(self, name: str, script: str) -> None:
        (self.tools / name).write_text(f"#!/bin/bash\n{script}\n", encoding="utf-8")
        (self.tools / name).chmod(0o755)

    def call(self, script: str, *words: str, user: int | None = None) -> subprocess.CompletedProcess:
        environment = {"PATH": f"{self.tools}:{os.environ['PATH']}", "HOME": str(self.elsewhere), "LC_ALL": "C"}
        return subprocess.run([str(self.tree / script), *words], cwd=self.elsewhere, env=environment, user=user,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=120, check=False)

    def assert_fails_with_a_line(self, run: subprocess.CompletedProcess, *parts: str) -> None:
        self.assertEqual(run.returncode, 2, run)
        self.assertNotIn("Traceback", run.stderr)
        for part in parts:
            self.assertIn(part, run.stderr)

    def assert_refused_as_another_user(self, script: str) -> None:
        """Where build/ belongs to somebody else. Only root can become another user; any other loses the right."""
        (self.tree / "build").mkdir()
        (self.tree / "build").chmod(0o555)
        (self.tree.parent).chmod(0o755)
        run = self.call(script, user=NOBODY if os.getuid() == 0 else None)
        self.assert_fails_with_a_line(run, script, "cannot write", "build")

    def test_there_are_scripts(self) -> None:
        known = {"scripts/run", "scripts/test", "scripts/lint", "scripts/setup", "bench/run", "bench/selftest", "bench/fleet",
                 ".ci/run"}
        self.assertLessEqual(known, set(SCRIPTS))

    def test_help_is_shown_in_either_spelling(self) -> None:
        for script in SCRIPTS:
            for word in ("--help", "-h"):
                with self.subTest(script=script, word=word):
                    run = self.call(script, word)
                    self.assertEqual((run.returncode, run.stderr), (0, ""))
                    self.assertIn(f"usage: {script}", run.stdout)

    def test_unknown_words_are_named(self) -> None:
        for script in SCRIPTS:
            if script not in HAND_ON:
                for word in ("nosuchword", "--no-such-option"):
                    with self.subTest(script=script, word=word):
                        self.assert_fails_with_a_line(self.call(script, word), word)

    def test_lint_finds_its_files_without_git(self) -> None:
        self.copy("include", "src", "sim", "probe")
        record = self.elsewhere / "record"
        for tool in ("clang-format", "clang-tidy"):
            self.tool(tool, f'printf "{tool} %s\\n" "$@" >>"{record}"')
        commands = [{"file": str(self.tree / name),
                     "command": f"c++ -DX '-I{self.tree}' -include x/cmake_pch.hxx -o x.o -c '{self.tree / name}'"}
                    for name in
                    ("src/shell/main.cpp", "sim/launcher/main.cpp", "probe/script.cpp")]
        (self.tree / "build/lint").mkdir(parents=True)
        (self.tree / "build/lint/compile_commands.json").write_text(json.dumps(commands), encoding="utf-8")
        first = self.call("scripts/lint")
        self.assertEqual((first.returncode, first.stderr), (0, ""), first)
        lines = record.read_text(encoding="utf-8").splitlines()
        self.assertIn(f"clang-format {self.tree}/sim/launcher/main.cpp", lines)
        self.assertEqual(sum(line == "clang-tidy -DX" for line in lines), 3)
        self.assertNotIn("cmake_pch", record.read_text(encoding="utf-8"))
        record.unlink()
        self.assertEqual(self.call("scripts/lint").returncode, 0)
        self.assertNotIn("clang-tidy -DX", record.read_text(encoding="utf-8").splitlines(), "checked again, unchanged")
        with (self.tree / "probe/script.h").open("a", encoding="utf-8") as header:
            header.write("// changed\n")
        record.unlink()
        self.assertEqual(self.call("scripts/lint").returncode, 0)
        self.assertEqual(record.read_text(encoding="utf-8").splitlines().count("clang-tidy -DX"), 1)

    def test_lint_names_what_is_found_and_fails(self) -> None:
        self.tool("clang-format", "exit 0")
        self.tool("clang-tidy", 'case "$*" in *main.cpp*) echo "/x.cpp:1:1: error: bad [check]"; exit 1; esac')
        self.copy("src")
        (self.tree / "build/lint").mkdir(parents=True)
        file = self.tree / "src/shell/main.cpp"
        (self.tree / "build/lint/compile_commands.json").write_text(
            json.dumps([{"file": str(file), "command": f"c++ -DX -o x.o -c '{file}'"}]), encoding="utf-8")
        for _ in range(2):
            run = self.call("scripts/lint")
            self.assertEqual(run.returncode, 1, run)
            self.assertIn("/x.cpp:1:1: error: bad [check]", run.stdout)

    def test_run_shows_how_far_the_build_is(self) -> None:
        plain = self.tree.parent / "plain"
        self.tree.rename(plain)
        self.tree = plain
        (plain / "build").mkdir()
        self.tool("cmake", 'for i in 2 14 19 20 100; do printf "[%3d%%] Building x\\n" $i; done')
        (plain / "build/kestro_sim").write_text('#!/bin/sh\necho "sim: $*"\n', encoding="utf-8")
        (plain / "build/kestro_sim").chmod(0o755)
        run = self.call("scripts/run", "--board", "lpu")
        self.assertEqual((run.returncode, run.stdout), (0, "sim: --board lpu -- board_test board_onekey_test\n"))
        self.assertEqual([line.split()[1] for line in run.stderr.splitlines()], ["0", "10", "20", "100"])
        self.assertIn("[ 19%] Building x", (plain / "build/run.log").read_text(encoding="utf-8"))

    def test_run_tells_of_a_build_that_fails(self) -> None:
        plain = self.tree.parent / "plain"
        self.tree.rename(plain)
        self.tree = plain
        self.tool("cmake", "echo 'x.cpp:1: no such thing'; exit 1")
        self.assert_fails_with_a_line(self.call("scripts/run"), "x.cpp:1: no such thing", "build/run.log")

    def test_run_says_early_that_the_path_has_a_blank(self) -> None:
        self.tool("cmake", "touch built; exit 1")
        self.assert_fails_with_a_line(self.call("scripts/run"), "blank", str(self.tree))
        self.assertFalse((self.tree / "built").exists())

    def test_run_says_that_build_belongs_to_somebody_else(self) -> None:
        plain = self.tree.parent / "plain"
        self.tree.rename(plain)
        self.tree = plain
        self.assert_refused_as_another_user("scripts/run")

    def test_bench_says_that_build_belongs_to_somebody_else(self) -> None:
        self.assert_refused_as_another_user("bench/run")

    def test_selftest_bench_says_that_build_belongs_to_somebody_else(self) -> None:
        self.assert_refused_as_another_user("bench/selftest")

    def test_fleet_bench_says_that_build_belongs_to_somebody_else(self) -> None:
        self.assert_refused_as_another_user("bench/fleet")

    def test_fleet_bench_names_what_it_cannot_take(self) -> None:
        self.assert_fails_with_a_line(self.call("bench/fleet", "--boards", "0"), "--boards 0")
        (self.elsewhere / "file").write_text("", encoding="utf-8")
        self.assert_fails_with_a_line(self.call("bench/fleet", "--keep", str(self.elsewhere)), str(self.elsewhere))

    def test_lint_says_that_build_belongs_to_somebody_else(self) -> None:
        self.tool("clang-format", "exit 0")
        self.tool("clang-tidy", "exit 0")
        self.assert_refused_as_another_user("scripts/lint")

    def test_bench_names_what_did_not_start(self) -> None:
        (self.tree / "build").mkdir()
        self.tool("valgrind", "echo no such machine >&2; exit 3")
        for bench in ("bench/run", "bench/selftest"):
            self.assert_fails_with_a_line(self.call(bench), "no such machine", "valgrind", "ended with 3")

    def test_coverage_wants_a_coverage_build(self) -> None:
        self.assert_fails_with_a_line(self.call("scripts/coverage", str(self.elsewhere)), "no counters")

    def test_setup_names_what_it_cannot_install(self) -> None:
        self.tool("dpkg-query", "exit 1")
        self.tool("id", "echo 1000")
        path = f"{self.tools}:{self.elsewhere}"
        for program in ("bash", "env", "dpkg", "grep"):
            os.symlink(shutil.which(program), self.elsewhere / program)
        run = subprocess.run([str(self.tree / "scripts/setup"), "bench"], env={"PATH": path}, capture_output=True,
                             text=True, check=False)
        self.assert_fails_with_a_line(run, "needs root or sudo", "valgrind")


    def test_make_image_writes_numbers_checksum_and_configuration(self) -> None:
        made = self.elsewhere / "an image"
        (self.elsewhere / "bits").write_bytes(b"\x00logic\xff")
        run = self.call("scripts/make_image", "--part", "0x00F90001", "--version", "0x205", "--date", "2026-01-10",
                        "--data", "bits", str(made))
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))
        numbers = bytes.fromhex("0100f900 05020000 ea07 01 0a 07000000")
        checksum = zlib.crc32(numbers + b"\x00logic\xff").to_bytes(4, "little")
        self.assertEqual(made.read_bytes(), b"KLOG" + numbers + checksum + b"\x00logic\xff")
        self.call("scripts/make_image", "--part", "1", "--version", "2", "--size", "3", str(made))
        self.assertEqual(made.stat().st_size, 24 + 3)

    def test_make_image_names_what_is_wrong(self) -> None:
        good = ["--part", "1", "--version", "2"]
        for words, part in ((good[:2], "--version"), (good[2:], "--part"), (good, "file"),
                            ([*good, "--date", "2026-02-30", "x"], "2026-02-30"),
                            ([*good, "--date", "1999-12-31", "x"], "1999"), ([*good, "--size", "0", "x"], "one byte"),
                            (["--part", "0x100000000", *good[2:], "x"], "0x100000000"),
                            ([*good, "--data", "nowhere", "x"], "nowhere"), ([*good, "nowhere/x"], "nowhere/x"),
                            ([*good, "--size", "1", "--data", "y", "x"], "--size")):
            with self.subTest(words=words):
                self.assert_fails_with_a_line(self.call("scripts/make_image", *words), "scripts/make_image", part)
        self.assertFalse((self.elsewhere / "x").exists())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
