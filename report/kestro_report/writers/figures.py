"""Drawings of the page: values against their limits, parts of a run along time, and curves. All inline SVG.

Colours and line widths are the style sheet's; a drawing has classes only, because the page forbids inline styles.
"""

import math
from collections.abc import Sequence
from dataclasses import dataclass, field

from markupsafe import Markup, escape

from kestro_report.records import Limit, Measurement

BAR_WIDTH, BAR_HEIGHT = 200, 16
GREATEST, LEAST, EQUAL = "LESS_THAN_OR_EQUAL", "GREATER_THAN_OR_EQUAL", "EQUAL"
# What a scale shows on both sides of the outermost limit.
MARGIN = 0.15


def coordinate(value: float) -> str:
    return f"{value:.1f}".removesuffix(".0")


@dataclass(slots=True)
class Bounds:
    """The tightest limits of a measurement, low and high, for each severity."""
    low: dict[str, float] = field(default_factory=dict)
    high: dict[str, float] = field(default_factory=dict)

    @property
    def all(self) -> list[float]:
        return [*self.low.values(), *self.high.values()]


def bounds_of(limits: Sequence[Limit]) -> Bounds:
    bounds = Bounds()
    for limit in limits:
        if limit.type in (LEAST, EQUAL):
            bounds.low[limit.severity] = max(limit.value, bounds.low.get(limit.severity, limit.value))
        if limit.type in (GREATEST, EQUAL):
            bounds.high[limit.severity] = min(limit.value, bounds.high.get(limit.severity, limit.value))
    return bounds


def limits_said(limits: Sequence[Limit]) -> str:
    """The limits in words, such as "warning 950 to 1050, alarm from 900"."""
    bounds = bounds_of(limits)
    said = []
    for severity in ("warning", "alarm"):
        low, high = bounds.low.get(severity), bounds.high.get(severity)
        if low is not None and high is not None:
            said.append(f"{severity} {low:.10g} to {high:.10g}")
        elif low is not None:
            said.append(f"{severity} below {low:.10g}")
        elif high is not None:
            said.append(f"{severity} above {high:.10g}")
    return ", ".join(said)


def state_of(measurement: Measurement) -> str:
    severities = {limit.severity for limit in measurement.broken}
    if "alarm" in severities:
        return "alarm"
    if severities:
        return "warning"
    return "within" if measurement.limits else "no limits"


@dataclass(slots=True, frozen=True)
class Scale:
    least: float
    greatest: float
    width: float = BAR_WIDTH

    def at(self, value: float) -> float:
        span = self.greatest - self.least
        return (min(max(value, self.least), self.greatest) - self.least) / span * self.width if span > 0 else 0.0


def rectangle(name: str, scale: Scale, low: float, high: float, top: float = 0, height: float = BAR_HEIGHT) -> str:
    left, right = scale.at(low), scale.at(high)
    return (f'<rect class="{name}" x="{coordinate(left)}" y="{coordinate(top)}" '
            f'width="{coordinate(max(right - left, 0))}" height="{coordinate(height)}"/>')


def tick(name: str, scale: Scale, value: float) -> str:
    x = coordinate(scale.at(value))
    return f'<line class="{name}" x1="{x}" x2="{x}" y1="0" y2="{BAR_HEIGHT}"/>'


def bar_svg(inner: str) -> Markup:
    """What a bar shows stands in the cells beside it as well, so it is nothing for a screen reader."""
    return Markup(f'<svg class="bar" viewBox="0 0 {BAR_WIDTH} {BAR_HEIGHT}" preserveAspectRatio="none" '
                  f'aria-hidden="true" focusable="false">{inner}</svg>')


def limit_bar(value: float, limits: Sequence[Limit], seen: Sequence[float] = (), state: str = "within") -> Markup:
    """A value on the scale of its own limits: alarm outside, then warning, good inside."""
    bounds = bounds_of(limits)
    shown = [*bounds.all, value, *seen]
    pad = (max(shown) - min(shown)) * MARGIN or abs(value) * MARGIN or 1.0
    scale = Scale(min(shown) - pad, max(shown) + pad)
    parts = [rectangle("zone-good", scale, scale.least, scale.greatest)]
    for severity in ("warning", "alarm"):
        if severity in bounds.low:
            parts.append(rectangle(f"zone-{severity}", scale, scale.least, bounds.low[severity]))
        if severity in bounds.high:
            parts.append(rectangle(f"zone-{severity}", scale, bounds.high[severity], scale.greatest))
    for severity in ("warning", "alarm"):
        parts += [tick(f"tick-{severity}", scale, bound) for bound in
                  (bounds.low.get(severity), bounds.high.get(severity)) if bound is not None]
    return bar_svg("".join(parts) + seen_line(scale, seen) + pointer(scale, value, state))


def seen_line(scale: Scale, seen: Sequence[float]) -> str:
    return rectangle("seen", scale, min(seen), max(seen), BAR_HEIGHT / 2 - 1, 2) if seen else ""


def pointer(scale: Scale, value: float, state: str) -> str:
    x = scale.at(value)
    left, right = coordinate(x - 5), coordinate(x + 5)
    return (f'<polygon class="pointer {escape(state)}" points="{left},0 {right},0 {coordinate(x + 1)},7 '
            f'{coordinate(x + 1)},{BAR_HEIGHT} {coordinate(x - 1)},{BAR_HEIGHT} {coordinate(x - 1)},7"/>')


def plain_bar(value: float, least: float, greatest: float) -> Markup:
    """A value without limits: a bar from zero, on the scale that its neighbours have too."""
    scale = Scale(min(least, 0.0), max(greatest, 0.0) or 1.0)
    return bar_svg(rectangle("track", scale, scale.least, scale.greatest, 5, 6)
                   + rectangle("value", scale, min(value, 0.0), max(value, 0.0), 3, 10))


