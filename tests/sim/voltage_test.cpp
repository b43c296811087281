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
    {"mpu_master", "self", ""},
    {"mpu_master", "slot2", "inst_id=0xff000002, "},
    {"mpu_master", "slot3", "inst_id=0xff000003, "},
    {"mpu_slave", "self", ""},
    {"mpu_slave", "slot2", "inst_id=0xff000002, "},
    {"mpu_slave", "slot3", "inst_id=0xff000003, "},
    {"lpu", "self", ""},
};

} // namespace

TEST(VoltageDriver, EveryDescribedRailIsWithinItsLimits) {
    for (const rail_owner &owner : owners) {
        const test_board board = new_delivered(owner.board);
        const std::vector<uint64_t> ids = described(owner.board, owner.instance, "check_attr", "voltage_id");
        EXPECT_FALSE(ids.empty());
        for (const uint64_t id : ids) {
            const std::string rail = owner.selector + "voltage_id=" + std::to_string(id);
            const std::string said = answers(board, {"drv_voltage_get_alarm(" + rail + ", alarm_type=0)",
                                                     "drv_voltage_get_alarm(" + rail + ", alarm_type=1)",
                                                     "drv_voltage_get_node_desc(" + rail + ")"});
            EXPECT_TRUE(said.starts_with("0x0 alarm_status=0 buffer=\"")) << owner.board << rail << said;
            EXPECT_NE(said.find("\n0x0 alarm_status=0 buffer=\""), std::string::npos) << owner.board << rail << said;
            EXPECT_NE(said.find("\n0x0 desc=\""), std::string::npos) << owner.board << rail << said;
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
            const std::string rail = "voltage_id=" + std::to_string(ids[i]);
            const std::string middle = std::to_string((low[i] + high[i]) / 2);
            EXPECT_EQ(answers(board, {"drv_voltage_set_value(" + rail + ", value=" + middle + ")",
                                      "drv_voltage_get_value(" + rail + ")"}),
                      "0x0\n0x0 value=" + middle + "\n");
        }
    }
}

TEST(VoltageDriver, RegulatorsAndPowerStagesAreClean) {
    for (const rail_owner &owner : owners) {
        const test_board board = new_delivered(owner.board);
        for (const uint64_t id : described(owner.board, owner.instance, "vrm_alert_result", "vrm_chip_id")) {
            EXPECT_EQ(answers(board, {"drv_voltage_check_vrm_alert(" + owner.selector +
                                      "chip_id=" + std::to_string(id) + ")"}),
                      "0x0 result=0 buffer=\"\"\n");
        }
        for (const uint64_t id : described(owner.board, owner.instance, "power_check", "power_id")) {
            EXPECT_EQ(
                answers(board, {"drv_voltage_check_power(" + owner.selector + "power_id=" + std::to_string(id) + ")"}),
                "0x0 result=0 buffer=\"\"\n");
        }
    }
}

TEST(VoltageDriver, ValueAndHistoryAreReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_voltage_get_value(voltage_id=2)", "drv_voltage_get_history_value(voltage_id=2)"}),
              "0x0 value=1004\n0x0 max_value=1010 min_value=998\n");
    EXPECT_EQ(answers(board, {"drv_voltage_set_value(inst_id=0xff000009, voltage_id=2, value=1100)",
                              "drv_voltage_set_value(voltage_id=2, value=900)",
                              "drv_voltage_set_value(voltage_id=2, value=1000)"}),
              ok + ok + ok);
    EXPECT_EQ(answers(board, {"drv_voltage_get_value(voltage_id=2)", "drv_voltage_get_history_value(voltage_id=2)",
                              "drv_voltage_get_value(voltage_id=3)"}),
              "0x0 value=1000\n0x0 max_value=1100 min_value=900\n0x0 value=903\n");
}

TEST(VoltageDriver, ValueOutsideTheRangeIsRefusedAndChangesNothing) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_voltage_set_value(voltage_id=2, value=1101)",
                              "drv_voltage_set_value(voltage_id=2, value=899)", "drv_voltage_get_value(voltage_id=2)",
                              "drv_voltage_get_history_value(voltage_id=2)"}),
              bad_value + bad_value + "0x0 value=1004\n0x0 max_value=1010 min_value=998\n");
    EXPECT_EQ(answers(board, {"drv_voltage_set_value(voltage_id=1, value=3300)"}), not_supported);
}

TEST(VoltageDriver, ARailThatIsStuckTakesASettingAndStays) {
    const test_board board = new_altered("mpu_master", {{"self/sim_voltage/rail/2/stuck", "1"}});
    EXPECT_EQ(answers(board, {"drv_voltage_set_value(voltage_id=2, value=1000)", "drv_voltage_get_value(voltage_id=2)",
                              "drv_voltage_set_value(voltage_id=2, value=1101)",
                              "drv_voltage_set_value(voltage_id=3, value=900)", "drv_voltage_get_value(voltage_id=3)",
                              "drv_voltage_get_history_value(voltage_id=2)"}),
              ok + "0x0 value=1004\n" + bad_value + ok + "0x0 value=900\n0x0 max_value=1010 min_value=998\n");
}

