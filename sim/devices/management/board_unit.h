// A board or card as a whole: what it is, where it is, and how far its start has come.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

namespace board_unit {

inline constexpr reg type = reg::bits("type", any_u32, "the type of board or card").written();
inline constexpr reg pcb_ver = reg::bits("pcb_ver", 0xFFFF, "the version of its printed circuit board");
inline constexpr reg usr_pcb_ver = reg::bits("usr_pcb_ver", any_u32, "the version as users are told it");
inline constexpr reg soft_pcb_ver = reg::number("soft_pcb_ver", 0, UINT16_MAX, "", "the version as software counts it");
inline constexpr reg bom_ver = reg::number("bom_ver", 0, UINT16_MAX, "", "the version of its bill of materials");
inline constexpr reg bom_id = reg::number("bom_id", 0, UINT16_MAX, "", "which bill of materials it is made from");
inline constexpr reg power_watts = reg::number("power_watts", 0, 10000, "W", "the power that it may draw");
inline constexpr reg fullin = reg::flag("fullin", "whether it is not fully inserted");
inline constexpr reg logic_slot = reg::number("logic_slot", 0, UINT16_MAX, "", "its slot as the software counts");
inline constexpr reg peer_slot = reg::number("peer_slot", 0, UINT16_MAX, "", "the slot of its peer");
inline constexpr reg peer_logic_slot =
    reg::number("peer_logic_slot", 0, UINT16_MAX, "", "its peer's slot as the software counts");
inline constexpr reg bootstep = reg::number("bootstep", 0, 255, "", "how far its start has come").written();
inline constexpr reg bootstep_stuck = reg::bits("bootstep_stuck", 0xFF, "bits of its boot step that stay 0").or_else(0);
inline constexpr reg factory_reset = reg::flag("factory_reset", "whether the next start forgets the configuration");
inline constexpr reg low_voltage = reg::flag("low_voltage", "whether its supply fell below the limit").written();
inline constexpr reg mpu =
    reg::number("mpu", 0, 255, "", "the main processing unit: 0 in the smaller slot, 1 in the bigger");
inline constexpr reg card_fault = reg::flag("card_fault", "whether the card says that it is not well");

inline constexpr device_family family = device_family{
    "sim_board",
    "unit",
    "a board or card",
    {type, pcb_ver, usr_pcb_ver, soft_pcb_ver, bom_ver, bom_id, power_watts, fullin, logic_slot, peer_slot,
     peer_logic_slot, bootstep, bootstep_stuck, factory_reset, low_voltage, mpu,
     card_fault}}.up_to(0);

// The boot step as everybody reads it: the board itself, its peer, and the bus.
uint32_t read_bootstep(board &b, const device &which);

} // namespace board_unit

namespace capability {
inline constexpr reg value = reg::number("value", 0, any_u32, "", "what the board can do in this respect").required();
inline constexpr device_family family{"sim_board", "capability", "a capability of the board, by its type", {value}};
} // namespace capability

namespace presence {
inline constexpr const char *status_names[]{"present", "absent", "wired"};
inline constexpr uint32_t present = 0;
inline constexpr uint32_t absent = 1;
inline constexpr uint32_t wired = 2;
inline constexpr reg status =
    reg::choice("status", status_names, "what software takes the board for; wired: what its presence line says")
        .or_else(wired)
        .written();
inline constexpr device_family family =
    device_family{"sim_board", "presence", "the presence of a board or card", {status}}.up_to(0);

// 0 present, 1 absent, as the own board sees it. Software may take a board off line, or tell of one whose presence line
// ends elsewhere; an empty place is never on line.
uint32_t online_status(board &b, const std::string &place);

// Whether a board is in its place and in use, whoever looks.
bool is_there(board &b, const std::string &place);

// Software says so; anything but present and absent is refused.
void set_online_status(board &b, const std::string &place, uint32_t value);
} // namespace presence

} // namespace kestro_sim
