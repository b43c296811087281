// intr_test: the four cases with the driver scripted and with the simulated one, and the words of the others. Where a
// driver calls back out of turn, and signals: tests/threads/interrupts.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <regex>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include "tests/support/command.h"
#include "tests/support/test_lines.h"

using namespace kestro_tests;

namespace {

const std::string four_cases = "intr_test intr_test_router_kv_lpu_2ta_4ta";

// A line of the first ten seconds of a new board.
std::string tagged(const std::string &tag, const std::string &seconds, const std::string &text) {
    return "<" + tag + ">[2026-01-15 08:00:0" + seconds + "]" + text + "\n";
}

std::string info(const std::string &seconds, const std::string &text) {
    return tagged("info ", seconds, text);
}

std::string error(const std::string &seconds, const std::string &text) {
    return tagged("error", seconds, text);
}

const std::string at_once = "0.000";

const std::string regist = "drv_intr_set_regist(index=100, type=200, handler=callback, user_data=callback)";
const std::string unregist = "drv_intr_set_unregist(index=100, type=200)";
const std::string latch = "drv_cpld_reg_write(inst_id=0xffffffff, chip_id=1, offset=0x600, data=0xffff)";
const std::string key = "drv_cpld_reg_write(inst_id=0xffffffff, chip_id=1, offset=0x62f, data=0x7788)";
const std::string raise_it = "drv_cpld_reg_write(inst_id=0xffffffff, chip_id=1, offset=0x630, data=1)";
const std::string no_key = "drv_cpld_reg_write(inst_id=0xffffffff, chip_id=1, offset=0x62f, data=0)";
const std::string no_raise = "drv_cpld_reg_write(inst_id=0xffffffff, chip_id=1, offset=0x630, data=0)";
const std::string disable = "drv_intr_disable(index=100, type=200)";
const std::string enable = "drv_intr_enable(index=100, type=200)";

std::string all_writes(const std::string &code) {
    std::string rules;
    for (const std::string &write : {latch, key, raise_it, no_key, no_raise}) {
        rules += write + " = " + code + "\n";
    }
    return rules;
}

// The lines of a case that is passed, as long as they are the same on the simulated board: it delivers 0.1 ms after the
// raise, and then each 10 ms. In 100 ms these are ten calls; the one before was of the first case.
const std::string registered = info("0.000", "registrer int success");
const std::string first_case = info("0.000", "testcase1: simulate int success") +
                               info("0.000", "at handler, g_intr_test_int_cnt=1") +
                               info("0.100", "testcase1: after delay 100ms") +
                               info("0.100", "testcase1: check int cnt success, cnt=1") + info("0.100", "");
const std::string second_case = info("0.100", "testcase2: simulate int success") +
                                info("0.200", "testcase2: after delay 100ms") +
                                info("0.200", "testcase2: check int cnt success, cnt=11") + info("0.200", "");
const std::string third_case = info("0.200", "testcase3: disable int success") +
                               info("1.210", "testcase3: after delay 1s") +
                               info("1.210", "testcase3: check int cnt success, cnt=11") + info("1.210", "");
// One call in the 10 ms before the count is taken, and a hundred in the second behind.
const std::string fourth_case = info("1.210", "testcase4: enable int success") +
                                info("2.220", "testcase4: after delay 1s") +
                                info("2.220", "testcase4: check int cnt success, cnt=112") + info("2.220", "");

std::string took(const std::string &seconds, const std::string &milliseconds) {
    return "cmd_exec used second:" + seconds + "\r\ncmd_exec used millisecond:" + milliseconds + "\r\n";
}

const std::string has_failed = operate_fail("intr_test_router_kv_lpu_2ta_4ta") + operate_fail("intr_test");

// A new board at that seat, with these registers as the technician set them.
struct board {
    std::string seat;
    std::string state = new_scratch_dir();

    void set(const std::string &words) const {
        const process_result result = run_process({launcher(), "--state", state, "--board", seat, "--set", words});
        EXPECT_EQ(result.err, "");
    }
    process_result run(const std::string &line, const std::string &script = "") const {
        std::vector<std::string> options = {"--state", state, "--clock", "virtual", "--board", seat};
        if (!script.empty()) {
            options.insert(options.end(), {"--strict", "--script", scratch_file("script", script)});
        }
        return run_sim(options, split_words(line));
    }
    void expect(const std::string &line, const std::string &output, int status, const std::string &script = "") const {
        const process_result result = run(line, script);
        EXPECT_EQ(result.out, output);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, status);
    }
};

