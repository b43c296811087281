// From options to a running kestro_test: finds the parts, checks what was named, makes the board ready, sets the
// environment.
#pragma once

#include "sim/launcher/options.h"

#include <filesystem>

namespace kestro_sim {

// Checks what was named, makes the board ready and sets the environment of this process for a run of the parts in
// `base`. Gives the program that is to be started; throws launch_error.
std::filesystem::path make_ready(const launch_options &options, const std::filesystem::path &base);

// Becomes kestro_test; comes back only by throwing launch_error.
[[noreturn]] void launch(const launch_options &options);

} // namespace kestro_sim
