// The tests of the tests: no row of any table without a command test, and no driver call that only those reach.
#include <gtest/gtest.h>

#include <set>

#include "tests/sweep/sweep.h"

using namespace kestro_tests;

namespace {

class CommandTests : public testing::TestWithParam<sub_command> {};

// What the command tests answer and none of the runs calls.
std::set<std::string> unreached(const std::vector<test_line> &lines, const std::vector<good_run> &runs) {
    std::set<std::string> operations;
    for (const test_line &line : lines) {
        for (const std::string &operation : operations_in(line.script)) {
            operations.insert(operation);
        }
    }
    for (const good_run &run : runs) {
        for (const driver_call &call : run.calls) {
            operations.erase(operation_of(call.made));
        }
    }
    return operations;
}

} // namespace

TEST_P(CommandTests, CoverTheSubCommand) {
    EXPECT_FALSE(test_lines_of(GetParam()).empty()) << "no command test has a line with this sub-command";
}

TEST(WaitingCommandTests, CoverTheSubCommand) {
    for (const sub_command &command : sub_commands_that_wait()) {
        EXPECT_FALSE(test_lines_of(command).empty()) << command.name;
    }
}

TEST_P(CommandTests, HaveNoDriverCallThatNoSweepReaches) {
    for (const std::string &operation : unreached(test_lines_of(GetParam()), swept_runs(GetParam()))) {
        ADD_FAILURE() << operation;
    }
}

INSTANTIATE_TEST_SUITE_P(All, CommandTests, testing::ValuesIn(sub_commands_swept_here()), name_of_command);

TEST(TestLines, AMissingTestWouldShow) {
    EXPECT_TRUE(test_lines_of({"mac_test", "drv_mac_get"}).empty());
    EXPECT_FALSE(test_lines_of({"mac_test", "drv_mac_get_num"}).empty());
}

TEST(TestLines, AnOperationThatNoSweepReachesWouldShow) {
    const std::vector<test_line> lines = {{{"a", "b"}, "drv_one(id=1) = 0\n# drv_no\ndrv_two = 5 x3\n"}};
    const std::vector<good_run> runs = {{lines[0], {{"drv_one(id=1)", " = 0x0"}}, "", 0}};
    EXPECT_EQ(unreached(lines, runs), std::set<std::string>{"drv_two"});
}