TEST(VoltageDriver, PowerStagesAreDumped) {
    const test_board board = new_altered("mpu_master", {{"self/sim_voltage/power/1/status", "0x83"}});
    EXPECT_EQ(answers(board, {"drv_voltage_dump_power(len=1200)", "drv_voltage_dump_power(inst_id=0xff000002, len=64)",
                              "drv_voltage_dump_power(inst_id=0xff000005, len=64)",
                              "drv_voltage_dump_power(inst_id=0xff000006, len=64)",
                              "drv_voltage_dump_power(len=64, buffer=null)"}),
              "0x0 buffer=\"power 0: status 0x00, good\\r\\n"
              "power 1: status 0x83, power not good, output short, unknown fault\\r\\n"
              "power 2: status 0x00, good\\r\\n\"\n"
              "0x0 buffer=\"power 0: status 0x00, good\\r\\n\"\n" +
                  not_supported + no_such_instance + null_pointer);
}

TEST(VoltageDriver, ADumpOfStagesIsWholeOrRefused) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {"drv_voltage_dump_power(len=29)", "drv_voltage_dump_power(len=28)",
                              "drv_voltage_dump_power(len=0)"}),
              "0x0 buffer=\"power 0: status 0x00, good\\r\\n\"\n" + too_small + too_small);
}

TEST(VoltageDriver, ThresholdsAreReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_voltage_get_warning_th(voltage_id=1)", "drv_voltage_get_alarm_th(voltage_id=1)"}),
              "0x0 low_th=3135 high_th=3465\n0x0 low_th=2970 high_th=3630\n");
    EXPECT_EQ(answers(board, {"drv_voltage_set_warning_th(voltage_id=1, low_th=3200, high_th=3400)",
                              "drv_voltage_set_alarm_th(voltage_id=1, low_th=3000, high_th=3600)"}),
              ok + ok);
    EXPECT_EQ(answers(board, {"drv_voltage_get_warning_th(voltage_id=1)", "drv_voltage_get_alarm_th(voltage_id=1)",
                              "drv_voltage_set_warning_th(voltage_id=1, low_th=3401, high_th=3400)",
                              "drv_voltage_set_alarm_th(voltage_id=1, low_th=2, high_th=1)",
                              "drv_voltage_get_warning_th(voltage_id=1)", "drv_voltage_get_alarm_th(voltage_id=1)"}),
              "0x0 low_th=3200 high_th=3400\n0x0 low_th=3000 high_th=3600\n" + bad_value + bad_value +
                  "0x0 low_th=3200 high_th=3400\n0x0 low_th=3000 high_th=3600\n");
}

TEST(VoltageDriver, AlarmFollowsValueAndThresholds) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_voltage_set_value(voltage_id=2, value=900)",
                              "drv_voltage_get_alarm(voltage_id=2, alarm_type=1, len=64)",
                              "drv_voltage_get_alarm(voltage_id=2, alarm_type=0, len=64)",
                              "drv_voltage_set_value(voltage_id=2, value=1071)",
                              "drv_voltage_get_alarm(voltage_id=2, alarm_type=1, len=64)",
                              "drv_voltage_set_alarm_th(voltage_id=2, low_th=880, high_th=1070)",
                              "drv_voltage_get_alarm(voltage_id=2, alarm_type=0, len=64)",
                              "drv_voltage_set_value(voltage_id=2, value=1070)",
                              "drv_voltage_get_alarm(voltage_id=2, alarm_type=0, len=64)"}),
              "0x0\n0x0 alarm_status=1 buffer=\"900 mV is below 930 mV\"\n0x0 alarm_status=0 buffer=\"900 mV is within "
              "880 mV to 1120 mV\"\n0x0\n0x0 alarm_status=2 buffer=\"1071 mV is above 1070 mV\"\n0x0\n0x0 "
              "alarm_status=2 buffer=\"1071 mV is above 1070 mV\"\n0x0\n0x0 alarm_status=0 buffer=\"1070 mV is within "
              "880 mV to 1070 mV\"\n");
    EXPECT_EQ(answers(board, {"drv_voltage_get_alarm(voltage_id=2, alarm_type=2, len=64)"}), bad_value);
}

