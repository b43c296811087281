// The display test of a power supply: all that it tells is shown, and judged where only one answer is good.
#pragma once

#include "selftest/power/power_unit.h"
#include "selftest/report.h"

// Black box, properties, board properties and alarms of a supply that is online. 0 when nothing is wrong or there is no
// supply, else -1, or the code of the driver that does not even tell whether there is one.
int power_display_test(const power_unit &unit, report_sink sink);

// Its parts: 0 or -1. Board properties are only shown.
int power_property_display(const power_unit &unit, report_sink sink);
int power_board_property_display(const power_unit &unit, report_sink sink);
int power_alarm_display(const power_unit &unit, report_sink sink);
