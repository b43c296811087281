"""What `cmake --install` leaves below DESTDIR: its files, and that they do their work there without the build.

usage: staged_install_test.py SOURCE_DIR BUILD_DIR
"""

import ast
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE, BUILD = (Path(word).resolve() for word in sys.argv[1:3])
COMPONENTS = ("kestro-test", "kestro-sim", "kestro-report")
SELF_TEST = ("--clock", "virtual", "--", "board_test", "board_onekey_test")
NOBODY = 65534
ELF = b"\x7fELF"

PROGRAMS = {"bin/kestro_test", "bin/kestro_sim", "bin/kestro_call", "bin/kestro_make_image", "bin/kestro_report",
            "libexec/kestro-sim/kestro_sim", "libexec/kestro-sim/kestro_call", "libexec/kestro-sim/kestro_test"}


def install(destination: Path, *words: str) -> Path:
    subprocess.run(["cmake", "--install", BUILD, "--prefix", "/usr", "--strip", *words], check=True,
                   stdout=subprocess.DEVNULL, env={**os.environ, "DESTDIR": str(destination)})
    return destination / "usr"


def files_below(folder: Path) -> set[str]:
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if path.is_symlink() or path.is_file()}


def kept(name: str) -> set[str]:
    """Files of the sources' folder that belong to what is installed from it."""
    return {file for file in files_below(SOURCE / name) if "__pycache__" not in file}


def run(program: Path, *words: str, user: int | None = None, home: Path) -> subprocess.CompletedProcess:
    environment = {"PATH": "/usr/bin:/bin", "HOME": str(home), "TZ": "UTC", "LC_ALL": "C"}
    return subprocess.run([program, *words], cwd=home, env=environment, user=user, capture_output=True, timeout=120,
                          check=False)


class StagedInstall(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls) -> None:
        cls.scratch = tempfile.TemporaryDirectory(prefix="install.")
        cls.addClassCleanup(cls.scratch.cleanup)
        root = Path(cls.scratch.name)
        root.chmod(0o755)
        cls.usr = install(root / "staged")
        cls.installed = files_below(cls.usr)

    def setUp(self) -> None:
        self.home = Path(tempfile.mkdtemp(dir=self.scratch.name))
        if os.getuid() == 0:
            os.chown(self.home, NOBODY, NOBODY)

    def below(self, folder: str) -> set[str]:
        return {file.removeprefix(folder) for file in self.installed if file.startswith(folder)}

    def test_files_are_in_their_places(self) -> None:
        self.assertLessEqual(PROGRAMS, self.installed)
        self.assertEqual(self.below("bin/"), {file.removeprefix("bin/") for file in PROGRAMS if file[0] == "b"})
        self.assertEqual(self.below("share/kestro-report/kestro_report/"), kept("report/kestro_report"))
        self.assertEqual(self.below("share/bash-completion/completions/"), kept("completion"))
        pages = {f"man{page.suffix[1]}/{page.name}" for page in (SOURCE / "docs").glob("*.[1-8]")}
        self.assertIn("man1/kestro_test.1", pages)
        self.assertEqual(self.below("share/man/"), pages)
        self.assertEqual(self.below("share/doc/kestro-sim/"),
                         {"README.md", *(f"docs/{path.name}" for path in (SOURCE / "docs").glob("*.md"))})
        self.assertLessEqual({"sim/libdrv_basic.so", "sim/opened/drv_mng_eth/libdrv_mng_eth.so",
                              "probe/libkestro_probe.so"}, self.below("libexec/kestro-sim/"))
        libraries = {path.name for path in (BUILD / "sim").rglob("lib*.so")}
        self.assertEqual({Path(file).name for file in self.below("libexec/kestro-sim/sim/")}, {*libraries, "chassis"})

    def test_chassis_is_whole(self) -> None:
        self.assertEqual(self.below("share/kestro-sim/chassis/"), kept("sim/chassis"))
        for file in kept("sim/chassis"):
            there = self.usr / "share/kestro-sim/chassis" / file
            self.assertEqual(there.read_bytes(), (SOURCE / "sim/chassis" / file).read_bytes(), file)

    def test_each_file_belongs_to_one_component(self) -> None:
        parts = {name: files_below(install(self.home / name, "--component", name)) for name in COMPONENTS}
        self.assertEqual(sorted(file for files in parts.values() for file in files), sorted(self.installed))
        self.assertEqual(parts["kestro-test"], {"bin/kestro_test", "share/man/man1/kestro_test.1",
                                                "share/bash-completion/completions/kestro_test"})
        self.assertTrue(all("kestro_report" in file for file in parts["kestro-report"]), parts["kestro-report"])

    def test_nothing_refers_to_the_build(self) -> None:
        for file in self.installed:
            path = self.usr / file
            if path.is_symlink():
                self.assertFalse(os.readlink(path).startswith("/"), file)
                self.assertTrue(path.exists(), f"{file} leads nowhere")
                continue
            content = path.read_bytes()
            for place in (SOURCE, BUILD):
                self.assertNotIn(os.fsencode(place), content, file)
            if content.startswith(ELF):
                listing = subprocess.run(["readelf", "-dW", path], capture_output=True, text=True, check=True).stdout
                for folders in re.findall(r"R(?:UN)?PATH.*\[(.*)\]", listing):
                    self.assertTrue(all(each.startswith("$ORIGIN") for each in folders.split(":")), (file, folders))

    def test_the_self_test_runs_as_in_the_build(self) -> None:
        """For a user who may write nothing of it, and wherever the files are moved to."""
        user = NOBODY if os.getuid() == 0 else None
        of_build = run(BUILD / "kestro_sim", "--state", str(self.home / "of_build"), *SELF_TEST, home=self.home)
        here = run(self.usr / "bin/kestro_sim", *SELF_TEST, home=self.home, user=user)
        self.assertEqual((here.returncode, here.stderr), (0, b""))
        self.assertIn(b"Success", here.stdout)
        self.assertEqual(here.stdout, of_build.stdout)
        self.assertTrue((self.home / ".local/state/kestro_sim").is_dir())
        moved = shutil.copytree(self.usr, self.home / "moved", symlinks=True)
        there = run(moved / "bin/kestro_sim", "--reset", *SELF_TEST, home=self.home)
        self.assertEqual((there.returncode, there.stdout), (0, here.stdout))

    def test_the_other_programs_run(self) -> None:
        call = run(self.usr / "bin/kestro_sim", "--trace", "calls", "--run", "kestro_call", "--", "drv_mac_init()",
                   home=self.home)
        self.assertEqual((call.returncode, call.stdout), (0, b"drv_mac_init(inst_id=0xffffffff) = 0x0\n"), call.stderr)
        self.assertIn("drv_mac_init", (self.home / "calls").read_text(encoding="utf-8"))
        sick = run(self.usr / "bin/kestro_sim", "--state", str(self.home / "sick"), "--get", "slot9/rtc/chip/0/battery",
                   "--board", str(self.usr / "share/kestro-sim/chassis/sick/rtc_battery_low.xml"), home=self.home)
        self.assertEqual((sick.returncode, sick.stdout, sick.stderr), (0, b"2310\n", b""))
        image = run(self.usr / "bin/kestro_make_image", "--part", "1", "--version", "2", "image", home=self.home)
        self.assertEqual((image.returncode, image.stderr), (0, b""))
        wrong = run(self.usr / "bin/kestro_make_image", home=self.home)
        self.assertEqual(wrong.returncode, 2)
        self.assertTrue(wrong.stderr.startswith(b"kestro_make_image: --part is missing"), wrong.stderr)
        report = run(self.usr / "bin/kestro_report", "--help", home=self.home)
        self.assertEqual((report.returncode, report.stderr), (0, b""))
        self.assertIn(b"usage: kestro_report", report.stdout)


