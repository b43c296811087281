// What a script makes the driver calls answer.
#include "tests/probe/run_support.h"

#include <gtest/gtest.h>

using namespace kestro_tests;

namespace {

void expect_answered(const std::vector<std::string> &words, const std::string &script, const std::string &out) {
    const process_result run = run_script(words, script);
    EXPECT_EQ(run.out, out);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 3);
}

} // namespace

TEST(AnswerTest, ResultsAndOutputsComeFromTheRule) {
    expect_answered({"num", "num9"}, "drv_mac_get_num(type_id=9) = 5 num=70000\n", "num: 0x0 4\nnum: 0x5 70000\n");
}

TEST(AnswerTest, OutputsThatAreNotNamedAreLeftAlone) {
    expect_answered({"num", "code"}, "drv_mac_get_num = 0\ndrv_reset_get_code = 0 code={year=2040}\n",
                    "num: 0x0 77\ncode: 0x0 0x1 2040 3 4\n");
}

TEST(AnswerTest, RulesServeInOrderAndAsOftenAsTheySay) {
    expect_answered({"num", "num", "num", "num"}, "drv_mac_get_num = 1 x1\ndrv_mac_get_num = 2 x2\n",
                    "num: 0x1 77\nnum: 0x2 77\nnum: 0x2 77\nnum: 0x0 4\n");
}

TEST(AnswerTest, EveryKindOfOutputIsWritten) {
    expect_answered({"addrs", "bios", "bios", "cards", "patch", "himem"},
                    "drv_mac_get_addr_num = 0 buffer=[aa bb]\n"
                    "drv_board_get_bios_ver = 0 text=\"V9\" x1\n"
                    "drv_board_get_bios_ver = 0 text=[31 32 33]\n"
                    "drv_board_get_card_list = 0 list={count=3 card_no=[04 05]}\n"
                    "drv_led_patch_func1(buffer=\"fade\") = 0 buffer=\"bright\"\n"
                    "nb_get_himem_info = 0 start=0x123456789a length=5\n",
                    "addrs: 0x0 aa bb ee ee ee ee ee ee ee ee ee ee ee ee\n"
                    "bios: 0x0 56 39 00 65 65 65 65 65 65 65\n"
                    "bios: 0x0 31 32 33 65 65 65 65 65 65 65\n"
                    "cards: 0x0 3 0x504 0x0\n"
                    "patch: 0x0 bright\n"
                    "himem: 0x0 0x123456789a 0x5\n");
}

TEST(AnswerTest, InputsOfEveryKindSelect) {
    expect_answered({"set", "set_code", "log", "in_out"},
                    "drv_mac_set_addr(addr=[20 02 00 00 00 ff]) = 1\n"
                    "drv_reset_self_board_without_reboot(code={year=2031}) = 2\n"
                    "drv_reset_self_board_without_reboot(code={year=2030}) = 3\n"
                    "drv_log_record(text=\"chip 3 of \\\"lpu\\\": 0x1122334455667788 100%\") = 4\n"
                    "drv_board_in_out_reg(handler=callback, name=\"tiny\") = 5\n"
                    "drv_board_in_out_unreg(handler=null) = 6\n",
                    "set: 0x1\nset_code: 0x3\nlog: 0x4\nin_out: 0x5 0 0x6\n");
}

TEST(AnswerTest, PassCallsTheDriverAndChangesWhatIsNamed) {
    expect_answered({"code", "num9", "bios"},
                    "drv_reset_get_code = pass code={month=1}\ndrv_mac_get_num = pass num=6\n"
                    "drv_board_get_bios_ver = pass text=\"W\"\n",
                    "code: 0x0 0x811101a4 2031 1 30\nnum: 0x811101a4 6\nbios: 0x0 57 00 2e 30 32 00 65 65 65 65\n");
}

TEST(AnswerTest, AnOperationThatNoLibraryHasIsAnsweredWithoutACrash) {
    const process_result run = run_tiny({"himem"}, {"KESTRO_PROBE_TRACE=" + new_scratch_dir() + "/trace"});
    EXPECT_EQ(run.out, "himem: 0xdead 0x1 0x2\n");
    EXPECT_EQ(run.err, "kestro_probe: no driver library has nb_get_himem_info and no rule answers it: "
                       "nb_get_himem_info()\n");
    EXPECT_EQ(run.status, 3);
}

