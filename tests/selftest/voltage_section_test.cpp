// The voltage section: values, setting, alerts of regulators, dumps, power stages.
#include <gtest/gtest.h>

#include "tests/selftest/call_order.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

constexpr const char *not_supported = "0x811101a4";

std::string rails(int count) {
    return entry_count("voltage_mng", "check_attr", count);
}

std::string rail_entry(int index, const std::string &answer) {
    return element("voltage_mng", "check_attr", index, "voltage_id", answer);
}

std::string id(const std::string &number) {
    return "(inst_id=0xffffffff, voltage_id=" + number + ")";
}

std::string value_rule(const std::string &number, const std::string &answer) {
    return "drv_voltage_get_value" + id(number) + " = " + answer + "\n";
}

std::string desc_rule(const std::string &number, const std::string &answer) {
    return "drv_voltage_get_node_desc(inst_id=0xffffffff, voltage_id=" + number + ", size=64) = " + answer + "\n";
}

std::string history_rule(const std::string &number, const std::string &answer) {
    return "drv_voltage_get_history_value" + id(number) + " = " + answer + "\n";
}

std::string good_rail(const std::string &number) {
    return value_rule(number, "0 value=3300") + desc_rule(number, "0 desc=\"3V3\"") +
           history_rule(number, "0 max_value=3312 min_value=3288");
}

std::string setting_entry(int index, int voltage_id, uint32_t low, uint32_t high) {
    return element("voltage_mng", "set_attr", index, "voltage_id", "0 value=" + std::to_string(voltage_id)) +
           element("voltage_mng", "set_attr", index, "set_low_th", "0 value=" + std::to_string(low)) +
           element("voltage_mng", "set_attr", index, "set_high_th", "0 value=" + std::to_string(high));
}

std::string set_rule(const std::string &number, const std::string &value, const std::string &answer) {
    return "drv_voltage_set_value(inst_id=0xffffffff, voltage_id=" + number + ", value=" + value + ") = " + answer +
           "\n";
}

std::string one_setting(uint32_t low, uint32_t high) {
    return entry_count("voltage_mng", "set_attr", 1) + setting_entry(0, 2, low, high);
}

std::string vrm_entry(int index, const std::string &answer) {
    return element("voltage_mng", "vrm_alert_result", index, "vrm_chip_id", answer);
}

std::string vrm_rule(const std::string &chip, const std::string &answer) {
    return "drv_voltage_check_vrm_alert(inst_id=0xffffffff, chip_id=" + chip + ", len=1200) = " + answer + "\n";
}

std::string power_entry(int index, const std::string &answer) {
    return element("voltage_mng", "power_check", index, "power_id", answer);
}

std::string power_rule(const std::string &power, const std::string &answer) {
    return "drv_voltage_check_power(inst_id=0xffffffff, power_id=" + power + ", len=1200) = " + answer + "\n";
}

std::string dump_rules(const std::string &power, const std::string &avs) {
    return "drv_voltage_dump_power(inst_id=0xffffffff, len=1200) = " + power +
           "\ndrv_avs_dump_dfx_info(inst_id=0xffffffff, len=1200) = " + avs + "\n";
}

} // namespace

TEST(VoltageValuesTest, ShowsEveryDescribedRail) {
    expect_part("voltage_values",
                rails(2) + rail_entry(0, "0 value=3") + rail_entry(1, "0 value=1000") + good_rail("3") +
                    value_rule("1000", "0 value=1800") + desc_rule("1000", "0 desc=\"1V8 memory\"") +
                    history_rule("1000", "0 max_value=1811 min_value=1790"),
                "Success: get voltage_id 3   value is 3300mv. desc: 3V3. max 3312 min 3288\r\n"
                "Success: get voltage_id 1000 value is 1800mv. desc: 1V8 memory. max 1811 min 1790\r\n",
                0);
}

TEST(VoltageValuesTest, NodeThatIsMissingOrEmpty) {
    for (const std::string &count :
         {entry_count("voltage_mng", "check_attr", 0), no_entry_count("voltage_mng", "check_attr", "0x12")}) {
        expect_part("voltage_values", count, "Info   : voltage get value is not support.\r\n", 0);
    }
}

TEST(VoltageValuesTest, AnEntryWithoutItsElementIsSkipped) {
    expect_part("voltage_values", rails(2) + rail_entry(0, "0x51") + rail_entry(1, "0 value=3") + good_rail("3"),
                "Success: get voltage_id 3   value is 3300mv. desc: 3V3. max 3312 min 3288\r\n", 0);
}

