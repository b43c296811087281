// cpld_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

namespace {

const std::string refused_dump =
    "*********   test_cpld_reg_dump test begin:  ********\ndump num must less than 1024 \n";
const std::string log_pointer = "##############################  use command \"cat /dev/kestro_log/drv_log_cpld\" to "
                                "check all info  #################\n";

} // namespace

TEST(CpldTest, UsageListsTheSubCommandsInOrder) {
    expect_run("cpld_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " cpld_read inst_id chip_id offset\n"
               " cpld_write inst_id chip_id offset data\n"
               " test_dump inst_id chip_id offset\n"
               " test_selftest inst_id chip_id\n"
               " test_init inst_id chip_id\n"
               " test_all_function inst_id chip_id\n"
               " build_time inst_id chip_id year  date  time\n"
               " test_spicheck inst_id chip_id channel\n"
               " check_pcielink inst_id chip_id channel\n"
               " cpld_set_np_para inst_id chip_id slave_addr np_addr\n",
               0);
}

// The whole of one run, written out: a banner of one line on each side.
TEST(CpldTest, BannersAreBare) {
    expect_run("cpld_test cpld_read 0xff000007 1 0x62f",
               "drv_cpld_reg_read(inst_id=0xff000007, chip_id=1, offset=0x62f) = 0 data=0x7788",
               "*********   test_cpld_reg_read test begin:  ********\n"
               "cpld_read:inst_id:ff000007 chip_id:1 offset:62f  data:7788 ret:0\n"
               "*********   test_cpld_reg_read test end:  ********\n"
               "cmd_exec used second:0\r\ncmd_exec used millisecond:0\r\n",
               0);
}

TEST(CpldTest, Read) {
    expect_success(
        "cpld_test cpld_read 1 15", "drv_cpld_reg_read(inst_id=0xffffffff, chip_id=1, offset=15) = 0 data=0x5a",
        framed(banners::bare, "test_cpld_reg_read", "cpld_read:inst_id:ffffffff chip_id:1 offset:f  data:5a ret:0\n"));
    expect_success("cpld_test cpld_read 1", "drv_cpld_reg_read(inst_id=0xffffffff, chip_id=0, offset=0) = 0 data=1",
                   framed(banners::bare, "test_cpld_reg_read",
                          "input error : in_num : 1 over [2-3] .\n"
                          "cpld_read:inst_id:ffffffff chip_id:0 offset:0  data:1 ret:0\n"));
    expect_success(
        "cpld_test cpld_read 2 x 4 5", "drv_cpld_reg_read(inst_id=0xffffffff, chip_id=2, offset=0) = 0 data=0",
        framed(banners::bare, "test_cpld_reg_read", "cpld_read:inst_id:ffffffff chip_id:2 offset:0  data:0 ret:0\n"));
    expect_failure("cpld_test cpld_read 3 4", "drv_cpld_reg_read(inst_id=0xffffffff, chip_id=3, offset=4) = 0x811101a4",
                   framed(banners::bare, "test_cpld_reg_read",
                          "cpld_read:inst_id:ffffffff chip_id:3 offset:4  data:0 ret:811101a4\n"));
}

TEST(CpldTest, Write) {
    expect_success("cpld_test cpld_write 0xff000007 1 0x600 0xffff",
                   "drv_cpld_reg_write(inst_id=0xff000007, chip_id=1, offset=0x600, data=0xffff) = 0",
                   framed(banners::bare, "test_cpld_reg_write",
                          "cpld_write:inst_id:ff000007 chip_id:1 offset:600  data:ffff ret:0\n"));
    expect_success("cpld_test cpld_write 1 15 0x100000000",
                   "drv_cpld_reg_write(inst_id=0xffffffff, chip_id=1, offset=15, data=0xffffffff) = 0",
                   framed(banners::bare, "test_cpld_reg_write",
                          "cpld_write:inst_id:ffffffff chip_id:1 offset:f  data:ffffffff ret:0\n"));
    expect_success("cpld_test cpld_write 1 15",
                   "drv_cpld_reg_write(inst_id=0xffffffff, chip_id=0, offset=0, data=0) = 0",
                   framed(banners::bare, "test_cpld_reg_write",
                          "input error : in_num : 2 over [3-4] .\n"
                          "cpld_write:inst_id:ffffffff chip_id:0 offset:0  data:0 ret:0\n"));
    expect_success(
        "cpld_test cpld_write 1 2 many 4 5", "drv_cpld_reg_write(inst_id=0xffffffff, chip_id=1, offset=2, data=0) = 0",
        framed(banners::bare, "test_cpld_reg_write", "cpld_write:inst_id:ffffffff chip_id:1 offset:2  data:0 ret:0\n"));
    expect_failure("cpld_test cpld_write 1 2 3",
                   "drv_cpld_reg_write(inst_id=0xffffffff, chip_id=1, offset=2, data=3) = 0x12",
                   framed(banners::bare, "test_cpld_reg_write",
                          "cpld_write:inst_id:ffffffff chip_id:1 offset:2  data:3 ret:12\n"));
}

