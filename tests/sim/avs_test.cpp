// The scaling controllers: the dump, a line each; what their status tells; items as number and as text.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string first_line = "avs 0: rail 2, target 1000 mV, measured 1004 mV, status 0x00\\r\\n";
const std::string second_line = "avs 1: rail 3, target 900 mV, measured 903 mV, status 0x00\\r\\n";

} // namespace

TEST(AvsDriver, DumpsEveryController) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_avs_dump_dfx_info(len=1200)"}), "0x0 buffer=\"" + first_line + second_line + "\"\n");
}

TEST(AvsDriver, MeasuresWhatTheRailWasSetTo) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {"drv_voltage_set_value(voltage_id=1, value=890)"}), ok);
    EXPECT_EQ(answers(board, {"drv_avs_dump_dfx_info(len=1200)"}),
              "0x0 buffer=\"avs 0: rail 1, target 900 mV, measured 890 mV, status 0x00\\r\\n\"\n");
}

TEST(AvsDriver, DumpIsWholeOrRefused) {
    const test_board board = new_delivered("mpu_master");
    // Line ends are two bytes each, and show as four characters.
    const size_t length = first_line.size() - 2 + second_line.size() - 2;
    EXPECT_EQ(answers(board, {"drv_avs_dump_dfx_info(len=" + std::to_string(length + 1) + ")",
                              "drv_avs_dump_dfx_info(len=" + std::to_string(length) + ")",
                              "drv_avs_dump_dfx_info(len=0)", "drv_avs_dump_dfx_info(buffer=null, len=64)"}),
              "0x0 buffer=\"" + first_line + second_line + "\"\n" + too_small + too_small + null_pointer);
}

TEST(AvsDriver, CardsWithoutControllers) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_avs_dump_dfx_info(inst_id=0xff000002)", "drv_avs_dump_dfx_info(inst_id=0xff000006)",
                              "drv_avs_dump_dfx_info(inst_id=7)"}),
              not_supported + no_such_instance + no_such_instance);
}

TEST(AvsDriver, HealthyControllersHaveNoFault) {
    const test_board board = new_delivered("mpu_master");
    for (const char *chip : {"chip_id=0", "chip_id=1"}) {
        const std::string asked = std::string("(") + chip + ", len=64)";
        EXPECT_EQ(answers(board, {"drv_avs_check_phase_fault" + asked, "drv_avs_check_chip" + asked,
                                  "drv_avs_check_word_fault" + asked}),
                  "0x0 result=0 buffer=\"\"\n0x0 result=0 buffer=\"\"\n0x0 result=0 buffer=\"\"\n");
    }
}

TEST(AvsDriver, SickControllersTellTheirFaults) {
    const test_board board = new_altered("mpu_master", {{"self/sim_avs/controller/0/status", "0x22"},
                                                        {"self/sim_avs/controller/0/status_high", "0x48"},
                                                        {"self/sim_avs/controller/0/phase_fault", "0x81"}});
    EXPECT_EQ(
        answers(board, {"drv_avs_check_phase_fault(chip_id=0, len=64)", "drv_avs_check_chip(chip_id=0, len=64)",
                        "drv_avs_check_word_fault(chip_id=0, len=64)", "drv_avs_get_item_value(chip_id=0, item=3)",
                        "drv_avs_get_item_value(chip_id=0, item=4)", "drv_avs_check_chip(chip_id=1, len=64)"}),
        "0x0 result=1 buffer=\"phase 0, phase 7\"\n"
        "0x0 result=1 buffer=\"output over-voltage, communication fault\"\n"
        "0x0 result=1 buffer=\"output current or power, power not good\"\n"
        "0x0 value=34\n0x0 value=18466\n0x0 result=0 buffer=\"\"\n");
}

TEST(AvsDriver, FaultsOfTheRailsComeIntoTheStatusWord) {
    const test_board board = new_altered("mpu_master", {{"self/sim_voltage/rail/0/millivolts", "10799"}});
    EXPECT_EQ(
        answers(board, {"drv_avs_check_word_fault(chip_id=1, len=64)",
                        "drv_voltage_set_alarm_th(voltage_id=3, low_th=904, high_th=990)",
                        "drv_avs_check_word_fault(chip_id=1, len=64)", "drv_avs_get_item_value(chip_id=1, item=4)",
                        "drv_avs_check_word_fault(chip_id=0, len=64)", "drv_avs_check_chip(chip_id=1, len=64)"}),
        "0x0 result=1 buffer=\"input\"\n" + ok +
            "0x0 result=1 buffer=\"output voltage, input\"\n0x0 value=40960\n"
            "0x0 result=1 buffer=\"input\"\n0x0 result=0 buffer=\"\"\n");
}

