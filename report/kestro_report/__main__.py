"""Entry of the program: python3 -m kestro_report."""

import sys

from kestro_report.command_line import main

if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
