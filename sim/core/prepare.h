// Makes the chassis ready to be run: what the launcher does before it becomes kestro_test. Everything here throws what
// is wrong, naming file and line, and what would be right.
#pragma once

#include "sim/core/chassis.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kestro_sim {

// Checks the description and makes the store in the state directory when there is none yet; reset makes all boards new.
// Gives the merged chassis, a file in the state directory that runs read.
std::filesystem::path prepare_board(const board_choice &choice, const std::filesystem::path &state_dir, bool reset);

// Where the merged chassis of that choice is kept.
std::filesystem::path merged_file(const board_choice &choice, const std::filesystem::path &state_dir);

// The driver libraries that the board at that place does without.
std::vector<std::string> lacking_libraries(const std::filesystem::path &merged, const std::string &seat);

// What the technician pulls out and plugs in, by places; pulling comes first.
struct refitting {
    std::vector<std::string> pull;
    std::vector<std::string> plug;
};

void refit(const std::filesystem::path &merged, const std::filesystem::path &state_dir, const refitting &wanted);

// A board that is pulled out runs nothing. Tells whether a watchdog is on in the chassis.
bool require_fitted(const std::filesystem::path &state_dir, const std::string &seat);

// A run begins on a board that has been reset by now, if its watchdog bit. Tells whether one of its own is on.
bool settle_before_run(const std::filesystem::path &merged, const std::filesystem::path &state_dir,
                       const std::string &seat);

} // namespace kestro_sim
