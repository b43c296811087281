// init_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(InitTest, UsageListsTheSubCommandsInOrder) {
    expect_run("init_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " init_entry\n"
               " exit_entry\n",
               0);
}

TEST(InitTest, InitEntry) {
    expect_success("init_test init_entry 5", "drv_init_entry(slot=5) = 0", "Succeed to init slot 5.\r\n");
    expect_success("init_test init_entry 0xff00000b", "drv_init_entry(slot=0xff00000b) = 0",
                   "Succeed to init slot ff00000b.\r\n");
    expect_success("init_test init_entry 12", "drv_init_entry(slot=12) = 0", "Succeed to init slot c.\r\n");
    expect_success("init_test init_entry 010 9 9", "drv_init_entry(slot=8) = 0", "Succeed to init slot 8.\r\n");
    expect_success("init_test init_entry slot", "drv_init_entry(slot=0) = 0", "Succeed to init slot 0.\r\n");
}

TEST(InitTest, InitEntryFailure) {
    expect_failure("init_test init_entry 26", "drv_init_entry(slot=26) = 0x811101a4", "Failed to init slot 1a.\r\n");
    expect_failure("init_test init_entry", "", "");
}

TEST(InitTest, ExitEntry) {
    expect_success("init_test exit_entry 5", "drv_exit_entry(slot=5) = 0", "Succeed to exit slot 5.\r\n");
    expect_success("init_test exit_entry 0xff00000b", "drv_exit_entry(slot=0xff00000b) = 0",
                   "Succeed to exit slot ff00000b.\r\n");
    expect_success("init_test exit_entry 12", "drv_exit_entry(slot=12) = 0", "Succeed to exit slot c.\r\n");
    expect_success("init_test exit_entry 010 9 9", "drv_exit_entry(slot=8) = 0", "Succeed to exit slot 8.\r\n");
    expect_success("init_test exit_entry slot", "drv_exit_entry(slot=0) = 0", "Succeed to exit slot 0.\r\n");
}

TEST(InitTest, ExitEntryFailure) {
    expect_failure("init_test exit_entry 26", "drv_exit_entry(slot=26) = 0x811101a4", "Failed to exit slot 1a.\r\n");
    expect_failure("init_test exit_entry", "", "");
}
