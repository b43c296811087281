// Chips as their bus reaches them: which number leads to which device, and whether it answers.
//
// On both buses a chip's registers are bytes: the higher byte of a register first, behind it the next register, and
// behind the last one the first again.
#pragma once

#include "sim/core/board.h"

#include <span>
#include <vector>

namespace kestro_sim {

inline constexpr uint32_t longest_transfer = 256;

namespace i2c_chip {
inline constexpr reg face =
    reg::text("face", 31, "what the bus finds there: the name of a register space, or eeprom for the identity EEPROM")
        .required()
        .fixed();
inline constexpr reg unit =
    reg::number("unit", 0, any_u32, "", "which of the devices with that face").or_else(0).fixed();
inline constexpr reg silent = reg::flag("silent", "whether it leaves its address unanswered").or_else(0);
inline constexpr reg flicker =
    reg::bits("flicker", 0xFF, "bits of each byte that are wrong in every second read").or_else(0);
inline constexpr reg odd_read = reg::flag("odd_read", "whether the next read is one of these").written().or_else(0);
inline constexpr device_family family{
    "sim_i2c", "chip", "a chip on an I2C bus", {face, unit, silent, flicker, odd_read}};

using one = device_of<family>;

// Refuse a silent chip (not_ready), an empty or too long transfer and one that begins beyond the chip (out_of_range),
// and a write of half a register (bad_value).
std::vector<uint8_t> read(board &b, const one &chip, uint32_t address, uint32_t length);
void write(board &b, const one &chip, uint32_t address, std::span<const uint8_t> bytes);
} // namespace i2c_chip

namespace localbus_chip {
inline constexpr reg logic =
    reg::number("logic", 0, any_u32, "", "the programmable logic chip that it is").required().fixed();
inline constexpr reg silent = reg::flag("silent", "whether it leaves its address unanswered").or_else(0);
inline constexpr device_family family{"sim_localbus", "chip", "a chip on the local bus", {logic, silent}};

using one = device_of<family>;

// These refuse as those of the I2C bus.
std::vector<uint8_t> read(board &b, const one &chip, uint32_t address, uint32_t length);
void write(board &b, const one &chip, uint32_t address, std::span<const uint8_t> bytes);
} // namespace localbus_chip

} // namespace kestro_sim
