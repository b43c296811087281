// Driver libraries that a kind of board does without: its hardware has nothing for them, so its software leaves them
// out, and a module that opens one finds none.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim::lacking_library {

inline constexpr reg name = reg::text("name", 31, "its file without lib and .so").required().fixed();
inline constexpr device_family family{"sim_library", "lacking", "a driver library that the board does without", {name}};

} // namespace kestro_sim::lacking_library
