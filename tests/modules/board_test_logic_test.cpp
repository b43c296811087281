// board_test, programmable logic and start-up software: every sub-command on the real program, with the driver
// scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(BoardLogicTest, GetCpldVer) {
    expect_success("board_test board_get_cpld_ver 1",
                   "drv_board_get_cpld_ver(inst_id=0xffffffff, cpld_id=1) = 0 ver=0x102",
                   printed("ver hex:0x00000102 dec:00000258\r\n", "para[0]=0x0 para[1]=0x102 "));
    expect_success("board_test board_get_cpld_ver 3 2",
                   "drv_board_get_cpld_ver(inst_id=3, cpld_id=2) = 0 ver=0x80000000",
                   printed("ver hex:0x80000000 dec:-2147483648\r\n", "para[0]=0x0 para[1]=0x80000000 "));
    expect_success("board_test board_get_cpld_ver 3 2 1", "drv_board_get_cpld_ver(inst_id=3, cpld_id=2) = 0 ver=1",
                   printed("ver hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success("board_test board_get_cpld_ver c", "drv_board_get_cpld_ver(inst_id=0xffffffff, cpld_id=0) = 0 ver=1",
                   printed("ver hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_failure("board_test board_get_cpld_ver 1",
                   "drv_board_get_cpld_ver(inst_id=0xffffffff, cpld_id=1) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_cpld_ver 1", "drv_board_get_cpld_ver(inst_id=0xffffffff, cpld_id=1) = 2 ver=9",
                   printed("", "para[0]=0x2 para[1]=0x9 "));
    expect_failure("board_test board_get_cpld_ver", "",
                   "./kestro_test board_test board_get_cpld_ver [inst_id cpld_id]\r\n");
}

TEST(BoardLogicTest, GetCpldNum) {
    expect_success("board_test board_get_cpld_num", "drv_board_get_cpld_num(inst_id=0xffffffff) = 0 num=2",
                   printed("num hex:0x00000002 dec:00000002\r\n", "para[0]=0x0 para[1]=0x2 "));
    expect_success("board_test board_get_cpld_num 4", "drv_board_get_cpld_num(inst_id=4) = 0 num=12",
                   printed("num hex:0x0000000c dec:00000012\r\n", "para[0]=0x0 para[1]=0xc "));
    expect_success("board_test board_get_cpld_num x 4", "drv_board_get_cpld_num(inst_id=0) = 0 num=0",
                   printed("num hex:0x00000000 dec:00000000\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_failure("board_test board_get_cpld_num", "drv_board_get_cpld_num(inst_id=0xffffffff) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(BoardLogicTest, GetCtrlFpgaNum) {
    expect_success("board_test board_get_ctrl_fpga_num", "drv_board_get_ctrl_fpga_num(inst_id=0xffffffff) = 0 num=1",
                   printed("num hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success("board_test board_get_ctrl_fpga_num 4", "drv_board_get_ctrl_fpga_num(inst_id=4) = 0 num=16",
                   printed("num hex:0x00000010 dec:00000016\r\n", "para[0]=0x0 para[1]=0x10 "));
    expect_success("board_test board_get_ctrl_fpga_num x 4", "drv_board_get_ctrl_fpga_num(inst_id=0) = 0 num=0",
                   printed("num hex:0x00000000 dec:00000000\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_failure("board_test board_get_ctrl_fpga_num", "drv_board_get_ctrl_fpga_num(inst_id=0xffffffff) = 0xdead",
                   printed("", "para[0]=0xdead para[1]=0x0 "));
}

TEST(BoardLogicTest, GetBiosVer) {
    expect_success("board_test board_get_bios_ver",
                   "drv_board_get_bios_ver(inst_id=0xffffffff, size=127) = 0 text=\"V1.02\"",
                   printed("ver:V1.02\r\n", "para[0]=0x0 para[1]=V1.02 "));
    expect_success("board_test board_get_bios_ver 4",
                   "drv_board_get_bios_ver(inst_id=4, size=127) = 0 text=\"start 3 % full\"",
                   printed("ver:start 3 % full\r\n", "para[0]=0x0 para[1]=start 3 % full "));
    expect_success("board_test board_get_bios_ver x 4", "drv_board_get_bios_ver(inst_id=0, size=127) = 0",
                   printed("ver:\r\n", "para[0]=0x0 para[1]= "));
    const std::string longest(126, 'v');
    expect_success("board_test board_get_bios_ver",
                   "drv_board_get_bios_ver(inst_id=0xffffffff, size=127) = 0 text=\"" + longest + "\"",
                   printed("ver:" + longest + "\r\n", "para[0]=0x0 para[1]=" + longest + " "));
}

TEST(BoardLogicTest, GetBiosVerFailure) {
    expect_failure("board_test board_get_bios_ver", "drv_board_get_bios_ver(inst_id=0xffffffff, size=127) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]= "));
    expect_failure("board_test board_get_bios_ver",
                   "drv_board_get_bios_ver(inst_id=0xffffffff, size=127) = 1 text=\"?\"",
                   printed("", "para[0]=0x1 para[1]=? "));
}

TEST(BoardLogicTest, GetArea) {
    expect_success("board_test board_get_area", "drv_board_get_area(inst_id=0xffffffff) = 0 area=1",
                   printed("area hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success("board_test board_get_area 7", "drv_board_get_area(inst_id=7) = 0 area=3",
                   printed("area hex:0x00000003 dec:00000003\r\n", "para[0]=0x0 para[1]=0x3 "));
    expect_success("board_test board_get_area x 7", "drv_board_get_area(inst_id=0) = 0 area=2",
                   printed("area hex:0x00000002 dec:00000002\r\n", "para[0]=0x0 para[1]=0x2 "));
    expect_failure("board_test board_get_area", "drv_board_get_area(inst_id=0xffffffff) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(BoardLogicTest, CheckBios) {
    expect_success("board_test board_check_bios 1", "drv_board_check_bios(area=1) = 0 result=0",
                   printed("check_bios hex:0x00000000 dec:00000000\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_check_bios 0x2 1", "drv_board_check_bios(area=2) = 0 result=31",
                   printed("check_bios hex:0x0000001f dec:00000031\r\n", "para[0]=0x0 para[1]=0x1f "));
    expect_success("board_test board_check_bios area", "drv_board_check_bios(area=0) = 0 result=1",
                   printed("check_bios hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_failure("board_test board_check_bios 1", "drv_board_check_bios(area=1) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_check_bios", "", "./kestro_test board_test board_check_bios [area]\r\n");
}

TEST(BoardLogicTest, GetCapability) {
    expect_success("board_test board_get_capability 6",
                   "drv_board_get_capability(inst_id=0xffffffff, type=6) = 0 capability=1",
                   printed("capability hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success("board_test board_get_capability 3 6",
                   "drv_board_get_capability(inst_id=3, type=6) = 0 capability=0xabcdef",
                   printed("capability hex:0x00abcdef dec:11259375\r\n", "para[0]=0x0 para[1]=0xabcdef "));
    expect_success("board_test board_get_capability 3 6 9",
                   "drv_board_get_capability(inst_id=3, type=6) = 0 capability=0",
                   printed("capability hex:0x00000000 dec:00000000\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_get_capability c",
                   "drv_board_get_capability(inst_id=0xffffffff, type=0) = 0 capability=1",
                   printed("capability hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_failure("board_test board_get_capability 6",
                   "drv_board_get_capability(inst_id=0xffffffff, type=6) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_capability", "",
                   "./kestro_test board_test board_get_capability [inst_id type]\r\n");
}
