"""What a line says by itself, whatever stands around it. Lines come again and again, and are understood once."""

import math
import re
from collections.abc import Mapping
from dataclasses import dataclass, field

from kestro_report.grammar import NOT_SUPPORTED, Grammar, Rule
from kestro_report.records import FAILED, PASSED, UNSUPPORTED
from kestro_report.texts import printable

OUTCOME_WORDS = re.compile(r"\s+(?:test\s+)?(?:pass|fail|success|is)\b.*|[.:,]?\s*$", re.IGNORECASE | re.DOTALL)
NUMBER = re.compile(r"(?:0x)?[0-9a-fA-F]+|[-+]?\d+")
PREFIX = re.compile(r"^\s*(?:Success|Error|Info|Fail)\w*\s*:\s*")

NAMES = {"begin": "{name}"}

# So many lines are remembered, and none that is longer: memory does not grow with the log.
MOST_REMEMBERED = 5_000
LONGEST_REMEMBERED = 400


@dataclass(slots=True, frozen=True)
class Measured:
    name: str
    value: float
    unit: str
    series: str


@dataclass(slots=True, frozen=True)
class Saying:
    rule: Rule
    values: dict[str, str]
    kind: str  # of the line: its rule's, or what its check came to
    outcome: str = ""  # of its check; empty where it checks nothing
    name: str = ""  # of its check, also where it only measures what that check is about; of a banner its section
    means: str = ""
    code: int | None = None
    measured: tuple[Measured, ...] = ()


class Values(dict):
    """Values of a line for the name of a check; what a line does not have stays empty."""

    def __missing__(self, key: str) -> str:
        return ""


def shown_in_name(rule: Rule, name: str, text: str) -> str:
    """One text of a check prints a number decimal and the other hexadecimal; its name has one form of it."""
    if rule.parts[3].get(name) not in ("d", "u", "x") or not NUMBER.fullmatch(text):
        return text
    number = rule.number(name, text)
    return str(number) if number < 0x10000 else f"0x{number:x}"


def named(template: str, shown: Mapping[str, str]) -> str:
    return printable(" ".join(template.format_map(shown).split()))


def default_name(text: str) -> str:
    """What stands behind the prefix, up to the word that tells the outcome."""
    text = PREFIX.sub("", text.strip())
    return " ".join((OUTCOME_WORDS.sub("", text, count=1) or text).split())


def outcome_of_code(number: float | None) -> str:
    if not number:
        return PASSED
    return UNSUPPORTED if int(number) & 0xFF == NOT_SUPPORTED else FAILED


def code_in(rule: Rule, values: Mapping[str, str]) -> int | None:
    """The driver's result, where the line has one."""
    said = values.get("ret", "").strip()
    number = rule.number("ret", said) if said else None
    return int(number) if number is not None else None


def judged(rule: Rule, values: Mapping[str, str], code: int | None) -> str:
    """The outcome that the line tells; one that is no check's, such as note, says of what kind the line is."""
    if rule.kind in (PASSED, FAILED, UNSUPPORTED):
        return rule.kind
    said = values.get(rule.by, "").strip()
    if rule.kind == "code":
        return outcome_of_code(rule.number(rule.by, said))
    if rule.kind != "judged":
        return ""
    # A value that a failed call left as it was says nothing.
    if rule.by != "ret" and code:
        return outcome_of_code(code)
    key = said if said in rule.outcomes else str(rule.number(rule.by, said))
    return rule.outcomes.get(key, rule.outcomes.get("else", ""))


def measured(rule: Rule, values: Mapping[str, str], shown: Mapping[str, str]) -> tuple[Measured, ...]:
    found = []
    for measure in rule.measures:
        text = values.get(measure.value, "").strip()
        number = rule.number(measure.value, text) if text else None
        if number is not None and math.isfinite(number):
            found.append(Measured(named(measure.name, shown), number * measure.scale, measure.unit, measure.series))
    return tuple(found)


def saying_of(rule: Rule, groups: Mapping[str, str | None], text: str) -> Saying:
    values = {name: value for name, value in groups.items() if value is not None}
    shown = Values({name: shown_in_name(rule, name, value.strip()) for name, value in values.items()})
    code = code_in(rule, values)
    told = judged(rule, values, code)
    outcome = told if told in (PASSED, FAILED, UNSUPPORTED) else ""
    name = named(rule.check or NAMES.get(rule.kind, ""), shown) or (default_name(printable(text)) if outcome else "")
    means = named(rule.means, shown) if rule.means and outcome == FAILED else ""
    # What a failed call left is no value.
    return Saying(rule, {name: printable(value) for name, value in values.items()}, told or rule.kind, outcome, name,
                  means, code, () if code else measured(rule, values, shown))


@dataclass(slots=True)
class Sayings:
    """Remembers what lines say."""
    grammar: Grammar
    known: dict[str, Saying | None] = field(default_factory=dict)

    def of(self, text: str) -> Saying | None:
        if text in self.known:
            return self.known[text]
        found = self.grammar.match(text)
        saying = saying_of(*found, text) if found else None
        if len(text) <= LONGEST_REMEMBERED:
            if len(self.known) >= MOST_REMEMBERED:
                self.known.clear()
            self.known[text] = saying
        return saying
