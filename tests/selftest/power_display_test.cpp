// The display test of a power supply: every property, board property and alarm, and what is left out without input.
#include <algorithm>
#include <cstdio>
#include <gtest/gtest.h>

#include "tests/selftest/part.h"
#include "tests/selftest/power_script.h"
#include "tests/support/simulator.h"

using namespace kestro_tests;

namespace {

const char *property_name(int type) {
    constexpr const char *names[] = {
        "unknown",
        "POWER_ALARM",
        "POWER_GOOD",
        "POWER_RATED_POWER",
        "POWER_CURRENT_LIMIT",
        "POWER_TEMP_LIMIT",
        "POWER_STATE_INFO",
        "POWER_OUTPUT_VOL_INFO",
        "POWER_OUTPUT_CURRENT_INFO",
        "POWER_INPUT_STATE",
        "POWER_TEMP_STATE",
        "POWER_LOGIC_STORAGE_STATE",
        "POWER_SPECIFIC_STATE",
        "POWER_FAN_STATE",
        "POWER_INPUT_VOL",
        "POWER_OUTPUT_VOL",
        "POWER_OUTPUT_CURRENT",
        "POWER_TEMPERATURE",
        "POWER_FAN_SPEED",
        "POWER_OUTPUT_POWER",
        "POWER_INPUT_POWER",
        "POWER_PMBUS_VER",
        "POWER_DC_AC_TYPE",
        "POWER_PROTOCOL_VER",
        "POWER_LATCH_STATE",
        "POWER_LAST_SHUT_TIME",
        "POWER_ENABLE_CTRL",
        "POWER_STARTUP_DELAY",
        "POWER_SYS_TIME",
        "POWER_CLEAR_FAULT",
        "POWER_PFC_VER",
        "POWER_DCDC_VER",
        "POWER_FANSPEED_PERCENT",
        "POWER_HARDWARE_VER",
        "POWER_TEMP_MODE",
        "POWER_INPUT_CURRENT",
        "POWER_DEVICE_TYPE",
        "POWER_STANDBY_TIME",
        "POWER_OTP_TEMPERATURE",
        "POWER_OTP_MODE",
        "POWER_INPUT_FORMAT",
        "POWER_PANEL_SWITCH_STATUS",
        "POWER_FAN_VENTILATIONCHNNL",
        "POWER_ALARM_HISTORY",
        "POWER_GOOD_HISTORY",
        "unknown",
        "POWER_LOW_VOLTAGE_ALARM",
        "POWER_LOW_VOLTAGE_ALARM_HISTORY",
        "unknown",
    };
    return names[type];
}

std::string hex(uint32_t number) {
    char text[16];
    snprintf(text, sizeof(text), "0x%x", number);
    return text;
}

std::string named(int type) {
    return property_name(type) + (" " + hex(static_cast<uint32_t>(type)));
}

std::string shows(int type, const std::string &value) {
    return "Success: slot 13 power 0 get " + named(type) + ": " + value + "\r\n";
}

std::string lacks(int type) {
    return "Success: slot 13 power 0 not support get " + named(type) + ". ret 0x811101a4\r\n";
}

std::string fails(int type, const std::string &code) {
    return "Error  : slot 13 power 0 get " + named(type) + " fail. ret " + code + "\r\n";
}

std::string bad(int type, const std::string &value) {
    return "Error  : slot 13 power 0 get " + named(type) + " fail. result " + value + "\r\n";
}

std::string must_support(int type) {
    return "Error  : slot 13 power 0 get " + named(type) + " should be support. ret 0x811101a4\r\n";
}

const std::vector<int> always_zero = {7, 8, 10, 13, 24, 44};
const std::vector<int> zero_with_input = {1, 2, 9, 43};
const std::vector<int> all_zero = {1, 2, 9, 43, 7, 8, 10, 13, 24, 44};

std::vector<int> values_without(const std::vector<int> &left_out) {
    std::vector<int> types;
    for (int type = 3; type <= 48; ++type) {
        if (std::find(left_out.begin(), left_out.end(), type) == left_out.end()) {
            types.push_back(type);
        }
    }
    return types;
}

template <typename Line> std::string lines_of(const std::vector<int> &types, Line line) {
    std::string lines;
    for (const int type : types) {
        lines += line(type);
    }
    return lines;
}

const std::string ac_match = "Success: slot 13 power 0 input format 0 ac and dc_ac_type 0 ac is match \r\n";
const std::string all_other_zero = "drv_power_get_property(slot_id=13, power_id=0) = 0 value=0\n";

std::string zero(int type) {
    return shows(type, "0x0");
}

} // namespace

