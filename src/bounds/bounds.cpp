// The formatted functions of bounds.h over the C library's own formatter.
#include "bounds/bounds.h"

#include <cstdio>

int vsprintf_s(char *dest, size_t dest_size, const char *format, va_list values) {
    if (dest == nullptr || format == nullptr || dest_size == 0) {
        return -1;
    }
    const int length = vsnprintf(dest, dest_size, format, values);
    if (length < 0 || static_cast<size_t>(length) >= dest_size) {
        dest[0] = '\0';
        return -1;
    }
    return length;
}

int vsnprintf_s(char *dest, size_t dest_size, size_t max_count, const char *format, va_list values) {
    if (max_count >= dest_size) {
        return vsprintf_s(dest, dest_size, format, values);
    }
    if (dest == nullptr || format == nullptr) {
        return -1;
    }
    const int length = vsnprintf(dest, max_count + 1, format, values);
    if (length < 0) {
        dest[0] = '\0';
    }
    return length < 0 || static_cast<size_t>(length) > max_count ? -1 : length;
}

int sprintf_s(char *dest, size_t dest_size, const char *format, ...) {
    va_list values;
    va_start(values, format);
    const int length = vsprintf_s(dest, dest_size, format, values);
    va_end(values);
    return length;
}

int snprintf_s(char *dest, size_t dest_size, size_t max_count, const char *format, ...) {
    va_list values;
    va_start(values, format);
    const int length = vsnprintf_s(dest, dest_size, max_count, format, values);
    va_end(values);
    return length;
}
