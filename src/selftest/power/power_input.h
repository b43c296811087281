// Whether a power supply is without input: nobody has plugged its cable, or the feed is dead. Then much of what it says
// is no fault of its own.
#pragma once

#include "selftest/power/power_unit.h"
#include "selftest/report.h"

struct power_input {
    bool no_input;
    bool pmbus; // it is on the PMBus and so answers without input, too
};

// Says so when there is none.
power_input detect_power_input(const power_unit &unit, report_sink sink);
