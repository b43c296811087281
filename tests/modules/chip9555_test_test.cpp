// chip9555_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::string few_of_three = "input error : in_num : 1 over [2-3] .\n";
const std::string few_of_four = "input error : in_num : 2 over [3-4] .\n";

} // namespace

TEST(Chip9555Test, UsageListsTheSubCommandsInOrder) {
    expect_run("chip9555_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " chip9555_get_reg    inst_id(option) chip_id offset\n"
               " chip9555_set_reg    inst_id(option) chip_id offset value\n"
               " chip9555_get_level  inst_id(option) chip_id pin\n"
               " chip9555_set_level  inst_id(option) chip_id pin value\n",
               0);
}

TEST(Chip9555Test, GetReg) {
    expect_success("chip9555_test chip9555_get_reg 0xff000007 1 4",
                   "drv_chip9555_get_reg(inst_id=0xff000007, chip_id=1, offset=4) = 0 value=0xa5",
                   "drv_chip9555_get_reg:[ret]:0\r\n value:0xa5\r\n");
    expect_success("chip9555_test chip9555_get_reg 1 4",
                   "drv_chip9555_get_reg(inst_id=0xffffffff, chip_id=1, offset=4) = 0 value=0xff",
                   "drv_chip9555_get_reg:[ret]:0\r\n value:0xff\r\n");
    expect_failure("chip9555_test chip9555_get_reg 1 8",
                   "drv_chip9555_get_reg(inst_id=0xffffffff, chip_id=1, offset=8) = 0x811101a4",
                   "drv_chip9555_get_reg:[ret]:-2129591900\r\n value:0x0\r\n");
}

TEST(Chip9555Test, GetRegWithOtherWords) {
    const std::string none = "drv_chip9555_get_reg(inst_id=0xffffffff, chip_id=0, offset=0) = 0 value=0";
    expect_success("chip9555_test chip9555_get_reg 1", none,
                   few_of_three + "drv_chip9555_get_reg:[ret]:0\r\n value:0x0\r\n");
    expect_success("chip9555_test chip9555_get_reg chip offset", none,
                   "drv_chip9555_get_reg:[ret]:0\r\n value:0x0\r\n");
    expect_success("chip9555_test chip9555_get_reg 1 2 3 4",
                   "drv_chip9555_get_reg(inst_id=0xffffffff, chip_id=1, offset=2) = 0 value=0x10",
                   "drv_chip9555_get_reg:[ret]:0\r\n value:0x10\r\n");
}

TEST(Chip9555Test, SetReg) {
    expect_success("chip9555_test chip9555_set_reg 0xff000007 1 6 0xf0",
                   "drv_chip9555_set_reg(inst_id=0xff000007, chip_id=1, offset=6, value=0xf0) = 0",
                   "drv_chip9555_set_reg:[ret]:0\r\n value:0xf0\r\n");
    expect_success("chip9555_test chip9555_set_reg 1 6 010",
                   "drv_chip9555_set_reg(inst_id=0xffffffff, chip_id=1, offset=6, value=8) = 0",
                   "drv_chip9555_set_reg:[ret]:0\r\n value:0x8\r\n");
    expect_failure("chip9555_test chip9555_set_reg 1 6 256",
                   "drv_chip9555_set_reg(inst_id=0xffffffff, chip_id=1, offset=6, value=256) = 0x81110106",
                   "drv_chip9555_set_reg:[ret]:-2129592058\r\n value:0x100\r\n");
}

TEST(Chip9555Test, SetRegWithOtherWords) {
    const std::string none = "drv_chip9555_set_reg(inst_id=0xffffffff, chip_id=0, offset=0, value=0) = 0";
    expect_success("chip9555_test chip9555_set_reg 1 2", none,
                   few_of_four + "drv_chip9555_set_reg:[ret]:0\r\n value:0x0\r\n");
    expect_success("chip9555_test chip9555_set_reg a b c", none, "drv_chip9555_set_reg:[ret]:0\r\n value:0x0\r\n");
    expect_success("chip9555_test chip9555_set_reg 1 2 3 4 5",
                   "drv_chip9555_set_reg(inst_id=0xffffffff, chip_id=1, offset=2, value=3) = 0",
                   "drv_chip9555_set_reg:[ret]:0\r\n value:0x3\r\n");
}

