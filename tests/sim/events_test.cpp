// Events of the simulated hardware and board time, played by a program of the tests.
#include "tests/sim/support.h"

#include "sim/core/time.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

process_result play(const test_board &board, const std::vector<std::string> &words, const std::string &clock) {
    std::vector<std::string> line{build_dir() + "/tests/event_scenes"};
    line.insert(line.end(), words.begin(), words.end());
    process_options options;
    options.environment = {"KESTRO_SIM_BOARD=" + board.description, "KESTRO_SIM_SEAT=" + board.seat,
                           "KESTRO_SIM_STATE=" + board.state, "KESTRO_SIM_CLOCK=" + clock,
                           "KESTRO_SIM_TIME=" + std::to_string(kestro_sim::board_time_at_start(board.state)),
                           "LD_PRELOAD=" + build_dir() + "/sim/libkestro_world.so",
                           // The search for leaks stops every thread, and a forked child still counts its parent's.
                           "ASAN_OPTIONS=verify_asan_link_order=0:handle_segv=0:detect_leaks=0"};
    return run_process(line, options);
}

void expect_scene(const std::string &name, const std::string &out, int status = 0) {
    for (int i = 0; i < 5; ++i) {
        const process_result result = play(new_delivered("mpu_master"), {name}, "virtual");
        EXPECT_EQ(result.out, out);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, status);
    }
}

TEST(Events, ComeInTheOrderOfTheirMomentsThenOfPosting) {
    expect_scene("order", "0 ms: heard 2\n"
                          "100 ms: heard 10\n"
                          "100 ms: other 11\n"
                          "100 ms: heard 12\n"
                          "150 ms: cancelled 1\n"
                          "200 ms: heard 20\n"
                          "300 ms: heard 30\n"
                          "1000 ms: cancelled 0\n");
}

TEST(Events, HaveAThreadOnlyOnceSomethingListens) {
    expect_scene("thread", "0 ms: threads 1\n"
                           "0 ms: threads 2\n"
                           "100 ms: heard 2\n"
                           "400 ms: heard 4\n"
                           "400 ms: heard too 4\n"
                           "600 ms: threads 2\n");
}

TEST(Events, AreNotHeardByOneWhoHasStoppedListening) {
    expect_scene("end", "0 ms: begins 1\n"
                        "100 ms: ends 1\n"
                        "100 ms: no longer listens 0\n");
    expect_scene("within", "0 ms: once 1\n"
                           "0 ms: always 1\n"
                           "0 ms: always 2\n");
}

TEST(Events, FollowFromRegistersAndBoardTime) {
    expect_scene("source", "250 ms: starts 0\n"
                           "350 ms: tick 3503\n"
                           "450 ms: tick 2503\n"
                           "550 ms: tick 1503\n");
}

TEST(Events, TellWhoComesAndGoes) {
    expect_scene("presence", "0 ms: out 510\n"
                             "10 ms: in 500\n");
}

TEST(Events, TellWhatAnotherProcessDid) {
    const process_result result = play(new_delivered("mpu_master"), {"others"}, "real");
    EXPECT_EQ(result.out, "slot 4 in 0\nchild 0\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
}

// The child's end is the later moment, and the board's.
TEST(Events, AreTheProcessesOwn) {
    expect_scene("child", "50 ms: child's threads 1\n"
                          "50 ms: child hears 2\n"
                          "100 ms: child's threads 2\n"
                          "100 ms: parent hears 3\n"
                          "100 ms: child's end 0\n");
}

TEST(Events, EndWithTheProcess) {
    expect_scene("called", "48 1\n"
                           "destroyed: 48\n");
    expect_scene("stays", "100 ms: ends 0\n");
    expect_scene("leaves", "0 ms: leaves 1\n", 5);
    expect_scene("handlers", "0 ms: heard 1\n"
                             "50 ms: later handler 2\n"
                             "100 ms: earlier handler 1\n");
}

std::string time_shown(const test_board &board, const std::vector<std::string> &words) {
    std::vector<std::string> line{"time"};
    line.insert(line.end(), words.begin(), words.end());
    return play(board, line, "virtual").out;
}

// First and last moment of a run on the real clock, in milliseconds.
std::pair<long long, long long> real_time(const test_board &board, const std::string &milliseconds) {
    const std::string shown = play(board, {"time", milliseconds}, "real").out;
    return {std::stoll(shown), std::stoll(shown.substr(shown.find("to ") + 3))};
}

TEST(BoardTime, GoesOnFromRunToRun) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(time_shown(board, {"2500"}), "0 to 2500\n");
    EXPECT_EQ(time_shown(board, {"0"}), "2500 to 2500\n");
    EXPECT_EQ(time_shown(board, {"86400000"}), "2500 to 86402500\n");
    EXPECT_EQ(time_shown(board, {"1"}), "86402500 to 86402501\n");
}

// What a killed run saw at the beginning of its last operation but one is known, to a second.
TEST(BoardTime, IsNotLostWithAKilledRun) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(time_shown(board, {"5000", "killed"}), "0 to 5000\n");
    EXPECT_EQ(time_shown(board, {"500", "killed"}), "5000 to 5500\n");
    EXPECT_EQ(time_shown(board, {"0"}), "5000 to 5000\n");
}

TEST(BoardTime, StartsAnewWithTheBoard) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(time_shown(board, {"7000"}), "0 to 7000\n");
    EXPECT_EQ(prepare_says(board.word, board.state, true), "");
    EXPECT_EQ(time_shown(board, {"1000"}), "0 to 1000\n");
}

TEST(BoardTime, GoesOnWithTheRealClock) {
    const test_board board = new_delivered("mpu_master");
    const auto first = real_time(board, "30");
    EXPECT_GE(first.first, 0);
    EXPECT_GE(first.second, first.first + 30);
    const auto second = real_time(board, "0");
    EXPECT_GE(second.first, first.second);
    EXPECT_LT(second.second, 3600000);
}

TEST(BoardTime, NeverGoesBackWhenTheClocksTakeTurns) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(time_shown(board, {"10000000"}), "0 to 10000000\n");
    const auto real = real_time(board, "20");
    EXPECT_GE(real.first, 10000000);
    EXPECT_LT(real.second, 13600000);
    const std::string shown = time_shown(board, {"1000"});
    const long long from = std::stoll(shown);
    EXPECT_GE(from, real.second);
    EXPECT_EQ(shown, std::to_string(from) + " to " + std::to_string(from + 1000) + "\n");
    EXPECT_GE(real_time(board, "0").first, from + 1000);
}

} // namespace

} // namespace kestro_tests
