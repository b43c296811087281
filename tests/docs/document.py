"""Takes the commands, the outputs shown behind them, and the files out of a document.

A block (fenced without a language, or indented by four) is one of these:

- commands: its first line begins with a program of ours or one of a few tools. Each line is a command; a backslash at
  the end goes on in the next line, '#' starts a comment.
- a session: its first line begins with '$ '. Lines in front of the next '$ ' are what the command prints; a line '...'
  stands for any lines.
- a synopsis: as commands, with brackets or words to be replaced in it. Its options are looked up in the program's help.
- a file: the paragraph before it is the file's name in backticks and a colon.
- anything else is text.

A code span in a paragraph that begins with one of our programs is a command, or a synopsis, too.
"""

import re
from dataclasses import dataclass, field
from pathlib import Path

OURS = r"(?:scripts/\w+|bench/\w+|report/bin/\w+|\.ci/run|(?:build/)?kestro_(?:sim|test|call)|fleet/lava/kestro-lava)"
TOOLS = "cmake|ctest|scp|ssh|ansible-playbook|lava-run|cat|cp|mkdir|printf|echo|xxd|diff|grep"
COMMAND = re.compile(rf"^(?:[A-Z_]+=\S+ )*(?:{OURS}|{TOOLS})(?= |$)")
PLACEHOLDER = re.compile(r"[\[<…]|\.\.\.|\b[A-Z]{2,}\b(?!=)|\bN\b")


@dataclass
class Command:
    document: str
    line: int
    text: str
    output: list[str] | None = None
    is_synopsis: bool = False


@dataclass
class Document:
    name: str
    commands: list[Command] = field(default_factory=list)
    files: dict[str, str] = field(default_factory=dict)
    links: list[tuple[int, str]] = field(default_factory=list)
    faults: list[str] = field(default_factory=list)


def read_document(path: Path, name: str) -> Document:
    text = path.read_text(encoding="utf-8")
    return read_manual(text, name) if path.suffix in (".1", ".7") else read_markdown(text, name)


def read_markdown(text: str, name: str) -> Document:
    document = Document(name)
    lines = text.split("\n")
    paragraph: list[str] = []
    index = 0
    while index < len(lines):
        line = lines[index]
        previous_blank = index == 0 or not lines[index - 1].strip()
        fence = re.match(r" {0,3}```", line)
        if fence:
            end = next(i for i in range(index + 1, len(lines)) if lines[i].startswith(fence[0]))
            indent = len(fence[0]) - 3
            if line[indent + 3:].strip() in ("", "sh", "console"):
                take_block(document, [each[indent:] for each in lines[index + 1:end]], index + 2, paragraph)
            paragraph, index = [], end + 1
        elif line.startswith("    ") and line.strip() and previous_blank:
            end = index
            while end < len(lines) and (lines[end].startswith("    ") or not lines[end].strip()):
                end += 1
            take_block(document, [each[4:] for each in lines[index:end]], index + 1, paragraph)
            paragraph, index = [], end
        else:
            if line.strip():
                paragraph = (paragraph if not previous_blank else []) + [line]
                take_spans(document, line, index + 1)
            index += 1
    return document


def take_block(document: Document, lines: list[str], first: int, paragraph: list[str]) -> None:
    while lines and not lines[-1].strip():
        lines = lines[:-1]
    named = re.fullmatch(r"`([\w./-]+)`:", " ".join(paragraph))
    body = [line for line in lines if line.strip() and not line.startswith("#")]
    if named:
        document.files[named[1]] = "\n".join(lines) + "\n"
    elif body and body[0].startswith("$ "):
        take_session(document, lines, first)
    elif body and COMMAND.match(body[0]):
        take_commands(document, lines, first)


def take_session(document: Document, lines: list[str], first: int) -> None:
    for number, line in enumerate(lines, first):
        if line.startswith("$ "):
            document.commands.append(Command(document.name, number, line[2:].strip(), []))
        elif document.commands[-1].text.endswith("\\") and not document.commands[-1].output:
            document.commands[-1].text = document.commands[-1].text[:-1] + line.strip()
        else:
            document.commands[-1].output.append(line)


def take_commands(document: Document, lines: list[str], first: int) -> None:
    synopsis = False
    going_on = False
    for number, line in enumerate(lines, first):
        words = re.sub(r"(^|\s+)#.*", "", line).strip()
        if not words:
            continue
        if going_on:
            document.commands[-1].text += words.rstrip("\\")
        elif COMMAND.match(words):
            synopsis = PLACEHOLDER.search(words) is not None
            document.commands.append(Command(document.name, number, words.rstrip("\\"), None, synopsis))
        elif synopsis:
            document.commands[-1].text += " " + words
        else:
            document.faults.append(f"{document.name}:{number}: '{line}' stands among commands and is none; "
                                   "where output is shown, commands begin with '$ '")
        going_on = words.endswith("\\")


def take_spans(document: Document, line: str, number: int) -> None:
    for span in re.findall(r"`([^`]+)`", line):
        if re.match(rf"{OURS}(?= |$)", span) and (" " in span or "/" in span) and "/kestro_" not in span.split(" ")[0]:
            document.commands.append(
                Command(document.name, number, span, None, PLACEHOLDER.search(span) is not None or " " not in span))
    for target in re.findall(r"\]\(([^)#]+)", re.sub(r"`[^`]*`", "", line)):
        document.links.append((number, target))


def read_manual(text: str, name: str) -> Document:
    """The examples: the line behind each .TP of that section."""
    document = Document(name)
    lines = text.split("\n")
    start = lines.index(".SH EXAMPLES")
    for number, line in enumerate(lines[start:], start + 1):
        if line == ".TP":
            command = lines[number].replace("\\-", "-").removeprefix(".B ")
            document.commands.append(Command(name, number + 1, command))
    return document