TEST(PowerPropertyTest, EveryPropertyIsShownByItsName) {
    expect_part("power_properties", "drv_power_get_alarm(slot_id=13, power_id=0) = 0 x2\n" + all_other_zero,
                ac_match + lines_of(all_zero, zero) + lines_of(values_without({}), zero), 0);
}

TEST(PowerPropertyTest, ADriverThatWritesNothingAnswersZero) {
    expect_part("power_properties", "drv_power_get_alarm = 0 x2\ndrv_power_get_property = 0\n",
                ac_match + lines_of(all_zero, zero) + lines_of(values_without({}), zero), 0);
}

TEST(PowerPropertyTest, ASupplyWithoutAnyProperty) {
    expect_part("power_properties", "drv_power_get_property = 0x811101a4\n",
                lines_of({3, 17, 14, 20, 22, 40}, must_support) + lines_of(all_zero, lacks) +
                    lines_of(values_without({}), lacks),
                -1);
}

TEST(PowerPropertyTest, ASupplyThatAnswersNothing) {
    const auto failure = [](int type) { return fails(type, "0x66"); };
    expect_part("power_properties", "drv_power_get_property = 0x66\n",
                lines_of(all_zero, failure) + lines_of(values_without({}), failure), -1);
}

TEST(PowerPropertyTest, WhatEverySupplyMustSupport) {
    for (const int type : {3, 17, 14, 20}) {
        const auto line = [type](int each) { return each == type ? lacks(each) : zero(each); };
        expect_part("power_properties", power_get(type, no_support) + "drv_power_get_alarm = 0 x2\n" + all_other_zero,
                    must_support(type) + ac_match + lines_of(all_zero, zero) + lines_of(values_without({}), line), -1);
    }
    for (const int type : {22, 40}) {
        const auto line = [type](int each) { return each == type ? lacks(each) : zero(each); };
        expect_part("power_properties", power_get(type, no_support) + "drv_power_get_alarm = 0 x2\n" + all_other_zero,
                    must_support(type) + lines_of(all_zero, zero) + lines_of(values_without({}), line), -1);
    }
}

// Input format, kind, and how the line about both ends.
TEST(PowerPropertyTest, InputFormatAndKind) {
    const struct {
        int format;
        int type;
        std::string names;
        bool is_match;
    } cases[] = {
        {1, 1, "input format 1 low dc and dc_ac_type 1 low dc is match", true},
        {2, 2, "input format 2 hign dc and dc_ac_type 2 hign dc is match", true},
        {0, 3, "input format 0 ac and dc_ac_type 3 ac and hign dc is match", true},
        {0, 4, "input format 0 ac and dc_ac_type 4 battery is match", true},
        {3, 5, "input format 3 unknown and dc_ac_type 5 backup power access board is match", true},
        {4, 0, "input format 4 unknown and dc_ac_type 0 ac is unmatch", false},
        {0, 6, "input format 0 ac and dc_ac_type 6 unknown is unmatch", false},
    };
    for (const auto &each : cases) {
        const auto line = [&each](int type) {
            return type == 22   ? shows(22, hex(static_cast<uint32_t>(each.type)))
                   : type == 40 ? shows(40, hex(static_cast<uint32_t>(each.format)))
                                : zero(type);
        };
        expect_part("power_properties",
                    power_get(22, "0 value=" + std::to_string(each.type)) +
                        power_get(40, "0 value=" + std::to_string(each.format)) + "drv_power_get_alarm = 0 x2\n" +
                        all_other_zero,
                    "Success: slot 13 power 0 " + each.names + " \r\n" + lines_of(all_zero, zero) +
                        lines_of(values_without({}), line),
                    each.is_match ? 0 : -1);
    }
}

TEST(PowerPropertyTest, WhatMustBeZeroIsAFaultElse) {
    for (const int type : all_zero) {
        const auto judged = [type](int each) { return each == type ? bad(each, "0xfe") : zero(each); };
        const auto shown = [type](int each) { return each == type ? shows(each, "0xfe") : zero(each); };
        expect_part("power_properties",
                    power_get(type, "0 value=0xfe") + "drv_power_get_alarm = 0 x2\n" + all_other_zero,
                    ac_match + lines_of(all_zero, judged) + lines_of(values_without({}), shown), -1);
    }
}

