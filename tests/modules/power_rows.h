// What the tests of the power module share.
#pragma once

#include <cinttypes>
#include <cstdio>
#include <string>
#include <vector>

#include "tests/support/command.h"

namespace kestro_tests {

struct named_number {
    int number;
    const char *name;
};

// The properties from 1 on; the two without a name as well.
inline constexpr named_number power_property_names[] = {
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
    {45, "unknown"},
    {46, "POWER_LOW_VOLTAGE_ALARM"},
    {47, "POWER_LOW_VOLTAGE_ALARM_HISTORY"},
    {48, "unknown"},
};

inline std::string hex_text(int64_t number) {
    char text[24];
    snprintf(text, sizeof(text), "0x%" PRIx64, static_cast<uint64_t>(number));
    return text;
}

// Fewer words than a sub-command needs are refused without one.
inline void expect_silent_refusal(const std::string &name, const std::vector<std::string> &words) {
    std::string line = "power_test " + name;
    expect_failure(line, "", "");
    for (const std::string &word : words) {
        line += " " + word;
        expect_failure(line, "", "");
    }
}

} // namespace kestro_tests
