// Fan trays: presence by slot, as the main processing units see it; fans whose speed takes its course in board time,
// and whose percentage, shift and power agree with it; a controller that needs its time; labels and ability files.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string not_ready = "0x8111010f\n";
const std::string damaged = "0x81110109\n";
const std::string out_of_range = "0x81110107\n";

std::string online(const std::string &slot) {
    return "drv_fan_get_online_status(slot_id=" + slot + ")";
}

// "get_speed", "slot_id=15, fan_id=0"
std::string fan_call(const std::string &operation, const std::string &inputs) {
    return "drv_fan_" + operation + "(" + inputs + ")";
}

std::string fan_in_15(const std::string &operation, const std::string &more = "") {
    return fan_call(operation, "slot_id=15, fan_id=0" + more);
}

// A new chassis on the virtual clock; what is set stays.
class Fan : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &settings = {}) {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual"};
        for (const std::string &setting : settings) {
            options.insert(options.end(), {"--set", "chassis/fan/" + setting});
        }
        return answers_of(options, lines);
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

TEST(FanTray, BothTraysAreThere) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {online("15"), online("16")}), "0x0 online=1\n0x0 online=1\n");
    EXPECT_EQ(answers(seen_from(board, "mpu_slave"), {online("15")}), "0x0 online=1\n");
}

TEST(FanTray, TheTechnicianTakesOneOut) {
    EXPECT_EQ(answers_of({"--state", new_scratch_dir() + "/state", "--set", "chassis/fan/tray/16/present=0"},
                         {online("15"), online("16")}),
              "0x0 online=1\n0x0 online=0\n");
}

TEST(FanTray, AnEmptySlotForTrays) {
    const std::string file = new_scratch_dir() + "/quiet.xml";
    write_file(file, "<board name=\"quiet\" like=\"mpu\" slot=\"9\"><place name=\"chassis\">"
                     "<module name=\"sim_fan\" remove=\"yes\"/></place></board>");
    const test_board board = new_board(file);
    EXPECT_EQ(answers(board, {online("15"), "drv_temperature_get_value(temperature_id=1)"}),
              "0x0 online=0\n0x0 value=43\n");
}

TEST(FanTray, OtherSlotsAndBoards) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {online("9"), online("1"), online("17"), online("0"),
                              "drv_fan_get_online_status(slot_id=15, online=null)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + null_pointer);
    EXPECT_EQ(answers(seen_from(board, "lpu"), {online("15"), online("7")}), not_supported + no_such_device);
}

TEST_F(Fan, HowManyThereAreAndWhatTheyCan) {
    EXPECT_EQ(answers({"drv_fan_get_num(slot_id=15)", "drv_fan_get_num(slot_id=16)", fan_in_15("get_max_speed"),
                       fan_in_15("get_max_shift"), fan_in_15("get_max_power"), "drv_fan_get_wind_direct(slot_id=15)",
                       "drv_fan_get_controlable(slot_id=15)", "drv_fan_get_detectable(slot_id=15)"}),
              "0x0 num=3\n0x0 num=2\n0x0 max_speed=12000\n0x0 max_shift=10\n0x0 max_power=24\n"
              "0x0 direct=1\n0x0 controlable=1\n0x0 detectable=1\n");
}

TEST_F(Fan, SpinsUpAndDownAtItsOwnRate) {
    const std::string speed = fan_in_15("get_speed");
    const std::string percent = fan_in_15("get_speed_percent");
    EXPECT_EQ(answers({speed, percent, fan_in_15("set_speed_percent", ", percent=80"), speed, "wait 1", speed, percent,
                       "wait 3.5", speed, percent, "wait 60", speed}),
              "0x0 speed=6000\n0x0 percent=50\n0x0\n0x0 speed=6000\n0x0 speed=6800\n0x0 percent=57\n"
              "0x0 speed=9600\n0x0 percent=80\n0x0 speed=9600\n");
    EXPECT_EQ(answers({fan_in_15("set_speed_percent", ", percent=0"), "wait 2", speed, "wait 10.5", speed, percent}),
              "0x0\n0x0 speed=8000\n0x0 speed=0\n0x0 percent=0\n");
}

