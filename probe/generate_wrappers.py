#!/usr/bin/env python3
"""Writes the part of the driver probe that follows from the driver interface headers.

Three files: the tables that tell the probe what each parameter of each operation is, a wrapper per operation that
takes the operation's place in front of the driver library, and the linker's list of what the probe exports.
"""

from __future__ import annotations

import argparse
import sys
from pathlib import Path

from interface import Interface, InterfaceError, Operation, Parameter, Record, read_interface

SCALAR_NAMES = {
    "char": "character", "int8_t": "int8", "uint8_t": "uint8", "int16_t": "int16", "uint16_t": "uint16",
    "int32_t": "int32", "uint32_t": "uint32", "int64_t": "int64", "uint64_t": "uint64", "float": "float32",
}
MARK_NAMES = {
    "value": "value", "callback": "callback", "opaque": "opaque", "DRV_IN": "in", "DRV_OUT": "out",
    "DRV_INOUT": "inout", "DRV_IN_TEXT": "in_text", "DRV_IN_BYTES": "in_bytes", "DRV_OUT_BYTES": "out_bytes",
    "DRV_OUT_TEXT": "out_text", "DRV_INOUT_TEXT": "inout_text",
}
GENERATED = "// Written by generate_wrappers.py from the driver interface headers; a change here is lost.\n"


def includes(headers: list[Path]) -> str:
    """Headers of the interface by their path below include/, others by their name."""
    names = []
    for header in headers:
        parts = header.parts
        below = parts[len(parts) - parts[::-1].index("include"):] if "include" in parts else (header.name,)
        names.append("/".join(below))
    return "".join(f'#include "{name}"\n' for name in names)


def record_table(record: Record) -> str:
    rows = "".join(
        f'    {{"{member.name}", scalar::{SCALAR_NAMES[member.type]}, {member.count}, '
        f"offsetof(struct ::{record.name}, {member.name})}},\n"
        for member in record.fields)
    return (f"constexpr field {record.name}_fields[] = {{\n{rows}}};\n"
            f'constexpr record {record.name}_record{{"{record.name}", {record.name}_fields}};\n')


def parameter_row(parameter: Parameter, operation: Operation, interface: Interface) -> str:
    names = [other.name for other in operation.parameters]
    kind = SCALAR_NAMES.get(parameter.type, "uint8")
    layout = f"&{parameter.type}_record" if parameter.type in interface.records else "nullptr"
    size_parameter, fixed_size = -1, 0
    if parameter.size.isdigit():
        fixed_size = int(parameter.size)
    elif parameter.size:
        size_parameter = names.index(parameter.size)
    hidden = operation.variadic and parameter is operation.parameters[-1]
    return (f'    {{"{parameter.name}", mark::{MARK_NAMES[parameter.mark]}, scalar::{kind}, {layout}, '
            f"{size_parameter}, {fixed_size}, {'true' if hidden else 'false'}}},\n")


def parameter_table(operation: Operation, interface: Interface) -> str:
    rows = "".join(parameter_row(parameter, operation, interface) for parameter in operation.parameters)
    if operation.variadic:
        rows += '    {"text", mark::in_text, scalar::character, nullptr, -1, 0, false},\n'
    return f"constexpr parameter {operation.name}_parameters[] = {{\n{rows}}};\n" if rows else ""


def operation_row(operation: Operation) -> str:
    parameters = f"{operation.name}_parameters" if operation.parameters else "{}"
    return f'    {{"{operation.name}", {parameters}}},\n'


def tables_file(interface: Interface, headers: list[Path]) -> str:
    parts = [GENERATED, includes(headers), '#include "probe/descriptor.h"\n\n',
             "namespace kestro_probe {\n\nnamespace {\n\n"]
    parts += [record_table(record) for record in interface.records.values()]
    parts += [parameter_table(operation, interface) for operation in interface.operations]
    parts.append("constexpr operation table[] = {\n")
    parts += [operation_row(operation) for operation in interface.operations]
    parts.append("};\n\n} // namespace\n\nconst std::span<const operation> operations{table};\n\n"
                 "} // namespace kestro_probe\n")
    return "".join(parts)


