// The one thread of the driver libraries that delivers events.
#pragma once

#include "sim/core/event_queue.h"

#include <chrono>

namespace kestro_sim {

// How long the end of the process, and who stops listening then, wait for a callback that does not return.
inline constexpr std::chrono::seconds patience{2};

// Starts the thread when there is none yet; refuses when there can be none. The queue's lock is held.
void need_thread(event_queue &own);

} // namespace kestro_sim
