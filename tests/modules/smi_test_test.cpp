// smi_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/modules/untimed.h"

using namespace kestro_tests;

namespace {

std::string opened(uint32_t inst_id, const std::string &call) {
    const std::string instance = "(inst_id=" + std::to_string(inst_id) + ") = 0\n";
    return "drv_mdio_init" + instance + call + "\ndrv_mdio_exit" + instance;
}

} // namespace

TEST(SmiTest, UsageListsTheSubCommandsInOrder) {
    expect_run("smi_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " smi_read inst_id chip_id phy_addr dev_addr offset\n"
               " smi_write inst_id chip_id phy_addr dev_addr offset data\n",
               0);
}

TEST(SmiTest, Read) {
    expect_untimed_success(
        "smi_test smi_read 0xffffffff 1 0x1f 2 0x10",
        opened(0xffffffff,
               "drv_mdio_read(inst_id=0xffffffff, chip_id=1, phy_addr=31, dev_addr=2, offset=16) = 0 value=0x1140"),
        "smi_read phy_addr:[0x1f], dev_addr:[0x2], offset:[0x10], value:[0x1140].\r\n");
    expect_untimed_success("smi_test smi_read board chip phy device register 9",
                           opened(0, "drv_mdio_read(inst_id=0, chip_id=0, phy_addr=0, dev_addr=0, offset=0) = 0"),
                           "smi_read phy_addr:[0x0], dev_addr:[0x0], offset:[0x0], value:[0x0].\r\n");
}

TEST(SmiTest, WordsAreCutToTheWidthsOfTheBus) {
    expect_untimed_success(
        "smi_test smi_read 1 2 0x103 0x204 0x10005",
        opened(1, "drv_mdio_read(inst_id=1, chip_id=2, phy_addr=3, dev_addr=4, offset=5) = 0 value=0xffff"),
        "smi_read phy_addr:[0x3], dev_addr:[0x4], offset:[0x5], value:[0xffff].\r\n");
    expect_untimed_success(
        "smi_test smi_write 1 2 0x103 0x204 0x10005 0x12345",
        opened(1, "drv_mdio_write(inst_id=1, chip_id=2, phy_addr=3, dev_addr=4, offset=5, value=0x2345) = 0"),
        "smi_write phy_addr:[0x3], dev_addr:[0x4], offset:[0x5], value:[0x2345].\r\n");
    expect_untimed_success("smi_test smi_write -1 -1 -1 -1 -1 -1",
                           opened(0xffffffff,
                                  "drv_mdio_write(inst_id=0xffffffff, chip_id=0xffffffff, phy_addr=255, dev_addr=255, "
                                  "offset=65535, value=65535) = 0"),
                           "smi_write phy_addr:[0xff], dev_addr:[0xff], offset:[0xffff], value:[0xffff].\r\n");
}

TEST(SmiTest, ReadThatFails) {
    expect_untimed_failure(
        "smi_test smi_read 1 2 3 4 5",
        opened(1, "drv_mdio_read(inst_id=1, chip_id=2, phy_addr=3, dev_addr=4, offset=5) = 0x811101a4 value=7"),
        "smi_read fail, errorCode:0x811101a4.\r\n");
    expect_untimed_failure("smi_test smi_read 1 2 3 4 5", "drv_mdio_init(inst_id=1) = 0x12",
                           "smi_read local bus init failed, errorCode:0x12.\r\n");
    expect_untimed_failure("smi_test smi_read", "", "smi_read parameter number 0 is invalid.\r\n");
    expect_untimed_failure("smi_test smi_read 1 2 3 4", "", "smi_read parameter number 4 is invalid.\r\n");
}

TEST(SmiTest, Write) {
    expect_untimed_success("smi_test smi_write 0xffffffff 1 0x1f 2 0x10 0xbeef 9",
                           opened(0xffffffff,
                                  "drv_mdio_write(inst_id=0xffffffff, chip_id=1, phy_addr=31, dev_addr=2, offset=16, "
                                  "value=0xbeef) = 0"),
                           "smi_write phy_addr:[0x1f], dev_addr:[0x2], offset:[0x10], value:[0xbeef].\r\n");
    expect_untimed_success(
        "smi_test smi_write 1 2 3 4 5 data",
        opened(1, "drv_mdio_write(inst_id=1, chip_id=2, phy_addr=3, dev_addr=4, offset=5, value=0) = 0"),
        "smi_write phy_addr:[0x3], dev_addr:[0x4], offset:[0x5], value:[0x0].\r\n");
}

// The count lets five words pass; the value is 0 then.
TEST(SmiTest, WriteWithoutAValue) {
    expect_untimed_success(
        "smi_test smi_write 1 2 3 4 5",
        opened(1, "drv_mdio_write(inst_id=1, chip_id=2, phy_addr=3, dev_addr=4, offset=5, value=0) = 0"),
        "smi_write phy_addr:[0x3], dev_addr:[0x4], offset:[0x5], value:[0x0].\r\n");
}

TEST(SmiTest, WriteThatFails) {
    expect_untimed_failure(
        "smi_test smi_write 1 2 3 4 5 6",
        opened(1, "drv_mdio_write(inst_id=1, chip_id=2, phy_addr=3, dev_addr=4, offset=5, value=6) = 0x811101a4"),
        "smi_write fail, errorCode:0x811101a4.\r\n");
    expect_untimed_failure("smi_test smi_write 1 2 3 4 5 6", "drv_mdio_init(inst_id=1) = 0x12",
                           "smi_write local bus init failed, errorCode:0x12.\r\n");
    expect_untimed_failure("smi_test smi_write", "", "smi_write parameter number 0 is invalid.\r\n");
    expect_untimed_failure("smi_test smi_write 1 2 3 4", "", "smi_write parameter number 4 is invalid.\r\n");
}

// What closing the bus answers changes nothing.
TEST(SmiTest, TheBusIsClosedAlways) {
    expect_untimed_success("smi_test smi_read 1 2 3 4 5",
                           "drv_mdio_init(inst_id=1) = 0\n"
                           "drv_mdio_read(inst_id=1, chip_id=2, phy_addr=3, dev_addr=4, offset=5) = 0 value=7\n"
                           "drv_mdio_exit(inst_id=1) = 0x12",
                           "smi_read phy_addr:[0x3], dev_addr:[0x4], offset:[0x5], value:[0x7].\r\n");
    if (lists_lines()) {
        return;
    }
    EXPECT_EQ(calls_in_order("smi_test smi_read -1 0 0 0 0", ""), "drv_mdio_init drv_mdio_read drv_mdio_exit ");
    EXPECT_EQ(calls_in_order("smi_test smi_write -1 0 0 0 30 1", "drv_mdio_write = 5"),
              "drv_mdio_init drv_mdio_write drv_mdio_exit ");
}
