// reset_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(ResetTest, UsageListsTheSubCommandsInOrder) {
    expect_run("reset_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_reset_init   inst_id\n"
               " drv_reset_deinit inst_id\n"
               " drv_reset_chip  inst_id chip_id\n"
               " drv_reset_board inst_id\n"
               " drv_reset_self_board set_code\n"
               " drv_reset_self_board_without_reboot void\n"
               " drv_reset_peer_board void\n"
               " drv_reset_get_code get_code\n"
               " drv_reset_get_reason inst_id index\n"
               " drv_reset_get_mode get_cool\n"
               " drv_reset_sync_file_system void\n"
               " drv_reset_get_button_status void\n"
               " drv_reset_set_self_sys_ready set_mode\n"
               " drv_reset_get_peer_sys_ready get_mode\n"
               " drv_reset_set_soft_start_ok_flag set_flag\n"
               " drv_reset_get_soft_start_ok_flag get_flag\n",
               0);
}

TEST(ResetTest, BannersHaveBlankLinesAround) {
    expect_success("reset_test drv_reset_init", "drv_reset_init(inst_id=0xffffffff) = 0",
                   "\n\n*********   test_reset_init test begin:  ********\n\n\n"
                   "drv_reset_init:: inst_id:0xffffffff ret:0x0\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n"
                   "\n\n*********   test_reset_init test   end:  ********\n\n\n");
}

