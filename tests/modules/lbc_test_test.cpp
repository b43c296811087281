// lbc_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/modules/untimed.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

namespace {

std::string opened(uint32_t inst_id, const std::string &call) {
    const std::string instance = "(inst_id=" + std::to_string(inst_id) + ") = 0\n";
    return "drv_localbus_init" + instance + call + "\ndrv_localbus_exit" + instance;
}

} // namespace

TEST(LbcTest, UsageListsTheSubCommandsInOrder) {
    expect_run("lbc_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " lbc_read inst_id chip_id address length<1-256>\n"
               " lbc_write inst_id chip_id address buffer length<1-256>\n",
               0);
}

TEST(LbcTest, ReadShowsEachByteWithItsAddress) {
    expect_untimed_success(
        "lbc_test lbc_read 0xffffffff 0x20 0x10 3",
        opened(0xffffffff,
               "drv_localbus_read(inst_id=0xffffffff, chip_id=32, address=16, length=3) = 0 buffer=[01 ab ff]"),
        "lbc_read address:[0x10], value:[0x1].\r\n"
        "lbc_read address:[0x11], value:[0xab].\r\n"
        "lbc_read address:[0x12], value:[0xff].\r\n");
    expect_untimed_success("lbc_test lbc_read board chip here 2 9",
                           opened(0, "drv_localbus_read(inst_id=0, chip_id=0, address=0, length=2) = 0 buffer=[07]"),
                           "lbc_read address:[0x0], value:[0x7].\r\n"
                           "lbc_read address:[0x1], value:[0x0].\r\n");
}

TEST(LbcTest, ReadTakesOneTo256Bytes) {
    expect_untimed_success("lbc_test lbc_read 1 2 3 0",
                           opened(1, "drv_localbus_read(inst_id=1, chip_id=2, address=3, length=1) = 0 buffer=[ee]"),
                           "lbc_read address:[0x3], value:[0xee].\r\n");
    expect_untimed_failure("lbc_test lbc_read 1 2 3 256",
                           opened(1, "drv_localbus_read(inst_id=1, chip_id=2, address=3, length=256) = 0x12"),
                           "lbc_read fail, errorCode:0x12.\r\n");
    expect_untimed_failure("lbc_test lbc_read 1 2 3 257", "", "lbc_read length 257 is out of limit[1-256].\r\n");
    expect_untimed_failure("lbc_test lbc_read 1 2 3 0xffffffff", "",
                           "lbc_read length 4294967295 is out of limit[1-256].\r\n");
}

TEST(LbcTest, ReadThatFails) {
    expect_untimed_failure("lbc_test lbc_read 1 2 3 2",
                           opened(1, "drv_localbus_read(inst_id=1, chip_id=2, address=3, length=2) = 0x811101a4"),
                           "lbc_read fail, errorCode:0x811101a4.\r\n");
    expect_untimed_failure("lbc_test lbc_read 1 2 3 2", "drv_localbus_init(inst_id=1) = 0x811101a4",
                           "lbc_read local bus init failed, errorCode:0x811101a4.\r\n");
    expect_untimed_failure("lbc_test lbc_read", "", "lbc_read parameter number 0 is invalid.\r\n");
    expect_untimed_failure("lbc_test lbc_read 1 2 3", "", "lbc_read parameter number 3 is invalid.\r\n");
    expect_without_text_area("lbc_test lbc_read 1 2 3 4", "drv_localbus_read = 0",
                             operate_fail("lbc_read") + operate_fail("lbc_test"), 255);
}

// What closing the bus answers changes nothing.
TEST(LbcTest, TheBusIsClosedAlways) {
    expect_untimed_success("lbc_test lbc_read 1 2 3 1",
                           "drv_localbus_init(inst_id=1) = 0\n"
                           "drv_localbus_read(inst_id=1, chip_id=2, address=3, length=1) = 0 buffer=[07]\n"
                           "drv_localbus_exit(inst_id=1) = 0x12",
                           "lbc_read address:[0x3], value:[0x7].\r\n");
    if (lists_lines()) {
        return;
    }
    EXPECT_EQ(calls_in_order("lbc_test lbc_read -1 0 0 1", ""),
              "drv_localbus_init drv_localbus_read drv_localbus_exit ");
    EXPECT_EQ(calls_in_order("lbc_test lbc_write -1 0 15 1 1", "drv_localbus_write = 5"),
              "drv_localbus_init drv_localbus_write drv_localbus_exit ");
}

