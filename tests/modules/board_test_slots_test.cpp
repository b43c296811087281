// board_test, slots: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(BoardSlotsTest, GetSelfSlotid) {
    expect_success("board_test board_get_self_slotid", "drv_board_get_self_slotid() = 0 slot_id=17",
                   printed("success, self slot_id:17\r\n", "para[0]=0x0 para[1]=0x11 "));
    expect_success("board_test board_get_self_slotid 4 x", "drv_board_get_self_slotid() = 0 slot_id=0xffffffff",
                   printed("success, self slot_id:-1\r\n", "para[0]=0x0 para[1]=0xffffffff "));
    expect_failure("board_test board_get_self_slotid", "drv_board_get_self_slotid() = 0x811101a4",
                   printed("failed, self slot_id:0 ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_self_slotid x", "drv_board_get_self_slotid() = 5 slot_id=12",
                   printed("failed, self slot_id:12 ret:0x5\r\n", "para[0]=0x5 para[1]=0xc "));
}

TEST(BoardSlotsTest, GetPeerSlotid) {
    expect_success("board_test board_get_peer_slotid", "drv_board_get_peer_slotid() = 0 slot_id=18",
                   printed("success, peer slot_id:18\r\n", "para[0]=0x0 para[1]=0x12 "));
    expect_success("board_test board_get_peer_slotid 4 x", "drv_board_get_peer_slotid() = 0 slot_id=0xffffffff",
                   printed("success, peer slot_id:-1\r\n", "para[0]=0x0 para[1]=0xffffffff "));
    expect_failure("board_test board_get_peer_slotid", "drv_board_get_peer_slotid() = 0xdead",
                   printed("failed, peer slot_id:0 ret:0xdead\r\n", "para[0]=0xdead para[1]=0x0 "));
    expect_failure("board_test board_get_peer_slotid x", "drv_board_get_peer_slotid() = 5 slot_id=10",
                   printed("failed, peer slot_id:10 ret:0x5\r\n", "para[0]=0x5 para[1]=0xa "));
}

TEST(BoardSlotsTest, GetSelfLogicSlotid) {
    expect_success("board_test board_get_self_logic_slotid", "drv_board_get_self_logic_slotid() = 0 slot_id=100",
                   printed("success, self logic slot_id:100\r\n", "para[0]=0x0 para[1]=0x64 "));
    expect_success("board_test board_get_self_logic_slotid 4 x", "drv_board_get_self_logic_slotid() = 0 slot_id=0",
                   printed("success, self logic slot_id:0\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_failure("board_test board_get_self_logic_slotid", "drv_board_get_self_logic_slotid() = 0x811101a4",
                   printed("failed, self logic slot_id:0 ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_self_logic_slotid x", "drv_board_get_self_logic_slotid() = 2 slot_id=33",
                   printed("failed, self logic slot_id:33 ret:0x2\r\n", "para[0]=0x2 para[1]=0x21 "));
}

TEST(BoardSlotsTest, GetPeerLogicSlotid) {
    expect_success("board_test board_get_peer_logic_slotid", "drv_board_get_peer_logic_slotid() = 0 slot_id=101",
                   printed("success, peer logic slot_id:101\r\n", "para[0]=0x0 para[1]=0x65 "));
    expect_success("board_test board_get_peer_logic_slotid 4 x", "drv_board_get_peer_logic_slotid() = 0 slot_id=1",
                   printed("success, peer logic slot_id:1\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_failure("board_test board_get_peer_logic_slotid", "drv_board_get_peer_logic_slotid() = 0x811101a4",
                   printed("failed, peer logic slot_id:0 ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_peer_logic_slotid x", "drv_board_get_peer_logic_slotid() = 2 slot_id=34",
                   printed("failed, peer logic slot_id:34 ret:0x2\r\n", "para[0]=0x2 para[1]=0x22 "));
}

TEST(BoardSlotsTest, CheckSlotid) {
    expect_success("board_test board_check_slotid",
                   "drv_board_check_slotid(inst_id=0xffffffff, size=128) = 0 result=0 dfx=\"pins agree\"",
                   printed("success, check_result:0 dfx:pins agree\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_check_slotid 3",
                   "drv_board_check_slotid(inst_id=3, size=128) = 0 result=10 dfx=\"pin 2 differs\"",
                   printed("success, check_result:10 dfx:pin 2 differs\r\n", "para[0]=0x0 para[1]=0xa "));
    expect_success("board_test board_check_slotid slot 3",
                   "drv_board_check_slotid(inst_id=0, size=128) = 0 result=0xffffffff",
                   printed("success, check_result:-1 dfx:\r\n", "para[0]=0x0 para[1]=0xffffffff "));
}

TEST(BoardSlotsTest, CheckSlotidFailure) {
    expect_failure("board_test board_check_slotid", "drv_board_check_slotid(inst_id=0xffffffff, size=128) = 0x811101a4",
                   printed("failed, check_result:0 dfx: ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_check_slotid 3",
                   "drv_board_check_slotid(inst_id=3, size=128) = 6 result=15 dfx=\"no latch\"",
                   printed("failed, check_result:15 dfx:no latch ret:0x6\r\n", "para[0]=0x6 para[1]=0xf "));
}

TEST(BoardSlotsTest, GetCardOkAsksTheBoardItselfForASlot) {
    expect_success("board_test board_get_card_ok 3", "drv_board_get_card_ok(inst_id=0xffffffff, slot_id=3) = 0 ok=0",
                   printed("type hex:0x00000000 dec:00000000\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("board_test board_get_card_ok 0x11 4",
                   "drv_board_get_card_ok(inst_id=0xffffffff, slot_id=17) = 0 ok=26",
                   printed("type hex:0x0000001a dec:00000026\r\n", "para[0]=0x0 para[1]=0x1a "));
    expect_success("board_test board_get_card_ok card", "drv_board_get_card_ok(inst_id=0xffffffff, slot_id=0) = 0 ok=1",
                   printed("type hex:0x00000001 dec:00000001\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_failure("board_test board_get_card_ok 3",
                   "drv_board_get_card_ok(inst_id=0xffffffff, slot_id=3) = 0x811101a4",
                   printed("", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("board_test board_get_card_ok 3", "drv_board_get_card_ok(inst_id=0xffffffff, slot_id=3) = 4 ok=2",
                   printed("", "para[0]=0x4 para[1]=0x2 "));
    expect_failure("board_test board_get_card_ok", "", "./kestro_test board_test board_get_card_ok [slot_id]\r\n");
}
