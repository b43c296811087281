"""Boards checked with Ansible: three as docs/fleet.md says, one of which dies; and some that do not answer."""

import json
import re
import subprocess
import unittest
from functools import cache
from xml.etree import ElementTree

import yaml
from boards import serial_of
from desk import BUILD, RESULTS, command, keep, report, the_desk, until
from hosts import Host, call

LONG = 5000  # bytes, less than it prints until then


@cache
def ansible_run() -> tuple[int, str]:
    """The document's command on three boards, of which the third dies while its self-test runs."""
    process = the_desk().start(command("ansible-playbook"))
    output = the_desk().tree / "fleet-results/rack1-board3/02_selftest.txt"
    try:
        until(lambda: process.poll() is not None or output.exists() and output.stat().st_size > LONG, 180,
              "the third board has printed a part of its self-test")
        the_desk().dying.cut()
        said = process.communicate(timeout=300)[0]
    finally:
        process.kill()
    keep(the_desk().tree / "fleet-results", "ansible", said)
    return process.returncode, said


class WithAnsible(unittest.TestCase):
    maxDiff = None

    def setUp(self) -> None:
        self.status, self.said = ansible_run()
        self.results = RESULTS / "ansible"

    def facts(self, host: Host, check: str) -> dict:
        return yaml.safe_load((self.results / host.name / f"{check}.facts.yaml").read_text(encoding="utf-8"))

    def lines(self, host: Host, check: str) -> list[dict]:
        text = (self.results / host.name / f"{check}.jsonl").read_text(encoding="utf-8")
        return [json.loads(line) for line in text.splitlines()]

    def end_of(self, host: Host, check: str) -> tuple[str, str]:
        end = self.lines(host, check)[-1]["testRunArtifact"]["testRunEnd"]
        return end["status"], end["result"]

    def failures(self, host: Host) -> list[str]:
        diagnoses = (line.get("testStepArtifact", {}).get("diagnosis") for line in self.lines(host, "02_selftest"))
        return [each["verdict"] for each in diagnoses if each and each["type"] == "FAIL"]

    def test_the_playbook_fails_and_says_why(self) -> None:
        self.assertEqual(self.status, 2, self.said)
        self.assertIn("not every run ended properly", self.said)
        self.assertNotIn("unreachable=1", self.said)

    def test_boards_need_no_python(self) -> None:
        ended = the_desk().network.ssh(the_desk().healthy, "command -v python3 || ls /usr/bin/python3*")
        self.assertNotEqual(ended.returncode, 0, ended)

    def test_the_package_is_on_the_boards(self) -> None:
        for host in (the_desk().healthy, the_desk().sick):
            ended = the_desk().network.ssh(host, "dpkg-query --show kestro-test; ls /tmp/*.deb")
            self.assertEqual(ended.stdout.split(), ["kestro-test", "1.0"], ended)

    def test_serial_numbers_are_the_boards_own(self) -> None:
        for host in (the_desk().healthy, the_desk().sick, the_desk().dying):
            self.assertEqual(self.facts(host, "02_selftest")["serial"], serial_of(host))
            begin = self.lines(host, "02_selftest")[1]["testRunArtifact"]["testRunStart"]
            self.assertEqual(begin["dutInfo"]["hardwareInfos"][0]["serialNumber"], serial_of(host))
            self.assertEqual(begin["dutInfo"]["dutInfoId"], host.name)

    def test_the_healthy_board_passes(self) -> None:
        for check in ("01_type", "02_selftest", "03_type_after_it"):
            self.assertEqual(self.facts(the_desk().healthy, check)["status"], 0)
            self.assertNotIn("problem", self.facts(the_desk().healthy, check))
        self.assertEqual(self.end_of(the_desk().healthy, "02_selftest"), ("COMPLETE", "PASS"))

    def test_what_was_printed_is_there_byte_for_byte(self) -> None:
        words = ["ssh", "-i", str(the_desk().network.key), "-o", f"UserKnownHostsFile={the_desk().network.known_hosts}",
                 f"root@{the_desk().healthy.address}", "kestro_test board_test board_get_type"]
        printed = subprocess.run(words, capture_output=True, check=True, stdin=subprocess.DEVNULL).stdout
        self.assertEqual((self.results / "rack1-board1/01_type.txt").read_bytes(), printed)
        self.assertIn(b"\r\n", printed)

    def test_the_sick_board_fails_its_sick_part_only(self) -> None:
        self.assertEqual(self.end_of(the_desk().sick, "02_selftest"), ("COMPLETE", "FAIL"))
        self.assertEqual(len(self.failures(the_desk().sick)), 1, self.failures(the_desk().sick))
        self.assertIn("bios area 3", self.failures(the_desk().sick)[0])

    def test_the_board_that_died_tells_what_it_had_printed(self) -> None:
        printed, whole = ((self.results / f"rack1-board{number}/02_selftest.txt").read_bytes() for number in (3, 1))
        self.assertGreater(len(printed), LONG)
        parts, all_parts = (re.findall(rb"##### (.+) test begin", output) for output in (printed, whole))
        self.assertGreater(len(parts), 5)
        self.assertEqual(all_parts[:len(parts)], parts)
        self.assertGreater(len(all_parts), len(parts))
        self.assertIn("the board was lost", self.facts(the_desk().dying, "02_selftest")["problem"])
        self.assertEqual(self.end_of(the_desk().dying, "02_selftest")[0], "ERROR")

    def test_the_board_that_died_runs_nothing_more_and_is_not_taken_for_good(self) -> None:
        self.assertEqual((self.results / "rack1-board3/03_type_after_it.txt").read_bytes(), b"")
        self.assertRegex(self.facts(the_desk().dying, "03_type_after_it")["problem"], "^not run: the board was lost")
        self.assertEqual(self.end_of(the_desk().dying, "03_type_after_it")[0], "ERROR")

    def test_the_board_that_died_cost_only_itself(self) -> None:
        lost = self.facts(the_desk().dying, "02_selftest")["ended"]
        for host in (the_desk().healthy, the_desk().sick):
            self.assertLess(self.facts(host, "03_type_after_it")["ended"], lost)

    def test_the_fleet_has_one_page(self) -> None:
        page = (self.results / "fleet.html").read_text(encoding="utf-8")
        for host in (the_desk().healthy, the_desk().sick, the_desk().dying):
            self.assertIn(host.name, page)
            self.assertIn(serial_of(host), page)
        self.assertIn("the board was lost", page)

    def test_the_fleet_has_one_junit_file(self) -> None:
        root = ElementTree.parse(self.results / "fleet.xml").getroot()
        cases = {name: [] for name in ("failure", "error")}
        for kind, found in cases.items():
            for case in root.iter("testcase"):
                found += [ElementTree.tostring(case, "unicode")] if case.find(kind) is not None else []
        self.assertEqual(len(cases["failure"]), 1, cases)
        self.assertIn("bios area 3", cases["failure"][0])
        self.assertEqual(len(cases["error"]), 2, cases)  # the self-test that was cut off, and the check after it
        for host in (the_desk().healthy, the_desk().sick, the_desk().dying):
            self.assertIn(host.name, ElementTree.tostring(root, "unicode"))

    def test_the_verdicts_are_those_of_the_report(self) -> None:
        for host, status in ((the_desk().healthy, 0), (the_desk().sick, 1), (the_desk().dying, 3)):
            self.assertEqual(report(self.results / host.name / "02_selftest.txt"), status, host.name)


