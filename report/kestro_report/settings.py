"""What a reading is told beside the output: what is left out, limits, driver calls, and what a good run has."""

import re
from collections import Counter
from collections.abc import Callable
from dataclasses import dataclass, field

from kestro_report.records import PASSED, Check, Limit, Measurement, Section, Writer

LimitsOf = Callable[[Measurement], tuple[Limit, ...]]
CallsOf = Callable[[Check], tuple[str, ...]]


@dataclass(slots=True)
class Expected:
    """What a good run has: how often each check passed there, by the section and which of its name it was."""
    passed: dict[tuple[str, int], dict[str, int]] = field(default_factory=dict)


@dataclass(slots=True)
class Settings:
    ignore: tuple[re.Pattern, ...] = ()
    limits_of: LimitsOf | None = None
    calls_of: CallsOf | None = None
    expected: Expected | None = None
    notes: list[Callable[[], list[str]]] = field(default_factory=list)  # what is to be told when all has been read


class ExpectedWriter(Writer):
    """Takes from a good run what to expect of others."""

    def __init__(self) -> None:
        self.expected = Expected()
        self.begun: Counter[str] = Counter()
        self.checks: dict[str, int] = {}

    def section_begins(self, section: Section) -> None:
        self.begun[section.name] += 1
        self.checks = self.expected.passed.setdefault((section.name, self.begun[section.name]), {})

    def check(self, check: Check) -> None:
        if check.outcome == PASSED:
            self.checks[check.name] = self.checks.get(check.name, 0) + 1
