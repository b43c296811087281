// Calls made by hand: what is passed, what is printed, and what is said of mistakes.
#include "tests/probe/run_support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

using namespace kestro_tests;

namespace {

// The tiny driver libraries stand in for the board's.
process_result call(std::vector<std::string> words) {
    words.insert(words.begin(), build_dir() + "/kestro_call");
    process_options options;
    options.environment = {"LD_LIBRARY_PATH=" + build_dir() + "/tests/tiny/board"};
    return run_process(words, options);
}

void expect_printed(const std::string &line, const std::string &printed, int status = 0) {
    const process_result run = call({line});
    EXPECT_EQ(run.out, printed + "\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, status) << line;
}

void expect_said(const std::string &line, const std::string &said) {
    const process_result run = call({line});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "kestro_call: " + said + "\n");
    EXPECT_EQ(run.status, 2);
}

} // namespace

TEST(KestroCallTest, TheTraceLineOfTheCallIsPrinted) {
    expect_printed("drv_mac_get_num(inst_id=5, type_id=1, reserved=2)",
                   "drv_mac_get_num(inst_id=0x5, type_id=1, reserved=2) = 0x0 num=4");
}

TEST(KestroCallTest, WhatIsNotNamedIsZeroAndTheInstanceTheBoardItself) {
    expect_printed("drv_mac_get_num", "drv_mac_get_num(inst_id=0xffffffff, type_id=0, reserved=0) = 0x0 num=3");
    expect_printed("drv_mac_get_num()", "drv_mac_get_num(inst_id=0xffffffff, type_id=0, reserved=0) = 0x0 num=3");
}

TEST(KestroCallTest, ACallThatFailsShowsOnlyWhatChangedAndTheStatusTells) {
    expect_printed("drv_mac_get_num(type_id=9)",
                   "drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0) = 0x811101a4", 1);
}

TEST(KestroCallTest, SizesFitTheirAreas) {
    expect_printed("drv_board_get_bios_ver",
                   "drv_board_get_bios_ver(inst_id=0xffffffff, size=256) = 0x0 text=\"V1.02\"");
    expect_printed("drv_board_get_bios_ver(size=4)",
                   "drv_board_get_bios_ver(inst_id=0xffffffff, size=4) = 0x0 text=\"V1.\"");
    expect_printed("drv_led_patch_func1(buffer=\"blink\", size=20)",
                   "drv_led_patch_func1(inst_id=0xffffffff, buffer=\"blink\", size=20) = 0x0 buffer=\"done\"");
    expect_printed("drv_mac_get_addr_num(type_id=1, num=1, size=6)",
                   "drv_mac_get_addr_num(inst_id=0xffffffff, type_id=1, num=1, size=6) = 0x0 "
                   "buffer=[40 41 42 43 44 45]");
    expect_printed("drv_mac_set_addr(addr=[20 02 00 00 00 ff])",
                   "drv_mac_set_addr(inst_id=0xffffffff, type_id=0, addr=[20 02 00 00 00 ff]) = 0x20", 1);
}

TEST(KestroCallTest, RecordsAndTextsArePassed) {
    expect_printed("drv_reset_self_board_without_reboot(code={year=0 month=3})",
                   "drv_reset_self_board_without_reboot(code={code=0 year=0 month=3 day=0}) = 0x0");
    const process_result log = call({"drv_log_record(level=1, text=\"100% of it\")"});
    EXPECT_NE(log.out.find("driver log: 100% of it"), std::string::npos) << log.out;
}

TEST(KestroCallTest, NullIsPassedAndWhatStoodInAnAreaIsGiven) {
    expect_printed("drv_board_in_out_unreg(handler=null)", "drv_board_in_out_unreg(handler=null) = 0x1", 1);
    expect_printed("drv_mac_get_num(type_id=9, num=7)",
                   "drv_mac_get_num(inst_id=0xffffffff, type_id=9, reserved=0) = 0x811101a4", 1);
}

TEST(KestroCallTest, ADriverThatWritesTooFarIsCaught) {
    expect_printed("drv_mac_get_addr(type_id=1)",
                   "drv_mac_get_addr(inst_id=0xffffffff, type_id=1) = 0x0 addr=[01 02 03 04 05 06]\n"
                   "# the driver wrote beyond the end of addr",
                   1);
}

TEST(KestroCallTest, CallbacksSayThatTheyWereCalled) {
    expect_printed("drv_board_in_out_reg(handler=callback, user_data=callback, name=\"x\", flag=1)",
                   "drv_board_in_out_reg(handler=callback, user_data=callback, name=\"x\", flag=1) ...\n"
                   "# event: drv_board_in_out_handler(slot_id=5, in=1)\n"
                   "drv_board_in_out_reg(handler=callback, user_data=callback, name=\"x\", flag=1) = 0x0");
}

TEST(KestroCallTest, ACallbackThatIsToFillATextGivesAnEmptyOne) {
    const process_result run =
        call({"drv_diag_reg_cmd_list(records=[{command=\"a b\" handler=callback key=\"k\" help=\"h\"} {key=\"l\"}])",
              "drv_diag_cmd_process(command=\"a b\")"});
    EXPECT_EQ(run.out, "drv_diag_reg_cmd_list(records=[{command=\"a b\" handler=callback key=\"k\" help=\"h\"} "
                       "{command=null handler=null key=\"l\" help=null}], count=2) = 0x0\n"
                       "drv_diag_cmd_process(command=\"a b\", size=256) ...\n"
                       "# event: drv_diag_handler(size=256, first=1, second=2, third=0xffffffff)\n"
                       "# event: drv_diag_handler(size=0, first=0, second=0, third=0)\n"
                       "drv_diag_cmd_process(command=\"a b\", size=256) = 0x7800 output=\"\"\n");
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, 1);
}

