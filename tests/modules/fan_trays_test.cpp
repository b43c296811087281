// fan_test on whole chassis: healthy ones, and fan trays that a technician has made sick. What is printed is what
// drivers and devices together give.
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::string dashes = "----------------------------------------------------------------\r\n";

using settings = std::vector<std::string>;

process_result run_on(const settings &sick, const std::string &line, const std::string &seat = "mpu_master") {
    std::vector<std::string> options{"--state", new_scratch_dir(), "--clock", "virtual", "--board", seat};
    for (const std::string &setting : sick) {
        options.insert(options.end(), {"--set", "chassis/fan/" + setting});
    }
    return run_sim(options, split_words("fan_test " + line));
}

// The lines before those of the dispatcher.
void expect_on(const settings &sick, const std::string &line, const std::string &output, int status) {
    SCOPED_TRACE(line);
    const process_result result = run_on(sick, line);
    EXPECT_EQ(result.out.substr(0, result.out.find("cmd_exec ")), output);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, status);
}

void expect_passed(const settings &sick, const std::string &line, const std::string &lines) {
    expect_on(sick, line, printed(lines, "para[0]=0x0 "), 0);
}

const std::string rule_76 = std::string(76, '-') + "\r\n";
const std::string rule_98 = std::string(98, '-') + "\r\n";
const std::string info_head = "FanId  FanNum  Status   Speed        MaxSpeed  MaxPower  MaxShift  CurShift\r\n";
const std::string alarm_head =
    "FanId  FanNum  Stalled   Reset     Hardware  SpeedFail NoPlugin  ElecMach  I2C       AbilityFile\r\n";
const std::string no_alarm = "Normal    Normal    Normal    Normal    Normal    Normal    Normal    ";

std::string tray_15() {
    return "[FAN15]\r\nPresent: YES\r\nPcbVer : VER.B\r\nAirflow Direction: Front-to-Back\r\n";
}

} // namespace

TEST(FanTrays, HealthyTraysTell) {
    expect_passed({}, "fan_get_info_one_key_test",
                  tray_15() + "[FAN16]\r\nPresent: YES\r\nPcbVer : VER.A\r\nAirflow Direction: Front-to-Back\r\n" +
                      rule_76 + info_head +
                      "FAN15  0       Normal    50%(6000 )   12000     24        10        5\r\n"
                      "FAN15  1       Normal    50%(6000 )   12000     24        10        5\r\n"
                      "FAN15  2       Normal    50%(6000 )   12000     24        10        5\r\n"
                      "FAN16  0       Normal    50%(4500 )   9000      15        8         4\r\n"
                      "FAN16  1       Normal    50%(4500 )   9000      15        8         4\r\n" +
                      rule_76);
}

TEST(FanTrays, TheWholeTestPassesOnBothMainBoards) {
    for (const char *seat : {"mpu_master", "mpu_slave"}) {
        const process_result result = run_on({}, "fan_one_key_test", seat);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.out.find("Error"), std::string::npos) << result.out;
        EXPECT_EQ(result.out.find("fail\r\n"), std::string::npos) << result.out;
        EXPECT_NE(result.out.find("[FAN16] Init-Deinit Test Result: \r\n"
                                  "Info: Success times: 2, Fail times: 0, total times: 2\r\n"),
                  std::string::npos)
            << result.out;
    }
}

// The whole test may be run again on what it left behind: fans in their highest shift, the lamp yellow.
TEST(FanTrays, TheWholeTestPassesTwice) {
    const std::vector<std::string> options{"--state", new_scratch_dir(), "--clock", "virtual"};
    EXPECT_EQ(run_sim(options, {"fan_test", "fan_one_key_test"}).status, 0);
    const process_result second = run_sim(options, {"fan_test", "fan_one_key_test"});
    EXPECT_EQ(second.status, 0);
    EXPECT_EQ(second.out.find("Error"), std::string::npos) << second.out;
}

