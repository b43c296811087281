// Chips on the SPI buses: their frames, their registers as other buses and drivers know them, and chips that do not
// answer.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";
const std::string not_ready = "0x8111010f\n";

std::string spi_write(int chip, const std::string &frame, const std::string &instance = "0xffffffff") {
    return "drv_spi_write(inst_id=" + instance + ", chip_id=" + std::to_string(chip) + ", frame=[" + frame + "])";
}

std::string spi_read(int chip, const std::string &command, int length, const std::string &instance = "0xffffffff") {
    return "drv_spi_read(inst_id=" + instance + ", chip_id=" + std::to_string(chip) + ", command=[" + command +
           "], length=" + std::to_string(length) + ")";
}

std::string gives(const std::string &answer) {
    return "0x0 buffer=[" + answer + "]\n";
}

} // namespace

// The lowest byte comes first, of numbers of registers and of values.
TEST(SpiDriver, TheCpldOfACard) {
    for (const char *seat : {"mpu_master", "lpu"}) {
        const test_board board = new_delivered(seat);
        EXPECT_EQ(answers(board, {spi_read(2, "00 00", 2), spi_read(2, "01 00", 2), spi_read(2, "00 1b", 2),
                                  spi_write(2, "00 9b 34 12"), spi_read(2, "00 1b", 2), spi_write(2, "00 80 ff ff"),
                                  spi_read(2, "00 00", 2)}),
                  gives("c0 51") + gives("04 01") + gives("00 00") + ok + gives("34 12") + ok + gives("c0 51"));
        // Every card has its own.
        EXPECT_EQ(answers(board, {spi_read(2, "00 1b", 2)}), gives("34 12"));
        EXPECT_EQ(answers(board, {spi_read(seat == std::string("lpu") ? 1 : 5, "00 1b", 2)}), gives("00 00"));
    }
}

TEST(SpiDriver, TheCpldKnowsItsCard) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {spi_read(5, "10 00", 2), spi_read(5, "11 00", 2), spi_read(5, "12 00", 2),
                              spi_read(5, "20 00", 2), "drv_board_get_type(inst_id=0xff000005)",
                              "drv_board_get_pcb_ver(inst_id=0xff000005)", "drv_board_get_card_ok(slot_id=5)"}),
              gives("01 22") + gives("30 02") + gives("01 00") + gives("01 00") + "0x0 type=0x2302201\n" +
                  "0x0 ver=1\n" + "0x0 ok=0\n");
    EXPECT_EQ(answers(board,
                      {"drv_board_set_type(inst_id=0xff000005, type=0x11223344)", spi_read(5, "10 00", 2),
                       spi_read(5, "11 00", 2), spi_write(5, "10 80 00 00"), "drv_board_get_type(inst_id=0xff000005)"}),
              ok + gives("44 33") + gives("22 11") + ok + "0x0 type=0x11223344\n");
}

TEST(SpiDriver, ACardWithoutPowerDoesNotAnswer) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {spi_write(5, "00 9b 34 12"), "drv_board_set_power_off(inst_id=0xff000005, type=9)",
                              spi_read(5, "00 1b", 2), spi_write(5, "00 9b 00 00"), spi_read(4, "00 1b", 2),
                              "drv_board_set_power_on(inst_id=0xff000005, type=9)", spi_read(5, "00 1b", 2)}),
              ok + ok + not_ready + not_ready + gives("00 00") + ok + gives("34 12"));
}

// Slots 1 and 6 and the line card's third place are empty. The buses of the cards in slots end at the master.
TEST(SpiDriver, NothingAnswersWhereNoCardIs) {
    const test_board master = new_delivered("mpu_master");
    EXPECT_EQ(answers(master, {spi_read(1, "00 00", 2), spi_read(6, "00 00", 2), spi_write(1, "00 9b 00 00"),
                               spi_read(7, "00 00", 2)}),
              not_ready + not_ready + not_ready + no_such_device);
    EXPECT_EQ(answers(seen_from(master, "mpu_slave"), {spi_read(5, "00 00", 2), spi_write(5, "00 9b 01 00")}),
              not_ready + not_ready);
    EXPECT_EQ(
        answers(new_delivered("lpu"), {spi_read(1, "00 00", 2), spi_read(3, "00 00", 2), spi_read(4, "00 00", 2)}),
        gives("c0 51") + not_ready + no_such_device);
    const test_board pulled = new_altered("mpu_master", {{"slot5/sim_chassis/place/0/pulled", "1"}});
    EXPECT_EQ(answers(pulled, {spi_read(5, "00 00", 2), spi_read(4, "00 00", 2)}), not_ready + gives("c0 51"));
}

