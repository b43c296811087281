// Power supplies of the chassis, by frame slot and place: what they are fed with and what they give, which alarms
// follow from that, and what their driver sets.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

// What a supply is like and does.
namespace power_supply {

inline constexpr uint32_t slot_type = 6;
inline constexpr uint32_t places_max = 10; // entries are named by slot * 10 + place

inline constexpr reg present = reg::flag("present", "whether it is in its place").required();
inline constexpr reg line_broken =
    reg::flag("line_broken", "a fault: its presence line is broken, so that it seems absent").or_else(0);
inline constexpr reg type = reg::number("type", 0, 255, "",
                                        "its kind: 0 AC, 1 low DC, 2 high DC, 3 AC and high DC, 4 battery, "
                                        "5 backup access board")
                                .required();
inline constexpr reg pmbus =
    reg::bits("pmbus", 0xFF, "the revision of the PMBus that it follows; without it, it has the simple protocol");
inline constexpr reg feed = reg::number("feed", 0, 1000000, "mV", "what is at its input").required();
inline constexpr reg feed_off =
    reg::number("feed_off", 0, 1000000, "mV", "below it there is no input to work with").required();
inline constexpr reg feed_low =
    reg::number("feed_low", 0, 1000000, "mV", "below it the input is called low").required();
inline constexpr reg feed_high =
    reg::number("feed_high", 0, 1000000, "mV", "above it the input is too high").required();
inline constexpr reg rated = reg::number("rated", 1, 100000, "W", "what it can give").required();
inline constexpr reg output = reg::number("output", 1, 100000, "mV", "its output voltage").required();
inline constexpr reg load = reg::number("load", 0, 100000, "W", "what the chassis takes from it").required();
inline constexpr reg efficiency =
    reg::number("efficiency", 1, 1000, "", "output by input power, in thousandths").required();
inline constexpr reg fan_speed_max =
    reg::number("fan_speed_max", 0, 60000, "1/min", "how fast its fan can turn").required();
inline constexpr reg rise =
    reg::number("rise", 0, 200, "K", "how much warmer it is than the air at its rated power").required();
inline constexpr reg current_limit = reg::number("current_limit", 0, 10000000, "mA", "where its output is limited");
inline constexpr reg faults = reg::bits("faults", 0x1F,
                                        "what is broken: 0x01 fan, 0x02 communication, 0x04 output over-voltage, "
                                        "0x08 output over-current, 0x10 something else")
                                  .or_else(0);
inline constexpr reg temp_limit =
    reg::number("temp_limit", 0, 200, "degC", "above it is a temperature alarm").written();
inline constexpr reg temp_mode = reg::flag("temp_mode", "whether it works in the wide range of temperatures").written();
inline constexpr reg latch =
    reg::flag("latch", "whether a fault keeps the output off until it is switched on again").written();
inline constexpr reg latch_stuck = reg::flag("latch_stuck", "a fault: a set latch mode does not hold").or_else(0);
inline constexpr reg enabled = reg::flag("enabled", "whether the output is switched on").or_else(1).written();
inline constexpr reg enabled_at =
    reg::number("enabled_at", 0, INT64_MAX, "ns", "when the output was switched on").written();
inline constexpr reg delay = reg::number("delay", 0, 3600, "s", "from switching on to the output").or_else(1).written();
inline constexpr reg off_at =
    reg::number("off_at", 0, any_u32, "s", "when the output was switched off last").or_else(0).written();
inline constexpr reg alarm_kept =
    reg::flag("alarm_kept", "whether it had an alarm since its faults were cleared").or_else(0).written();
inline constexpr reg low_kept =
    reg::flag("low_kept", "whether its input was low since its faults were cleared").or_else(0).written();
inline constexpr reg bad_kept =
    reg::flag("bad_kept", "whether a fault took its output since its faults were cleared").or_else(0).written();
inline constexpr reg clock_set = reg::number("clock_set", 0, any_u32, "s", "what its clock was set to").written();
inline constexpr reg clock_set_at =
    reg::number("clock_set_at", 0, INT64_MAX, "ns", "when its clock was set").or_else(0).written();
inline constexpr reg is_up = reg::flag("is_up", "whether its driver is up").or_else(1).written();

inline constexpr device_family family{"sim_power",
                                      "supply",
                                      "a power supply, by slot * 10 + place",
                                      {present,       line_broken, type,          pmbus,      feed,         feed_off,
                                       feed_low,      feed_high,   rated,         output,     load,         efficiency,
                                       fan_speed_max, rise,        current_limit, faults,     temp_limit,   temp_mode,
                                       latch,         latch_stuck, enabled,       enabled_at, delay,        off_at,
                                       alarm_kept,    low_kept,    bad_kept,      clock_set,  clock_set_at, is_up}};

using one = device_of<family>;

} // namespace power_supply

// How it was built.
namespace power_build {

inline constexpr reg rating = reg::number("rating", 1, 100000, "W", "the rated power that it tells");
inline constexpr reg device_type = reg::number("device_type", 0, any_u32, "", "the type of device");
inline constexpr reg hardware = reg::number("hardware", 0, any_u32, "", "its hardware version");
inline constexpr reg protocol = reg::number("protocol", 0, any_u32, "", "the version of its protocol");
inline constexpr reg pfc = reg::bits("pfc", any_u32, "the version of the power factor stage");
inline constexpr reg converter = reg::bits("converter", any_u32, "the version of the converter");
inline constexpr reg holdup = reg::number("holdup", 0, 10000, "ms", "how long it bridges a gap of its input");
inline constexpr reg shutdown = reg::number("shutdown", 0, 200, "degC", "where it switches off");
inline constexpr reg panel_switch = reg::flag("panel_switch", "whether the switch on its panel is on");
inline constexpr reg airflow = reg::flag("airflow", "how air goes: 0 front to back, 1 back to front");
inline constexpr reg features = reg::bits("features", any_u32, "what the module can do");
inline constexpr reg controller = reg::text("controller", 63, "what its controller can do");
inline constexpr reg label = reg::text("label", 1022, "its electronic label").required();
inline constexpr device_family family{"sim_power",
                                      "build",
                                      "the make of a power supply, by slot * 10 + place",
                                      {rating, device_type, hardware, protocol, pfc, converter, holdup, shutdown,
                                       panel_switch, airflow, features, controller, label}};

} // namespace power_build

namespace power_supply {

// Places of the frame in a slot. A slot for something else is refused.
uint32_t count(board &b, uint32_t slot_id);

// A supply's place, with or without a supply.
one find(board &b, uint32_t slot_id, uint32_t power_id);

// What its presence line says.
bool is_present(board &b, const one &which);

// A supply that answers; not_ready for an empty place.
one find_answering(board &b, uint32_t slot_id, uint32_t power_id);

bool has_input(board &b, const one &which);
bool is_on_pmbus(board &b, const one &which);

// What the clock of the supply shows, in seconds. It stands at 0 until it is set: it has no battery.
uint32_t clock(board &b, const one &which);

// The driver of the supply. One behind the simple protocol does not come up without input.
void bring_up(board &b, const one &which);
void take_down(board &b, const one &which);

uint32_t property(board &b, const one &which, uint32_t number);
void set_property(board &b, const one &which, uint32_t number, uint32_t value);

// The bits of the status that an alarm is made of.
uint32_t alarm_bits(board &b, const one &which, uint32_t number);

} // namespace power_supply

} // namespace kestro_sim
