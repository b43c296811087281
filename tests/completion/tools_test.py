"""What completion of the other tools offers, held against the tools.

usage: tools_test.py SOURCE_DIR BUILD_DIR
"""

import re
import subprocess
import sys
import unittest

from cases import BUILD, REPORT, SOURCE, Completion, modules


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
        self.assert_offers({"kestro_sim --clock ": ["real", "virtual"], "kestro_sim --state f": ["folder"],
                            "kestro_sim --trace fi": ["file"], "kestro_sim --fail-alloc ": [],
                            "kestro_sim --run kestro_c": ["kestro_call"]})

    def test_words_behind_are_those_of_kestro_test(self) -> None:
        lines = ("", "-- ", "--reset --board lpu ", "--get=slot9/voltage --clock virtual -- ", "--list -- ",
                 "--list --discard ", "--list slot9 ", "--run kestro_test ")
        self.assert_offers({f"kestro_sim {line}us": ["usb_test"] for line in lines})
        self.assertCountEqual(self.words("kestro_sim "), modules())
        self.assert_offers({"kestro_sim -- mac_test drv_mac_get_n": ["drv_mac_get_num"],
                            "kestro_sim mac_test drv_mac_get_n": ["drv_mac_get_num"],
                            "kestro_sim mac_test --b": []})

    def test_words_behind_run_are_those_of_kestro_call(self) -> None:
        for option in ("--run kestro_call", "--run=kestro_call", f"--run {BUILD}/kestro_call"):
            self.assert_offers({f"kestro_sim {option} -- drv_mac_get_n": ["'drv_mac_get_num()'"],
                                f"kestro_sim {option} -- --w": ["--wait"]})

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
        files = dict.fromkeys(("kestro_make_image --data f", "kestro_make_image --data=f",
                               "kestro_make_image --part 1 f"), ["fpga.img"])
        self.assert_offers({**files, "kestro_make_image --part ": [], "kestro_make_image --date=": []})


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
        self.assert_offers({"kestro_report --color ": ["auto", "always", "never"],
                            "kestro_report --color=al": ["always"], "kestro_report read --limits l": ["limits.yaml"],
                            "kestro_report --expect=l": ["limits.yaml"], "kestro_report --dut ": [],
                            "kestro_report run --timeout ": [], "kestro_report run --board=mpu_s": ["mpu_slave"]})

    def test_words_behind_run_are_those_of_kestro_test(self) -> None:
        self.assertEqual(self.words("kestro_report run -- mac_te"), ["mac_test"])
        self.assertEqual(self.words("kestro_report run --board lpu -- mac_test drv_mac_get_n"), ["drv_mac_get_num"])
        self.assertLessEqual({"board_test", "kestro_sim"}, set(self.words("kestro_report run -- ")))

    def test_words_behind_run_may_be_a_command_with_completion_of_its_own(self) -> None:
        lines = [f"kestro_report run {options}-- kestro_sim --board mpu_s" for options in ("", "--board=lpu ")]
        self.assert_offers(dict.fromkeys(lines, ["mpu_slave"]))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
