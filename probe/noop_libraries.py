#!/usr/bin/env python3
"""Writes a driver library without hardware: every operation of one library answers 0 and touches nothing.

kestro_test is linked against these libraries, so it needs neither a board's closed libraries nor the simulated
chassis to be built; the start-up benchmark runs on them.
"""

import argparse
import sys
from pathlib import Path

from interface import InterfaceError, read_interface


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--library", required=True, help="whose operations: a folder below include/")
    parser.add_argument("--output", type=Path, required=True, help="C file to write")
    parser.add_argument("headers", type=Path, nargs="+", help="driver interface headers")
    options = parser.parse_args()
    try:
        interface = read_interface(options.headers)
    except InterfaceError as error:
        print(f"noop_libraries: {error}", file=sys.stderr)
        return 2
    lines = ["#include <stdint.h>", ""]
    for operation in interface.operations:
        if operation.library == options.library:
            body = "" if operation.result == "void" else " return 0;"
            lines.append(f"{operation.result} {operation.name}(void);")
            lines.append(f"{operation.result} {operation.name}(void) {{{body} }}")
    options.output.write_text("\n".join(lines) + "\n", encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
