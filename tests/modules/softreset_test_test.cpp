// softreset_test: its sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::string line = "softreset_test drv_softreset_get_reset_type_test";

// No result print here.
std::string told(const std::string &lines) {
    return "\n\n*********   test_softreset_get_reset_type test begin:  ********\n\n\n" + lines +
           "\n\n*********   test_softreset_get_reset_type test   end:  ********\n\n\n";
}

} // namespace

TEST(SoftresetTest, UsageListsTheSubCommand) {
    expect_run("softreset_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_softreset_get_reset_type_test inst_id reset_type\n",
               0);
}

TEST(SoftresetTest, ShowsTheTypeThatTheDriverTells) {
    expect_success(line + " 0xff00000a 7", "drv_softreset_get_reset_type(inst_id=0xff00000a) = 0 reset_type=2",
                   told("drv_softreset_get_reset_type::inst_id:0xff00000a reset_type 2 ret:0x0\n"));
    expect_success(line + " 7", "drv_softreset_get_reset_type(inst_id=0xffffffff) = 0 reset_type=0",
                   told("drv_softreset_get_reset_type::inst_id:0xffffffff reset_type 0 ret:0x0\n"));
    expect_success(line + " 010 7", "drv_softreset_get_reset_type(inst_id=8) = 0 reset_type=0xffffffff",
                   told("drv_softreset_get_reset_type::inst_id:0x8 reset_type -1 ret:0x0\n"));
}

TEST(SoftresetTest, WrongWords) {
    expect_success(line, "drv_softreset_get_reset_type(inst_id=0xffffffff) = 0 reset_type=1",
                   told("input error : in_num : 0 over [1-2] .\n"
                        "drv_softreset_get_reset_type::inst_id:0xffffffff reset_type 1 ret:0x0\n"));
    expect_success(line + " 5 6 7", "drv_softreset_get_reset_type(inst_id=0xffffffff) = 0 reset_type=1",
                   told("drv_softreset_get_reset_type::inst_id:0xffffffff reset_type 1 ret:0x0\n"));
    expect_success(line + " board soft", "drv_softreset_get_reset_type(inst_id=0) = 0 reset_type=1",
                   told("drv_softreset_get_reset_type::inst_id:0x0 reset_type 1 ret:0x0\n"));
}

// What the driver leaves is the word.
TEST(SoftresetTest, Failure) {
    expect_failure(line + " 5 6", "drv_softreset_get_reset_type(inst_id=5) = 0x811101a4",
                   told("drv_softreset_get_reset_type::inst_id:0x5 reset_type 6 ret:0x811101a4\n"));
    expect_failure(line + " soft", "drv_softreset_get_reset_type(inst_id=0xffffffff) = 0x12",
                   told("drv_softreset_get_reset_type::inst_id:0xffffffff reset_type 0 ret:0x12\n"));
}
