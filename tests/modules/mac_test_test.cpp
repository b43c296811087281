// mac_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(MacTest, UsageListsTheSubCommandsInOrder) {
    expect_run("mac_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_mac_init          inst_id\n"
               " drv_mac_deinit        inst_id\n"
               " drv_mac_set_addr      inst_id type_id addr\n"
               " drv_mac_get_addr      inst_id type_id\n"
               " drv_mac_set_num       inst_id type_id num\n"
               " drv_mac_get_num       inst_id type_id\n"
               " test_mac_read_write   inst_id type_id\n"
               " drv_mac_set_addr_num  inst_id type_id num addr\n"
               " drv_mac_get_addr_num  inst_id type_id num\n",
               0);
}

TEST(MacTest, InitTakesAnOptionalInstance) {
    expect_success(
        "mac_test drv_mac_init", "drv_mac_init(inst_id=0xffffffff) = 0",
        framed(banners::narrow, "test_mac_init", "drv_mac_init::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
    expect_success(
        "mac_test drv_mac_init 0xff000005", "drv_mac_init(inst_id=0xff000005) = 0",
        framed(banners::narrow, "test_mac_init", "drv_mac_init::inst_id:0xff000005 ret:0x0\n", "para[0]=0x0 "));
    expect_failure("mac_test drv_mac_init 010", "drv_mac_init(inst_id=8) = 0x12",
                   framed(banners::narrow, "test_mac_init", "drv_mac_init::inst_id:0x8 ret:0x12\n", "para[0]=0x12 "));
}

TEST(MacTest, InitWithSurplusWordsTakesNoInstance) {
    expect_success(
        "mac_test drv_mac_init 1 2", "drv_mac_init(inst_id=0xffffffff) = 0",
        framed(banners::narrow, "test_mac_init", "drv_mac_init::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
}

TEST(MacTest, InitReadsAWordThatIsNoNumberAsZero) {
    expect_success("mac_test drv_mac_init board", "drv_mac_init(inst_id=0) = 0",
                   framed(banners::narrow, "test_mac_init", "drv_mac_init::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "));
}

TEST(MacTest, Deinit) {
    expect_success(
        "mac_test drv_mac_deinit", "drv_mac_deinit(inst_id=0xffffffff) = 0",
        framed(banners::narrow, "test_mac_deinit", "drv_mac_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
    expect_success("mac_test drv_mac_deinit 3", "drv_mac_deinit(inst_id=3) = 0",
                   framed(banners::narrow, "test_mac_deinit", "drv_mac_deinit::inst_id:0x3 ret:0x0\n", "para[0]=0x0 "));
    expect_success(
        "mac_test drv_mac_deinit 3 4 5", "drv_mac_deinit(inst_id=0xffffffff) = 0",
        framed(banners::narrow, "test_mac_deinit", "drv_mac_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
    expect_success("mac_test drv_mac_deinit x", "drv_mac_deinit(inst_id=0) = 0",
                   framed(banners::narrow, "test_mac_deinit", "drv_mac_deinit::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "));
    expect_failure("mac_test drv_mac_deinit", "drv_mac_deinit(inst_id=0xffffffff) = 0x811101a4",
                   framed(banners::narrow, "test_mac_deinit", "drv_mac_deinit::inst_id:0xffffffff ret:0x811101a4\n",
                          "para[0]=0x811101a4 "));
}

TEST(MacTest, SetAddrSplitsTheNumberMostSignificantByteFirst) {
    expect_success("mac_test drv_mac_set_addr 0xff000005 1 0x200203040506",
                   "drv_mac_set_addr(inst_id=0xff000005, type_id=1, addr=[20 02 03 04 05 06]) = 0",
                   framed(banners::narrow, "test_mac_set_addr",
                          "drv_mac_set_addr::inst_id:0xff000005 type:1 mac[20-02-03-04-05-06] ret:0x0\n",
                          "para[0]=0x0 "));
}

TEST(MacTest, SetAddrTakesTheLowFortyEightBits) {
    expect_success("mac_test drv_mac_set_addr 2 0xabcd200203040506",
                   "drv_mac_set_addr(inst_id=0xffffffff, type_id=2, addr=[20 02 03 04 05 06]) = 0",
                   framed(banners::narrow, "test_mac_set_addr",
                          "drv_mac_set_addr::inst_id:0xffffffff type:2 mac[20-02-03-04-05-06] ret:0x0\n",
                          "para[0]=0x0 "));
}

TEST(MacTest, SetAddrWithWrongWordCounts) {
    expect_success("mac_test drv_mac_set_addr 2",
                   "drv_mac_set_addr(inst_id=0xffffffff, type_id=0, addr=[00 00 00 00 00 00]) = 0",
                   framed(banners::narrow, "test_mac_set_addr",
                          "input error : in_num : 1 over [2-3] .\n"
                          "drv_mac_set_addr::inst_id:0xffffffff type:0 mac[00-00-00-00-00-00] ret:0x0\n",
                          "para[0]=0x0 "));
    expect_success("mac_test drv_mac_set_addr 7 8 9 10",
                   "drv_mac_set_addr(inst_id=0xffffffff, type_id=7, addr=[00 00 00 00 00 08]) = 0",
                   framed(banners::narrow, "test_mac_set_addr",
                          "drv_mac_set_addr::inst_id:0xffffffff type:7 mac[00-00-00-00-00-08] ret:0x0\n",
                          "para[0]=0x0 "));
}

TEST(MacTest, SetAddrFailure) {
    expect_failure("mac_test drv_mac_set_addr 1 junk",
                   "drv_mac_set_addr(inst_id=0xffffffff, type_id=1, addr=[00 00 00 00 00 00]) = 0xdead",
                   framed(banners::narrow, "test_mac_set_addr",
                          "drv_mac_set_addr::inst_id:0xffffffff type:1 mac[00-00-00-00-00-00] ret:0xdead\n",
                          "para[0]=0xdead "));
}

TEST(MacTest, GetAddrShowsTheAddressAndItsBytesAsText) {
    expect_success("mac_test drv_mac_get_addr 0xff000005 1",
                   "drv_mac_get_addr(inst_id=0xff000005, type_id=1) = 0 addr=[41 42 43 44 45 46]",
                   framed(banners::narrow, "test_mac_get_addr",
                          "drv_mac_get_addr::inst_id:0xff000005 type:1 mac[41-42-43-44-45-46] ret:0x0\n",
                          "para[0]=0x0 para[1]=ABCDEF "));
    expect_success("mac_test drv_mac_get_addr 1",
                   "drv_mac_get_addr(inst_id=0xffffffff, type_id=1) = 0 addr=[41 00 43 44 45 46]",
                   framed(banners::narrow, "test_mac_get_addr",
                          "drv_mac_get_addr::inst_id:0xffffffff type:1 mac[41-00-43-44-45-46] ret:0x0\n",
                          "para[0]=0x0 para[1]=A "));
}

TEST(MacTest, AddressesAreShownInLowerCase) {
    const std::string shown_address = "mac[ab-cd-ef-0a-fb-c0] ret:0x0\n";
    expect_success(
        "mac_test drv_mac_get_addr 1", "drv_mac_get_addr(inst_id=0xffffffff, type_id=1) = 0 addr=[ab cd ef 0a fb c0]",
        framed(banners::narrow, "test_mac_get_addr", "drv_mac_get_addr::inst_id:0xffffffff type:1 " + shown_address,
               "para[0]=0x0 para[1]=\xab\xcd\xef\n\xfb\xc0 "));
    expect_success("mac_test drv_mac_set_addr 1 0xABCDEF0AFBC0",
                   "drv_mac_set_addr(inst_id=0xffffffff, type_id=1, addr=[ab cd ef 0a fb c0]) = 0",
                   framed(banners::narrow, "test_mac_set_addr",
                          "drv_mac_set_addr::inst_id:0xffffffff type:1 " + shown_address, "para[0]=0x0 "));
    expect_success("mac_test drv_mac_set_addr_num 1 2 0xABCDEF0AFBC0",
                   "drv_mac_set_addr_num(inst_id=0xffffffff, type_id=1, num=2, addr=[ab cd ef 0a fb c0]) = 0",
                   framed(banners::narrow, "test_mac_set_addr_num",
                          "drv_mac_set_addr_num::inst_id:0xffffffff type:1 num:2 " + shown_address, "para[0]=0x0 "));
    expect_success("mac_test drv_mac_get_addr_num 1 1",
                   "drv_mac_get_addr_num(inst_id=0xffffffff, type_id=1, num=1, size=240) = 0 "
                   "buffer=[ab cd ef 0a fb c0]",
                   framed(banners::narrow, "test_mac_get_addr_num",
                          "drv_mac_get_addr_num::inst_id:0xffffffff type:1 num:1 ret:0x0\n"
                          "mac[ 0] : mac[ab-cd-ef-0a-fb-c0]\n",
                          "para[0]=0x0 para[1]=\xab\xcd\xef\n\xfb\xc0 "));
}

TEST(MacTest, GetAddrWithWrongWordCountsAndFailure) {
    const std::string zeros = "drv_mac_get_addr::inst_id:0xffffffff type:0 mac[00-00-00-00-00-00] ret:0x0\n";
    expect_success("mac_test drv_mac_get_addr", "drv_mac_get_addr(inst_id=0xffffffff, type_id=0) = 0",
                   framed(banners::narrow, "test_mac_get_addr", "input error : in_num : 0 over [1-2] .\n" + zeros,
                          "para[0]=0x0 para[1]= "));
    expect_success("mac_test drv_mac_get_addr x 5 6", "drv_mac_get_addr(inst_id=0xffffffff, type_id=0) = 0",
                   framed(banners::narrow, "test_mac_get_addr", zeros, "para[0]=0x0 para[1]= "));
    expect_failure("mac_test drv_mac_get_addr 9 4", "drv_mac_get_addr(inst_id=9, type_id=4) = 5",
                   framed(banners::narrow, "test_mac_get_addr",
                          "drv_mac_get_addr::inst_id:0x9 type:4 mac[00-00-00-00-00-00] ret:0x5\n",
                          "para[0]=0x5 para[1]= "));
}

TEST(MacTest, SetNum) {
    expect_success("mac_test drv_mac_set_num 0xff000005 1 16",
                   "drv_mac_set_num(inst_id=0xff000005, type_id=1, num=16, reserved=0) = 0",
                   framed(banners::narrow, "test_mac_set_num",
                          "drv_mac_set_num::inst_id:0xff000005 type:1 num:16 ret:0x0\n", "para[0]=0x0 "));
    expect_success("mac_test drv_mac_set_num 1 0x10",
                   "drv_mac_set_num(inst_id=0xffffffff, type_id=1, num=16, reserved=0) = 0",
                   framed(banners::narrow, "test_mac_set_num",
                          "drv_mac_set_num::inst_id:0xffffffff type:1 num:16 ret:0x0\n", "para[0]=0x0 "));
    expect_success("mac_test drv_mac_set_num 1",
                   "drv_mac_set_num(inst_id=0xffffffff, type_id=0, num=0, reserved=0) = 0",
                   framed(banners::narrow, "test_mac_set_num",
                          "input error : in_num : 1 over [2-3] .\n"
                          "drv_mac_set_num::inst_id:0xffffffff type:0 num:0 ret:0x0\n",
                          "para[0]=0x0 "));
    expect_success("mac_test drv_mac_set_num 1 many 3 4",
                   "drv_mac_set_num(inst_id=0xffffffff, type_id=1, num=0, reserved=0) = 0",
                   framed(banners::narrow, "test_mac_set_num",
                          "drv_mac_set_num::inst_id:0xffffffff type:1 num:0 ret:0x0\n", "para[0]=0x0 "));
    expect_failure("mac_test drv_mac_set_num 1 2",
                   "drv_mac_set_num(inst_id=0xffffffff, type_id=1, num=2, reserved=0) = 0x11",
                   framed(banners::narrow, "test_mac_set_num",
                          "drv_mac_set_num::inst_id:0xffffffff type:1 num:2 ret:0x11\n", "para[0]=0x11 "));
}

TEST(MacTest, GetNumShowsTheCount) {
    expect_success("mac_test drv_mac_get_num 0xff000005 1",
                   "drv_mac_get_num(inst_id=0xff000005, type_id=1, reserved=0) = 0 num=4",
                   framed(banners::narrow, "test_mac_get_num",
                          "drv_mac_get_num::inst_id:0xff000005 type:1 num:4 ret:0x0\n", "para[0]=0x0 para[1]=0x4 "));
    expect_success("mac_test drv_mac_get_num 1", "drv_mac_get_num(inst_id=0xffffffff, type_id=1) = 0 num=31",
                   framed(banners::narrow, "test_mac_get_num",
                          "drv_mac_get_num::inst_id:0xffffffff type:1 num:31 ret:0x0\n", "para[0]=0x0 para[1]=0x1f "));
    expect_success("mac_test drv_mac_get_num", "drv_mac_get_num(inst_id=0xffffffff, type_id=0) = 0 num=1",
                   framed(banners::narrow, "test_mac_get_num",
                          "input error : in_num : 0 over [1-2] .\n"
                          "drv_mac_get_num::inst_id:0xffffffff type:0 num:1 ret:0x0\n",
                          "para[0]=0x0 para[1]=0x1 "));
    expect_success("mac_test drv_mac_get_num type 2 3", "drv_mac_get_num(inst_id=0xffffffff, type_id=0) = 0 num=1",
                   framed(banners::narrow, "test_mac_get_num",
                          "drv_mac_get_num::inst_id:0xffffffff type:0 num:1 ret:0x0\n", "para[0]=0x0 para[1]=0x1 "));
    expect_failure("mac_test drv_mac_get_num 1", "drv_mac_get_num = 0x811101a4",
                   framed(banners::narrow, "test_mac_get_num",
                          "drv_mac_get_num::inst_id:0xffffffff type:1 num:0 ret:0x811101a4\n",
                          "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(MacTest, ReadWriteRunsTheStorageCycle) {
    expect_success("mac_test test_mac_read_write 0xff000005 3",
                   "drv_mac_get_num(inst_id=0xff000005, type_id=3, reserved=0) = 0 num=2 x1\n"
                   "drv_mac_get_addr_num(inst_id=0xff000005, type_id=3, num=2, size=12) = 0 "
                   "buffer=[10 11 12 13 14 15 10 11 12 13 14 16]\n"
                   "drv_mac_set_num(inst_id=0xff000005, type_id=3, num=1, reserved=0) = 0\n"
                   "drv_mac_set_addr_num(inst_id=0xff000005, type_id=3, num=1, addr=[20 02 03 04 05 06]) = 0\n"
                   "drv_mac_get_num(inst_id=0xff000005, type_id=3, reserved=0) = 0 num=1 x1\n"
                   "drv_mac_get_addr_num(inst_id=0xff000005, type_id=3, num=1, size=6) = 0 buffer=[20 02 03 04 05 06]\n"
                   "drv_mac_set_num(inst_id=0xff000005, type_id=3, num=2, reserved=0) = 0\n"
                   "drv_mac_set_addr_num(inst_id=0xff000005, type_id=3, num=2, addr=[10 11 12 13 14 15]) = 0",
                   framed(banners::narrow, "test_mac_read_write",
                          "Success: orignal mac read num 2 mac:0x10-0x11-0x12-0x13-0x14-0x15\r\n"
                          "Success: write mac num 1 mac:0x20-0x2-0x3-0x4-0x5-0x6\r\n"
                          "Success: read mac num 1 mac:0x20-0x2-0x3-0x4-0x5-0x6\r\n"
                          "Success: mac read and write num and value match test pass.\r\n",
                          "para[0]=0x0 "));
}

TEST(MacTest, ReadWriteFailure) {
    const std::string failure = "Error: mac num read fail, inst_id=0xffffffff, mac_type=0x0 meth-mac, ret=0x9.\r\n"
                                "Error: orignal mac read fail.ret =0x9 original_mac_num = 0\r\n";
    const std::string script = "drv_mac_get_num(inst_id=0xffffffff, type_id=0, reserved=0) = 9";
    expect_failure("mac_test test_mac_read_write 0", script,
                   framed(banners::narrow, "test_mac_read_write", failure, "para[0]=0xffffffff "));
    expect_failure("mac_test test_mac_read_write", script,
                   framed(banners::narrow, "test_mac_read_write", "input error : in_num : 0 over [1-2] .\n" + failure,
                          "para[0]=0xffffffff "));
    expect_failure("mac_test test_mac_read_write none 1 2", script,
                   framed(banners::narrow, "test_mac_read_write", failure, "para[0]=0xffffffff "));
}

TEST(MacTest, SetAddrNum) {
    const std::string line = "drv_mac_set_addr_num::inst_id:";
    expect_success("mac_test drv_mac_set_addr_num 0xff000005 1 4 0x200203040506",
                   "drv_mac_set_addr_num(inst_id=0xff000005, type_id=1, num=4, addr=[20 02 03 04 05 06]) = 0",
                   framed(banners::narrow, "test_mac_set_addr_num",
                          line + "0xff000005 type:1 num:4 mac[20-02-03-04-05-06] ret:0x0\n", "para[0]=0x0 "));
    expect_success("mac_test drv_mac_set_addr_num 1 4 0x200203040506",
                   "drv_mac_set_addr_num(inst_id=0xffffffff, type_id=1, num=4, addr=[20 02 03 04 05 06]) = 0",
                   framed(banners::narrow, "test_mac_set_addr_num",
                          line + "0xffffffff type:1 num:4 mac[20-02-03-04-05-06] ret:0x0\n", "para[0]=0x0 "));
    expect_success("mac_test drv_mac_set_addr_num 1 4",
                   "drv_mac_set_addr_num(inst_id=0xffffffff, type_id=0, num=0, addr=[00 00 00 00 00 00]) = 0",
                   framed(banners::narrow, "test_mac_set_addr_num",
                          "input error : in_num : 2 over [3-4] .\n" + line +
                              "0xffffffff type:0 num:0 mac[00-00-00-00-00-00] ret:0x0\n",
                          "para[0]=0x0 "));
    expect_success("mac_test drv_mac_set_addr_num 1 x 3 4 5",
                   "drv_mac_set_addr_num(inst_id=0xffffffff, type_id=1, num=0, addr=[00 00 00 00 00 03]) = 0",
                   framed(banners::narrow, "test_mac_set_addr_num",
                          line + "0xffffffff type:1 num:0 mac[00-00-00-00-00-03] ret:0x0\n", "para[0]=0x0 "));
    expect_failure("mac_test drv_mac_set_addr_num 1 4 5",
                   "drv_mac_set_addr_num(inst_id=0xffffffff, type_id=1, num=4, addr=[00 00 00 00 00 05]) = 7",
                   framed(banners::narrow, "test_mac_set_addr_num",
                          line + "0xffffffff type:1 num:4 mac[00-00-00-00-00-05] ret:0x7\n", "para[0]=0x7 "));
}

TEST(MacTest, GetAddrNumListsTheAddresses) {
    expect_success("mac_test drv_mac_get_addr_num 0xff000005 1 2",
                   "drv_mac_get_addr_num(inst_id=0xff000005, type_id=1, num=2, size=240) = 0 "
                   "buffer=[41 42 43 44 45 46 41 42 43 44 45 47]",
                   framed(banners::narrow, "test_mac_get_addr_num",
                          "drv_mac_get_addr_num::inst_id:0xff000005 type:1 num:2 ret:0x0\n"
                          "mac[ 0] : mac[41-42-43-44-45-46]\n"
                          "mac[ 1] : mac[41-42-43-44-45-47]\n",
                          "para[0]=0x0 para[1]=ABCDEFABCDEG "));
}

TEST(MacTest, GetAddrNumListsNoMoreThanItsBufferHolds) {
    std::string lines = "drv_mac_get_addr_num::inst_id:0xffffffff type:1 num:41 ret:0x0\n";
    for (int i = 0; i < 40; ++i) {
        lines += (i < 10 ? "mac[ " : "mac[") + std::to_string(i) + "] : mac[00-00-00-00-00-00]\n";
    }
    expect_success("mac_test drv_mac_get_addr_num 1 41",
                   "drv_mac_get_addr_num(inst_id=0xffffffff, type_id=1, num=41, size=240) = 0",
                   framed(banners::narrow, "test_mac_get_addr_num", lines, "para[0]=0x0 para[1]= "));
}

TEST(MacTest, GetAddrNumWithWrongWordCountsAndFailure) {
    expect_success("mac_test drv_mac_get_addr_num 1",
                   "drv_mac_get_addr_num(inst_id=0xffffffff, type_id=0, num=0, size=240) = 0",
                   framed(banners::narrow, "test_mac_get_addr_num",
                          "input error : in_num : 1 over [2-3] .\n"
                          "drv_mac_get_addr_num::inst_id:0xffffffff type:0 num:0 ret:0x0\n",
                          "para[0]=0x0 para[1]= "));
    expect_success("mac_test drv_mac_get_addr_num 1 none 3 4",
                   "drv_mac_get_addr_num(inst_id=0xffffffff, type_id=1, num=0, size=240) = 0",
                   framed(banners::narrow, "test_mac_get_addr_num",
                          "drv_mac_get_addr_num::inst_id:0xffffffff type:1 num:0 ret:0x0\n", "para[0]=0x0 para[1]= "));
    expect_failure("mac_test drv_mac_get_addr_num 1 3",
                   "drv_mac_get_addr_num(inst_id=0xffffffff, type_id=1, num=3, size=240) = 0x21",
                   framed(banners::narrow, "test_mac_get_addr_num",
                          "drv_mac_get_addr_num::inst_id:0xffffffff type:1 num:3 ret:0x21\n",
                          "para[0]=0x21 para[1]= "));
}
