"""Fan curves of a reading: which percent gave which speed, for each fan of each device, over all runs of the device."""

import re
from dataclasses import dataclass, field

from kestro_report.records import Measurement, Run

# So many devices, fans and points are kept, whatever the length of the input.
DEVICES, FANS, POINTS = 12, 32, 200

NAMED = re.compile(r"fan(?P<fan>\d+ \d+) speed(?P<percent> percent)?")
QUERIED = {"fan speed percent": True, "fan speed": False}

Point = tuple[float, float]


@dataclass(slots=True)
class Half:
    """A percent or a speed that waits for the other."""
    value: float
    place: tuple[int, int]  # run and line


@dataclass(slots=True)
class Curves:
    """Points by device and fan. In a table both values stand in one line, of two queries the one follows the other."""
    devices: dict[str, dict[str, list[Point]]] = field(default_factory=dict)
    waiting: dict[tuple[str, str, bool], Half] = field(default_factory=dict)

    def begin_run(self, run: Run) -> None:
        """A command that sets something makes what was read before it worthless."""
        if not run.command or "_set_" in run.command or "_test " in run.command.partition(" ")[2] + " ":
            self.waiting.clear()

    def add(self, measurement: Measurement) -> None:
        run = measurement.section.run
        device = device_of(run)
        place = (run.number, measurement.line.number)
        if found := NAMED.fullmatch(measurement.name):
            self.add_half(device, found["fan"], bool(found["percent"]), Half(measurement.value, place), True)
        elif measurement.name in QUERIED and (fan := fan_of(run.command)):
            self.add_half(device, fan, QUERIED[measurement.name], Half(measurement.value, place), False)

    def add_half(self, device: str, fan: str, is_percent: bool, half: Half, same_line: bool) -> None:
        other = self.waiting.pop((device, fan, not is_percent), None)
        if other is None or (same_line and other.place != half.place):
            if len(self.waiting) < DEVICES * FANS:
                self.waiting[device, fan, is_percent] = half
            return
        self.waiting.pop((device, fan, is_percent), None)
        percent, rpm = (half, other) if is_percent else (other, half)
        self.keep(device, fan, (percent.value, rpm.value))

    def keep(self, device: str, fan: str, point: Point) -> None:
        if device not in self.devices and len(self.devices) >= DEVICES:
            return
        fans = self.devices.setdefault(device, {})
        if fan not in fans and len(fans) >= FANS:
            return
        points = fans.setdefault(fan, [])
        if len(points) < POINTS and point not in points:
            points.append(point)


def device_of(run: Run) -> str:
    return run.facts.get("dut") or run.source


def fan_of(command: str) -> str:
    """Slot and fan as the command was given them: "fan_test fan_get_speed 15 0"."""
    words = command.split()
    return f"{words[2]} {words[3]}" if len(words) == 4 and words[2].isdigit() and words[3].isdigit() else ""
