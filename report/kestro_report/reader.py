"""Reads an output line by line and tells the writers what it says: runs, sections, checks and measurements."""

import dataclasses
from collections import Counter
from collections.abc import Iterable

from kestro_report.console import DIED, STARTED_AGAIN, KnownParts, command_in, is_torn
from kestro_report.grammar import Grammar, Rule
from kestro_report.order import Parts
from kestro_report.records import (FAILED, KEPT, MISSING, PASSED, UNSUPPORTED, Check, Limit, Line, Measurement, Run,
                                   Section, Writer)
from kestro_report.sayings import Saying, Sayings, saying_of
from kestro_report.settings import Settings
from kestro_report.texts import TextLine, printable

LONGEST_KEPT = 1000

# Where a test tells of its parts, what it tells of itself stands in a part of its own.
WHOLE = "the test as a whole"

def shortened(line: Line) -> Line:
    """Of an unknown line that is kept its beginning is enough."""
    return line if len(line.text) <= LONGEST_KEPT else dataclasses.replace(line, text=line.text[:LONGEST_KEPT] + " ...")


def said_of(measurement: Measurement, limit: Limit) -> str:
    unit = measurement.unit
    return f"{measurement.value:g} {unit} is {limit.side} {limit.value:g} {unit} ({limit.source})."


