// intr_test with a driver that delivers from its own thread: in time, out of turn, too late, and with signals at every
// moment. The real program, which the sanitized builds run as well.
#include <gtest/gtest.h>

#include <csignal>
#include <regex>

#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

const std::string four_cases = "intr_test_router_kv_lpu_2ta_4ta";
const std::string waiting = "intr_test_register_unregister";

process_result play(const std::string &scene, const std::vector<std::string> &words) {
    process_options options;
    options.environment = {
        "INTERRUPT_SCENE=" + scene,
        "LD_LIBRARY_PATH=" + build_dir() + "/noop",
        "LD_PRELOAD=" + build_dir() + "/tests/libunruly_interrupts.so",
        "TSAN_OPTIONS=atexit_sleep_ms=100",
    };
    std::vector<std::string> line = {build_dir() + "/kestro_test", "intr_test"};
    line.insert(line.end(), words.begin(), words.end());
    return run_process(line, options);
}

// Without the time of day and the time that it took, which may differ.
std::string untimed(const std::string &text) {
    const std::string undated = std::regex_replace(
        text, std::regex("(^|\n)(<info >|<error>)\\[[0-9]{4}(-[0-9]{2}){2} [0-9]{2}(:[0-9]{2}){2}\\.[0-9]{3}\\]"),
        "$1$2");
    return std::regex_replace(undated, std::regex("(second:)[0-9]+\r"), "$1_\r");
}

std::string without_all(std::string text, const std::string &part, int *count) {
    *count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at)) {
        text.erase(at, part.size());
        ++*count;
    }
    return text;
}

const std::string timing = "cmd_exec used second:_\r\ncmd_exec used millisecond:_\r\n";

std::string failed(const std::string &name) {
    return "kestro_test operate " + name + " fail! \nkestro_test operate intr_test fail! \n";
}

// What a handler prints, of any number, as whole lines.
std::string without_deliveries(const std::string &text) {
    return std::regex_replace(text, std::regex("<info >at handler, g_intr_test_int_cnt=[0-9]+\n"), "");
}

void expect_played(const std::string &scene, const std::vector<std::string> &words, const std::string &output,
                   int status = 0) {
    SCOPED_TRACE(scene);
    const process_result result = play(scene, words);
    EXPECT_EQ(untimed(result.out), output);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, status);
    EXPECT_FALSE(result.timed_out);
}

// Registered as line 7 of type 8, and ended by Ctrl-C.
std::string waited(const std::string &rest) {
    return "<info >index_id=7, type=8\n"
           "<info >registrer int success\n"
           "<info >intr_test_signal_handler exit, sig_no=2\n" +
           rest + timing;
}

} // namespace

TEST(InterruptThreads, FourCasesPass) {
    for (const char *scene : {"good", "good,wrong"}) {
        const process_result result = play(scene, {four_cases});
        const std::regex any("=([0-9]+)");
        const std::string out = untimed(result.out);
        EXPECT_EQ(std::regex_replace(out.substr(std::min(out.find("testcase2"), out.size())), any, "=_"),
                  "testcase2: simulate int success\n"
                  "<info >testcase2: after delay 100ms\n"
                  "<info >testcase2: check int cnt success, cnt=_\n"
                  "<info >\n"
                  "<info >testcase3: disable int success\n"
                  "<info >testcase3: after delay 1s\n"
                  "<info >testcase3: check int cnt success, cnt=_\n"
                  "<info >\n"
                  "<info >testcase4: enable int success\n"
                  "<info >testcase4: after delay 1s\n"
                  "<info >testcase4: check int cnt success, cnt=_\n"
                  "<info >\n"
                  "<info >pass\n" +
                      timing);
        // The handler's line may come before the one of the raise or behind it.
        EXPECT_EQ(without_deliveries(out.substr(0, out.find("testcase2"))),
                  "<info >registrer int success\n"
                  "<info >testcase1: simulate int success\n"
                  "<info >testcase1: after delay 100ms\n"
                  "<info >testcase1: check int cnt success, cnt=1\n"
                  "<info >\n"
                  "<info >");
        int told = 0;
        without_all(out, "<info >at handler, g_intr_test_int_cnt=1\n", &told);
        EXPECT_EQ(told, 1);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
    }
}

// Index, type and user data are the driver's to give; all that comes is counted.
TEST(InterruptThreads, AllDeliveriesAreCounted) {
    expect_played("interrupt", {waiting, "7", "8"},
                  waited("<info >unregister int success\n<info >g_intr_test_common_int_cnt=0\n"));
    expect_played("interrupt,times=1", {waiting, "7", "8"},
                  waited("<info >unregister int success\n<info >g_intr_test_common_int_cnt=1\n"));
    expect_played("interrupt,times=1000", {waiting, "7", "8"},
                  waited("<info >unregister int success\n<info >g_intr_test_common_int_cnt=1000\n"));
    expect_played("interrupt,times=5,wrong", {waiting, "7", "8"},
                  waited("<info >unregister int success\n<info >g_intr_test_common_int_cnt=20\n"));
}