INVENTORY = """
boards:
  hosts:
    rack1-board1: {ansible_host: 192.0.2.11}
    rack1-board4: {ansible_host: 192.0.2.14}
    rack1-board9: {ansible_host: 192.0.2.99}
  vars:
    ansible_user: root
    ansible_ssh_private_key_file: ~/.ssh/boards
    kestro_test_binary: %s
    kestro_test_checks:
      - {name: selftest, words: board_test board_onekey_test, limit: 4}
      - {name: type, words: board_test board_get_type, limit: 60}
      - {name: no such label, words: elabel_test elabel_read 0xffffffff 1, limit: 60}
"""


@cache
def second_run() -> tuple[int, str]:
    """One board hangs, one is not there; the program is brought as a file."""
    (the_desk().tree / "second.yml").write_text(INVENTORY % (BUILD / "kestro_test"), encoding="utf-8")
    status, said = the_desk().run("ansible-playbook -e kestro_test_results=$PWD/second -i second.yml "
                                  "fleet/ansible/check.yml")
    keep(the_desk().tree / "second", "ansible_hang", said)
    return status, said


class BoardsThatDoNotAnswer(unittest.TestCase):
    def setUp(self) -> None:
        self.status, self.said = second_run()
        self.results = RESULTS / "ansible_hang"

    def facts(self, name: str) -> dict:
        return yaml.safe_load((self.results / f"{name}.facts.yaml").read_text(encoding="utf-8"))

    def test_a_check_that_hangs_is_ended_and_the_next_one_runs(self) -> None:
        facts = self.facts("rack1-board4/01_selftest")
        self.assertEqual((facts["problem"], facts["status"]), ("the time limit of 4 s was over", 128 + 15))
        self.assertEqual(report(self.results / "rack1-board4/01_selftest.txt"), 3)
        self.assertGreater((self.results / "rack1-board4/01_selftest.txt").stat().st_size, LONG)
        self.assertEqual(self.facts("rack1-board4/02_type")["status"], 0)
        self.assertIn(b"type:0x", (self.results / "rack1-board4/02_type.txt").read_bytes())

    def test_nothing_of_it_runs_on(self) -> None:
        ended = the_desk().network.ssh(the_desk().hanging, "ps -e -o comm=")
        self.assertNotIn("kestro_test", ended.stdout)
        self.assertNotIn("sleep", ended.stdout)

    def test_a_board_that_is_not_there_is_on_the_page(self) -> None:
        self.assertRegex(self.facts("rack1-board9/01_selftest")["problem"], "not run: the board was lost .*192.0.2.99")
        self.assertIn("rack1-board9", (self.results / "fleet.html").read_text(encoding="utf-8"))

    def test_a_status_of_255_is_the_commands_and_no_lost_board(self) -> None:
        facts = self.facts("rack1-board1/03_no_such_label")
        self.assertEqual(facts["status"], 255)
        self.assertNotIn("problem", facts)
        self.assertEqual(report(self.results / "rack1-board1/03_no_such_label.txt"), 1)

    def test_the_others_pass(self) -> None:
        self.assertEqual(report(self.results / "rack1-board1/01_selftest.txt"), 0)
        self.assertEqual(self.status, 2, self.said)

    def test_a_program_brought_as_a_file_is_copied_once(self) -> None:
        said = the_desk().run("ansible-playbook -e kestro_test_results=$PWD/third -e kestro_test_fail=false "
                        "--limit rack1-board1,localhost -i second.yml fleet/ansible/check.yml")
        self.assertEqual(said[0], 0, said[1])
        self.assertRegex(said[1], r"rack1-board1 +: ok=\d+ +changed=0 ")
        ended = the_desk().network.ssh(the_desk().healthy, "cat /usr/bin/kestro_test | sha256sum")
        self.assertEqual(ended.stdout.split()[0], call("sha256sum", BUILD / "kestro_test").split()[0])
