// A recording answers the calls of a later run without any driver.
#include "tests/probe/run_support.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace kestro_tests;

namespace {

process_result replay(const std::vector<std::string> &words, const std::string &file) {
    return run_tiny(words, {"KESTRO_PROBE_REPLAY=" + file});
}

} // namespace

TEST(ReplayTest, TheSameRunPrintsTheSameBytes) {
    const std::vector<std::string> words{"num",      "num9",  "addrs", "set",   "code",
                                         "set_code", "cards", "bios",  "patch", "late"};
    const recording made = record(words);
    const process_result again = replay(words, made.file);
    EXPECT_EQ(again.out, made.run.out);
    EXPECT_EQ(again.err, "");
    EXPECT_EQ(again.status, 3);
}

TEST(ReplayTest, NoRealDriverIsCalled) {
    const recording made = record({"log"});
    EXPECT_EQ(replay({"log"}, made.file).out, "log: 0x0\n");
}

TEST(ReplayTest, AReplayRecordsTheSame) {
    const std::vector<std::string> words{"num", "addrs", "cards", "patch", "num9"};
    const recording made = record(words);
    const std::string file = new_scratch_dir() + "/trace";
    run_tiny(words, {"KESTRO_PROBE_REPLAY=" + made.file, "KESTRO_PROBE_TRACE=" + file});
    EXPECT_EQ(read_file(file), made.trace);
}

TEST(ReplayTest, ACallThatDiffersIsReported) {
    const recording made = record({"num", "code"});
    const process_result run = replay({"num9", "code"}, made.file);
    EXPECT_EQ(run.out, "num: 0xdead 77\ncode: 0x0 0x811101a4 2031 12 30\n");
    EXPECT_EQ(run.err, made.file + ":1: call 1 differs from the recording\n"
                                   "  expected drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n"
                                   "  got      drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0)\n");
    EXPECT_EQ(run.status, 99);
}

TEST(ReplayTest, ACallBeyondTheEndIsReported) {
    const recording made = record({"num"});
    const process_result run = replay({"num", "code"}, made.file);
    EXPECT_EQ(run.out, "num: 0x0 4\ncode: 0xdead 0x1 2 3 4\n");
    EXPECT_EQ(run.err, made.file + ": call 2 is beyond the end of the recording: drv_reset_get_code()\n");
    EXPECT_EQ(run.status, 99);
}

TEST(ReplayTest, LinesLeftOverAreReported) {
    const recording made = record({"num", "code", "code"});
    const process_result run = replay({"num"}, made.file);
    EXPECT_EQ(run.err, made.file + ":2: the run ended with 2 lines of the recording left over\n  expected "
                                   "drv_reset_get_code() = 0x0 code={code=0x811101a4 year=2031 month=12 day=30}\n");
    EXPECT_EQ(run.status, 99);
}

TEST(ReplayTest, ACrashIsReplayed) {
    const recording made = record({"num", "code"}, "drv_reset_get_code = crash\n");
    EXPECT_EQ(replay({"num", "code"}, made.file).status, 128 + 11);
}

TEST(ReplayTest, CallsOfChildrenAndCallbacksAreNotExpected) {
    const recording made = record({"in_child", "in_out"});
    const process_result run = replay({"in_out"}, made.file);
    EXPECT_EQ(run.out, "in_out: 0x0 0 0x1\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 3);
}

TEST(ReplayTest, ADeviationDoesNotFloodTheScreen) {
    const recording made = record({"num"});
    const process_result run = replay(std::vector<std::string>(60, "code"), made.file);
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 3 + 19 + 1);
    EXPECT_EQ(run.status, 99);
}

TEST(ReplayTest, EachThreadFollowsItsOwnLines) {
    const recording made = record({"num", "thread_num9", "code", "thread_num"});
    // The lines of the threads stand in another order here; each thread for itself makes the same calls.
    const process_result run = replay({"num", "code", "thread_num9", "thread_num"}, made.file);
    EXPECT_EQ(run.out, "num: 0x0 4\ncode: 0x0 0x811101a4 2031 12 30\nnum: 0x811101a4 77\nnum: 0x0 4\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 3);
}

TEST(ReplayTest, AThreadThatDiffersIsNamed) {
    const recording made = record({"num", "thread_num9"});
    const process_result run = replay({"num", "thread_num", "thread_num"}, made.file);
    EXPECT_EQ(run.err, made.file +
                           ":2: call 2 differs from the recording\n"
                           "  expected @2 drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0) = 0x811101a4\n"
                           "  got      @2 drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0)\n" +
                           made.file +
                           ": call 3 is beyond the end of the recording: "
                           "@3 drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0)\n");
    EXPECT_EQ(run.status, 99);
    const process_result less = replay({"num"}, made.file);
    EXPECT_EQ(less.err, made.file +
                            ":2: the run ended with 1 line of thread 2 of the recording left over\n  expected @2 "
                            "drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0) = 0x811101a4\n");
}

TEST(ReplayTest, ARunThatEndedInACallSaysWhich) {
    const recording made = record({"num", "crash"});
    const process_result run = replay({"num", "crash"}, made.file);
    EXPECT_EQ(run.err, made.file +
                           ":2:1: this call never came back, the recorded run ended in it; write what it is to do "
                           "behind it, as in = crash, or take the line out: drv_voltage_init(inst_id=0x7)\n");
    EXPECT_EQ(run.status, 2);
    write_file(made.file, made.trace + " = crash\n");
    EXPECT_EQ(replay({"num", "crash"}, made.file).status, 128 + 11);
}

TEST(ReplayTest, ALineThatNeedsADriverIsRefused) {
    const std::string file = scratch_file("trace", "# by hand\ndrv_reset_get_code = pass\n");
    const process_result run = replay({"code"}, file);
    EXPECT_EQ(run.err, file + ":2:1: a recording cannot pass a call on; write the result, or use it as a script\n");
    EXPECT_EQ(run.status, 2);
}
