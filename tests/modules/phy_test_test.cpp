// phy_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(PhyTest, UsageListsTheSubCommandsInOrder) {
    expect_run("phy_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " phy_init\n"
               " phy_checkid chip_id\n"
               " phy_link chip_id port_id port_mode\n"
               " phy_set_lp chip_id port_id port_mode loopback\n"
               " phy_get_lp chip_id port_id port_mode\n"
               " phy_set_speed chip_id port_id port_mode speed\n"
               " phy_get_speed chip_id port_id port_mode\n"
               " phy_set_mode chip_id port_id port_mode\n"
               " phy_get_mode chip_id port_id\n"
               " phy_read_reg chip_id port_id reg\n"
               " phy_write_reg chip_id port_id reg value\n"
               " phy_set_port_en chip_id port_id port_mode en\n"
               " phy_get_port_en chip_id port_id port_mode\n"
               " phy_get_config_speed chip_id port_id port_mode\n"
               " phy_set_nick_value chip_id\n"
               " phy_check_nick_value chip_id\n",
               0);
}

TEST(PhyTest, Init) {
    expect_success("phy_test phy_init 1 4", "drv_phy_port_initialization(chip_id=1, port_id=4) = 0",
                   "drv_phy_port_initialization:[ret]:0\r\n");
    expect_success("phy_test phy_init 0x10 010 7", "drv_phy_port_initialization(chip_id=16, port_id=8) = 0",
                   "drv_phy_port_initialization:[ret]:0\r\n");
    expect_success("phy_test phy_init chip port", "drv_phy_port_initialization(chip_id=0, port_id=0) = 0",
                   "drv_phy_port_initialization:[ret]:0\r\n");
    expect_failure("phy_test phy_init 1 4", "drv_phy_port_initialization(chip_id=1, port_id=4) = 0x811101a4",
                   "drv_phy_port_initialization:[ret]:-2129591900\r\n");
    expect_failure("phy_test phy_init", "", "");
    expect_failure("phy_test phy_init 1", "", "");
}

TEST(PhyTest, CheckIdShowsTheCodeInHexadecimal) {
    expect_success("phy_test phy_checkid 1", "drv_phy_check_deviceid(chip_id=1) = 0", "phy_test_check_id:[ret]:0\r\n");
    expect_success("phy_test phy_checkid 1 2", "drv_phy_check_deviceid(chip_id=1) = 0",
                   "phy_test_check_id:[ret]:0\r\n");
    expect_success("phy_test phy_checkid chip", "drv_phy_check_deviceid(chip_id=0) = 0",
                   "phy_test_check_id:[ret]:0\r\n");
    expect_failure("phy_test phy_checkid 0xffffffff", "drv_phy_check_deviceid(chip_id=0xffffffff) = 0x811101a4",
                   "phy_test_check_id:[ret]:811101a4\r\n");
    expect_failure("phy_test phy_checkid", "", "");
}

TEST(PhyTest, Link) {
    expect_success("phy_test phy_link 1 4 2",
                   "drv_phy_get_port_link(chip_id=1, port_id=4, port_mode=2) = 0 link_status=1",
                   "drv_phy_get_port_link:[ret]:0, link_status = 1\r\n");
    expect_success("phy_test phy_link 1 4 2 9",
                   "drv_phy_get_port_link(chip_id=1, port_id=4, port_mode=2) = 0 link_status=0xffffffff",
                   "drv_phy_get_port_link:[ret]:0, link_status = -1\r\n");
    expect_success("phy_test phy_link chip port mode",
                   "drv_phy_get_port_link(chip_id=0, port_id=0, port_mode=0) = 0 link_status=0",
                   "drv_phy_get_port_link:[ret]:0, link_status = 0\r\n");
    expect_failure("phy_test phy_link 1 4 2", "drv_phy_get_port_link(chip_id=1, port_id=4, port_mode=2) = 0x12",
                   "drv_phy_get_port_link:[ret]:18, link_status = 0\r\n");
    expect_failure("phy_test phy_link", "", "");
    expect_failure("phy_test phy_link 1 4", "", "");
}

