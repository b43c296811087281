// Runs that end before any command: without memory for the root table, or for one of its rows.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(StartupTest, WithoutMemoryTheStatusIsOne) {
    const std::string state = new_scratch_dir();
    const process_result table = run_sim({"--state", state, "--fail-alloc", "1"}, {"mac_test"});
    EXPECT_EQ(table.out, "malloc for root cmd failure\r\n");
    EXPECT_EQ(table.err, "");
    EXPECT_EQ(table.status, 1);
    const process_result row = run_sim({"--state", state, "--fail-alloc", "2"}, {"mac_test"});
    EXPECT_EQ(row.out, "kestro_test: strdup failed\nroot cmd regist failure\r\n");
    EXPECT_EQ(row.err, "");
    EXPECT_EQ(row.status, 1);
}
