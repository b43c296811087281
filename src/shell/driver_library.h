// Driver libraries that a board may lack: opened by file name when a sub-command needs them, so that a board without
// one still runs every other module.
//
// There are two ways. A sub-command that opens its library for itself closes it on every path. A module that holds its
// library opens it once for the run, lazily and never to be unloaded, and looks each operation up when it comes to it.
#pragma once

#include <type_traits>

// How a library or an operation that cannot be had is reported: in brief, or with the system's and the loader's
// reasons, or with these and no blank in front of them.
enum class failure_line { brief, with_reasons, with_reasons_close };

// For one sub-command, all its symbols bound at once. Null, and a line, when it cannot be opened.
void *open_library(const char *file, failure_line line);
void close_library(void *library);

// Null, and a line, for an operation that the library lacks; the library is closed then.
void *find_symbol(void *library, const char *name, failure_line line);

// A library that a module holds; the handle is null while it is closed.
struct held_library {
    const char *file;
    void *handle;
};

// -1, and a line, when it cannot be opened.
int open_held_library(held_library &library);
void close_held_library(held_library &library);

// Null, and a line, when the library is closed or lacks the operation; in either case it is closed then.
void *find_symbol(held_library &library, const char *name);

// The same for an operation of a type that the driver's header declares:
//   const auto get_speed = find_operation<decltype(drv_meth_get_speed)>(library, "drv_meth_get_speed", ...);
template <typename operation> operation *find_operation(void *library, const char *name, failure_line line) {
    static_assert(std::is_function_v<operation>);
    return reinterpret_cast<operation *>(find_symbol(library, name, line));
}

template <typename operation> operation *find_operation(held_library &library, const char *name) {
    static_assert(std::is_function_v<operation>);
    return reinterpret_cast<operation *>(find_symbol(library, name));
}