TEST(PhyTest, SetLoopbackPrintsTheNameOfTheQuery) {
    expect_success("phy_test phy_set_lp 1 4 2 3",
                   "drv_phy_set_port_loopback(chip_id=1, port_id=4, port_mode=2, loopback=3) = 0",
                   "drv_phy_get_port_loopback:[ret]:0, loopback = 3\r\n");
    expect_success("phy_test phy_set_lp 1 4 2 0xffffffff 5",
                   "drv_phy_set_port_loopback(chip_id=1, port_id=4, port_mode=2, loopback=0xffffffff) = 0",
                   "drv_phy_get_port_loopback:[ret]:0, loopback = -1\r\n");
    expect_success("phy_test phy_set_lp chip port mode on",
                   "drv_phy_set_port_loopback(chip_id=0, port_id=0, port_mode=0, loopback=0) = 0",
                   "drv_phy_get_port_loopback:[ret]:0, loopback = 0\r\n");
    expect_failure("phy_test phy_set_lp 1 4 2 3",
                   "drv_phy_set_port_loopback(chip_id=1, port_id=4, port_mode=2, loopback=3) = 0x811101a4",
                   "drv_phy_get_port_loopback:[ret]:-2129591900, loopback = 3\r\n");
    expect_failure("phy_test phy_set_lp", "", "");
    expect_failure("phy_test phy_set_lp 1 4 2", "", "");
}

TEST(PhyTest, GetLoopback) {
    expect_success("phy_test phy_get_lp 1 4 2",
                   "drv_phy_get_port_loopback(chip_id=1, port_id=4, port_mode=2) = 0 loopback=1",
                   "drv_phy_get_port_loopback:[ret]:0, loopback = 1\r\n");
    expect_success("phy_test phy_get_lp 1 4 2 3",
                   "drv_phy_get_port_loopback(chip_id=1, port_id=4, port_mode=2) = 0 loopback=0xfffffffe",
                   "drv_phy_get_port_loopback:[ret]:0, loopback = -2\r\n");
    expect_success("phy_test phy_get_lp chip port mode",
                   "drv_phy_get_port_loopback(chip_id=0, port_id=0, port_mode=0) = 0 loopback=0",
                   "drv_phy_get_port_loopback:[ret]:0, loopback = 0\r\n");
    expect_failure("phy_test phy_get_lp 1 4 2", "drv_phy_get_port_loopback(chip_id=1, port_id=4, port_mode=2) = 0x12",
                   "drv_phy_get_port_loopback:[ret]:18, loopback = 0\r\n");
    expect_failure("phy_test phy_get_lp", "", "");
    expect_failure("phy_test phy_get_lp 1 4", "", "");
}

TEST(PhyTest, SetSpeed) {
    expect_success("phy_test phy_set_speed 1 4 2 100",
                   "drv_phy_set_port_speed(chip_id=1, port_id=4, port_mode=2, speed=100) = 0",
                   "drv_phy_set_port_speed:[ret]:0, speed = 100\r\n");
    expect_success("phy_test phy_set_speed 1 4 2 0xffffffff 5",
                   "drv_phy_set_port_speed(chip_id=1, port_id=4, port_mode=2, speed=0xffffffff) = 0",
                   "drv_phy_set_port_speed:[ret]:0, speed = -1\r\n");
    expect_success("phy_test phy_set_speed chip port mode fast",
                   "drv_phy_set_port_speed(chip_id=0, port_id=0, port_mode=0, speed=0) = 0",
                   "drv_phy_set_port_speed:[ret]:0, speed = 0\r\n");
    expect_failure("phy_test phy_set_speed 1 4 2 99",
                   "drv_phy_set_port_speed(chip_id=1, port_id=4, port_mode=2, speed=99) = 0x811101a4",
                   "drv_phy_set_port_speed:[ret]:-2129591900, speed = 99\r\n");
    expect_failure("phy_test phy_set_speed", "", "");
    expect_failure("phy_test phy_set_speed 1 4 2", "", "");
}

