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

constexpr const char *test_registered = "drv_intr_set_regist(index=100, type=200, handler=callback)";
constexpr const char *test_event = "# event: drv_intr_handler(index=100, type=200)\n";

// Of a line, as a description says them.
const std::string none = "0";
const std::string dead = "1";
const std::string once = "2";
const std::string edge = "3";
const std::string unmaskable = "4";

size_t test_events_of(const test_board &board, const std::vector<std::string> &lines) {
    const std::string printed = calls_of({"--board", board.word, "--state", board.state, "--clock", "virtual"}, lines);
    size_t count = 0;
    for (size_t at = printed.find(test_event); at != std::string::npos; at = printed.find(test_event, at + 1)) {
        ++count;
    }
    return count;
}

// A register of the chip that has the test interrupt.
std::string write_chip(const std::string &offset, const std::string &data) {
    return "drv_cpld_reg_write(chip_id=1, offset=" + offset + ", data=" + data + ")";
}

std::string read_chip(const std::string &offset) {
    return "drv_cpld_reg_read(chip_id=1, offset=" + offset + ")";
}

const std::string clear_latch = write_chip("0x600", "0xffff");
const std::string right_key = write_chip("0x62f", "0x7788");
const std::string no_key = write_chip("0x62f", "0");
const std::string raise_bit = write_chip("0x630", "1");
const std::string no_bit = write_chip("0x630", "0");
const std::string latch = read_chip("0x600");

void expect_scene(const std::string &name, const std::string &out) {
    SCOPED_TRACE(name);
    const process_result result =
        run_process({launcher(), "--state", new_scratch_dir() + "/state", "--clock", "virtual", "--run",
                     build_dir() + "/tests/interrupt_scenes", "--", name});
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
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

// Key and bit in either order; the latch stays when they are gone, until a 1 is written there.
TEST(TestInterrupt, IsLatchedUntilItIsCleared) {
    for (const char *seat : {"mpu_master", "mpu_slave", "lpu"}) {
        SCOPED_TRACE(seat);
        EXPECT_EQ(answers(new_delivered(seat), {latch, clear_latch, right_key, latch, raise_bit, latch, no_key, latch,
                                                no_bit, latch, clear_latch, latch}),
                  "0x0 data=0\n" + ok + ok + "0x0 data=0\n" + ok + "0x0 data=1\n" + ok + "0x0 data=1\n" + ok +
                      "0x0 data=1\n" + ok + "0x0 data=0\n");
    }
    EXPECT_EQ(answers(new_delivered("lpu"), {raise_bit, latch, right_key, latch, no_bit, latch, clear_latch, latch}),
              ok + "0x0 data=0\n" + ok + "0x0 data=1\n" + ok + "0x0 data=1\n" + ok + "0x0 data=0\n");
}

// While the source stands the latch is set again at once. Another process sees the same.
TEST(TestInterrupt, ASourceThatStandsCannotBeCleared) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {right_key, raise_bit, clear_latch, latch}), ok + ok + ok + "0x0 data=1\n");
    EXPECT_EQ(
        answers(board, {latch, no_bit, latch, write_chip("0x600", "0xfffe"), latch, write_chip("0x600", "1"), latch}),
        "0x0 data=1\n" + ok + "0x0 data=1\n" + ok + "0x0 data=1\n" + ok + "0x0 data=0\n");
}

TEST(TestInterrupt, NeedsTheRightKeyAndTheBit) {
    EXPECT_EQ(answers(new_delivered("lpu"),
                      {write_chip("0x62f", "0x7789"), write_chip("0x630", "3"), latch, read_chip("0x62f"),
                       read_chip("0x630"), write_chip("0x62f", "0xf788"), latch, write_chip("0x630", "0xfffe"),
                       right_key, latch, read_chip("0x62f"), read_chip("0x630")}),
              ok + ok + "0x0 data=0\n0x0 data=30601\n0x0 data=1\n" + ok + "0x0 data=0\n" + ok + ok +
                  "0x0 data=0\n0x0 data=30600\n0x0 data=0\n");
}

