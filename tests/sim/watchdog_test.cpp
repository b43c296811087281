// Watchdogs: two faces of the system watchdog, and boards that they reset: at the moment, whoever looks, and once.
#include "sim/core/hand.h"
#include "sim/core/store.h"
#include "sim/devices/management/watchdog.h"
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"
#include "tests/support/simulator.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>

namespace kestro_tests {

namespace {

constexpr int bitten = 128 + SIGKILL;

const std::string on = "drv_watchdog_enable(enable=1)";
const std::string off = "drv_watchdog_enable(enable=0)";
const std::string feed = "drv_watchdog_clr()";
const std::string is_on = "drv_watchdog_is_enable()";
const std::string timeout = "drv_watchdog_get_timeout()";
const std::string dump = "drv_hardbad_watchdog_dump_reg(len=128)";
const std::string bite_of_master = "kestro_sim: the watchdog of slot9 bit: the board is reset\n";

std::string set_timeout(int seconds) {
    return "drv_watchdog_set_timeout(timeout=" + std::to_string(seconds) + ")";
}

std::string reason(int index) {
    return "drv_reset_get_reason(index=" + std::to_string(index) + ")";
}

const std::vector<std::string> reasons{reason(0), reason(1), reason(2), reason(3)};
const std::string reasons_when_new = "0x0 reason=1\n0x0 reason=4\n0x0 reason=2\n0x0 reason=1\n";
const std::string reasons_after_a_bite = "0x0 reason=3\n0x0 reason=1\n0x0 reason=4\n0x0 reason=2\n";

// A chassis on one clock, with runs from its seats.
class Watchdog : public testing::Test {
  protected:
    std::vector<std::string> options(const std::vector<std::string> &more) const {
        std::vector<std::string> all{"--state", state_, "--clock", clock_, "--board", seat_};
        all.insert(all.end(), more.begin(), more.end());
        return all;
    }
    process_result calls(const std::vector<std::string> &lines, const std::vector<std::string> &more = {}) const {
        process_result result = make_calls(options(more), lines);
        result.out = without_calls(result.out);
        return result;
    }
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        return answers_of(options(by_hand), lines);
    }
    void expect_bitten(const std::vector<std::string> &lines, const std::string &before,
                       const std::string &said = bite_of_master) const {
        const process_result result = calls(lines);
        EXPECT_EQ(result.out, before);
        EXPECT_EQ(result.err, said);
        EXPECT_EQ(result.status, bitten);
    }
    std::string shown(const std::string &path) const {
        return launcher_prints(options({"--get", path}));
    }
    void set(const std::vector<std::string> &settings) const {
        std::vector<std::string> all;
        for (const std::string &setting : settings) {
            all.insert(all.end(), {"--set", setting});
        }
        EXPECT_EQ(launcher_prints(options(all)), "");
    }
    process_result run(const std::vector<std::string> &words, const std::vector<std::string> &more = {}) const {
        std::vector<std::string> all{"watchdog_test"};
        all.insert(all.end(), words.begin(), words.end());
        return run_sim(options(more), all);
    }

    std::string state_ = new_scratch_dir() + "/state";
    std::string clock_ = "virtual";
    std::string seat_ = "mpu_master";
};

// The real clock's runs wait for a part of a second, which no driver can set.
class WatchdogOnTheRealClock : public Watchdog {
  protected:
    WatchdogOnTheRealClock() {
        clock_ = "real";
    }
    const std::string short_timeout = "slot9/watchdog/timer/0/timeout=300";
};

} // namespace

TEST_F(Watchdog, IsOffOnEveryNewBoard) {
    for (const std::string seat : {"mpu_master", "mpu_slave", "lpu"}) {
        seat_ = seat;
        EXPECT_EQ(answers({is_on, timeout, dump}),
                  "0x0 enable=0\n0x0 timeout=60\n0x0 buffer=\"enable 0 timeout 180000 ms left 0 ms bites 0\"\n");
    }
}