TEST(PhyTest, GetSpeed) {
    expect_success("phy_test phy_get_speed 1 4 2",
                   "drv_phy_get_port_speed(chip_id=1, port_id=4, port_mode=2) = 0 speed=1000",
                   "drv_phy_get_port_speed:[ret]:0, speed = 1000\r\n");
    expect_success("phy_test phy_get_speed 1 4 2 3",
                   "drv_phy_get_port_speed(chip_id=1, port_id=4, port_mode=2) = 0 speed=0xffffffff",
                   "drv_phy_get_port_speed:[ret]:0, speed = -1\r\n");
    expect_success("phy_test phy_get_speed chip port mode",
                   "drv_phy_get_port_speed(chip_id=0, port_id=0, port_mode=0) = 0 speed=10",
                   "drv_phy_get_port_speed:[ret]:0, speed = 10\r\n");
    expect_failure("phy_test phy_get_speed 1 4 2", "drv_phy_get_port_speed(chip_id=1, port_id=4, port_mode=2) = 0x12",
                   "drv_phy_get_port_speed:[ret]:18, speed = 0\r\n");
    expect_failure("phy_test phy_get_speed", "", "");
    expect_failure("phy_test phy_get_speed 1 4", "", "");
}

TEST(PhyTest, SetModePrintsTheNameOfTheSpeed) {
    expect_success("phy_test phy_set_mode 1 4 2", "drv_phy_set_port_mode(chip_id=1, port_id=4, port_mode=2) = 0",
                   "drv_phy_set_port_speed:[ret]:0, port_mode = 2\r\n");
    expect_success("phy_test phy_set_mode 1 4 0xffffffff 5",
                   "drv_phy_set_port_mode(chip_id=1, port_id=4, port_mode=0xffffffff) = 0",
                   "drv_phy_set_port_speed:[ret]:0, port_mode = -1\r\n");
    expect_success("phy_test phy_set_mode chip port fibre",
                   "drv_phy_set_port_mode(chip_id=0, port_id=0, port_mode=0) = 0",
                   "drv_phy_set_port_speed:[ret]:0, port_mode = 0\r\n");
    expect_failure("phy_test phy_set_mode 1 4 2",
                   "drv_phy_set_port_mode(chip_id=1, port_id=4, port_mode=2) = 0x811101a4",
                   "drv_phy_set_port_speed:[ret]:-2129591900, port_mode = 2\r\n");
    expect_failure("phy_test phy_set_mode", "", "");
    expect_failure("phy_test phy_set_mode 1 4", "", "");
}

TEST(PhyTest, GetModePrintsItAsLoopback) {
    expect_success("phy_test phy_get_mode 1 4", "drv_phy_get_port_mode(chip_id=1, port_id=4) = 0 port_mode=2",
                   "drv_phy_get_port_mode:[ret]:0, loopback = 2\r\n");
    expect_success("phy_test phy_get_mode 1 4 2",
                   "drv_phy_get_port_mode(chip_id=1, port_id=4) = 0 port_mode=0xffffffff",
                   "drv_phy_get_port_mode:[ret]:0, loopback = -1\r\n");
    expect_success("phy_test phy_get_mode chip port", "drv_phy_get_port_mode(chip_id=0, port_id=0) = 0 port_mode=1",
                   "drv_phy_get_port_mode:[ret]:0, loopback = 1\r\n");
    expect_failure("phy_test phy_get_mode 1 4", "drv_phy_get_port_mode(chip_id=1, port_id=4) = 0x12",
                   "drv_phy_get_port_mode:[ret]:18, loopback = 0\r\n");
    expect_failure("phy_test phy_get_mode", "", "");
    expect_failure("phy_test phy_get_mode 1", "", "");
}

