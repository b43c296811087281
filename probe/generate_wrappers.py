#!/usr/bin/env python3
"""Writes the part of the driver probe that follows from the driver interface headers.

The tables that tell what each parameter of each operation is, the calls of real operations, a wrapper per operation
that takes the operation's place in front of the driver library, a function of each callback type, and the linker's
lists of what the probe and the simulated libraries export.
"""

from __future__ import annotations

import argparse
import re
import sys
from dataclasses import dataclass, field
from pathlib import Path

from interface import Callback, Interface, InterfaceError, Operation, Record, Value, read_interface

SCALAR_NAMES = {
    "char": "character", "int8_t": "int8", "uint8_t": "uint8", "int16_t": "int16", "uint16_t": "uint16",
    "int32_t": "int32", "uint32_t": "uint32", "int64_t": "int64", "uint64_t": "uint64", "float": "float32",
    "double": "float64", "void": "none",
}
MARK_NAMES = {
    "value": "value", "callback": "callback", "opaque": "opaque", "DRV_IN": "in", "DRV_OUT": "out",
    "DRV_INOUT": "inout", "DRV_IN_TEXT": "in_text", "DRV_IN_BYTES": "in_bytes", "DRV_OUT_BYTES": "out_bytes",
    "DRV_OUT_TEXT": "out_text", "DRV_INOUT_TEXT": "inout_text", "DRV_INOUT_BYTES": "inout_bytes",
    "DRV_IN_ARRAY": "in_array", "DRV_OUT_ARRAY": "out_array", "DRV_INOUT_ARRAY": "inout_array",
}
PROBE_EXPORTS = ["dlsym", "pthread_create"]
GENERATED = "// Written by generate_wrappers.py from the driver interface headers; a change here is lost.\n"


def includes(headers: list[Path]) -> str:
    """Headers of the interface by their path below include/, others by their name."""
    names = []
    for header in headers:
        parts = header.parts
        below = parts[len(parts) - parts[::-1].index("include"):] if "include" in parts else (header.name,)
        names.append("/".join(below))
    return "".join(f'#include "{name}"\n' for name in names)


def extent(value: Value, others: list[Value]) -> str:
    """Where the size of what a pointer leads to stands."""
    names = [other.name for other in others]
    fixed = int(value.size) if value.size.isdigit() else 0
    size_at = names.index(value.size) if value.size and not value.size.isdigit() else -1
    filled_at = names.index(value.filled) if value.filled else -1
    return f"{{{size_at}, {fixed}, {filled_at}}}"


def type_columns(value: Value, interface: Interface) -> str:
    kind = SCALAR_NAMES.get(value.type, "uint8")
    layout = f"&{value.type}_record" if value.type in interface.records else "nullptr"
    return f"mark::{MARK_NAMES[value.mark]}, scalar::{kind}, {layout}"


def record_table(record: Record, interface: Interface) -> str:
    rows = "".join(
        f'    {{"{member.name}", {type_columns(member, interface)}, {extent(member, record.fields)}, {member.rows}, '
        f"{member.count}, offsetof(struct ::{record.name}, {member.name})}},\n"
        for member in record.fields)
    return (f"constexpr field {record.name}_fields[] = {{\n{rows}}};\n"
            f'constexpr record {record.name}_record{{"{record.name}", {record.name}_fields, '
            f"sizeof(struct ::{record.name})}};\n")


def parameter_row(parameter: Value, operation: Operation, interface: Interface) -> str:
    hidden = operation.variadic and parameter is operation.parameters[-1]
    return (f'    {{"{parameter.name}", {type_columns(parameter, interface)}, '
            f"{extent(parameter, operation.parameters)}, {'true' if hidden else 'false'}}},\n")


def parameter_table(operation: Operation, interface: Interface) -> str:
    rows = "".join(parameter_row(parameter, operation, interface) for parameter in operation.parameters)
    if operation.variadic:
        rows += '    {"text", mark::in_text, scalar::character, nullptr, {}, false},\n'
    return f"constexpr parameter {operation.name}_parameters[] = {{\n{rows}}};\n" if rows else ""


def operation_row(operation: Operation) -> str:
    parameters = f"{operation.name}_parameters" if operation.parameters else "{}"
    return (f'    {{"{operation.name}", "{operation.library}", scalar::{SCALAR_NAMES[operation.result]}, '
            f"{parameters}}},\n")


def tables_file(interface: Interface, headers: list[Path]) -> str:
    parts = [GENERATED, includes(headers), '#include "probe/descriptor.h"\n\n',
             "namespace kestro_probe {\n\nnamespace {\n\n"]
    parts += [record_table(record, interface) for record in interface.records.values()]
    parts += [parameter_table(operation, interface) for operation in interface.operations]
    parts.append("constexpr operation table[] = {\n")
    parts += [operation_row(operation) for operation in interface.operations]
    parts.append("};\n\n} // namespace\n\nconst std::span<const operation> operations{table};\n\n"
                 "} // namespace kestro_probe\n")
    return "".join(parts)


