#include "selftest/power/power_init.h"

#include "drv_basic/power/drv_power.h"
#include "selftest/power/power_input.h"
#include "selftest/power/power_names.h"
#include "selftest/test_value.h"

namespace {

int check_init_of_absent(const power_unit &unit, report_sink sink) {
    report_append(sink, "Info   : slot %u power %u is not online.\r\n", unit.slot_id, unit.power_id);
    if (drv_power_init(unit.slot_id, unit.power_id) != 0) {
        return 0;
    }
    report_append(sink, "Error  : slot %u power %u is not online, but init success.\r\n", unit.slot_id, unit.power_id);
    return -1;
}

// The result of the last round's init. A round that fails is told, and judged only where that of a supply without input
// is.
uint32_t run_rounds(const power_unit &unit, uint32_t rounds, report_sink sink) {
    drv_power_deinit(unit.slot_id, unit.power_id);
    uint32_t init_ret = 0;
    for (uint32_t round = 0; round < rounds; ++round) {
        init_ret = drv_power_init(unit.slot_id, unit.power_id);
        const uint32_t deinit_ret = drv_power_deinit(unit.slot_id, unit.power_id);
        if (init_ret == 0 && deinit_ret == 0) {
            report_append(sink, "Success: slot %u power %u init and deinit success. times %u\r\n", unit.slot_id,
                          unit.power_id, round);
        } else {
            report_append(sink,
                          "Info   : slot %u power %u init and deinit fail. times %u init_ret 0x%x deinit_ret 0x%x "
                          "\r\n",
                          unit.slot_id, unit.power_id, round, init_ret, deinit_ret);
        }
    }
    drv_power_init(unit.slot_id, unit.power_id);
    return init_ret;
}

int check_init_without_input(const power_unit &unit, uint32_t init_ret, report_sink sink) {
    if (init_ret != 0) {
        report_append(sink, "Success: slot %u power %u init fail when no input power\r\n", unit.slot_id, unit.power_id);
        return 0;
    }
    report_append(sink, "Error  : slot %u power %u init pass when no input power\r\n", unit.slot_id, unit.power_id);
    return -1;
}

int check_duplicate_init(const power_unit &unit, report_sink sink) {
    for (int time = 0; time < 2; ++time) {
        const uint32_t ret = drv_power_init(unit.slot_id, unit.power_id);
        if (ret != 0) {
            report_append(sink, "Error  : slot %u power %u duplicate init fail. init_ret 0x%x \r\n", unit.slot_id,
                          unit.power_id, ret);
            return -1;
        }
    }
    report_append(sink, "Success: slot %u power %u duplicate init success\r\n", unit.slot_id, unit.power_id);
    return 0;
}

} // namespace

int power_init_test(const power_unit &unit, uint32_t rounds, report_sink sink) {
    report_append(sink, "Info   : slot %u power %u init and deinit test begin. \r\n", unit.slot_id, unit.power_id);
    const power_value absent = read_power_property(unit, property_online);
    if (absent.ret == 0 && absent.value == 1) {
        return check_init_of_absent(unit, sink);
    }
    // A supply whose driver is down is watched by nobody.
    begin_test_value();
    const uint32_t init_ret = run_rounds(unit, rounds, sink);
    end_test_value();
    int result = 0;
    const power_input input = detect_power_input(unit, sink);
    if (input.no_input && !input.pmbus) {
        result |= check_init_without_input(unit, init_ret, sink);
    }
    if (init_ret == 0) {
        result |= check_duplicate_init(unit, sink);
    }
    return result;
}
