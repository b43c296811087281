// Diagnose commands: there are some once the family has begun, and devices answer them.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string begin = "drv_diag_cmd_init()";
const std::string rtc_info = "drv_diag_cmd_process(command=\"rtc info\", size=200)";
const std::string not_ready = "0x8111010f\n";

// What a program registers, as kestro_call does it, with a handler that answers nothing.
std::string record(const std::string &words, const std::string &help) {
    return "{command=\"" + words + "\" handler=callback key=\"" + words + "\" help=\"" + help + "\"}";
}

std::string add(const std::string &records) {
    return "drv_diag_reg_cmd_list(records=[" + records + "])";
}

std::string process(const std::string &words, uint32_t size = 200) {
    return "drv_diag_cmd_process(command=\"" + words + "\", size=" + std::to_string(size) + ")";
}

std::string text(const std::string &output) {
    return "0x0 output=\"" + output + "\"\n";
}

// A call that reached the handler, with what it was given.
std::string handled(const std::string &words, const std::string &parameters) {
    return process(words) + " ...\n# event: drv_diag_handler(size=200, " + parameters + ")\n" + text("");
}

std::string scene(const std::string &name) {
    const test_board board = new_delivered("mpu_master");
    process_options options;
    options.environment = environment_of(board);
    const process_result result = run_process({build_dir() + "/tests/diag_scenes", name}, options);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    return result.out;
}

const std::string four =
    add(record("test none", "[argcnt=0] none") + " " + record("test one", "[argcnt=1] one <a>") + " " +
        record("test two", "[argcnt=2] two <a> <b>") + " " + record("test three", "[argcnt=3] three <a> <b> <c>"));

} // namespace

TEST(DiagCmdDriver, TellsOfTheClock) {
    const std::string state = new_scratch_dir() + "/state";
    EXPECT_EQ(answers_of({"--state", state, "--clock", "virtual"}, {begin, "wait 2.5", rtc_info, begin, rtc_info}),
              ok +
                  "0x0 output=\"time: 2026-01-15 08:00:02.50, day 4 of the week\\r\\noscillator: running\\r\\n"
                  "battery: 3012 mV\\r\\n\"\n" +
                  ok +
                  "0x0 output=\"time: 2026-01-15 08:00:02.50, day 4 of the week\\r\\noscillator: running\\r\\n"
                  "battery: 3012 mV\\r\\n\"\n");
    EXPECT_EQ(answers_of({"--state", state, "--clock", "virtual", "--set", "slot9/rtc/chip/0/battery=2000", "--set",
                          "slot9/rtc/chip/0/oscillator_stopped=1"},
                         {begin, rtc_info}),
              ok +
                  "0x0 output=\"time: 2026-01-15 08:00:02.50, day 4 of the week\\r\\noscillator: has stopped, the time "
                  "is not to be trusted\\r\\nbattery: 2000 mV, low\\r\\n\"\n");
}

TEST(DiagCmdDriver, ThereAreNoCommandsBeforeItBegins) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {rtc_info, begin}), not_ready + ok);
    EXPECT_EQ(answers(board, {rtc_info}), not_ready);
}

TEST(DiagCmdDriver, WrongCalls) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {begin, "drv_diag_cmd_process(command=\"rtc\", size=200)",
                        "drv_diag_cmd_process(command=\"\", size=200)", "drv_diag_cmd_process(command=null, size=200)",
                        "drv_diag_cmd_process(command=\"rtc info\", size=200, output=null)",
                        "drv_diag_cmd_process(command=\"rtc info\", size=20)"}),
        ok + no_such_device + no_such_device + null_pointer + null_pointer + too_small);
    const std::string clockless =
        R"(<board name="clockless" like="mpu" slot="9"><module name="sim_rtc" remove="yes"/></board>)";
    EXPECT_EQ(answers(new_board(scratch_file("clockless.xml", clockless)), {begin, rtc_info}), ok + not_supported);
}

TEST(DiagCmdDriver, BothInitsMayComeAgain) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_diag_init()", rtc_info, begin, "drv_diag_init()", begin,
                              add(record("a", "[argcnt=0]")), begin, "drv_diag_init()", process("a help")}),
              ok + not_ready + ok + ok + ok + ok + ok + ok + text("[argcnt=0]\\r\\n"));
}

