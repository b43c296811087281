// Links of the backplane: each joins the inner ports of two boards.
#pragma once

#include "sim/core/board.h"

#include <optional>
#include <string>

namespace kestro_sim::ethernet_link {

inline constexpr reg slot_a =
    reg::number("slot_a", 1, 16, "", "the slot of the board at its first end").required().fixed();
inline constexpr reg port_a = reg::number("port_a", 0, 31, "", "the inner port of that board").required().fixed();
inline constexpr reg slot_b =
    reg::number("slot_b", 1, 16, "", "the slot of the board at its second end").required().fixed();
inline constexpr reg port_b = reg::number("port_b", 0, 31, "", "the inner port of that board").required().fixed();
inline constexpr reg speed = reg::number("speed", 10, 100000, "Mbit/s", "how fast it is").or_else(1000).fixed();
inline constexpr reg rate_a =
    reg::number("rate_a", 0, 1000000, "1/s", "how many frames the first end sends").or_else(0).fixed();
inline constexpr reg rate_b =
    reg::number("rate_b", 0, 1000000, "1/s", "how many frames the second end sends").or_else(0).fixed();
inline constexpr reg cut = reg::flag("cut", "whether it is cut").or_else(0);

inline constexpr device_family family{
    "sim_ethernet", "link", "a link of the backplane", {slot_a, port_a, slot_b, port_b, speed, rate_a, rate_b, cut}};

using one = device_of<family>;

// A link as one of its ends sees it.
struct view {
    one link;
    uint32_t far_slot;
    uint32_t far_port;
    uint32_t received; // frames a second
    uint32_t sent;
};

// Nothing for a port that leads nowhere.
std::optional<view> at(board &b, const std::string &place, uint32_t port);

} // namespace kestro_sim::ethernet_link
