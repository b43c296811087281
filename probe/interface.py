"""Reads the driver interface headers: which operations there are, and what each parameter is.

The headers are kept plain on purpose (include/drv_types.h says how), so a small reader is enough. It fails loudly on
any declaration it does not understand: a parameter shown wrongly by the probe would be worse than no build.
"""

from __future__ import annotations

import re
from dataclasses import dataclass, field, replace
from pathlib import Path

SCALARS = {
    "char": 1, "int8_t": 1, "uint8_t": 1, "int16_t": 2, "uint16_t": 2, "int32_t": 4, "uint32_t": 4,
    "int64_t": 8, "uint64_t": 8, "float": 4, "double": 8,
}
RESULTS = [name for name in SCALARS if "int" in name] + ["void"]
MARKS_OF_TEXT = ("DRV_OUT_TEXT", "DRV_INOUT_TEXT")
MARKS_OF_BYTES = ("DRV_IN_BYTES", "DRV_OUT_BYTES", "DRV_INOUT_BYTES")
MARKS_OF_ARRAYS = ("DRV_IN_ARRAY", "DRV_OUT_ARRAY", "DRV_INOUT_ARRAY")
MARKS_WITH_SIZE = MARKS_OF_TEXT + MARKS_OF_BYTES + MARKS_OF_ARRAYS
MARKS_PLAIN = ("DRV_INOUT", "DRV_OUT", "DRV_IN_TEXT", "DRV_IN")


class InterfaceError(Exception):
    """A declaration that the reader does not understand, with file and line."""


@dataclass
class Value:
    """A parameter of an operation, or a member of a record.

    mark is one of the direction marks, or "value", "callback" or "opaque". size belongs to the sized marks: a number,
    or the name of another parameter or member; filled names the parameter that tells how much of it was written.
    Members may be arrays: rows 0 is a plain one, count 0 a single value.
    """

    mark: str
    type: str
    name: str
    size: str = ""
    filled: str = ""
    is_const: bool = False
    rows: int = 0
    count: int = 0


@dataclass
class Record:
    name: str
    fields: list[Value] = field(default_factory=list)


@dataclass
class Callback:
    name: str
    result: str
    parameters: str


@dataclass
class Operation:
    name: str
    result: str
    parameters: list[Value]
    variadic: bool
    library: str


@dataclass
class Interface:
    constants: dict[str, int] = field(default_factory=dict)
    records: dict[str, Record] = field(default_factory=dict)
    callbacks: dict[str, Callback] = field(default_factory=dict)
    operations: list[Operation] = field(default_factory=list)


@dataclass
class _Declaration:
    text: str
    place: str
    library: str


def read_interface(headers: list[Path]) -> Interface:
    """The operations and records of the headers, in the order of the files."""
    interface = Interface()
    declarations: list[_Declaration] = []
    for header in headers:
        declarations += _declarations(header, interface)
    declarations = _read_all(_read_constants, declarations, interface)
    declarations = _read_all(_read_callback, declarations, interface)
    declarations = _read_records(declarations, interface)
    _read_all(_read_operation, declarations, interface)
    names = [operation.name for operation in interface.operations]
    for name in sorted(set(names)):
        if names.count(name) > 1:
            raise InterfaceError(f"operation {name} is declared more than once")
    return interface


def library_of(header: Path) -> str:
    """The folder below include/, which is called as the library is; empty for a header that lies elsewhere."""
    parts = header.parts
    if "include" not in parts:
        return ""
    below = parts[len(parts) - parts[::-1].index("include"):]
    return below[0] if len(below) > 1 else ""


def _blank(match: re.Match[str]) -> str:
    return re.sub(r"[^\n]", " ", match.group(0))


def _declarations(header: Path, interface: Interface) -> list[_Declaration]:
    text = header.read_text(encoding="utf-8")
    text = re.sub(r"/\*.*?\*/|//[^\n]*", _blank, text, flags=re.S)
    for name, number in re.findall(r"^[ \t]*#[ \t]*define[ \t]+(\w+)[ \t]+\(?(0[xX][\da-fA-F]+|\d+)[uUlL]*\)?[ \t]*$",
                                   text, flags=re.M):
        interface.constants[name] = int(number, 0)
    text = re.sub(r"^[ \t]*#(?:[^\n]*\\\n)*[^\n]*", _blank, text, flags=re.M)
    text = re.sub(r"\b(?:DRV_BEGIN_DECLS|DRV_END_DECLS)\b", _blank, text)
    text = re.sub(r"\bDRV_STATIC_ASSERT\s*\([^;]*\)\s*;", _blank, text)
    found = []
    position = 0
    while True:
        start = re.compile(r"\S").search(text, position)
        if start is None:
            return found
        place = f"{header}:{text.count(chr(10), 0, start.start()) + 1}"
        end = _declaration_end(text, start.start())
        if end < 0:
            raise InterfaceError(f"{place}: declaration without an end")
        found.append(_Declaration(" ".join(text[start.start():end].split()), place, library_of(header)))
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


