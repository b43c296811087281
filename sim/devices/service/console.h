// The serial console of a board, as another board hears it: it sends back each text that it understands, as a line.
#pragma once

#include "sim/core/board.h"

#include <span>
#include <vector>

namespace kestro_sim::console {

inline constexpr reg baud_rate = reg::number("baud_rate", 1200, 115200, "bit/s", "the rate that it runs at").required();

inline constexpr device_family family = device_family{"sim_console", "port", "a serial console", {baud_rate}}.up_to(0);

using one = device_of<family>;

// One of the rates that a line can be set to.
bool is_rate(uint32_t rate);

// What comes back for a text, in the pieces that a receiver holds, and after how many nanoseconds each: the way there
// on the line, a moment to think, and the way back. Nothing at another rate than its own.
struct piece {
    std::vector<uint8_t> bytes;
    int64_t after;
};
std::vector<piece> answer(board &b, const one &port, uint32_t rate, std::span<const char> text);

} // namespace kestro_sim::console
