"""Pages of the commands that look at several runs: from templates that lie beside this file, with nothing from outside."""

from functools import cache
from pathlib import Path

import jinja2
from markupsafe import Markup

from kestro_report import VERSION
from kestro_report.writers.page import OUTCOME_WORDS, source_hash
from kestro_report.writers.page_runs import fit

FOLDER = Path(__file__).parent
# A drawing's size, in its own units.
WIDTH, HEIGHT, EDGE = 160, 28, 3


@cache
def templates() -> jinja2.Environment:
    return jinja2.Environment(loader=jinja2.FileSystemLoader(FOLDER), autoescape=True, trim_blocks=True,
                              lstrip_blocks=True, undefined=jinja2.StrictUndefined, finalize=fit)


def render(name: str, **what: object) -> str:
    style = "".join((FOLDER / file).read_text(encoding="utf-8") for file in ("page.css", "compared.css"))
    return templates().get_template(name).render(style=Markup(style), style_hash=source_hash(style), words=OUTCOME_WORDS,
                                                 line_of_values=line_of_values, version=VERSION, **what) + "\n"


def line_of_values(values: list[float], marked: list[int] | None = None, title: str = "") -> Markup:
    """A small drawing of values in their order; what stands out is marked by a dot."""
    if len(values) < 2:
        return Markup("")
    low, high = min(values), max(values)
    span = (high - low) or 1.0
    step = (WIDTH - 2 * EDGE) / (len(values) - 1)

    def place(at: int) -> tuple[float, float]:
        middle = 0.5 if high == low else (values[at] - low) / span
        return EDGE + at * step, HEIGHT - EDGE - middle * (HEIGHT - 2 * EDGE)

    points = " ".join("{:.1f},{:.1f}".format(*place(at)) for at in range(len(values)))
    dots = "".join('<circle cx="{:.1f}" cy="{:.1f}" r="2.4"/>'.format(*place(at)) for at in marked or ())
    return Markup('<svg class="values" viewBox="0 0 {} {}" role="img"><title>{}</title><polyline points="{}"/>{}</svg>'
                  ).format(WIDTH, HEIGHT, title, Markup(points), Markup(dots))
