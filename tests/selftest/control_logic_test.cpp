// Programmable control logic and capabilities in the board self-test.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string counts(const std::string &chips, const std::string &fpgas) {
    return "drv_board_get_cpld_num(inst_id=0xffffffff) = " + chips +
           "\ndrv_board_get_ctrl_fpga_num(inst_id=0xffffffff) = " + fpgas + "\n";
}

std::string version(int chip, const std::string &answer) {
    return "drv_board_get_cpld_ver(inst_id=0xffffffff, cpld_id=" + std::to_string(chip) + ") = " + answer + " x1\n";
}

void expect_logic(const std::string &script, const std::string &lines, int result) {
    expect_part("control_logic", script, lines, result);
}

std::string flex_card(const std::string &answer) {
    return "drv_board_get_capability(inst_id=0xffffffff, type=0) = " + answer + "\n";
}

std::string msc(const std::string &answer) {
    return "drv_board_get_capability(inst_id=0xffffffff, type=3) = " + answer + "\n";
}

std::string card_slots(const std::string &answer) {
    return "drv_slot_get_list(type=7) = " + answer + "\n";
}

std::string switch_en(const std::string &answer) {
    return "drv_msc_get_switch_en(inst_id=0xffffffff, sw_mode=0) = " + answer + "\n";
}

void expect_capability(const std::string &script, const std::string &lines, int result) {
    expect_part("capability", script, lines, result);
}

const std::string no_flex_card_line = "Info   : board is not support flex card\r\n";
const std::string no_msc_line = "Info   : board is not support msc.\r\n";

} // namespace

TEST(ControlLogicCheckTest, VersionsOfAllChips) {
    expect_logic(counts("0 num=3", "0 num=1") + version(0, "0 ver=263") + version(1, "0 ver=0xffffffff") +
                     version(2, "0"),
                 "Info   : logic chip 0, version 263 \r\n"
                 "Info   : logic chip 1, version 4294967295 \r\n"
                 "Info   : logic chip 2, version 0 \r\n"
                 "Success: board ctrl logic check pass. ctrl_logic_num 3 ctrl_fpga_num 1\r\n",
                 0);
}

TEST(ControlLogicCheckTest, NoControlFpga) {
    expect_logic(counts("0 num=1", "0") + version(0, "0 ver=5"),
                 "Info   : logic chip 0, version 5 \r\n"
                 "Success: board ctrl logic check pass. ctrl_logic_num 1 ctrl_fpga_num 0\r\n",
                 0);
}

TEST(ControlLogicCheckTest, AsManyControlFpgasAsChips) {
    expect_logic(counts("0 num=1", "0 num=1") + version(0, "0 ver=5"),
                 "Info   : logic chip 0, version 5 \r\n"
                 "Success: board ctrl logic check pass. ctrl_logic_num 1 ctrl_fpga_num 1\r\n",
                 0);
}

TEST(ControlLogicCheckTest, AVersionThatCannotBeReadFailsNothing) {
    expect_logic(counts("0 num=2", "0 num=0") + version(0, "0x61 ver=7") + version(1, "0 ver=8"),
                 "Error  : board get logic version fail. ret 0x61 chip_id 0x0 \r\n"
                 "Info   : logic chip 1, version 8 \r\n"
                 "Success: board ctrl logic check pass. ctrl_logic_num 2 ctrl_fpga_num 0\r\n",
                 0);
}

TEST(ControlLogicCheckTest, ChipIdsAreShownInHexadecimal) {
    std::string script = counts("0 num=12", "0 num=12");
    std::string lines;
    for (int chip = 0; chip < 11; ++chip) {
        script += version(chip, "0 ver=1");
        lines += "Info   : logic chip " + std::to_string(chip) + ", version 1 \r\n";
    }
    expect_logic(script + version(11, "0x811101a4"),
                 lines + "Error  : board get logic version fail. ret 0x811101a4 chip_id 0xb \r\n"
                         "Success: board ctrl logic check pass. ctrl_logic_num 12 ctrl_fpga_num 12\r\n",
                 0);
}

