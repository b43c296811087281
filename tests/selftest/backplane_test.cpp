// The backplane in the board self-test.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

// What the four calls answer, in their order. The node's entries are counted, not read.
std::string answers(const std::string &type, const std::string &pcb_ver, const std::string &id,
                    const std::string &fmea) {
    return entry_count("bkp_mng", "bkp_attr", 1) + "drv_backplane_get_type() = " + type +
           "\ndrv_backplane_get_pcb_ver() = " + pcb_ver + "\ndrv_backplane_check_id() = " + id +
           "\ndrv_backplane_fmea_check_id(size=256) = " + fmea + "\n";
}

void expect_backplane(const std::string &script, const std::string &lines, int result) {
    expect_part("backplane", script, lines, result);
}

const std::string type = "0 type=0x1c6";
const std::string pcb_ver = "0 pcb_ver=19";
const std::string good_id = "0 check=0";
const std::string good_fmea = "0 check_result=0 dfx=\"fine\"";

} // namespace

TEST(BackplaneCheckTest, AGoodBackplane) {
    expect_backplane(answers(type, pcb_ver, good_id, good_fmea),
                     "Success: board backplane check pass. type 0x1c6 pcb_ver 19\r\n", 0);
    expect_backplane(answers("0", "0", "0", "0"), "Success: board backplane check pass. type 0x0 pcb_ver 0\r\n", 0);
}

TEST(BackplaneCheckTest, ABoardThatDoesNotReadIt) {
    expect_backplane(entry_count("bkp_mng", "bkp_attr", 0),
                     "Success: board not support back plane check. ret 0x0, entry_num = 0\r\n", 0);
    expect_backplane(no_entry_count("bkp_mng", "bkp_attr", "0x51"),
                     "Success: board not support back plane check. ret 0x51, entry_num = 0\r\n", 0);
}

TEST(BackplaneCheckTest, TypeOrVersionThatCannotBeRead) {
    expect_backplane(answers("0x61", pcb_ver, good_id, good_fmea),
                     "Error  : board get backplane type or pcb ver fail. ret 0x61\r\n", -1);
    expect_backplane(answers(type, "0x62", good_id, good_fmea),
                     "Error  : board get backplane type or pcb ver fail. ret 0x62\r\n", -1);
    expect_backplane(answers("0x61", "0x66", good_id, good_fmea),
                     "Error  : board get backplane type or pcb ver fail. ret 0x61\r\n", -1);
    expect_backplane(answers("0x811101a4", "0x811101a4", good_id, good_fmea),
                     "Error  : board get backplane type or pcb ver fail. ret 0x811101a4\r\n", -1);
}

TEST(BackplaneCheckTest, PinsThatDoNotFit) {
    expect_backplane(answers(type, pcb_ver, "0 check=0x1d", good_fmea),
                     "Error  : board backplane id check fail. ret 0x0 sts 0x1d \r\n", -1);
    expect_backplane(answers(type, pcb_ver, "0x63", good_fmea),
                     "Error  : board backplane id check fail. ret 0x63 sts 0x0 \r\n", -1);
}

TEST(BackplaneCheckTest, WhatTheFaultAnalysisFinds) {
    expect_backplane(answers(type, pcb_ver, good_id, "0 check_result=0x1e dfx=\"pin 3\""),
                     "Error  : board backplane id fmea check fail. ret 0x0 sts 0x1e pin 3 \r\n", -1);
    expect_backplane(answers(type, pcb_ver, good_id, "0x64"),
                     "Error  : board backplane id fmea check fail. ret 0x64 sts 0x0  \r\n", -1);
}

TEST(BackplaneCheckTest, AMessageThatFillsItsArea) {
    const std::string message(256, 'F');
    expect_backplane(answers(type, pcb_ver, good_id, "0 check_result=0xffffffff dfx=\"" + message + "\""),
                     "Error  : board backplane id fmea check fail. ret 0x0 sts 0xffffffff " + message + " \r\n", -1);
}

TEST(BackplaneCheckTest, EveryFailureHasItsLine) {
    expect_backplane(answers(type, "0x62", "0x63 check=2", "0x64 check_result=3 dfx=\"bus\""),
                     "Error  : board get backplane type or pcb ver fail. ret 0x62\r\n"
                     "Error  : board backplane id check fail. ret 0x63 sts 0x2 \r\n"
                     "Error  : board backplane id fmea check fail. ret 0x64 sts 0x3 bus \r\n",
                     -1);
}