// On a new board of the default seat, with the simulated driver but for some calls.
void expect_cases(const std::string &script, const std::string &output, int status) {
    SCOPED_TRACE(script);
    board{"mpu_master"}.expect(four_cases, output, status, script);
}

// A healthy board but for one register of the line.
void expect_defect(const std::string &defect, const std::string &output) {
    SCOPED_TRACE(defect);
    for (const char *seat : {"mpu_master", "lpu"}) {
        const board sick{seat};
        sick.set(std::string(std::string(seat) == "lpu" ? "slot7" : "slot9") + "/board/" + defect);
        sick.expect(four_cases, output + has_failed, 255);
    }
}

class IntrTest : public testing::Test {
  protected:
    // The line's time stamps are those of a board that nobody has used.
    void SetUp() override {
        begin_new_board();
    }
};

// The same on the simulated board, which no sweep follows.
class IntrTestSimulated : public testing::Test {
  protected:
    void SetUp() override {
        if (lists_lines()) {
            GTEST_SKIP() << "runs no scripted lines";
        }
    }
};

} // namespace

TEST_F(IntrTest, UsageListsTheSubCommands) {
    expect_run("intr_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " intr_test_router_kv_lpu_2ta_4ta\n"
               " intr_test_register_unregister\n"
               " intr_test_enable\n"
               " intr_test_disable\n",
               0);
}

TEST_F(IntrTest, FourCasesNeedTheRegistration) {
    const std::string body = error(at_once, "drv_intr_set_regist fail, ret=0x811101a4");
    expect_failure(four_cases, regist + " = 0x811101a4", body);
    expect_failure(four_cases + " 1 2 three", regist + " = 0x811101a4", body);
}

// The code is that of all three writes together; what was begun is taken back.
TEST_F(IntrTest, FirstCaseCannotRaise) {
    const std::string rest = no_key + " = 0\n" + no_raise + " = 0\n" + unregist + " = 0\n" + regist + " = 0\n";
    const auto expect_code = [&](const std::string &writes, const std::string &code) {
        expect_failure(four_cases, writes + rest,
                       registered + error(at_once, "testcase1: simulate int fail, ret=0x" + code));
    };
    expect_code(latch + " = 1 x1\n" + latch + " = 0\n" + key + " = 0x20\n" + raise_it + " = 0x300\n", "321");
    expect_code(latch + " = 0x811101a4 x1\n" + latch + " = 0\n" + key + " = 0\n" + raise_it + " = 0\n", "811101a4");
    expect_code(latch + " = 0\n" + key + " = 0x811101a4\n" + raise_it + " = 0\n", "811101a4");
    expect_code(latch + " = 0\n" + key + " = 0\n" + raise_it + " = 0x811101a4\n", "811101a4");
}

// A driver that never delivers.
TEST_F(IntrTest, FirstCaseCountsNothing) {
    const std::string body = registered + info("0.000", "testcase1: simulate int success") +
                             info("0.100", "testcase1: after delay 100ms") +
                             error("0.100", "testcase1: check int cnt fail, cnt=0");
    expect_run(four_cases, regist + " = 0\n" + all_writes("0") + unregist + " = 0",
               body + took("0", "100") + has_failed, 255);
    begin_new_board();
    expect_run(four_cases, regist + " = 0\n" + all_writes("0") + unregist + " = 0x811101a4",
               body + error("0.100", "unregister int fail, ret=0x811101a4") + took("0", "100") + has_failed, 255);
}

TEST_F(IntrTest, WordsAreCounted) {
    for (const char *name : {"intr_test_register_unregister", "intr_test_enable", "intr_test_disable"}) {
        const std::string line = std::string("intr_test ") + name;
        expect_failure(line, "", error(at_once, "invalid arg num, expect=2, real=0"));
        expect_failure(line + " 100", "", error(at_once, "invalid arg num, expect=2, real=1"));
        expect_failure(line + " 100 200 300", "", error(at_once, "invalid arg num, expect=2, real=3"));
    }
}

