// Runs that leave nothing behind: they work on a copy of the state, which is removed when they have ended.
#pragma once

#include <filesystem>

namespace kestro_sim {

// Copies a state directory to a place of its own and sees to it that the copy goes when this process, the program that
// it becomes and all that this starts have ended. Throws launch_error.
std::filesystem::path copy_to_discard(const std::filesystem::path &state);

} // namespace kestro_sim
