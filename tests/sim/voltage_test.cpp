// Voltage rails: healthy on every board, set and read back, alarms from values and thresholds, findings of checks.
#include "tests/sim/support.h"

#include "sim/core/description.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

// The numbers that stand in one element of all entries of a node.
std::vector<uint64_t> described(const std::string &board, const std::string &instance, const std::string &node,
                                const std::string &element) {
    const auto chassis = read_board(board);
    const std::string place = instance == "self" ? place_of_seat(board) : instance;
    std::vector<uint64_t> numbers;
    for (const pugi::xml_node entry : chassis->node(place, "voltage_mng", node).children("entry")) {
        numbers.push_back(kestro_sim::element_number(kestro_sim::named_child(entry, element)).value());
    }
    return numbers;
}

struct rail_owner {
    const char *board;
    const char *instance;
    std::string selector;
};

const rail_owner owners[] = {
    {"mpu_master", "self", "0xffffffff "},  {"mpu_master", "slot2", "0xff000002 "},
    {"mpu_master", "slot3", "0xff000003 "}, {"mpu_slave", "self", "0xffffffff "},
    {"mpu_slave", "slot2", "0xff000002 "},  {"mpu_slave", "slot3", "0xff000003 "},
    {"lpu", "self", "0xffffffff "},
};

} // namespace

TEST(VoltageDriver, EveryDescribedRailIsWithinItsLimits) {
    for (const rail_owner &owner : owners) {
        const test_board board = new_delivered(owner.board);
        const std::vector<uint64_t> ids = described(owner.board, owner.instance, "check_attr", "voltage_id");
        EXPECT_FALSE(ids.empty());
        for (const uint64_t id : ids) {
            const std::string rail = owner.selector + std::to_string(id);
            const std::string said =
                calls_print(board, {"voltage_get_alarm " + rail + " 0 64", "voltage_get_alarm " + rail + " 1 64",
                                    "voltage_get_node_desc " + rail + " 64"});
            EXPECT_TRUE(said.starts_with("0x0 0 \"")) << owner.board << rail << said;
            EXPECT_NE(said.find("\n0x0 0 \""), std::string::npos) << owner.board << rail << said;
            EXPECT_NE(said.find("\n0x0 \""), std::string::npos) << owner.board << rail << said;
        }
    }
}

TEST(VoltageDriver, EveryDescribedRailTakesTheMiddleOfItsRange) {
    for (const char *name : {"mpu_master", "mpu_slave", "lpu"}) {
        const test_board board = new_delivered(name);
        const std::vector<uint64_t> ids = described(name, "self", "set_attr", "voltage_id");
        const std::vector<uint64_t> low = described(name, "self", "set_attr", "set_low_th");
        const std::vector<uint64_t> high = described(name, "self", "set_attr", "set_high_th");
        EXPECT_FALSE(ids.empty());
        for (size_t i = 0; i < ids.size(); ++i) {
            const std::string rail = "0xffffffff " + std::to_string(ids[i]);
            const std::string middle = std::to_string((low[i] + high[i]) / 2);
            EXPECT_EQ(calls_print(board, {"voltage_set_value " + rail + " " + middle, "voltage_get_value " + rail}),
                      "0x0\n0x0 " + middle + "\n");
        }
    }
}

TEST(VoltageDriver, RegulatorsAndPowerStagesAreClean) {
    for (const rail_owner &owner : owners) {
        const test_board board = new_delivered(owner.board);
        for (const uint64_t id : described(owner.board, owner.instance, "vrm_alert_result", "vrm_chip_id")) {
            EXPECT_EQ(calls_print(board, {"voltage_check_vrm_alert " + owner.selector + std::to_string(id) + " 1200"}),
                      "0x0 0 \"\"\n");
        }
        for (const uint64_t id : described(owner.board, owner.instance, "power_check", "power_id")) {
            EXPECT_EQ(calls_print(board, {"voltage_check_power " + owner.selector + std::to_string(id) + " 1200"}),
                      "0x0 0 \"\"\n");
        }
    }
}

