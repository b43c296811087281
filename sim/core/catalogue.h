// All device families, register spaces and diagnose commands there are. Nothing registers itself: each file in
// sim/devices/ has a function named after it, as devices_of_rail() in rail.cpp, and the list of these functions is made
// of the list of files.
#pragma once

#include "sim/core/family.h"
#include "sim/core/register_space.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestro_sim {

// What a device tells of itself when the diagnosis asks in these words: "rtc info".
struct diag_command {
    const char *words;
    std::string (*answer)(board &);
};

// What one device file has.
struct device_list {
    std::span<const device_family *const> families;
    std::span<const register_space *const> spaces;
    std::span<const diag_command> commands{};
    // Writes down what has come of the registers as they are, before the technician changes any and behind each change:
    // frames counted, modules plugged in.
    void (*write_down)(board &){nullptr};
};

std::span<const device_family *const> all_families();
std::span<const register_space *const> all_spaces();
std::span<const diag_command> all_diag_commands();

// What hangs on how registers have been, at all devices.
void write_down_everything(board &b);

// Nothing for a node that no family has.
const device_family *find_family(std::string_view module, std::string_view node);

} // namespace kestro_sim
