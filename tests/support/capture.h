// What a function prints on standard output.
#pragma once

#include <functional>
#include <string>

namespace kestro_tests {

// Runs the function with standard output redirected and gives every byte it printed.
std::string printed_by(const std::function<void()> &function);

} // namespace kestro_tests
