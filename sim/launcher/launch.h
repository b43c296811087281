// From options to a running kestro_test: finds the parts, checks what was named, makes the board ready, sets the
// environment.
#pragma once

#include "sim/launcher/options.h"

#include <filesystem>
#include <optional>

namespace kestro_sim {

// Checks what was named, makes the chassis ready and sets the environment of this process for a run of the parts in
// `base`. Gives the program that is to be started; nothing when there was only the technician's work to do. Throws.
std::optional<std::filesystem::path> make_ready(const launch_options &options, const std::filesystem::path &base);

// Becomes kestro_test. Comes back when there was nothing to run but the technician's work, or by throwing.
void launch(const launch_options &options);

} // namespace kestro_sim
