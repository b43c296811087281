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

// Throws when a help line leads to no sub-command, so that a new module cannot be left out by accident.
std::vector<sub_command> sub_commands_of(const std::string &module);
std::vector<sub_command> all_sub_commands();

} // namespace kestro_tests