// A rail without limits is not judged.
TEST(AvsDriver, ARailWithoutLimitsIsNoFault) {
    const test_board board = new_altered(
        "mpu_master", {{"self/sim_voltage/rail/2/alarm_low", ""}, {"self/sim_voltage/rail/2/millivolts", "1"}});
    EXPECT_EQ(answers(board, {"drv_avs_check_word_fault(chip_id=0, len=64)"}), "0x0 result=0 buffer=\"\"\n");
}

TEST(AvsDriver, ItemsAreThoseOfTheRails) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {"drv_avs_get_item_value(chip_id=0, item=0)", "drv_avs_get_item_value(chip_id=0, item=1)",
                        "drv_avs_get_item_value(chip_id=0, item=2)", "drv_avs_get_item_value(chip_id=1, item=1)",
                        "drv_voltage_set_value(voltage_id=3, value=880)", "drv_avs_get_item_value(chip_id=1, item=1)"}),
        "0x0 value=12040\n0x0 value=1004\n0x0 value=1000\n0x0 value=903\n" + ok + "0x0 value=880\n");
    EXPECT_EQ(answers(board, {"drv_avs_get_item_string(chip_id=1, item=0, len=64)",
                              "drv_avs_get_item_string(chip_id=1, item=1, len=64)",
                              "drv_avs_get_item_string(chip_id=1, item=2, len=64)",
                              "drv_avs_get_item_string(chip_id=1, item=3, len=64)",
                              "drv_avs_get_item_string(chip_id=1, item=4, len=64)"}),
              "0x0 buffer=\"input voltage 12040 mV\"\n0x0 buffer=\"output voltage 880 mV\"\n"
              "0x0 buffer=\"target voltage 900 mV\"\n0x0 buffer=\"status byte 0x00\"\n"
              "0x0 buffer=\"status word 0x0000\"\n");
}

TEST(AvsDriver, TheBusReadsTheSame) {
    const std::string controller = "slot9/pmbus/0/";
    EXPECT_EQ(launcher_prints({"--state", new_scratch_dir() + "/state", "--set",
                               "slot9/avs/controller/0/status_high=0x10", "--set", "slot9/avs/controller/0/status=4",
                               "--get", controller + "0x21", "--get", controller + "0x78", "--get", controller + "0x79",
                               "--get", controller + "0x88", "--get", controller + "0x8b"}),
              "0x03e8\n0x0004\n0x1004\n0x2f08\n0x03ec\n");
}

// A caller that wants no text has no area. Half a text is refused.
TEST(AvsDriver, TextsFitTheirAreas) {
    const test_board board = new_altered("mpu_master", {{"self/sim_avs/controller/0/phase_fault", "2"}});
    EXPECT_EQ(
        answers(board,
                {"drv_avs_check_phase_fault(chip_id=0, len=0, buffer=null)",
                 "drv_avs_check_chip(chip_id=0, len=0, buffer=null)",
                 "drv_avs_check_word_fault(chip_id=0, len=0, buffer=null)",
                 "drv_avs_check_phase_fault(chip_id=0, len=8)", "drv_avs_check_phase_fault(chip_id=0, len=7)",
                 "drv_avs_check_phase_fault(chip_id=0, len=0)", "drv_avs_get_item_string(chip_id=0, item=3, len=17)",
                 "drv_avs_get_item_string(chip_id=0, item=3, len=16)",
                 "drv_avs_get_item_string(chip_id=0, item=3, len=0, buffer=null)"}),
        "0x0 result=1 buffer=null\n0x0 result=0 buffer=null\n0x0 result=0 buffer=null\n0x0 result=1 buffer=\"phase "
        "1\"\n" +
            too_small + too_small + "0x0 buffer=\"status byte 0x00\"\n" + too_small + null_pointer);
}

TEST(AvsDriver, UnknownControllersAndItems) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_avs_check_phase_fault(chip_id=2)", "drv_avs_check_chip(chip_id=2)",
                              "drv_avs_check_word_fault(chip_id=2)", "drv_avs_get_item_value(chip_id=2)",
                              "drv_avs_get_item_string(chip_id=2)", "drv_avs_get_item_value(chip_id=0, item=5)",
                              "drv_avs_get_item_string(chip_id=0, item=5)",
                              "drv_avs_get_item_value(inst_id=0xff000002, chip_id=0)",
                              "drv_avs_check_chip(inst_id=0xff000006, chip_id=0)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + bad_value +
                  bad_value + not_supported + no_such_instance);
    EXPECT_EQ(answers(board, {"drv_avs_check_phase_fault(chip_id=0, result=null)",
                              "drv_avs_check_chip(chip_id=0, len=0, result=null, buffer=null)",
                              "drv_avs_check_word_fault(chip_id=0, len=64, buffer=null)",
                              "drv_avs_get_item_value(chip_id=0, value=null)"}),
              null_pointer + null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
