"""What bash completion offers, held against the programs and against the tables in the sources.

usage: completion_test.py SOURCE_DIR BUILD_DIR
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from shell import Offer, Terminal, ask

SOURCE, BUILD = (Path(word).resolve() for word in sys.argv[1:3])
COMPLETIONS = SOURCE / "completion"
REPORT = SOURCE / "report/bin/kestro_report"
# Their listing is preceded by calls that bring chips up.
CALLING = {"cdr_test": ["-h", "0xffffffff", "0"], "optical_test": ["-h", "0xffffffff"]}


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


class KestroTest(Completion):
    def test_modules_are_those_of_the_program(self) -> None:
        self.assertCountEqual(self.words("kestro_test ", **self.on_a_board()), modules())
        self.assertEqual(self.words("kestro_test us", **self.on_a_board()), ["usb_test"])

    def test_sub_commands_are_those_of_the_program(self) -> None:
        offers = self.ask(*(f"kestro_test {module} " for module in modules()), **self.on_a_board())
        for module, offer in zip(modules(), offers, strict=True):
            with self.subTest(module):
                self.assertCountEqual(offer.words, sub_commands(module))
        self.assertGreater(sum(len(offer.words) for offer in offers), 500)

    def test_rows_kept_here_are_what_the_program_lists(self) -> None:
        for module, words in CALLING.items():
            listing = self.sim("--", module, *words).stdout.split("List the functionalities for kestro_test \n")[1]
            names = [line.split()[0] for line in listing.splitlines() if line.startswith(" ")]
            self.assertEqual(self.words(f"kestro_test {module} "), names)

    def test_asking_calls_no_driver(self) -> None:
        trace = self.home / "trace"
        self.tool("kestro_test", f"export LD_PRELOAD={BUILD}/probe/libkestro_probe.so LD_LIBRARY_PATH={BUILD}/noop\n"
                                 f"export KESTRO_PROBE_TRACE=$(mktemp {trace}.XXXXXX)\nexec {BUILD}/kestro_test \"$@\"")
        offers = self.ask("kestro_test ", *(f"kestro_test {module} " for module in modules()))
        self.assertTrue(all(offer.words for offer in offers))
        traces = list(self.home.iterdir())
        self.assertEqual(len(traces), 1 + len(modules()) - len(CALLING))
        self.assertEqual([file.read_text(encoding="utf-8") for file in traces if file.stat().st_size > 0], [])
        # That the trace would tell.
        subprocess.run([self.tools / "kestro_test", "optical_test"], capture_output=True, check=False)
        self.assertTrue(any("(" in file.read_text(encoding="utf-8") for file in self.home.iterdir()))

    def test_on_a_desk_the_simulator_is_asked_and_nothing_is_left_behind(self) -> None:
        offers = self.ask("kestro_test ", "kestro_test mac_test drv_mac_get_", f"{BUILD}/kestro_test usb_test ")
        self.assertCountEqual(offers[0].words, modules())
        self.assertCountEqual(offers[1].words, [name for name in sub_commands("mac_test")
                                                if name.startswith("drv_mac_get_")])
        self.assertCountEqual(offers[2].words, sub_commands("usb_test"))
        self.assertEqual([*self.home.iterdir(), *self.temporary.iterdir(), *self.here.iterdir()], [])

    def test_files_stand_where_the_help_says_so(self) -> None:
        (self.here / "image.bin").touch()
        on_board = self.on_a_board()
        for line, words in (("alg_test alg_crc32_test im", ["image.bin"]), ("env_test read_file im", ["image.bin"]),
                            ("env_test read_file image.bin im", []), ("mac_test drv_mac_get_num im", [])):
            self.assertEqual(self.words(f"kestro_test {line}", **on_board), words, line)

    def test_help_is_an_option(self) -> None:
        self.assertEqual(self.words("kestro_test -"), ["-h", "--help"])

    def test_what_does_not_exist_has_nothing_to_offer(self) -> None:
        for line in ("kestro_test nosuch_test ", "kestro_test 'mac_test; echo x' ", "kestro_test mac_test zzz",
                     "kestro_test ../x y"):
            self.assertEqual(self.words(line, **self.on_a_board()), [], line)

    def test_without_programs_nothing_is_offered_or_said(self) -> None:
        nowhere = {"PATH": os.environ["PATH"]}
        for line in ("kestro_test ", "kestro_test mac_test ", "kestro_sim ", "kestro_sim --g", "kestro_sim --get s",
                     "kestro_call drv", "/nowhere/kestro_test ", "kestro_test alg_test alg_crc16_test "):
            self.assertEqual(self.words(line, **nowhere), [], line)

    def test_a_word_is_never_run(self) -> None:
        for line in ("$(touch ran)/kestro_test ", "kestro_sim --board $(touch ran) --get s", "kestro_test `touch ran` ",
                     "kestro_sim --get s$(touch ran)", "kestro_call --list $(touch ran)",
                     "kestro_sim --run $(touch ran)/kestro_call drv"):
            self.words(line)
        self.assertEqual(list(self.here.iterdir()), [])

    def test_a_failing_program_is_not_heard(self) -> None:
        self.tool("kestro_test", "echo broken >&2; echo ' broken'; kill -SEGV $$")
        self.tool("kestro_sim", "echo broken >&2; exit 1")
        for line in ("kestro_test ", "kestro_test mac_test ", "kestro_sim --get slot9/", "kestro_sim mac_test "):
            self.assertEqual(self.words(line), [], line)

    def test_a_driver_that_hangs_costs_two_seconds(self) -> None:
        self.tool("kestro_test", "exec tail -f /dev/null")
        board = {"PATH": f"{self.tools}:{os.environ['PATH']}"}
        begin = os.times().elapsed
        self.assertEqual(self.words("kestro_test mac_test ", **board), [])
        self.assertLess(os.times().elapsed - begin, 10)

    def test_settings_of_the_shell_do_not_matter(self) -> None:
        (self.here / "image.bin").touch()
        for settings in ("IFS=_", "shopt -s nullglob", "shopt -s failglob", "set -o pipefail", "set -o nounset"):
            lines = ("kestro_test mac_test drv_mac_get_n", "kestro_test cdr_test drv_cdr_reg_w",
                     "kestro_test alg_test alg_crc16_test im", "kestro_sim --without opt",
                     "kestro_sim --get slot9/voltage/rail/2/mi", "kestro_call drv_mac_get_n",
                     "kestro_report --jun")
            offers = self.ask(*lines, settings=settings, PATH=f"{REPORT.parent}:{self.environment['PATH']}")
            self.assertEqual([offer.words for offer in offers],
                             [["drv_mac_get_num"], ["drv_cdr_reg_write"], ["image.bin"], ["optical_lib"],
                              ["slot9/voltage/rail/2/millivolts"], ["'drv_mac_get_num()'"], ["--junit"]], settings)


class KestroSim(Completion):
    def test_options_are_those_of_its_help(self) -> None:
        text = subprocess.run([BUILD / "kestro_sim", "--help"], capture_output=True, text=True, check=True).stdout
        options = re.findall(r"^  (--[\w-]+)", text, re.MULTILINE)
        self.assertIn("--signal-call", options)
        self.assertCountEqual(self.words("kestro_sim -"), options)
        self.assertEqual(self.words("kestro_sim --reset --fail-a"), ["--fail-alloc"])

    def test_boards_are_names_and_files(self) -> None:
        (self.here / "mine.xml").touch()
        (self.here / "mine.txt").touch()
        names = self.words("kestro_sim --board ")
        self.assertEqual(names, ["mine.xml", "lpu", "mpu_master", "mpu_slave"])
        for name in names[1:]:
            self.assertEqual(self.sim("--board", name, "--get", "slot9/voltage/rail/2/millivolts").returncode, 0)
        self.assertEqual(self.words("kestro_sim --board=mpu_s"), ["mpu_slave"])

    def test_registers_are_offered_step_by_step(self) -> None:
        tops = self.ask("kestro_sim --get ")[0]
        self.assertIn("nospace", tops.options)
        self.assertIn("slot9/", tops.words)
        listed = {line.split("/")[0] + "/" for line in self.sim("--list").stdout.splitlines()
                  if re.match(r"[\w/]+ = ", line)}
        self.assertCountEqual(tops.words, listed)
        self.assertEqual(self.words("kestro_sim --get slot9/volta"), ["slot9/voltage/"])
        self.assertEqual(self.words("kestro_sim --list=slot9/volta"), ["slot9/voltage/"])
        leaf = self.ask("kestro_sim --board mpu_slave --get slot9/voltage/rail/2/mi")[0]
        self.assertEqual((leaf.words, leaf.options), (["slot9/voltage/rail/2/millivolts"], []))

    def test_every_register_on_the_way_exists(self) -> None:
        path = ""
        while not path or path.endswith("/"):
            offered = self.words(f"kestro_sim --get {path}")
            self.assertTrue(offered, path)
            path = offered[-1]
        self.assertEqual(self.sim("--get", path).returncode, 0, path)

    def test_registers_are_those_of_the_board_that_is_named(self) -> None:
        sick = SOURCE / "sim/chassis/sick/rail_stuck.xml"
        (self.here / "no chassis.xml").write_text("<nothing/>", encoding="utf-8")
        self.assertEqual(self.words(f"kestro_sim --board {sick} --get slot9/voltage/rail/2/mi"),
                         ["slot9/voltage/rail/2/millivolts"])
        self.assertEqual(self.words("kestro_sim --board no\\ chassis.xml --get slot9/volta"), [])

    def test_values_of_a_register_are_its_choices(self) -> None:
        path = self.ask("kestro_sim --set slot9/led/lamp/0/freq_")[0]
        self.assertEqual((path.words, path.options), (["slot9/led/lamp/0/freq_max="], ["nospace"]))
        for line in ("kestro_sim --set slot9/led/lamp/0/color=", "kestro_sim --set=slot9/led/lamp/0/color="):
            self.assertEqual(self.words(line), ["off", "green", "red", "yellow"], line)
        self.assertEqual(self.sim("--set", "slot9/led/lamp/0/color=yellow").returncode, 0)
        self.assertEqual(self.words("kestro_sim --set slot9/voltage/rail/2/millivolts="), [])

    def test_places_can_be_pulled_and_libraries_left_out(self) -> None:
        places = self.words("kestro_sim --pull ")
        self.assertTrue({"slot5", "slot10", "slot7/card1"} <= set(places), places)
        self.assertEqual(self.words("kestro_sim --plug slot7/"), ["slot7/card1", "slot7/card2"])
        for place in places:
            self.assertEqual(self.sim("--pull", place, "--plug", place).returncode, 0, place)
        libraries = self.words("kestro_sim --without ")
        self.assertIn("optical_lib", libraries)
        for library in libraries:
            self.assertEqual(self.sim("--without", library, "--", "mac_test").returncode, 0, library)

    def test_other_values(self) -> None:
        (self.here / "file").touch()
        (self.here / "folder").mkdir()
        self.assertEqual(self.words("kestro_sim --clock "), ["real", "virtual"])
        self.assertEqual(self.words("kestro_sim --state f"), ["folder"])
        self.assertCountEqual(self.words("kestro_sim --trace f"), ["file", "folder"])
        self.assertEqual(self.words("kestro_sim --fail-alloc "), [])
        self.assertEqual(self.words("kestro_sim --run kestro_c"), ["kestro_call"])

    def test_words_behind_are_those_of_kestro_test(self) -> None:
        for line in ("", "-- ", "--reset --board lpu ", "--get=slot9/voltage --clock virtual -- ", "--list -- ",
                     "--list --discard ", "--list slot9 ", "--run kestro_test "):
            self.assertCountEqual(self.words(f"kestro_sim {line}"), modules(), line)
        self.assertEqual(self.words("kestro_sim -- mac_test drv_mac_get_n"), ["drv_mac_get_num"])
        self.assertEqual(self.words("kestro_sim mac_test drv_mac_get_n"), ["drv_mac_get_num"])
        self.assertEqual(self.words("kestro_sim mac_test --b"), [])

    def test_words_behind_run_are_those_of_kestro_call(self) -> None:
        for option in ("--run kestro_call", "--run=kestro_call", f"--run {BUILD}/kestro_call"):
            self.assertEqual(self.words(f"kestro_sim {option} -- drv_mac_get_n"), ["'drv_mac_get_num()'"], option)
            self.assertEqual(self.words(f"kestro_sim {option} -- --w"), ["--wait"], option)

    def test_nothing_is_left_behind(self) -> None:
        self.ask("kestro_sim ", "kestro_sim --get slot9/", "kestro_sim --board ", "kestro_sim --pull ",
                 "kestro_sim --set slot9/led/lamp/0/color=", "kestro_sim --without ",
                 "kestro_sim --pull slot5 mac_test ")
        self.assertEqual([*self.home.iterdir(), *self.temporary.iterdir(), *self.here.iterdir()], [])


class KestroCall(Completion):
    def operations(self) -> list[str]:
        text = subprocess.run([BUILD / "kestro_call", "--list"], capture_output=True, text=True, check=True).stdout
        return [line.split("(")[0] for line in text.splitlines()]

    def test_calls_are_all_operations(self) -> None:
        self.assertCountEqual(self.words("kestro_call "), [f"'{name}()'" for name in self.operations()])
        self.assertGreater(len(self.operations()), 500)

    def test_quotes_that_are_open_stay(self) -> None:
        self.assertEqual(self.words("kestro_call 'drv_mac_get_n"), ["drv_mac_get_num()"])
        self.assertEqual(self.words('kestro_call "drv_mac_get_n'), ["drv_mac_get_num()"])
        self.assertEqual(self.words("kestro_call 'drv_mac_get_num(in"), [])

    def test_options(self) -> None:
        self.assertCountEqual(self.words("kestro_call --"), ["--wait", "--list", "--help"])
        self.assertEqual(self.words("kestro_call --wait "), [])
        self.assertEqual(self.words("kestro_call --wait 2 drv_mac_get_n"), ["'drv_mac_get_num()'"])
        self.assertEqual(self.words("kestro_call --list drv_mac_get_n"), ["drv_mac_get_num"])
        self.assertEqual(self.words("kestro_call --list drv_mac drv"), [])


class KestroMakeImage(Completion):
    def setUp(self) -> None:
        super().setUp()
        (self.tools / "kestro_make_image").symlink_to(SOURCE / "scripts/make_image")
        (self.here / "fpga.img").touch()

    def test_options_and_files(self) -> None:
        self.assertCountEqual(self.words("kestro_make_image --"),
                              ["--help", "--part", "--version", "--date", "--size", "--data"])
        for line, words in (("--data f", ["fpga.img"]), ("--data=f", ["fpga.img"]), ("--part 1 f", ["fpga.img"]),
                            ("--part ", []), ("--date=", [])):
            self.assertEqual(self.words(f"kestro_make_image {line}"), words, line)


class KestroReport(Completion):
    """Against what the tool's own help says."""

    def setUp(self) -> None:
        super().setUp()
        self.environment["PATH"] = f"{REPORT.parent}:{self.environment['PATH']}"

    def help(self, *words: str) -> str:
        return subprocess.run([REPORT, *words, "--help"], capture_output=True, text=True, check=True).stdout

    def test_sub_commands_and_files(self) -> None:
        (self.here / "a run.txt").touch()
        self.assertCountEqual(self.words("kestro_report "), ["read", "run", "diff", "trend", "a run.txt"])
        for command in ("read", "run", "diff", "trend"):
            self.assertRegex(self.help(), rf"(?m)^usage:.*{command}|^ +kestro_report {command}")
        self.assertEqual(self.words("kestro_report read a"), ["a run.txt"])
        self.assertEqual(self.words("kestro_report tr"), ["trend"])

    def test_options_are_those_of_the_help(self) -> None:
        for command in ("read", "run", "diff", "trend"):
            options = sorted(set(re.findall(r"^  (?:-\w, )?(--[\w-]+)", self.help(command), re.MULTILINE)))
            self.assertIn("--html", options)
            self.assertCountEqual(self.words(f"kestro_report {command} -"), options, command)
        self.assertEqual(self.words("kestro_report --jun"), ["--junit"])

    def test_values(self) -> None:
        (self.here / "limits.yaml").touch()
        for line, words in (("--color ", ["auto", "always", "never"]), ("--color=al", ["always"]),
                            ("read --limits l", ["limits.yaml"]), ("--expect=l", ["limits.yaml"]), ("--dut ", []),
                            ("run --timeout ", []), ("run --board=mpu_s", ["mpu_slave"])):
            self.assertEqual(self.words(f"kestro_report {line}"), words, line)

    def test_words_behind_run_are_those_of_kestro_test(self) -> None:
        self.assertEqual(self.words("kestro_report run -- mac_te"), ["mac_test"])
        self.assertEqual(self.words("kestro_report run --board lpu -- mac_test drv_mac_get_n"), ["drv_mac_get_num"])
        self.assertLessEqual({"board_test", "kestro_sim"}, set(self.words("kestro_report run -- ")))

    def test_words_behind_run_may_be_a_command_with_completion_of_its_own(self) -> None:
        for options in ("", "--board=lpu "):
            self.assertEqual(self.words(f"kestro_report run {options}-- kestro_sim --board mpu_s"), ["mpu_slave"])


