// Power detector chips: voltage, current and power agree with each other and with the rail, measured or held.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

std::string power(int chip) {
    return "drv_powerdetec_get_power(chip_id=" + std::to_string(chip) + ")";
}

std::string shunt(int chip) {
    return "drv_powerdetec_get_shuntvoltage(chip_id=" + std::to_string(chip) + ")";
}

std::string bus(int chip) {
    return "drv_powerdetec_get_busvoltage(chip_id=" + std::to_string(chip) + ")";
}

// Milliwatts, microvolts across the shunt, millivolts; large numbers are shown in hexadecimal.
std::string shown(const std::string &power, const std::string &shunt, const std::string &bus) {
    return "0x0 power=" + power + "\n0x0 voltage=" + shunt + "\n0x0 voltage=" + bus + "\n";
}

const std::string lower_the_core = "drv_voltage_set_value(voltage_id=2, value=900)";
const std::string stop = "drv_powerdetec_exit_chip(chip_id=1)";
const std::string start = "drv_powerdetec_init_chip(chip_id=1)";

} // namespace

// 12.04 V and 6.4 A through 2 milliohms; 1.004 V and 28 A, 0.903 V and 24 A through a quarter of one.
TEST(PowerDetector, PowerIsVoltageTimesCurrent) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {power(0), shunt(0), bus(0), power(1), shunt(1), bus(1), power(2), shunt(2), bus(2)}),
              shown("0x12d00", "12800", "12040") + shown("28112", "7000", "1004") + shown("21672", "6000", "903"));
    const test_board card = new_delivered("lpu");
    EXPECT_EQ(answers(card, {power(0), shunt(0), bus(0), power(1), shunt(1), bus(1)}),
              shown("0x2bdf4", "15000", "11980") + shown("54240", "6000", "904"));
}

TEST(PowerDetector, FollowsVoltageAndCurrent) {
    const std::vector<std::string> options{"--state", new_scratch_dir() + "/state", "--clock", "virtual"};
    EXPECT_EQ(answers_of(options, {lower_the_core, power(1), shunt(1), bus(1), power(2), shunt(2), bus(2)}),
              ok + shown("25200", "7000", "900") + shown("21672", "6000", "903"));
    std::vector<std::string> by_hand = options;
    by_hand.insert(by_hand.end(), {"--set", "slot9/powerdetec/chip/1/milliamps=10001"});
    EXPECT_EQ(answers_of(by_hand, {power(1), shunt(1), bus(1)}), shown("9000", "2500", "900"));
}

// 200 A at 60 V: more than 32 bits of nanowatts and microvolts on the way.
TEST(PowerDetector, TheMostThereCanBe) {
    const test_board board = new_altered("mpu_master", {{"self/sim_voltage/rail/0/millivolts", "60000"},
                                                        {"self/sim_powerdetec/chip/0/milliamps", "200000"},
                                                        {"self/sim_powerdetec/chip/0/shunt", "1000000"}});
    EXPECT_EQ(answers(board, {power(0), shunt(0), bus(0)}), shown("0xb71b00", "0xbebc200", "60000"));
}

TEST(PowerDetector, AChipThatWasLeftHoldsWhatItMeasuredLast) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {stop, lower_the_core, power(1), shunt(1), bus(1)}),
              ok + ok + shown("28112", "7000", "1004"));
    EXPECT_EQ(answers(board, {stop, power(1), shunt(1), bus(1), start, power(1), shunt(1), bus(1)}),
              ok + shown("28112", "7000", "1004") + ok + shown("25200", "7000", "900"));
    EXPECT_EQ(answers(board, {start, bus(1), stop, bus(1)}), ok + "0x0 voltage=900\n" + ok + "0x0 voltage=900\n");
}

TEST(PowerDetector, ChipTypes) {
    const test_board board = new_altered("mpu_master", {{"self/sim_powerdetec/chip/2/type", "3"}});
    EXPECT_EQ(answers(board, {"drv_powerdetec_get_chiptype(chip_id=0)", "drv_powerdetec_get_chiptype(chip_id=2)"}),
              "0x0 chiptype=1\n0x0 chiptype=3\n");
}

TEST(PowerDetector, TheBusReadsTheSame) {
    const std::vector<std::string> options{"--state", new_scratch_dir() + "/state", "--clock", "virtual"};
    std::vector<std::string> by_hand = options;
    for (const char *address : {"0", "1", "2", "3", "4"}) {
        by_hand.insert(by_hand.end(), {"--get", std::string("slot9/wattmeter/1/0x0") + address});
    }
    EXPECT_EQ(launcher_prints(by_hand), "0x0001\n0x02bc\n0x03ec\n0x0afb\n0x0af0\n");
    EXPECT_EQ(answers_of(options, {stop, lower_the_core}), ok + ok);
    EXPECT_EQ(launcher_prints(by_hand), "0x0000\n0x02bc\n0x03ec\n0x0afb\n0x0af0\n");
}

TEST(PowerDetector, UnknownChipsAndInstances) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {power(3), shunt(3), bus(3), "drv_powerdetec_get_chiptype(chip_id=3)",
                              "drv_powerdetec_init_chip(chip_id=3)", "drv_powerdetec_exit_chip(chip_id=3)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + no_such_device);
    EXPECT_EQ(answers(board, {"drv_powerdetec_get_power(inst_id=0xff000002, chip_id=0)",
                              "drv_powerdetec_init_chip(inst_id=0xff000005, chip_id=0)",
                              "drv_powerdetec_exit_chip(inst_id=0xff000006, chip_id=0)"}),
              not_supported + not_supported + no_such_instance);
}

TEST(PowerDetector, MissingAreas) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_powerdetec_get_power(chip_id=0, power=null)",
                              "drv_powerdetec_get_shuntvoltage(chip_id=0, voltage=null)",
                              "drv_powerdetec_get_busvoltage(chip_id=0, voltage=null)",
                              "drv_powerdetec_get_chiptype(chip_id=0, chiptype=null)"}),
              null_pointer + null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
