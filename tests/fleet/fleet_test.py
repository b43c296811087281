"""Boards in networks of their own, checked as docs/fleet.md says: with Ansible and with LAVA.

usage: fleet_test.py SOURCE_DIR BUILD_DIR [TEST...]     as root; what came out stays in BUILD_DIR/fleet-artefacts
"""

import os
import shutil
import subprocess
import sys
import unittest

import hosts
from desk import RESULTS, the_desk
from with_ansible import BoardsThatDoNotAnswer, WithAnsible
from with_lava import WithLava

__all__ = ["BoardsThatDoNotAnswer", "WithAnsible", "WithLava"]


class TheHosts(unittest.TestCase):
    """The test of the test: they take keys only."""

    def test_without_a_key_nobody_gets_in(self) -> None:
        known = the_desk().network.known_hosts
        ended = subprocess.run(["ssh", "-o", "BatchMode=yes", "-o", f"UserKnownHostsFile={known}", "-o",
                                "IdentityAgent=none", f"root@{the_desk().healthy.address}", "true"],
                               capture_output=True, text=True, check=False,
                               env={"HOME": "/nowhere", "PATH": os.environ["PATH"]})
        self.assertEqual(ended.returncode, 255)
        self.assertIn("Permission denied (publickey)", ended.stderr)


def main() -> int:
    if why := hosts.needs_root():
        print(f"tests/fleet: {why}", file=sys.stderr)
        return 1
    hosts.in_own_namespaces()
    shutil.rmtree(RESULTS, ignore_errors=True)
    RESULTS.mkdir(parents=True)
    desk = the_desk()
    try:
        run = unittest.main(argv=[sys.argv[0], *sys.argv[3:]], exit=False, verbosity=2)
    finally:
        desk.close()
    return 0 if run.result.wasSuccessful() else 1


if __name__ == "__main__":
    sys.exit(main())
