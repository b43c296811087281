// Detector chips: whoever measures a sensor or a rail sees the same, drivers and the chips' own registers alike.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

std::string temperature(int chip, int channel) {
    return "drv_tempdetec_get_temperature(chip_id=" + std::to_string(chip) + ", channel=" + std::to_string(channel) +
           ")";
}

std::string voltage(int chip, int channel) {
    return "drv_voltdetec_get_voltage(chip_id=" + std::to_string(chip) + ", channel=" + std::to_string(channel) + ")";
}

std::string in_degrees(int celsius) {
    return "0x0 temperature=" + std::to_string(celsius) + "\n";
}

std::string in_millivolts(int millivolts) {
    return "0x0 voltage=" + std::to_string(millivolts) + "\n";
}

// What the technician reads at registers of a new master, after these calls.
std::string read_by_hand(const std::vector<std::string> &paths, const std::vector<std::string> &calls = {}) {
    std::vector<std::string> options{"--state", new_scratch_dir() + "/state", "--clock", "virtual"};
    if (!calls.empty()) {
        answers_of(options, calls);
    }
    for (const std::string &path : paths) {
        options.insert(options.end(), {"--get", "slot9/" + path});
    }
    return launcher_prints(options);
}

} // namespace

TEST(TemperatureDetector, ChannelsShowTheSensors) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {temperature(0, 0), temperature(0, 1), temperature(0, 2), temperature(1, 0), temperature(1, 1)}),
        in_degrees(25) + in_degrees(62) + in_degrees(55) + in_degrees(43) + in_degrees(40));
    const test_board card = new_delivered("lpu");
    EXPECT_EQ(answers(card, {temperature(0, 0), temperature(0, 1), temperature(0, 2)}),
              in_degrees(25) + in_degrees(63) + in_degrees(47));
}

TEST(TemperatureDetector, ChannelsFollowTheirSensors) {
    const test_board board = new_altered("mpu_master", {{"self/sim_temp/sensor/1/offset", "-100000"}});
    EXPECT_EQ(answers(board, {temperature(0, 1), "drv_temperature_get_value(temperature_id=1)", temperature(0, 2)}),
              in_degrees(-38) + "0x0 value=-38\n" + in_degrees(55));
}

TEST(TemperatureDetector, OpenChannelsAndUnknownChips) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {temperature(0, 3), temperature(0, 4), temperature(0, -1), temperature(1, 2),
                              temperature(2, 0), "drv_tempdetec_get_temperature(chip_id=0, temperature=null)",
                              "drv_tempdetec_get_temperature(inst_id=0xff000002, chip_id=0)",
                              "drv_tempdetec_get_temperature(inst_id=0xff000006, chip_id=0)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + null_pointer +
                  not_supported + no_such_instance);
}

// 25 and 61.546 degrees in sixteenths, the alarm thresholds 55 and 95; channel 3 is open.
// 25 and 61.546 degrees in sixteenths, an open channel; the alarm thresholds 55 and 95, and an open channel; no alarm.
TEST(TemperatureDetector, TheBusReadsSixteenthsOfADegree) {
    const std::vector<std::string> registers{"thermometer/0/0x00", "thermometer/0/0x01", "thermometer/0/0x03",
                                             "thermometer/0/0x08", "thermometer/0/0x09", "thermometer/0/0x0b",
                                             "thermometer/0/0x10"};
    EXPECT_EQ(read_by_hand(registers), "0x0190\n0x03d8\n0xffff\n0x0370\n0x05f0\n0xffff\n0x0000\n");
    EXPECT_EQ(read_by_hand(registers, {"drv_temperature_set_alarm_th(temperature_id=0, low_th=-30, high_th=-20)",
                                       "drv_temperature_set_alarm_th(temperature_id=2, low_th=0, high_th=50)"}),
              "0x0190\n0x03d8\n0xffff\n0xfec0\n0x05f0\n0xffff\n0x0005\n");
}

TEST(VoltageDetector, ChannelsShowTheRails) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {voltage(0, 0), voltage(0, 1), voltage(0, 2), voltage(0, 3), voltage(1, 0), voltage(1, 1),
                              voltage(1, 2), voltage(1, 3)}),
              in_millivolts(12040) + in_millivolts(3300) + in_millivolts(1004) + in_millivolts(903) +
                  in_millivolts(1200) + in_millivolts(1801) + in_millivolts(2502) + in_millivolts(5010));
    const test_board card = new_delivered("lpu");
    EXPECT_EQ(answers(card, {voltage(0, 0), voltage(0, 1), voltage(0, 2), voltage(0, 3), voltage(1, 0)}),
              in_millivolts(11980) + in_millivolts(904) + in_millivolts(1201) + in_millivolts(1799) +
                  in_millivolts(3302));
}

TEST(VoltageDetector, TheBusReadsMillivolts) {
    EXPECT_EQ(read_by_hand({"voltmeter/0/0x00", "voltmeter/0/0x02", "voltmeter/1/0x03"}), "0x2f08\n0x03ec\n0x1392\n");
    EXPECT_EQ(read_by_hand({"voltmeter/0/0x02"}, {"drv_voltage_set_value(voltage_id=2, value=900)"}), "0x0384\n");
}

TEST(VoltageDetector, OpenChannelsAndUnknownChips) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {voltage(0, 4), voltage(0, -1), voltage(1, 1), voltage(2, 0),
                              "drv_voltdetec_get_voltage(chip_id=0, voltage=null)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + null_pointer);
    const test_board master = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(master, {"drv_voltdetec_init()", "drv_voltdetec_exit()", "drv_voltdetec_init(inst_id=0xff000002)",
                         "drv_voltdetec_exit(inst_id=0xff000002)", "drv_voltdetec_init(inst_id=0xff000006)",
                         "drv_voltdetec_exit(inst_id=7)", "drv_voltdetec_get_voltage(inst_id=0xff000002, chip_id=0)"}),
        ok + ok + not_supported + not_supported + no_such_instance + no_such_instance + not_supported);
}

TEST(VoltageDetector, AllWhoMeasureARailAgree) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_voltage_set_value(voltage_id=2, value=950)"}), ok);
    EXPECT_EQ(answers(board, {"drv_voltage_get_value(voltage_id=2)", voltage(0, 2),
                              "drv_powerdetec_get_busvoltage(chip_id=1)", "drv_avs_get_item_value(chip_id=0, item=1)"}),
              "0x0 value=950\n" + in_millivolts(950) + in_millivolts(950) + "0x0 value=950\n");
}

} // namespace kestro_tests
