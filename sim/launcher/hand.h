// What the bench technician does before a run, or without one.
#pragma once

#include "sim/launcher/options.h"

#include <filesystem>

namespace kestro_sim {

// Acts as the options say and prints what was asked for; throws launch_error.
void act_by_hand(const launch_options &options, const std::filesystem::path &merged,
                 const std::filesystem::path &state);

} // namespace kestro_sim
