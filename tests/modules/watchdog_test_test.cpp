// watchdog_test: every sub-command on the real program: with the driver scripted, and with the simulated chassis behind
// /dev/watchdog.
#include <csignal>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/modules/untimed.h"
#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"
#include "tests/support/test_lines.h"

using namespace kestro_tests;

namespace {

const std::string wrong_count = "invalid arg num\n";

void expect_wrong_count(const std::string &line) {
    expect_failure("watchdog_test " + line, "", wrong_count);
}

// A board of its own whose watchdog device is something else, or missing.
struct odd_device {
    std::string root = new_scratch_dir();
    std::string device = root + "/dev/watchdog";

    odd_device() {
        std::filesystem::create_directories(root + "/dev");
    }
    void expect(const std::string &words, const std::string &body) const {
        if (lists_lines()) {
            return;
        }
        const std::string line = "watchdog_test " + words;
        const process_result result =
            run_sim({"--state", new_scratch_dir(), "--clock", "virtual", "--root", root}, split_words(line));
        EXPECT_EQ(result.out, body + timing_lines + operate_fail(split_words(line)[1]) + operate_fail("watchdog_test"));
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 255);
    }
};

// A feeding loop that gets signals just before its driver calls, with those calls as they are traced.
struct fed_run {
    process_result result;
    std::string calls;
};

fed_run feed(const std::string &signals, const std::string &script = "drv_watchdog_clr() = 0") {
    const std::string trace = scratch_file("trace", "");
    const process_result result =
        run_sim({"--state", new_scratch_dir(), "--clock", "virtual", "--script", scratch_file("script", script + "\n"),
                 "--trace", trace, "--signal-call", signals},
                {"watchdog_test", "auto_feed"});
    return {result, read_file(trace)};
}

const std::string fed = "drv_watchdog_clr() = 0x0\n";
const std::string interrupted = "watchdog_signal_handler exit, sig_no=2\n";

} // namespace

TEST(WatchdogTest, UsageListsTheSubCommandsInOrder) {
    expect_run("watchdog_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_watchdog_clr\n"
               " drv_watchdog_enable enable\n"
               " drv_watchdog_is_enable\n"
               " drv_watchdog_get_timeout\n"
               " drv_watchdog_set_timeout timeout\n"
               " drv_hardbad_watchdog_enable\n"
               " drv_hardbad_watchdog_set_timeout\n"
               " drv_hardbad_watchdog_clr\n"
               " drv_hardbad_watchdog_dump_reg\n"
               " watchdog_ioctrl_keepalive\n"
               " watchdog_ioctrl_gettimeout\n"
               " watchdog_ioctrl_settimeout timeout\n"
               " watchdog_ioctrl_setoptions options\n"
               " auto_feed\n",
               0);
}

TEST(WatchdogTest, Clear) {
    expect_success("watchdog_test drv_watchdog_clr", "drv_watchdog_clr() = 0", "no arg \ndrv_watchdog_clr ret:0\n\n");
    expect_failure("watchdog_test drv_watchdog_clr", "drv_watchdog_clr() = 0x811101a4",
                   "no arg \ndrv_watchdog_clr ret:-2129591900\n\n");
    expect_wrong_count("drv_watchdog_clr 1");
}

TEST(WatchdogTest, Enable) {
    expect_success("watchdog_test drv_watchdog_enable 1", "drv_watchdog_enable(enable=1) = 0",
                   "enable: 1(enable)\n\ndrv_watchdog_enable ret:0\n\n");
    expect_success("watchdog_test drv_watchdog_enable 0", "drv_watchdog_enable(enable=0) = 0",
                   "enable: 0(disable)\n\ndrv_watchdog_enable ret:0\n\n");
    expect_success("watchdog_test drv_watchdog_enable 0xffffffff", "drv_watchdog_enable(enable=0xffffffff) = 0",
                   "enable: 4294967295(enable)\n\ndrv_watchdog_enable ret:0\n\n");
    expect_success("watchdog_test drv_watchdog_enable on", "drv_watchdog_enable(enable=0) = 0",
                   "enable: 0(disable)\n\ndrv_watchdog_enable ret:0\n\n");
    expect_failure("watchdog_test drv_watchdog_enable 010", "drv_watchdog_enable(enable=8) = 0x12",
                   "enable: 8(enable)\n\ndrv_watchdog_enable ret:18\n\n");
    expect_wrong_count("drv_watchdog_enable");
    expect_wrong_count("drv_watchdog_enable 1 1");
}

