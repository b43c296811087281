// clock_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(ClockTest, UsageListsTheSubCommandsInOrder) {
    expect_run("clock_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_clk_init   inst_id\n"
               " drv_clk_deinit inst_id\n"
               " drv_clk_check_init         inst_id clock_id\n"
               " drv_clk_detect_check_id    inst_id clock_id\n"
               " drv_clk_detect_get_status  inst_id clock_id\n"
               " drv_clk_detect_get_status_history inst_id clock_id\n"
               " drv_clk_detect_dump_reg    inst_id clock_id\n"
               " drv_board_set_synclk_source    inst_id channel\n"
               " drv_board_set_synclk_enable    inst_id enable\n"
               " drv_clock_set_timestamp_source inst_id np_id\n"
               " drv_clock_set_pll_source       inst_id pll_id ref_mode\n"
               " drv_board_get_3clk_status      inst_id status\n"
               " drv_board_set_3clk_source      inst_id sel_en, &l3clk_src\n"
               " drv_board_get_3clk_source_mode inst_id\n"
               " drv_board_get_synclk_source    inst_id\n"
               " drv_board_set_synclk_los inst_id port\n",
               0);
}

// Written out once: blank lines around the banners, and the point that begins the line of the result print.
TEST(ClockTest, BannersAndThePointBehindTheLine) {
    expect_success("clock_test drv_clk_init", "drv_clk_init(inst_id=0xffffffff) = 0",
                   "\n\n*********   test_clk_init test begin:  ********\n\n\n"
                   "drv_clock_init::inst_id:0xffffffff ret:0x0\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n"
                   "\n\n*********   test_clk_init test   end:  ********\n\n\n");
    expect_success("clock_test drv_board_set_synclk_source 2",
                   "drv_board_set_synclk_source(inst_id=0xffffffff, channel=2) = 0",
                   "\n\n*********   test_board_set_synclk_source test begin:  ********\n\n\n"
                   "drv_board_set_synclk_source::inst_id:0xffffffff ret:0x0\n"
                   ".para[0]=0x0 \r\n----kestro_test std result print end----\n"
                   "\n\n*********   test_board_set_synclk_source test   end:  ********\n\n\n");
}