TEST(PhyTest, ReadRegShowsTheValueInHexadecimal) {
    expect_success("phy_test phy_read_reg 1 4 0x11", "drv_phy_get_reg(chip_id=1, port_id=4, reg=17) = 0 value=0x79ad",
                   "drv_phy_get_reg:[ret]:0, value = 79ad\r\n");
    expect_success("phy_test phy_read_reg 1 4 2 3", "drv_phy_get_reg(chip_id=1, port_id=4, reg=2) = 0 value=0xfedcba98",
                   "drv_phy_get_reg:[ret]:0, value = fedcba98\r\n");
    expect_success("phy_test phy_read_reg chip port reg", "drv_phy_get_reg(chip_id=0, port_id=0, reg=0) = 0 value=10",
                   "drv_phy_get_reg:[ret]:0, value = a\r\n");
    expect_failure("phy_test phy_read_reg 1 4 32", "drv_phy_get_reg(chip_id=1, port_id=4, reg=32) = 0x12",
                   "drv_phy_get_reg:[ret]:18, value = 0\r\n");
    expect_failure("phy_test phy_read_reg", "", "");
    expect_failure("phy_test phy_read_reg 1 4", "", "");
}

TEST(PhyTest, WriteRegShowsTheValueInHexadecimal) {
    expect_success("phy_test phy_write_reg 1 4 0x10 0x1140",
                   "drv_phy_set_reg(chip_id=1, port_id=4, reg=16, value=0x1140) = 0",
                   "drv_phy_set_reg:[ret]:0, value = 1140\r\n");
    expect_success("phy_test phy_write_reg 1 4 2 0xfedcba98 5",
                   "drv_phy_set_reg(chip_id=1, port_id=4, reg=2, value=0xfedcba98) = 0",
                   "drv_phy_set_reg:[ret]:0, value = fedcba98\r\n");
    expect_success("phy_test phy_write_reg chip port reg value",
                   "drv_phy_set_reg(chip_id=0, port_id=0, reg=0, value=0) = 0",
                   "drv_phy_set_reg:[ret]:0, value = 0\r\n");
    expect_failure("phy_test phy_write_reg 1 4 2 10",
                   "drv_phy_set_reg(chip_id=1, port_id=4, reg=2, value=10) = 0x811101a4",
                   "drv_phy_set_reg:[ret]:-2129591900, value = a\r\n");
    expect_failure("phy_test phy_write_reg", "", "");
    expect_failure("phy_test phy_write_reg 1 4 2", "", "");
}

TEST(PhyTest, SetPortEnableShowsItInHexadecimal) {
    expect_success("phy_test phy_set_port_en 1 4 2 0x1f",
                   "drv_phy_set_port_status(chip_id=1, port_id=4, port_mode=2, enable=31) = 0",
                   "phy_test_set_port_en:[ret]:0, enable = 1f\r\n");
    expect_success("phy_test phy_set_port_en 1 4 2 3 5",
                   "drv_phy_set_port_status(chip_id=1, port_id=4, port_mode=2, enable=3) = 0",
                   "phy_test_set_port_en:[ret]:0, enable = 3\r\n");
    expect_success("phy_test phy_set_port_en chip port mode on",
                   "drv_phy_set_port_status(chip_id=0, port_id=0, port_mode=0, enable=0) = 0",
                   "phy_test_set_port_en:[ret]:0, enable = 0\r\n");
    expect_failure("phy_test phy_set_port_en 1 4 2 1",
                   "drv_phy_set_port_status(chip_id=1, port_id=4, port_mode=2, enable=1) = 0x811101a4",
                   "phy_test_set_port_en:[ret]:-2129591900, enable = 1\r\n");
    expect_failure("phy_test phy_set_port_en", "", "");
    expect_failure("phy_test phy_set_port_en 1 4 2", "", "");
}