// A line card does not reach the trays.
TEST(FanTrays, ALineCardIsRefused) {
    const process_result result = run_on({}, "fan_get_num 15", "lpu");
    EXPECT_EQ(result.status, 255);
    EXPECT_TRUE(result.out.starts_with("drv_fan_get_num fail, ret:0x811101a4\r\npara[0]=0x811101a4 para[1]=0x0 "))
        << result.out;
}

TEST(FanTrays, AFanStalls) {
    expect_passed({"fan/150/stalled=1", "tray/16/present=0", "tray/16/was_present=0"}, "fan_get_alarm_info",
                  rule_98 + alarm_head + "FAN15  0       Abnormal  Normal    Normal    Abnormal  Normal    " +
                      "Normal    Normal    Normal    \r\nFAN15  1       Normal    " + no_alarm +
                      "\r\nFAN15  2       Normal    " + no_alarm +
                      "\r\nError: get fan16 num fail\r\n"
                      "FAN16  --      --        --        --        --        --        --        --        --\r\n" +
                      rule_98);
}

TEST(FanTrays, AMotorFailsAndAnAbilityFileIsBad) {
    expect_passed({"fan/152/alarms=0x50", "fan/160/alarms=0x2F"}, "fan_get_alarm_info",
                  rule_98 + alarm_head + "FAN15  0       Normal    " + no_alarm + "\r\nFAN15  1       Normal    " +
                      no_alarm +
                      "\r\nFAN15  2       Normal    Normal    Normal    Normal    Normal    Abnormal  Normal    "
                      "Abnormal  \r\n"
                      "FAN16  0       Normal    Abnormal  Abnormal  Abnormal  Abnormal  Normal    Abnormal  Normal    "
                      "\r\nFAN16  1       Normal    " +
                      no_alarm + "\r\n" + rule_98);
}

// Three calls are refused with 0x8111010f.
TEST(FanTrays, ATrayIsAbsent) {
    expect_on({"tray/16/present=0"}, "fan_get_info_one_key_test",
              printed(tray_15() +
                          "[FAN16]\r\nPresent: NO\r\nPresent: YES\r\nError: get fan16 pcbver fail\r\n"
                          "Airflow Direction: --\r\nError: get fan16 wind direct fail\r\n" +
                          rule_76 + info_head +
                          "FAN15  0       Normal    50%(6000 )   12000     24        10        5\r\n"
                          "FAN15  1       Normal    50%(6000 )   12000     24        10        5\r\n"
                          "FAN15  2       Normal    50%(6000 )   12000     24        10        5\r\n"
                          "Error: get fan16 num fail\r\n"
                          "FAN16  --      --       --           --        --        --        --\r\n" +
                          rule_76 + "fan_check_get_info_one_key_test fail, ret:0x8333032d\r\n",
                      "para[0]=0x8333032d "),
              255);
}

// Twenty polls of half a second, and one for each of the others.
TEST(FanTrays, AFanKeepsItsSpeed) {
    expect_on({"fan/150/stuck=1"}, "fan_speed_test 15 1",
              printed(dashes + "[FAN15] Speed Test Result: \r\n"
                               "[FAN15-0]: \r\nInfo: Success times: 0, Fail times: 1, total times: 1\r\n"
                               "[FAN15-1]: \r\nInfo: Success times: 1, Fail times: 0, total times: 1\r\n"
                               "[FAN15-2]: \r\nInfo: Success times: 1, Fail times: 0, total times: 1\r\n"
                               "-----------------Total test time: 011s 011000ms-----------------\r\n"
                               "fan_speed_test fail, ret:0x1\r\n",
                      "para[0]=0x1 "),
              255);
}

