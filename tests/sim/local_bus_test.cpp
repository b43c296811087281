// Chips on the local bus: the programmable logic, as the processor reaches it.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";
const std::string not_ready = "0x8111010f\n";

} // namespace

// Registers of 16 bits come with their higher byte first; behind the last register is the first.
TEST(LocalBusDriver, RegistersAreBytes) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_localbus_read(chip_id=0, address=0, length=3)",
                              "drv_localbus_read(chip_id=0, address=255, length=2)",
                              "drv_localbus_read(chip_id=1, address=1, length=4)",
                              "drv_localbus_read(chip_id=2, address=0x7ff, length=3)"}),
              "0x0 buffer=[c5 07 01]\n0x0 buffer=[ff c5]\n0x0 buffer=[02 03 07 e9]\n0x0 buffer=[ff ff f9]\n");
}

TEST(LocalBusDriver, WhatIsWrittenIsReadByTheCpldDriver) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_localbus_write(chip_id=0, address=15, buffer=[a7], length=1)",
                              "drv_localbus_write(chip_id=2, address=15, buffer=[be ef], length=2)",
                              "drv_localbus_write(chip_id=2, address=15, buffer=[12], length=1)",
                              "drv_cpld_reg_read(chip_id=0, offset=15)", "drv_cpld_reg_read(chip_id=2, offset=15)",
                              "drv_cpld_reg_write(chip_id=2, offset=15, data=0x1234)",
                              "drv_localbus_read(chip_id=2, address=15, length=2)"}),
              ok + ok + bad_value + "0x0 data=167\n0x0 data=48879\n0x0\n0x0 buffer=[12 34]\n");
}

TEST(LocalBusDriver, LampsAreTheLampDriversOwn) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_localbus_write(chip_id=0, address=0x20, buffer=[02 07], length=2)",
                              "drv_led_get_color(led_type=0)", "drv_led_set_color(led_type=0, color=3, freq=9)",
                              "drv_localbus_read(chip_id=0, address=0x20, length=2)"}),
              ok + "0x0 color=2 freq=7\n0x0\n0x0 buffer=[83 09]\n");
}

TEST(LocalBusDriver, ASilentChip) {
    const test_board board = new_altered("lpu", {{"self/sim_localbus/chip/1/silent", "1"}});
    EXPECT_EQ(answers(board, {"drv_localbus_read(chip_id=1, length=2)",
                              "drv_localbus_write(chip_id=1, buffer=[00 00], length=2)",
                              "drv_localbus_read(chip_id=0, length=1)"}),
              not_ready + not_ready + "0x0 buffer=[c5]\n");
}

TEST(LocalBusDriver, TransfersHaveLimits) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(
        answers(board, {"drv_localbus_read(chip_id=0, length=0)", "drv_localbus_read(chip_id=0, length=257)",
                        "drv_localbus_read(chip_id=0, address=256, length=1)",
                        "drv_localbus_write(chip_id=0, address=256, buffer=[00], length=1)",
                        "drv_localbus_write(chip_id=0, buffer=[], length=0)", "drv_localbus_read(chip_id=2, length=1)",
                        "drv_localbus_read(inst_id=0x0100ffff, chip_id=0, length=1)",
                        "drv_localbus_read(chip_id=0, length=1, buffer=null)",
                        "drv_localbus_write(chip_id=0, length=1, buffer=null)"}),
        out_of_range + out_of_range + out_of_range + out_of_range + out_of_range + no_such_device + not_supported +
            null_pointer + null_pointer);
}

} // namespace kestro_tests
