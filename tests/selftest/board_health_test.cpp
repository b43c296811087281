// Solder joints, corrosion and low voltage in the board self-test.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

const std::string no_weld_line = "Success: board not support weld sts check.\r\n";
const std::string weld_line = "Success: board weld sts check pass. status 0\r\n";
const std::string no_corrosion_line = "Success: board not support corrosion sts check.\r\n";
const std::string corrosion_line = "Success: board corrosion sts check pass.\r\n";

// A map of chips: an answer per entry.
std::string weld_map(const std::vector<std::string> &answers) {
    std::string script = entry_count("board_mng", "weld_map", static_cast<int>(answers.size()));
    for (size_t i = 0; i < answers.size(); ++i) {
        script += element("board_mng", "weld_map", static_cast<int>(i), "chip_id", answers[i]);
    }
    return script;
}

std::string sensors(const std::vector<std::string> &answers) {
    std::string script = entry_count("board_mng", "board_epld", static_cast<int>(answers.size()));
    for (size_t i = 0; i < answers.size(); ++i) {
        script += element("board_mng", "board_epld", static_cast<int>(i), "corrosion_id", answers[i]);
    }
    return script;
}

std::string status_rule(int chip, const std::string &answer) {
    return "drv_board_get_four_corner_status(inst_id=0xffffffff, chip_id=" + std::to_string(chip) + ") = " + answer +
           " x1\n";
}

std::string check_rule(int chip, const std::string &answer) {
    return "drv_board_check_four_corner_status(inst_id=0xffffffff, chip_id=" + std::to_string(chip) +
           ", size=256) = " + answer + " x1\n";
}

std::string good_chip(int chip) {
    return status_rule(chip, "0 status=0") + check_rule(chip, "0 status=0 dfx=\"good\"");
}

std::string corrosion_rule(const std::string &answer) {
    return "drv_board_check_corrosion_status(inst_id=0xffffffff, size=256) = " + answer + "\n";
}

std::string low_voltage_rule(const std::string &answer) {
    return "drv_board_check_low_voltage(inst_id=0xffffffff, size=256) = " + answer + "\n";
}

// As long as the area, so that the probe has no room for a terminator.
const std::string full_message(256, 'F');

} // namespace

TEST(WeldCheckTest, TheJointsOfEveryDescribedChip) {
    expect_part("weld", weld_map({"0 value=2", "0 value=0"}) + good_chip(2) + good_chip(0), weld_line, 0);
}

TEST(WeldCheckTest, DriversThatWriteNothingFoundNothing) {
    expect_part("weld", weld_map({"0 value=254"}) + status_rule(254, "0") + check_rule(254, "0"), weld_line, 0);
}

TEST(WeldCheckTest, ABoardWithoutAMap) {
    expect_part("weld", weld_map({}), no_weld_line, 0);
    expect_part("weld", no_entry_count("board_mng", "weld_map", "0x51 count=3"), no_weld_line, 0);
}

TEST(WeldCheckTest, AnEntryWithoutAChipMeansThatTheBoardHasNoMonitors) {
    expect_part("weld", weld_map({"0 value=255"}), no_weld_line, 0);
    expect_part("weld", weld_map({"0x51"}), no_weld_line, 0);
    expect_part("weld", weld_map({"0"}), no_weld_line, 0);
}

TEST(WeldCheckTest, SoItDoesBehindChipsThatWereGood) {
    const std::string two_good = good_chip(0) + good_chip(1);
    expect_part("weld", weld_map({"0 value=0", "0 value=1", "0 value=255"}) + two_good, no_weld_line, 0);
    // An element that cannot be read does not leave the chip of the entry before standing.
    expect_part("weld", weld_map({"0 value=0", "0 value=1", "0x51"}) + two_good, no_weld_line, 0);
}

TEST(WeldCheckTest, NothingIsReadBehindAnEntryWithoutAChip) {
    expect_part("weld",
                entry_count("board_mng", "weld_map", 3) + element("board_mng", "weld_map", 0, "chip_id", "0x51"),
                no_weld_line, 0);
}

TEST(WeldCheckTest, AJointThatIsOpenStopsTheCheck) {
    // The good third chip is not reached.
    const std::string map = entry_count("board_mng", "weld_map", 3) +
                            element("board_mng", "weld_map", 0, "chip_id", "0 value=0") +
                            element("board_mng", "weld_map", 1, "chip_id", "0 value=1");
    expect_part("weld", map + good_chip(0) + status_rule(1, "0 status=0x1c"),
                "Error  : board get weld sts fail. ret 0x0 sts 0x1c\r\n", -1);
    expect_part("weld", map + good_chip(0) + status_rule(1, "0x71"),
                "Error  : board get weld sts fail. ret 0x71 sts 0x0\r\n", -1);
    expect_part("weld", map + good_chip(0) + status_rule(1, "0x811101a4 status=3"),
                "Error  : board get weld sts fail. ret 0x811101a4 sts 0x3\r\n", -1);
}

