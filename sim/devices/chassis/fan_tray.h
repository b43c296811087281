// Fan trays of the chassis, by the slots that they are in: they blow through all boards alike. The fans in them are in
// fan.h, what a tray keeps in tray_memory.h.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim::fan_tray {

inline constexpr uint32_t slot_type = 5;

inline constexpr reg present = reg::flag("present", "whether the tray is in its slot").required();
inline constexpr reg percent =
    reg::number("percent", 0, 100, "%", "how fast its fans turn, of what they can, until a driver sets them")
        .required();
inline constexpr reg direct = reg::flag("direct", "how air goes: 1 front to back, 0 back to front");
inline constexpr reg controlable = reg::flag("controlable", "whether the speed of its fans can be set");
inline constexpr reg detectable = reg::flag("detectable", "whether the speed of its fans can be read");
inline constexpr reg color =
    reg::number("color", 0, 4, "", "what its lamp shows: 0 nothing, 1 green, 2 red, 4 yellow").written();
inline constexpr reg lamp_stuck = reg::flag("lamp_stuck", "a fault: the lamp stays as it is").or_else(0);
inline constexpr reg voltage_failed =
    reg::flag("voltage_failed", "whether its supply voltage failed since it was asked last").written();
inline constexpr reg was_present =
    reg::flag("was_present", "whether it was in its slot when it was asked last").or_else(1).written();
inline constexpr reg pcb_version = reg::text("pcb_version", 63, "its PCB version");
inline constexpr reg is_up = reg::flag("is_up", "whether its controller is up").or_else(1).written();
inline constexpr reg init_time =
    reg::number("init_time", 0, 3600000, "ms", "how long its controller needs to come up").or_else(0);
inline constexpr reg init_stuck = reg::flag("init_stuck", "a fault: its controller never comes up again").or_else(0);
inline constexpr reg up_since = reg::number("up_since", 0, INT64_MAX, "ns", "when its controller was begun").written();
inline constexpr device_family family{"sim_fan",
                                      "tray",
                                      "a fan tray, by its slot",
                                      {present, percent, direct, controlable, detectable, color, lamp_stuck,
                                       voltage_failed, was_present, pcb_version, is_up, init_time, init_stuck,
                                       up_since}};

using one = device_of<family>;

// What is no slot for a tray is refused.
bool is_present(board &b, uint32_t slot_id);

// Of a slot for trays that this board reaches, with or without a tray.
one find(board &b, uint32_t slot_id);

// A tray in its slot, and one whose controller answers. not_ready for others.
one find_present(board &b, uint32_t slot_id);
one find_answering(board &b, uint32_t slot_id);

void bring_up(board &b, const one &tray);
void take_down(board &b, const one &tray);

// Its controller was begun and is not done yet.
bool is_coming_up(board &b, const one &tray);

// Since it was asked last, which this does.
bool take_plug_history(board &b, const one &tray);
bool take_voltage_history(board &b, const one &tray);

void show(board &b, const one &tray, uint32_t to_color);

// How much air moves, in percent of what all trays together can. A chassis without trays is cooled from outside.
uint32_t airflow(board &b);

} // namespace kestro_sim::fan_tray
