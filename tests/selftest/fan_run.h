// One test of fan trays on its own: as expect_part, and each run on a new board, whose clock begins with a whole
// second.
#pragma once

#include <string>

namespace kestro_tests {

void expect_fan_part(const std::string &name, const std::string &script, const std::string &lines, int result);

} // namespace kestro_tests
