// Mutexes, for what gives them up while it waits.
#pragma once

#include <pthread.h>

namespace kestro_sim {

int lock_mutex(pthread_mutex_t *mutex);

// Lets the first one who waits for it run.
int unlock_within_turn(pthread_mutex_t *mutex);

} // namespace kestro_sim
