"""Thresholds from a board description, with what it includes, in the way that the simulated chassis reads it."""

import xml.parsers.expat
from dataclasses import dataclass, field
from pathlib import Path

from kestro_report.errors import InputError, read_text_file

GREATEST, LEAST = "LESS_THAN_OR_EQUAL", "GREATER_THAN_OR_EQUAL"


@dataclass(slots=True, frozen=True)
class Threshold:
    """A bound that the description has for what the report calls so."""
    type: str
    severity: str
    value: float
    unit: str
    where: str


# Of what stands in a module and a node: the measurement's name, its unit, the bound's type and how much it weighs.
# Names are put together from the entry's number; a power supply's is slot * 10 + place.
MEASURED = {
    ("sim_voltage", "rail"): {
        "warning_low": ("voltage {entry}", "mV", LEAST, "warning"),
        "warning_high": ("voltage {entry}", "mV", GREATEST, "warning"),
        "alarm_low": ("voltage {entry}", "mV", LEAST, "alarm"),
        "alarm_high": ("voltage {entry}", "mV", GREATEST, "alarm")},
    ("sim_temp", "sensor"): {
        "warning_low": ("temperature {entry}", "degC", LEAST, "warning"),
        "warning_high": ("temperature {entry}", "degC", GREATEST, "warning"),
        "alarm_low": ("temperature {entry}", "degC", LEAST, "alarm"),
        "alarm_high": ("temperature {entry}", "degC", GREATEST, "alarm")},
    # A supply warns of a low input and gives up at a high one.
    ("sim_power", "supply"): {
        "feed_low": ("slot {slot} power {place} input voltage", "mV", LEAST, "warning"),
        "feed_high": ("slot {slot} power {place} input voltage", "mV", GREATEST, "alarm"),
        "temp_limit": ("slot {slot} power {place} temperature", "degC", GREATEST, "alarm"),
        "current_limit": ("slot {slot} power {place} output current", "mA", GREATEST, "alarm"),
        "rated": ("slot {slot} power {place} output power", "W", GREATEST, "alarm")},
}
ROOTS = ("board", "part", "chassis")
DEEPEST = 16

Path4 = tuple[str, ...]  # module, node, entry, element; shorter where all below it is meant
Laid = dict[Path4, tuple[float, str]]  # value and where it stands
Thresholds = dict[str, list[Threshold]]  # by the name, or the beginning of it, of what is measured


@dataclass
class Reading:
    """Where the parser stands in one file, and what it has found there, in the file's order."""
    file: Path
    root: dict[str, str] = field(default_factory=dict)
    includes: list[str] = field(default_factory=list)
    slots: list[dict[str, str]] = field(default_factory=list)
    place: list[tuple[str, str]] = field(default_factory=list)  # elements that are open, with their names
    found: list[tuple[Path4, tuple[float, str] | None]] = field(default_factory=list)  # None: removed


def begins(reading: Reading, tag: str, attributes: dict[str, str], line: int) -> None:
    if not reading.place:
        reading.root = {"": tag, **attributes}
    elif len(reading.place) == 1 and tag == "include":
        reading.includes.append(attributes.get("part", ""))
    elif len(reading.place) == 1 and tag == "slot":
        reading.slots.append(attributes)
    reading.place.append((tag, attributes.get("name", "")))
    open_now = reading.place[1:]
    # A board may change what belongs to the whole chassis; what it changes on other boards is not its own.
    if open_now[:1] == [("place", "chassis")]:
        del open_now[0]
    if tuple(tag for tag, _ in open_now) == ("module", "node", "entry", "element")[:max(len(open_now), 1)]:
        take(reading, tuple(name for _, name in open_now), attributes, line)


def take(reading: Reading, path: Path4, attributes: dict[str, str], line: int) -> None:
    if "remove" in attributes:
        if attributes["remove"] != "yes":
            raise InputError(f"{reading.file}: line {line}: remove='{attributes['remove']}' says nothing; write "
                             "remove='yes'")
        reading.found.append((path, None))
    elif len(path) == 4 and path[3] in MEASURED.get(path[:2], ()):
        try:
            value = float(int(attributes.get("value", ""), 0))
        except (ValueError, OverflowError):
            raise InputError(f"{reading.file}: line {line}: '{path[3]}' wants a whole number as its value") from None
        reading.found.append((path, (value, f"{reading.file.name}: line {line}: {path[3]}")))


