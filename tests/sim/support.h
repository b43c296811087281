// Boards and driver calls for the tests of the simulated chassis.
#pragma once

#include "sim/core/description.h"
#include "tests/support/process.h"

#include <initializer_list>
#include <memory>
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

// A chassis of its own, seen from one seat: what stands behind --board, and a state directory that was made for it.
struct test_board {
    std::string word;
    std::string state;
    std::string description; // the merged chassis
    std::string seat;        // the place
};

// The directory of the delivered chassis.
std::string chassis_dir();

// Makes a new state for that word behind --board; fails the test when that does not work.
test_board new_board(const std::string &word);

// A new state of the delivered chassis, seen from a seat by name.
test_board new_delivered(const std::string &seat);

// A board whose state is not made yet.
test_board board_to_make(const std::string &word, const std::string &state);

// The same state from another seat of the delivered chassis.
test_board seen_from(const test_board &board, const std::string &seat);

// The whole chassis, merged, as the word behind --board gives it.
std::unique_ptr<kestro_sim::description> read_board(const std::string &word);

// The place of a seat of the delivered chassis, by its name.
std::string place_of_seat(const std::string &seat);

// A copy of the delivered chassis whose default seat this is, with one part of one file changed: the first file that
// has the part, the seat's kind of board before the parts that boards share, and in it the first such part. The file
// is left in `changed`.
std::string changed_chassis(const std::string &seat, const std::string &part, const std::string &by);
extern std::string changed_file;

test_board new_changed(const std::string &seat, const std::string &part, const std::string &by);

// Where an element of a description stands: "self/sim_board/corner/1/status", "slot5/sim_board/unit/0/card_fault".
struct altered {
    std::string path;
    std::string value; // empty takes the element away
};

// A new chassis like the delivered one, but for these elements.
test_board new_altered(const std::string &name, std::initializer_list<altered> alterations);

// What the drivers of that board need to be told in the environment.
std::vector<std::string> environment_of(const test_board &board);

// Makes the calls by kestro_call in one process, without the launcher, which would refuse a damaged state: lines as
// "drv_slot_get_type(slot_id=1)". On standard output are the answers, as "0x0 type=7".
process_result call_drivers(const std::vector<std::string> &lines, const std::vector<std::string> &environment);
process_result call_drivers(const test_board &board, const std::vector<std::string> &lines);

// The same, where nothing is said on standard error.
std::string answers(const test_board &board, const std::vector<std::string> &lines);

// What the launcher alone prints with these options (--list, --get); it must succeed.
std::string launcher_prints(std::vector<std::string> options);

// Makes what kestro_call cannot, by odd_calls.
process_result odd_calls(const test_board &board, const std::vector<std::string> &words);

// An area as kestro_call shows and takes it: "[4d 41 43 00]". The text, and zeros up to that length.
std::string bytes(const std::string &text, size_t length = 0);

// What prepare_board says; empty when the board is ready.
std::string prepare_says(const std::string &word, const std::string &state, bool reset = false);

// The text with one part of it changed; the part must be there.
std::string replaced(std::string text, const std::string &part, const std::string &by);

} // namespace kestro_tests