TEST_F(Fan, IsTurnedRoundOnItsWay) {
    const std::string speed = fan_in_15("get_speed");
    EXPECT_EQ(answers({fan_in_15("set_speed_percent", ", percent=100"), "wait 2", speed,
                       fan_in_15("set_speed_percent", ", percent=60"), speed, "wait 0.25", speed, "wait 1", speed}),
              "0x0\n0x0 speed=7600\n0x0\n0x0 speed=7600\n0x0 speed=7400\n0x0 speed=7200\n");
}

TEST_F(Fan, ShiftsAreThePartsOfItsSpeed) {
    const std::string shift = fan_in_15("get_shift");
    EXPECT_EQ(
        answers({shift, fan_in_15("get_max_power_of_curshift"), fan_in_15("get_max_speed_by_shift", ", shift=1"),
                 fan_in_15("get_max_speed_by_shift", ", shift=10"), fan_in_15("get_max_power_by_shift", ", shift=1"),
                 fan_in_15("get_max_power_by_shift", ", shift=5"), fan_in_15("get_max_power_by_shift", ", shift=10")}),
        "0x0 shift=5\n0x0 max_power=3\n0x0 max_speed=1200\n0x0 max_speed=12000\n0x0 max_power=1\n"
        "0x0 max_power=3\n0x0 max_power=24\n");
    EXPECT_EQ(answers({fan_in_15("set_shift", ", shift=7"), "wait 1.5", shift, "wait 0.01", shift, "wait 10", shift,
                       fan_in_15("get_speed"), fan_in_15("get_speed_percent")}),
              "0x0\n0x0 shift=6\n0x0 shift=7\n0x0 shift=7\n0x0 speed=8400\n0x0 percent=70\n");
    EXPECT_EQ(answers({fan_in_15("set_speed_percent", ", percent=0"), "wait 60", shift}), "0x0\n0x0 shift=1\n");
    EXPECT_EQ(
        answers({fan_in_15("set_shift", ", shift=0"), fan_in_15("set_shift", ", shift=11"),
                 fan_in_15("get_max_speed_by_shift", ", shift=0"), fan_in_15("get_max_power_by_shift", ", shift=11"),
                 fan_in_15("set_speed_percent", ", percent=101")}),
        bad_value + bad_value + bad_value + bad_value + bad_value);
}

TEST_F(Fan, AllFansOfATrayAtOnce) {
    const std::string all = "slot_id=16, fan_id=0xffffffff";
    EXPECT_EQ(answers({fan_call("set_shift", all + ", shift=8"), "wait 30",
                       fan_call("get_shift", "slot_id=16, fan_id=0"), fan_call("get_shift", "slot_id=16, fan_id=1"),
                       fan_in_15("get_shift"), fan_call("set_speed_percent", all + ", percent=40"), "wait 30",
                       fan_call("get_speed", "slot_id=16, fan_id=0"), fan_call("get_speed", "slot_id=16, fan_id=1"),
                       fan_call("get_speed", all)}),
              "0x0\n0x0 shift=8\n0x0 shift=8\n0x0 shift=5\n0x0\n0x0 speed=3600\n0x0 speed=3600\n" + no_such_device);
}

TEST_F(Fan, SwitchedOffItRunsDown) {
    const std::string power = fan_in_15("get_power");
    EXPECT_EQ(answers({power, fan_in_15("set_power", ", power=0"), power, "wait 2", fan_in_15("get_speed"), "wait 10",
                       fan_in_15("get_speed"), fan_in_15("get_status"), fan_in_15("set_power", ", power=1"), "wait 30",
                       fan_in_15("get_speed"), fan_in_15("set_power", ", power=2")}),
              "0x0 power=1\n0x0\n0x0 power=0\n0x0 speed=4400\n0x0 speed=0\n0x0 status=0\n0x0\n0x0 speed=6000\n" +
                  bad_value);
}