// The length is (2 + 2) * 8 = 32 bytes.
TEST(CpldTest, Dump) {
    expect_success("cpld_test test_dump 0xff000007 1 0x20 2",
                   "drv_cpld_reg_dump(inst_id=0xff000007, chip_id=1, start=32, num=2, size=32) = 0 "
                   "buffer=\"020: 81 05\\n\"",
                   framed(banners::bare, "test_cpld_reg_dump",
                          "inst_id:-16777209 ret:0x0\n"
                          "chip_id:0x1, start:0x20, num:0x2 len:0x20\n buf:\n020: 81 05\n"
                          "\r\n"));
    expect_success("cpld_test test_dump 1 0x20 2",
                   "drv_cpld_reg_dump(inst_id=0xffffffff, chip_id=1, start=32, num=2, size=32) = 0 buffer=\"5a\"",
                   framed(banners::bare, "test_cpld_reg_dump",
                          "inst_id:-1 ret:0x0\n"
                          "chip_id:0x1, start:0x20, num:0x2 len:0x20\n buf:\n5a\r\n"));
    expect_failure("cpld_test test_dump 1 0 3",
                   "drv_cpld_reg_dump(inst_id=0xffffffff, chip_id=1, start=0, num=3, size=40) = 0x811101a4",
                   framed(banners::bare, "test_cpld_reg_dump",
                          "inst_id:-1 ret:0x811101a4\n"
                          "chip_id:0x1, start:0x0, num:0x3 len:0x28\n buf:\n\r\n"));
}

TEST(CpldTest, DumpWithOtherWords) {
    const std::string none = "drv_cpld_reg_dump(inst_id=0xffffffff, chip_id=0, start=0, num=0, size=16) = 0";
    const std::string lines = "inst_id:-1 ret:0x0\nchip_id:0x0, start:0x0, num:0x0 len:0x10\n buf:\n\r\n";
    expect_success("cpld_test test_dump 1 2", none,
                   framed(banners::bare, "test_cpld_reg_dump", "input error : in_num : 2 over [3-4] .\n" + lines));
    expect_success("cpld_test test_dump a b c", none, framed(banners::bare, "test_cpld_reg_dump", lines));
    expect_success("cpld_test test_dump 1 2 3 4 5",
                   "drv_cpld_reg_dump(inst_id=0xffffffff, chip_id=1, start=2, num=3, size=40) = 0",
                   framed(banners::bare, "test_cpld_reg_dump",
                          "inst_id:-1 ret:0x0\nchip_id:0x1, start:0x2, num:0x3 len:0x28\n buf:\n\r\n"));
}

// (1024 + 2) * 8 = 8208 bytes.
TEST(CpldTest, DumpIsLimited) {
    expect_success("cpld_test test_dump 1 0 1024",
                   "drv_cpld_reg_dump(inst_id=0xffffffff, chip_id=1, start=0, num=1024, size=8208) = 0 buffer=\"all\"",
                   framed(banners::bare, "test_cpld_reg_dump",
                          "inst_id:-1 ret:0x0\n"
                          "chip_id:0x1, start:0x0, num:0x400 len:0x2010\n buf:\nall\r\n"));
    expect_success("cpld_test test_dump 1 0 1025", "", refused_dump);
    expect_success("cpld_test test_dump 1 0 0xffffffff", "", refused_dump);
    expect_success("cpld_test test_dump 1 0 0x1fffffff", "", refused_dump);
}

