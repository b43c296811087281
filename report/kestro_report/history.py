"""What is kept of many runs: of each check and each measurement so much that it does not grow with their number."""

import math
from collections import Counter
from dataclasses import dataclass, field
from datetime import datetime, timezone

from kestro_report.digest import CheckDigest, DigestWriter, Key, RunDigest, ValueDigest
from kestro_report.records import FAILED, INCOMPLETE, PASSED, Run
from kestro_report.robust import NORMAL, Entry, Sample, Series, drift
from kestro_report.texts import printable
from kestro_report.units import Tolerances

# Boards whose values are followed over time, for each measurement.
BOARDS_FOLLOWED = 500
# With fewer runs nobody can tell what is usual.
LEAST_RUNS = 5
# How many times the usual spread a value that stands out lies beyond the median, and how sure a drift must be.
FAR_OUT, SURE = 3.5, 2.2
# Stamps below are a log's own clock and no date.
FIRST_DATE = 1e8


@dataclass(slots=True)
class CheckHistory:
    passed: int = 0  # runs
    failed: int = 0
    unsupported: int = 0
    by_kind: Counter[str] = field(default_factory=Counter)
    boards_passed: int = 0  # a bit for each board
    boards_failed: int = 0
    last_failure: str = ""
    series: Series = field(default_factory=Series)

    @property
    def judged(self) -> int:
        return self.passed + self.failed

    @property
    def rate(self) -> float:
        return self.passed / self.judged if self.judged else 1.0

    @property
    def comes_and_goes(self) -> int:
        """Boards on which it has passed and failed."""
        return (self.boards_passed & self.boards_failed).bit_count()


@dataclass(slots=True)
class ValueHistory:
    unit: str
    sample: Sample = field(default_factory=Sample)
    low: float = math.inf
    high: float = -math.inf
    boards: dict[int, Series] = field(default_factory=dict)
    not_followed: bool = False


@dataclass(slots=True)
class BoardHistory:
    name: str
    number: int
    outcomes: Counter[str] = field(default_factory=Counter)
    first: str = ""
    last: str = ""
    series: Series = field(default_factory=Series)

    @property
    def runs(self) -> int:
        return self.outcomes.total()


@dataclass(slots=True, frozen=True)
class Outlier:
    key: Key
    board: str
    value: float  # the farthest
    median: float
    unit: str
    times: float  # of the usual spread
    runs: int
    where: str


@dataclass(slots=True, frozen=True)
class Drift:
    key: Key
    board: str
    first: float
    last: float
    unit: str
    change: float
    span: str
    weight: float  # of what may move
    values: list[float]


def board_of(run: Run) -> str:
    return printable(run.facts.get("serial") or run.facts.get("dut") or run.source)


def time_of(run: Run) -> float | None:
    """From the stamps of the log, or from what lies beside it."""
    if run.began is not None and run.began > FIRST_DATE:
        return run.began
    said = run.facts.get("began", "")
    try:
        moment = datetime.fromisoformat(said)
        return (moment if moment.tzinfo else moment.replace(tzinfo=timezone.utc)).timestamp()
    except (ValueError, OverflowError):
        pass
    try:
        seconds = float(said)
    except ValueError:
        return None
    return seconds if FIRST_DATE < seconds < math.inf else None