TEST(PowerPropertyTest, OthersMayHaveAnyValue) {
    const auto shown = [](int each) { return each == 48 ? shows(48, "0xffffffff") : zero(each); };
    expect_part("power_properties",
                power_get(48, "0 value=0xffffffff") + "drv_power_get_alarm = 0 x2\n" + all_other_zero,
                ac_match + lines_of(all_zero, zero) + lines_of(values_without({}), shown), 0);
    const auto failed = [](int each) { return each == 48 ? fails(48, "0x67") : zero(each); };
    expect_part("power_properties", power_get(48, "0x67") + "drv_power_get_alarm = 0 x2\n" + all_other_zero,
                ac_match + lines_of(all_zero, zero) + lines_of(values_without({}), failed), -1);
}

TEST(PowerPropertyTest, WithoutInputOnThePmbus) {
    const auto line = [](int type) {
        return type == 21 ? shows(21, "0x22") : type == 40 ? shows(40, "0x3") : zero(type);
    };
    expect_part("power_properties", lost_input_on_pmbus() + all_other_zero,
                lost_input_on_pmbus_line +
                    "Success: slot 13 power 0 input format 3 unknown and dc_ac_type 0 ac is match \r\n" +
                    lines_of(always_zero, zero) + lines_of(values_without({9}), line),
                0);
}

TEST(PowerPropertyTest, WithoutInputBehindTheSimpleProtocol) {
    const auto line = [](int type) { return type == 21 ? lacks(21) : zero(type); };
    expect_part("power_properties", lost_input_on_simple_protocol() + all_other_zero,
                lost_input_on_simple_protocol_line + ac_match + lines_of(always_zero, zero) +
                    lines_of(values_without({20, 14, 35, 43}), line),
                0);
}

TEST(PowerBoardPropertyTest, LabelVersionsAndFeatures) {
    expect_part("power_board_properties",
                power_board_rule(0, 1026, "0 len=900 buffer=\"[board]\"") +
                    power_board_rule(1, 900, "0 buffer=[78 56 34 12] len=800") +
                    power_board_rule(2, 800, "0 buffer=[ff ff ff ff] len=700") +
                    power_board_rule(3, 700, "0 buffer=[07 00 00 00] len=600") +
                    power_board_rule(4, 600, "0 buffer=\"two stages\""),
                "Success: slot 13 power 0 len 900 POWER_BOARD_ELABLE: [board]\r\n \r\n"
                "Success: slot 13 power 0 POWER_BOARD_SOFT_VER: 305419896\r\n"
                "Success: slot 13 power 0 POWER_BOARD_HW_VER: 4294967295\r\n"
                "Success: slot 13 power 0 POWER_MODULE_FEATURE: 7\r\n"
                "Success: slot 13 power 0 POWER_CHIP_FEATURE: two stages\r\n",
                0);
}

TEST(PowerBoardPropertyTest, AreasThatAreFilledToTheLastByte) {
    const std::string area(1026, 'x');
    const std::string line = "Success: slot 13 power 0 len 1026 POWER_BOARD_ELABLE: ";
    const std::string script = power_board_rule(0, 1026, "0 buffer=\"" + area + "\"") +
                               "drv_power_get_board_property(slot_id=13, power_id=0, len=1026) = 0x811101a4 x4\n";
    const std::string others = "Success: slot 13 power 0 not support get POWER_BOARD_SOFT_VER info. ret 0x811101a4\r\n"
                               "Success: slot 13 power 0 not support get POWER_BOARD_HW_VER info. ret 0x811101a4\r\n"
                               "Success: slot 13 power 0 not support get POWER_MODULE_FEATURE info. ret 0x811101a4\r\n"
                               "Success: slot 13 power 0 not support get POWER_CHIP_FEATURE info. ret 0x811101a4\r\n";
    // A line on the console has at most 1023 characters; a report has the whole text.
    const std::vector<std::string> options = {
        "--script", scratch_file("script", script),      "--strict", "--state", new_scratch_dir(), "--clock", "virtual",
        "--run",    build_dir() + "/tests/selftest_part"};
    const process_result console = run_sim(options, {"power_board_properties"});
    EXPECT_EQ(console.out, (line + area).substr(0, 1023) + others + "result 0\n");
    const process_result report = run_sim(options, {"power_board_properties", "report"});
    EXPECT_EQ(report.out, line + area + "\r\n \r\n" + others + "result 0\n");
    EXPECT_EQ(console.err + report.err, "");
}

