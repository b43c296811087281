// Dry contacts: inputs that sense an outside contact, and relays. Wires lead from relays to inputs.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

inline constexpr uint32_t active_closed = 1;
inline constexpr uint32_t active_open = 2;

namespace contact_output {
inline constexpr reg status = reg::flag("status", "whether it is active").written().or_else(0);
inline constexpr reg mode = reg::number("mode", active_closed, active_open, "", "1 closed when active, 2 open")
                                .written()
                                .or_else(active_closed);
inline constexpr reg stuck = reg::flag("stuck", "where its contact stays, whatever drives it: 0 open, 1 closed");
inline constexpr device_family family{"sim_digital", "output", "a relay, from 100 on", {status, mode, stuck}};
bool is_closed(board &b, const device_of<family> &which);

// Whether its contact stands as it does when active; an auxiliary contact tells.
uint32_t shown(board &b, const device_of<family> &which);
} // namespace contact_output

namespace contact_input {
inline constexpr reg wired_to = reg::number("wired_to", 0, any_u32, "", "the relay that it is wired to").fixed();
inline constexpr reg closed =
    reg::flag("closed", "whether the contact outside is closed, where none of the relays is wired to it").or_else(0);
inline constexpr reg mode = reg::number("mode", active_closed, active_open, "", "1 active when closed, 2 when open")
                                .written()
                                .or_else(active_closed);
inline constexpr device_family family{"sim_digital", "input", "a contact input, from 1 on", {wired_to, closed, mode}};
uint32_t status(board &b, const device_of<family> &which);
} // namespace contact_input

} // namespace kestro_sim
