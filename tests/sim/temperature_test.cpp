// Temperature sensors: in balance with load and air, on their way there after a change, judged by their thresholds.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include "sim/core/description.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string processor = "drv_temperature_get_value(temperature_id=1)";
const std::string processor_alarm = "drv_temperature_get_alarm(temperature_id=1)";

std::string temperature_of_card(int slot) {
    return "drv_temperature_get_value(inst_id=" + std::to_string(0xff000000U + static_cast<unsigned>(slot)) +
           ", temperature_id=1)";
}

std::string value(int celsius) {
    return "0x0 value=" + std::to_string(celsius) + "\n";
}

std::string alarm(int status) {
    return "0x0 alarm_status=" + std::to_string(status) + "\n";
}

// Runs of the master on the virtual clock, one after the other on one state.
class Temperature : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual"};
        for (const std::string &set : by_hand) {
            options.insert(options.end(), {"--set", set});
        }
        return answers_of(options, lines);
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

struct sensor_owner {
    const char *board;
    const char *place;
    std::string selector;
};

const sensor_owner owners[] = {
    {"mpu_master", "slot9", ""},
    {"mpu_master", "slot2", "inst_id=0xff000002, "},
    {"mpu_master", "slot3", "inst_id=0xff000003, "},
    {"mpu_slave", "slot10", ""},
    {"lpu", "slot7", ""},
};

} // namespace

TEST(TemperatureDriver, EveryDescribedSensorIsWell) {
    for (const sensor_owner &owner : owners) {
        const test_board board = new_delivered(owner.board);
        const auto chassis = read_board(owner.board);
        int sensors = 0;
        for (const pugi::xml_node entry : chassis->node(owner.place, "temp_mng", "temp_attr").children("entry")) {
            const auto id = kestro_sim::element_number(kestro_sim::named_child(entry, "temperature_id"));
            const std::string sensor = owner.selector + "temperature_id=" + std::to_string(id.value());
            const std::string said = answers(board, {"drv_temperature_get_alarm(" + sensor + ")",
                                                     "drv_temperature_get_node_desc(" + sensor + ", size=64)"});
            EXPECT_TRUE(said.starts_with("0x0 alarm_status=0\n0x0 desc=\"")) << owner.board << sensor << said;
            ++sensors;
        }
        EXPECT_GE(sensors, 2) << owner.place;
    }
}

TEST_F(Temperature, FollowsTheLoadOfWhatHeatsIt) {
    EXPECT_EQ(answers({"drv_temperature_get_value(temperature_id=0)", processor,
                       "drv_temperature_get_value(temperature_id=2)", "drv_temperature_get_value(temperature_id=3)",
                       "drv_temperature_get_value(temperature_id=4)", "drv_temperature_get_board_value()"}),
              value(25) + value(62) + value(55) + value(43) + value(40) + value(62));
    EXPECT_EQ(answers({processor, "drv_temperature_get_board_value()"}, {"slot9/powerdetec/chip/1/milliamps=0"}),
              value(25) + value(55));
    EXPECT_EQ(answers({processor}, {"slot9/powerdetec/chip/1/milliamps=40000"}), value(77));
}

TEST_F(Temperature, CardsWithoutAPowerDetectorAreHeatedByTheirRatedPower) {
    EXPECT_EQ(answers({temperature_of_card(2), temperature_of_card(3)}), value(37) + value(40));
    EXPECT_EQ(answers({temperature_of_card(2)}, {"slot2/board/unit/0/power_watts=30"}), value(55));
}

TEST_F(Temperature, FollowsTheFans) {
    EXPECT_EQ(answers({processor}, {"chassis/fan/tray/15/percent=100", "chassis/fan/tray/16/percent=100"}), value(43));
    EXPECT_EQ(
        answers({processor, processor_alarm}, {"chassis/fan/tray/15/percent=56", "chassis/fan/tray/16/percent=0"}),
        value(90) + alarm(1));
    EXPECT_EQ(answers({processor, processor_alarm}, {"chassis/fan/tray/15/percent=50", "chassis/fan/tray/16/present=0",
                                                     "chassis/fan/tray/16/percent=100"}),
              value(98) + alarm(2));
    EXPECT_EQ(answers({processor, temperature_of_card(3)}, {"chassis/fan/tray/15/present=0"}), value(116) + value(63));
}

TEST_F(Temperature, FollowsTheAirThatIsDrawnIn) {
    EXPECT_EQ(
        answers({"drv_temperature_get_value(temperature_id=0)", processor}, {"chassis/temp/ambient/0/celsius=40"}),
        value(40) + value(77));
    EXPECT_EQ(answers({"drv_temperature_get_value(temperature_id=0)", "drv_temperature_get_alarm(temperature_id=0)"},
                      {"chassis/temp/ambient/0/celsius=-20"}),
              value(-20) + alarm(2));
}

