// The words that say which driver calls are to fail.
#include "probe/settings.h"

#include <csignal>
#include <gtest/gtest.h>

using namespace kestro_probe;

namespace {

void expect_failing(const std::string &text, uint64_t first, bool all_after, uint32_t code) {
    fail_call failing;
    EXPECT_TRUE(parse_fail_call(text, failing)) << text;
    EXPECT_EQ(failing.first, first) << text;
    EXPECT_EQ(failing.all_after, all_after) << text;
    EXPECT_EQ(failing.code, code) << text;
}

void expect_signals(const std::string &text, const std::vector<uint64_t> &calls, int number) {
    signal_calls signals;
    EXPECT_TRUE(parse_signal_calls(text, signals)) << text;
    EXPECT_EQ(signals.calls, calls) << text;
    EXPECT_EQ(signals.number, number) << text;
}

} // namespace

TEST(FailCallTest, NumbersACallAndItsCode) {
    expect_failing("3", 3, false, 0xdead);
    expect_failing("3=0x811101a4", 3, false, 0x811101a4);
    expect_failing("12+", 12, true, 0xdead);
    expect_failing("1+=-1", 1, true, 0xffffffff);
}

TEST(FailCallTest, RefusesEverythingElse) {
    for (const char *text : {"", "0", "x", "-1", "3=", "3=x", "3++", "3 ", "+", "3=1 2", "3=0x1ffffffff"}) {
        fail_call failing;
        EXPECT_FALSE(parse_fail_call(text, failing)) << text;
    }
}

TEST(SignalCallTest, NumbersCallsAndNamesASignal) {
    expect_signals("3", {3}, SIGINT);
    expect_signals("3,3", {3, 3}, SIGINT);
    expect_signals("12,7=TERM", {12, 7}, SIGTERM);
    expect_signals("1=HUP", {1}, SIGHUP);
    expect_signals("1=INT", {1}, SIGINT);
}

TEST(SignalCallTest, RefusesEverythingElse) {
    for (const char *text : {"", "0", "x", "-1", "3=", "3=KILL", "3,", ",3", "3,0", "3 ", "=TERM", "3=INT ", "3,x"}) {
        signal_calls signals;
        EXPECT_FALSE(parse_signal_calls(text, signals)) << text;
    }
}
