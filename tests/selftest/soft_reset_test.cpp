// The soft-reset section: the reset type, and what start-up software has left in its variables.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

const std::string described =
    "xml_get_element_value_u32(inst_id=0xffffffff, module=\"softreset_mng\", node=\"softreset_attr\", "
    "entry=\"softreset_support\", element=\"value\") = ";

const std::string legend =
    "Info: 0:soft-reset-now 1:voltage dip 3:fpag check fail 4:bsp-cpu-chip-reset 5: hard_reset_init_flag is not 1 7: "
    "board_reset_mode is null 9:package_set_flag is 1 10:start_from_cfg is 1 \r\n";

std::string type_rule(const std::string &answer) {
    return "drv_softreset_get_reset_type(inst_id=0xffffffff) = " + answer + "\n";
}

std::string mode_rule(const std::string &answer) {
    return "drv_memenv_num_get(name=\"kestro_softreset_mode\", base=10) = " + answer + "\n";
}

std::string board_reset_rule(const std::string &answer) {
    return "drv_env_get(name=\"board_reset_mode\", size=256) = " + answer + "\n";
}

std::string hard_reset_rule(const std::string &answer) {
    return "drv_env_get(name=\"hard_reset_init_flag\", size=4) = " + answer + "\n";
}

// A board whose variables have these values.
struct start {
    std::string mode;
    std::string board_reset;
    std::string hard_reset;
};

std::string script_of(const start &values) {
    return described + "0 value=1\n" + type_rule("0 reset_type=0") + mode_rule("0 value=" + values.mode) +
           board_reset_rule("0 value=\"" + values.board_reset + "\"") +
           hard_reset_rule("0 value=\"" + values.hard_reset + "\"");
}

std::string lines_of(const start &values) {
    return "Info: memenv: kestro_softreset_mode is " + values.mode + " (0: soft 1:not-soft))\r\n" +
           "Info: env: board_reset_mode is " + values.board_reset + " \r\n" + legend +
           "Info: env: hard_reset_init_flag is " + values.hard_reset + " (0: soft 1: hard) \r\n";
}

std::string mismatch(const start &values) {
    return "Error: env match check fail. kestro_soft_reset " + values.mode + " evnstr_hardrest " + values.hard_reset +
           " evnstr_boardrest " + values.board_reset + " \r\n";
}

const start hard = {"1", "4", "1"};
const std::string hard_line = "Success: hard reset now \r\n";

void expect_verdict(const start &values, const std::string &verdict, int result) {
    expect_part("soft_reset", script_of(values), lines_of(values) + verdict, result);
}

} // namespace

TEST(SoftResetSectionTest, ABoardWithoutSoftResetsPasses) {
    expect_part("soft_reset", described + "0x51\n", "Info: ptn soft reset is not support.\r\n", 0);
}

// The element says that there are soft resets by being there.
TEST(SoftResetSectionTest, TheValueOfTheElementDoesNotMatter) {
    expect_part("soft_reset",
                described + "0 value=0\n" + type_rule("0 reset_type=2") + mode_rule("0 value=1") +
                    board_reset_rule("0 value=\"4\"") + hard_reset_rule("0 value=\"1\""),
                lines_of(hard) + hard_line, 0);
}

TEST(SoftResetSectionTest, ASoftStart) {
    for (const start &values : {start{"0", "", "1"}, {"0", "1", "1"}, {"0", "10", "2"}, {"0", "", ""}}) {
        expect_verdict(values, "Success: soft reset now \r\n", 0);
    }
}

TEST(SoftResetSectionTest, AHardStart) {
    for (const start &values : {hard, start{"1", "", "1"}, {"1", "10", "1"}}) {
        expect_verdict(values, hard_line, 0);
    }
}

TEST(SoftResetSectionTest, VariablesThatContradictEachOther) {
    for (const start &values : {start{"0", "0", "1"},
                                {"0", "1", "0"},
                                {"0", "0", "0"},
                                {"1", "0", "1"},
                                {"1", "4", "0"},
                                {"1", "4", ""},
                                {"1", "4", "11"},
                                {"2", "4", "1"},
                                {"4294967295", "4", "1"}}) {
        expect_verdict(values, mismatch(values), -1);
    }
}