TEST(VoltageValuesTest, AMonitorWithoutPeaks) {
    expect_part("voltage_values",
                rails(1) + rail_entry(0, "0 value=12") + value_rule("12", "0 value=905") +
                    desc_rule("12", "0 desc=\"core\"") + history_rule("12", not_supported),
                "Success: get voltage_id 12  value is 905mv. desc: core\r\n", 0);
}

TEST(VoltageValuesTest, ARailWithoutValueIsDescribedAllTheSame) {
    expect_part("voltage_values",
                rails(2) + rail_entry(0, "0 value=7") + rail_entry(1, "0 value=3") + value_rule("7", "0x1f") +
                    desc_rule("7", "0 desc=\"5V0\"") + history_rule("7", "0 max_value=1 min_value=0") + good_rail("3"),
                "Error: voltage get fail. voltage_id 7 ret 0x1f\r\n"
                "Success: get voltage_id 7   value is 0mv. desc: 5V0. max 1 min 0\r\n"
                "Success: get voltage_id 3   value is 3300mv. desc: 3V3. max 3312 min 3288\r\n",
                -1);
}

TEST(VoltageValuesTest, ARailWithoutDescription) {
    expect_part("voltage_values",
                rails(2) + rail_entry(0, "0 value=7") + rail_entry(1, "0 value=8") + value_rule("7", "0 value=5010") +
                    desc_rule("7", "0x2f") + history_rule("7", "0 max_value=5030 min_value=4990") +
                    value_rule("8", "0 value=5") + desc_rule("8", not_supported) + history_rule("8", "0x3f"),
                "Error: voltage get desc fail. voltage_id 7 ret 0x2f\r\n"
                "Error: get voltage_id 7   value is 5010mv. desc: . max 5030 min 4990\r\n"
                "Error: voltage get desc fail. voltage_id 8 ret 0x811101a4\r\n"
                "Error: get voltage_id 8   value is 5mv. desc: \r\n",
                -1);
}

TEST(VoltageValuesTest, NumbersBeyondTheSignedRange) {
    expect_part("voltage_values",
                rails(1) + rail_entry(0, "0 value=0xffffffff") + value_rule("0xffffffff", "0x11") +
                    desc_rule("0xffffffff", "0x12") +
                    history_rule("0xffffffff", "0 max_value=0xfffffffe min_value=0x80000000"),
                "Error: voltage get fail. voltage_id -1 ret 0x11\r\n"
                "Error: voltage get desc fail. voltage_id -1 ret 0x12\r\n"
                "Error: get voltage_id 4294967295 value is 0mv. desc: . max -2 min -2147483648\r\n",
                -1);
}

TEST(VoltageValuesTest, WhatTheDriverLeavesUnwrittenIsZeroForEachRail) {
    expect_part("voltage_values",
                rails(2) + rail_entry(0, "0 value=3") + rail_entry(1, "0 value=4") + good_rail("3") +
                    value_rule("4", "0") + desc_rule("4", "0") + history_rule("4", "0"),
                "Success: get voltage_id 3   value is 3300mv. desc: 3V3. max 3312 min 3288\r\n"
                "Success: get voltage_id 4   value is 0mv. desc: . max 0 min 0\r\n",
                0);
}

TEST(VoltageValuesTest, ADescriptionMayFillItsArea) {
    const std::string desc(64, 'd');
    expect_part("voltage_values",
                rails(1) + rail_entry(0, "0 value=1") + value_rule("1", "0 value=1") +
                    desc_rule("1", "0 desc=\"" + desc + "\"") + history_rule("1", "0 max_value=2 min_value=1"),
                "Success: get voltage_id 1   value is 1mv. desc: " + desc + ". max 2 min 1\r\n", 0);
}

TEST(VoltageValuesTest, OrderOfCalls) {
    EXPECT_EQ(driver_calls("voltage_values", rails(1) + rail_entry(0, "0 value=3") + good_rail("3")),
              "drv_voltage_get_value(inst_id=0xffffffff, voltage_id=3)\n"
              "drv_voltage_get_node_desc(inst_id=0xffffffff, voltage_id=3, size=64)\n"
              "drv_voltage_get_history_value(inst_id=0xffffffff, voltage_id=3)\n");
}

