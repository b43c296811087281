// Lists that cost many runs to make, kept in the build directory for the other test programs of this build.
#pragma once

#include <functional>
#include <string>

namespace kestro_tests {

// The content of the list of that name; made anew when it is older than the program it was made from. Of several test
// programs at once one makes it.
std::string cached(const std::string &name, const std::string &program, const std::function<std::string()> &make);

} // namespace kestro_tests
