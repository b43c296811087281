// powerdetec_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(PowerdetecTest, UsageListsTheSubCommandsInOrder) {
    expect_run("powerdetec_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " powerdetec_get_power\n"
               " powerdetec_get_shuntvoltage\n"
               " powerdetec_get_busvoltage\n"
               " powerdetec_get_chiptype inst_id chip_id\n"
               " powerdetec_exit_chip inst_id chip_id\n"
               " powerdetec_init_chip inst_id chip_id\n",
               0);
}

TEST(PowerdetecTest, GetPower) {
    expect_success("powerdetec_test powerdetec_get_power 0xff000007 2",
                   "drv_powerdetec_get_power(inst_id=0xff000007, chip_id=2) = 0 power=77056",
                   "drv_powerdetec_get_power:[ret]:0\r\npower:77056\r\n");
    expect_success("powerdetec_test powerdetec_get_power 0x2",
                   "drv_powerdetec_get_power(inst_id=0xffffffff, chip_id=2) = 0 power=0xffffffff",
                   "drv_powerdetec_get_power:[ret]:0\r\npower:-1\r\n");
    expect_success("powerdetec_test powerdetec_get_power 1 2 3",
                   "drv_powerdetec_get_power(inst_id=1, chip_id=2) = 0 power=5",
                   "drv_powerdetec_get_power:[ret]:0\r\npower:5\r\n");
    expect_success("powerdetec_test powerdetec_get_power chip",
                   "drv_powerdetec_get_power(inst_id=0xffffffff, chip_id=0) = 0 power=6",
                   "drv_powerdetec_get_power:[ret]:0\r\npower:6\r\n");
    expect_failure("powerdetec_test powerdetec_get_power 2",
                   "drv_powerdetec_get_power(inst_id=0xffffffff, chip_id=2) = 0x811101a4",
                   "drv_powerdetec_get_power:[ret]:0x811101a4\r\npower:0\r\n");
    expect_failure("powerdetec_test powerdetec_get_power", "", "");
}

TEST(PowerdetecTest, GetShuntVoltage) {
    expect_success("powerdetec_test powerdetec_get_shuntvoltage 0xff000007 2",
                   "drv_powerdetec_get_shuntvoltage(inst_id=0xff000007, chip_id=2) = 0 voltage=12800",
                   "drv_powerdetec_get_shuntvoltage:[ret]:0\r\nvoltage:12800\r\n");
    expect_success("powerdetec_test powerdetec_get_shuntvoltage 0x2",
                   "drv_powerdetec_get_shuntvoltage(inst_id=0xffffffff, chip_id=2) = 0 voltage=0xffffffff",
                   "drv_powerdetec_get_shuntvoltage:[ret]:0\r\nvoltage:-1\r\n");
    expect_success("powerdetec_test powerdetec_get_shuntvoltage 1 2 3",
                   "drv_powerdetec_get_shuntvoltage(inst_id=1, chip_id=2) = 0 voltage=5",
                   "drv_powerdetec_get_shuntvoltage:[ret]:0\r\nvoltage:5\r\n");
    expect_success("powerdetec_test powerdetec_get_shuntvoltage chip",
                   "drv_powerdetec_get_shuntvoltage(inst_id=0xffffffff, chip_id=0) = 0 voltage=6",
                   "drv_powerdetec_get_shuntvoltage:[ret]:0\r\nvoltage:6\r\n");
    expect_failure("powerdetec_test powerdetec_get_shuntvoltage 2",
                   "drv_powerdetec_get_shuntvoltage(inst_id=0xffffffff, chip_id=2) = 0x811101a4",
                   "drv_powerdetec_get_shuntvoltage:[ret]:0x811101a4\r\nvoltage:0\r\n");
    expect_failure("powerdetec_test powerdetec_get_shuntvoltage", "", "");
}

// Unlike its neighbours the line does not begin with the operation's name.
TEST(PowerdetecTest, GetBusVoltage) {
    expect_success("powerdetec_test powerdetec_get_busvoltage 0xff000007 2",
                   "drv_powerdetec_get_busvoltage(inst_id=0xff000007, chip_id=2) = 0 voltage=12040",
                   "powerdetec_get_busvoltage:[ret]:0\r\nvoltage:12040\r\n");
    expect_success("powerdetec_test powerdetec_get_busvoltage 0x2",
                   "drv_powerdetec_get_busvoltage(inst_id=0xffffffff, chip_id=2) = 0 voltage=0xffffffff",
                   "powerdetec_get_busvoltage:[ret]:0\r\nvoltage:-1\r\n");
    expect_success("powerdetec_test powerdetec_get_busvoltage 1 2 3",
                   "drv_powerdetec_get_busvoltage(inst_id=1, chip_id=2) = 0 voltage=5",
                   "powerdetec_get_busvoltage:[ret]:0\r\nvoltage:5\r\n");
    expect_success("powerdetec_test powerdetec_get_busvoltage chip",
                   "drv_powerdetec_get_busvoltage(inst_id=0xffffffff, chip_id=0) = 0 voltage=6",
                   "powerdetec_get_busvoltage:[ret]:0\r\nvoltage:6\r\n");
    expect_failure("powerdetec_test powerdetec_get_busvoltage 2",
                   "drv_powerdetec_get_busvoltage(inst_id=0xffffffff, chip_id=2) = 0x811101a4",
                   "powerdetec_get_busvoltage:[ret]:0x811101a4\r\nvoltage:0\r\n");
    expect_failure("powerdetec_test powerdetec_get_busvoltage", "", "");
}

