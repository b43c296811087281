// The report sink of the self-test: where its lines go.
#pragma once

#include <cstdint>

// A text buffer of report_capacity bytes and its fill length, both owned by the caller of the self-test. When either is
// null the sink is the console.
struct report_sink {
    char *buffer;
    uint32_t *fill;
};

constexpr uint32_t report_capacity = 0x200000;
constexpr report_sink console_sink = {nullptr, nullptr};

// Appends to the buffer, or prints at most 1023 characters on the console. A text that does not fit any more is cut
// and lowers the fill length by one, the formatter's error value.
void report_append(report_sink sink, const char *format, ...) __attribute__((format(printf, 2, 3)));
