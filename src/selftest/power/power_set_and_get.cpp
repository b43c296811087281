#include "selftest/power/power_set_and_get.h"

#include "drv_basic/power/drv_power.h"
#include "selftest/power/power_names.h"
#include "selftest/result_code.h"
#include "selftest/test_value.h"

namespace {

// Also where the property is only set.
void report_not_supported(const power_unit &unit, uint32_t type, report_sink sink) {
    report_append(sink, "Info   : slot %u power %u get %s 0x%x is not support. \r\n", unit.slot_id, unit.power_id,
                  power_property_name(type), type);
}

void report_set(const power_unit &unit, uint32_t type, uint32_t value, report_sink sink) {
    report_append(sink, "Success: slot %u power %u set %s 0x%x pass. value %u\r\n", unit.slot_id, unit.power_id,
                  power_property_name(type), type, value);
}

// The value is written back whatever became of the test value: a write that failed may have arrived.
int round_trip(const power_unit &unit, uint32_t type, uint32_t original, uint32_t test_value, report_sink sink) {
    begin_test_value();
    uint32_t ret = drv_power_set_property(unit.slot_id, unit.power_id, type, test_value);
    const power_value got = read_power_property(unit, type);
    ret |= drv_power_set_property(unit.slot_id, unit.power_id, type, original);
    end_test_value();
    if ((ret | got.ret) != 0 || got.value != test_value) {
        report_append(sink,
                      "Error  : slot %u power %u set %s 0x%x fail. original_value %u set_value %u get_value %u\r\n",
                      unit.slot_id, unit.power_id, power_property_name(type), type, original, test_value, got.value);
        return -1;
    }
    report_set(unit, type, test_value, sink);
    return 0;
}

// A property that cannot be read cannot be written back either and is left alone; whether it can be read is judged by
// the display test.
bool read_original(const power_unit &unit, uint32_t type, uint32_t *original, report_sink sink) {
    const power_value read = read_power_property(unit, type);
    if (is_not_supported(read.ret)) {
        report_not_supported(unit, type, sink);
    }
    *original = read.value;
    return read.ret == 0;
}

int check_number(const power_unit &unit, uint32_t type, report_sink sink) {
    uint32_t original = 0;
    if (!read_original(unit, type, &original, sink)) {
        return 0;
    }
    return round_trip(unit, type, original, original == 0 ? 0 : original - 1, sink);
}

int check_flag(const power_unit &unit, uint32_t type, report_sink sink) {
    uint32_t original = 0;
    if (!read_original(unit, type, &original, sink)) {
        return 0;
    }
    if (original > 1) {
        report_append(sink, "Error  : slot %u power %u get %s 0x%xresult %u is invalid. \r\n", unit.slot_id,
                      unit.power_id, power_property_name(type), type, original);
        return -1;
    }
    return round_trip(unit, type, original, original == 0 ? 1 : 0, sink);
}

int check_write(const power_unit &unit, uint32_t type, uint32_t value, report_sink sink) {
    const uint32_t ret = drv_power_set_property(unit.slot_id, unit.power_id, type, value);
    if (is_not_supported(ret)) {
        report_not_supported(unit, type, sink);
        return 0;
    }
    if (ret != 0) {
        report_append(sink, "Error  : slot %u power %u set %s 0x%x fail. value %u ret 0x%x\r\n", unit.slot_id,
                      unit.power_id, power_property_name(type), type, value, ret);
        return -1;
    }
    report_set(unit, type, value, sink);
    return 0;
}

// The delay is not read before: 1 is what supplies are delivered with and what they have again afterwards.
int check_startup_delay(const power_unit &unit, report_sink sink) {
    constexpr uint32_t test_delay = 10;
    constexpr uint32_t delivered_delay = 1;
    begin_test_value();
    int result = check_write(unit, property_startup_delay, test_delay, sink);
    result |= check_write(unit, property_startup_delay, delivered_delay, sink);
    end_test_value();
    return result;
}

} // namespace

int power_set_and_get_test(const power_unit &unit, report_sink sink) {
    report_append(sink, "Info   : slot %u power %u set and get test begin. \r\n", unit.slot_id, unit.power_id);
    int result = check_number(unit, property_temp_limit, sink);
    result |= check_flag(unit, property_latch_state, sink);
    result |= check_flag(unit, property_temp_mode, sink);
    // Faults are cleared and the output is switched on: what a supply that works has already.
    result |= check_write(unit, property_clear_fault, 0, sink);
    result |= check_write(unit, property_enable_ctrl, 1, sink);
    result |= check_startup_delay(unit, sink);
    return result;
}
