// The init test of a power supply: three rounds, then twice over what is up already.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"
#include "tests/selftest/power_calls.h"
#include "tests/selftest/power_script.h"

using namespace kestro_tests;

namespace {

const std::string begin = "Info   : slot 13 power 0 init and deinit test begin. \r\n";
const std::string three_rounds = "Success: slot 13 power 0 init and deinit success. times 0\r\n"
                                 "Success: slot 13 power 0 init and deinit success. times 1\r\n"
                                 "Success: slot 13 power 0 init and deinit success. times 2\r\n";
const std::string twice = "Success: slot 13 power 0 duplicate init success\r\n";
const std::string online = power_get(0, "0 value=0");
const std::string with_input = power_get(21, "0x69");

std::string init(const std::string &answer) {
    return power_call("init", answer);
}

std::string deinit(const std::string &answer) {
    return power_call("deinit", answer);
}

std::string failed_round(int round, const std::string &init_ret, const std::string &deinit_ret) {
    return "Info   : slot 13 power 0 init and deinit fail. times " + std::to_string(round) + " init_ret " + init_ret +
           " deinit_ret " + deinit_ret + " \r\n";
}

} // namespace

// Three rounds, the one behind them and two more; down once before.
TEST(PowerInitTest, ASupplyThatIsThere) {
    expect_part("power_init", online + init("0 x6") + deinit("0 x4") + with_input, begin + three_rounds + twice, 0);
}

TEST(PowerInitTest, PresenceIsJudgedByOneValueAlone) {
    for (const char *answer : {"0", "0 value=2", "0x6f value=1", "0x811101a4"}) {
        expect_part("power_init", power_get(0, answer) + init("0 x6") + deinit("0 x4") + with_input,
                    begin + three_rounds + twice, 0);
    }
}

TEST(PowerInitTest, ASupplyThatIsNotThereMustNotComeUp) {
    expect_part("power_init", power_get(0, "0 value=1") + init("0x70 x1"),
                begin + "Info   : slot 13 power 0 is not online.\r\n", 0);
    expect_part("power_init", power_get(0, "0 value=1") + init("0 x1"),
                begin + "Info   : slot 13 power 0 is not online.\r\n"
                        "Error  : slot 13 power 0 is not online, but init success.\r\n",
                -1);
}

TEST(PowerInitTest, ARoundThatFailsIsToldAndPasses) {
    expect_part("power_init",
                online + init("0x71 x1") + init("0 x5") + deinit("0x99 x1") + deinit("0 x1") + deinit("0x72 x1") +
                    deinit("0 x1") + with_input,
                begin + failed_round(0, "0x71", "0x0") + failed_round(1, "0x0", "0x72") +
                    "Success: slot 13 power 0 init and deinit success. times 2\r\n" + twice,
                0);
}

// Without the last one there is nothing to bring up twice; what comes up behind it does not count.
TEST(PowerInitTest, TheLastRoundDecides) {
    expect_part("power_init", online + init("0 x2") + init("0x73 x1") + init("0 x1") + deinit("0 x4") + with_input,
                begin +
                    "Success: slot 13 power 0 init and deinit success. times 0\r\n"
                    "Success: slot 13 power 0 init and deinit success. times 1\r\n" +
                    failed_round(2, "0x73", "0x0"),
                0);
    expect_part("power_init", online + init("0 x3") + init("0x74 x1") + init("0 x2") + deinit("0 x4") + with_input,
                begin + three_rounds + twice, 0);
}

TEST(PowerInitTest, ASecondInitThatFails) {
    expect_part("power_init", online + init("0 x4") + init("0x75 x1") + deinit("0 x4") + with_input,
                begin + three_rounds + "Error  : slot 13 power 0 duplicate init fail. init_ret 0x75 \r\n", -1);
    expect_part("power_init", online + init("0 x5") + init("0x811101a4 x1") + deinit("0 x4") + with_input,
                begin + three_rounds + "Error  : slot 13 power 0 duplicate init fail. init_ret 0x811101a4 \r\n", -1);
}

TEST(PowerInitTest, WithoutInputBehindTheSimpleProtocolItMustFail) {
    expect_part("power_init", online + init("0x76 x4") + deinit("0 x4") + lost_input_on_simple_protocol(),
                begin + failed_round(0, "0x76", "0x0") + failed_round(1, "0x76", "0x0") +
                    failed_round(2, "0x76", "0x0") + lost_input_on_simple_protocol_line +
                    "Success: slot 13 power 0 init fail when no input power\r\n",
                0);
    expect_part("power_init", online + init("0 x6") + deinit("0 x4") + lost_input_on_simple_protocol(),
                begin + three_rounds + lost_input_on_simple_protocol_line +
                    "Error  : slot 13 power 0 init pass when no input power\r\n" + twice,
                -1);
}

TEST(PowerInitTest, WithoutInputOnThePmbusItComesUp) {
    expect_part("power_init", online + init("0 x6") + deinit("0 x4") + lost_input_on_pmbus(),
                begin + three_rounds + lost_input_on_pmbus_line + twice, 0);
}

TEST(PowerInitTest, TheOrderOfTheCalls) {
    expect_calls("power_init", online + init("0") + deinit("0") + with_input,
                 {"get_property 0", "deinit", "init", "deinit", "init", "deinit", "init", "deinit", "init",
                  "get_property 21", "init", "init"});
}
