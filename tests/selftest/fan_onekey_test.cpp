// The whole test of all fan trays: its order, its result, and a run on healthy trays.
#include <cstdio>
#include <gtest/gtest.h>
#include <thread>

#include "tests/selftest/fan_script.h"
#include "tests/selftest/part.h"
#include "tests/support/simulator.h"

using namespace kestro_tests;

namespace {

const std::string info_edge = std::string(76, '-') + "\r\n";
const std::string info_head =
    info_edge + "FanId  FanNum  Status   Speed        MaxSpeed  MaxPower  MaxShift  CurShift\r\n";
const std::string alarm_edge = std::string(98, '-') + "\r\n";
const std::string alarm_head =
    alarm_edge + "FanId  FanNum  Stalled   Reset     Hardware  SpeedFail NoPlugin  ElecMach  I2C       AbilityFile\r\n";
const std::string no_label_time = "-------------------Total test time: 0s 0000ms-------------------\r\n";
const std::string no_value_time = "--------------------Total test time: 0s 0ms--------------------\r\n";

std::string rounds(int good, int bad, const std::string &time) {
    return "Info: Success times: " + std::to_string(good) + ", Fail times: " + std::to_string(bad) +
           ", total times: 2\r\n-----------------Total test time: " + time + "-----------------\r\n";
}

std::string result_of(const std::string &tray, const std::string &test) {
    return fan_rule_line + "[" + tray + "] " + test + " Test Result: \r\n";
}

} // namespace

// Two trays that support as little as can be, the second one without fans.
TEST(FanOnekeyTest, TheOrderOfTheTests) {
    const auto cycles = [](const std::string &tray) {
        return result_of(tray, "Multi Init") + rounds(2, 0, "002s 002000ms") + result_of(tray, "Multi Deinit") +
               rounds(2, 0, "001s 001000ms") + result_of(tray, "Init-Deinit") + rounds(2, 0, "002s 002000ms");
    };
    const auto no_time = "-----------------Total test time: 000s 000000ms-----------------\r\n";
    expect_part(
        "fan_onekey",
        fan_slots(2, "0b 03") + fan_num(11, "0 num=1") + fan_num(3, "0 num=0") +
            "drv_fan_get_online_status = 0 online=1\n"
            "drv_fan_get_board_property = 0x811101a4\n"
            "drv_fan_get_wind_direct = 0x811101a4\n"
            "drv_fan_get_status = 0x811101a4\n"
            "drv_fan_get_speed_percent = 0x811101a4\n"
            "drv_fan_get_speed = 0x811101a4\n"
            "drv_fan_get_max_speed = 0x811101a4\n"
            "drv_fan_get_max_power = 0x811101a4\n"
            "drv_fan_get_max_shift = 0x811101a4\n"
            "drv_fan_get_shift = 0x811101a4\n"
            "drv_fan_get_alarm = 0x811101a4\n"
            "drv_fan_get_led = 0x811101a4\n"
            "drv_fan_get_operation_complete_status = 0x811101a4\n"
            "drv_fan_init = 0\n"
            "drv_fan_exit = 0\n",
        "[FAN11]\r\nPresent: YES\r\nPcbVer : N/A\r\nAirflow Direction: N/A\r\n"
        "[FAN3]\r\nPresent: YES\r\nPcbVer : N/A\r\nAirflow Direction: N/A\r\n" +
            info_head + "FAN11  0       N/A       N/A(N/A)     N/A       N/A       N/A       N/A\r\n" + info_edge +
            alarm_head +
            "FAN11  0       N/A       N/A       N/A       N/A       N/A       N/A       N/A       N/A       \r\n" +
            alarm_edge + fan_rule_line +
            "[FAN11]\r\nElabel: N/A\r\nAbilityFile: N/A\r\nExpand Elabel: N/A\r\n"
            "[FAN3]\r\nElabel: N/A\r\nAbilityFile: N/A\r\nExpand Elabel: N/A\r\n" +
            no_label_time + fan_rule_line + "[FAN11]\r\n[FAN11-0]: N/A\r\n[FAN3]\r\n" + no_value_time + fan_rule_line +
            "[FAN11] Led-Test: N/A\r\n[FAN3] Led-Test: N/A\r\n" + no_value_time + fan_rule_line +
            "[FAN11] Init Status:\r\n[FAN11-0]: N/A\r\n" + fan_rule_line + fan_rule_line +
            "[FAN11] Elabel Test: N/A\r\n" + result_of("FAN11", "Speed") + "[FAN11-0]: N/A\r\n" + no_time +
            result_of("FAN11", "Shift") + "[FAN11-0]: N/A\r\n" + cycles("FAN11") + fan_rule_line +
            "[FAN3] Init Status:\r\n" + fan_rule_line + fan_rule_line + "[FAN3] Elabel Test: N/A\r\n" +
            result_of("FAN3", "Speed") + no_time + result_of("FAN3", "Shift") + "[FAN3-0]: N/A\r\n" + cycles("FAN3"),
        0);
}

