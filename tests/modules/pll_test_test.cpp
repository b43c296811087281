// pll_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

TEST(PllTest, UsageListsTheSubCommandsInOrder) {
    expect_run("pll_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " pll_get_reg inst_id chip_id reg\n"
               " pll_set_reg inst_id chip_id reg value\n"
               " pll_init\n"
               " pll_dump_reg_customize start num len\n",
               0);
}

TEST(PllTest, GetReg) {
    expect_success("pll_test pll_get_reg 0xff000007 1 0x10",
                   "drv_pll_get_reg(inst_id=0xff000007, chip_id=1, reg=16) = 0 value=0x5a",
                   "drv_pll_get_reg:[ret]:0\r\n value:0x5a\r\n");
    expect_success("pll_test pll_get_reg 1 2",
                   "drv_pll_get_reg(inst_id=0xffffffff, chip_id=1, reg=2) = 0 value=0xfedcba98",
                   "drv_pll_get_reg:[ret]:0\r\n value:0xfedcba98\r\n");
    expect_success("pll_test pll_get_reg board chip reg", "drv_pll_get_reg(inst_id=0, chip_id=0, reg=0) = 0 value=0",
                   "drv_pll_get_reg:[ret]:0\r\n value:0x0\r\n");
}

TEST(PllTest, GetRegWithWrongWordCountsAndFailure) {
    expect_success("pll_test pll_get_reg", "drv_pll_get_reg(inst_id=0xffffffff, chip_id=0, reg=0) = 0 value=7",
                   "input error : in_num : 0 over [2-3] .\n"
                   "drv_pll_get_reg:[ret]:0\r\n value:0x7\r\n");
    expect_success("pll_test pll_get_reg 1", "drv_pll_get_reg(inst_id=0xffffffff, chip_id=0, reg=0) = 0 value=7",
                   "input error : in_num : 1 over [2-3] .\n"
                   "drv_pll_get_reg:[ret]:0\r\n value:0x7\r\n");
    expect_success("pll_test pll_get_reg 1 2 3 4", "drv_pll_get_reg(inst_id=0xffffffff, chip_id=1, reg=2) = 0 value=7",
                   "drv_pll_get_reg:[ret]:0\r\n value:0x7\r\n");
    expect_failure("pll_test pll_get_reg 1 2", "drv_pll_get_reg(inst_id=0xffffffff, chip_id=1, reg=2) = 0x811101a4",
                   "drv_pll_get_reg:[ret]:-2129591900\r\n value:0x0\r\n");
}

TEST(PllTest, SetReg) {
    expect_success("pll_test pll_set_reg 0xff000007 1 0x10 0x5a",
                   "drv_pll_set_reg(inst_id=0xff000007, chip_id=1, reg=16, value=0x5a) = 0",
                   "drv_pll_set_reg:[ret]:0\r\n");
    expect_success("pll_test pll_set_reg 1 2 3", "drv_pll_set_reg(inst_id=0xffffffff, chip_id=1, reg=2, value=3) = 0",
                   "drv_pll_set_reg:[ret]:0\r\n");
    expect_success("pll_test pll_set_reg board chip reg value",
                   "drv_pll_set_reg(inst_id=0, chip_id=0, reg=0, value=0) = 0", "drv_pll_set_reg:[ret]:0\r\n");
}

TEST(PllTest, SetRegWithWrongWordCountsAndFailure) {
    expect_success("pll_test pll_set_reg", "drv_pll_set_reg(inst_id=0xffffffff, chip_id=0, reg=0, value=0) = 0",
                   "input error : in_num : 0 over [3-4] .\n"
                   "drv_pll_set_reg:[ret]:0\r\n");
    expect_success("pll_test pll_set_reg 1 2", "drv_pll_set_reg(inst_id=0xffffffff, chip_id=0, reg=0, value=0) = 0",
                   "input error : in_num : 2 over [3-4] .\n"
                   "drv_pll_set_reg:[ret]:0\r\n");
    expect_success("pll_test pll_set_reg 1 2 3 4 5",
                   "drv_pll_set_reg(inst_id=0xffffffff, chip_id=1, reg=2, value=3) = 0", "drv_pll_set_reg:[ret]:0\r\n");
    expect_failure("pll_test pll_set_reg 1 2 3",
                   "drv_pll_set_reg(inst_id=0xffffffff, chip_id=1, reg=2, value=3) = 0x12",
                   "drv_pll_set_reg:[ret]:18\r\n");
}