TEST_F(Watchdog, TakesTimeoutsWithinItsBounds) {
    EXPECT_EQ(answers({set_timeout(1), timeout, set_timeout(65535), timeout, set_timeout(0), set_timeout(65536),
                       "drv_watchdog_set_timeout(timeout=0xffffffff)", timeout}),
              "0x0\n0x0 timeout=1\n0x0\n0x0 timeout=65535\n" + bad_value + bad_value + bad_value +
                  "0x0 timeout=65535\n");
    EXPECT_EQ(answers({timeout}, {"--set", "slot9/watchdog/timer/0/timeout=1001"}), "0x0 timeout=2\n");
    EXPECT_EQ(answers({"drv_hardbad_watchdog_set_timeout(timeout=0)", "drv_hardbad_watchdog_set_timeout(timeout=7)",
                       "drv_hardbad_watchdog_enable(enable=2)", dump, "wait 2.5", dump, "drv_hardbad_watchdog_clr()",
                       dump, "drv_hardbad_watchdog_enable(enable=0)", dump}),
              bad_value + "0x0\n0x0\n0x0 buffer=\"enable 1 timeout 7000 ms left 7000 ms bites 0\"\n"
                          "0x0 buffer=\"enable 1 timeout 7000 ms left 4500 ms bites 0\"\n"
                          "0x0\n0x0 buffer=\"enable 1 timeout 7000 ms left 7000 ms bites 0\"\n"
                          "0x0\n0x0 buffer=\"enable 0 timeout 7000 ms left 0 ms bites 0\"\n");
}

TEST_F(Watchdog, RefusesWhatThereIsNot) {
    EXPECT_EQ(
        answers({"drv_watchdog_is_enable(enable=null)", "drv_watchdog_get_timeout(timeout=null)",
                 "drv_hardbad_watchdog_dump_reg(len=128, buffer=null)", "drv_hardbad_watchdog_dump_reg(len=44)",
                 "drv_hardbad_watchdog_dump_reg(len=0)", "drv_hardbad_watchdog_dump_reg(inst_id=0xff000005, len=128)",
                 "drv_hardbad_watchdog_dump_reg(inst_id=0xff000006, len=128)",
                 "drv_hardbad_watchdog_dump_reg(inst_id=0xff00000a, len=128)"}),
        null_pointer + null_pointer + null_pointer + too_small + too_small + not_supported + no_such_instance +
            "0x0 buffer=\"enable 0 timeout 180000 ms left 0 ms bites 0\"\n");
}

TEST_F(Watchdog, DeviceAndDriverAreTwoFacesOfOne) {
    EXPECT_EQ(answers({set_timeout(30)}), ok);
    EXPECT_TRUE(run({"watchdog_ioctrl_gettimeout"}).out.starts_with("timeout=30\nsuccess\n"));
    EXPECT_EQ(run({"watchdog_ioctrl_settimeout", "45"}).status, 0);
    EXPECT_EQ(answers({timeout, is_on}), "0x0 timeout=45\n0x0 enable=0\n");
    EXPECT_EQ(run({"watchdog_ioctrl_setoptions", "2"}).status, 0);
    EXPECT_EQ(answers({is_on}), "0x0 enable=1\n");
    EXPECT_EQ(run({"watchdog_ioctrl_setoptions", "1"}).status, 0);
    EXPECT_EQ(answers({is_on}), "0x0 enable=0\n");
    EXPECT_EQ(run({"watchdog_ioctrl_setoptions", "3"}).status, 0);
    EXPECT_EQ(answers({is_on}), "0x0 enable=1\n");
    for (const char *options : {"0", "4", "0x80"}) {
        EXPECT_EQ(run({"watchdog_ioctrl_setoptions", options}).status, 255) << options;
    }
    EXPECT_EQ(run({"watchdog_ioctrl_settimeout", "65536"}).status, 255);
    EXPECT_EQ(answers({is_on, timeout}), "0x0 enable=1\n0x0 timeout=45\n");
}

TEST_F(Watchdog, AKeepAliveOfTheDeviceFeeds) {
    EXPECT_EQ(answers({set_timeout(5), on, "wait 4"}), ok + ok);
    EXPECT_EQ(run({"watchdog_ioctrl_keepalive"}).status, 0);
    EXPECT_EQ(answers({"wait 4", is_on}), "0x0 enable=1\n");
    EXPECT_EQ(run({"watchdog_ioctrl_gettimeout"}).status, 0);
    EXPECT_EQ(answers({reason(0)}), "0x0 reason=1\n");
    expect_bitten({reason(0), "wait 2", reason(0)}, "0x0 reason=1\n");
}

