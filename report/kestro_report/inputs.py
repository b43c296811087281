"""The inputs of a reading: files, standard input, and the facts that lie beside a file."""

import re
import sys
from dataclasses import dataclass
from pathlib import Path
from typing import BinaryIO

import yaml

from kestro_report.errors import InputError

STATUS = re.compile(r"-?\d{1,5}|~|null|")
KNOWN_FACTS = ("dut", "serial", "name", "status", "problem", "command", "began", "ended", "location")


@dataclass(slots=True)
class Input:
    name: str
    stream: BinaryIO
    facts: dict[str, str]

    def read(self, size: int) -> bytes:
        """A pipe gives what has come; to wait for a whole chunk would hold back what a live run prints."""
        try:
            return getattr(self.stream, "read1", self.stream.read)(size)
        except OSError as error:
            raise cannot_read(self.name, error) from error


def cannot_read(name: str, error: OSError) -> InputError:
    return InputError(f"{name}: {error.strerror}; a file with the output of kestro_test is wanted")


def facts_beside(path: Path) -> dict[str, str]:
    """What NAME.facts.yaml tells of NAME.txt: whose output it is and how the run ended."""
    file = path.with_name(path.stem + ".facts.yaml")
    if not file.is_file():
        return {}
    try:
        # All are texts as they stand: the serial number 0042 is neither 42 nor 34.
        facts = yaml.load(file.read_text(encoding="utf-8"), Loader=yaml.BaseLoader)
    except (yaml.YAMLError, UnicodeDecodeError) as error:
        raise InputError(f"{file}: no YAML: {' '.join(str(error).split())}") from error
    if not isinstance(facts, dict):
        raise InputError(f"{file}: line 1: a list of names and values is wanted, such as 'serial: 2511040109'")
    for name in facts:
        if name not in KNOWN_FACTS:
            raise InputError(f"{file}: unknown name '{name}'; there are {', '.join(KNOWN_FACTS)}")
        if not isinstance(facts[name], str):
            raise InputError(f"{file}: '{name}' wants a text, such as 'serial: 2511040109'")
    if "status" in facts and not STATUS.fullmatch(facts["status"]):
        raise InputError(f"{file}: '{facts['status']}' is no status; the exit status is wanted as a number, below 0 that of "
                         "the signal")
    return {name: value for name, value in facts.items() if value not in ("", "~", "null")}


def check_input(name: str) -> None:
    """That it can be read, and its facts too. A fleet has more files than a process may hold open.

    What is no file, such as a pipe, gives what it has but once and is left alone."""
    path = Path(name)
    if name != "-" and (path.is_file() or path.is_dir() or not path.exists()):
        open_input(name, {}).stream.close()


def open_input(name: str, given: dict[str, str]) -> Input:
    if name == "-" and sys.stdin is None:
        raise InputError("standard input is closed; name a file with the output of kestro_test")
    if name == "-":
        return Input("standard input", sys.stdin.buffer, dict(given))
    path = Path(name)
    try:
        stream = path.open("rb")
        stream.peek(1)
    except OSError as error:
        raise cannot_read(name, error) from error
    return Input(name, stream, {**facts_beside(path), **given})