TEST(CpldTest, DumpThatFillsItsAreaIsShownToItsEnd) {
    expect_success("cpld_test test_dump 1 0 0",
                   "drv_cpld_reg_dump(inst_id=0xffffffff, chip_id=1, start=0, num=0, size=16) = 0 "
                   "buffer=\"ABCDEFGHIJKLMNOP\"",
                   framed(banners::bare, "test_cpld_reg_dump",
                          "inst_id:-1 ret:0x0\n"
                          "chip_id:0x1, start:0x0, num:0x0 len:0x10\n buf:\nABCDEFGHIJKLMNOP\r\n"));
}

// Without an area the driver is called all the same, and its code is the outcome: the simulated one says that there is
// none.
TEST(CpldTest, DumpWithoutMemoryStillCallsTheDriver) {
    const std::string line = "cpld_test test_dump 1 0 16";
    const std::string lines = "malloc failed\n"
                              "inst_id:-1 ret:0x0\n"
                              "chip_id:0x1, start:0x0, num:0x10 len:0x90\n buf:\n(null)\r\n";
    const starved_run accepted = run_without_text_area(line, "drv_cpld_reg_dump = 0");
    EXPECT_EQ(accepted.result.out, framed(banners::bare, "test_cpld_reg_dump", lines) + timing_lines);
    EXPECT_EQ(accepted.result.status, 0);
    EXPECT_EQ(accepted.calls, "drv_cpld_reg_dump(inst_id=0xffffffff, chip_id=1, start=0, num=16, size=144) = 0x0\n");
    const starved_run refused = run_without_text_area(line, "drv_cpld_reg_dump = pass");
    EXPECT_EQ(refused.result.out, framed(banners::bare, "test_cpld_reg_dump",
                                         "malloc failed\n"
                                         "inst_id:-1 ret:0x81110101\n"
                                         "chip_id:0x1, start:0x0, num:0x10 len:0x90\n buf:\n(null)\r\n") +
                                      timing_lines + operate_fail("test_dump") + operate_fail("cpld_test"));
    EXPECT_EQ(refused.result.status, 255);
}

TEST(CpldTest, Selftest) {
    expect_success("cpld_test test_selftest 0xff000007 1",
                   "drv_cpld_selftest(inst_id=0xff000007, chip_id=1, size=256) = 0 result=0x11 msg=\"stuck\"",
                   framed(banners::bare, "test_cpld_selftest", "inst_id:ff000007 ret:0x0\nchip_id:1,  result:11\n"));
    expect_success("cpld_test test_selftest 2",
                   "drv_cpld_selftest(inst_id=0xffffffff, chip_id=2, size=256) = 0 result=0",
                   framed(banners::bare, "test_cpld_selftest", "inst_id:ffffffff ret:0x0\nchip_id:2,  result:0\n"));
    expect_success("cpld_test test_selftest", "drv_cpld_selftest(inst_id=0xffffffff, chip_id=0, size=256) = 0 result=0",
                   framed(banners::bare, "test_cpld_selftest",
                          "input error : in_num : 0 over [1-2] .\ninst_id:ffffffff ret:0x0\nchip_id:0,  result:0\n"));
    expect_success("cpld_test test_selftest x 2 3",
                   "drv_cpld_selftest(inst_id=0xffffffff, chip_id=0, size=256) = 0 result=0",
                   framed(banners::bare, "test_cpld_selftest", "inst_id:ffffffff ret:0x0\nchip_id:0,  result:0\n"));
    expect_failure(
        "cpld_test test_selftest 2", "drv_cpld_selftest(inst_id=0xffffffff, chip_id=2, size=256) = 0x811101a4",
        framed(banners::bare, "test_cpld_selftest", "inst_id:ffffffff ret:0x811101a4\nchip_id:2,  result:0\n"));
}

