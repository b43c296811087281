// Dying gasp: lines by which the board tells its cards that the power fails.
#pragma once

#include "sim/core/board.h"

#include <string>

namespace kestro_sim {

namespace gasp_line {
inline constexpr reg enable = reg::flag("enable", "whether the card is told").or_else(0).written();
inline constexpr reg told = reg::number("told", 0, any_u32, "", "how often it was told").or_else(0).written();
inline constexpr device_family family{"sim_dyinggasp", "card", "the line to a card", {enable, told}};
} // namespace gasp_line

namespace gasp_simulation {
inline constexpr reg enable = reg::flag("enable", "whether a power failure is simulated").or_else(0).written();
inline constexpr device_family family =
    device_family{"sim_dyinggasp", "simulation", "a simulated power failure", {enable}}.up_to(0);

// Its beginning is what the cards are told of.
void simulate(board &b, const device_of<family> &simulation, uint32_t to);
} // namespace gasp_simulation

} // namespace kestro_sim
