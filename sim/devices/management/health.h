// Health of the board: solder joints, corrosion, interrupt lines, and the trusted platform module.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

namespace corner_joint {
inline constexpr reg status =
    reg::number("status", 0, any_u32, "", "other than 0 when a corner joint is open").required();
inline constexpr device_family family{"sim_board", "corner", "the corner joints of a chip", {status}};
} // namespace corner_joint

namespace corrosion_sensor {
inline constexpr reg status = reg::number("status", 0, any_u32, "", "other than 0 on corrosion").required();
inline constexpr device_family family{"sim_board", "corrosion", "a corrosion sensor", {status}};
} // namespace corrosion_sensor

namespace interrupt_line {
inline constexpr reg type = reg::number("type", 0, any_u32, "", "the type of interrupt").required().fixed();
inline constexpr reg fault = reg::flag("fault", "whether the line is stuck").required();
inline constexpr reg numbered =
    reg::flag("numbered", "whether it is called by its index, and not by its type alone").or_else(1).fixed();
inline constexpr reg enabled = reg::flag("enabled", "whether it is let through").written().or_else(0);
inline constexpr reg raised = reg::flag("raised", "whether its source is raised").or_else(0);
inline constexpr device_family family{
    "sim_board", "interrupt", "an interrupt line", {type, fault, numbered, enabled, raised}};
} // namespace interrupt_line

namespace trusted_module {
inline constexpr reg absent = reg::flag("absent", "whether the module is missing").required();
inline constexpr reg active = reg::flag("active", "whether it works").required();
inline constexpr device_family family =
    device_family{"sim_board", "tpm", "the trusted platform module", {absent, active}}.up_to(0);
} // namespace trusted_module

} // namespace kestro_sim