TEST(VoltageSettingTest, ARailStaysAtTheMidpoint) {
    const std::string script = one_setting(871, 930) + value_rule("2", "0 value=903 x1") + set_rule("2", "900", "0") +
                               value_rule("2", "0 value=900 x1");
    expect_part("voltage_setting", script, "Success: voltage 2 get and set value pass. original value 900\r\n", 0);
    EXPECT_EQ(driver_calls("voltage_setting", script), "drv_voltage_get_value(inst_id=0xffffffff, voltage_id=2)\n"
                                                       "drv_voltage_set_value(inst_id=0xffffffff, voltage_id=2, "
                                                       "value=900)\n"
                                                       "drv_voltage_get_value(inst_id=0xffffffff, voltage_id=2)\n");
}

TEST(VoltageSettingTest, NodeThatIsMissingOrEmpty) {
    for (const std::string &count :
         {entry_count("voltage_mng", "set_attr", 0), no_entry_count("voltage_mng", "set_attr", "0x12")}) {
        expect_part("voltage_setting", count, "Info   : voltage set value is not support.\r\n", 0);
    }
}

TEST(VoltageSettingTest, EntriesThatLackAnElementAreSkipped) {
    const std::string node = "set_attr";
    expect_part("voltage_setting",
                entry_count("voltage_mng", node, 4) + element("voltage_mng", node, 0, "voltage_id", "0x51") +
                    element("voltage_mng", node, 1, "voltage_id", "0 value=1") +
                    element("voltage_mng", node, 1, "set_low_th", "0x51") +
                    element("voltage_mng", node, 2, "voltage_id", "0 value=1") +
                    element("voltage_mng", node, 2, "set_low_th", "0 value=1") +
                    element("voltage_mng", node, 2, "set_high_th", "0x51") + setting_entry(3, 6, 900, 1100) +
                    value_rule("6", "0 value=1004 x1") + set_rule("6", "1000", "0") +
                    value_rule("6", "0 value=1000 x1"),
                "Success: voltage 6 get and set value pass. original value 1000\r\n", 0);
}

TEST(VoltageSettingTest, ARailThatCannotBeMeasuredIsNotSet) {
    expect_part("voltage_setting",
                entry_count("voltage_mng", "set_attr", 2) + setting_entry(0, 2, 900, 1100) +
                    setting_entry(1, 3, 10, 20) + value_rule("2", "0x1f") + value_rule("3", "0 value=15") +
                    set_rule("3", "15", "0"),
                "Error  : voltage get fail. voltage_id 2 ret 0x1f\r\n"
                "Success: voltage 3 get and set value pass. original value 15\r\n",
                -1);
}

TEST(VoltageSettingTest, ARailThatRefusesItsSetting) {
    expect_part("voltage_setting",
                entry_count("voltage_mng", "set_attr", 2) + setting_entry(0, 2, 900, 1100) +
                    setting_entry(1, 3, 10, 20) + value_rule("2", "0 value=1004") + set_rule("2", "1000", "0x2f") +
                    value_rule("3", "0 value=15") + set_rule("3", "15", "0"),
                "Error  : voltage set fail. voltage_id 2 set value 1000 ret 0x2f\r\n"
                "Success: voltage 3 get and set value pass. original value 15\r\n",
                -1);
}

TEST(VoltageSettingTest, ARailThatCannotBeReadBack) {
    expect_part("voltage_setting",
                one_setting(900, 1100) + value_rule("2", "0 value=1004 x1") + set_rule("2", "1000", "0") +
                    value_rule("2", "0x3f x1"),
                "Error  : voltage set fail. voltage_id 2 set value 1000 ret 0x3f\r\n", -1);
}

TEST(VoltageSettingTest, ARailThatDoesNotFollowIsNoFailure) {
    expect_part("voltage_setting",
                one_setting(900, 1101) + value_rule("2", "0 value=1004 x1") + set_rule("2", "1000", "0") +
                    value_rule("2", "0 value=1001 x1"),
                "Info   : voltage set fail. voltage_id 2 set value 1000 get value 1001 original value 1004\r\n", 0);
}

TEST(VoltageSettingTest, WhatTheDriverLeavesUnwrittenIsZero) {
    expect_part("voltage_setting",
                one_setting(3, 4) + value_rule("2", "0 value=9 x1") + set_rule("2", "3", "0") + value_rule("2", "0 x1"),
                "Info   : voltage set fail. voltage_id 2 set value 3 get value 0 original value 9\r\n", 0);
    expect_part("voltage_setting",
                one_setting(3, 4) + value_rule("2", "0 x1") + set_rule("2", "3", "0") + value_rule("2", "0 value=2 x1"),
                "Info   : voltage set fail. voltage_id 2 set value 3 get value 2 original value 0\r\n", 0);
}

