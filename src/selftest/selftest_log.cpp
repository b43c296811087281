// The levelled diagnostic log of the self-test.
#include "selftest/selftest_log.h"

#include <cstdarg>
#include <cstdio>

#include "bounds/bounds.h"
#include "drv_basic/service/drv_log.h"
#include "shell/console.h"

namespace {

constexpr const char *level_names[] = {"emergency", "error", "info", "debug"};
constexpr uint32_t console_threshold = log_info;

void print_message(const char *tag, uint32_t level, const char *message) {
    if (level >= sizeof(level_names) / sizeof(level_names[0])) {
        printf("\r\n[%s][level%u]:%s", tag, level, message);
    } else {
        printf("\r\n[%s][%s]:%s", tag, level_names[level], message);
    }
    // The line has no end of its own, and the driver is called next.
    flush_partial_line();
}

} // namespace

void selftest_log(const char *tag, uint32_t log_id, uint32_t level, const char *format, ...) {
    char message[256];
    va_list values;
    va_start(values, format);
    vsnprintf_s(message, sizeof(message), sizeof(message) - 1, format, values);
    va_end(values);
    if (level <= console_threshold) {
        print_message(tag, level, message);
    }
    drv_log_record(log_id, level, 0, "[%s]:%s", tag, message);
}
