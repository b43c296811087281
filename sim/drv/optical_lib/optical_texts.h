// What a module's memory map says, in words.
#pragma once

#include "sim/drv/optical_lib/optical_readings.h"

#include <string>
#include <vector>

namespace kestro_sim::optical_texts {

using optics::memory;

// What the module is made for, of its compliance codes.
struct standard {
    optics::management of;
    uint32_t address; // in the identification
    uint8_t mask;
    uint8_t value;
    const char *name;
    uint32_t mode; // 0 copper, 1 single-mode, 2 multi-mode
    uint32_t mbit_per_s;
};

std::vector<standard> standards(const memory &map);

std::string connector(const memory &map);
std::string transceiver(const memory &map);
std::string distance(const memory &map);
std::string bit_rate(const memory &map);
std::string wavelength(const memory &map);
std::string diagnostics(const memory &map);
std::string vendor(const memory &map);
std::string part_number(const memory &map);
std::string serial_number(const memory &map);
std::string date(const memory &map);
std::string encoding(const memory &map);

// Registers by name, a line each.
std::string common_registers(const memory &map);

// The whole map.
std::string dump(const memory &map);

} // namespace kestro_sim::optical_texts
