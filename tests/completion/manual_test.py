"""The manual pages: their form, that every tool has one, and that they name what the tools' own help names.

usage: manual_test.py SOURCE_DIR BUILD_DIR
"""

import os
import re
import subprocess
import sys
import unittest
from pathlib import Path

SOURCE, BUILD = (Path(word).resolve() for word in sys.argv[1:3])
PAGES = sorted((SOURCE / "docs").glob("*.[1-8]"))
REPORT = SOURCE / "report/bin/kestro_report"
# What prints the options of each tool.
HELP = {"kestro_sim": [[BUILD / "kestro_sim", "--help"]], "kestro_call": [[BUILD / "kestro_call", "--help"]],
        "kestro_make_image": [[SOURCE / "scripts/make_image", "--help"]],
        "kestro_report": [[REPORT, *words, "--help"] for words in ([], ["read"], ["run"], ["diff"], ["trend"])]}
# A program of another name that is installed, or a library.
OTHERS = {"kestro_probe", "kestro_make_image"}


def page_of(name: str) -> Path:
    return next(page for page in PAGES if page.stem == name)


def source_of(name: str) -> str:
    return page_of(name).read_text(encoding="utf-8").replace("\\-", "-")


def options_of_page(name: str) -> set[str]:
    """Those that an entry is for; one that the text merely mentions does not count."""
    tags = re.findall(r"^\.TP\n(.*)", source_of(name).split(".SH EXAMPLES")[0], re.MULTILINE)
    return {option for tag in tags for option in re.findall(r"(?<![\w-])--[a-z][a-z-]*", re.sub(r"\\f.", " ", tag))}


def options_of_help(name: str) -> tuple[set[str], set[str]]:
    """Those that have a line of their own, and all that are mentioned."""
    texts = [subprocess.run(words, capture_output=True, text=True, check=True, timeout=60).stdout
             for words in HELP[name]]
    own = {option for text in texts for option in re.findall(r"^ +(?:-\w, )?(--[a-z][a-z-]*)", text, re.MULTILINE)}
    return own, {option for text in texts for option in re.findall(r"(?<![\w-])--[a-z][a-z-]*", text)}


def entries(name: str, section: str) -> set[str]:
    """The first word of each entry of a section."""
    text = source_of(name).split(f".SH {section}\n")[1].split("\n.SH ")[0]
    return {re.sub(r'^(?:\.[A-Z]+ |\\f.)"?', "", tag).split("=")[0].split()[0]
            for tag in re.findall(r"^\.TP\n(.*)", text, re.MULTILINE)}


class ManualPages(unittest.TestCase):
    maxDiff = None

    def test_mandoc_has_nothing_to_say(self) -> None:
        for page in PAGES:
            with self.subTest(page.name):
                run = subprocess.run(["mandoc", "-T", "lint", page], capture_output=True, text=True, check=False)
                self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))

    def test_mandoc_would_say_it(self) -> None:
        run = subprocess.run(["mandoc", "-T", "lint"], input=".TH X 1\n.SH NAME\n.PP\nx\n", capture_output=True,
                             text=True, check=False)
        self.assertNotEqual((run.returncode, run.stdout), (0, ""))

    def test_every_tool_has_one(self) -> None:
        programs = {path.name for path in BUILD.glob("kestro_*") if path.is_file() and os.access(path, os.X_OK)}
        self.assertLessEqual({"kestro_test", "kestro_sim", "kestro_call"}, programs)
        self.assertEqual({page.stem for page in PAGES}, programs | OTHERS | {"kestro_report"})

    def test_names_and_references_are_right(self) -> None:
        names = {page.name for page in PAGES}
        for page in PAGES:
            text = page.read_text(encoding="utf-8")
            self.assertTrue(text.startswith(f".TH {page.stem.upper()} {page.suffix[1]} "), page.name)
            self.assertIn(f".SH NAME\n{page.stem} \\- ", text)
            for name, section in re.findall(r"^\.BR (\w+) \((\d)\)", text, re.MULTILINE):
                self.assertIn(f"{name}.{section}", names, page.name)

    def test_options_are_those_of_the_help(self) -> None:
        for name in HELP:
            with self.subTest(name):
                own, mentioned = options_of_help(name)
                self.assertGreater(len(own), 2)
                self.assertEqual(own - options_of_page(name), set(), "only in the help")
                self.assertEqual(options_of_page(name) - mentioned, set(), "only in the page")

    def test_examples_use_options_of_the_page(self) -> None:
        """The examples of the other pages are run with those of the documents."""
        examples = source_of("kestro_report").split(".SH EXAMPLES\n")[1]
        used = set(re.findall(r"(?<![\w-])--[a-z][a-z-]*", examples))
        self.assertIn("--junit", used)
        self.assertLessEqual(used, options_of_page("kestro_report"))

    def test_help_words_of_kestro_test_are_named(self) -> None:
        dispatcher = (SOURCE / "src/shell/dispatch.cpp").read_text(encoding="utf-8")
        words = re.findall(r'"(-[^"]+)"', re.search(r"help : \{([^}]*)\}", dispatcher)[1])
        self.assertIn("--help", words)
        description = source_of("kestro_test").split(".SH WORDS")[0]
        for word in words:
            self.assertRegex(description, rf"(?m)^\.BR?.*(?<![\w-]){re.escape(word)}(?![\w-])")

    def test_variables_of_the_probe_are_those_that_it_reads(self) -> None:
        settings = (SOURCE / "probe/settings.cpp").read_text(encoding="utf-8")
        read = set(re.findall(r'variable\("(\w+)"\)', settings))
        self.assertIn("KESTRO_PROBE_TRACE", read)
        self.assertEqual(entries("kestro_probe", "ENVIRONMENT"), read)

    def test_exit_statuses_are_told(self) -> None:
        for name, statuses in {"kestro_test": {"0", "1", "255"}, "kestro_sim": {"0", "2", "99"},
                               "kestro_call": {"0", "1", "2"}, "kestro_probe": {"2", "99"},
                               "kestro_report": {"0", "1", "2", "3"}, "kestro_make_image": {"0", "2"}}.items():
            self.assertEqual(entries(name, "EXIT STATUS"), statuses, name)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
