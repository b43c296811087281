// Boards that are mounted on the board.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Type, printed circuit board, bill of materials and presence of each sub-board, as far as the description says that it
// can tell them.
int subboard_section(uint32_t inst_id, report_sink sink);
