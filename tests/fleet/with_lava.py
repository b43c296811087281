"""Boards checked with LAVA, by its dispatcher, as docs/fleet.md says."""

import json
import os
import re
import shutil
import subprocess
import sys
import unittest
from functools import cache
from pathlib import Path

import yaml
from desk import RESULTS, SOURCE, command, the_desk
from hosts import call
from with_ansible import ansible_run, second_run

LIMIT = 15  # seconds for a check that hangs

@cache
def lava_lines(board: str, limit: int = 60) -> list[dict]:
    """What the document's command prints, its job on that board."""
    job = yaml.safe_load((SOURCE / "fleet/lava/job.yaml").read_text(encoding="utf-8"))
    parameters = job["actions"][-1]["test"]["definitions"][0]["parameters"]
    parameters["KESTRO_START"] = parameters["KESTRO_START"].replace("192.0.2.11", board)
    parameters["KESTRO_LIMIT"] = limit
    (the_desk().tree / "fleet/lava/job.yaml").write_text(yaml.safe_dump(job), encoding="utf-8")
    lay_out_repository()
    # A server of LAVA keeps its files there; these are this run's alone.
    if not os.path.ismount("/var/lib/lava"):
        Path("/var/lib/lava").mkdir(exist_ok=True)
        call("mount", "-t", "tmpfs", "tmpfs", "/var/lib/lava")
    status, said = the_desk().run(command("lava-run"))
    (RESULTS / f"lava-{board}.log").write_text(said, encoding="utf-8")
    assert status == 0, said
    return [json.loads(re.sub(r': ! "', ': "', line)) for line in said.splitlines() if line.startswith("{")]


def lava_results(board: str) -> list[dict]:
    return [line["msg"] for line in lava_lines(board) if line["lvl"] == "results"]


def lay_out_repository() -> None:
    place = the_desk().network.place / "git/kestro_test.git"
    if place.exists():
        return
    shutil.copytree(SOURCE / "fleet/lava", place / "fleet/lava")
    for words in ("init --quiet", "add .", "-c user.name=test -c user.email=root@localhost commit --quiet -m all"):
        call("git", "-C", place, *words.split(), env=the_desk().environment)


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
        for board in (the_desk().healthy, the_desk().sick):
            results = {each["case"]: each["result"] for each in lava_results(board.address) if each["definition"] == "lava"}
            self.assertEqual(results["job"], "pass")
            self.assertEqual(results["0_selftest"], "pass")

    def test_the_healthy_board_passes(self) -> None:
        cases = self.cases(the_desk().healthy.address)
        self.assertEqual([each["case"] for each in cases if each["result"] == "fail"], [])
        self.assertGreater(sum(each["result"] == "pass" for each in cases), 300)
        self.assertEqual(self.results_of(the_desk().healthy.address, "verdict"), ["pass"])

    def test_the_sick_board_fails_its_sick_part_only(self) -> None:
        cases = self.cases(the_desk().sick.address)
        failed = [f"{each.get('set')} {each['case']}" for each in cases if each["result"] == "fail"]
        self.assertEqual(len(failed), 2, failed)
        self.assertRegex(failed[0], "^board_mng .*bios_area_3")
        self.assertEqual(failed[1], "None verdict")

    def test_measurements_are_numbers_with_units(self) -> None:
        cases = self.cases(the_desk().healthy.address)
        measured = [each for each in cases if "measurement" in each]
        self.assertTrue([each for each in measured if each.get("units") == "mV" and each["set"] == "voltage"], cases)
        for each in measured:
            float(each["measurement"])

    def test_what_was_found_before_a_board_hangs_is_handed_on(self) -> None:
        lines = lava_lines(the_desk().hanging.address, LIMIT)
        results = [line["msg"] for line in lines if line["lvl"] == "results" and line["msg"]["definition"] == "0_selftest"]
        self.assertGreater(sum(each["result"] == "pass" for each in results), 100)
        self.assertEqual([each["case"] for each in results if each["result"] == "fail"], ["verdict"])

    def test_a_board_ends_what_hangs_with_the_connection(self) -> None:
        lava_lines(the_desk().hanging.address, LIMIT)
        ended = the_desk().network.ssh(the_desk().hanging, "ps -e -o comm=")
        self.assertNotIn("kestro_test", ended.stdout)

    def test_every_case_arrives(self) -> None:
        """As many as the report has, so that no signal was lost between other lines."""
        output = RESULTS / "ansible/rack1-board1/02_selftest.jsonl"
        printed = subprocess.run([sys.executable, "-B", SOURCE / "fleet/lava/kestro-lava", "--print", output],
                                 capture_output=True, text=True, check=True).stdout
        self.assertEqual(len(self.cases(the_desk().healthy.address)), printed.count("lava-test-case "))
