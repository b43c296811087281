// The set-and-get test of a power supply: values that are set back, and those that are only set.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"
#include "tests/selftest/power_calls.h"
#include "tests/selftest/power_script.h"

using namespace kestro_tests;

namespace {

const std::string begin = "Info   : slot 13 power 0 set and get test begin. \r\n";
const std::string no_limit = "Info   : slot 13 power 0 get POWER_TEMP_LIMIT 0x5 is not support. \r\n";
const std::string no_latch = "Info   : slot 13 power 0 get POWER_LATCH_STATE 0x18 is not support. \r\n";
const std::string no_mode = "Info   : slot 13 power 0 get POWER_TEMP_MODE 0x22 is not support. \r\n";
const std::string no_writes = "Info   : slot 13 power 0 get POWER_CLEAR_FAULT 0x1d is not support. \r\n"
                              "Info   : slot 13 power 0 get POWER_ENABLE_CTRL 0x1a is not support. \r\n"
                              "Info   : slot 13 power 0 get POWER_STARTUP_DELAY 0x1b is not support. \r\n"
                              "Info   : slot 13 power 0 get POWER_STARTUP_DELAY 0x1b is not support. \r\n";
const std::string no_other_value = "drv_power_get_property(slot_id=13, power_id=0) = 0x811101a4 x2\n";
const std::string no_other_write = "drv_power_set_property(slot_id=13, power_id=0) = 0x17a4 x4\n";

void expect_limit(const std::string &script, const std::string &lines, int result) {
    expect_part("power_set_and_get", script + no_other_value + no_other_write,
                begin + lines + no_latch + no_mode + no_writes, result);
}

void expect_latch(const std::string &script, const std::string &lines, int result) {
    expect_part("power_set_and_get", script + no_other_write, begin + no_limit + lines + no_mode + no_writes, result);
}

std::string limit_error(const std::string &values) {
    return "Error  : slot 13 power 0 set POWER_TEMP_LIMIT 0x5 fail. " + values + "\r\n";
}

std::string latch_error(const std::string &values) {
    return "Error  : slot 13 power 0 set POWER_LATCH_STATE 0x18 fail. " + values + "\r\n";
}

} // namespace

TEST(PowerSetAndGetTest, ASupplyThatLacksAll) {
    expect_part("power_set_and_get",
                "drv_power_get_property(slot_id=13, power_id=0) = 0x811101a4 x3\n"
                "drv_power_set_property(slot_id=13, power_id=0) = 0x17a4 x4\n",
                begin + no_limit + no_latch + no_mode + no_writes, 0);
}

TEST(PowerSetAndGetTest, ASupplyThatTakesAll) {
    expect_part("power_set_and_get",
                power_get(5, "0 value=70 x1") + power_set(5, 69, "0 x1") + power_get(5, "0 value=69 x1") +
                    power_set(5, 70, "0 x1") + power_get(24, "0 value=0 x1") + power_set(24, 1, "0 x1") +
                    power_get(24, "0 value=1 x1") + power_set(24, 0, "0 x1") + power_get(34, "0 value=1 x1") +
                    power_set(34, 0, "0 x1") + power_get(34, "0 value=0 x1") + power_set(34, 1, "0 x1") +
                    power_set(29, 0, "0 x1") + power_set(26, 1, "0 x1") + power_set(27, 10, "0 x1") +
                    power_set(27, 1, "0 x1"),
                begin + "Success: slot 13 power 0 set POWER_TEMP_LIMIT 0x5 pass. value 69\r\n"
                        "Success: slot 13 power 0 set POWER_LATCH_STATE 0x18 pass. value 1\r\n"
                        "Success: slot 13 power 0 set POWER_TEMP_MODE 0x22 pass. value 0\r\n"
                        "Success: slot 13 power 0 set POWER_CLEAR_FAULT 0x1d pass. value 0\r\n"
                        "Success: slot 13 power 0 set POWER_ENABLE_CTRL 0x1a pass. value 1\r\n"
                        "Success: slot 13 power 0 set POWER_STARTUP_DELAY 0x1b pass. value 10\r\n"
                        "Success: slot 13 power 0 set POWER_STARTUP_DELAY 0x1b pass. value 1\r\n",
                0);
}

TEST(PowerSetAndGetTest, TheOrderOfTheCalls) {
    expect_calls("power_set_and_get",
                 power_get(5, "0 value=70 x1") + power_get(5, "0 value=69") + "drv_power_get_property = 0 value=1\n" +
                     "drv_power_set_property = 0\n",
                 {"get_property 5", "set_property 5 69", "get_property 5", "set_property 5 70", "get_property 24",
                  "set_property 24 0", "get_property 24", "set_property 24 1", "get_property 34", "set_property 34 0",
                  "get_property 34", "set_property 34 1", "set_property 29 0", "set_property 26 1",
                  "set_property 27 10", "set_property 27 1"});
}

TEST(PowerSetAndGetTest, WhatCannotBeReadIsLeftAlone) {
    expect_limit(power_get(5, "0x77 value=3"), "", 0);
    expect_latch(power_get(5, no_support) + power_get(24, "0x78 value=7") +
                     "drv_power_get_property(type=34) = 0x811101a4\n",
                 "", 0);
}

