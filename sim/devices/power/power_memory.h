// What power supplies keep: the programs of their controllers, their label, and the black box.
#pragma once

#include "sim/devices/power/power_supply.h"

#include <span>
#include <string>
#include <vector>

namespace kestro_sim {

namespace power_program {

inline constexpr uint32_t programs_max = 3; // entries are named by supply * 10 + number
inline constexpr uint32_t one_module = 255;

inline constexpr reg soft_id = reg::number("soft_id", 0, 255, "", "which program it is").required();
inline constexpr reg modules =
    reg::number("modules", 0, 255, "", "how many modules run it; 255 stands for one").required();
inline constexpr reg version = reg::number("version", 0, any_u32, "", "its version").required().written();
inline constexpr reg is_fragile =
    reg::flag("is_fragile", "a fault: it is lost when any program of the supply is loaded").or_else(0);
inline constexpr reg is_lost = reg::flag("is_lost", "whether it was lost").or_else(0).written();
inline constexpr device_family family{"sim_power",
                                      "program",
                                      "a program of a power supply, by supply * 10 + number",
                                      {soft_id, modules, version, is_fragile, is_lost}};

// Those that the supply has, in order. not_supported for one that has never had any.
std::vector<device_of<family>> all(board &b, const power_supply::one &supply);

// Of one module.
uint32_t version_of(board &b, const power_supply::one &supply, uint32_t id, uint32_t module_id);

// Takes an image for one of the programs, whose version is the image's from then on.
void load(board &b, const power_supply::one &supply, std::span<const uint8_t> image);

} // namespace power_program

namespace power_bbox {

inline constexpr uint32_t records_max = 10; // entries are named by supply * 10 + number

inline constexpr reg seconds =
    reg::number("seconds", 0, any_u32, "s", "when it was, by the clock of the supply").required();
inline constexpr reg event = reg::number("event", 0, UINT16_MAX, "", "what happened").required();
inline constexpr reg value = reg::number("value", 0, UINT16_MAX, "", "what was measured").required();
inline constexpr reg is_torn = reg::flag("is_torn", "a fault: its value was not written any more").or_else(0);
inline constexpr device_family family{"sim_power",
                                      "record",
                                      "a black box record of a power supply, by supply * 10 + number",
                                      {seconds, event, value, is_torn}};

std::vector<uint8_t> contents(board &b, const power_supply::one &supply);

} // namespace power_bbox

// A label as it is written: its CRC-16, then text to the first zero.
void set_power_label(board &b, const power_supply::one &supply, std::span<const uint8_t> area);

} // namespace kestro_sim