TEST(ControlLogicCheckTest, CountsThatCannotBeReadOrBe) {
    expect_logic(counts("0x62 num=3", "0 num=1"),
                 "Error  : board ctrl logic check fail. ret 0x62 ctrl_logic_num 0x3 ctrl_fpga_num 0x1 \r\n", -1);
    expect_logic(counts("0 num=0x1f", "0x63"),
                 "Error  : board ctrl logic check fail. ret 0x63 ctrl_logic_num 0x1f ctrl_fpga_num 0x0 \r\n", -1);
    expect_logic(counts("0x811101a4", "0x811101a4"),
                 "Error  : board ctrl logic check fail. ret 0x811101a4 ctrl_logic_num 0x0 ctrl_fpga_num 0x0 \r\n", -1);
    expect_logic(counts("0", "0"),
                 "Error  : board ctrl logic check fail. ret 0x0 ctrl_logic_num 0x0 ctrl_fpga_num 0x0 \r\n", -1);
    expect_logic(counts("0 num=2", "0 num=3"),
                 "Error  : board ctrl logic check fail. ret 0x0 ctrl_logic_num 0x2 ctrl_fpga_num 0x3 \r\n", -1);
}

TEST(ControlLogicCheckTest, OfTwoFailuresTheFirstIsShown) {
    expect_logic(counts("0x62", "0x65"),
                 "Error  : board ctrl logic check fail. ret 0x62 ctrl_logic_num 0x0 ctrl_fpga_num 0x0 \r\n", -1);
}

TEST(CapabilityCheckTest, ABoardThatCanDoBothHasNoLine) {
    expect_capability(flex_card("0 capability=1") + card_slots("0 list={num=2 slot_id=[03 04]}") +
                          msc("0 capability=1") + switch_en("0 enable=0"),
                      "", 0);
}

TEST(CapabilityCheckTest, ABoardThatCanDoNeither) {
    expect_capability(flex_card("0 capability=0") + msc("0 capability=0"), no_flex_card_line + no_msc_line, 0);
    expect_capability(flex_card("0 capability=2") + msc("0 capability=0xffffffff"), no_flex_card_line + no_msc_line, 0);
    expect_capability(flex_card("0") + msc("0"), no_flex_card_line + no_msc_line, 0);
}

TEST(CapabilityCheckTest, CapabilitiesThatCannotBeRead) {
    expect_capability(flex_card("0x61 capability=1") + msc("0 capability=0"),
                      "Error  : board capability flex card check fail. ret 0x61 \r\n" + no_msc_line, -1);
    expect_capability(flex_card("0 capability=0") + msc("0x62 capability=1"),
                      no_flex_card_line + "Error  : board capability msc check fail. ret 0x62 \r\n", -1);
    expect_capability(flex_card("0x811101a4") + msc("0x811101a4"),
                      "Error  : board capability flex card check fail. ret 0x811101a4 \r\n"
                      "Error  : board capability msc check fail. ret 0x811101a4 \r\n",
                      -1);
}

TEST(CapabilityCheckTest, FlexCardsTakeSlots) {
    const std::string rest = msc("0 capability=0");
    expect_capability(flex_card("0 capability=1") + card_slots("0 list={num=0}") + rest,
                      "Error  : board support flex card but get card slot list fail. ret 0x0 \r\n" + no_msc_line, -1);
    expect_capability(flex_card("0 capability=1") + card_slots("0") + rest,
                      "Error  : board support flex card but get card slot list fail. ret 0x0 \r\n" + no_msc_line, -1);
    expect_capability(flex_card("0 capability=1") + card_slots("0x63 list={num=2 slot_id=[03 04]}") + rest,
                      "Error  : board support flex card but get card slot list fail. ret 0x63 \r\n" + no_msc_line, -1);
}

TEST(CapabilityCheckTest, MasterAndSlaveTakeAController) {
    expect_capability(flex_card("0 capability=0") + msc("0 capability=1") + switch_en("0x64"),
                      no_flex_card_line + "Error  : board support msc but get switch en fail. ret 0x64 \r\n", -1);
    expect_capability(flex_card("0 capability=0") + msc("0 capability=1") + switch_en("0x811101a4 enable=1"),
                      no_flex_card_line + "Error  : board support msc but get switch en fail. ret 0x811101a4 \r\n", -1);
}

TEST(CapabilityCheckTest, AFailureIsNotMadeGoodByTheOtherCapability) {
    expect_capability(flex_card("0x61") + msc("0 capability=1") + switch_en("0 enable=1"),
                      "Error  : board capability flex card check fail. ret 0x61 \r\n", -1);
}
