"""The page holds what it should, says what it leaves out, and takes nothing in an output for markup."""

import base64
import hashlib
import re
from pathlib import Path

import pytest
from page_samples import (BAD, BAD_LINE, CUT, END, FANS, GOOD, UNKNOWN_LINE, Element, page_of, stamped, tree_of,
                          voltage_limits)

from kestro_report.command_line import main
from kestro_report.records import Check, Limit, Line, Measurement, Run, Section
from kestro_report.settings import Expected, Settings
from kestro_report.writers import curves, figures, page, page_runs

WRITERS = Path(page.__file__).parent
HOSTILE = "<script>window.hurt = 1</script><!-- ]]> </style></p> & \" ' <img src=x onerror=hurt()>"


def all_ids(tree: Element) -> list[str]:
    return [each.get("id") for each in tree.all() if each.get("id")]


def headings(tree: Element) -> list[str]:
    return [" ".join(each.text.split()) for each in tree.all() if each.tag in ("h1", "h2", "h3")]


# --- form -------------------------------------------------------------------------------------------------------------

@pytest.fixture(scope="module")
def full() -> Element:
    """Everything that a page can have: failed, cut and passed runs, limits, times, fans."""
    outputs = (stamped(BAD), GOOD, CUT, FANS.format(40, 4800, 4700), FANS.format(80, 9600, 9500))
    return tree_of(page_of(*outputs, facts={"dut": "rack 3", "serial": "251104"},
                           settings=Settings(limits_of=voltage_limits)))


def test_links_lead_somewhere_on_the_page(full: Element) -> None:
    ids = all_ids(full)
    assert len(ids) == len(set(ids))
    links = [each.get("href") for each in full.all("a")]
    assert len(links) > 20
    assert {link for link in links if link[0] != "#" or link[1:] not in ids} == set()


def test_nothing_comes_from_outside(full: Element) -> None:
    assert full.all("img") == full.all("iframe") == full.all("object") == []
    for each in full.all():
        assert each.get("src") is None and each.get("style") is None
        assert not [name for name in each.attributes if name.startswith("on")]
    assert [each.get("href") for each in full.all("link")] == ["data:,"]
    assert "url(" not in full.first("style").text and "@import" not in full.first("style").text


def test_policy_allows_this_style_and_this_script_only(full: Element) -> None:
    policy = next(each.get("content") for each in full.all("meta") if each.get("http-equiv"))
    rules = dict(rule.strip().split(" ", 1) for rule in policy.split(";"))
    for tag, rule in (("style", "style-src"), ("script", "script-src")):
        (element,) = full.all(tag)
        digest = base64.b64encode(hashlib.sha256(element.text.encode()).digest()).decode()
        assert rules[rule] == f"'sha256-{digest}'"
    assert rules["default-src"] == rules["base-uri"] == rules["form-action"] == "'none'"


def test_tables_have_headers_and_parts_have_names(full: Element) -> None:
    for table in full.all("table"):
        head = table.first("thead").all("th")
        assert head and all(each.get("scope") == "col" and each.text.strip() for each in head)
        widths = {len([cell for cell in row.children if isinstance(cell, Element)]) for row in
                  table.first("tbody").all("tr")}
        assert widths == {len(head)}
    for details in full.all("details"):
        inner = [each for each in details.children if isinstance(each, Element)]
        assert inner[0].tag == "summary" and inner[0].text.strip()
    ids = all_ids(full)
    for each in full.all():
        assert each.get("aria-labelledby") is None or each.get("aria-labelledby") in ids
        assert each.tag != "label" or each.get("for") in ids or each.all("input")
    assert full.first("html").get("lang") == "en" and len(full.all("h1")) == 1 and len(full.all("main")) == 1


def test_without_a_script_only_the_controls_are_away(full: Element) -> None:
    assert [each.get("id") for each in full.all() if "hidden" in each.attributes] == ["tools"]
    assert full.first("", "skip").get("href") == "#main"


def test_same_input_same_page() -> None:
    assert page_of(BAD, GOOD, CUT) == page_of(BAD, GOOD, CUT)


def luminance(colour: str) -> float:
    parts = [int(colour[at:at + 2], 16) / 255 for at in (1, 3, 5)]
    linear = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4 for part in parts]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one: str, other: str) -> float:
    low, high = sorted((luminance(one), luminance(other)))
    return (high + 0.05) / (low + 0.05)


