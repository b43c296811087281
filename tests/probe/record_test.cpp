// What a run records.
#include "tests/probe/run_support.h"

#include <gtest/gtest.h>

using namespace kestro_tests;

namespace {

void expect_recorded(const std::vector<std::string> &words, const std::string &out, const std::string &trace) {
    const recording made = record(words);
    EXPECT_EQ(made.run.out, out);
    EXPECT_EQ(made.run.err, "");
    EXPECT_EQ(made.run.status, 3);
    EXPECT_EQ(made.trace, trace);
}

} // namespace

TEST(RecordTest, AValueIsShownBehindTheResult) {
    expect_recorded({"num"}, "num: 0x0 4\n",
                    "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n");
}

TEST(RecordTest, AFailedCallShowsOnlyWhatTheDriverChanged) {
    expect_recorded({"num9", "patch"}, "num: 0x811101a4 77\npatch: 0x7 what?\n",
                    "drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0) = 0x811101a4\n"
                    "drv_led_patch_func1(inst_id=0xffffffff, buffer=\"fade\", size=8) = 0x7 buffer=\"what?\"\n");
}

TEST(RecordTest, CallsOfDriversAmongThemselvesAreNotRecorded) {
    expect_recorded({"addrs"}, "addrs: 0x0 40 41 42 43 44 45 46 47 48 49 4a 4b ee ee\n",
                    "drv_mac_get_addr_num(inst_id=0xffffffff, type_id=1, num=2, size=12) = 0x0 "
                    "buffer=[40 41 42 43 44 45 46 47 48 49 4a 4b]\n");
}

TEST(RecordTest, BytesAndRecordsThatArePassedInAreShown) {
    expect_recorded({"set", "set_code"}, "set: 0x20\nset_code: 0x7ee\n",
                    "drv_mac_set_addr(inst_id=0xffffffff, type_id=1, addr=[20 02 00 00 00 ff]) = 0x20\n"
                    "drv_reset_self_board_without_reboot(code={code=32 year=2030 month=1 day=2}) = 0x7ee\n");
}

TEST(RecordTest, AVariadicCallReachesTheDriverFormatted) {
    expect_recorded({"log"}, "driver log: chip 3 of \"lpu\": 0x1122334455667788 100%\nlog: 0x0\n",
                    "drv_log_record(log_id=0, level=2, flag=0, "
                    "text=\"chip 3 of \\\"lpu\\\": 0x1122334455667788 100%\") = 0x0\n");
}

TEST(RecordTest, RecordsAreShownFieldByField) {
    expect_recorded({"code", "cards"}, "code: 0x0 0x811101a4 2031 12 30\ncards: 0x0 2 0x1 0x10203\n",
                    "drv_reset_get_code() = 0x0 code={code=0x811101a4 year=2031 month=12 day=30}\n"
                    "drv_board_get_card_list(inst_id=0xffffffff) = 0x0 list={count=2 "
                    "slot_id=[1 0x10203 0 0 0 0 0 0] card_no=[01 00 00 00 03 02 01 00 00 00 00 00 00 00 00 00 "
                    "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00]}\n");
}

TEST(RecordTest, TextIsShownToItsEnd) {
    expect_recorded({"bios"}, "bios: 0x0 56 31 2e 30 32 00 65 65 65 65\n",
                    "drv_board_get_bios_ver(inst_id=0xffffffff, size=8) = 0x0 text=\"V1.02\"\n");
}

TEST(RecordTest, CallsOutOfACallbackAreComments) {
    expect_recorded({"in_out"}, "board 5 1: 8\nin_out: 0x0 8 0x1\n",
                    "drv_board_in_out_reg(handler=callback, user_data=callback, name=\"tiny\", flag=1) ...\n"
                    "# callback: drv_mac_get_num(inst_id=0xffffffff, type_id=5, reserved=0) = 0x0 num=8\n"
                    "drv_board_in_out_reg(handler=callback, user_data=callback, name=\"tiny\", flag=1) = 0x0\n"
                    "drv_board_in_out_unreg(handler=null) = 0x1\n");
}

TEST(RecordTest, ALibraryOpenedAtRunTimeIsRecorded) {
    expect_recorded({"late", "late_missing"}, "late: 0x0 41\nlate: not found\n",
                    "drv_smb_get_tx_err_count(inst_id=0xffffffff, slot_id=4) = 0x0 count=41\n");
}

