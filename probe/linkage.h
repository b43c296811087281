// Where calls come from and where they go: the main program, and the real operations behind the wrappers.
#pragma once

#include <cstddef>

namespace kestro_probe {

using dlsym_function = void *(*)(void *handle, const char *name) noexcept;

// The C library's dlsym, which the probe's own stands in front of. noexcept: a call that may throw is no jump.
dlsym_function real_dlsym();

// Before this nothing counts as the main program.
void find_main_program();
bool is_main_program(const void *address);

// The operation that the call would have reached without the probe, or null. A library that was opened at run time is
// looked up through the library that calls.
void *real_operation(size_t operation, const void *caller);

} // namespace kestro_probe
