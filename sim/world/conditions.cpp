// Condition variables on the virtual clock. The scheduler runs them wholly: a waiter counts as running from the moment
// it is signalled, so the clock does not move past what it was signalled for.
#include "sim/world/locks.h"
#include "sim/world/scheduler.h"
#include "sim/world/times.h"
#include "sim/world/world.h"

namespace kestro_sim {

namespace {

// How the C library keeps the clock that the condition was made for.
clockid_t clock_of(const pthread_cond_t *condition) {
    constexpr unsigned is_monotonic = 2;
    return (condition->__data.__wrefs & is_monotonic) != 0 ? CLOCK_MONOTONIC : CLOCK_REALTIME;
}

int wait_on(pthread_cond_t *condition, pthread_mutex_t *mutex, int64_t deadline) {
    if (!can_wait()) {
        return 0;
    }
    turn own;
    waiter who{{deadline, condition}};
    enlist(who);
    if (const int error = unlock_within_turn(mutex)) {
        delist(who);
        return error;
    }
    const woken end = block(who, own, signals::ignored);
    const int locked = lock_mutex(mutex);
    return locked != 0 ? locked : end == by_time ? ETIMEDOUT : 0;
}

template <typename record>
int wait_until(pthread_cond_t *condition, pthread_mutex_t *mutex, clockid_t clock, const record *time) {
    return is_valid(*time) ? wait_on(condition, mutex, moment_of(clock, *time)) : EINVAL;
}

} // namespace

WORLD_EXPORT int world_cond_wait(pthread_cond_t *condition, pthread_mutex_t *mutex) __asm__("pthread_cond_wait");
int world_cond_wait(pthread_cond_t *condition, pthread_mutex_t *mutex) {
    static next_function<int(pthread_cond_t *, pthread_mutex_t *)> next{"pthread_cond_wait"};
    return settings.virtual_clock ? wait_on(condition, mutex, never) : next.get()(condition, mutex);
}

WORLD_EXPORT int world_cond_timedwait(pthread_cond_t *condition, pthread_mutex_t *mutex,
                                      const timespec *time) __asm__("pthread_cond_timedwait");
int world_cond_timedwait(pthread_cond_t *condition, pthread_mutex_t *mutex, const timespec *time) {
    static next_function<int(pthread_cond_t *, pthread_mutex_t *, const timespec *)> next{"pthread_cond_timedwait"};
    return settings.virtual_clock ? wait_until(condition, mutex, clock_of(condition), time)
                                  : next.get()(condition, mutex, time);
}

WORLD_EXPORT int world_cond_clockwait(pthread_cond_t *condition, pthread_mutex_t *mutex, clockid_t clock,
                                      const timespec *time) __asm__("pthread_cond_clockwait");
int world_cond_clockwait(pthread_cond_t *condition, pthread_mutex_t *mutex, clockid_t clock, const timespec *time) {
    static next_function<int(pthread_cond_t *, pthread_mutex_t *, clockid_t, const timespec *)> next{
        "pthread_cond_clockwait"};
    return settings.virtual_clock ? wait_until(condition, mutex, clock, time)
                                  : next.get()(condition, mutex, clock, time);
}

WORLD_EXPORT int world_cond_signal(pthread_cond_t *condition) __asm__("pthread_cond_signal");
int world_cond_signal(pthread_cond_t *condition) {
    static next_function<int(pthread_cond_t *)> next{"pthread_cond_signal"};
    if (!settings.virtual_clock) {
        return next.get()(condition);
    }
    if (has_threads()) {
        const turn own;
        wake_first(condition);
    }
    return 0;
}

WORLD_EXPORT int world_cond_broadcast(pthread_cond_t *condition) __asm__("pthread_cond_broadcast");
int world_cond_broadcast(pthread_cond_t *condition) {
    static next_function<int(pthread_cond_t *)> next{"pthread_cond_broadcast"};
    if (!settings.virtual_clock) {
        return next.get()(condition);
    }
    if (has_threads()) {
        const turn own;
        wake_all(condition);
    }
    return 0;
}

#ifndef __LP64__
WORLD_EXPORT int world_cond_timedwait64(pthread_cond_t *condition, pthread_mutex_t *mutex,
                                        const timespec64 *time) __asm__("__pthread_cond_timedwait64");
int world_cond_timedwait64(pthread_cond_t *condition, pthread_mutex_t *mutex, const timespec64 *time) {
    static next_function<int(pthread_cond_t *, pthread_mutex_t *, const timespec64 *)> next{
        "__pthread_cond_timedwait64"};
    return settings.virtual_clock ? wait_until(condition, mutex, clock_of(condition), time)
                                  : next.get()(condition, mutex, time);
}

WORLD_EXPORT int world_cond_clockwait64(pthread_cond_t *condition, pthread_mutex_t *mutex, clockid_t clock,
                                        const timespec64 *time) __asm__("__pthread_cond_clockwait64");
int world_cond_clockwait64(pthread_cond_t *condition, pthread_mutex_t *mutex, clockid_t clock, const timespec64 *time) {
    static next_function<int(pthread_cond_t *, pthread_mutex_t *, clockid_t, const timespec64 *)> next{
        "__pthread_cond_clockwait64"};
    return settings.virtual_clock ? wait_until(condition, mutex, clock, time)
                                  : next.get()(condition, mutex, clock, time);
}
#endif

} // namespace kestro_sim
