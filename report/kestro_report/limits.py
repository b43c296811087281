"""Limits of measurements: from a limits file (YAML) and from the thresholds of a board description (XML)."""

from collections.abc import Callable, Iterator
from dataclasses import dataclass, field
from fnmatch import fnmatchcase
from pathlib import Path

import yaml

from kestro_report.description import thresholds_of
from kestro_report.errors import InputError
from kestro_report.records import Limit, Measurement

# Units of one quantity, each with its factor to the first of them. A temperature has one unit only.
QUANTITIES = ({"mV": 1.0, "V": 1000.0, "uV": 0.001}, {"mA": 1.0, "A": 1000.0, "uA": 0.001},
              {"mW": 1.0, "W": 1000.0, "uW": 0.001, "kW": 1e6}, {"ms": 1.0, "s": 1000.0, "us": 0.001, "min": 60000.0},
              {"MHz": 1.0, "kHz": 0.001, "Hz": 1e-6, "GHz": 1000.0},
              {"byte": 1.0, "KiB": 1024.0, "MiB": 1048576.0})
GREATEST, LEAST, EQUAL = "LESS_THAN_OR_EQUAL", "GREATER_THAN_OR_EQUAL", "EQUAL"
# What a limits file says of a bound: the bound's type and how much it weighs.
BOUNDS = {"min": (LEAST, "alarm"), "max": (GREATEST, "alarm"), "equal": (EQUAL, "alarm"),
          "warning_min": (LEAST, "warning"), "warning_max": (GREATEST, "warning")}
KEYS = ("measurement", "section", "dut", "unit", *BOUNDS)


@dataclass(slots=True)
class LimitRule:
    """One entry of a limits file."""
    where: str  # file and line
    measurement: str
    section: str = "*"
    dut: str = "*"
    unit: str = ""
    bounds: dict[str, float] = field(default_factory=dict)
    is_used: bool = False

    def applies(self, measurement: Measurement) -> bool:
        run = measurement.section.run
        names = ((self.measurement, measurement.name), (self.section, measurement.section.name),
                 (self.dut, run.facts.get("dut", run.source)))
        return all(fnmatchcase(name, pattern) for pattern, name in names)


def factor_between(unit: str, wanted: str) -> float | None:
    """What a value of a unit is multiplied by to be one of the wanted unit; None where they measure different things."""
    if unit == wanted:
        return 1.0
    for units in QUANTITIES:
        if unit in units and wanted in units:
            return units[unit] / units[wanted]
    return None


def place(file: Path, node: yaml.Node) -> str:
    return f"{file}: line {node.start_mark.line + 1}"


def composed(file: Path) -> yaml.Node | None:
    try:
        return yaml.compose(file.read_text(encoding="utf-8"), Loader=yaml.SafeLoader)
    except yaml.MarkedYAMLError as error:
        line = f"line {error.problem_mark.line + 1}" if error.problem_mark else "line 1"
        raise InputError(f"{file}: {line}: no YAML: {error.problem or error.context}") from error
    except (yaml.YAMLError, UnicodeDecodeError) as error:
        raise InputError(f"{file}: no YAML text: {' '.join(str(error).split())}") from error
    except OSError as error:
        raise InputError(f"{file}: {error.strerror}; a file with limits is wanted") from error


def number_of(file: Path, key: str, node: yaml.Node) -> float:
    if isinstance(node, yaml.ScalarNode):
        try:
            value = float(node.value)
        except ValueError:
            value = float("nan")
        if value == value and abs(value) != float("inf"):
            return value
    raise InputError(f"{place(file, node)}: '{key}' wants a number, such as 950")


def text_of(file: Path, key: str, node: yaml.Node) -> str:
    if not isinstance(node, yaml.ScalarNode) or not node.value:
        raise InputError(f"{place(file, node)}: '{key}' wants a text")
    return node.value


def entry_of(file: Path, node: yaml.Node) -> LimitRule:
    if not isinstance(node, yaml.MappingNode):
        raise InputError(f"{place(file, node)}: a limit is 'measurement: NAME' with min, max or equal below it")
    rule, seen = LimitRule(place(file, node), ""), set()
    for key_node, value in node.value:
        key = str(key_node.value)
        if key not in KEYS:
            raise InputError(f"{place(file, key_node)}: unknown name '{key}'; there are {', '.join(KEYS)}")
        if key in seen:
            raise InputError(f"{place(file, key_node)}: '{key}' stands twice in this limit")
        seen.add(key)
        if key in BOUNDS:
            rule.bounds[key] = number_of(file, key, value)
        else:
            setattr(rule, key, text_of(file, key, value))
    return checked(rule)


def checked(rule: LimitRule) -> LimitRule:
    if not rule.measurement:
        raise InputError(f"{rule.where}: 'measurement' is missing: the name of a measurement, * for any part of it")
    if not rule.bounds:
        raise InputError(f"{rule.where}: no bound; one of {', '.join(BOUNDS)} is wanted")
    for low, high in (("min", "max"), ("warning_min", "warning_max")):
        if rule.bounds.get(low, float("-inf")) > rule.bounds.get(high, float("inf")):
            raise InputError(f"{rule.where}: '{low}' is above '{high}'")
    return rule


def load_limits(file: Path) -> list[LimitRule]:
    root = composed(file)
    if not isinstance(root, yaml.MappingNode) or [key.value for key, _ in root.value] != ["limits"]:
        raise InputError(f"{file}: line 1: 'limits:' with a list below it is wanted")
    entries = root.value[0][1]
    if not isinstance(entries, yaml.SequenceNode):
        raise InputError(f"{place(file, entries)}: below 'limits:' stands a list; its items begin with '- '")
    return [entry_of(file, node) for node in entries.value]


def limits_by(rule: LimitRule, measurement: Measurement) -> Iterator[Limit]:
    factor = factor_between(rule.unit, measurement.unit) if rule.unit else 1.0
    if factor is None:
        raise InputError(f"{rule.where}: '{measurement.name}' is measured in {measurement.unit}, "
                         f"and {rule.unit} is no unit of the same quantity")
    for key, value in rule.bounds.items():
        kind, severity = BOUNDS[key]
        yield Limit(kind, value * factor, f"{rule.where}: {key}", severity)


class Limits:
    """All limits of a reading."""

    def __init__(self, file: Path | None = None, description: Path | None = None) -> None:
        self.rules = load_limits(file) if file else []
        self.thresholds = thresholds_of(description) if description else {}

    def of(self, measurement: Measurement) -> tuple[Limit, ...]:
        found = list(self.described(measurement))
        for rule in self.rules:
            if rule.applies(measurement):
                rule.is_used = True
                found += limits_by(rule, measurement)
        return tuple(found)

    def described(self, measurement: Measurement) -> Iterator[Limit]:
        """A section's measurements begin with what they are and the number that the description has them by."""
        kind, _, rest = measurement.name.partition(" ")
        number = rest.partition(" ")[0]
        for name, value, where in self.thresholds.get((kind, number), ()):
            severity, _, end = name.partition("_")
            yield Limit(LEAST if end == "low" else GREATEST, value, f"{where}: {name}", severity)

    def unused(self) -> list[str]:
        return [f"{rule.where}: no measurement is called '{rule.measurement}'"
                + (f" in '{rule.section}'" if rule.section != "*" else "") for rule in self.rules if not rule.is_used]


LimitsOf = Callable[[Measurement], tuple[Limit, ...]]
