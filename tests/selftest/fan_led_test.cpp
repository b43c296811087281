// The lamps of fan trays: four colours, set and read back.
#include <gtest/gtest.h>

#include "tests/selftest/fan_script.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

const std::string no_time = "--------------------Total test time: 0s 0ms--------------------\r\n";

std::string set(int color, const std::string &answer) {
    return "drv_fan_set_led(slot_id=11, type=0, color=" + std::to_string(color) + ") = " + answer + "\n";
}

std::string get(const std::string &answer) {
    return "drv_fan_get_led(slot_id=11, type=0) = " + answer + "\n";
}

const std::string set_all = set(0, "0 x1") + set(1, "0 x1") + set(2, "0 x1") + set(4, "0 x1");

void expect_lamp(const std::string &script, const std::string &lines, int result) {
    expect_part("fan_led", fan_slots(1, "0b") + script, fan_rule_line + lines + no_time, result);
}

} // namespace

TEST(FanLedTest, FourColors) {
    expect_lamp(get("0 color=3 x1") + set_all + get("0 color=0 x1") + get("0 color=1 x1") + get("0 color=2 x1") +
                    get("0 color=4 x1"),
                "[FAN11] Led Test Result:\r\n"
                "type-0 color-0: pass\r\n"
                "type-0 color-1: pass\r\n"
                "type-0 color-2: pass\r\n"
                "type-0 color-4: pass\r\n"
                "Info: Success color: 4, Fail color: 0\r\n",
                0);
}

TEST(FanLedTest, ALampThatStaysAsItIs) {
    expect_lamp(get("0 color=2") + set_all,
                "[FAN11] Led Test Result:\r\n"
                "Error: contrast led color(0) fail in last step\r\n"
                "type-0 color-0: fail\r\n"
                "Error: contrast led color(1) fail in last step\r\n"
                "type-0 color-1: fail\r\n"
                "type-0 color-2: pass\r\n"
                "Error: contrast led color(4) fail in last step\r\n"
                "type-0 color-4: fail\r\n"
                "Info: Success color: 1, Fail color: 3\r\n",
                3);
}

// A colour that was not taken is not read back; "not supported" is a failure by now.
TEST(FanLedTest, EachStepFails) {
    expect_lamp(get("0 x1") + set(0, "0x100") + set(1, "0") + set(2, "0x811101a4") + set(4, "0") + get("0x20 x1") +
                    get("0 x1"),
                "[FAN11] Led Test Result:\r\n"
                "Error: set led color(0) fail in first step\r\n"
                "type-0 color-0: fail\r\n"
                "Error: get led color fail in second step\r\n"
                "type-0 color-1: fail\r\n"
                "Error: set led color(2) fail in first step\r\n"
                "type-0 color-2: fail\r\n"
                "Error: contrast led color(4) fail in last step\r\n"
                "type-0 color-4: fail\r\n"
                "Info: Success color: 0, Fail color: 4\r\n",
                static_cast<int>(0x811102c5));
}

TEST(FanLedTest, LampsThatCannotBeRead) {
    expect_part("fan_led",
                fan_slots(3, "0b 02 03") + get("0x811101a4") +
                    "drv_fan_get_led(slot_id=2, type=0) = 0x71\n"
                    "drv_fan_get_led(slot_id=3, type=0) = 0x8\n",
                fan_rule_line +
                    "[FAN11] Led-Test: N/A\r\n"
                    "[FAN2] Led-Test: --\r\n"
                    "[FAN3] Led-Test: --\r\n" +
                    no_time,
                0x79);
}

TEST(FanLedTest, WithoutASlotList) {
    expect_part("fan_led", "drv_slot_get_list(type=5) = 0x65\n", "Error: get fan slot list fail\r\n", 0x65);
}