// What does not fail waits for Ctrl-C.
TEST_F(IntrTest, RegisterUnregisterNeedsTheRegistration) {
    expect_failure("intr_test intr_test_register_unregister 5 0x10",
                   "drv_intr_set_regist(index=5, type=16, handler=callback, user_data=callback) = 0x811101a4",
                   info(at_once, "index_id=5, type=16") + error(at_once, "drv_intr_set_regist fail, ret=0x811101a4"));
    expect_failure("intr_test intr_test_register_unregister 0xffffffff 010",
                   "drv_intr_set_regist(index=0xffffffff, type=8, handler=callback, user_data=callback) = 1",
                   info(at_once, "index_id=4294967295, type=8") + error(at_once, "drv_intr_set_regist fail, ret=0x1"));
}

TEST_F(IntrTest, Enable) {
    expect_success("intr_test intr_test_enable 100 200", enable + " = 0",
                   info(at_once, "index_id=100, type=200") + info(at_once, "enable int success"));
    expect_success("intr_test intr_test_enable 0x64 0310", enable + " = 0",
                   info(at_once, "index_id=100, type=200") + info(at_once, "enable int success"));
    expect_success("intr_test intr_test_enable -1 4294967296", "drv_intr_enable(index=0xffffffff, type=0xffffffff) = 0",
                   info(at_once, "index_id=4294967295, type=4294967295") + info(at_once, "enable int success"));
    expect_success("intr_test intr_test_enable line '%s%n'", "drv_intr_enable(index=0, type=0) = 0",
                   info(at_once, "index_id=0, type=0") + info(at_once, "enable int success"));
}

TEST_F(IntrTest, Disable) {
    expect_success("intr_test intr_test_disable 100 200", disable + " = 0",
                   info(at_once, "index_id=100, type=200") + info(at_once, "disable int success"));
    expect_success("intr_test intr_test_disable 0 0xffffffff", "drv_intr_disable(index=0, type=0xffffffff) = 0",
                   info(at_once, "index_id=0, type=4294967295") + info(at_once, "disable int success"));
    expect_success("intr_test intr_test_disable line ''", "drv_intr_disable(index=0, type=0) = 0",
                   info(at_once, "index_id=0, type=0") + info(at_once, "disable int success"));
}

TEST_F(IntrTest, ARefusalIsNoFailure) {
    expect_success("intr_test intr_test_enable 100 200", enable + " = 0x811101a4",
                   info(at_once, "index_id=100, type=200") + error(at_once, "enable int fail, ret=0x811101a4"));
    expect_success("intr_test intr_test_disable 100 200", disable + " = 0x811101a4",
                   info(at_once, "index_id=100, type=200") + error(at_once, "disable int fail, ret=0x811101a4"));
}

// The whole of one run, written out, on either kind of board; and again in another process on the same one.
TEST_F(IntrTestSimulated, HealthyBoardsPass) {
    for (const char *seat : {"mpu_master", "mpu_slave", "lpu"}) {
        SCOPED_TRACE(seat);
        const board healthy{seat};
        healthy.expect(four_cases,
                       "<info >[2026-01-15 08:00:00.000]registrer int success\n"
                       "<info >[2026-01-15 08:00:00.000]testcase1: simulate int success\n"
                       "<info >[2026-01-15 08:00:00.000]at handler, g_intr_test_int_cnt=1\n"
                       "<info >[2026-01-15 08:00:00.100]testcase1: after delay 100ms\n"
                       "<info >[2026-01-15 08:00:00.100]testcase1: check int cnt success, cnt=1\n"
                       "<info >[2026-01-15 08:00:00.100]\n"
                       "<info >[2026-01-15 08:00:00.100]testcase2: simulate int success\n"
                       "<info >[2026-01-15 08:00:00.200]testcase2: after delay 100ms\n"
                       "<info >[2026-01-15 08:00:00.200]testcase2: check int cnt success, cnt=11\n"
                       "<info >[2026-01-15 08:00:00.200]\n"
                       "<info >[2026-01-15 08:00:00.200]testcase3: disable int success\n"
                       "<info >[2026-01-15 08:00:01.210]testcase3: after delay 1s\n"
                       "<info >[2026-01-15 08:00:01.210]testcase3: check int cnt success, cnt=11\n"
                       "<info >[2026-01-15 08:00:01.210]\n"
                       "<info >[2026-01-15 08:00:01.210]testcase4: enable int success\n"
                       "<info >[2026-01-15 08:00:02.220]testcase4: after delay 1s\n"
                       "<info >[2026-01-15 08:00:02.220]testcase4: check int cnt success, cnt=112\n"
                       "<info >[2026-01-15 08:00:02.220]\n"
                       "<info >[2026-01-15 08:00:02.220]pass\n"
                       "cmd_exec used second:2\r\n"
                       "cmd_exec used millisecond:2220\r\n",
                       0);
        const process_result again = healthy.run(four_cases + " again");
        EXPECT_NE(again.out.find("[2026-01-15 08:00:04.440]pass\n"), std::string::npos) << again.out;
        EXPECT_EQ(again.status, 0);
    }
}

