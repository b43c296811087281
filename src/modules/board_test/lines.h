// What the sub-commands of board_test print and reserve alike, whatever their subject.
#pragma once

#include <cstdint>

namespace board_commands {

// Room that the driver is given for the findings of a check. The areas have a byte more, a terminator behind text that
// fills all of it.
constexpr uint32_t dfx_size = 128;

// One value in both bases, behind its name: "power hex:0x00000050 dec:00000080".
void print_hex_dec(const char *name, uint32_t value);

} // namespace board_commands