TEST(KestroCallTest, ACrashIsTheLastThingThatIsPrinted) {
    const process_result run = call({"drv_mac_get_num(type_id=1)", "drv_voltage_init(inst_id=7)"});
    EXPECT_EQ(run.out, "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n"
                       "drv_voltage_init(inst_id=0x7)");
    EXPECT_EQ(run.status, 128 + 11);
}

TEST(KestroCallTest, LinesComeFromStandardInputAsWell) {
    const process_result run = run_process(
        {"/bin/sh", "-c",
         "printf '# one\\n\\ndrv_mac_get_num(type_id=1) # four\\nwait 0.01\\ndrv_mac_get_nun()\\n' | LD_LIBRARY_PATH=" +
             build_dir() + "/tests/tiny/board $KESTRO_EMULATOR " + build_dir() + "/kestro_call --wait 0.01"});
    EXPECT_EQ(run.out, "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=4\n");
    EXPECT_EQ(run.err, "kestro_call: standard input:5:1: no operation is called 'drv_mac_get_nun'; nearest: "
                       "'drv_mac_get_num' or 'drv_mac_set_num'\n");
    EXPECT_EQ(run.status, 2);
}

TEST(KestroCallTest, MistakesAreSaidBeforeAnythingIsCalled) {
    const process_result run = call({"drv_mac_get_num()", "drv_mac_get_num(typ_id=1)"});
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "kestro_call: call 2:17: drv_mac_get_num has no parameter 'typ_id'; nearest: 'type_id'\n");
    EXPECT_EQ(run.status, 2);
    expect_said("drv_mac_get_num(type_id=1) = 0", "call 1:28: '=' behind the call; write op(name=value, name=value)");
    expect_said("wait soon", "call 1:6: 'soon' is no number; write it as 3.25, -1e-3, inf or nan");
    expect_said("--wat", "there is no option '--wat'; kestro_call --help lists them");
    expect_said("drv_slot_get_num()", "libdrv_basic.so has no drv_slot_get_num; this board lacks the operation");
}

TEST(KestroCallTest, ALibraryThatIsNotThereIsSaid) {
    const process_result run = call({"nb_gpio_read(pin=1)"});
    EXPECT_NE(run.err.find("libnb_bsp.so"), std::string::npos) << run.err;
    EXPECT_NE(run.err.find("must stand in LD_LIBRARY_PATH"), std::string::npos) << run.err;
    EXPECT_EQ(run.status, 2);
}

TEST(KestroCallTest, ListShowsInputsAndOutputs) {
    const process_result run = call({"--list", "mac_get_num"});
    EXPECT_EQ(run.out, "drv_mac_get_num(inst_id, type_id, reserved) = num\n");
    EXPECT_EQ(call({"--list", "nothing"}).status, 2);
    EXPECT_EQ(call({"--help"}).status, 0);
}

TEST(KestroCallTest, WhatCannotBePrintedIsSaid) {
    const auto in_vain = [](const std::string &words) {
        return run_process({"/bin/sh", "-c",
                            "LD_LIBRARY_PATH=" + build_dir() + "/tests/tiny/board $KESTRO_EMULATOR " + build_dir() +
                                "/kestro_call " + words + " > /dev/full"});
    };
    const process_result run = in_vain("'drv_mac_get_num(type_id=1)'");
    EXPECT_NE(run.err.find("standard output: No space left on device"), std::string::npos) << run.err;
    EXPECT_EQ(run.status, 2);
    for (const std::string words : {"--help", "--list"}) {
        EXPECT_EQ(in_vain(words).err,
                  "kestro_call: standard output: cannot be written; it takes what --help and --list show\n");
        EXPECT_EQ(in_vain(words).status, 2);
    }
}

TEST(KestroCallTest, OnADeskTheLauncherStartsIt) {
    const std::vector<std::string> options{"--state", new_scratch_dir() + "/state"};
    EXPECT_EQ(calls_of(options, {"drv_mac_set_num(type_id=1, num=3)", "drv_mac_get_num(type_id=1)"}),
              "drv_mac_set_num(inst_id=0xffffffff, type_id=1, num=3, reserved=0) = 0x0\n"
              "drv_mac_get_num(inst_id=0xffffffff, type_id=1, reserved=0) = 0x0 num=3\n");
    EXPECT_EQ(answers_of(options, {"drv_mac_get_num(type_id=1)", "drv_mac_get_num(type_id=1, num=null)"}),
              "0x0 num=3\n0x81110101\n");
}

TEST(KestroCallTest, AProgramThatIsNotThereIsSaid) {
    const process_result run = run_process({build_dir() + "/kestro_sim", "--run", "kestro_cal", "--", "x"});
    EXPECT_EQ(run.err, "kestro_sim: " + build_dir() +
                           "/kestro_cal: there is no such program; --run takes a program beside kestro_sim, such as "
                           "kestro_call, or a path\n");
    EXPECT_EQ(run.status, 2);
}