TEST(ResetTest, Init) {
    expect_success(
        "reset_test drv_reset_init 0xff000005", "drv_reset_init(inst_id=0xff000005) = 0",
        framed(banners::wide, "test_reset_init", "drv_reset_init:: inst_id:0xff000005 ret:0x0\n", "para[0]=0x0 "));
    expect_success(
        "reset_test drv_reset_init 1 2", "drv_reset_init(inst_id=0xffffffff) = 0",
        framed(banners::wide, "test_reset_init", "drv_reset_init:: inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_init board", "drv_reset_init(inst_id=0) = 0",
                   framed(banners::wide, "test_reset_init", "drv_reset_init:: inst_id:0x0 ret:0x0\n", "para[0]=0x0 "));
    expect_failure(
        "reset_test drv_reset_init 010", "drv_reset_init(inst_id=8) = 0x12",
        framed(banners::wide, "test_reset_init", "drv_reset_init:: inst_id:0x8 ret:0x12\n", "para[0]=0x12 "));
}

TEST(ResetTest, Deinit) {
    expect_success(
        "reset_test drv_reset_deinit", "drv_reset_deinit(inst_id=0xffffffff) = 0",
        framed(banners::wide, "test_reset_deinit", "drv_reset_deinit:: inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
    expect_success(
        "reset_test drv_reset_deinit 3", "drv_reset_deinit(inst_id=3) = 0",
        framed(banners::wide, "test_reset_deinit", "drv_reset_deinit:: inst_id:0x3 ret:0x0\n", "para[0]=0x0 "));
    expect_success(
        "reset_test drv_reset_deinit 3 4 5", "drv_reset_deinit(inst_id=0xffffffff) = 0",
        framed(banners::wide, "test_reset_deinit", "drv_reset_deinit:: inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
    expect_success(
        "reset_test drv_reset_deinit x", "drv_reset_deinit(inst_id=0) = 0",
        framed(banners::wide, "test_reset_deinit", "drv_reset_deinit:: inst_id:0x0 ret:0x0\n", "para[0]=0x0 "));
    expect_failure("reset_test drv_reset_deinit", "drv_reset_deinit(inst_id=0xffffffff) = 0x811101a4",
                   framed(banners::wide, "test_reset_deinit", "drv_reset_deinit:: inst_id:0xffffffff ret:0x811101a4\n",
                          "para[0]=0x811101a4 "));
}

TEST(ResetTest, ChipWithOneWordIsAChipOfTheBoardItself) {
    expect_success("reset_test drv_reset_chip 3", "drv_reset_chip(inst_id=0xffffffff, chip_id=3) = 0",
                   framed(banners::wide, "test_reset_chip",
                          "drv_reset_chip:: inst_id:0xffffffff chip: 3 reset 0x0 ret 0 \r\n", "para[0]=0x0 "));
}

TEST(ResetTest, Chip) {
    expect_success("reset_test drv_reset_chip 0 3", "drv_reset_chip(inst_id=0, chip_id=3) = 0",
                   framed(banners::wide, "test_reset_chip", "drv_reset_chip:: inst_id:0x0 chip: 3 reset 0x0 ret 0 \r\n",
                          "para[0]=0x0 "));
    expect_success("reset_test drv_reset_chip", "drv_reset_chip(inst_id=0xffffffff, chip_id=0) = 0",
                   framed(banners::wide, "test_reset_chip",
                          "input error : in_num : 0 over [1-2] .\n"
                          "drv_reset_chip:: inst_id:0xffffffff chip: 0 reset 0x0 ret 0 \r\n",
                          "para[0]=0x0 "));
    expect_success("reset_test drv_reset_chip 0x10 6 7", "drv_reset_chip(inst_id=0xffffffff, chip_id=16) = 0",
                   framed(banners::wide, "test_reset_chip",
                          "drv_reset_chip:: inst_id:0xffffffff chip: 16 reset 0x0 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_chip 5 all", "drv_reset_chip(inst_id=5, chip_id=0) = 0",
                   framed(banners::wide, "test_reset_chip", "drv_reset_chip:: inst_id:0x5 chip: 0 reset 0x0 ret 0 \r\n",
                          "para[0]=0x0 "));
    expect_success("reset_test drv_reset_chip 0xffffffff", "drv_reset_chip(inst_id=0xffffffff, chip_id=0xffffffff) = 0",
                   framed(banners::wide, "test_reset_chip",
                          "drv_reset_chip:: inst_id:0xffffffff chip: -1 reset 0x0 ret 0 \r\n", "para[0]=0x0 "));
}

TEST(ResetTest, ChipShowsTheFailureInBothNotations) {
    expect_failure("reset_test drv_reset_chip 1 2", "drv_reset_chip(inst_id=1, chip_id=2) = 0x811101a4",
                   framed(banners::wide, "test_reset_chip",
                          "drv_reset_chip:: inst_id:0x1 chip: 2 reset 0x811101a4 ret -2129591900 \r\n",
                          "para[0]=0x811101a4 "));
}

TEST(ResetTest, Board) {
    expect_success("reset_test drv_reset_board", "drv_reset_board(inst_id=0xffffffff) = 0",
                   framed(banners::wide, "test_reset_board",
                          "drv_reset_board:: inst_id:0xffffffff reset board:0x0 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_board 0xff000007", "drv_reset_board(inst_id=0xff000007) = 0",
                   framed(banners::wide, "test_reset_board",
                          "drv_reset_board:: inst_id:0xff000007 reset board:0x0 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_board 7 8", "drv_reset_board(inst_id=0xffffffff) = 0",
                   framed(banners::wide, "test_reset_board",
                          "drv_reset_board:: inst_id:0xffffffff reset board:0x0 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_board card", "drv_reset_board(inst_id=0) = 0",
                   framed(banners::wide, "test_reset_board", "drv_reset_board:: inst_id:0x0 reset board:0x0 ret 0 \r\n",
                          "para[0]=0x0 "));
    expect_failure("reset_test drv_reset_board 7", "drv_reset_board(inst_id=7) = 0x1f",
                   framed(banners::wide, "test_reset_board",
                          "drv_reset_board:: inst_id:0x7 reset board:0x1f ret 31 \r\n", "para[0]=0x1f "));
}

TEST(ResetTest, SelfBoardStoresMonthAndCodeInThePresetRecord) {
    expect_success("reset_test drv_reset_self_board 7 0x1234",
                   "drv_reset_self_board(code={code=0x1234 year=2008 month=7 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board",
                          "drv_reset_self_board:: inst_id:0xffffffff code 2008-7-12 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_self_board 0xff000005 7 9",
                   "drv_reset_self_board(code={code=9 year=2008 month=7 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board",
                          "drv_reset_self_board:: inst_id:0xff000005 code 2008-7-12 ret 0 \r\n", "para[0]=0x0 "));
}

TEST(ResetTest, SelfBoardCutsTheMonthToAByte) {
    expect_success("reset_test drv_reset_self_board 0x103 0xffffffff",
                   "drv_reset_self_board(code={code=0xffffffff year=2008 month=3 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board",
                          "drv_reset_self_board:: inst_id:0xffffffff code 2008-3-12 ret 0 \r\n", "para[0]=0x0 "));
}

TEST(ResetTest, SelfBoardWithMissingWordsKeepsThePresetRecord) {
    const std::string line = "drv_reset_self_board:: inst_id:0xffffffff code 2008-12-12 ret 0 \r\n";
    expect_success("reset_test drv_reset_self_board 7",
                   "drv_reset_self_board(code={code=0 year=2008 month=12 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board", "input error : in_num : 1 over [2-3] .\n" + line,
                          "para[0]=0x0 "));
    expect_success("reset_test drv_reset_self_board",
                   "drv_reset_self_board(code={code=0 year=2008 month=12 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board", "input error : in_num : 0 over [2-3] .\n" + line,
                          "para[0]=0x0 "));
}

TEST(ResetTest, SelfBoardWithSurplusWordsAndNoNumbers) {
    expect_success("reset_test drv_reset_self_board 1 2 3 4",
                   "drv_reset_self_board(code={code=2 year=2008 month=1 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board",
                          "drv_reset_self_board:: inst_id:0xffffffff code 2008-1-12 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_self_board may why",
                   "drv_reset_self_board(code={code=0 year=2008 month=0 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board",
                          "drv_reset_self_board:: inst_id:0xffffffff code 2008-0-12 ret 0 \r\n", "para[0]=0x0 "));
}

TEST(ResetTest, SelfBoardFailure) {
    expect_failure("reset_test drv_reset_self_board 2 5 6",
                   "drv_reset_self_board(code={code=6 year=2008 month=5 day=12}) = 0xdead",
                   framed(banners::wide, "test_reset_self_board",
                          "drv_reset_self_board:: inst_id:0x2 code 2008-5-12 ret 57005 \r\n", "para[0]=0xdead "));
}

TEST(ResetTest, SelfBoardPrintsItsBeginningBeforeTheBoardGoesDown) {
    const std::string script =
        scratch_file("script", "drv_reset_self_board(code={code=0 year=2008 month=12 day=12}) = crash\n");
    const process_result result =
        run_sim({"--state", new_scratch_dir(), "--clock", "virtual", "--strict", "--script", script},
                {"reset_test", "drv_reset_self_board"});
    EXPECT_EQ(result.out,
              begin_banner(banners::wide, "test_reset_self_board") + "input error : in_num : 0 over [2-3] .\n");
    EXPECT_EQ(result.status, 128 + 11);
}

TEST(ResetTest, SelfBoardWithoutRebootChoosesTheMonthOnly) {
    expect_success("reset_test drv_reset_self_board_without_reboot 7",
                   "drv_reset_self_board_without_reboot(code={code=0 year=2008 month=7 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board_without_reboot",
                          "test_reset_self_board_without_reboot:: inst_id:0xffffffff code 2008-7-12 ret 0 \r\n",
                          "para[0]=0x0 "));
    expect_success("reset_test drv_reset_self_board_without_reboot 4 7",
                   "drv_reset_self_board_without_reboot(code={code=0 year=2008 month=7 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board_without_reboot",
                          "test_reset_self_board_without_reboot:: inst_id:0x4 code 2008-7-12 ret 0 \r\n",
                          "para[0]=0x0 "));
    expect_success("reset_test drv_reset_self_board_without_reboot 0xffff",
                   "drv_reset_self_board_without_reboot(code={code=0 year=2008 month=255 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board_without_reboot",
                          "test_reset_self_board_without_reboot:: inst_id:0xffffffff code 2008-255-12 ret 0 \r\n",
                          "para[0]=0x0 "));
}

TEST(ResetTest, SelfBoardWithoutRebootWithWrongWordCounts) {
    expect_success("reset_test drv_reset_self_board_without_reboot",
                   "drv_reset_self_board_without_reboot(code={code=0 year=2008 month=12 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board_without_reboot",
                          "input error : in_num : 0 over [1-2] .\n"
                          "test_reset_self_board_without_reboot:: inst_id:0xffffffff code 2008-12-12 ret 0 \r\n",
                          "para[0]=0x0 "));
    expect_success("reset_test drv_reset_self_board_without_reboot 1 2 3",
                   "drv_reset_self_board_without_reboot(code={code=0 year=2008 month=1 day=12}) = 0",
                   framed(banners::wide, "test_reset_self_board_without_reboot",
                          "test_reset_self_board_without_reboot:: inst_id:0xffffffff code 2008-1-12 ret 0 \r\n",
                          "para[0]=0x0 "));
}