TEST_F(Fan, StallsAndComplainsAtTheTechniciansHand) {
    const std::string status = fan_in_15("get_status");
    const std::string speed_alarm = fan_in_15("get_alarm", ", alarm=2");
    EXPECT_EQ(answers({status, speed_alarm}), "0x0 status=0\n0x0 status=0\n");
    EXPECT_EQ(answers({status, speed_alarm, fan_in_15("get_speed"), fan_in_15("get_alarm", ", alarm=1"),
                       fan_in_15("get_alarm", ", alarm=6"), fan_in_15("get_alarm", ", alarm=7"),
                       fan_call("get_status", "slot_id=15, fan_id=1")},
                      {"fan/150/stalled=1", "fan/150/alarms=0x40"}),
              "0x0 status=1\n0x0 status=1\n0x0 speed=0\n0x0 status=0\n0x0 status=1\n" + no_such_device +
                  "0x0 status=0\n");
    EXPECT_EQ(answers({fan_in_15("set_speed_percent", ", percent=0"), status}), "0x0\n0x0 status=0\n");
    EXPECT_EQ(answers({fan_in_15("set_speed_percent", ", percent=70"), "wait 20", status, fan_in_15("get_speed")},
                      {"fan/150/stalled=0"}),
              "0x0\n0x0 status=0\n0x0 speed=8400\n");
    EXPECT_EQ(answers({fan_in_15("set_speed_percent", ", percent=90"), "wait 20", fan_in_15("get_speed")},
                      {"fan/150/stuck=1"}),
              "0x0\n0x0 speed=8400\n");
}

TEST_F(Fan, TheBoardsTemperatureFollows) {
    const std::string all = "drv_fan_set_speed_percent(slot_id=15, fan_id=0xffffffff, percent=0)";
    EXPECT_EQ(answers({"drv_temperature_get_value(temperature_id=1)", all, "wait 30",
                       "drv_temperature_get_value(temperature_id=1)"}),
              "0x0 value=62\n0x0\n0x0 value=98\n");
}

TEST_F(Fan, TheControllerNeedsItsTime) {
    const std::string all = fan_call("get_operation_complete_status", "slot_id=15, fan_id=0xffffffff, operation=0");
    const std::string one = fan_in_15("get_operation_complete_status", ", operation=0");
    EXPECT_EQ(answers({one, "drv_fan_init(slot_id=15)", all, "wait 3.499", one, fan_in_15("get_speed"), "wait 0.001",
                       all, one, fan_in_15("get_operation_complete_status", ", operation=1")}),
              "0x0 status=0\n0x0\n0x0 status=1\n0x0 status=1\n0x0 speed=6000\n0x0 status=0\n0x0 status=0\n" +
                  not_supported);
    EXPECT_EQ(answers({"drv_fan_exit(slot_id=15)", "drv_fan_exit(slot_id=15)", all, fan_in_15("get_speed"),
                       "drv_fan_get_led(slot_id=15, type=0)", "drv_fan_get_num(slot_id=15)", online("15"),
                       "drv_fan_init(slot_id=15)", "wait 4", all}),
              "0x0\n0x0\n" + not_ready + not_ready + not_ready + "0x0 num=3\n0x0 online=1\n0x0\n0x0 status=0\n");
    EXPECT_EQ(answers({all, "drv_fan_init(slot_id=15)", "wait 3600", all}, {"tray/15/init_stuck=1"}),
              "0x0 status=1\n0x0\n0x0 status=1\n");
}

TEST_F(Fan, TheLampHasThreeColours) {
    const auto lamp = [](int color) {
        return "drv_fan_set_led(slot_id=16, type=0, color=" + std::to_string(color) + ")";
    };
    const std::string shown = "drv_fan_get_led(slot_id=16, type=0)";
    EXPECT_EQ(answers({shown, lamp(2), shown, lamp(4), shown, lamp(0), shown, lamp(3), lamp(5), shown,
                       "drv_fan_get_led(slot_id=16, type=1)", "drv_fan_set_led(slot_id=16, type=1, color=1)"}),
              "0x0 color=1\n0x0\n0x0 color=2\n0x0\n0x0 color=4\n0x0\n0x0 color=0\n" + bad_value + bad_value +
                  "0x0 color=0\n" + no_such_device + no_such_device);
    EXPECT_EQ(answers({lamp(1), shown}, {"tray/16/lamp_stuck=1"}), "0x0\n0x0 color=0\n");
}

