// Calls of the board families, and boards that differ in one place from a delivered one.
#pragma once

#include "tests/sim/support.h"

#include <initializer_list>

namespace kestro_tests {

inline const std::string ok = "0x0\n";
inline const std::string not_supported = "0x811101a4\n";
inline const std::string null_pointer = "0x81110101";
inline const std::string no_such_instance = "0x81110102\n";
inline const std::string no_such_device = "0x81110103\n";
inline const std::string bad_value = "0x81110106\n";
inline const std::string too_small = "0x81110108\n";

// What the calls print, each in the same process on that board.
std::string board_calls_print(const test_board &board, const std::vector<std::string> &calls);

// A new state of a delivered board.
test_board fresh(const std::string &name);

// Where an element of a description stands: "self/sim_board/corner/1/status".
struct altered {
    std::string path;
    std::string value; // empty takes the element away
};

// A new board like the delivered one, but for these elements.
test_board fresh_with(const std::string &name, std::initializer_list<altered> alterations);

} // namespace kestro_tests
