// log_test: every sub-command on the real program, with the driver scripted. What hooks print, and what the simulated
// log keeps, is in log_test_simulated_test.cpp.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"
#include "tests/support/test_lines.h"

using namespace kestro_tests;

namespace {

// Texts without a line end of their own that end in a carriage return.
const std::string read_fails = "drv_log_read failure\r\n";

} // namespace

TEST(LogTest, UsageListsTheSubCommandsInOrder) {
    expect_run("log_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " write_log\n read_log\n read_log_with_clean\n log_regist\n log_deregist\n log_transfer\n"
               " log_transfer_status\n log_test_hook\n drv_sec_log_hook_register\n drv_sec_log_show\n"
               " drv_sec_log_record <log>\n",
               0);
}

TEST(LogTest, TooFewWords) {
    struct usage {
        const char *line;
        const char *printed;
    };
    for (const usage &one : {
             usage{"write_log", "./kestro_test log_test write_log [module_id] [log_level] [buffer]\r\n"},
             {"write_log 5 2", "./kestro_test log_test write_log [module_id] [log_level] [buffer]\r\n"},
             {"read_log 5", "./kestro_test log_test read_log [module_id] [len]\r\n"},
             {"read_log_with_clean 5", "./kestro_test log_test read_log_with_clean [module_id] [len]\r\n"},
             {"log_regist 5", "./kestro_test log_test log_regist [module_id] [module_name]\r\n"},
             {"log_deregist", "./kestro_test log_test log_deregist [module_id]\r\n"},
             {"log_transfer 0 100 /x", "./kestro_test log_test log_transfer [core] [time_slice] [path] [max_size]\r\n"},
             {"log_transfer_status", "./kestro_test log_test log_transfer_status [mode]\r\n"},
             {"drv_sec_log_record", "./kestro_test log_test drv_sec_log_record <log>\n"},
         }) {
        expect_failure(std::string("log_test ") + one.line, "", one.printed);
    }
}

// What the driver answers is not looked at.
TEST(LogTest, Write) {
    expect_success("log_test write_log 5 2 'a line'", "drv_log_record(log_id=5, level=2, flag=0, text=\"a line\") = 0",
                   "");
    expect_success("log_test write_log 0x10 3 '' more",
                   "drv_log_record(log_id=16, level=3, flag=0, text=\"\") = 0x811101a4", "");
    expect_success("log_test write_log base info 100%s%n%d",
                   "drv_log_record(log_id=0, level=0, flag=0, text=\"100%s%n%d\") = 1", "");
}

TEST(LogTest, Read) {
    expect_success("log_test read_log 5 64",
                   "drv_log_read(log_id=5, len=64) = 0 buffer=\"2 one\\n1 two %s\\n\" lines=2",
                   "read_line:2\r\n2 one\n1 two %s\n\r\n");
    expect_success("log_test read_log 5 64 more", "drv_log_read(log_id=5, len=64) = 0", "read_line:0\r\n\r\n");
    expect_success("log_test read_log 5 none", "drv_log_read(log_id=5, len=0) = 0 lines=0xffffffff",
                   "read_line:-1\r\n\r\n");
}

TEST(LogTest, ReadWithClean) {
    expect_success("log_test read_log_with_clean 17 0x20",
                   "drv_log_read_clr(log_id=17, len=32) = 0 buffer=\"2 one\\n\" lines=1", "read_line:1\r\n2 one\n\r\n");
    expect_success("log_test read_log_with_clean log 0", "drv_log_read_clr(log_id=0, len=0) = 0",
                   "read_line:0\r\n\r\n");
}

TEST(LogTest, TextThatFillsItsArea) {
    expect_success("log_test read_log 5 8", "drv_log_read(log_id=5, len=8) = 0 buffer=\"FFFFFFFF\" lines=1",
                   "read_line:1\r\nFFFFFFFF\r\n");
    expect_success("log_test read_log_with_clean 5 8",
                   "drv_log_read_clr(log_id=5, len=8) = 0 buffer=\"FFFFFFFF\" lines=1", "read_line:1\r\nFFFFFFFF\r\n");
}

// Not even what the driver wrote before it failed.
TEST(LogTest, ReadsThatFail) {
    expect_failure("log_test read_log 5 64", "drv_log_read(log_id=5, len=64) = 0x811101a4 buffer=\"x\" lines=1",
                   read_fails);
    expect_failure("log_test read_log_with_clean 5 64", "drv_log_read_clr(log_id=5, len=64) = 1 buffer=\"x\" lines=1",
                   read_fails);
}

