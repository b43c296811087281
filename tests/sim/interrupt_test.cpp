// Interrupt lines: who may register, when handlers are called, and what the kernel's table says of them.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace kestro_tests {

namespace {

const std::string not_ready = "0x8111010f\n";

constexpr const char *registered = "drv_intr_set_regist(index=0, type=1, handler=callback)";
constexpr const char *event = "# event: drv_intr_handler(index=0, type=1)\n";

size_t events_in(const std::string &printed) {
    size_t count = 0;
    for (size_t at = printed.find(event); at != std::string::npos; at = printed.find(event, at + 1)) {
        ++count;
    }
    return count;
}

test_board with_raised_line() {
    return new_altered("mpu_master", {{"self/sim_board/interrupt/0/raised", "1"}});
}

size_t events_of(const test_board &board, const std::vector<std::string> &lines) {
    return events_in(calls_of({"--board", board.word, "--state", board.state, "--clock", "virtual"}, lines));
}

// "intr0 17" for each described line.
std::set<std::string> described_lines(const test_board &board) {
    std::set<std::string> lines;
    for (int combiner = 0; combiner < 10; ++combiner) {
        for (int entry = 0;; ++entry) {
            const std::string answer =
                answers(board, {"xml_get_element_value_u32(module=\"irq_combiner\", node=\"irq_combiner@" +
                                std::to_string(combiner) + "\", entry=\"hwirq_cfg" + std::to_string(entry) +
                                "\", element=\"hwirq\")"});
            if (!answer.starts_with("0x0 value=")) {
                break;
            }
            lines.insert("intr" + std::to_string(combiner) + " " + answer.substr(10, answer.find('\n') - 10));
        }
    }
    return lines;
}

// The same as the kernel has it: the number stands one blank behind the name.
std::set<std::string> lines_of_kernel(const test_board &board) {
    std::istringstream table(read_file(board.state + "/root/" + board.seat + "/proc/interrupts"));
    std::set<std::string> lines;
    for (std::string line; std::getline(table, line);) {
        if (const size_t at = line.find("intr"); at != std::string::npos && line.find("combiner") < at) {
            lines.insert(line.substr(at));
        }
    }
    return lines;
}

} // namespace

TEST(Interrupts, TheKernelKnowsTheLinesThatAreDescribed) {
    for (const char *seat : {"mpu_master", "mpu_slave", "lpu"}) {
        const test_board board = new_delivered(seat);
        const auto lines = described_lines(board);
        EXPECT_FALSE(lines.empty()) << seat;
        EXPECT_EQ(lines, lines_of_kernel(board)) << seat;
    }
}

TEST(Interrupts, ALineHasOneHandler) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {registered, registered, "drv_intr_set_unregist(index=0, type=1)",
                              "drv_intr_set_unregist(index=0, type=1)", registered,
                              "drv_intr_set_regist(index=1, type=7, handler=callback)",
                              "drv_intr_set_regist(index=1, type=7, handler=null)"}),
              ok + bad_value + ok + not_ready + ok + ok + null_pointer);
}

TEST(Interrupts, AreCalledByIndexAndType) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_intr_set_regist(index=0, type=2, handler=callback)",
                              "drv_intr_set_regist(index=4, type=1, handler=callback)",
                              "drv_intr_set_regist(index=3, type=13, handler=callback)",
                              "drv_intr_set_regist(index=0xffffffff, type=1, handler=callback)",
                              "drv_intr_set_regist(index=0xffffffff, type=13, handler=callback)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + ok);
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_intr_set_regist(index=2, type=11, handler=callback)"}), ok);
}

TEST(Interrupts, OnlyRegisteredLinesAreEnabled) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_intr_enable(index=0, type=1)", "drv_intr_disable(index=0, type=1)", registered,
                              "drv_intr_disable(index=0, type=1)", "drv_intr_enable(index=0, type=1)",
                              "drv_intr_enable(index=0, type=9)"}),
              not_ready + not_ready + ok + ok + ok + no_such_device);
    EXPECT_EQ(
        launcher_prints({"--board", board.word, "--state", board.state, "--get", "slot9/board/interrupt/0/enabled"}),
        "1\n");
}

// The source is a level: the handler is called at once and then every 10 ms.
TEST(Interrupts, ARaisedSourceCallsAgainAndAgain) {
    const test_board board = with_raised_line();
    EXPECT_EQ(events_of(board, {registered, "wait 0.025"}), 3U);
    EXPECT_EQ(events_of(board, {"drv_intr_set_regist(index=1, type=7, handler=callback)", "wait 1"}), 0U);
    EXPECT_EQ(events_of(new_delivered("mpu_master"), {registered, "wait 1"}), 0U);
}

TEST(Interrupts, WhatIsDisabledWaits) {
    const test_board board = with_raised_line();
    EXPECT_EQ(events_of(board, {registered, "wait 0.005", "drv_intr_disable(index=0, type=1)", "wait 1"}), 1U);
    EXPECT_EQ(events_of(board, {registered, "wait 0.005", "drv_intr_disable(index=0, type=1)", "wait 1",
                                "drv_intr_enable(index=0, type=1)", "wait 0.005"}),
              2U);
    EXPECT_EQ(events_of(board, {registered, "wait 0.005", "drv_intr_set_unregist(index=0, type=1)", "wait 1"}), 1U);
}

TEST(Interrupts, TheTechnicianRaisesALine) {
    const std::string state = new_scratch_dir() + "/state";
    const std::string file = scratch_file("heard", "");
    const int out = open(file.c_str(), O_WRONLY | O_APPEND);
    const pid_t pid = spawn({build_dir() + "/kestro_sim", "--state", state, "--clock", "real", "--run", "kestro_call",
                             "--", "--wait", "300", registered},
                            merged_environment({}), "", {out, out});
    close(out);
    const auto heard = [&](const std::string &text) {
        for (int i = 0; i < 600 && read_file(file).find(text) == std::string::npos; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        return read_file(file).find(text) != std::string::npos;
    };
    EXPECT_TRUE(heard("= 0x0\n")) << read_file(file);
    EXPECT_EQ(events_in(read_file(file)), 0U);
    const process_result by_hand =
        run_process({build_dir() + "/kestro_sim", "--state", state, "--set", "slot9/board/interrupt/0/raised=1"});
    EXPECT_EQ(by_hand.err, "");
    EXPECT_TRUE(heard(event)) << read_file(file);
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

} // namespace kestro_tests