TEST(PhyTest, GetPortEnableShowsItInHexadecimal) {
    expect_success("phy_test phy_get_port_en 1 4 2",
                   "drv_phy_get_port_status(chip_id=1, port_id=4, port_mode=2) = 0 enable=0x1f",
                   "drv_phy_get_port_status:[ret]:0, enable = 1f\r\n");
    expect_success("phy_test phy_get_port_en 1 4 2 3",
                   "drv_phy_get_port_status(chip_id=1, port_id=4, port_mode=2) = 0 enable=1",
                   "drv_phy_get_port_status:[ret]:0, enable = 1\r\n");
    expect_success("phy_test phy_get_port_en chip port mode",
                   "drv_phy_get_port_status(chip_id=0, port_id=0, port_mode=0) = 0 enable=0",
                   "drv_phy_get_port_status:[ret]:0, enable = 0\r\n");
    expect_failure("phy_test phy_get_port_en 1 4 2",
                   "drv_phy_get_port_status(chip_id=1, port_id=4, port_mode=2) = 0x12",
                   "drv_phy_get_port_status:[ret]:18, enable = 0\r\n");
    expect_failure("phy_test phy_get_port_en", "", "");
    expect_failure("phy_test phy_get_port_en 1 4", "", "");
}

TEST(PhyTest, GetConfigSpeed) {
    expect_success("phy_test phy_get_config_speed 1 4 2",
                   "drv_phy_get_port_config_speed(chip_id=1, port_id=4, port_mode=2) = 0 speed=100",
                   "drv_phy_get_port_config_speed:[ret]:0, speed = 100\r\n");
    expect_success("phy_test phy_get_config_speed 1 4 2 3",
                   "drv_phy_get_port_config_speed(chip_id=1, port_id=4, port_mode=2) = 0 speed=0xffffffff",
                   "drv_phy_get_port_config_speed:[ret]:0, speed = -1\r\n");
    expect_success("phy_test phy_get_config_speed chip port mode",
                   "drv_phy_get_port_config_speed(chip_id=0, port_id=0, port_mode=0) = 0 speed=0",
                   "drv_phy_get_port_config_speed:[ret]:0, speed = 0\r\n");
    expect_failure("phy_test phy_get_config_speed 1 4 2",
                   "drv_phy_get_port_config_speed(chip_id=1, port_id=4, port_mode=2) = 0x12",
                   "drv_phy_get_port_config_speed:[ret]:18, speed = 0\r\n");
    expect_failure("phy_test phy_get_config_speed", "", "");
    expect_failure("phy_test phy_get_config_speed 1 4", "", "");
}

TEST(PhyTest, SetNickValue) {
    expect_success("phy_test phy_set_nick_value 1", "drv_phy_nick(chip_id=1) = 0", "drv_phy_nick:[ret]:0\r\n");
    expect_success("phy_test phy_set_nick_value 1 2", "drv_phy_nick(chip_id=1) = 0", "drv_phy_nick:[ret]:0\r\n");
    expect_success("phy_test phy_set_nick_value chip", "drv_phy_nick(chip_id=0) = 0", "drv_phy_nick:[ret]:0\r\n");
    expect_failure("phy_test phy_set_nick_value 1", "drv_phy_nick(chip_id=1) = 0x811101a4",
                   "drv_phy_nick:[ret]:-2129591900\r\n");
    expect_failure("phy_test phy_set_nick_value", "", "");
}

TEST(PhyTest, CheckNickValuePrintsTheNameOfTheSetter) {
    expect_success("phy_test phy_check_nick_value 1", "drv_phy_check_nick(chip_id=1) = 0 check_result=1",
                   "drv_phy_nick:[ret]:0 check_result:1\r\n");
    expect_success("phy_test phy_check_nick_value 1 2", "drv_phy_check_nick(chip_id=1) = 0 check_result=0xffffffff",
                   "drv_phy_nick:[ret]:0 check_result:-1\r\n");
    expect_success("phy_test phy_check_nick_value chip", "drv_phy_check_nick(chip_id=0) = 0 check_result=0",
                   "drv_phy_nick:[ret]:0 check_result:0\r\n");
    expect_failure("phy_test phy_check_nick_value 1", "drv_phy_check_nick(chip_id=1) = 0x12",
                   "drv_phy_nick:[ret]:18 check_result:0\r\n");
    expect_failure("phy_test phy_check_nick_value", "", "");
}