def _read_all(read, declarations: list[_Declaration], interface: Interface) -> list[_Declaration]:
    """Gives the declarations that the reader leaves to the others."""
    left = []
    for declaration in declarations:
        try:
            if not read(declaration, interface):
                left.append(declaration)
        except InterfaceError as error:
            raise InterfaceError(f"{declaration.place}: {error}: {declaration.text}") from None
    return left


def _read_records(declarations: list[_Declaration], interface: Interface) -> list[_Declaration]:
    """A record may hold records of a header that comes later."""
    left = [one for one in declarations if re.match(r"struct \w+ \{", one.text)]
    others = [one for one in declarations if one not in left]
    while left:
        put_off, fault = [], None
        for declaration in left:
            try:
                _read_record(declaration, interface)
            except InterfaceError as error:
                put_off.append(declaration)
                fault = fault or InterfaceError(f"{declaration.place}: {error}: {declaration.text}")
        if fault is not None and len(put_off) == len(left):
            raise fault
        left = put_off
    return others


def _read_constants(declaration: _Declaration, interface: Interface) -> bool:
    match = re.fullmatch(r"enum ?\w* ?\{(.*)\}", declaration.text)
    if not match:
        return False
    number = 0
    for piece in match[1].split(","):
        named = re.fullmatch(r"(\w+)(?: ?= ?(\w+))?", piece.strip())
        if not named and piece.strip():
            raise InterfaceError(f"'{piece.strip()}' is no constant")
        if named:
            number = _constant(named[2].rstrip("uUlL"), interface) if named[2] else number
            interface.constants[named[1]] = number
            number += 1
    return True


def _constant(text: str, interface: Interface) -> int:
    if text in interface.constants:
        return interface.constants[text]
    try:
        return int(text, 0)
    except ValueError:
        raise InterfaceError(f"'{text}' is neither a number nor a constant with a plain number") from None


def _read_callback(declaration: _Declaration, interface: Interface) -> bool:
    match = re.fullmatch(r"typedef ([\w ]+) \(\*(\w+)\)\((.*)\)", declaration.text)
    if match:
        interface.callbacks[match[2]] = Callback(match[2], match[1], match[3])
    return match is not None


def _read_record(declaration: _Declaration, interface: Interface) -> None:
    match = re.fullmatch(r"struct (\w+) \{(.*)\}", declaration.text)
    if not match:
        raise InterfaceError("not an operation, record or callback type")
    fields = []
    for piece in re.findall(r"\s*union \{[^}]*\} ?;|[^;]+;", match[2]):
        union = re.fullmatch(r"union \{(.*)\} ?;", piece.strip())
        members = union[1].split(";") if union else [piece.strip().rstrip(";")]
        fields += [_field(member.strip(), interface) for member in members if member.strip()]
    _check_sizes(fields, "field", interface)
    interface.records[match[1]] = Record(match[1], fields)


def _field(text: str, interface: Interface) -> Value:
    match = re.fullmatch(r"(.*?)((?:\[\w+\])*)", text)
    member = _value(match[1], "field", interface)
    sizes = [_constant(size, interface) for size in re.findall(r"\[(\w+)\]", match[2])]
    if member.mark in ("DRV_IN", "DRV_OUT", "DRV_INOUT"):
        raise InterfaceError(f"field '{text}' points to a single value; write DRV_IN_ARRAY(1) or the like")
    if sizes and member.mark != "value":
        raise InterfaceError(f"field '{text}' is an array of pointers")
    if len(sizes) > 2 or 0 in sizes:
        raise InterfaceError(f"field '{text}' has more than two dimensions or an empty one")
    if len(sizes) == 2 and member.type in interface.records:
        raise InterfaceError(f"field '{text}' is a two-dimensional array of records")
    rows, count = (sizes if len(sizes) == 2 else [0, *sizes, 0][:2])
    return replace(member, rows=rows, count=count)


def _read_operation(declaration: _Declaration, interface: Interface) -> bool:
    match = re.fullmatch(r"(\w+) (\w+) ?\((.*?)\)(?: DRV_PRINTF_LIKE\(\d+, \d+\))?", declaration.text)
    if not match or match[1] not in RESULTS:
        raise InterfaceError("not an operation, record or callback type")
    parameters, variadic = _parameters(match[3], interface)
    interface.operations.append(Operation(match[2], match[1], parameters, variadic, declaration.library))
    return True


