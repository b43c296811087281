// Management Ethernet ports, on the front of a main processing unit: a MAC in front of a port of the board's PHY. Link,
// speed, medium and shut-down are the PHY's; packets are the MAC's.
#pragma once

#include "sim/core/mac_area.h"
#include "sim/core/register_space.h"
#include "sim/devices/network/ethernet_port.h"
#include "sim/devices/network/packet_ring.h"
#include "sim/devices/network/phy.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestro_sim {

namespace management_port {

inline constexpr reg phy_port = reg::number("phy_port", 0, any_u32, "", "the PHY port behind it").required().fixed();
inline constexpr reg mac_type =
    reg::number("mac_type", 0, mac_type_max, "", "the type of MAC addresses that it has one of").required().fixed();
inline constexpr reg in_use = reg::flag("in_use", "whether its driver was brought up").or_else(1).written();
inline constexpr reg joined =
    reg::flag("joined", "whether it is joined to the switch of the board").or_else(1).written();
inline constexpr reg active =
    reg::flag("active", "whether it is told to be the port in use of the active board").or_else(0).written();
inline constexpr reg mac_loop = reg::flag("mac_loop", "whether its MAC is looped back").or_else(0).written();
inline constexpr reg echo =
    reg::number("echo", 0, 1000000, "us", "how long the other end takes to send back a packet; 0 when it does not")
        .or_else(0);
inline constexpr reg dropped_packets =
    reg::number("dropped_packets", 0, INT64_MAX, "", "how many packets were dropped before anybody took them")
        .or_else(0)
        .written();
inline constexpr reg dropped_bytes =
    reg::number("dropped_bytes", 0, INT64_MAX, "B", "the bytes of these packets").or_else(0).written();

inline constexpr device_family family{"sim_ethernet",
                                      "management",
                                      "a management Ethernet port",
                                      {phy_port, mac_type, in_use, joined, active, mac_loop, echo, dropped_packets,
                                       dropped_bytes, ethernet_port::lamp, ethernet_port::linked, ethernet_port::looped,
                                       ethernet_port::seen, ethernet_port::bad_frames, ethernet_port::receive_rate,
                                       ethernet_port::send_rate}};

using one = device_of<family>;

// Of the own board.
one find(board &b, uint32_t id);
phy::one phy_of(board &b, const one &port);

bool is_up(board &b, const one &port);
// In Mbit/s; 0 without a link. A loop at the MAC has one of its own, in which the PHY has no say.
uint32_t speed(board &b, const one &port);
bool negotiates(board &b, const one &port);

// What a driver begins with: nothing counted, nothing waiting. The link stays as it is.
void bring_up(board &b, const one &port);
void take_down(board &b, const one &port);

// Refuses (not_ready) a port whose driver is not up.
void require_in_use(board &b, const one &port);

void set_shut(board &b, const one &port, bool to);

// Refuses (not_ready) a port without a link.
void send(board &b, const one &port, std::span<const uint8_t> packet);

bool has_packet(board &b, const one &port);
// Nothing when none waits.
std::optional<std::vector<uint8_t>> take_packet(board &b, const one &port);

struct traffic {
    ethernet_port::tally received;
    ethernet_port::tally sent;
    uint64_t bad;
    uint64_t dropped_packets;
    uint64_t dropped_bytes;
};
traffic read_traffic(board &b, const one &port);

mac_address address_of(board &b, const one &port);

// Nothing wrong gives true; the text says what was found.
bool test_phy(board &b, const one &port, std::string &found);

uint32_t read_register(board &b, const one &port, bool of_phy, uint32_t address);
void write_register(board &b, const one &port, bool of_phy, uint32_t address, uint32_t value);
std::string dump(board &b, const one &port, bool of_phy);

extern const register_space mac_registers;

} // namespace management_port

// What drivers sent and received themselves, beside the traffic of the board.
namespace own_frames {

inline constexpr reg bytes = reg::number("bytes", 0, INT64_MAX, "B", "their bytes").or_else(0).written();
inline constexpr reg unicast = reg::number("unicast", 0, INT64_MAX, "", "how many went to one").or_else(0).written();
inline constexpr reg multicast =
    reg::number("multicast", 0, INT64_MAX, "", "how many went to several").or_else(0).written();
inline constexpr reg broadcast =
    reg::number("broadcast", 0, INT64_MAX, "", "how many went to all").or_else(0).written();
inline constexpr reg tagged = reg::number("tagged", 0, INT64_MAX, "", "how many have a VLAN tag").or_else(0).written();
inline constexpr reg up_to_64 = reg::number("up_to_64", 0, INT64_MAX, "", "how many of 64 bytes").or_else(0).written();
inline constexpr reg up_to_127 =
    reg::number("up_to_127", 0, INT64_MAX, "", "how many of up to 127").or_else(0).written();
inline constexpr reg up_to_255 =
    reg::number("up_to_255", 0, INT64_MAX, "", "how many of up to 255").or_else(0).written();
inline constexpr reg up_to_511 =
    reg::number("up_to_511", 0, INT64_MAX, "", "how many of up to 511").or_else(0).written();
inline constexpr reg up_to_1023 =
    reg::number("up_to_1023", 0, INT64_MAX, "", "how many of up to 1023").or_else(0).written();
inline constexpr reg up_to_1518 =
    reg::number("up_to_1518", 0, INT64_MAX, "", "how many of up to 1518").or_else(0).written();
inline constexpr reg longer = reg::number("longer", 0, INT64_MAX, "", "how many longer ones").or_else(0).written();

inline constexpr device_family family{"sim_ethernet",
                                      "own_frames",
                                      "frames of drivers, by twice their port: received, then sent",
                                      {bytes, unicast, multicast, broadcast, tagged, up_to_64, up_to_127, up_to_255,
                                       up_to_511, up_to_1023, up_to_1518, longer}};

} // namespace own_frames

} // namespace kestro_sim
