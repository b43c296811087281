// What the board says that it is.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Type, bill of materials and rated power; that a power domain which no board has is refused; and on a board that is
// not the master the power of its peer.
int check_hardware_identity(uint32_t inst_id, report_sink sink);

// The version of the printed circuit board, as wired and as users are told it: both must be the same.
int check_pcb_version(uint32_t inst_id, report_sink sink);
