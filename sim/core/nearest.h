// Which of several names somebody may have meant.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kestro_sim {

// The first of those that take the fewest characters to insert, leave out or change; empty when there is no name.
std::string nearest(std::string_view word, std::span<const std::string> names);

// The same, but empty when none is anything like it.
std::string nearest_name(std::string_view word, std::span<const std::string> names);

// "the nearest is 'x'", or all of them when none is near.
std::string suggestion(std::string_view word, std::span<const std::string> names);

} // namespace kestro_sim