TEST(CpldTest, InitTakesDownAndBringsUp) {
    const std::string both = "drv_cpld_deinit(inst_id=0xffffffff) = 0\ndrv_cpld_init(inst_id=0xffffffff) = 0";
    const std::string lines = "inst_id:ffffffff ret:0x0\n";
    expect_success("cpld_test test_init 0xff000007 1",
                   "drv_cpld_deinit(inst_id=0xff000007) = 0\ndrv_cpld_init(inst_id=0xff000007) = 0",
                   framed(banners::bare, "test_cpld_init", "inst_id:ff000007 ret:0x0\n"));
    expect_success("cpld_test test_init 1", both, framed(banners::bare, "test_cpld_init", lines));
    expect_success("cpld_test test_init", both,
                   framed(banners::bare, "test_cpld_init", "input error : in_num : 0 over [1-2] .\n" + lines));
    expect_success("cpld_test test_init 1 2 3", both, framed(banners::bare, "test_cpld_init", lines));
    expect_success("cpld_test test_init board 2", "drv_cpld_deinit(inst_id=0) = 0\ndrv_cpld_init(inst_id=0) = 0",
                   framed(banners::bare, "test_cpld_init", "inst_id:0 ret:0x0\n"));
}

TEST(CpldTest, InitFailsWithTheStepThatFailed) {
    expect_failure("cpld_test test_init 1", "drv_cpld_deinit(inst_id=0xffffffff) = 0x811101a4",
                   framed(banners::bare, "test_cpld_init", "inst_id:ffffffff ret:0x811101a4\n"));
    expect_failure("cpld_test test_init 1",
                   "drv_cpld_deinit(inst_id=0xffffffff) = 0\ndrv_cpld_init(inst_id=0xffffffff) = 0x12",
                   framed(banners::bare, "test_cpld_init", "inst_id:ffffffff ret:0x12\n"));
}

TEST(CpldTest, AllFunction) {
    expect_success("cpld_test test_all_function 0xff000007 1",
                   "drv_cpld_test_all_function(inst_id=0xff000007, chip_id=1) = 0 flag=0x1f",
                   framed(banners::bare, "test_cpld_test_all_function",
                          "inst_id:ff000007 chip_id:1 flag:1f  ret:0x0  \n" + log_pointer));
    expect_success("cpld_test test_all_function 2",
                   "drv_cpld_test_all_function(inst_id=0xffffffff, chip_id=2) = 0 flag=0",
                   framed(banners::bare, "test_cpld_test_all_function",
                          "inst_id:ffffffff chip_id:2 flag:0  ret:0x0  \n" + log_pointer));
    expect_success("cpld_test test_all_function",
                   "drv_cpld_test_all_function(inst_id=0xffffffff, chip_id=0) = 0 flag=0",
                   framed(banners::bare, "test_cpld_test_all_function",
                          "input error : in_num : 0 over [1-2] .\n"
                          "inst_id:ffffffff chip_id:0 flag:0  ret:0x0  \n" +
                              log_pointer));
    expect_success("cpld_test test_all_function all 2 3",
                   "drv_cpld_test_all_function(inst_id=0xffffffff, chip_id=0) = 0 flag=0",
                   framed(banners::bare, "test_cpld_test_all_function",
                          "inst_id:ffffffff chip_id:0 flag:0  ret:0x0  \n" + log_pointer));
    expect_failure("cpld_test test_all_function 2",
                   "drv_cpld_test_all_function(inst_id=0xffffffff, chip_id=2) = 0x811101a4",
                   framed(banners::bare, "test_cpld_test_all_function",
                          "inst_id:ffffffff chip_id:2 flag:0  ret:0x811101a4  \n" + log_pointer));
}

