"""The texts of the product's sources: every string literal, as the program has it."""

import re
from collections.abc import Iterator
from dataclasses import dataclass
from pathlib import Path

TOKEN = re.compile(
    r'''(?P<comment>//[^\n]*|/\*.*?\*/)|(?P<directive>\#\s*(?:include|pragma)[^\n]*)|"(?P<text>(?:\\.|[^"\\])*)"'''
    r'''|(?P<sign>'(?:\\.|[^'\\])+')|(?P<blank>\s+)|(?P<width>PRI[uxd](?:64|32))|(?P<word>[A-Za-z_]\w*)|(?P<other>.)''',
    re.DOTALL)
ESCAPE = re.compile(rb"\\(?:x([0-9a-fA-F]+)|([0-7]{1,3})|(.))", re.DOTALL)
SIGNS = {b"n": b"\n", b"r": b"\r", b"t": b"\t", b"v": b"\v", b"f": b"\f", b"b": b"\b", b"a": b"\a", b"0": b"\0"}
WIDTHS = {"PRIu64": "llu", "PRIx64": "llx", "PRId64": "lld", "PRIu32": "u", "PRIx32": "x", "PRId32": "d"}


@dataclass(frozen=True)
class SourceText:
    file: str
    line: int
    text: str


def unescaped(literal: str) -> bytes:
    def sign(found: re.Match) -> bytes:
        if found[1]:
            return bytes([int(found[1], 16) & 0xFF])
        if found[2]:
            return bytes([int(found[2], 8) & 0xFF])
        return SIGNS.get(found[3], found[3])
    return ESCAPE.sub(sign, literal.encode())


def texts_of(code: str, file: str) -> Iterator[SourceText]:
    """Neighbouring literals are one. The names and help texts of command rows are left out: the usage listing has its
    own rule for them."""
    text, begin, line, depth = None, 0, 1, 0  # depth: of braces since a command row began
    last_word, is_row = "", False
    for token in TOKEN.finditer(code):
        kind = token.lastgroup
        if kind == "text" or (kind == "width" and text is not None):
            piece = unescaped(token["text"]) if kind == "text" else WIDTHS[token["width"]].encode()
            text, begin = (piece, line) if text is None else (text + piece, begin)
        elif kind not in ("blank", "comment"):
            if text is not None:
                if not is_row:
                    yield SourceText(file, begin, text.decode("utf-8", "surrogateescape"))
                text = None
            if token[0] == "{":
                if is_row or last_word == "command_row":
                    is_row, depth = True, depth + 1
            elif token[0] == "}" and is_row:
                depth -= 1
                is_row = depth > 0
            last_word = token[0] if kind == "word" else ""
        line += token[0].count("\n")


def source_texts(root: Path) -> list[SourceText]:
    files = sorted(path for path in (root / "src").rglob("*") if path.suffix in (".cpp", ".h"))
    return [text for file in files
            for text in texts_of(file.read_text(encoding="utf-8"), str(file.relative_to(root)))]
