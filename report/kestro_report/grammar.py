"""The grammar of the output: what each text that kestro_test can print says. The data is in grammar.yaml."""

import re
from dataclasses import dataclass, field
from functools import cached_property
from pathlib import Path

import yaml

KINDS = ("passed", "failed", "unsupported", "note", "measurement", "begin", "end", "code", "judged", "listing", "data")
GRAMMAR = Path(__file__).parent / "grammar.yaml"

CONVERSION = r"%[-+ #0]*(?P<width>\d*)(?:\.\d+)?(?:hh|h|ll|l|z)?(?P<type>[diuxXcsfgp])"
TOKEN = re.compile(r"\{(?P<name>\w+):(?P<before>[^{}%]*)" + CONVERSION + r"(?P<after>[^{}%]*)\}|%%|"
                   + CONVERSION.replace("<width>", "<width2>").replace("<type>", "<type2>"))
NAME_MARKS = re.compile(r"\{\w+:([^{}%]*%[^{}%]*)\}")

# No number of more digits has 64 bits, and none of so many takes long to convert.
VALUE_FORMS = {"d": r"[-+]?\d{1,20}", "u": r"\d{1,20}", "x": r"(?:0x)?[0-9a-fA-F]{1,16}", "c": r".", "s": r".*?",
               "f": r"[-+]?(?:\d{1,40}(?:\.\d{1,40})?(?:e[-+]?\d+)?|inf|nan)", "p": r"(?:0x[0-9a-f]+|\(nil\))"}
LONGEST_NUMBER = 40
SAME_FORM = {"i": "d", "X": "x", "g": "f"}

# A driver whose result ends in this byte does not have the operation, whichever driver it is.
NOT_SUPPORTED = 0xA4


@dataclass(slots=True, frozen=True)
class Measure:
    name: str
    value: str
    unit: str
    scale: float = 1.0
    series: str = ""  # the curve that it is a point of


@dataclass(frozen=True)
class Rule:
    """One line that the program can print."""
    kind: str
    text: str
    group: str
    check: str = ""
    means: str = ""
    measures: tuple[Measure, ...] = ()
    by: str = ""
    outcomes: dict[str, str] = field(default_factory=dict)
    within: str = ""
    text_follows: bool = False
    rows: tuple["Rule", ...] = ()  # lines of the text that follows; elsewhere they would say nothing
    of_run: bool = False  # tells how the run as a whole ended, which is no part's fault
    after_end: bool = False  # comes behind the run's end line and still belongs to it
    example: str = ""

    @property
    def source_text(self) -> str:
        """The line as the sources have it."""
        return NAME_MARKS.sub(r"\1", self.text)

    @cached_property
    def parts(self) -> tuple[str, int, str, dict[str, str]]:
        """Pattern, number of literal characters, literal beginning, and the conversion of each named value."""
        return pattern_of(self)

    @cached_property
    def pattern(self) -> re.Pattern:
        return re.compile(self.parts[0], re.DOTALL)

    @property
    def weight(self) -> tuple[int, int]:
        """How much of a line the rule says itself; of two that say the same the one with fewer values says it better."""
        return self.parts[1], -self.text.count("%")

    @cached_property
    def literals(self) -> tuple[str, ...]:
        return tuple(literal.strip() for literal in TOKEN.sub("\n", self.text.replace("%%", "\n")).split("\n"))

    @cached_property
    def longest_literal(self) -> str:
        """What a line of this rule must contain; looked for before the pattern is made, which costs far more."""
        return max(self.literals, key=len)

    @property
    def beginning(self) -> str:
        return self.parts[2]

    def number(self, name: str, text: str) -> float | int | None:
        """The value as the number that its conversion printed, None for a text."""
        kind = self.parts[3].get(name, "s")
        if kind not in "xduf":
            return number_in(text)
        digits = re.search(VALUE_FORMS[kind], text)[0]  # a value's name may stand around more than the conversion
        return float(digits) if kind == "f" else int(digits, 16 if kind == "x" else 10)


def number_in(text: str) -> float | int | None:
    """Texts hold numbers too, where a table's cell was put together first."""
    if len(text) > LONGEST_NUMBER:
        return None
    try:
        return int(text, 0) if not text.lstrip("-").startswith("0") or "x" in text else int(text)
    except ValueError:
        try:
            return float(text)
        except ValueError:
            return None


def value_form(rule: Rule, name: str, kind: str, width: str) -> str:
    if name and name == rule.by and kind == "s" and "else" not in rule.outcomes and rule.outcomes:
        return "|".join(re.escape(word) for word in sorted(rule.outcomes, key=len, reverse=True))
    return VALUE_FORMS[kind]


