// The shifts of fans: what is told of them, and the shift test with every poll.
#include <gtest/gtest.h>

#include "tests/selftest/fan_script.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

const std::string one_tray = fan_slots(1, "0b");
const std::string no_time = "--------------------Total test time: 0s 0ms--------------------\r\n";

std::string power_of(int shift, const std::string &answer) {
    return fan_call("get_max_power_by_shift", "0, shift=" + std::to_string(shift), answer);
}

std::string speed_of(int shift, const std::string &answer) {
    return fan_call("get_max_speed_by_shift", "0, shift=" + std::to_string(shift), answer);
}

// One fan.
void expect_shifts(const std::string &script, const std::string &lines, int result) {
    expect_part("fan_shifts", one_tray + fan_num(11, "0 num=1") + script,
                fan_rule_line + "[FAN11]\r\n[FAN11-0]: " + lines + no_time, result);
}

} // namespace

TEST(FanShiftsTest, TheShiftsOfAFan) {
    expect_shifts(fan_call("get_shift", "0", "0 shift=2") + fan_call("get_max_shift", "0", "0 max_shift=3") +
                      power_of(1, "0 max_power=5") + speed_of(1, "0 max_speed=6000") + power_of(2, "0 max_power=14") +
                      speed_of(2, "0 max_speed=12000") + power_of(3, "0 max_power=4294967295") +
                      speed_of(3, "0 max_speed=4294967295"),
                  "\r\n"
                  "Current Shift: 2\r\n"
                  "Max Shift    : 3\r\n"
                  "Shift   MaxPower   MaxSpeed\r\n"
                  "1       5          6000\r\n"
                  "2       14         12000\r\n"
                  "3       4294967295 4294967295\r\n",
                  0);
}

TEST(FanShiftsTest, LimitsThatAreNotToldOrFail) {
    expect_shifts(fan_call("get_shift", "0", "0 shift=1") + fan_call("get_max_shift", "0", "0 max_shift=2") +
                      power_of(1, fan_no_support) + speed_of(1, fan_no_support) + power_of(2, "0x10") +
                      speed_of(2, "0x20"),
                  "\r\n"
                  "Current Shift: 1\r\n"
                  "Max Shift    : 2\r\n"
                  "Shift   MaxPower   MaxSpeed\r\n"
                  "1       N/A        N/A\r\n"
                  "2       --         --\r\n",
                  0x30);
}

TEST(FanShiftsTest, WithoutAHighestShift) {
    expect_shifts(fan_call("get_shift", "0", "0 shift=1") + fan_call("get_max_shift", "0", fan_no_support),
                  "\r\nCurrent Shift: 1\r\nMax Shift    : N/A\r\n", 0);
    expect_shifts(fan_call("get_shift", "0", "0 shift=1") + fan_call("get_max_shift", "0", "0x71"),
                  "\r\nCurrent Shift: 1\r\nMax Shift    : --\r\n", 0x71);
    expect_shifts(fan_call("get_shift", "0", "0") + fan_call("get_max_shift", "0", "0"),
                  "\r\nCurrent Shift: 0\r\nMax Shift    : 0\r\nShift   MaxPower   MaxSpeed\r\n", 0);
}

TEST(FanShiftsTest, WithoutAShift) {
    expect_shifts(fan_call("get_shift", "0", fan_no_support), "N/A\r\n", 0);
    expect_shifts(fan_call("get_shift", "0", "0x72"), "--\r\n", 0x72);
}

TEST(FanShiftsTest, SeveralTraysAndFans) {
    expect_part("fan_shifts",
                fan_slots(3, "0b 05 06") + fan_num(11, "0 num=2") + fan_num(5, "0x100") + fan_num(6, "0 num=0") +
                    fan_call("get_shift", "0", "1") + fan_call("get_shift", "1", "2"),
                fan_rule_line +
                    "[FAN11]\r\n"
                    "[FAN11-0]: --\r\n"
                    "[FAN11-1]: --\r\n"
                    "Error: get fan5 num fail\r\n"
                    "[FAN6]\r\n" +
                    no_time,
                0x103);
}

TEST(FanShiftsTest, WithoutASlotList) {
    expect_part("fan_shifts", "drv_slot_get_list(type=5) = 0x64\n", "Error: get fan slot list fail\r\n", 0x64);
}

namespace {

const std::string head = fan_rule_line + "[FAN11] Shift Test Result: \r\n";

std::string shift(const std::string &answer) {
    return fan_call("get_shift", "0", answer);
}

std::string max_shift(const std::string &answer) {
    return fan_call("get_max_shift", "0", answer);
}

std::string set(int value, const std::string &answer) {
    return fan_call("set_shift", "0xffffffff, shift=" + std::to_string(value), answer);
}

std::string times(int good, int bad) {
    return "Info: Success times: " + std::to_string(good) + ", Fail times: " + std::to_string(bad) +
           ", total times: 2\r\n";
}

std::string lasts(const std::string &time) {
    return "-----------------Total test time: " + time + "-----------------\r\n";
}

// A tray with one fan, in two rounds.
void expect_rounds(const std::string &script, const std::string &lines, const std::string &time, int result) {
    expect_part("fan_shift", fan_num(11, "0 num=1") + script, head + lines + lasts(time), result);
}

} // namespace

