// Every sub-command of every module with its driver calls failing, crashing or hanging in turn. The modules and
// sub-commands are those of the usage listings: a new one is swept without anybody remembering.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/sweep/sweep.h"

using namespace kestro_tests;

namespace {

class CommandSweep : public testing::TestWithParam<sub_command> {};

// Whether the emulator speaks on standard error when the program it runs is ended by a signal.
bool is_emulated() {
    return getenv("KESTRO_EMULATOR") != nullptr;
}

void expect_failing_call_is_data(const good_run &run, const std::string &fault) {
    const process_result result = run_with(
        {"--script", script_file(run.line.script), "--trace", trace_file(), "--fail-call", fault}, run.line.words);
    expect_clean_end(result, joined(run.line.words) + " failing call " + fault + " of\n" + run.line.script);
}

// A call that fails alone, and with all calls behind it, where the program makes any.
void expect_failing_calls_are_data(const good_run &run) {
    for (const size_t n : faulted_calls(run)) {
        expect_failing_call_is_data(run, std::to_string(n));
        if (calls_traced() > n) {
            expect_failing_call_is_data(run, std::to_string(n) + "+");
        }
    }
}

// A recording of the run up to the n-th call, which ends so.
std::string recording_until(const good_run &run, size_t n, const std::string &end) {
    std::string recording;
    for (size_t i = 0; i + 1 < n; ++i) {
        recording += run.calls[i].made + run.calls[i].answered + "\n";
    }
    return recording + run.calls[n - 1].made + " = " + end;
}

void expect_crash_loses_nothing(const good_run &run, size_t n, const std::string &printed) {
    const std::string recording = recording_until(run, n, "crash");
    const process_result result = run_with({"--replay", script_file(recording)}, run.line.words);
    EXPECT_EQ(result.status, 128 + SIGSEGV) << joined(run.line.words) << "\n" << recording;
    EXPECT_EQ(result.out, printed) << joined(run.line.words) << "\n" << recording;
    if (!is_emulated()) {
        EXPECT_EQ(result.err, "") << joined(run.line.words) << "\n" << recording;
    }
}

// The trace line of the call that hangs is written before it hangs; then the run is ended.
void expect_hang_loses_nothing(const good_run &run, size_t n, const std::string &printed) {
    const std::string recording = recording_until(run, n, "hang");
    process_options until_hang;
    until_hang.kill_when = [&] { return calls_traced() >= n; };
    const process_result result =
        run_with({"--replay", script_file(recording), "--trace", trace_file()}, run.line.words, until_hang);
    EXPECT_EQ(result.status, 128 + SIGKILL) << joined(run.line.words) << "\n" << recording;
    EXPECT_FALSE(result.timed_out) << joined(run.line.words) << "\n" << recording;
    EXPECT_EQ(result.out, printed) << joined(run.line.words) << "\n" << recording;
}

// What is on the screen before a call does not depend on how the call ends, nor on the processor.
bool hangs_as_well() {
    return getenv("KESTRO_BUILD_UNDER_TEST") == nullptr || everything_is_tried();
}

} // namespace

TEST_P(CommandSweep, FailingDriverCallsAreData) {
    for (const good_run &run : swept_runs(GetParam())) {
        expect_failing_calls_are_data(run);
    }
}

TEST_P(CommandSweep, ADriverThatNeverReturnsLosesNothingPrintedBefore) {
    for (const good_run &run : swept_runs(GetParam())) {
        const std::vector<std::string> printed = printed_before_calls(run);
        for (const size_t n : faulted_calls(run)) {
            expect_crash_loses_nothing(run, n, printed.at(n - 1));
            if (hangs_as_well()) {
                expect_hang_loses_nothing(run, n, printed.at(n - 1));
            }
        }
    }
}

// The simulated chassis alone: it has a state, and its answers behind a failed call are those of drivers. A line that
// makes one call fails before it comes to any.
// The whole self-test with each of its operations failing is a matter of IdentitySweep.
TEST_P(CommandSweep, FailingDriverCallsAreDataOnASimulatedBoard) {
    if (GetParam().name == "board_onekey_test") {
        return;
    }
    const good_run &scripted = swept_runs(GetParam()).front();
    const good_run run = run_well({scripted.line.words, ""});
    if (scripted.calls.size() > 1 || run.calls.size() > 1) {
        expect_failing_calls_are_data(run);
    }
}

// The whole self-test as the simulated board answers it, ended at each of its operations.
TEST(WholeBoardSweep, ADriverThatNeverReturnsLosesNothingPrintedBefore) {
    const good_run run = run_well({{"board_test", "board_onekey_test"}, ""});
    const std::vector<std::string> printed = printed_before_calls(run);
    for (const size_t n : faulted_calls(run)) {
        if (is_tried_here(std::to_string(n))) {
            expect_crash_loses_nothing(run, n, printed.at(n - 1));
            if (hangs_as_well()) {
                expect_hang_loses_nothing(run, n, printed.at(n - 1));
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, CommandSweep, testing::ValuesIn(sub_commands_swept_here()), name_of_command);
