// The 16-bit input/output expanders: the self-test section.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Registers, polarity and direction of every described chip. -1 when one fails; 0 when none is described. A chip whose
// registers cannot be read at all passes.
int chip9555_section(uint32_t inst_id, report_sink sink);