TEST(ResetTest, SelfBoardWithoutRebootFailure) {
    expect_failure("reset_test drv_reset_self_board_without_reboot may",
                   "drv_reset_self_board_without_reboot(code={code=0 year=2008 month=0 day=12}) = 0x10",
                   framed(banners::wide, "test_reset_self_board_without_reboot",
                          "test_reset_self_board_without_reboot:: inst_id:0xffffffff code 2008-0-12 ret 16 \r\n",
                          "para[0]=0x10 "));
}

TEST(ResetTest, PeerBoardTakesNoWords) {
    expect_success(
        "reset_test drv_reset_peer_board", "drv_reset_peer_board() = 0",
        framed(banners::wide, "test_reset_peer_board", "drv_reset_peer_board:: inst_id:0xffffffff ret 0 \r\n"));
    expect_success(
        "reset_test drv_reset_peer_board 1", "drv_reset_peer_board() = 0",
        framed(banners::wide, "test_reset_peer_board", "drv_reset_peer_board:: inst_id:0xffffffff ret 0 \r\n"));
    expect_success(
        "reset_test drv_reset_peer_board 1 void 3", "drv_reset_peer_board() = 0",
        framed(banners::wide, "test_reset_peer_board", "drv_reset_peer_board:: inst_id:0xffffffff ret 0 \r\n"));
    expect_failure("reset_test drv_reset_peer_board", "drv_reset_peer_board() = 0x811101a4",
                   framed(banners::wide, "test_reset_peer_board",
                          "drv_reset_peer_board:: inst_id:0xffffffff ret -2129591900 \r\n"));
}

