// Cluster ports, by which chassis are joined to a cluster. Their other ends are in other chassis.
#pragma once

#include "sim/devices/network/ethernet_port.h"

namespace kestro_sim::cluster_port {

// Speeds that a port can: bit 0 for 1000, bit 1 for 10000 Mbit/s.
inline constexpr uint32_t all_speeds = 3;

inline constexpr reg partner =
    reg::bits("partner", all_speeds, "what the other end can: 0x1 1000, 0x2 10000 Mbit/s; 0 when nothing is plugged in")
        .required();
inline constexpr reg half_duplex = reg::flag("half_duplex", "whether the other end can half duplex alone").or_else(0);
inline constexpr reg phy_fault = reg::flag("phy_fault", "whether its PHY fails its self-test").or_else(0);
inline constexpr reg shut = reg::flag("shut", "whether it is shut").or_else(0).written();
inline constexpr reg speed =
    reg::number("speed", 0, 10000, "Mbit/s", "the speed that was set; 0 is negotiated").or_else(0).written();

inline constexpr device_family family{"sim_ethernet",
                                      "cluster",
                                      "a cluster port",
                                      {partner, half_duplex, phy_fault, shut, speed, ethernet_port::lamp,
                                       ethernet_port::since, ethernet_port::negotiation, ethernet_port::linked,
                                       ethernet_port::looped, ethernet_port::seen, ethernet_port::bad_frames,
                                       ethernet_port::receive_rate, ethernet_port::send_rate}};

using one = device_of<family>;

// Of the own board.
one find(board &b, uint32_t id);

bool is_up(board &b, const one &port);

// In Mbit/s; 0 without a link.
uint32_t present_speed(board &b, const one &port);
void set_speed(board &b, const one &port, uint32_t mbit_per_s);

bool is_full_duplex(board &b, const one &port);
void set_shut(board &b, const one &port, bool to);

ethernet_port::traffic read_traffic(board &b, const one &port);

void reset_mac(board &b, const one &port);

// The speed is negotiated again.
void reset_phy(board &b, const one &port);

} // namespace kestro_sim::cluster_port
