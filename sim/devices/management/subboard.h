// Sub-boards, by number. Not every sub-board can tell everything: what it has no wires for is not supported.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim::subboard {

inline constexpr reg absent = reg::flag("absent", "whether the sub-board is missing");
inline constexpr reg type = reg::bits("type", any_u32, "the type of sub-board");
inline constexpr reg pcb_ver = reg::number("pcb_ver", 0, UINT16_MAX, "", "the version of its printed circuit board");
inline constexpr reg bom_ver = reg::number("bom_ver", 0, UINT16_MAX, "", "the version of its bill of materials");
inline constexpr reg bom_id = reg::number("bom_id", 0, UINT16_MAX, "", "which bill of materials it is made from");

inline constexpr device_family family{
    "sim_subboard", "subboard", "a sub-board", {absent, type, pcb_ver, bom_ver, bom_id}};

bool is_absent(board &b, const device_of<family> &which);

} // namespace kestro_sim::subboard