def test_colours_can_be_read_in_light_and_dark() -> None:
    style = (WRITERS / "page.css").read_text()
    themes = [dict(re.findall(r"--([\w-]+): (#[0-9a-f]{6})\b", block))
              for block in re.findall(r"color-scheme: (?:light|dark);([^}]*)}", style)]
    themes = [theme for theme in themes if "page" in theme]
    assert len(themes) == 3 and themes[1] == themes[2], "dark is written twice, and must be the same"
    for theme in themes:
        backs = [theme["page"], theme["card"]]
        for name in ("ink", "soft", "link", "good", "bad", "warn", "open", *(f"s{number}" for number in range(8))):
            assert min(contrast(theme[name], back) for back in backs) >= 4.5, name
        for name in ("good", "bad", "warn", "open", "mute"):
            assert contrast(theme[name], theme[f"{name}-back"]) >= 4.5, name
        for name in ("soft", "link", "ink"):
            assert contrast(theme[name], theme["bad-back"]) >= 4.5, name
        assert min(contrast(theme["focus"], back) for back in backs) >= 3
        assert contrast(theme["ink"], theme["mark"]) >= 4.5


# --- content ----------------------------------------------------------------------------------------------------------

def test_failures_come_first_with_all_that_is_known() -> None:
    settings = Settings(calls_of=lambda check: ("drv_avs_get_alert(0, 0x0) = 0x21",))
    tree = tree_of(page_of(BAD, facts={"dut": "rack 3", "serial": "251104"}, settings=settings))
    assert headings(tree)[:4] == ["rack 3", "failed rack 3", "What failed", "Sections"]
    (failure,) = tree.first("ol", "failures").all("li")[:1]
    assert failure.get("data-s") == "voltage"
    link = failure.first("a")
    assert (link.get("href"), link.text) == (f"#r1l{BAD_LINE}", f"line {BAD_LINE}")
    assert "Error: voltage get avs chip 0x-80 alert fail 0x21" in failure.text
    assert "The regulator has an alert" in failure.first("", "means").text
    assert "drv_avs_get_alert(0, 0x0) = 0x21" in failure.first("details", "calls").text
    facts = tree.first("dl", "facts").text
    assert "251104" in facts and "board-1.txt" in facts and "1 failed" in facts and "1 unknown" in facts


def test_sections_have_their_verdicts_and_unknown_lines() -> None:
    tree = tree_of(page_of(BAD))
    voltage, temperature = tree.all("details", "section")
    assert [each.tag for each in (voltage, temperature) if "open" in each.attributes] == ["details"]
    assert "open" in voltage.attributes and "1 failed, 2 passed, 1 unknown line" in voltage.first("summary").text
    assert "passed" in temperature.first("summary").text and "2 passed" in temperature.first("summary").text
    assert [row.get("class") for row in voltage.first("tbody").all("tr")] == ["p", "p", "f", "u"]
    unknown = voltage.first("tbody").all("tr")[3]
    assert "what no rule knows" in unknown.text and unknown.first("a").get("href") == f"#r1l{UNKNOWN_LINE}"


def test_raw_text_has_the_numbers_of_the_output() -> None:
    """Empty lines are not in the list, so the numbers must not simply be counted."""
    tree = tree_of(page_of("boot\n\n" + BAD.replace("what no", "\n\nwhat no")))
    shown, number = {}, 0
    for line in tree.first("ol", "lines").all("li"):
        number = int(line.get("value") or number + 1)
        shown[number] = line.text.strip()
    # Two lines stand before the run, and two empty ones in it.
    assert shown[BAD_LINE + 2] == "Error: voltage get avs chip 0x-80 alert fail 0x21"
    assert shown[UNKNOWN_LINE + 4] == "what no rule knows"
    assert UNKNOWN_LINE + 3 not in shown
    assert len([line for line in tree.first("ol", "lines").all("li") if line.get("value")]) == 2, "only behind a gap"
    assert "1 line outside of the runs" in tree.first("footer").text


def test_a_run_that_was_cut_says_why() -> None:
    tree = tree_of(page_of(CUT))
    assert "the output ends before the program did" in tree.first("section", "problems").text
    assert tree.first("", "verdict").text.strip().startswith("not complete")
    assert tree.first("title").text.startswith("not complete: ")


def test_nothing_read_is_no_pass() -> None:
    tree = tree_of(page_of())
    assert tree.first("", "verdict").text.strip().startswith("not complete")
    assert "No run was read" in tree.first("main").text