def time_bar(began: float, ended: float, first: float, last: float, outcome: str) -> Markup:
    scale = Scale(first, last)
    left = min(scale.at(began), BAR_WIDTH - 2.0)
    width = max(scale.at(ended) - left, 2.0)
    return bar_svg(rectangle("track", scale, first, last, 5, 6)
                   + f'<rect class="part {escape(outcome)}" x="{coordinate(left)}" y="2" width="{coordinate(width)}" '
                     f'height="12"/>')


# --- curves -----------------------------------------------------------------------------------------------------------

CHART_WIDTH, CHART_HEIGHT = 360, 220
LEFT, RIGHT, TOP, BOTTOM = 46, 10, 10, 34
# More lines than this in one drawing nobody tells apart.
SERIES = 8

Point = tuple[float, float]


def round_step(greatest: float) -> float:
    """The distance of grid lines: 1, 2 or 5 times a power of ten, so that three to six of them are enough."""
    step = 10.0 ** math.floor(math.log10(greatest / 6))
    return next((step * factor for factor in (1, 2, 5) if greatest / (step * factor) <= 6), step * 10)


@dataclass(slots=True, frozen=True)
class Axis:
    """From zero to a round number above all values."""
    label: str
    step: float
    count: int

    @property
    def top(self) -> float:
        return self.step * self.count

    @property
    def marks(self) -> list[float]:
        return [number * self.step for number in range(self.count + 1)]


def axis_of(label: str, values: Sequence[float]) -> Axis:
    greatest = max([0.0, *values]) or 1.0
    if label == "percent":
        return Axis(label, 20, max(5, math.ceil(greatest / 20)))
    step = round_step(greatest)
    return Axis(label, step, max(math.ceil(greatest / step - 1e-9), 1))


def chart_place(x: float, y: float, across: Axis, up: Axis) -> Point:
    return (LEFT + (CHART_WIDTH - LEFT - RIGHT) * max(x, 0) / across.top,
            CHART_HEIGHT - BOTTOM - (CHART_HEIGHT - TOP - BOTTOM) * max(y, 0) / up.top)


def chart_grid(across: Axis, up: Axis) -> list[str]:
    parts = []
    for value in up.marks:
        _, y = chart_place(0, value, across, up)
        parts.append(f'<line class="grid" x1="{LEFT}" x2="{CHART_WIDTH - RIGHT}" y1="{coordinate(y)}" '
                     f'y2="{coordinate(y)}"/><text class="axis" x="{LEFT - 5}" y="{coordinate(y + 3.5)}" '
                     f'text-anchor="end">{value:g}</text>')
    for value in across.marks:
        x, y = chart_place(value, 0, across, up)
        parts.append(f'<line class="grid" x1="{coordinate(x)}" x2="{coordinate(x)}" y1="{TOP}" y2="{coordinate(y)}"/>'
                     f'<text class="axis" x="{coordinate(x)}" y="{coordinate(y + 13)}" text-anchor="middle">'
                     f'{value:g}</text>')
    parts.append(f'<text class="axis" x="{CHART_WIDTH - RIGHT}" y="{CHART_HEIGHT - 5}" text-anchor="end">'
                 f'{escape(across.label)}</text>'
                 f'<text class="axis" x="{LEFT + 5}" y="{TOP + 10}">{escape(up.label)}</text>')
    return parts


def mark(number: int, x: float, y: float) -> str:
    """Each line has a mark of its own form, so that colour alone tells nothing."""
    name = f"series s{number}"
    match number % 4:
        case 0:
            return f'<circle class="{name}" cx="{coordinate(x)}" cy="{coordinate(y)}" r="3.5"/>'
        case 1:
            return f'<rect class="{name}" x="{coordinate(x - 3)}" y="{coordinate(y - 3)}" width="6" height="6"/>'
        case 2:
            corners = ((x, y - 4.5), (x + 4.5, y + 3.5), (x - 4.5, y + 3.5))
        case _:
            corners = ((x, y - 4.5), (x + 4.5, y), (x, y + 4.5), (x - 4.5, y))
    points = " ".join(f"{coordinate(left)},{coordinate(top)}" for left, top in corners)
    return f'<polygon class="{name}" points="{points}"/>'


def curve(number: int, points: Sequence[Point], across: Axis, up: Axis) -> str:
    places = [chart_place(x, y, across, up) for x, y in points]
    path = " ".join(f"{coordinate(x)},{coordinate(y)}" for x, y in places)
    line = f'<polyline class="curve s{number}" points="{path}"/>' if len(places) > 1 else ""
    return line + "".join(mark(number, x, y) for x, y in places)


def chart(curves: Sequence[tuple[str, Sequence[Point]]], x_label: str, y_label: str, name: str) -> Markup:
    """A line for each of the curves, whose points are sorted."""
    across = axis_of(x_label, [x for _, points in curves for x, _ in points])
    up = axis_of(y_label, [y for _, points in curves for _, y in points])
    drawn = [curve(number, points, across, up) for number, (_, points) in enumerate(curves[:SERIES])]
    return Markup(f'<svg class="chart" viewBox="0 0 {CHART_WIDTH} {CHART_HEIGHT}" role="img" '
                  f'aria-label="{escape(name)}">{"".join(chart_grid(across, up))}{"".join(drawn)}</svg>')


def legend_mark(number: int) -> Markup:
    return Markup(f'<svg class="key" viewBox="0 0 24 12" aria-hidden="true" focusable="false"><line '
                  f'class="curve s{number}" x1="0" x2="24" y1="6" y2="6"/>{mark(number, 12, 6)}</svg>')
