"""Reads the driver interface headers: which operations there are, and what each parameter is.

The headers are kept plain on purpose (include/drv_types.h says how), so a small reader is enough. It fails loudly on
any declaration it does not understand: a parameter shown wrongly by the probe would be worse than no build.
"""

from __future__ import annotations

import re
from dataclasses import dataclass, field
from pathlib import Path

SCALARS = {
    "char": 1, "int8_t": 1, "uint8_t": 1, "int16_t": 2, "uint16_t": 2, "int32_t": 4, "uint32_t": 4,
    "int64_t": 8, "uint64_t": 8, "float": 4,
}
MARKS_WITH_SIZE = ("DRV_OUT_BYTES", "DRV_OUT_TEXT", "DRV_INOUT_TEXT", "DRV_IN_BYTES")
MARKS_PLAIN = ("DRV_INOUT", "DRV_OUT", "DRV_IN_TEXT", "DRV_IN")


class InterfaceError(Exception):
    """A declaration that the reader does not understand, with file and line."""


@dataclass
class Field:
    """A member of a record; count 0 means a single value. Members of a union share their offset."""

    type: str
    name: str
    count: int
    in_union: bool


@dataclass
class Record:
    name: str
    fields: list[Field] = field(default_factory=list)


@dataclass
class Parameter:
    """mark is one of the direction marks, or "value", "callback" or "opaque"; size belongs to the sized marks."""

    mark: str
    type: str
    name: str
    size: str = ""
    is_const: bool = False


@dataclass
class Operation:
    name: str
    parameters: list[Parameter]
    variadic: bool
    header: str


@dataclass
class Interface:
    records: dict[str, Record] = field(default_factory=dict)
    callbacks: set[str] = field(default_factory=set)
    operations: list[Operation] = field(default_factory=list)


def read_interface(headers: list[Path]) -> Interface:
    """The operations and records of the headers, in the order of the files."""
    interface = Interface()
    for header in headers:
        _read_header(header, interface)
    names = [operation.name for operation in interface.operations]
    for name in names:
        if names.count(name) > 1:
            raise InterfaceError(f"operation {name} is declared more than once")
    return interface


def _blank(match: re.Match[str]) -> str:
    return re.sub(r"[^\n]", " ", match.group(0))


def _read_header(header: Path, interface: Interface) -> None:
    text = header.read_text(encoding="utf-8")
    text = re.sub(r"/\*.*?\*/|//[^\n]*", _blank, text, flags=re.S)
    text = re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", _blank, text, flags=re.M)
    text = re.sub(r"\b(?:DRV_BEGIN_DECLS|DRV_END_DECLS)\b", _blank, text)
    text = re.sub(r"\bDRV_STATIC_ASSERT\s*\([^;]*\)\s*;", _blank, text)
    position = 0
    while True:
        start = re.compile(r"\S").search(text, position)
        if start is None:
            return
        line = text.count("\n", 0, start.start()) + 1
        end = _declaration_end(text, start.start())
        if end < 0:
            raise InterfaceError(f"{header}:{line}: declaration without an end")
        declaration = " ".join(text[start.start():end].split())
        try:
            _read_declaration(declaration, header.name, interface)
        except InterfaceError as error:
            raise InterfaceError(f"{header}:{line}: {error}: {declaration}") from None
        position = end + 1


def _declaration_end(text: str, position: int) -> int:
    depth = 0
    for index in range(position, len(text)):
        if text[index] == "{":
            depth += 1
        elif text[index] == "}":
            depth -= 1
        elif text[index] == ";" and depth == 0:
            return index
    return -1


def _read_declaration(declaration: str, header: str, interface: Interface) -> None:
    record = re.fullmatch(r"struct (\w+) \{(.*)\}", declaration)
    if record:
        interface.records[record[1]] = Record(record[1], _fields(record[2]))
        return
    callback = re.fullmatch(r"typedef [\w ]+ \(\*(\w+)\)\(.*\)", declaration)
    if callback:
        interface.callbacks.add(callback[1])
        return
    operation = re.fullmatch(
        r"uint32_t (\w+) ?\((.*?)\)(?: DRV_PRINTF_LIKE\(\d+, \d+\))?", declaration)
    if not operation:
        raise InterfaceError("not an operation, record or callback type")
    parameters, variadic = _parameters(operation[2], interface)
    interface.operations.append(Operation(operation[1], parameters, variadic, header))


