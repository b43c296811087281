// Boards and driver calls for the tests of the simulated chassis.
#pragma once

#include "tests/support/process.h"

#include <optional>
#include <string>
#include <vector>

namespace kestro_tests {

// A board of its own: a description and a state directory that was made for it.
struct test_board {
    std::string description;
    std::string state;
};

// Boards that are delivered, by name.
std::string delivered_board(const std::string &name);

// Makes a new state for that description file; fails the test when that does not work.
test_board new_board(const std::string &description);

// Runs the calls in one process on that board and gives what they printed.
process_result call_drivers(const test_board &board, const std::vector<std::string> &calls);
std::string calls_print(const test_board &board, const std::vector<std::string> &calls);

// What prepare_board says; empty when the board is ready.
std::string prepare_says(const std::string &description, const std::string &state, bool reset = false);

// The text with one part of it changed; the part must be there.
std::string replaced(std::string text, const std::string &part, const std::string &by);

} // namespace kestro_tests
