// The C library's records of times: its own, and the ones of 32-bit programs with 64-bit times.
#pragma once

#include "sim/world/clock.h"

namespace kestro_sim {

#ifndef __LP64__
struct timespec64 {
    int64_t tv_sec;
    int32_t tv_nsec;
    int32_t padding;
};

struct timeval64 {
    int64_t tv_sec;
    int64_t tv_usec;
};
#endif

template <typename record> bool is_valid(const record &time) {
    return time.tv_sec >= 0 && time.tv_nsec >= 0 && time.tv_nsec < nanoseconds_per_second;
}

template <typename record> void show(int64_t span, record &time) {
    time.tv_sec = static_cast<decltype(time.tv_sec)>(span / nanoseconds_per_second);
    time.tv_nsec = static_cast<decltype(time.tv_nsec)>(span % nanoseconds_per_second);
}

// A time on that clock as nanoseconds since the start of the run.
template <typename record> int64_t moment_of(clockid_t clock, const record &time) {
    const int64_t shown = to_nanoseconds(time.tv_sec, time.tv_nsec);
    return shown == never ? never - 1 : shown - clock_at_start(clock);
}

} // namespace kestro_sim