TEST(DiagCmdDriver, CommandsOfTheProgramGetTheirParameters) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {begin, four, process("test none"), process("test one 0x1F"), process("test two 7 -1"),
                              process("test three 010 4294967295 -2147483648")}),
              ok + ok + handled("test none", "first=0, second=0, third=0") +
                  handled("test one 0x1F", "first=31, second=0, third=0") +
                  handled("test two 7 -1", "first=7, second=0xffffffff, third=0") +
                  handled("test three 010 4294967295 -2147483648", "first=10, second=0xffffffff, third=0x80000000"));
}

TEST(DiagCmdDriver, BlanksBetweenWordsDoNotMatter) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {begin, add(record("  a   b ", "[argcnt=1]")), process(" a b 1"), process("a  b\\t1 ")}),
              ok + ok + handled(" a b 1", "first=1, second=0, third=0") +
                  handled("a  b\\t1 ", "first=1, second=0, third=0"));
}

TEST(DiagCmdDriver, ParametersThatDoNotFitAreRefused) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {begin, four, process("test none 0"), process("test one"), process("test one 1 2"),
                              process("test two 1"), process("test two 1 2 3"), process("test three 1 2"),
                              process("test three 1 2 3 4"), process("rtc info 1")}),
              ok + ok + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value);
    EXPECT_EQ(answers(board, {begin, four, process("test one a"), process("test one 1x"), process("test one 0x"),
                              process("test one -"), process("test one +1"), process("test one 4294967296"),
                              process("test one -2147483649"), process("test one 1.5"),
                              process("test one 18446744073709551616"), process("test two 1 two")}),
              ok + ok + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value +
                  bad_value + bad_value);
}

// Of two commands that a line begins with, the longer one is meant.
TEST(DiagCmdDriver, TheLongestWordsWin) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(
        answers(board, {begin, add(record("eth 1", "[argcnt=0]") + " " + record("eth", "[argcnt=2]")), process("eth 1"),
                        process("eth 2 1"), process("eth 1 2"), process("ethernet"), process("ETH 2 1")}),
        ok + ok + handled("eth 1", "first=0, second=0, third=0") + handled("eth 2 1", "first=2, second=1, third=0") +
            bad_value + no_such_device + no_such_device);
}

TEST(DiagCmdDriver, HelpListsWhatBeginsWithItsWords) {
    const test_board board = new_delivered("mpu_master");
    const std::string all_four = "[argcnt=0] none\\r\\n[argcnt=1] one <a>\\r\\n[argcnt=2] two <a> <b>\\r\\n"
                                 "[argcnt=3] three <a> <b> <c>\\r\\n";
    const std::string of_devices = "[argcnt=0] rtc info\\r\\n[argcnt=0] startup info\\r\\n";
    EXPECT_EQ(
        answers(board, {begin, process("help"), process("test help"), four, process("help"), process("test help"),
                        process("test two help"), process("rtc help"), process("rtc info help"), process("tes help"),
                        process("test four help"), process("test one 1 help"), process("help test")}),
        ok + text(of_devices) + no_such_device + ok + text(of_devices + all_four) + text(all_four) +
            text("[argcnt=2] two <a> <b>\\r\\n") + text("[argcnt=0] rtc info\\r\\n") +
            text("[argcnt=0] rtc info\\r\\n") + no_such_device + no_such_device + no_such_device + no_such_device);
}

// 17, 20, 24 and 30 bytes: whole lines, and dots where some are left out. All of them take 91 and a terminator.
TEST(DiagCmdDriver, AListingEndsWithinItsArea) {
    const test_board board = new_delivered("lpu");
    const std::string first = "[argcnt=0] none\\r\\n";
    const std::string second = "[argcnt=1] one <a>\\r\\n";
    const std::string third = "[argcnt=2] two <a> <b>\\r\\n";
    EXPECT_EQ(answers(board, {begin, four, process("test help", 92), process("test help", 91), process("test help", 67),
                              process("test help", 66), process("test help", 23), process("test help", 22),
                              process("test help", 6), process("test help", 5), process("test help", 0)}),
              ok + ok + text(first + second + third + "[argcnt=3] three <a> <b> <c>\\r\\n") +
                  text(first + second + third + "...\\r\\n") + text(first + second + third + "...\\r\\n") +
                  text(first + second + "...\\r\\n") + text(first + "...\\r\\n") + text("...\\r\\n") +
                  text("...\\r\\n") + too_small + too_small);
}