TEST(ResetTest, GetCodeShowsTheRecord) {
    const std::string line = "drv_reset_get_code:: inst_id:0xffffffff code:77 date:2021-3-31 ret 0 \r\n";
    expect_success("reset_test drv_reset_get_code", "drv_reset_get_code() = 0 code={code=77 year=2021 month=3 day=31}",
                   framed(banners::wide, "test_reset_get_code", line, "para[0]=0x0 "));
    expect_success("reset_test drv_reset_get_code 1 code",
                   "drv_reset_get_code() = 0 code={code=77 year=2021 month=3 day=31}",
                   framed(banners::wide, "test_reset_get_code", line, "para[0]=0x0 "));
    expect_success(
        "reset_test drv_reset_get_code", "drv_reset_get_code() = 0 code={code=0xffffffff year=65535 month=255 day=254}",
        framed(banners::wide, "test_reset_get_code",
               "drv_reset_get_code:: inst_id:0xffffffff code:-1 date:65535-255-254 ret 0 \r\n", "para[0]=0x0 "));
    expect_failure("reset_test drv_reset_get_code", "drv_reset_get_code() = 9",
                   framed(banners::wide, "test_reset_get_code",
                          "drv_reset_get_code:: inst_id:0xffffffff code:0 date:0-0-0 ret 9 \r\n", "para[0]=0x9 "));
}

