// The command lines of the command tests with their scripts: lines that are known to reach their driver calls.
#pragma once

#include <string>
#include <vector>

#include "tests/support/command_list.h"

namespace kestro_tests {

struct test_line {
    std::vector<std::string> words;
    std::string script;
};

// While this tells so the command tests run nothing: each line goes into the list that is being made.
bool lists_lines();
void list_line(const std::string &line, const std::string &script);

// Those of one sub-command, each once, in the order of the tests.
std::vector<test_line> test_lines_of(const sub_command &command);

} // namespace kestro_tests