// 28.1 W become 25.2 W: from 61.5 to 57.8 degrees, with a time constant of a minute.
TEST_F(Temperature, CoolsDownByAndByWhenADriverLowersTheVoltage) {
    EXPECT_EQ(answers({processor, "drv_voltage_set_value(voltage_id=2, value=900)", processor, "wait 60", processor}),
              value(62) + ok + value(62) + value(59));
    EXPECT_EQ(answers({processor, "wait 600", processor}), value(59) + value(58));
}

// What is set meanwhile, without changing anything, makes no difference to the way down.
TEST_F(Temperature, StaysOnItsCourse) {
    const std::string lower = "drv_voltage_set_value(voltage_id=2, value=900)";
    EXPECT_EQ(answers({lower, "wait 30", lower, "wait 30", processor, "drv_temperature_get_value(temperature_id=2)"}),
              ok + ok + value(59) + value(55));
}

TEST_F(Temperature, ARefusedVoltageChangesNoCourse) {
    EXPECT_EQ(answers({"drv_voltage_set_value(voltage_id=2, value=899)", processor}), bad_value + value(62));
    EXPECT_EQ(answers_of({"--state", new_scratch_dir() + "/state", "--clock", "virtual", "--list",
                          "slot9/temp/sensor/1/since"},
                         {"drv_voltage_set_value(voltage_id=2, value=899)"}),
              "slot9/temp/sensor/1/since = -1 ns\n" + bad_value);
}

TEST_F(Temperature, ACardWarmsUpWhenItIsSwitchedOn) {
    const std::string off = "drv_board_set_power_off(inst_id=0xff000003, type=9)";
    const std::string on = "drv_board_set_power_on(inst_id=0xff000003, type=9)";
    EXPECT_EQ(
        answers({off, temperature_of_card(3), "drv_temperature_get_alarm(inst_id=0xff000003, temperature_id=1)",
                 temperature_of_card(2), "wait 0.5", on, temperature_of_card(3), "wait 60", temperature_of_card(3)}),
        ok + no_such_device + no_such_device + value(37) + ok + value(25) + value(34));
    EXPECT_EQ(answers({"wait 600", temperature_of_card(3)}), value(40));
}

TEST_F(Temperature, TheTechnicianSaysHowFastAndFromWhere) {
    EXPECT_EQ(answers({processor, "wait 10", processor, "wait 100", processor},
                      {"slot9/temp/sensor/1/start=80000", "slot9/temp/sensor/1/since=0",
                       "slot9/temp/sensor/1/time_constant=10"}),
              value(80) + value(68) + value(62));
    EXPECT_EQ(answers({processor}, {"slot9/temp/sensor/1/time_constant=0", "slot9/temp/sensor/1/since=0"}), value(62));
}

TEST_F(Temperature, AFaultySensorShowsTooMuchAtOnce) {
    EXPECT_EQ(answers({processor, processor_alarm}, {"slot9/temp/sensor/1/offset=30000"}), value(92) + alarm(1));
    EXPECT_EQ(answers({processor}, {"slot9/temp/sensor/1/offset=-100000"}), value(-38));
}

TEST(TemperatureDriver, ThresholdsAreReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_temperature_get_warning_th(temperature_id=1)",
                              "drv_temperature_get_alarm_th(temperature_id=1)"}),
              "0x0 low_th=0 high_th=85\n0x0 low_th=-5 high_th=95\n");
    EXPECT_EQ(answers(board, {"drv_temperature_set_warning_th(temperature_id=1, low_th=-20, high_th=70)",
                              "drv_temperature_set_alarm_th(temperature_id=1, low_th=-128, high_th=255)"}),
              ok + ok);
    EXPECT_EQ(answers(board, {"drv_temperature_get_warning_th(temperature_id=1)",
                              "drv_temperature_get_alarm_th(temperature_id=1)",
                              "drv_temperature_get_warning_th(temperature_id=2)"}),
              "0x0 low_th=-20 high_th=70\n0x0 low_th=-128 high_th=255\n0x0 low_th=0 high_th=90\n");
}

