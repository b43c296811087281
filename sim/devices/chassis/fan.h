// The fans of a tray. A fan spins up and down at its own rate: how fast it turns follows from board time, the moment at
// which it was set, and how fast it turned then. Percentage and shift are read from that speed, so they agree with it.
#pragma once

#include "sim/devices/chassis/fan_tray.h"

#include <vector>

namespace kestro_sim::fan {

inline constexpr uint32_t fans_max = 10; // entries are named by slot * 10 + fan
inline constexpr uint32_t all_fans = UINT32_MAX;

inline constexpr reg max_speed = reg::number("max_speed", 1, 60000, "1/min", "how fast it can turn").required();
inline constexpr reg max_shift = reg::number("max_shift", 1, 100, "", "how many steps its speed has");
inline constexpr reg max_power = reg::number("max_power", 0, 1000, "W", "what it takes at its highest speed");
inline constexpr reg spin =
    reg::number("spin", 1, 60000, "1/min/s", "how much its speed changes in a second").required();
inline constexpr reg target = reg::number("target", 0, 60000, "1/min", "what its speed was set to").written();
inline constexpr reg start = reg::number("start", 0, 60000, "1/min", "how fast it turned when it was set").written();
inline constexpr reg since = reg::number("since", 0, INT64_MAX, "ns", "when it was set").written();
inline constexpr reg power = reg::flag("power", "whether its supply is switched on").written();
inline constexpr reg stalled = reg::flag("stalled", "a fault: it does not turn").or_else(0);
inline constexpr reg stuck = reg::flag("stuck", "a fault: it keeps its speed, whatever is set").or_else(0);
inline constexpr reg alarms =
    reg::bits("alarms", 0x7F,
              "what it complains of: 0x01 reset, 0x02 hardware, 0x04 speed, 0x08 not plugged, 0x10 motor, 0x20 I2C, "
              "0x40 ability file")
        .or_else(0);
inline constexpr device_family family{
    "sim_fan",
    "fan",
    "a fan of a tray, by slot * 10 + fan",
    {max_speed, max_shift, max_power, spin, target, start, since, power, stalled, stuck, alarms}};

using one = device_of<family>;

uint32_t count(board &b, uint32_t slot_id);

// A fan of a tray that answers; of it, or all of the tray.
one find(board &b, uint32_t slot_id, uint32_t fan_id);
std::vector<one> find_one_or_all(board &b, uint32_t slot_id, uint32_t fan_id);

// In 1/min, and in percent of the highest.
uint32_t speed(board &b, const one &which);
uint32_t percent(board &b, const one &which);
void set_percent(board &b, const std::vector<one> &fans, uint32_t percent);

// Shift N goes up to N parts of max_shift of the highest speed; power goes with the third power of speed.
uint32_t shift(board &b, const one &which);
void set_shift(board &b, const std::vector<one> &fans, uint32_t shift);
uint32_t max_speed_of_shift(board &b, const one &which, uint32_t shift);
uint32_t max_power_of_shift(board &b, const one &which, uint32_t shift);

void switch_power(board &b, const std::vector<one> &fans, uint32_t on);

// A fan that has its supply and should turn, and does not.
bool is_stalled(board &b, const one &which);
bool has_alarm(board &b, const one &which, uint32_t alarm);

// Of the fans of a tray, whether its controller is up or not. A tray without described fans turns as it says itself.
uint32_t mean_percent(board &b, const fan_tray::one &tray);

} // namespace kestro_sim::fan
