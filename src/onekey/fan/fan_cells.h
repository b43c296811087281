// Cells of the tables of fans: a value in its column, or what stands there instead. A failure has its line right behind
// its cell, in the middle of the row. What is shown is on the console before the next driver call.
#pragma once

#include "onekey/fan/fan_report.h"
#include "selftest/report.h"

// The first two columns.
void show_fan_place(const fan_unit &fan, report_sink sink);

// "Normal" or "Abnormal". `what` names it in the line of a failure. Result: what the code adds to that of the test.
uint32_t show_condition(const fan_unit &fan, uint32_t ret, uint32_t value, const char *what, report_sink sink);
uint32_t show_status(const fan_unit &fan, report_sink sink);

// "Error: get fan11 speed fail", unless the fan does not support it.
uint32_t report_cell_failure(const fan_unit &fan, uint32_t ret, const char *what, report_sink sink);
