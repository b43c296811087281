// Mutexes and read-write locks on the virtual clock: one who waits for a lock whose owner sleeps does not stop the
// clock. The locks themselves stay the C library's; only the waiting is the scheduler's.
#include "sim/world/locks.h"

#include "sim/world/scheduler.h"
#include "sim/world/times.h"
#include "sim/world/world.h"

#include <unistd.h>

namespace kestro_sim {

namespace {

using mutex_function = int(pthread_mutex_t *);

int real_try(pthread_mutex_t *mutex) {
    static next_function<mutex_function> next{"pthread_mutex_trylock"};
    return next.get()(mutex);
}

int real_lock(pthread_mutex_t *mutex) {
    static next_function<mutex_function> next{"pthread_mutex_lock"};
    return next.get()(mutex);
}

int real_unlock(pthread_mutex_t *mutex) {
    static next_function<mutex_function> next{"pthread_mutex_unlock"};
    return next.get()(mutex);
}

// Such a mutex tells its owner that he has it.
bool is_own_checked(const pthread_mutex_t *mutex) {
    constexpr int kind = 3;
    return (mutex->__data.__kind & kind) == PTHREAD_MUTEX_ERRORCHECK_NP && mutex->__data.__owner == gettid();
}

int wait_for_mutex(pthread_mutex_t *mutex, int64_t deadline) {
    const int result = real_try(mutex);
    if (result != EBUSY) {
        return result;
    }
    if (is_own_checked(mutex) || !can_wait()) {
        return real_lock(mutex);
    }
    return acquire(mutex, deadline, signals::ignored, [&] { return real_try(mutex); });
}

template <typename record> int lock_until(pthread_mutex_t *mutex, clockid_t clock, const record *time) {
    const int result = real_try(mutex);
    if (result != EBUSY) {
        return result;
    }
    return is_valid(*time) ? wait_for_mutex(mutex, moment_of(clock, *time)) : EINVAL;
}

int wait_for_rwlock(pthread_rwlock_t *lock, int (*attempt)(pthread_rwlock_t *), int (*real)(pthread_rwlock_t *)) {
    if (!settings.virtual_clock || !has_threads() || !can_wait()) {
        return real(lock);
    }
    const int result = attempt(lock);
    return result != EBUSY ? result : acquire(lock, never, signals::ignored, [&] { return attempt(lock); });
}

} // namespace

int lock_mutex(pthread_mutex_t *mutex) {
    return has_threads() ? wait_for_mutex(mutex, never) : real_lock(mutex);
}

int unlock_within_turn(pthread_mutex_t *mutex) {
    const int result = real_unlock(mutex);
    if (result == 0) {
        wake_first(mutex);
    }
    return result;
}

WORLD_EXPORT int world_mutex_lock(pthread_mutex_t *mutex) __asm__("pthread_mutex_lock");
int world_mutex_lock(pthread_mutex_t *mutex) {
    return settings.virtual_clock ? lock_mutex(mutex) : real_lock(mutex);
}

WORLD_EXPORT int world_mutex_unlock(pthread_mutex_t *mutex) __asm__("pthread_mutex_unlock");
int world_mutex_unlock(pthread_mutex_t *mutex) {
    const int result = real_unlock(mutex);
    if (settings.virtual_clock && result == 0 && somebody_acquires()) {
        const turn own;
        wake_first(mutex);
    }
    return result;
}

WORLD_EXPORT int world_mutex_timedlock(pthread_mutex_t *mutex, const timespec *time) __asm__("pthread_mutex_timedlock");
int world_mutex_timedlock(pthread_mutex_t *mutex, const timespec *time) {
    static next_function<int(pthread_mutex_t *, const timespec *)> next{"pthread_mutex_timedlock"};
    return settings.virtual_clock ? lock_until(mutex, CLOCK_REALTIME, time) : next.get()(mutex, time);
}

WORLD_EXPORT int world_mutex_clocklock(pthread_mutex_t *mutex, clockid_t clock,
                                       const timespec *time) __asm__("pthread_mutex_clocklock");
int world_mutex_clocklock(pthread_mutex_t *mutex, clockid_t clock, const timespec *time) {
    static next_function<int(pthread_mutex_t *, clockid_t, const timespec *)> next{"pthread_mutex_clocklock"};
    return settings.virtual_clock ? lock_until(mutex, clock, time) : next.get()(mutex, clock, time);
}

WORLD_EXPORT int world_rwlock_rdlock(pthread_rwlock_t *lock) __asm__("pthread_rwlock_rdlock");
int world_rwlock_rdlock(pthread_rwlock_t *lock) {
    static next_function<int(pthread_rwlock_t *)> attempt{"pthread_rwlock_tryrdlock"};
    static next_function<int(pthread_rwlock_t *)> next{"pthread_rwlock_rdlock"};
    return wait_for_rwlock(lock, attempt.get(), next.get());
}

WORLD_EXPORT int world_rwlock_wrlock(pthread_rwlock_t *lock) __asm__("pthread_rwlock_wrlock");
int world_rwlock_wrlock(pthread_rwlock_t *lock) {
    static next_function<int(pthread_rwlock_t *)> attempt{"pthread_rwlock_trywrlock"};
    static next_function<int(pthread_rwlock_t *)> next{"pthread_rwlock_wrlock"};
    return wait_for_rwlock(lock, attempt.get(), next.get());
}

// Several readers may have waited for one writer.
WORLD_EXPORT int world_rwlock_unlock(pthread_rwlock_t *lock) __asm__("pthread_rwlock_unlock");
int world_rwlock_unlock(pthread_rwlock_t *lock) {
    static next_function<int(pthread_rwlock_t *)> next{"pthread_rwlock_unlock"};
    const int result = next.get()(lock);
    if (settings.virtual_clock && result == 0 && somebody_acquires()) {
        const turn own;
        wake_all(lock);
    }
    return result;
}

#ifndef __LP64__
WORLD_EXPORT int world_mutex_timedlock64(pthread_mutex_t *mutex,
                                         const timespec64 *time) __asm__("__pthread_mutex_timedlock64");
int world_mutex_timedlock64(pthread_mutex_t *mutex, const timespec64 *time) {
    static next_function<int(pthread_mutex_t *, const timespec64 *)> next{"__pthread_mutex_timedlock64"};
    return settings.virtual_clock ? lock_until(mutex, CLOCK_REALTIME, time) : next.get()(mutex, time);
}

WORLD_EXPORT int world_mutex_clocklock64(pthread_mutex_t *mutex, clockid_t clock,
                                         const timespec64 *time) __asm__("__pthread_mutex_clocklock64");
int world_mutex_clocklock64(pthread_mutex_t *mutex, clockid_t clock, const timespec64 *time) {
    static next_function<int(pthread_mutex_t *, clockid_t, const timespec64 *)> next{"__pthread_mutex_clocklock64"};
    return settings.virtual_clock ? lock_until(mutex, clock, time) : next.get()(mutex, clock, time);
}
#endif

} // namespace kestro_sim