def read_file(file: Path) -> Reading:
    """Entities are not followed: a description has none, and a hostile one could fill the memory."""
    reading = Reading(file)
    parser = xml.parsers.expat.ParserCreate()

    def entity(*_: object) -> None:
        raise InputError(f"{file}: line {parser.CurrentLineNumber}: a board description declares no entities")

    parser.StartElementHandler = lambda tag, given: begins(reading, tag, given, parser.CurrentLineNumber)
    parser.EndElementHandler = lambda _: reading.place.pop()
    parser.EntityDeclHandler = entity
    try:
        parser.Parse(read_text_file(file, "a board description"), True)
    except xml.parsers.expat.ExpatError as error:
        said = xml.parsers.expat.ErrorString(error.code)
        raise InputError(f"{file}: line {error.lineno}: no XML: {said}; a board description is wanted") from error
    if reading.root.get("") not in ROOTS:
        raise InputError(f"{file}: line 1: a board description begins with <board>, this file with "
                         f"<{reading.root.get('', '')}>")
    return reading


def delivered() -> Path:
    """The chassis that comes with the simulator: in the tree, or where it is installed."""
    here = Path(__file__).resolve().parent
    places = (here.parents[1] / "sim/chassis", here.parents[1] / "kestro-sim/chassis",
              Path("/usr/share/kestro-sim/chassis"))
    return next((place for place in places if place.is_dir()), places[0])


@dataclass(slots=True)
class Maker:
    """Lays files over each other. What a file names lies beside the user's own one, above it, or is delivered."""
    own: Path
    laid: Laid = field(default_factory=dict)

    def found_file(self, near: Path, folder: str, name: str) -> Path:
        places = [self.own.parent / folder, self.own.parent.parent / folder, delivered() / folder]
        for directory in places if name and "/" not in name else ():
            if (file := directory / f"{name}.xml").is_file():
                return file
        raise InputError(f"{near}: there is no {folder}/{name}.xml beside it or in {delivered()}")

    def lay(self, file: Path, depth: int = 0) -> Reading:
        """What a file says lies over what it includes, and a board that is like another over that one."""
        if depth > DEEPEST:
            raise InputError(f"{file}: it includes itself")
        reading = read_file(file)
        if depth == 0 and reading.root[""] == "board":
            self.lay_chassis()
        if reading.root.get("like"):
            self.lay(self.found_file(file, "boards", reading.root["like"]), depth + 1)
        for name in reading.includes:
            self.lay(self.found_file(file, "parts", name), depth + 1)
        for path, value in reading.found:
            self.change(path, value)
        return reading

    def lay_chassis(self) -> None:
        """A board sits in the delivered chassis, whose power supplies it reads as well."""
        chassis = delivered() / "chassis.xml"
        if chassis.is_file():
            self.lay(chassis, 1)

    def change(self, path: Path4, value: tuple[float, str] | None) -> None:
        if value is not None:
            self.laid[path] = value
            return
        for known in [known for known in self.laid if known[:len(path)] == path]:
            del self.laid[known]

    def lay_seat(self, reading: Reading) -> None:
        """Of a chassis as a whole it is the board at its seat that runs the program."""
        seat = reading.root.get("seat", "")
        for slot in reading.slots:
            if seat and slot.get("seat") == seat and slot.get("board"):
                self.lay(self.found_file(reading.file, "boards", slot["board"]), 1)


def names_of(entry: str) -> dict[str, str]:
    return {"entry": entry, "slot": entry[:-1], "place": entry[-1:]}


def thresholds_of(file: Path) -> Thresholds:
    maker = Maker(file)
    maker.lay_seat(maker.lay(file))
    if not maker.laid:
        raise InputError(f"{file}: it describes no thresholds; rails and sensors with alarm_low, alarm_high and the "
                         "like are wanted")
    thresholds: Thresholds = {}
    for (module, node, entry, element), (value, where) in maker.laid.items():
        name, unit, kind, severity = MEASURED[module, node][element]
        thresholds.setdefault(name.format(**names_of(entry)), []).append(Threshold(kind, severity, value, unit, where))
    return thresholds
