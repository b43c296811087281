// The buses and lines of the cards in slots lead to both main processing units. An isolator in front of each lets the
// master through.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim::card_bus {

inline constexpr reg stuck = reg::flag("stuck", "whether it lets a slave through too").or_else(0);
inline constexpr device_family family{
    "sim_board", "isolator", "the isolator in front of the bus of a card, by its slot", {stuck}};

// Whether the board of a slot reaches the card in another.
bool is_open(board &b, uint32_t slot_of_board, uint32_t slot_of_card);

} // namespace kestro_sim::card_bus
