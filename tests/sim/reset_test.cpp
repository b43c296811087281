// Resets: what a reset leaves behind is found by the next process; flags, peer and button.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::vector<std::string> own_reasons{"drv_reset_get_reason(index=0)", "drv_reset_get_reason(index=1)",
                                           "drv_reset_get_reason(index=2)", "drv_reset_get_reason(index=3)"};

} // namespace

TEST(ResetDriver, NewBoardWasSwitchedOn) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_reset_get_code()", "drv_reset_get_mode()"}),
              "0x0 code={code=0 year=2026 month=1 day=12}\n0x0 cool=1\n");
    EXPECT_EQ(answers(board, own_reasons), "0x0 reason=1\n0x0 reason=4\n0x0 reason=2\n0x0 reason=1\n");
}

TEST(ResetDriver, SelfBoardKeepsTheCodeAndNotesAWarmReset) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_reset_self_board(code={code=0xfedcba98 year=2008 month=12 day=31})"}), ok);
    EXPECT_EQ(answers(board, {"drv_reset_get_code()", "drv_reset_get_mode()"}),
              "0x0 code={code=0xfedcba98 year=2008 month=12 day=31}\n0x0 cool=0\n");
    EXPECT_EQ(answers(board, own_reasons), "0x0 reason=4\n0x0 reason=1\n0x0 reason=4\n0x0 reason=2\n");
}

TEST(ResetDriver, WithoutRebootKeepsTheCodeAlone) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_reset_self_board_without_reboot(code={code=7 year=65535 month=255 day=0})"}), ok);
    EXPECT_EQ(answers(board, {"drv_reset_get_code()", "drv_reset_get_mode()"}),
              "0x0 code={code=7 year=65535 month=255 day=0}\n0x0 cool=1\n");
    EXPECT_EQ(answers(board, own_reasons), "0x0 reason=1\n0x0 reason=4\n0x0 reason=2\n0x0 reason=1\n");
}

TEST(ResetDriver, ResetOfABoardIsColdAndLeavesOthersAlone) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_reset_self_board(code={code=1 year=2026 month=1 day=1})",
                              "drv_reset_board(inst_id=0xff000005)"}),
              ok + ok);
    EXPECT_EQ(answers(board, {"drv_reset_get_reason(inst_id=0xff000005, index=0)",
                              "drv_reset_get_reason(inst_id=0xff000005, index=1)",
                              "drv_reset_get_reason(inst_id=0xff000004, index=0)", "drv_reset_get_mode()"}),
              "0x0 reason=4\n0x0 reason=1\n0x0 reason=1\n0x0 cool=0\n");
    EXPECT_EQ(answers(board, {"drv_reset_board()"}), ok);
    EXPECT_EQ(answers(board, own_reasons), "0x0 reason=4\n0x0 reason=4\n0x0 reason=1\n0x0 reason=4\n");
    EXPECT_EQ(answers(board, {"drv_reset_get_mode()", "drv_reset_get_code()"}),
              "0x0 cool=1\n0x0 code={code=1 year=2026 month=1 day=1}\n");
}

TEST(ResetDriver, PeerOfTheMainProcessingUnits) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_reset_get_reason(inst_id=0xff00000a, index=0)", "drv_reset_peer_board()"}),
              "0x0 reason=1\n0x0\n");
    EXPECT_EQ(answers(board, {"drv_reset_get_reason(inst_id=0xff00000a, index=0)", "drv_reset_get_reason(index=0)",
                              "drv_reset_get_peer_sys_ready()"}),
              "0x0 reason=4\n0x0 reason=1\n0x0 mode=1\n");
    const test_board slave = new_delivered("mpu_slave");
    EXPECT_EQ(answers(slave, {"drv_reset_peer_board()", "drv_reset_get_reason(inst_id=0xff000009, index=0)",
                              "drv_reset_get_peer_sys_ready()"}),
              "0x0\n0x0 reason=4\n0x0 mode=1\n");
}