// Year, date and time are counted as words, though the driver tells them.
TEST(CpldTest, BuildTime) {
    expect_success("cpld_test build_time 0xff000007 1 0 0 0",
                   "drv_cpld_get_build_time(inst_id=0xff000007, chip_id=1) = 0 year=2025 month=11 day=27",
                   framed(banners::bare, "test_cpld_get_build_time",
                          "cpld build time:inst_id:ff000007 chip_id:1 year:7e9  date:b time:1b ret:0\n"));
    expect_success("cpld_test build_time 1 9 9 9",
                   "drv_cpld_get_build_time(inst_id=0xffffffff, chip_id=1) = 0 year=2025 month=6 day=2",
                   framed(banners::bare, "test_cpld_get_build_time",
                          "cpld build time:inst_id:ffffffff chip_id:1 year:7e9  date:6 time:2 ret:0\n"));
    expect_success("cpld_test build_time 5 1",
                   "drv_cpld_get_build_time(inst_id=0xffffffff, chip_id=0) = 0 year=2025 month=3 day=14",
                   framed(banners::bare, "test_cpld_get_build_time",
                          "input error : in_num : 2 over [4-5] .\n"
                          "cpld build time:inst_id:ffffffff chip_id:0 year:7e9  date:3 time:e ret:0\n"));
    expect_success("cpld_test build_time chip 2 3 4 5 6",
                   "drv_cpld_get_build_time(inst_id=0xffffffff, chip_id=0) = 0 year=1 month=2 day=3",
                   framed(banners::bare, "test_cpld_get_build_time",
                          "cpld build time:inst_id:ffffffff chip_id:0 year:1  date:2 time:3 ret:0\n"));
    expect_failure("cpld_test build_time 3 0 0 0",
                   "drv_cpld_get_build_time(inst_id=0xffffffff, chip_id=3) = 0x811101a4",
                   framed(banners::bare, "test_cpld_get_build_time",
                          "cpld build time:inst_id:ffffffff chip_id:3 year:0  date:0 time:0 ret:811101a4\n"));
}

TEST(CpldTest, Spicheck) {
    const std::string test = "test_cpld_check_agent_spi_status";
    expect_success("cpld_test test_spicheck 0xff000007 1 0x12",
                   "drv_cpld_check_agent_spi_status(inst_id=0xff000007, chip_id=1, channel=18, size=256) = 0 "
                   "result=0x21 msg=\"silent\"",
                   framed(banners::bare, test, "inst_id:ff000007 ret:0x0\nchip_id:1 channel:12, result:21\n"));
    expect_success("cpld_test test_spicheck 1 2",
                   "drv_cpld_check_agent_spi_status(inst_id=0xffffffff, chip_id=1, channel=2, size=256) = 0 result=0",
                   framed(banners::bare, test, "inst_id:ffffffff ret:0x0\nchip_id:1 channel:2, result:0\n"));
    expect_success("cpld_test test_spicheck 1",
                   "drv_cpld_check_agent_spi_status(inst_id=0xffffffff, chip_id=0, channel=0, size=256) = 0 result=0",
                   framed(banners::bare, test,
                          "input error : in_num : 1 over [2-3] .\n"
                          "inst_id:ffffffff ret:0x0\nchip_id:0 channel:0, result:0\n"));
    expect_success("cpld_test test_spicheck 1 x 3 4",
                   "drv_cpld_check_agent_spi_status(inst_id=0xffffffff, chip_id=1, channel=0, size=256) = 0 result=0",
                   framed(banners::bare, test, "inst_id:ffffffff ret:0x0\nchip_id:1 channel:0, result:0\n"));
    expect_failure("cpld_test test_spicheck 1 2",
                   "drv_cpld_check_agent_spi_status(inst_id=0xffffffff, chip_id=1, channel=2, size=256) = 0x811101a4",
                   framed(banners::bare, test, "inst_id:ffffffff ret:0x811101a4\nchip_id:1 channel:2, result:0\n"));
}

TEST(CpldTest, Pcielink) {
    const std::string test = "test_cpld_check_pcie_link_status";
    expect_success(
        "cpld_test check_pcielink 0xff000007 1 0x12",
        "drv_cpld_check_pcie_link_status(inst_id=0xff000007, chip_id=1, channel=18, size=256) = 0 "
        "result=0x21 msg=\"down 100%n\"",
        framed(banners::bare, test, "inst_id:ff000007 ret:0x0\nlog:down 100%n\nchip_id:1 channel:12, result:21\n"));
    expect_success("cpld_test check_pcielink 1 2",
                   "drv_cpld_check_pcie_link_status(inst_id=0xffffffff, chip_id=1, channel=2, size=256) = 0 result=0",
                   framed(banners::bare, test, "inst_id:ffffffff ret:0x0\nlog:\nchip_id:1 channel:2, result:0\n"));
    expect_success("cpld_test check_pcielink 1",
                   "drv_cpld_check_pcie_link_status(inst_id=0xffffffff, chip_id=0, channel=0, size=256) = 0 result=0",
                   framed(banners::bare, test,
                          "input error : in_num : 1 over [2-3] .\n"
                          "inst_id:ffffffff ret:0x0\nlog:\nchip_id:0 channel:0, result:0\n"));
    expect_success("cpld_test check_pcielink 1 x 3 4",
                   "drv_cpld_check_pcie_link_status(inst_id=0xffffffff, chip_id=1, channel=0, size=256) = 0 result=0",
                   framed(banners::bare, test, "inst_id:ffffffff ret:0x0\nlog:\nchip_id:1 channel:0, result:0\n"));
    expect_failure(
        "cpld_test check_pcielink 1 2",
        "drv_cpld_check_pcie_link_status(inst_id=0xffffffff, chip_id=1, channel=2, size=256) = 0x811101a4 msg=\"half\"",
        framed(banners::bare, test, "inst_id:ffffffff ret:0x811101a4\nlog:half\nchip_id:1 channel:2, result:0\n"));
}

