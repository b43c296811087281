// board_test: trusted platform module, on the real program with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;
using namespace std::string_literals;

TEST(BoardTpmTest, OnlineStatus) {
    expect_success("board_test board_get_tpm_online_status",
                   "drv_board_get_tpm_online_status(inst_id=0xffffffff) = 0 status=1",
                   "success, tpm_online:0x00000001 \r\npara[0]=0x0 para[1]=0x1 "s + result_end);
    expect_success("board_test board_get_tpm_online_status 0x3", "drv_board_get_tpm_online_status(inst_id=3) = 0",
                   "success, tpm_online:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_get_tpm_online_status 1 2 3",
                   "drv_board_get_tpm_online_status(inst_id=1) = 0 status=0xfedcba98",
                   "success, tpm_online:0xfedcba98 \r\npara[0]=0x0 para[1]=0xfedcba98 "s + result_end);
    expect_success("board_test board_get_tpm_online_status board", "drv_board_get_tpm_online_status(inst_id=0) = 0",
                   "success, tpm_online:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_tpm_online_status",
                   "drv_board_get_tpm_online_status(inst_id=0xffffffff) = 0x811101a4 status=1",
                   "failed, tpm_online:0x00000001 ret:0x811101a4\r\npara[0]=0x811101a4 para[1]=0x1 "s + result_end);
}

TEST(BoardTpmTest, ActiveStatus) {
    expect_success("board_test board_get_tpm_active_status",
                   "drv_board_get_tpm_active_status(inst_id=0xffffffff) = 0 status=1",
                   "success, tpm_active:0x00000001 \r\npara[0]=0x0 para[1]=0x1 "s + result_end);
    expect_success("board_test board_get_tpm_active_status 0x3", "drv_board_get_tpm_active_status(inst_id=3) = 0",
                   "success, tpm_active:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_success("board_test board_get_tpm_active_status 1 2 3",
                   "drv_board_get_tpm_active_status(inst_id=1) = 0 status=0xfedcba98",
                   "success, tpm_active:0xfedcba98 \r\npara[0]=0x0 para[1]=0xfedcba98 "s + result_end);
    expect_success("board_test board_get_tpm_active_status board", "drv_board_get_tpm_active_status(inst_id=0) = 0",
                   "success, tpm_active:0x00000000 \r\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_tpm_active_status",
                   "drv_board_get_tpm_active_status(inst_id=0xffffffff) = 0x811101a4 status=1",
                   "failed, tpm_active:0x00000001 ret:0x811101a4\r\npara[0]=0x811101a4 para[1]=0x1 "s + result_end);
}
