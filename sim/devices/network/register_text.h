// Registers of a port by name, a line each: "0x00 control 0x1140".
#pragma once

#include "sim/core/register_space.h"

#include <cstdio>
#include <string>

namespace kestro_sim {

// A look without effects: a dump does not clear what a driver has not read yet.
inline std::string register_text(board &b, const register_space &space, const device &chip) {
    std::string text;
    for (const space_register &each : space.registers) {
        for (uint32_t i = 0; i < each.count; ++i) {
            char line[80];
            snprintf(line, sizeof line, "0x%02x %s 0x%0*x\n", each.address + i, each.name,
                     static_cast<int>(space.width / 4), peek_space(b, space, chip, each.address + i));
            text += line;
        }
    }
    return text;
}

} // namespace kestro_sim
