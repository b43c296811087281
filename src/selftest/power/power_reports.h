// What power supplies report of themselves, line by line: commands and tests of power supplies print the same.
#pragma once

#include "drv_basic/power/drv_power.h"
#include "selftest/power/power_unit.h"
#include "selftest/report.h"

// How many supplies the frame in that slot has places for. 0, or the driver's code.
int power_number_report(uint32_t slot_id, report_sink sink);

// The version of one module that runs a program. 0, also when that is not supported, or the driver's code.
int power_version_report(const power_unit &unit, uint32_t soft_id, uint32_t module_id, report_sink sink);

// The black box, read with room for len bytes, all of which are printed. 0, also when it is not supported; -1 when it
// holds no whole records or there is no memory; or the driver's code.
int power_bbox_report(const power_unit &unit, uint32_t len, report_sink sink);

// The programs of a supply and the versions of all modules. The record holds what the driver said; zeros when it said
// nothing. 0, also when that is not supported or a version cannot be had, or the driver's code.
int power_software_report(const power_unit &unit, report_sink sink, drv_power_software_info *info);
