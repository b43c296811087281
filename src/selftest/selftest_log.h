// The levelled diagnostic log of the self-test: console and driver log.
#pragma once

#include <cstdint>

enum selftest_log_level : uint32_t { log_emergency = 0, log_error = 1, log_info = 2, log_debug = 3 };

// Prints messages up to log_info, cut at 255 characters, and hands every message to the driver log of that id.
void selftest_log(const char *tag, uint32_t log_id, uint32_t level, const char *format, ...)
    __attribute__((format(printf, 4, 5)));
