// sata_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

TEST(SataTest, UsageListsTheSubCommandsInOrder) {
    expect_run("sata_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " sata_get_partition_num sata_id\n"
               " sata_get_online_status sata_id\n"
               " sata_get_num\n"
               " sata_get_property sata_id\n"
               " sata_get_capacity sata_id\n"
               " sata_get_remaining_life sata_id\n"
               " sata_get_power_status sata_id\n"
               " sata_power_on sata_id\n"
               " sata_power_off sata_id\n"
               " sata_get_smartinfo sata_id\n"
               " sata_get_fullin_status sata_id\n",
               0);
}

TEST(SataTest, GetPartitionNum) {
    expect_success("sata_test sata_get_partition_num 1", "drv_sata_get_partition_num(sata_id=1) = 0 num=3",
                   "sata1, partition num:3\r\n");
    expect_success("sata_test sata_get_partition_num 0xffffffff 7",
                   "drv_sata_get_partition_num(sata_id=0xffffffff) = 0 num=0xfffffffe",
                   "sata4294967295, partition num:4294967294\r\n");
    expect_success("sata_test sata_get_partition_num disk", "drv_sata_get_partition_num(sata_id=0) = 0 num=1",
                   "sata0, partition num:1\r\n");
    expect_failure("sata_test sata_get_partition_num 2", "drv_sata_get_partition_num(sata_id=2) = 0x811101a4",
                   "sata2, partition num:0\r\n");
    expect_failure("sata_test sata_get_partition_num", "", "");
}

TEST(SataTest, GetOnlineStatus) {
    expect_success("sata_test sata_get_online_status 1", "drv_sata_get_online_status(sata_id=1) = 0 status=1",
                   "sata1, status:1\r\n");
    expect_success("sata_test sata_get_online_status 010 7",
                   "drv_sata_get_online_status(sata_id=8) = 0 status=0xffffffff", "sata8, status:4294967295\r\n");
    expect_success("sata_test sata_get_online_status disk", "drv_sata_get_online_status(sata_id=0) = 0 status=0",
                   "sata0, status:0\r\n");
    expect_failure("sata_test sata_get_online_status 2", "drv_sata_get_online_status(sata_id=2) = 0x811101a4",
                   "sata2, status:0\r\n");
    expect_failure("sata_test sata_get_online_status", "", "");
}

TEST(SataTest, GetNumSaysNothingWhenItFails) {
    expect_success("sata_test sata_get_num", "drv_sata_get_num() = 0 num=2", "online num:2\r\n");
    expect_success("sata_test sata_get_num 1 x", "drv_sata_get_num() = 0 num=0xffffffff", "online num:4294967295\r\n");
    expect_failure("sata_test sata_get_num", "drv_sata_get_num() = 0x811101a4", "");
}

TEST(SataTest, GetProperty) {
    expect_success("sata_test sata_get_property 1",
                   "drv_sata_get_property(sata_id=1, firm_size=64, serial_size=64) = 0 vendor=5 speed=3 "
                   "firm=\"FW12\" serial=\"S 0017\"",
                   "sata1, vendor:5, speed:3, firm:FW12, serial:S 0017\r\n");
    expect_success("sata_test sata_get_property 0x10 7",
                   "drv_sata_get_property(sata_id=16, firm_size=64, serial_size=64) = 0 vendor=0xffffffff speed=2",
                   "sata16, vendor:4294967295, speed:2, firm:, serial:\r\n");
    expect_success("sata_test sata_get_property disk",
                   "drv_sata_get_property(sata_id=0, firm_size=64, serial_size=64) = 0 vendor=1 speed=1",
                   "sata0, vendor:1, speed:1, firm:, serial:\r\n");
    expect_failure("sata_test sata_get_property 2",
                   "drv_sata_get_property(sata_id=2, firm_size=64, serial_size=64) = 0x811101a4",
                   "sata2, vendor:0, speed:0, firm:, serial:\r\n");
    expect_failure("sata_test sata_get_property", "", "");
}

