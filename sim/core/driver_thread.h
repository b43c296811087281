// Threads of the driver libraries.
#pragma once

#include <pthread.h>

#include <chrono>

namespace kestro_sim {

// How long the end of the process waits for such a thread.
inline constexpr std::chrono::seconds patience{2};

// The program's signals are for the program's threads; those of a mistake stay with who makes it. False when there can
// be no thread.
bool start_driver_thread(pthread_t &thread, void *(*routine)(void *), void *argument);

} // namespace kestro_sim
