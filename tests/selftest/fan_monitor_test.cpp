// The fan monitor, a thread beside the program's own: what it asks and sets in which round, and when it ends. The
// second thread of the script is the monitor.
#include <gtest/gtest.h>

#include "tests/selftest/fan_script.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

const std::string success = "fan check create pthread success\n";

std::string log_rule(const std::string &thread, const std::string &text) {
    return thread + "drv_log_record(log_id=17, level=1, flag=0, text=\"" + text + "\") = 0\n";
}

// Calls of the monitor for the tray in slot 1, unless another is named.
std::string num(const std::string &answer, int slot = 1) {
    return "@2 " + fan_num(slot, answer);
}

std::string half_speed(const std::string &answer, int slot = 1, int fan = 0) {
    return "@2 drv_fan_set_speed_percent(slot_id=" + std::to_string(slot) + ", fan_id=" + std::to_string(fan) +
           ", percent=50) = " + answer + "\n";
}

std::string status(const std::string &answer, int slot = 1, int fan = 0) {
    return "@2 drv_fan_get_status(slot_id=" + std::to_string(slot) + ", fan_id=" + std::to_string(fan) +
           ") = " + answer + "\n";
}

std::string alarm(int number, const std::string &answer) {
    return "@2 drv_fan_get_alarm(slot_id=1, fan_id=0, alarm=" + std::to_string(number) + ") = " + answer + "\n";
}

std::string alarms(const std::string &answer) {
    std::string script;
    for (int number = 0; number < 7; ++number) {
        script += alarm(number, answer);
    }
    return script;
}

// Slot 1 alone: the trays are more by one.
const std::string one_tray = fan_slots(2, "01 0c");

} // namespace

TEST(FanMonitorTest, ARoundOfHealthyFans) {
    expect_part("fan_monitor_20_seconds",
                one_tray + num("0 num=1 x2") + half_speed("0 x1") + status("0 x1") + alarms("0 x1"), success, 0);
}

// From the slot of the first tray up to their number: here 2 and 3 are watched, and 4 is not.
TEST(FanMonitorTest, WhichSlotsAreWatched) {
    expect_part("fan_monitor_20_seconds",
                fan_slots(4, "02 03 04 05") + num("0 num=0 x2", 2) + num("0 num=2 x2", 3) + half_speed("0 x1", 3, 0) +
                    half_speed("0x71 x1", 3, 1) + status("0 x1", 3, 0) + status("0 x1", 3, 1) +
                    "@2 drv_fan_get_alarm(slot_id=3, fan_id=0) = 0 x7\n"
                    "@2 drv_fan_get_alarm(slot_id=3, fan_id=1) = 0 x7\n",
                success, 0);
    expect_part("fan_monitor_20_seconds", fan_slots(2, "0b 0c"), success, 0);
    expect_part("fan_monitor_20_seconds", fan_slots(1, "01"), success, 0);
}

TEST(FanMonitorTest, WhatItWarnsOf) {
    expect_part("fan_monitor_20_seconds",
                one_tray + num("0 num=1") + half_speed("0") + status("0 status=1") + alarm(0, "0 status=2") +
                    alarm(1, "0x72") + alarm(2, "0x811101a4") + alarm(3, "0x811101a4 status=5") +
                    alarm(4, "0 status=-1") + alarm(5, "0x73 status=6") + alarm(6, "0 status=1"),
                success + "Warning: FAN1-0 Stalled.(value:1,ret:0x0)\r\n"
                          "Warning: FAN1-0 alarm(0) is abnormal.(value:2,ret:0x0)\r\n"
                          "Warning: FAN1-0 alarm(1) is abnormal.(value:0,ret:0x72)\r\n"
                          "Warning: FAN1-0 alarm(3) is abnormal.(value:5,ret:0x811101a4)\r\n"
                          "Warning: FAN1-0 alarm(4) is abnormal.(value:-1,ret:0x0)\r\n"
                          "Warning: FAN1-0 alarm(5) is abnormal.(value:6,ret:0x73)\r\n"
                          "Warning: FAN1-0 alarm(6) is abnormal.(value:1,ret:0x0)\r\n",
                0);
    expect_part("fan_monitor_20_seconds", one_tray + num("0 num=1") + half_speed("0") + status("0x74") + alarms("0"),
                success + "Warning: FAN1-0 Stalled.(value:0,ret:0x74)\r\n", 0);
    expect_part("fan_monitor_20_seconds",
                one_tray + num("0 num=1") + half_speed("0") + status("0x811101a4") + alarms("0x811101a4"), success, 0);
    expect_part("fan_monitor_20_seconds",
                one_tray + num("0 num=1") + half_speed("0") + status("0x811101a4 status=3") + alarms("0"),
                success + "Warning: FAN1-0 Stalled.(value:3,ret:0x811101a4)\r\n", 0);
}