class Packaging(unittest.TestCase):
    def test_versions_agree(self) -> None:
        newest = (SOURCE / "packaging/changelog").read_text(encoding="utf-8").split("\n")[0]
        report = (SOURCE / "report/kestro_report/__init__.py").read_text(encoding="utf-8")
        self.assertEqual(re.search(r"\(([\d.]+)\)", newest)[1], re.search(r'VERSION = "([\d.]+)"', report)[1])

    def test_the_report_needs_the_modules_that_it_imports(self) -> None:
        nodes = [node for path in (SOURCE / "report/kestro_report").rglob("*.py")
                 for node in ast.walk(ast.parse(path.read_text(encoding="utf-8")))]
        names = {node.module for node in nodes if isinstance(node, ast.ImportFrom)}
        names |= {alias.name for node in nodes if isinstance(node, ast.Import) for alias in node.names}
        others = {name.split(".")[0] for name in names} - sys.stdlib_module_names - {"kestro_report"}
        fields = (SOURCE / "cmake/packages.cmake").read_text(encoding="utf-8")
        needed = re.search(r'KESTRO-REPORT_PACKAGE_DEPENDS\s+"([^"]*)"', fields)[1]
        self.assertEqual(set(re.findall(r"python3-(\w+)", needed)), others)

    def test_answers_to_lintian_have_a_reason(self) -> None:
        for file in (SOURCE / "packaging").glob("*/lintian-overrides"):
            lines = file.read_text(encoding="utf-8").splitlines()
            self.assertTrue(lines[0].startswith("# "), file)
            tags = [line.split(": ")[1].split()[0] for line in lines if not line.startswith("#")]
            for before, tag in zip(["#"] + tags, tags):
                if tag != before:
                    above = lines[next(i for i, line in enumerate(lines) if f": {tag}" in line) - 1]
                    self.assertTrue(above.startswith("#"), f"{file}: {tag} has no reason")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
