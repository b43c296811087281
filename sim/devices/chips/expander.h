// The 16-bit input/output expander: what its pins are configured as, what they drive, and what they are wired to.
#pragma once

#include "sim/core/register_space.h"

#include <string>

namespace kestro_sim::expander {

inline constexpr uint32_t pins = 16;

inline constexpr reg wired =
    reg::bits("wired", 0xFFFF, "bit N: the level that pin N is wired to; open pins are pulled up").or_else(0xFFFF);
inline constexpr reg output =
    reg::bits("output", 0xFFFF, "bit N: what pin N drives as an output").written().or_else(0xFFFF);
inline constexpr reg polarity =
    reg::bits("polarity", 0xFFFF, "bit N: whether pin N as an input reads inverted").written().or_else(0);
inline constexpr reg inputs = reg::bits("inputs", 0xFFFF, "bit N: whether pin N is an input").written().or_else(0xFFFF);

inline constexpr reg data_high =
    reg::bits("data_high", 0xFF, "bit N: whether bit N of whatever is written arrives as 1").or_else(0);

inline constexpr device_family family =
    device_family{"sim_chip9555", "chip", "an input/output expander", {wired, output, polarity, inputs, data_high}}
        .up_to(1);

using one = device_of<family>;

// All pins as the input registers read them.
uint32_t levels(board &b, const one &chip);

// What the driver writes goes through the chip's bus, and arrives as that lets it.
uint32_t read_register(board &b, const one &chip, uint32_t address);
void write_register(board &b, const one &chip, uint32_t address, uint32_t value);

void set_polarity(board &b, const one &chip, uint32_t pin, uint32_t is_inverted);
void set_direction(board &b, const one &chip, uint32_t pin, uint32_t is_input);

// Refuses (bad_value) a pin that is an input.
void drive(board &b, const one &chip, uint32_t pin, uint32_t level);

// The four pairs of registers.
std::string dump(board &b, const one &chip);

} // namespace kestro_sim::expander