// Every test that fails has its bits in the result, once; the tables list the trays for themselves.
TEST(FanOnekeyTest, TheResultsAreJoined) {
    const std::string no_list = "Error: get fan slot list fail\r\n";
    const std::string no_num = "Error: get fan11 num fail\r\n";
    expect_part("fan_onekey",
                "drv_slot_get_list(type=5) = 0 list={num=1 slot_id=[0b]} x1\n"
                "drv_slot_get_list(type=5) = 0x30 x5\n" +
                    fan_num(11, "0x5 x3") + "drv_fan_get_board_property(slot_id=11, type=2) = 0x8 x1\n" +
                    tray_call("init", "0x40 x3") + tray_call("exit", "0x200 x4") +
                    "drv_fan_get_operation_complete_status(slot_id=11, fan_id=0xffffffff, operation=0) = 0x811101a4 "
                    "x1\n",
                no_list + no_list + no_list + no_list + no_list + no_num + fan_rule_line +
                    "Error: get fan11 elabel fail\r\n[FAN11] Elabel Test: --\r\n" + no_num + no_num +
                    result_of("FAN11", "Multi Init") +
                    "Error: [0 times]init fail(0x40)\r\nError: [1 times]init fail(0x40)\r\n" +
                    rounds(0, 2, "000s 000000ms") + result_of("FAN11", "Multi Deinit") +
                    "Info: [0 times]deinit fail(0x200)\r\nInfo: [1 times]deinit fail(0x200)\r\n"
                    "Error: init fail when recovery(0x40)\r\n" +
                    rounds(0, 2, "001s 001000ms") + result_of("FAN11", "Init-Deinit") + rounds(0, 2, "000s 000000ms"),
                0x4fd);
}

TEST(FanOnekeyTest, WithoutASlotList) {
    expect_part("fan_onekey", "drv_slot_get_list(type=5) = 0x67\n", "Error: get fan slot list fail\r\n", 0x67);
}

