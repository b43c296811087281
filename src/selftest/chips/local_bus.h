// Chips on the processor's local bus.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Whether the described chips can be read and take back what was read.
int lbc_section(uint32_t inst_id, report_sink sink);