TEST(SpiDriver, CpldFramesThatAreWrong) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {spi_write(5, "00 1b 34 12"), spi_write(5, "00 9b 34"), spi_write(5, "00 9b 34 12 00"),
                        spi_write(5, ""), spi_read(5, "00 9b", 2), spi_read(5, "00", 2), spi_read(5, "00 1b 00", 2),
                        spi_read(5, "00 1b", 1), spi_read(5, "00 1b", 3), spi_read(5, "", 2)}),
        bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value +
            bad_value);
    EXPECT_EQ(answers(board, {spi_read(5, "01 1b", 2), spi_write(5, "01 9b 00 00"), spi_read(5, "ff 7f", 2)}),
              out_of_range + out_of_range + out_of_range);
}

// It answers once to each request.
TEST(SpiDriver, TheQueueMemoryController) {
    for (const char *seat : {"mpu_master", "mpu_slave", "lpu"}) {
        const test_board board = new_delivered(seat);
        EXPECT_EQ(answers(board, {spi_read(16, "c4", 5), spi_write(16, "84 00 00 00 00 00 00"), spi_read(16, "c4", 5),
                                  spi_read(16, "c4", 5), spi_write(16, "04 00 00 00 00 00 10 89 ab cd ef"),
                                  spi_write(16, "84 00 00 00 00 00 10"), spi_read(16, "c4", 5),
                                  spi_write(16, "84 00 00 00 00 00 05"), spi_read(16, "c4", 5),
                                  spi_write(16, "84 00 00 00 00 00 ff"), spi_read(16, "c4", 5)}),
                  gives("00 00 00 00 00") + ok + gives("02 4b 54 51 41") + gives("00 00 00 00 00") + ok + ok +
                      gives("02 89 ab cd ef") + ok + gives("02 5a 5a 5a 5a") + ok + gives("02 00 00 00 00"));
    }
}

TEST(SpiDriver, TheQueueMemoryControllerTakesItsTime) {
    const test_board board = new_altered("mpu_master", {{"self/sim_qoram/chip/0/latency", "20000"}});
    EXPECT_EQ(answers(board, {spi_write(16, "84 00 00 00 00 00 01"), spi_read(16, "c4", 5), "wait 0.03",
                              spi_read(16, "c4", 5)}),
              ok + gives("01 00 00 00 00") + gives("02 00 01 02 00"));
}

// A register that it lacks is told twice: by the fault line at once, and in the answer.
TEST(SpiDriver, QueueMemoryFramesThatAreWrong) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {spi_write(16, "84 00 00 00 00 01 00"), spi_read(16, "c4", 5), spi_read(16, "c4", 5),
                              spi_write(16, "84 00 00 00 00 00 03"), spi_read(16, "c4", 5),
                              spi_write(16, "04 00 00 00 00 01 00 00 00 00 00")}),
              out_of_range + gives("03 00 00 00 00") + gives("00 00 00 00 00") + out_of_range +
                  gives("03 00 00 00 00") + out_of_range);
    EXPECT_EQ(
        answers(board, {spi_write(16, "84 00 00 00 00 00"), spi_write(16, "84 00 01 00 00 00 00"),
                        spi_write(16, "04 00 00 00 00 00 10 00 00 00"), spi_write(16, "c4"), spi_write(16, ""),
                        spi_read(16, "c5", 5), spi_read(16, "c4 00", 5), spi_read(16, "c4", 4), spi_read(16, "c4", 0)}),
        bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value);
}

// Status, 01, register, value, and the CRC-16 of these ten bytes.
TEST(SpiDriver, TheFabricAgent) {
    for (const char *seat : {"mpu_master", "lpu"}) {
        const test_board board = new_delivered(seat);
        EXPECT_EQ(answers(board, {spi_read(17, "81 01 00 00 00 00", 12), spi_write(17, "82 01 00 00 00 10 89 ab cd ef"),
                                  spi_read(17, "81 01 00 00 00 10", 12)}),
                  gives("00 01 00 00 00 00 4b 54 80 09 72 26") + ok + gives("00 01 00 00 00 10 89 ab cd ef 01 ab"));
    }
}

