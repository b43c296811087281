// The local bus section: two bytes of each chip are read and written back.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string chip_id(int entry, const std::string &answer) {
    return element("lbc", "lbc_dev", entry, "chip_id", answer);
}

std::string of_chip(const std::string &operation, const std::string &chip) {
    return "drv_localbus_" + operation + "(inst_id=0xffffffff, chip_id=" + chip + ", address=0, ";
}

std::string reads(const std::string &chip, const std::string &answer) {
    return of_chip("read", chip) + "length=2) = " + answer + "\n";
}

std::string writes(const std::string &chip, const std::string &bytes, const std::string &code) {
    return of_chip("write", chip) + "buffer=" + bytes + ", length=2) = " + code + "\n";
}

void expect_chip(const std::string &script, const std::string &lines, int result) {
    expect_part("lbc", entry_count("lbc", "lbc_dev", 1) + chip_id(0, "0 value=0x1f") + script, lines, result);
}

} // namespace

TEST(LocalBusSectionTest, TheNodeIsRequired) {
    const std::string line = "Error: lbc xml get lbc_dev entry num fail.\r\n";
    expect_part("lbc", no_entry_count("lbc", "lbc_dev", "0x51"), line, -1);
    expect_part("lbc", entry_count("lbc", "lbc_dev", 0), line, -1);
}

TEST(LocalBusSectionTest, AnEntryWithoutChipFailsAndTheNextIsTested) {
    expect_part("lbc",
                entry_count("lbc", "lbc_dev", 2) + chip_id(0, "0x8111b5") + chip_id(1, "0 value=2") +
                    reads("2", "0 buffer=[c5 07]") + writes("2", "[c5 07]", "0"),
                "Error: lbc xml get chip_id fail. 0x8111b5  \r\n"
                "Success: lbc chip 0x2 lbc read write pass. address 0x0 value 0xc5 0x7 \r\n",
                -1);
}

TEST(LocalBusSectionTest, WhatIsReadIsWrittenBack) {
    expect_chip(reads("0x1f", "0 buffer=[ff 80]") + writes("0x1f", "[ff 80]", "0"),
                "Success: lbc chip 0x1f lbc read write pass. address 0x0 value 0xff 0x80 \r\n", 0);
    // A driver that writes no bytes.
    expect_chip(reads("0x1f", "0") + writes("0x1f", "[00 00]", "0"),
                "Success: lbc chip 0x1f lbc read write pass. address 0x0 value 0x0 0x0 \r\n", 0);
}

TEST(LocalBusSectionTest, AFailedReadFailsTheChip) {
    expect_chip(reads("0x1f", "0x811101a4"), "Info   : lbc chip 0x1f lbc read fail 0x811101a4.\r\n", -1);
}

TEST(LocalBusSectionTest, AFailedWriteFailsTheChip) {
    expect_chip(reads("0x1f", "0 buffer=[0a b0]") + writes("0x1f", "[0a b0]", "0x62"),
                "Info   : lbc chip 0x1f lbc write fail 0x62. address 0x0 value 0xa 0xb0 \r\n", -1);
}

TEST(LocalBusSectionTest, TheFirstChipFailsAndTheSecondIsGood) {
    expect_part("lbc",
                entry_count("lbc", "lbc_dev", 2) + chip_id(0, "0") + chip_id(1, "0 value=1") + reads("0", "0x63") +
                    reads("1", "0 buffer=[01 02]") + writes("1", "[01 02]", "0"),
                "Info   : lbc chip 0x0 lbc read fail 0x63.\r\n"
                "Success: lbc chip 0x1 lbc read write pass. address 0x0 value 0x1 0x2 \r\n",
                -1);
}

// The CPLD's identity and the low byte of its version; the identities of the FPGAs.
TEST(LocalBusSectionTest, TheDeliveredBoardsPass) {
    const std::string pass = " lbc read write pass. address 0x0 value ";
    const std::string of_mpu = "Success: lbc chip 0x0" + pass + "0xc5 0x7 \r\n" + "Success: lbc chip 0x1" + pass +
                               "0xf9 0xa1 \r\n" + "Success: lbc chip 0x2" + pass + "0xf9 0xa2 \r\nresult 0\n";
    EXPECT_EQ(run_part({}, "lbc").out, of_mpu);
    EXPECT_EQ(run_part({"--board", "mpu_slave"}, "lbc").out, of_mpu);
    EXPECT_EQ(run_part({"--board", "lpu"}, "lbc").out, "Success: lbc chip 0x0" + pass + "0xc5 0x12 \r\n" +
                                                           "Success: lbc chip 0x1" + pass + "0xf9 0xa1 \r\nresult 0\n");
}
