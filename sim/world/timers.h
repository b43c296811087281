// Timer descriptors that run on the virtual clock.
#pragma once

#include <cstdint>

namespace kestro_sim {

// When this timer goes off next, in nanoseconds since the start of the run; a moment not after now is one that nobody
// has read yet. `never` when it is not armed, or the descriptor is no virtual timer.
int64_t next_expiry(int descriptor);

// Of a forked child.
void forget_timers_lock();

} // namespace kestro_sim
