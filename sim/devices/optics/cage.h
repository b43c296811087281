// Cages for transceivers in the front of a board, by the numbers of their ports, and what is plugged into them.
#pragma once

#include "sim/core/board.h"
#include "sim/core/time.h"

#include <vector>

namespace kestro_sim::cage {

// Before the board was made new, and longer ago than any module needs to come up.
inline constexpr int64_t long_ago = -3600 * nanoseconds_per_second;

inline constexpr const char *package_names[]{"none",   "SFP",    "SFP+",    "SFP28", "QSFP+",
                                             "QSFP28", "QSFP56", "QSFP-DD", "OSFP"};

inline constexpr reg package = reg::choice("package", package_names, "what fits into it").required().fixed();
inline constexpr reg plugged =
    reg::number("plugged", 0, any_u32, "", "the module that is plugged in, by its number; 0 for none").required();
inline constexpr reg noticed =
    reg::number("noticed", 0, any_u32, "", "what was plugged in when this was last looked at").written();
inline constexpr reg since =
    reg::number("since", long_ago, INT64_MAX, "ns", "the board time at which its module was noticed")
        .or_else(static_cast<uint64_t>(long_ago))
        .written();
inline constexpr reg pulled =
    reg::flag("pulled", "whether a module was pulled since it was asked").or_else(0).written();
inline constexpr reg tx_disable =
    reg::flag("tx_disable", "the pin of the smaller cages that switches the transmitter off").or_else(0).written();

inline constexpr device_family family{"sim_optics",
                                      "cage",
                                      "a cage for a transceiver, by its port",
                                      {package, plugged, noticed, since, pulled, tx_disable}};

using one = device_of<family>;

// All of an instance; one without any is refused as not_supported.
std::vector<one> all(board &b, uint32_t inst_id);

bool is_filled(board &b, const one &port);

// What changed since the last look: a new module begins to come up now, one that is gone was pulled.
void notice(board &b, const one &port);

// Since it was asked last, which this does.
bool take_pull_history(board &b, const one &port);

// Ports in a row that have the same package.
struct row {
    uint32_t package;
    uint32_t number;
    uint32_t first;
};

std::vector<row> port_map(board &b, uint32_t inst_id);

} // namespace kestro_sim::cage
