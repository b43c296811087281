// Boards and cards that come and go, as events: topic "presence", the slot or card as the source, 1 for in and 0 for
// out as the value.
#pragma once

#include "sim/core/events.h"
#include "sim/drv/driver.h"

namespace kestro_sim {

inline constexpr const char *presence_topic = "presence";

// From here on a change is told: one that this process made at once, one that another made when it is seen. Within an
// operation; to be called before the first listener comes.
void begin_to_watch_presence(board &b);

// After a change of that place's online status, within the same operation.
void announce_presence(board &b, const std::string &place);

} // namespace kestro_sim
