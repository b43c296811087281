// Resets: the record and the flags that survive them, chips with a reset line, and why the board started in the past.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

namespace reset_control {

inline constexpr const char *start_names[]{"warm", "cold"};

inline constexpr reg code = reg::bits("code", any_u32, "why software asked for the last reset").written();
inline constexpr reg year = reg::number("year", 0, UINT16_MAX, "", "when it asked").written();
inline constexpr reg month = reg::number("month", 0, UINT8_MAX, "", "when it asked").written();
inline constexpr reg day = reg::number("day", 0, UINT8_MAX, "", "when it asked").written();
inline constexpr reg cool = reg::choice("cool", start_names, "how the board started last").written();
inline constexpr reg button = reg::flag("button", "whether the reset button is pressed");
inline constexpr reg soft_start_ok = reg::flag("soft_start_ok", "whether the software has started").written();
inline constexpr reg sys_ready = reg::flag("sys_ready", "whether the system tells its peer that it is ready").written();
inline constexpr reg starts =
    reg::number("starts", 0, any_u32, "", "how often it has started since the chassis was made").or_else(0).written();

inline constexpr device_family family = device_family{
    "sim_reset",
    "board",
    "the reset control of a board",
    {code, year, month, day, cool, button, soft_start_ok, sys_ready,
     starts}}.up_to(0);

} // namespace reset_control

namespace reset_chip {
inline constexpr reg desc = reg::text("desc", 63, "the chip at the reset line").fixed();
inline constexpr device_family family{"sim_reset", "chip", "a chip with a reset line", {desc}};
} // namespace reset_chip

namespace reset_reason {
inline constexpr reg reason =
    reg::number("reason", 0, any_u32, "", "why it started: 1 power-on, 2 button, 3 watchdog, 4 command")
        .required()
        .written();
inline constexpr device_family family{"sim_reset", "reason", "a past reset, 0 is the latest", {reason}};
} // namespace reset_reason

enum class restart_reason : uint32_t { power_on = 1, button = 2, watchdog = 3, command = 4 };
enum class restart_kind : uint32_t { warm = 0, cold = 1 };

// What a board or card finds after starting again. A place without such registers keeps nothing.
void note_restart(board &b, change &writes, const std::string &place, restart_reason reason, restart_kind kind);

} // namespace kestro_sim
