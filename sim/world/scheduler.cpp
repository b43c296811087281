// The threads of the process in turn on the virtual clock.
#include "sim/world/scheduler.h"

#include "sim/world/raw_lock.h"
#include "sim/world/waits.h"
#include "sim/world/world.h"

#include <climits>
#include <cstdint>
#include <sched.h>
#include <sys/eventfd.h>

namespace kestro_sim {

std::atomic<int> thread_count = 1;
std::atomic<int> acquiring = 0;
std::atomic<unsigned> timer_changes = 0;

namespace {

raw_lock schedule;
int running = 1;
waiter *first = nullptr; // in order of arrival
waiter *last = nullptr;

// Whether this thread is among those counted, and whether it is in a wait.
__thread bool is_counted = false;
__thread bool is_waiting = false;

// With a time, a wait is ended by every signal handler; without one, by those installed without SA_RESTART.
struct kernel_time {
    long seconds;
    long nanoseconds;
};
constexpr kernel_time a_long_time{INT_MAX / 2, 0};

bool is_waited_for(const waiter &who) {
    return who.state.load(std::memory_order_acquire) == not_yet;
}

void rouse(waiter &who, woken reason) {
    delist(who);
    ++running;
    // The waiter may return as soon as it sees the state: nothing of it is touched after that but by number.
    const int descriptor = who.asked.wake_descriptor;
    std::atomic<unsigned> &word = who.state;
    who.state.store(reason, std::memory_order_release);
    const int error = errno;
    if (descriptor >= 0) {
        eventfd_write(descriptor, 1);
    } else {
        futex(word, FUTEX_WAKE, 1);
    }
    errno = error;
}

// What one thread wrote for another is older than the next moment. Virtual timers count by their deadline.
waiter *first_with_ready_descriptors() {
    for (waiter *who = first; who != nullptr; who = who->next) {
        if (who->asked.descriptors != nullptr &&
            real_poll(who->asked.descriptors, who->asked.descriptor_count, 0) != 0) {
            return who;
        }
    }
    return nullptr;
}

waiter *earliest() {
    waiter *found = nullptr;
    for (waiter *who = first; who != nullptr; who = who->next) {
        if (who->asked.deadline != never && (found == nullptr || who->asked.deadline < found->asked.deadline)) {
            found = who;
        }
    }
    return found;
}

// All wait. Without a deadline among them only a signal brings anything about.
void let_next_run() {
    if (waiter *ready = first_with_ready_descriptors()) {
        rouse(*ready, by_call);
    } else if (waiter *due = earliest()) {
        move_clock_to(due->asked.deadline);
        rouse(*due, by_time);
    }
}

void stop_running() {
    if (--running == 0) {
        let_next_run();
    }
}

// For a signal, or a descriptor. False when the thread was woken meanwhile.
bool leaves_by_itself(waiter &who) {
    const turn own;
    if (!is_waited_for(who)) {
        return false;
    }
    delist(who);
    ++running;
    return true;
}

woken sleep_until_woken(waiter &who, signals how) {
    const void *time = how == signals::end_it ? &a_long_time : nullptr;
    while (is_waited_for(who)) {
        const bool interrupted = futex(who.state, FUTEX_WAIT, not_yet, time) != 0 && errno == EINTR;
        if (interrupted && how != signals::ignored && leaves_by_itself(who)) {
            return by_signal;
        }
    }
    return static_cast<woken>(who.state.load(std::memory_order_acquire));
}

// The descriptors may also become ready while another thread runs or waits for the outside world.
woken poll_until_woken(waiter &who, const sigset_t &mask) {
    pollfd all[FD_SETSIZE + 1];
    for (nfds_t i = 0; i < who.asked.descriptor_count; ++i) {
        all[i] = who.asked.descriptors[i];
    }
    all[who.asked.descriptor_count] = {who.asked.wake_descriptor, POLLIN, 0};
    const int ready = real_ppoll(all, who.asked.descriptor_count + 1, nullptr, &mask);
    const bool interrupted = ready < 0 && errno == EINTR;
    if (leaves_by_itself(who)) {
        return interrupted ? by_signal : by_call;
    }
    return static_cast<woken>(who.state.load(std::memory_order_acquire));
}

// The clock moves at once: nobody else is there. The system call lets pending signals have their turn.
woken pass_alone(int64_t deadline) {
    move_clock_to(deadline);
    sched_yield();
    return by_time;
}

bool passes_alone(int64_t deadline) {
    return deadline <= virtual_now() || (deadline != never && !has_threads()) || !can_wait();
}

woken wait_enlisted(wait_request asked, unsigned seen, signals how) {
    if (passes_alone(asked.deadline)) {
        return pass_alone(asked.deadline == never ? 0 : asked.deadline);
    }
    asked.wake_descriptor = how == signals::end_it ? eventfd(0, EFD_CLOEXEC) : -1;
    asked.descriptors = asked.wake_descriptor >= 0 ? asked.descriptors : nullptr;
    woken end = by_call;
    {
        turn own;
        if (asked.key == nullptr || timer_changes == seen) {
            waiter who{asked};
            enlist(who);
            end = block(who, own, how);
        }
    }
    if (asked.wake_descriptor >= 0) {
        close(asked.wake_descriptor);
    }
    return end;
}

} // namespace

bool can_wait() {
    if (!is_counted) {
        count_new_thread();
        start_counting_this_thread();
    }
    return !is_waiting;
}

turn::turn() : before_() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, &before_);
    schedule.lock();
}

