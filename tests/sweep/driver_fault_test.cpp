// Every sub-command of every module with each of its driver calls failing, crashing or hanging in turn. The modules
// and sub-commands are those of the usage listings: a new one is swept without anybody remembering.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/sweep/sweep.h"

using namespace kestro_tests;

namespace {

class ModuleSweep : public testing::TestWithParam<std::string> {};

// Whether the emulator speaks on standard error when the program it runs is ended by a signal.
bool is_emulated() {
    return getenv("KESTRO_EMULATOR") != nullptr;
}

const std::string &fault_script(const std::string &text) {
    static const std::string path = new_scratch_dir() + "/fault";
    write_file(path, text);
    return path;
}

// Every run is on a new board: an identity test that is cut short leaves its test values behind.
void expect_crash_loses_nothing(const std::vector<std::string> &line, const std::string &script) {
    const std::string what = joined(line) + " with " + script;
    const std::string &path = fault_script(script);
    process_options unbuffered;
    unbuffered.environment = {"LD_PRELOAD=" UNBUFFERED_LIBRARY};
    const process_result reference = run_with({"--reset", "--script", path}, line, unbuffered);
    const process_result result = run_with({"--reset", "--script", path}, line);
    EXPECT_EQ(result.status, 128 + SIGSEGV) << what;
    EXPECT_EQ(result.out, reference.out) << what;
    if (!is_emulated()) {
        EXPECT_EQ(result.err, "") << what;
    }
}

// The trace line of the call that hangs is written before it hangs; then the run is ended.
process_result run_into_hang(const std::vector<std::string> &line, const std::string &script_file, size_t call,
                             process_options process) {
    const std::string trace = scratch_file("trace", "");
    process.kill_when = [&] {
        const std::string text = read_file(trace);
        return static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) >= call;
    };
    return run_with({"--reset", "--script", script_file, "--trace", trace}, line, process);
}

void expect_hang_loses_nothing(const std::vector<std::string> &line, const std::vector<std::string> &calls, size_t n) {
    const std::string script = fault_at(calls, n, "hang");
    const std::string what = joined(line) + " with " + script;
    const std::string &path = fault_script(script);
    process_options unbuffered;
    unbuffered.environment = {"LD_PRELOAD=" UNBUFFERED_LIBRARY};
    const process_result reference = run_into_hang(line, path, n, unbuffered);
    const process_result result = run_into_hang(line, path, n, {});
    EXPECT_EQ(result.status, 128 + SIGKILL) << what;
    EXPECT_FALSE(result.timed_out) << what;
    EXPECT_EQ(result.out, reference.out) << what;
}

} // namespace

TEST_P(ModuleSweep, FailingDriverCallsAreData) {
    for (const sub_command &command : sub_commands_of(GetParam())) {
        for (const std::vector<std::string> &line : differing_lines(command)) {
            const size_t calls = good_run_of(line).calls.size();
            for (size_t n = 1; n <= calls; ++n) {
                for (const char *from_then_on : {"", "+"}) {
                    const std::string fault = std::to_string(n) + from_then_on;
                    expect_clean_end(run_with({"--reset", "--fail-call", fault}, line),
                                     joined(line) + " failing call " + fault);
                }
            }
        }
    }
}

TEST_P(ModuleSweep, ACrashingDriverLosesNothingPrintedBefore) {
    for (const sub_command &command : sub_commands_of(GetParam())) {
        const std::vector<std::string> line = most_calling_line(command);
        const std::vector<std::string> &calls = good_run_of(line).calls;
        for (size_t n = 1; n <= calls.size(); ++n) {
            expect_crash_loses_nothing(line, fault_at(calls, n, "crash"));
        }
    }
}

TEST_P(ModuleSweep, AHangingDriverLosesNothingPrintedBefore) {
    for (const sub_command &command : sub_commands_of(GetParam())) {
        const std::vector<std::string> line = most_calling_line(command);
        const std::vector<std::string> &calls = good_run_of(line).calls;
        for (size_t n = 1; n <= calls.size(); ++n) {
            expect_hang_loses_nothing(line, calls, n);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(AllModules, ModuleSweep, testing::ValuesIn(all_modules()),
                         [](const auto &module) { return module.param; });
