// The whole-board self-test under every fault: unless it is cut short before it restores, the board keeps its identity.
#include <gtest/gtest.h>

#include <filesystem>
#include <initializer_list>
#include <map>

#include "tests/sweep/sweep.h"

using namespace kestro_tests;

namespace {

const std::vector<std::string> self_test = {"board_test", "board_onekey_test"};

std::map<std::string, std::string> identity(const std::string &state) {
    std::map<std::string, std::string> found;
    for (const auto &entry : std::filesystem::directory_iterator(state + "/images")) {
        if (entry.path().filename().string().rfind("eeprom", 0) == 0) {
            found[entry.path().filename().string()] = read_file(entry.path().string());
        }
    }
    return found;
}

// The lines of a test that ended between its write and its restore. A label or bar code whose first write failed is not
// among them: nothing was stored then.
bool is_cut_short(const std::string &output) {
    for (const char *line : {"after write fail", "after test fail", "Error: write mac fail.",
                             "Error: read mac after write fail.", "Error: final write original mac fail."}) {
        if (output.find(line) != std::string::npos) {
            return true;
        }
    }
    return false;
}

std::string expect_identity_kept(const std::vector<std::string> &options, const std::string &what) {
    static const auto before = identity(new_board());
    EXPECT_FALSE(before.empty());
    const process_result result = run_with(options, self_test);
    expect_clean_end(result, what);
    if (!is_cut_short(result.out)) {
        EXPECT_TRUE(identity(board_used()) == before) << what << "\n" << result.out;
    }
    return result.out;
}

} // namespace

TEST(IdentitySweep, EachFailingDriverCallLeavesTheIdentity) {
    const good_run reference = run_well({self_test, ""});
    ASSERT_GT(reference.calls.size(), 50U);
    for (const size_t n : faulted_calls(reference)) {
        for (const char *from_then_on : {"", "+"}) {
            const std::string fault = std::to_string(n) + from_then_on;
            expect_identity_kept({"--fail-call", fault}, "failing call " + fault);
        }
    }
}

TEST(IdentitySweep, EachFailingAllocationLeavesTheIdentity) {
    constexpr int unaffected_runs = 3;
    // Two tables, and a copy of name and help for each of their rows; then come those of the self-test.
    const size_t first = 2 + 2 * (all_modules().size() + rows_of("board_test")) + 1;
    const std::string reference = run_with({}, self_test).out;
    int unaffected = 0;
    std::string outputs;
    size_t n = first;
    for (; unaffected < unaffected_runs; ++n) {
        const std::string output =
            expect_identity_kept({"--fail-alloc", std::to_string(n)}, "failing allocation " + std::to_string(n));
        unaffected = output == reference ? unaffected + 1 : 0;
        outputs += output;
    }
    EXPECT_NE(outputs.find("set pic elabel malloc image buffer failed\r\n"
                           "there is no such file: /opt/hostx/home/elabel.txt. so load test info :elable test test "
                           "test test ...\r\n"),
              std::string::npos);
    EXPECT_NE(outputs.find("Error: mac num read fail, len = 12.\r\n"
                           "Error: orignal mac read fail.ret =0xffffffff original_mac_num = 2\r\n"),
              std::string::npos);
    // The label's image, and two areas for each type of MAC address.
    EXPECT_EQ(n - unaffected_runs - first, 1U + 2 * 6);
}
