// Reading the clock and sleeping. With the real clock everything is handed on as it is.
#include "sim/world/clock.h"

#include "sim/world/scheduler.h"
#include "sim/world/times.h"
#include "sim/world/world.h"

#include <atomic>
#include <cerrno>
#include <sys/time.h>

namespace kestro_sim {

namespace {

std::atomic<int64_t> now = 0;
static_assert(std::atomic<int64_t>::is_always_lock_free, "signal handlers read the clock as well");

int64_t saturated_sum(int64_t a, int64_t b) {
    int64_t sum = 0;
    return __builtin_add_overflow(a, b, &sum) ? INT64_MAX : sum;
}

bool is_known(clockid_t clock) {
    return clock >= CLOCK_REALTIME && clock <= CLOCK_TAI;
}

// Gives an error number, as clock_nanosleep does. The rest of a span that a signal ended is shown, that of a moment
// not.
template <typename record> int sleep_on(clockid_t clock, int flags, const record &time, record *left) {
    if (!is_valid(time)) {
        return EINVAL;
    }
    const bool is_moment = (flags & TIMER_ABSTIME) != 0;
    const int64_t deadline =
        is_moment ? moment_of(clock, time) : moment_after(to_nanoseconds(time.tv_sec, time.tv_nsec));
    if (wait_until(deadline, signals::end_it) != by_signal) {
        return 0;
    }
    if (!is_moment && left != nullptr) {
        show(deadline - virtual_now(), *left);
    }
    return EINTR;
}

// The same as nanosleep says it.
template <typename record> int sleep_span(const record &time, record *left) {
    const int error = sleep_on(CLOCK_MONOTONIC, 0, time, left);
    if (error != 0) {
        errno = error;
        return -1;
    }
    return 0;
}

} // namespace

int64_t virtual_now() {
    return now.load();
}

int64_t moment_after(int64_t span) {
    return span < never - now.load() ? now.load() + span : never - 1;
}

void move_clock_to(int64_t moment) {
    int64_t before = now.load();
    while (before < moment && !now.compare_exchange_weak(before, moment)) {
    }
}

int64_t clock_at_start(clockid_t clock) {
    switch (clock) {
    case CLOCK_REALTIME:
    case CLOCK_REALTIME_COARSE:
    case CLOCK_REALTIME_ALARM:
    case CLOCK_TAI:
        return virtual_start_of_day + settings.board_time;
    default:
        return virtual_start_since_boot + settings.board_time;
    }
}

int64_t to_nanoseconds(int64_t seconds, int64_t nanoseconds) {
    int64_t total = 0;
    return __builtin_mul_overflow(seconds, nanoseconds_per_second, &total) ? INT64_MAX
                                                                           : saturated_sum(total, nanoseconds);
}

namespace {

// False for a clock that this world does not have; the C library knows what to say of it.
template <typename record> bool read_clock(clockid_t clock, record &time) {
    const bool processor_time = clock == CLOCK_PROCESS_CPUTIME_ID || clock == CLOCK_THREAD_CPUTIME_ID || clock < 0;
    if (!settings.virtual_clock || (!processor_time && !is_known(clock))) {
        return false;
    }
    show(processor_time ? 0 : saturated_sum(clock_at_start(clock), virtual_now()), time);
    return true;
}

bool can_sleep_on(clockid_t clock) {
    return settings.virtual_clock && is_known(clock) && clock != CLOCK_PROCESS_CPUTIME_ID &&
           clock != CLOCK_THREAD_CPUTIME_ID;
}

int64_t seconds_of_day() {
    return saturated_sum(clock_at_start(CLOCK_REALTIME), virtual_now()) / nanoseconds_per_second;
}

template <typename record> void show_day(record &time) {
    const int64_t moment = saturated_sum(clock_at_start(CLOCK_REALTIME), virtual_now());
    time.tv_sec = static_cast<decltype(time.tv_sec)>(moment / nanoseconds_per_second);
    time.tv_usec = static_cast<decltype(time.tv_usec)>(moment % nanoseconds_per_second / 1000);
}

} // namespace

WORLD_EXPORT time_t world_time(time_t *result) __asm__("time");
time_t world_time(time_t *result) {
    static next_function<time_t(time_t *)> next{"time"};
    if (!settings.virtual_clock) {
        return next.get()(result);
    }
    const auto seconds = static_cast<time_t>(seconds_of_day());
    if (result != nullptr) {
        *result = seconds;
    }
    return seconds;
}

WORLD_EXPORT int world_gettimeofday(timeval *time, void *zone) __asm__("gettimeofday");
int world_gettimeofday(timeval *time, void *zone) {
    static next_function<int(timeval *, void *)> next{"gettimeofday"};
    if (!settings.virtual_clock || time == nullptr) {
        return next.get()(time, zone);
    }
    show_day(*time);
    return 0;
}

WORLD_EXPORT int world_clock_gettime(clockid_t clock, timespec *time) __asm__("clock_gettime");
int world_clock_gettime(clockid_t clock, timespec *time) {
    static next_function<int(clockid_t, timespec *)> next{"clock_gettime"};
    return time != nullptr && read_clock(clock, *time) ? 0 : next.get()(clock, time);
}

WORLD_EXPORT int world_timespec_get(timespec *time, int base) __asm__("timespec_get");
int world_timespec_get(timespec *time, int base) {
    static next_function<int(timespec *, int)> next{"timespec_get"};
    return base == TIME_UTC && read_clock(CLOCK_REALTIME, *time) ? base : next.get()(time, base);
}

WORLD_EXPORT clock_t world_clock() __asm__("clock");
clock_t world_clock() {
    static next_function<clock_t()> next{"clock"};
    return settings.virtual_clock ? 0 : next.get()();
}

WORLD_EXPORT unsigned world_sleep(unsigned seconds) __asm__("sleep");
unsigned world_sleep(unsigned seconds) {
    static next_function<unsigned(unsigned)> next{"sleep"};
    if (!settings.virtual_clock) {
        return next.get()(seconds);
    }
    timespec left{};
    const timespec asked{static_cast<time_t>(seconds), 0};
    return sleep_span(asked, &left) == 0 ? 0 : static_cast<unsigned>(left.tv_sec + (left.tv_nsec != 0 ? 1 : 0));
}

WORLD_EXPORT int world_usleep(useconds_t microseconds) __asm__("usleep");
int world_usleep(useconds_t microseconds) {
    static next_function<int(useconds_t)> next{"usleep"};
    if (!settings.virtual_clock) {
        return next.get()(microseconds);
    }
    const timespec asked{static_cast<time_t>(microseconds / 1000000), static_cast<long>(microseconds % 1000000 * 1000)};
    return sleep_span(asked, static_cast<timespec *>(nullptr));
}

WORLD_EXPORT int world_nanosleep(const timespec *asked, timespec *left) __asm__("nanosleep");
int world_nanosleep(const timespec *asked, timespec *left) {
    static next_function<int(const timespec *, timespec *)> next{"nanosleep"};
    if (!settings.virtual_clock || asked == nullptr || !is_valid(*asked)) {
        return next.get()(asked, left);
    }
    return sleep_span(*asked, left);
}

WORLD_EXPORT int world_clock_nanosleep(clockid_t clock, int flags, const timespec *asked,
                                       timespec *left) __asm__("clock_nanosleep");
int world_clock_nanosleep(clockid_t clock, int flags, const timespec *asked, timespec *left) {
    static next_function<int(clockid_t, int, const timespec *, timespec *)> next{"clock_nanosleep"};
    if (!can_sleep_on(clock) || asked == nullptr) {
        return next.get()(clock, flags, asked, left);
    }
    return sleep_on(clock, flags, *asked, left);
}

// Nanoseconds of board time, for the simulated drivers, which find this function when they run in a world; less than 0
// on the real clock.
WORLD_EXPORT int64_t kestro_world_board_time() __asm__("kestro_world_board_time");
int64_t kestro_world_board_time() {
    return settings.virtual_clock ? saturated_sum(settings.board_time, virtual_now()) : -1;
}

// How much board time a run has taken that entered no simulated driver. Where a script answers the calls no board has
// been there.
WORLD_EXPORT int64_t kestro_world_time_taken() __asm__("kestro_world_time_taken");
int64_t kestro_world_time_taken() {
    return settings.virtual_clock && !settings.is_answered ? virtual_now() : 0;
}

// 32-bit programs with 64-bit times come through these.
#ifndef __LP64__
WORLD_EXPORT int64_t world_time64(int64_t *result) __asm__("__time64");
int64_t world_time64(int64_t *result) {
    static next_function<int64_t(int64_t *)> next{"__time64"};
    if (!settings.virtual_clock) {
        return next.get()(result);
    }
    const int64_t seconds = seconds_of_day();
    if (result != nullptr) {
        *result = seconds;
    }
    return seconds;
}

WORLD_EXPORT int world_gettimeofday64(timeval64 *time, void *zone) __asm__("__gettimeofday64");
int world_gettimeofday64(timeval64 *time, void *zone) {
    static next_function<int(timeval64 *, void *)> next{"__gettimeofday64"};
    if (!settings.virtual_clock || time == nullptr) {
        return next.get()(time, zone);
    }
    show_day(*time);
    return 0;
}

WORLD_EXPORT int world_clock_gettime64(clockid_t clock, timespec64 *time) __asm__("__clock_gettime64");
int world_clock_gettime64(clockid_t clock, timespec64 *time) {
    static next_function<int(clockid_t, timespec64 *)> next{"__clock_gettime64"};
    return time != nullptr && read_clock(clock, *time) ? 0 : next.get()(clock, time);
}

WORLD_EXPORT int world_nanosleep64(const timespec64 *asked, timespec64 *left) __asm__("__nanosleep64");
int world_nanosleep64(const timespec64 *asked, timespec64 *left) {
    static next_function<int(const timespec64 *, timespec64 *)> next{"__nanosleep64"};
    if (!settings.virtual_clock || asked == nullptr || !is_valid(*asked)) {
        return next.get()(asked, left);
    }
    return sleep_span(*asked, left);
}

WORLD_EXPORT int world_clock_nanosleep64(clockid_t clock, int flags, const timespec64 *asked,
                                         timespec64 *left) __asm__("__clock_nanosleep_time64");
int world_clock_nanosleep64(clockid_t clock, int flags, const timespec64 *asked, timespec64 *left) {
    static next_function<int(clockid_t, int, const timespec64 *, timespec64 *)> next{"__clock_nanosleep_time64"};
    if (!can_sleep_on(clock) || asked == nullptr) {
        return next.get()(clock, flags, asked, left);
    }
    return sleep_on(clock, flags, *asked, left);
}
#endif

} // namespace kestro_sim