// 0 has no value below it; it is written all the same.
TEST(PowerSetAndGetTest, ALimitOfZero) {
    expect_limit(power_get(5, "0 value=0") + power_set(5, 0, "0 x2"),
                 "Success: slot 13 power 0 set POWER_TEMP_LIMIT 0x5 pass. value 0\r\n", 0);
    expect_limit(power_get(5, "0 value=1 x1") + power_get(5, "0") + power_set(5, 0, "0 x1") + power_set(5, 1, "0 x1"),
                 "Success: slot 13 power 0 set POWER_TEMP_LIMIT 0x5 pass. value 0\r\n", 0);
    expect_limit(power_get(5, "0 value=0xffffffff x1") + power_get(5, "0 value=0xfffffffe") +
                     power_set(5, 0xfffffffe, "0 x1") + power_set(5, 0xffffffff, "0 x1"),
                 "Success: slot 13 power 0 set POWER_TEMP_LIMIT 0x5 pass. value 4294967294\r\n", 0);
}

// The limit is written back whatever failed before.
TEST(PowerSetAndGetTest, ALimitThatDoesNotHold) {
    expect_limit(power_get(5, "0 value=70") + power_set(5, 69, "0 x1") + power_set(5, 70, "0 x1"),
                 limit_error("original_value 70 set_value 69 get_value 70"), -1);
    expect_limit(power_get(5, "0 value=70 x1") + power_get(5, "0 value=69 x1") + power_set(5, 69, "0x79 x1") +
                     power_set(5, 70, "0 x1"),
                 limit_error("original_value 70 set_value 69 get_value 69"), -1);
    expect_limit(power_get(5, "0 value=70 x1") + power_get(5, "0x7a value=69 x1") + power_set(5, 69, "0 x1") +
                     power_set(5, 70, "0 x1"),
                 limit_error("original_value 70 set_value 69 get_value 69"), -1);
    expect_limit(power_get(5, "0 value=70 x1") + power_get(5, "0 value=69 x1") + power_set(5, 69, "0 x1") +
                     power_set(5, 70, "0x7b x1"),
                 limit_error("original_value 70 set_value 69 get_value 69"), -1);
    expect_limit(power_get(5, "0 value=70 x1") + power_get(5, "0 x1") + power_set(5, 69, "0x811101a4 x1") +
                     power_set(5, 70, "0 x1"),
                 limit_error("original_value 70 set_value 69 get_value 0"), -1);
}

TEST(PowerSetAndGetTest, AFlagThatDoesNotHold) {
    expect_latch(power_get(5, no_support) + power_get(24, "0 value=0") + power_set(24, 1, "0 x1") +
                     power_set(24, 0, "0 x1") + power_get(34, no_support),
                 latch_error("original_value 0 set_value 1 get_value 0"), -1);
    expect_latch(power_get(5, no_support) + power_get(24, "0 value=1") + power_set(24, 0, "0x7c x1") +
                     power_set(24, 1, "0x7d x1") + power_get(34, no_support),
                 latch_error("original_value 1 set_value 0 get_value 1"), -1);
}

TEST(PowerSetAndGetTest, AFlagThatIsNone) {
    expect_latch(power_get(5, no_support) + power_get(24, "0 value=2") + power_get(34, no_support),
                 "Error  : slot 13 power 0 get POWER_LATCH_STATE 0x18result 2 is invalid. \r\n", -1);
    expect_part("power_set_and_get",
                power_get(34, "0 value=4294967295") + "drv_power_get_property = 0x811101a4 x2\n" +
                    "drv_power_set_property = 0x811101a4 x4\n",
                begin + no_limit + no_latch +
                    "Error  : slot 13 power 0 get POWER_TEMP_MODE 0x22result 4294967295 is invalid. \r\n" + no_writes,
                -1);
}

// One that fails keeps none of the others from being set.
TEST(PowerSetAndGetTest, WritesThatFail) {
    const struct {
        int type;
        uint32_t value;
        std::string line;
    } writes[] = {
        {29, 0, "Error  : slot 13 power 0 set POWER_CLEAR_FAULT 0x1d fail. value 0 ret 0x7e\r\n"},
        {26, 1, "Error  : slot 13 power 0 set POWER_ENABLE_CTRL 0x1a fail. value 1 ret 0x7e\r\n"},
        {27, 10, "Error  : slot 13 power 0 set POWER_STARTUP_DELAY 0x1b fail. value 10 ret 0x7e\r\n"},
        {27, 1, "Error  : slot 13 power 0 set POWER_STARTUP_DELAY 0x1b fail. value 1 ret 0x7e\r\n"},
    };
    const std::string passes[] = {"Success: slot 13 power 0 set POWER_CLEAR_FAULT 0x1d pass. value 0\r\n",
                                  "Success: slot 13 power 0 set POWER_ENABLE_CTRL 0x1a pass. value 1\r\n",
                                  "Success: slot 13 power 0 set POWER_STARTUP_DELAY 0x1b pass. value 10\r\n",
                                  "Success: slot 13 power 0 set POWER_STARTUP_DELAY 0x1b pass. value 1\r\n"};
    for (size_t failing = 0; failing < 4; ++failing) {
        std::string lines = begin + no_limit + no_latch + no_mode;
        for (size_t i = 0; i < 4; ++i) {
            lines += i == failing ? writes[i].line : passes[i];
        }
        expect_part("power_set_and_get",
                    "drv_power_get_property = 0x811101a4 x3\n" +
                        power_set(writes[failing].type, writes[failing].value, "0x7e x1") +
                        "drv_power_set_property = 0 x3\n",
                    lines, -1);
    }
}