TEST(ResetTest, GetReason) {
    expect_success("reset_test drv_reset_get_reason 0xff000005 2",
                   "drv_reset_get_reason(inst_id=0xff000005, index=2) = 0 reason=31",
                   framed(banners::wide, "test_reset_get_reason",
                          "drv_reset_get_reason:: inst_id:0xff000005 index: 2 reason: 31 ret 0 \r\n",
                          "para[0]=0x0 para[1]=31 "));
    expect_success(
        "reset_test drv_reset_get_reason 1", "drv_reset_get_reason(inst_id=0xffffffff, index=1) = 0 reason=0xfffffffe",
        framed(banners::wide, "test_reset_get_reason",
               "drv_reset_get_reason:: inst_id:0xffffffff index: 1 reason: -2 ret 0 \r\n", "para[0]=0x0 para[1]=-2 "));
    expect_success("reset_test drv_reset_get_reason", "drv_reset_get_reason(inst_id=0xffffffff, index=0) = 0 reason=5",
                   framed(banners::wide, "test_reset_get_reason",
                          "input error : in_num : 0 over [1-2] .\n"
                          "drv_reset_get_reason:: inst_id:0xffffffff index: 0 reason: 5 ret 0 \r\n",
                          "para[0]=0x0 para[1]=5 "));
    expect_success(
        "reset_test drv_reset_get_reason last 8 9", "drv_reset_get_reason(inst_id=0xffffffff, index=0) = 0 reason=5",
        framed(banners::wide, "test_reset_get_reason",
               "drv_reset_get_reason:: inst_id:0xffffffff index: 0 reason: 5 ret 0 \r\n", "para[0]=0x0 para[1]=5 "));
    expect_failure("reset_test drv_reset_get_reason 3 4", "drv_reset_get_reason(inst_id=3, index=4) = 0x22",
                   framed(banners::wide, "test_reset_get_reason",
                          "drv_reset_get_reason:: inst_id:0x3 index: 4 reason: 0 ret 34 \r\n",
                          "para[0]=0x22 para[1]=0 "));
}

TEST(ResetTest, GetMode) {
    expect_success(
        "reset_test drv_reset_get_mode", "drv_reset_get_mode() = 0 cool=1",
        framed(banners::wide, "test_reset_get_mode", "drv_reset_get_mode:: inst_id:0xffffffff cool 1 ret 0 \r\n"));
    expect_success(
        "reset_test drv_reset_get_mode 5 cool", "drv_reset_get_mode() = 0 cool=2",
        framed(banners::wide, "test_reset_get_mode", "drv_reset_get_mode:: inst_id:0xffffffff cool 2 ret 0 \r\n"));
    expect_failure(
        "reset_test drv_reset_get_mode", "drv_reset_get_mode() = 0x14",
        framed(banners::wide, "test_reset_get_mode", "drv_reset_get_mode:: inst_id:0xffffffff cool 0 ret 20 \r\n"));
}

TEST(ResetTest, SyncFileSystem) {
    expect_success("reset_test drv_reset_sync_file_system", "drv_reset_sync_file_system() = 0",
                   framed(banners::wide, "test_reset_sync_file_system",
                          "drv_reset_sync_file_system:: inst_id:0xffffffff ret 0 \r\n"));
    expect_success("reset_test drv_reset_sync_file_system now 2", "drv_reset_sync_file_system() = 0",
                   framed(banners::wide, "test_reset_sync_file_system",
                          "drv_reset_sync_file_system:: inst_id:0xffffffff ret 0 \r\n"));
    expect_failure("reset_test drv_reset_sync_file_system", "drv_reset_sync_file_system() = 5",
                   framed(banners::wide, "test_reset_sync_file_system",
                          "drv_reset_sync_file_system:: inst_id:0xffffffff ret 5 \r\n"));
}