TEST(VoltageDriver, SickBoardTellsItsFaults) {
    const std::string chip = "<node name=\"vrm\">\n      <entry name=\"0\"><element name=\"status\" value=\"";
    const test_board hot = new_changed("mpu_master", chip + "0\"", chip + "0x24\"");
    EXPECT_EQ(answers(hot, {"drv_voltage_check_vrm_alert(chip_id=0, len=64)",
                            "drv_voltage_check_vrm_alert(chip_id=1, len=64)"}),
              "0x0 result=1 buffer=\"output over-voltage, over-temperature\"\n0x0 result=0 buffer=\"\"\n");
    const std::string stage = "<node name=\"power\">\n      <entry name=\"0\"><element name=\"status\" value=\"";
    const test_board dead = new_changed("lpu", stage + "0\"", stage + "0x81\"");
    EXPECT_EQ(answers(dead, {"drv_voltage_check_power(power_id=0, len=64)"}),
              "0x0 result=1 buffer=\"power not good, unknown fault\"\n");
    const test_board drifted =
        new_changed("lpu", "name=\"millivolts\" value=\"11980\"", "name=\"millivolts\" value=\"10700\"");
    EXPECT_EQ(answers(drifted, {"drv_voltage_get_alarm(voltage_id=0, alarm_type=0, len=64)",
                                "drv_voltage_get_history_value(voltage_id=0)"}),
              "0x0 alarm_status=1 buffer=\"10700 mV is below 10800 mV\"\n0x0 max_value=12040 min_value=10700\n");
}

TEST(VoltageDriver, TextsFitTheirAreas) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_voltage_get_node_desc(voltage_id=0, size=11)",
                              "drv_voltage_get_node_desc(voltage_id=0, size=10)",
                              "drv_voltage_get_node_desc(voltage_id=0, size=0)"}),
              "0x0 desc=\"12V0 input\"\n" + too_small + too_small);
    EXPECT_EQ(
        answers(board, {"drv_voltage_get_alarm(voltage_id=0, alarm_type=0, len=8)",
                        "drv_voltage_get_alarm(voltage_id=0, alarm_type=0, len=0)",
                        "drv_voltage_check_vrm_alert(chip_id=0, len=0)", "drv_voltage_check_power(power_id=0, len=0)",
                        "drv_voltage_check_power(power_id=0, len=1)"}),
        too_small + too_small + too_small + too_small + "0x0 result=0 buffer=\"\"\n");
}

TEST(VoltageDriver, UnknownRailsChipsAndInstances) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board,
                {"drv_voltage_get_value(voltage_id=8)", "drv_voltage_set_value(voltage_id=8, value=1)",
                 "drv_voltage_get_warning_th(voltage_id=8)",
                 "drv_voltage_set_warning_th(voltage_id=8, low_th=1, high_th=2)",
                 "drv_voltage_get_alarm_th(voltage_id=8)",
                 "drv_voltage_set_alarm_th(voltage_id=8, low_th=1, high_th=2)",
                 "drv_voltage_get_alarm(voltage_id=8, alarm_type=0, len=64)",
                 "drv_voltage_get_history_value(voltage_id=8)", "drv_voltage_check_vrm_alert(chip_id=2, len=64)",
                 "drv_voltage_check_power(power_id=3, len=64)", "drv_voltage_get_node_desc(voltage_id=8, size=64)"}),
        no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + no_such_device +
            no_such_device + no_such_device + no_such_device + no_such_device + no_such_device);
    EXPECT_EQ(answers(board, {"drv_voltage_get_value(inst_id=0xff000006, voltage_id=0)",
                              "drv_voltage_init(inst_id=0xff000006)", "drv_voltage_exit(inst_id=7)"}),
              no_such_instance + no_such_instance + no_such_instance);
}

TEST(VoltageDriver, CardsWithoutMonitor) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_voltage_init()", "drv_voltage_exit(inst_id=0xff000002)",
                              "drv_voltage_init(inst_id=0xff000005)", "drv_voltage_exit(inst_id=0xff000005)"}),
              ok + ok + not_supported + not_supported);
    EXPECT_EQ(answers(board, {"drv_voltage_get_value(inst_id=0xff000005, voltage_id=0)",
                              "drv_voltage_get_node_desc(inst_id=0xff000005, voltage_id=0, size=64)",
                              "drv_voltage_check_vrm_alert(inst_id=0xff000002, chip_id=0, len=64)"}),
              not_supported + not_supported + not_supported);
}

TEST(VoltageDriver, MissingAreas) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(
        answers(board, {"drv_voltage_get_value(voltage_id=0, value=null)",
                        "drv_voltage_get_warning_th(voltage_id=0, low_th=null)",
                        "drv_voltage_get_alarm_th(voltage_id=0, low_th=null)",
                        "drv_voltage_get_history_value(voltage_id=0, max_value=null)",
                        "drv_voltage_get_alarm(voltage_id=0, alarm_type=0, len=64, alarm_status=null, buffer=null)",
                        "drv_voltage_check_vrm_alert(chip_id=0, len=64, result=null, buffer=null)",
                        "drv_voltage_check_power(power_id=0, len=64, result=null, buffer=null)",
                        "drv_voltage_get_node_desc(voltage_id=0, size=64, desc=null)"}),
        null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
            null_pointer);
}

} // namespace kestro_tests
