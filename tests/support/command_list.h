// Every sub-command of the program, as its own usage listings tell: what the sweeps run over and what must have tests.
#pragma once

#include <string>
#include <vector>

namespace kestro_tests {

struct sub_command {
    std::string module;
    std::string name;
};

std::vector<std::string> all_modules();

// Made once for a build of the program. Throws when a help line leads to no sub-command, so that a new module cannot be
// left out by accident.
const std::vector<sub_command> &all_sub_commands();

// How many sub-commands a module has.
size_t rows_of(const std::string &module);

} // namespace kestro_tests