// The area is cleared before the first call alone, so a driver that writes nothing leaves what stood there.
TEST(PowerBoardPropertyTest, AreaAndLengthAreHandedOn) {
    expect_part("power_board_properties",
                power_board_rule(0, 1026, "0 len=4 buffer=[41 42 43 44]") +
                    "drv_power_get_board_property(len=4) = 0 x4\n",
                "Success: slot 13 power 0 len 4 POWER_BOARD_ELABLE: ABCD\r\n \r\n"
                "Success: slot 13 power 0 POWER_BOARD_SOFT_VER: 1145258561\r\n"
                "Success: slot 13 power 0 POWER_BOARD_HW_VER: 1145258561\r\n"
                "Success: slot 13 power 0 POWER_MODULE_FEATURE: 1145258561\r\n"
                "Success: slot 13 power 0 POWER_CHIP_FEATURE: ABCD\r\n",
                0);
    expect_part("power_board_properties", "drv_power_get_board_property(len=1026) = 0 x5\n",
                "Success: slot 13 power 0 len 1026 POWER_BOARD_ELABLE: \r\n \r\n"
                "Success: slot 13 power 0 POWER_BOARD_SOFT_VER: 0\r\n"
                "Success: slot 13 power 0 POWER_BOARD_HW_VER: 0\r\n"
                "Success: slot 13 power 0 POWER_MODULE_FEATURE: 0\r\n"
                "Success: slot 13 power 0 POWER_CHIP_FEATURE: \r\n",
                0);
}

// A length that no area has would let the next call write behind it.
TEST(PowerBoardPropertyTest, ALengthBeyondTheAreaIsNotHandedOn) {
    expect_part("power_board_properties",
                power_board_rule(0, 1026, "0 len=5000 buffer=\"label\"") +
                    "drv_power_get_board_property(len=1026) = 0x68 x4\n",
                "Success: slot 13 power 0 len 5000 POWER_BOARD_ELABLE: label\r\n \r\n"
                "Error  : slot 13 power 0 get POWER_BOARD_SOFT_VER fail. ret 0x68\r\n"
                "Error  : slot 13 power 0 get POWER_BOARD_HW_VER fail. ret 0x68\r\n"
                "Error  : slot 13 power 0 get POWER_MODULE_FEATURE fail. ret 0x68 \r\n"
                "Error  : slot 13 power 0 get POWER_CHIP_FEATURE fail. ret 0x68\r\n",
                0);
}

TEST(PowerBoardPropertyTest, AMissingLabelIsAnError) {
    expect_part("power_board_properties", "drv_power_get_board_property = 0x811101a4 x5\n",
                "Error  : slot 13 power 0 get POWER_BOARD_ELABLE fail. ret 0x811101a4\r\n"
                "Success: slot 13 power 0 not support get POWER_BOARD_SOFT_VER info. ret 0x811101a4\r\n"
                "Success: slot 13 power 0 not support get POWER_BOARD_HW_VER info. ret 0x811101a4\r\n"
                "Success: slot 13 power 0 not support get POWER_MODULE_FEATURE info. ret 0x811101a4\r\n"
                "Success: slot 13 power 0 not support get POWER_CHIP_FEATURE info. ret 0x811101a4\r\n",
                0);
}

namespace {

const std::string with_input = power_get(21, "0x69");

std::string quiet(const std::string &alarm) {
    return "Success: slot 13 power 0 get " + alarm + ": alarms 0x0 sub_alarm 0x0\r\n";
}

const std::string first_alarms = quiet("POWER_ALARM_CMD 0x1") + quiet("POWER_ALARM_TEMPERATURE 0x2") +
                                 quiet("POWER_ALARM_VIN_UV_FAULT 0x3") + quiet("POWER_ALARM_IOUT_OC_FAULT 0x4") +
                                 quiet("POWER_ALARM_VOUT_OV_FAULT 0x5") + quiet("POWER_ALARM_VIN_OV_DETECT 0x6");
const std::string input_alarms = quiet("POWER_ALARM_VIN_UNIT_OFF 0x7") + quiet("POWER_ALARM_INPUT 0xd");
const std::string last_alarms = quiet("POWER_ALARM_OTHER 0x9") + quiet("POWER_ALARM_FAN 0xa") +
                                quiet("POWER_ALARM_IOUT_POUT 0xe") + quiet("POWER_ALARM_VOUT 0xf");
const std::string all_other_quiet = "drv_power_get_alarm(slot_id=13, power_id=0) = 0\n";

std::string with_first(const std::string &line) {
    return line + (first_alarms + input_alarms + last_alarms).substr(quiet("POWER_ALARM_CMD 0x1").size());
}

} // namespace