TEST(SoftResetSectionTest, AResetTypeThatCannotBeReadIsReportedAndTheVariablesAreShown) {
    expect_part("soft_reset",
                described + "0 value=1\n" + type_rule("0x811101a4") + mode_rule("0 value=1") +
                    board_reset_rule("0 value=\"4\"") + hard_reset_rule("0 value=\"1\""),
                "Error: soft reset get reset-type fail ret 0x811101a4\r\n" + lines_of(hard) + hard_line, -1);
}

TEST(SoftResetSectionTest, ResetTypesGoUpToTwo) {
    const std::string variables =
        mode_rule("0 value=1") + board_reset_rule("0 value=\"4\"") + hard_reset_rule("0 value=\"1\"");
    expect_part("soft_reset", described + "0 value=1\n" + type_rule("0 reset_type=2") + variables,
                lines_of(hard) + hard_line, 0);
    expect_part("soft_reset", described + "0 value=1\n" + type_rule("0 reset_type=3") + variables,
                "Error: soft reset get reset-type fail reset_type 0x3\r\n" + lines_of(hard) + hard_line, -1);
    expect_part("soft_reset", described + "0 value=1\n" + type_rule("0 reset_type=0xffffffff") + variables,
                "Error: soft reset get reset-type fail reset_type 0xffffffff\r\n" + lines_of(hard) + hard_line, -1);
}

// The mode keeps its preset, which is neither soft nor hard.
TEST(SoftResetSectionTest, AModeThatCannotBeRead) {
    const start values = {"4294967295", "", "1"};
    expect_part("soft_reset",
                described + "0 value=1\n" + type_rule("0 reset_type=0") + mode_rule("0x25") +
                    board_reset_rule("0 value=\"\"") + hard_reset_rule("0 value=\"1\""),
                "Error: get env kestro_softreset_mode fail ret 0x25\r\n" + lines_of(values) + mismatch(values), -1);
}

TEST(SoftResetSectionTest, TextsThatCannotBeReadAreEmpty) {
    const start values = {"0", "", ""};
    expect_part("soft_reset",
                described + "0 value=1\n" + type_rule("0 reset_type=0") + mode_rule("0 value=0") +
                    board_reset_rule("0x26") + hard_reset_rule("0x27"),
                lines_of(values) + "Success: soft reset now \r\n", 0);
}

TEST(SoftResetSectionTest, DriversThatWriteNothing) {
    const start values = {"4294967295", "", ""};
    expect_part("soft_reset",
                described + "0\n" + type_rule("0") + mode_rule("0") + board_reset_rule("0") + hard_reset_rule("0"),
                lines_of(values) + mismatch(values), -1);
}

TEST(SoftResetSectionTest, TextsThatFillTheirAreaAreShownToItsEnd) {
    const start values = {"1", std::string(255, 'r') + "R", "123F"};
    expect_verdict(values, mismatch(values), -1);
}

TEST(SoftResetOnABoardTest, BoardsThatCameUpFromPower) {
    const start values = {"1", "1", "1"};
    for (const std::string seat : {"mpu_master", "mpu_slave"}) {
        EXPECT_EQ(run_part({"--board", seat}, "soft_reset").out, lines_of(values) + hard_line + "result 0\n") << seat;
    }
    EXPECT_EQ(run_part({"--board", "lpu"}, "soft_reset").out, "Info: ptn soft reset is not support.\r\nresult 0\n");
}

TEST(SoftResetOnABoardTest, TheOrderOfTheCalls) {
    const std::string trace = new_scratch_dir() + "/trace";
    run_part({"--trace", trace}, "soft_reset");
    EXPECT_EQ(read_file(trace),
              "xml_get_element_value_u32(inst_id=0xffffffff, module=\"softreset_mng\", node=\"softreset_attr\", "
              "entry=\"softreset_support\", element=\"value\") = 0x0 value=1\n"
              "drv_softreset_get_reset_type(inst_id=0xffffffff) = 0x0 reset_type=2\n"
              "drv_memenv_num_get(name=\"kestro_softreset_mode\", base=10) = 0x0 value=1\n"
              "drv_env_get(name=\"board_reset_mode\", size=256) = 0x0 value=\"1\"\n"
              "drv_env_get(name=\"hard_reset_init_flag\", size=4) = 0x0 value=\"1\"\n");
}
