// digital_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(DigitalTest, UsageListsTheSubCommandsInOrder) {
    expect_run("digital_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_digital_init        inst_id\n"
               " drv_digital_deinit      inst_id\n"
               " drv_digital_set_mode    inst_id chip_id mode\n"
               " drv_digital_set_status  inst_id chip_id status\n"
               " drv_digital_get_status  inst_id chip_id\n"
               " drv_digital_get_in_num  inst_id\n"
               " drv_digital_get_out_num inst_id\n",
               0);
}

// The whole of one run, written out: what stands around the lines of a test with wide banners.
TEST(DigitalTest, BannersAreWide) {
    expect_run("digital_test drv_digital_init 5", "drv_digital_init(inst_id=5) = 0",
               "\n\n*********   test_digital_init test begin:  ********\n\n\n"
               "drv_digital_init::inst_id:0x5 ret:0x0\n"
               "para[0]=0x0 \r\n----kestro_test std result print end----\n"
               "\n\n*********   test_digital_init test   end:  ********\n\n\n"
               "cmd_exec used second:0\r\ncmd_exec used millisecond:0\r\n",
               0);
}

TEST(DigitalTest, Init) {
    const std::string self =
        framed(banners::wide, "test_digital_init", "drv_digital_init::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 ");
    expect_success("digital_test drv_digital_init", "drv_digital_init(inst_id=0xffffffff) = 0", self);
    expect_success("digital_test drv_digital_init 1 2", "drv_digital_init(inst_id=0xffffffff) = 0", self);
    expect_success(
        "digital_test drv_digital_init board", "drv_digital_init(inst_id=0) = 0",
        framed(banners::wide, "test_digital_init", "drv_digital_init::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "));
    expect_failure("digital_test drv_digital_init 0xff000007", "drv_digital_init(inst_id=0xff000007) = 0x811101a4",
                   framed(banners::wide, "test_digital_init", "drv_digital_init::inst_id:0xff000007 ret:0x811101a4\n",
                          "para[0]=0x811101a4 "));
}

TEST(DigitalTest, Deinit) {
    const std::string self = framed(banners::wide, "test_digital_deinit",
                                    "drv_digital_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 ");
    expect_success("digital_test drv_digital_deinit", "drv_digital_deinit(inst_id=0xffffffff) = 0", self);
    expect_success("digital_test drv_digital_deinit 1 2", "drv_digital_deinit(inst_id=0xffffffff) = 0", self);
    expect_success(
        "digital_test drv_digital_deinit x", "drv_digital_deinit(inst_id=0) = 0",
        framed(banners::wide, "test_digital_deinit", "drv_digital_deinit::inst_id:0x0 ret:0x0\n", "para[0]=0x0 "));
    expect_failure(
        "digital_test drv_digital_deinit 010", "drv_digital_deinit(inst_id=8) = 0x12",
        framed(banners::wide, "test_digital_deinit", "drv_digital_deinit::inst_id:0x8 ret:0x12\n", "para[0]=0x12 "));
}

TEST(DigitalTest, SetMode) {
    expect_success("digital_test drv_digital_set_mode 0xff000007 3 2",
                   "drv_digital_set_mode(inst_id=0xff000007, chip_id=3, mode=2) = 0",
                   framed(banners::wide, "test_digital_set_mode",
                          "drv_digital_set_mode::inst_id:0xff000007 type:3 mode:2 ret:0x0\n", "para[0]=0x0 "));
    expect_success("digital_test drv_digital_set_mode 3 2",
                   "drv_digital_set_mode(inst_id=0xffffffff, chip_id=3, mode=2) = 0",
                   framed(banners::wide, "test_digital_set_mode",
                          "drv_digital_set_mode::inst_id:0xffffffff type:3 mode:2 ret:0x0\n", "para[0]=0x0 "));
    expect_failure("digital_test drv_digital_set_mode 0xffffffff -1",
                   "drv_digital_set_mode(inst_id=0xffffffff, chip_id=0xffffffff, mode=0xffffffff) = 0x811101a4",
                   framed(banners::wide, "test_digital_set_mode",
                          "drv_digital_set_mode::inst_id:0xffffffff type:-1 mode:-1 ret:0x811101a4\n",
                          "para[0]=0x811101a4 "));
}

