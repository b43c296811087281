// The barcode section: every described bar code is saved, overwritten, read back and restored.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

constexpr const char *pass_line = "Success: barcode read and write match test pass.\r\n";
constexpr const char *test_text = "Hello test now...";

std::string described(int entries) {
    return entry_count("barcode", "barcode_attr", entries);
}

std::string entry(int index, const std::string &answer) {
    return element("barcode", "barcode_attr", index, "barcode_id", answer);
}

std::string read_rule(int id, const std::string &text) {
    return "drv_barcode_read(inst_id=0xffffffff, barcode_id=" + std::to_string(id) + ", len=128) = 0 area=\"" + text +
           "\" x1\n";
}

std::string write_rule(int id, const std::string &text) {
    return "drv_barcode_write(inst_id=0xffffffff, barcode_id=" + std::to_string(id) + ", area=\"" + text +
           "\", len=128) = 0 x1\n";
}

std::string good_barcode(int id, const std::string &saved) {
    return read_rule(id, saved) + write_rule(id, test_text) + read_rule(id, test_text) + write_rule(id, saved);
}

void expect_pass(const std::string &script, const std::string &lines) {
    expect_part("barcode", script, lines, 0);
}

void expect_fault(const std::string &script, const std::string &lines) {
    expect_part("barcode", script, lines, -1);
}

} // namespace

TEST(BarcodeSectionTest, TestsEveryDescribedBarCode) {
    expect_pass(described(2) + entry(0, "0 value=0") + entry(1, "0 value=3") + good_barcode(0, "CODE0") +
                    good_barcode(3, "CODE3"),
                std::string(pass_line) + pass_line);
}

TEST(BarcodeSectionTest, ANodeWithoutEntriesFails) {
    expect_fault(described(0), "Error: barcode_ xml get entry num fail.\r\n");
}

TEST(BarcodeSectionTest, AnEntryWithoutItsElementIsSkipped) {
    expect_pass(described(2) + entry(0, "0x51") + entry(1, "0 value=3") + good_barcode(3, "CODE3"), pass_line);
}

TEST(BarcodeSectionTest, ABarCodeThatTheBoardLacksPasses) {
    expect_pass(described(2) + entry(0, "0 value=0") + entry(1, "0 value=1") +
                    "drv_barcode_read(barcode_id=0) = 0x811101a4\n" + good_barcode(1, "CODE1"),
                std::string("Info   : barcode is not support.\r\n") + pass_line);
}

TEST(BarcodeSectionTest, AFailedReadIsReportedAndTheNextBarCodeTested) {
    expect_fault(described(2) + entry(0, "0 value=0") + entry(1, "0 value=1") +
                     "drv_barcode_read(barcode_id=0) = 0x21\n" + good_barcode(1, "CODE1"),
                 std::string("drv_barcode_read fail, inst_id=0xffffffff, barcode_id=0x0, ret=0x21.\r\n") + pass_line);
}

TEST(BarcodeSectionTest, AFailedWrite) {
    expect_fault(described(1) + entry(0, "0 value=2") + read_rule(2, "CODE2") + "drv_barcode_write = 0x22\n",
                 "drv_barcode_write fail, ret = 0x22, barcode_id = 0x2.\r\n");
}

TEST(BarcodeSectionTest, AFailedReadBack) {
    expect_fault(described(1) + entry(0, "0 value=2") + read_rule(2, "CODE2") + write_rule(2, test_text) +
                     "drv_barcode_read = 0x23\n",
                 "drv_barcode_read after write fail, inst_id=0xffffffff, barcode_id=0x2, ret=0x23.\r\n");
}

TEST(BarcodeSectionTest, AFailedRestore) {
    expect_fault(described(1) + entry(0, "0 value=2") + read_rule(2, "CODE2") + write_rule(2, test_text) +
                     read_rule(2, test_text) + "drv_barcode_write = 0x24\n",
                 "drv_barcode_write after test fail, ret = 0x24, barcode_id = 0x2.\r\n");
}

TEST(BarcodeSectionTest, AMismatchShowsTheSavedTextFirst) {
    expect_fault(described(1) + entry(0, "0 value=2") + read_rule(2, "CODE2") + write_rule(2, test_text) +
                     read_rule(2, "Hello test") + write_rule(2, "CODE2"),
                 "Error: barcode read and write match test fail.\r\n"
                 "original info : \r\nCODE2\r\n"
                 "write info : \r\nHello test now...\r\n"
                 "read info : \r\nHello test\r\n");
}