TEST(WatchdogTest, IsEnable) {
    expect_success("watchdog_test drv_watchdog_is_enable", "drv_watchdog_is_enable() = 0 enable=1",
                   "no arg \nenable: 1(enable)\n\n");
    expect_success("watchdog_test drv_watchdog_is_enable", "drv_watchdog_is_enable() = 0 enable=0",
                   "no arg \nenable: 0(disable)\n\n");
    expect_success("watchdog_test drv_watchdog_is_enable", "drv_watchdog_is_enable() = 0 enable=0x80000000",
                   "no arg \nenable: 2147483648(enable)\n\n");
    expect_success("watchdog_test drv_watchdog_is_enable", "drv_watchdog_is_enable() = 0",
                   "no arg \nenable: 0(disable)\n\n");
    expect_failure("watchdog_test drv_watchdog_is_enable", "drv_watchdog_is_enable() = 0x12 enable=1",
                   "no arg \ndrv_watchdog_is_enable ret:18\n\n");
    expect_wrong_count("drv_watchdog_is_enable 0");
}

TEST(WatchdogTest, GetTimeout) {
    expect_success("watchdog_test drv_watchdog_get_timeout", "drv_watchdog_get_timeout() = 0 timeout=4294967295",
                   "no arg \ntimeout: 4294967295\n\n");
    expect_success("watchdog_test drv_watchdog_get_timeout", "drv_watchdog_get_timeout() = 0",
                   "no arg \ntimeout: 0\n\n");
    expect_failure("watchdog_test drv_watchdog_get_timeout", "drv_watchdog_get_timeout() = 0xffffffff timeout=9",
                   "no arg \ndrv_watchdog_get_timeout ret:-1\n\n");
    expect_wrong_count("drv_watchdog_get_timeout 1");
}

// The word may be left out, and no more than one is taken.
TEST(WatchdogTest, SetTimeout) {
    expect_success("watchdog_test drv_watchdog_set_timeout 60", "drv_watchdog_set_timeout(timeout=60) = 0",
                   "timeout: 60\n\nwatchdog_set_timeout ret:0\n\n");
    expect_success("watchdog_test drv_watchdog_set_timeout 0x10", "drv_watchdog_set_timeout(timeout=16) = 0",
                   "timeout: 16\n\nwatchdog_set_timeout ret:0\n\n");
    expect_success("watchdog_test drv_watchdog_set_timeout", "drv_watchdog_set_timeout(timeout=0) = 0",
                   "timeout: 0\n\nwatchdog_set_timeout ret:0\n\n");
    expect_success("watchdog_test drv_watchdog_set_timeout long", "drv_watchdog_set_timeout(timeout=0) = 0",
                   "timeout: 0\n\nwatchdog_set_timeout ret:0\n\n");
    expect_failure("watchdog_test drv_watchdog_set_timeout 4294967296",
                   "drv_watchdog_set_timeout(timeout=0xffffffff) = 0x81110106",
                   "timeout: 4294967295\n\nwatchdog_set_timeout ret:-2129592058\n\n");
    expect_wrong_count("drv_watchdog_set_timeout 60 60");
}

