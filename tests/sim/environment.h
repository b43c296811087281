// Calls of the slot, voltage, scaling, lamp and reset drivers, and the result codes that they refuse with.
#pragma once

#include "tests/sim/support.h"

namespace kestro_tests {

inline const std::string ok = "0x0\n";
inline const std::string not_supported = "0x811101a4\n";
inline const std::string null_pointer = "0x81110101\n";
inline const std::string no_such_instance = "0x81110102\n";
inline const std::string no_such_device = "0x81110103\n";
inline const std::string bad_value = "0x81110106\n";
inline const std::string too_small = "0x81110108\n";

test_board new_delivered(const std::string &name);

// A new board from the delivered description with one part of it changed. Of several such parts the first is changed.
test_board new_changed(const std::string &name, const std::string &part, const std::string &by);

// Runs the calls in one process and gives what they printed.
std::string drivers_say(const test_board &board, const std::vector<std::string> &calls);

} // namespace kestro_tests
