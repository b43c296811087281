"""Every text of the sources is classified, and every rule is of a text of the sources."""

import re
from pathlib import Path

import pytest
from source_texts import source_texts

from kestro_report import grammar

ROOT = Path(__file__).resolve().parents[2]
DATA = grammar.parsed(grammar.GRAMMAR.read_text(encoding="utf-8"))
RULES = grammar.load()
TEXTS = source_texts(ROOT)
OPERATION = re.compile(r"drv_\w+")
SAMPLES = {"d": "7", "i": "7", "u": "7", "x": "7", "X": "7", "c": "Q", "s": "sample", "f": "7.00", "g": "7", "p": "0x7"}


def lines_of(text: str) -> list[str]:
    return [line.rstrip("\r").rstrip() for line in re.split(r"\r?\n", text) if line.strip("\r \t")]


def is_of(file: str, group: dict) -> bool:
    """A group names files, or a folder with all that is in it."""
    return any(file == place or file.startswith(place.rstrip("/") + "/") for place in group["from"])


def bare(text: str) -> str:
    """Without line ends and the blanks before them."""
    return text.strip("\r\n").rstrip()


def has_words(line: str) -> bool:
    """A line of nothing but values and signs says nothing that could be classified."""
    return re.search(r"[A-Za-z\udc80-\udcff]", re.sub(grammar.CONVERSION, "", line)) is not None


def parts_of(group: dict) -> set[str]:
    return {bare(grammar.with_bytes(text)) for key in ("pieces", "unprinted") for text in group.get(key, ())}


class Classified:
    """What the grammar says of one file."""

    def __init__(self, file: str) -> None:
        groups = [group for group in DATA["groups"] if is_of(file, group)]
        rules = [grammar.rule_of(group["group"], entry) for group in groups for entry in group.get("lines", ())]
        self.lines = {rule.source_text.rstrip() for rule in rules}.union(*(parts_of(group) for group in groups))

    def has(self, text: str) -> bool:
        return bare(text) in self.lines or all(line in self.lines for line in lines_of(text) if has_words(line))


def test_every_text_of_the_sources_is_classified():
    missing = []
    for file in sorted({text.file for text in TEXTS}):
        classified = Classified(file)
        missing += [f"{text.file}:{text.line}: {text.text!r}" for text in TEXTS
                    if text.file == file and not OPERATION.fullmatch(text.text) and not classified.has(text.text)]
    assert not missing, f"{len(missing)} texts that grammar.yaml does not know:\n" + "\n".join(missing)


def test_every_rule_is_of_a_text_of_the_sources():
    here: dict[str, set[str]] = {}
    for text in TEXTS:
        here.setdefault(text.file, set()).update([*lines_of(text.text), bare(text.text)])
    missing = []
    for group in DATA["groups"]:
        texts = set().union(*(here[file] for file in here if is_of(file, group)))
        rules = [grammar.rule_of(group["group"], entry) for entry in group.get("lines", ())]
        missing += [f"{group['group']}: {rule.text!r}" for rule in rules if rule.source_text.rstrip() not in texts]
        missing += [f"{group['group']}: piece {text!r}" for text in parts_of(group) if text not in texts]
    assert not missing, f"{len(missing)} not in the sources:\n" + "\n".join(missing)


def sample_of(rule: grammar.Rule) -> str:
    def value(token: re.Match) -> str:
        if token[0] == "%%":
            return "%"
        kind = token["type"] or token["type2"]
        text = SAMPLES[kind]
        if token["name"] and token["name"] == rule.by and kind == "s" and "else" not in rule.outcomes:
            text = next(iter(rule.outcomes))
        return (token["before"] or "") + text + (token["after"] or "")
    return grammar.TOKEN.sub(value, rule.text)


@pytest.mark.parametrize("kind", grammar.KINDS)
def test_a_line_is_known_by_its_own_rule(kind):
    """Another rule of the same kind may say the same; one of another kind would change the verdict."""
    wrong = []
    for rule in RULES.rules:
        if rule.kind == kind:
            sample = rule.example or sample_of(rule)
            found = RULES.match(sample)
            if found is None or found[0].kind != kind:
                wrong.append(f"{rule.group}: {rule.text!r} is taken for {found and (found[0].group, found[0].text)}")
    assert not wrong, "\n".join(wrong)


def test_names_in_a_rule_are_values_of_its_text():
    wrong = []
    for rule in RULES.rules:
        names = set(rule.parts[3])
        templates = [rule.check, rule.means, *(measure.name for measure in rule.measures)]
        used = {name for template in templates for name in re.findall(r"\{(\w+)\}", template)}
        used |= {measure.value for measure in rule.measures} | ({rule.by} if rule.by else set())
        wrong += [f"{rule.group}: {rule.text!r} has no {name}" for name in used - names]
    assert not wrong, "\n".join(wrong)


def test_no_name_says_the_form_of_a_number_that_has_its_own():
    """A name's numbers are decimal, and from 65536 on hexadecimal with their own "0x"."""
    assert [rule.text for rule in RULES.rules if "0x{" in (rule.check or "")] == []


def test_a_composed_line_has_an_example():
    assert [rule for group in DATA["groups"] for rule in group.get("composed", ()) if not rule.get("example")] == []


def test_no_rule_is_of_numbers_alone():
    """Such a rule would take lines for its own that it knows nothing of."""
    assert [rule.text for rule in RULES.rules if rule.weight[0] < 1] == []
