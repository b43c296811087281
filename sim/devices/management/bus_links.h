// Isolation from the switch fabrics, the black box, the SMI buses with their main and backup source, and the serial
// management bus.
#pragma once

#include "sim/core/board.h"

namespace kestro_sim {

namespace fabric_link {
inline constexpr reg isolate =
    reg::flag("isolate", "whether the board is cut off from the fabric").required().written();
inline constexpr reg fullin_isolate_en =
    reg::flag("fullin_isolate_en", "whether a board that is not fully inserted is cut off").required().written();
inline constexpr device_family family{"sim_board", "sfu", "the link to a switch fabric", {isolate, fullin_isolate_en}};
} // namespace fabric_link

namespace black_box {
inline constexpr reg enable = reg::flag("enable", "whether it records").required().written();
inline constexpr reg seconds = reg::number("seconds", 0, any_u32, "s", "how far back it reaches").required().written();
inline constexpr device_family family = device_family{"sim_board", "bbox", "the black box", {enable, seconds}}.up_to(0);
} // namespace black_box

namespace smi_source {
inline constexpr const char *source_names[]{"main", "backup"};
inline constexpr reg source = reg::choice("source", source_names, "what drives the SMI buses").required().written();
inline constexpr reg backup_enable =
    reg::flag("backup_enable", "whether the backup may take over").required().written();
inline constexpr device_family family =
    device_family{"sim_board", "smi", "the source of the SMI buses", {source, backup_enable}}.up_to(0);
} // namespace smi_source

namespace smi_bus {
inline constexpr reg crc_errors = reg::number("crc_errors", 0, any_u32, "", "frames with a wrong checksum").required();
inline constexpr reg los = reg::flag("los", "whether there is no signal").required();
inline constexpr device_family family{"sim_board", "smi_bus", "an SMI bus", {crc_errors, los}};
} // namespace smi_bus

namespace smb_link {
inline constexpr reg tx_errors =
    reg::number("tx_errors", 0, any_u32, "", "frames that were sent with errors").required();
inline constexpr reg rx_errors = reg::number("rx_errors", 0, any_u32, "", "frames that came with errors").required();
inline constexpr device_family family{
    "sim_smb", "link", "a link of the management bus, by slot", {tx_errors, rx_errors}};
} // namespace smb_link

} // namespace kestro_sim
