// Finds what a mistyped name was meant to be.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kestro_probe {

// How many characters have to be put in, taken out or replaced to make one word of the other.
size_t edit_distance(std::string_view a, std::string_view b);

// The known names that come closest, best first, at most three: "'num'" or "'num' or 'sum'"; empty when none is known.
std::string nearest_names(std::string_view wanted, const std::vector<std::string_view> &known);

} // namespace kestro_probe
