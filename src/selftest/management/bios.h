// Start-up software, and which of the two main processing units a board is or listens to.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// The three areas of the start-up flash, and the version.
int check_bios(uint32_t inst_id, report_sink sink);

int check_mpu_status(uint32_t inst_id, report_sink sink);
