// The order in which a part of the self-test calls the driver of power supplies.
#pragma once

#include <string>
#include <vector>

namespace kestro_tests {

// Operations without drv_power_, each with its type where it has one, and the value behind that where one is set:
// "init", "get_property 21", "set_property 5 69".
void expect_calls(const std::string &name, const std::string &script, const std::vector<std::string> &calls);

} // namespace kestro_tests
