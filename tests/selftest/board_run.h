// Whole-board runs: what the self-test prints around the section under test.
#pragma once

#include <string>

#include "tests/support/command.h"

namespace kestro_tests {

// The sections of which a test says what they do; the others only print their banners.
struct board_lines {
    std::string barcode;
    std::string elabel;
    std::string mac;
    std::string behind_msc; // the banners of a master or a slave board
};

// Everything that `board_test board_onekey_test` prints, timing lines included.
std::string board_output(const board_lines &lines);

// A run with a strict script, the board's files coming from a directory of the test, and these lines.
void expect_board_run(const std::string &script, const std::string &root, const board_lines &lines);

// A root directory whose label file holds this text.
std::string root_with_label(const std::string &label);

// Script and lines of a section that ends at once, for the tests of the other sections.
struct short_section {
    std::string script;
    std::string lines;
};

extern const short_section no_barcode;
extern const short_section no_elabel;
extern const short_section no_mac;
extern const std::string no_msc_state;

} // namespace kestro_tests
