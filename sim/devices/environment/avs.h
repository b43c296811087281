// Adaptive voltage scaling: controllers that trim a core rail to what the processor asks for.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim::avs {

inline constexpr reg rail_number = reg::number("rail", 0, any_u32, "", "the rail that it trims").required().fixed();
inline constexpr reg target = reg::number("target", 0, 60000, "mV", "what the processor asks for").required();
inline constexpr reg status = reg::bits("status", 0xFF, "its status byte").required();

inline constexpr device_family family{
    "sim_avs", "controller", "a voltage scaling controller", {rail_number, target, status}};

// The line of a controller in a dump.
std::string dump_line(board &b, const device_of<family> &controller);

} // namespace kestro_sim::avs
