// The report sink of the self-test.
#include "selftest/report.h"

#include <cstdarg>
#include <cstdio>

#include "bounds/bounds.h"

namespace {

__attribute__((format(printf, 2, 0))) void append_to_buffer(report_sink sink, const char *format, va_list values) {
    // The fill length is the caller's; beyond the capacity there is no room and nothing is written.
    const uint32_t room = *sink.fill < report_capacity ? report_capacity - *sink.fill : 0;
    const int written = room == 0 ? -1 : vsnprintf_s(sink.buffer + *sink.fill, room, room - 1, format, values);
    *sink.fill += static_cast<uint32_t>(written);
}

__attribute__((format(printf, 1, 0))) void print_cut(const char *format, va_list values) {
    char line[1024];
    vsnprintf_s(line, sizeof(line), sizeof(line) - 1, format, values);
    line[sizeof(line) - 1] = '\0';
    printf("%s", line);
}

} // namespace

void report_append(report_sink sink, const char *format, ...) {
    if (format == nullptr) {
        return;
    }
    va_list values;
    va_start(values, format);
    if (sink.buffer != nullptr && sink.fill != nullptr) {
        append_to_buffer(sink, format, values);
    } else {
        print_cut(format, values);
    }
    va_end(values);
}
