// diagnose_cmd_test: its one sub-command on the real program, with the driver scripted, and with the simulated driver
// where the program's own handlers are to answer.
#include <gtest/gtest.h>

#include "tests/modules/untimed.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

namespace {

const std::string init = "drv_diag_cmd_init() = 0\n";
const std::string normal_list =
    "drv_diag_reg_cmd_list(records=["
    "{command=\"diagnose test no para\" handler=callback key=\"diagnose test no para\" "
    "help=\"[argcnt=0] diagnose test no para\"} "
    "{command=\"diagnose test bus\" handler=callback key=\"diagnose test bus\" "
    "help=\"[argcnt=1] diagnose test bus <bus-id>\"} "
    "{command=\"diagnose test chip reg\" handler=callback key=\"diagnose test chip reg\" "
    "help=\"[argcnt=2] diagnose test chip reg <chip-id> <reg-id>\"} "
    "{command=\"diagnose test eth port\" handler=callback key=\"diagnose test eth port\" "
    "help=\"[argcnt=3] diagnose test eth port <inst-id> <chip-id> <port-id>\"}], count=4) = ";
const std::string list_without_handler =
    "drv_diag_reg_cmd_list(records=[{command=\"diagnose test error case one\" handler=null "
    "key=\"diagnose test error case one\" help=\"[argcnt=0]\"}], count=1) = ";
const std::string registering = init + normal_list + "0\n" + list_without_handler + "0x12\n";

// The driver's answers to the words of one call; it gets 2048 bytes for each.
std::string processed(const std::string &words, const std::string &answer) {
    return "drv_diag_cmd_process(command=\"" + words + "\", size=2048) = " + answer + "\n";
}

std::string helps(const std::string &answer) {
    return processed("help", answer) + processed("diagnose help", answer) + processed("diagnose test help", answer) +
           processed("diagnose test eth port help", answer);
}

// The four commands with the parameters as they are typed behind them.
std::string commands(const std::string &one, const std::string &two, const std::string &three,
                     const std::string &answer) {
    return processed("diagnose test no para", answer) + processed("diagnose test bus " + one, answer) +
           processed("diagnose test chip reg " + two, answer) + processed("diagnose test eth port " + three, answer);
}

const std::string registered = "[diagnose module] test_int_cmd case........................pass.\n"
                               "[diagnose module] test_reg_cmd normal case.................pass.\n"
                               "[diagnose module] test_reg_cmd error one case..............pass.\n\n";

// What is printed when each of the four commands, and then each of the four helps, is answered with this.
std::string answered(const std::string &text) {
    return text + "pass.\n" + text + "pass.\n" + text + "pass.\n" + text + "pass.\n\n";
}

std::string helped(const std::string &text, const std::string &outcome) {
    const std::string end = text + "[diagnose module] test help func............" + outcome + "\n\n";
    return "[diagnose module] test help func [help]............begin\n" + end +
           "[diagnose module] test help func [diagnose help]............begin\n" + end +
           "[diagnose module] test help func [diagnose test help]............begin\n" + end +
           "[diagnose module] test help func [diagnose test eth port help]............begin\n" + end;
}

// Runs whose interest is in the parameters alone: all is answered with "a".
void expect_parameters(const std::string &words, const std::string &one, const std::string &two,
                       const std::string &three) {
    expect_untimed_success("diagnose_cmd_test test_func" + words,
                           registering + commands(one, two, three, "0 output=\"a\"") + helps("0 output=\"h\\r\\n\""),
                           registered + answered("a") + helped("h\r\n", "pass"));
}

} // namespace

TEST(DiagnoseCmdTest, UsageListsTheSubCommand) {
    expect_run("diagnose_cmd_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " test_func\n",
               0);
}