// Nothing is left over: neither the source nor the line.
TEST_F(IntrTestSimulated, LeavesTheBoardAsItWas) {
    const board healthy{"lpu"};
    healthy.run(four_cases);
    const process_result result =
        run_process({launcher(), "--state", healthy.state, "--get", "slot7/cpld/1/0x600", "--get", "slot7/cpld/1/0x62f",
                     "--get", "slot7/cpld/1/0x630", "--get", "slot7/board/interrupt/100/enabled"});
    EXPECT_EQ(result.out, "0x0000\n0x0000\n0x0000\n0\n");
}

// Raise 600 62f 630; clear 62f 630 600: at the first case out of the handler, of which the trace tells by a comment,
// and at the end.
TEST_F(IntrTestSimulated, CallsInTheirOrder) {
    const std::string trace = new_scratch_dir() + "/trace";
    run_sim({"--state", new_scratch_dir(), "--clock", "virtual", "--trace", trace}, split_words(four_cases));
    const std::string raised = latch + " = 0x0\n" + key + " = 0x0\n" + raise_it + " = 0x0\n";
    const std::string out_of_handler = "# callback: ";
    const auto in_decimals = [](std::string text) {
        for (const auto &[from, to] : {std::pair{"offset=0x600, data=0xffff", "offset=1536, data=65535"},
                                       {"offset=0x62f, data=0x7788", "offset=1583, data=30600"},
                                       {"offset=0x630", "offset=1584"},
                                       {"offset=0x62f", "offset=1583"}}) {
            for (size_t at = text.find(from); at != std::string::npos; at = text.find(from)) {
                text.replace(at, std::string(from).size(), to);
            }
        }
        return text;
    };
    EXPECT_EQ(read_file(trace),
              in_decimals(regist + " = 0x0\n" + raised + out_of_handler + no_key + " = 0x0\n" + out_of_handler +
                          no_raise + " = 0x0\n" + out_of_handler + latch + " = 0x0\n" + raised + disable + " = 0x0\n" +
                          enable + " = 0x0\n" + no_key + " = 0x0\n" + no_raise + " = 0x0\n" + latch + " = 0x0\n" +
                          unregist + " = 0x0\n"));
}

TEST_F(IntrTestSimulated, SecondCaseCannotRaise) {
    expect_cases(raise_it + " = pass x1\n" + raise_it + " = 0x12\n" + key + " = pass x1\n" + key + " = 0x21\n" +
                     regist + " = pass\n" + latch + " = pass\n" + no_key + " = pass\n" + no_raise + " = pass\n" +
                     unregist + " = pass\n",
                 registered + first_case + error("0.100", "testcase2: simulate int fail, ret=0x33") + took("0", "100") +
                     has_failed,
                 255);
}

TEST_F(IntrTestSimulated, ThirdCaseCannotDisable) {
    expect_cases(regist + " = pass\n" + all_writes("pass") + disable + " = 0x811101a4\n" + unregist + " = pass\n",
                 registered + first_case + second_case + error("0.200", "testcase3: disable int fail, ret=0x811101a4") +
                     took("0", "200") + has_failed,
                 255);
}

