// Disks in SATA bays. A bay has a power switch; a disk starts when it gets power, counts the hours that it works and
// wears with them.
#pragma once

#include "sim/core/board.h"
#include "sim/core/finding.h"
#include "sim/core/time.h"

#include <string>

namespace kestro_sim::disk {

// Before the board was made new, and longer ago than any disk takes to start.
inline constexpr int64_t long_ago = -3600 * nanoseconds_per_second;

inline constexpr reg vendor = reg::number("vendor", 0, any_u32, "", "who made it").required().fixed();
inline constexpr reg model = reg::text("model", 40, "what its maker calls it").required();
inline constexpr reg firm = reg::text("firm", 8, "the version of its firmware").required();
inline constexpr reg serial = reg::text("serial", 20, "its serial number").required();
inline constexpr reg speed = reg::number("speed", 1, 3, "", "the generation of its link").required();
inline constexpr reg capacity = reg::number("capacity", 0, any_u32, "KiB", "how much it holds").required();
inline constexpr reg partitions = reg::number("partitions", 0, 128, "", "how many partitions there are").required();
inline constexpr reg rated_hours =
    reg::number("rated_hours", 1, 1000000, "h", "how long it is made to work").required().fixed();

inline constexpr reg present = reg::flag("present", "whether a disk is in the bay").or_else(1);
inline constexpr reg seated = reg::flag("seated", "whether it sits fully in its connector").or_else(1);
inline constexpr reg on = reg::flag("on", "whether the bay has power").or_else(1).written();
inline constexpr reg since =
    reg::number("since", long_ago, INT64_MAX, "ns", "the board time at which the bay was switched on")
        .or_else(static_cast<uint64_t>(long_ago))
        .written();
inline constexpr reg start_up = reg::number("start_up", 0, 600000, "ms", "how long it takes to start").or_else(2000);

inline constexpr reg hours =
    reg::number("hours", 0, 1000000, "h", "how long it had worked when the board was new").or_else(0);
inline constexpr reg worked =
    reg::number("worked", 0, INT64_MAX, "ns", "how long it worked since, until the bay was last switched off")
        .or_else(0)
        .written();
inline constexpr reg starts = reg::number("starts", 0, any_u32, "", "how often it was started").or_else(1).written();
inline constexpr reg celsius = reg::number("celsius", -40, 125, "degrees Celsius", "how hot it is").or_else(38);
inline constexpr reg reallocated =
    reg::number("reallocated", 0, any_u32, "", "sectors that it has replaced by spare ones").or_else(0);
inline constexpr reg pending = reg::number("pending", 0, any_u32, "", "sectors that it could not read").or_else(0);
inline constexpr reg crc_errors = reg::number("crc_errors", 0, any_u32, "", "faulty transfers on its link").or_else(0);

inline constexpr device_family family{
    "sim_sata", "disk", "a disk bay", {vendor,      model,   firm,    serial,      speed,   capacity,  partitions,
                                       rated_hours, present, seated,  on,          since,   start_up,  hours,
                                       worked,      starts,  celsius, reallocated, pending, crc_errors}};

using bay = device_of<family>;

// There is a disk, it has power and it has started.
bool is_on_line(board &b, const bay &which);

// A bay that has power already does not begin anew, nor does one without power lose it twice.
void switch_on(board &b, const bay &which);
void switch_off(board &b, const bay &which);

uint32_t power_on_hours(board &b, const bay &which);

// In per cent; a disk that has worked as long as it is made to has none left, and works on.
uint32_t remaining_life(board &b, const bay &which);

// Not ready when there is no disk to look at.
finding check_seat(board &b, const bay &which);

// The table of attributes, as those who look after disks know it.
std::string attribute_report(board &b, const bay &which);

} // namespace kestro_sim::disk
