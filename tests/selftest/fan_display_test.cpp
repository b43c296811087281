// The tables of fan trays: every cell with its value, without one, and failed.
#include <gtest/gtest.h>

#include "tests/selftest/fan_script.h"
#include "tests/selftest/part.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

const std::string one_tray = fan_slots(1, "0b");
const std::string info_edge = std::string(76, '-') + "\r\n";
const std::string info_head =
    info_edge + "FanId  FanNum  Status   Speed        MaxSpeed  MaxPower  MaxShift  CurShift\r\n";
const std::string alarm_edge = std::string(98, '-') + "\r\n";
const std::string alarm_head =
    alarm_edge + "FanId  FanNum  Stalled   Reset     Hardware  SpeedFail NoPlugin  ElecMach  I2C       AbilityFile\r\n";

std::string presence(const std::string &answer) {
    return tray_call("get_online_status", answer);
}

std::string pcb_version(const std::string &answer) {
    return "drv_fan_get_board_property(slot_id=11, type=1, len=128) = " + answer + "\n";
}

std::string airflow(const std::string &answer) {
    return tray_call("get_wind_direct", answer);
}

const std::string good_tray = presence("0 online=1") + pcb_version("0 buffer=\"VER.B\" len=6") + airflow("0 direct=1");
const std::string good_tray_lines = "[FAN11]\r\n"
                                    "Present: YES\r\n"
                                    "PcbVer : VER.B\r\n"
                                    "Airflow Direction: Front-to-Back\r\n";

// One tray without fans: what stands above the table.
void expect_tray(const std::string &script, const std::string &lines, int result) {
    expect_part("fan_info", one_tray + script + fan_num(11, "0 num=0"), lines + info_head + info_edge, result);
}

// One fan of a good tray, whose row begins and ends here.
void expect_info_row(const std::string &script, const std::string &row, int result) {
    expect_part("fan_info", one_tray + good_tray + fan_num(11, "0 num=1") + script,
                good_tray_lines + info_head + row + info_edge, result);
}

struct fan_answers {
    std::string status = "0";
    std::string percent = "0 percent=45";
    std::string speed = "0 speed=8100";
    std::string max_speed = "0 max_speed=18000";
    std::string max_power = "0 max_power=36";
    std::string max_shift = "0 max_shift=8";
    std::string shift = "0 shift=4";
};

std::string script_of(const fan_answers &answers) {
    return fan_call("get_status", "0", answers.status) + fan_call("get_speed_percent", "0", answers.percent) +
           fan_call("get_speed", "0", answers.speed) + fan_call("get_max_speed", "0", answers.max_speed) +
           fan_call("get_max_power", "0", answers.max_power) + fan_call("get_max_shift", "0", answers.max_shift) +
           fan_call("get_shift", "0", answers.shift);
}

constexpr int code(uint32_t number) {
    return static_cast<int>(number);
}

} // namespace

TEST(FanInfoTest, ATrayWithTwoFansAndOneWithout) {
    expect_part("fan_info",
                fan_slots(2, "0b 0c") + good_tray +
                    "drv_fan_get_online_status(slot_id=12) = 0 online=0\n"
                    "drv_fan_get_board_property(slot_id=12, type=1, len=128) = 0x811101a4\n"
                    "drv_fan_get_wind_direct(slot_id=12) = 0 direct=0\n" +
                    fan_num(11, "0 num=2") + fan_num(12, "0 num=0") + script_of({}) +
                    "drv_fan_get_status(slot_id=11, fan_id=1) = 0 status=1\n"
                    "drv_fan_get_speed_percent(slot_id=11, fan_id=1) = 0 percent=100\n"
                    "drv_fan_get_speed(slot_id=11, fan_id=1) = 0 speed=123456\n"
                    "drv_fan_get_max_speed(slot_id=11, fan_id=1) = 0 max_speed=7\n"
                    "drv_fan_get_max_power(slot_id=11, fan_id=1) = 0 max_power=8\n"
                    "drv_fan_get_max_shift(slot_id=11, fan_id=1) = 0 max_shift=9\n"
                    "drv_fan_get_shift(slot_id=11, fan_id=1) = 0 shift=-1\n",
                good_tray_lines +
                    "[FAN12]\r\n"
                    "Present: NO\r\n"
                    "Present: YES\r\n"
                    "PcbVer : N/A\r\n"
                    "Airflow Direction: Back-to-Front\r\n" +
                    info_head +
                    "FAN11  0       Normal    45%(8100 )   18000     36        8         4\r\n"
                    "FAN11  1       Abnormal  100%(123456)   7         8         9         -1\r\n" +
                    info_edge,
                0);
}