// The other bits of the latch are raised by the technician, at the bus and at the device alike.
TEST(TestInterrupt, TheLocalBusAndTheTechnicianSeeTheSame) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {"drv_localbus_write(chip_id=1, address=0x62f, buffer=[77 88 00 01], length=4)", latch,
                              "drv_localbus_read(chip_id=1, address=0x600, length=2)",
                              "drv_localbus_read(chip_id=1, address=0x62f, length=4)",
                              "drv_cpld_reg_dump(chip_id=1, start=0x62f, num=2, size=64)", no_key, no_bit,
                              "drv_localbus_write(chip_id=1, address=0x600, buffer=[ff ff], length=2)", latch}),
              ok + "0x0 data=1\n0x0 buffer=[00 01]\n0x0 buffer=[77 88 00 01]\n0x0 buffer=\"62f: 7788 0001\\n\"\n" + ok +
                  ok + ok + "0x0 data=0\n");
    EXPECT_EQ(launcher_prints({"--board", board.word, "--state", board.state, "--set", "slot7/cpld/1/0x62f=0x7788",
                               "--set", "slot7/cpld/1/0x630=1", "--get", "slot7/cpld/1/0x600"}),
              "0x0001\n");
    EXPECT_EQ(launcher_prints({"--board", board.word, "--state", board.state, "--get",
                               "slot7/board/test_interrupt/1/key", "--get", "slot7/board/test_interrupt/1/raise",
                               "--get", "slot7/board/test_interrupt/1/latched"}),
              "0x7788\n1\n1\n");
    EXPECT_EQ(launcher_prints({"--board", board.word, "--state", board.state, "--set", "slot7/cpld/1/0x62f=0", "--set",
                               "slot7/cpld/1/0x600=0x0100", "--get", "slot7/cpld/1/0x600"}),
              "0x0100\n");
    EXPECT_EQ(answers(board, {latch}), "0x0 data=256\n");
}

// The second control FPGA of a main processing unit has the registers and nothing behind them.
TEST(TestInterrupt, AChipWithoutOne) {
    EXPECT_EQ(
        answers(new_delivered("mpu_master"),
                {"drv_cpld_reg_write(chip_id=2, offset=0x62f, data=0x7788)",
                 "drv_cpld_reg_write(chip_id=2, offset=0x630, data=1)", "drv_cpld_reg_read(chip_id=2, offset=0x62f)",
                 "drv_cpld_reg_read(chip_id=2, offset=0x630)", "drv_cpld_reg_read(chip_id=2, offset=0x600)", latch}),
        ok + ok + "0x0 data=0\n0x0 data=0\n0x0 data=0\n0x0 data=0\n");
}

TEST(TestInterrupt, ALatchThatStays) {
    const test_board board = new_altered("lpu", {{"self/sim_board/test_interrupt/1/stuck", "1"}});
    EXPECT_EQ(answers(board, {clear_latch, latch, right_key, raise_bit, no_key, no_bit, clear_latch, latch}),
              ok + "0x0 data=0\n" + ok + ok + ok + ok + ok + "0x0 data=1\n");
}

// The line follows the latch, 0.1 ms behind it.
TEST(TestInterrupt, RaisesItsLine) {
    EXPECT_EQ(test_events_of(new_delivered("lpu"), {test_registered, right_key, raise_bit, "wait 0.025", no_key, no_bit,
                                                    "wait 0.020", clear_latch, "wait 1"}),
              5U);
    EXPECT_EQ(test_events_of(new_delivered("lpu"), {right_key, raise_bit, test_registered, "wait 0.005"}), 1U);
    EXPECT_EQ(test_events_of(new_delivered("lpu"), {test_registered, write_chip("0x630", "1"), "wait 1"}), 0U);
    // Whoever takes it back before the 0.1 ms have gone by is not called.
    EXPECT_EQ(test_events_of(new_delivered("lpu"),
                             {test_registered, right_key, raise_bit, no_key, no_bit, clear_latch, "wait 1"}),
              0U);
    EXPECT_EQ(test_events_of(new_altered("lpu", {{"self/sim_board/interrupt/100/raised", "1"}}),
                             {test_registered, "wait 0.015"}),
              2U);
}

TEST(TestInterrupt, WhatIsPendingComesWhenTheLineIsEnabled) {
    const std::string disable = "drv_intr_disable(index=100, type=200)";
    const std::string enable = "drv_intr_enable(index=100, type=200)";
    EXPECT_EQ(test_events_of(new_delivered("lpu"), {test_registered, disable, right_key, raise_bit, "wait 1"}), 0U);
    EXPECT_EQ(test_events_of(new_delivered("lpu"),
                             {test_registered, disable, right_key, raise_bit, "wait 1", enable, "wait 0.005"}),
              1U);
    EXPECT_EQ(test_events_of(new_delivered("lpu"), {test_registered, disable, right_key, raise_bit, "wait 1", no_key,
                                                    no_bit, clear_latch, enable, "wait 1"}),
              0U);
}

