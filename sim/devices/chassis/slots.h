// The chassis as the backplane is built: which slots there are, and places for cards on a board.
#pragma once

#include "sim/core/family.h"

namespace kestro_sim {

namespace fitting {
inline constexpr reg pulled = reg::flag("pulled", "whether what belongs there is pulled out").or_else(0).written();
inline constexpr reg changes = reg::number("changes", 0, any_u32, "", "how often it went or came").or_else(0).written();
inline constexpr device_family family = device_family{"sim_chassis", "place", "a place", {pulled, changes}}.up_to(0);
} // namespace fitting

namespace slot_range {
inline constexpr reg first = reg::number("first", 0, UINT16_MAX, "", "the first slot").required().fixed();
inline constexpr reg last = reg::number("last", 0, UINT16_MAX, "", "the last slot").required().fixed();
inline constexpr device_family family =
    device_family{"sim_chassis", "slots", "the range of slots", {first, last}}.named(naming::by_name);
} // namespace slot_range

namespace chassis_slot {
inline constexpr reg type = reg::number("type", 1, 11, "", "what the slot takes").required().fixed();
inline constexpr device_family family{"sim_chassis", "slot", "a slot", {type}};
} // namespace chassis_slot

namespace place_for_card {
inline constexpr device_family family{"sim_chassis", "card", "a place for a card on the board", {}};
} // namespace place_for_card

} // namespace kestro_sim
