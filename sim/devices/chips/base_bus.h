// The I2C buses of the base board as the base board numbers them: by bus, channel of the bus's switch, and address.
// The chips there are those of bus_chips.h.
#pragma once

#include "sim/devices/chips/bus_chips.h"

namespace kestro_sim::base_bus {

inline constexpr reg bus = reg::number("bus", 0, any_u32, "", "the bus that it is on").required().fixed();
inline constexpr reg channel =
    reg::number("channel", 0, 65535, "", "the channel of the bus's switch that it is behind").required().fixed();
inline constexpr reg slave_addr = reg::bits("slave_addr", 0x3FF, "its address there").required().fixed();
inline constexpr reg slave_addr_width =
    reg::number("slave_addr_width", 7, 10, "bit", "how wide that address is").or_else(7).fixed();
inline constexpr reg reg_addr_width =
    reg::number("reg_addr_width", 8, 32, "bit", "how wide the addresses of its registers are").or_else(8).fixed();
inline constexpr reg chip =
    reg::number("chip", 0, any_u32, "", "its number among the chips on the I2C buses").required().fixed();
inline constexpr device_family family{"sim_basebus",
                                      "chip",
                                      "a chip on a bus of the base board",
                                      {bus, channel, slave_addr, slave_addr_width, reg_addr_width, chip}};

struct request {
    uint32_t bus;
    uint32_t channel;
    uint32_t slave_addr;
    uint32_t slave_addr_width;
    uint32_t reg_addr_width;
    uint32_t offset;
};

// Refuses an unknown bus or channel (no_such_device), an address without an answer (not_ready), a width that is none or
// not the chip's and an address beyond its width (bad_value), a register beyond that (out_of_range).
i2c_chip::one find(board &b, const std::string &place, const request &wanted);

} // namespace kestro_sim::base_bus
