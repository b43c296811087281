"""The options of the command line."""

import argparse
import re

from kestro_report import VERSION
from kestro_report.errors import InputError

ENDS = """exit status: 0 all passed; 1 a check failed; 2 this tool or its input is at fault; 3 the run did not end
properly: crashed, timed out, cut off, a part missing, or nothing checked"""


class Parser(argparse.ArgumentParser):
    """Of one command; all of them tell the version."""

    def __init__(self, **how: str) -> None:
        super().__init__(**how)
        self.add_argument("--version", action="version", version=f"kestro_report {VERSION}",
                          help="prints the version and ends")

    def error(self, message: str) -> None:
        raise InputError(f"{message}; '{self.prog} --help' tells what there is")


def regular_expression(text: str) -> re.Pattern:
    try:
        return re.compile(text)
    except re.error as error:
        raise argparse.ArgumentTypeError(f"'{text}' is no regular expression: {error}") from error


def seconds(text: str) -> float:
    try:
        number = float(text)
    except ValueError:
        number = 0.0
    if not 0 < number < 1e9:
        raise argparse.ArgumentTypeError(f"'{text}' is no time; a number of seconds above 0 is wanted")
    return number


def whole_number(text: str) -> int:
    if not (text.isascii() and text.isdigit() and 0 < int(text[:9]) and len(text) < 9):
        raise argparse.ArgumentTypeError(f"'{text}' is no number of rows; a whole number above 0 is wanted")
    return int(text)


def named_file(text: str) -> str:
    if text == "-":
        raise argparse.ArgumentTypeError("'-' is no file here, for standard output is the report's; the name of a file "
                                         "is wanted")
    return text


def judged_by(parser: argparse.ArgumentParser) -> argparse._ArgumentGroup:
    judged = parser.add_argument_group("what it is judged by")
    judged.add_argument("--limits", metavar="FILE", help="limits of measurements, YAML")
    judged.add_argument("--description", metavar="FILE", help="board description whose thresholds are limits, XML")
    judged.add_argument("--ignore", metavar="REGEX", type=regular_expression, action="append", default=[],
                        help="lines that are not kestro_test's; may be given again")
    return judged


def page_options(parser: argparse.ArgumentParser) -> None:
    """Of the commands that look at several runs: a page beside their text, or in its place."""
    parser.add_argument("--html", metavar="FILE", help="a page that needs nothing else; - is standard output")
    parser.add_argument("--color", choices=("auto", "always", "never"), default="auto", help="of the text")
    parser.add_argument("--quiet", action="store_true", help="no text, the exit status only")


def add_report_options(parser: argparse.ArgumentParser) -> None:
    formats = parser.add_argument_group("formats; FILE may be - for standard output")
    formats.add_argument("--junit", metavar="FILE", help="JUnit XML: a suite for each section")
    formats.add_argument("--tap", metavar="FILE", help="TAP 14")
    formats.add_argument("--jsonl", metavar="FILE", help="JSON lines in the form of OCP Test and Validation 2.0")
    formats.add_argument("--html", metavar="FILE", help="a page that needs nothing else")
    formats.add_argument("--color", choices=("auto", "always", "never"), default="auto", help="of the summary")
    formats.add_argument("--quiet", action="store_true", help="no summary, the exit status only")
    judged = judged_by(parser)
    judged.add_argument("--expect", metavar="OUTPUT", help="output of a good run: checks that it has must be there")
    judged.add_argument("--trace", metavar="FILE", help="the probe's trace of the run: calls behind each failed check")
    about = parser.add_argument_group("whose run it is")
    about.add_argument("--dut", metavar="NAME", help="name of the device under test")
    about.add_argument("--serial", metavar="NUMBER", help="its serial number")
    about.add_argument("--name", metavar="TEXT", help="title of the report")


def parser_of_read() -> Parser:
    parser = Parser(prog="kestro_report read", epilog=ENDS, description="Reads what kestro_test printed and judges it.")
    parser.add_argument("files", nargs="*", metavar="FILE", help="outputs; - or none: standard input")
    add_report_options(parser)
    return parser


def parser_of_run() -> Parser:
    parser = Parser(prog="kestro_report run", epilog=ENDS, usage="%(prog)s [options] -- WORDS...",
                    description="Runs kestro_test and judges what it prints. WORDS are its words, such as 'board_test "
                                "board_onekey_test', or any command that starts it: over ssh, or one that prints a "
                                "serial console.")
    parser.add_argument("--timeout", metavar="SECONDS", type=seconds, help="ends a command that takes longer")
    parser.add_argument("--board", metavar="BOARD", help="on this simulated board, by kestro_sim")
    parser.add_argument("--keep", metavar="FILE", type=named_file,
                        help="keeps what is printed, byte for byte; no - here")
    add_report_options(parser)
    return parser


def facts_given(options: argparse.Namespace) -> dict[str, str]:
    given = {"dut": options.dut, "serial": options.serial, "name": options.name}
    return {name: value for name, value in given.items() if value}
