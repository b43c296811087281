// The chassis as the backplane is built: which slots there are, and places for cards, in slots or on a board.
#pragma once

#include "sim/core/board.h"

#include <string>
#include <vector>

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

uint32_t limit(board &b, word_of<family> which);
} // namespace slot_range

namespace chassis_slot {
inline constexpr reg type = reg::number("type", 1, 11, "", "what the slot takes").required().fixed();
inline constexpr device_family family{"sim_chassis", "slot", "a slot", {type}};

// Ascending. A type that is known but has no slot in this chassis gives an empty list.
std::vector<uint32_t> of_type(board &b, uint32_t wanted);
} // namespace chassis_slot

namespace place_for_card {
inline constexpr device_family family{"sim_chassis", "card", "a place for a card on the board", {}};
} // namespace place_for_card

// The slot of the own board; 0 without one.
uint32_t own_slot(board &b);
std::string place_of_slot(board &b, uint32_t slot_id);

// Cards stand in card slots of the chassis, or on the board itself.
bool cards_are_on_board(board &b);
std::vector<uint32_t> card_numbers(board &b);
std::string place_of_card(board &b, uint32_t number);
bool is_card(board &b, const std::string &place);

} // namespace kestro_sim
