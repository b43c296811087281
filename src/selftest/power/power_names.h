// Power supplies: the numbers of their properties and alarms, and what these are called.
#pragma once

#include <cstdint>

// Those that the tests deal with one by one; the table of names has them all.
enum power_property : uint32_t {
    property_online = 0, // 0 is online; it has no name
    property_alarm = 1,
    property_good = 2,
    property_rated_power = 3,
    property_temp_limit = 5,
    property_output_vol_info = 7,
    property_output_current_info = 8,
    property_input_state = 9,
    property_temp_state = 10,
    property_fan_state = 13,
    property_input_vol = 14,
    property_temperature = 17,
    property_input_power = 20,
    property_pmbus_ver = 21,
    property_dc_ac_type = 22,
    property_latch_state = 24,
    property_enable_ctrl = 26,
    property_startup_delay = 27,
    property_clear_fault = 29,
    property_temp_mode = 34,
    property_input_current = 35,
    property_input_format = 40,
    property_alarm_history = 43,
    property_good_history = 44,
};

enum power_alarm_type : uint32_t {
    alarm_vin_unit_off = 7,
    alarm_input = 13,
};

// "unknown" for numbers without a name.
const char *power_property_name(uint32_t type);
const char *power_alarm_name(uint32_t type);

// Values of property_input_format and property_dc_ac_type.
const char *power_input_format_name(uint32_t format);
const char *power_dc_ac_type_name(uint32_t type);
