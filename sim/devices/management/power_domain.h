// Power domains that are switched one by one.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim::power_domain {

// The interface numbers all domains that there are; a board has some of them.
inline constexpr uint32_t domain_count = 34;

inline constexpr reg on = reg::flag("on", "whether the domain has power").required().written();
inline constexpr device_family family =
    device_family{"sim_board", "power", "a power domain", {on}}.up_to(domain_count - 1);

} // namespace kestro_sim::power_domain