TEST(Chip9555Test, GetLevel) {
    expect_success("chip9555_test chip9555_get_level 0xff000007 1 15",
                   "drv_chip9555_get_level(inst_id=0xff000007, chip_id=1, pin=15) = 0 value=1",
                   "drv_chip9555_get_level:[ret]:0\r\n value:0x1\r\n");
    expect_success("chip9555_test chip9555_get_level 1 0xf",
                   "drv_chip9555_get_level(inst_id=0xffffffff, chip_id=1, pin=15) = 0 value=0",
                   "drv_chip9555_get_level:[ret]:0\r\n value:0x0\r\n");
    expect_failure("chip9555_test chip9555_get_level 1 16",
                   "drv_chip9555_get_level(inst_id=0xffffffff, chip_id=1, pin=16) = 0x12",
                   "drv_chip9555_get_level:[ret]:18\r\n value:0x0\r\n");
}

TEST(Chip9555Test, GetLevelWithOtherWords) {
    const std::string none = "drv_chip9555_get_level(inst_id=0xffffffff, chip_id=0, pin=0) = 0 value=1";
    expect_success("chip9555_test chip9555_get_level 1", none,
                   few_of_three + "drv_chip9555_get_level:[ret]:0\r\n value:0x1\r\n");
    expect_success("chip9555_test chip9555_get_level chip pin", none,
                   "drv_chip9555_get_level:[ret]:0\r\n value:0x1\r\n");
    expect_success("chip9555_test chip9555_get_level 1 2 3 4",
                   "drv_chip9555_get_level(inst_id=0xffffffff, chip_id=1, pin=2) = 0 value=1",
                   "drv_chip9555_get_level:[ret]:0\r\n value:0x1\r\n");
}

TEST(Chip9555Test, SetLevel) {
    expect_success("chip9555_test chip9555_set_level 0xff000007 1 3 1",
                   "drv_chip9555_set_level(inst_id=0xff000007, chip_id=1, pin=3, value=1) = 0",
                   "drv_chip9555_set_level:[ret]:0\r\n value:0x1\r\n");
    expect_success("chip9555_test chip9555_set_level 1 3 0",
                   "drv_chip9555_set_level(inst_id=0xffffffff, chip_id=1, pin=3, value=0) = 0",
                   "drv_chip9555_set_level:[ret]:0\r\n value:0x0\r\n");
    expect_failure("chip9555_test chip9555_set_level 1 3 2",
                   "drv_chip9555_set_level(inst_id=0xffffffff, chip_id=1, pin=3, value=2) = 0x811101a4",
                   "drv_chip9555_set_level:[ret]:-2129591900\r\n value:0x2\r\n");
}

TEST(Chip9555Test, SetLevelWithOtherWords) {
    const std::string none = "drv_chip9555_set_level(inst_id=0xffffffff, chip_id=0, pin=0, value=0) = 0";
    expect_success("chip9555_test chip9555_set_level 1 2", none,
                   few_of_four + "drv_chip9555_set_level:[ret]:0\r\n value:0x0\r\n");
    expect_success("chip9555_test chip9555_set_level a b c", none, "drv_chip9555_set_level:[ret]:0\r\n value:0x0\r\n");
    expect_success("chip9555_test chip9555_set_level 1 2 3 4 5",
                   "drv_chip9555_set_level(inst_id=0xffffffff, chip_id=1, pin=2, value=3) = 0",
                   "drv_chip9555_set_level:[ret]:0\r\n value:0x3\r\n");
}