TEST(VoltageDriver, ValueAndHistoryAreReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"voltage_get_value 0xffffffff 2", "voltage_get_history_value 0xffffffff 2"}),
              "0x0 1004\n0x0 1010 998\n");
    EXPECT_EQ(calls_print(board, {"voltage_set_value 0xff000009 2 1100", "voltage_set_value 0xffffffff 2 900",
                                  "voltage_set_value 0xffffffff 2 1000"}),
              ok + ok + ok);
    EXPECT_EQ(calls_print(board, {"voltage_get_value 0xffffffff 2", "voltage_get_history_value 0xffffffff 2",
                                  "voltage_get_value 0xffffffff 3"}),
              "0x0 1000\n0x0 1100 900\n0x0 903\n");
}

TEST(VoltageDriver, ValueOutsideTheRangeIsRefusedAndChangesNothing) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"voltage_set_value 0xffffffff 2 1101", "voltage_set_value 0xffffffff 2 899",
                                  "voltage_get_value 0xffffffff 2", "voltage_get_history_value 0xffffffff 2"}),
              bad_value + bad_value + "0x0 1004\n0x0 1010 998\n");
    EXPECT_EQ(calls_print(board, {"voltage_set_value 0xffffffff 1 3300"}), not_supported);
}

TEST(VoltageDriver, ThresholdsAreReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"voltage_get_warning_th 0xffffffff 1", "voltage_get_alarm_th 0xffffffff 1"}),
              "0x0 3135 3465\n0x0 2970 3630\n");
    EXPECT_EQ(calls_print(board, {"voltage_set_warning_th 0xffffffff 1 3200 3400",
                                  "voltage_set_alarm_th 0xffffffff 1 3000 3600"}),
              ok + ok);
    EXPECT_EQ(
        calls_print(board, {"voltage_get_warning_th 0xffffffff 1", "voltage_get_alarm_th 0xffffffff 1",
                            "voltage_set_warning_th 0xffffffff 1 3401 3400", "voltage_set_alarm_th 0xffffffff 1 2 1",
                            "voltage_get_warning_th 0xffffffff 1", "voltage_get_alarm_th 0xffffffff 1"}),
        "0x0 3200 3400\n0x0 3000 3600\n" + bad_value + bad_value + "0x0 3200 3400\n0x0 3000 3600\n");
}

TEST(VoltageDriver, AlarmFollowsValueAndThresholds) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"voltage_set_value 0xffffffff 2 900", "voltage_get_alarm 0xffffffff 2 1 64",
                                  "voltage_get_alarm 0xffffffff 2 0 64", "voltage_set_value 0xffffffff 2 1071",
                                  "voltage_get_alarm 0xffffffff 2 1 64", "voltage_set_alarm_th 0xffffffff 2 880 1070",
                                  "voltage_get_alarm 0xffffffff 2 0 64", "voltage_set_value 0xffffffff 2 1070",
                                  "voltage_get_alarm 0xffffffff 2 0 64"}),
              "0x0\n0x0 1 \"900 mV is below 930 mV\"\n0x0 0 \"900 mV is within 880 mV to 1120 mV\"\n"
              "0x0\n0x0 2 \"1071 mV is above 1070 mV\"\n0x0\n0x0 2 \"1071 mV is above 1070 mV\"\n"
              "0x0\n0x0 0 \"1070 mV is within 880 mV to 1070 mV\"\n");
    EXPECT_EQ(calls_print(board, {"voltage_get_alarm 0xffffffff 2 2 64"}), bad_value);
}