TEST_F(Fan, WhatAnOlderTrayLacks) {
    EXPECT_EQ(
        answers({fan_call("get_power", "slot_id=16, fan_id=0"), fan_call("set_power", "slot_id=16, fan_id=0, power=0"),
                 "drv_fan_get_volstatus_history(slot_id=16)",
                 "drv_fan_get_board_property(slot_id=16, type=6, len=1026)",
                 "drv_fan_get_board_property(slot_id=16, type=5, len=1026)"}),
        not_supported + not_supported + not_supported + not_supported + not_supported);
    EXPECT_EQ(answers({fan_in_15("set_speed_percent", ", percent=60"), fan_in_15("set_shift", ", shift=3"),
                       fan_in_15("get_speed"), fan_in_15("get_speed_percent"), fan_in_15("get_shift"),
                       fan_in_15("get_max_power_of_curshift"), fan_in_15("get_max_speed")},
                      {"tray/15/controlable=0", "tray/15/detectable=0"}),
              not_supported + not_supported + not_supported + not_supported + not_supported + not_supported +
                  "0x0 max_speed=12000\n");
}

TEST_F(Fan, HistoriesAreToldOnce) {
    const std::string plugged = "drv_fan_get_history_plug_status(slot_id=15)";
    const std::string voltage = "drv_fan_get_volstatus_history(slot_id=15)";
    EXPECT_EQ(answers({plugged, voltage}), "0x0 plugged=0\n0x0 status=0\n");
    EXPECT_EQ(answers({plugged, plugged, voltage, voltage}, {"tray/15/present=0", "tray/15/voltage_failed=1"}),
              "0x0 plugged=1\n0x0 plugged=0\n0x0 status=1\n0x0 status=0\n");
    EXPECT_EQ(answers({plugged, plugged}, {"tray/15/present=1"}), "0x0 plugged=1\n0x0 plugged=0\n");
}

TEST_F(Fan, AnAbsentTrayAnswersNothing) {
    EXPECT_EQ(answers({"drv_fan_get_num(slot_id=15)", fan_in_15("get_speed"), "drv_fan_init(slot_id=15)",
                       "drv_fan_exit(slot_id=15)", "drv_fan_get_led(slot_id=15, type=0)",
                       "drv_fan_get_board_property(slot_id=15, type=2, len=1026)"},
                      {"tray/15/present=0"}),
              not_ready + not_ready + not_ready + not_ready + not_ready + not_ready);
    EXPECT_EQ(answers({fan_call("get_speed", "slot_id=16, fan_id=2"), fan_call("get_speed", "slot_id=16, fan_id=10"),
                       fan_call("get_speed", "slot_id=9, fan_id=0"), "drv_fan_get_num(slot_id=16, num=null)"}),
              no_such_device + no_such_device + no_such_device + null_pointer);
    EXPECT_EQ(answers_of({"--state", new_scratch_dir() + "/state", "--board", "lpu"},
                         {"drv_fan_get_num(slot_id=15)", fan_in_15("get_speed"), "drv_fan_init(slot_id=15)"}),
              not_supported + not_supported + not_supported);
}

