// board_test, presence: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(BoardPresenceTest, GetOnlineStatusTakesOneAloneForAbsent) {
    expect_success("board_test board_get_online_status 3", "drv_board_get_online_status(inst_id=3) = 0 status=0",
                   printed("success, online_status: present\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_get_online_status 3", "drv_board_get_online_status(inst_id=3) = 0 status=1",
                   printed("success, online_status: not present\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success("board_test board_get_online_status 3", "drv_board_get_online_status(inst_id=3) = 0 status=2",
                   printed("success, online_status: present\r\n", "para[0]=0x0 para[1]=0x2 "));
}

TEST(BoardPresenceTest, GetOnlineStatusWords) {
    expect_failure("board_test board_get_online_status", "",
                   "./kestro_test board_test board_get_online_status [inst_id]\r\n");
    expect_success("board_test board_get_online_status 0xff000005 1 2",
                   "drv_board_get_online_status(inst_id=0xff000005) = 0 status=0",
                   printed("success, online_status: present\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_get_online_status slot", "drv_board_get_online_status(inst_id=0) = 0 status=0",
                   printed("success, online_status: present\r\n", "para[0]=0x0 para[1]=0x0 "));
}

TEST(BoardPresenceTest, GetOnlineStatusFailure) {
    expect_failure("board_test board_get_online_status 3", "drv_board_get_online_status(inst_id=3) = 0x811101a4",
                   printed("failed, online_status:0 ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_online_status 3", "drv_board_get_online_status(inst_id=3) = 7 status=1",
                   printed("failed, online_status:1 ret:0x7\r\n", "para[0]=0x7 para[1]=0x1 "));
    expect_failure("board_test board_get_online_status 3",
                   "drv_board_get_online_status(inst_id=3) = 7 status=0xffffffff",
                   printed("failed, online_status:-1 ret:0x7\r\n", "para[0]=0x7 para[1]=0xffffffff "));
}

TEST(BoardPresenceTest, GetOnlineStatusEx) {
    expect_success("board_test board_get_online_status_ex 9", "drv_board_get_online_status_ex(inst_id=9) = 0 status=0",
                   printed("success, online_status: present\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_get_online_status_ex 9 8",
                   "drv_board_get_online_status_ex(inst_id=9) = 0 status=1",
                   printed("success, online_status: not present\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success("board_test board_get_online_status_ex nine",
                   "drv_board_get_online_status_ex(inst_id=0) = 0 status=2",
                   printed("success, online_status: present\r\n", "para[0]=0x0 para[1]=0x2 "));
    expect_failure("board_test board_get_online_status_ex 9", "drv_board_get_online_status_ex(inst_id=9) = 0xdead",
                   printed("failed, online_status:0 ret:0xdead\r\n", "para[0]=0xdead para[1]=0x0 "));
    expect_failure("board_test board_get_online_status_ex", "",
                   "./kestro_test board_test board_get_online_status_ex [inst_id]\r\n");
}

TEST(BoardPresenceTest, SetOnlineStatusNeedsBothWords) {
    expect_success("board_test board_set_online_status 4 1", "drv_board_set_online_status(inst_id=4, status=1) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_online_status 4 1 2", "drv_board_set_online_status(inst_id=4, status=1) = 0",
                   printed("", "para[0]=0x0 "));
    expect_success("board_test board_set_online_status a b", "drv_board_set_online_status(inst_id=0, status=0) = 0",
                   printed("", "para[0]=0x0 "));
    expect_failure("board_test board_set_online_status 4 0", "drv_board_set_online_status(inst_id=4, status=0) = 0x31",
                   printed("", "para[0]=0x31 "));
    expect_failure("board_test board_set_online_status 4", "",
                   "./kestro_test board_test board_set_online_status [inst_id status]\r\n");
    expect_failure("board_test board_set_online_status", "",
                   "./kestro_test board_test board_set_online_status [inst_id status]\r\n");
}

TEST(BoardPresenceTest, GetSelfOnlineStatusShowsTheCodeAlone) {
    expect_success("board_test board_get_self_online_status", "drv_board_get_self_online_status() = 0 status=0",
                   printed("success, online_status: present\r\n", "para[0]=0x0 "));
    expect_success("board_test board_get_self_online_status 1", "drv_board_get_self_online_status() = 0 status=1",
                   printed("success, online_status: not present\r\n", "para[0]=0x0 "));
    expect_success("board_test board_get_self_online_status x y", "drv_board_get_self_online_status() = 0 status=2",
                   printed("success, online_status: present\r\n", "para[0]=0x0 "));
    expect_failure("board_test board_get_self_online_status", "drv_board_get_self_online_status() = 0x811101a4",
                   printed("failed, online_status:0 ret:0x811101a4\r\n", "para[0]=0x811101a4 "));
    expect_failure("board_test board_get_self_online_status", "drv_board_get_self_online_status() = 3 status=2",
                   printed("failed, online_status:2 ret:0x3\r\n", "para[0]=0x3 "));
}

TEST(BoardPresenceTest, GetPeerOnlineStatusShowsTheStatusInDecimal) {
    expect_success("board_test board_get_peer_online_status", "drv_board_get_peer_online_status() = 0 status=0",
                   printed("success, online_status: present\r\n", "para[0]=0x0 para[1]=0 "));
    expect_success("board_test board_get_peer_online_status 5", "drv_board_get_peer_online_status() = 0 status=1",
                   printed("success, online_status: not present\r\n", "para[0]=0x0 para[1]=1 "));
    expect_success("board_test board_get_peer_online_status x y",
                   "drv_board_get_peer_online_status() = 0 status=0xffffffff",
                   printed("success, online_status: present\r\n", "para[0]=0x0 para[1]=-1 "));
    expect_success("board_test board_get_peer_online_status", "drv_board_get_peer_online_status() = 0 status=20",
                   printed("success, online_status: present\r\n", "para[0]=0x0 para[1]=20 "));
    expect_failure("board_test board_get_peer_online_status", "drv_board_get_peer_online_status() = 0x811101a4",
                   printed("failed, online_status:0 ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0 "));
    expect_failure("board_test board_get_peer_online_status", "drv_board_get_peer_online_status() = 4 status=12",
                   printed("failed, online_status:12 ret:0x4\r\n", "para[0]=0x4 para[1]=12 "));
}

TEST(BoardPresenceTest, GetFullinStatus) {
    expect_success("board_test board_get_fullin_status", "drv_board_get_fullin_status(inst_id=0xffffffff) = 0 status=0",
                   printed("success, fullin_status:0x0000\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_get_fullin_status 5", "drv_board_get_fullin_status(inst_id=5) = 0 status=0x1a",
                   printed("success, fullin_status:0x001a\r\n", "para[0]=0x0 para[1]=0x1a "));
    expect_success("board_test board_get_fullin_status x 5",
                   "drv_board_get_fullin_status(inst_id=0) = 0 status=0x12345",
                   printed("success, fullin_status:0x12345\r\n", "para[0]=0x0 para[1]=0x12345 "));
    expect_failure("board_test board_get_fullin_status", "drv_board_get_fullin_status(inst_id=0xffffffff) = 0x811101a4",
                   printed("failed, fullin_status:0x0000 ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_fullin_status 5", "drv_board_get_fullin_status(inst_id=5) = 8 status=1",
                   printed("failed, fullin_status:0x0001 ret:0x8\r\n", "para[0]=0x8 para[1]=0x1 "));
}

TEST(BoardPresenceTest, CheckFullinStatus) {
    expect_success("board_test board_check_fullin_status",
                   "drv_board_check_fullin_status(inst_id=0xffffffff, size=128) = 0 status=0 dfx=\"all pins down\"",
                   printed("success, fullin_status:0x0000 dfx_info:all pins down\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_check_fullin_status 5",
                   "drv_board_check_fullin_status(inst_id=5, size=128) = 0 status=1 dfx=\"pin 3 up\"",
                   printed("success, fullin_status:0x0001 dfx_info:pin 3 up\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success("board_test board_check_fullin_status x 5",
                   "drv_board_check_fullin_status(inst_id=0, size=128) = 0 status=2",
                   printed("success, fullin_status:0x0002 dfx_info:\r\n", "para[0]=0x0 para[1]=0x2 "));
    const std::string longest(127, 'p');
    expect_success("board_test board_check_fullin_status",
                   "drv_board_check_fullin_status(inst_id=0xffffffff, size=128) = 0 status=1 dfx=\"" + longest + "\"",
                   printed("success, fullin_status:0x0001 dfx_info:" + longest + "\r\n", "para[0]=0x0 para[1]=0x1 "));
}

TEST(BoardPresenceTest, CheckFullinStatusFailure) {
    expect_failure(
        "board_test board_check_fullin_status",
        "drv_board_check_fullin_status(inst_id=0xffffffff, size=128) = 0x811101a4",
        printed("failed, fullin_status:0x0000 dfx_info: ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_check_fullin_status 5",
                   "drv_board_check_fullin_status(inst_id=5, size=128) = 9 status=0xab dfx=\"pin 3 up\"",
                   printed("failed, fullin_status:0x00ab dfx_info:pin 3 up ret:0x9\r\n", "para[0]=0x9 para[1]=0xab "));
}