TEST(LogTest, ReadsWithoutAnArea) {
    const std::string fails = operate_fail("read_log") + operate_fail("log_test");
    const std::string clean_fails = operate_fail("read_log_with_clean") + operate_fail("log_test");
    for (const char *len : {"0xffffffff", "0x7fffffff", "4294967296"}) {
        expect_failure(std::string("log_test read_log 5 ") + len, "", "drv log read malloc buffer failure\r\n");
        expect_failure(std::string("log_test read_log_with_clean 5 ") + len, "",
                       "drv read log with clean malloc buffer failure\r\n");
    }
    expect_without_text_area("log_test read_log 5 64", "drv_log_read = 0",
                             "drv log read malloc buffer failure\r\n" + std::string(timing_lines) + fails, 255);
    expect_without_text_area(
        "log_test read_log_with_clean 5 64", "drv_log_read_clr = 0",
        "drv read log with clean malloc buffer failure\r\n" + std::string(timing_lines) + clean_fails, 255);
}

TEST(LogTest, Register) {
    expect_success("log_test log_regist 5 mymod", "drv_log_register(log_id=5, name=\"mymod\", size=8192) = 0", "");
    expect_success("log_test log_regist 5 mymod 0x400 more",
                   "drv_log_register(log_id=5, name=\"mymod\", size=1024) = 0", "");
    expect_success("log_test log_regist id '' size", "drv_log_register(log_id=0, name=\"\", size=0) = 0", "");
    expect_failure("log_test log_regist 5 mymod", "drv_log_register(log_id=5, name=\"mymod\", size=8192) = 7", "");
}

TEST(LogTest, Deregister) {
    expect_success("log_test log_deregist 5", "drv_log_deregister(log_id=5) = 0", "");
    expect_success("log_test log_deregist id more", "drv_log_deregister(log_id=0) = 0", "");
    expect_failure("log_test log_deregist 5", "drv_log_deregister(log_id=5) = 0x81110103", "");
}

TEST(LogTest, TransferThatFails) {
    const std::string failed = "./kestro_test log_test log_transfer failure\r\n";
    expect_failure("log_test log_transfer 9 100 /opt/hostx/home/drv.log 0x1000 more",
                   "drv_log_transfer(core=9, time_slice=100, path=\"/opt/hostx/home/drv.log\", max_size=4096) = 7",
                   failed);
    expect_failure("log_test log_transfer core slice '' size",
                   "drv_log_transfer(core=0, time_slice=0, path=\"\", max_size=0) = 0x811101a4", failed);
}

// It stays until somebody ends it, asleep. What it would print behind the driver call never comes.
TEST(LogTest, TransferStaysAlive) {
    if (lists_lines()) {
        return;
    }
    const std::string script =
        scratch_file("script", "drv_log_transfer(core=1, time_slice=100, path=\"/log\", max_size=4096) = 0\n");
    for (const char *clock : {"real", "virtual"}) {
        for (const int signal : {SIGINT, SIGTERM, SIGKILL}) {
            const std::string trace = new_scratch_dir() + "/trace";
            process_options options;
            options.kill_when = [&] { return read_file(trace).find("= 0x0") != std::string::npos; };
            options.kill_signal = signal;
            const process_result ended = run_sim(
                {"--state", new_scratch_dir(), "--clock", clock, "--strict", "--script", script, "--trace", trace},
                split_words("log_test log_transfer 1 100 /log 4096"), options);
            EXPECT_EQ(ended.out, "") << clock;
            EXPECT_EQ(ended.err, "") << clock;
            EXPECT_EQ(ended.status, 128 + signal) << clock;
            EXPECT_FALSE(ended.timed_out) << clock;
        }
    }
}

TEST(LogTest, TransferStatus) {
    expect_success("log_test log_transfer_status 1", "drv_log_transfer_status(mode=1) = 0 status=0x8000000f",
                   "status:0x8000000f\r\n");
    expect_success("log_test log_transfer_status mode more", "drv_log_transfer_status(mode=0) = 0", "status:0x0\r\n");
    expect_failure("log_test log_transfer_status 2", "drv_log_transfer_status(mode=2) = 0x81110106 status=1",
                   "drv_log_transfer_status failure \r\n");
}

TEST(LogTest, SecurityHook) {
    const std::string call = "drv_sec_log_hook_register(log_id=0x11223344, name=\"slot3\", hook=callback)";
    expect_success("log_test drv_sec_log_hook_register", call + " = 0", "");
    expect_success("log_test drv_sec_log_hook_register 1 2", call + " = 0", "");
    expect_failure("log_test drv_sec_log_hook_register", call + " = 0x811101a4", "");
}

