// The set-and-get test of a power supply: what can be set is set, read back where that is possible, and set back.
#pragma once

#include "selftest/power/power_unit.h"
#include "selftest/report.h"

// 0 when all that is supported could be set, else -1.
int power_set_and_get_test(const power_unit &unit, report_sink sink);