// Up to the highest, and one down from there.
TEST(FanShiftTest, UpAndDown) {
    expect_rounds(max_shift("0 max_shift=5") + shift("0 shift=1 x1") + set(5, "0 x1") + shift("0 shift=5 x2") +
                      set(4, "0 x1") + shift("0 shift=4 x1"),
                  times(2, 0), "002s 002000ms", 0);
}

TEST(FanShiftTest, AboveTheHighestShiftItGoesDown) {
    expect_rounds(max_shift("0 max_shift=5") + shift("0 shift=9 x1") + set(4, "0 x1") + shift("0 shift=4 x2") +
                      set(5, "0 x1") + shift("0 shift=5 x1"),
                  times(2, 0), "002s 002000ms", 0);
}

TEST(FanShiftTest, ADriverThatWritesNoHighestShift) {
    expect_rounds(max_shift("0") + shift("0 shift=7 x1") + set(8, "0 x1") + shift("0 shift=8 x2") + set(7, "0 x1") +
                      shift("0 shift=7 x1"),
                  times(2, 0), "002s 002000ms", 0);
}

// The shift below 0 is all ones.
TEST(FanShiftTest, ATrayWithoutShifts) {
    expect_rounds(max_shift("0 max_shift=0") + shift("0 x1") + set(-1, "0 x1") + shift("0 shift=-1 x2") +
                      set(-1, "0 x1") + shift("0 shift=-1 x1"),
                  times(2, 0), "002s 002000ms", 0);
}

// A poll that fails is one that does not show the target.
TEST(FanShiftTest, TheLastPoll) {
    expect_rounds(max_shift("0 max_shift=3") + shift("0 shift=3 x1") + set(2, "0 x1") + shift("0x55 shift=2 x1") +
                      shift("0 shift=3 x28") + shift("0 shift=2 x2") + set(3, "0 x1") + shift("0 shift=3 x1"),
                  times(2, 0), "031s 031000ms", 0);
}

TEST(FanShiftTest, AFanThatStaysWhereItIs) {
    expect_rounds(max_shift("0 max_shift=3") + shift("0 shift=3 x31") + set(2, "0 x1") + shift("0 shift=2 x1") +
                      set(3, "0 x1") + shift("0 shift=3 x1"),
                  "Error: [0 times]check shift(2!=3) time out in third step\r\n"
                  "Error: [1 times]check shift(2!=3) time out(1) in third step\r\n" +
                      times(1, 1),
                  "031s 031000ms", 1);
}

// Each fan has its own wait; the line in the end has the shift before.
TEST(FanShiftTest, TwoOfThreeFansAreLate) {
    expect_part("fan_shift",
                fan_num(11, "0 num=3") + max_shift("0 max_shift=8") + shift("0 shift=1 x1") + shift("0 shift=2 x30") +
                    shift("0 shift=8 x2") + set(8, "0 x1") + fan_call("get_shift", "1", "0 shift=8 x1") +
                    fan_call("get_shift", "1", "0 shift=7") + fan_call("get_shift", "2", "0x99 x60") + set(7, "0 x1") +
                    fan_call("get_shift", "0", "0 shift=7"),
                head +
                    "Error: [0 times]check shift(8!=2) time out in third step\r\n"
                    "Error: [2 times]check shift(8!=0) time out in third step\r\n"
                    "Error: [1 times]check shift(8!=1) time out(2) in third step\r\n"
                    "Error: [2 times]check shift(7!=0) time out in third step\r\n"
                    "Error: [2 times]check shift(7!=8) time out(1) in third step\r\n" +
                    times(0, 2) + lasts("094s 094000ms"),
                3);
}

TEST(FanShiftTest, EachStepFailsOnce) {
    expect_rounds(max_shift("0 max_shift=3") + shift("0x100 x1") + shift("0 shift=3 x1") + set(2, "0") +
                      shift("0 shift=2 x1"),
                  "Error: [1 times]get shift fail in first step(0x100)\r\n" + times(1, 1), "001s 001000ms", 0x100);
    expect_rounds(max_shift("0 max_shift=3") + shift("0 shift=1") + set(3, "0x811101a4 x1") + set(3, "0x5 x1"),
                  "Error: [1 times]set shift(3) fail in second step(0x811101a4)\r\n"
                  "Error: [2 times]set shift(3) fail in second step(0x5)\r\n" +
                      times(0, 2),
                  "000s 000000ms", static_cast<int>(0x811101a9));
}

TEST(FanShiftTest, WithoutAHighestShift) {
    expect_part("fan_shift", fan_num(11, "0 num=1") + max_shift(fan_no_support), head + "[FAN11-0]: N/A\r\n", 0);
    expect_part("fan_shift", fan_num(11, "0 num=1") + max_shift("0x73"), head + "[FAN11-0]: --\r\n", 0x73);
}

TEST(FanShiftTest, ATrayThatDoesNotTellItsFans) {
    expect_part("fan_shift", fan_num(11, "0x74"), "Error: get fan11 num fail\r\n", 0x74);
}

// Nothing is waited for.
TEST(FanShiftTest, ATrayWithoutFans) {
    expect_part("fan_shift", fan_num(11, "0") + max_shift("0 max_shift=3") + shift("0 shift=1") + set(3, "0 x2"),
                head + times(2, 0) + lasts("000s 000000ms"), 0);
}