TEST(FanInfoTest, WithoutASlotList) {
    expect_part("fan_info", "drv_slot_get_list(type=5) = 0x61 list={num=3}\n", "Error: get fan slot list fail\r\n",
                0x61);
    expect_part("fan_info", "drv_slot_get_list(type=5) = 0x811101a4\n", "Error: get fan slot list fail\r\n",
                code(0x811101a4));
}

TEST(FanInfoTest, AnEmptySlotList) {
    expect_part("fan_info", "drv_slot_get_list(type=5) = 0\n", info_head + info_edge, 0);
}

// No more trays than the record holds.
TEST(FanInfoTest, ASlotListThatCountsTooMany) {
    std::string trays;
    std::string slots;
    for (int i = 0; i < 128; ++i) {
        trays += "[FAN7]\r\nPresent: YES\r\nPcbVer : N/A\r\nAirflow Direction: N/A\r\n";
        slots += i == 0 ? "07" : " 07";
    }
    expect_part("fan_info",
                fan_slots(129, slots) + "drv_fan_get_online_status(slot_id=7) = 0 online=1 x128\n"
                                        "drv_fan_get_board_property(slot_id=7) = 0x811101a4 x128\n"
                                        "drv_fan_get_wind_direct(slot_id=7) = 0x811101a4 x128\n"
                                        "drv_fan_get_num(slot_id=7) = 0 num=0 x128\n",
                trays + info_head + info_edge, 0);
}

TEST(FanInfoTest, EverythingOfATrayFails) {
    expect_tray(presence("0x100") + pcb_version("0x20") + airflow("0x3"),
                "Error: get fan11 online status fail\r\n"
                "[FAN11]\r\n"
                "Present: NO\r\n"
                "Present: YES\r\n"
                "Error: get fan11 pcbver fail\r\n"
                "Airflow Direction: --\r\n"
                "Error: get fan11 wind direct fail\r\n",
                0x123);
}

TEST(FanInfoTest, ATrayThatSupportsNothing) {
    expect_tray(presence("0x811101a4") + pcb_version("0x811101a4") + airflow("0x811101a4"),
                "Error: get fan11 online status fail\r\n"
                "[FAN11]\r\n"
                "Present: NO\r\n"
                "Present: YES\r\n"
                "PcbVer : N/A\r\n"
                "Airflow Direction: N/A\r\n",
                0);
}

// Another driver's "not supported" is a failure.
TEST(FanInfoTest, OneCodeAloneIsNotSupported) {
    expect_tray(presence("0 online=1") + pcb_version("0xa4") + airflow("0x100"),
                "[FAN11]\r\n"
                "Present: YES\r\n"
                "Error: get fan11 pcbver fail\r\n"
                "Airflow Direction: --\r\n"
                "Error: get fan11 wind direct fail\r\n",
                0x1a4);
}

TEST(FanInfoTest, ADriverThatAnswersAndWritesNothing) {
    expect_tray(presence("0") + pcb_version("0") + airflow("0"),
                "[FAN11]\r\n"
                "Present: NO\r\n"
                "Present: YES\r\n"
                "PcbVer : \r\n"
                "Airflow Direction: Back-to-Front\r\n",
                0);
    const std::string nothing = "0";
    expect_info_row(script_of({nothing, nothing, nothing, nothing, nothing, nothing, nothing}),
                    "FAN11  0       Normal    0 %(0    )   0         0         0         0\r\n", 0);
}

TEST(FanInfoTest, AVersionThatFillsItsArea) {
    const std::string text(128, 'V');
    expect_tray(presence("0 online=2") + pcb_version("0 buffer=\"" + text + "\" len=128") + airflow("0 direct=7"),
                "[FAN11]\r\n"
                "Present: YES\r\n"
                "PcbVer : " +
                    text +
                    "\r\n"
                    "Airflow Direction: Front-to-Back\r\n",
                0);
}

TEST(FanInfoTest, AFanThatSupportsNothing) {
    const std::string no = fan_no_support;
    expect_info_row(script_of({no, no, no, no, no, no, no}),
                    "FAN11  0       N/A       N/A(N/A)     N/A       N/A       N/A       N/A\r\n", 0);
}

TEST(FanInfoTest, EverythingOfAFanFails) {
    expect_info_row(script_of({"1", "2", "4", "8", "0x10", "0x20", "0x40"}),
                    "FAN11  0       --        Error: get fan11 status fail\r\n"
                    "-- Error: get fan11 speed percent fail\r\n"
                    "(--      )Error: get fan11 speed fail\r\n"
                    "--        Error: get fan11 max speed fail\r\n"
                    "--        Error: get fan11 max power fail\r\n"
                    "--        Error: get fan11 max shift fail\r\n"
                    "--Error: get fan11 shift fail\r\n"
                    "\r\n",
                    0x7f);
}