TEST(RecordTest, CallsOutOfAThreadOfTheDriversAreComments) {
    expect_recorded({"in_out_later", "num"}, "board 5 1: 8\nin_out: 0x0 8\nnum: 0x0 4\n",
                    "drv_board_in_out_reg(handler=callback, user_data=callback, name=\"tiny\", flag=2) ...\n"
                    "# callback: drv_mac_get_num(inst_id=0xffffffff, type_id=5, reserved=0) = 0x0 num=8\n"
                    "drv_board_in_out_reg(handler=callback, user_data=callback, name=\"tiny\", flag=2) = 0x0\n"
                    "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n");
}

TEST(RecordTest, OtherThreadsAreNumberedAsTheyCall) {
    expect_recorded({"num", "thread_num9", "thread_num", "num9"},
                    "num: 0x0 4\nnum: 0x811101a4 77\nnum: 0x0 4\nnum: 0x811101a4 77\n",
                    "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n"
                    "@2 drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0) = 0x811101a4\n"
                    "@3 drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n"
                    "drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0) = 0x811101a4\n");
}

TEST(RecordTest, ACallThatCrashesTheDriverIsTheLastThingInTheTrace) {
    const recording made = record({"num", "crash", "num"});
    EXPECT_EQ(made.run.status, 128 + 11);
    EXPECT_EQ(made.trace, "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n"
                          "drv_voltage_init(inst_id=0x7)");
}

TEST(RecordTest, ARunThatIsKilledInACallShowsIt) {
    const std::string file = scratch_file("trace", "");
    process_options options;
    options.environment = {"KESTRO_PROBE_TRACE=" + file, "LD_PRELOAD=" + build_dir() + "/probe/libkestro_probe.so"};
    options.kill_when = [&] { return read_file(file).find("drv_voltage_exit(inst_id=0x7)") != std::string::npos; };
    const process_result run = run_process({build_dir() + "/tests/tiny/tiny_program", "num", "hang"}, options);
    EXPECT_EQ(run.status, 128 + 9);
    EXPECT_EQ(read_file(file), "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n"
                               "drv_voltage_exit(inst_id=0x7)");
}

TEST(RecordTest, AChildThatCrashesDoesNotSpoilTheLinesOfItsParent) {
    const recording made = record({"child_crash", "num"});
    EXPECT_EQ(made.run.status, 3);
    EXPECT_EQ(made.trace, "# child: drv_voltage_init(inst_id=0x7) ...\n"
                          "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n");
}

TEST(RecordTest, AChildThatCallsDuringACallClosesItsLine) {
    expect_recorded({"in_out_child"}, "board 5 1: 8\nin_out: 0x0 0\n",
                    "drv_board_in_out_reg(handler=callback, user_data=callback, name=\"tiny\", flag=3) ...\n"
                    "# child: drv_mac_get_num(inst_id=0xffffffff, type_id=5, reserved=0) = 0x0 num=8\n"
                    "drv_board_in_out_reg(handler=callback, user_data=callback, name=\"tiny\", flag=3) = 0x0\n");
}

TEST(RecordTest, ATraceThatCannotBeWrittenIsSaidOnce) {
    const process_result run = run_tiny({"num", "num9"}, {"KESTRO_PROBE_TRACE=/dev/full"});
    EXPECT_EQ(run.out, "num: 0x0 4\nnum: 0x811101a4 77\n");
    EXPECT_EQ(run.err, "/dev/full: No space left on device; the trace ends here, although the run went on\n");
    EXPECT_EQ(run.status, 99);
}

TEST(RecordTest, ATraceThatTheProgramClosesIsSaid) {
    const process_result run = run_tiny({"close_all", "num"}, {"KESTRO_PROBE_TRACE=" + new_scratch_dir() + "/trace"});
    EXPECT_NE(run.err.find("/trace: Bad file descriptor; the trace ends here"), std::string::npos) << run.err;
    EXPECT_EQ(run.status, 99);
}

TEST(RecordTest, AForkedChildIsAComment) {
    expect_recorded({"in_child"}, "num: 0x811101a4 77\nin_child: 0\n",
                    "# child: drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0) = 0x811101a4\n");
}

TEST(RecordTest, AnEarlierRecordingIsReplaced) {
    const std::string file =
        scratch_file("trace", "something older that is longer than the line to come " + std::string(200, '.') + "\n");
    run_tiny({"num9"}, {"KESTRO_PROBE_TRACE=" + file});
    EXPECT_EQ(read_file(file), "drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0) = 0x811101a4\n");
}

TEST(RecordTest, ATraceThatCannotBeWrittenEndsTheRunBeforeItStarts) {
    const std::string file = new_scratch_dir() + "/no/trace";
    const process_result run = run_tiny({"num"}, {"KESTRO_PROBE_TRACE=" + file});
    EXPECT_EQ(run.err, file + ": No such file or directory; name a file that can be written\n");
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.status, 2);
}
