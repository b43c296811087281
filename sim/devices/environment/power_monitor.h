// Power detector chips: each stands in the feed of a rail, behind a shunt.
#pragma once

#include "sim/core/board.h"
#include "sim/core/register_space.h"

namespace kestro_sim::power_monitor {

inline constexpr int64_t milliamps_max = 200000;

inline constexpr reg rail_number = reg::number("rail", 0, any_u32, "", "the rail that it measures").required().fixed();
inline constexpr reg shunt =
    reg::number("shunt", 1, 1000000, "microohm", "the shunt that the current goes through").required().fixed();
inline constexpr reg milliamps = reg::number("milliamps", 0, milliamps_max, "mA", "the current that flows").required();
inline constexpr reg type = reg::number("type", 0, any_u32, "", "what kind of chip it is").or_else(1).fixed();
inline constexpr reg running = reg::flag("running", "whether it measures").or_else(1).written();
inline constexpr reg held_millivolts =
    reg::number("held_millivolts", 0, any_u32, "mV", "the last voltage that it measured before it was stopped")
        .written();
inline constexpr reg held_milliamps =
    reg::number("held_milliamps", 0, milliamps_max, "mA", "the last current that it measured before it was stopped")
        .written();

inline constexpr device_family family{"sim_powerdetec",
                                      "chip",
                                      "a power detector chip",
                                      {rail_number, shunt, milliamps, type, running, held_millivolts, held_milliamps}};

using one = device_of<family>;

struct reading {
    uint32_t millivolts;
    uint32_t milliamps;
};

// What goes through the feed, whether or not the chip looks.
reading flowing(board &b, const one &which);

// What the chip shows.
reading measured(board &b, const one &which);

uint32_t milliwatts(const reading &of);
uint32_t shunt_microvolts(board &b, const one &which);

// A chip that is stopped keeps its last measurement.
void start(board &b, const one &which);
void stop(board &b, const one &which);

extern const register_space registers;

} // namespace kestro_sim::power_monitor