TEST(VoltageSettingTest, TheMidpointIsUnsigned) {
    expect_part("voltage_setting",
                one_setting(0x7fffffff, 0x80000000) + value_rule("2", "0 value=0xffffffff") +
                    set_rule("2", "0x7fffffff", "0"),
                "Info   : voltage set fail. voltage_id 2 set value 2147483647 get value -1 original value -1\r\n", 0);
}

TEST(VrmAlertTest, EveryDescribedRegulator) {
    expect_part("vrm_alerts",
                entry_count("voltage_mng", "vrm_alert_result", 3) + vrm_entry(0, "0 value=0") + vrm_entry(1, "0x51") +
                    vrm_entry(2, "0 value=26") + vrm_rule("0", "0 result=0") + vrm_rule("26", "0"),
                "Success: voltage get avs chip 0x-80 alert check pass\r\n"
                "Success: voltage get avs chip 0x-81a alert check pass\r\n",
                0);
}

TEST(VrmAlertTest, NodeThatIsMissingOrEmpty) {
    for (const std::string &count : {entry_count("voltage_mng", "vrm_alert_result", 0),
                                     no_entry_count("voltage_mng", "vrm_alert_result", "0x12")}) {
        expect_part("vrm_alerts", count, "Info   : voltage avs alert check is not support.\r\n", 0);
    }
}

TEST(VrmAlertTest, AFailedCheckAndAnAlertAreErrors) {
    expect_part("vrm_alerts",
                entry_count("voltage_mng", "vrm_alert_result", 3) + vrm_entry(0, "0 value=1") +
                    vrm_entry(1, "0 value=2") + vrm_entry(2, "0 value=3") + vrm_rule("1", "0x4f") +
                    vrm_rule("2", "0 result=1 buffer=\"" + std::string(1200, 'a') + "\"") + vrm_rule("3", "0 result=0"),
                "Error: voltage get avs chip 0x-81 alert fail 0x4f\r\n"
                "Error: voltage get avs chip 0x-82 alert fail 0x0\r\n"
                "Success: voltage get avs chip 0x-83 alert check pass\r\n",
                -1);
}

TEST(DumpTest, BothDumpsCanBeHad) {
    const std::string full = "0 buffer=\"" + std::string(1200, 'd') + "\"";
    expect_part("power_and_avs_dump", dump_rules("0 buffer=\"power 0\"", "0"),
                "Success: voltage power and avs dump pass\r\n", 0);
    expect_part("power_and_avs_dump", dump_rules(full, full), "Success: voltage power and avs dump pass\r\n", 0);
    EXPECT_EQ(driver_calls("power_and_avs_dump", dump_rules("0", "0")),
              "drv_voltage_dump_power(inst_id=0xffffffff, len=1200)\n"
              "drv_avs_dump_dfx_info(inst_id=0xffffffff, len=1200)\n");
}

TEST(DumpTest, ABoardWithoutADumpPasses) {
    expect_part("power_and_avs_dump", dump_rules(not_supported, "0"),
                "Info   : voltage power dump is not support\r\n"
                "Success: voltage power and avs dump pass\r\n",
                0);
    expect_part("power_and_avs_dump", dump_rules("0", "0xa4"),
                "Info   : voltage avs dump is not support\r\n"
                "Success: voltage power and avs dump pass\r\n",
                0);
}

TEST(DumpTest, ADumpThatFails) {
    expect_part("power_and_avs_dump", dump_rules("0x811101a3", "0"), "Error  : voltage power dump fail 0x811101a3\r\n",
                -1);
    expect_part("power_and_avs_dump", dump_rules("0", "0xa400"), "Error  : voltage avs dump fail 0xa400\r\n", -1);
    expect_part("power_and_avs_dump", dump_rules("0x1f", "0x2f"),
                "Error  : voltage power dump fail 0x1f\r\n"
                "Error  : voltage avs dump fail 0x2f\r\n",
                -1);
    expect_part("power_and_avs_dump", dump_rules("0x1f", not_supported),
                "Error  : voltage power dump fail 0x1f\r\n"
                "Info   : voltage avs dump is not support\r\n",
                -1);
}

