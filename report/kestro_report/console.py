"""What a console log holds beside the program's own lines: command lines behind prompts, words of the shell and of the
kernel, and what these make of a line that they come into the middle of."""

import re
from functools import lru_cache

from kestro_report.grammar import Grammar

# Behind a prompt, or as a shell shows what it starts; words such as sudo and settings may come before the program.
PROMPT = re.compile(
    r"(?:[#$>] ?|^\++ |^\S*% ?)"
    r"(?:(?:\w+=\S*|sudo|doas|env|exec|nice|nohup|time|timeout|-\S+|\d+[smh]?) +)*"
    r"(?:[\w./-]*/)?(?:kestro_test +|kestro_sim +(?:\S+ +)*?)(?P<words>[a-z0-9]\w*_test\b.*)")

# What a shell says of a program that a signal has ended, a script's shell with the script's line and the command.
DIED = re.compile(
    r"(?:\S+: line \d+: +\d+ )?(?:Segmentation fault|Bus error|Aborted|Killed|Illegal instruction|Bad system call|"
    r"Floating point exception|Trace/breakpoint trap)(?: +\(core dumped\))?(?: {2,}.*)?\s*")
STARTED_AGAIN = re.compile(r"Kernel panic - |U-Boot (?:SPL )?\d{4}\.\d\d|\[ *0\.0{6}\] ")

# A kernel's message in the middle of a line; one at its beginning is a line of its own.
TORN = re.compile(r"[^\s<>\d].*\[ *\d{1,7}\.\d{6}\] ")
# An unknown line that speaks like a check may be one of a newer program: then nobody knows how the run came out.
SOUNDS_LIKE_A_CHECK = re.compile(r"^(?:Error|Success|Succ?ess)|\bfail|\berror\b|(?:rror|uccess) *:", re.IGNORECASE)
# Nor does a driver's own text, wherever it may stand, begin as the lines of a check do.
BEGINS_LIKE_A_CHECK = re.compile(r"(?:Error|Success|Info) *:")
PREFIX = re.compile(r"^(?:Error|Success|Info) *: *")
# Shorter ones are in texts of others, too.
SHORTEST_PART = 14
# Lines that say the same again are looked at once; of longer ones few are kept for that.
SHORT = 200


def command_in(text: str) -> str | None:
    """The words of kestro_test where the line is a command line."""
    if "kestro_" not in text or not (prompt := PROMPT.search(text)) or prompt["words"].endswith("^C"):
        return None
    return " ".join(prompt["words"].split())


def is_torn(text: str) -> bool:
    return "] " in text and TORN.match(text) is not None


class KnownParts:
    """The words that lines of checks which may fail are known by, also where something stands in front of them."""

    def __init__(self, grammar: Grammar) -> None:
        parts = {max((PREFIX.sub("", literal) for literal in rule.literals), key=len)
                 for rule in grammar.rules if rule.kind in ("failed", "judged")}
        self.parts = sorted(part for part in parts if len(part) >= SHORTEST_PART)
        self.are_in_short = lru_cache(1 << 12)(self.look_for)
        self.are_in_long = lru_cache(1 << 6)(self.look_for)

    def look_for(self, text: str) -> bool:
        return any(part in text for part in self.parts)

    def are_in(self, text: str) -> bool:
        return self.are_in_short(text) if len(text) <= SHORT else self.are_in_long(text)

    def in_line(self, text: str, is_help: bool) -> bool:
        """Help shows the words of a command as the line does that tells of wrong ones."""
        return is_torn(text) or SOUNDS_LIKE_A_CHECK.search(text) is not None or (not is_help and self.are_in(text))

    def in_text(self, text: str) -> bool:
        """Within a driver's own text, which may speak of errors that it has counted."""
        return is_torn(text) or BEGINS_LIKE_A_CHECK.match(text) is not None or self.are_in(text)
