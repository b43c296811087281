// Descriptors that are ready, on the virtual clock's timers too.
#pragma once

#include <poll.h>
#include <signal.h>

namespace kestro_sim {

int real_poll(pollfd *descriptors, nfds_t count, int milliseconds);
int real_ppoll(pollfd *descriptors, nfds_t count, const timespec *time, const sigset_t *mask);

// As poll without a time.
int poll_ready(pollfd *descriptors, nfds_t count);

} // namespace kestro_sim
