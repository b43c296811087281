// What the program prints, shown in the trace.
#include "tests/probe/run_support.h"

#include <gtest/gtest.h>

using namespace kestro_tests;

namespace {

recording record_with_output(const std::vector<std::string> &words) {
    const std::string file = new_scratch_dir() + "/trace";
    const process_result run = run_tiny(words, {"KESTRO_PROBE_TRACE=" + file, "KESTRO_PROBE_TRACE_OUTPUT=1"});
    return {file, run, read_file(file)};
}

} // namespace

TEST(OutputTest, ALineStandsBehindTheCallsThatItCameFrom) {
    const recording made = record_with_output({"num", "num9"});
    EXPECT_EQ(made.run.out, "num: 0x0 4\nnum: 0x811101a4 77\n");
    EXPECT_EQ(made.run.err, "");
    EXPECT_EQ(made.run.status, 3);
    EXPECT_EQ(made.trace, "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n"
                          "# output: \"num: 0x0 4\"\n"
                          "drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0) = 0x811101a4\n"
                          "# output: \"num: 0x811101a4 77\"\n");
}

TEST(OutputTest, ALineThatADriverPrintsDuringItsCallClosesTheCallsLine) {
    EXPECT_EQ(
        record_with_output({"log"}).trace,
        "drv_log_record(log_id=0, level=2, flag=0, text=\"chip 3 of \\\"lpu\\\": 0x1122334455667788 100%\") ...\n"
        "# output: \"driver log: chip 3 of \\\"lpu\\\": 0x1122334455667788 100%\"\n"
        "drv_log_record(log_id=0, level=2, flag=0, text=\"chip 3 of \\\"lpu\\\": 0x1122334455667788 100%\") = 0x0\n"
        "# output: \"log: 0x0\"\n");
}

TEST(OutputTest, WhatAForkedChildPrintsIsNotInTheTrace) {
    const recording made = record_with_output({"in_child"});
    EXPECT_EQ(made.run.out, "num: 0x811101a4 77\nin_child: 0\n");
    EXPECT_EQ(made.trace, "# child: drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0) = 0x811101a4\n"
                          "# output: \"in_child: 0\"\n");
}

TEST(OutputTest, ATraceWithOutputIsARecordingAsAnyOther) {
    const recording made = record_with_output({"num", "num9", "bios"});
    const process_result replayed = run_tiny({"num", "num9", "bios"}, {"KESTRO_PROBE_REPLAY=" + made.file});
    EXPECT_EQ(replayed.out, made.run.out);
    EXPECT_EQ(replayed.err, "");
    EXPECT_EQ(replayed.status, 3);
}

TEST(OutputTest, OutputWithoutATraceIsRefused) {
    const process_result run = run_tiny({"num"}, {"KESTRO_PROBE_TRACE_OUTPUT=1"});
    EXPECT_EQ(run.err, "kestro_probe: KESTRO_PROBE_TRACE_OUTPUT needs a trace; set KESTRO_PROBE_TRACE as well\n");
    EXPECT_EQ(run.status, 2);
    const process_result wrong = run_tiny({"num"}, {"KESTRO_PROBE_TRACE=/dev/null", "KESTRO_PROBE_TRACE_OUTPUT=yes"});
    EXPECT_EQ(wrong.err, "kestro_probe: KESTRO_PROBE_TRACE_OUTPUT is 'yes'; set it to 1 or leave it out\n");
    EXPECT_EQ(wrong.status, 2);
}
