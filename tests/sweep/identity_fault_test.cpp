// The whole-board self-test under every fault: unless it is cut short before it restores, the board keeps its identity.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <set>

#include "tests/sweep/sweep.h"

using namespace kestro_tests;

namespace {

// What operations on the board's identity and its boot step have in their names.
constexpr std::array kept_things = {"elabel", "barcode", "_mac_", "bootstep"};

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

// The calls that touch what the board keeps, and one of each other operation; all in the full tier. A run of the whole
// self-test is long: of those that the other builds try, they take every third.
std::vector<size_t> calls_tried(const good_run &reference) {
    const int tried_of = long_stride() / stride();
    std::set<std::string> seen;
    std::vector<size_t> tried;
    int found = 0;
    for (size_t n = 1; n <= reference.calls.size(); ++n) {
        const std::string operation = operation_of(reference.calls[n - 1].made);
        const bool touches = std::any_of(kept_things.begin(), kept_things.end(),
                                         [&](const char *thing) { return operation.find(thing) != std::string::npos; });
        if ((touches || seen.insert(operation).second || everything_is_tried()) && is_tried_here(std::to_string(n)) &&
            found++ % tried_of == 0) {
            tried.push_back(n);
        }
    }
    return tried;
}

std::string boot_step() {
    return run_sim({"--state", board_used(), "--get", "slot9/board/unit/0/bootstep"}, {}).out;
}

void expect_signal_leaves_identity(size_t n, const std::string &name, int number, const std::string &reference) {
    static const auto before = identity(new_board());
    static const std::string step_before = boot_step();
    const std::string call = std::to_string(n) + "=" + name;
    const process_result result = run_with({"--signal-call", call}, self_test);
    EXPECT_EQ(result.status, 128 + number) << call;
    EXPECT_TRUE(reference.starts_with(result.out)) << call << "\n" << result.out;
    EXPECT_TRUE(identity(board_used()) == before) << call << "\n" << result.out;
    EXPECT_EQ(boot_step(), step_before) << call;
}

} // namespace

// An operator's Ctrl-C, a kill, or a connection that is lost, at whatever moment.
TEST(IdentitySweep, ASignalAtEachDriverCallLeavesTheIdentity) {
    const good_run reference = run_well({self_test, ""});
    const std::array<std::pair<const char *, int>, 3> signals = {{{"INT", SIGINT}, {"TERM", SIGTERM}, {"HUP", SIGHUP}}};
    size_t which = 0;
    for (const size_t n : calls_tried(reference)) {
        const auto &[name, number] = signals.at(which++ % signals.size());
        expect_signal_leaves_identity(n, name, number, reference.output);
    }
}

// Who cannot wait presses it twice: a driver that hangs does not hold the operator.
TEST(IdentitySweep, ASecondSignalEndsTheRunAtOnce) {
    const good_run reference = run_well({self_test, ""});
    size_t n = 1;
    while (operation_of(reference.calls.at(n - 1).made) != "drv_mac_set_addr_num") {
        ++n;
    }
    const std::string call = std::to_string(n);
    const std::string script = script_file("drv_mac_set_addr_num = hang\n");
    const process_result result = run_with({"--script", script, "--signal-call", call + "," + call}, self_test);
    EXPECT_EQ(result.status, 128 + SIGINT);
    EXPECT_FALSE(result.timed_out);
    process_options short_time;
    short_time.time_limit_ms = getenv("KESTRO_EMULATOR") == nullptr ? 1500 : 8000;
    EXPECT_TRUE(run_with({"--script", script, "--signal-call", call}, self_test, short_time).timed_out);
}

TEST(IdentitySweep, EachFailingDriverCallLeavesTheIdentity) {
    const good_run reference = run_well({self_test, ""});
    ASSERT_GT(reference.calls.size(), 50U);
    // One call alone and all from it on: both of each where each is tried, else by turns.
    bool is_alone = false;
    for (const size_t n : calls_tried(reference)) {
        is_alone = !is_alone;
        for (const char *from_then_on : {"", "+"}) {
            const bool is_its_turn = is_alone == (*from_then_on == '\0');
            if (stride() == 1 || is_its_turn) {
                const std::string fault = std::to_string(n) + from_then_on;
                expect_identity_kept({"--fail-call", fault}, "failing call " + fault);
            }
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
    // The label's image, two areas for each type of MAC address, the buffer and the dump of the clock; the black box
    // and the image of each of three power supplies.
    EXPECT_EQ(n - unaffected_runs - first, 1U + 2 * 6 + 2 + 2 * 3);
}