TEST(CpldTest, PcielinkShowsALogThatFillsItsArea) {
    const std::string text(256, 'L');
    expect_success("cpld_test check_pcielink 1 2",
                   "drv_cpld_check_pcie_link_status(inst_id=0xffffffff, chip_id=1, channel=2, size=256) = 0 result=1 "
                   "msg=\"" +
                       text + "\"",
                   framed(banners::bare, "test_cpld_check_pcie_link_status",
                          "inst_id:ffffffff ret:0x0\nlog:" + text + "\nchip_id:1 channel:2, result:1\n"));
}

TEST(CpldTest, PcielinkWithoutMemoryCallsNoDriver) {
    const starved_run run =
        run_without_text_area("cpld_test check_pcielink 1 2", "drv_cpld_check_pcie_link_status = 5");
    EXPECT_EQ(run.result.out,
              begin_banner(banners::bare, "test_cpld_check_pcie_link_status") + "malloc failed\n" + timing_lines);
    EXPECT_EQ(run.result.status, 0);
    EXPECT_EQ(run.calls, "");
}

TEST(CpldTest, SetNpPara) {
    expect_success("cpld_test cpld_set_np_para 0xff000007 1 0x42 0x123456789abcdef0",
                   "drv_cpld_set_np_para(inst_id=0xff000007, chip_id=1, slave_addr=0x42, "
                   "np_addr=0x123456789abcdef0) = 0",
                   framed(banners::bare, "test_cpld_set_np_para",
                          "inst_id:ff000007 ret:0x0\nchip_id:1, slave_addr:42, np_addr:123456789abcdef0\n"));
    expect_success("cpld_test cpld_set_np_para 1 2 3",
                   "drv_cpld_set_np_para(inst_id=0xffffffff, chip_id=1, slave_addr=2, np_addr=3) = 0",
                   framed(banners::bare, "test_cpld_set_np_para",
                          "inst_id:ffffffff ret:0x0\nchip_id:1, slave_addr:2, np_addr:3\n"));
    expect_success("cpld_test cpld_set_np_para a b c",
                   "drv_cpld_set_np_para(inst_id=0xffffffff, chip_id=0, slave_addr=0, np_addr=0) = 0",
                   framed(banners::bare, "test_cpld_set_np_para",
                          "inst_id:ffffffff ret:0x0\nchip_id:0, slave_addr:0, np_addr:0\n"));
    expect_success(
        "cpld_test cpld_set_np_para 9 1 2 3 4",
        "drv_cpld_set_np_para(inst_id=9, chip_id=1, slave_addr=2, np_addr=3) = 0",
        framed(banners::bare, "test_cpld_set_np_para", "inst_id:9 ret:0x0\nchip_id:1, slave_addr:2, np_addr:3\n"));
    expect_failure("cpld_test cpld_set_np_para 1 2 3",
                   "drv_cpld_set_np_para(inst_id=0xffffffff, chip_id=1, slave_addr=2, np_addr=3) = 0x811101a4",
                   framed(banners::bare, "test_cpld_set_np_para",
                          "inst_id:ffffffff ret:0x811101a4\nchip_id:1, slave_addr:2, np_addr:3\n"));
}

TEST(CpldTest, SetNpParaWithTooFewWords) {
    const std::string body =
        begin_banner(banners::bare, "test_cpld_set_np_para") + "cpld_set_np_para input too short para.\n";
    expect_failure("cpld_test cpld_set_np_para", "", body);
    expect_failure("cpld_test cpld_set_np_para 1 2", "", body);
}
