// board_test, power domains and solder joints: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(BoardPowerTest, SetPowerOn) {
    expect_success("board_test board_set_power_on 34", "drv_board_set_power_on(inst_id=0xffffffff, type=34) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_power_on 2 34", "drv_board_set_power_on(inst_id=2, type=34) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_power_on 2 0x22 5", "drv_board_set_power_on(inst_id=2, type=34) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_power_on core", "drv_board_set_power_on(inst_id=0xffffffff, type=0) = 0",
                   printed("", "para[0]=0x0 "));
    expect_failure("board_test board_set_power_on 35", "drv_board_set_power_on(inst_id=0xffffffff, type=35) = 0xdead",
                   printed("", "para[0]=0xdead "));
    expect_failure("board_test board_set_power_on", "",
                   "./kestro_test board_test board_set_power_on [inst_id type]\r\n");
}

TEST(BoardPowerTest, SetPowerOff) {
    expect_success("board_test board_set_power_off 34", "drv_board_set_power_off(inst_id=0xffffffff, type=34) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_power_off 2 34", "drv_board_set_power_off(inst_id=2, type=34) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_power_off 2 0x22 5", "drv_board_set_power_off(inst_id=2, type=34) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_power_off core", "drv_board_set_power_off(inst_id=0xffffffff, type=0) = 0",
                   printed("", "para[0]=0x0 "));
    expect_failure("board_test board_set_power_off 35", "drv_board_set_power_off(inst_id=0xffffffff, type=35) = 0xdead",
                   printed("", "para[0]=0xdead "));
    expect_failure("board_test board_set_power_off", "",
                   "./kestro_test board_test board_set_power_off [inst_id type]\r\n");
}

TEST(BoardPowerTest, GetPowerStatus) {
    expect_success("board_test board_get_power_status 4",
                   "drv_board_get_power_status(inst_id=0xffffffff, type=4) = 0 status=1",
                   printed("power_status hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success("board_test board_get_power_status 2 4",
                   "drv_board_get_power_status(inst_id=2, type=4) = 0 status=255",
                   printed("power_status hex:0x000000ff dec:00000255\r\n", "para[0]=0x0 para[1]=0xff "));
    expect_success("board_test board_get_power_status 2 4 6",
                   "drv_board_get_power_status(inst_id=2, type=4) = 0 status=0",
                   printed("power_status hex:0x00000000 dec:00000000\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_get_power_status core",
                   "drv_board_get_power_status(inst_id=0xffffffff, type=0) = 0 status=1",
                   printed("power_status hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_failure("board_test board_get_power_status 4",
                   "drv_board_get_power_status(inst_id=0xffffffff, type=4) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_power_status 4",
                   "drv_board_get_power_status(inst_id=0xffffffff, type=4) = 3 status=1",
                   printed("", "para[0]=0x3 para[1]=0x1 "));
    expect_failure("board_test board_get_power_status", "",
                   "./kestro_test board_test board_get_power_status [inst_id type]\r\n");
}

TEST(BoardFourCornerTest, GetFourCornerStatus) {
    expect_success("board_test board_get_four_corner_status 2",
                   "drv_board_get_four_corner_status(inst_id=0xffffffff, chip_id=2) = 0 status=0",
                   printed("type hex:0x00000000 dec:00000000\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_get_four_corner_status 5 2",
                   "drv_board_get_four_corner_status(inst_id=5, chip_id=2) = 0 status=10",
                   printed("type hex:0x0000000a dec:00000010\r\n", "para[0]=0x0 para[1]=0xa "));
    expect_success("board_test board_get_four_corner_status 5 2 1",
                   "drv_board_get_four_corner_status(inst_id=5, chip_id=2) = 0 status=1",
                   printed("type hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success("board_test board_get_four_corner_status chip",
                   "drv_board_get_four_corner_status(inst_id=0xffffffff, chip_id=0) = 0 status=1",
                   printed("type hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_failure("board_test board_get_four_corner_status 2",
                   "drv_board_get_four_corner_status(inst_id=0xffffffff, chip_id=2) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_four_corner_status", "",
                   "./kestro_test board_test board_get_four_corner_status [inst_id chip_id]\r\n");
}

TEST(BoardFourCornerTest, CheckFourCornerStatus) {
    expect_success("board_test board_check_four_corner_status 2",
                   "drv_board_check_four_corner_status(inst_id=0xffffffff, chip_id=2, size=128) = 0 status=0 "
                   "dfx=\"joints good\"",
                   printed("four_corner_status hex:0x0000 dec:0000\r\nfour_corner_status dfx_info:joints good\r\n",
                           "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_check_four_corner_status 5 2",
                   "drv_board_check_four_corner_status(inst_id=5, chip_id=2, size=128) = 0 status=26 dfx=\"joint C\"",
                   printed("four_corner_status hex:0x001a dec:0026\r\nfour_corner_status dfx_info:joint C\r\n",
                           "para[0]=0x0 para[1]=0x1a "));
    expect_success("board_test board_check_four_corner_status 5 2 1",
                   "drv_board_check_four_corner_status(inst_id=5, chip_id=2, size=128) = 0 status=0x12345",
                   printed("four_corner_status hex:0x12345 dec:74565\r\nfour_corner_status dfx_info:\r\n",
                           "para[0]=0x0 para[1]=0x12345 "));
    expect_success("board_test board_check_four_corner_status chip",
                   "drv_board_check_four_corner_status(inst_id=0xffffffff, chip_id=0, size=128) = 0 status=0xffffffff",
                   printed("four_corner_status hex:0xffffffff dec:-001\r\nfour_corner_status dfx_info:\r\n",
                           "para[0]=0x0 para[1]=0xffffffff "));
}

TEST(BoardFourCornerTest, CheckFourCornerStatusFailure) {
    expect_failure("board_test board_check_four_corner_status 2",
                   "drv_board_check_four_corner_status(inst_id=0xffffffff, chip_id=2, size=128) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_check_four_corner_status 2",
                   "drv_board_check_four_corner_status(inst_id=0xffffffff, chip_id=2, size=128) = 3 status=4 "
                   "dfx=\"joint A\"",
                   printed("", "para[0]=0x3 para[1]=0x4 "));
    expect_failure("board_test board_check_four_corner_status", "",
                   "./kestro_test board_test board_check_four_corner_status [inst_id chip_id]\r\n");
}
