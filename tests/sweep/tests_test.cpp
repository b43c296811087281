// The tests of the tests: no row of any table without a command test.
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/sweep/sweep.h"

using namespace kestro_tests;

namespace {

std::string all_command_tests() {
    std::string text;
    for (const auto &entry : std::filesystem::directory_iterator(source_dir() + "/tests/modules")) {
        if (entry.path().extension() == ".cpp") {
            text += read_file(entry.path().string());
        }
    }
    return text;
}

// Tests name a command line as one text: the module, the sub-command and what follows.
bool has_command_test(const std::string &tests, const sub_command &command) {
    const std::string start = "\"" + command.module + " " + command.name;
    for (size_t at = tests.find(start); at != std::string::npos; at = tests.find(start, at + 1)) {
        const char next = tests.at(at + start.size());
        if (next == ' ' || next == '"') {
            return true;
        }
    }
    return false;
}

} // namespace

TEST(CommandTests, CoverEveryRowOfEveryTable) {
    const std::string tests = all_command_tests();
    for (const sub_command &command : all_sub_commands()) {
        EXPECT_TRUE(has_command_test(tests, command)) << command.module << " " << command.name;
    }
}

TEST(CommandTests, AMissingTestWouldShow) {
    const std::string tests = "expect_run(\"mac_test drv_mac_get_num 1\", ...)";
    EXPECT_TRUE(has_command_test(tests, {"mac_test", "drv_mac_get_num"}));
    EXPECT_FALSE(has_command_test(tests, {"mac_test", "drv_mac_get"}));
    EXPECT_FALSE(has_command_test(tests, {"mac_test", "drv_mac_init"}));
}