turn::~turn() {
    leave();
}

void turn::leave_blocked() {
    if (is_locked_) {
        is_locked_ = false;
        schedule.unlock();
    }
}

void turn::leave() {
    leave_blocked();
    if (is_blocked_) {
        is_blocked_ = false;
        sigprocmask(SIG_SETMASK, &before_, nullptr);
    }
}

void enlist(waiter &who) {
    who.state.store(not_yet, std::memory_order_relaxed);
    who.previous = last;
    who.next = nullptr;
    (last != nullptr ? last->next : first) = &who;
    last = &who;
}

void delist(waiter &who) {
    (who.previous != nullptr ? who.previous->next : first) = who.next;
    (who.next != nullptr ? who.next->previous : last) = who.previous;
}

void wake_first(const void *key) {
    for (waiter *who = first; who != nullptr; who = who->next) {
        if (who->asked.key == key) {
            rouse(*who, by_call);
            return;
        }
    }
}

void wake_all(const void *key) {
    for (waiter *who = first; who != nullptr;) {
        waiter *const next = who->next;
        if (who->asked.key == key) {
            rouse(*who, by_call);
        }
        who = next;
    }
}

woken block(waiter &who, turn &own, signals how) {
    is_waiting = true;
    stop_running();
    const int error = errno;
    woken end = not_yet;
    if (who.asked.wake_descriptor >= 0) {
        own.leave_blocked();
        end = poll_until_woken(who, own.signals_before());
    } else {
        own.leave();
        end = sleep_until_woken(who, how);
    }
    errno = error;
    is_waiting = false;
    return end;
}

woken wait_until(int64_t deadline, signals how) {
    return wait_enlisted({deadline, nullptr}, 0, how);
}

woken wait_for_timers(unsigned seen, int64_t deadline, signals how) {
    return wait_enlisted({deadline, &timer_changes}, seen, how);
}

woken wait_for_descriptors(pollfd *descriptors, nfds_t count, unsigned seen, int64_t deadline) {
    return wait_enlisted({deadline, &timer_changes, count <= FD_SETSIZE ? descriptors : nullptr, count}, seen,
                         signals::end_it);
}

void begin_endless_wait(turn &own) {
    is_waiting = true;
    stop_running();
    own.leave_blocked();
}

void end_endless_wait() {
    const turn own;
    is_waiting = false;
    ++running;
}

void count_new_thread() {
    const turn own;
    ++running;
    thread_count.fetch_add(1);
}

void uncount_new_thread() {
    const turn own;
    --running;
    thread_count.fetch_sub(1);
}

void count_thread_out() {
    const turn own;
    is_waiting = true; // nor will it wait again
    thread_count.fetch_sub(1);
    stop_running();
}

void start_counting_this_thread() {
    is_counted = true;
    keep_watch_on_end();
}

void count_this_thread_alone() {
    schedule.forget();
    running = 1;
    first = last = nullptr;
    acquiring = 0;
    thread_count = 1;
    is_waiting = false;
    is_counted = true;
}

} // namespace kestro_sim
