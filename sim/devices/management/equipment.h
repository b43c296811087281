// What a board is equipped with, and the pins by which its chips read the bill of materials.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

namespace equipment {
inline constexpr reg name = reg::text("name", 15, "what is fitted").required();
inline constexpr device_family family{
    "sim_capability",
    "item",
    "what is fitted, by its kind and number: from 0 FPGA, 0x10000 TPM, 0x20000 PLL, 0x30000 frequency source, "
    "0x40000 voltage scaling",
    {name}};
} // namespace equipment

namespace bom_pins {
inline constexpr reg value = reg::number("value", 0, any_u32, "", "what the chip reads at its pins").required();
inline constexpr device_family family{"sim_capability", "bom", "the bill of materials, as a chip reads it", {value}};
} // namespace bom_pins

} // namespace kestro_sim