def test_missing_check_has_no_line() -> None:
    expected = Settings(expected=Expected({("voltage", 1): {"voltage 9": 1}}))
    failure = tree_of(page_of(GOOD, settings=expected)).first("ol", "failures").all("li")[0]
    assert "voltage 9" in failure.text and "missing" in failure.text and failure.all("a") == []


def test_values_stand_against_their_limits() -> None:
    tree = tree_of(page_of(GOOD, settings=Settings(limits_of=voltage_limits)))
    volts, degrees = tree.all("details", "values")
    assert "1 beyond a warning limit" in volts.first("summary").text
    rows = {row.first("th").children[0]: row for row in volts.first("tbody").all("tr")}
    assert set(rows) == {"voltage 0 12V0 input", "voltage 1 3V3 system"}, "what was seen is no row of its own"
    judged = rows["voltage 1 3V3 system"]
    assert judged.get("class") == "warning" and "warning above 3290, alarm 3200 to 3400" in judged.text
    assert "seen 3288 to 3312" in judged.text
    assert judged.all("line", "tick-alarm") and judged.all("line", "tick-warning") and judged.all("polygon", "pointer")
    assert rows["voltage 0 12V0 input"].all("rect", "value") and "no limits" in rows["voltage 0 12V0 input"].text
    assert "25 °C" in degrees.text


def test_time_line_is_drawn_only_where_times_are_known() -> None:
    assert "Time line" not in page_of(GOOD)
    table = tree_of(page_of(stamped(GOOD, 2.0))).first("table", "times")
    rows = [[cell.text.strip() for cell in row.children if isinstance(cell, Element)] for row in
            table.first("tbody").all("tr")]
    # Lines come every two seconds: the first section has four of them, the end comes after the eighth.
    assert rows == [["voltage", "0 s", "", "8 s"], ["temperature", "8 s", "", "8 s"]]


# --- hostile input ----------------------------------------------------------------------------------------------------

def test_nothing_in_an_output_is_markup() -> None:
    output = BAD.replace("what no rule knows", HOSTILE).replace("12V0 input", HOSTILE) \
        .replace("##### temperature", f"##### {HOSTILE}").encode() + b"\xff\xfe\x1b[0\x00 </script>\n"
    tree = tree_of(page_of(output, facts={"dut": HOSTILE, "serial": HOSTILE, "command": HOSTILE, "began": HOSTILE},
                           title=HOSTILE, names=[HOSTILE]))
    assert len(tree.all("script")) == len(tree.all("style")) == 1 and tree.all("img") == []
    assert tree.first("h1").text == HOSTILE
    assert HOSTILE in tree.first("dl", "facts").text and HOSTILE in tree.first("ol", "lines").text
    assert HOSTILE in [each.get("data-s") for each in tree.all("details", "section")]
    assert HOSTILE in [each.get("value") for each in tree.all("option")]


def test_bytes_that_are_no_text_are_written_out() -> None:
    name = b"board-\xff\x07.txt".decode("utf-8", "surrogateescape")
    text = page_of(BAD.encode().replace(b"what no", b"what \xfe\x02 no"), names=[name], 
                   facts={"dut": "\u202erack\udcfe"})
    text.encode("utf-8")
    assert r"what \xfe\x02 no" in text and r"board-\xff\x07.txt" in text and r"\u202erack\xfe" in text


def test_a_very_long_line_is_short_but_in_the_raw_text() -> None:
    text = page_of(BAD.replace("what no rule knows", "x" * 50000))
    assert text.count("x" * 50000) == 1 and len(text) < 150000


# --- sizes ------------------------------------------------------------------------------------------------------------

def test_a_thousand_runs_make_a_page_of_usable_size() -> None:
    outputs = [BAD if number == 700 else CUT if number == 800 else GOOD for number in range(1000)]
    text = page_of(*outputs)
    tree = tree_of(text)
    assert len(text) < 1_200_000
    rows = tree.first("table", "runs").first("tbody").all("tr")
    assert len(rows) == 1000
    assert [row.first("th").first("a").text for row in rows[:3]] == ["board-801.txt", "board-701.txt", "board-1.txt"]
    assert "avs chip" in rows[1].text and "ends before" in rows[0].text
    articles = {each.get("data-n"): each for each in tree.all("article")}
    for number in ("701", "801"):
        assert articles[number].all("ol", "lines") and articles[number].all("table", "checks")
    left_out = re.search(r"checks and raw text of (\d+) runs that passed", tree.first("footer").text)
    assert int(left_out[1]) == 1000 - len(articles) > 500
    assert "1,000 runs: 1 not complete, 1 failed, 998 passed" in tree.first("", "verdict").text


