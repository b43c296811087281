// Soft resets: how the board started last, as the record of its resets has it.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

enum class reset_type : uint32_t { soft = 0, hard = 1, power_on = 2 };

namespace soft_reset {
inline constexpr reg support =
    reg::flag("support", "whether its packets go on while the processor starts again").required().fixed();
inline constexpr reg stuck_at =
    reg::number("stuck_at", 0, any_u32, "", "what its status register reads when it is at fault, however it started");
inline constexpr device_family family =
    device_family{"sim_softreset", "control", "the control of soft resets", {support, stuck_at}}.up_to(0);

// A board whose packets do not go on has no soft reset to tell from others.
uint32_t last(board &b, const device_of<family> &control);
} // namespace soft_reset

} // namespace kestro_sim