TEST(PowerStageTest, EveryDescribedStage) {
    expect_part("power_stages",
                entry_count("voltage_mng", "power_check", 3) + power_entry(0, "0 value=0") + power_entry(1, "0x51") +
                    power_entry(2, "0 value=0xffffffff") + power_rule("0", "0 result=0") +
                    power_rule("0xffffffff", "0"),
                "Success: voltage power 0 check pass\r\n"
                "Success: voltage power 4294967295 check pass\r\n",
                0);
}

TEST(PowerStageTest, NodeThatIsMissingOrEmpty) {
    for (const std::string &count :
         {entry_count("voltage_mng", "power_check", 0), no_entry_count("voltage_mng", "power_check", "0x12")}) {
        expect_part("power_stages", count, "Info   : voltage power check is not support.\r\n", 0);
    }
}

TEST(PowerStageTest, AFailedCheckAndAFaultAreErrors) {
    expect_part("power_stages",
                entry_count("voltage_mng", "power_check", 3) + power_entry(0, "0 value=1") +
                    power_entry(1, "0 value=2") + power_entry(2, "0 value=3") + power_rule("1", "0x4f") +
                    power_rule("2", "0 result=1 buffer=\"" + std::string(1200, 's') + "\"") +
                    power_rule("3", "0 result=0"),
                "Error: voltage power 1 check fail 0x4f\r\n"
                "Error: voltage power 2 check fail 0x0\r\n"
                "Success: voltage power 3 check pass\r\n",
                -1);
}

TEST(VoltageSectionTest, ABoardWithoutAnyOfIt) {
    expect_part("voltage",
                entry_count("voltage_mng", "check_attr", 0) + entry_count("voltage_mng", "set_attr", 0) +
                    entry_count("voltage_mng", "vrm_alert_result", 0) + dump_rules(not_supported, not_supported) +
                    entry_count("voltage_mng", "power_check", 0),
                "Info   : voltage get value is not support.\r\n"
                "Info   : voltage set value is not support.\r\n"
                "Info   : voltage avs alert check is not support.\r\n"
                "Info   : voltage power dump is not support\r\n"
                "Info   : voltage avs dump is not support\r\n"
                "Success: voltage power and avs dump pass\r\n"
                "Info   : voltage power check is not support.\r\n",
                0);
}

namespace {

struct one_fault {
    const char *value;
    const char *set;
    const char *alert;
    const char *dump;
    const char *stage;
};

} // namespace

TEST(VoltageSectionTest, AFailureAnywhereIsTheSectionsAndTheOthersAreTested) {
    const std::string values = "Success: get voltage_id 1   value is 5mv. desc: . max 0 min 0\r\n";
    const std::string setting = "Success: voltage 2 get and set value pass. original value 1000\r\n";
    const std::string alert = "Success: voltage get avs chip 0x-84 alert check pass\r\n";
    const std::string dump = "Success: voltage power and avs dump pass\r\n";
    const std::string stage = "Success: voltage power 6 check pass\r\n";
    const auto run = [](const one_fault &fault, const std::string &lines, int result) {
        expect_part("voltage",
                    rails(1) + rail_entry(0, "0 value=1") + value_rule("1", std::string(fault.value) + " value=5") +
                        desc_rule("1", "0") + history_rule("1", "0") + one_setting(900, 1100) +
                        value_rule("2", "0 value=1000") + set_rule("2", "1000", fault.set) +
                        entry_count("voltage_mng", "vrm_alert_result", 1) + vrm_entry(0, "0 value=4") +
                        vrm_rule("4", fault.alert) + dump_rules(fault.dump, "0") +
                        entry_count("voltage_mng", "power_check", 1) + power_entry(0, "0 value=6") +
                        power_rule("6", fault.stage),
                    lines, result);
    };
    run({"0", "0", "0", "0", "0"}, values + setting + alert + dump + stage, 0);
    run({"1", "0", "0", "0", "0"},
        "Error: voltage get fail. voltage_id 1 ret 0x1\r\n" + values + setting + alert + dump + stage, -1);
    run({"0", "1", "0", "0", "0"},
        values + "Error  : voltage set fail. voltage_id 2 set value 1000 ret 0x1\r\n" + alert + dump + stage, -1);
    run({"0", "0", "1", "0", "0"},
        values + setting + "Error: voltage get avs chip 0x-84 alert fail 0x1\r\n" + dump + stage, -1);
    run({"0", "0", "0", "1", "0"}, values + setting + alert + "Error  : voltage power dump fail 0x1\r\n" + stage, -1);
    run({"0", "0", "0", "0", "1"}, values + setting + alert + dump + "Error: voltage power 6 check fail 0x1\r\n", -1);
}