TEST(PowerAlarmTest, AllAlarmsAreAsked) {
    expect_part("power_alarms", with_input + all_other_quiet, first_alarms + input_alarms + last_alarms, 0);
}

TEST(PowerAlarmTest, WhatAnAlarmCanAnswer) {
    expect_part("power_alarms", power_alarm_rule(1, no_support) + with_input + all_other_quiet,
                with_first("Success: slot 13 power 0 not support get POWER_ALARM_CMD 0x1 info. ret 0x811101a4\r\n"), 0);
    expect_part("power_alarms", power_alarm_rule(1, "0x6a") + with_input + all_other_quiet,
                with_first("Error  : slot 13 power 0 get POWER_ALARM_CMD 0x1 fail. ret 0x6a\r\n"), -1);
    expect_part("power_alarms", power_alarm_rule(1, "0 sub_alarm=2") + with_input + all_other_quiet,
                with_first("Error  : slot 13 power 0 get POWER_ALARM_CMD 0x1 fail. sub_alarm 0x2 should be 0 or 1\r\n"),
                -1);
    expect_part("power_alarms", power_alarm_rule(1, "0 alarms=0x82 sub_alarm=1") + with_input + all_other_quiet,
                with_first("Error  : slot 13 power 0 get POWER_ALARM_CMD 0x1 fail. alarms 0x82 sub_alarm 0x1\r\n"), -1);
    expect_part("power_alarms", power_alarm_rule(1, "0 alarms=0 sub_alarm=1") + with_input + all_other_quiet,
                with_first("Success: slot 13 power 0 get POWER_ALARM_CMD 0x1: alarms 0x0 sub_alarm 0x1\r\n"), 0);
}

// The last alarm fails the display, too, and so does one of the input.
TEST(PowerAlarmTest, AnyAlarmFailsTheDisplay) {
    expect_part("power_alarms", power_alarm_rule(15, "0 alarms=1") + with_input + all_other_quiet,
                first_alarms + input_alarms + quiet("POWER_ALARM_OTHER 0x9") + quiet("POWER_ALARM_FAN 0xa") +
                    quiet("POWER_ALARM_IOUT_POUT 0xe") +
                    "Error  : slot 13 power 0 get POWER_ALARM_VOUT 0xf fail. alarms 0x1 sub_alarm 0x0\r\n",
                -1);
    expect_part("power_alarms", power_alarm_rule(7, "0 alarms=0x40 sub_alarm=1") + with_input + all_other_quiet,
                first_alarms +
                    "Error  : slot 13 power 0 get POWER_ALARM_VIN_UNIT_OFF 0x7 fail. alarms 0x40 sub_alarm 0x1\r\n" +
                    quiet("POWER_ALARM_INPUT 0xd") + last_alarms,
                -1);
}

TEST(PowerAlarmTest, WithoutInputOnThePmbusTheInputIsNotJudged) {
    expect_part("power_alarms", lost_input_on_pmbus() + all_other_quiet,
                first_alarms + lost_input_on_pmbus_line + last_alarms, 0);
}

TEST(PowerAlarmTest, WithoutInputBehindTheSimpleProtocolItIs) {
    expect_part("power_alarms", lost_input_on_simple_protocol() + all_other_quiet,
                first_alarms + lost_input_on_simple_protocol_line + input_alarms + last_alarms, 0);
}

TEST(PowerDisplayTest, ASupplyWhosePresenceCannotBeRead) {
    expect_part("power_display", power_get(0, "0x6b value=1"),
                "Info   : slot 13 power 0 display test begin. \r\n"
                "Error  : slot 13 power 0 get online fail. ret 0x6b\r\n",
                0x6b);
    expect_part("power_display", power_get(0, no_support),
                "Info   : slot 13 power 0 display test begin. \r\n"
                "Error  : slot 13 power 0 get online fail. ret 0x811101a4\r\n",
                static_cast<int>(0x811101a4U));
}

