// Who waits, and for what: the virtual clock moves only when every thread of the process waits, and then to the
// earliest deadline. Whoever waits for it is woken, alone; of several with one deadline the one that came first.
//
// A thread that is blocked in anything else (a person's terminal, a child program, the lock of the state directory)
// counts as running: the clock waits for the outside world.
#pragma once

#include "sim/world/clock.h"

#include <atomic>
#include <cerrno>
#include <cstddef>
#include <poll.h>
#include <pthread.h>
#include <signal.h>

namespace kestro_sim {

enum woken : unsigned { not_yet, by_call, by_time, by_signal };

// What a signal handler that ran does to a wait: nothing, what the handler was installed for (SA_RESTART), or its end.
enum class signals { ignored, as_installed, end_it };

struct wait_request {
    int64_t deadline;
    const void *key;               // what wake_first and wake_all are asked for; null: the time alone
    pollfd *descriptors = nullptr; // real ones that may become ready meanwhile
    nfds_t descriptor_count = 0;
    int wake_descriptor = -1; // becomes ready when the waiter is woken
};

struct waiter {
    wait_request asked;
    std::atomic<unsigned> state = not_yet;
    waiter *previous = nullptr;
    waiter *next = nullptr;
};

extern std::atomic<int> thread_count;

// With one thread most waits are none: it moves the clock itself, and no lock is needed.
inline bool has_threads() {
    return thread_count.load(std::memory_order_acquire) > 1;
}

// False within a signal handler that interrupted a wait of the scheduler's: such a thread cannot wait twice. Counts a
// thread that the C library made by itself.
bool can_wait();

// The scheduler's lock, with all signals blocked: handlers may post semaphores.
class turn {
  public:
    turn();
    ~turn();
    turn(const turn &) = delete;
    turn &operator=(const turn &) = delete;
    void leave();

    // Leaves it with the signals still blocked: a wait lets them through itself, so none comes too early to end it.
    void leave_blocked();
    const sigset_t &signals_before() const {
        return before_;
    }

  private:
    sigset_t before_;
    bool is_locked_ = true;
    bool is_blocked_ = true;
};

// All within a turn.
void enlist(waiter &who);
void delist(waiter &who);
void wake_first(const void *key);
void wake_all(const void *key);

// Waits with an enlisted waiter until it is woken. Leaves the turn.
woken block(waiter &who, turn &own, signals how);

woken wait_until(int64_t deadline, signals how);

// The same for what depends on timers, of which this many changes were seen: a further one ends the wait.
extern std::atomic<unsigned> timer_changes;
woken wait_for_timers(unsigned seen, int64_t deadline, signals how);

// And for descriptors that may become ready.
woken wait_for_descriptors(pollfd *descriptors, nfds_t count, unsigned seen, int64_t deadline);

// Around a real wait that only a signal ends.
void begin_endless_wait(turn &own);
void end_endless_wait();

// Threads come and go.
void count_new_thread();
void uncount_new_thread(); // it could not be made
void count_thread_out();
void start_counting_this_thread();
void count_this_thread_alone();

// Has the end of this thread told (threads.cpp).
void keep_watch_on_end();

// How many threads wait to acquire a lock or semaphore, or are about to.
extern std::atomic<int> acquiring;

// Takes what attempt() gives: an error number, EBUSY for what has to be waited for. Whoever gives it back wakes the
// key. The waiter is counted before it tries again, so a release in between is not lost.
template <typename attempt_function>
int acquire(const void *key, int64_t deadline, signals how, attempt_function attempt) {
    waiter who{{deadline, key}};
    for (;;) {
        turn own;
        acquiring.fetch_add(1);
        enlist(who);
        int result = attempt();
        if (result != EBUSY) {
            delist(who);
            acquiring.fetch_sub(1);
            return result;
        }
        const woken end = block(who, own, how);
        acquiring.fetch_sub(1);
        if (end == by_signal) {
            return EINTR;
        }
        if (end == by_time) {
            result = attempt();
            return result == EBUSY ? ETIMEDOUT : result;
        }
    }
}

// After a release.
inline bool somebody_acquires() {
    std::atomic_thread_fence(std::memory_order_seq_cst);
    return acquiring.load() != 0;
}

} // namespace kestro_sim
