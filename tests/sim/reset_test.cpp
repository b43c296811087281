// Resets: what a reset leaves behind is found by the next process; flags, peer and button.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::vector<std::string> own_reasons{"reset_get_reason 0xffffffff 0", "reset_get_reason 0xffffffff 1",
                                           "reset_get_reason 0xffffffff 2", "reset_get_reason 0xffffffff 3"};

} // namespace

TEST(ResetDriver, NewBoardWasSwitchedOn) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"reset_get_code", "reset_get_mode"}), "0x0 0 2026 1 12\n0x0 1\n");
    EXPECT_EQ(calls_print(board, own_reasons), "0x0 1\n0x0 4\n0x0 2\n0x0 1\n");
}

TEST(ResetDriver, SelfBoardKeepsTheCodeAndNotesAWarmReset) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"reset_self_board 0xfedcba98 2008 12 31"}), ok);
    EXPECT_EQ(calls_print(board, {"reset_get_code", "reset_get_mode"}), "0x0 4275878552 2008 12 31\n0x0 0\n");
    EXPECT_EQ(calls_print(board, own_reasons), "0x0 4\n0x0 1\n0x0 4\n0x0 2\n");
}

TEST(ResetDriver, WithoutRebootKeepsTheCodeAlone) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"reset_self_board_without_reboot 7 65535 255 0"}), ok);
    EXPECT_EQ(calls_print(board, {"reset_get_code", "reset_get_mode"}), "0x0 7 65535 255 0\n0x0 1\n");
    EXPECT_EQ(calls_print(board, own_reasons), "0x0 1\n0x0 4\n0x0 2\n0x0 1\n");
}

TEST(ResetDriver, ResetOfABoardIsColdAndLeavesOthersAlone) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"reset_self_board 1 2026 1 1", "reset_board 0xff000005"}), ok + ok);
    EXPECT_EQ(calls_print(board, {"reset_get_reason 0xff000005 0", "reset_get_reason 0xff000005 1",
                                  "reset_get_reason 0xff000004 0", "reset_get_mode"}),
              "0x0 4\n0x0 1\n0x0 1\n0x0 0\n");
    EXPECT_EQ(calls_print(board, {"reset_board 0xffffffff"}), ok);
    EXPECT_EQ(calls_print(board, own_reasons), "0x0 4\n0x0 4\n0x0 1\n0x0 4\n");
    EXPECT_EQ(calls_print(board, {"reset_get_mode", "reset_get_code"}), "0x0 1\n0x0 1 2026 1 1\n");
}

TEST(ResetDriver, PeerOfTheMainProcessingUnits) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"reset_get_reason 0xff00000a 0", "reset_peer_board"}), "0x0 1\n0x0\n");
    EXPECT_EQ(calls_print(board, {"reset_get_reason 0xff00000a 0", "reset_get_reason 0xffffffff 0",
                                  "reset_get_peer_sys_ready"}),
              "0x0 4\n0x0 1\n0x0 1\n");
    const test_board slave = new_delivered("mpu_slave");
    EXPECT_EQ(calls_print(slave, {"reset_peer_board", "reset_get_reason 0xff000009 0", "reset_get_peer_sys_ready"}),
              "0x0\n0x0 4\n0x0 1\n");
}

TEST(ResetDriver, LineCardHasNeitherPeerNorButton) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(calls_print(board, {"reset_peer_board", "reset_get_peer_sys_ready", "reset_set_self_sys_ready 1",
                                  "reset_get_button_status"}),
              not_supported + not_supported + not_supported + not_supported);
}

TEST(ResetDriver, EmptyPeerSlot) {
    const test_board board = new_altered("mpu_master", {{"self/sim_board/unit/0/peer_slot", "11"}});
    EXPECT_EQ(calls_print(board, {"reset_peer_board", "reset_get_peer_sys_ready"}),
              no_such_instance + no_such_instance);
}

TEST(ResetDriver, FlagsAreReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"reset_get_soft_start_ok_flag", "reset_set_soft_start_ok_flag 0"}), "0x0 1\n0x0\n");
    EXPECT_EQ(calls_print(board, {"reset_get_soft_start_ok_flag", "reset_set_soft_start_ok_flag 2",
                                  "reset_get_soft_start_ok_flag"}),
              "0x0 0\n" + bad_value + "0x0 0\n");
    EXPECT_EQ(calls_print(board, {"reset_set_self_sys_ready 0", "reset_set_self_sys_ready 1",
                                  "reset_set_self_sys_ready 2", "reset_get_peer_sys_ready"}),
              ok + ok + bad_value + "0x0 1\n");
}

TEST(ResetDriver, Button) {
    EXPECT_EQ(calls_print(new_delivered("mpu_master"), {"reset_get_button_status"}), "0x0 0\n");
    const test_board pressed = new_changed("mpu_master", "name=\"button\" value=\"0\"", "name=\"button\" value=\"1\"");
    EXPECT_EQ(calls_print(pressed, {"reset_get_button_status"}), "0x0 1\n");
}

TEST(ResetDriver, ChipsInstancesAndReasonsThatAreNotThere) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"reset_chip 0xffffffff 0", "reset_chip 0xffffffff 2", "reset_chip 0xffffffff 3",
                                  "reset_chip 0xff000005 0", "reset_chip 0xff000006 0"}),
              ok + ok + no_such_device + not_supported + no_such_instance);
    EXPECT_EQ(calls_print(board, {"reset_get_reason 0xffffffff 4", "reset_get_reason 0xffffffff 0xffffffff",
                                  "reset_get_reason 0xff000001 0", "reset_board 0xff000006", "reset_board 7"}),
              no_such_device + no_such_device + no_such_instance + no_such_instance + no_such_instance);
}

TEST(ResetDriver, InitDeinitAndSync) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"reset_init 0xffffffff", "reset_deinit 0xff000005", "reset_init 0xff000006",
                                  "reset_deinit 0xff000001", "reset_sync_file_system"}),
              ok + ok + no_such_instance + no_such_instance + ok);
    const test_board slave = new_delivered("mpu_slave");
    EXPECT_EQ(calls_print(slave, {"reset_init 0xff000005", "reset_deinit 0xff000005", "reset_board 0xff000005",
                                  "reset_get_reason 0xff000005 0"}),
              not_supported + not_supported + not_supported + not_supported);
}

TEST(ResetDriver, MissingAreas) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        calls_print(board, {"reset_self_board null", "reset_self_board_without_reboot null", "reset_get_code null",
                            "reset_get_reason 0xffffffff 0 null", "reset_get_mode null", "reset_get_button_status null",
                            "reset_get_peer_sys_ready null", "reset_get_soft_start_ok_flag null"}),
        null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
            null_pointer);
}

} // namespace kestro_tests
