// Timer descriptors on the virtual clock. Each is backed by a real timer descriptor that is never armed: it keeps the
// number taken, carries the flags, and tells a live timer from a number that was closed and given to another file.
#include "sim/world/timers.h"

#include "sim/world/clock.h"
#include "sim/world/raw_lock.h"
#include "sim/world/scheduler.h"
#include "sim/world/times.h"
#include "sim/world/world.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace kestro_sim {

namespace {

struct virtual_timer {
    bool used;
    int descriptor;
    clockid_t clock;
    int64_t expiry; // `never` when not armed
    int64_t period; // 0: once
};

virtual_timer timers[64];
std::atomic<bool> any_timers = false;
raw_lock timers_lock;

struct lock_timers {
    lock_timers() {
        timers_lock.lock();
    }
    ~lock_timers() {
        timers_lock.unlock();
    }
    lock_timers(const lock_timers &) = delete;
    lock_timers &operator=(const lock_timers &) = delete;
};

int real_gettime(int descriptor, itimerspec *value) {
    static next_function<int(int, itimerspec *)> next{"timerfd_gettime"};
    return next.get()(descriptor, value);
}

bool is_alive(const virtual_timer &timer) {
    itimerspec ignored{};
    const int error = errno;
    const bool alive = timer.used && real_gettime(timer.descriptor, &ignored) == 0;
    errno = error;
    return alive;
}

virtual_timer *find_timer(int descriptor) {
    for (virtual_timer &timer : timers) {
        if (timer.used && timer.descriptor == descriptor) {
            timer.used = is_alive(timer);
            return timer.used ? &timer : nullptr;
        }
    }
    return nullptr;
}

virtual_timer *find_free_place(int descriptor) {
    for (virtual_timer &timer : timers) {
        if (timer.used && timer.descriptor == descriptor) {
            return &timer;
        }
    }
    for (virtual_timer &timer : timers) {
        if (!is_alive(timer)) {
            return &timer;
        }
    }
    return nullptr;
}

timespec to_timespec(int64_t span) {
    timespec time{};
    time.tv_sec = static_cast<time_t>(span / nanoseconds_per_second);
    time.tv_nsec = static_cast<long>(span % nanoseconds_per_second);
    return time;
}

void show_timer(const virtual_timer &timer, itimerspec &value) {
    int64_t expiry = timer.expiry;
    const int64_t now = virtual_now();
    if (expiry <= now && timer.period != 0) {
        expiry += ((now - expiry) / timer.period + 1) * timer.period;
    }
    const bool ahead = expiry != never && expiry > now;
    value.it_value = to_timespec(ahead ? expiry - now : 0);
    value.it_interval = to_timespec(timer.period);
}

void arm(virtual_timer &timer, int flags, const itimerspec &value) {
    const int64_t first = to_nanoseconds(value.it_value.tv_sec, value.it_value.tv_nsec);
    timer.period = to_nanoseconds(value.it_interval.tv_sec, value.it_interval.tv_nsec);
    if (first == 0) {
        timer.expiry = never;
    } else if ((flags & TFD_TIMER_ABSTIME) != 0) {
        timer.expiry = first - clock_at_start(timer.clock);
    } else {
        timer.expiry = moment_after(first);
    }
}

// How often the timer went off since it was last read.
uint64_t take_expirations(virtual_timer &timer) {
    const int64_t now = virtual_now();
    if (timer.expiry > now) {
        return 0;
    }
    if (timer.period == 0) {
        timer.expiry = never;
        return 1;
    }
    const int64_t count = (now - timer.expiry) / timer.period + 1;
    timer.expiry += count * timer.period;
    return static_cast<uint64_t>(count);
}

// False for a descriptor that is no virtual timer.
bool set_timer(int descriptor, int flags, const itimerspec &value, itimerspec *before) {
    const lock_timers lock;
    virtual_timer *timer = find_timer(descriptor);
    if (timer != nullptr && before != nullptr) {
        show_timer(*timer, *before);
    }
    if (timer != nullptr) {
        arm(*timer, flags, value);
    }
    return timer != nullptr;
}

// Those who wait for timers look again.
void tell_of_timer_change() {
    const turn own;
    timer_changes.fetch_add(1);
    wake_all(&timer_changes);
}

enum class reading { is_done, waits, is_the_kernels };

// What is to be done with a read: a blocking one waits for the next expiry.
reading read_timer(int descriptor, uint64_t &count, int64_t &expiry) {
    const lock_timers lock;
    virtual_timer *timer = find_timer(descriptor);
    if (timer == nullptr) {
        return reading::is_the_kernels;
    }
    count = take_expirations(*timer);
    expiry = timer->expiry;
    if (count != 0) {
        return reading::is_done;
    }
    return (fcntl(descriptor, F_GETFL) & O_NONBLOCK) == 0 ? reading::waits : reading::is_the_kernels;
}

} // namespace

