// Text and file utilities of the self-test.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "selftest/files.h"
#include "selftest/text.h"
#include "tests/selftest/fake_drivers.h"
#include "tests/support/capture.h"
#include "tests/support/process.h"

using namespace kestro_tests;

namespace {

std::string trimmed(std::string text) {
    return str_trim(text.data());
}

int32_t first_number(const char *text) {
    int32_t number = 55;
    parse_first_number(text, &number);
    return number;
}

} // namespace

TEST(TrimTest, CutsBlanksOnly) {
    EXPECT_EQ(trimmed("  word  "), "word");
    EXPECT_EQ(trimmed("   "), "");
    EXPECT_EQ(trimmed(""), "");
    EXPECT_EQ(trimmed("w  "), "w");
    EXPECT_EQ(trimmed("two words "), "two words");
    EXPECT_EQ(trimmed(" \tword\t "), "\tword\t");
    EXPECT_EQ(trimmed(" line\r\n"), "line\r\n");
}

TEST(TrimTest, NullAndTheDebugFillPointerAreNull) {
    EXPECT_EQ(str_trim(nullptr), nullptr);
    EXPECT_EQ(str_trim(reinterpret_cast<char *>(static_cast<uintptr_t>(0xcccccccc))), nullptr);
}

TEST(CaseFindTest, FindsTheFirstMatchWhateverItsCase) {
    const char *text = "One two TWO";
    EXPECT_EQ(str_case_find(text, "TWO"), text + 4);
    EXPECT_EQ(str_case_find(text, "one"), text);
    EXPECT_EQ(str_case_find(text, "three"), nullptr);
    EXPECT_EQ(str_case_find(text, "two two"), text + 4);
    EXPECT_EQ(str_case_find(text, ""), nullptr);
    EXPECT_EQ(str_case_find("", "x"), nullptr);
    EXPECT_EQ(str_case_find("ab", "abc"), nullptr);
}

TEST(StatusTextTest, AFailedQueryIsUnknownWhateverTheFlag) {
    char out[16] = "before";
    EXPECT_STREQ(status_to_text(1, 0, out, sizeof(out), true), "Unknown");
    EXPECT_STREQ(status_to_text(1, 0, out, sizeof(out), false), "Unknown");
    EXPECT_STREQ(out, "before");
}

TEST(StatusTextTest, StatusOrHexadecimal) {
    char out[16];
    EXPECT_STREQ(status_to_text(0, 5, out, sizeof(out), true), "abnormal");
    EXPECT_STREQ(status_to_text(0, 0, out, sizeof(out), true), "normal");
    EXPECT_EQ(status_to_text(0, 0x1f, out, sizeof(out), false), out);
    EXPECT_STREQ(out, "0x1f");
}

TEST(StatusTextTest, AnAreaTooSmallGivesAnEmptyText) {
    char out[3];
    EXPECT_STREQ(status_to_text(0, 0x1f, out, sizeof(out), false), "");
}

TEST(FirstNumberTest, TakesTheFirstRunOfDigits) {
    EXPECT_EQ(first_number("abc12d3"), 12);
    EXPECT_EQ(first_number("7"), 7);
    EXPECT_EQ(first_number("no digit"), -1);
    EXPECT_EQ(first_number(""), -1);
    EXPECT_EQ(first_number("-5"), 5);
    EXPECT_EQ(first_number("99999999999999999999999999999999999999"), 2147483647);
}

TEST(GrepFileTest, ReportsEveryLineWithTheNeedle) {
    const std::string path = scratch_file("text", "alpha\nbeta\nalphabet\nlast alpha");
    uint32_t found = 9;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(grep_file(path.c_str(), "alpha", &found, console_sink), 0); }),
              "alpha\nalphabet\nlast alpha");
    EXPECT_EQ(found, 1U);
}

TEST(GrepFileTest, TellsWhenNoLineHasTheNeedle) {
    const std::string path = scratch_file("text", "alpha\n");
    uint32_t found = 9;
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(grep_file(path.c_str(), "gamma", &found, console_sink), 0); }), "");
    EXPECT_EQ(found, 0U);
}

TEST(GrepFileTest, ReadsLongLinesInPieces) {
    const std::string piece(255, 'a');
    const std::string path = scratch_file("text", piece + "needle\n");
    uint32_t found = 0;
    EXPECT_EQ(printed_by([&] { grep_file(path.c_str(), "needle", &found, console_sink); }), "needle\n");
}

TEST(GrepFileTest, LeavesTheFlagAloneWhenTheFileCannotBeOpened) {
    uint32_t found = 9;
    EXPECT_EQ(grep_file("/nonexistent/file", "x", &found, console_sink), -1);
    EXPECT_EQ(grep_file(std::string(4096, 'p').c_str(), "x", &found, console_sink), -1);
    EXPECT_EQ(grep_file(nullptr, "x", &found, console_sink), -1);
    EXPECT_EQ(grep_file("/dev/null", nullptr, &found, console_sink), -1);
    EXPECT_EQ(found, 9U);
    EXPECT_EQ(grep_file("/dev/null", "x", nullptr, console_sink), -1);
}

TEST(AppendLineTest, AddsALineWithItsEnd) {
    const std::string path = scratch_file("log", "first\r\n");
    EXPECT_EQ(append_line_to_file(path.c_str(), "second"), 0);
    EXPECT_EQ(read_file(path), "first\r\nsecond\r\n");
}

TEST(AppendLineTest, LogsAFileThatCannotBeOpened) {
    drivers() = {};
    EXPECT_EQ(printed_by([] { EXPECT_EQ(append_line_to_file("/nonexistent/log", "x"), -1); }),
              "\r\n[base][error]:open file /nonexistent/log failed:No such file or directory");
    EXPECT_EQ(drivers().log_lines.size(), 1U);
}

class ProcInterruptsTest : public testing::Test {
  protected:
    static uint32_t look(const std::string &table, uint32_t index, uint32_t expected) {
        drivers().proc_interrupts = scratch_file("interrupts", table);
        uint32_t found = 9;
        EXPECT_EQ(irq_in_proc_interrupts(index, expected, &found), 0);
        return found;
    }
};

TEST_F(ProcInterruptsTest, TheNumberStandsSixCharactersBehindTheKey) {
    EXPECT_EQ(look("  CPU0\n 40: 3 gic intr5 77 x\n", 5, 77), 1U);
    EXPECT_EQ(look(" 40: 3 gic intr5 77 x\n", 5, 78), 0U);
    EXPECT_EQ(look(" 40: 3 gic intr12 77\n", 12, 77), 1U);
    EXPECT_EQ(look(" 40: 3 gic intr12345\n", 12, 345), 1U);
    EXPECT_EQ(look(" 40: 3 gic intr5123\n", 5, 23), 1U);
}

TEST_F(ProcInterruptsTest, GoesOnToTheNextLineWithTheKey) {
    EXPECT_EQ(look("intr3 10\nintr3 11\n", 3, 11), 1U);
    EXPECT_EQ(look("intr3 10\n", 4, 10), 0U);
    EXPECT_EQ(look("intr3", 3, 0), 0U);
    EXPECT_EQ(look("", 3, 10), 0U);
}

TEST_F(ProcInterruptsTest, FailsWithoutTheKernelsTable) {
    drivers().proc_interrupts = "/nonexistent/interrupts";
    uint32_t found = 9;
    EXPECT_EQ(irq_in_proc_interrupts(1, 2, &found), -1);
    EXPECT_EQ(found, 9U);
}
