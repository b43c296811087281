// The watch over the two lines that power a board, its interrupt, and the isolation from the switch fabrics.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// One side: state of the line here and at the peer, and the enable of the watch, inverted and restored.
int check_woffline_side(uint32_t inst_id, uint32_t side, report_sink sink);

int check_woffline_interrupt(uint32_t inst_id, report_sink sink);
int check_woffline_isolation(uint32_t inst_id, report_sink sink);

// What the description has of these. Always 0.
int woffline_section(uint32_t inst_id, report_sink sink);