void forget_timers_lock() {
    timers_lock.forget();
}

int64_t next_expiry(int descriptor) {
    if (!any_timers) {
        return never;
    }
    const lock_timers lock;
    const virtual_timer *timer = find_timer(descriptor);
    return timer == nullptr ? never : timer->expiry;
}

WORLD_EXPORT int world_timerfd_create(int clock, int flags) __asm__("timerfd_create");
int world_timerfd_create(int clock, int flags) {
    static next_function<int(int, int)> next{"timerfd_create"};
    const int descriptor = next.get()(clock, flags);
    if (!settings.virtual_clock || descriptor < 0) {
        return descriptor;
    }
    const lock_timers lock;
    virtual_timer *timer = find_free_place(descriptor);
    if (timer == nullptr) {
        close(descriptor);
        errno = EMFILE;
        return -1;
    }
    *timer = {true, descriptor, clock, never, 0};
    any_timers = true;
    return descriptor;
}

WORLD_EXPORT int world_timerfd_settime(int descriptor, int flags, const itimerspec *value,
                                       itimerspec *before) __asm__("timerfd_settime");
int world_timerfd_settime(int descriptor, int flags, const itimerspec *value, itimerspec *before) {
    static next_function<int(int, int, const itimerspec *, itimerspec *)> next{"timerfd_settime"};
    if (any_timers && value != nullptr && is_valid(value->it_value) && is_valid(value->it_interval)) {
        if (set_timer(descriptor, flags, *value, before)) {
            tell_of_timer_change();
            return 0;
        }
    }
    return next.get()(descriptor, flags, value, before);
}

WORLD_EXPORT int world_timerfd_gettime(int descriptor, itimerspec *value) __asm__("timerfd_gettime");
int world_timerfd_gettime(int descriptor, itimerspec *value) {
    if (any_timers && value != nullptr) {
        const lock_timers lock;
        const virtual_timer *timer = find_timer(descriptor);
        if (timer != nullptr) {
            show_timer(*timer, *value);
            return 0;
        }
    }
    return real_gettime(descriptor, value);
}

WORLD_EXPORT ssize_t world_read(int descriptor, void *buffer, size_t size) __asm__("read");
ssize_t world_read(int descriptor, void *buffer, size_t size) {
    static next_function<ssize_t(int, void *, size_t)> next{"read"};
    uint64_t count = 0;
    int64_t expiry = never;
    while (any_timers && size >= sizeof(count)) {
        const unsigned seen = timer_changes;
        const reading what = read_timer(descriptor, count, expiry);
        if (what == reading::is_the_kernels) {
            break;
        }
        if (what == reading::is_done) {
            memcpy(buffer, &count, sizeof(count));
            return sizeof(count);
        }
        if (wait_for_timers(seen, expiry, signals::as_installed) == by_signal) {
            errno = EINTR;
            return -1;
        }
    }
    // The real timer has nothing to read either, and says so.
    return next.get()(descriptor, buffer, size);
}

} // namespace kestro_sim