TEST(SataTest, GetPropertyShowsFullAreasToTheirLastByte) {
    const std::string firm(64, 'F');
    const std::string serial(64, 'S');
    expect_success("sata_test sata_get_property 1",
                   "drv_sata_get_property(sata_id=1, firm_size=64, serial_size=64) = 0 vendor=0x46464646 "
                   "speed=0x46464646 firm=\"" +
                       firm + "\" serial=\"" + serial + "\"",
                   "sata1, vendor:1179010630, speed:1179010630, firm:" + firm + ", serial:" + serial + "\r\n");
}

TEST(SataTest, GetCapacity) {
    expect_success("sata_test sata_get_capacity 1", "drv_sata_get_capacity(sata_id=1) = 0 capacity=62522712",
                   "sata1, capacity:62522712KB\r\n");
    expect_success("sata_test sata_get_capacity 1 7", "drv_sata_get_capacity(sata_id=1) = 0 capacity=0xffffffff",
                   "sata1, capacity:4294967295KB\r\n");
    expect_success("sata_test sata_get_capacity disk", "drv_sata_get_capacity(sata_id=0) = 0 capacity=1",
                   "sata0, capacity:1KB\r\n");
    expect_failure("sata_test sata_get_capacity 2", "drv_sata_get_capacity(sata_id=2) = 0x811101a4",
                   "sata2, capacity:0KB\r\n");
    expect_failure("sata_test sata_get_capacity", "", "");
}

TEST(SataTest, GetRemainingLife) {
    expect_success("sata_test sata_get_remaining_life 1",
                   "drv_sata_get_remaining_life(sata_id=1) = 0 remaining_life=95", "sata1, remaining_life:95%\r\n");
    expect_success("sata_test sata_get_remaining_life 1 7",
                   "drv_sata_get_remaining_life(sata_id=1) = 0 remaining_life=0xffffffff",
                   "sata1, remaining_life:4294967295%\r\n");
    expect_success("sata_test sata_get_remaining_life disk",
                   "drv_sata_get_remaining_life(sata_id=0) = 0 remaining_life=100", "sata0, remaining_life:100%\r\n");
    expect_failure("sata_test sata_get_remaining_life 2", "drv_sata_get_remaining_life(sata_id=2) = 0x811101a4",
                   "sata2, remaining_life:0%\r\n");
    expect_failure("sata_test sata_get_remaining_life", "", "");
}

TEST(SataTest, GetPowerStatus) {
    expect_success("sata_test sata_get_power_status 1", "drv_sata_get_power_status(sata_id=1) = 0 status=1",
                   "sata1, status:1\r\n");
    expect_success("sata_test sata_get_power_status 1 7", "drv_sata_get_power_status(sata_id=1) = 0 status=0xffffffff",
                   "sata1, status:4294967295\r\n");
    expect_success("sata_test sata_get_power_status disk", "drv_sata_get_power_status(sata_id=0) = 0 status=0",
                   "sata0, status:0\r\n");
    expect_failure("sata_test sata_get_power_status 2", "drv_sata_get_power_status(sata_id=2) = 0x811101a4",
                   "sata2, status:0\r\n");
    expect_failure("sata_test sata_get_power_status", "", "");
}

TEST(SataTest, PowerOn) {
    expect_success("sata_test sata_power_on 1", "drv_sata_power_on(sata_id=1) = 0", "sata1, power on\r\n");
    expect_success("sata_test sata_power_on 3000000000 7", "drv_sata_power_on(sata_id=3000000000) = 0",
                   "sata3000000000, power on\r\n");
    expect_success("sata_test sata_power_on disk", "drv_sata_power_on(sata_id=0) = 0", "sata0, power on\r\n");
    expect_failure("sata_test sata_power_on 2", "drv_sata_power_on(sata_id=2) = 0x811101a4", "sata2, power on\r\n");
    expect_failure("sata_test sata_power_on", "", "");
}

