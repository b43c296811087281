// USB ports with a power switch each, and the sticks that come and go.
#pragma once

#include "sim/core/board.h"
#include "sim/core/time.h"

namespace kestro_sim::usb_port {

// Before the board was made new, and longer ago than any stick takes to answer.
inline constexpr int64_t long_ago = -3600 * nanoseconds_per_second;

inline constexpr const char *fault_names[]{"none", "over_current", "no_answer"};

inline constexpr reg rail_number = reg::number("rail", 0, any_u32, "", "the rail that feeds it").required().fixed();
inline constexpr reg irq = reg::number("irq", 0, any_u32, "", "the interrupt of its controller").required().fixed();
inline constexpr reg hotplug =
    reg::flag("hotplug", "whether sticks may come and go while the board runs").required().fixed();
inline constexpr reg present = reg::flag("present", "whether a stick is plugged in").required();
inline constexpr reg devmap = reg::text("devmap", 63, "the device that stands for its stick").required();
inline constexpr reg size = reg::number("size", 0, any_u32, "MiB", "how much its stick holds").required();
inline constexpr reg partitions = reg::number("partitions", 0, 128, "", "how many partitions its stick has").required();

inline constexpr reg on = reg::flag("on", "whether it is switched on").or_else(1).written();
inline constexpr reg since =
    reg::number("since", long_ago, INT64_MAX, "ns", "the board time at which it was switched on")
        .or_else(static_cast<uint64_t>(long_ago))
        .written();
inline constexpr reg start_up =
    reg::number("start_up", 0, 600000, "ms", "how long a stick takes to answer").or_else(500);
inline constexpr reg fault = reg::choice("fault", fault_names, "what its controller has noticed").or_else(0).written();
inline constexpr reg fault_stays =
    reg::flag("fault_stays", "whether a fault is back as soon as the port is switched on again").or_else(0);

inline constexpr device_family family{
    "sim_usb",
    "port",
    "a USB port",
    {rail_number, irq, hotplug, present, devmap, size, partitions, on, since, start_up, fault, fault_stays}};

using port = device_of<family>;

// There is a stick, it has power, and it has answered. A port with a fault gives no power.
bool is_on_line(board &b, const port &which);

// A port that is on already does not begin anew.
void switch_to(board &b, const port &which, uint32_t to);

// Whether the port is well afterwards. One that has no fault is left as it is.
bool recover(board &b, const port &which);

// What the port gives, judged as the rail behind it is: 0 good, 1 too low, 2 too high.
uint32_t judge_voltage(board &b, const port &which);

} // namespace kestro_sim::usb_port