TEST(ResetDriver, LineCardHasNeitherPeerNorButton) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {"drv_reset_peer_board()", "drv_reset_get_peer_sys_ready()",
                              "drv_reset_set_self_sys_ready(mode=1)", "drv_reset_get_button_status()"}),
              not_supported + not_supported + not_supported + not_supported);
}

TEST(ResetDriver, EmptyPeerSlot) {
    const test_board board = new_altered("mpu_master", {{"self/sim_board/unit/0/peer_slot", "11"}});
    EXPECT_EQ(answers(board, {"drv_reset_peer_board()", "drv_reset_get_peer_sys_ready()"}),
              no_such_instance + no_such_instance);
}

TEST(ResetDriver, FlagsAreReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_reset_get_soft_start_ok_flag()", "drv_reset_set_soft_start_ok_flag(flag=0)"}),
              "0x0 flag=1\n0x0\n");
    EXPECT_EQ(answers(board, {"drv_reset_get_soft_start_ok_flag()", "drv_reset_set_soft_start_ok_flag(flag=2)",
                              "drv_reset_get_soft_start_ok_flag()"}),
              "0x0 flag=0\n" + bad_value + "0x0 flag=0\n");
    EXPECT_EQ(answers(board, {"drv_reset_set_self_sys_ready(mode=0)", "drv_reset_set_self_sys_ready(mode=1)",
                              "drv_reset_set_self_sys_ready(mode=2)", "drv_reset_get_peer_sys_ready()"}),
              ok + ok + bad_value + "0x0 mode=1\n");
}

TEST(ResetDriver, Button) {
    EXPECT_EQ(answers(new_delivered("mpu_master"), {"drv_reset_get_button_status()"}), "0x0 status=0\n");
    const test_board pressed = new_changed("mpu_master", "name=\"button\" value=\"0\"", "name=\"button\" value=\"1\"");
    EXPECT_EQ(answers(pressed, {"drv_reset_get_button_status()"}), "0x0 status=1\n");
}

TEST(ResetDriver, ChipsInstancesAndReasonsThatAreNotThere) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_reset_chip(chip_id=0)", "drv_reset_chip(chip_id=2)", "drv_reset_chip(chip_id=3)",
                              "drv_reset_chip(inst_id=0xff000005, chip_id=0)",
                              "drv_reset_chip(inst_id=0xff000006, chip_id=0)"}),
              ok + ok + no_such_device + not_supported + no_such_instance);
    EXPECT_EQ(answers(board, {"drv_reset_get_reason(index=4)", "drv_reset_get_reason(index=0xffffffff)",
                              "drv_reset_get_reason(inst_id=0xff000001, index=0)",
                              "drv_reset_board(inst_id=0xff000006)", "drv_reset_board(inst_id=7)"}),
              no_such_device + no_such_device + no_such_instance + no_such_instance + no_such_instance);
}

TEST(ResetDriver, InitDeinitAndSync) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board,
                      {"drv_reset_init()", "drv_reset_deinit(inst_id=0xff000005)", "drv_reset_init(inst_id=0xff000006)",
                       "drv_reset_deinit(inst_id=0xff000001)", "drv_reset_sync_file_system()"}),
              ok + ok + no_such_instance + no_such_instance + ok);
    const test_board slave = new_delivered("mpu_slave");
    EXPECT_EQ(
        answers(slave, {"drv_reset_init(inst_id=0xff000005)", "drv_reset_deinit(inst_id=0xff000005)",
                        "drv_reset_board(inst_id=0xff000005)", "drv_reset_get_reason(inst_id=0xff000005, index=0)"}),
        not_supported + not_supported + not_supported + not_supported);
}

TEST(ResetDriver, MissingAreas) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {"drv_reset_self_board(code=null)", "drv_reset_self_board_without_reboot(code=null)",
                        "drv_reset_get_code(code=null)", "drv_reset_get_reason(index=0, reason=null)",
                        "drv_reset_get_mode(cool=null)", "drv_reset_get_button_status(status=null)",
                        "drv_reset_get_peer_sys_ready(mode=null)", "drv_reset_get_soft_start_ok_flag(flag=null)"}),
        null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
            null_pointer);
}

} // namespace kestro_tests