TEST(VoltageDriver, SickBoardTellsItsFaults) {
    const std::string chip = "<node name=\"vrm\">\n      <entry name=\"0\"><element name=\"status\" value=\"";
    const test_board hot = new_changed("mpu_master", chip + "0\"", chip + "0x24\"");
    EXPECT_EQ(calls_print(hot, {"voltage_check_vrm_alert 0xffffffff 0 64", "voltage_check_vrm_alert 0xffffffff 1 64"}),
              "0x0 1 \"output over-voltage, over-temperature\"\n0x0 0 \"\"\n");
    const std::string stage = "<node name=\"power\">\n      <entry name=\"0\"><element name=\"status\" value=\"";
    const test_board dead = new_changed("lpu", stage + "0\"", stage + "0x81\"");
    EXPECT_EQ(calls_print(dead, {"voltage_check_power 0xffffffff 0 64"}), "0x0 1 \"power not good, unknown fault\"\n");
    const test_board drifted =
        new_changed("lpu", "name=\"millivolts\" value=\"11980\"", "name=\"millivolts\" value=\"10700\"");
    EXPECT_EQ(calls_print(drifted, {"voltage_get_alarm 0xffffffff 0 0 64", "voltage_get_history_value 0xffffffff 0"}),
              "0x0 1 \"10700 mV is below 10800 mV\"\n0x0 12040 10700\n");
}

TEST(VoltageDriver, TextsFitTheirAreas) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"voltage_get_node_desc 0xffffffff 0 11", "voltage_get_node_desc 0xffffffff 0 10",
                                  "voltage_get_node_desc 0xffffffff 0 0"}),
              "0x0 \"12V0 input\"\n" + too_small + too_small);
    EXPECT_EQ(calls_print(board, {"voltage_get_alarm 0xffffffff 0 0 8", "voltage_get_alarm 0xffffffff 0 0 0",
                                  "voltage_check_vrm_alert 0xffffffff 0 0", "voltage_check_power 0xffffffff 0 0",
                                  "voltage_check_power 0xffffffff 0 1"}),
              too_small + too_small + too_small + too_small + "0x0 0 \"\"\n");
}

TEST(VoltageDriver, UnknownRailsChipsAndInstances) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"voltage_get_value 0xffffffff 8", "voltage_set_value 0xffffffff 8 1",
                                  "voltage_get_warning_th 0xffffffff 8", "voltage_set_warning_th 0xffffffff 8 1 2",
                                  "voltage_get_alarm_th 0xffffffff 8", "voltage_set_alarm_th 0xffffffff 8 1 2",
                                  "voltage_get_alarm 0xffffffff 8 0 64", "voltage_get_history_value 0xffffffff 8",
                                  "voltage_check_vrm_alert 0xffffffff 2 64", "voltage_check_power 0xffffffff 3 64",
                                  "voltage_get_node_desc 0xffffffff 8 64"}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + no_such_device +
                  no_such_device + no_such_device + no_such_device + no_such_device + no_such_device);
    EXPECT_EQ(calls_print(board, {"voltage_get_value 0xff000006 0", "voltage_init 0xff000006", "voltage_exit 7"}),
              no_such_instance + no_such_instance + no_such_instance);
}

TEST(VoltageDriver, CardsWithoutMonitor) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"voltage_init 0xffffffff", "voltage_exit 0xff000002", "voltage_init 0xff000005",
                                  "voltage_exit 0xff000005"}),
              ok + ok + not_supported + not_supported);
    EXPECT_EQ(calls_print(board, {"voltage_get_value 0xff000005 0", "voltage_get_node_desc 0xff000005 0 64",
                                  "voltage_check_vrm_alert 0xff000002 0 64"}),
              not_supported + not_supported + not_supported);
}

TEST(VoltageDriver, MissingAreas) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(calls_print(
                  board,
                  {"voltage_get_value 0xffffffff 0 null", "voltage_get_warning_th 0xffffffff 0 null",
                   "voltage_get_alarm_th 0xffffffff 0 null", "voltage_get_history_value 0xffffffff 0 null",
                   "voltage_get_alarm 0xffffffff 0 0 null null 64", "voltage_check_vrm_alert 0xffffffff 0 null null 64",
                   "voltage_check_power 0xffffffff 0 null null 64", "voltage_get_node_desc 0xffffffff 0 null 64"}),
              null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
                  null_pointer);
}

} // namespace kestro_tests
