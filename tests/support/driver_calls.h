// Driver calls without kestro_test: kestro_call on a simulated board.
#pragma once

#include "tests/support/process.h"

#include <string>
#include <vector>

namespace kestro_tests {

// Makes the calls in one process. options: of the launcher, such as --board and --state.
process_result make_calls(const std::vector<std::string> &options, const std::vector<std::string> &lines);

// What is printed: a line per call with its result. Nothing on standard error; calls may fail.
std::string calls_of(const std::vector<std::string> &options, const std::vector<std::string> &lines);

// What was printed, without the calls themselves: "0x0 num=4\n". Comments (events, areas that were overrun) stay.
std::string without_calls(const std::string &printed);

// What is printed, without the calls themselves.
std::string answers_of(const std::vector<std::string> &options, const std::vector<std::string> &lines);

} // namespace kestro_tests
