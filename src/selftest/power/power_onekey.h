// The one-key tests of power supplies. Only the master board reaches them; on a slave they pass without a test.
#pragma once

#include <cstdint>

#include "selftest/power/power_unit.h"
#include "selftest/report.h"

enum power_test_mode : uint32_t {
    power_test_all = 0,
    power_test_display = 1,
    power_test_config = 2, // set and get
    power_test_init = 3,
    power_test_software = 4,
};

// The tests of that mode on all supplies of the frame in the slot. 0 when all passed.
int power_onekey_test(uint32_t slot_id, power_test_mode mode, report_sink sink);

// All tests on one supply.
int power_single_test(const power_unit &unit, report_sink sink);

// All tests on each supply of the board description that is online.
int power_section(uint32_t inst_id, report_sink sink);