TEST(LogTest, SecurityShow) {
    expect_success("log_test drv_sec_log_show", "drv_sec_log_show() = 0", "");
    expect_failure("log_test drv_sec_log_show 1", "drv_sec_log_show() = 1", "");
}

TEST(LogTest, SecurityRecord) {
    expect_success("log_test drv_sec_log_record 'login %s%n' more", "drv_sec_log_record(text=\"login %s%n\") = 0", "");
    expect_success("log_test drv_sec_log_record ''", "drv_sec_log_record(text=\"\") = 0", "");
    expect_failure("log_test drv_sec_log_record login", "drv_sec_log_record(text=\"login\") = 0x811101a4", "");
}

namespace {

const std::string hook_set = "drv_log_hook_set(hook=callback) = 0\n";
const std::string recorded = "drv_log_record(log_id=10, level=2, flag=0, text=\"test_log\") = 0\n";
const std::string hook_removed = "drv_log_hook_set(hook=null) = 0\n";
const std::string handled = "intr_test_signal_handler exit, sig_no=2\n";

// A run of the hook test under a strict script, with Ctrl-C as the lines come.
process_result hook_run(const std::string &script, const std::vector<std::string> &interrupt_at,
                        const std::vector<std::string> &more_options = {}) {
    std::vector<std::string> options = {"--state", new_scratch_dir(), "--strict", "--script",
                                        scratch_file("script", script)};
    options.insert(options.end(), more_options.begin(), more_options.end());
    process_options process;
    process.interrupt_at = interrupt_at;
    return run_sim(options, {"log_test", "log_test_hook"}, process);
}

// Up to the dispatcher's lines, whose numbers depend on how long the operator took.
std::string body_of(const process_result &run) {
    return run.out.substr(0, run.out.find("cmd_exec used second:"));
}

} // namespace

TEST(LogTest, HookTestWaitsForTheOperator) {
    if (lists_lines()) {
        return;
    }
    for (const std::string &failing : {std::string(), std::string("1"), std::string("0x811101a4")}) {
        const std::string answer = failing.empty() ? " = 0\n" : " = " + failing + "\n";
        const process_result run = hook_run("drv_log_hook_set(hook=callback)" + answer +
                                                "drv_log_record(log_id=10, level=2, flag=0, text=\"test_log\")" +
                                                answer + "drv_log_hook_set(hook=null)" + answer,
                                            {"wait for ctrl+c\n"});
        EXPECT_EQ(body_of(run), "enter\nwait for ctrl+c\n" + handled + "exit\n");
        EXPECT_EQ(run.err, "");
        EXPECT_EQ(run.status, 0);
        EXPECT_FALSE(run.timed_out);
    }
}

// The virtual clock runs on in steps of the pause.
TEST(LogTest, HookTestPollsOnEitherClock) {
    if (lists_lines()) {
        return;
    }
    const process_result run =
        hook_run(hook_set + recorded + hook_removed, {"wait for ctrl+c\n"}, {"--clock", "virtual"});
    EXPECT_EQ(body_of(run), "enter\nwait for ctrl+c\n" + handled + "exit\n");
    EXPECT_EQ(run.status, 0);
}

// Before its handler stands, a signal ends the run as any other would.
TEST(LogTest, HookTestInterruptedBeforeItWaits) {
    if (lists_lines()) {
        return;
    }
    for (const char *call : {"1", "2"}) {
        const process_result run = hook_run(hook_set + recorded + hook_removed, {}, {"--signal-call", call});
        EXPECT_EQ(run.out, "enter\n") << call;
        EXPECT_EQ(run.status, 128 + SIGINT) << call;
    }
}

// Each signal has its line, also one that comes when the wait is over, and the run ends in its order.
TEST(LogTest, HookTestInterruptedTwice) {
    if (lists_lines()) {
        return;
    }
    const process_result run =
        hook_run(hook_set + recorded + hook_removed, {"wait for ctrl+c\n"}, {"--signal-call", "3"});
    EXPECT_EQ(body_of(run), "enter\nwait for ctrl+c\n" + handled + handled + "exit\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 0);
}

TEST(LogTest, HookTestKeepsWhatWasPrintedBeforeACrash) {
    const std::string crash = "drv_log_record(log_id=10, level=2, flag=0, text=\"test_log\") = crash\n";
    expect_run("log_test log_test_hook", hook_set + crash, "enter\n", 128 + SIGSEGV);
    expect_run("log_test log_test_hook more", "drv_log_hook_set(hook=callback) = crash\n", "enter\n", 128 + SIGSEGV);
}
