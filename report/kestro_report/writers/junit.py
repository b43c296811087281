"""JUnit XML: a test suite for each section of a run, a test case for each check.

The head of the file counts what comes behind it, so the suites wait in a temporary file until the end.
"""

import re
import tempfile
from datetime import datetime, timezone
from typing import TextIO
from xml.sax.saxutils import escape, quoteattr

from kestro_report.records import FAILED, INCOMPLETE, MISSING, PASSED, UNSUPPORTED, Check, Line, Run, Section, Writer

# Output of a section beyond this is left out: readers of this format keep all of it in memory.
LONGEST_OUTPUT = 1 << 20
FORBIDDEN = re.compile("[\x00-\x08\x0b-\x1f\ud800-\udfff\ufffe\uffff]")


def xml_text(text: str) -> str:
    """Control characters have been written out before; of what is left XML forbids surrogates and two signs."""
    return FORBIDDEN.sub("?", text)


def attribute(text: str) -> str:
    return quoteattr(xml_text(text))


def attributes(**values: object) -> str:
    return "".join(f" {name}={attribute(str(value))}" for name, value in values.items() if value not in (None, ""))


def seconds_of(section: Section) -> str:
    if section.began is None or section.ended is None:
        return "0"
    return f"{max(section.ended - section.began, 0):.3f}"


def moment(time: float | None) -> str | None:
    """Stamps that begin with the log's own zero are no moments."""
    if time is None or time < 1e8:
        return None
    return datetime.fromtimestamp(time, timezone.utc).strftime("%Y-%m-%dT%H:%M:%S")


class JUnit(Writer):
    def __init__(self, stream: TextIO, title: str = "kestro_test") -> None:
        self.stream = stream
        self.title = title
        self.suites = tempfile.TemporaryFile("w+", encoding="utf-8")
        self.total = {"tests": 0, "failures": 0, "errors": 0, "skipped": 0}
        self.cases: list[str] = []
        self.output: list[str] = []
        self.output_size = 0

    def section_begins(self, section: Section) -> None:
        self.cases, self.output, self.output_size = [], [], 0

    def line(self, section: Section | None, line: Line) -> None:
        if section is None:
            return
        self.output_size += len(line.text) + 1
        if self.output_size <= LONGEST_OUTPUT:
            self.output.append(line.text)

    def check(self, check: Check) -> None:
        at = {"line": check.line.number} if check.line else {}
        case = (f"    <testcase{attributes(name=check.name, classname=self.class_of(check.section), **at)} time=\"0\"")
        inner = ""
        if check.bad:
            message = check.means or (check.line.text.strip() if check.line else "missing")
            said = "\n".join([*([check.line.text] if check.line else []), *(f"call: {call}" for call in check.calls)])
            inner = f"<failure{attributes(message=message, type=check.outcome)}>{escape(xml_text(said))}</failure>"
        elif check.outcome == UNSUPPORTED:
            inner = f"<skipped{attributes(message='the board does not support it')}/>"
        self.cases.append(f"{case}>{inner}</testcase>\n" if inner else f"{case}/>\n")

    def class_of(self, section: Section) -> str:
        run = section.run
        name = run.facts.get("dut") or run.source
        return f"{name}.{section.name}" if section.name else name

    def section_ends(self, section: Section) -> None:
        counts = section.counts
        if any(counts.values()):
            bad = counts[FAILED] + counts[MISSING]
            self.write_suite(section, sum(counts.values()), failures=bad, skipped=counts[UNSUPPORTED])

    def write_suite(self, section: Section, tests: int, failures: int = 0, errors: int = 0, skipped: int = 0) -> None:
        counts = {"tests": tests, "failures": failures, "errors": errors, "skipped": skipped}
        for name, number in counts.items():
            self.total[name] += number
        run = section.run
        self.suites.write(f"  <testsuite{attributes(name=self.suite_name(section), **counts)}"
                          f"{attributes(time=seconds_of(section), timestamp=moment(section.began))}"
                          f"{attributes(hostname=run.facts.get('dut'))}>\n")
        facts = {"command": run.command, "serial": run.facts.get("serial"), "location": run.facts.get("location")}
        given = [f"<property{attributes(name=name, value=value)}/>" for name, value in facts.items() if value]
        if given:
            self.suites.write("    <properties>" + "".join(given) + "</properties>\n")
        self.suites.writelines(self.cases)
        if self.output:
            left_out = "\n(the rest is left out)" if self.output_size > LONGEST_OUTPUT else ""
            said = escape(xml_text("\n".join(self.output) + left_out))
            self.suites.write(f"    <system-out>{said}</system-out>\n")
        self.suites.write("  </testsuite>\n")

    def suite_name(self, section: Section) -> str:
        return f"{section.run.title} / {section.name}" if section.name else section.run.title

    def run_ends(self, run: Run) -> None:
        """A run that did not end properly is an error of its own, so that nobody takes its passed checks for all."""
        if run.outcome != INCOMPLETE:
            return
        section = Section("end of the run", run, 0, began=run.began, ended=run.ended)
        said = "\n".join(run.problems)
        self.cases = [f"    <testcase{attributes(name='the run ended properly', classname=self.class_of(section))} "
                      f"time=\"0\"><error{attributes(message=run.problems[0], type='incomplete')}>"
                      f"{escape(xml_text(said))}</error></testcase>\n"]
        self.output, self.output_size = [], 0
        self.write_suite(section, 1, errors=1)

    def report_ends(self) -> None:
        self.stream.write('<?xml version="1.0" encoding="UTF-8"?>\n')
        self.stream.write(f"<testsuites{attributes(name=self.title, **self.total)}>\n")
        self.suites.seek(0)
        while chunk := self.suites.read(1 << 16):
            self.stream.write(chunk)
        self.stream.write("</testsuites>\n")
        self.suites.close()