TEST(DigitalTest, SetModeWithOtherWords) {
    const std::string script = "drv_digital_set_mode(inst_id=0xffffffff, chip_id=0, mode=0) = 0";
    const std::string line = "drv_digital_set_mode::inst_id:0xffffffff type:0 mode:0 ret:0x0\n";
    expect_success("digital_test drv_digital_set_mode 3", script,
                   framed(banners::wide, "test_digital_set_mode", "input error : in_num : 1 over [2-3] .\n" + line,
                          "para[0]=0x0 "));
    expect_success("digital_test drv_digital_set_mode chip mode", script,
                   framed(banners::wide, "test_digital_set_mode", line, "para[0]=0x0 "));
    expect_success("digital_test drv_digital_set_mode 1 2 3 4",
                   "drv_digital_set_mode(inst_id=0xffffffff, chip_id=1, mode=2) = 0",
                   framed(banners::wide, "test_digital_set_mode",
                          "drv_digital_set_mode::inst_id:0xffffffff type:1 mode:2 ret:0x0\n", "para[0]=0x0 "));
}

TEST(DigitalTest, SetStatus) {
    expect_success("digital_test drv_digital_set_status 0xff000007 1 1",
                   "drv_digital_set_status(inst_id=0xff000007, chip_id=1, status=1) = 0",
                   framed(banners::wide, "test_digital_set_status",
                          "drv_digital_set_status::inst_id:0xff000007 id:1 state:1 ret:0x0\n", "para[0]=0x0 "));
    expect_success("digital_test drv_digital_set_status 1 0",
                   "drv_digital_set_status(inst_id=0xffffffff, chip_id=1, status=0) = 0",
                   framed(banners::wide, "test_digital_set_status",
                          "drv_digital_set_status::inst_id:0xffffffff id:1 state:0 ret:0x0\n", "para[0]=0x0 "));
    expect_failure("digital_test drv_digital_set_status 2 0xffffffff",
                   "drv_digital_set_status(inst_id=0xffffffff, chip_id=2, status=0xffffffff) = 0x81110103",
                   framed(banners::wide, "test_digital_set_status",
                          "drv_digital_set_status::inst_id:0xffffffff id:2 state:-1 ret:0x81110103\n",
                          "para[0]=0x81110103 "));
}

TEST(DigitalTest, SetStatusWithOtherWords) {
    const std::string script = "drv_digital_set_status(inst_id=0xffffffff, chip_id=0, status=0) = 0";
    const std::string line = "drv_digital_set_status::inst_id:0xffffffff id:0 state:0 ret:0x0\n";
    expect_success("digital_test drv_digital_set_status", script,
                   framed(banners::wide, "test_digital_set_status", "input error : in_num : 0 over [2-3] .\n" + line,
                          "para[0]=0x0 "));
    expect_success("digital_test drv_digital_set_status chip on", script,
                   framed(banners::wide, "test_digital_set_status", line, "para[0]=0x0 "));
    expect_success("digital_test drv_digital_set_status 1 1 3 4",
                   "drv_digital_set_status(inst_id=0xffffffff, chip_id=1, status=1) = 0",
                   framed(banners::wide, "test_digital_set_status",
                          "drv_digital_set_status::inst_id:0xffffffff id:1 state:1 ret:0x0\n", "para[0]=0x0 "));
}