TEST(LbcTest, WriteTakesAListOfBytes) {
    expect_untimed_success(
        "lbc_test lbc_write 0xffffffff 0x20 0x10 0x12,0x34,56,67 4",
        opened(0xffffffff,
               "drv_localbus_write(inst_id=0xffffffff, chip_id=32, address=16, buffer=[12 34 56 67], length=4) = 0"),
        "\r\nInput string:0x12,0x34,56,67\r\n"
        "string[0]=[0x12]\r\nstring[1]=[0x34]\r\nstring[2]=[0x56]\r\nstring[3]=[0x67]\r\n"
        "lbc_write address:[0x10], value:[0x12].\r\n"
        "lbc_write address:[0x11], value:[0x34].\r\n"
        "lbc_write address:[0x12], value:[0x56].\r\n"
        "lbc_write address:[0x13], value:[0x67].\r\n");
    expect_untimed_success(
        "lbc_test lbc_write 1 2 3 0x12,0x34,56,67 2 9",
        opened(1, "drv_localbus_write(inst_id=1, chip_id=2, address=3, buffer=[12 34], length=2) = 0"),
        "\r\nInput string:0x12,0x34,56,67\r\nstring[0]=[0x12]\r\nstring[1]=[0x34]\r\n"
        "lbc_write address:[0x3], value:[0x12].\r\n"
        "lbc_write address:[0x4], value:[0x34].\r\n");
    expect_untimed_success("lbc_test lbc_write board chip here g,1ff 3",
                           opened(0, "drv_localbus_write(inst_id=0, chip_id=0, address=0, buffer=[00 ff 00], length=3) "
                                     "= 0"),
                           "\r\nInput string:g,1ff\r\nstring[0]=[0x0]\r\nstring[1]=[0xff]\r\nstring[1]=[0xff]\r\n"
                           "lbc_write address:[0x0], value:[0x0].\r\n"
                           "lbc_write address:[0x1], value:[0xff].\r\n"
                           "lbc_write address:[0x2], value:[0x0].\r\n");
}

TEST(LbcTest, WriteTakesOneTo256Bytes) {
    const std::string written =
        opened(1, "drv_localbus_write(inst_id=1, chip_id=2, address=3, buffer=[ee], length=1) = 0");
    const std::string one_byte = "\r\nInput string:ee,ff\r\nstring[0]=[0xee]\r\n"
                                 "lbc_write address:[0x3], value:[0xee].\r\n";
    expect_untimed_success("lbc_test lbc_write 1 2 3 ee,ff 0", written, one_byte);
    expect_untimed_success("lbc_test lbc_write 1 2 3 ee,ff", written, one_byte);
    expect_untimed_failure("lbc_test lbc_write 1 2 3 ee 257", "", "lbc_write length 257 is out of limit[1-256].\r\n");
    expect_untimed_failure("lbc_test lbc_write 1 2 3 ee -1", "",
                           "lbc_write length 4294967295 is out of limit[1-256].\r\n");
}

// The bytes are read from the words when the bus is there.
TEST(LbcTest, WriteThatFails) {
    expect_untimed_failure(
        "lbc_test lbc_write 1 2 3 4,5 2",
        opened(1, "drv_localbus_write(inst_id=1, chip_id=2, address=3, buffer=[04 05], length=2) = 0x12"),
        "\r\nInput string:4,5\r\nstring[0]=[0x4]\r\nstring[1]=[0x5]\r\n"
        "lbc_write fail, errorCode:0x12.\r\n");
    expect_untimed_failure("lbc_test lbc_write 1 2 3 4,5 2", "drv_localbus_init(inst_id=1) = 0x811101a4",
                           "lbc_write local bus init failed, errorCode:0x811101a4.\r\n");
    expect_untimed_failure("lbc_test lbc_write", "", "lbc_write parameter number 0 is invalid.\r\n");
    expect_untimed_failure("lbc_test lbc_write 1 2 3", "", "lbc_write parameter number 3 is invalid.\r\n");
    expect_without_text_area("lbc_test lbc_write 1 2 3 4 1", "drv_localbus_write = 0",
                             operate_fail("lbc_write") + operate_fail("lbc_test"), 255);
}
