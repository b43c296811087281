// The queue of due events and who listens: what events.cpp fills and the thread of event_thread.cpp empties.
//
// Two locks: that of the state directory (operations) and the queue's. The queue's is taken within operations, never
// the other way round, and neither is held during a callback.
#pragma once

#include "sim/core/events.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <pthread.h>
#include <string>
#include <vector>

namespace kestro_sim {

struct queued {
    int64_t due;
    event_id id; // in order of posting
    event what;
};

struct registered {
    listener_id id;
    std::string topic;
    std::shared_ptr<listener> hears;
    int64_t since;       // hears what is due after this moment,
    event_id next_event; // and what is posted from here on
};

struct source {
    std::string topic;
    event_source next;
    std::optional<int64_t> told; // up to this moment; nothing while nobody listens
};

struct event_queue {
    std::mutex lock;
    std::condition_variable changed;
    std::vector<queued> events;
    std::vector<registered> listeners;
    event_id last_event = 0;
    listener_id last_listener = 0;
    listener_id called = 0;   // whose callback runs
    uint64_t looks_begun = 0; // of the thread at the board
    uint64_t looks_done = 0;  // and what was due then has been delivered
    bool looks_again = false;
    bool has_thread = false;
    bool is_ending = false;
    bool has_ended = false;
    pthread_t thread{};
};

// Of this process, made when it is first asked for.
event_queue &queue();
// Nothing when nobody has asked for it.
event_queue *queue_if_any();
// Of the program, not of the process: only touched within operations.
std::vector<source> &sources();

// A forked child has no thread, and begins with an empty queue.
void leave_queue_to_parent();

// The queue's lock is held during these.
bool is_listened_to(const event_queue &own, const std::string &topic);
bool hears(const registered &who, const queued &which);
event_id append(event_queue &own, int64_t due, event what);
// The earliest; of several the one posted first.
std::vector<queued>::iterator first_event(event_queue &own);

} // namespace kestro_sim
