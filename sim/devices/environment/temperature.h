// Temperature sensors: the air that the fans draw in, and how far above it the heat of the board lifts each sensor.
#pragma once

#include "sim/core/board.h"
#include "sim/core/time.h"

namespace kestro_sim {

namespace ambient {
inline constexpr reg celsius =
    reg::number("celsius", -40, 80, "degrees Celsius", "the air that the fans draw in").or_else(25);
inline constexpr device_family family =
    device_family{"sim_temp", "ambient", "the air around the chassis", {celsius}}.up_to(0);
} // namespace ambient

namespace sensor {

inline constexpr int64_t celsius_min = -128;
inline constexpr int64_t celsius_max = 255;
inline constexpr int64_t millidegrees_max = 1000000;

// Before the board was made new.
inline constexpr int64_t long_ago = -1;

inline constexpr reg desc = reg::text("desc", 63, "what the sensor is called");
inline constexpr reg rise =
    reg::number("rise", 0, 1000000, "mK/W", "how far a watt lifts it above the air when all fans turn fully")
        .required();
inline constexpr reg monitor =
    reg::number("monitor", 0, any_u32, "",
                "the power detector chip in the feed of what heats it; without one the board's rated power does")
        .fixed();
inline constexpr reg time_constant =
    reg::number("time_constant", 0, 86400, "s", "in which two thirds of a change have come about").or_else(60);
inline constexpr reg offset =
    reg::number("offset", -300000, 300000, "mK", "what a faulty sensor shows too much").or_else(0);
inline constexpr reg warning_low =
    reg::number("warning_low", celsius_min, celsius_max, "degrees Celsius", "below it is a warning")
        .required()
        .written();
inline constexpr reg warning_high =
    reg::number("warning_high", celsius_min, celsius_max, "degrees Celsius", "above it is a warning")
        .required()
        .written();
inline constexpr reg alarm_low =
    reg::number("alarm_low", celsius_min, celsius_max, "degrees Celsius", "below it is an alarm").required().written();
inline constexpr reg alarm_high =
    reg::number("alarm_high", celsius_min, celsius_max, "degrees Celsius", "above it is an alarm").required().written();
inline constexpr reg start = reg::number("start", -millidegrees_max, millidegrees_max, "millidegrees Celsius",
                                         "how hot it was when its course began")
                                 .or_else(0)
                                 .written();
inline constexpr reg since =
    reg::number("since", long_ago, INT64_MAX, "ns", "the board time at which its course began; -1 long ago")
        .or_else(static_cast<uint64_t>(long_ago))
        .written();

inline constexpr device_family family{
    "sim_temp",
    "sensor",
    "a temperature sensor",
    {desc, rise, monitor, time_constant, offset, warning_low, warning_high, alarm_low, alarm_high, start, since}};

using one = device_of<family>;

enum class limits { warning, alarm };

struct span {
    int32_t low;
    int32_t high;
};

// A sensor on a card that is switched off does not answer.
int32_t celsius(board &b, const one &which);

// The same in millidegrees.
int32_t millidegrees(board &b, const one &which);

span thresholds(board &b, const one &which, limits pair);
void set_thresholds(board &b, const one &which, limits pair, const span &to);

// 0 within all thresholds, 1 beyond a warning threshold, 2 beyond an alarm threshold; on it is still good.
uint32_t alarm_status(board &b, const one &which);

// For a driver that changes what heats or cools the place: its sensors go on from where they are, toward what the
// change leads to. What the technician sets by hand counts at once.
void keep_course(board &b, change &writes, const std::string &place);

} // namespace sensor

} // namespace kestro_sim
