// Power domains that are switched one by one, and the cards that one of them feeds.
#pragma once

#include "sim/core/board.h"
#include "sim/core/time.h"

#include <string>

namespace kestro_sim::power_domain {

// The interface numbers all domains that there are; a board has some of them. One is that of a card as a whole.
inline constexpr uint32_t domain_count = 34;
inline constexpr uint32_t card_power = 9;

// Before the board was made new, and longer ago than any warm-up takes.
inline constexpr int64_t long_ago = -3600 * nanoseconds_per_second;

inline constexpr reg on = reg::flag("on", "whether the domain has power").required().written();
inline constexpr reg since =
    reg::number("since", long_ago, INT64_MAX, "ns", "the board time at which it was switched on")
        .or_else(static_cast<uint64_t>(long_ago))
        .written();
inline constexpr reg until =
    reg::number("until", long_ago, INT64_MAX, "ns", "the board time at which it was switched off")
        .or_else(static_cast<uint64_t>(long_ago))
        .written();
inline constexpr reg warm_up =
    reg::number("warm_up", 0, 600000, "ms", "how long what it feeds takes to be ready").or_else(3000);
inline constexpr reg hold_up =
    reg::number("hold_up", 0, 60000, "ms", "how long what it feeds lives on its charge without it").or_else(500);
inline constexpr reg stuck = reg::flag("stuck", "whether its switch stays as it is").or_else(0);
inline constexpr device_family family =
    device_family{"sim_board", "power", "a power domain", {on, since, until, warm_up, hold_up, stuck}}.up_to(
        domain_count - 1);

// What has power already, or still lives on its charge, does not begin anew.
void switch_to(board &b, const device_of<family> &domain, uint32_t to);

// What the domain feeds has had power for as long as it takes.
bool is_ready(board &b, const device_of<family> &domain);

// The card in that place drives its line "card ok" itself: without a card, or without power, nothing does.
bool drives_card_ok(board &b, const std::string &place);

} // namespace kestro_sim::power_domain