TEST_F(IntrTestSimulated, FourthCaseCannotEnable) {
    expect_cases(enable + " = 0x811101a4\n" + regist + " = pass\n" + all_writes("pass") + disable + " = pass\n" +
                     unregist + " = pass\n",
                 registered + first_case + second_case + third_case +
                     error("1.210", "testcase4: enable int fail, ret=0x811101a4") + took("1", "1210") + has_failed,
                 255);
}

// All cases are passed, and yet the outcome is that of the last call.
TEST_F(IntrTestSimulated, UnregisteringFailsTheTest) {
    expect_cases(regist + " = pass\n" + all_writes("pass") + disable + " = pass\n" + enable + " = pass\n" + unregist +
                     " = 0x811101a4\n",
                 registered + first_case + second_case + third_case + fourth_case +
                     error("2.220", "unregister int fail, ret=0x811101a4") + took("2", "2220") + has_failed,
                 255);
}

// Nor does anybody ask how the last clearing went. The one before is the handler's.
TEST_F(IntrTestSimulated, ClearingIsNotJudged) {
    expect_cases(no_raise + " = pass x1\n" + no_raise + " = 0x811101a4\n" + regist + " = pass\n" + latch + " = pass\n" +
                     key + " = pass\n" + raise_it + " = pass\n" + no_key + " = pass\n" + disable + " = pass\n" +
                     enable + " = pass\n" + unregist + " = pass\n",
                 registered + first_case + second_case + third_case + fourth_case + info("2.220", "pass") +
                     took("2", "2220"),
                 0);
}

// The counts go on in a second run of the process. At the first case of it one more makes 113.
TEST_F(IntrTestSimulated, ASecondRunInOneProcessFailsTheFirstCase) {
    const process_result twice =
        run_sim({"--state", new_scratch_dir(), "--clock", "virtual", "--run", build_dir() + "/tests/unlisted_command"},
                {"intr_test_twice", "intr_test_router_kv_lpu_2ta_4ta"});
    EXPECT_EQ(twice.out, registered + first_case + second_case + third_case + fourth_case + info("2.220", "pass") +
                             took("2", "2220") + "result 0\n" + info("2.220", "registrer int success") +
                             info("2.220", "testcase1: simulate int success") +
                             info("2.220", "at handler, g_intr_test_int_cnt=113") +
                             info("2.320", "testcase1: after delay 100ms") +
                             error("2.320", "testcase1: check int cnt fail, cnt=113") + took("0", "100") +
                             operate_fail("intr_test_router_kv_lpu_2ta_4ta") + "result -1\n");
    EXPECT_EQ(twice.err, "");
    EXPECT_EQ(twice.status, 0);
}

// Its handler is never called.
TEST_F(IntrTestSimulated, ADeadLineFailsTheFirstCase) {
    expect_defect("interrupt/100/defect=dead", registered + info("0.000", "testcase1: simulate int success") +
                                                   info("0.100", "testcase1: after delay 100ms") +
                                                   error("0.100", "testcase1: check int cnt fail, cnt=0") +
                                                   took("0", "100"));
}

// The handler clears in vain and is called again, each 10 ms from 0.1 ms on.
TEST_F(IntrTestSimulated, ALatchThatStaysFailsTheFirstCase) {
    expect_defect(
        "test_interrupt/1/stuck=1",
        registered + info("0.000", "testcase1: simulate int success") +
            info("0.000", "at handler, g_intr_test_int_cnt=1") + info("0.010", "at handler, g_intr_test_int_cnt=2") +
            info("0.020", "at handler, g_intr_test_int_cnt=3") + info("0.030", "at handler, g_intr_test_int_cnt=4") +
            info("0.040", "at handler, g_intr_test_int_cnt=5") + info("0.050", "at handler, g_intr_test_int_cnt=6") +
            info("0.060", "at handler, g_intr_test_int_cnt=7") + info("0.070", "at handler, g_intr_test_int_cnt=8") +
            info("0.080", "at handler, g_intr_test_int_cnt=9") + info("0.090", "at handler, g_intr_test_int_cnt=10") +
            info("0.100", "testcase1: after delay 100ms") + error("0.100", "testcase1: check int cnt fail, cnt=10") +
            took("0", "100"));
}

