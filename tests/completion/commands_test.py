"""What completion of kestro_test offers, held against the program and the tables in the sources; and TAB on a terminal.

usage: commands_test.py SOURCE_DIR BUILD_DIR
"""

import os
import subprocess
import sys
import unittest

from cases import BUILD, COMPLETIONS, REPORT, Completion, modules, sub_commands
from shell import Terminal

# Their listing is preceded by calls that bring chips up.
CALLING = {"cdr_test": ["-h", "0xffffffff", "0"], "optical_test": ["-h", "0xffffffff"]}


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
        self.assert_offers({"kestro_test alg_test alg_crc32_test im": ["image.bin"],
                            "kestro_test env_test read_file im": ["image.bin"],
                            "kestro_test env_test read_file image.bin im": [],
                            "kestro_test mac_test drv_mac_get_num im": []}, **self.on_a_board())

    def test_help_is_an_option(self) -> None:
        self.assertEqual(self.words("kestro_test -"), ["-h", "--help"])

    def test_what_does_not_exist_has_nothing_to_offer(self) -> None:
        lines = ("kestro_test nosuch_test ", "kestro_test 'mac_test; echo x' ", "kestro_test mac_test zzz",
                 "kestro_test ../x y")
        self.assert_offers(dict.fromkeys(lines, []), **self.on_a_board())

    def test_without_programs_nothing_is_offered_or_said(self) -> None:
        lines = ("kestro_test ", "kestro_test mac_test ", "kestro_sim ", "kestro_sim --g", "kestro_sim --get s",
                 "kestro_call drv", "/nowhere/kestro_test ", "kestro_test alg_test alg_crc16_test ")
        self.assert_offers(dict.fromkeys(lines, []), PATH=os.environ["PATH"])

    def test_a_word_is_never_run(self) -> None:
        self.ask("$(touch ran)/kestro_test ", "kestro_sim --board $(touch ran) --get s", "kestro_test `touch ran` ",
                 "kestro_sim --get s$(touch ran)", "kestro_call --list $(touch ran)",
                 "kestro_sim --run $(touch ran)/kestro_call drv")
        self.assertEqual(list(self.here.iterdir()), [])

    def test_a_failing_program_is_not_heard(self) -> None:
        self.tool("kestro_test", "echo broken >&2; echo ' broken'; kill -SEGV $$")
        self.tool("kestro_sim", "echo broken >&2; exit 1")
        lines = ("kestro_test ", "kestro_test mac_test ", "kestro_sim --get slot9/", "kestro_sim mac_test ")
        self.assert_offers(dict.fromkeys(lines, []))

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
