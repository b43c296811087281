"""The page in a real browser: search, filter, keyboard, colours, a phone's width, paper, and no request to anywhere.

What the browser shows is kept as pictures in KESTRO_ARTEFACTS, or in build/report-artefacts.
"""

import base64
import json
import os
import shutil
from collections.abc import Callable, Iterator
from pathlib import Path

import pytest
from page_samples import BAD, BAD_LINE, CUT, FANS, GOOD, page_of, stamped, voltage_limits

from kestro_report.settings import Settings

webdriver = pytest.importorskip("selenium.webdriver", reason="python3-selenium is not installed")
from selenium.webdriver.chrome.service import Service  # noqa: E402
from selenium.webdriver.common.action_chains import ActionChains  # noqa: E402
from selenium.webdriver.common.by import By  # noqa: E402
from selenium.webdriver.common.keys import Keys  # noqa: E402
from selenium.webdriver.support.ui import WebDriverWait  # noqa: E402

CHROMIUM, DRIVER = shutil.which("chromium"), shutil.which("chromedriver")
pytestmark = pytest.mark.skipif(not (CHROMIUM and DRIVER), reason="chromium and chromium-driver are not installed")

ARTEFACTS = Path(os.environ.get("KESTRO_ARTEFACTS") or Path(__file__).parents[3] / "build/report-artefacts")
HOSTILE = "<script>window.hurt = 1</script><img src=x onerror='window.hurt = 1'></script>"
DESKTOP, PHONE = (1200, 900), (360, 740)
ARGUMENTS = ("--headless=new", "--disable-gpu", "--disable-dev-shm-usage", "--disable-background-networking",
             "--disable-component-update", "--no-first-run", "--hide-scrollbars", "--force-color-profile=srgb")


def browser_options(profile: Path):
    options = webdriver.ChromeOptions()
    options.binary_location = CHROMIUM
    for argument in (*ARGUMENTS, f"--user-data-dir={profile}"):
        options.add_argument(argument)
    if os.geteuid() == 0:
        options.add_argument("--no-sandbox")
    options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
    return options


class Browser:
    def __init__(self, driver, folder: Path) -> None:
        self.driver = driver
        self.folder = folder
        self.files = 0

    def run(self, script: str, *values):
        return self.driver.execute_script(script, *values)

    def command(self, name: str, **values):
        return self.driver.execute_cdp_cmd(name, values)

    def size(self, width: int, height: int, is_phone: bool = False) -> None:
        self.command("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1,
                     mobile=is_phone)

    def media(self, kind: str = "", scheme: str = "light") -> None:
        self.command("Emulation.setEmulatedMedia", media=kind,
                     features=[{"name": "prefers-color-scheme", "value": scheme}])

    def open(self, page: str) -> str:
        """The page in a file of its own, so that no test finds what another one has left."""
        self.files += 1
        file = self.folder / f"page-{self.files}.html"
        file.write_text(page, encoding="utf-8")
        self.size(*DESKTOP)
        self.media()
        for kind in ("browser", "performance"):
            self.driver.get_log(kind)
        self.driver.get(file.as_uri())
        self.run("localStorage.clear()")
        return file.as_uri()

    def wait(self, condition: Callable[[], object]):
        return WebDriverWait(self.driver, 20, 0.02).until(lambda _: condition())

    def keys(self, *keys: str) -> None:
        ActionChains(self.driver, 0).send_keys(*keys).perform()

    def one(self, selector: str):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def shown(self, selector: str) -> list:
        """What can be seen when scrolled to. The driver itself takes what lies in a closed part for seen."""
        return self.run("return [...document.querySelectorAll(arguments[0])].filter((each) => "
                        "each.checkVisibility({ visibilityProperty: true }))", selector)

    def texts(self, selector: str) -> list[str]:
        return [self.run("return arguments[0].innerText", each) for each in self.shown(selector)]

    def is_focused(self, selector: str) -> bool:
        return self.run("return document.activeElement.matches(arguments[0])", selector)

    def picture(self, name: str, is_whole: bool = False) -> None:
        ARTEFACTS.mkdir(parents=True, exist_ok=True)
        taken = self.command("Page.captureScreenshot", captureBeyondViewport=is_whole)
        (ARTEFACTS / f"{name}.png").write_bytes(base64.b64decode(taken["data"]))

    def requests(self) -> list[str]:
        """What was asked for, without what the page's policy has stopped."""
        events = [json.loads(entry["message"])["message"] for entry in self.driver.get_log("performance")]
        stopped = {event["params"]["requestId"] for event in events if event["method"] == "Network.loadingFailed"
                   and event["params"].get("blockedReason") == "csp"}
        return [event["params"]["request"]["url"] for event in events if event["method"] == "Network.requestWillBeSent"
                and event["params"]["requestId"] not in stopped]