def c_type(parameter: Value, interface: Interface) -> str:
    const = "const " if parameter.is_const else ""
    if parameter.mark in ("value", "callback"):
        return parameter.type
    record = "struct " if parameter.type in interface.records else ""
    return f"{const}{record}{parameter.type} *"


def function_type(operation: Operation, interface: Interface) -> str:
    types = [c_type(parameter, interface) for parameter in operation.parameters]
    if operation.variadic:
        types.append("...")
    return f"{operation.result} (*)({', '.join(types)})"


def thunk(index: int, operation: Operation, interface: Interface) -> str:
    """Calls the real operation with the arguments whose addresses are in a row."""
    values = [f"*static_cast<{c_type(parameter, interface)} *>(a[{position}])".replace("* *", "**")
              for position, parameter in enumerate(operation.parameters)]
    if operation.variadic:
        values[-1] = '"%s"'
        values.append(f"*static_cast<const char **>(a[{len(operation.parameters)}])")
    unused = "[[maybe_unused]] " if not values else ""
    made = f"reinterpret_cast<{function_type(operation, interface)}>(real)({', '.join(values)})"
    # A signed result keeps its sign, whatever its width.
    body = f"{made};\n    return 0" if operation.result == "void" else f"return static_cast<uint64_t>({made})"
    return f"uint64_t call_{index}(void *real, {unused}void *const *a) {{\n    {body};\n}}\n"


def wrapper(index: int, operation: Operation, interface: Interface) -> str:
    count = len(operation.parameters)
    head = [f"{c_type(parameter, interface)} a{position}".replace("* a", "*a")
            for position, parameter in enumerate(operation.parameters)]
    addresses = [f"&a{position}" for position in range(count)]
    if operation.variadic:
        head.append("...")
        addresses.append(f"&a{count}")
    body = ""
    returned = "" if operation.result == "void" else "return "
    if operation.variadic:
        body += (f"    va_list values;\n    va_start(values, a{count - 1});\n"
                 f"    const formatted_text whole(a{count - 1}, values);\n    va_end(values);\n"
                 f"    const char *a{count} = whole.text();\n")
    else:
        values = ", ".join(f"a{position}" for position in range(count))
        body += (f"    if (void *real = straight_to({index}, __builtin_return_address(0))) {{\n"
                 f"        return reinterpret_cast<{function_type(operation, interface)}>(real)({values});\n    }}\n")
    row = [f"const_cast<void *>(static_cast<const volatile void *>({address}))" for address in addresses]
    body += (f"    void *const a[] = {{{', '.join(row)}}};\n" if row else "    void *const *const a = nullptr;\n")
    answered = f"answer({index}, a, __builtin_return_address(0))"
    if operation.result not in ("void", "uint64_t"):
        answered = f"static_cast<{operation.result}>({answered})"
    body += f"    {returned}{answered};\n"
    return (f'extern "C" KESTRO_EXPORTED {operation.result} {operation.name}({", ".join(head)}) {{\n{body}}}\n')


def calls_file(interface: Interface, headers: list[Path]) -> str:
    count = len(interface.operations)
    parts = [GENERATED, includes(headers), '#include "probe/real_call.h"\n\nnamespace {\n\n']
    parts += [thunk(index, operation, interface) for index, operation in enumerate(interface.operations)]
    parts.append("\n} // namespace\n\nnamespace kestro_probe {\n\nconst real_call real_calls[] = {\n")
    parts += [f"    call_{index},\n" for index in range(count)]
    parts.append("};\n\n} // namespace kestro_probe\n")
    return "".join(parts)


def wrappers_file(interface: Interface, headers: list[Path]) -> str:
    parts = [GENERATED, includes(headers), '#include "probe/runtime.h"\n\n#include <cstdarg>\n\n',
             "using kestro_probe::answer;\nusing kestro_probe::formatted_text;\n"
             "using kestro_probe::straight_to;\n\n"]
    parts += [wrapper(index, operation, interface) for index, operation in enumerate(interface.operations)]
    parts.append("\nnamespace kestro_probe {\n\nvoid *const wrappers[] = {\n")
    parts += [f"    reinterpret_cast<void *>(&::{operation.name}),\n" for operation in interface.operations]
    parts.append(f"}};\nstd::atomic<void *> real_operations[{len(interface.operations)}];\n\n"
                 "} // namespace kestro_probe\n")
    return "".join(parts)


@dataclass
class CallbackWords:
    """The parameters of a function of that type, what it hands on to be shown, the format where it has one, and the
    text areas that it is to fill, each with its size."""

    heads: list[str] = field(default_factory=list)
    shown: list[str] = field(default_factory=list)
    form: str = ""
    areas: list[tuple[str, str]] = field(default_factory=list)


