// Reads scripts and recordings whole, and no more than is sensible.
#pragma once

#include <string>

namespace kestro_probe {

// Longer than any recording; a file without an end is noticed here.
constexpr size_t longest_input = size_t{64} << 20;

// A regular file or a pipe. fault: empty, or "NAME: what is wrong; what would be right".
std::string read_input(const std::string &name, std::string &fault);

} // namespace kestro_probe
