"""Limits of measurements: from a limits file (YAML) and from the thresholds of a board description (XML)."""

from collections.abc import Callable, Iterator
from dataclasses import dataclass, field
from fnmatch import fnmatchcase
from pathlib import Path

import yaml

from kestro_report.description import GREATEST, LEAST, thresholds_of
from kestro_report.errors import InputError, read_text_file
from kestro_report.records import Limit, Measurement
from kestro_report.units import UNITS, factor_between

EQUAL = "EQUAL"
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


def place(file: Path, node: yaml.Node) -> str:
    return f"{file}: line {node.start_mark.line + 1}"


def composed(file: Path) -> yaml.Node | None:
    data = read_text_file(file, "a file with limits")
    try:
        text = data.decode("utf-8-sig")
        return yaml.compose(text, Loader=yaml.SafeLoader)
    except yaml.MarkedYAMLError as error:
        mark = error.problem_mark or error.context_mark
        said = error.problem or error.context or "not readable"
        raise InputError(f"{file}: line {mark.line + 1 if mark else 1}: no YAML: {said}") from error
    except yaml.reader.ReaderError as error:
        line = text.count("\n", 0, error.position) + 1
        raise InputError(f"{file}: line {line}: no YAML: a control character") from error
    except UnicodeDecodeError as error:
        line = data.count(b"\n", 0, error.start) + 1
        raise InputError(f"{file}: line {line}: no text in UTF-8") from error
    except RecursionError as error:
        raise InputError(f"{file}: no limits: lists within lists, too deep to be any") from error


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
        key = key_node.value if isinstance(key_node, yaml.ScalarNode) else "a list"
        if key not in KEYS:
            raise InputError(f"{place(file, key_node)}: unknown name '{key}'; there are {', '.join(KEYS)}")
        if key in seen:
            raise InputError(f"{place(file, key_node)}: '{key}' stands twice in this limit")
        seen.add(key)
        if key in BOUNDS:
            rule.bounds[key] = number_of(file, key, value)
        else:
            setattr(rule, key, text_of(file, key, value))
        if key == "unit" and rule.unit not in UNITS:
            raise InputError(f"{place(file, value)}: there is no unit '{rule.unit}'; there are {', '.join(UNITS)}")
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
        raise InputError(f"{file}: line 1: 'limits:' with a list below it is wanted, and nothing else")
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
        """A name says first what is measured and its number, then what the board calls it, which is no part of it."""
        name = measurement.name
        found = self.thresholds.get(name) or self.thresholds.get(" ".join(name.split(" ", 2)[:2]), ())
        for threshold in found:
            factor = factor_between(threshold.unit, measurement.unit)
            if factor is not None:
                yield Limit(threshold.type, threshold.value * factor, threshold.where, threshold.severity)

    def unused(self) -> list[str]:
        return [f"{rule.where}: no measurement is called '{rule.measurement}'"
                + (f" in '{rule.section}'" if rule.section != "*" else "") for rule in self.rules if not rule.is_used]


LimitsOf = Callable[[Measurement], tuple[Limit, ...]]
