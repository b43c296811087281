// The backplane of the chassis, and the ports by which main processing units read it.
#pragma once

#include "sim/core/board.h"
#include "sim/core/finding.h"

namespace kestro_sim {

namespace backplane {

// The pins that identify it come twice, straight and inverted, so that one that is stuck shows.
inline constexpr uint32_t pin_count = 8;

inline constexpr reg type = reg::bits("type", any_u32, "the type of backplane").required();
inline constexpr reg pcb_ver = reg::bits("pcb_ver", 0xFFFF, "the version of its printed circuit board").required();
inline constexpr reg serdes_speed =
    reg::number("serdes_speed", 0, 1000000, "Mbit/s", "what its traces are made for").required();
inline constexpr reg id_pins = reg::bits("id_pins", 0xFF, "the pins that identify it").required();
inline constexpr reg inverted_pins = reg::bits("inverted_pins", 0xFF, "the same pins inverted").required();

inline constexpr device_family family =
    device_family{"sim_backplane", "backplane", "the backplane", {type, pcb_ver, serdes_speed, id_pins, inverted_pins}}
        .up_to(0);

finding check_pins(board &b, const device_of<family> &which);

} // namespace backplane

namespace backplane_port {
inline constexpr device_family family =
    device_family{"sim_backplane", "port", "a port by which a board reads the backplane", {}}.up_to(0);
} // namespace backplane_port

} // namespace kestro_sim
