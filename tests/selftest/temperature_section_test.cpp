// The temperature section: every described sensor answers.
#include <gtest/gtest.h>

#include "tests/selftest/call_order.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string sensors(int count) {
    return entry_count("temp_mng", "temp_attr", count);
}

std::string entry(int index, const std::string &answer) {
    return element("temp_mng", "temp_attr", index, "temperature_id", answer);
}

std::string value_rule(const std::string &number, const std::string &answer) {
    return "drv_temperature_get_value(inst_id=0xffffffff, temperature_id=" + number + ") = " + answer + "\n";
}

std::string desc_rule(const std::string &number, const std::string &answer) {
    return "drv_temperature_get_node_desc(inst_id=0xffffffff, temperature_id=" + number + ", size=64) = " + answer +
           "\n";
}

} // namespace

TEST(TemperatureSectionTest, ShowsEveryDescribedSensor) {
    const std::string script = sensors(3) + entry(0, "0 value=0") + entry(1, "0x51") + entry(2, "0 value=12") +
                               value_rule("0", "0 value=25") + desc_rule("0", "0 desc=\"air inlet\"") +
                               value_rule("12", "0 value=-5") + desc_rule("12", "0 desc=\"switch\"");
    expect_part("temperature", script,
                "Success: get temperature_id 0   value is 25. desc: air inlet\r\n"
                "Success: get temperature_id 12  value is -5. desc: switch\r\n",
                0);
    EXPECT_EQ(driver_calls("temperature", script),
              "drv_temperature_get_value(inst_id=0xffffffff, temperature_id=0)\n"
              "drv_temperature_get_node_desc(inst_id=0xffffffff, temperature_id=0, size=64)\n"
              "drv_temperature_get_value(inst_id=0xffffffff, temperature_id=12)\n"
              "drv_temperature_get_node_desc(inst_id=0xffffffff, temperature_id=12, size=64)\n");
}

TEST(TemperatureSectionTest, ANodeThatIsMissingOrEmptyFails) {
    for (const std::string &count : {sensors(0), no_entry_count("temp_mng", "temp_attr", "0x12")}) {
        expect_part("temperature", count, "Error: temperature xml get entry num fail.\r\n", -1);
    }
}

TEST(TemperatureSectionTest, ASensorWithoutValueIsDescribedAllTheSame) {
    expect_part("temperature",
                sensors(2) + entry(0, "0 value=1") + entry(1, "0 value=2") + value_rule("1", "0x1f") +
                    desc_rule("1", "0 desc=\"memory\"") + value_rule("2", "0 value=40") +
                    desc_rule("2", "0 desc=\"outlet\""),
                "Error: temperature get fail. temperature_id 1 ret 0x1f\r\n"
                "Success: get temperature_id 1   value is 0. desc: memory\r\n"
                "Success: get temperature_id 2   value is 40. desc: outlet\r\n",
                -1);
}

TEST(TemperatureSectionTest, ASensorWithoutDescription) {
    expect_part("temperature",
                sensors(2) + entry(0, "0 value=0xffffffff") + entry(1, "0 value=2") +
                    value_rule("0xffffffff", "0 value=41") + desc_rule("0xffffffff", "0x811101a4") +
                    value_rule("2", "0 value=40") + desc_rule("2", "0 desc=\"outlet\""),
                "Error: temperature get desc fail. temperature_id -1 ret 0x811101a4\r\n"
                "Error: get temperature_id 4294967295 value is 41. desc: \r\n"
                "Success: get temperature_id 2   value is 40. desc: outlet\r\n",
                -1);
}

TEST(TemperatureSectionTest, ASensorThatIsGone) {
    expect_part("temperature",
                sensors(1) + entry(0, "0 value=0xfffffffe") + value_rule("0xfffffffe", "0x1f") +
                    desc_rule("0xfffffffe", "0x2f"),
                "Error: temperature get fail. temperature_id -2 ret 0x1f\r\n"
                "Error: temperature get desc fail. temperature_id -2 ret 0x2f\r\n"
                "Error: get temperature_id 4294967294 value is 0. desc: \r\n",
                -1);
}

TEST(TemperatureSectionTest, WhatTheDriverLeavesUnwrittenIsZeroForEachSensor) {
    const std::string desc(64, 'd');
    expect_part("temperature",
                sensors(2) + entry(0, "0 value=1") + entry(1, "0 value=2") + value_rule("1", "0 value=40") +
                    desc_rule("1", "0 desc=\"" + desc + "\"") + value_rule("2", "0") + desc_rule("2", "0"),
                "Success: get temperature_id 1   value is 40. desc: " + desc +
                    "\r\n"
                    "Success: get temperature_id 2   value is 0. desc: \r\n",
                0);
}
