// What belongs to the processor: its pins, and memory that it keeps out of the system's hands.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

namespace gpio_pin {
inline constexpr reg level = reg::flag("level", "the level of the pin").required().written();
inline constexpr reg is_output = reg::flag("is_output", "whether the processor drives it").required().fixed();
inline constexpr device_family family{"sim_gpio", "pin", "a pin of the processor", {level, is_output}};

// What drives an input pin is outside of the processor.
void drive(board &b, const device_of<family> &pin, uint32_t to);
} // namespace gpio_pin

namespace reserved_memory {
inline constexpr reg start = reg::bits("start", INT64_MAX, "where it starts").required().fixed();
inline constexpr reg length = reg::bits("length", INT64_MAX, "how many bytes it has").required().fixed();
inline constexpr device_family family =
    device_family{"sim_himem", "region", "reserved memory", {start, length}}.up_to(0);
} // namespace reserved_memory

} // namespace kestro_sim
