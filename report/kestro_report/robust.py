"""Figures of many runs that a few wild values do not turn: samples, spread, drift."""

import heapq
import math
import random
from array import array
from collections.abc import Iterator, Sequence
from dataclasses import dataclass, field

from kestro_report.digest import median

# Values of one measurement that are kept; of more, a fair choice, and the most extreme ones in any case.
SAMPLE_KEPT = 1000
EXTREMES_KEPT = 10
# Points of one board's history; neighbours are put together when there are more.
POINTS_KEPT = 64
# The median of absolute deviations, times this, is the standard deviation of what is spread normally.
NORMAL = 1.4826

Entry = tuple[float, int, int, str, int]  # value, run, board, source, line


@dataclass(slots=True)
class Sample:
    count: int = 0
    kept: list[Entry] = field(default_factory=list)
    low: list[Entry] = field(default_factory=list)  # heaps; the values of this one with their signs turned
    high: list[Entry] = field(default_factory=list)
    choice: random.Random = field(default_factory=lambda: random.Random(1))  # the same input, the same report

    def add(self, entry: Entry) -> None:
        self.count += 1
        if len(self.kept) < SAMPLE_KEPT:
            self.kept.append(entry)
            return
        if self.count == SAMPLE_KEPT + 1:
            for each in self.kept:
                self.add_extreme(each)
        self.add_extreme(entry)
        at = self.choice.randrange(self.count)
        if at < SAMPLE_KEPT:
            self.kept[at] = entry

    def add_extreme(self, entry: Entry) -> None:
        for heap, each in ((self.high, entry), (self.low, (-entry[0], *entry[1:]))):
            if len(heap) < EXTREMES_KEPT:
                heapq.heappush(heap, each)
            elif each > heap[0]:
                heapq.heapreplace(heap, each)

    def entries(self) -> list[Entry]:
        """All that are kept, in the order of the runs."""
        found = {*self.kept, *self.high, *((-entry[0], *entry[1:]) for entry in self.low)}
        return sorted(found, key=lambda entry: entry[1:])

    def middle(self) -> tuple[float, float]:
        """Median, and median of the absolute deviations from it."""
        values = [entry[0] for entry in self.kept]
        centre = median(values)
        return centre, median([abs(value - centre) for value in values])


class Series:
    """A history of bounded length: times and values, each point the mean of as many neighbours as it needs."""
    __slots__ = ("points", "stride", "waiting", "count", "is_timed")

    def __init__(self) -> None:
        self.points = array("d")  # time, value, time, value
        self.stride = 1
        self.waiting: list[float] | None = None  # number, sum of times, sum of values
        self.count = 0
        self.is_timed = True

    def add(self, time: float | None, value: float) -> None:
        self.count += 1
        self.is_timed = self.is_timed and time is not None
        if self.stride == 1:
            self.points.extend((time or 0.0, value))
        else:
            number, times, values = self.waiting or (0, 0.0, 0.0)
            self.waiting = [number + 1, times + (time or 0.0), values + value]
            if self.waiting[0] == self.stride:
                self.points.extend((self.waiting[1] / self.stride, self.waiting[2] / self.stride))
                self.waiting = None
        if len(self.points) >= 2 * POINTS_KEPT:
            self.points = array("d", ((self.points[at] + self.points[at + 2]) / 2
                                      for four in range(0, len(self.points), 4) for at in (four, four + 1)))
            self.stride *= 2

    def history(self) -> list[tuple[float, float]]:
        """Times and values in their order; without times for all of them, the number of the run stands for the time."""
        points = list(zip(self.points[::2], self.points[1::2]))
        if self.waiting:
            points.append((self.waiting[1] / self.waiting[0], self.waiting[2] / self.waiting[0]))
        if self.is_timed:
            return sorted(points, key=lambda point: point[0])
        return [(at * self.stride, value) for at, (_, value) in enumerate(points)]


def pairs(points: Sequence[tuple[float, float]]) -> Iterator[tuple[float, float]]:
    """Differences of times and values, of each point to each later one."""
    for at, (time, value) in enumerate(points):
        for later, other in points[at + 1:]:
            yield later - time, other - value


def drift(points: Sequence[tuple[float, float]]) -> tuple[float, float]:
    """By how much the values have moved from the first to the last, as the median of all slopes has it, and how sure it
    is: the rank test's number, which beyond about 2 is no chance."""
    ups, slopes = 0, []
    for time, value in pairs(points):
        ups += (value > 0) - (value < 0)
        if time > 0:
            slopes.append(value / time)
    number = len(points)
    ties: dict[float, int] = {}
    for _, value in points:
        ties[value] = ties.get(value, 0) + 1
    spread = (number * (number - 1) * (2 * number + 5)
              - sum(tied * (tied - 1) * (2 * tied + 5) for tied in ties.values())) / 18
    if not slopes or spread <= 0:
        return 0.0, 0.0
    sure = (ups - math.copysign(1, ups)) / math.sqrt(spread) if ups else 0.0
    return median(slopes) * (points[-1][0] - points[0][0]), sure