TEST(WeldCheckTest, AFirstChipThatFailsIsNotMadeGoodByTheSecond) {
    const std::string map =
        entry_count("board_mng", "weld_map", 2) + element("board_mng", "weld_map", 0, "chip_id", "0 value=0");
    expect_part("weld", map + status_rule(0, "0 status=1"), "Error  : board get weld sts fail. ret 0x0 sts 0x1\r\n",
                -1);
    expect_part("weld", map + status_rule(0, "0 status=0") + check_rule(0, "0 status=0x2a dfx=\"corner 3\""),
                "Error  : board check weld sts fail. ret 0x0 result 0x2a\r\n", -1);
}

TEST(WeldCheckTest, WhatTheDriverFindsStopsTheCheckToo) {
    expect_part("weld", weld_map({"0 value=4"}) + status_rule(4, "0") + check_rule(4, "0x72"),
                "Error  : board check weld sts fail. ret 0x72 result 0x0\r\n", -1);
    expect_part("weld",
                weld_map({"0 value=4"}) + status_rule(4, "0") +
                    check_rule(4, "0 status=9 dfx=\"" + full_message + "\""),
                "Error  : board check weld sts fail. ret 0x0 result 0x9\r\n", -1);
}

TEST(CorrosionCheckTest, AllSensorsInOneCall) {
    expect_part("corrosion", sensors({"0 value=0", "0 value=1", "0 value=254"}) + corrosion_rule("0 status=0"),
                corrosion_line, 0);
    expect_part("corrosion", sensors({"0 value=7"}) + corrosion_rule("0"), corrosion_line, 0);
}

TEST(CorrosionCheckTest, ABoardWithoutControlChips) {
    expect_part("corrosion", sensors({}), no_corrosion_line, 0);
    expect_part("corrosion", no_entry_count("board_mng", "board_epld", "0x51"), no_corrosion_line, 0);
}

TEST(CorrosionCheckTest, AChipWithoutASensor) {
    for (const std::string none : {"0x51", "0 value=0xffffffff", "0 value=255", "0"}) {
        expect_part("corrosion", sensors({none}), no_corrosion_line, 0);
        expect_part("corrosion", sensors({"0 value=0", none}), no_corrosion_line, 0);
    }
    expect_part("corrosion",
                entry_count("board_mng", "board_epld", 2) +
                    element("board_mng", "board_epld", 0, "corrosion_id", "0x51"),
                no_corrosion_line, 0);
}

TEST(CorrosionCheckTest, Corrosion) {
    expect_part("corrosion", sensors({"0 value=0"}) + corrosion_rule("0 status=0x1f dfx=\"" + full_message + "\""),
                "Error  : board check corrosion sts fail. ret 0x0 result 0x1f\r\n", -1);
    expect_part("corrosion", sensors({"0 value=0"}) + corrosion_rule("0x811101a4"),
                "Error  : board check corrosion sts fail. ret 0x811101a4 result 0x0\r\n", -1);
}

TEST(LowVoltageCheckTest, ASupplyThatHeld) {
    expect_part("low_voltage", low_voltage_rule("0 status=0 dfx=\"12.0 V\""),
                "Success: board low voltage check pass.\r\n", 0);
    expect_part("low_voltage", low_voltage_rule("0"), "Success: board low voltage check pass.\r\n", 0);
}

TEST(LowVoltageCheckTest, ASupplyThatFell) {
    expect_part("low_voltage", low_voltage_rule("0 status=0x1b dfx=\"12 V fell\""),
                "Error  : board low voltage check fail. ret 0x0 sts 0x1b 12 V fell \r\n", -1);
    expect_part("low_voltage", low_voltage_rule("0x73"),
                "Error  : board low voltage check fail. ret 0x73 sts 0x0  \r\n", -1);
    expect_part("low_voltage", low_voltage_rule("0x811101a4"),
                "Error  : board low voltage check fail. ret 0x811101a4 sts 0x0  \r\n", -1);
}

TEST(LowVoltageCheckTest, AMessageThatFillsItsArea) {
    expect_part("low_voltage", low_voltage_rule("0 status=0xffffffff dfx=\"" + full_message + "\""),
                "Error  : board low voltage check fail. ret 0x0 sts 0xffffffff " + full_message + " \r\n", -1);
}