// What each defect makes of a second of a raised source, half of it disabled.
TEST(TestInterrupt, DefectsOfALine) {
    const std::vector<std::string> lines = {test_registered,
                                            right_key,
                                            raise_bit,
                                            "wait 0.025",
                                            "drv_intr_disable(index=100, type=200)",
                                            "wait 0.020",
                                            "drv_intr_enable(index=100, type=200)",
                                            "wait 0.025"};
    const auto events_with = [&](const std::string &defect) {
        return test_events_of(new_altered("lpu", {{"self/sim_board/interrupt/100/defect", defect}}), lines);
    };
    // Calls at 0.1, 10.1, 20.1 and 45.1, 55.1, 65.1 ms, or on and on until 70 ms.
    EXPECT_EQ(events_with(none), 6U);
    EXPECT_EQ(events_with(dead), 0U);
    EXPECT_EQ(events_with(once), 1U);
    EXPECT_EQ(events_with(edge), 1U);
    EXPECT_EQ(events_with(unmaskable), 7U);
}

// A line that is called once is so for each registration; one that knows edges for each of them, but not for those that
// come while it is disabled.
TEST(TestInterrupt, OnceAndEdgesAreNotTheSame) {
    const std::vector<std::string> twice = {test_registered, right_key,    raise_bit, "wait 0.005", no_key,
                                            clear_latch,     "wait 0.005", right_key, "wait 0.025"};
    EXPECT_EQ(test_events_of(new_altered("lpu", {{"self/sim_board/interrupt/100/defect", once}}), twice), 1U);
    EXPECT_EQ(test_events_of(new_altered("lpu", {{"self/sim_board/interrupt/100/defect", edge}}), twice), 2U);
    EXPECT_EQ(test_events_of(new_altered("lpu", {{"self/sim_board/interrupt/100/defect", once}}),
                             {test_registered, right_key, raise_bit, "wait 0.025",
                              "drv_intr_set_unregist(index=100, type=200)", test_registered, "wait 0.025"}),
              2U);
    EXPECT_EQ(test_events_of(new_altered("lpu", {{"self/sim_board/interrupt/100/defect", edge}}),
                             {test_registered, "drv_intr_disable(index=100, type=200)", right_key, raise_bit,
                              "wait 0.005", "drv_intr_enable(index=100, type=200)", "wait 1"}),
              0U);
}

TEST(InterruptScenes, UnregisteringWaitsForARunningHandler) {
    expect_scene("waits", "0 ms: begins 0x0\n"
                          "100 ms: ends 0x0\n"
                          "100 ms: unregistered 0x0\n");
}

TEST(InterruptScenes, AHandlerUnregistersItself) {
    expect_scene("itself", "0 ms: called 0x0\n"
                           "0 ms: unregistered 0x0\n"
                           "100 ms: unregistered 0x8111010f\n"
                           "100 ms: registered 0x0\n"
                           "100 ms: called 0x0\n"
                           "100 ms: unregistered 0x0\n");
}

TEST(InterruptScenes, AHandlerDisablesItsLine) {
    expect_scene("masks", "0 ms: disabled 0x0\n"
                          "100 ms: enabled 0x0\n"
                          "100 ms: disabled 0x0\n"
                          "200 ms: enabled 0x0\n"
                          "200 ms: disabled 0x0\n");
}

TEST(InterruptScenes, AHandlerClearsItsSource) {
    expect_scene("clears", "0 ms: latch 0x1\n"
                           "100 ms: latch 0x1\n"
                           "200 ms: latch 0x1\n");
}

// The new one is called from 0.2 ms on.
TEST(InterruptScenes, AHandlerIsReplacedFromWithin) {
    expect_scene("replaces", "0 ms: unregistered 0x0\n"
                             "0 ms: registered 0x0\n"
                             "0 ms: called 0x0\n"
                             "10 ms: called 0x0\n"
                             "15 ms: unregistered 0x0\n");
}

TEST(InterruptScenes, TheEndOfTheProcessEndsTheCalls) {
    expect_scene("exit", "0 ms: called 0x0\n"
                         "5 ms: exit 0x0\n");
}

TEST(InterruptScenes, ManyThreadsAtOnce) {
    expect_scene("crowd", "as many unregistered as registered\ncalled\n");
}

TEST(Interrupts, TheTechnicianRaisesALine) {
    const std::string state = new_scratch_dir() + "/state";
    const std::string file = scratch_file("heard", "");
    const int out = open(file.c_str(), O_WRONLY | O_APPEND);
    const pid_t pid = spawn(
        {launcher(), "--state", state, "--clock", "real", "--run", "kestro_call", "--", "--wait", "300", registered},
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
        run_process({launcher(), "--state", state, "--set", "slot9/board/interrupt/0/raised=1"});
    EXPECT_EQ(by_hand.err, "");
    EXPECT_TRUE(heard(event)) << read_file(file);
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

} // namespace kestro_tests
