// The init test of a power supply: its driver is taken down and brought up again and again.
#pragma once

#include "selftest/power/power_unit.h"
#include "selftest/report.h"

// 0, or -1 when a driver comes up for a supply that is absent or without input, or not a second time.
int power_init_test(const power_unit &unit, uint32_t rounds, report_sink sink);
