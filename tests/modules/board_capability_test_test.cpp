// board_capability_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

// A sub-command that calls no driver: its words, and its line between the banners. It has no result print.
void expect_line(const std::string &operation, const std::string &words, const std::string &lines) {
    expect_success("board_capability_test drv_" + operation + " " + words, "",
                   framed(banners::wide, "test_" + operation, lines));
}

} // namespace

TEST(BoardCapabilityTest, UsageListsTheSubCommandsInOrder) {
    expect_run("board_capability_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_board_capability_init     inst_id\n"
               " drv_board_capability_deinit   inst_id\n"
               " drv_board_capability_register inst_id mode_id\n"
               " drv_board_capability_find     inst_id mode_id\n"
               " drv_board_capability_dump     inst_id\n"
               " drv_board_get_bom_value       inst_id chip_id\n",
               0);
}

TEST(BoardCapabilityTest, Init) {
    expect_line("board_capability_init", "0xff00000a", "drv_board_capability_init::inst_id:0xff00000a ret:0x0\n");
    expect_line("board_capability_init", "", "drv_board_capability_init::inst_id:0xffffffff ret:0x0\n");
    expect_line("board_capability_init", "1 2", "drv_board_capability_init::inst_id:0xffffffff ret:0x0\n");
    expect_line("board_capability_init", "board", "drv_board_capability_init::inst_id:0x0 ret:0x0\n");
}

TEST(BoardCapabilityTest, Deinit) {
    expect_line("board_capability_deinit", "0xff00000a", "drv_board_capability_deinit::inst_id:0xff00000a ret:0x0\n");
    expect_line("board_capability_deinit", "", "drv_board_capability_deinit::inst_id:0xffffffff ret:0x0\n");
    expect_line("board_capability_deinit", "1 2", "drv_board_capability_deinit::inst_id:0xffffffff ret:0x0\n");
    expect_line("board_capability_deinit", "board", "drv_board_capability_deinit::inst_id:0x0 ret:0x0\n");
}

TEST(BoardCapabilityTest, RegisterShowsNoName) {
    expect_line("board_capability_register", "0xff00000a 0x10000",
                "drv_board_capability_register::inst_id:0xff00000a id:65536 name: ret:0x0\n");
    expect_line("board_capability_register", "0xffffffff",
                "drv_board_capability_register::inst_id:0xffffffff id:-1 name: ret:0x0\n");
    expect_line("board_capability_register", "",
                "input error : in_num : 0 over [1-2] .\n"
                "drv_board_capability_register::inst_id:0xffffffff id:0 name: ret:0x0\n");
    expect_line("board_capability_register", "5 6 7",
                "drv_board_capability_register::inst_id:0xffffffff id:5 name: ret:0x0\n");
    expect_line("board_capability_register", "board fpga",
                "drv_board_capability_register::inst_id:0x0 id:0 name: ret:0x0\n");
}

TEST(BoardCapabilityTest, FindShowsTheName) {
    const std::string line = "board_capability_test drv_board_capability_find ";
    const std::string test = "test_board_capability_find";
    expect_success(line + "0xff00000a 0x40000",
                   "drv_board_capability_find(inst_id=0xff00000a, mode_id=0x40000, size=16) = 0 name=\"core %d\"",
                   framed(banners::wide, test,
                          "drv_board_capability_find::inst_id:0xff00000a id:262144 name:core %d ret:0x0\n",
                          "para[0]=0x0 para[1]=core %d "));
    expect_success(line + "1", "drv_board_capability_find(inst_id=0xffffffff, mode_id=1, size=16) = 0 name=\"\"",
                   framed(banners::wide, test, "drv_board_capability_find::inst_id:0xffffffff id:1 name: ret:0x0\n",
                          "para[0]=0x0 para[1]= "));
    expect_success(line + "board fpga", "drv_board_capability_find(inst_id=0, mode_id=0, size=16) = 0 name=\"x\"",
                   framed(banners::wide, test, "drv_board_capability_find::inst_id:0x0 id:0 name:x ret:0x0\n",
                          "para[0]=0x0 para[1]=x "));
}