TEST(WatchdogTest, HardBadEnable) {
    expect_success("watchdog_test drv_hardbad_watchdog_enable 1", "drv_hardbad_watchdog_enable(enable=1) = 0",
                   "enable: 1(enable)\n\ndrv watchdog enable ret:0\n\n");
    expect_success("watchdog_test drv_hardbad_watchdog_enable 0", "drv_hardbad_watchdog_enable(enable=0) = 0",
                   "enable: 0(disable)\n\ndrv watchdog enable ret:0\n\n");
    expect_success("watchdog_test drv_hardbad_watchdog_enable no", "drv_hardbad_watchdog_enable(enable=0) = 0",
                   "enable: 0(disable)\n\ndrv watchdog enable ret:0\n\n");
    expect_failure("watchdog_test drv_hardbad_watchdog_enable 2", "drv_hardbad_watchdog_enable(enable=2) = 0x12",
                   "enable: 2(enable)\n\ndrv watchdog enable fail, ret:18\n\ndrv watchdog enable ret:18\n\n");
    expect_wrong_count("drv_hardbad_watchdog_enable");
    expect_wrong_count("drv_hardbad_watchdog_enable 1 2");
}

TEST(WatchdogTest, HardBadSetTimeout) {
    expect_success("watchdog_test drv_hardbad_watchdog_set_timeout 30",
                   "drv_hardbad_watchdog_set_timeout(timeout=30) = 0", "timeout: 30\n\nwatchdog set timeout ret:0\n\n");
    expect_success("watchdog_test drv_hardbad_watchdog_set_timeout", "drv_hardbad_watchdog_set_timeout(timeout=0) = 0",
                   "timeout: 0\n\nwatchdog set timeout ret:0\n\n");
    expect_failure("watchdog_test drv_hardbad_watchdog_set_timeout never",
                   "drv_hardbad_watchdog_set_timeout(timeout=0) = 0x81110106",
                   "timeout: 0\n\ndrv watchdog set timeout fail, ret:-2129592058\n\n"
                   "watchdog set timeout ret:-2129592058\n\n");
    expect_wrong_count("drv_hardbad_watchdog_set_timeout 30 40");
}

TEST(WatchdogTest, HardBadClearIsToldAsTheOther) {
    expect_success("watchdog_test drv_hardbad_watchdog_clr", "drv_hardbad_watchdog_clr() = 0",
                   "no arg \ndrv_watchdog_clr ret:0\n\n");
    expect_failure("watchdog_test drv_hardbad_watchdog_clr", "drv_hardbad_watchdog_clr() = 7",
                   "no arg \ndrv_watchdog_clr ret:7\n\n");
    expect_wrong_count("drv_hardbad_watchdog_clr 0");
}

TEST(WatchdogTest, HardBadDump) {
    expect_success("watchdog_test drv_hardbad_watchdog_dump_reg 64",
                   "drv_hardbad_watchdog_dump_reg(inst_id=0xffffffff, len=64) = 0 buffer=\"enable 0\"",
                   "hardbad watchdog dump reg ,buffer=enable 0:64\n\n");
    expect_success("watchdog_test drv_hardbad_watchdog_dump_reg 0x10 64",
                   "drv_hardbad_watchdog_dump_reg(inst_id=0xffffffff, len=16) = 0 buffer=\"two\"",
                   "hardbad watchdog dump reg ,buffer=two:16\n\n");
    expect_failure("watchdog_test drv_hardbad_watchdog_dump_reg 64",
                   "drv_hardbad_watchdog_dump_reg(inst_id=0xffffffff, len=64) = 0x12 buffer=\"enable 0\"",
                   "drv hardbad watchdog set timeout fail, ret:18\n\n");
}

// Without a length there is an area for the terminator alone.
TEST(WatchdogTest, HardBadDumpOfNoBytes) {
    const std::string script = "drv_hardbad_watchdog_dump_reg(inst_id=0xffffffff, len=0) = 0";
    expect_success("watchdog_test drv_hardbad_watchdog_dump_reg", script, "hardbad watchdog dump reg ,buffer=:0\n\n");
    expect_success("watchdog_test drv_hardbad_watchdog_dump_reg 0", script, "hardbad watchdog dump reg ,buffer=:0\n\n");
    expect_success("watchdog_test drv_hardbad_watchdog_dump_reg all", script,
                   "hardbad watchdog dump reg ,buffer=:0\n\n");
}

