// The chassis as the backplane is built: which slots there are, and places for cards on a board.
#pragma once

#include "sim/core/family.h"

namespace kestro_sim {

namespace own_place {
inline constexpr reg slot = reg::number("slot", 0, UINT16_MAX, "", "the slot that the board is in").required().fixed();
inline constexpr device_family family =
    device_family{"sim_chassis", "place", "where the board is", {slot}}.named(naming::by_name);
} // namespace own_place

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

namespace card_place {
inline constexpr device_family family{"sim_chassis", "card", "a place for a card on the board", {}};
} // namespace card_place

} // namespace kestro_sim
