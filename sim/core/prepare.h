// Makes a board ready to be run: what the launcher does before it becomes kestro_test.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace kestro_sim {

// Checks the board description and makes the store in the state directory when there is none yet; reset makes the
// board new. Gives nothing when the board is ready, else what is wrong, naming file and line, and what would be right.
std::optional<std::string> prepare_board(const std::filesystem::path &description,
                                         const std::filesystem::path &state_dir, bool reset);

} // namespace kestro_sim