def _fields(body: str) -> list[Field]:
    fields = []
    for piece in re.findall(r"\s*union \{[^}]*\} ?;|[^;]+;", body):
        piece = piece.strip()
        union = re.fullmatch(r"union \{(.*)\} ?;", piece)
        if union:
            fields += [_field(member, True) for member in union[1].split(";") if member.strip()]
        else:
            fields.append(_field(piece.rstrip(";"), False))
    return fields


def _field(text: str, in_union: bool) -> Field:
    match = re.fullmatch(r"(\w+) (\w+)(?:\[(\d+)\])?", text.strip())
    if not match or match[1] not in SCALARS:
        raise InterfaceError(f"field '{text.strip()}' is not understood")
    return Field(match[1], match[2], int(match[3] or 0), in_union)


def _parameters(text: str, interface: Interface) -> tuple[list[Parameter], bool]:
    text = text.strip()
    if text in ("", "void"):
        return [], False
    pieces = [piece.strip() for piece in re.split(r",(?![^()]*\))", text)]
    variadic = pieces[-1] == "..."
    if variadic:
        pieces.pop()
    parameters = [_parameter(piece, interface) for piece in pieces]
    _check_parameters(parameters, variadic)
    return parameters, variadic


def _check_parameters(parameters: list[Parameter], variadic: bool) -> None:
    by_name = {parameter.name: parameter for parameter in parameters}
    if len(by_name) != len(parameters):
        raise InterfaceError("two parameters have the same name")
    for parameter in parameters:
        if not parameter.size or parameter.size.isdigit():
            continue
        size = by_name.get(parameter.size)
        if size is None:
            raise InterfaceError(f"size '{parameter.size}' of '{parameter.name}' names no parameter")
        if size.mark not in ("value", "DRV_IN", "DRV_INOUT") or "int" not in size.type:
            raise InterfaceError(f"size '{parameter.size}' of '{parameter.name}' is no number that is passed in")
    if variadic and (not parameters or parameters[-1].mark != "DRV_IN_TEXT" or "text" in by_name):
        raise InterfaceError("a variadic operation ends in a DRV_IN_TEXT format and has no parameter 'text'")


def _parameter(text: str, interface: Interface) -> Parameter:
    match = re.fullmatch(
        r"(?:(DRV_\w+)(?:\((\w+)\))? )?(const )?(?:struct )?(\w+) (\*?)(\w+)", text)
    if not match:
        raise InterfaceError(f"parameter '{text}' is not understood")
    mark, size, const, base, star, name = match.groups()
    if const and mark and ("OUT" in mark):
        raise InterfaceError(f"parameter '{text}' is written and const at once")
    if not star:
        return _plain_parameter(text, mark, base, name, interface)
    if base == "void" and mark is None:
        return Parameter("opaque", base, name)
    if mark in MARKS_WITH_SIZE and size and base in SCALARS and SCALARS[base] == 1:
        return Parameter(mark, base, name, size, bool(const))
    if mark in MARKS_PLAIN and not size and (base in SCALARS or base in interface.records):
        if mark == "DRV_IN_TEXT" and base != "char":
            raise InterfaceError(f"text parameter '{text}' is not char")
        return Parameter(mark, base, name, "", bool(const))
    raise InterfaceError(f"pointer parameter '{text}' has no fitting direction mark")


def _plain_parameter(text: str, mark: str | None, base: str, name: str, interface: Interface) -> Parameter:
    if mark is None and base in interface.callbacks:
        return Parameter("callback", base, name)
    if mark is None and base in SCALARS:
        return Parameter("value", base, name)
    raise InterfaceError(f"parameter '{text}' is not understood")