class History(DigestWriter):
    def __init__(self) -> None:
        super().__init__()
        self.outcomes: Counter[str] = Counter()
        self.kinds: dict[str, Counter[str]] = {}
        self.boards: dict[str, BoardHistory] = {}
        self.checks: dict[Key, CheckHistory] = {}
        self.values: dict[Key, ValueHistory] = {}
        self.series = Series()
        self.usual = Tolerances()

    @property
    def runs(self) -> int:
        return self.outcomes.total()

    def take(self, digest: RunDigest) -> None:
        run, time = digest.run, time_of(digest.run)
        name = board_of(run)
        board = self.boards.setdefault(name, BoardHistory(name, len(self.boards)))
        board.first, board.last = board.first or run.outcome, run.outcome
        for outcomes in (self.outcomes, board.outcomes, self.kinds.setdefault(printable(digest.kind), Counter())):
            outcomes[run.outcome] += 1
        for series in (self.series, board.series):
            series.add(time, float(run.outcome == PASSED))
        for key, check in digest.checks.items():
            self.take_check(self.checks.setdefault(key, CheckHistory()), check, digest, board, time)
        for key, values in digest.values.items():
            self.take_value(key, values, run, board, time)

    def take_check(self, history: CheckHistory, check: CheckDigest, digest: RunDigest, board: BoardHistory,
                   time: float | None) -> None:
        # What a run would have checked that did not end properly nobody knows.
        history.by_kind[printable(digest.kind)] += digest.run.outcome != INCOMPLETE
        if check.outcome == PASSED:
            history.passed += 1
            history.boards_passed |= 1 << board.number
        elif check.outcome == FAILED:
            history.failed += 1
            history.boards_failed |= 1 << board.number
            line = f": line {check.line.number}: {check.line.text.strip()}" if check.line else ""
            history.last_failure = f"{printable(digest.run.source)}{line}"
        else:
            history.unsupported += 1
            return
        history.series.add(time, float(check.outcome == PASSED))

    def take_value(self, key: Key, values: ValueDigest, run: Run, board: BoardHistory, time: float | None) -> None:
        """Where a run measures it several times, the median stands for the run."""
        value = values.median
        if not math.isfinite(value):
            return
        if key in self.values and self.values[key].unit != values.unit:
            key = (key[0], f"{key[1]} in {values.unit}")
        history = self.values.setdefault(key, ValueHistory(values.unit))
        history.low, history.high = min(history.low, value), max(history.high, value)
        history.sample.add((value, self.runs, board.number, run.source, values.line.number if values.line else 0))
        if board.number not in history.boards and len(history.boards) >= BOARDS_FOLLOWED:
            history.not_followed = True
            return
        history.boards.setdefault(board.number, Series()).add(time, value)

    # --- what it tells ------------------------------------------------------------------------------------------------

    def absent(self, history: CheckHistory) -> int:
        """Runs of the same command that ended properly and in which the check did not come."""
        return sum(self.kinds[kind].total() - self.kinds[kind][INCOMPLETE] - number
                   for kind, number in history.by_kind.items())

    def failing(self) -> list[tuple[Key, CheckHistory]]:
        """Those that ever failed, the worst first."""
        found = [(key, history) for key, history in self.checks.items() if history.failed]
        return sorted(found, key=lambda each: (-each[1].failed, each[1].rate, each[0]))

    def irregular(self) -> list[tuple[Key, CheckHistory]]:
        """Those that never failed and yet are missing in some runs of their command, the rarest gap first."""
        found = [(key, history) for key, history in self.checks.items()
                 if not history.failed and history.passed and self.absent(history)]
        return sorted(found, key=lambda each: (self.absent(each[1]), each[0]))

    def names(self) -> list[str]:
        return list(self.boards)

    def outliers(self) -> list[Outlier]:
        found = [outlier for key, history in self.values.items() for outlier in self.outliers_of(key, history)]
        return sorted(found, key=lambda outlier: (-outlier.times, outlier.key, outlier.board))

    def spread_of(self, history: ValueHistory) -> tuple[float, float]:
        """The median, and what counts as the usual spread around it."""
        centre, deviation = history.sample.middle()
        # Where most values are equal, the next step of the scale would be infinitely far.
        step = self.usual.of(history.unit).allowed(centre) / 10
        return centre, max(NORMAL * deviation, step if step < math.inf else 1.0) or 1.0

    def far_out(self, history: ValueHistory) -> list[Entry]:
        if history.sample.count < LEAST_RUNS:
            return []
        centre, spread = self.spread_of(history)
        return [entry for entry in history.sample.entries() if abs(entry[0] - centre) > FAR_OUT * spread]

    def outliers_of(self, key: Key, history: ValueHistory) -> list[Outlier]:
        boards: dict[int, list[Entry]] = {}
        for entry in self.far_out(history):
            boards.setdefault(entry[2], []).append(entry)
        names = self.names() if boards else []
        return [self.outlier(key, history, names[board], entries) for board, entries in boards.items()]

    def outlier(self, key: Key, history: ValueHistory, board: str, entries: list[Entry]) -> Outlier:
        centre, spread = self.spread_of(history)
        value, _, _, source, line = max(entries, key=lambda entry: abs(entry[0] - centre))
        return Outlier(key, board, value, centre, history.unit, abs(value - centre) / spread, len(entries),
                       f"{printable(source)}: line {line}")

    def drifts(self) -> list[Drift]:
        names = self.names()
        found = [self.drift_of(key, names[board], history.unit, series) for key, history in self.values.items()
                 for board, series in history.boards.items() if series.count >= LEAST_RUNS]
        return sorted((each for each in found if each), key=lambda each: (-each.weight, each.key, each.board))

    def drift_of(self, key: Key, board: str, unit: str, series: Series) -> Drift | None:
        points = series.history()
        values = [value for _, value in points]
        allowed = self.usual.of(unit).allowed(values[0])
        if max(values) - min(values) <= allowed / 2:
            return None
        change, sure = drift(points)
        if abs(change) <= allowed / 2 or abs(sure) < SURE:
            return None
        days = (points[-1][0] - points[0][0]) / 86400
        span = (f"{days:.0f} days" if days >= 2 else f"{days * 24:.1f} hours") if series.is_timed else "in their order"
        return Drift(key, board, values[0], values[-1], unit, change, f"{series.count} runs, {span}",
                     abs(change) / (allowed or 1.0), values)
