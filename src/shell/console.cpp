// Console helpers of the sub-commands.
#include "shell/console.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <sys/time.h>

#include "bounds/bounds.h"

void print_begin_banner(banner_style style, const char *test) {
    switch (style) {
    case banner_style::wide:
        printf("\n\n*********   %s test begin:  ********\n\n\n", test);
        break;
    case banner_style::narrow:
        printf("\n*********   %s test begin:  ********\n", test);
        break;
    case banner_style::bare:
        printf("*********   %s test begin:  ********\n", test);
        break;
    }
}

void print_end_banner(banner_style style, const char *test) {
    switch (style) {
    case banner_style::wide:
        printf("\n\n*********   %s test   end:  ********\n\n\n", test);
        break;
    case banner_style::narrow:
        printf("\n*********   %s test   end:  ********\n", test);
        break;
    case banner_style::bare:
        printf("*********   %s test end:  ********\n", test);
        break;
    }
}

namespace {

// A line being put together in a fixed area; length -1 once something did not fit.
struct tagged_text {
    char area[512];
    int length;
};

__attribute__((format(printf, 2, 0))) void append_values(tagged_text *line, const char *format, va_list values) {
    if (line->length < 0) {
        return;
    }
    const size_t used = static_cast<size_t>(line->length);
    const int written = vsprintf_s(line->area + used, sizeof(line->area) - used, format, values);
    line->length = written < 0 ? -1 : line->length + written;
}

__attribute__((format(printf, 2, 3))) void append(tagged_text *line, const char *format, ...) {
    va_list values;
    va_start(values, format);
    append_values(line, format, values);
    va_end(values);
}

} // namespace

int print_tagged_line(const char *tag, const char *format, ...) {
    timeval now{};
    tm local{};
    gettimeofday(&now, nullptr);
    if (localtime_r(&now.tv_sec, &local) == nullptr) {
        return -1;
    }
    tagged_text line{};
    append(&line, "<%s>", tag);
    append(&line, "[%04u-%02u-%02u %02u:%02u:%02u.%03u]", static_cast<unsigned>(local.tm_year + 1900),
           static_cast<unsigned>(local.tm_mon + 1), static_cast<unsigned>(local.tm_mday),
           static_cast<unsigned>(local.tm_hour), static_cast<unsigned>(local.tm_min),
           static_cast<unsigned>(local.tm_sec), static_cast<unsigned>(now.tv_usec / 1000));
    va_list values;
    va_start(values, format);
    append_values(&line, format, values);
    va_end(values);
    append(&line, "\n");
    if (line.length < 0) {
        return -1;
    }
// The second reading of percent signs is part of what scripts expect of this line.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    return printf(line.area);
#pragma GCC diagnostic pop
}

void flush_partial_line() {
    fflush(stdout);
}

char *new_text_area(uint32_t len) {
    const uint64_t bytes = uint64_t{len} + 1;
    return bytes > INT32_MAX ? nullptr : static_cast<char *>(calloc(static_cast<size_t>(bytes), 1));
}
