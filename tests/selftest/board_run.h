// Whole-board runs: all sections of the self-test, one after the other.
#pragma once

#include <string>
#include <vector>

#include "tests/support/process.h"

namespace kestro_tests {

// The self-test on a simulated board, on the virtual clock.
process_result run_board(std::vector<std::string> options);

// The banners of a run, in order, as they are printed.
std::string banners_of(const std::string &output);

// What a run printed behind the banner of a section, up to the next one or the dispatcher's lines.
std::string section_of(const std::string &output, const std::string &name);

// A root directory whose label file holds this text.
std::string root_with_label(const std::string &label);

} // namespace kestro_tests