TEST(FanInfoTest, ATrayThatDoesNotTellItsFans) {
    const std::string lines = "Error: get fan11 num fail\r\n"
                              "FAN11  --      --       --           --        --        --        --\r\n";
    expect_part("fan_info", one_tray + good_tray + fan_num(11, "0x71"), good_tray_lines + info_head + lines + info_edge,
                0x71);
    expect_part("fan_info", one_tray + good_tray + fan_num(11, "0x811101a4"),
                good_tray_lines + info_head + lines + info_edge, code(0x811101a4));
}

TEST(FanInfoTest, TheResultIsTheSumOfAllCodes) {
    expect_part("fan_info",
                fan_slots(2, "0b 02") + presence("0x1") + pcb_version("0x2") + airflow("0x4") +
                    "drv_fan_get_online_status(slot_id=2) = 0x10\n"
                    "drv_fan_get_board_property(slot_id=2, type=1, len=128) = 0x20\n"
                    "drv_fan_get_wind_direct(slot_id=2) = 0x40\n" +
                    fan_num(11, "0x100") + fan_num(2, "0x200"),
                "Error: get fan11 online status fail\r\n"
                "[FAN11]\r\n"
                "Present: NO\r\n"
                "Present: YES\r\n"
                "Error: get fan11 pcbver fail\r\n"
                "Airflow Direction: --\r\n"
                "Error: get fan11 wind direct fail\r\n"
                "Error: get fan2 online status fail\r\n"
                "[FAN2]\r\n"
                "Present: NO\r\n"
                "Present: YES\r\n"
                "Error: get fan2 pcbver fail\r\n"
                "Airflow Direction: --\r\n"
                "Error: get fan2 wind direct fail\r\n" +
                    info_head +
                    "Error: get fan11 num fail\r\n"
                    "FAN11  --      --       --           --        --        --        --\r\n"
                    "Error: get fan2 num fail\r\n"
                    "FAN2   --      --       --           --        --        --        --\r\n" +
                    info_edge,
                0x377);
}

namespace {

std::string alarm(int number, const std::string &answer) {
    return fan_call("get_alarm", "0, alarm=" + std::to_string(number), answer);
}

std::string alarms(const std::string &answer) {
    std::string script;
    for (int number = 0; number < 7; ++number) {
        script += alarm(number, answer);
    }
    return script;
}

void expect_alarm_row(const std::string &script, const std::string &row) {
    expect_part("fan_alarms", one_tray + fan_num(11, "0 num=1") + script, alarm_head + row + alarm_edge, 0);
}

} // namespace

TEST(FanAlarmTest, HealthyAndSickFans) {
    expect_part(
        "fan_alarms",
        fan_slots(2, "0b 03") + fan_num(11, "0 num=1") + fan_num(3, "0 num=2") +
            fan_call("get_status", "0", "0 status=0") + alarms("0 status=0") +
            "drv_fan_get_status(slot_id=3, fan_id=0) = 0 status=1\n"
            "drv_fan_get_alarm(slot_id=3, fan_id=0, alarm=2) = 0 status=1\n"
            "drv_fan_get_alarm(slot_id=3, fan_id=0) = 0\n"
            "drv_fan_get_status(slot_id=3, fan_id=1) = 0\n"
            "drv_fan_get_alarm(slot_id=3, fan_id=1) = 0 status=0x80000000\n",
        alarm_head +
            "FAN11  0       Normal    Normal    Normal    Normal    Normal    Normal    Normal    Normal    \r\n"
            "FAN3   0       Abnormal  Normal    Normal    Abnormal  Normal    Normal    Normal    Normal    \r\n"
            "FAN3   1       Normal    Abnormal  Abnormal  Abnormal  Abnormal  Abnormal  Abnormal  Abnormal  \r\n" +
            alarm_edge,
        0);
}