// The handler says nothing here, also of the test interrupt.
TEST(InterruptThreads, TheTestInterruptIsCountedLikeOthers) {
    expect_played("interrupt,times=3", {waiting, "100", "200"},
                  "<info >index_id=100, type=200\n"
                  "<info >registrer int success\n"
                  "<info >intr_test_signal_handler exit, sig_no=2\n"
                  "<info >unregister int success\n"
                  "<info >g_intr_test_common_int_cnt=3\n" +
                      timing);
}

TEST(InterruptThreads, UnregisteringIsRefused) {
    expect_played("interrupt,refuse,times=2", {waiting, "7", "8"},
                  waited("<error>unregister int fail, ret=0x14\n<info >g_intr_test_common_int_cnt=2\n"));
    expect_played("good,refuse,unraisable", {four_cases},
                  "<info >registrer int success\n"
                  "<error>testcase1: simulate int fail, ret=0x11\n"
                  "<error>unregister int fail, ret=0x14\n" +
                      timing + failed(four_cases),
                  255);
}

// Nothing catches the signal yet.
TEST(InterruptThreads, ASignalWhileTheHandlerIsRegisteredEndsTheRun) {
    expect_played("early", {waiting, "7", "8"}, "<info >index_id=7, type=8\n", 128 + SIGINT);
}

// It is told by whoever may print then, and once.
TEST(InterruptThreads, ASignalOnAThreadOfTheDriver) {
    expect_played("foreign,times=1", {waiting, "7", "8"},
                  waited("<info >unregister int success\n<info >g_intr_test_common_int_cnt=1\n"));
}

TEST(InterruptThreads, ASecondSignalWhileUnregistering) {
    expect_played("interrupt,between", {waiting, "7", "8"},
                  waited("<info >unregister int success\n"
                         "<info >intr_test_signal_handler exit, sig_no=2\n"
                         "<info >g_intr_test_common_int_cnt=0\n"));
}

// Two at once may be one to the kernel; the second may also come when the last line is out.
TEST(InterruptThreads, TwoSignalsAtOnce) {
    for (int i = 0; i < 5; ++i) {
        const process_result result = play("interrupt,twice", {waiting, "7", "8"});
        int told = 0;
        EXPECT_EQ(without_all(untimed(result.out), "<info >intr_test_signal_handler exit, sig_no=2\n", &told),
                  "<info >index_id=7, type=8\n"
                  "<info >registrer int success\n"
                  "<info >unregister int success\n"
                  "<info >g_intr_test_common_int_cnt=0\n" +
                      timing);
        EXPECT_TRUE(told == 1 || told == 2) << told;
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
    }
}

// A driver that ignores the source, the mask and what it was told: no line is torn.
TEST(InterruptThreads, DeliveriesWithoutEnd) {
    for (int i = 0; i < 3; ++i) {
        const process_result result = play("always", {four_cases});
        EXPECT_EQ(std::regex_replace(without_deliveries(untimed(result.out)), std::regex("cnt=[0-9]+"), "cnt=_"),
                  "<info >registrer int success\n"
                  "<info >testcase1: simulate int success\n"
                  "<info >testcase1: after delay 100ms\n"
                  "<error>testcase1: check int cnt fail, cnt=_\n" +
                      timing + failed(four_cases));
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 255);
    }
    for (const std::string name : {"intr_test_enable", "intr_test_disable"}) {
        const std::string what = name.substr(name.rfind('_') + 1);
        expect_played("always", {name, "7", "8"},
                      "<info >index_id=7, type=8\n<info >" + what + " int success\n" + timing);
    }
}

// After it was unregistered, while the process ends, and when its output has ended.
TEST(InterruptThreads, LateDeliveriesDoNoHarm) {
    for (int i = 0; i < 5; ++i) {
        const process_result result = play("always,late,unraisable", {four_cases});
        EXPECT_EQ(without_deliveries(untimed(result.out)), "<info >registrer int success\n"
                                                           "<error>testcase1: simulate int fail, ret=0x11\n" +
                                                               timing + failed(four_cases));
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 255);
    }
    const process_result quiet = play("late,interrupt,times=4", {waiting, "7", "8"});
    EXPECT_EQ(std::regex_replace(untimed(quiet.out), std::regex("cnt=[0-9]+"), "cnt=_"),
              waited("<info >unregister int success\n<info >g_intr_test_common_int_cnt=_\n"));
    EXPECT_EQ(quiet.err, "");
    EXPECT_EQ(quiet.status, 0);
}
