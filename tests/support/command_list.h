// Every sub-command of the program, as its own usage listings tell: what the sweeps run over and what must have tests.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace kestro_tests {

struct sub_command {
    std::string module;
    std::string name;
};

// What a failed check of the test framework calls it.
void PrintTo(const sub_command &command, std::ostream *out);

std::vector<std::string> all_modules();

// Made once for a build of the program. Throws when a help line leads to no sub-command, so that a new module cannot be
// left out by accident.
const std::vector<sub_command> &all_sub_commands();

// The command line on which a module lists its sub-commands: one that brings its driver up first has to know for what.
std::vector<std::string> words_that_list(const std::string &module);

// How many sub-commands a module has.
size_t rows_of(const std::string &module);

} // namespace kestro_tests