TEST(PowerdetecTest, GetChipType) {
    expect_success("powerdetec_test powerdetec_get_chiptype 0xff000007 2",
                   "drv_powerdetec_get_chiptype(inst_id=0xff000007, chip_id=2) = 0 chiptype=1",
                   "powerdetec_get_chiptype:[ret]:0\r\n chiptype:1\r\n");
    expect_success("powerdetec_test powerdetec_get_chiptype 0x2",
                   "drv_powerdetec_get_chiptype(inst_id=0xffffffff, chip_id=2) = 0 chiptype=0xffffffff",
                   "powerdetec_get_chiptype:[ret]:0\r\n chiptype:-1\r\n");
    expect_success("powerdetec_test powerdetec_get_chiptype 5 chip",
                   "drv_powerdetec_get_chiptype(inst_id=5, chip_id=0) = 0 chiptype=3",
                   "powerdetec_get_chiptype:[ret]:0\r\n chiptype:3\r\n");
    expect_success("powerdetec_test powerdetec_get_chiptype 7 8 9",
                   "drv_powerdetec_get_chiptype(inst_id=0xffffffff, chip_id=7) = 0 chiptype=3",
                   "powerdetec_get_chiptype:[ret]:0\r\n chiptype:3\r\n");
    expect_success("powerdetec_test powerdetec_get_chiptype",
                   "drv_powerdetec_get_chiptype(inst_id=0xffffffff, chip_id=0) = 0 chiptype=3",
                   "input error : in_num : 0 over [1-2] .\npowerdetec_get_chiptype:[ret]:0\r\n chiptype:3\r\n");
    expect_failure("powerdetec_test powerdetec_get_chiptype 2",
                   "drv_powerdetec_get_chiptype(inst_id=0xffffffff, chip_id=2) = 0x811101a4",
                   "powerdetec_get_chiptype:[ret]:0x811101a4\r\n chiptype:0\r\n");
}

TEST(PowerdetecTest, ExitChip) {
    expect_success("powerdetec_test powerdetec_exit_chip 0xff000007 2",
                   "drv_powerdetec_exit_chip(inst_id=0xff000007, chip_id=2) = 0", "powerdetec_exit_chip:[ret]:0\r\n");
    expect_success("powerdetec_test powerdetec_exit_chip 0x2",
                   "drv_powerdetec_exit_chip(inst_id=0xffffffff, chip_id=2) = 0", "powerdetec_exit_chip:[ret]:0\r\n");
    expect_success("powerdetec_test powerdetec_exit_chip 5 chip", "drv_powerdetec_exit_chip(inst_id=5, chip_id=0) = 0",
                   "powerdetec_exit_chip:[ret]:0\r\n");
    expect_success("powerdetec_test powerdetec_exit_chip 7 8 9",
                   "drv_powerdetec_exit_chip(inst_id=0xffffffff, chip_id=7) = 0", "powerdetec_exit_chip:[ret]:0\r\n");
    expect_success("powerdetec_test powerdetec_exit_chip",
                   "drv_powerdetec_exit_chip(inst_id=0xffffffff, chip_id=0) = 0",
                   "input error : in_num : 0 over [1-2] .\npowerdetec_exit_chip:[ret]:0\r\n");
    expect_failure("powerdetec_test powerdetec_exit_chip 2",
                   "drv_powerdetec_exit_chip(inst_id=0xffffffff, chip_id=2) = 0x811101a4",
                   "powerdetec_exit_chip:[ret]:0x811101a4\r\n");
}

TEST(PowerdetecTest, InitChip) {
    expect_success("powerdetec_test powerdetec_init_chip 0xff000007 2",
                   "drv_powerdetec_init_chip(inst_id=0xff000007, chip_id=2) = 0", "powerdetec_init_chip:[ret]:0\r\n");
    expect_success("powerdetec_test powerdetec_init_chip 0x2",
                   "drv_powerdetec_init_chip(inst_id=0xffffffff, chip_id=2) = 0", "powerdetec_init_chip:[ret]:0\r\n");
    expect_success("powerdetec_test powerdetec_init_chip 5 chip", "drv_powerdetec_init_chip(inst_id=5, chip_id=0) = 0",
                   "powerdetec_init_chip:[ret]:0\r\n");
    expect_success("powerdetec_test powerdetec_init_chip 7 8 9",
                   "drv_powerdetec_init_chip(inst_id=0xffffffff, chip_id=7) = 0", "powerdetec_init_chip:[ret]:0\r\n");
    expect_success("powerdetec_test powerdetec_init_chip",
                   "drv_powerdetec_init_chip(inst_id=0xffffffff, chip_id=0) = 0",
                   "input error : in_num : 0 over [1-2] .\npowerdetec_init_chip:[ret]:0\r\n");
    expect_failure("powerdetec_test powerdetec_init_chip 2",
                   "drv_powerdetec_init_chip(inst_id=0xffffffff, chip_id=2) = 0x811101a4",
                   "powerdetec_init_chip:[ret]:0x811101a4\r\n");
}
