// Whether the drivers of a board or card are up. The chassis brings them up when it starts; for one that is plugged in
// later somebody has to.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim::bring_up {

inline constexpr reg up = reg::flag("up", "whether the drivers were brought up").or_else(1).written();
inline constexpr reg fitting =
    reg::number("fitting", 0, any_u32, "", "how often something had gone from or come to the place by then")
        .or_else(0)
        .written();

inline constexpr device_family family =
    device_family{"sim_init", "drivers", "the drivers of a board or card", {up, fitting}}.up_to(0);

// Bringing up what is up changes nothing.
void begin(board &b, const device_of<family> &drivers);

// There is nothing to take down where nothing is up.
void end(board &b, const device_of<family> &drivers);

} // namespace kestro_sim::bring_up
