// The names, as those who read the reports know them: "hign" is looked for as it stands.
#include "selftest/power/power_names.h"

namespace {

constexpr const char *unknown = "unknown";

struct property_record {
    uint32_t type;
    char name[32];
};

constexpr property_record properties[] = {
    {1, "POWER_ALARM"},
    {2, "POWER_GOOD"},
    {3, "POWER_RATED_POWER"},
    {4, "POWER_CURRENT_LIMIT"},
    {5, "POWER_TEMP_LIMIT"},
    {6, "POWER_STATE_INFO"},
    {7, "POWER_OUTPUT_VOL_INFO"},
    {8, "POWER_OUTPUT_CURRENT_INFO"},
    {9, "POWER_INPUT_STATE"},
    {10, "POWER_TEMP_STATE"},
    {11, "POWER_LOGIC_STORAGE_STATE"},
    {12, "POWER_SPECIFIC_STATE"},
    {13, "POWER_FAN_STATE"},
    {14, "POWER_INPUT_VOL"},
    {15, "POWER_OUTPUT_VOL"},
    {16, "POWER_OUTPUT_CURRENT"},
    {17, "POWER_TEMPERATURE"},
    {18, "POWER_FAN_SPEED"},
    {19, "POWER_OUTPUT_POWER"},
    {20, "POWER_INPUT_POWER"},
    {21, "POWER_PMBUS_VER"},
    {22, "POWER_DC_AC_TYPE"},
    {23, "POWER_PROTOCOL_VER"},
    {24, "POWER_LATCH_STATE"},
    {25, "POWER_LAST_SHUT_TIME"},
    {26, "POWER_ENABLE_CTRL"},
    {27, "POWER_STARTUP_DELAY"},
    {28, "POWER_SYS_TIME"},
    {29, "POWER_CLEAR_FAULT"},
    {30, "POWER_PFC_VER"},
    {31, "POWER_DCDC_VER"},
    {32, "POWER_FANSPEED_PERCENT"},
    {33, "POWER_HARDWARE_VER"},
    {34, "POWER_TEMP_MODE"},
    {35, "POWER_INPUT_CURRENT"},
    {36, "POWER_DEVICE_TYPE"},
    {37, "POWER_STANDBY_TIME"},
    {38, "POWER_OTP_TEMPERATURE"},
    {39, "POWER_OTP_MODE"},
    {40, "POWER_INPUT_FORMAT"},
    {41, "POWER_PANEL_SWITCH_STATUS"},
    {42, "POWER_FAN_VENTILATIONCHNNL"},
    {43, "POWER_ALARM_HISTORY"},
    {44, "POWER_GOOD_HISTORY"},
    {46, "POWER_LOW_VOLTAGE_ALARM"},
    {47, "POWER_LOW_VOLTAGE_ALARM_HISTORY"},
};
static_assert(sizeof(properties) / sizeof(properties[0]) == 46);

} // namespace

const char *power_property_name(uint32_t type) {
    for (const property_record &each : properties) {
        if (each.type == type) {
            return each.name;
        }
    }
    return unknown;
}

const char *power_alarm_name(uint32_t type) {
    switch (type) {
    case 1:
        return "POWER_ALARM_CMD";
    case 2:
        return "POWER_ALARM_TEMPERATURE";
    case 3:
        return "POWER_ALARM_VIN_UV_FAULT";
    case 4:
        return "POWER_ALARM_IOUT_OC_FAULT";
    case 5:
        return "POWER_ALARM_VOUT_OV_FAULT";
    case 6:
        return "POWER_ALARM_VIN_OV_DETECT";
    case alarm_vin_unit_off:
        return "POWER_ALARM_VIN_UNIT_OFF";
    case 9:
        return "POWER_ALARM_OTHER";
    case 10:
        return "POWER_ALARM_FAN";
    case alarm_input:
        return "POWER_ALARM_INPUT";
    case 14:
        return "POWER_ALARM_IOUT_POUT";
    case 15:
        return "POWER_ALARM_VOUT";
    default:
        return unknown;
    }
}

const char *power_input_format_name(uint32_t format) {
    constexpr const char *names[] = {"ac", "low dc", "hign dc"};
    return format < sizeof(names) / sizeof(names[0]) ? names[format] : unknown;
}

const char *power_dc_ac_type_name(uint32_t type) {
    constexpr const char *names[] = {
        "ac", "low dc", "hign dc", "ac and hign dc", "battery", "backup power access board"};
    return type < sizeof(names) / sizeof(names[0]) ? names[type] : unknown;
}
