"""Boards in networks of their own, checked as docs/fleet.md says: with Ansible and with LAVA.

usage: fleet_test.py SOURCE_DIR BUILD_DIR     as root; what came out stays in BUILD_DIR/tests/fleet
"""

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from datetime import datetime
from functools import cache
from pathlib import Path
from xml.etree import ElementTree

sys.path.insert(0, str(Path(sys.argv[1]) / "tests/docs"))
import hosts
import yaml
from boards import add_board, make_package, serial_of
from document import read_document
from hosts import Host, Network, call

SOURCE, BUILD = (Path(word).resolve() for word in sys.argv[1:3])
RESULTS = BUILD / "tests/fleet"
DOCUMENT = read_document(SOURCE / "docs/fleet.md", "docs/fleet.md")
# In the middle of the self-test, some hundred lines from its begin.
HANG = "drv_rtc_read_time = hang\n"
LONG = 5000  # bytes, less than it prints until then


def command(program: str) -> str:
    found = [each.text for each in DOCUMENT.commands if each.text.startswith(program + " ")]
    assert len(found) == 1, f"docs/fleet.md has {len(found)} commands of {program}"
    return found[0]


class Desk:
    """The network, its hosts, and a tree in which the document's commands are run. The addresses are the document's."""

    def __init__(self, place: Path) -> None:
        self.network = Network(place, SOURCE, BUILD)
        self.station = self.network.add("station")  # .10
        self.healthy = add_board(self.network, "rack1-board1")
        self.sick = add_board(self.network, "rack1-board2", sick="bios_area_damaged")
        self.dying = add_board(self.network, "rack1-board3", script=HANG)
        self.hanging = add_board(self.network, "rack1-board4", script=HANG)
        self.tree = place / "tree"
        self.home = place / "home"
        self.lay_out_tree()
        self.lay_out_station()
        for host in self.network.hosts:
            self.network.start(host)

    def lay_out_tree(self) -> None:
        shutil.copytree(SOURCE / "fleet", self.tree / "fleet", ignore=shutil.ignore_patterns("__pycache__"))
        for name, text in DOCUMENT.files.items():
            (self.tree / name).write_text(text, encoding="utf-8")
        (self.tree / "packages").mkdir()
        shutil.copy(make_package(self.network), self.tree / "packages/kestro-test.deb")
        (self.home / ".ssh").mkdir(parents=True, mode=0o700)
        shutil.copy(self.network.key, self.home / ".ssh/boards")
        call("mount", "-t", "tmpfs", "tmpfs", "/etc/lava-dispatcher")
        for key in (self.network.key, self.network.key.with_suffix(".pub")):
            shutil.copy(key, f"/etc/lava-dispatcher/boards{key.suffix}")

    def lay_out_station(self) -> None:
        """The host that LAVA logs in to, and from which boards are reached."""
        self.station.write("usr/local/bin/kestro_report", f'#!/bin/sh\nexec {SOURCE}/report/bin/kestro_report "$@"\n', 0o755)
        self.station.write("etc/board/key", self.network.key.read_text(encoding="utf-8"), 0o600)
        self.station.write("etc/board/known_hosts", self.network.known_hosts.read_text(encoding="utf-8"))
        self.station.write("etc/ssh/ssh_config", "IdentityFile /etc/board/key\nGlobalKnownHostsFile /etc/board/known_hosts\n")

    @property
    def environment(self) -> dict[str, str]:
        git = f"[url \"file://{self.network.place}/git/\"]\n    insteadOf = https://git.example.com/\n[safe]\n    directory = *\n"
        (self.home / ".gitconfig").write_text(git, encoding="utf-8")
        common = f"-o UserKnownHostsFile={self.network.known_hosts}"
        return {"PATH": f"{SOURCE}/report/bin:/usr/sbin:/usr/bin:/sbin:/bin", "HOME": str(self.home), "LC_ALL": "C.UTF-8",
                "ANSIBLE_SSH_COMMON_ARGS": common, "PYTHONDONTWRITEBYTECODE": "1", "TERM": "dumb"}

    def start(self, text: str) -> subprocess.Popen:
        return subprocess.Popen(["bash", "-c", text], cwd=self.tree, env=self.environment, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def run(self, text: str) -> tuple[int, str]:
        process = self.start(text)
        said = process.communicate(timeout=300)[0]
        return process.returncode, said


DESK: Desk


def until(holds, seconds: float, what: str) -> None:
    end = time.monotonic() + seconds
    while not holds():
        if time.monotonic() > end:
            raise AssertionError(f"not within {seconds} s: {what}")
        time.sleep(0.05)


def report(*words: str | Path) -> int:
    return subprocess.run([SOURCE / "report/bin/kestro_report", "read", "--quiet", *words], check=False).returncode


@cache
def ansible_run() -> tuple[int, str]:
    """The document's command on three boards, of which the third dies while its self-test runs."""
    process = DESK.start(command("ansible-playbook"))
    output = DESK.tree / "fleet-results/rack1-board3/02_selftest.txt"
    try:
        until(lambda: process.poll() is not None or output.exists() and output.stat().st_size > LONG, 180,
              "the third board has printed a part of its self-test")
        DESK.dying.cut()
        said = process.communicate(timeout=300)[0]
    finally:
        process.kill()
    keep(DESK.tree / "fleet-results", "ansible", said)
    return process.returncode, said


def keep(folder: Path, name: str, log: str) -> None:
    (RESULTS / f"{name}.log").write_text(log, encoding="utf-8")
    shutil.copytree(folder, RESULTS / name)


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
        ended = DESK.network.ssh(DESK.healthy, "command -v python3 || ls /usr/bin/python3*")
        self.assertNotEqual(ended.returncode, 0, ended)

    def test_the_package_is_on_the_boards(self) -> None:
        for host in (DESK.healthy, DESK.sick):
            ended = DESK.network.ssh(host, "dpkg-query --show kestro-test; ls /tmp/*.deb")
            self.assertEqual(ended.stdout.split(), ["kestro-test", "1.0"], ended)

    def test_serial_numbers_are_the_boards_own(self) -> None:
        for host in (DESK.healthy, DESK.sick, DESK.dying):
            self.assertEqual(self.facts(host, "02_selftest")["serial"], serial_of(host))
            begin = self.lines(host, "02_selftest")[1]["testRunArtifact"]["testRunStart"]
            self.assertEqual(begin["dutInfo"]["hardwareInfos"][0]["serialNumber"], serial_of(host))
            self.assertEqual(begin["dutInfo"]["dutInfoId"], host.name)

    def test_the_healthy_board_passes(self) -> None:
        for check in ("01_type", "02_selftest", "03_type_after_it"):
            self.assertEqual(self.facts(DESK.healthy, check)["status"], 0)
            self.assertNotIn("problem", self.facts(DESK.healthy, check))
        self.assertEqual(self.end_of(DESK.healthy, "02_selftest"), ("COMPLETE", "PASS"))

    def test_what_was_printed_is_there_byte_for_byte(self) -> None:
        words = ["ssh", "-i", str(DESK.network.key), "-o", f"UserKnownHostsFile={DESK.network.known_hosts}",
                 f"root@{DESK.healthy.address}", "kestro_test board_test board_get_type"]
        printed = subprocess.run(words, capture_output=True, check=True, stdin=subprocess.DEVNULL).stdout
        self.assertEqual((self.results / "rack1-board1/01_type.txt").read_bytes(), printed)
        self.assertIn(b"\r\n", printed)

    def test_the_sick_board_fails_its_sick_part_only(self) -> None:
        self.assertEqual(self.end_of(DESK.sick, "02_selftest"), ("COMPLETE", "FAIL"))
        self.assertEqual(len(self.failures(DESK.sick)), 1, self.failures(DESK.sick))
        self.assertIn("bios area 3", self.failures(DESK.sick)[0])

    def test_the_board_that_died_tells_what_it_had_printed(self) -> None:
        printed, whole = ((self.results / f"rack1-board{number}/02_selftest.txt").read_bytes() for number in (3, 1))
        self.assertGreater(len(printed), LONG)
        parts, all_parts = (re.findall(rb"##### (.+) test begin", output) for output in (printed, whole))
        self.assertGreater(len(parts), 5)
        self.assertEqual(all_parts[:len(parts)], parts)
        self.assertGreater(len(all_parts), len(parts))
        self.assertIn("the board was lost", self.facts(DESK.dying, "02_selftest")["problem"])
        self.assertEqual(self.end_of(DESK.dying, "02_selftest")[0], "ERROR")

    def test_the_board_that_died_runs_nothing_more_and_is_not_taken_for_good(self) -> None:
        self.assertEqual((self.results / "rack1-board3/03_type_after_it.txt").read_bytes(), b"")
        self.assertRegex(self.facts(DESK.dying, "03_type_after_it")["problem"], "^not run: the board was lost")
        self.assertEqual(self.end_of(DESK.dying, "03_type_after_it")[0], "ERROR")

    def test_the_board_that_died_cost_only_itself(self) -> None:
        lost = self.facts(DESK.dying, "02_selftest")["ended"]
        for host in (DESK.healthy, DESK.sick):
            self.assertLess(self.facts(host, "03_type_after_it")["ended"], lost)

    def test_the_fleet_has_one_page(self) -> None:
        page = (self.results / "fleet.html").read_text(encoding="utf-8")
        for host in (DESK.healthy, DESK.sick, DESK.dying):
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
        for host in (DESK.healthy, DESK.sick, DESK.dying):
            self.assertIn(host.name, ElementTree.tostring(root, "unicode"))

    def test_the_verdicts_are_those_of_the_report(self) -> None:
        for host, status in ((DESK.healthy, 0), (DESK.sick, 1), (DESK.dying, 3)):
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
    (DESK.tree / "second.yml").write_text(INVENTORY % (BUILD / "kestro_test"), encoding="utf-8")
    status, said = DESK.run("ansible-playbook -e kestro_test_results=$PWD/second -i second.yml fleet/ansible/check.yml")
    keep(DESK.tree / "second", "ansible_hang", said)
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
        ended = DESK.network.ssh(DESK.hanging, "ps -e -o comm=")
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
        said = DESK.run("ansible-playbook -e kestro_test_results=$PWD/third -e kestro_test_fail=false "
                        "--limit rack1-board1,localhost -i second.yml fleet/ansible/check.yml")
        self.assertEqual(said[0], 0, said[1])
        self.assertRegex(said[1], r"rack1-board1 +: ok=\d+ +changed=0 ")
        ended = DESK.network.ssh(DESK.healthy, "cat /usr/bin/kestro_test | sha256sum")
        self.assertEqual(ended.stdout.split()[0], call("sha256sum", BUILD / "kestro_test").split()[0])


@cache
def lava_lines(board: str, limit: int = 60) -> list[dict]:
    """What the document's command prints, its job on that board."""
    job = yaml.safe_load((SOURCE / "fleet/lava/job.yaml").read_text(encoding="utf-8"))
    parameters = job["actions"][-1]["test"]["definitions"][0]["parameters"]
    parameters["KESTRO_START"] = parameters["KESTRO_START"].replace("192.0.2.11", board)
    parameters["KESTRO_LIMIT"] = limit
    (DESK.tree / "fleet/lava/job.yaml").write_text(yaml.safe_dump(job), encoding="utf-8")
    lay_out_repository()
    # A server of LAVA keeps its files there; these are this run's alone.
    if not os.path.ismount("/var/lib/lava"):
        Path("/var/lib/lava").mkdir(exist_ok=True)
        call("mount", "-t", "tmpfs", "tmpfs", "/var/lib/lava")
    status, said = DESK.run(command("lava-run"))
    (RESULTS / f"lava-{board}.log").write_text(said, encoding="utf-8")
    assert status == 0, said
    return [json.loads(re.sub(r': ! "', ': "', line)) for line in said.splitlines() if line.startswith("{")]


def lava_results(board: str) -> list[dict]:
    return [line["msg"] for line in lava_lines(board) if line["lvl"] == "results"]


def lay_out_repository() -> None:
    place = DESK.network.place / "git/kestro_test.git"
    if place.exists():
        return
    shutil.copytree(SOURCE / "fleet/lava", place / "fleet/lava")
    for words in ("init --quiet", "add .", "-c user.name=test -c user.email=root@localhost commit --quiet -m all"):
        call("git", "-C", place, *words.split(), env=DESK.environment)


class WithLava(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        # These bring kestro_test to the boards.
        ansible_run()
        second_run()

    def cases(self, board: str) -> list[dict]:
        return [each for each in lava_results(board) if each["definition"] == "0_selftest"]

    def results_of(self, board: str, name: str) -> list[str]:
        return [each["result"] for each in self.cases(board) if each["case"] == name]

    def test_the_job_ends_properly(self) -> None:
        for board in (DESK.healthy, DESK.sick):
            results = {each["case"]: each["result"] for each in lava_results(board.address) if each["definition"] == "lava"}
            self.assertEqual(results["job"], "pass")
            self.assertEqual(results["0_selftest"], "pass")

    def test_the_healthy_board_passes(self) -> None:
        cases = self.cases(DESK.healthy.address)
        self.assertEqual([each["case"] for each in cases if each["result"] == "fail"], [])
        self.assertGreater(sum(each["result"] == "pass" for each in cases), 300)
        self.assertEqual(self.results_of(DESK.healthy.address, "verdict"), ["pass"])

    def test_the_sick_board_fails_its_sick_part_only(self) -> None:
        cases = self.cases(DESK.sick.address)
        failed = [f"{each.get('set')} {each['case']}" for each in cases if each["result"] == "fail"]
        self.assertEqual(len(failed), 2, failed)
        self.assertRegex(failed[0], "^board_mng .*bios_area_3")
        self.assertEqual(failed[1], "None verdict")

    def test_measurements_are_numbers_with_units(self) -> None:
        cases = self.cases(DESK.healthy.address)
        measured = [each for each in cases if "measurement" in each]
        self.assertTrue([each for each in measured if each.get("units") == "mV" and each["set"] == "voltage"], cases)
        for each in measured:
            float(each["measurement"])

    def test_what_was_found_before_a_board_hangs_comes_at_once(self) -> None:
        limit = 6
        lines = lava_lines(DESK.hanging.address, limit)
        results = [line for line in lines if line["lvl"] == "results" and line["msg"]["definition"] == "0_selftest"]
        self.assertGreater(sum(line["msg"]["result"] == "pass" for line in results), 100)
        verdict = results.pop()
        self.assertEqual((verdict["msg"]["case"], verdict["msg"]["result"]), ("verdict", "fail"))
        waited = datetime.fromisoformat(verdict["dt"]) - datetime.fromisoformat(results[-1]["dt"])
        self.assertGreater(waited.total_seconds(), limit / 2)

    def test_a_board_ends_what_hangs_with_the_connection(self) -> None:
        lava_lines(DESK.hanging.address, 6)
        ended = DESK.network.ssh(DESK.hanging, "ps -e -o comm=")
        self.assertNotIn("kestro_test", ended.stdout)

    def test_every_case_arrives(self) -> None:
        """As many as the report has, so that no signal was lost between other lines."""
        output = RESULTS / "ansible/rack1-board1/02_selftest.jsonl"
        printed = subprocess.run([sys.executable, "-B", SOURCE / "fleet/lava/kestro-lava", "--print", output],
                                 capture_output=True, text=True, check=True).stdout
        self.assertEqual(len(self.cases(DESK.healthy.address)), printed.count("lava-test-case "))


class TheHosts(unittest.TestCase):
    """The test of the test: they take keys only."""

    def test_without_a_key_nobody_gets_in(self) -> None:
        ended = subprocess.run(["ssh", "-o", "BatchMode=yes", "-o", f"UserKnownHostsFile={DESK.network.known_hosts}",
                                "-o", "IdentityAgent=none", f"root@{DESK.healthy.address}", "true"], capture_output=True,
                               text=True, check=False, env={"HOME": "/nowhere", "PATH": os.environ["PATH"]})
        self.assertEqual(ended.returncode, 255)
        self.assertIn("Permission denied (publickey)", ended.stderr)


def main() -> int:
    global DESK
    if why := hosts.needs_root():
        print(f"tests/fleet: {why}", file=sys.stderr)
        return 1
    hosts.in_own_namespaces()
    shutil.rmtree(RESULTS, ignore_errors=True)
    RESULTS.mkdir(parents=True)
    place = Path(tempfile.mkdtemp(prefix="fleet."))
    DESK = Desk(place)
    try:
        run = unittest.main(argv=[sys.argv[0], *sys.argv[3:]], exit=False, verbosity=2)
    finally:
        DESK.network.close()
        place.rmdir()
    return 0 if run.result.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