TEST(PllTest, Init) {
    expect_success("pll_test pll_init 0xff000007 1", "drv_pll_initialization(inst_id=0xff000007, chip_id=1) = 0",
                   "drv_pll_initialization:[ret]:0\r\n");
    expect_success("pll_test pll_init 1", "drv_pll_initialization(inst_id=0xffffffff, chip_id=1) = 0",
                   "drv_pll_initialization:[ret]:0\r\n");
    expect_success("pll_test pll_init 1 2 3", "drv_pll_initialization(inst_id=1, chip_id=2) = 0",
                   "drv_pll_initialization:[ret]:0\r\n");
    expect_success("pll_test pll_init chip", "drv_pll_initialization(inst_id=0xffffffff, chip_id=0) = 0",
                   "drv_pll_initialization:[ret]:0\r\n");
    expect_failure("pll_test pll_init 1", "drv_pll_initialization(inst_id=0xffffffff, chip_id=1) = 0x811101a4",
                   "drv_pll_initialization:[ret]:-2129591900\r\n");
    expect_failure("pll_test pll_init", "", "");
}

TEST(PllTest, DumpRegCustomize) {
    expect_success("pll_test pll_dump_reg_customize 0xff000007 1 0x10 8 256",
                   "drv_pll_reg_dump(inst_id=0xff000007, chip_id=1, start=16, num=8, len=256) = 0 "
                   "buffer=\"10: 04 50\\n18: 08\"",
                   "drv_pll_reg_dump:[ret]:0 len:256\r\n10: 04 50\n18: 08\r\n");
    expect_success("pll_test pll_dump_reg_customize 1 2 3 64",
                   "drv_pll_reg_dump(inst_id=0xffffffff, chip_id=1, start=2, num=3, len=64) = 0",
                   "drv_pll_reg_dump:[ret]:0 len:64\r\n\r\n");
    expect_success("pll_test pll_dump_reg_customize 1 2 3 4 5 6",
                   "drv_pll_reg_dump(inst_id=1, chip_id=2, start=3, num=4, len=5) = 0 buffer=\"10:\"",
                   "drv_pll_reg_dump:[ret]:0 len:5\r\n10:\r\n");
    expect_success("pll_test pll_dump_reg_customize chip start num len",
                   "drv_pll_reg_dump(inst_id=0xffffffff, chip_id=0, start=0, num=0, len=0) = 0",
                   "drv_pll_reg_dump:[ret]:0 len:0\r\n\r\n");
    expect_failure("pll_test pll_dump_reg_customize 1 2 3 64",
                   "drv_pll_reg_dump(inst_id=0xffffffff, chip_id=1, start=2, num=3, len=64) = 0x811101a4",
                   "drv_pll_reg_dump:[ret]:-2129591900 len:64\r\n\r\n");
    expect_failure("pll_test pll_dump_reg_customize", "", "");
    expect_failure("pll_test pll_dump_reg_customize 1 2 3", "", "");
}

// The sizes are those at which a heap block is full to its last byte, on either machine.
TEST(PllTest, DumpShowsAFullAreaToItsLastByte) {
    for (const size_t size : {24, 28, 40}) {
        const std::string text(size, 'F');
        const std::string len = std::to_string(size);
        expect_success("pll_test pll_dump_reg_customize 1 0 8 " + len,
                       "drv_pll_reg_dump(inst_id=0xffffffff, chip_id=1, start=0, num=8, len=" + len +
                           ") = 0 buffer=\"" + text + "\"",
                       "drv_pll_reg_dump:[ret]:0 len:" + len + "\r\n" + text + "\r\n");
    }
}

TEST(PllTest, NothingIsPrintedWithoutATextArea) {
    expect_without_text_area("pll_test pll_dump_reg_customize 1 0 8 64", "drv_pll_reg_dump = 0", timing_lines, 0);
}
