// Start-up software and programmable logic.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

namespace bios {
inline constexpr reg version = reg::text("version", 126, "what the start-up software calls itself").required();
inline constexpr reg area = reg::number("area", 0, any_u32, "", "the area that it was started from").required();
inline constexpr device_family family =
    device_family{"sim_board", "bios", "the start-up software", {version, area}}.up_to(0);
} // namespace bios

namespace bios_area {
inline constexpr reg fault = reg::number("fault", 0, any_u32, "", "other than 0 when the copy is damaged").required();
inline constexpr device_family family{"sim_board", "bios_area", "an area for start-up software", {fault}};
} // namespace bios_area

namespace logic_chip {
inline constexpr reg version = reg::bits("version", 0xFFFF, "the version of its logic").required();
inline constexpr reg is_fpga = reg::flag("is_fpga", "whether it is a control FPGA and no CPLD").required().fixed();
inline constexpr device_family family{"sim_board", "logic", "a programmable logic chip", {version, is_fpga}};
} // namespace logic_chip

} // namespace kestro_sim