TEST(AnswerTest, AScriptMakesALookupSucceed) {
    expect_answered({"late", "late_missing"},
                    "drv_subboard_get_type(subboard_id=4) = 0 type=9\ndrv_smb_get_rx_err_count = 1\n",
                    "late: 0x0 41\nlate: 0x0 9\n");
}

TEST(AnswerTest, ACrashIsASegmentationFaultAndInTheTrace) {
    const recording made = record({"num", "code", "num"}, "drv_reset_get_code = crash\n");
    EXPECT_EQ(made.run.out, "num: 0x0 4\n");
    EXPECT_EQ(made.run.status, 128 + 11);
    EXPECT_EQ(made.trace, "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n"
                          "drv_reset_get_code() = crash\n");
}

TEST(AnswerTest, AHangNeverReturnsAndIsInTheTrace) {
    const std::string file = new_scratch_dir() + "/trace";
    const process_result run =
        run_script({"num", "code", "num"}, "drv_reset_get_code = hang\n", {"KESTRO_PROBE_TRACE=" + file}, 5000);
    EXPECT_TRUE(run.timed_out);
    EXPECT_EQ(run.out, "num: 0x0 4\n");
    EXPECT_EQ(read_file(file), "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n"
                               "drv_reset_get_code() = hang\n");
}

TEST(AnswerTest, TheTraceShowsWhatTheRuleWrote) {
    const recording made =
        record({"num", "code"}, "drv_mac_get_num = 9 num=5 x3\ndrv_reset_get_code = 0 code={day=7}\n");
    EXPECT_EQ(made.trace, "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x9 num=5\n"
                          "drv_reset_get_code() = 0x0 code={day=7}\n");
}

TEST(AnswerTest, OneCallFails) {
    const std::string file = new_scratch_dir() + "/trace";
    const process_result run = run_script({"num", "code", "num"}, "drv_mac_get_num = 0 num=5\n",
                                          {"KESTRO_PROBE_FAIL_CALL=2=0x811101a4", "KESTRO_PROBE_TRACE=" + file});
    EXPECT_EQ(run.out, "num: 0x0 5\ncode: 0x811101a4 0x1 2 3 4\nnum: 0x0 5\n");
    EXPECT_EQ(run.status, 3);
    EXPECT_EQ(read_file(file), "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=5\n"
                               "drv_reset_get_code() = 0x811101a4\n"
                               "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=5\n");
}

TEST(AnswerTest, ASignalComesBeforeTheCall) {
    const std::string script = scratch_file("script", "drv_mac_get_num = 0 num=5\n");
    for (const auto &[asked, number] : {std::pair{"2", SIGINT}, {"2=TERM", SIGTERM}, {"2,3=HUP", SIGHUP}}) {
        const std::string file = new_scratch_dir() + "/trace";
        const process_result run =
            run_tiny({"num", "num", "num"}, {"KESTRO_PROBE_SCRIPT=" + script, "KESTRO_PROBE_TRACE=" + file,
                                             std::string("KESTRO_PROBE_SIGNAL_CALL=") + asked});
        EXPECT_EQ(run.status, 128 + number) << asked;
        EXPECT_EQ(read_file(file), "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=5\n") << asked;
    }
    EXPECT_EQ(run_tiny({"num"}, {"KESTRO_PROBE_SIGNAL_CALL=2"}).status, 3);
}

TEST(AnswerTest, ACallAndAllAfterItFail) {
    EXPECT_EQ(run_tiny({"num", "code", "num"}, {"KESTRO_PROBE_FAIL_CALL=2+"}).out,
              "num: 0x0 4\ncode: 0xdead 0x1 2 3 4\nnum: 0xdead 77\n");
}

TEST(AnswerTest, TheCallThatFailsIsCountedOverAllThreads) {
    const process_result run = run_tiny({"num", "thread_num", "num"}, {"KESTRO_PROBE_FAIL_CALL=2"});
    EXPECT_EQ(run.out, "num: 0x0 4\nnum: 0xdead 77\nnum: 0x0 4\n");
    EXPECT_EQ(run.status, 3);
}