// Neither opening nor closing it does anything.
TEST_F(Watchdog, RequestsDoNotSwitchItOn) {
    EXPECT_EQ(run({"watchdog_ioctrl_keepalive"}).status, 0);
    EXPECT_EQ(run({"watchdog_ioctrl_gettimeout"}).status, 0);
    EXPECT_EQ(run({"watchdog_ioctrl_settimeout", "1"}).status, 0);
    EXPECT_EQ(answers({is_on, feed, "wait 100", is_on, reason(0)}), "0x0 enable=0\n0x0\n0x0 enable=0\n0x0 reason=1\n");
}

// A feed at the very moment is in time; after that the run ends with its board.
TEST_F(Watchdog, BitesWhenItIsNotFedInTime) {
    expect_bitten({set_timeout(5), on, "wait 4", feed, "wait 5", feed, "wait 5.000001", timeout}, ok + ok + ok + ok);
    EXPECT_EQ(answers(reasons), reasons_after_a_bite);
    EXPECT_EQ(answers({is_on, timeout, "wait 1000", is_on}), "0x0 enable=0\n0x0 timeout=60\n0x0 enable=0\n");
    EXPECT_EQ(answers(reasons), reasons_after_a_bite);
    EXPECT_EQ(shown("slot9/watchdog/timer/0/bites"), "1\n");
}

TEST_F(Watchdog, WhatBeginsAnewIsNotBitten) {
    EXPECT_EQ(answers({set_timeout(5), on, "wait 4", on, "wait 4", set_timeout(6), "wait 5", off, "wait 100", on,
                       "wait 6", feed, off, reason(0)}),
              ok + ok + ok + ok + ok + ok + ok + ok + "0x0 reason=1\n");
}

TEST_F(Watchdog, ABittenBoardIsFoundAsAfterAColdStart) {
    expect_bitten({"drv_board_set_self_bootstep(step=10)",
                   "drv_reset_self_board(code={code=1 year=2026 month=1 day=1})",
                   "drv_board_set_self_bootstep(step=10)", set_timeout(5), on, "wait 6", feed},
                  ok + ok + ok + ok + ok);
    EXPECT_EQ(answers({"drv_reset_get_mode()", "drv_softreset_get_reset_type()",
                       "drv_memenv_num_get(name=\"kestro_softreset_mode\", base=10)",
                       "drv_env_get(name=\"board_reset_mode\", size=256)",
                       "drv_env_get(name=\"hard_reset_init_flag\", size=4)", "drv_board_get_self_bootstep()",
                       "drv_reset_get_code()"}),
              "0x0 cool=1\n0x0 reset_type=1\n0x0 value=1\n0x0 value=\"4\"\n0x0 value=\"1\"\n0x0 step=60\n"
              "0x0 code={code=1 year=2026 month=1 day=1}\n");
    EXPECT_EQ(answers({reason(0), reason(1), reason(2)}), "0x0 reason=3\n0x0 reason=4\n0x0 reason=1\n");
    EXPECT_EQ(shown("slot9/reset/board/0/starts"), "2\n");
}

// Any start leaves it off and as it was described.
TEST_F(Watchdog, IsOffAfterAnyStart) {
    EXPECT_EQ(answers({set_timeout(5), on, "drv_reset_self_board(code={code=1 year=2026 month=1 day=1})", is_on,
                       timeout, "wait 10", is_on}),
              ok + ok + ok + "0x0 enable=0\n0x0 timeout=60\n0x0 enable=0\n");
    EXPECT_EQ(answers({set_timeout(5), on}), ok + ok);
    launcher_prints(options({"--pull", "slot9"}));
    seat_ = "mpu_slave";
    EXPECT_EQ(answers({is_on, "wait 100", is_on}), "0x0 enable=0\n0x0 enable=0\n");
    launcher_prints(options({"--plug", "slot9"}));
    seat_ = "mpu_master";
    EXPECT_EQ(answers({is_on, timeout, reason(0), reason(1)}),
              "0x0 enable=0\n0x0 timeout=60\n0x0 reason=1\n0x0 reason=4\n");
}

