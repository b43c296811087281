// Non-volatile RAM: two chips, and the logic between them that carries what was written to one into the other once
// there has been no write for a while.
#pragma once

#include "sim/core/board.h"

#include <span>
#include <vector>

namespace kestro_sim {

namespace nvram_chip {
inline constexpr reg silent = reg::flag("silent", "whether it does not answer").or_else(0);
inline constexpr device_family family =
    device_family{"sim_nvram", "chip", "a chip of non-volatile RAM", {silent}}.up_to(1);

using one = device_of<family>;

// Refuse a silent chip (not_ready), nothing at all and what is beyond the chip (out_of_range).
std::vector<uint8_t> read(board &b, const one &chip, uint32_t offset, uint32_t length);
void write(board &b, const one &chip, uint32_t offset, std::span<const uint8_t> bytes);
} // namespace nvram_chip

namespace nvram_mirror {
inline constexpr int64_t area_max = 1 << 30;

inline constexpr reg quiet =
    reg::number("quiet", 0, 600000, "ms", "how long after the latest write the other chip follows").or_else(2000);
inline constexpr reg pending =
    reg::flag("pending", "whether something was written that the other chip has to follow").written().or_else(0);
inline constexpr reg source = reg::number("source", 0, 1, "", "the chip that it was written to").written().or_else(0);
inline constexpr reg first = reg::number("first", 0, area_max, "B", "where it begins").written().or_else(0);
inline constexpr reg end = reg::number("end", 0, area_max, "B", "where it ends").written().or_else(0);
inline constexpr reg since =
    reg::number("since", 0, INT64_MAX, "ns", "the board time of the latest write").written().or_else(0);
inline constexpr device_family family =
    device_family{"sim_nvram", "mirror", "the logic between both chips", {quiet, pending, source, first, end, since}}
        .up_to(0);

using one = device_of<family>;

inline constexpr uint32_t on_its_way = 1;
inline constexpr uint32_t out_of_order = 2;

uint32_t status(board &b, const one &mirror);
} // namespace nvram_mirror

} // namespace kestro_sim
