"""Hosts that are boards: each with a simulated chassis, its own serial number and kestro_test as a package."""

from pathlib import Path

from hosts import Host, Network, call

SERIAL = """  <module name="sim_identity">
    <node name="barcode">
      <entry name="0"><element name="text" text="{serial}"/></entry>
    </node>
  </module>
</board>
"""
HEALTHY = '<board name="healthy" title="As delivered." like="mpu" slot="9">\n</board>\n'

# What a board's own start of the program is: beside it lie the drivers, here those of the simulated chassis.
START = """#!/bin/sh
exec {build}/kestro_sim --board /etc/board/board.xml --state /var/lib/board --clock virtual {options}\
 --run /usr/bin/kestro_test -- "$@"
"""


def serial_of(host: Host) -> str:
    return f"KT-MPU-12511040{host.address.rsplit('.', 1)[1]}00"


def add_board(network: Network, name: str, sick: str = "", script: str = "") -> Host:
    """A board that is to be started; `sick` is one of sim/chassis/sick, `script` the probe's, for its drivers."""
    board = HEALTHY
    if sick:
        board = (network.source / f"sim/chassis/sick/{sick}.xml").read_text(encoding="utf-8")
    host = network.add(name)
    host.write("etc/board/board.xml", board.replace("</board>\n", SERIAL.format(serial=serial_of(host))))
    host.write("etc/board/script", script)
    options = "--script /etc/board/script" if script else ""
    host.write("usr/local/bin/kestro_test", START.format(build=network.build, options=options), 0o755)
    for program in Path("/usr/bin").glob("python3*"):
        host.lack(program)  # as many boards do
    return host


CONTROL = """Package: kestro-test
Version: {version}
Architecture: {architecture}
Maintainer: nobody <root@localhost>
Description: test harness of the board-support drivers
"""


def make_package(network: Network, version: str = "1.0") -> Path:
    """The program of this build as a package."""
    tree = network.place / f"package-{version}"
    (tree / "usr/bin").mkdir(parents=True)
    (tree / "DEBIAN").mkdir()
    program = tree / "usr/bin/kestro_test"
    program.write_bytes((network.build / "kestro_test").read_bytes())
    program.chmod(0o755)
    architecture = call("dpkg", "--print-architecture").strip()
    control = CONTROL.format(version=version, architecture=architecture)
    (tree / "DEBIAN/control").write_text(control, encoding="utf-8")
    package = network.place / f"kestro-test_{version}_{architecture}.deb"
    call("dpkg-deb", "--root-owner-group", "-Znone", "--build", tree, package)
    return package
