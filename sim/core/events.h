// What hardware tells by itself: interrupts, cards that come and go, received packets, lines of a log.
//
// Events go through one queue and are delivered by one thread of the driver libraries, which exists only once something
// listens. They come in the order of their due moments in board time, those of one moment in the order of posting. No
// lock is held during a callback, so it may call drivers. Nothing is delivered after stop_listening() has returned,
// and nothing once the process has begun to end; a forked child has neither listeners nor events.
#pragma once

#include "sim/core/board.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kestro_sim {

struct event {
    std::string topic;            // who listens to it: "presence"
    uint32_t source{};            // a slot, an interrupt, a port
    uint64_t value{};             // what it says
    std::vector<uint8_t> bytes{}; // what it brings: a packet, a text
};

using listener = std::function<void(const event &)>;
using listener_id = uint64_t;
using event_id = uint64_t;

// Hears what is due from now on and what is posted from now on. Within an operation. Refuses (out_of_memory) when there
// can be no thread.
listener_id listen(board &b, const std::string &topic, listener hears);

// Waits until a running callback of that listener has ended, unless it is that callback which calls. Not within an
// operation, whose lock the callback may be waiting for. An id that is not known is no mistake.
void stop_listening(listener_id who);

// Within an operation.
event_id post(board &b, event what);
event_id post_at(int64_t due, event what);

// False when it was delivered, or is being so.
bool cancel(event_id what);

// Events of one moment.
struct due_events {
    int64_t due;
    std::vector<event> events;
};

// A family whose events follow from its registers and the board time (an interrupt that is raised each second until it
// is cleared) says when the next ones after a moment are due, if any are foreseen. It is asked within an operation of
// the delivering thread, only while somebody listens to its topic, and again after each change of a register. What is
// due before now is delivered at once; a source that merely notices a change says `after` itself.
using event_source = std::function<std::optional<due_events>(board &b, int64_t after)>;
void add_event_source(const std::string &topic, event_source next);

// Waits until what is due by now has been delivered, but not for ever: the callback may be waiting for who calls this.
// Not within an operation. Within a callback it does nothing.
void let_deliver();

// Registers have changed.
void look_at_sources_again();

} // namespace kestro_sim
