// voltdetec_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(VoltdetecTest, UsageListsTheSubCommandsInOrder) {
    expect_run("voltdetec_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " voltdetec_get_voltage\n"
               " voltdetec_init\n"
               " voltdetec_exit\n",
               0);
}

TEST(VoltdetecTest, GetVoltage) {
    expect_success("voltdetec_test voltdetec_get_voltage 0xff000007 1 2",
                   "drv_voltdetec_get_voltage(inst_id=0xff000007, chip_id=1, channel=2) = 0 voltage=12040",
                   "drv_voltdetec_get_voltage:[ret]:0\r\nvoltage:12040\r\n");
    expect_success("voltdetec_test voltdetec_get_voltage 1 0x2",
                   "drv_voltdetec_get_voltage(inst_id=0xffffffff, chip_id=1, channel=2) = 0 voltage=0xffffffff",
                   "drv_voltdetec_get_voltage:[ret]:0\r\nvoltage:-1\r\n");
    expect_success("voltdetec_test voltdetec_get_voltage 1 2 3 4",
                   "drv_voltdetec_get_voltage(inst_id=1, chip_id=2, channel=3) = 0 voltage=903",
                   "drv_voltdetec_get_voltage:[ret]:0\r\nvoltage:903\r\n");
    expect_success("voltdetec_test voltdetec_get_voltage chip channel",
                   "drv_voltdetec_get_voltage(inst_id=0xffffffff, chip_id=0, channel=0) = 0 voltage=3300",
                   "drv_voltdetec_get_voltage:[ret]:0\r\nvoltage:3300\r\n");
}

TEST(VoltdetecTest, GetVoltageWithFailureAndTooFewWords) {
    expect_failure("voltdetec_test voltdetec_get_voltage 1 2",
                   "drv_voltdetec_get_voltage(inst_id=0xffffffff, chip_id=1, channel=2) = 0x811101a4",
                   "drv_voltdetec_get_voltage:[ret]:-2129591900\r\nvoltage:0\r\n");
    expect_failure("voltdetec_test voltdetec_get_voltage", "", "");
    expect_failure("voltdetec_test voltdetec_get_voltage 1", "", "");
}

TEST(VoltdetecTest, InitTakesExactlyOneWord) {
    expect_success("voltdetec_test voltdetec_init 0xff000007", "drv_voltdetec_init(inst_id=0xff000007) = 0",
                   "drv_voltdetec_init ret[0], inst_id:0xff000007.\r\n");
    expect_success("voltdetec_test voltdetec_init board", "drv_voltdetec_init(inst_id=0) = 0",
                   "drv_voltdetec_init ret[0], inst_id:0x0.\r\n");
    expect_failure("voltdetec_test voltdetec_init 5", "drv_voltdetec_init(inst_id=5) = 0x811101a4",
                   "drv_voltdetec_init ret[0x811101a4], inst_id:0x5.\r\n");
    expect_failure("voltdetec_test voltdetec_init", "", "");
    expect_failure("voltdetec_test voltdetec_init 5 6", "", "");
}

TEST(VoltdetecTest, ExitTakesExactlyOneWord) {
    expect_success("voltdetec_test voltdetec_exit 0xff000007", "drv_voltdetec_exit(inst_id=0xff000007) = 0",
                   "drv_voltdetec_exit ret[0], inst_id:0xff000007.\r\n");
    expect_success("voltdetec_test voltdetec_exit board", "drv_voltdetec_exit(inst_id=0) = 0",
                   "drv_voltdetec_exit ret[0], inst_id:0x0.\r\n");
    expect_failure("voltdetec_test voltdetec_exit 5", "drv_voltdetec_exit(inst_id=5) = 0x811101a4",
                   "drv_voltdetec_exit ret[0x811101a4], inst_id:0x5.\r\n");
    expect_failure("voltdetec_test voltdetec_exit", "", "");
    expect_failure("voltdetec_test voltdetec_exit 5 6", "", "");
}