TEST_F(Watchdog, FeedingLoopKeepsTheBoardAlive) {
    EXPECT_EQ(answers({set_timeout(5), on}), ok + ok);
    const process_result result = run({"auto_feed"}, {"--signal-call", "60"});
    EXPECT_EQ(result.out, "enter\nwait for ctrl+c\nwatchdog_signal_handler exit, sig_no=2\nexit\n"
                          "cmd_exec used second:60\r\ncmd_exec used millisecond:60000\r\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(answers({is_on, reason(0)}), "0x0 enable=1\n0x0 reason=1\n");
}

// The watchdog is on before the program begins, and it sleeps past the moment in front of its first driver call.
TEST_F(Watchdog, ARunThatCallsNoDriverIsBittenAsWell) {
    set({"slot9/watchdog/timer/0/timeout=500", "slot9/watchdog/timer/0/enabled=1"});
    const process_result result = run({"auto_feed"});
    EXPECT_EQ(result.out, "enter\nwait for ctrl+c\n");
    EXPECT_EQ(result.err, bite_of_master);
    EXPECT_EQ(result.status, bitten);
    EXPECT_EQ(answers(reasons), reasons_after_a_bite);
}

TEST_F(Watchdog, AnotherBoardsBiteLeavesTheRunAlone) {
    EXPECT_EQ(answers({set_timeout(5), on}), ok + ok);
    seat_ = "mpu_slave";
    const std::string reason_of_peer = "drv_reset_get_reason(inst_id=0xff000009, index=0)";
    EXPECT_EQ(answers({reason_of_peer, "wait 6", reason_of_peer, reason(0), "wait 6", reason_of_peer}),
              "0x0 reason=1\n0x0 reason=3\n0x0 reason=1\n0x0 reason=3\n");
    EXPECT_EQ(shown("slot9/watchdog/timer/0/bites"), "1\n");
    seat_ = "mpu_master";
    EXPECT_EQ(answers(reasons), reasons_after_a_bite);
}

// Two at once, each with its own moment.
TEST_F(Watchdog, BitesOfTwoBoardsAreWrittenDownInOneLook) {
    EXPECT_EQ(answers({set_timeout(5), on}), ok + ok);
    seat_ = "mpu_slave";
    EXPECT_EQ(answers({set_timeout(7), on}), ok + ok);
    seat_ = "lpu";
    EXPECT_EQ(answers({is_on, "wait 100", is_on}), "0x0 enable=0\n0x0 enable=0\n");
    for (const std::string place : {"slot9", "slot10"}) {
        EXPECT_EQ(shown(place + "/reset/reason/0/reason"), "3\n");
        EXPECT_EQ(shown(place + "/reset/reason/1/reason"), "1\n");
        EXPECT_EQ(shown(place + "/watchdog/timer/0/enabled"), "0\n");
    }
}

// The save takes 3 s; the board is reset after one, though nobody looks before 100 have gone by.
TEST_F(Watchdog, WhatIsFoundLaterIsAsOfTheMoment) {
    EXPECT_EQ(answers({"drv_env_set(name=\"bitten\", value=\"early\")", "drv_env_save()", set_timeout(1), on}),
              ok + ok + ok + ok);
    seat_ = "lpu";
    EXPECT_EQ(answers({is_on, "wait 100", is_on}), "0x0 enable=0\n0x0 enable=0\n");
    seat_ = "mpu_master";
    EXPECT_EQ(answers({"drv_env_get(name=\"bitten\", size=32)", "drv_env_save_ok()", reason(0)}),
              no_such_device + "0x0 status=0\n0x0 reason=3\n");
}

TEST_F(Watchdog, BadHardwareTakesTheBoardOutOfService) {
    const std::string is_peer_there = "drv_board_get_peer_online_status()";
    seat_ = "mpu_slave";
    EXPECT_EQ(answers({is_peer_there}), "0x0 status=0\n");
    seat_ = "mpu_master";
    expect_bitten(
        {"drv_hardbad_watchdog_set_timeout(timeout=5)", "drv_hardbad_watchdog_enable(enable=1)", "wait 6", dump},
        ok + ok, "kestro_sim: the hardware-bad watchdog of slot9 bit: the board is reset and out of service\n");
    EXPECT_EQ(answers({reason(0), reason(1), "drv_reset_get_mode()", dump}),
              "0x0 reason=3\n0x0 reason=1\n0x0 cool=1\n"
              "0x0 buffer=\"enable 0 timeout 180000 ms left 0 ms bites 1\"\n");
    seat_ = "mpu_slave";
    EXPECT_EQ(answers({is_peer_there}), "0x0 status=1\n");
    EXPECT_EQ(shown("chassis/msc/master/0/slot"), "10\n");
    EXPECT_EQ(answers({is_peer_there}, {"--set", "slot9/board/presence/0/status=wired"}), "0x0 status=0\n");
}

TEST_F(Watchdog, ADiscardedBiteDidNotHappen) {
    EXPECT_EQ(answers({set_timeout(5), on}), ok + ok);
    const process_result result = calls({is_on, "wait 10", is_on}, {"--discard"});
    EXPECT_EQ(result.out, "0x0 enable=1\n");
    EXPECT_EQ(result.status, bitten);
    EXPECT_EQ(answers({is_on, reason(0)}), "0x0 enable=1\n0x0 reason=1\n");
}

// On the virtual clock no time goes by while the technician looks. That of a new board begins with its first run.
TEST_F(Watchdog, TheTechniciansLookTakesNoVirtualTime) {
    EXPECT_EQ(answers({is_on}), "0x0 enable=0\n");
    set({"slot9/watchdog/timer/0/timeout=1", "slot9/watchdog/timer/0/enabled=1"});
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(shown("slot9/reset/reason/0/reason"), "1\n");
    clock_ = "real";
    EXPECT_EQ(shown("slot9/reset/reason/0/reason"), "3\n");
    EXPECT_EQ(shown("slot9/reset/reason/1/reason"), "1\n");
}

// The memory in which a start writes is damaged: the board goes on, and is found bitten once it is mended.
TEST_F(Watchdog, ABiteThatCannotBeWrittenDownWaits) {
    EXPECT_EQ(answers({set_timeout(5), on}), ok + ok);
    write_file(state_ + "/images/himem-slot9.bin", std::string(131072, 'U'));
    EXPECT_EQ(answers({is_on, "wait 20", is_on, reason(0)}), "0x0 enable=1\n0x0 enable=1\n0x0 reason=1\n");
    EXPECT_EQ(launcher_prints(options({"--accept-images"})), "");
    EXPECT_EQ(answers({is_on, reason(0)}), "0x0 enable=0\n0x0 reason=3\n");
}

TEST_F(Watchdog, ABoardMayBeDescribedWithItOn) {
    const test_board board = new_altered(
        "mpu_master", {{"self/sim_watchdog/timer/0/enabled", "1"}, {"self/sim_watchdog/timer/0/timeout", "9000"}});
    const std::vector<std::string> of_board{"--state", board.state, "--clock", "virtual", "--board", board.word};
    EXPECT_EQ(answers_of(of_board, {is_on}), "0x0 enable=1\n");
    const process_result result = make_calls(of_board, {is_on, "wait 10", is_on});
    EXPECT_EQ(result.err, bite_of_master);
    EXPECT_EQ(result.status, bitten);
    EXPECT_EQ(answers_of(of_board, {is_on, reason(0)}), "0x0 enable=0\n0x0 reason=3\n");
}

TEST_F(WatchdogOnTheRealClock, BitesARunThatSleeps) {
    set({short_timeout});
    expect_bitten({on, "wait 30", is_on}, ok);
    EXPECT_EQ(answers(reasons), reasons_after_a_bite);
}

// What it has printed but not yet handed on is lost with it, and a command that it has started would go on and print.
TEST_F(WatchdogOnTheRealClock, BitesARunThatIsBusyOrWaitsForACommand) {
    const std::string program = build_dir() + "/tests/odd_calls";
    for (const std::vector<std::string> &words :
         std::vector<std::vector<std::string>>{{"watch", "spin"},
                                               {"watch", "shell", "sleep 3; echo late"},
                                               {"watch", "shell", "(sleep 3; echo late) | cat"}}) {
        set({short_timeout});
        const process_result result = run_launcher(options({"--run", program}), words);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, bite_of_master);
        EXPECT_EQ(result.status, bitten);
    }
    EXPECT_EQ(answers({reason(0), reason(1), reason(2), reason(3)}),
              "0x0 reason=3\n0x0 reason=3\n0x0 reason=3\n0x0 reason=1\n");
}

TEST_F(WatchdogOnTheRealClock, IsNoticedByTheRunsToComeAndOnce) {
    EXPECT_EQ(answers({is_on}), "0x0 enable=0\n");
    set({short_timeout, "slot9/watchdog/timer/0/enabled=1"});
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    std::vector<std::thread> lookers;
    for (int i = 0; i < 3; ++i) {
        lookers.emplace_back([this] { EXPECT_EQ(shown("slot9/reset/reason/0/reason"), "3\n"); });
    }
    for (std::thread &one : lookers) {
        one.join();
    }
    EXPECT_EQ(answers(reasons), reasons_after_a_bite);
    EXPECT_EQ(shown("slot9/watchdog/timer/0/bites"), "1\n");
}

} // namespace kestro_tests