def callback_words(callback: Callback) -> CallbackWords:
    pieces = [piece.strip() for piece in re.split(r",(?![^()]*\))", callback.parameters) if piece.strip() != "void"]
    words = CallbackWords()
    numbers: dict[str, str] = {}
    areas: list[tuple[str, str]] = []
    for index, piece in enumerate(pieces):
        if piece == "...":
            words.heads.append(piece)
            words.shown.pop()
            words.form = f"a{index - 1}"
            continue
        match = re.fullmatch(
            r"(?:(DRV_IN_TEXT)|DRV_OUT_TEXT\((\w+)\))? ?((?:const )?(?:struct )?\w+ (?:\*)?)(\w+)", piece)
        if not match or (match[2] and match[3].strip() != "char *"):
            raise InterfaceError(f"callback {callback.name}: parameter '{piece}' is not understood")
        text, size, kind, name = match.groups()
        words.heads.append(f"[[maybe_unused]] {kind}a{index}")
        if size:
            areas.append((f"a{index}", size))
        elif text or kind.strip() in SCALAR_NAMES:
            words.shown.append(f'shown("{name}", a{index})')
        if "int" in SCALAR_NAMES.get(kind.strip(), ""):
            numbers[name] = f"a{index}"
    for area, size in areas:
        if size not in numbers:
            raise InterfaceError(f"callback {callback.name}: size '{size}' names no number that is passed in")
        words.areas.append((area, numbers[size]))
    return words


def callback_function(callback: Callback) -> str:
    words = callback_words(callback)
    body = ""
    if words.form:
        body += (f"    va_list values;\n    va_start(values, {words.form});\n"
                 f'    const std::string whole = shown_format("text", {words.form}, values);\n    va_end(values);\n')
        words.shown.append("whole")
    listed = ", ".join(words.shown)
    body += f'    print_event("{callback.name}", {{{listed}}});\n'
    body += "".join(f"    answer_nothing({area}, {size});\n" for area, size in words.areas)
    body += "" if callback.result == "void" else "    return {};\n"
    return f'{callback.result} on_{callback.name}({", ".join(words.heads)}) {{\n{body}}}\n'


def callback_users(interface: Interface) -> list[tuple[str, str, str]]:
    """Operation or record, parameter or field, and type of each place where a function is given."""
    owners = [(operation.name, operation.parameters) for operation in interface.operations]
    owners += [(record.name, record.fields) for record in interface.records.values()]
    return [(owner, value.name, value.type) for owner, values in owners for value in values
            if value.mark == "callback"]


def callbacks_file(interface: Interface, headers: list[Path]) -> str:
    parts = [GENERATED, includes(headers), '#include "probe/events.h"\n\n#include <cstdarg>\n\n',
             "using namespace kestro_probe;\n\n"]
    users = callback_users(interface)
    parts.append('extern "C" {\n\n')
    parts += ["static " + callback_function(callback) for callback in interface.callbacks.values()
              if callback.name in {kind for _, _, kind in users}]
    parts.append("\n}\n\nnamespace kestro_probe {\n\nnamespace {\n\nconst event_handler table[] = {\n"
                 "    {nullptr, nullptr, nullptr},\n")
    parts += [f'    {{"{owner}", "{name}", reinterpret_cast<void *>(&on_{kind})}},\n' for owner, name, kind in users]
    parts.append("};\n\n} // namespace\n\nconst std::span<const event_handler> event_handlers{table};\n\n"
                 "} // namespace kestro_probe\n")
    return "".join(parts)


def exports_file(names: list[str]) -> str:
    return "{\n    global:\n" + "".join(f"        {name};\n" for name in names) + "    local:\n        *;\n};\n"


def write_files(options: argparse.Namespace, interface: Interface) -> None:
    names = [operation.name for operation in interface.operations]
    own = [operation.name for operation in interface.operations if operation.library == options.library]
    for path, text in ((options.tables, tables_file(interface, options.headers)),
                       (options.calls, calls_file(interface, options.headers)),
                       (options.wrappers, wrappers_file(interface, options.headers)),
                       (options.callbacks, callbacks_file(interface, options.headers)),
                       (options.exports, exports_file([*PROBE_EXPORTS, *names])),
                       (options.library_exports, exports_file(own))):
        if path:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--tables", type=Path, help="C++ file of the tables to write")
    parser.add_argument("--calls", type=Path, help="C++ file of the calls of real operations to write")
    parser.add_argument("--wrappers", type=Path, help="C++ file of the wrappers to write")
    parser.add_argument("--callbacks", type=Path, help="C++ file of functions that drivers may call back to write")
    parser.add_argument("--exports", type=Path, help="linker version script of the probe to write")
    parser.add_argument("--library", default="", help="a driver library: a folder below include/")
    parser.add_argument("--library-exports", type=Path, help="linker version script of that library to write")
    parser.add_argument("--names", action="store_true", help="print the names of the operations")
    parser.add_argument("headers", type=Path, nargs="+", help="driver interface headers")
    options = parser.parse_args()
    try:
        interface = read_interface(options.headers)
        # The probe looks an operation up by its name, by halves.
        interface.operations.sort(key=lambda operation: operation.name)
        write_files(options, interface)
    except InterfaceError as error:
        print(f"generate_wrappers: {error}", file=sys.stderr)
        return 2
    if options.names:
        print("\n".join(operation.name for operation in interface.operations))
    return 0


if __name__ == "__main__":
    sys.exit(main())
