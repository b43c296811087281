// rtc_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

namespace {

const std::string info_script = "drv_diag_cmd_init() = 0\n"
                                "drv_diag_cmd_process(command=\"rtc info\", size=1048576) = 0 output=";

} // namespace

TEST(RtcTest, UsageListsTheSubCommandsInOrder) {
    expect_run("rtc_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " rtc_get_time\n"
               " rtc_set_time\n"
               " rtc_dump_reg len\n"
               " rtc_check\n"
               " rtc_dump_reg_customize start num len\n"
               " rtc_get_info\n",
               0);
}

TEST(RtcTest, GetTimeShowsEachByteOfTheRecord) {
    expect_success("rtc_test rtc_get_time",
                   "drv_rtc_read_time() = 0 time={subsecond=99 second=58 minute=7 hour=23 day_of_week=4 "
                   "day_of_month=31 month=12 year=26}",
                   "drv_rtc_read_time:[ret]:0\r\n"
                   "cms:0x63\r\n"
                   "csecond:0x3a\r\n"
                   "cmin:0x7\r\n"
                   "chour:0x17\r\n"
                   "cday_of_week:0x4\r\n"
                   "cday_of_month:0x1f\r\n"
                   "cmonth:0xc\r\n"
                   "cyear:0x1a\r\n");
}

TEST(RtcTest, GetTimeShowsABytesSignInAllDigits) {
    expect_success("rtc_test rtc_get_time 1 2 3",
                   "drv_rtc_read_time() = 0 time={subsecond=-1 second=-128 minute=127 hour=-2 day_of_week=-3 "
                   "day_of_month=-4 month=-5 year=-103}",
                   "drv_rtc_read_time:[ret]:0\r\n"
                   "cms:0xffffffff\r\n"
                   "csecond:0xffffff80\r\n"
                   "cmin:0x7f\r\n"
                   "chour:0xfffffffe\r\n"
                   "cday_of_week:0xfffffffd\r\n"
                   "cday_of_month:0xfffffffc\r\n"
                   "cmonth:0xfffffffb\r\n"
                   "cyear:0xffffff99\r\n");
}

TEST(RtcTest, GetTimeFailureShowsZeros) {
    const std::string zeros = "cms:0x0\r\ncsecond:0x0\r\ncmin:0x0\r\nchour:0x0\r\n"
                              "cday_of_week:0x0\r\ncday_of_month:0x0\r\ncmonth:0x0\r\ncyear:0x0\r\n";
    expect_failure("rtc_test rtc_get_time", "drv_rtc_read_time() = 0x12", "drv_rtc_read_time:[ret]:18\r\n" + zeros);
    expect_failure("rtc_test rtc_get_time", "drv_rtc_read_time() = 0x811101a4",
                   "drv_rtc_read_time:[ret]:-2129591900\r\n" + zeros);
}

TEST(RtcTest, SetTimeWritesTheFixedRecord) {
    const std::string call = "drv_rtc_write_time(time={subsecond=5 second=5 minute=5 hour=5 day_of_week=5 "
                             "day_of_month=5 month=5 year=5}) = ";
    expect_success("rtc_test rtc_set_time", call + "0", "drv_rtc_write_time:[ret]:0\r\n");
    expect_success("rtc_test rtc_set_time 23 59 59", call + "0", "drv_rtc_write_time:[ret]:0\r\n");
    expect_failure("rtc_test rtc_set_time", call + "0x811101a4", "drv_rtc_write_time:[ret]:-2129591900\r\n");
}

TEST(RtcTest, DumpReg) {
    expect_success("rtc_test rtc_dump_reg 2000", "drv_rtc_dump_info(len=2000) = 0 buffer=\"0x00: 0x59\"",
                   "drv_rtc_dump_info:[ret]:0 len:2000\r\n0x00: 0x59\r\n");
    expect_success("rtc_test rtc_dump_reg 0x40 5", "drv_rtc_dump_info(len=64) = 0 buffer=\"100%n %s\"",
                   "drv_rtc_dump_info:[ret]:0 len:64\r\n100%n %s\r\n");
    expect_success("rtc_test rtc_dump_reg long", "drv_rtc_dump_info(len=0) = 0",
                   "drv_rtc_dump_info:[ret]:0 len:0\r\n\r\n");
    expect_failure("rtc_test rtc_dump_reg 16", "drv_rtc_dump_info(len=16) = 0x811101a4",
                   "drv_rtc_dump_info:[ret]:-2129591900 len:16\r\n\r\n");
    expect_failure("rtc_test rtc_dump_reg", "", "");
}

TEST(RtcTest, Check) {
    expect_success("rtc_test rtc_check 128", "drv_rtc_check(len=128) = 0 result=1 buffer=\"battery low\"",
                   "drv_rtc_check:[ret]:0 result:1,len:128\r\nbattery low\r\n");
    expect_success("rtc_test rtc_check 010 7", "drv_rtc_check(len=8) = 0 result=0xffffffff",
                   "drv_rtc_check:[ret]:0 result:-1,len:8\r\n\r\n");
    expect_success("rtc_test rtc_check all", "drv_rtc_check(len=0) = 0 result=0",
                   "drv_rtc_check:[ret]:0 result:0,len:0\r\n\r\n");
    expect_failure("rtc_test rtc_check 128", "drv_rtc_check(len=128) = 0x811101a4",
                   "drv_rtc_check:[ret]:-2129591900 result:0,len:128\r\n\r\n");
    expect_failure("rtc_test rtc_check", "", "");
}

