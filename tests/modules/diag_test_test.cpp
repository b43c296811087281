// diag_test: its one sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/modules/untimed.h"

using namespace kestro_tests;

TEST(DiagTest, UsageListsTheSubCommand) {
    expect_run("diag_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " test_diag_init\n",
               0);
}

TEST(DiagTest, BothComeUp) {
    const std::string script = "drv_diag_init() = 0\ndrv_diag_cmd_init() = 0";
    expect_untimed_success("diag_test test_diag_init", script, "kestro_test diag_test_int success.\n");
    expect_untimed_success("diag_test test_diag_init 1 2", script, "kestro_test diag_test_int success.\n");
    if (!lists_lines()) {
        EXPECT_EQ(calls_in_order("diag_test test_diag_init", script), "drv_diag_init drv_diag_cmd_init ");
    }
}

// The second is not asked for what the first did not bring up.
TEST(DiagTest, FirstFails) {
    expect_untimed_failure("diag_test test_diag_init", "drv_diag_init() = 0x811101a4",
                           "drv_diag_init fail. ret 0x811101a4\n");
}

TEST(DiagTest, SecondFails) {
    expect_untimed_failure("diag_test test_diag_init", "drv_diag_init() = 0\ndrv_diag_cmd_init() = 0x12",
                           "drv_diag_cmd_init fail.. ret 0x12\n");
}

TEST(DiagTest, OnASimulatedBoard) {
    expect_untimed_success("diag_test test_diag_init", "drv_diag_init = pass\ndrv_diag_cmd_init = pass",
                           "kestro_test diag_test_int success.\n");
}

TEST(DiagTest, AnotherWordListsTheUsage) {
    expect_run("diag_test test_diag_ini 5", "",
               "kestro_test: option test_diag_ini not recognised.\n\ntest_diag_ini 5 \nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " test_diag_init\n",
               0);
}
