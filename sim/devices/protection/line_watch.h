// The watch over the two lines that power a main processing unit, side 0 down and side 1 up.
#pragma once

#include "sim/core/board.h"

#include <string>

namespace kestro_sim {

namespace power_line {
inline constexpr reg lost = reg::flag("lost", "whether the line has no power").or_else(0);
inline constexpr device_family family =
    device_family{"sim_woffline", "side", "a power line: 0 down, 1 up", {lost}}.up_to(1);
} // namespace power_line

// An enable bit that has burnt through takes a write and stays as it is.
namespace line_watch {
inline constexpr reg enable = reg::flag("enable", "whether the lines are watched").or_else(1).written();
inline constexpr reg stuck = reg::flag("stuck", "whether its enable does not follow what is written").or_else(0);
inline constexpr device_family family =
    device_family{"sim_woffline", "watch", "the watch over the power lines", {enable, stuck}}.up_to(0);

// What the watch finds; one that is off finds nothing.
bool is_lost(board &b, const device_of<power_line::family> &line);
} // namespace line_watch

namespace line_interrupt {
inline constexpr reg enable = reg::flag("enable", "whether a line without power interrupts").or_else(1).written();
inline constexpr reg stuck = reg::flag("stuck", "whether its enable does not follow what is written").or_else(0);
inline constexpr device_family family =
    device_family{"sim_woffline", "interrupt", "the interrupt of the watch", {enable, stuck}}.up_to(0);

// A level: it goes by itself when the line has power again.
bool is_raised(board &b, const device_of<power_line::family> &line);
} // namespace line_interrupt

namespace fabric_isolation {
inline constexpr reg enable =
    reg::flag("enable", "whether a line without power cuts the board off from the switch fabrics").or_else(0).written();
inline constexpr reg stuck = reg::flag("stuck", "whether its enable does not follow what is written").or_else(0);
inline constexpr device_family family =
    device_family{"sim_woffline", "isolation", "the isolation by the watch", {enable, stuck}}.up_to(0);

// Of a place with or without a watch.
bool is_active(board &b, const std::string &place);
} // namespace fabric_isolation

} // namespace kestro_sim
