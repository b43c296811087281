"""Thresholds from a board description, with what it includes, in the way that the simulated chassis reads it."""

import xml.parsers.expat
from dataclasses import dataclass, field
from pathlib import Path

from kestro_report.errors import InputError

# What of a description is measured: module and node, and what the report calls its measurements.
MEASURED = {("sim_voltage", "rail"): "voltage", ("sim_temp", "sensor"): "temperature"}
THRESHOLDS = ("warning_low", "warning_high", "alarm_low", "alarm_high")
# No description is longer; what is, is none.
LONGEST = 8 << 20

Thresholds = dict[tuple[str, str], list[tuple[str, float, str]]]


@dataclass
class Reading:
    """Where the parser stands in one file, and what it has found there."""
    file: Path
    root: dict[str, str] = field(default_factory=dict)
    includes: list[str] = field(default_factory=list)
    place: list[tuple[str, str]] = field(default_factory=list)  # elements that are open, with their names
    found: dict[tuple[str, str], dict[str, tuple[float, str]]] = field(default_factory=dict)


def threshold_at(reading: Reading, attributes: dict[str, str], line: int) -> None:
    names = [name for _, name in reading.place]
    kind = MEASURED.get((names[1], names[2])) if len(names) == 5 else None
    element = attributes.get("name", "")
    if kind is None or element not in THRESHOLDS:
        return
    try:
        value = float(int(attributes.get("value", ""), 0))
    except ValueError:
        raise InputError(f"{reading.file}: line {line}: '{element}' wants a whole number as its value") from None
    reading.found.setdefault((kind, names[3]), {})[element] = (value, f"{reading.file.name}: line {line}")


def read_file(file: Path) -> Reading:
    """Entities are not followed: a description has none, and a hostile one could fill the memory."""
    reading = Reading(file)
    parser = xml.parsers.expat.ParserCreate()

    def begins(name: str, attributes: dict[str, str]) -> None:
        if not reading.place:
            reading.root = {"": name, **attributes}
        if name == "include":
            reading.includes.append(attributes.get("part", ""))
        reading.place.append((name, attributes.get("name", "")))
        threshold_at(reading, attributes, parser.CurrentLineNumber)

    def entity(*_: object) -> None:
        raise InputError(f"{file}: line {parser.CurrentLineNumber}: a board description declares no entities")

    parser.StartElementHandler = begins
    parser.EndElementHandler = lambda _: reading.place.pop()
    parser.EntityDeclHandler = entity
    try:
        data = file.read_bytes() if file.stat().st_size <= LONGEST else b""
        parser.Parse(data, True)
    except xml.parsers.expat.ExpatError as error:
        said = xml.parsers.expat.ErrorString(error.code)
        raise InputError(f"{file}: line {error.lineno}: no XML: {said}; a board description is wanted") from error
    except OSError as error:
        raise InputError(f"{file}: {error.strerror}; a board description is wanted") from error
    if reading.root.get("") not in ("board", "part"):
        raise InputError(f"{file}: line 1: a board description begins with <board>, this file with "
                         f"<{reading.root.get('', '')}>")
    return reading


def delivered() -> Path:
    """The chassis that comes with the simulator: in the tree, or where it is installed."""
    here = Path(__file__).resolve().parent
    places = (here.parents[1] / "sim/chassis", here.parents[1] / "kestro/chassis", Path("/usr/share/kestro/chassis"))
    return next((place for place in places if place.is_dir()), places[0])


def found_file(near: Path, folder: str, name: str) -> Path:
    """Beside the file that names it, above it, and in the delivered chassis."""
    places = [near.parent / folder, near.parent.parent / folder, delivered() / folder]
    for directory in places:
        if (file := directory / f"{name}.xml").is_file():
            return file
    raise InputError(f"{near}: there is no {folder}/{name}.xml beside it or in {delivered()}")


def laid_over(file: Path, depth: int = 0) -> dict[tuple[str, str], dict[str, tuple[float, str]]]:
    """What a file says lies over what it includes, and a board that is like another over that one."""
    if depth > 16:
        raise InputError(f"{file}: it includes itself")
    reading = read_file(file)
    below = [found_file(file, "boards", reading.root["like"])] if reading.root.get("like") else []
    below += [found_file(file, "parts", name) for name in reading.includes]
    merged: dict[tuple[str, str], dict[str, tuple[float, str]]] = {}
    for found in [*(laid_over(each, depth + 1) for each in below), reading.found]:
        for key, values in found.items():
            merged.setdefault(key, {}).update(values)
    return merged


def thresholds_of(file: Path) -> Thresholds:
    merged = laid_over(file)
    if not merged:
        raise InputError(f"{file}: it describes no thresholds; rails and sensors with alarm_low, alarm_high and the "
                         "like are wanted")
    return {key: [(name, value, where) for name, (value, where) in values.items()] for key, values in merged.items()}