// The whole of one run, written out, with a driver that calls the handlers: the simulated one.
TEST(DiagnoseCmdTest, TheRegistryOfASimulatedBoard) {
    const std::string of_program = "[argcnt=0] diagnose test no para\r\n"
                                   "[argcnt=1] diagnose test bus <bus-id>\r\n"
                                   "[argcnt=2] diagnose test chip reg <chip-id> <reg-id>\r\n"
                                   "[argcnt=3] diagnose test eth port <inst-id> <chip-id> <port-id>\r\n";
    expect_untimed_success("diagnose_cmd_test test_func 1 2 3",
                           "drv_diag_cmd_init = pass\ndrv_diag_reg_cmd_list = pass\ndrv_diag_cmd_process = pass",
                           "[diagnose module] test_int_cmd case........................pass.\n"
                           "[diagnose module] test_reg_cmd normal case.................pass.\n"
                           "[diagnose module] test_reg_cmd error one case..............pass.\n\n"
                           "[diagnose module] test_exec_cmd no para..........pass.\n"
                           "[diagnose module] test_exec_cmd one para [0x1].............pass.\n"
                           "[diagnose module] test_exec_cmd two para [0x1] [0x2].........pass.\n"
                           "[diagnose module] test_exec_cmd three para [0x1] [0x2] [0x3].........pass.\n\n"
                           "[diagnose module] test help func [help]............begin\n"
                           "[argcnt=0] rtc info\r\n[argcnt=0] startup info\r\n" +
                               of_program +
                               "[diagnose module] test help func............pass\n\n"
                               "[diagnose module] test help func [diagnose help]............begin\n" +
                               of_program +
                               "[diagnose module] test help func............pass\n\n"
                               "[diagnose module] test help func [diagnose test help]............begin\n" +
                               of_program +
                               "[diagnose module] test help func............pass\n\n"
                               "[diagnose module] test help func [diagnose test eth port help]............begin\n"
                               "[argcnt=3] diagnose test eth port <inst-id> <chip-id> <port-id>\r\n"
                               "[diagnose module] test help func............pass\n\n");
}

// Numbers with the top bit set reach the handlers as they were typed, over a text in signed decimal.
TEST(DiagnoseCmdTest, LargeNumbersReachTheHandlers) {
    const std::string script =
        "drv_diag_cmd_init = pass\ndrv_diag_reg_cmd_list = pass\n" + helps("5") + "drv_diag_cmd_process = pass";
    expect_untimed_success("diagnose_cmd_test test_func ffffffff 80000000 0xFEDCBA98", script,
                           registered +
                               "[diagnose module] test_exec_cmd no para..........pass.\n"
                               "[diagnose module] test_exec_cmd one para [0xffffffff].............pass.\n"
                               "[diagnose module] test_exec_cmd two para [0xffffffff] [0x80000000].........pass.\n"
                               "[diagnose module] test_exec_cmd three para [0xffffffff] [0x80000000] "
                               "[0xfedcba98].........pass.\n\n" +
                               helped("", "fail"));
}

TEST(DiagnoseCmdTest, WordsAreHexadecimalAndParametersDecimal) {
    expect_parameters(" 1 2 3", "1", "1 2", "1 2 3");
    expect_parameters(" 1f 0x20 FF", "31", "31 32", "31 32 255");
    expect_parameters(" 10 010 0X10", "16", "16 16", "16 16 16");
    expect_parameters(" ffffffff 80000000 7fffffff", "-1", "-1 -2147483648", "-1 -2147483648 2147483647");
    expect_parameters(" 123456789 -1 +5", "-1", "-1 -1", "-1 -1 5");
    expect_parameters(" 12zz zz ''", "18", "18 0", "18 0 0");
    expect_parameters(" 7 8 9 10 11", "7", "7 8", "7 8 9");
}

TEST(DiagnoseCmdTest, MissingWordsAreZero) {
    expect_parameters("", "0", "0 0", "0 0 0");
    expect_parameters(" a", "10", "10 0", "10 0 0");
    expect_parameters(" a b", "10", "10 11", "10 11 0");
}

TEST(DiagnoseCmdTest, StepsComeInOrder) {
    if (lists_lines()) {
        return;
    }
    EXPECT_EQ(calls_in_order("diagnose_cmd_test test_func", "drv_diag_reg_cmd_list = 0\ndrv_diag_cmd_process = 0\n"),
              "drv_diag_cmd_init drv_diag_reg_cmd_list drv_diag_reg_cmd_list drv_diag_cmd_process "
              "drv_diag_cmd_process drv_diag_cmd_process drv_diag_cmd_process drv_diag_cmd_process "
              "drv_diag_cmd_process drv_diag_cmd_process drv_diag_cmd_process ");
}

