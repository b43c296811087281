// board_test: boot steps, factory-reset flag and black box, on the real program with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;
using namespace std::string_literals;

TEST(BoardBootTest, PeerBootstepOfAPresentPeer) {
    expect_success("board_test board_get_peer_bootstep",
                   "drv_board_get_peer_bootstep(inst_id=0xffffffff) = 0 step=18\n"
                   "drv_board_get_peer_online_status() = 0 status=0",
                   "bootstep:18\nsuccess, bootstep:18\npara[0]=0x0 para[1]=0x12 "s + result_end);
}

TEST(BoardBootTest, PeerBootstepOfAnAbsentPeer) {
    expect_failure("board_test board_get_peer_bootstep",
                   "drv_board_get_peer_bootstep(inst_id=0xffffffff) = 0 step=18\n"
                   "drv_board_get_peer_online_status() = 0 status=1",
                   "bootstep:18\nfailed, peer board not online\npara[0]=0xffffffff para[1]=0x12 "s + result_end);
}

TEST(BoardBootTest, PeerBootstepWithAnUnknownPeerStatusPrintsCodeZero) {
    expect_success("board_test board_get_peer_bootstep",
                   "drv_board_get_peer_bootstep(inst_id=0xffffffff) = 0 step=18\n"
                   "drv_board_get_peer_online_status() = 0 status=2",
                   "bootstep:18\nfailed, peer online ret:0x0\npara[0]=0x0 para[1]=0x12 "s + result_end);
}

TEST(BoardBootTest, PeerBootstepWhosePeerStatusFails) {
    expect_failure("board_test board_get_peer_bootstep",
                   "drv_board_get_peer_bootstep(inst_id=0xffffffff) = 0 step=18\n"
                   "drv_board_get_peer_online_status() = 0x31",
                   "bootstep:18\nfailed, peer online ret:0x31\npara[0]=0x31 para[1]=0x12 "s + result_end);
    expect_failure("board_test board_get_peer_bootstep",
                   "drv_board_get_peer_bootstep(inst_id=0xffffffff) = 0 step=18\n"
                   "drv_board_get_peer_online_status() = 0x31 status=1",
                   "bootstep:18\nfailed, peer online ret:0x31\npara[0]=0x31 para[1]=0x12 "s + result_end);
}

TEST(BoardBootTest, PeerBootstepThatFailsAsksNoFurther) {
    expect_failure("board_test board_get_peer_bootstep", "drv_board_get_peer_bootstep(inst_id=0xffffffff) = 0x811101a4",
                   "failed, bootstep ret:0x811101a4\npara[0]=0x811101a4 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_peer_bootstep", "drv_board_get_peer_bootstep(inst_id=0xffffffff) = 4 step=3",
                   "failed, bootstep ret:0x4\npara[0]=0x4 para[1]=0x3 "s + result_end);
}

TEST(BoardBootTest, PeerBootstepIgnoresWords) {
    expect_success("board_test board_get_peer_bootstep 5 peer 7",
                   "drv_board_get_peer_bootstep(inst_id=0xffffffff) = 0 step=0xffffffff\n"
                   "drv_board_get_peer_online_status() = 0",
                   "bootstep:-1\nsuccess, bootstep:-1\npara[0]=0x0 para[1]=0xffffffff "s + result_end);
}

TEST(BoardBootTest, SelfBootstep) {
    expect_success("board_test board_get_self_bootstep", "drv_board_get_self_bootstep(inst_id=0xffffffff) = 0 step=255",
                   "success, peer bootstep:255\npara[0]=0x0 para[1]=0xff "s + result_end);
    expect_success("board_test board_get_self_bootstep 5 self 7", "drv_board_get_self_bootstep(inst_id=0xffffffff) = 0",
                   "success, peer bootstep:0\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_self_bootstep", "drv_board_get_self_bootstep(inst_id=0xffffffff) = 8 step=2",
                   "failed, ret:0x8\npara[0]=0x8 para[1]=0x2 "s + result_end);
}

TEST(BoardBootTest, SetSelfBootstep) {
    expect_success("board_test board_set_self_bootstep 0x12",
                   "drv_board_set_self_bootstep(inst_id=0xffffffff, step=18) = 0",
                   "success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_self_bootstep 1 2 3",
                   "drv_board_set_self_bootstep(inst_id=0xffffffff, step=1) = 0",
                   "success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_self_bootstep done",
                   "drv_board_set_self_bootstep(inst_id=0xffffffff, step=0) = 0",
                   "success\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_set_self_bootstep 256",
                   "drv_board_set_self_bootstep(inst_id=0xffffffff, step=256) = 0xdead",
                   "failed, ret:0xdead\npara[0]=0xdead "s + result_end);
    expect_failure("board_test board_set_self_bootstep", "",
                   "./kestro_test board_test board_set_self_bootstep [self_bootstep]\r\n");
}

TEST(BoardBootTest, FactoryResetFlag) {
    expect_success("board_test board_get_factory_reset_flag",
                   "drv_board_get_factory_reset_flag(inst_id=0xffffffff) = 0 flag=1",
                   "success, flag:1\npara[0]=0x0 para[1]=0x1 "s + result_end);
    expect_success("board_test board_get_factory_reset_flag 5 flag 7",
                   "drv_board_get_factory_reset_flag(inst_id=0xffffffff) = 0",
                   "success, flag:0\npara[0]=0x0 para[1]=0x0 "s + result_end);
    expect_failure("board_test board_get_factory_reset_flag",
                   "drv_board_get_factory_reset_flag(inst_id=0xffffffff) = 8 flag=1",
                   "failed, ret:0x8\npara[0]=0x8 para[1]=0x1 "s + result_end);
}

TEST(BoardBootTest, BlackBoxEnable) {
    expect_success("board_test board_set_bbox_enable 0x1",
                   "drv_board_set_bbox_enable(inst_id=0xffffffff, enable=1) = 0",
                   "set bbox enable_status success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_bbox_enable 1 2 3",
                   "drv_board_set_bbox_enable(inst_id=0xffffffff, enable=1) = 0",
                   "set bbox enable_status success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_bbox_enable on", "drv_board_set_bbox_enable(inst_id=0xffffffff, enable=0) = 0",
                   "set bbox enable_status success\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_set_bbox_enable 2",
                   "drv_board_set_bbox_enable(inst_id=0xffffffff, enable=2) = 0xdead", "para[0]=0xdead "s + result_end);
    expect_failure("board_test board_set_bbox_enable", "",
                   "./kestro_test board_test board_set_bbox_enable [enable_status]\r\n");
}

TEST(BoardBootTest, BlackBoxTime) {
    expect_success("board_test board_set_bbox_time 0x3c",
                   "drv_board_set_bbox_time(inst_id=0xffffffff, time_value=60) = 0",
                   "set bbox time_value success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_bbox_time 30 2 3",
                   "drv_board_set_bbox_time(inst_id=0xffffffff, time_value=30) = 0",
                   "set bbox time_value success\npara[0]=0x0 "s + result_end);
    expect_success("board_test board_set_bbox_time soon",
                   "drv_board_set_bbox_time(inst_id=0xffffffff, time_value=0) = 0",
                   "set bbox time_value success\npara[0]=0x0 "s + result_end);
    expect_failure("board_test board_set_bbox_time 60",
                   "drv_board_set_bbox_time(inst_id=0xffffffff, time_value=60) = 0xdead",
                   "para[0]=0xdead "s + result_end);
    expect_failure("board_test board_set_bbox_time", "",
                   "./kestro_test board_test board_set_bbox_time [time_value]\r\n");
}