class OnATerminal(Completion):
    def setUp(self) -> None:
        super().setUp()
        share = self.home / "share/bash-completion"
        share.mkdir(parents=True)
        (share / "completions").symlink_to(COMPLETIONS)
        self.environment["XDG_DATA_DIRS"] = str(self.home / "share")
        self.terminal = Terminal(self.environment, self.here)
        self.addCleanup(self.terminal.close)

    def test_tab_completes_the_line(self) -> None:
        for keys, line in (("kestro_test us\t", "kestro_test usb_test "),
                           ("kestro_test mac_test drv_mac_get_n\t0", "kestro_test mac_test drv_mac_get_num 0"),
                           ("kestro_test mac_test drv_mac_g\t", "kestro_test mac_test drv_mac_get_"),
                           ("kestro_sim --bo\tmpu_s\t", "kestro_sim --board mpu_slave "),
                           (f"{BUILD}/kestro_sim --get=slot9/volta\tr\t2/mi\t",
                            f"{BUILD}/kestro_sim --get=slot9/voltage/rail/2/millivolts "),
                           ("kestro_sim --set slot9/led/lamp/0/color=\tr\t",
                            "kestro_sim --set slot9/led/lamp/0/color=red "),
                           ("kestro_call drv_mac_get_a\t_\t", "kestro_call 'drv_mac_get_addr_num()' "),
                           ("kestro_sim --run kestro_call -- drv_mac_get_n\t",
                            "kestro_sim --run kestro_call -- 'drv_mac_get_num()' ")):
            with self.subTest(keys):
                self.assertEqual(self.terminal.line_after(keys), line)

    def test_two_tabs_show_the_choice(self) -> None:
        self.terminal.send("kestro_test optical_test set\t\t\t")
        self.terminal.wait_for(r"set_optical_bus_status_recovery +set_optical_rate")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
