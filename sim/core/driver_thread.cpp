// How a thread of the driver libraries is started.
#include "sim/core/driver_thread.h"

#include <csignal>

namespace kestro_sim {

namespace {

void block_program_signals(sigset_t &before) {
    sigset_t all;
    sigfillset(&all);
    for (const int mistake : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP, SIGSYS}) {
        sigdelset(&all, mistake);
    }
    pthread_sigmask(SIG_SETMASK, &all, &before);
}

} // namespace

bool start_driver_thread(pthread_t &thread, void *(*routine)(void *), void *argument) {
    sigset_t before;
    block_program_signals(before);
    const bool is_there = pthread_create(&thread, nullptr, routine, argument) == 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return is_there;
}

} // namespace kestro_sim