TEST(FanMonitorTest, ATrayThatDoesNotTellItsFans) {
    expect_part("fan_monitor_20_seconds",
                one_tray + num("0x75 x1") + num("0x811101a4 x1") +
                    log_rule("@2 ", "get fan1 num fail when speed adjust(ret:0x75)\\r\\n") +
                    log_rule("@2 ", "get fan1 num fail when check fmea(ret:0x811101a4)\\r\\n"),
                success, 0);
}

// 620 seconds are 21 rounds; the first, the 11th and the 21st look for faults. What comes once too often has another
// answer, which the monitor would log.
TEST(FanMonitorTest, TheRoundsOfTenMinutes) {
    expect_part("fan_monitor_620_seconds",
                one_tray + num("0 num=1 x11") + num("0x1 x1") +
                    log_rule("@2 ", "get fan1 num fail when speed adjust(ret:0x1)\\r\\n") + num("0x2 x1") +
                    log_rule("@2 ", "get fan1 num fail when check fmea(ret:0x2)\\r\\n") + num("0 num=1 x9") +
                    num("0x3 x1") + log_rule("@2 ", "get fan1 num fail when speed adjust(ret:0x3)\\r\\n") +
                    num("0x4 x1") + log_rule("@2 ", "get fan1 num fail when check fmea(ret:0x4)\\r\\n") +
                    half_speed("0 x19") + status("0 status=1 x1") + alarms("0 x1"),
                success + "Warning: FAN1-0 Stalled.(value:1,ret:0x0)\r\n", 0);
}

TEST(FanMonitorTest, WithoutTraysThereIsNoThread) {
    expect_part("fan_monitor_20_seconds",
                "drv_slot_get_list(type=5) = 0 list={num=0}\n" +
                    log_rule("@1 ", "No create fan pthread, get fan slot list fail or fan num is "
                                    "zore.(ret:0x0, fan-num:0)\\r\\n"),
                "", 0);
    expect_part("fan_monitor_20_seconds",
                "drv_slot_get_list(type=5) = 0x66\n" +
                    log_rule("@1 ", "No create fan pthread, get fan slot list fail or fan num is "
                                    "zore.(ret:0x66, fan-num:0)\\r\\n"),
                "", 0);
    expect_part("fan_monitor_20_seconds",
                "drv_slot_get_list(type=5) = 0x811101a4 list={num=200}\n" +
                    log_rule("@1 ", "No create fan pthread, get fan slot list fail or fan num is "
                                    "zore.(ret:0x811101a4, fan-num:200)\\r\\n"),
                "", 0);
}

// The second start finds another chassis: from then on its trays are watched, by the thread that is there.
TEST(FanMonitorTest, ItIsStartedOnce) {
    expect_part("fan_monitor_twice",
                "@1 drv_slot_get_list(type=5) = 0 list={num=2 slot_id=[01]} x1\n"
                "@1 drv_slot_get_list(type=5) = 0 list={num=5 slot_id=[04]} x1\n" +
                    num("0 num=1 x2") + half_speed("0 x1") + status("0 x1") + alarms("0 x1") + num("0 num=1 x1", 4) +
                    half_speed("0 x1", 4),
                success, 0);
}

// The test of two fans that do not move lasts 40 seconds. The monitor comes to its next round meanwhile, and ends; a
// second start makes no other.
TEST(FanMonitorTest, ASpeedTestEndsIt) {
    expect_part("fan_monitor_and_speed_test",
                one_tray + num("0 num=1 x2") + half_speed("0 x1") + status("0 x1") + alarms("0 x1") +
                    "@1 drv_fan_get_num(slot_id=11) = 0 num=2\n"
                    "@1 drv_fan_get_speed_percent(slot_id=11) = 0 percent=50\n"
                    "@1 drv_fan_set_speed_percent(slot_id=11, percent=60) = 0 x4\n",
                success, 0);
}

// A test that is over within its pause does not: seven more rounds in 185 seconds.
TEST(FanMonitorTest, AShortSpeedTestDoesNot) {
    expect_part("fan_monitor_and_speed_test",
                one_tray + num("0 num=1 x7") + num("0x76 x1") +
                    log_rule("@2 ", "get fan1 num fail when speed adjust(ret:0x76)\\r\\n") + half_speed("0 x6") +
                    status("0 x1") + alarms("0 x1") +
                    "@1 drv_fan_get_num(slot_id=11) = 0 num=1\n"
                    "@1 drv_fan_get_speed_percent(slot_id=11) = 0x811101a4\n",
                success, 0);
}

// Neither a thread that has hardly begun nor one that a driver never gives back holds up the end of a process.
TEST(FanMonitorTest, TheEndOfTheProcess) {
    for (const std::string answer : {"0 num=0", "hang"}) {
        for (int i = 0; i < 20; ++i) {
            const process_result run =
                run_part({"--script", scratch_file("script", one_tray + num(answer))}, "fan_monitor_0_seconds");
            EXPECT_EQ(run.out, success + "result 0\n");
            EXPECT_EQ(run.err, "");
            EXPECT_EQ(run.status, 0);
        }
    }
}
