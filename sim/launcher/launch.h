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

// The whole of kestro_sim: becomes kestro_test, or gives the exit status when there was nothing to run but the
// technician's work, or when that is impossible. The parts lie in `base`; empty: beside this program.
int run_launcher(int count, char **arguments, const std::filesystem::path &base = {});

} // namespace kestro_sim
