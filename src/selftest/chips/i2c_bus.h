// Chips on the board's I2C buses.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// Whether what the described chips hold is read the same each time and can be written back.
int i2c_section(uint32_t inst_id, report_sink sink);
