"""Which source files can be read by one compiler run: most of the time for a small file goes into the headers that all
of them read.

usage: together.py SIZE FILE...

Prints a line per group of at most SIZE files, the files separated by semicolons. No file of a group uses a name that
another one declares outside of functions for itself: together they would mean the same thing, or hide one another.
"""

import re
import sys
from pathlib import Path

# The formatter puts what stands in a namespace, and nothing else, at the start of a line.
OUTER_NAME = re.compile(r"^(?!namespace|using|#|//)[A-Za-z_][^\n({=;]*?\b(\w+)\s*(?:\[[^]\n]*\]\s*)?[({=;]", re.MULTILINE)
ALIAS = re.compile(r"^using (\w+) =", re.MULTILINE)
WORD = re.compile(r"[A-Za-z_]\w*")
COMMENT_OR_TEXT = re.compile(r'//[^\n]*|"(?:\\.|[^"\\\n])*"|^\s*#[^\n]*', re.MULTILINE)
ANONYMOUS = re.compile(r"^namespace \{\n(.*?)^\} // namespace$", re.MULTILINE | re.DOTALL)


def own_names(text: str) -> set[str]:
    """What a file declares for itself alone."""
    found = set()
    for body in ANONYMOUS.findall(text):
        found.update(OUTER_NAME.findall(body), ALIAS.findall(body))
    return found


def used_names(text: str) -> set[str]:
    return set(WORD.findall(COMMENT_OR_TEXT.sub("", text)))


def groups(files: list[Path], size: int) -> list[list[Path]]:
    found: list[tuple[list[Path], set[str], set[str]]] = []
    for file in files:
        text = file.read_text(encoding="utf-8")
        own, used = own_names(text), used_names(text)
        for group, owned, words in found:
            if len(group) < size and not owned & used and not own & words:
                break
        else:
            group, owned, words = [], set(), set()
            found.append((group, owned, words))
        group.append(file)
        owned |= own
        words |= used
    return [group for group, _, _ in found]


def main() -> None:
    for group in groups([Path(name) for name in sys.argv[2:]], int(sys.argv[1])):
        print(";".join(map(str, group)))


if __name__ == "__main__":
    main()
