// Voltage rails, the regulators that make them and the power stages behind these.
#pragma once

#include "sim/core/board.h"
#include "sim/core/finding.h"

#include <string>

namespace kestro_sim {

namespace rail {

inline constexpr int64_t millivolts_max = 60000;

inline constexpr reg desc = reg::text("desc", 63, "what the rail is called");
inline constexpr reg millivolts =
    reg::number("millivolts", 0, millivolts_max, "mV", "what the monitor measures").written();
inline constexpr reg warning_low = reg::number("warning_low", 0, any_u32, "mV", "below it is a warning").written();
inline constexpr reg warning_high = reg::number("warning_high", 0, any_u32, "mV", "above it is a warning").written();
inline constexpr reg alarm_low = reg::number("alarm_low", 0, any_u32, "mV", "below it is an alarm").written();
inline constexpr reg alarm_high = reg::number("alarm_high", 0, any_u32, "mV", "above it is an alarm").written();
inline constexpr reg history_max =
    reg::number("history_max", 0, millivolts_max, "mV", "the highest value kept").written();
inline constexpr reg history_min =
    reg::number("history_min", 0, millivolts_max, "mV", "the lowest value kept").written();
inline constexpr reg set_low =
    reg::number("set_low", 0, millivolts_max, "mV", "the least an adjustable rail is set to");
inline constexpr reg set_high =
    reg::number("set_high", 0, millivolts_max, "mV", "the most an adjustable rail is set to");

inline constexpr reg stuck =
    reg::flag("stuck", "whether the regulator takes a setting and does not follow it").or_else(0);

inline constexpr device_family family{"sim_voltage",
                                      "rail",
                                      "a voltage rail",
                                      {desc, millivolts, warning_low, warning_high, alarm_low, alarm_high, history_max,
                                       history_min, set_low, set_high, stuck}};

using one = device_of<family>;

enum class limits { warning, alarm };

struct span {
    uint32_t low;
    uint32_t high;
};

span thresholds(board &b, const one &which, limits pair);
void set_thresholds(board &b, const one &which, limits pair, const span &to);

// 1 below, 2 above; a value on the threshold itself is still good.
finding judge(board &b, const one &which, limits pair);

// Only rails behind an adjustable regulator have a range to set them in; the measured value follows at once.
void set_millivolts(board &b, change &writes, const one &which, uint32_t to);

// The lowest and highest value so far.
span history(board &b, const one &which);

} // namespace rail

namespace regulator {
inline constexpr reg status = reg::bits("status", any_u32,
                                        "its fault bits: 0x20 output over-voltage, 0x10 output over-current, "
                                        "0x08 input under-voltage, 0x04 over-temperature, 0x02 communication");
inline constexpr device_family family{"sim_voltage", "vrm", "a voltage regulator", {status}};
finding check(board &b, const device_of<family> &which);
} // namespace regulator

namespace power_stage {
inline constexpr reg status =
    reg::bits("status", any_u32, "its fault bits: 0x01 power not good, 0x02 output short, 0x04 over-temperature");
inline constexpr device_family family{"sim_voltage", "power", "a power stage", {status}};
finding check(board &b, const device_of<family> &which);

// The line of a stage in a dump.
std::string dump_line(board &b, const device_of<family> &which);
} // namespace power_stage

} // namespace kestro_sim
