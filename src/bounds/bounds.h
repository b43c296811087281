// The bounded string and memory functions: the only way to memcpy_s, memset_s, strcpy_s, strcat_s, sprintf_s,
// snprintf_s, vsprintf_s, vsnprintf_s and sscanf_s.
//
// Memory, string and scan functions are the bounds library's own: 0 or a positive error. Its formatted functions do
// not serve here (no maximum count, at most 32 KiB, a formatting engine of its own), so these four stand on the C
// library's vsnprintf:
//
//   - they return the number of characters written, without the terminator, or -1;
//   - a text that does not fit in dest_size bytes gives -1 and an empty destination;
//   - the counted two cut the text at max_count characters: terminated, and -1 when something was cut;
//   - a null destination or format, or a size of 0, gives -1 and touches nothing.
#pragma once

#include <cstdarg>
#include <cstddef>

#include <safe_mem_lib.h>
#include <safe_str_lib.h>

#undef sprintf_s
#undef snprintf_s
#undef vsprintf_s
#undef vsnprintf_s

int vsprintf_s(char *dest, size_t dest_size, const char *format, va_list values) __attribute__((format(printf, 3, 0)));
int vsnprintf_s(char *dest, size_t dest_size, size_t max_count, const char *format, va_list values)
    __attribute__((format(printf, 4, 0)));
int sprintf_s(char *dest, size_t dest_size, const char *format, ...) __attribute__((format(printf, 3, 4)));
int snprintf_s(char *dest, size_t dest_size, size_t max_count, const char *format, ...)
    __attribute__((format(printf, 4, 5)));