TEST(ResetTest, GetButtonStatus) {
    expect_success("reset_test drv_reset_get_button_status", "drv_reset_get_button_status() = 0 status=1",
                   framed(banners::wide, "test_reset_get_button_status",
                          "drv_reset_get_button_status:: inst_id:0xffffffff status 1 ret 0 \r\n"));
    expect_success("reset_test drv_reset_get_button_status 3 x", "drv_reset_get_button_status() = 0 status=0xffffffff",
                   framed(banners::wide, "test_reset_get_button_status",
                          "drv_reset_get_button_status:: inst_id:0xffffffff status -1 ret 0 \r\n"));
    expect_failure("reset_test drv_reset_get_button_status", "drv_reset_get_button_status() = 6 status=1",
                   framed(banners::wide, "test_reset_get_button_status",
                          "drv_reset_get_button_status:: inst_id:0xffffffff status 1 ret 6 \r\n"));
}

TEST(ResetTest, SetSelfSysReady) {
    expect_success("reset_test drv_reset_set_self_sys_ready 1", "drv_reset_set_self_sys_ready(mode=1) = 0",
                   framed(banners::wide, "test_reset_set_self_sys_ready",
                          "drv_reset_set_self_sys_ready:: inst_id:0xffffffff mode: 1 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_set_self_sys_ready 5 1", "drv_reset_set_self_sys_ready(mode=1) = 0",
                   framed(banners::wide, "test_reset_set_self_sys_ready",
                          "drv_reset_set_self_sys_ready:: inst_id:0x5 mode: 1 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_set_self_sys_ready", "drv_reset_set_self_sys_ready(mode=0) = 0",
                   framed(banners::wide, "test_reset_set_self_sys_ready",
                          "input error : in_num : 0 over [1-2] .\n"
                          "drv_reset_set_self_sys_ready:: inst_id:0xffffffff mode: 0 ret 0 \r\n",
                          "para[0]=0x0 "));
    expect_success("reset_test drv_reset_set_self_sys_ready 0x10 1 2", "drv_reset_set_self_sys_ready(mode=16) = 0",
                   framed(banners::wide, "test_reset_set_self_sys_ready",
                          "drv_reset_set_self_sys_ready:: inst_id:0xffffffff mode: 16 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_set_self_sys_ready yes", "drv_reset_set_self_sys_ready(mode=0) = 0",
                   framed(banners::wide, "test_reset_set_self_sys_ready",
                          "drv_reset_set_self_sys_ready:: inst_id:0xffffffff mode: 0 ret 0 \r\n", "para[0]=0x0 "));
    expect_failure("reset_test drv_reset_set_self_sys_ready 2", "drv_reset_set_self_sys_ready(mode=2) = 0x21",
                   framed(banners::wide, "test_reset_set_self_sys_ready",
                          "drv_reset_set_self_sys_ready:: inst_id:0xffffffff mode: 2 ret 33 \r\n", "para[0]=0x21 "));
}

TEST(ResetTest, GetPeerSysReady) {
    expect_success("reset_test drv_reset_get_peer_sys_ready", "drv_reset_get_peer_sys_ready() = 0 mode=1",
                   framed(banners::wide, "test_reset_get_peer_sys_ready",
                          "drv_reset_get_peer_sys_ready:: inst_id:0xffffffff mode: 1 ret 0 \r\n"));
    expect_success("reset_test drv_reset_get_peer_sys_ready 1 peer", "drv_reset_get_peer_sys_ready() = 0 mode=12",
                   framed(banners::wide, "test_reset_get_peer_sys_ready",
                          "drv_reset_get_peer_sys_ready:: inst_id:0xffffffff mode: 12 ret 0 \r\n"));
    expect_failure("reset_test drv_reset_get_peer_sys_ready", "drv_reset_get_peer_sys_ready() = 0x811101a4",
                   framed(banners::wide, "test_reset_get_peer_sys_ready",
                          "drv_reset_get_peer_sys_ready:: inst_id:0xffffffff mode: 0 ret -2129591900 \r\n"));
}

TEST(ResetTest, SetSoftStartOkFlag) {
    expect_success("reset_test drv_reset_set_soft_start_ok_flag 1", "drv_reset_set_soft_start_ok_flag(flag=1) = 0",
                   framed(banners::wide, "test_reset_set_soft_start_ok_flag",
                          "drv_reset_set_soft_start_ok_flag:: inst_id:0xffffffff flag: 1 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_set_soft_start_ok_flag 5 1", "drv_reset_set_soft_start_ok_flag(flag=1) = 0",
                   framed(banners::wide, "test_reset_set_soft_start_ok_flag",
                          "drv_reset_set_soft_start_ok_flag:: inst_id:0x5 flag: 1 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_set_soft_start_ok_flag", "drv_reset_set_soft_start_ok_flag(flag=0) = 0",
                   framed(banners::wide, "test_reset_set_soft_start_ok_flag",
                          "input error : in_num : 0 over [1-2] .\n"
                          "drv_reset_set_soft_start_ok_flag:: inst_id:0xffffffff flag: 0 ret 0 \r\n",
                          "para[0]=0x0 "));
    expect_success("reset_test drv_reset_set_soft_start_ok_flag 3 4 5", "drv_reset_set_soft_start_ok_flag(flag=3) = 0",
                   framed(banners::wide, "test_reset_set_soft_start_ok_flag",
                          "drv_reset_set_soft_start_ok_flag:: inst_id:0xffffffff flag: 3 ret 0 \r\n", "para[0]=0x0 "));
    expect_success("reset_test drv_reset_set_soft_start_ok_flag ok", "drv_reset_set_soft_start_ok_flag(flag=0) = 0",
                   framed(banners::wide, "test_reset_set_soft_start_ok_flag",
                          "drv_reset_set_soft_start_ok_flag:: inst_id:0xffffffff flag: 0 ret 0 \r\n", "para[0]=0x0 "));
    expect_failure("reset_test drv_reset_set_soft_start_ok_flag 1", "drv_reset_set_soft_start_ok_flag(flag=1) = 0x11",
                   framed(banners::wide, "test_reset_set_soft_start_ok_flag",
                          "drv_reset_set_soft_start_ok_flag:: inst_id:0xffffffff flag: 1 ret 17 \r\n",
                          "para[0]=0x11 "));
}

TEST(ResetTest, GetSoftStartOkFlag) {
    expect_success("reset_test drv_reset_get_soft_start_ok_flag", "drv_reset_get_soft_start_ok_flag() = 0 flag=31",
                   framed(banners::wide, "test_reset_get_soft_start_ok_flag",
                          "drv_reset_get_soft_start_ok_flag:: inst_id:0xffffffff flag: 31 ret 0 \r\n",
                          "para[0]=0x0 para[1]=0x1f "));
    expect_success("reset_test drv_reset_get_soft_start_ok_flag 1 ok", "drv_reset_get_soft_start_ok_flag() = 0 flag=1",
                   framed(banners::wide, "test_reset_get_soft_start_ok_flag",
                          "drv_reset_get_soft_start_ok_flag:: inst_id:0xffffffff flag: 1 ret 0 \r\n",
                          "para[0]=0x0 para[1]=0x1 "));
    expect_failure("reset_test drv_reset_get_soft_start_ok_flag", "drv_reset_get_soft_start_ok_flag() = 0x13",
                   framed(banners::wide, "test_reset_get_soft_start_ok_flag",
                          "drv_reset_get_soft_start_ok_flag:: inst_id:0xffffffff flag: 0 ret 19 \r\n",
                          "para[0]=0x13 para[1]=0x0 "));
}