class Reader:
    """The state of one input: the open run and section. Feed it lines, then end it."""

    def __init__(self, grammar: Grammar, writers: Iterable[Writer], settings: Settings | None = None) -> None:
        self.grammar = grammar
        self.sayings = Sayings(grammar)
        self.known_parts = KnownParts(grammar)
        self.writers = list(writers)
        self.settings = settings or Settings()
        self.outcomes: Counter[str] = Counter()  # of the runs that are read
        self.run_count = 0
        self.run: Run | None = None
        self.section: Section | None = None
        self.source = ""
        self.facts: dict[str, str] = {}
        self.command = ""
        self.is_awaited = False  # a command line has come, and nothing of its output yet
        self.cut: Line | None = None  # the line before, where no rule knows it and it has no end
        self.forget_run()

    def forget_run(self) -> None:
        self.run = None
        self.section = None
        self.is_ended = False  # its end line has come
        self.is_listing = False
        self.is_timed = True
        self.failed_command = False
        self.just_failed = ""  # the check that the line before told to have failed
        self.end_line: Line | None = None
        self.judges_itself = False
        self.strange: Line | None = None  # the first line that may be what is left of a check's
        self.module = ""  # the module command whose lines these are
        self.lines_behind = 0  # its end
        self.text_follows = False
        self.rows: tuple[Rule, ...] = ()  # what lines of the text that follows may say
        self.parts = Parts(self.grammar)
        self.section_count = 0
        self.begun: Counter[str] = Counter()  # sections, by their names
        self.seen: dict[str, list[int]] = {}  # how often each check of the section passed and failed

    # --- events -------------------------------------------------------------------------------------------------------

    def tell(self, event: str, *what: object) -> None:
        for writer in self.writers:
            getattr(writer, event)(*what)

    def begin_source(self, source: str, facts: dict[str, str] | None = None, command: str = "") -> None:
        self.source, self.facts, self.command = source, dict(facts or {}), command
        self.found_run = False
        self.is_awaited = False
        self.cut = None

    def begin_run(self, time: float | None) -> None:
        self.end_run("the next command begins before this one has ended")
        self.run_count += 1
        self.run = Run(self.run_count, self.source, self.command, dict(self.facts), began=time,
                       ended=time)
        self.command = ""
        self.found_run = True
        self.is_awaited = False
        self.tell("run_begins", self.run)
        self.begin_section("", None)

    def begin_section(self, name: str, line: Line | None) -> None:
        assert self.run is not None
        self.end_section()
        self.section = Section(name, self.run, self.section_count, line, began=line.time if line else self.run.began)
        self.section_count += 1
        self.begun[name] += 1
        self.seen = {}
        self.tell("section_begins", self.section)

    def end_section(self) -> None:
        if self.section is not None:
            self.section.ended = self.run.ended
            self.add_missing()
            self.tell("section_ends", self.section)
            self.section = None

    def end_run(self, why_cut: str) -> None:
        run = self.run
        if run is None:
            return
        if self.is_timed and not self.is_listing and not self.is_ended:
            run.problems.append(why_cut)
        if (missing := self.parts.missing()) and not run.problems:
            run.problems.append(f"the part '{missing}' is missing")
        self.add_end(run)
        self.add_missing_sections()
        self.judge_end(run)
        self.outcomes[run.outcome] += 1
        self.tell("run_ends", run)
        self.forget_run()

    def add_end(self, run: Run) -> None:
        """A sub-command that shows nothing to judge has at least ended without the failure that the dispatcher would
        tell. Of a test that judges by itself this is not enough: there it means that nothing was tested."""
        is_single = self.section is not None and self.section.number == 0 and not self.judges_itself
        if self.end_line is not None and is_single and not any(run.counts.values()):
            self.add_check(Check(run.command or "the sub-command ended without a failure", PASSED, self.section,
                                 self.end_line))

    def judge_end(self, run: Run) -> None:
        status = run.status
        if status is not None and status < 0:
            run.problems.append(f"ended by signal {-status}")
        elif status not in (None, 0, 255):
            run.problems.append(f"ended with status {status}, which says that the program could not do its work")
        elif status == 255 and not run.counts[FAILED]:
            run.problems.append("ended with status 255, and no line tells of a failure")
        if self.strange is not None:
            why = "is damaged" if is_torn(self.strange.text) else "sounds like a check and is not known"
            run.problems.append(f"line {self.strange.number} {why}: {self.strange.text}")
        if run.checked == 0 and not run.problems:
            run.problems.append("nothing was checked")

    def end_source(self, problem: str = "", status: int | None = None) -> None:
        """The input is at its end. A problem says why a program that was run here did not end by itself."""
        problem = problem or self.facts.get("problem", "")
        if not problem and self.cut is not None and self.run is not None and not self.is_ended:
            problem = f"line {self.cut.number}, the last one, is cut: {self.cut.text}"
        if not problem:
            self.end_awaited()
        if self.run is None and (problem or not self.found_run):
            self.begin_run(None)
            self.is_listing = True
            problem = problem or "nothing that kestro_test prints is in this input"
        if self.run is not None:
            self.run.status = status if status is not None else self.status_fact()
            self.run.problems += [problem] if problem else []
        self.end_run("the output ends before the program did")

    def end_awaited(self) -> None:
        """A command of which a console shows nothing but its line."""
        if self.is_awaited and self.run is None:
            self.begin_run(None)
            self.is_listing = True
            self.run.problems.append("nothing of its output is here: it died, or the board did")
            self.end_run("")

    def status_fact(self) -> int | None:
        try:
            return int(self.facts["status"])
        except (KeyError, ValueError):
            return None

    # --- checks that a good run has -----------------------------------------------------------------------------------

    def add_missing(self) -> None:
        """Checks that passed on a good board and have neither passed nor failed here."""
        if self.settings.expected is None:
            return
        name = self.section.name
        for check, count in self.settings.expected.passed.get((name, self.begun[name]), {}).items():
            passed, failed = self.seen.get(check, (0, 0))
            if not failed and passed < count:
                self.add_check(Check(check, MISSING, self.section, None,
                                     f"A good run passes it {count} times, this one {passed}." if count > 1 else
                                     "A good run has it, this one does not."))

    def add_missing_sections(self) -> None:
        self.end_section()
        for name, which in self.settings.expected.passed if self.settings.expected else ():
            if which > self.begun[name]:
                self.begin_section(name, None)
                self.end_section()

    # --- lines --------------------------------------------------------------------------------------------------------

    def feed(self, text_line: TextLine) -> None:
        text = text_line.text
        line = Line(text_line.number, printable(text), "unknown", {}, text_line.time)
        if self.run is not None and text_line.time is not None:
            self.run.ended = text_line.time
        if any(pattern.search(text) for pattern in self.settings.ignore):
            line.kind = "ignored"
            self.tell("line", self.section, line)
            return
        if command := command_in(text):
            self.take_command(command, line)
            return
        saying = self.sayings.of(text) or self.row_of(text)
        self.cut = line if saying is None and not text_line.whole else None
        if saying is None:
            self.take_unknown(line)
        else:
            self.take(saying, line)

    def take_command(self, command: str, line: Line) -> None:
        self.end_run("the next command line comes before this one has ended")
        # A line that is edited is shown again and again, each time a little longer.
        if command == self.command or not command.startswith(self.command):
            self.end_awaited()
        self.command, self.is_awaited, self.cut = command, True, None
        line.kind = "note"
        self.tell("line", None, line)

    def row_of(self, text: str) -> Saying | None:
        for rule in self.rows if self.text_follows else ():
            if match := rule.pattern.fullmatch(text):
                return saying_of(rule, match.groupdict(), text)
        return None

    def take_unknown(self, line: Line) -> None:
        has_died = self.look_for_death(line)
        if self.run is None or self.is_ended:
            line.kind = "outside"
            self.lines_behind += 1
        elif self.text_follows and not self.known_parts.in_text(line.text):
            line.kind = "text"
        else:
            if self.strange is None and not has_died and self.known_parts.in_line(line.text, self.is_listing):
                self.strange = shortened(line)
            self.run.unknown += 1
            if len(self.run.unknown_lines) < KEPT:
                self.run.unknown_lines.append(shortened(line))
        if self.run is not None:
            self.run.lines += 1
        self.tell("line", self.section, line)

    def look_for_death(self, line: Line) -> bool:
        """A shell speaks of a program that has died at once, and a board that starts again while one runs ends it."""
        if self.run is None or self.run.problems or self.lines_behind:
            return False
        has_died = DIED.fullmatch(line.text) or (not self.is_ended and STARTED_AGAIN.match(line.text))
        if has_died:
            self.run.problems.append(f"line {line.number} tells that it died: {shortened(line).text}")
        return bool(has_died)

    def is_of_another_command(self, rule: Rule) -> bool:
        """A self-test in an order has no lines of module commands, and a module command none of another's. Help is
        printed alone."""
        if self.is_ended or rule.group not in self.grammar.modules or rule.kind in ("data", "note"):
            return False
        if self.is_listing:
            return rule.kind != "listing"
        return self.parts.is_begun or self.module not in ("", rule.group)

    def take(self, saying: Saying, line: Line) -> None:
        rule = saying.rule
        if self.run is not None and self.is_of_another_command(rule):
            self.end_run("another command begins before this one has ended")
        line.kind, line.values = saying.kind, saying.values
        is_dispatchers = rule.group == "shell" and rule.check == "{name}"
        if self.run is None or (self.is_ended and not is_dispatchers and not rule.after_end):
            self.end_run("")
            self.begin_run(line.time)
        if rule.kind == "begin":
            self.take_banner(rule, saying.name, line)
        elif rule.of_run and self.judges_itself and self.section.name not in ("", WHOLE):
            self.begin_section(WHOLE, line)
        self.run.lines += 1
        if rule.group in self.grammar.modules and rule.kind not in ("data", "note"):
            self.module = rule.group
        if self.strange is None and is_torn(line.text):
            self.strange = shortened(line)
        if rule.kind != "data":
            self.text_follows = rule.text_follows
        elif rule.text_follows:
            self.text_follows = True
        if rule.rows or not self.text_follows:
            self.rows = rule.rows
        if rule.group in self.grammar.untimed:
            self.is_timed = False
        self.is_listing = self.is_listing or rule.kind == "listing"
        self.tell("line", self.section, line)
        self.take_measurements(saying, line)
        self.just_failed = ""
        # The dispatcher says it twice: of the sub-command, and of the module command that it belongs to.
        if saying.outcome and not (is_dispatchers and self.failed_command):
            self.add_check(Check(saying.name, saying.outcome, self.section, line, saying.means, saying.code))
        self.failed_command = self.failed_command or is_dispatchers
        self.is_ended = self.is_ended or rule.kind == "end" or is_dispatchers
        self.end_line = line if rule.kind == "end" else self.end_line
        self.judges_itself = self.judges_itself or rule.group in self.grammar.judging

    def take_measurements(self, saying: Saying, line: Line) -> None:
        # What a failed call left on the check's line before this one is no value.
        if saying.rule.check and saying.name == self.just_failed:
            return
        for each in saying.measured:
            measurement = Measurement(each.name, each.value, each.unit, self.section, line, series=each.series)
            if self.settings.limits_of:
                measurement.limits = self.settings.limits_of(measurement)
            self.tell("measurement", measurement)
            self.judge_measurement(measurement)

    def judge_measurement(self, measurement: Measurement) -> None:
        """What has a limit is a check of its own; a warning is told and fails nothing."""
        if not any(limit.severity == "alarm" for limit in measurement.limits):
            return
        broken = [limit for limit in measurement.broken if limit.severity == "alarm"]
        means = said_of(measurement, broken[0]) if broken else ""
        self.add_check(Check(f"{measurement.name} within limits", FAILED if broken else PASSED, measurement.section,
                             measurement.line, means))

    def add_check(self, check: Check) -> None:
        self.just_failed = check.name if check.bad else ""
        if check.bad and self.settings.calls_of and not check.calls:
            check.calls = self.settings.calls_of(check)
        for counts in (self.run.counts, check.section.counts):
            counts[check.outcome] += 1
        if self.settings.expected is not None:
            seen = self.seen.setdefault(check.name, [0, 0])
            seen[0] += check.outcome == PASSED
            seen[1] += check.bad
        if check.bad and len(self.run.failures) < KEPT:
            self.run.failures.append(check)
        self.tell("check", check)

    # --- banners ------------------------------------------------------------------------------------------------------

    def take_banner(self, rule: Rule, name: str, line: Line) -> None:
        if not rule.within:
            self.follow_order(rule, name, line)
        elif not self.begun[rule.within]:
            if wrong := self.parts.without_beginning(rule.within):
                self.tell_of_order(wrong, line)
        self.begin_section(f"{rule.within}: {name}" if rule.within else name, line)

    def follow_order(self, rule: Rule, name: str, line: Line) -> None:
        if order := self.parts.first_of(rule, name):
            if self.parts.is_begun or self.section.name or self.module or self.is_listing:
                self.end_run("the same test begins anew before it has ended: it was cut off, or two runs are mixed in "
                             "one log")
                self.begin_run(line.time)
            self.parts.begin(order)
        elif wrong := self.parts.go_on(rule, name):
            self.tell_of_order(wrong, line)

    def tell_of_order(self, wrong: str, line: Line) -> None:
        self.run.problems.append(f"line {line.number}: {wrong}")


def read_source(reader: Reader, source: str, lines: Iterable[TextLine], facts: dict[str, str] | None = None) -> None:
    reader.begin_source(source, facts)
    for line in lines:
        reader.feed(line)
    reader.end_source()