TEST(TemperatureDriver, ThresholdsThatMakeNoSenseAreRefused) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_temperature_set_warning_th(temperature_id=1, low_th=71, high_th=70)",
                              "drv_temperature_set_alarm_th(temperature_id=1, low_th=-5, high_th=256)",
                              "drv_temperature_set_alarm_th(temperature_id=1, low_th=-129, high_th=95)",
                              "drv_temperature_set_warning_th(temperature_id=1, low_th=5, high_th=5)",
                              "drv_temperature_get_warning_th(temperature_id=1)",
                              "drv_temperature_get_alarm_th(temperature_id=1)"}),
              bad_value + bad_value + bad_value + ok + "0x0 low_th=5 high_th=5\n0x0 low_th=-5 high_th=95\n");
}

// The inlet stands at 25 degrees: a threshold that is met is not passed.
TEST(TemperatureDriver, AlarmFollowsTheThresholds) {
    const test_board board = new_delivered("mpu_master");
    const std::string asked = "drv_temperature_get_alarm(temperature_id=0)";
    const std::string warn = "drv_temperature_set_warning_th(temperature_id=0, ";
    const std::string alert = "drv_temperature_set_alarm_th(temperature_id=0, ";
    EXPECT_EQ(answers(board, {warn + "low_th=25, high_th=25)", asked, warn + "low_th=26, high_th=40)", asked,
                              warn + "low_th=0, high_th=24)", asked, alert + "low_th=25, high_th=25)", asked,
                              alert + "low_th=26, high_th=40)", asked, alert + "low_th=0, high_th=24)", asked}),
              ok + alarm(0) + ok + alarm(1) + ok + alarm(1) + ok + alarm(1) + ok + alarm(2) + ok + alarm(2));
}

TEST(TemperatureDriver, SensorsHaveNames) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {"drv_temperature_get_node_desc(temperature_id=1, size=64)",
                              "drv_temperature_get_node_desc(temperature_id=1, size=17)",
                              "drv_temperature_get_node_desc(temperature_id=1, size=16)",
                              "drv_temperature_get_node_desc(temperature_id=1, size=0)"}),
              "0x0 desc=\"packet processor\"\n0x0 desc=\"packet processor\"\n" + too_small + too_small);
}

TEST(TemperatureDriver, UnknownSensorsAndInstances) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_temperature_get_value(temperature_id=5)",
                              "drv_temperature_get_warning_th(temperature_id=5)",
                              "drv_temperature_set_warning_th(temperature_id=5, low_th=1, high_th=2)",
                              "drv_temperature_get_alarm_th(temperature_id=5)",
                              "drv_temperature_set_alarm_th(temperature_id=5, low_th=1, high_th=2)",
                              "drv_temperature_get_alarm(temperature_id=5)",
                              "drv_temperature_get_node_desc(temperature_id=5, size=64)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + no_such_device +
                  no_such_device);
    EXPECT_EQ(answers(board, {"drv_temperature_init()", "drv_temperature_exit(inst_id=0xff000002)",
                              "drv_temperature_init(inst_id=0xff000005)", "drv_temperature_exit(inst_id=0xff000005)",
                              "drv_temperature_get_value(inst_id=0xff000005, temperature_id=0)",
                              "drv_temperature_init(inst_id=0xff000006)", "drv_temperature_exit(inst_id=7)"}),
              ok + ok + not_supported + not_supported + not_supported + no_such_instance + no_such_instance);
}

TEST(TemperatureDriver, MissingAreas) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {"drv_temperature_get_value(temperature_id=0, value=null)",
                              "drv_temperature_get_board_value(value=null)",
                              "drv_temperature_get_warning_th(temperature_id=0, low_th=null)",
                              "drv_temperature_get_alarm_th(temperature_id=0, high_th=null)",
                              "drv_temperature_get_alarm(temperature_id=0, alarm_status=null)",
                              "drv_temperature_get_node_desc(temperature_id=0, size=64, desc=null)"}),
              null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer);
}

// The whole board of 95 W stands in for a detector that is not there.
TEST(TemperatureDriver, ASensorWithoutItsPowerDetector) {
    for (const char *chip : {"", "7"}) {
        const test_board board = new_altered("mpu_master", {{"self/sim_temp/sensor/1/monitor", chip}});
        EXPECT_EQ(answers(board, {processor}), value(149)) << chip;
    }
}

TEST(TemperatureDriver, ABoardWithoutSensors) {
    const std::string file = new_scratch_dir() + "/bare.xml";
    write_file(file, "<board name=\"bare\" like=\"mpu\" slot=\"9\"><module name=\"sim_temp\" remove=\"yes\"/></board>");
    const test_board board = new_board(file);
    EXPECT_EQ(answers(board, {"drv_temperature_get_board_value()", "drv_temperature_init()", processor,
                              "drv_voltage_set_value(voltage_id=2, value=900)"}),
              not_supported + not_supported + not_supported + ok);
}

} // namespace kestro_tests
