// What wears or starves a board: solder joints, corrosion and a supply that fell.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// The joints at the four corners of the chips that are monitored. Stops at the first chip that is not good.
int check_weld(uint32_t inst_id, report_sink sink);

// All corrosion sensors together.
int check_corrosion(uint32_t inst_id, report_sink sink);

int check_low_voltage(uint32_t inst_id, report_sink sink);