def test_of_failed_runs_the_one_with_more_failures_comes_first() -> None:
    worse = BAD.replace("Success: get temperature_id 0   value is 25.", "Error: get temperature_id 0   value is 25.")
    rows = tree_of(page_of(BAD, worse, GOOD)).first("table", "runs").first("tbody").all("tr")
    assert [row.first("th").first("a").text for row in rows] == ["board-2.txt", "board-1.txt", "board-3.txt"]


def test_failed_runs_beyond_the_bound_keep_their_failures(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(page, "NOT_PASSED_BYTES", 20000)
    monkeypatch.setattr(page, "FAILURES_BYTES", 40000)
    tree = tree_of(page_of(*[BAD] * 30))
    articles = tree.all("article")
    whole = [each for each in articles if each.all("ol", "lines")]
    assert 1 <= len(whole) < len(articles) < 30
    assert all("avs chip" in each.first("ol", "failures").text for each in articles)
    assert "are left out" in articles[-1].text
    assert len(tree.first("table", "runs").first("tbody").all("tr")) == 30
    footer = tree.first("footer").text
    assert f"passed checks of {len(articles) - len(whole)} runs" in footer
    assert f"line in the table of {30 - len(articles)} runs" in footer


def test_only_the_worst_runs_are_listed(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(page, "MOST_ROWS", 5)
    tree = tree_of(page_of(*[GOOD] * 14, BAD, *[GOOD] * 8))
    rows = tree.first("table", "runs").first("tbody").all("tr")
    assert [row.first("th").first("a").text for row in rows][0] == "board-15.txt" and len(rows) == 5
    assert "18 runs that came out no worse" in tree.first("footer").text


def test_raw_text_of_a_run_is_bounded(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(page_runs, "LONGEST_RAW", 200)
    tree = tree_of(page_of(BAD))
    assert len(tree.first("ol", "lines").all("li")) == BAD_LINE - 1
    # What lies beyond has its number still, and no link to a line that is not there.
    assert "line 4" in tree.first("ol", "failures").text and tree.first("ol", "failures").all("a") == []
    assert [each.text for each in tree.first("table", "checks").all("a")] == ["2", "3"]
    assert "7 more lines read and judged, and not kept here" in tree.first("details", "raw").text


def test_memory_of_a_run_is_bounded() -> None:
    run = Run(1, "endless.txt")
    section = Section("voltage", run, 1)
    kept = page_runs.KeptRun(run)
    kept.sections.append(page_runs.KeptSection(section))
    line = Line(1, "x" * 99, "unknown")
    for number in range(50000):
        kept.add_line(line)
        kept.add_check(Check("check", "passed", section, line))
        kept.add_measurement(Measurement("voltage", 1.0, "mV", section, line))
    kept.keep_last()
    assert len(kept.lines) == (2 << 20) // 100 and kept.lines_left_out == 50000 - len(kept.lines)
    assert len(kept.sections[0].rows) == page_runs.MOST_CHECKS + page_runs.MOST_UNKNOWN
    assert kept.sections[0].left_out == 100000 - len(kept.sections[0].rows)
    assert len(kept.measurements) + kept.measurements_left_out == 50000
    assert len(kept.measurements) == page_runs.MOST_MEASUREMENTS


def test_sections_of_a_run_are_bounded(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(page_runs, "MOST_SECTIONS", 3)
    parts = [BAD if number in (0, 6) else GOOD for number in range(8)]
    tree = tree_of(page_of("".join(part.removesuffix(END) for part in parts) + END))
    # One has no name, nothing in it, and no place on the page.
    assert [each.get("data-s") for each in tree.all("details", "section")] == ["voltage", "temperature"]
    assert "14 more sections, 1 of them failed: only counted." in [each.text.strip() for each in tree.all("p", "note")]
    assert len(tree.first("ol", "failures").all("li")) == 2 and "2 failed, 38 passed" in tree.first("dl", "facts").text
    assert len(tree.first("ol", "lines").all("li")) == 8 * 7 + 2 + 2


def test_where_a_run_was_cut_is_not_opened_when_it_is_left_out(monkeypatch: pytest.MonkeyPatch) -> None:
    assert ["open" in each.attributes for each in tree_of(page_of(CUT)).all("details", "section")] == [True]
    monkeypatch.setattr(page_runs, "MOST_SECTIONS", 2)
    sections = tree_of(page_of(GOOD.removesuffix(END) + CUT)).all("details", "section")
    assert ["open" in each.attributes for each in sections] == [False]


def test_memory_does_not_grow_with_the_sections_of_a_run() -> None:
    run = Run(1, "endless.txt")
    kept = page_runs.KeptRun(run)
    line = Line(1, "Present: YES", "passed")
    for number in range(3 * page_runs.MOST_SECTIONS):
        section = Section(f"FAN{number}", run, number)
        kept.add_section(section)
        kept.add_line(Line(number, "strange", "unknown"))
        kept.add_check(Check("present", "failed", section, line))
        section.counts["failed"] += 1
        kept.end_section(section)
    assert len(kept.sections) == page_runs.MOST_SECTIONS
    assert kept.sections_left_out == kept.failed_left_out == 2 * page_runs.MOST_SECTIONS
    assert sum(len(each.rows) + each.left_out for each in kept.sections) == 2 * page_runs.MOST_SECTIONS


def test_short_lines_of_the_raw_text_are_bounded(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(page_runs, "MOST_LINES", 4)
    tree = tree_of(page_of(GOOD))
    assert len(tree.first("ol", "lines").all("li")) == 4
    assert "cut after 4 lines; 5 more lines read and judged" in tree.first("details", "raw").text


# --- figures ----------------------------------------------------------------------------------------------------------

def numbers(pattern: str, drawing: str) -> list[float]:
    return [float(each) for each in re.findall(pattern, drawing)]


def bound(kind: str, value: float, severity: str = "alarm") -> Limit:
    return Limit({"<": "LESS_THAN_OR_EQUAL", ">": "GREATER_THAN_OR_EQUAL", "=": "EQUAL"}[kind], value, "here", severity)


@pytest.mark.parametrize("value, place", [(5, "below"), (50, "within"), (95, "above")])
def test_pointer_stands_where_the_value_is(value: float, place: str) -> None:
    drawing = figures.limit_bar(value, [bound(">", 10), bound("<", 90)])
    low, high = numbers(r'tick-alarm" x1="([\d.]+)"', drawing)
    left, right = numbers(r'points="([\d.]+),0 ', drawing)[0], numbers(r'points="[\d.]+,0 ([\d.]+),0', drawing)[0]
    x = (left + right) / 2
    assert 0 < low < high < figures.BAR_WIDTH and 0 <= x <= figures.BAR_WIDTH
    assert place == ("below" if x < low else "above" if x > high else "within")


def test_a_bar_without_any_span_is_drawn() -> None:
    assert "nan" not in figures.limit_bar(0, [bound("=", 0)]) and "nan" not in figures.plain_bar(0, 0, 0)


def test_tightest_limits_count() -> None:
    limits = [bound(">", 1), bound(">", 3), bound("<", 9), bound("<", 7), bound("<", 6, "warning")]
    assert figures.limits_said(limits) == "warning above 6, alarm 3 to 7"


def test_time_bar_lies_in_its_part_of_the_run() -> None:
    drawing = figures.time_bar(15, 20, 10, 30, "passed")
    x, width = numbers(r'part passed" x="([\d.]+)"', drawing)[0], numbers(r'y="2" width="([\d.]+)"', drawing)[0]
    assert (x, width) == (figures.BAR_WIDTH / 4, figures.BAR_WIDTH / 4)


def chart_rows(tree: Element) -> list[list[str]]:
    table = tree.first("section", "fans").first("table")
    return [[cell.text.strip() for cell in row.children if isinstance(cell, Element)] for row in
            table.first("tbody").all("tr")]


def test_fan_curves_join_the_tables_of_several_runs() -> None:
    tree = tree_of(page_of(FANS.format(80, 9600, 9500) + FANS.format(40, 4800, 4700)))
    assert chart_rows(tree) == [["FAN15-0", "40", "4800"], ["FAN15-0", "80", "9600"],
                                ["FAN15-1", "40", "4700"], ["FAN15-1", "80", "9500"]]
    lines = tree.first("svg", "chart").all("polyline")
    assert len(lines) == 2 and len(lines[0].get("points").split()) == 2
    left, right = ([float(part) for part in place.split(",")] for place in lines[0].get("points").split())
    assert left[0] < right[0] and left[1] > right[1], "more percent is further right, more rpm is higher up"


def query(command: str, answer: str) -> str:
    return f"# kestro_test fan_test {command}\n{answer}\n{END}"


def test_fan_curves_of_queries_one_by_one() -> None:
    log = "".join(query(*each) for each in (
        ("fan_get_speed_percent 15 0", "drv_fan_get_speed_percent:50"),
        ("fan_get_speed 15 0", "drv_fan_get_speed:6000"),
        # The percent belongs to another fan, or is from before a change: no point.
        ("fan_get_speed_percent 15 1", "drv_fan_get_speed_percent:70"),
        ("fan_get_speed 15 0", "drv_fan_get_speed:6100"),
        ("fan_set_speed_percent 15 1 90", "drv_fan_set_speed_percent success percent:90"),
        ("fan_get_speed 15 1", "drv_fan_get_speed:9100")))
    assert chart_rows(tree_of(page_of(log))) == [["FAN15-0", "50", "6000"]]


def test_a_row_without_a_percent_gets_none_of_another_table() -> None:
    lone = FANS.format(40, 4800, 4700).replace("40%(", "N/A(").replace(END, "") + FANS.format(80, "N/A", "N/A")
    assert "<figure>" not in page_of(lone) and "<figure>" in page_of(lone + FANS.format(80, 9600, 9500))


SHIFTS = """[FAN15]
[FAN15-{fan}]: 
Current Shift: 5
Max Shift    : 2
Shift   MaxPower   MaxSpeed
1       {0}          1200
2       24         12000
"""


def test_curves_of_the_shifts_have_a_line_for_each_fan() -> None:
    tree = tree_of(page_of(SHIFTS.format(1, fan=0) + SHIFTS.format(3, fan=1) + END))
    titles = [each.text for each in tree.all("figcaption")]
    assert titles == ["board-1.txt: max power by shift", "board-1.txt: max speed by shift"]
    assert chart_rows(tree) == [["FAN15-0", "1", "1"], ["FAN15-0", "2", "24"], ["FAN15-1", "1", "3"],
                                ["FAN15-1", "2", "24"]]
    assert [each.text for each in tree.first("section", "fans").first("thead").all("th")] == ["Fan", "shift", "W"]


@pytest.mark.parametrize("values, step, top", [([9], 2, 10), ([12000], 2000, 12000), ([0.3], 0.05, 0.3),
                                               ([], 0.2, 1)])
def test_axis_ends_at_a_round_number(values: list[float], step: float, top: float) -> None:
    axis = figures.axis_of("rpm", values)
    assert axis.step == pytest.approx(step) and axis.top == pytest.approx(top)


def test_more_fans_than_can_be_told_apart_are_in_the_table() -> None:
    rows = "".join(f"FAN15  {fan}       Normal    50%({6000 + fan} )   12000     24        10        5\n"
                   for fan in range(10))
    tree = tree_of(page_of(rows + END))
    assert len(tree.first("svg", "chart").all("", "series")) == figures.SERIES
    assert "2 more in the table only" in tree.first("ul", "legend").text and len(chart_rows(tree)) == 10


def test_curves_that_are_the_same_are_drawn_once() -> None:
    tree = tree_of(page_of(FANS.format(40, 4800, 4800)))
    assert [each.text.strip() for each in tree.first("ul", "legend").all("li")] == ["FAN15-0, FAN15-1"]
    assert len(tree.first("svg", "chart").all("", "series")) == 1 and len(chart_rows(tree)) == 2


def test_curves_are_bounded(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(curves, "CHARTS", 2)
    tree = tree_of(page_of(*[FANS.format(40, 4800, 4700)] * 5))
    assert len(tree.all("figure")) == 2 and "6 points of further curves" in tree.first("footer").text


def test_what_fails_most_is_told_for_several_runs() -> None:
    tree = tree_of(page_of(BAD, GOOD, BAD))
    rows = tree.first("table", "frequent").first("tbody").all("tr")
    assert [[cell.text.strip() for cell in row.children if isinstance(cell, Element)] for row in rows] == \
        [["2", "voltage", "voltage avs chip 0 alert"]]
    assert "What fails most" not in page_of(BAD)


# --- command line -----------------------------------------------------------------------------------------------------

def test_option_writes_the_page(tmp_path: Path, capsys: pytest.CaptureFixture) -> None:
    output, result = tmp_path / "board.txt", tmp_path / "page.html"
    output.write_text("Error: get fan15 num fail\n" + END)
    assert main(["--html", str(result), "--name", "Bench 4", "--quiet", str(output)]) == 1
    assert tree_of(result.read_text()).first("h1").text == "Bench 4"
    assert main(["--html", "-", "--name", "Bench 4", str(output)]) == 1
    assert capsys.readouterr().out == result.read_text()