TEST(SpiDriver, FabricFramesThatAreWrong) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {spi_read(17, "81 01 00 00 00 03", 12), spi_write(17, "82 01 00 00 00 03 00 00 00 00"),
                              spi_read(17, "81 01 ff ff ff ff", 12)}),
              out_of_range + out_of_range + out_of_range);
    EXPECT_EQ(answers(board, {spi_read(17, "81 02 00 00 00 00", 12), spi_read(17, "82 01 00 00 00 00", 12),
                              spi_read(17, "81 01 00 00 00", 12), spi_read(17, "81 01 00 00 00 00", 11),
                              spi_write(17, "81 01 00 00 00 10 00 00 00 00"),
                              spi_write(17, "82 01 00 00 00 10 00 00 00"), spi_write(17, "")}),
              bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value);
}

// The agent is on an I2C bus as well: four bytes a register.
TEST(SpiDriver, TheFabricAgentByI2c) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_i2c_write(chip_id=96, address=16, buffer=[01 02 03 04], length=4)",
                              spi_read(17, "81 01 00 00 00 10", 12), spi_write(17, "82 01 00 00 00 02 00 00 00 05"),
                              "drv_i2c_read(chip_id=96, address=2, length=4)"}),
              ok + gives("00 01 00 00 00 10 01 02 03 04 03 43") + ok + gives("00 00 00 05"));
}

TEST(SpiDriver, ASilentChip) {
    const test_board board = new_altered("mpu_master", {{"self/sim_spi/chip/5/silent", "1"},
                                                        {"self/sim_spi/chip/16/silent", "1"},
                                                        {"self/sim_spi/chip/17/silent", "1"}});
    EXPECT_EQ(answers(board, {spi_read(5, "00 00", 2), spi_write(5, "00 9b 00 00"), spi_read(16, "c4", 5),
                              spi_write(16, "84 00 00 00 00 00 00"), spi_read(17, "81 01 00 00 00 00", 12),
                              spi_write(17, "82 01 00 00 00 10 00 00 00 00"), spi_read(4, "00 00", 2)}),
              not_ready + not_ready + not_ready + not_ready + not_ready + not_ready + gives("c0 51"));
}

TEST(SpiDriver, AChipThatIsNotFitted) {
    const test_board board =
        new_altered("lpu", {{"self/sim_spi/chip/16/unit", "1"}, {"self/sim_spi/chip/17/unit", "1"}});
    EXPECT_EQ(answers(board, {spi_read(16, "c4", 5), spi_write(17, "82 01 00 00 00 10 00 00 00 00")}),
              not_ready + not_ready);
}

TEST(SpiDriver, InstancesAndPointers) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_spi_init()", "drv_spi_exit()", "drv_spi_init(inst_id=0xff000007)",
                              "drv_spi_init(inst_id=0xff000005)", "drv_spi_exit(inst_id=0xff000005)",
                              "drv_spi_init(inst_id=0xff000006)", "drv_spi_exit(inst_id=0x12)",
                              spi_read(16, "c4", 5, "0xff000007"), spi_read(16, "c4", 5, "0xff000005"),
                              spi_read(2, "00 00", 2, "0xff000007"), spi_read(5, "00 00", 2, "0xff00000a")}),
              ok + ok + ok + not_supported + not_supported + no_such_instance + no_such_instance +
                  gives("00 00 00 00 00") + not_supported + gives("c0 51") + not_ready);
    EXPECT_EQ(answers(board, {"drv_spi_write(chip_id=16, frame=null, length=7)",
                              "drv_spi_read(chip_id=16, command=null, command_length=1, length=5)",
                              "drv_spi_read(chip_id=16, command=[c4], length=5, buffer=null)"}),
              null_pointer + null_pointer + null_pointer);
    EXPECT_EQ(
        answers(board,
                {"drv_cpld_init_usr_data_pool()", "drv_cpld_exit_usr_data_pool()",
                 "drv_cpld_init_usr_data_pool(inst_id=0xff000007)", "drv_cpld_init_usr_data_pool(inst_id=0xff000005)",
                 "drv_cpld_exit_usr_data_pool(inst_id=0xff000005)", "drv_cpld_exit_usr_data_pool(inst_id=0xff000006)"}),
        ok + ok + ok + not_supported + not_supported + no_such_instance);
}

} // namespace kestro_tests
