// Waits that only a signal ends: the other threads' time goes on meanwhile.
#include "sim/world/scheduler.h"
#include "sim/world/world.h"

namespace kestro_sim {

namespace {

bool is_scheduled() {
    return settings.virtual_clock && has_threads() && can_wait();
}

// The signals that the wait is for are blocked by those who wait for them, and stay so.
template <typename wait> int endless(wait really) {
    if (!is_scheduled()) {
        return really();
    }
    turn own;
    begin_endless_wait(own);
    const int result = really();
    const int error = errno;
    end_endless_wait();
    errno = error;
    return result;
}

int real_suspend(const sigset_t *mask) {
    static next_function<int(const sigset_t *)> next{"sigsuspend"};
    return next.get()(mask);
}

int suspend(const sigset_t *mask) {
    return endless([=] { return real_suspend(mask); });
}

} // namespace

// The same as a suspension with the present mask, which lets no signal in before it waits.
WORLD_EXPORT int world_pause() __asm__("pause");
int world_pause() {
    static next_function<int()> next{"pause"};
    sigset_t present;
    return is_scheduled() && sigprocmask(SIG_BLOCK, nullptr, &present) == 0 ? suspend(&present) : next.get()();
}

WORLD_EXPORT int world_sigsuspend(const sigset_t *mask) __asm__("sigsuspend");
int world_sigsuspend(const sigset_t *mask) {
    return suspend(mask);
}

WORLD_EXPORT int world_sigwait(const sigset_t *set, int *number) __asm__("sigwait");
int world_sigwait(const sigset_t *set, int *number) {
    static next_function<int(const sigset_t *, int *)> next{"sigwait"};
    return endless([&] { return next.get()(set, number); });
}

WORLD_EXPORT int world_sigwaitinfo(const sigset_t *set, siginfo_t *what) __asm__("sigwaitinfo");
int world_sigwaitinfo(const sigset_t *set, siginfo_t *what) {
    static next_function<int(const sigset_t *, siginfo_t *)> next{"sigwaitinfo"};
    return endless([&] { return next.get()(set, what); });
}

} // namespace kestro_sim
