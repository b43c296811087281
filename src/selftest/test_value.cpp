// Signals that wait until the board has its own values again.
#include "selftest/test_value.h"

#include <array>
#include <csignal>

namespace {

struct held_signal {
    int number;
    struct sigaction before;
};

// What an operator's terminal, an operator's kill and a lost connection send.
std::array<held_signal, 3> held = {{{SIGINT, {}}, {SIGTERM, {}}, {SIGHUP, {}}}};
volatile sig_atomic_t waiting = 0;

void put_back_actions() {
    for (const held_signal &each : held) {
        sigaction(each.number, &each.before, nullptr);
    }
}

// It is blocked while this runs: what it did before it does when this is over.
void let_wait(int number) {
    if (waiting != 0) {
        put_back_actions();
        raise(number);
    }
    waiting = number;
}

bool is_ignored(const struct sigaction &action) {
    return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

void begin_test_value() {
    struct sigaction hold = {};
    hold.sa_handler = let_wait;
    // A driver's system calls go on as if nothing had come.
    hold.sa_flags = SA_RESTART;
    sigemptyset(&hold.sa_mask);
    waiting = 0;
    for (held_signal &each : held) {
        sigaction(each.number, nullptr, &each.before);
    }
    for (const held_signal &each : held) {
        if (!is_ignored(each.before)) {
            sigaction(each.number, &hold, nullptr);
        }
    }
}

bool is_end_asked_for() {
    return waiting != 0;
}

void end_test_value() {
    put_back_actions();
    if (waiting != 0) {
        raise(waiting);
    }
}