TEST(PowerDisplayTest, ASupplyThatIsNotThere) {
    expect_part("power_display", power_get(0, "0 value=1"),
                "Info   : slot 13 power 0 display test begin. \r\n"
                "Info   :slot 13 power 0 is not online.\r\n",
                0);
}

namespace {

// A supply that is online as long as it does not say 1, and lacks all but what must be there.
void expect_display(const std::string &presence, const std::string &bbox, const std::string &bbox_line,
                    const std::string &property_48, const std::string &line_48, const std::string &alarm_15,
                    const std::string &line_15, int result) {
    std::string zeros;
    for (const int type : {3, 17, 14, 20, 22, 40}) {
        zeros += power_get(type, "0 value=0");
    }
    const auto line = [&](int type) {
        const std::vector<int> must = {3, 17, 14, 20, 22, 40};
        return type == 48                                                ? line_48
               : std::find(must.begin(), must.end(), type) != must.end() ? zero(type)
                                                                         : lacks(type);
    };
    const std::string label = "Success: slot 13 power 0 len 1026 POWER_BOARD_ELABLE: \r\n \r\n";
    expect_part("power_display",
                power_get(0, presence) + power_bbox_rule(4096, bbox) + zeros + power_get(48, property_48) +
                    "drv_power_get_property = 0x811101a4\n" + power_board_rule(0, 1026, "0") +
                    "drv_power_get_board_property(len=1026) = 0x6c x4\n" + power_alarm_rule(15, alarm_15) +
                    all_other_quiet,
                "Info   : slot 13 power 0 display test begin. \r\n" + bbox_line + ac_match + lines_of(all_zero, lacks) +
                    lines_of(values_without({}), line) + label +
                    "Error  : slot 13 power 0 get POWER_BOARD_SOFT_VER fail. ret 0x6c\r\n"
                    "Error  : slot 13 power 0 get POWER_BOARD_HW_VER fail. ret 0x6c\r\n"
                    "Error  : slot 13 power 0 get POWER_MODULE_FEATURE fail. ret 0x6c \r\n"
                    "Error  : slot 13 power 0 get POWER_CHIP_FEATURE fail. ret 0x6c\r\n" +
                    first_alarms + input_alarms + quiet("POWER_ALARM_OTHER 0x9") + quiet("POWER_ALARM_FAN 0xa") +
                    quiet("POWER_ALARM_IOUT_POUT 0xe") + line_15,
                result);
}

const std::string no_bbox = "Success: slot 13 power 0 not support get bbox info. ret 0x811101a4\r\n";

} // namespace

// Board properties are shown only: their failures fail nothing.
TEST(PowerDisplayTest, ASupplyThatIsThere) {
    expect_display("0 value=0", no_support, no_bbox, no_support, lacks(48), "0", quiet("POWER_ALARM_VOUT 0xf"), 0);
    expect_display("0 value=2", no_support, no_bbox, no_support, lacks(48), "0", quiet("POWER_ALARM_VOUT 0xf"), 0);
}

TEST(PowerDisplayTest, EachPartFailsIt) {
    expect_display("0", "0x20", "Error  : slot 13 power 0 get bbox info fail. ret 0x20\r\n", no_support, lacks(48), "0",
                   quiet("POWER_ALARM_VOUT 0xf"), 0x20);
    expect_display("0", no_support, no_bbox, "0x6d", fails(48, "0x6d"), "0", quiet("POWER_ALARM_VOUT 0xf"), -1);
    expect_display("0", no_support, no_bbox, no_support, lacks(48), "0x6e",
                   "Error  : slot 13 power 0 get POWER_ALARM_VOUT 0xf fail. ret 0x6e\r\n", -1);
}

TEST(PowerDisplayTest, TheBlackBoxIsReadWithRoomFor4096Bytes) {
    std::string numbers;
    for (int i = 0; i < 4095; ++i) {
        numbers += "0 ";
    }
    expect_display("0", "0 retlen=0",
                   "Success: slot 13 power 0 get bbox info return length 0 \r\n" + numbers +
                       "0 \r\n"
                       "Success: slot 13 power 0 get bbox info  \r\n",
                   no_support, lacks(48), "0", quiet("POWER_ALARM_VOUT 0xf"), 0);
}