TEST(DigitalTest, GetStatus) {
    expect_success("digital_test drv_digital_get_status 0xff000007 3",
                   "drv_digital_get_status(inst_id=0xff000007, chip_id=3) = 0 status=1",
                   framed(banners::wide, "test_digital_get_status",
                          "drv_digital_get_status::inst_id:0xff000007 id:3 state:1 ret:0x0\n",
                          "para[0]=0x0 para[1]=0x1 "));
    expect_success("digital_test drv_digital_get_status 3",
                   "drv_digital_get_status(inst_id=0xffffffff, chip_id=3) = 0 status=0xfffffff0",
                   framed(banners::wide, "test_digital_get_status",
                          "drv_digital_get_status::inst_id:0xffffffff id:3 state:-16 ret:0x0\n",
                          "para[0]=0x0 para[1]=0xfffffff0 "));
    expect_failure("digital_test drv_digital_get_status 4",
                   "drv_digital_get_status(inst_id=0xffffffff, chip_id=4) = 0x811101a4",
                   framed(banners::wide, "test_digital_get_status",
                          "drv_digital_get_status::inst_id:0xffffffff id:4 state:0 ret:0x811101a4\n",
                          "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(DigitalTest, GetStatusWithOtherWords) {
    const std::string script = "drv_digital_get_status(inst_id=0xffffffff, chip_id=0) = 0 status=1";
    const std::string line = "drv_digital_get_status::inst_id:0xffffffff id:0 state:1 ret:0x0\n";
    expect_success("digital_test drv_digital_get_status", script,
                   framed(banners::wide, "test_digital_get_status", "input error : in_num : 0 over [1-2] .\n" + line,
                          "para[0]=0x0 para[1]=0x1 "));
    expect_success("digital_test drv_digital_get_status contact", script,
                   framed(banners::wide, "test_digital_get_status", line, "para[0]=0x0 para[1]=0x1 "));
    expect_success("digital_test drv_digital_get_status 2 1 0",
                   "drv_digital_get_status(inst_id=0xffffffff, chip_id=2) = 0 status=0",
                   framed(banners::wide, "test_digital_get_status",
                          "drv_digital_get_status::inst_id:0xffffffff id:2 state:0 ret:0x0\n",
                          "para[0]=0x0 para[1]=0x0 "));
}

TEST(DigitalTest, GetInNum) {
    expect_success("digital_test drv_digital_get_in_num", "drv_digital_get_in_num(inst_id=0xffffffff) = 0 num=12",
                   framed(banners::wide, "test_digital_get_in_num",
                          "drv_digital_get_in_num::inst_id:0xffffffff num:12 ret:0x0\n", "para[0]=0x0 para[1]=0xc "));
    expect_success("digital_test drv_digital_get_in_num 3", "drv_digital_get_in_num(inst_id=3) = 0 num=4",
                   framed(banners::wide, "test_digital_get_in_num",
                          "drv_digital_get_in_num::inst_id:0x3 num:4 ret:0x0\n", "para[0]=0x0 para[1]=0x4 "));
    expect_success("digital_test drv_digital_get_in_num 3 4", "drv_digital_get_in_num(inst_id=0xffffffff) = 0 num=4",
                   framed(banners::wide, "test_digital_get_in_num",
                          "drv_digital_get_in_num::inst_id:0xffffffff num:4 ret:0x0\n", "para[0]=0x0 para[1]=0x4 "));
    expect_failure("digital_test drv_digital_get_in_num x", "drv_digital_get_in_num(inst_id=0) = 0x811101a4",
                   framed(banners::wide, "test_digital_get_in_num",
                          "drv_digital_get_in_num::inst_id:0x0 num:0 ret:0x811101a4\n",
                          "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(DigitalTest, GetOutNum) {
    expect_success("digital_test drv_digital_get_out_num", "drv_digital_get_out_num(inst_id=0xffffffff) = 0 num=12",
                   framed(banners::wide, "test_digital_get_out_num",
                          "drv_digital_get_out_num::inst_id:0xffffffff num:12 ret:0x0\n", "para[0]=0x0 para[1]=0xc "));
    expect_success("digital_test drv_digital_get_out_num 3", "drv_digital_get_out_num(inst_id=3) = 0 num=2",
                   framed(banners::wide, "test_digital_get_out_num",
                          "drv_digital_get_out_num::inst_id:0x3 num:2 ret:0x0\n", "para[0]=0x0 para[1]=0x2 "));
    expect_success("digital_test drv_digital_get_out_num 3 4", "drv_digital_get_out_num(inst_id=0xffffffff) = 0 num=2",
                   framed(banners::wide, "test_digital_get_out_num",
                          "drv_digital_get_out_num::inst_id:0xffffffff num:2 ret:0x0\n", "para[0]=0x0 para[1]=0x2 "));
    expect_failure("digital_test drv_digital_get_out_num x", "drv_digital_get_out_num(inst_id=0) = 0x811101a4",
                   framed(banners::wide, "test_digital_get_out_num",
                          "drv_digital_get_out_num::inst_id:0x0 num:0 ret:0x811101a4\n",
                          "para[0]=0x811101a4 para[1]=0x0 "));
}
