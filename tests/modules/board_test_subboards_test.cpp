// board_test: sub-boards and bill-of-material numbers, on the real program with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;
using namespace std::string_literals;

TEST(BoardSubboardsTest, Type) {
    expect_success("board_test subboard_get_type 2",
                   "drv_subboard_get_type(inst_id=0xffffffff, subboard_id=2) = 0 type=4660",
                   "type hex:0x00001234 dec:00004660\r\npara[0]=0x0 para[1]=0x1234 "s + result_end);
    expect_success("board_test subboard_get_type 0x10 3", "drv_subboard_get_type(inst_id=16, subboard_id=3) = 0",
                   "type hex:0x00000000 dec:00000000\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test subboard_get_type 5 6 7",
                   "drv_subboard_get_type(inst_id=5, subboard_id=6) = 0 type=0xffffffff",
                   "type hex:0xffffffff dec:-0000001\r\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_success("board_test subboard_get_type sub",
                   "drv_subboard_get_type(inst_id=0xffffffff, subboard_id=0) = 0 type=1",
                   "type hex:0x00000001 dec:00000001\r\npara[0]=0x0 para[1]=0x1 "s + result_end);
    expect_failure("board_test subboard_get_type 2",
                   "drv_subboard_get_type(inst_id=0xffffffff, subboard_id=2) = 0x811101a4",
                   "para[0]=0x811101a4 para[1]=0x0 "s + result_end);
    expect_failure("board_test subboard_get_type", "",
                   "./kestro_test board_test subboard_get_type [inst_id subboard_id]\r\n");
}

TEST(BoardSubboardsTest, PcbVer) {
    expect_success("board_test subboard_get_pcb_ver 2",
                   "drv_subboard_get_pcb_ver(inst_id=0xffffffff, subboard_id=2) = 0 ver=258",
                   "pcb_ver hex:0x00000102 dec:00000258\r\npara[0]=0x0 para[1]=0x102 "s + result_end);
    expect_success("board_test subboard_get_pcb_ver 0x10 3", "drv_subboard_get_pcb_ver(inst_id=16, subboard_id=3) = 0",
                   "pcb_ver hex:0x00000000 dec:00000000\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test subboard_get_pcb_ver 5 6 7",
                   "drv_subboard_get_pcb_ver(inst_id=5, subboard_id=6) = 0 ver=0xffffffff",
                   "pcb_ver hex:0xffffffff dec:-0000001\r\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_success("board_test subboard_get_pcb_ver sub",
                   "drv_subboard_get_pcb_ver(inst_id=0xffffffff, subboard_id=0) = 0 ver=1",
                   "pcb_ver hex:0x00000001 dec:00000001\r\npara[0]=0x0 para[1]=0x1 "s + result_end);
    expect_failure("board_test subboard_get_pcb_ver 2",
                   "drv_subboard_get_pcb_ver(inst_id=0xffffffff, subboard_id=2) = 5 ver=3",
                   "para[0]=0x5 para[1]=0x3 "s + result_end);
    expect_failure("board_test subboard_get_pcb_ver", "",
                   "./kestro_test board_test subboard_get_pcb_ver [inst_id subboard_id]\r\n");
}

TEST(BoardSubboardsTest, BomVer) {
    expect_success("board_test subboard_get_bom_ver 2",
                   "drv_subboard_get_bom_ver(inst_id=0xffffffff, subboard_id=2) = 0 ver=258",
                   "bom_ver hex:0x00000102 dec:00000258\r\npara[0]=0x0 para[1]=0x102 "s + result_end);
    expect_success("board_test subboard_get_bom_ver 0x10 3", "drv_subboard_get_bom_ver(inst_id=16, subboard_id=3) = 0",
                   "bom_ver hex:0x00000000 dec:00000000\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test subboard_get_bom_ver 5 6 7",
                   "drv_subboard_get_bom_ver(inst_id=5, subboard_id=6) = 0 ver=0xffffffff",
                   "bom_ver hex:0xffffffff dec:-0000001\r\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_success("board_test subboard_get_bom_ver sub",
                   "drv_subboard_get_bom_ver(inst_id=0xffffffff, subboard_id=0) = 0 ver=1",
                   "bom_ver hex:0x00000001 dec:00000001\r\npara[0]=0x0 para[1]=0x1 "s + result_end);
    expect_failure("board_test subboard_get_bom_ver 2",
                   "drv_subboard_get_bom_ver(inst_id=0xffffffff, subboard_id=2) = 5 ver=3",
                   "para[0]=0x5 para[1]=0x3 "s + result_end);
    expect_failure("board_test subboard_get_bom_ver", "",
                   "./kestro_test board_test subboard_get_bom_ver [inst_id subboard_id]\r\n");
}