@pytest.fixture(scope="module")
def started(tmp_path_factory: pytest.TempPathFactory) -> Iterator[Browser]:
    folder = tmp_path_factory.mktemp("browser")
    driver = webdriver.Chrome(service=Service(DRIVER), options=browser_options(folder / "profile"))
    driver.set_page_load_timeout(60)
    yield Browser(driver, folder)
    driver.quit()


@pytest.fixture
def browser(started: Browser) -> Iterator[Browser]:
    yield started
    assert started.driver.get_log("browser") == [], "the page complains on the console"


@pytest.fixture(scope="module")
def full_page() -> str:
    """Failed, cut and passed runs with everything that a page draws, and what would like to be markup."""
    outputs = (stamped(BAD.replace("what no rule knows", HOSTILE)), GOOD, CUT, FANS.format(40, 4800, 4700),
               FANS.format(80, 9600, 9500), FANS.format(60, 7100, 7000))
    return page_of(*outputs, facts={"serial": "2511040109"}, settings=Settings(limits_of=voltage_limits),
                   names=["bench/board-1.txt", f"{HOSTILE}.txt", "board-3.txt", "fans.txt", "fans.txt", "fans.txt"])


@pytest.fixture(scope="module")
def failed_page() -> str:
    return page_of(stamped(BAD), facts={"dut": "rack 3, board 17", "serial": "2511040109"},
                   settings=Settings(limits_of=voltage_limits))


def search(browser: Browser, text: str) -> str:
    """Types it, and gives what the page says about it."""
    before = browser.run("return document.getElementById('count').textContent")
    browser.keys("/")
    browser.keys(text)
    browser.wait(lambda: browser.run("return document.getElementById('count').textContent") != before)
    return browser.one("#count").text


def test_nothing_leaves_the_file_and_nothing_in_it_runs(browser: Browser, full_page: str) -> None:
    address = browser.open(full_page)
    assert browser.run("return window.hurt") is None
    assert browser.run("return document.scripts.length") == 1
    assert {url for url in browser.requests() if not url.startswith("data:")} == {address}


def test_policy_stops_what_is_not_the_pages_own(started: Browser, failed_page: str) -> None:
    """The two scripts that a hole in the page would let in; the console tells that they were stopped."""
    started.open(failed_page)
    started.run("const one = document.createElement('script'); one.textContent = 'window.hurt = 1';"
                "document.body.append(one); const other = document.createElement('script');"
                "other.src = 'https://localhost:9/x.js'; document.body.append(other)")
    said = started.wait(lambda: [each["message"] for each in started.driver.get_log("browser")])
    assert started.run("return window.hurt") is None and "Content Security Policy" in said[0]
    assert not [url for url in started.requests() if url.startswith("https")]


def test_search(browser: Browser, full_page: str) -> None:
    browser.open(full_page)
    everything = len(browser.shown("article"))
    said = search(browser, "avs chip 0")
    assert "Shown: 3 of 6 runs, 3 of " in said
    assert len(browser.shown("article")) == 3 < everything
    assert {text.split("\n")[0] for text in browser.texts("table.checks tbody td:nth-child(2)")} == \
        {"voltage avs chip 0 alert"}
    browser.keys(Keys.ESCAPE)
    browser.wait(lambda: len(browser.shown("article")) == everything)
    assert browser.one("#count").text == "" and not browser.is_focused("#query")
    # By the line behind a check, and by a device.
    assert ", 1 of " in search(browser, "alert fail 0x21")
    browser.keys(Keys.ESCAPE)
    assert "1 of 6 runs" in search(browser, "board-3.txt")
    browser.keys(Keys.ESCAPE)
    assert "0 of 6 runs, 0 of" in search(browser, "no such thing")
    assert browser.shown("article") == [] and browser.shown("#runs tbody tr") == []


