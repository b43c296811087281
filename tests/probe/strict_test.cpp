// What a script did not foresee, and what it foresaw in vain, makes the exit status 99.
#include "tests/probe/run_support.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace kestro_tests;

namespace {

// place is what stands for the script's file in the expected reports.
void expect_reported(const std::vector<std::string> &words, const std::string &script, const std::string &out,
                     const std::string &reports, std::vector<std::string> environment = {"KESTRO_PROBE_STRICT=1"}) {
    const std::string file = scratch_file("rules", script);
    environment.push_back("KESTRO_PROBE_SCRIPT=" + file);
    const process_result run = run_tiny(words, environment);
    std::string expected = reports;
    for (size_t at = expected.find("RULES"); at != std::string::npos; at = expected.find("RULES", at + file.size())) {
        expected.replace(at, 5, file);
    }
    EXPECT_EQ(run.out, out);
    EXPECT_EQ(run.err, expected);
    EXPECT_EQ(run.status, reports.empty() ? 3 : 99);
}

} // namespace

TEST(StrictTest, AScriptThatFitsTheRunIsSilent) {
    expect_reported({"num", "num", "code"}, "drv_mac_get_num(type_id=1) = 0 num=1 x2\ndrv_reset_get_code = pass\n",
                    "num: 0x0 1\nnum: 0x0 1\ncode: 0x0 0x811101a4 2031 12 30\n", "");
}

TEST(StrictTest, ACallWithoutARuleFailsAndIsReported) {
    expect_reported({"num", "num9"}, "drv_mac_get_num(type_id=1) = 0\n", "num: 0x0 77\nnum: 0xdead 77\n",
                    "RULES: no rule answers call 2: drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0)\n");
}

TEST(StrictTest, ARuleThatIsNotUsedIsReported) {
    expect_reported({"num"}, "drv_mac_get_num = 0 num=1\n\ndrv_reset_get_code = 0   # in vain\n", "num: 0x0 1\n",
                    "RULES:3: this rule was never used: drv_reset_get_code = 0\n");
}

TEST(StrictTest, ARuleThatIsUsedTooSeldomIsReported) {
    expect_reported({"num", "num"}, "drv_mac_get_num = 0 num=1 x3\n", "num: 0x0 1\nnum: 0x0 1\n",
                    "RULES:1: this rule was used 2 of 3 times: drv_mac_get_num = 0 num=1 x3\n");
}

TEST(StrictTest, ACallBeyondTheCountIsReported) {
    expect_reported({"num", "num"}, "drv_mac_get_num = 0 num=1 x1\n", "num: 0x0 1\nnum: 0xdead 77\n",
                    "RULES: no rule answers call 2: drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0)\n");
}

TEST(StrictTest, WithoutAScriptEveryCallIsReported) {
    const process_result run = run_tiny({"code"}, {"KESTRO_PROBE_STRICT=1"});
    EXPECT_EQ(run.err, "kestro_probe: no rule answers call 1: drv_reset_get_code()\n");
    EXPECT_EQ(run.status, 99);
}

TEST(StrictTest, WithoutStrictUnusedRulesAreNoMatter) {
    expect_reported({"num"}, "drv_reset_get_code = 0\n", "num: 0x0 4\n", "", {});
}

TEST(StrictTest, WhatTheProgramPrintedIsNotLost) {
    expect_reported({"partial"}, "drv_reset_get_code = 0\n", "no line end",
                    "RULES:1: this rule was never used: drv_reset_get_code = 0\n");
}

TEST(StrictTest, AForkedChildDoesNotReport) {
    expect_reported({"in_child", "code"}, "drv_reset_get_code = 0\n",
                    "num: 0xdead 77\nin_child: 0\ncode: 0x0 0x1 2 3 4\n", "");
}

TEST(StrictTest, OutputsLongerThanTheirAreaAreReportedEvenWithoutStrict) {
    expect_reported({"bios", "addrs"},
                    "drv_board_get_bios_ver = 0 text=\"123456789\"\n"
                    "drv_mac_get_addr_num = 0 buffer=[00 01 02 03 04 05 06 07 08 09 0a 0b 0c]\n",
                    "bios: 0x0 31 32 33 34 35 36 37 38 65 65\n"
                    "addrs: 0x0 00 01 02 03 04 05 06 07 08 09 0a 0b ee ee\n",
                    "RULES:1: text is longer than its area of 8 bytes; it was cut: "
                    "drv_board_get_bios_ver = 0 text=\"123456789\"\n"
                    "RULES:2: buffer is longer than its area of 12 bytes; it was cut: "
                    "drv_mac_get_addr_num = 0 buffer=[00 01 02 03 04 05 06 07 08 09 0a 0b 0c]\n",
                    {});
}

TEST(StrictTest, AnOutputThatTheProgramDoesNotWantIsReported) {
    expect_reported({"no_area"}, "drv_board_get_type = 0 type=1\n", "no_area: 0x0\n",
                    "RULES:1: the call gives no area for type: drv_board_get_type = 0 type=1\n", {});
}