TEST(RtcTest, DumpRegCustomize) {
    expect_success("rtc_test rtc_dump_reg_customize 0x10 8 256",
                   "drv_rtc_reg_dump(start=16, num=8, len=256) = 0 buffer=\"0x10: 01 02\"",
                   "drv_rtc_reg_dump:[ret]:0 len:256\r\n0x10: 01 02\r\n");
    expect_success("rtc_test rtc_dump_reg_customize 1 2 3 4", "drv_rtc_reg_dump(start=1, num=2, len=3) = 0",
                   "drv_rtc_reg_dump:[ret]:0 len:3\r\n\r\n");
    expect_success("rtc_test rtc_dump_reg_customize first some long", "drv_rtc_reg_dump(start=0, num=0, len=0) = 0",
                   "drv_rtc_reg_dump:[ret]:0 len:0\r\n\r\n");
    expect_failure("rtc_test rtc_dump_reg_customize 0 1 64", "drv_rtc_reg_dump(start=0, num=1, len=64) = 0x811101a4",
                   "drv_rtc_reg_dump:[ret]:-2129591900 len:64\r\n\r\n");
    expect_failure("rtc_test rtc_dump_reg_customize", "", "");
    expect_failure("rtc_test rtc_dump_reg_customize 0", "", "");
    expect_failure("rtc_test rtc_dump_reg_customize 0 1", "", "");
}

// The sizes are those at which a heap block is full to its last byte, on either machine.
TEST(RtcTest, FullAreasAreShownToTheirLastByte) {
    expect_success("rtc_test rtc_dump_reg 4", "drv_rtc_dump_info(len=4) = 0 buffer=[61 62 63 64]",
                   "drv_rtc_dump_info:[ret]:0 len:4\r\nabcd\r\n");
    expect_success("rtc_test rtc_dump_reg 24", "drv_rtc_dump_info(len=24) = 0 buffer=\"FFFFFFFFFFFFFFFFFFFFFFFF\"",
                   "drv_rtc_dump_info:[ret]:0 len:24\r\nFFFFFFFFFFFFFFFFFFFFFFFF\r\n");
    expect_success("rtc_test rtc_check 28",
                   "drv_rtc_check(len=28) = 0 result=1 buffer=\"FFFFFFFFFFFFFFFFFFFFFFFFFFFF\"",
                   "drv_rtc_check:[ret]:0 result:1,len:28\r\nFFFFFFFFFFFFFFFFFFFFFFFFFFFF\r\n");
    expect_success("rtc_test rtc_dump_reg_customize 0 8 24",
                   "drv_rtc_reg_dump(start=0, num=8, len=24) = 0 buffer=\"FFFFFFFFFFFFFFFFFFFFFFFF\"",
                   "drv_rtc_reg_dump:[ret]:0 len:24\r\nFFFFFFFFFFFFFFFFFFFFFFFF\r\n");
}

TEST(RtcTest, InfoIsShownWhenThereIsAny) {
    expect_success("rtc_test rtc_get_info", info_script + "\"time 12:00\\nbattery good\\n\"",
                   "rtc test cmd [rtc info]............pass\ntime 12:00\nbattery good\n");
    expect_success("rtc_test rtc_get_info 1 2", info_script + "\"\"", "rtc test cmd [rtc info]............pass\n");
}

// The text is one that a format without values would show: a doubled percent sign is one, and no other means anything.
TEST(RtcTest, PercentSignsOfTheInfoShowNothingThatIsNotThere) {
    expect_success("rtc_test rtc_get_info", info_script + "\"charge 95%%, load 5%%%%\\n\"",
                   "rtc test cmd [rtc info]............pass\ncharge 95%, load 5%%\n");
    expect_success("rtc_test rtc_get_info", info_script + "\"%s %n %x %1$p %100000000d 5% full %\"",
                   "rtc test cmd [rtc info]............pass\n%s %n %x %1$p %100000000d 5% full %");
    expect_success("rtc_test rtc_get_info", info_script + "\"%%%s%%\"",
                   "rtc test cmd [rtc info]............pass\n%%s%");
}

TEST(RtcTest, InfoIsShownToTheLastByteOfItsArea) {
    const std::string info(0x100000, 'I');
    expect_success("rtc_test rtc_get_info", info_script + "\"" + info + "\"",
                   "rtc test cmd [rtc info]............pass\n" + info);
}

TEST(RtcTest, InfoThatFailsIsNoFailureOfTheRun) {
    expect_success("rtc_test rtc_get_info",
                   "drv_diag_cmd_init() = 0\n"
                   "drv_diag_cmd_process(command=\"rtc info\", size=1048576) = 0x811101a4 output=\"half an info\"",
                   "rtc test cmd [rtc info]............fail\n");
}

TEST(RtcTest, InfoWithoutDiagnoseCommands) {
    expect_failure("rtc_test rtc_get_info", "drv_diag_cmd_init() = 0x811101a4", "drv_diag_cmd_init fail.\n");
}

TEST(RtcTest, NothingIsPrintedWithoutATextArea) {
    expect_without_text_area("rtc_test rtc_dump_reg 64", "drv_rtc_dump_info = 0", timing_lines, 0);
    expect_without_text_area("rtc_test rtc_check 64", "drv_rtc_check = 0", timing_lines, 0);
    expect_without_text_area("rtc_test rtc_dump_reg_customize 0 1 64", "drv_rtc_reg_dump = 0", timing_lines, 0);
}

TEST(RtcTest, InfoFailsWithoutATextArea) {
    expect_without_text_area("rtc_test rtc_get_info", "drv_diag_cmd_init = 0\ndrv_diag_cmd_process = 0",
                             timing_lines + operate_fail("rtc_get_info") + operate_fail("rtc_test"), 255);
}
