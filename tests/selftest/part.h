// One part of the self-test on its own: the driver calls it must make, every byte it must print, its result.
//
// The script is the driver probe's language and strict, as in the command tests. The names of the parts are those of
// selftest_part.cpp. Each run is made on the console and (in slow builds some,
// thoroughness.h) once more into a report buffer, which must hold the same.
#pragma once

#include <string>
#include <vector>

#include "tests/support/process.h"

namespace kestro_tests {

void expect_part(const std::string &name, const std::string &script, const std::string &lines, int result);

// The same with the board's files coming from a directory of the test.
void expect_part_on(const std::string &root, const std::string &name, const std::string &script,
                    const std::string &lines, int result);

// The part on a simulated board, with options of kestro_sim; the state is new unless an option names one.
process_result run_part(const std::vector<std::string> &options, const std::string &name);

// Lines of scripts: how many entries a node has, and an element of one of them.
std::string entry_count(const std::string &module, const std::string &node, int entries);
std::string no_entry_count(const std::string &module, const std::string &node, const std::string &code);
std::string element(const std::string &module, const std::string &node, int entry, const std::string &name,
                    const std::string &answer);

} // namespace kestro_tests