// The count stays at the 1 of the first case.
TEST_F(IntrTestSimulated, ALineThatFiresOnceFailsTheSecondCase) {
    expect_defect("interrupt/100/defect=once", registered + first_case +
                                                   info("0.100", "testcase2: simulate int success") +
                                                   info("0.200", "testcase2: after delay 100ms") +
                                                   error("0.200", "testcase2: check int cnt fail") + took("0", "200"));
}

// One call comes in the 10 ms before the count is taken, a hundred behind.
TEST_F(IntrTestSimulated, ALineThatIgnoresItsMaskFailsTheThirdCase) {
    expect_defect("interrupt/100/defect=unmaskable",
                  registered + first_case + second_case + info("0.200", "testcase3: disable int success") +
                      info("1.210", "testcase3: after delay 1s") +
                      error("1.210", "testcase3: check int cnt fail, last_cnt=12, new_cnt=112") + took("1", "1210"));
}

// The second raise is an edge as well and makes 2; a source that stays raised is none.
TEST_F(IntrTestSimulated, ALineThatKnowsEdgesAloneFailsTheFourthCase) {
    expect_defect("interrupt/100/defect=edge",
                  registered + first_case + info("0.100", "testcase2: simulate int success") +
                      info("0.200", "testcase2: after delay 100ms") +
                      info("0.200", "testcase2: check int cnt success, cnt=2") + info("0.200", "") +
                      info("0.200", "testcase3: disable int success") + info("1.210", "testcase3: after delay 1s") +
                      info("1.210", "testcase3: check int cnt success, cnt=2") + info("1.210", "") +
                      info("1.210", "testcase4: enable int success") + info("2.220", "testcase4: after delay 1s") +
                      error("2.220", "testcase4: check int cnt fail, last_cnt=2, new_cnt=2") + took("2", "2220"));
}

TEST_F(IntrTestSimulated, ABoardWithoutTheLineIsToldSo) {
    board{"mpu_master"}.expect("intr_test intr_test_register_unregister 99 200",
                               info("0.000", "index_id=99, type=200") +
                                   error("0.000", "drv_intr_set_regist fail, ret=0x81110103") + timing_lines +
                                   operate_fail("intr_test_register_unregister") + operate_fail("intr_test"),
                               255);
}

// On the real clock, with a technician who raises the latch at the chip, and Ctrl-C.
TEST_F(IntrTestSimulated, RegisterUnregisterCountsUntilCtrlC) {
    const board used{"lpu"};
    const std::string file = scratch_file("printed", "");
    const int out = open(file.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    const pid_t pid = spawn({launcher(), "--state", used.state, "--board", used.seat, "--", "intr_test",
                             "intr_test_register_unregister", "100", "200"},
                            merged_environment({}), "", {out, out});
    close(out);
    for (int i = 0; i < 1200 && read_file(file).find("registrer int success\n") == std::string::npos; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    used.set("slot7/cpld/1/0x600=1");
    std::this_thread::sleep_for(std::chrono::milliseconds(400));
    kill(pid, SIGINT);
    int status = 0;
    waitpid(pid, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    const std::regex lines("<info >\\[[^\\]]*\\]index_id=100, type=200\n"
                           "<info >\\[[^\\]]*\\]registrer int success\n"
                           "<info >\\[[^\\]]*\\]intr_test_signal_handler exit, sig_no=2\n"
                           "<info >\\[[^\\]]*\\]unregister int success\n"
                           "<info >\\[[^\\]]*\\]g_intr_test_common_int_cnt=[1-9][0-9]*\n"
                           "cmd_exec used second:[0-9]+\r\n"
                           "cmd_exec used millisecond:[0-9]+\r\n");
    EXPECT_TRUE(std::regex_match(read_file(file), lines)) << read_file(file);
}

// A line has a handler only while its process lives, so one of another process has none to enable.
TEST_F(IntrTestSimulated, NobodyEnablesWhatHasNoHandler) {
    board{"lpu"}.expect(
        "intr_test intr_test_enable 100 200",
        info("0.000", "index_id=100, type=200") + error("0.000", "enable int fail, ret=0x8111010f") + timing_lines, 0);
}
