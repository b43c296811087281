"""Units of what is measured, and how far two values of one thing may lie apart."""

import math
import re
from dataclasses import dataclass, field

from kestro_report.errors import InputError

# Units of one quantity, each with its factor to the first of them.
QUANTITIES = ({"mV": 1.0, "V": 1000.0, "uV": 0.001}, {"mA": 1.0, "A": 1000.0, "uA": 0.001},
              {"mW": 1.0, "W": 1000.0, "uW": 0.001, "kW": 1e6},
              {"ms": 1.0, "s": 1000.0, "us": 0.001, "min": 60000.0},
              {"MHz": 1.0, "kHz": 0.001, "Hz": 1e-6, "GHz": 1000.0},
              {"byte": 1.0, "KiB": 1024.0, "MiB": 1048576.0, "GiB": 1073741824.0},
              {"Mbit/s": 1.0, "Gbit/s": 1000.0, "kbit/s": 0.001})
# These are the only ones of their quantity.
ALONE = ("degC", "percent", "rpm", "dBm", "count", "m")
UNITS = (*(unit for units in QUANTITIES for unit in units), *ALONE)


def factor_between(unit: str, wanted: str) -> float | None:
    """What a value is multiplied by to be one of the wanted unit; None where the units measure different things."""
    if unit == wanted:
        return 1.0
    for units in QUANTITIES:
        if unit in units and wanted in units:
            return units[unit] / units[wanted]
    return None


@dataclass(slots=True, frozen=True)
class Tolerance:
    """A part of the value, and what is always allowed: whichever is more."""
    part: float = 0.0
    absolute: float = 0.0
    unit: str = ""

    def allowed(self, value: float) -> float:
        return max(abs(value) * self.part, self.absolute) if math.isfinite(value) else self.absolute

    def said(self) -> str:
        both = [f"{self.part * 100:g} %"] if self.part else []
        both += [f"{self.absolute:g} {self.unit}".rstrip()] if self.absolute or not both else []
        return "any" if self.absolute == math.inf else " or ".join(both)


USUAL_PART = 0.05
ANY = Tolerance(0.0, math.inf)
# Where a part of the value says nothing: scales whose zero is no nothing, times that hang on what else the board does,
# and values that are so coarse that the next step is more than a small part. Counters count on from run to run.
DEFAULTS = {
    "degC": Tolerance(0.0, 10.0, "degC"), "percent": Tolerance(0.0, 10.0, "percent"), "dBm": Tolerance(0.0, 2.0, "dBm"),
    "ms": Tolerance(0.5, 1000.0, "ms"), "count": ANY, "mV": Tolerance(USUAL_PART, 10.0, "mV"),
    "mA": Tolerance(USUAL_PART, 50.0, "mA"), "W": Tolerance(USUAL_PART, 2.0, "W"),
    "rpm": Tolerance(USUAL_PART, 100.0, "rpm")}
FORM = re.compile(r"(?:(?P<unit>[^=]+)=)?(?:(?P<any>any)|(?P<number>\d+(?:\.\d+)?)(?P<percent>%)?)")


def of_unit(known: dict[str, Tolerance], unit: str) -> Tolerance | None:
    if unit in known:
        return known[unit]
    for other, tolerance in known.items():
        factor = factor_between(other, unit)
        if factor is not None:
            return Tolerance(tolerance.part, tolerance.absolute * factor, unit)
    return None


@dataclass(slots=True)
class Tolerances:
    """What is allowed, for each unit: what was given for it, or for all, or what is usual."""
    given: dict[str, Tolerance] = field(default_factory=dict)
    of_all: float | None = None
    found: dict[str, Tolerance] = field(default_factory=dict)

    def take(self, text: str) -> None:
        form = FORM.fullmatch(text)
        unit = form["unit"] if form else None
        if form is None or (unit is None and not form["percent"]):
            raise InputError(f"--tolerance {text}: a part such as 5%, or a unit with a part, a value or 'any' is "
                             "wanted: mV=2%, degC=10, byte=any")
        if unit is None:
            self.of_all = float(form["number"]) / 100
        elif unit not in UNITS:
            raise InputError(f"--tolerance {text}: there is no unit '{unit}'; there are {', '.join(UNITS)}")
        elif form["any"]:
            self.given[unit] = ANY
        else:
            number = float(form["number"])
            self.given[unit] = Tolerance(number / 100) if form["percent"] else Tolerance(0.0, number, unit)

    def of(self, unit: str) -> Tolerance:
        if unit not in self.found:
            self.found[unit] = self.worked_out(unit)
        return self.found[unit]

    def worked_out(self, unit: str) -> Tolerance:
        given = of_unit(self.given, unit)
        if given is not None:
            return given
        usual = of_unit(DEFAULTS, unit) or Tolerance(USUAL_PART, 0.0, unit)
        return Tolerance(self.of_all) if self.of_all is not None and usual.part == USUAL_PART else usual

    def is_moved(self, before: float, after: float, unit: str) -> bool:
        if before == after:
            return False
        allowed = self.of(unit).allowed(before)
        # What is allowed is meant in decimals: 903 and 5 % of it is a hair less in binary.
        return not abs(after - before) <= allowed * (1 + 1e-9) if allowed < math.inf else False
