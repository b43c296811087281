// The power supplies of the delivered chassis, and what the one-key tests say of them.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/modules/power_rows.h"

namespace kestro_tests::delivered {

// A property that the supply lacks.
inline constexpr int64_t lacking_property = -1;

using property_values = std::map<int, int64_t>;

// What the description of the chassis makes of a supply.
struct supply {
    int slot;
    int power;
    property_values properties; // from 3 on; those that are not here are 0
    std::vector<int> black_box;
    std::string label;
    std::vector<std::string> board_lines; // behind the label
    std::string format_and_kind;
    std::string programs;
    bool has_pmbus;
};

inline const supply ac_supply = {
    13,
    0,
    {{3, 2200}, {4, 45000}, {5, 70},    {14, 230000}, {15, 53500}, {16, 12000}, {17, 36},    {18, 9000},
     {19, 642}, {20, 668},  {21, 0x22}, {23, 2},      {26, 1},     {27, 1},     {30, 0x104}, {31, 0x107},
     {32, 50},  {33, 3},    {35, 2904}, {36, 1},      {37, 20},    {38, 85},    {39, 1},     {41, 1}},
    {0, 1, 81, 140, 0, 1, 8, 253, 0, 52, 188, 7, 0, 2, 3, 44, 0, 52, 192, 191, 0, 1, 8, 250},
    "[board]\nitem=KT-PWR-AC-2200\nserial=2511040310\nmade=2025-10-21",
    {"POWER_BOARD_SOFT_VER: 204", "POWER_BOARD_HW_VER: 3", "POWER_MODULE_FEATURE: 19",
     "POWER_CHIP_FEATURE: dual stage, field update"},
    "input format 0 ac and dc_ac_type 0 ac",
    "Success: slot 13 power 0 get software info. soft_cnt 2 \r\n"
    "soft_id 0x1 module_num 0xff\r\n"
    "Success: slot 13 power 0 soft_id 0x1 module_id 0x0 version 204\r\n"
    "soft_id 0x2 module_num 0x2\r\n"
    "Success: slot 13 power 0 soft_id 0x2 module_id 0x0 version 117\r\n"
    "Success: slot 13 power 0 soft_id 0x2 module_id 0x1 version 117\r\n",
    true};

// 642 W leave; 672 W come in at 54 V.
inline const supply dc_supply = {
    13,
    1,
    {{3, 2200},   {4, 45000}, {5, 70},    {14, 54000}, {15, 53500}, {16, 12000}, {17, 36}, {18, 9000},
     {19, 642},   {20, 672},  {21, 0x22}, {22, 1},     {23, 2},     {26, 1},     {27, 1},  {30, lacking_property},
     {31, 0x107}, {32, 50},   {33, 2},    {35, 12444}, {36, 2},     {37, 5},     {38, 85}, {39, 1},
     {40, 1},     {41, 1}},
    {0, 1, 96, 98, 0, 1, 2, 28},
    "[board]\nitem=KT-PWR-DC-2200\nserial=2511040311\nmade=2025-10-22",
    {"POWER_BOARD_SOFT_VER: 204", "POWER_BOARD_HW_VER: 2", "POWER_MODULE_FEATURE: 17",
     "POWER_CHIP_FEATURE: single stage, field update"},
    "input format 1 low dc and dc_ac_type 1 low dc",
    "Success: slot 13 power 1 get software info. soft_cnt 1 \r\n"
    "soft_id 0x1 module_num 0xff\r\n"
    "Success: slot 13 power 1 soft_id 0x1 module_id 0x0 version 204\r\n",
    true};

// Behind the simple protocol: 321 W leave, a fifth of what it is rated for, and warm it by 9 K.
inline const supply simple_supply = {
    14,
    0,
    {{3, 1600},
     {4, lacking_property},
     {5, 65},
     {6, lacking_property},
     {7, lacking_property},
     {8, lacking_property},
     {9, lacking_property},
     {11, lacking_property},
     {12, lacking_property},
     {14, 231000},
     {15, 53500},
     {16, 6000},
     {17, 34},
     {18, 7040},
     {19, 321},
     {20, 352},
     {21, lacking_property},
     {23, lacking_property},
     {25, lacking_property},
     {26, 1},
     {27, lacking_property},
     {28, lacking_property},
     {30, lacking_property},
     {31, lacking_property},
     {32, lacking_property},
     {33, 1},
     {34, lacking_property},
     {35, 1523},
     {36, 3},
     {37, lacking_property},
     {38, lacking_property},
     {39, lacking_property},
     {41, lacking_property},
     {42, lacking_property},
     {44, lacking_property},
     {46, lacking_property},
     {47, lacking_property}},
    {},
    "[board]\nitem=KT-PWR-AC-1600\nserial=1911040140\nmade=2019-05-07",
    {"POWER_BOARD_SOFT_VER: 204", "POWER_BOARD_HW_VER: 1", "POWER_MODULE_FEATURE", "POWER_CHIP_FEATURE"},
    "input format 0 ac and dc_ac_type 0 ac",
    "Success: slot 14 power 0 get software info. soft_cnt 1 \r\n"
    "soft_id 0x1 module_num 0x1\r\n"
    "Success: slot 14 power 0 soft_id 0x1 module_id 0x0 version 204\r\n",
    false};

inline const std::string not_supported_code = "0x811101a4";

inline std::string place_of(const supply &one) {
    return "slot " + std::to_string(one.slot) + " power " + std::to_string(one.power);
}

// Nothing can be read of what clears faults and of the two numbers without a name.
inline int64_t property_of(const supply &one, int type) {
    const auto found = one.properties.find(type);
    const bool is_nobodys = type == 29 || type == 45 || type == 48;
    return found != one.properties.end() ? found->second : is_nobodys ? lacking_property : 0;
}

inline std::string property_line(const supply &one, int type) {
    const named_number &named = power_property_names[type - 1];
    const std::string what = std::string(named.name) + " " + hex_text(type);
    const int64_t value = property_of(one, type);
    return value == lacking_property
               ? "Success: " + place_of(one) + " not support get " + what + ". ret " + not_supported_code + "\r\n"
               : "Success: " + place_of(one) + " get " + what + ": " + hex_text(value) + "\r\n";
}

inline std::string black_box_lines(const supply &one) {
    if (one.black_box.empty()) {
        return "Success: " + place_of(one) + " not support get bbox info. ret " + not_supported_code + "\r\n";
    }
    std::string numbers;
    for (size_t i = 0; i < 4096; ++i) {
        numbers += std::to_string(i < one.black_box.size() ? one.black_box[i] : 0) + " ";
    }
    // The first record begins with a zero byte, so there is no text.
    return "Success: " + place_of(one) + " get bbox info return length " + std::to_string(one.black_box.size()) +
           " \r\n" + numbers + "\r\nSuccess: " + place_of(one) + " get bbox info  \r\n";
}

inline std::string board_property_lines(const supply &one) {
    std::string lines = "Success: " + place_of(one) + " len " + std::to_string(one.label.size()) +
                        " POWER_BOARD_ELABLE: " + one.label + "\r\n \r\n";
    for (const std::string &line : one.board_lines) {
        lines += line.find(':') == std::string::npos ? "Success: " + place_of(one) + " not support get " + line +
                                                           " info. ret " + not_supported_code + "\r\n"
                                                     : "Success: " + place_of(one) + " " + line + "\r\n";
    }
    return lines;
}

inline std::string alarm_lines(const supply &one) {
    constexpr named_number alarms[] = {
        {1, "POWER_ALARM_CMD"},           {2, "POWER_ALARM_TEMPERATURE"},   {3, "POWER_ALARM_VIN_UV_FAULT"},
        {4, "POWER_ALARM_IOUT_OC_FAULT"}, {5, "POWER_ALARM_VOUT_OV_FAULT"}, {6, "POWER_ALARM_VIN_OV_DETECT"},
        {7, "POWER_ALARM_VIN_UNIT_OFF"},  {13, "POWER_ALARM_INPUT"},        {9, "POWER_ALARM_OTHER"},
        {10, "POWER_ALARM_FAN"},          {14, "POWER_ALARM_IOUT_POUT"},    {15, "POWER_ALARM_VOUT"}};
    std::string lines;
    for (const named_number &alarm : alarms) {
        const std::string what = std::string(alarm.name) + " " + hex_text(alarm.number);
        lines += one.has_pmbus || alarm.number == 2 || alarm.number == 10
                     ? "Success: " + place_of(one) + " get " + what + ": alarms 0x0 sub_alarm 0x0\r\n"
                     : "Success: " + place_of(one) + " not support get " + what + " info. ret " + not_supported_code +
                           "\r\n";
    }
    return lines;
}

inline std::string display_lines(const supply &one) {
    std::string lines = "Info   : " + place_of(one) + " display test begin. \r\n" + black_box_lines(one) +
                        "Success: " + place_of(one) + " " + one.format_and_kind + " is match \r\n";
    for (const int type : {1, 2, 9, 43, 7, 8, 10, 13, 24, 44}) {
        lines += property_line(one, type);
    }
    for (int type = 3; type <= 48; ++type) {
        lines += property_line(one, type);
    }
    return lines + board_property_lines(one) + alarm_lines(one);
}

inline std::string init_lines(const supply &one) {
    std::string lines = "Info   : " + place_of(one) + " init and deinit test begin. \r\n";
    for (const std::string round : {"0", "1", "2"}) {
        lines += "Success: " + place_of(one) + " init and deinit success. times " + round + "\r\n";
    }
    return lines + "Success: " + place_of(one) + " duplicate init success\r\n";
}

inline std::string config_lines(const supply &one) {
    const auto passed = [&one](const std::string &what, const std::string &value) {
        return "Success: " + place_of(one) + " set " + what + " pass. value " + value + "\r\n";
    };
    const auto lacks = [&one](const std::string &what) {
        return "Info   : " + place_of(one) + " get " + what + " is not support. \r\n";
    };
    const std::string mode = "POWER_TEMP_MODE 0x22";
    const std::string delay = "POWER_STARTUP_DELAY 0x1b";
    return "Info   : " + place_of(one) + " set and get test begin. \r\n" +
           passed("POWER_TEMP_LIMIT 0x5", std::to_string(property_of(one, 5) - 1)) +
           passed("POWER_LATCH_STATE 0x18", "1") + (one.has_pmbus ? passed(mode, "1") : lacks(mode)) +
           passed("POWER_CLEAR_FAULT 0x1d", "0") + passed("POWER_ENABLE_CTRL 0x1a", "1") +
           (one.has_pmbus ? passed(delay, "10") + passed(delay, "1") : lacks(delay) + lacks(delay));
}

// The delivered image is the version that all of them run.
inline std::string software_lines(const supply &one) {
    return "Info   : " + place_of(one) + " software test begin. \r\n" + one.programs +
           "Info   : chmod 755 /opt/hostx/home/power_app.bin.\r\n"
           "Info   : file head soft_id 0x1 rsv 0x0 crc[0] 0x3e crc[1] 0x6\r\n"
           "Success: " +
           place_of(one) + " load file /opt/hostx/home/power_app.bin success. len 0x108\r\n" + one.programs;
}

} // namespace kestro_tests::delivered