// Nothing of a list with such a record is kept, whatever stands before and behind it.
TEST(DiagCmdDriver, RecordsThatAreRefused) {
    const test_board board = new_delivered("mpu_master");
    const std::string good = record("good", "[argcnt=0]");
    const std::string words_127 = std::string(63, 'w') + " " + std::string(63, 'v');
    const auto refused = [&](const std::string &odd, const std::string &code) {
        EXPECT_EQ(answers(board, {begin, add(good + " " + odd + " " + record("better", "[argcnt=0]")), process("good"),
                                  process("better")}),
                  ok + code + no_such_device + no_such_device)
            << odd;
    };
    refused(R"({command="a" handler=null key="a" help="[argcnt=0]"})", null_pointer);
    refused(R"({command=null handler=callback key="a" help="[argcnt=0]"})", null_pointer);
    refused(R"({command="a" handler=callback key=null help="[argcnt=0]"})", null_pointer);
    refused(R"({command="a" handler=callback key="a" help=null})", null_pointer);
    for (const std::string words : {"", "  ", "help", "a help", "good", " good ", "rtc info", "startup  info"}) {
        refused(record(words, "[argcnt=0]"), bad_value);
    }
    for (const std::string help :
         {"", "a", "[argcnt=4]", "[argcnt=]", "[argcnt=-1]", "[argcnt=10]", "[argcnt=1", " [argcnt=1]"}) {
        refused(record("a", help), bad_value);
    }
    refused(record(words_127 + "v", "[argcnt=0]"), bad_value);
    refused(record("a", "[argcnt=0]" + std::string(246, 'h')), bad_value);
    EXPECT_EQ(answers(board, {begin, add(record(words_127, "[argcnt=0]" + std::string(245, 'h'))), process(words_127)}),
              ok + ok + handled(words_127, "first=0, second=0, third=0"));
}

TEST(DiagCmdDriver, ListsThatAreRefused) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {four, begin, "drv_diag_reg_cmd_list(records=null, count=1)",
                              "drv_diag_reg_cmd_list(records=[], count=0)"}),
              not_ready + ok + null_pointer + bad_value);
}

// The list that came last counts; help shows the command behind those that were there before.
TEST(DiagCmdDriver, WordsMayBeRegisteredAgain) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {begin, add(record("a b", "[argcnt=0]") + " " + record("c", "[argcnt=0]")),
                              add(record("a  b", "[argcnt=1]")), process("a b"), process("a b 5"), process("c"),
                              process("a help")}),
              ok + ok + ok + bad_value + handled("a b 5", "first=5, second=0, third=0") +
                  handled("c", "first=0, second=0, third=0") + text("[argcnt=1]\\r\\n"));
}

// A command is that of the process which registered it.
TEST(DiagCmdDriver, AnotherProcessHasCommandsOfItsOwn) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {begin, four}), ok + ok);
    EXPECT_EQ(answers(board, {begin, process("test none"), process("rtc help")}),
              ok + no_such_device + text("[argcnt=0] rtc info\\r\\n"));
}

TEST(DiagCmdDriver, HandlersMayFillFailAndCallDrivers) {
    EXPECT_EQ(scene("handlers"), "0x0\n"
                                 "say 1 2 3: 0x0 '64 bytes 1 2 3'\n"
                                 "say so 7: 0x0 '20 bytes 7 0 0'\n"
                                 "fill: 0x0 '" +
                                     std::string(64, 'f') +
                                     "'\n"
                                     "fill: 0x0 'f'\n"
                                     "fail 0: 0x0 'half'\n"
                                     "fail 0xffffffff: 0xffffffff 'half'\n"
                                     "fail 17: 0x11 'half'\n"
                                     "late: 0x81110103 ''\n"
                                     "drivers: 0x0 'slot 9, 64 bytes 4 5 6, 0x0'\n"
                                     "late: 0x0 'other'\n");
}

TEST(DiagCmdDriver, TextsAreTakenOver) {
    EXPECT_EQ(scene("texts"), "0x0\n"
                              "a text that lies on the heap: 0x0 'other'\n"
                              "a help: 0x0 '[argcnt=0] and a help text that does so, too\r\n'\n");
}

TEST(DiagCmdDriver, ThereIsRoomForSoManyCommands) {
    EXPECT_EQ(scene("room"), "0x0\n0x8111010b\n"
                             "one: 0x81110103 ''\n"
                             "0x0 0x8111010b 0x0\n"
                             "word5 1 2 3: 0x0 '64 bytes 1 2 3'\n"
                             "word6: 0x0 'other'\n"
                             "0x8111010b 0x8111010b\n");
}

} // namespace kestro_tests