def test_filter_by_verdict_and_section(browser: Browser, full_page: str) -> None:
    browser.open(full_page)
    browser.keys("f")
    assert set(browser.texts("table.checks tbody td:first-child")) == {"failed"}
    assert len(browser.shown("article")) == 1 == len(browser.shown(".failures > li"))
    assert len(browser.shown("#runs tbody tr")) == 2, "the run that was cut did not pass either"
    browser.keys("f")
    for kind in ("failed", "passed", "unsupported"):
        browser.one(f".kind[value={kind}]").click()
    (line,) = browser.texts("table.checks tbody td:nth-child(2)")
    assert line == HOSTILE
    browser.one("#reset").click()
    browser.run("const choice = document.getElementById('section'); choice.value = 'temperature';"
                "choice.dispatchEvent(new Event('change'))")
    assert {text.split("\n")[0] for text in browser.texts("details.section .name")} == {"temperature"}
    assert len(browser.texts("table.checks tbody td:first-child")) == 4


def test_what_a_filter_opens_is_closed_again(browser: Browser) -> None:
    browser.open(page_of(GOOD.replace("##### temperature", "what no rule knows\n##### temperature")))
    open_sections = "details.section[open]"
    browser.run("document.querySelector('details[data-s=temperature]').open = true")
    for kind in ("failed", "passed", "unsupported"):
        browser.one(f".kind[value={kind}]").click()
    assert browser.texts("table.checks tbody td:nth-child(2)") == ["what no rule knows"]
    browser.one("#reset").click()
    assert browser.texts(f"{open_sections} .name") == ["temperature"]


def test_everything_can_be_reached_by_the_tabulator(browser: Browser, failed_page: str) -> None:
    browser.open(failed_page)
    wanted = browser.run("""
        let number = 0;
        const seen = [...document.querySelectorAll("a[href], button, input, select, summary")].filter(
            (each) => each.checkVisibility({ contentVisibilityAuto: false }));
        for (const each of seen) { each.dataset.stop = ++number; }
        return number;""")
    assert wanted > 25
    stops = []
    for _ in range(wanted):
        browser.keys(Keys.TAB)
        stops.append(browser.run("""
            const at = document.activeElement, style = getComputedStyle(at);
            return [Number(at.dataset.stop), style.outlineStyle, parseFloat(style.outlineWidth)];"""))
    assert [stop for stop, *_ in stops] == list(range(1, wanted + 1)), "in the order in which they stand"
    assert {style for _, style, width in stops if width >= 2} == {"solid"}
    assert len([stop for stop in stops if stop[2] < 2]) == 0, "what has the focus is seen"


def test_by_keyboard_alone_to_the_line_of_a_failure(browser: Browser, failed_page: str) -> None:
    browser.open(failed_page)
    browser.keys(Keys.TAB)
    assert browser.is_focused(".skip") and browser.one(".skip").rect["x"] >= 0
    browser.keys(Keys.ENTER)
    assert browser.is_focused("main")
    browser.keys("n")
    assert browser.is_focused(".failures > li")
    browser.keys(Keys.TAB)
    browser.keys(Keys.ENTER)
    browser.wait(lambda: browser.is_focused(f"#r1l{BAD_LINE}"))
    line = browser.one(f"#r1l{BAD_LINE}")
    assert browser.shown(f"#r1l{BAD_LINE}") and "alert fail 0x21" in line.text
    top, bottom, height = browser.run("const box = arguments[0].getBoundingClientRect();"
                                      "return [box.top, box.bottom, innerHeight]", line)
    assert 0 <= top < bottom <= height
    plain = browser.run("return getComputedStyle(arguments[0].previousElementSibling).backgroundColor", line)
    assert browser.run("return getComputedStyle(arguments[0]).backgroundColor", line) != plain
    browser.picture("line")


def test_a_section_opens_and_closes_by_keyboard(browser: Browser, failed_page: str) -> None:
    browser.open(failed_page)
    browser.run("document.querySelector('details.section:not([open]) > summary').focus()")
    assert len(browser.shown("details[data-s=temperature] td")) == 0
    browser.keys(Keys.ENTER)
    browser.wait(lambda: len(browser.shown("details[data-s=temperature] td")) > 0)
    browser.keys("c")
    assert browser.shown("table") == []
    browser.keys("o")
    assert len(browser.shown("table")) == len(browser.driver.find_elements(By.CSS_SELECTOR, "table"))
    browser.keys("?")
    assert browser.shown("#keys kbd")
    browser.keys(Keys.ESCAPE)
    assert browser.shown("#keys") == []


def test_single_keys_can_be_switched_off(browser: Browser, failed_page: str) -> None:
    browser.open(failed_page)
    browser.run("document.getElementById('keys-on').checked = false")
    browser.keys("/")
    assert not browser.is_focused("#query")