// A driver at fault in everything: it takes what it must refuse, too. The run goes on and is no failure, for the lines
// are what tells; and no text of a call that failed is shown.
TEST(DiagnoseCmdTest, EveryStepMayFail) {
    expect_untimed_success("diagnose_cmd_test test_func 4 5 6",
                           "drv_diag_cmd_init() = 0x811101a4\n" + normal_list + "0x21\n" + list_without_handler +
                               "0\n" + commands("4", "4 5", "4 5 6", "0xffffffff output=\"half a text\"") +
                               helps("6 output=\"half a help\""),
                           "[diagnose module] test_int_cmd case........................fail.\n"
                           "[diagnose module] test_reg_cmd normal case.................fail.\n"
                           "[diagnose module] test_reg_cmd error one case..............fail.\n\n"
                           "fail.\nfail.\nfail.\nfail.\n\n" +
                               helped("", "fail"));
}

TEST(DiagnoseCmdTest, OneCommandThatFails) {
    const std::string good = "0 output=\"[text]\"";
    expect_untimed_success(
        "diagnose_cmd_test test_func 1 2 3",
        registering + processed("diagnose test no para", good) + processed("diagnose test bus 1", "0xffffffff") +
            processed("diagnose test chip reg 1 2", good) + processed("diagnose test eth port 1 2 3", good) +
            processed("help", good) + processed("diagnose help", "1") + processed("diagnose test help", good) +
            processed("diagnose test eth port help", good),
        registered + "[text]pass.\nfail.\n[text]pass.\n[text]pass.\n\n"
                     "[diagnose module] test help func [help]............begin\n"
                     "[text][diagnose module] test help func............pass\n\n"
                     "[diagnose module] test help func [diagnose help]............begin\n"
                     "[diagnose module] test help func............fail\n\n"
                     "[diagnose module] test help func [diagnose test help]............begin\n"
                     "[text][diagnose module] test help func............pass\n\n"
                     "[diagnose module] test help func [diagnose test eth port help]............begin\n"
                     "[text][diagnose module] test help func............pass\n\n");
}

// 2048 bytes without a terminator: they are shown to the last, and nothing behind them.
TEST(DiagnoseCmdTest, AnswersThatFillTheirAreaAreShownToItsEnd) {
    const std::string full(2048, 'F');
    const std::string answer = "0 output=\"" + full + "\"";
    expect_untimed_success("diagnose_cmd_test test_func 1 2 3",
                           registering + commands("1", "1 2", "1 2 3", answer) + helps(answer),
                           registered + answered(full) + helped(full, "pass"));
}

// What the call before has left is never shown, nor a part of it.
TEST(DiagnoseCmdTest, TheAreaIsClearedBeforeEachCall) {
    const std::string full = "0 output=\"" + std::string(2048, 'F') + "\"";
    expect_untimed_success(
        "diagnose_cmd_test test_func 1 2 3",
        registering + processed("diagnose test no para", full) + processed("diagnose test bus 1", "0") +
            processed("diagnose test chip reg 1 2", "0x7 output=\"" + std::string(2048, 'G') + "\"") +
            processed("diagnose test eth port 1 2 3", "0 output=[48]") + processed("help", full) +
            processed("diagnose help", "0") + processed("diagnose test help", "0 output=[49 4a]") +
            processed("diagnose test eth port help", "0"),
        registered + std::string(2048, 'F') + "pass.\npass.\nfail.\nHpass.\n\n" +
            "[diagnose module] test help func [help]............begin\n" + std::string(2048, 'F') +
            "[diagnose module] test help func............pass\n\n"
            "[diagnose module] test help func [diagnose help]............begin\n"
            "[diagnose module] test help func............pass\n\n"
            "[diagnose module] test help func [diagnose test help]............begin\n"
            "IJ[diagnose module] test help func............pass\n\n"
            "[diagnose module] test help func [diagnose test eth port help]............begin\n"
            "[diagnose module] test help func............pass\n\n");
}

TEST(DiagnoseCmdTest, PercentSignsInAnswersAreNothingSpecial) {
    expect_untimed_success("diagnose_cmd_test test_func",
                           registering + commands("0", "0 0", "0 0 0", "0 output=\"%s%n%%\"") +
                               helps("0 output=\"%s%n%%\\n\""),
                           registered + answered("%s%n%%") + helped("%s%n%%\n", "pass"));
}

// What was registered before is told; then the run fails, without a line of its own.
TEST(DiagnoseCmdTest, WithoutAnAreaForAnswersTheRunFails) {
    expect_without_text_area("diagnose_cmd_test test_func 1 2 3",
                             "drv_diag_cmd_init = 0\n" + normal_list + "0\n" + list_without_handler +
                                 "1\ndrv_diag_cmd_process = 0",
                             registered + operate_fail("test_func") + operate_fail("diagnose_cmd_test"), 255);
}