def pattern_of(rule: Rule) -> tuple[str, int, str, dict[str, str]]:
    text = rule.text.rstrip()
    pattern, weight, beginning, kinds, at = "", 0, None, {}, 0
    for token in TOKEN.finditer(text):
        literal = text[at:token.start()]
        at = token.end()
        if token[0] == "%%":
            pattern, weight = pattern + re.escape(literal) + "%", weight + len(literal) + 1
            beginning = literal if beginning is None else beginning
            continue
        name, before, after = token["name"] or "", token["before"] or "", token["after"] or ""
        kind = token["type"] or token["type2"]
        kind = SAME_FORM.get(kind, kind)
        width = token["width"] or token["width2"]
        beginning = literal if beginning is None else beginning
        if kind == "s" and at == len(text):
            # A logger may have cut the blanks of an empty text at the end of a line.
            literal, blanks = literal.rstrip(" "), len(literal) - len(literal.rstrip(" "))
            pattern += re.escape(literal) + (" *" if blanks else "")
        else:
            pattern += re.escape(literal)
        weight += len(literal.replace(" ", ""))
        form = re.escape(before) + "(?:" + value_form(rule, name, kind, width) + ")" + re.escape(after)
        inner = f"(?P<{name}>{form})" if name and name not in kinds else f"(?:{form})"
        pattern += rf" *{inner} *" if width and kind != "c" else inner
        if name:
            kinds[name] = kind
    rest = text[at:]
    beginning = rest if beginning is None else beginning
    return pattern + re.escape(rest) + r"\s*", weight + len(rest.replace(" ", "")), beginning, kinds


@dataclass(slots=True, frozen=True)
class Order:
    """The banners of a test that prints them in a fixed order; one of the branches may follow. Other tests may have
    parts of the same names, with banners of other texts."""
    banner: str
    sections: tuple[str, ...]
    branches: tuple[tuple[str, ...], ...]


@dataclass
class Grammar:
    rules: list[Rule]
    orders: dict[str, Order]
    untimed: frozenset[str]
    judging: frozenset[str]  # groups of tests that say themselves what passed and failed
    modules: frozenset[str] = frozenset()  # groups of the lines of one module command each
    index: dict[str, list[Rule]] = field(default_factory=dict)
    lengths: list[int] = field(default_factory=list)

    def match(self, text: str) -> tuple[Rule, dict[str, str]] | None:
        """The rule of a line and the values in it. Of several the one that says most of the line literally."""
        best, found = None, None
        for length in self.lengths:
            for rule in self.index.get(text[:length], ()):
                if rule.longest_literal in text and (best is None or rule.weight > best.weight):
                    if match := rule.pattern.fullmatch(text):
                        best, found = rule, match
        return (best, found.groupdict()) if best else None


# Rules are looked for by so many of their first characters.
KEY = 14


def indexed(grammar: Grammar) -> Grammar:
    for rule in grammar.rules:
        grammar.index.setdefault(rule.beginning[:KEY], []).append(rule)
    grammar.lengths = sorted({len(key) for key in grammar.index}, reverse=True)
    return grammar


def with_bytes(text: str) -> str:
    """The grammar writes a byte that is no UTF-8 as \\xNN; lines that are read have it as a surrogate."""
    return re.sub(r"\\x([89a-f][0-9a-f])", lambda found: chr(0xDC00 + int(found[1], 16)), text)


OTHER_KEYS = ("check", "means", "within", "text_follows", "of_run", "after_end", "example")


def rule_of(group: str, entry: dict) -> Rule:
    kind = next(key for key in entry if key in KINDS)
    measures = tuple(Measure(**each) for each in entry.get("measures", ()))
    outcomes = {str(word): outcome for word, outcome in entry.get("outcomes", {}).items()}
    others = {key: entry[key] for key in OTHER_KEYS if key in entry}
    others["rows"] = tuple(rule_of(group, row) for row in entry.get("rows", ()))
    by = entry.get("by", "ret" if kind == "code" else "")
    return Rule(kind, with_bytes(entry[kind]), group, measures=measures, by=by, outcomes=outcomes, **others)


def parsed(text: str) -> dict:
    return yaml.load(text, Loader=getattr(yaml, "CSafeLoader", yaml.SafeLoader))


def rules_of(data: dict) -> list[Rule]:
    return [rule_of(group["group"], entry) for group in data["groups"]
            for entry in [*group.get("lines", ()), *group.get("composed", ())]]


def modules_of(data: dict) -> frozenset[str]:
    places = {}
    for group in data["groups"]:
        places.setdefault(group["group"], []).extend(group["from"])
    return frozenset(name for name, files in places.items()
                     if name.endswith("_test") and all(file.startswith("src/modules/") for file in files))


def load(path: Path = GRAMMAR) -> Grammar:
    data = parsed(path.read_text(encoding="utf-8"))
    orders = {name: Order(order["banner"].rstrip(), tuple(order["sections"]), tuple(tuple(each) for each in order["branches"]))
              for name, order in data.get("orders", {}).items()}
    return indexed(Grammar(rules_of(data), orders, frozenset(data.get("untimed", ())),
                           frozenset(data.get("judging", ())), modules_of(data)))
