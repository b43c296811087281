"""Curves of a reading, over all runs of a device: which percent gave which fan speed, and what each shift allows."""

import re
from dataclasses import dataclass, field

from kestro_report.records import Measurement, Run
from kestro_report.writers.figures import Point

# So many drawings, lines of one and points of a line are kept, whatever the length of the input.
CHARTS, LINES, POINTS = 24, 32, 200

NAMED = re.compile(r"fan(?P<fan>\d+ \d+) speed(?P<percent> percent)?")
QUERIED = {"fan speed percent": True, "fan speed": False}
# A point of a series: what it is counted by, and its number there, such as "shift 5 max speed".
COUNTED = re.compile(r"(?P<what>[a-z ]+?) (?P<number>\d{1,9})\b")


@dataclass(slots=True, frozen=True)
class Chart:
    """What a drawing shows: a line for each fan."""
    device: str
    title: str
    across: str  # what the horizontal axis counts
    up: str  # unit of the vertical one


@dataclass(slots=True)
class Half:
    """A percent or a speed that waits for the other."""
    value: float
    place: tuple[int, int]  # run and line


@dataclass(slots=True)
class Curves:
    """In a table percent and speed stand in one line, of two queries the one follows the other."""
    charts: dict[Chart, dict[str, list[Point]]] = field(default_factory=dict)
    waiting: dict[tuple[str, str, bool], Half] = field(default_factory=dict)
    left_out: int = 0  # points

    def begin_run(self, run: Run) -> None:
        """What may have set something makes what was read before it worthless."""
        operation = run.command.partition(" ")[2]
        if not operation or "_set_" in operation or "_test" in operation:
            self.waiting.clear()

    def add(self, measurement: Measurement) -> None:
        run = measurement.section.run
        device = run.facts.get("dut") or run.source
        half = Half(measurement.value, (run.number, measurement.line.number))
        if measurement.series:
            self.add_of_series(device, measurement)
        elif found := NAMED.fullmatch(measurement.name):
            self.add_half(device, found["fan"], bool(found["percent"]), half, True)
        elif measurement.name in QUERIED and (fan := fan_of(run.command)):
            self.add_half(device, fan, QUERIED[measurement.name], half, False)

    def add_of_series(self, device: str, measurement: Measurement) -> None:
        if found := COUNTED.match(measurement.name):
            chart = Chart(device, measurement.series, found["what"], measurement.unit)
            line = measurement.section.name or measurement.section.run.command or "all"
            self.keep(chart, line, (float(found["number"]), measurement.value))

    def add_half(self, device: str, fan: str, is_percent: bool, half: Half, same_line: bool) -> None:
        other = self.waiting.pop((device, fan, not is_percent), None)
        if other is None or (same_line and other.place != half.place):
            if len(self.waiting) < CHARTS * LINES:
                self.waiting[device, fan, is_percent] = half
            return
        self.waiting.pop((device, fan, is_percent), None)
        percent, rpm = (half, other) if is_percent else (other, half)
        chart = Chart(device, "speed by percent", "percent", "rpm")
        self.keep(chart, f"FAN{fan.replace(' ', '-')}", (percent.value, rpm.value))

    def keep(self, chart: Chart, line: str, point: Point) -> None:
        lines = self.charts.get(chart, {})
        points = lines.get(line, [])
        if point in points:
            return
        if (not lines and len(self.charts) >= CHARTS) or (not points and len(lines) >= LINES) or len(points) >= POINTS:
            self.left_out += 1
            return
        self.charts.setdefault(chart, {}).setdefault(line, []).append(point)


def alike(lines: list[tuple[str, list[Point]]]) -> list[tuple[str, list[Point]]]:
    """Lines that lie upon one another are one, with the names of all."""
    names: dict[tuple[Point, ...], list[str]] = {}
    for name, points in lines:
        names.setdefault(tuple(points), []).append(name)
    return [(", ".join(each), list(points)) for points, each in names.items()]


def fan_of(command: str) -> str:
    """Slot and fan as the command was given them: "fan_test fan_get_speed 15 0"."""
    words = command.split()
    return f"{words[2]} {words[3]}" if len(words) == 4 and words[2].isdigit() and words[3].isdigit() else ""
