// What the bytes of a module's memory map say: nothing here knows how the module stands otherwise.
#pragma once

#include "sim/devices/optics/module_memory.h"

#include <array>
#include <cstdint>
#include <optional>

namespace kestro_sim::optical_readings {

using optics::management;
using optics::memory;

// In the order of the library's items.
enum class quantity : uint8_t { temperature, voltage, bias, tx_power, rx_power, laser_temperature, tec_current };
inline constexpr uint32_t quantities = 7;

// A page that the module lacks reads as 0.
uint32_t byte_at(const memory &map, uint8_t device, int page, uint32_t address);
uint32_t word_at(const memory &map, uint8_t device, int page, uint32_t address);

// Of the first device.
bool bit_at(const memory &map, int page, uint32_t address, uint32_t bit);

// Of the identifier.
management managed_by(const memory &map);

uint32_t lanes(const memory &map);
bool is_of_each_lane(quantity what);

// The measurements are up; a module that measures nothing has nothing to wait for.
bool is_ready(const memory &map);

bool measures(const memory &map);
bool measures(const memory &map, quantity what);

// In degrees Celsius, volts, mA, dBm and percent.
double measured(const memory &map, quantity what, uint32_t lane);

// High and low alarm, high and low warning.
std::array<double, 4> limits(const memory &map, quantity what);

// Bits 3 to 0: beyond which of the four.
uint32_t flags(const memory &map, quantity what, uint32_t lane);

// A bit per lane. Nothing where the map does not say: a module that measures nothing has pins for it.
std::optional<uint32_t> dark_lanes(const memory &map);
std::optional<uint32_t> failed_lanes(const memory &map);
std::optional<uint32_t> disabled_lanes(const memory &map);

uint32_t encoding(const memory &map);
bool is_linear(const memory &map);
bool has_rates(const memory &map);

// In Mbit/s, all lanes together, 0 where the map does not say; in nanometres, 0 on copper.
uint32_t mbit_per_s(const memory &map);
uint32_t nanometres(const memory &map);

// In metres.
struct reach {
    uint32_t om1;
    uint32_t om2;
    uint32_t om3;
    uint32_t om4;
    uint32_t sm;
    uint32_t copper;
};
reach distances(const memory &map);

} // namespace kestro_sim::optical_readings
