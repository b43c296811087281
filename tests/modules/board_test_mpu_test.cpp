// board_test: MPU status and the checks of MPU and interrupt lines, on the real program with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;
using namespace std::string_literals;

TEST(BoardMpuTest, StatusNamesTheUnit) {
    expect_success("board_test board_get_mpu_status", "drv_board_get_mpu_status(inst_id=0xffffffff, size=127) = 0",
                   "status:MPUA\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_get_mpu_status",
                   "drv_board_get_mpu_status(inst_id=0xffffffff, size=127) = 0 status=1 dfx=\"slot b\"",
                   "status:MPUB\r\npara[0]=0x0 para[1]=0x1 "s + result_end);
}

TEST(BoardMpuTest, StatusThatIsNeitherUnit) {
    expect_success("board_test board_get_mpu_status",
                   "drv_board_get_mpu_status(inst_id=0xffffffff, size=127) = 0 status=2 dfx=\"id pins 0x2\"",
                   "status:Error status, dfx_msg:id pins 0x2\r\npara[0]=0x0 para[1]=0x2 "s + result_end);
}

TEST(BoardMpuTest, StatusIgnoresWords) {
    expect_success("board_test board_get_mpu_status 5 unit 7",
                   "drv_board_get_mpu_status(inst_id=0xffffffff, size=127) = 0",
                   "status:MPUA\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
}

TEST(BoardMpuTest, StatusFailure) {
    expect_failure("board_test board_get_mpu_status",
                   "drv_board_get_mpu_status(inst_id=0xffffffff, size=127) = 0x41 status=1 dfx=\"logic silent\"",
                   "failed, dfx_msg:logic silent ret:0x41\r\npara[0]=0x41 para[1]=0x1 "s + result_end);
    expect_failure("board_test board_get_mpu_status",
                   "drv_board_get_mpu_status(inst_id=0xffffffff, size=127) = 0x811101a4",
                   "failed, dfx_msg: ret:0x811101a4\r\npara[0]=0x811101a4 para[1]=0x0 "s + result_end);
}

TEST(BoardMpuTest, CheckMpuStatus) {
    expect_success("board_test board_check_mpu_status",
                   "drv_board_check_mpu_status(inst_id=0xffffffff, size=127) = 0 result=0 dfx=\"all well\"",
                   "result:OK\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_check_mpu_status",
                   "drv_board_check_mpu_status(inst_id=0xffffffff, size=127) = 0 result=3 dfx=\"two masters\"",
                   "result:3, dfx_msg:two masters\r\npara[0]=0x0 para[1]=0x3 "s + result_end);
    expect_success("board_test board_check_mpu_status 5 unit 7",
                   "drv_board_check_mpu_status(inst_id=0xffffffff, size=127) = 0 result=0xffffffff",
                   "result:-1, dfx_msg:\r\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
}

TEST(BoardMpuTest, CheckMpuStatusFailure) {
    expect_failure("board_test board_check_mpu_status",
                   "drv_board_check_mpu_status(inst_id=0xffffffff, size=127) = 0x41 result=3 dfx=\"logic silent\"",
                   "failed, dfx_msg:logic silent ret:0x41\r\npara[0]=0x41 para[1]=0x3 "s + result_end);
    expect_failure("board_test board_check_mpu_status",
                   "drv_board_check_mpu_status(inst_id=0xffffffff, size=127) = 0x41",
                   "failed, dfx_msg: ret:0x41\r\npara[0]=0x41 para[1]=0x0 "s + result_end);
}

TEST(BoardMpuTest, CheckIntStatus) {
    expect_success("board_test board_check_int_status 6 0x2",
                   "drv_board_check_int_status(index_id=6, type=2, size=127) = 0 dfx=\"idle\"",
                   "result:OK\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_check_int_status 6 2",
                   "drv_board_check_int_status(index_id=6, type=2, size=127) = 0 result=1 dfx=\"line stuck low\"",
                   "result:1, dfx_msg:line stuck low\r\npara[0]=0x0 para[1]=0x1 "s + result_end);
}

TEST(BoardMpuTest, CheckIntStatusWords) {
    expect_success("board_test board_check_int_status 1 2 3",
                   "drv_board_check_int_status(index_id=1, type=2, size=127) = 0",
                   "result:OK\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_check_int_status line 3x",
                   "drv_board_check_int_status(index_id=0, type=3, size=127) = 0",
                   "result:OK\r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_check_int_status 1", "",
                   "./kestro_test board_test board_check_int_status [index_id type]\r\n");
    expect_failure("board_test board_check_int_status", "",
                   "./kestro_test board_test board_check_int_status [index_id type]\r\n");
}

TEST(BoardMpuTest, CheckIntStatusFailure) {
    expect_failure("board_test board_check_int_status 1 2",
                   "drv_board_check_int_status(index_id=1, type=2, size=127) = 0xdead result=9 dfx=\"no such line\"",
                   "failed, dfx_msg:no such line ret:0xdead\r\npara[0]=0xdead para[1]=0x9 "s + result_end);
}