TEST(WatchdogTest, HardBadDumpThatFillsItsArea) {
    for (const size_t size : {1, 5, 1000}) {
        const std::string text(size, 'F');
        const std::string len = std::to_string(size);
        expect_success("watchdog_test drv_hardbad_watchdog_dump_reg " + len,
                       "drv_hardbad_watchdog_dump_reg(inst_id=0xffffffff, len=" + len + ") = 0 buffer=\"" + text + "\"",
                       "hardbad watchdog dump reg ,buffer=" + text + ":" + len + "\n\n");
    }
}

TEST(WatchdogTest, HardBadDumpWithoutAnArea) {
    const std::string none = "hardbad watchdog dump info fail: buffer is null.\n";
    expect_failure("watchdog_test drv_hardbad_watchdog_dump_reg 0xffffffff", "", none);
    expect_failure("watchdog_test drv_hardbad_watchdog_dump_reg -1", "", none);
    expect_failure("watchdog_test drv_hardbad_watchdog_dump_reg 2147483647", "", none);
    expect_without_text_area(
        "watchdog_test drv_hardbad_watchdog_dump_reg 64", "drv_hardbad_watchdog_dump_reg = 0 buffer=\"enable 0\"",
        none + timing_lines + operate_fail("drv_hardbad_watchdog_dump_reg") + operate_fail("watchdog_test"), 255);
}

TEST(WatchdogTest, DeviceAnswersAsTheSimulatedWatchdog) {
    begin_new_board();
    expect_success("watchdog_test watchdog_ioctrl_keepalive", "", "success\n");
    expect_success("watchdog_test watchdog_ioctrl_gettimeout", "", "timeout=60\nsuccess\n");
    expect_success("watchdog_test watchdog_ioctrl_settimeout 0x1e", "", "input timeout=30\nsuccess\n");
    expect_success("watchdog_test watchdog_ioctrl_gettimeout", "", "timeout=30\nsuccess\n");
    expect_success("watchdog_test watchdog_ioctrl_setoptions 2", "", "options=2\nsuccess\n");
    expect_success("watchdog_test watchdog_ioctrl_setoptions 1", "", "options=1\nsuccess\n");
}

// Words behind requests that take none are not counted.
TEST(WatchdogTest, DeviceRequestsWithMoreWords) {
    begin_new_board();
    expect_success("watchdog_test watchdog_ioctrl_keepalive 1 2", "", "success\n");
    expect_success("watchdog_test watchdog_ioctrl_gettimeout 9", "", "timeout=60\nsuccess\n");
    expect_wrong_count("watchdog_ioctrl_settimeout");
    expect_wrong_count("watchdog_ioctrl_settimeout 30 30");
    expect_wrong_count("watchdog_ioctrl_setoptions");
    expect_wrong_count("watchdog_ioctrl_setoptions 1 2");
}

TEST(WatchdogTest, DeviceRequestsThatAreRefused) {
    begin_new_board();
    expect_failure("watchdog_test watchdog_ioctrl_settimeout 0", "",
                   "input timeout=0\nioctrl fail, cmd=0xc0045706, ret=-1, error Invalid argument.\n");
    expect_failure("watchdog_test watchdog_ioctrl_settimeout long", "",
                   "input timeout=0\nioctrl fail, cmd=0xc0045706, ret=-1, error Invalid argument.\n");
    expect_failure("watchdog_test watchdog_ioctrl_settimeout 0xffffffff", "",
                   "input timeout=4294967295\nioctrl fail, cmd=0xc0045706, ret=-1, error Invalid argument.\n");
    expect_failure("watchdog_test watchdog_ioctrl_setoptions 0", "",
                   "options=0\nioctrl fail, cmd=0x80045704, ret=-1, error Invalid argument.\n");
    expect_success("watchdog_test watchdog_ioctrl_gettimeout", "", "timeout=60\nsuccess\n");
}

