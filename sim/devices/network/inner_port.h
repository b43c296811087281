// Inner Ethernet ports, by which the boards of the chassis talk to each other over the links of the backplane. A port
// that is looped back, at its MAC or its PHY, has left its link: the other end is down.
#pragma once

#include "sim/core/register_space.h"
#include "sim/devices/network/ethernet_port.h"

namespace kestro_sim::inner_port {

inline constexpr reg mac_loop = reg::flag("mac_loop", "whether its MAC is looped back").or_else(0).written();
inline constexpr reg phy_loop = reg::flag("phy_loop", "whether its PHY is looped back").or_else(0).written();

inline constexpr device_family family{"sim_ethernet",
                                      "inner",
                                      "an inner Ethernet port",
                                      {mac_loop, phy_loop, ethernet_port::since, ethernet_port::negotiation,
                                       ethernet_port::linked, ethernet_port::looped, ethernet_port::seen,
                                       ethernet_port::bad_frames}};

using one = device_of<family>;

// Of the own board.
one find(board &b, uint32_t id);

bool is_up(board &b, const one &port);

// As told to a driver, who hears nothing less the next time.
ethernet_port::traffic read_traffic(board &b, const one &port);
std::string dump(board &b, const one &port, bool of_phy);

void set_mac_loop(board &b, const one &port, bool to);
void set_phy_loop(board &b, const one &port, bool to);

extern const register_space mac_registers;
extern const register_space phy_registers;

} // namespace kestro_sim::inner_port