TEST(ClockTest, Init) {
    const std::string test = "test_clk_init";
    expect_success("clock_test drv_clk_init 0xff000007", "drv_clk_init(inst_id=0xff000007) = 0",
                   framed(banners::wide, test, "drv_clock_init::inst_id:0xff000007 ret:0x0\n", "para[0]=0x0 "));
    expect_success("clock_test drv_clk_init 1 2", "drv_clk_init(inst_id=0xffffffff) = 0",
                   framed(banners::wide, test, "drv_clock_init::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
    expect_success("clock_test drv_clk_init board", "drv_clk_init(inst_id=0) = 0",
                   framed(banners::wide, test, "drv_clock_init::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "));
    expect_failure("clock_test drv_clk_init 010", "drv_clk_init(inst_id=8) = 0x811101a4",
                   framed(banners::wide, test, "drv_clock_init::inst_id:0x8 ret:0x811101a4\n", "para[0]=0x811101a4 "));
}

TEST(ClockTest, Deinit) {
    const std::string test = "test_clk_deinit";
    expect_success("clock_test drv_clk_deinit", "drv_clk_deinit(inst_id=0xffffffff) = 0",
                   framed(banners::wide, test, "drv_clock_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
    expect_success("clock_test drv_clk_deinit 0xff000007", "drv_clk_deinit(inst_id=0xff000007) = 0",
                   framed(banners::wide, test, "drv_clock_deinit::inst_id:0xff000007 ret:0x0\n", "para[0]=0x0 "));
    expect_success("clock_test drv_clk_deinit 1 2", "drv_clk_deinit(inst_id=0xffffffff) = 0",
                   framed(banners::wide, test, "drv_clock_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
    expect_success("clock_test drv_clk_deinit board", "drv_clk_deinit(inst_id=0) = 0",
                   framed(banners::wide, test, "drv_clock_deinit::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "));
    expect_failure("clock_test drv_clk_deinit 8", "drv_clk_deinit(inst_id=8) = 0x12",
                   framed(banners::wide, test, "drv_clock_deinit::inst_id:0x8 ret:0x12\n", "para[0]=0x12 "));
}

TEST(ClockTest, CheckInit) {
    const std::string test = "test_clk_check_init";
    const std::string line = "drv_clk_check_init::inst_id:";
    expect_success("clock_test drv_clk_check_init 0xff000007 3",
                   "drv_clk_check_init(inst_id=0xff000007, clock_id=3) = 0 status=1",
                   framed(banners::wide, test, line + "0xff000007 id:3 status:1 ret:0x0\n", "para[0]=0x0 para[1]=1 "));
    expect_success(
        "clock_test drv_clk_check_init 0xffffffff",
        "drv_clk_check_init(inst_id=0xffffffff, clock_id=0xffffffff) = 0 status=0xfffffffe",
        framed(banners::wide, test, line + "0xffffffff id:-1 status:-2 ret:0x0\n", "para[0]=0x0 para[1]=-2 "));
    expect_success("clock_test drv_clk_check_init", "drv_clk_check_init(inst_id=0xffffffff, clock_id=0) = 0 status=1",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n" + line + "0xffffffff id:0 status:1 ret:0x0\n",
                          "para[0]=0x0 para[1]=1 "));
    expect_success("clock_test drv_clk_check_init 7 8 9",
                   "drv_clk_check_init(inst_id=0xffffffff, clock_id=7) = 0 status=1",
                   framed(banners::wide, test, line + "0xffffffff id:7 status:1 ret:0x0\n", "para[0]=0x0 para[1]=1 "));
    expect_success("clock_test drv_clk_check_init 5 clock", "drv_clk_check_init(inst_id=5, clock_id=0) = 0 status=0",
                   framed(banners::wide, test, line + "0x5 id:0 status:0 ret:0x0\n", "para[0]=0x0 para[1]=0 "));
    expect_failure("clock_test drv_clk_check_init 3", "drv_clk_check_init(inst_id=0xffffffff, clock_id=3) = 0x811101a4",
                   framed(banners::wide, test, line + "0xffffffff id:3 status:0 ret:0x811101a4\n",
                          "para[0]=0x811101a4 para[1]=0 "));
}

TEST(ClockTest, DetectCheckId) {
    const std::string test = "test_clk_detect_check_id";
    const std::string line = "drv_clk_detect_check_id::inst_id:";
    expect_success("clock_test drv_clk_detect_check_id 0xff000007 3",
                   "drv_clk_detect_check_id(inst_id=0xff000007, clock_id=3) = 0 status=1",
                   framed(banners::wide, test, line + "0xff000007 id:3 status:1 ret:0x0\n", "para[0]=0x0 para[1]=1 "));
    expect_success(
        "clock_test drv_clk_detect_check_id 3",
        "drv_clk_detect_check_id(inst_id=0xffffffff, clock_id=3) = 0 status=0xffffffff",
        framed(banners::wide, test, line + "0xffffffff id:3 status:-1 ret:0x0\n", "para[0]=0x0 para[1]=-1 "));
    expect_success("clock_test drv_clk_detect_check_id",
                   "drv_clk_detect_check_id(inst_id=0xffffffff, clock_id=0) = 0 status=1",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n" + line + "0xffffffff id:0 status:1 ret:0x0\n",
                          "para[0]=0x0 para[1]=1 "));
    expect_success("clock_test drv_clk_detect_check_id clock 8 9",
                   "drv_clk_detect_check_id(inst_id=0xffffffff, clock_id=0) = 0 status=1",
                   framed(banners::wide, test, line + "0xffffffff id:0 status:1 ret:0x0\n", "para[0]=0x0 para[1]=1 "));
    expect_failure("clock_test drv_clk_detect_check_id 5 3", "drv_clk_detect_check_id(inst_id=5, clock_id=3) = 0x12",
                   framed(banners::wide, test, line + "0x5 id:3 status:0 ret:0x12\n", "para[0]=0x12 para[1]=0 "));
}

TEST(ClockTest, DetectGetStatus) {
    const std::string test = "test_clk_detect_get_status";
    const std::string line = "drv_clk_detect_get_status::inst_id:";
    expect_success("clock_test drv_clk_detect_get_status 0xff000007 3",
                   "drv_clk_detect_get_status(inst_id=0xff000007, clock_id=3) = 0 status=1",
                   framed(banners::wide, test, line + "0xff000007 id:3 status:1 ret:0x0\n", "para[0]=0x0 para[1]=1 "));
    expect_success(
        "clock_test drv_clk_detect_get_status 3",
        "drv_clk_detect_get_status(inst_id=0xffffffff, clock_id=3) = 0 status=0xffffffff",
        framed(banners::wide, test, line + "0xffffffff id:3 status:-1 ret:0x0\n", "para[0]=0x0 para[1]=-1 "));
    expect_success("clock_test drv_clk_detect_get_status",
                   "drv_clk_detect_get_status(inst_id=0xffffffff, clock_id=0) = 0 status=1",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n" + line + "0xffffffff id:0 status:1 ret:0x0\n",
                          "para[0]=0x0 para[1]=1 "));
    expect_success("clock_test drv_clk_detect_get_status clock 8 9",
                   "drv_clk_detect_get_status(inst_id=0xffffffff, clock_id=0) = 0 status=1",
                   framed(banners::wide, test, line + "0xffffffff id:0 status:1 ret:0x0\n", "para[0]=0x0 para[1]=1 "));
    expect_failure("clock_test drv_clk_detect_get_status 5 3",
                   "drv_clk_detect_get_status(inst_id=5, clock_id=3) = 0x12",
                   framed(banners::wide, test, line + "0x5 id:3 status:0 ret:0x12\n", "para[0]=0x12 para[1]=0 "));
}

TEST(ClockTest, DetectGetStatusHistory) {
    const std::string test = "test_clk_detect_get_status_history";
    const std::string line = "drv_clk_detect_get_status_history::inst_id:";
    expect_success("clock_test drv_clk_detect_get_status_history 0xff000007 3",
                   "drv_clk_detect_get_status_history(inst_id=0xff000007, clock_id=3) = 0 status=1",
                   framed(banners::wide, test, line + "0xff000007 id:3 status:1 ret:0x0\n", "para[0]=0x0 para[1]=1 "));
    expect_success(
        "clock_test drv_clk_detect_get_status_history 3",
        "drv_clk_detect_get_status_history(inst_id=0xffffffff, clock_id=3) = 0 status=0xffffffff",
        framed(banners::wide, test, line + "0xffffffff id:3 status:-1 ret:0x0\n", "para[0]=0x0 para[1]=-1 "));
    expect_success("clock_test drv_clk_detect_get_status_history",
                   "drv_clk_detect_get_status_history(inst_id=0xffffffff, clock_id=0) = 0 status=1",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n" + line + "0xffffffff id:0 status:1 ret:0x0\n",
                          "para[0]=0x0 para[1]=1 "));
    expect_success("clock_test drv_clk_detect_get_status_history clock 8 9",
                   "drv_clk_detect_get_status_history(inst_id=0xffffffff, clock_id=0) = 0 status=1",
                   framed(banners::wide, test, line + "0xffffffff id:0 status:1 ret:0x0\n", "para[0]=0x0 para[1]=1 "));
    expect_failure("clock_test drv_clk_detect_get_status_history 5 3",
                   "drv_clk_detect_get_status_history(inst_id=5, clock_id=3) = 0x12",
                   framed(banners::wide, test, line + "0x5 id:3 status:0 ret:0x12\n", "para[0]=0x12 para[1]=0 "));
}

TEST(ClockTest, DetectDumpReg) {
    const std::string test = "test_clk_detect_dump_reg";
    const std::string line = "drv_clk_detect_dump_reg::inst_id:";
    expect_success("clock_test drv_clk_detect_dump_reg 0xff000007 3",
                   "drv_clk_detect_dump_reg(inst_id=0xff000007, clock_id=3, size=1024) = 0 buffer=\"00: c7 01\"",
                   framed(banners::wide, test, line + "0xff000007 id:3 dump ret:0x0. \r\n 00: c7 01 \r\n",
                          "para[0]=0x0 para[1]=00: c7 01 "));
    expect_success(
        "clock_test drv_clk_detect_dump_reg 0xffffffff",
        "drv_clk_detect_dump_reg(inst_id=0xffffffff, clock_id=0xffffffff, size=1024) = 0",
        framed(banners::wide, test, line + "0xffffffff id:-1 dump ret:0x0. \r\n  \r\n", "para[0]=0x0 para[1]= "));
    expect_success(
        "clock_test drv_clk_detect_dump_reg",
        "drv_clk_detect_dump_reg(inst_id=0xffffffff, clock_id=0, size=1024) = 0 buffer=\"00\"",
        framed(banners::wide, test,
               "input error : in_num : 0 over [1-2] .\n" + line + "0xffffffff id:0 dump ret:0x0. \r\n 00 \r\n",
               "para[0]=0x0 para[1]=00 "));
    expect_success(
        "clock_test drv_clk_detect_dump_reg clock 8 9",
        "drv_clk_detect_dump_reg(inst_id=0xffffffff, clock_id=0, size=1024) = 0 buffer=\"00\"",
        framed(banners::wide, test, line + "0xffffffff id:0 dump ret:0x0. \r\n 00 \r\n", "para[0]=0x0 para[1]=00 "));
    expect_failure(
        "clock_test drv_clk_detect_dump_reg 5 3",
        "drv_clk_detect_dump_reg(inst_id=5, clock_id=3, size=1024) = 0x811101a4",
        framed(banners::wide, test, line + "0x5 id:3 dump ret:0x811101a4. \r\n  \r\n", "para[0]=0x811101a4 para[1]= "));
}

TEST(ClockTest, DumpShowsAFullAreaToItsLastByte) {
    const std::string text(1024, 'F');
    expect_success("clock_test drv_clk_detect_dump_reg 3",
                   "drv_clk_detect_dump_reg(inst_id=0xffffffff, clock_id=3, size=1024) = 0 buffer=\"" + text + "\"",
                   framed(banners::wide, "test_clk_detect_dump_reg",
                          "drv_clk_detect_dump_reg::inst_id:0xffffffff id:3 dump ret:0x0. \r\n " + text + " \r\n",
                          "para[0]=0x0 para[1]=" + text + " "));
}

TEST(ClockTest, SetSynclkSource) {
    const std::string test = "test_board_set_synclk_source";
    const std::string line = "drv_board_set_synclk_source::inst_id:";
    expect_success("clock_test drv_board_set_synclk_source 0xff000007 3",
                   "drv_board_set_synclk_source(inst_id=0xff000007, channel=3) = 0",
                   framed(banners::wide, test, line + "0xff000007 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_synclk_source 3",
                   "drv_board_set_synclk_source(inst_id=0xffffffff, channel=3) = 0",
                   framed(banners::wide, test, line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_synclk_source",
                   "drv_board_set_synclk_source(inst_id=0xffffffff, channel=0) = 0",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n" + line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_synclk_source channel 8 9",
                   "drv_board_set_synclk_source(inst_id=0xffffffff, channel=0) = 0",
                   framed(banners::wide, test, line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_failure("clock_test drv_board_set_synclk_source 5 3",
                   "drv_board_set_synclk_source(inst_id=5, channel=3) = 0x12",
                   framed(banners::wide, test, line + "0x5 ret:0x12\n", ".para[0]=0x12 "));
}

TEST(ClockTest, SetSynclkEnable) {
    const std::string test = "test_board_set_synclk_enable";
    const std::string line = "drv_board_set_synclk_enable::inst_id:";
    expect_success("clock_test drv_board_set_synclk_enable 0xff000007 1",
                   "drv_board_set_synclk_enable(inst_id=0xff000007, enable=1) = 0",
                   framed(banners::wide, test, line + "0xff000007 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_synclk_enable 1",
                   "drv_board_set_synclk_enable(inst_id=0xffffffff, enable=1) = 0",
                   framed(banners::wide, test, line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_synclk_enable",
                   "drv_board_set_synclk_enable(inst_id=0xffffffff, enable=0) = 0",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n" + line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_synclk_enable on 8 9",
                   "drv_board_set_synclk_enable(inst_id=0xffffffff, enable=0) = 0",
                   framed(banners::wide, test, line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_failure("clock_test drv_board_set_synclk_enable 5 1",
                   "drv_board_set_synclk_enable(inst_id=5, enable=1) = 0x811101a4",
                   framed(banners::wide, test, line + "0x5 ret:0x811101a4\n", ".para[0]=0x811101a4 "));
}

TEST(ClockTest, SetTimestampSourcePrintsAnotherName) {
    const std::string test = "test_clock_set_timestamp_source";
    const std::string line = "drv_clock_set_iic_speed::inst_id:";
    expect_success("clock_test drv_clock_set_timestamp_source 0xff000007 1",
                   "drv_clock_set_timestamp_source(inst_id=0xff000007, np_id=1) = 0",
                   framed(banners::wide, test, line + "0xff000007 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_clock_set_timestamp_source 1",
                   "drv_clock_set_timestamp_source(inst_id=0xffffffff, np_id=1) = 0",
                   framed(banners::wide, test, line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_clock_set_timestamp_source",
                   "drv_clock_set_timestamp_source(inst_id=0xffffffff, np_id=0) = 0",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n" + line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_clock_set_timestamp_source np 8 9",
                   "drv_clock_set_timestamp_source(inst_id=0xffffffff, np_id=0) = 0",
                   framed(banners::wide, test, line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_failure("clock_test drv_clock_set_timestamp_source 5 1",
                   "drv_clock_set_timestamp_source(inst_id=5, np_id=1) = 0x12",
                   framed(banners::wide, test, line + "0x5 ret:0x12\n", ".para[0]=0x12 "));
}

TEST(ClockTest, SetPllSource) {
    const std::string test = "test_clock_set_pll_source";
    const std::string line = "drv_clock_set_pll_source::inst_id:";
    expect_success("clock_test drv_clock_set_pll_source 0xff000007 1 2",
                   "drv_clock_set_pll_source(inst_id=0xff000007, pll_id=1, ref_mode=2) = 0",
                   framed(banners::wide, test, line + "0xff000007 pll_id:1 ref_mode:2 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_clock_set_pll_source 0xffffffff 0xfffffffe",
                   "drv_clock_set_pll_source(inst_id=0xffffffff, pll_id=0xffffffff, ref_mode=0xfffffffe) = 0",
                   framed(banners::wide, test, line + "0xffffffff pll_id:-1 ref_mode:-2 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_clock_set_pll_source 1",
                   "drv_clock_set_pll_source(inst_id=0xffffffff, pll_id=0, ref_mode=0) = 0",
                   framed(banners::wide, test,
                          "input error : in_num : 1 over [2-3] .\n" + line + "0xffffffff pll_id:0 ref_mode:0 ret:0x0\n",
                          ".para[0]=0x0 "));
    expect_success("clock_test drv_clock_set_pll_source 1 mode 3 4",
                   "drv_clock_set_pll_source(inst_id=0xffffffff, pll_id=1, ref_mode=0) = 0",
                   framed(banners::wide, test, line + "0xffffffff pll_id:1 ref_mode:0 ret:0x0\n", ".para[0]=0x0 "));
    expect_failure("clock_test drv_clock_set_pll_source 5 1 2",
                   "drv_clock_set_pll_source(inst_id=5, pll_id=1, ref_mode=2) = 0x12",
                   framed(banners::wide, test, line + "0x5 pll_id:1 ref_mode:2 ret:0x12\n", ".para[0]=0x12 "));
}

TEST(ClockTest, Get3clkStatusTakesAWordForTheStatus) {
    const std::string test = "test_board_get_3clk_status";
    const std::string line = "drv_board_get_3clk_status::inst_id:";
    expect_success("clock_test drv_board_get_3clk_status 0xff000007 9",
                   "drv_board_get_3clk_status(inst_id=0xff000007) = 0 status=2",
                   framed(banners::wide, test, line + "0xff000007 status:2 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_get_3clk_status 9",
                   "drv_board_get_3clk_status(inst_id=0xffffffff) = 0 status=0xffffffff",
                   framed(banners::wide, test, line + "0xffffffff status:-1 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_get_3clk_status", "drv_board_get_3clk_status(inst_id=0xffffffff) = 0 status=1",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n" + line + "0xffffffff status:1 ret:0x0\n",
                          ".para[0]=0x0 "));
    expect_success("clock_test drv_board_get_3clk_status status 8 9",
                   "drv_board_get_3clk_status(inst_id=0xffffffff) = 0 status=1",
                   framed(banners::wide, test, line + "0xffffffff status:1 ret:0x0\n", ".para[0]=0x0 "));
    expect_failure("clock_test drv_board_get_3clk_status 5 9", "drv_board_get_3clk_status(inst_id=5) = 0x811101a4",
                   framed(banners::wide, test, line + "0x5 status:9 ret:0x811101a4\n", ".para[0]=0x811101a4 "));
    expect_failure("clock_test drv_board_get_3clk_status", "drv_board_get_3clk_status(inst_id=0xffffffff) = 0x12",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n" + line + "0xffffffff status:0 ret:0x12\n",
                          ".para[0]=0x12 "));
}

TEST(ClockTest, Set3clkSourceHandsOverTheSourceByItsAddress) {
    const std::string test = "test_board_set_3clk_source";
    const std::string line = "drv_board_set_3clk_source::inst_id:";
    expect_success("clock_test drv_board_set_3clk_source 0xff000007 1 4",
                   "drv_board_set_3clk_source(inst_id=0xff000007, sel_en=1, l3clk_src=4) = 0",
                   framed(banners::wide, test, line + "0xff000007 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_3clk_source 1 0xfffffffe",
                   "drv_board_set_3clk_source(inst_id=0xffffffff, sel_en=1, l3clk_src=0xfffffffe) = 0",
                   framed(banners::wide, test, line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_3clk_source 1",
                   "drv_board_set_3clk_source(inst_id=0xffffffff, sel_en=0, l3clk_src=0) = 0",
                   framed(banners::wide, test,
                          "input error : in_num : 1 over [2-3] .\n" + line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_3clk_source 1 source 3 4",
                   "drv_board_set_3clk_source(inst_id=0xffffffff, sel_en=1, l3clk_src=0) = 0",
                   framed(banners::wide, test, line + "0xffffffff ret:0x0\n", ".para[0]=0x0 "));
    expect_failure("clock_test drv_board_set_3clk_source 5 1 4",
                   "drv_board_set_3clk_source(inst_id=5, sel_en=1, l3clk_src=4) = 0x12",
                   framed(banners::wide, test, line + "0x5 ret:0x12\n", ".para[0]=0x12 "));
}

TEST(ClockTest, Get3clkSourceMode) {
    const std::string test = "test_board_get_3clk_source_mode";
    const std::string line = "drv_board_get_3clk_source_mode::inst_id:";
    expect_success("clock_test drv_board_get_3clk_source_mode",
                   "drv_board_get_3clk_source_mode(inst_id=0xffffffff) = 0 sel_en=0xffffffff",
                   framed(banners::wide, test, line + "0xffffffff sel_en:-1 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_get_3clk_source_mode 0xff000007",
                   "drv_board_get_3clk_source_mode(inst_id=0xff000007) = 0 sel_en=1",
                   framed(banners::wide, test, line + "0xff000007 sel_en:1 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_get_3clk_source_mode 1 2",
                   "drv_board_get_3clk_source_mode(inst_id=0xffffffff) = 0 sel_en=1",
                   framed(banners::wide, test, line + "0xffffffff sel_en:1 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_get_3clk_source_mode board",
                   "drv_board_get_3clk_source_mode(inst_id=0) = 0 sel_en=0",
                   framed(banners::wide, test, line + "0x0 sel_en:0 ret:0x0\n", ".para[0]=0x0 "));
    expect_failure("clock_test drv_board_get_3clk_source_mode 8", "drv_board_get_3clk_source_mode(inst_id=8) = 0x12",
                   framed(banners::wide, test, line + "0x8 sel_en:0 ret:0x12\n", ".para[0]=0x12 "));
}

TEST(ClockTest, GetSynclkSource) {
    const std::string test = "test_board_get_synclk_source";
    const std::string line = "drv_board_get_synclk_source::inst_id:";
    expect_success("clock_test drv_board_get_synclk_source",
                   "drv_board_get_synclk_source(inst_id=0xffffffff) = 0 channel=0x1f",
                   framed(banners::wide, test, line + "0xffffffff channel:0x1f ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_get_synclk_source 0xff000007",
                   "drv_board_get_synclk_source(inst_id=0xff000007) = 0 channel=2",
                   framed(banners::wide, test, line + "0xff000007 channel:0x2 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_get_synclk_source 1 2",
                   "drv_board_get_synclk_source(inst_id=0xffffffff) = 0 channel=2",
                   framed(banners::wide, test, line + "0xffffffff channel:0x2 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_get_synclk_source board",
                   "drv_board_get_synclk_source(inst_id=0) = 0 channel=0",
                   framed(banners::wide, test, line + "0x0 channel:0x0 ret:0x0\n", ".para[0]=0x0 "));
    expect_failure("clock_test drv_board_get_synclk_source 8", "drv_board_get_synclk_source(inst_id=8) = 0x811101a4",
                   framed(banners::wide, test, line + "0x8 channel:0x0 ret:0x811101a4\n", ".para[0]=0x811101a4 "));
}

TEST(ClockTest, SetSynclkLos) {
    const std::string test = "test_board_set_synclk_los";
    const std::string line = "drv_board_set_synclk_los::inst_id:";
    expect_success("clock_test drv_board_set_synclk_los 0xff000007 31",
                   "drv_board_set_synclk_los(inst_id=0xff000007, port=31) = 0",
                   framed(banners::wide, test, line + "0xff000007 port:0x1f ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_synclk_los 1", "drv_board_set_synclk_los(inst_id=0xffffffff, port=1) = 0",
                   framed(banners::wide, test, line + "0xffffffff port:0x1 ret:0x0\n", ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_synclk_los", "drv_board_set_synclk_los(inst_id=0xffffffff, port=0) = 0",
                   framed(banners::wide, test,
                          "input error : in_num : 0 over [1-2] .\n" + line + "0xffffffff port:0x0 ret:0x0\n",
                          ".para[0]=0x0 "));
    expect_success("clock_test drv_board_set_synclk_los port 8 9",
                   "drv_board_set_synclk_los(inst_id=0xffffffff, port=0) = 0",
                   framed(banners::wide, test, line + "0xffffffff port:0x0 ret:0x0\n", ".para[0]=0x0 "));
    expect_failure("clock_test drv_board_set_synclk_los 5 1", "drv_board_set_synclk_los(inst_id=5, port=1) = 0x12",
                   framed(banners::wide, test, line + "0x5 port:0x1 ret:0x12\n", ".para[0]=0x12 "));
}
