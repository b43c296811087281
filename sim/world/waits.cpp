// Waiting for descriptors on the virtual clock: what is ready is given at once, otherwise the thread waits for the
// first virtual timer among them or the end of the time. Waits without an end for real descriptors are real waits.
#include "sim/world/waits.h"

#include "sim/world/scheduler.h"
#include "sim/world/timers.h"
#include "sim/world/world.h"

#include <algorithm>
#include <cerrno>
#include <sys/select.h>

namespace kestro_sim {

namespace {

int64_t first_expiry(const pollfd *descriptors, nfds_t count) {
    int64_t first = never;
    for (nfds_t i = 0; i < count; ++i) {
        const bool asked = descriptors[i].fd >= 0 && (descriptors[i].events & POLLIN) != 0;
        first = asked ? std::min(first, next_expiry(descriptors[i].fd)) : first;
    }
    return first;
}

// Deadline in nanoseconds since the start of the run; `never` waits without an end.
int poll_until(pollfd *descriptors, nfds_t count, int64_t deadline) {
    for (;;) {
        const unsigned seen = timer_changes;
        const int ready = poll_ready(descriptors, count);
        if (ready != 0 || deadline <= virtual_now()) {
            return ready;
        }
        const int64_t next = std::min(first_expiry(descriptors, count), deadline);
        if (next == never) {
            return real_poll(descriptors, count, -1);
        }
        if (wait_for_descriptors(descriptors, count, seen, next) == by_signal) {
            errno = EINTR;
            return -1;
        }
    }
}

bool is_in(const fd_set *set, int descriptor) {
    return set != nullptr && FD_ISSET(descriptor, set);
}

// The sets as poll wants them; gives how many descriptors there are.
nfds_t to_poll(int limit, const fd_set *reads, const fd_set *writes, const fd_set *exceptions, pollfd *descriptors) {
    nfds_t count = 0;
    for (int i = 0; i < limit; ++i) {
        int events = 0;
        events |= is_in(reads, i) ? POLLIN : 0;
        events |= is_in(writes, i) ? POLLOUT : 0;
        events |= is_in(exceptions, i) ? POLLPRI : 0;
        if (events != 0) {
            descriptors[count++] = {i, static_cast<short>(events), 0};
        }
    }
    return count;
}

// Leaves in the set what is ready for it; gives how many.
int keep_ready(fd_set *set, int asked, int ready, const pollfd *descriptors, nfds_t count) {
    int kept = 0;
    for (nfds_t i = 0; set != nullptr && i < count; ++i) {
        const bool is_ready = (descriptors[i].events & asked) != 0 && (descriptors[i].revents & ready) != 0;
        if (is_ready) {
            ++kept;
        } else {
            FD_CLR(descriptors[i].fd, set);
        }
    }
    return kept;
}

int select_until(int limit, fd_set *reads, fd_set *writes, fd_set *exceptions, int64_t deadline) {
    pollfd descriptors[FD_SETSIZE];
    const nfds_t count = to_poll(limit, reads, writes, exceptions, descriptors);
    if (poll_until(descriptors, count, deadline) < 0) {
        return -1;
    }
    for (nfds_t i = 0; i < count; ++i) {
        if ((descriptors[i].revents & POLLNVAL) != 0) {
            errno = EBADF;
            return -1;
        }
    }
    return keep_ready(reads, POLLIN, POLLIN | POLLHUP | POLLERR, descriptors, count) +
           keep_ready(writes, POLLOUT, POLLOUT | POLLERR, descriptors, count) +
           keep_ready(exceptions, POLLPRI, POLLPRI, descriptors, count);
}

// Larger sets than the C library's own, and limits it refuses, are its business.
bool is_virtual_select(int limit) {
    return settings.virtual_clock && limit >= 0 && limit <= FD_SETSIZE;
}

// Signals that only the wait lets through are delivered at its beginning, and end it.
bool ended_by_signal(const sigset_t *mask) {
    const timespec at_once{};
    return mask != nullptr && real_ppoll(nullptr, 0, &at_once, mask) < 0;
}

int64_t deadline_of(const timespec *time) {
    return time == nullptr ? never : moment_after(to_nanoseconds(time->tv_sec, time->tv_nsec));
}

} // namespace

int real_poll(pollfd *descriptors, nfds_t count, int milliseconds) {
    static next_function<int(pollfd *, nfds_t, int)> next{"poll"};
    return next.get()(descriptors, count, milliseconds);
}

int real_ppoll(pollfd *descriptors, nfds_t count, const timespec *time, const sigset_t *mask) {
    static next_function<int(pollfd *, nfds_t, const timespec *, const sigset_t *)> next{"ppoll"};
    return next.get()(descriptors, count, time, mask);
}

int poll_ready(pollfd *descriptors, nfds_t count) {
    int ready = real_poll(descriptors, count, 0);
    if (ready < 0) {
        return ready;
    }
    for (nfds_t i = 0; i < count; ++i) {
        pollfd &descriptor = descriptors[i];
        const bool asked = descriptor.fd >= 0 && (descriptor.events & POLLIN) != 0;
        if (asked && descriptor.revents == 0 && next_expiry(descriptor.fd) <= virtual_now()) {
            descriptor.revents = POLLIN;
            ++ready;
        }
    }
    return ready;
}

WORLD_EXPORT int world_poll(pollfd *descriptors, nfds_t count, int milliseconds) __asm__("poll");
int world_poll(pollfd *descriptors, nfds_t count, int milliseconds) {
    if (!settings.virtual_clock) {
        return real_poll(descriptors, count, milliseconds);
    }
    return poll_until(descriptors, count, milliseconds < 0 ? never : moment_after(milliseconds * INT64_C(1000000)));
}

WORLD_EXPORT int world_ppoll(pollfd *descriptors, nfds_t count, const timespec *time,
                             const sigset_t *mask) __asm__("ppoll");
int world_ppoll(pollfd *descriptors, nfds_t count, const timespec *time, const sigset_t *mask) {
    if (!settings.virtual_clock || (time == nullptr && first_expiry(descriptors, count) == never)) {
        return real_ppoll(descriptors, count, time, mask);
    }
    return ended_by_signal(mask) ? -1 : poll_until(descriptors, count, deadline_of(time));
}

WORLD_EXPORT int world_select(int limit, fd_set *reads, fd_set *writes, fd_set *exceptions,
                              timeval *time) __asm__("select");
int world_select(int limit, fd_set *reads, fd_set *writes, fd_set *exceptions, timeval *time) {
    static next_function<int(int, fd_set *, fd_set *, fd_set *, timeval *)> next{"select"};
    if (!is_virtual_select(limit) || (time != nullptr && (time->tv_sec < 0 || time->tv_usec < 0))) {
        return next.get()(limit, reads, writes, exceptions, time);
    }
    if (time == nullptr) {
        return select_until(limit, reads, writes, exceptions, never);
    }
    const int64_t deadline = moment_after(to_nanoseconds(time->tv_sec, time->tv_usec * INT64_C(1000)));
    const int ready = select_until(limit, reads, writes, exceptions, deadline);
    // Linux tells how much of the time was not used.
    const int64_t left = std::max<int64_t>(deadline - virtual_now(), 0);
    time->tv_sec = static_cast<time_t>(left / nanoseconds_per_second);
    time->tv_usec = static_cast<suseconds_t>(left % nanoseconds_per_second / 1000);
    return ready;
}

WORLD_EXPORT int world_pselect(int limit, fd_set *reads, fd_set *writes, fd_set *exceptions, const timespec *time,
                               const sigset_t *mask) __asm__("pselect");
int world_pselect(int limit, fd_set *reads, fd_set *writes, fd_set *exceptions, const timespec *time,
                  const sigset_t *mask) {
    static next_function<int(int, fd_set *, fd_set *, fd_set *, const timespec *, const sigset_t *)> next{"pselect"};
    if (!is_virtual_select(limit) || time == nullptr) {
        return next.get()(limit, reads, writes, exceptions, time, mask);
    }
    return ended_by_signal(mask) ? -1 : select_until(limit, reads, writes, exceptions, deadline_of(time));
}

} // namespace kestro_sim
