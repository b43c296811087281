"""The desk: the network with its boards, and a tree in which the commands of docs/fleet.md are run."""

import shutil
import subprocess
import sys
import tempfile
import time
from functools import cache
from pathlib import Path

sys.path.insert(0, str(Path(sys.argv[1]) / "tests/docs"))
from boards import add_board, make_package
from document import read_document
from hosts import Network, call

SOURCE, BUILD = (Path(word).resolve() for word in sys.argv[1:3])
RESULTS = BUILD / "fleet-artefacts"
# In the middle of the self-test, some hundred lines from its begin.
HANG = "drv_rtc_read_time = hang\n"
REPORT_START = '#!/bin/sh\nexec {source}/report/bin/kestro_report "$@"\n'
SSH_CONFIG = "IdentityFile /etc/board/key\nGlobalKnownHostsFile /etc/board/known_hosts\n"
GIT_CONFIG = """[url "file://{place}/git/"]
    insteadOf = https://git.example.com/
[safe]
    directory = *
"""
DOCUMENT = read_document(SOURCE / "docs/fleet.md", "docs/fleet.md")


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
        self.station.write("usr/local/bin/kestro_report", REPORT_START.format(source=SOURCE), 0o755)
        self.station.write("etc/board/key", self.network.key.read_text(encoding="utf-8"), 0o600)
        known = self.network.known_hosts.read_text(encoding="utf-8")
        self.station.write("etc/board/known_hosts", known)
        self.station.write("etc/ssh/ssh_config", SSH_CONFIG)

    @property
    def environment(self) -> dict[str, str]:
        (self.home / ".gitconfig").write_text(GIT_CONFIG.format(place=self.network.place), encoding="utf-8")
        common = f"-o UserKnownHostsFile={self.network.known_hosts}"
        return {"PATH": f"{SOURCE}/report/bin:/usr/sbin:/usr/bin:/sbin:/bin", "HOME": str(self.home),
                "LC_ALL": "C.UTF-8", "ANSIBLE_SSH_COMMON_ARGS": common,
                "PYTHONDONTWRITEBYTECODE": "1", "TERM": "dumb"}

    def start(self, text: str) -> subprocess.Popen:
        return subprocess.Popen(["bash", "-c", text], cwd=self.tree, env=self.environment, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def close(self) -> None:
        place = self.network.place
        self.network.close()
        place.rmdir()

    def run(self, text: str) -> tuple[int, str]:
        process = self.start(text)
        said = process.communicate(timeout=300)[0]
        return process.returncode, said


@cache
def the_desk() -> Desk:
    """One for all tests."""
    return Desk(Path(tempfile.mkdtemp(prefix="fleet.")))


def until(holds, seconds: float, what: str) -> None:
    end = time.monotonic() + seconds
    while not holds():
        if time.monotonic() > end:
            raise AssertionError(f"not within {seconds} s: {what}")
        time.sleep(0.05)


def report(*words: str | Path) -> int:
    return subprocess.run([SOURCE / "report/bin/kestro_report", "read", "--quiet", *words], check=False).returncode


def keep(folder: Path, name: str, log: str) -> None:
    (RESULTS / f"{name}.log").write_text(log, encoding="utf-8")
    shutil.copytree(folder, RESULTS / name)
