// The one thread of the driver libraries that delivers events.
#pragma once

#include "sim/core/driver_thread.h"
#include "sim/core/event_queue.h"

namespace kestro_sim {

// Starts the thread when there is none yet; refuses when there can be none. The queue's lock is held.
void need_thread(event_queue &own);

} // namespace kestro_sim
