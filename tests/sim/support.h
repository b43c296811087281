// Boards and driver calls for the tests of the simulated chassis.
#pragma once

#include "tests/support/process.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace kestro_tests {

// What a call prints that answers nothing.
inline const std::string ok = "0x0\n";
inline const std::string not_supported = "0x811101a4\n";
inline const std::string null_pointer = "0x81110101\n";
inline const std::string no_such_instance = "0x81110102\n";
inline const std::string no_such_device = "0x81110103\n";
inline const std::string bad_value = "0x81110106\n";
inline const std::string too_small = "0x81110108\n";

// A board of its own: a description and a state directory that was made for it.
struct test_board {
    std::string description;
    std::string state;
};

// Boards that are delivered, by name.
std::string delivered_board(const std::string &name);

// Makes a new state for that description file; fails the test when that does not work.
test_board new_board(const std::string &description);

// A new state of a delivered board.
test_board new_delivered(const std::string &name);

// A new board from the delivered description with one part of it changed. Of several such parts the first is changed.
test_board new_changed(const std::string &name, const std::string &part, const std::string &by);

// Where an element of a description stands: "self/sim_board/corner/1/status".
struct altered {
    std::string path;
    std::string value; // empty takes the element away
};

// A new board like the delivered one, but for these elements.
test_board new_altered(const std::string &name, std::initializer_list<altered> alterations);

// Runs the calls in one process on that board and gives what they printed.
process_result call_drivers(const test_board &board, const std::vector<std::string> &calls);
std::string calls_print(const test_board &board, const std::vector<std::string> &calls);

// The same by kestro_call: lines as "drv_slot_get_type(slot_id=1)", answers as "0x0 type=7".
std::string answers(const test_board &board, const std::vector<std::string> &lines);

// What prepare_board says; empty when the board is ready.
std::string prepare_says(const std::string &description, const std::string &state, bool reset = false);

// The text with one part of it changed; the part must be there.
std::string replaced(std::string text, const std::string &part, const std::string &by);

} // namespace kestro_tests