def background(browser: Browser) -> str:
    return browser.run("return getComputedStyle(document.body).backgroundColor")


def test_colours_follow_the_system_and_the_switch(browser: Browser, failed_page: str) -> None:
    browser.open(failed_page)
    light = background(browser)
    browser.picture("light")
    browser.media(scheme="dark")
    dark = background(browser)
    browser.picture("dark")
    brightness = [sum(int(part) for part in colour[4:-1].split(", ")) for colour in (light, dark)]
    assert brightness[0] > 600 and brightness[1] < 150
    browser.keys("t")
    assert browser.one("#theme").text == "Colours: light" and background(browser) == light
    browser.media()
    browser.keys("t")
    assert browser.one("#theme").text == "Colours: dark" and background(browser) == dark
    browser.driver.refresh()
    assert background(browser) == dark, "the choice is kept"
    browser.keys("t")
    assert browser.one("#theme").text == "Colours: system" and background(browser) == light


def test_a_phone_scrolls_down_only(browser: Browser, full_page: str) -> None:
    browser.open(full_page)
    browser.size(*PHONE, is_phone=True)
    browser.picture("phone")
    browser.run("for (const each of document.querySelectorAll('details')) { each.open = true; }")
    widest = browser.run("""
        let widest = [0, ""];
        for (const each of document.querySelectorAll("body *:not(.quiet):not(.skip)")) {
            const right = each.getBoundingClientRect().right;
            if (right > widest[0]) { widest = [right, each.tagName + " " + each.className]; }
        }
        return [document.documentElement.scrollWidth, ...widest];""")
    assert widest[0] <= PHONE[0] and widest[1] <= PHONE[0] + 0.5, widest
    browser.picture("phone-all-open", is_whole=True)


def test_paper_has_failures_and_sections_and_no_controls(browser: Browser, failed_page: str) -> None:
    browser.open(failed_page)
    printed = base64.b64decode(browser.driver.print_page())
    assert printed.startswith(b"%PDF-") and len(printed) > 5000
    ARTEFACTS.mkdir(parents=True, exist_ok=True)
    (ARTEFACTS / "page.pdf").write_bytes(printed)
    browser.media("print", "dark")
    assert browser.shown("#tools, .skip, .raw, dialog, button, input") == []
    assert len(browser.shown(".failures > li")) == 1 and len(browser.shown("details.section > summary")) == 2
    assert background(browser) == "rgb(255, 255, 255)", "dark paper is no use"


def test_all_is_readable_without_a_script(browser: Browser, failed_page: str) -> None:
    browser.command("Emulation.setScriptExecutionDisabled", value=True)
    try:
        address = browser.open(failed_page)
        assert browser.shown("#tools") == browser.shown(f"#r1l{BAD_LINE}") == []
        assert "alert fail 0x21" in browser.one(".failures").text
        browser.driver.get(f"{address}#r1l{BAD_LINE}")
        assert browser.wait(lambda: browser.shown(f"#r1l{BAD_LINE}"))
    finally:
        browser.command("Emulation.setScriptExecutionDisabled", value=False)


def test_everything_has_a_name_for_a_screen_reader(browser: Browser, full_page: str) -> None:
    browser.open(full_page)
    nodes = browser.command("Accessibility.getFullAXTree")["nodes"]
    named = {"button", "checkbox", "searchbox", "combobox", "link", "article", "table", "DisclosureTriangle", "image"}
    found = [(each["role"]["value"], each.get("name", {}).get("value", "")) for each in nodes if not each["ignored"]]
    assert {"searchbox", "checkbox", "link", "article"} <= {role for role, _ in found}
    assert [role for role, name in found if role in named - {"table"} and not name.strip()] == []
    live = browser.one("#count")
    assert live.get_attribute("aria-live") == "polite" and live.get_attribute("role") == "status"


def test_a_fleet_is_searched(browser: Browser) -> None:
    outputs = [BAD if number % 100 == 7 else GOOD for number in range(1000)]
    browser.open(page_of(*outputs))
    assert len(browser.driver.find_elements(By.CSS_SELECTOR, "#runs tbody tr")) == 1000
    assert "10 of 1,000 runs" in search(browser, "avs chip 0 alert fail")
    browser.keys(Keys.ESCAPE)
    browser.wait(lambda: browser.one("#count").text == "")
    assert "1 of 1,000 runs" in search(browser, "board-500.txt")
    browser.picture("fleet")