def _parameters(text: str, interface: Interface) -> tuple[list[Value], bool]:
    text = text.strip()
    if text in ("", "void"):
        return [], False
    pieces = [piece.strip() for piece in re.split(r",(?![^()]*\))", text)]
    variadic = pieces[-1] == "..."
    if variadic:
        pieces.pop()
    parameters = [_value(piece, "parameter", interface) for piece in pieces]
    for parameter, piece in zip(parameters, pieces):
        if parameter.mark == "value" and parameter.type in interface.records:
            raise InterfaceError(f"parameter '{piece}' is a record that is passed by value; pass its address")
    _check_sizes(parameters, "parameter", interface)
    by_name = {parameter.name for parameter in parameters}
    if variadic and (not parameters or parameters[-1].mark != "DRV_IN_TEXT" or "text" in by_name):
        raise InterfaceError("a variadic operation ends in a DRV_IN_TEXT format and has no parameter 'text'")
    return parameters, variadic


def _check_sizes(values: list[Value], what: str, interface: Interface) -> None:
    by_name = {value.name: value for value in values}
    if len(by_name) != len(values):
        raise InterfaceError(f"two {what}s have the same name")
    for value in values:
        for named, marks in ((value.size, ("value", "DRV_IN", "DRV_INOUT")), (value.filled, ("DRV_OUT", "DRV_INOUT"))):
            if not named or named.isdigit():
                continue
            other = by_name.get(named)
            if other is None:
                raise InterfaceError(f"size '{named}' of '{value.name}' names no {what}")
            if other.mark not in marks or "int" not in other.type or other.count:
                way = "passed in" if named == value.size else "written"
                raise InterfaceError(f"size '{named}' of '{value.name}' is no number that is {way}")
        if what == "parameter":
            _check_record(value, interface)


def _check_record(value: Value, interface: Interface) -> None:
    record = interface.records.get(value.type)
    if record is None or value.mark not in ("DRV_IN", "DRV_OUT", "DRV_IN_ARRAY", "DRV_OUT_ARRAY"):
        return
    marks = [member.mark for member in record.fields if member.mark.startswith("DRV_")]
    if value.mark.startswith("DRV_OUT") and marks:
        raise InterfaceError(f"'{value.name}' holds pointers, so it is read as well; write it DRV_INOUT")
    if any("OUT" in mark for mark in marks):
        raise InterfaceError(f"what '{value.name}' points to is written; write it DRV_INOUT")


def _value(text: str, what: str, interface: Interface) -> Value:
    match = re.fullmatch(
        r"(?:(DRV_\w+)(?:\((\w+)(?:, (\w+))?\))? )?(const )?(?:struct )?(\w+) (\*?)(\w+)", text)
    if not match:
        raise InterfaceError(f"{what} '{text}' is not understood")
    mark, size, filled, const, base, star, name = match.groups()
    if const and mark and "OUT" in mark:
        raise InterfaceError(f"{what} '{text}' is written and const at once")
    if size and (size.isdigit() or size in interface.constants):
        size = str(_constant(size, interface))
    value = Value(mark or "value", base, name, size or "", filled or "", bool(const))
    if not star:
        return _plain_value(text, what, value, interface)
    return _pointer(text, what, value, interface)


def _plain_value(text: str, what: str, value: Value, interface: Interface) -> Value:
    if value.mark == "value" and value.type in interface.callbacks:
        return replace(value, mark="callback")
    if value.mark == "value" and (value.type in SCALARS or value.type in interface.records):
        return value
    raise InterfaceError(f"{what} '{text}' is not understood")


def _pointer(text: str, what: str, value: Value, interface: Interface) -> Value:
    if value.type == "void" and value.mark == "value":
        return replace(value, mark="opaque")
    is_byte = SCALARS.get(value.type) == 1
    is_record = value.type in interface.records
    if value.mark in MARKS_OF_TEXT + MARKS_OF_BYTES and value.size and is_byte:
        if value.filled and "OUT_BYTES" not in value.mark:
            raise InterfaceError(f"{what} '{text}' has two sizes; only what is written as bytes or array may")
        return value
    if value.mark in MARKS_OF_ARRAYS and value.size and (is_record or value.type in SCALARS):
        if is_byte:
            raise InterfaceError(f"{what} '{text}' is an area of bytes; write {value.mark.replace('ARRAY', 'BYTES')}")
        return value
    if value.mark in MARKS_PLAIN and not value.size and (value.type in SCALARS or is_record):
        if value.mark == "DRV_IN_TEXT" and value.type != "char":
            raise InterfaceError(f"text {what} '{text}' is not char")
        return value
    raise InterfaceError(f"pointer {what} '{text}' has no fitting direction mark")