// Each column has its own alarm; number 7 is not asked.
TEST(FanAlarmTest, TheColumnsOfTheAlarms) {
    const char *rows[] = {
        "FAN11  0       Normal    Abnormal  N/A       N/A       N/A       N/A       N/A       N/A       \r\n",
        "FAN11  0       Normal    N/A       Abnormal  N/A       N/A       N/A       N/A       N/A       \r\n",
        "FAN11  0       Normal    N/A       N/A       Abnormal  N/A       N/A       N/A       N/A       \r\n",
        "FAN11  0       Normal    N/A       N/A       N/A       Abnormal  N/A       N/A       N/A       \r\n",
        "FAN11  0       Normal    N/A       N/A       N/A       N/A       Abnormal  N/A       N/A       \r\n",
        "FAN11  0       Normal    N/A       N/A       N/A       N/A       N/A       Abnormal  N/A       \r\n",
        "FAN11  0       Normal    N/A       N/A       N/A       N/A       N/A       N/A       Abnormal  \r\n",
    };
    for (int number = 0; number < 7; ++number) {
        expect_alarm_row(fan_call("get_status", "0", "0") + alarm(number, "0 status=1") +
                             fan_call("get_alarm", "0", fan_no_support),
                         rows[number]);
    }
}

TEST(FanAlarmTest, AFanThatSupportsNothing) {
    expect_alarm_row(
        fan_call("get_status", "0", fan_no_support) + alarms(fan_no_support),
        "FAN11  0       N/A       N/A       N/A       N/A       N/A       N/A       N/A       N/A       \r\n");
}

TEST(FanAlarmTest, WhateverFailsTheTablePasses) {
    expect_alarm_row(fan_call("get_status", "0", "0x71") + alarms("0x72"),
                     "FAN11  0       --        Error: get fan11 status fail\r\n"
                     "--        Error: get fan11 alarm0 fail\r\n"
                     "--        Error: get fan11 alarm1 fail\r\n"
                     "--        Error: get fan11 alarm2 fail\r\n"
                     "--        Error: get fan11 alarm3 fail\r\n"
                     "--        Error: get fan11 alarm4 fail\r\n"
                     "--        Error: get fan11 alarm5 fail\r\n"
                     "--        Error: get fan11 alarm6 fail\r\n"
                     "\r\n");
}

TEST(FanAlarmTest, ATrayThatDoesNotTellItsFans) {
    for (const char *answer : {"0x71", "0x811101a4"}) {
        expect_part("fan_alarms", one_tray + fan_num(11, answer),
                    alarm_head +
                        "Error: get fan11 num fail\r\n"
                        "FAN11  --      --        --        --        --        --        --        --        --\r\n" +
                        alarm_edge,
                    0);
    }
}

TEST(FanAlarmTest, WithoutASlotList) {
    expect_part("fan_alarms", "drv_slot_get_list(type=5) = 0x62\n", "Error: get fan slot list fail\r\n", 0x62);
}

TEST(FanAlarmTest, AnEmptySlotList) {
    expect_part("fan_alarms", "drv_slot_get_list(type=5) = 0\n", alarm_head + alarm_edge, 0);
}

namespace {

// What the part has brought to the console when the driver crashes in that operation, from the beginning of its row on.
void expect_before_crash(const std::string &part, const std::string &operation, const std::string &row) {
    const process_result run =
        run_part({"--script", scratch_file("script", fan_slots(1, "0b") + "drv_fan_" + operation + " = crash\n" +
                                                         fan_num(11, "0 num=1") + script_of({}) +
                                                         "drv_fan_get_alarm = 0\n"
                                                         "drv_fan_get_max_power_by_shift = 0 max_power=5\n")},
                 part);
    EXPECT_TRUE(run.out.ends_with("\n" + row)) << operation << ":\n" << run.out;
}

} // namespace

TEST(FanCellsTest, ACellIsShownBeforeTheNextDriverCall) {
    expect_before_crash("fan_info", "get_status", "FAN11  0       ");
    expect_before_crash("fan_info", "get_speed_percent", "FAN11  0       Normal    ");
    expect_before_crash("fan_info", "get_speed", "FAN11  0       Normal    45%");
    expect_before_crash("fan_info", "get_max_speed", "FAN11  0       Normal    45%(8100 )   ");
    expect_before_crash("fan_info", "get_max_power", "FAN11  0       Normal    45%(8100 )   18000     ");
    expect_before_crash("fan_info", "get_max_shift", "FAN11  0       Normal    45%(8100 )   18000     36        ");
    expect_before_crash("fan_info", "get_shift",
                        "FAN11  0       Normal    45%(8100 )   18000     36        8         ");
    expect_before_crash("fan_alarms", "get_status", "FAN11  0       ");
    expect_before_crash("fan_alarms", "get_alarm", "FAN11  0       Normal    ");
    expect_before_crash("fan_shifts", "get_shift", "[FAN11-0]: ");
    expect_before_crash("fan_shifts", "get_max_power_by_shift", "1       ");
    expect_before_crash("fan_shifts", "get_max_speed_by_shift", "1       5          ");
    expect_before_crash("fan_init_status", "get_operation_complete_status", "[FAN11-0]: ");
}
