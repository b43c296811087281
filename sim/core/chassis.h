// The chassis from the files that people write: one for the chassis, one per kind of board and card, parts that several
// share, and a user's own board or chassis. docs/chassis.md shows the form of each.
#pragma once

#include "sim/core/description.h"

#include <filesystem>
#include <memory>
#include <string>

namespace kestro_sim {

// What the word behind --board means.
struct board_choice {
    std::filesystem::path delivered; // the directory of the delivered chassis
    std::filesystem::path chassis_file;
    std::filesystem::path board_file; // a user's own board that is put into the chassis; empty without
    std::string chassis;              // its name
    std::string seat;                 // the place from which the chassis is seen
};

// A word with a slash is a file; one without is first the name of a seat, then a file in this directory. Throws
// description_error.
board_choice choose_board(const std::string &word, const std::filesystem::path &delivered);

// Reads, merges and checks the whole chassis; throws description_error.
std::unique_ptr<description> read_chassis(const board_choice &choice);

} // namespace kestro_sim