// The checksum is that of 1024 bytes, the zeros behind the text among them.
TEST_F(Fan, LabelsBearTheirChecksum) {
    const std::string delivered = bytes("\x9b\x93"
                                        "[board]\nitem=KT-FAN-9000\nserial=1911040160\nmade=2019-05-06",
                                        1026);
    const std::string zeros = bytes("\xb7\x6f", 1026);
    const std::string wrong = bytes("\xb7\x6e", 1026);
    const auto read = [](const std::string &type) {
        return "drv_fan_get_board_property(slot_id=16, type=" + type + ", len=1026)";
    };
    const auto write = [](const std::string &type, const std::string &area, const std::string &len) {
        return "drv_fan_set_board_property(slot_id=16, type=" + type + ", buffer=" + area + ", len=" + len + ")";
    };
    EXPECT_EQ(answers({"drv_crc16_checksum(data=[31 32 33 34 35 36 37 38 39], len=9)", read("2")}),
              "0x0 crc16=10673\n0x0 buffer=" + delivered + " len=1026\n");
    EXPECT_EQ(answers({write("2", wrong, "1026"), write("2", "[00 00 00]", "3"), read("2")}),
              damaged + out_of_range + "0x0 buffer=" + delivered + " len=1026\n");
    EXPECT_EQ(answers({write("2", zeros, "1026"), read("2"), write("3", zeros, "1026"), read("3"),
                       "drv_fan_get_board_property(slot_id=16, type=2, len=1025)"}),
              "0x0\n0x0 buffer=" + zeros + " len=1026\n0x0\n0x0 buffer=" + zeros + " len=1026\n" + too_small);
    EXPECT_EQ(answers({read("2")}), "0x0 buffer=" + zeros + " len=1026\n");
}

TEST_F(Fan, ThePcbVersionIsText) {
    const std::string read = "drv_fan_get_board_property(slot_id=15, type=1, len=128)";
    EXPECT_EQ(answers({read, "drv_fan_set_board_property(slot_id=15, type=1, buffer=[56 32 00 00], len=4)", read,
                       "drv_fan_set_board_property(slot_id=15, type=1, buffer=[00], len=1)",
                       "drv_fan_get_board_property(slot_id=15, type=1, len=2)"}),
              "0x0 buffer=[56 45 52 2e 42 00] len=6\n0x0\n0x0 buffer=[56 32 00] len=3\n" + bad_value + too_small);
}

TEST(FanTray, MissingPointersAreRefused) {
    const std::vector<std::string> calls{
        fan_call("get_operation_complete_status", "slot_id=15, fan_id=0, operation=0, status=null"),
        fan_call("get_history_plug_status", "slot_id=15, plugged=null"),
        fan_call("get_num", "slot_id=15, num=null"),
        fan_call("get_wind_direct", "slot_id=15, direct=null"),
        fan_call("get_volstatus_history", "slot_id=15, status=null"),
        fan_call("get_controlable", "slot_id=15, controlable=null"),
        fan_call("get_detectable", "slot_id=15, detectable=null"),
        fan_in_15("get_status", ", status=null"),
        fan_in_15("get_alarm", ", alarm=0, status=null"),
        fan_in_15("get_speed", ", speed=null"),
        fan_in_15("get_max_speed", ", max_speed=null"),
        fan_in_15("get_speed_percent", ", percent=null"),
        fan_in_15("get_shift", ", shift=null"),
        fan_in_15("get_max_shift", ", max_shift=null"),
        fan_in_15("get_max_speed_by_shift", ", shift=1, max_speed=null"),
        fan_in_15("get_max_power_by_shift", ", shift=1, max_power=null"),
        fan_in_15("get_max_power_of_curshift", ", max_power=null"),
        fan_in_15("get_max_power", ", max_power=null"),
        fan_in_15("get_power", ", power=null"),
        fan_call("get_led", "slot_id=15, type=0, color=null"),
        fan_call("get_board_property", "slot_id=15, type=2, buffer=null, len=1026"),
        fan_call("get_board_property", "slot_id=15, type=2, buffer=null, len=null"),
        fan_call("set_board_property", "slot_id=15, type=2, buffer=null, len=1026"),
        "drv_crc16_checksum(data=null, len=4)",
        "drv_crc16_checksum(data=[31], len=1, crc16=null)"};
    std::string refused;
    for (size_t i = 0; i < calls.size(); ++i) {
        refused += null_pointer;
    }
    EXPECT_EQ(answers(new_delivered("mpu_master"), calls), refused);
}

} // namespace kestro_tests