TEST(SataTest, PowerOff) {
    expect_success("sata_test sata_power_off 1", "drv_sata_power_off(sata_id=1) = 0", "sata1, power off\r\n");
    expect_success("sata_test sata_power_off 3000000000 7", "drv_sata_power_off(sata_id=3000000000) = 0",
                   "sata3000000000, power off\r\n");
    expect_success("sata_test sata_power_off disk", "drv_sata_power_off(sata_id=0) = 0", "sata0, power off\r\n");
    expect_failure("sata_test sata_power_off 2", "drv_sata_power_off(sata_id=2) = 0x811101a4", "sata2, power off\r\n");
    expect_failure("sata_test sata_power_off", "", "");
}

TEST(SataTest, GetSmartinfo) {
    expect_success("sata_test sata_get_smartinfo 1",
                   "drv_sata_get_smartinfo(sata_id=1, buf_len=8192) = 0 buf=\"ID# 9\\n12 100%d\\n\"",
                   "sata1, buf:ID# 9\n12 100%d\n, buf_len:8192\r\n");
    expect_success("sata_test sata_get_smartinfo 1 7", "drv_sata_get_smartinfo(sata_id=1, buf_len=8192) = 0",
                   "sata1, buf:, buf_len:8192\r\n");
    expect_success("sata_test sata_get_smartinfo disk", "drv_sata_get_smartinfo(sata_id=0, buf_len=8192) = 0",
                   "sata0, buf:, buf_len:8192\r\n");
    expect_failure("sata_test sata_get_smartinfo 2", "drv_sata_get_smartinfo(sata_id=2, buf_len=8192) = 0x811101a4",
                   "sata2, buf:, buf_len:8192\r\n");
    expect_failure("sata_test sata_get_smartinfo", "", "");
}

TEST(SataTest, GetFullinStatus) {
    expect_success("sata_test sata_get_fullin_status 1",
                   "drv_sata_check_fullin_status(sata_id=1, buf_len=8192) = 0 status=1 buf=\"not seated\"",
                   "sata1, status1, buf:not seated, buf_len:8192\r\n");
    expect_success("sata_test sata_get_fullin_status 1 7",
                   "drv_sata_check_fullin_status(sata_id=1, buf_len=8192) = 0 status=0xffffffff",
                   "sata1, status4294967295, buf:, buf_len:8192\r\n");
    expect_success("sata_test sata_get_fullin_status disk",
                   "drv_sata_check_fullin_status(sata_id=0, buf_len=8192) = 0 status=0",
                   "sata0, status0, buf:, buf_len:8192\r\n");
    expect_failure("sata_test sata_get_fullin_status 2",
                   "drv_sata_check_fullin_status(sata_id=2, buf_len=8192) = 0x811101a4",
                   "sata2, status0, buf:, buf_len:8192\r\n");
    expect_failure("sata_test sata_get_fullin_status", "", "");
}

TEST(SataTest, ReportsAreShownToTheLastByteOfTheirArea) {
    const std::string report(8192, 'R');
    expect_success("sata_test sata_get_smartinfo 1",
                   "drv_sata_get_smartinfo(sata_id=1, buf_len=8192) = 0 buf=\"" + report + "\"",
                   "sata1, buf:" + report + ", buf_len:8192\r\n");
    expect_success("sata_test sata_get_fullin_status 1",
                   "drv_sata_check_fullin_status(sata_id=1, buf_len=8192) = 0 status=1 buf=\"" + report + "\"",
                   "sata1, status1, buf:" + report + ", buf_len:8192\r\n");
}

TEST(SataTest, NothingIsPrintedWithoutATextArea) {
    expect_without_text_area("sata_test sata_get_smartinfo 1", "drv_sata_get_smartinfo = 0", timing_lines, 0);
    expect_without_text_area("sata_test sata_get_fullin_status 1", "drv_sata_check_fullin_status = 0", timing_lines, 0);
}
