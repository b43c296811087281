// Semaphores of the process on the virtual clock. Their count stays the C library's; only the waiting is the
// scheduler's.
#include "sim/world/scheduler.h"
#include "sim/world/times.h"
#include "sim/world/world.h"

#include <semaphore.h>

namespace kestro_sim {

namespace {

int attempt(sem_t *semaphore) {
    static next_function<int(sem_t *)> next{"sem_trywait"};
    const int error = errno;
    if (next.get()(semaphore) == 0) {
        return 0;
    }
    const int result = errno;
    errno = error;
    return result == EAGAIN ? EBUSY : result;
}

int outcome(int error) {
    if (error != 0) {
        errno = error;
        return -1;
    }
    return 0;
}

int take(sem_t *semaphore, int64_t deadline) {
    const int result = attempt(semaphore);
    return outcome(result != EBUSY ? result : acquire(semaphore, deadline, signals::as_installed, [&] {
        return attempt(semaphore);
    }));
}

template <typename record> int take_until(sem_t *semaphore, clockid_t clock, const record *time) {
    if (!is_valid(*time)) {
        return attempt(semaphore) == 0 ? 0 : outcome(EINVAL);
    }
    return take(semaphore, moment_of(clock, *time));
}

bool is_scheduled() {
    return settings.virtual_clock && can_wait();
}

} // namespace

// A single thread can only be waiting for a signal handler's post.
WORLD_EXPORT int world_sem_wait(sem_t *semaphore) __asm__("sem_wait");
int world_sem_wait(sem_t *semaphore) {
    static next_function<int(sem_t *)> next{"sem_wait"};
    return is_scheduled() && has_threads() ? take(semaphore, never) : next.get()(semaphore);
}

WORLD_EXPORT int world_sem_timedwait(sem_t *semaphore, const timespec *time) __asm__("sem_timedwait");
int world_sem_timedwait(sem_t *semaphore, const timespec *time) {
    static next_function<int(sem_t *, const timespec *)> next{"sem_timedwait"};
    return is_scheduled() ? take_until(semaphore, CLOCK_REALTIME, time) : next.get()(semaphore, time);
}

WORLD_EXPORT int world_sem_clockwait(sem_t *semaphore, clockid_t clock, const timespec *time) __asm__("sem_clockwait");
int world_sem_clockwait(sem_t *semaphore, clockid_t clock, const timespec *time) {
    static next_function<int(sem_t *, clockid_t, const timespec *)> next{"sem_clockwait"};
    return is_scheduled() ? take_until(semaphore, clock, time) : next.get()(semaphore, clock, time);
}

WORLD_EXPORT int world_sem_post(sem_t *semaphore) __asm__("sem_post");
int world_sem_post(sem_t *semaphore) {
    static next_function<int(sem_t *)> next{"sem_post"};
    const int result = next.get()(semaphore);
    if (settings.virtual_clock && result == 0 && somebody_acquires()) {
        const turn own;
        wake_first(semaphore);
    }
    return result;
}

#ifndef __LP64__
WORLD_EXPORT int world_sem_timedwait64(sem_t *semaphore, const timespec64 *time) __asm__("__sem_timedwait64");
int world_sem_timedwait64(sem_t *semaphore, const timespec64 *time) {
    static next_function<int(sem_t *, const timespec64 *)> next{"__sem_timedwait64"};
    return is_scheduled() ? take_until(semaphore, CLOCK_REALTIME, time) : next.get()(semaphore, time);
}

WORLD_EXPORT int world_sem_clockwait64(sem_t *semaphore, clockid_t clock,
                                       const timespec64 *time) __asm__("__sem_clockwait64");
int world_sem_clockwait64(sem_t *semaphore, clockid_t clock, const timespec64 *time) {
    static next_function<int(sem_t *, clockid_t, const timespec64 *)> next{"__sem_clockwait64"};
    return is_scheduled() ? take_until(semaphore, clock, time) : next.get()(semaphore, clock, time);
}
#endif

} // namespace kestro_sim
