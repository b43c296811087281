// Ethernet PHYs: chips with one or more ports, each a device of its own on the SMI bus with the 32 registers of
// clause 22.
//
// A port keeps what stands in its registers; link and speed follow from them, from what is plugged in at the other end,
// and from board time: after whatever takes the link down it comes up again when the two ends have found each other.
#pragma once

#include "sim/core/board.h"
#include "sim/core/register_space.h"
#include "sim/core/time.h"

#include <string>
#include <vector>

namespace kestro_sim {

namespace phy_chip {
inline constexpr reg identifier =
    reg::bits("identifier", any_u32, "what the identifier registers of its ports must say").required().fixed();
inline constexpr device_family family{"sim_phy", "chip", "a PHY chip", {identifier}};
} // namespace phy_chip

namespace phy {

inline constexpr const char *medium_names[]{"copper", "fibre"};

// Speeds that a port or its other end can: bit 0 for 10, bit 1 for 100, bit 2 for 1000 Mbit/s.
inline constexpr uint32_t all_speeds = 7;

// Registers 0, 4 and 9 after a reset: everything is negotiated.
inline constexpr uint32_t control_reset = 0x1140;
inline constexpr uint32_t advertise_reset = 0x01E1;
inline constexpr uint32_t gigabit_reset = 0x0300;

// Before the board was made new, and longer ago than any negotiation takes.
inline constexpr int64_t long_ago = -3600 * nanoseconds_per_second;

inline constexpr reg chip = reg::number("chip", 0, any_u32, "", "the chip that it is part of").required().fixed();
inline constexpr reg address = reg::number("address", 0, 31, "", "its address on the SMI bus").required().fixed();
inline constexpr reg media = reg::bits("media", 3, "the media it has, bit N for medium N").or_else(1).fixed();
inline constexpr reg identifier = reg::bits("identifier", any_u32, "what its two identifier registers say").required();
inline constexpr reg partner =
    reg::bits("partner", all_speeds,
              "what the other end can: 0x1 10, 0x2 100, 0x4 1000 Mbit/s; 0 when nothing is plugged in")
        .required();
inline constexpr reg negotiation =
    reg::number("negotiation", 0, 600000, "ms", "how long its link takes to come up").or_else(2000);
inline constexpr reg medium = reg::choice("medium", medium_names, "which medium it uses").or_else(0).written();
inline constexpr reg control =
    reg::bits("control", 0xFFFF, "its control register, without the bits that clear themselves")
        .or_else(control_reset)
        .written();
inline constexpr reg advertise =
    reg::bits("advertise", 0xFFFF, "its advertisement register").or_else(advertise_reset).written();
inline constexpr reg gigabit =
    reg::bits("gigabit", 0xFFFF, "its gigabit control register").or_else(gigabit_reset).written();
inline constexpr reg nick = reg::bits("nick", 0xFFFF, "the driver's mark; 0 after a reset").or_else(0).written();
inline constexpr reg offered = reg::bits("offered", all_speeds, "the speeds that it offered when its link last began")
                                   .or_else(all_speeds)
                                   .written();
inline constexpr reg since =
    reg::number("since", long_ago, INT64_MAX, "ns", "the board time at which its link last began")
        .or_else(static_cast<uint64_t>(long_ago))
        .written();
inline constexpr reg link_lost =
    reg::flag("link_lost", "whether the link was down since the status register was read").or_else(0).written();

inline constexpr device_family family{"sim_phy",
                                      "port",
                                      "a PHY port",
                                      {chip, address, media, identifier, partner, negotiation, medium, control,
                                       advertise, gigabit, nick, offered, since, link_lost}};

using one = device_of<family>;

// Of the own board, whose driver knows no other, or of any place.
one find(board &b, uint32_t chip_id, uint32_t at_address);
one find_at(board &b, const std::string &place, uint32_t chip_id, uint32_t at_address);
std::vector<one> ports_of(board &b, uint32_t chip_id);

// All registers as after a reset, and the link begins anew. The medium stays: it is strapped to pins.
void reset(board &b, const one &port);

// In Mbit/s; 0 without a link. Loopback is a link to itself.
uint32_t speed(board &b, const one &port);
bool is_up(board &b, const one &port);

// The speed as it was set; 0 is negotiated. One that the control register cannot say is refused.
uint32_t configured_speed(board &b, const one &port);
void set_speed(board &b, const one &port, uint32_t mbit_per_s);

bool is_on(board &b, const one &port);
void switch_to(board &b, const one &port, bool on);

bool is_looped(board &b, const one &port);
void set_loopback(board &b, const one &port, bool looped);

void set_medium(board &b, const one &port, uint32_t to);

// The driver's mark on all ports of a chip.
void leave_mark(board &b, uint32_t chip_id);
bool bears_mark(board &b, uint32_t chip_id);

extern const register_space registers;

} // namespace phy

} // namespace kestro_sim
