"""Outputs and pages that the tests of the page have in common."""

import dataclasses
import io
from collections.abc import Iterable
from functools import cache
from html.parser import HTMLParser

from kestro_report import grammar
from kestro_report.reader import Reader
from kestro_report.records import Limit, Measurement
from kestro_report.settings import Settings
from kestro_report.texts import text_lines
from kestro_report.writers.page import Page

END = "cmd_exec used second:0\ncmd_exec used millisecond:5\n"
GOOD = """##### voltage test begin
Success: get voltage_id 0   value is 12040mv. desc: 12V0 input. max 12100 min 11980
Success: get voltage_id 1   value is 3300mv. desc: 3V3 system. max 3312 min 3288
Success: voltage get avs chip 0x-80 alert check pass
##### temperature test begin
Success: get temperature_id 0   value is 25. desc: air inlet
Success: get temperature_id 1   value is 62. desc: processor
""" + END
BAD = GOOD.replace("Success: voltage get avs chip 0x-80 alert check pass",
                   "Error: voltage get avs chip 0x-80 alert fail 0x21\nwhat no rule knows")
# Line of the failed check in BAD, and of the one behind it.
BAD_LINE, UNKNOWN_LINE = 4, 5
CUT = GOOD[:GOOD.index("##### temperature")]
FANS = """FAN15  0       Normal    {0}%({1} )   12000     24        10        5
FAN15  1       Normal    {0}%({2} )   12000     24        10        5
""" + END


@cache
def rules() -> grammar.Grammar:
    """Of the self-test's parts these outputs have two only; that the others are missing is not the page's matter."""
    return dataclasses.replace(grammar.load(), orders={})


def voltage_limits(measurement: Measurement) -> tuple[Limit, ...]:
    if measurement.name != "voltage 1 3V3 system":
        return ()
    return (Limit("GREATER_THAN_OR_EQUAL", 3200, "limits.yaml: line 2", "alarm"),
            Limit("LESS_THAN_OR_EQUAL", 3400, "limits.yaml: line 2", "alarm"),
            Limit("LESS_THAN_OR_EQUAL", 3290, "limits.yaml: line 2", "warning"))


def page_of(*outputs: str | bytes, facts: dict[str, str] | None = None, title: str = "", names: Iterable[str] = (),
            settings: Settings | None = None) -> str:
    """The page of outputs, each from a file of its own."""
    stream = io.StringIO()
    reader = Reader(rules(), [Page(stream, title)], settings)
    reader.tell("report_begins")
    given = iter(names)
    for number, output in enumerate(outputs, 1):
        data = io.BytesIO(output.encode() if isinstance(output, str) else output)
        reader.begin_source(next(given, f"board-{number}.txt"), facts)
        for line in text_lines(data.read):
            reader.feed(line)
        reader.end_source()
    reader.tell("report_ends")
    return stream.getvalue()


def stamped(output: str, seconds: float = 1.0) -> str:
    return "".join(f"[{number * seconds:.3f}] {line}\n" for number, line in enumerate(output.splitlines()))


class Element:
    def __init__(self, tag: str, attributes: dict[str, str | None]) -> None:
        self.tag, self.attributes = tag, attributes
        self.children: list["Element | str"] = []

    def get(self, name: str) -> str | None:
        return self.attributes.get(name)

    def has_class(self, name: str) -> bool:
        return name in (self.get("class") or "").split()

    @property
    def text(self) -> str:
        return "".join(each if isinstance(each, str) else each.text for each in self.children)

    def all(self, tag: str = "", name: str = "") -> list["Element"]:
        found = []
        for each in self.children:
            if isinstance(each, Element):
                found += [each] if tag in ("", each.tag) and (not name or each.has_class(name)) else []
                found += each.all(tag, name)
        return found

    def first(self, tag: str = "", name: str = "") -> "Element":
        return self.all(tag, name)[0]


VOID = {"meta", "link", "input", "br", "img"}
# Elements whose end a following one implies, and what may stand between.
ENDED_BY = {"li": {"li"}, "td": {"td", "th", "tr"}, "th": {"td", "th", "tr"}, "tr": {"tr"}, "dt": {"dt", "dd"},
            "dd": {"dt", "dd"}}
IMPLIED = set(ENDED_BY)


class TreeBuilder(HTMLParser):
    """Builds a tree, and fails for an end that has no beginning: a text that was taken for markup would do that."""

    def __init__(self) -> None:
        super().__init__()
        self.root = Element("", {})
        self.open = [self.root]

    def handle_starttag(self, tag: str, attrs: list[tuple[str, str | None]]) -> None:
        while tag in ENDED_BY.get(self.open[-1].tag, ()):
            self.open.pop()
        element = Element(tag, dict(attrs))
        self.open[-1].children.append(element)
        if tag not in VOID:
            self.open.append(element)

    def handle_startendtag(self, tag: str, attrs: list[tuple[str, str | None]]) -> None:
        self.open[-1].children.append(Element(tag, dict(attrs)))

    def handle_endtag(self, tag: str) -> None:
        while self.open[-1].tag != tag and self.open[-1].tag in IMPLIED:
            self.open.pop()
        assert self.open[-1].tag == tag, f"</{tag}> ends <{self.open[-1].tag}> at {self.getpos()}"
        self.open.pop()

    def handle_data(self, data: str) -> None:
        self.open[-1].children.append(data)


def tree_of(page: str) -> Element:
    builder = TreeBuilder()
    builder.feed(page)
    builder.close()
    assert builder.open == [builder.root], "an element is not ended"
    return builder.root
