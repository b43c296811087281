"""Hosts in network namespaces: each has an SSH server that takes keys only, files of its own and a simulated chassis.

All of it lies in the namespaces of the process that makes it (see in_own_namespaces) and ends with that process.
"""

import os
import shlex
import stat
import subprocess
import sys
from dataclasses import dataclass, field
from pathlib import Path

NETWORK = "192.0.2"  # for documentation and examples: nobody's
BRIDGE = "boards"
OUTSIDE = "KESTRO_FLEET_OUTSIDE"  # the mounts of who started the test


def needs_root() -> str:
    """What to tell who is not root; nothing to root."""
    return "" if os.geteuid() == 0 else "needs root, for network namespaces: run it with sudo"


def is_inside() -> bool:
    return os.environ.get(OUTSIDE, own_mounts()) != own_mounts()


def own_mounts() -> str:
    return os.readlink("/proc/self/ns/mnt")


def in_own_namespaces() -> None:
    """Starts this very program again where networks, mounts and processes are its own, and ends as it does."""
    if is_inside():
        return
    words = ["unshare", "--net", "--mount", "--pid", "--fork", "--kill-child=KILL", "--mount-proc", "--"]
    ended = subprocess.run([*words, sys.executable, "-B", *sys.argv], check=False,
                           env=os.environ | {OUTSIDE: own_mounts()})
    sys.exit(ended.returncode if ended.returncode >= 0 else 1)


def call(*words: str | Path, **more) -> str:
    ended = subprocess.run([str(word) for word in words], capture_output=True, text=True, check=False, **more)
    if ended.returncode != 0:
        raise RuntimeError(f"{shlex.join(map(str, words))}: {ended.stderr.strip() or ended.stdout.strip()}")
    return ended.stdout


SSHD = """\
HostKey /etc/board/host_key
AuthorizedKeysFile /etc/board/authorized_keys
PermitRootLogin prohibit-password
PasswordAuthentication no
KbdInteractiveAuthentication no
UsePAM no
Subsystem sftp internal-sftp
"""

START = """\
set -e
mount -t overlay overlay -o lowerdir=/,upperdir="$1/upper",workdir="$1/work" "$1/root"
mount -t proc proc "$1/root/proc"
mount --rbind /dev "$1/root/dev"
for place in tmp run root; do mount -t tmpfs tmpfs "$1/root/$place"; done
mkdir "$1/root/run/sshd"
for place in "$2" "$3"; do mkdir -p "$1/root$place"; mount --bind "$place" "$1/root$place"; done
exec chroot "$1/root" /usr/sbin/sshd -D -e -f /etc/board/sshd_config
"""


@dataclass
class Host:
    name: str
    address: str
    place: Path
    process: subprocess.Popen | None = None

    @property
    def upper(self) -> Path:
        """What differs from this machine's files."""
        return self.place / "upper"

    def write(self, path: str, text: str, mode: int = 0o644) -> None:
        file = self.upper / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
        file.chmod(mode)

    def lack(self, path: Path) -> None:
        """The host, yet to be started, has no such file, whatever this machine has."""
        hidden = self.upper / path.relative_to("/")
        hidden.parent.mkdir(parents=True, exist_ok=True)
        os.mknod(hidden, stat.S_IFCHR | 0o600, os.makedev(0, 0))  # as the mount of its files wants it

    def cut(self) -> None:
        """The link is gone without a word, and then the host: nothing tells those that talk to it."""
        call("ip", "link", "set", self.name, "down")
        self.stop()

    def stop(self) -> None:
        if self.process is not None:
            self.process.kill()
            self.process.wait()
            self.process = None


@dataclass
class Network:
    """A bridge with this process at the address .1."""
    place: Path
    source: Path
    build: Path
    hosts: list[Host] = field(default_factory=list)

    def __post_init__(self) -> None:
        if not is_inside():
            raise RuntimeError("call in_own_namespaces() first: nothing here may touch the mounts of this machine")
        # Everything that is mounted from here on is nobody else's; names of namespaces stand in /run.
        call("mount", "--make-rprivate", "/")
        call("mount", "-t", "tmpfs", "tmpfs", "/run")
        call("mount", "-t", "tmpfs", "tmpfs", self.place)
        call("ip", "link", "set", "lo", "up")
        call("ip", "link", "add", BRIDGE, "type", "bridge")
        call("ip", "address", "add", f"{NETWORK}.1/24", "dev", BRIDGE)
        call("ip", "link", "set", BRIDGE, "up")
        call("ip", "route", "add", "default", "via", f"{NETWORK}.1")
        call("ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", self.key)

    @property
    def key(self) -> Path:
        return self.place / "key"

    @property
    def known_hosts(self) -> Path:
        return self.place / "known_hosts"

    def add(self, name: str) -> Host:
        """A host with its files, not yet started: what differs from this machine can still be written."""
        host = Host(name, f"{NETWORK}.{10 + len(self.hosts)}", self.place / name)
        for folder in ("upper/etc/board", "work", "root"):
            (host.place / folder).mkdir(parents=True)
        # Files of a host belong to root, as SSH wants it.
        call("ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", host.upper / "etc/board/host_key")
        host.write("etc/board/sshd_config", SSHD)
        host.write("etc/board/authorized_keys", self.key.with_suffix(".pub").read_text(encoding="utf-8"), 0o600)
        words = (host.upper / "etc/board/host_key.pub").read_text(encoding="utf-8").split()
        with self.known_hosts.open("a", encoding="utf-8") as known:
            known.write(f"{host.address} {words[0]} {words[1]}\n")
        self.connect(host)
        self.hosts.append(host)
        return host

    def connect(self, host: Host) -> None:
        call("ip", "netns", "add", host.name)
        call("ip", "link", "add", host.name, "type", "veth", "peer", "name", "eth0", "netns", host.name)
        call("ip", "link", "set", host.name, "master", BRIDGE, "up")
        for words in ("link set lo up", f"address add {host.address}/24 dev eth0", "link set eth0 up"):
            call("ip", "-n", host.name, *words.split())

    def start(self, host: Host) -> None:
        log = (host.place / "sshd.log").open("wb")
        host.process = subprocess.Popen(
            ["ip", "netns", "exec", host.name, "unshare", "--mount", "--pid", "--fork", "--kill-child=KILL", "--",
             "sh", "-c", START, "sh", str(host.place), str(self.source), str(self.build)], stdin=subprocess.DEVNULL,
            stdout=log, stderr=log)

    def close(self) -> None:
        for host in self.hosts:
            host.stop()
        call("umount", "--lazy", self.place)

    def ssh(self, host: Host, *words: str, **more) -> subprocess.CompletedProcess:
        return subprocess.run(["ssh", "-o", "BatchMode=yes", "-o", f"UserKnownHostsFile={self.known_hosts}",
                               "-o", "ConnectTimeout=5", "-o", "ConnectionAttempts=10", "-i", str(self.key),
                               f"root@{host.address}", *words], capture_output=True, text=True, check=False, **more)
