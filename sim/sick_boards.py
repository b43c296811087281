"""Lists the sick boards of the delivered chassis with their fault and what their self-test shows.

usage: sick_boards.py FILE     writes the list into the file, between its marks
"""

import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

FOLDER = Path(__file__).resolve().parent / "chassis/sick"
BEGIN, END = "<!-- sick boards -->\n", "<!-- end of the sick boards -->\n"
SEATS = {"9": "mpu_master", "10": "mpu_slave", "7": "lpu"}


def printable(line: str) -> str:
    """What stands in a table: no bar, and bytes that are no text as dots."""
    text = "".join(sign if sign.isprintable() else "." for sign in line.strip())
    return "`" + text.replace("|", "/") + "`"


def shown(name: str) -> str:
    lines = (FOLDER / f"{name}.lines").read_text(encoding="utf-8", errors="replace").splitlines()
    added = [line[1:] for line in lines if line.startswith("+") and line[1:].strip()]
    if added:
        more = len(added) - 1
        return printable(added[0]) + (f" and {more} more" if more else "")
    return "misses " + printable(lines[0][1:])


def row(file: Path) -> str:
    board = ElementTree.parse(file).getroot()
    return f"| `{file.stem}` | {SEATS[board.get('slot', '')]} | {board.get('title')} | {shown(file.stem)} |\n"


def listed() -> str:
    head = "| Board | Seat | Fault | The self-test shows |\n| --- | --- | --- | --- |\n"
    return head + "".join(row(file) for file in sorted(FOLDER.glob("*.xml")))


def with_list(text: str) -> str:
    """The text with the list of now between its marks."""
    return text[:text.index(BEGIN) + len(BEGIN)] + listed() + text[text.index(END):]


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    document = Path(sys.argv[1])
    document.write_text(with_list(document.read_text(encoding="utf-8")), encoding="utf-8")
