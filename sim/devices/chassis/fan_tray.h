// Fan trays of the chassis, by the slots that they are in: they blow through all boards alike.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim::fan_tray {

inline constexpr uint32_t slot_type = 5;

inline constexpr reg present = reg::flag("present", "whether the tray is in its slot").required();
inline constexpr reg percent =
    reg::number("percent", 0, 100, "%", "how fast its fans turn, of what they can").required();
inline constexpr device_family family{"sim_fan", "tray", "a fan tray, by its slot", {present, percent}};

// What is no slot for a tray is refused.
bool is_present(board &b, uint32_t slot_id);

// How much air moves, in percent of what all trays together can. A chassis without trays is cooled from outside.
uint32_t airflow(board &b);

} // namespace kestro_sim::fan_tray