TEST(StrictTest, FaultsInTheScriptEndTheRunBeforeItStarts) {
    const std::string file = scratch_file("rules", "drv_mac_get_nun = 0\ndrv_mac_get_num = 0 nmu=1\n");
    const process_result run = run_tiny({"num"}, {"KESTRO_PROBE_SCRIPT=" + file});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, file +
                           ":1:1: no operation is called 'drv_mac_get_nun'; nearest: 'drv_mac_get_num' or "
                           "'drv_mac_set_num'\n" +
                           file + ":2:21: drv_mac_get_num has no output 'nmu'; nearest: 'num'\n");
    EXPECT_EQ(run.status, 2);
}

TEST(StrictTest, AScriptThatIsNotThereEndsTheRunBeforeItStarts) {
    const std::string file = new_scratch_dir() + "/rules";
    const process_result run = run_tiny({"num"}, {"KESTRO_PROBE_SCRIPT=" + file});
    EXPECT_EQ(run.err, file + ": No such file or directory; name a file that can be read\n");
    EXPECT_EQ(run.status, 2);
}

TEST(StrictTest, AScriptWithoutAnEndEndsTheRunBeforeItStarts) {
    const auto said = [](const std::string &file) {
        const process_result run = run_tiny({"num"}, {"KESTRO_PROBE_SCRIPT=" + file});
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.status, 2);
        return run.err;
    };
    EXPECT_EQ(said("/dev/zero"), "/dev/zero: this is a device; name a file that can be read\n");
    EXPECT_EQ(said("/dev"), "/dev: Is a directory; name a file that can be read\n");
    const std::string huge = scratch_file("huge", "");
    std::filesystem::resize_file(huge, (size_t{64} << 20) + 1);
    EXPECT_EQ(said(huge), huge + ": this is longer than 64 MiB; name a file that can be read\n");
}

TEST(StrictTest, AScriptMayComeOutOfAPipe) {
    const process_result run =
        run_process({"/bin/bash", "-c",
                     "exec env KESTRO_PROBE_SCRIPT=/dev/fd/7 LD_PRELOAD=" + build_dir() +
                         "/probe/libkestro_probe.so $KESTRO_EMULATOR " + build_dir() +
                         "/tests/tiny/tiny_program num 7< <(sleep 0.2; echo 'drv_mac_get_num = 0 num=9')"});
    EXPECT_EQ(run.out, "num: 0x0 9\n");
    EXPECT_EQ(run.status, 3);
}

TEST(StrictTest, ARuleMayBeOfOneThread) {
    expect_reported({"num", "thread_num"}, "@2 drv_mac_get_num = 0 num=2\ndrv_mac_get_num = 0 num=1\n",
                    "num: 0x0 1\nnum: 0x0 2\n", "");
}

TEST(StrictTest, ReportsThatCannotBeWrittenStillCount) {
    const process_result run = run_process({"/bin/sh", "-c",
                                            "exec env KESTRO_PROBE_STRICT=1 LD_PRELOAD=" + build_dir() +
                                                "/probe/libkestro_probe.so $KESTRO_EMULATOR " + build_dir() +
                                                "/tests/tiny/tiny_program num 2>/dev/full"});
    EXPECT_EQ(run.status, 99);
}

TEST(StrictTest, SettingsThatMakeNoSenseEndTheRunBeforeItStarts) {
    const process_result number = run_tiny({"num"}, {"KESTRO_PROBE_FAIL_CALL=no"});
    EXPECT_EQ(number.err, "kestro_probe: KESTRO_PROBE_FAIL_CALL is 'no'; set it to the number of a call, as in 3, "
                          "3=0x811101a4, or 3+ for that and all after it\n");
    EXPECT_EQ(number.status, 2);
    const process_result signal = run_tiny({"num"}, {"KESTRO_PROBE_SIGNAL_CALL=1=KILL"});
    EXPECT_EQ(signal.err, "kestro_probe: KESTRO_PROBE_SIGNAL_CALL is '1=KILL'; set it to numbers of calls, as in 3 or "
                          "3,3, and =TERM or =HUP behind them for another signal than INT\n");
    EXPECT_EQ(signal.status, 2);
    const process_result strict = run_tiny({"num"}, {"KESTRO_PROBE_STRICT=yes"});
    EXPECT_EQ(strict.err, "kestro_probe: KESTRO_PROBE_STRICT is 'yes'; set it to 1 or leave it out\n");
    EXPECT_EQ(strict.status, 2);
    const process_result both = run_tiny({"num"}, {"KESTRO_PROBE_REPLAY=a", "KESTRO_PROBE_SCRIPT=b"});
    EXPECT_EQ(both.err, "kestro_probe: KESTRO_PROBE_REPLAY answers every call by itself; set it without "
                        "KESTRO_PROBE_SCRIPT and KESTRO_PROBE_STRICT\n");
    EXPECT_EQ(both.status, 2);
}
