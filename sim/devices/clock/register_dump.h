// Registers of a chip as text, as dumps of drivers show them.
#pragma once

#include "sim/core/register_space.h"

#include <cstdio>
#include <string>

namespace kestro_sim {

// Sixteen in a line: "0x10: 04 50 08 ff ...". Refuses what lies beyond the space.
inline std::string register_dump(board &b, const register_space &space, const device &chip, uint32_t start,
                                 uint32_t num) {
    constexpr uint32_t per_line = 16;
    refuse_if(start > space.size || num > space.size - start, error::out_of_range);
    std::string text;
    for (uint32_t i = 0; i < num; ++i) {
        char piece[16];
        if (i % per_line == 0) {
            snprintf(piece, sizeof piece, "%s0x%02x:", i == 0 ? "" : "\n", start + i);
            text += piece;
        }
        snprintf(piece, sizeof piece, " %0*x", static_cast<int>(space.width / 4),
                 read_space(b, space, chip, start + i));
        text += piece;
    }
    return text;
}

} // namespace kestro_sim