TEST(BoardCapabilityTest, FindWithWrongWordCountsAndFailure) {
    const std::string line = "board_capability_test drv_board_capability_find ";
    const std::string test = "test_board_capability_find";
    expect_success(line, "drv_board_capability_find(inst_id=0xffffffff, mode_id=0, size=16) = 0 name=\"x\"",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n"
                          "drv_board_capability_find::inst_id:0xffffffff id:0 name:x ret:0x0\n",
                          "para[0]=0x0 para[1]=x "));
    expect_success(line + "5 6 7", "drv_board_capability_find(inst_id=0xffffffff, mode_id=5, size=16) = 0 name=\"x\"",
                   framed(banners::wide, test, "drv_board_capability_find::inst_id:0xffffffff id:5 name:x ret:0x0\n",
                          "para[0]=0x0 para[1]=x "));
    expect_failure(
        line + "0xffffffff", "drv_board_capability_find(inst_id=0xffffffff, mode_id=0xffffffff, size=16) = 0x811101a4",
        framed(banners::wide, test, "drv_board_capability_find::inst_id:0xffffffff id:-1 name: ret:0x811101a4\n",
               "para[0]=0x811101a4 para[1]= "));
}

TEST(BoardCapabilityTest, FindShowsNothingBehindAFullArea) {
    expect_success("board_capability_test drv_board_capability_find 1",
                   "drv_board_capability_find(inst_id=0xffffffff, mode_id=1, size=16) = 0 name=\"sixteen letters!\"",
                   framed(banners::wide, "test_board_capability_find",
                          "drv_board_capability_find::inst_id:0xffffffff id:1 name:sixteen letters! ret:0x0\n",
                          "para[0]=0x0 para[1]=sixteen letters! "));
}

TEST(BoardCapabilityTest, DumpShowsNoText) {
    expect_line("board_capability_dump", "0xff00000a", "drv_board_capability_dump::inst_id:0xff00000a dump: ret:0x0\n");
    expect_line("board_capability_dump", "", "drv_board_capability_dump::inst_id:0xffffffff dump: ret:0x0\n");
    expect_line("board_capability_dump", "1 2", "drv_board_capability_dump::inst_id:0xffffffff dump: ret:0x0\n");
    expect_line("board_capability_dump", "board", "drv_board_capability_dump::inst_id:0x0 dump: ret:0x0\n");
}

TEST(BoardCapabilityTest, GetBomValue) {
    const std::string line = "board_capability_test drv_board_get_bom_value ";
    const std::string test = "test_board_get_bom_value";
    expect_success(line + "0xff00000a 2", "drv_board_get_bom_value(inst_id=0xff00000a, chip_id=2) = 0 bom_value=17",
                   framed(banners::wide, test,
                          "drv_board_get_bom_value::inst_id:0xff00000a id:2 bom_value:17 ret:0x0\n",
                          "para[0]=0x0 para[1]=17 "));
    expect_success(
        line + "0xffffffff", "drv_board_get_bom_value(inst_id=0xffffffff, chip_id=0xffffffff) = 0 bom_value=0xffffffff",
        framed(banners::wide, test, "drv_board_get_bom_value::inst_id:0xffffffff id:-1 bom_value:-1 ret:0x0\n",
               "para[0]=0x0 para[1]=-1 "));
    expect_success(line + "board chip", "drv_board_get_bom_value(inst_id=0, chip_id=0) = 0 bom_value=1",
                   framed(banners::wide, test, "drv_board_get_bom_value::inst_id:0x0 id:0 bom_value:1 ret:0x0\n",
                          "para[0]=0x0 para[1]=1 "));
}

TEST(BoardCapabilityTest, GetBomValueWithWrongWordCountsAndFailure) {
    const std::string line = "board_capability_test drv_board_get_bom_value ";
    const std::string test = "test_board_get_bom_value";
    expect_success(line, "drv_board_get_bom_value(inst_id=0xffffffff, chip_id=0) = 0 bom_value=1",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n"
                          "drv_board_get_bom_value::inst_id:0xffffffff id:0 bom_value:1 ret:0x0\n",
                          "para[0]=0x0 para[1]=1 "));
    expect_success(line + "5 6 7", "drv_board_get_bom_value(inst_id=0xffffffff, chip_id=5) = 0 bom_value=1",
                   framed(banners::wide, test, "drv_board_get_bom_value::inst_id:0xffffffff id:5 bom_value:1 ret:0x0\n",
                          "para[0]=0x0 para[1]=1 "));
    expect_failure(line + "5 6", "drv_board_get_bom_value(inst_id=5, chip_id=6) = 0x811101a4",
                   framed(banners::wide, test, "drv_board_get_bom_value::inst_id:0x5 id:6 bom_value:0 ret:0x811101a4\n",
                          "para[0]=0x811101a4 para[1]=0 "));
}