// Thirty polls of a second; the others are there when they are looked at.
TEST(FanTrays, AFanKeepsItsShift) {
    expect_on({"fan/150/stuck=1"}, "fan_shift_test 15 1",
              printed(dashes + "[FAN15] Shift Test Result: \r\n"
                               "Error: [0 times]check shift(10!=5) time out in third step\r\n"
                               "Error: [1 times]check shift(10!=5) time out(1) in third step\r\n"
                               "Info: Success times: 0, Fail times: 1, total times: 1\r\n"
                               "-----------------Total test time: 032s 032000ms-----------------\r\n"
                               "fan_shift_test fail, ret:0x1\r\n",
                      "para[0]=0x1 "),
              255);
}

TEST(FanTrays, ATrayWhoseSpeedCannotBeRead) {
    expect_passed({"tray/16/detectable=0"}, "fan_speed_test 16 1",
                  dashes + "[FAN16] Speed Test Result: \r\n[FAN16-0]: N/A\r\n[FAN16-1]: N/A\r\n"
                           "-----------------Total test time: 000s 000000ms-----------------\r\n");
}

TEST(FanTrays, AControllerNeverComesUp) {
    expect_on({"tray/15/init_stuck=1"}, "fan_multi_init_test 15 1",
              printed(dashes + "[FAN15] Multi Init Test Result: \r\nError: init status overtime init test\r\n"
                               "Info: Success times: 0, Fail times: 1, total times: 1\r\n"
                               "-----------------Total test time: 030s 030000ms-----------------\r\n"
                               "fan_multi_init_test fail, ret:0x1\r\n",
                      "para[0]=0x1 "),
              255);
}

// It stays green, which is one of the four.
TEST(FanTrays, ALampIsStuck) {
    expect_on({"tray/15/lamp_stuck=1"}, "fan_led_one_key_test",
              printed(dashes + "[FAN15] Led Test Result:\r\n"
                               "Error: contrast led color(0) fail in last step\r\ntype-0 color-0: fail\r\n"
                               "type-0 color-1: pass\r\n"
                               "Error: contrast led color(2) fail in last step\r\ntype-0 color-2: fail\r\n"
                               "Error: contrast led color(4) fail in last step\r\ntype-0 color-4: fail\r\n"
                               "Info: Success color: 1, Fail color: 3\r\n"
                               "[FAN16] Led Test Result:\r\ntype-0 color-0: pass\r\ntype-0 color-1: pass\r\n"
                               "type-0 color-2: pass\r\ntype-0 color-4: pass\r\n"
                               "Info: Success color: 4, Fail color: 0\r\n"
                               "--------------------Total test time: 0s 0ms--------------------\r\n"
                               "fan_led_one_key_test fail, ret:0x3\r\n",
                      "para[0]=0x3 "),
              255);
}

// It is silent until it is brought up again.
TEST(FanTrays, ATrayIsTakenDown) {
    const std::vector<std::string> options{"--state", new_scratch_dir(), "--clock", "virtual"};
    EXPECT_EQ(run_sim(options, {"fan_test", "fan_exit", "15"}).status, 0);
    EXPECT_EQ(run_sim(options, {"fan_test", "fan_get_speed", "15", "0"}).status, 255);
    EXPECT_EQ(run_sim(options, {"fan_test", "fan_init", "15"}).status, 0);
    EXPECT_EQ(run_sim(options, {"fan_test", "fan_get_speed", "15", "0"}).status, 0);
}

// The label is written over itself, so two at once do each other no harm.
TEST(FanTrays, TwoLabelTestsAtOnce) {
    const std::string state = new_scratch_dir();
    EXPECT_EQ(run_launcher({"--state", state}, {"fan_test", "fan_get_num", "15"}).status, 0);
    process_result results[2];
    const auto run = [&](process_result *result) {
        *result = run_launcher({"--state", state}, {"fan_test", "fan_elabel_test", "15", "20"});
    };
    std::thread first(run, &results[0]);
    std::thread second(run, &results[1]);
    first.join();
    second.join();
    for (const process_result &result : results) {
        EXPECT_EQ(result.status, 0);
        EXPECT_NE(result.out.find("Info: Success times: 20, Fail times: 0, total times: 20\r\n"), std::string::npos)
            << result.out;
    }
}
