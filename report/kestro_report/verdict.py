"""From the runs of a reading to one verdict and the exit status."""

from collections.abc import Mapping

from kestro_report.records import FAILED, INCOMPLETE, PASSED

ALL_PASSED, CHECK_FAILED, TOOL_AT_FAULT, NOT_ENDED = 0, 1, 2, 3


def outcome_of(outcomes: Mapping[str, int]) -> str:
    """A run that did not end properly weighs more than a failed check: nobody knows what it would have found."""
    for outcome in (INCOMPLETE, FAILED, PASSED):
        if outcomes.get(outcome):
            return outcome
    return INCOMPLETE


def exit_status(outcomes: Mapping[str, int]) -> int:
    return {PASSED: ALL_PASSED, FAILED: CHECK_FAILED, INCOMPLETE: NOT_ENDED}[outcome_of(outcomes)]