TEST(BoardSubboardsTest, OnlineStatus) {
    expect_success("board_test subboard_get_online_status 2",
                   "drv_subboard_get_online_status(inst_id=0xffffffff, subboard_id=2) = 0 status=1",
                   "online_status hex:0x00000001 dec:00000001\r\npara[0]=0x0 para[1]=0x1 "s + result_end);
    expect_success("board_test subboard_get_online_status 0x10 3",
                   "drv_subboard_get_online_status(inst_id=16, subboard_id=3) = 0",
                   "online_status hex:0x00000000 dec:00000000\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test subboard_get_online_status 5 6 7",
                   "drv_subboard_get_online_status(inst_id=5, subboard_id=6) = 0 status=16",
                   "online_status hex:0x00000010 dec:00000016\r\npara[0]=0x0 para[1]=0x10 "s + result_end);
    expect_success("board_test subboard_get_online_status sub",
                   "drv_subboard_get_online_status(inst_id=0xffffffff, subboard_id=0) = 0",
                   "online_status hex:0x00000000 dec:00000000\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test subboard_get_online_status 2",
                   "drv_subboard_get_online_status(inst_id=0xffffffff, subboard_id=2) = 5 status=1",
                   "para[0]=0x5 para[1]=0x1 "s + result_end);
    expect_failure("board_test subboard_get_online_status", "",
                   "./kestro_test board_test subboard_get_online_status [inst_id subboard_id]\r\n");
}

TEST(BoardSubboardsTest, OnlineStatusEx) {
    expect_success(
        "board_test subboard_get_online_status_ex 2",
        "drv_subboard_get_online_status_ex(inst_id=0xffffffff, subboard_id=2, size=128) = 0 status=1 dfx=\"pin high\"",
        "online_status:1 dfx:pin high\r\npara[0]=0x0 para[1]=0x1 "s + result_end);
    expect_success("board_test subboard_get_online_status_ex 0x10 3",
                   "drv_subboard_get_online_status_ex(inst_id=16, subboard_id=3, size=128) = 0",
                   "online_status:0 dfx:\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test subboard_get_online_status_ex 5 6 7",
                   "drv_subboard_get_online_status_ex(inst_id=5, subboard_id=6, size=128) = 0 status=0xffffffff",
                   "online_status:-1 dfx:\r\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
    expect_success("board_test subboard_get_online_status_ex sub",
                   "drv_subboard_get_online_status_ex(inst_id=0xffffffff, subboard_id=0, size=128) = 0",
                   "online_status:0 dfx:\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure(
        "board_test subboard_get_online_status_ex 2",
        "drv_subboard_get_online_status_ex(inst_id=0xffffffff, subboard_id=2, size=128) = 5 status=1 dfx=\"no pin\"",
        "para[0]=0x5 para[1]=0x1 "s + result_end);
    expect_failure("board_test subboard_get_online_status_ex", "",
                   "./kestro_test board_test subboard_get_online_status_ex [inst_id subboard_id]\r\n");
}

TEST(BoardSubboardsTest, BomIdOfTheBoard) {
    expect_success("board_test board_get_bom_id", "drv_board_get_bom_id(inst_id=0xffffffff) = 0 bom_id=171",
                   "success, bom id:0x000000ab \r\npara[0]=0x0 para[1]=0xab "s + result_end);
    expect_success("board_test board_get_bom_id 0x3", "drv_board_get_bom_id(inst_id=3) = 0",
                   "success, bom id:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_get_bom_id 1 2 3", "drv_board_get_bom_id(inst_id=1) = 0 bom_id=0xfedcba98",
                   "success, bom id:0xfedcba98 \r\npara[0]=0x0 para[1]=0xfedcba98 "s + result_end);
    expect_success("board_test board_get_bom_id board", "drv_board_get_bom_id(inst_id=0) = 0",
                   "success, bom id:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_bom_id", "drv_board_get_bom_id(inst_id=0xffffffff) = 0x31 bom_id=7",
                   "failed, bom id:0x00000007 ret:0x31\r\npara[0]=0x31 para[1]=0x7 "s + result_end);
}

TEST(BoardSubboardsTest, BomIdOfASubboard) {
    expect_success("board_test subboard_get_bom_id 2",
                   "drv_subboard_get_bom_id(inst_id=0xffffffff, subboard_id=2) = 0 bom_id=171",
                   "success, bom id:0x000000ab \r\npara[0]=0x0 para[1]=0xab "s + result_end);
    expect_success("board_test subboard_get_bom_id 0x10 3", "drv_subboard_get_bom_id(inst_id=16, subboard_id=3) = 0",
                   "success, bom id:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test subboard_get_bom_id 5 6 7",
                   "drv_subboard_get_bom_id(inst_id=5, subboard_id=6) = 0 bom_id=0xfedcba98",
                   "success, bom id:0xfedcba98 \r\npara[0]=0x0 para[1]=0xfedcba98 "s + result_end);
    expect_success("board_test subboard_get_bom_id sub",
                   "drv_subboard_get_bom_id(inst_id=0xffffffff, subboard_id=0) = 0",
                   "success, bom id:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test subboard_get_bom_id 2",
                   "drv_subboard_get_bom_id(inst_id=0xffffffff, subboard_id=2) = 0x31 bom_id=7",
                   "para[0]=0x31 para[1]=0x7 "s + result_end);
    expect_failure("board_test subboard_get_bom_id", "",
                   "./kestro_test board_test subboard_get_bom_id [inst_id subboard_id]\r\n");
}
