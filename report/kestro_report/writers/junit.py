"""JUnit XML: a test suite for each section of a run, a test case for each check.

The head of the file, and of each suite, counts what comes behind it, so cases wait in temporary files until then.
"""

import re
import shutil
import tempfile
from datetime import datetime, timezone
from typing import TextIO
from xml.sax.saxutils import escape, quoteattr

from kestro_report.records import FAILED, INCOMPLETE, MISSING, UNSUPPORTED, Check, Line, Run, Section, Writer

# Output of a section beyond this is left out: readers of this format keep all of it in memory.
LONGEST_OUTPUT = 1 << 20
# So much waits in memory before a temporary file is made for it.
IN_MEMORY = 1 << 20
# Control characters have been written out before; of what is left XML forbids surrogates and two signs.
FORBIDDEN = re.compile("[^\t\n\x20-\ud7ff\ue000-\ufffd\U00010000-\U0010ffff]")


def xml_text(text: str) -> str:
    return FORBIDDEN.sub("?", text)


def attributes(**values: object) -> str:
    return "".join(f" {name}={quoteattr(xml_text(str(value)))}" for name, value in values.items()
                   if value not in (None, ""))


def seconds_between(began: float | None, ended: float | None) -> float:
    return 0.0 if began is None or ended is None else max(ended - began, 0.0)


def moment(time: float | None) -> str | None:
    """Stamps that begin with the log's own zero are no moments."""
    if time is None or time < 1e8:
        return None
    return datetime.fromtimestamp(time, timezone.utc).strftime("%Y-%m-%dT%H:%M:%S")


class Output:
    """Lines of a section, as many as readers of the format can be asked to keep."""

    def __init__(self) -> None:
        self.lines: list[str] = []
        self.size = 0

    def add(self, text: str) -> None:
        self.size += len(text) + 1
        if self.size <= LONGEST_OUTPUT:
            self.lines.append(text)

    def element(self, name: str) -> str:
        if not self.size:
            return ""
        lines = self.lines if self.size <= LONGEST_OUTPUT else [*self.lines, "(the rest is left out)"]
        return f"    <{name}>{escape(xml_text(chr(10).join(lines)))}</{name}>\n"


class JUnit(Writer):
    def __init__(self, stream: TextIO, title: str = "kestro_test") -> None:
        self.stream = stream
        self.title = title
        self.suites = tempfile.SpooledTemporaryFile(IN_MEMORY, "w+", encoding="utf-8")
        self.cases = tempfile.SpooledTemporaryFile(IN_MEMORY, "w+", encoding="utf-8")
        self.total = {"tests": 0, "failures": 0, "errors": 0, "skipped": 0}
        self.seconds = 0.0
        self.output, self.unknown = Output(), Output()

    def section_begins(self, section: Section) -> None:
        self.begin_suite()

    def begin_suite(self) -> None:
        self.cases.seek(0)
        self.cases.truncate()
        self.output, self.unknown = Output(), Output()

    def line(self, section: Section | None, line: Line) -> None:
        if section is None:
            return
        self.output.add(line.text)
        if line.kind == "unknown":
            self.unknown.add(f"line {line.number} is unknown: {line.text}")

    def check(self, check: Check) -> None:
        at = {"line": check.line.number} if check.line else {}
        inner = ""
        if check.bad:
            message = check.means or (check.line.text.strip() if check.line else "missing")
            said = "\n".join([*([check.line.text] if check.line else []), *(f"call: {call}" for call in check.calls)])
            inner = f"<failure{attributes(message=message, type=check.outcome)}>{escape(xml_text(said))}</failure>"
        elif check.outcome == UNSUPPORTED:
            inner = f"<skipped{attributes(message='the board does not support it')}/>"
        self.write_case(attributes(name=check.name, classname=self.class_of(check.section), **at), inner)

    def write_case(self, said: str, inner: str) -> None:
        """No line tells how long a single check took."""
        self.cases.write(f"    <testcase{said} time=\"0\">{inner}</testcase>\n" if inner else
                         f"    <testcase{said} time=\"0\"/>\n")

    def class_of(self, section: Section) -> str:
        run = section.run
        name = run.facts.get("dut") or run.source
        return f"{name}.{section.name}" if section.name else name

    def section_ends(self, section: Section) -> None:
        """A section with nothing but unknown lines is shown, so that they are seen."""
        counts = section.counts
        if any(counts.values()) or self.unknown.size:
            bad = counts[FAILED] + counts[MISSING]
            self.write_suite(section, sum(counts.values()), failures=bad, skipped=counts[UNSUPPORTED])

    def write_suite(self, section: Section, tests: int, failures: int = 0, errors: int = 0, skipped: int = 0) -> None:
        counts = {"tests": tests, "failures": failures, "errors": errors, "skipped": skipped}
        for name, number in counts.items():
            self.total[name] += number
        seconds = seconds_between(section.began, section.ended)
        self.seconds += seconds
        self.suites.write(f"  <testsuite{attributes(name=self.suite_name(section), **counts, time=f'{seconds:.3f}')}"
                          f"{attributes(timestamp=moment(section.began), hostname=section.run.facts.get('dut'))}>\n")
        self.write_properties(section.run)
        self.cases.seek(0)
        shutil.copyfileobj(self.cases, self.suites)
        self.suites.write(self.output.element("system-out") + self.unknown.element("system-err") + "  </testsuite>\n")

    def write_properties(self, run: Run) -> None:
        values = {"source": run.source, "command": run.command, "serial": run.facts.get("serial"),
                  "location": run.facts.get("location")}
        given = [f"<property{attributes(name=name, value=value)}/>" for name, value in values.items() if value]
        if given:
            self.suites.write("    <properties>" + "".join(given) + "</properties>\n")

    def suite_name(self, section: Section) -> str:
        return f"{section.run.title} / {section.name}" if section.name else section.run.title

    def run_ends(self, run: Run) -> None:
        """A run that did not end properly is an error of its own, so that nobody takes its passed checks for all."""
        if run.outcome != INCOMPLETE:
            return
        section = Section("end of the run", run, 0, began=run.ended, ended=run.ended)
        said = escape(xml_text("\n".join(run.problems)))
        self.begin_suite()
        self.write_case(attributes(name="the run ended properly", classname=self.class_of(section)),
                        f"<error{attributes(message=run.problems[0], type='incomplete')}>{said}</error>")
        self.write_suite(section, 1, errors=1)

    def report_ends(self) -> None:
        self.stream.write('<?xml version="1.0" encoding="UTF-8"?>\n')
        self.stream.write(f"<testsuites{attributes(name=self.title, **self.total, time=f'{self.seconds:.3f}')}>\n")
        self.suites.seek(0)
        shutil.copyfileobj(self.suites, self.stream)
        self.stream.write("</testsuites>\n")
        self.suites.close()
        self.cases.close()
