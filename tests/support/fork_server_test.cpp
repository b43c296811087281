// A run that is forked from a loaded program and one that is started are the same.
#include <csignal>
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::vector<std::string> self_test = {"board_test", "board_onekey_test"};

std::vector<std::string> on_new_state(std::vector<std::string> options) {
    options.insert(options.end(), {"--state", new_scratch_dir(), "--clock", "virtual"});
    return options;
}

void expect_same(const std::vector<std::string> &options, const std::vector<std::string> &words,
                 const process_options &process = {}) {
    const process_result forked = run_forked_always(on_new_state(options), words, process);
    const process_result started = run_launcher(on_new_state(options), words, process);
    EXPECT_EQ(forked.out, started.out);
    EXPECT_EQ(forked.status, started.status);
    EXPECT_EQ(forked.timed_out, started.timed_out);
    if (getenv("KESTRO_EMULATOR") == nullptr) {
        EXPECT_EQ(forked.err, started.err);
    }
}

} // namespace

TEST(ForkServer, RunsWithTheWordsOfEachRequest) {
    EXPECT_NE(run_forked_always(on_new_state({}), {"mac_test"}, {}).out,
              run_forked_always(on_new_state({}), {}, {}).out);
    expect_same({}, {});
    expect_same({}, {"mac_test", "drv_mac_get_num", "0xffffffff", "1"});
    expect_same({}, {"", "a b", "%s", std::string(5000, 'w')});
    expect_same({"--board", "lpu"}, self_test);
}

TEST(ForkServer, TheProbeHearsWhatEachRunAsks) {
    const std::string script = scratch_file("script", "drv_mac_get_num = 0 num=3\n");
    expect_same({"--script", script}, {"mac_test", "drv_mac_get_num"});
    expect_same({"--script", script, "--strict"}, self_test);
    expect_same({"--fail-call", "2+=7"}, self_test);
    expect_same({"--script", scratch_file("script", "nothing = 0\n")}, self_test);
    for (const bool forked : {true, false}) {
        const std::string trace = new_scratch_dir() + "/trace";
        const std::vector<std::string> options = on_new_state({"--trace", trace});
        const process_result result =
            forked ? run_forked_always(options, self_test, {}) : run_launcher(options, self_test);
        EXPECT_EQ(result.status, 0);
        static const std::string first = read_file(trace);
        EXPECT_EQ(read_file(trace), first);
        EXPECT_NE(first.find("drv_"), std::string::npos);
    }
}

TEST(ForkServer, TheWorldHearsWhatEachRunAsks) {
    expect_same({"--fail-alloc", "1"}, {});
    expect_same({"--fail-alloc", "30"}, self_test);
    const std::string empty = new_scratch_dir();
    expect_same({"--root", empty}, self_test);
}

TEST(ForkServer, SignalsAndTheTimeLimitEndARun) {
    expect_same({"--script", scratch_file("script", "drv_mac_get_num = crash\n")}, {"mac_test", "drv_mac_get_num"});
    process_options short_time;
    // Long enough for what is printed before the hang, also by an emulated program that is started.
    short_time.time_limit_ms = getenv("KESTRO_EMULATOR") == nullptr ? 1000 : 8000;
    expect_same({"--script", scratch_file("script", "drv_mac_get_num = hang\n")}, {"mac_test", "drv_mac_get_num"},
                short_time);
}

// What a run started may live on and hold its pipes.
TEST(Processes, AKilledRunIsOverWhateverItStarted) {
    process_options short_time;
    short_time.time_limit_ms = 100;
    const process_result result = run_process({"/bin/sh", "-c", "echo begun; sleep 20 & sleep 20"}, short_time);
    EXPECT_TRUE(result.timed_out);
    EXPECT_EQ(result.out, "begun\n");
    EXPECT_EQ(result.status, 128 + SIGKILL);
}
