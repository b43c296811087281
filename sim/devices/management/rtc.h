// The real-time clock: counters in binary coded decimal that run with board time, a battery, and an oscillator that may
// have stopped when the battery gave out.
#pragma once

#include "sim/core/board.h"
#include "sim/core/finding.h"

#include <string>

namespace kestro_sim::rtc {

// Until somebody sets it, the clock is right: it shows the local time of whoever reads it.
inline constexpr reg offset =
    reg::number("offset", INT64_MIN, INT64_MAX, "ns", "what it counts since 2000, less the board time, once it was set")
        .written();
inline constexpr reg day_ahead =
    reg::number("day_ahead", 0, 6, "", "how many days its day of the week is ahead of the calendar")
        .or_else(0)
        .written();
inline constexpr reg oscillator_stopped =
    reg::flag("oscillator_stopped", "whether the oscillator has stopped since the time was set").or_else(0).written();
inline constexpr reg battery = reg::number("battery", 0, 5000, "mV", "the voltage of its battery").required();
inline constexpr reg hour_lost =
    reg::bits("hour_lost", 0x3F, "bits of its hours, in binary coded decimal, that it does not take").or_else(0);

inline constexpr device_family family =
    device_family{"sim_rtc", "chip", "a real-time clock", {offset, day_ahead, oscillator_stopped, battery, hour_lost}}
        .up_to(0);

using chip = device_of<family>;

// In the order of the chip's first eight registers.
struct counters {
    uint32_t subsecond; // hundredths
    uint32_t second;
    uint32_t minute;
    uint32_t hour;
    uint32_t day_of_week; // 1 Monday to 7 Sunday
    uint32_t day_of_month;
    uint32_t month;
    uint32_t year; // since 2000
};

counters read(board &b, const chip &which);

// Refuses what the digits of a counter do not hold. What they hold and the calendar does not have is carried over:
// second 60 begins the next minute, day 0 is the last of the month before.
void set(board &b, const chip &which, const counters &to);

bool is_battery_low(board &b, const chip &which);
finding check(board &b, const chip &which);

// A line per register of the clock, without its memory; the bytes from a register on, eight in a line.
std::string dump(board &b, const chip &which);
std::string dump_bytes(board &b, const chip &which, uint32_t start, uint32_t num);

} // namespace kestro_sim::rtc
