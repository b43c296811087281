// What the Ethernet ports of all kinds share: what passes through a port in board time, and how that is counted.
//
// Frames pass while a port has its link. How long that was is kept ("linked"), and all that a port counts follows from
// it: the same mix of frames again and again, so that sizes, kinds and bytes always agree. What a driver sends itself
// comes on top. How far they have come is written down by each look at the counters, and before a driver or a
// technician changes what the link hangs on, at both of its ends: so nothing takes them back, and what one end has sent
// the other one has received.
#pragma once

#include "sim/core/board.h"
#include "sim/core/time.h"

#include <array>
#include <cstdint>
#include <span>

namespace kestro_sim::ethernet_port {

inline constexpr const char *lamp_names[]{"off", "on", "blinking", "link"};
inline constexpr uint32_t lamp_as_link = 3;

// Before the board was made new, and longer ago than any negotiation takes.
inline constexpr int64_t long_ago = -3600 * nanoseconds_per_second;

inline constexpr reg lamp = reg::choice("lamp", lamp_names, "what its lamp is to show").or_else(lamp_as_link).written();
inline constexpr reg since =
    reg::number("since", long_ago, INT64_MAX, "ns", "the board time at which its link last began")
        .or_else(static_cast<uint64_t>(long_ago))
        .written();
inline constexpr reg negotiation =
    reg::number("negotiation", 0, 600000, "ms", "how long its link takes to come up").or_else(2000);
inline constexpr reg linked =
    reg::number("linked", 0, INT64_MAX, "ns", "how long it had a link to another port while it counted")
        .or_else(0)
        .written();
inline constexpr reg looped =
    reg::number("looped", 0, INT64_MAX, "ns", "how long it was looped back while it counted").or_else(0).written();
inline constexpr reg seen =
    reg::number("seen", 0, INT64_MAX, "ns", "the board time up to which it has counted").or_else(0).written();
inline constexpr reg bad_frames =
    reg::number("bad_frames", 0, any_u32, "", "how many frames came with a wrong checksum").or_else(0).written();
inline constexpr reg receive_rate =
    reg::number("receive_rate", 0, 1000000, "1/s", "how many frames come in").or_else(0).fixed();
inline constexpr reg send_rate =
    reg::number("send_rate", 0, 1000000, "1/s", "how many frames the board sends").or_else(0).fixed();

// The link as it is: since when it has been up, or the port looped.
struct line {
    bool is_up = false;
    bool is_looped = false;
    int64_t from = long_ago;
};

// A second.
struct rates {
    uint32_t received;
    uint32_t sent;
};

// What one direction has counted. Each frame is of one kind and of one size, errors or not.
enum count : uint8_t { bytes, unicast, multicast, broadcast, tagged, up_to_64, counts = up_to_64 + 7 };
using tally = std::array<uint64_t, counts>;

uint64_t packets_of(const tally &counted);
void add(tally &to, const tally &more);

// A frame as the driver hands it over, without padding and checksum. Shorter ones are padded to 64 bytes.
tally tally_of_frame(std::span<const uint8_t> frame);

struct traffic {
    tally received;
    tally sent;
    uint64_t bad; // of those received
};

// What has passed by now. port: a device of a family with the registers above.
traffic traffic_by_now(board &b, const device &port, const line &now, const rates &per_second);

// Before anything about the link changes, and when the counters are told: notes how far they have come.
void settle(board &b, change &writes, const device &port, const line &now);

// For device_list::write_down: settles all ports of a family in the chassis. A port that lacks what its link hangs on,
// as a PHY that nothing describes, has counted nothing.
template <const device_family &Family>
void settle_all(board &b, void (*settle_one)(board &, change &, const device_of<Family> &)) {
    for (const pugi::xml_node place : b.described().chassis().children("place")) {
        for (const device_of<Family> &port : b.all_at<Family>(place.attribute("name").value())) {
            change writes;
            try {
                settle_one(b, writes, port);
            } catch (const refusal &) {
                continue;
            }
            b.commit(writes);
        }
    }
}

// The counters begin anew.
void clear(board &b, change &writes, const device &port);

// 0 dark, 1 lit, 2 blinking.
uint32_t lamp_shows(board &b, const device &port, const line &now);

// How many nanoseconds a frame takes on the wire.
int64_t time_on_wire(size_t frame_bytes, uint32_t mbit_per_s);

} // namespace kestro_sim::ethernet_port