namespace {

// An image as the label information shows its bytes: lines end behind the 16th, the 32nd and so on of the image.
std::string bytes_of(const std::string &text) {
    std::string lines;
    for (size_t i = 0; i < 1024; ++i) {
        char byte[8];
        snprintf(byte, sizeof(byte), "%02x", i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
        lines += byte;
        lines += (i + 2) % 16 == 0 ? "\r\n" : " ";
    }
    return lines + "\r\n";
}

const std::string no_alarms = "Normal    Normal    Normal    Normal    Normal    Normal    Normal    Normal    \r\n";

std::string shifts_of(const std::string &fan, const std::string &shift, const std::string &max_shift,
                      const std::string &table) {
    return "[" + fan + "]: \r\nCurrent Shift: " + shift + "\r\nMax Shift    : " + max_shift +
           "\r\nShift   MaxPower   MaxSpeed\r\n" + table;
}

// What each shift of the fans in tray 15 allows, and in tray 16.
const std::string table_15 = "1       1          1200\r\n"
                             "2       1          2400\r\n"
                             "3       1          3600\r\n"
                             "4       2          4800\r\n"
                             "5       3          6000\r\n"
                             "6       6          7200\r\n"
                             "7       9          8400\r\n"
                             "8       13         9600\r\n"
                             "9       18         10800\r\n"
                             "10      24         12000\r\n";
const std::string table_16 = "1       1          1125\r\n"
                             "2       1          2250\r\n"
                             "3       1          3375\r\n"
                             "4       2          4500\r\n"
                             "5       4          5625\r\n"
                             "6       7          6750\r\n"
                             "7       11         7875\r\n"
                             "8       15         9000\r\n";

std::string colors_of(const std::string &tray) {
    return "[" + tray +
           "] Led Test Result:\r\ntype-0 color-0: pass\r\ntype-0 color-1: pass\r\ntype-0 color-2: pass\r\n"
           "type-0 color-4: pass\r\nInfo: Success color: 4, Fail color: 0\r\n";
}

std::string healthy_tables() {
    return "[FAN15]\r\nPresent: YES\r\nPcbVer : VER.B\r\nAirflow Direction: Front-to-Back\r\n"
           "[FAN16]\r\nPresent: YES\r\nPcbVer : VER.A\r\nAirflow Direction: Front-to-Back\r\n" +
           info_head +
           "FAN15  0       Normal    50%(6000 )   12000     24        10        5\r\n"
           "FAN15  1       Normal    50%(6000 )   12000     24        10        5\r\n"
           "FAN15  2       Normal    50%(6000 )   12000     24        10        5\r\n"
           "FAN16  0       Normal    50%(4500 )   9000      15        8         4\r\n"
           "FAN16  1       Normal    50%(4500 )   9000      15        8         4\r\n" +
           info_edge + alarm_head + "FAN15  0       " + no_alarms + "FAN15  1       " + no_alarms + "FAN15  2       " +
           no_alarms + "FAN16  0       " + no_alarms + "FAN16  1       " + no_alarms + alarm_edge;
}

std::string healthy_labels() {
    return fan_rule_line +
           "[FAN15]\r\nElabel:  length: 1026, CRC: 94 99\r\n"
           "[board]\nitem=KT-FAN-12000\nserial=2511040150\nmade=2025-10-20\r\n"
           "AbilityFile: length: 1026, CRC: 7a ed\r\n" +
           bytes_of("fans=3\nshifts=10\nlamp=3") +
           "Expand Elabel:  length: 1026, CRC: 85 0\r\n"
           "[controller]\nitem=KT-FAN-CTL-2\nserial=2511040155\r\n"
           "[FAN16]\r\nElabel:  length: 1026, CRC: 9b 93\r\n"
           "[board]\nitem=KT-FAN-9000\nserial=1911040160\nmade=2019-05-06\r\n"
           "AbilityFile: length: 1026, CRC: 34 2a\r\n" +
           bytes_of("fans=2\nshifts=8\nlamp=3") + "Expand Elabel: N/A\r\n" + no_label_time;
}

std::string healthy_shifts() {
    std::string lines = fan_rule_line + "[FAN15]\r\n";
    for (const char *fan : {"FAN15-0", "FAN15-1", "FAN15-2"}) {
        lines += shifts_of(fan, "5", "10", table_15);
    }
    lines += "[FAN16]\r\n";
    for (const char *fan : {"FAN16-0", "FAN16-1"}) {
        lines += shifts_of(fan, "4", "8", table_16);
    }
    return lines + no_value_time;
}

std::string healthy_tray(const std::string &tray, int fans, const std::vector<std::string> &times) {
    const std::string passed = "Info: Success times: 2, Fail times: 0, total times: 2\r\n";
    std::string status;
    std::string speeds;
    for (int fan = 0; fan < fans; ++fan) {
        const std::string number = "[" + tray + "-" + std::to_string(fan) + "]: ";
        status += number + "Completed\r\n";
        speeds += number + "\r\n" + passed;
    }
    return fan_rule_line + "[" + tray + "] Init Status:\r\n" + status + fan_rule_line + fan_rule_line + "[" + tray +
           "] Elabel Test Result: \r\n" + passed + no_label_time + result_of(tray, "Speed") + speeds +
           "-----------------Total test time: " + times[0] + "-----------------\r\n" + result_of(tray, "Shift") +
           rounds(2, 0, times[1]) + result_of(tray, "Multi Init") + rounds(2, 0, times[2]) +
           result_of(tray, "Multi Deinit") + rounds(2, 0, times[3]) + result_of(tray, "Init-Deinit") +
           rounds(2, 0, times[4]);
}

} // namespace

// Each fan moves within a poll of half a second, twice. From 4800 or more to the highest shift of tray 15 it is 6000 at
// 800 a second, and 1200 down again, and each fan behind the first takes a poll; of tray 16 3825 and 1125 at 450. The
// controllers need 3.5 and 5 seconds.
TEST(FanOnekeyTest, HealthyTrays) {
    const process_result run = run_part({"--board", "mpu_master"}, "fan_onekey");
    EXPECT_EQ(run.out,
              healthy_tables() + healthy_labels() + healthy_shifts() + fan_rule_line + colors_of("FAN15") +
                  colors_of("FAN16") + no_value_time +
                  healthy_tray("FAN15", 3,
                               {"003s 003000ms", "014s 014000ms", "008s 008000ms", "004s 004000ms", "008s 008000ms"}) +
                  healthy_tray("FAN16", 2,
                               {"002s 002000ms", "013s 013000ms", "010s 010000ms", "005s 005000ms", "010s 010000ms"}) +
                  "result 0\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

// Two of them set the same fans, take the same controllers down and write the same labels. What they find is chance;
// both come to their end, and what the trays keep is as it was.
TEST(FanOnekeyTest, TwoAtOnceOnOneBoard) {
    const std::string state = new_scratch_dir();
    const std::string program = build_dir() + "/tests/selftest_part";
    const process_result before = run_part({"--state", state}, "fan_labels");
    process_result results[2];
    std::thread threads[2];
    for (int i = 0; i < 2; ++i) {
        // Each a process of its own from the start: what forks them elsewhere makes one run at a time.
        threads[i] = std::thread([&, i] {
            results[i] = run_launcher({"--state", state, "--clock", "virtual", "--run", program}, {"fan_onekey"});
        });
    }
    for (std::thread &each : threads) {
        each.join();
    }
    for (const process_result &run : results) {
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.status, 0);
        EXPECT_NE(run.out.find("[FAN16] Init-Deinit Test Result: \r\n"), std::string::npos) << run.out;
        EXPECT_NE(run.out.find("\nresult "), std::string::npos) << run.out;
    }
    EXPECT_EQ(run_part({"--state", state}, "fan_labels").out, before.out);
}
