"""Holds the runs of one output against those of another: what got worse, what got better, what moved."""

from collections.abc import Iterator
from dataclasses import dataclass, field

from kestro_report.digest import CheckDigest, Key, RunDigest, ValueDigest
from kestro_report.records import FAILED, INCOMPLETE, PASSED, UNSUPPORTED, Line
from kestro_report.units import Tolerances, factor_between

# Kinds of a change, in the order in which they are told, with their titles. The first ones are worse than before.
NOW_FAILS, MISSING, NEW_FAILURE, MOVED, NO_VALUE, NOW_PASSES, STILL_FAILS, GONE, NEW, UNKNOWN = range(10)
TITLES = ("passed and now fails", "passed and is not checked now", "was not checked and now fails",
          "moved beyond the tolerance", "is not measured now", "failed and now passes", "fails as before",
          "is gone, and had not passed", "is checked now, and was not", "is a line that nobody knows, and that is new")
WORSE = (NOW_FAILS, MISSING, NEW_FAILURE, MOVED, NO_VALUE)


@dataclass(slots=True, frozen=True)
class Change:
    kind: int
    section: str
    name: str
    before: str = ""
    after: str = ""
    means: str = ""

    @property
    def where(self) -> str:
        return f"{self.section}: {self.name}" if self.section else self.name


@dataclass(slots=True)
class Pair:
    """A run and its counterpart; one of them may be missing."""
    before: RunDigest | None
    after: RunDigest | None
    changes: list[Change] = field(default_factory=list)

    @property
    def title(self) -> str:
        return (self.after or self.before).title

    @property
    def verdicts(self) -> tuple[str, str]:
        return tuple(each.run.outcome if each else "not run" for each in (self.before, self.after))

    @property
    def is_worse(self) -> bool:
        """A run that is gone may hide anything. One that is new and failed shows what is wrong."""
        before, after = self.verdicts
        if self.after is None or (after == FAILED and before in (PASSED, "not run")):
            return True
        return any(change.kind in WORSE for change in self.changes)

    @property
    def is_incomplete(self) -> bool:
        return INCOMPLETE in self.verdicts

    def of_kind(self, kind: int) -> list[Change]:
        return [change for change in self.changes if change.kind == kind]


def said_line(line: Line | None) -> str:
    return f"line {line.number}: {line.text.strip()}" if line else "a good run has it"


def said_check(check: CheckDigest) -> str:
    return said_line(check.line) + (f" ({check.failed} of {check.failed + check.passed} failed)"
                                    if check.failed and check.passed else "")


def check_change(key: Key, before: CheckDigest | None, after: CheckDigest | None) -> Change | None:
    """A name may stand for several checks of one section; then how many of them passed counts."""
    old, new = before or CheckDigest(), after or CheckDigest()
    said = (said_check(before) if before else "", said_check(after) if after else "")
    if new.failed > old.failed:
        return Change(NOW_FAILS if old.passed else NEW_FAILURE, *key, *said, new.means)
    if new.passed < old.passed and new.failed + new.passed < old.failed + old.passed:
        return Change(MISSING, *key, said[0], said_missing(old, new))
    if new.failed:
        return Change(STILL_FAILS, *key, *said, new.means)
    if old.failed and new.passed:
        return Change(NOW_PASSES, *key, *said)
    if old.failed or (before and not after):
        return Change(GONE, *key, said[0], said_missing(old, new))
    return Change(NEW, *key, "", said[1]) if after and not before and new.outcome == PASSED else None


def said_missing(old: CheckDigest, new: CheckDigest) -> str:
    if new.unsupported and not new.passed:
        return f"not supported now: {said_line(new.line)}"
    return f"{new.passed} of {old.passed} there" if new.passed else "not there"


def said_number(value: float) -> str:
    """Sizes in bytes in full."""
    return f"{value:.0f}" if abs(value) < 1e15 and value == int(value) else f"{value:.6g}"


def value_change(key: Key, before: ValueDigest, after: ValueDigest | None, allowed: Tolerances) -> Change | None:
    unit = before.unit
    if after is None:
        return Change(NO_VALUE, *key, f"{said_number(before.median)} {unit}", "not measured")
    factor = factor_between(after.unit, unit)
    if factor is None:
        return Change(MOVED, *key, f"{said_number(before.median)} {unit}", f"{said_number(after.median)} {after.unit}",
                      "Another quantity is measured now.")
    values = [value * factor for value in after.values]
    # As many values as before belong to each other one by one, such as a fan's speeds step by step.
    pairs = (list(zip(before.values, values)) if len(values) == len(before.values)
             else [(before.median, after.median * factor)])
    moved = [(old, new) for old, new in pairs if allowed.is_moved(old, new, unit)]
    if not moved:
        return None
    old, new = max(moved, key=lambda pair: abs(pair[1] - pair[0]))
    by = f"{'+' if new > old else ''}{said_number(new - old)} {unit}" + (f", {(new - old) / abs(old) * 100:+.1f} %" if old else "")
    many = f"; {len(moved)} of {len(pairs)} values" if len(pairs) > 1 else ""
    return Change(MOVED, *key, f"{said_number(old)} {unit}", f"{said_number(new)} {unit}",
                  f"{by}{many}; allowed is {allowed.of(unit).said()}")


def compare(before: RunDigest, after: RunDigest, allowed: Tolerances) -> Iterator[Change]:
    for key in dict.fromkeys([*before.checks, *after.checks]):
        change = check_change(key, before.checks.get(key), after.checks.get(key))
        if change:
            yield change
    for key, values in before.values.items():
        change = value_change(key, values, after.values.get(key), allowed)
        if change:
            yield change
    known = {line.text for line in before.run.unknown_lines}
    for line in after.run.unknown_lines:
        if line.text not in known:
            known.add(line.text)
            yield Change(UNKNOWN, "", said_line(line))


def paired(before: list[RunDigest], after: list[RunDigest]) -> list[Pair]:
    """The first run of a command belongs to the first of the same command, the second to the second. What is left
    belongs together in its order where nobody knows the command of one of the two."""
    waiting: dict[str, list[RunDigest]] = {}
    for run in before:
        waiting.setdefault(run.kind, []).append(run)
    found = {id(run): waiting[run.kind].pop(0) for run in after if waiting.get(run.kind)}
    left = [run for runs in waiting.values() for run in runs]
    for run in after:
        other = next((each for each in left if not (each.run.command and run.run.command)), None)
        if id(run) not in found and other is not None:
            found[id(run)] = other
            left.remove(other)
    return [Pair(found.get(id(run)), run) for run in after] + [Pair(run, None) for run in left]


def comparison(before: list[RunDigest], after: list[RunDigest], allowed: Tolerances) -> list[Pair]:
    pairs = paired(before, after)
    for pair in pairs:
        if pair.before and pair.after:
            pair.changes = list(compare(pair.before, pair.after, allowed))
    return pairs
