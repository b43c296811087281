// The speed test of fans: every step, every poll.
#include <gtest/gtest.h>

#include "tests/selftest/fan_script.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

const std::string head = fan_rule_line + "[FAN11] Speed Test Result: \r\n";

std::string percent(const std::string &answer) {
    return fan_call("get_speed_percent", "0", answer);
}

std::string set(int value, const std::string &answer) {
    return fan_call("set_speed_percent", "0, percent=" + std::to_string(value), answer);
}

std::string times(int good, int bad) {
    return "Info: Success times: " + std::to_string(good) + ", Fail times: " + std::to_string(bad) +
           ", total times: 2\r\n";
}

std::string lasts(const std::string &time) {
    return "-----------------Total test time: " + time + "-----------------\r\n";
}

// One fan in two rounds.
void expect_rounds(const std::string &script, const std::string &lines, const std::string &time, int result) {
    expect_part("fan_speed", fan_num(11, "0 num=1") + script, head + "[FAN11-0]: \r\n" + lines + lasts(time), result);
}

} // namespace

// From 51 downwards and from 50 upwards; each round sees its speed move at the first poll.
TEST(FanSpeedTest, TheSpeedMoves) {
    expect_rounds(percent("0 percent=51 x2") + percent("0 percent=50 x2") + percent("0 percent=49 x1") +
                      set(40, "0 x1") + set(60, "0 x1"),
                  times(2, 0), "001s 001000ms", 0);
    expect_rounds(percent("0 percent=0 x2") + percent("0 percent=1 x1") + percent("0 percent=100 x1") +
                      percent("0 percent=99 x1") + set(60, "0 x1") + set(40, "0 x1"),
                  times(2, 0), "001s 001000ms", 0);
}

// It need not come near the target, nor go there.
TEST(FanSpeedTest, AnyMoveIsEnough) {
    expect_rounds(percent("0 percent=70 x2") + percent("0 percent=71 x3") + percent("0 percent=72 x1") + set(40, "0"),
                  times(2, 0), "001s 001500ms", 0);
}

TEST(FanSpeedTest, ItMovesAtTheLastPoll) {
    expect_rounds(percent("0 percent=50 x21") + percent("0 percent=52 x2") + percent("0 percent=53 x1") +
                      set(60, "0 x1") + set(40, "0 x1"),
                  times(2, 0), "010s 010500ms", 0);
}

// 20 polls in each round, and one reading in front of them; one in front of all.
TEST(FanSpeedTest, ItDoesNotMove) {
    expect_rounds(percent("0 percent=50 x43") + set(60, "0 x2"), times(0, 2), "020s 020000ms", 2);
}

TEST(FanSpeedTest, ADriverThatAnswersAndWritesNothing) {
    expect_rounds(percent("0") + set(60, "0"), times(0, 2), "020s 020000ms", 2);
}

TEST(FanSpeedTest, EachStepFailsOnce) {
    expect_rounds(percent("0 percent=50 x1") + percent("0x100 x1") + percent("0 percent=50 x1") +
                      percent("0 percent=60 x1") + set(60, "0"),
                  "Error: [1 times]get speed-percent fail in first step\r\n" + times(1, 1), "000s 000500ms", 0x100);
    expect_rounds(percent("0 percent=50 x2") + percent("0 percent=40 x1") + percent("0 percent=60 x1") +
                      set(60, "0x200 x1") + set(60, "0"),
                  "Error: [1 times]set speed-percent fail in second step\r\n" + times(1, 1), "000s 000500ms", 0x200);
    expect_rounds(percent("0 percent=50 x2") + percent("0 percent=60 x1") + percent("0 percent=60 x2") +
                      percent("0x300 x1") + set(60, "0 x1") + set(40, "0 x1"),
                  "Error: [2 times]get speed-percent fail in third step \r\n" + times(1, 1), "001s 001500ms", 0);
}

// A fan that fails when it is first asked is tested all the same.
TEST(FanSpeedTest, EverythingFails) {
    expect_rounds(percent("0x10"),
                  "Error: [1 times]get speed-percent fail in first step\r\n"
                  "Error: [2 times]get speed-percent fail in first step\r\n" +
                      times(0, 2),
                  "000s 000000ms", 0x30);
    expect_rounds(percent("0x10 x1") + percent("0 percent=1 x2") + percent("0 percent=2") + set(60, "0x811101a4 x1") +
                      set(60, "0"),
                  "Error: [1 times]set speed-percent fail in second step\r\n" + times(1, 1), "000s 000500ms",
                  static_cast<int>(0x811101b4));
}

TEST(FanSpeedTest, FansWithoutASpeed) {
    expect_part("fan_speed",
                fan_num(11, "0 num=3") + percent("0x811101a4") + fan_call("get_speed_percent", "1", "0 percent=50 x2") +
                    fan_call("get_speed_percent", "1", "0 percent=55 x2") +
                    fan_call("get_speed_percent", "1", "0 percent=45 x1") +
                    fan_call("set_speed_percent", "1, percent=60", "0 x1") +
                    fan_call("set_speed_percent", "1, percent=40", "0 x1") +
                    fan_call("get_speed_percent", "2", "0x811101a4"),
                head +
                    "[FAN11-0]: N/A\r\n"
                    "[FAN11-1]: \r\n" +
                    times(2, 0) + "[FAN11-2]: N/A\r\n" + lasts("001s 001000ms"),
                0);
}

TEST(FanSpeedTest, TheResultIsTheSumOfAllFans) {
    expect_part("fan_speed", fan_num(11, "0 num=2") + percent("0x1") + fan_call("get_speed_percent", "1", "0x10"),
                head +
                    "[FAN11-0]: \r\n"
                    "Error: [1 times]get speed-percent fail in first step\r\n"
                    "Error: [2 times]get speed-percent fail in first step\r\n" +
                    times(0, 2) +
                    "[FAN11-1]: \r\n"
                    "Error: [1 times]get speed-percent fail in first step\r\n"
                    "Error: [2 times]get speed-percent fail in first step\r\n" +
                    times(0, 2) + lasts("000s 000000ms"),
                0x33);
}

TEST(FanSpeedTest, ATrayWithoutFans) {
    expect_part("fan_speed", fan_num(11, "0"), head + lasts("000s 000000ms"), 0);
}

TEST(FanSpeedTest, ATrayThatDoesNotTellItsFans) {
    expect_part("fan_speed", fan_num(11, "0x71"), "Error: get fan11 num fail\r\n", 0x71);
    expect_part("fan_speed", fan_num(11, "0x811101a4"), "Error: get fan11 num fail\r\n", static_cast<int>(0x811101a4));
}
