// A supply on the PMBus tells that it has no input. One that is not lacks the figures of its input, or they are 0.
#include "selftest/power/power_input.h"

#include "selftest/power/power_names.h"
#include "selftest/result_code.h"

namespace {

// In the input's status byte: the supply is off because its input is too low.
constexpr uint32_t off_for_low_input = 8;
constexpr uint32_t format_of_no_input = 3;

bool detect_on_pmbus(const power_unit &unit, report_sink sink) {
    const power_value state = read_power_property(unit, property_input_state);
    const power_value good = read_power_property(unit, property_good);
    const power_value format = read_power_property(unit, property_input_format);
    const power_alarm off = read_power_alarm(unit, alarm_vin_unit_off);
    const power_alarm input = read_power_alarm(unit, alarm_input);
    if ((state.ret | good.ret | format.ret | off.ret | input.ret) != 0) {
        return false;
    }
    if (state.value != off_for_low_input || good.value == 0 || format.value != format_of_no_input ||
        off.sub_alarm == 0 || input.sub_alarm == 0) {
        return false;
    }
    report_append(sink,
                  "Info   : slot %u power %u pmbus maybe has no input power. POWER_ALARM_VIN_UNIT_OFF 0x%x  "
                  "POWER_ALARM_INPUT 0x%x\r\n",
                  unit.slot_id, unit.power_id, off.alarms, input.alarms);
    return true;
}

bool shows_nothing(const power_value &read) {
    return read.ret == 0 ? read.value == 0 : !is_not_supported(read.ret);
}

bool detect_on_simple_protocol(const power_unit &unit, report_sink sink) {
    const power_value power = read_power_property(unit, property_input_power);
    const power_value voltage = read_power_property(unit, property_input_vol);
    const power_value alarm = read_power_property(unit, property_alarm);
    if (!shows_nothing(power) || !shows_nothing(voltage) || alarm.ret != 0 || alarm.value != 1) {
        return false;
    }
    report_append(sink,
                  "Info   :slot %u power %u maybe has no input power. ret_power 0x%x input_power 0x%x ret_vol 0x%x "
                  "input_vol 0x%x \r\n",
                  unit.slot_id, unit.power_id, power.ret, power.value, voltage.ret, voltage.value);
    return true;
}

} // namespace

power_input detect_power_input(const power_unit &unit, report_sink sink) {
    const power_value pmbus = read_power_property(unit, property_pmbus_ver);
    if (pmbus.ret == 0) {
        return {detect_on_pmbus(unit, sink), true};
    }
    if (is_not_supported(pmbus.ret)) {
        return {detect_on_simple_protocol(unit, sink), false};
    }
    return {false, false};
}
