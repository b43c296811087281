// Packets on their way to a management port, and those that wait there until somebody takes them. They stand in the
// board's state with the moment of their arrival, so that one run may send and the next one receive.
#pragma once

#include "sim/core/board.h"
#include "sim/core/time.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestro_sim::packet_ring {

// What a frame holds without its checksum, at most.
inline constexpr uint32_t longest = 1514;

// Per port.
inline constexpr uint32_t places = 4;

inline constexpr reg length =
    reg::number("length", 0, longest, "B", "how long its packet is; 0 when it is free").or_else(0).written();
inline constexpr reg arrival =
    reg::number("arrival", 0, INT64_MAX, "ns", "the board time at which its packet arrives").or_else(0).written();
inline constexpr reg order =
    reg::number("order", 0, INT64_MAX, "", "how many packets came to the port before").or_else(0).written();
inline constexpr reg counted = reg::flag("counted", "whether the port has counted its packet").or_else(0).written();

inline constexpr device_family family{"sim_ethernet",
                                      "packet",
                                      "a place for a packet, by four times its port and its number there",
                                      {length, arrival, order, counted}};

using one = device_of<family>;

struct packet {
    one place;
    std::vector<uint8_t> bytes;
    int64_t arrival;
    bool is_counted;
};

// On their way or waiting, in the order of their sending.
std::vector<packet> all(board &b, const std::string &board_place, uint32_t port);

// Of those that are there already the one that has waited longest.
std::optional<packet> first_waiting(board &b, const std::string &board_place, uint32_t port,
                                    const std::function<bool(const packet &)> &is_there);

// The caller has made room.
void append(board &b, change &writes, const std::string &board_place, uint32_t port, std::span<const uint8_t> bytes,
            int64_t arrives);

void take(board &b, change &writes, const packet &which);
void note_counted(board &b, change &writes, const packet &which);

} // namespace kestro_sim::packet_ring
