// Programmable logic: control CPLD and FPGAs.
#pragma once

#include <cstdint>

#include "selftest/report.h"

// The chips of the board description one by one: each for itself, then its links to what is around it.
int cpld_section(uint32_t inst_id, report_sink sink);