def c_type(parameter: Parameter, interface: Interface) -> str:
    const = "const " if parameter.is_const else ""
    if parameter.mark in ("value", "callback"):
        return parameter.type
    record = "struct " if parameter.type in interface.records else ""
    return f"{const}{record}{parameter.type} *"


def function_type(operation: Operation, interface: Interface) -> str:
    types = [c_type(parameter, interface) for parameter in operation.parameters]
    if operation.variadic:
        types.append("...")
    return f"uint32_t (*)({', '.join(types)})"


def thunk(index: int, operation: Operation, interface: Interface) -> str:
    """Calls the real operation with the arguments whose addresses are in a row."""
    values = [f"*static_cast<{c_type(parameter, interface)} *>(a[{position}])".replace("* *", "**")
              for position, parameter in enumerate(operation.parameters)]
    if operation.variadic:
        values[-1] = '"%s"'
        values.append(f"*static_cast<const char **>(a[{len(operation.parameters)}])")
    unused = "[[maybe_unused]] " if not values else ""
    return (f"uint32_t call_{index}(void *real, {unused}void *const *a) {{\n"
            f"    return reinterpret_cast<{function_type(operation, interface)}>(real)({', '.join(values)});\n}}\n")


def wrapper(index: int, operation: Operation, interface: Interface) -> str:
    count = len(operation.parameters)
    head = [f"{c_type(parameter, interface)} a{position}".replace("* a", "*a")
            for position, parameter in enumerate(operation.parameters)]
    addresses = [f"&a{position}" for position in range(count)]
    if operation.variadic:
        head.append("...")
        addresses.append(f"&a{count}")
    body = ""
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
    body += f"    return answer({index}, a, __builtin_return_address(0));\n"
    return (f'extern "C" KESTRO_EXPORTED uint32_t {operation.name}({", ".join(head)}) {{\n{body}}}\n')


def wrappers_file(interface: Interface, headers: list[Path]) -> str:
    parts = [GENERATED, includes(headers), '#include "probe/runtime.h"\n\n#include <cstdarg>\n\n',
             "using kestro_probe::answer;\nusing kestro_probe::formatted_text;\n"
             "using kestro_probe::straight_to;\n\nnamespace {\n\n"]
    parts += [thunk(index, operation, interface) for index, operation in enumerate(interface.operations)]
    parts.append("\n} // namespace\n\n")
    parts += [wrapper(index, operation, interface) for index, operation in enumerate(interface.operations)]
    parts.append("\nnamespace kestro_probe {\n\nconst entry_point entry_points[] = {\n")
    parts += [f"    {{reinterpret_cast<void *>(&::{operation.name}), call_{index}}},\n"
              for index, operation in enumerate(interface.operations)]
    parts.append(f"}};\nstd::atomic<void *> real_operations[{len(interface.operations)}];\n\n"
                 "} // namespace kestro_probe\n")
    return "".join(parts)


def exports_file(interface: Interface) -> str:
    names = "".join(f"        {operation.name};\n" for operation in interface.operations)
    return f"{{\n    global:\n        dlsym;\n{names}    local:\n        *;\n}};\n"


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--tables", type=Path, help="C++ file of the tables to write")
    parser.add_argument("--wrappers", type=Path, help="C++ file of the wrappers to write")
    parser.add_argument("--exports", type=Path, help="linker version script to write")
    parser.add_argument("--names", action="store_true", help="print the names of the operations")
    parser.add_argument("headers", type=Path, nargs="+", help="driver interface headers")
    options = parser.parse_args()
    try:
        interface = read_interface(options.headers)
    except InterfaceError as error:
        print(f"generate_wrappers: {error}", file=sys.stderr)
        return 2
    # The probe looks an operation up by its name, by halves.
    interface.operations.sort(key=lambda operation: operation.name)
    for path, text in ((options.tables, tables_file(interface, options.headers)),
                       (options.wrappers, wrappers_file(interface, options.headers)),
                       (options.exports, exports_file(interface))):
        if path:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
    if options.names:
        print("\n".join(operation.name for operation in interface.operations))
    return 0


if __name__ == "__main__":
    sys.exit(main())