TEST(WatchdogTest, DeviceThatCannotBeOpened) {
    const odd_device board;
    const std::string none = "open /dev/watchdog fail, fd 0xffffffff, error No such file or directory.\n";
    board.expect("watchdog_ioctrl_keepalive", none);
    board.expect("watchdog_ioctrl_gettimeout", none);
    board.expect("watchdog_ioctrl_settimeout 30", "input timeout=30\n" + none);
    board.expect("watchdog_ioctrl_setoptions 1", "options=1\n" + none);
    std::filesystem::create_directory(board.device);
    board.expect("watchdog_ioctrl_keepalive", "open /dev/watchdog fail, fd 0xffffffff, error Is a directory.\n");
}

// A signal comes in front of a feed, which is made all the same and is the last one. Seconds of the virtual clock: one
// before each feed.
TEST(WatchdogTest, FeedsOnceASecondUntilASignal) {
    if (lists_lines()) {
        return;
    }
    for (const int feeds : {1, 3, 60}) {
        const fed_run run = feed(std::to_string(feeds));
        const std::string seconds = std::to_string(feeds);
        std::string calls;
        for (int i = 0; i < feeds; ++i) {
            calls += fed;
        }
        EXPECT_EQ(run.calls, calls);
        EXPECT_EQ(run.result.out, "enter\nwait for ctrl+c\n" + interrupted + "exit\ncmd_exec used second:" + seconds +
                                      "\r\ncmd_exec used millisecond:" + seconds + "000\r\n");
        EXPECT_EQ(run.result.err, "");
        EXPECT_EQ(run.result.status, 0);
    }
}

TEST(WatchdogTest, FeedsWhateverTheDriverSays) {
    if (lists_lines()) {
        return;
    }
    const fed_run run = feed("2", "drv_watchdog_clr() = 0x811101a4");
    EXPECT_EQ(run.calls, "drv_watchdog_clr() = 0x811101a4\ndrv_watchdog_clr() = 0x811101a4\n");
    EXPECT_EQ(run.result.out, "enter\nwait for ctrl+c\n" + interrupted +
                                  "exit\ncmd_exec used second:2\r\ncmd_exec used millisecond:2000\r\n");
    EXPECT_EQ(run.result.status, 0);
}

TEST(WatchdogTest, ASecondSignalIsToldAsWell) {
    if (lists_lines()) {
        return;
    }
    const fed_run run = feed("2,2");
    EXPECT_EQ(run.calls, fed + fed);
    EXPECT_EQ(run.result.out, "enter\nwait for ctrl+c\n" + interrupted + interrupted +
                                  "exit\ncmd_exec used second:2\r\ncmd_exec used millisecond:2000\r\n");
    EXPECT_EQ(run.result.status, 0);
}

// Only Ctrl-C ends it in order.
TEST(WatchdogTest, AnotherSignalEndsTheProgram) {
    if (lists_lines()) {
        return;
    }
    const fed_run run = feed("2=TERM");
    EXPECT_EQ(run.calls, fed);
    EXPECT_EQ(run.result.out, "enter\nwait for ctrl+c\n");
    EXPECT_EQ(run.result.status, 128 + SIGTERM);
}

// A line for those who look for one of each sub-command; the loop's end is the signal's.
TEST(WatchdogTest, AutoFeedEndsWithADriverThatCrashes) {
    expect_run("watchdog_test auto_feed", "drv_watchdog_clr() = crash", "enter\nwait for ctrl+c\n", 128 + SIGSEGV);
    expect_run("watchdog_test auto_feed 1 2", "drv_watchdog_clr() = crash", "enter\nwait for ctrl+c\n", 128 + SIGSEGV);
}
