// Result print, banners, the tagged line and the bounded formatters.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <regex>
#include <string>

#include "bounds/bounds.h"
#include "shell/console.h"
#include "shell/result_print.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

constexpr const char *end_line = "\r\n----kestro_test std result print end----\n";

} // namespace

TEST(ResultPrintTest, NumbersItsItems) {
    EXPECT_EQ(printed_by([] { print_result("%x %s", 0xabcU, "text"); }),
              std::string("para[0]=0xabc para[1]=text ") + end_line);
    EXPECT_EQ(printed_by([] { print_result("%d%c", -5, 'Z'); }), std::string("para[0]=-5 para[1]=Z ") + end_line);
}

TEST(ResultPrintTest, SkipsEveryOtherByte) {
    EXPECT_EQ(printed_by([] { print_result("%x ", 1U); }), std::string("para[0]=0x1 ") + end_line);
    EXPECT_EQ(printed_by([] { print_result(" ok: %x", 2U); }), std::string("para[0]=0x2 ") + end_line);
}

TEST(ResultPrintTest, AnEmptyFormatPrintsTheEndLineOnly) {
    const char *empty = "";
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security" // the empty format is the case under test
    EXPECT_EQ(printed_by([&] { print_result(empty); }), end_line);
#pragma GCC diagnostic pop
}

TEST(BannerTest, ThreeStyles) {
    EXPECT_EQ(printed_by([] { print_begin_banner(banner_style::wide, "test_reset_init"); }),
              "\n\n*********   test_reset_init test begin:  ********\n\n\n");
    EXPECT_EQ(printed_by([] { print_end_banner(banner_style::wide, "test_reset_init"); }),
              "\n\n*********   test_reset_init test   end:  ********\n\n\n");
    EXPECT_EQ(printed_by([] { print_begin_banner(banner_style::narrow, "t"); }),
              "\n*********   t test begin:  ********\n");
    EXPECT_EQ(printed_by([] { print_end_banner(banner_style::narrow, "t"); }),
              "\n*********   t test   end:  ********\n");
    EXPECT_EQ(printed_by([] { print_begin_banner(banner_style::bare, "t"); }), "*********   t test begin:  ********\n");
    EXPECT_EQ(printed_by([] { print_end_banner(banner_style::bare, "t"); }), "*********   t test end:  ********\n");
}

TEST(TaggedLineTest, JoinsTagTimeAndText) {
    const std::string printed =
        printed_by([] { EXPECT_GT(print_tagged_line("info ", "at handler, g_intr_test_int_cnt=%u", 7U), 0); });
    EXPECT_TRUE(std::regex_match(
        printed, std::regex("<info >\\[\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\]at handler, "
                            "g_intr_test_int_cnt=7\n")))
        << printed;
}

TEST(TaggedLineTest, ReadsPercentSignsASecondTime) {
    const std::string printed = printed_by([] { print_tagged_line("a%%b", "100%%%%"); });
    EXPECT_EQ(printed.substr(0, 5), "<a%b>");
    EXPECT_EQ(printed.substr(printed.size() - 5), "100%\n");
}

TEST(TaggedLineTest, FiveHundredAndTwelveBytesHoldTheWholeLineOrNothing) {
    // "<t>" and the time stamp take 3 + 25 bytes, the line end one and the terminator one.
    const std::string fits(512 - 3 - 25 - 2, 'x');
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(print_tagged_line("t", "%s", fits.c_str()), 511); }).size(), 511U);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(print_tagged_line("t", "%sx", fits.c_str()), -1); }), "");
    const std::string long_tag(600, 'y');
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(print_tagged_line(long_tag.c_str(), "x"), -1); }), "");
}

TEST(TextAreaTest, HasATerminatorBehindItsLength) {
    char *area = new_text_area(3);
    ASSERT_NE(area, nullptr);
    memcpy(area, "abc", 3);
    EXPECT_STREQ(area, "abc");
    free(area);
}

TEST(TextAreaTest, EmptyAreaIsAnEmptyText) {
    char *area = new_text_area(0);
    ASSERT_NE(area, nullptr);
    EXPECT_STREQ(area, "");
    free(area);
}

TEST(TextAreaTest, NoneThatTheBoardCouldNotHave) {
    EXPECT_EQ(new_text_area(UINT32_MAX), nullptr);
    EXPECT_EQ(new_text_area(INT32_MAX), nullptr);
}

TEST(BoundsTest, FormatsWhatFits) {
    char area[8];
    EXPECT_EQ(sprintf_s(area, sizeof(area), "%s", "1234567"), 7);
    EXPECT_STREQ(area, "1234567");
}

TEST(BoundsTest, EmptiesTheDestinationWhenItDoesNotFit) {
    char area[8] = "before";
    EXPECT_EQ(sprintf_s(area, sizeof(area), "%s", "12345678"), -1);
    EXPECT_STREQ(area, "");
    EXPECT_EQ(snprintf_s(area, sizeof(area), 20, "%s", "12345678"), -1);
    EXPECT_STREQ(area, "");
}

TEST(BoundsTest, CutsAtTheCount) {
    char area[8];
    EXPECT_EQ(snprintf_s(area, sizeof(area), 4, "%s", "123456"), -1);
    EXPECT_STREQ(area, "1234");
    EXPECT_EQ(snprintf_s(area, sizeof(area), 4, "%s", "1234"), 4);
    EXPECT_STREQ(area, "1234");
    EXPECT_EQ(snprintf_s(area, sizeof(area), 0, "%s", "1"), -1);
    EXPECT_STREQ(area, "");
}

TEST(BoundsTest, ACountOfTheSizeOrMoreIsNoCut) {
    char area[8] = "before";
    EXPECT_EQ(snprintf_s(area, sizeof(area), 8, "%s", "1234567"), 7);
    EXPECT_STREQ(area, "1234567");
    EXPECT_EQ(snprintf_s(area, sizeof(area), 8, "%s", "12345678"), -1);
    EXPECT_STREQ(area, "");
    EXPECT_EQ(snprintf_s(area, sizeof(area), 7, "%s", "12345678"), -1);
    EXPECT_STREQ(area, "1234567");
    EXPECT_EQ(snprintf_s(area, sizeof(area), 9, "%s", "12345678"), -1);
    EXPECT_STREQ(area, "");
}

TEST(BoundsTest, TheCountedFormattersRefuseMissingParameters) {
    char area[4] = "abc";
    const char *no_format = nullptr;
    EXPECT_EQ(snprintf_s(nullptr, 4, 2, "x"), -1);
    EXPECT_EQ(snprintf_s(nullptr, 4, 4, "x"), -1);
    EXPECT_EQ(snprintf_s(area, 0, 0, "x"), -1);
    EXPECT_EQ(snprintf_s(area, 0, 2, "x"), -1);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security" // a missing format is the case under test
    EXPECT_EQ(snprintf_s(area, 4, 2, no_format), -1);
    EXPECT_EQ(snprintf_s(area, 4, 4, no_format), -1);
#pragma GCC diagnostic pop
    EXPECT_STREQ(area, "abc");
}

TEST(BoundsTest, RefusesMissingParameters) {
    char area[4] = "abc";
    const char *no_format = nullptr;
    EXPECT_EQ(sprintf_s(nullptr, 4, "x"), -1);
    EXPECT_EQ(sprintf_s(area, 0, "x"), -1);
    EXPECT_STREQ(area, "abc");
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security" // a missing format is the case under test
    EXPECT_EQ(sprintf_s(area, 4, no_format), -1);
#pragma GCC diagnostic pop
    EXPECT_STREQ(area, "abc");
}

TEST(BoundsTest, FormatsAreTheCLibrarys) {
    char area[32];
    EXPECT_GT(sprintf_s(area, sizeof(area), "%.2f %#x %e", 1.5, 16U, 1.0), 0);
    EXPECT_STREQ(area, "1.50 0x10 1.000000e+00");
}

TEST(BoundsTest, TakesAreasBeyondTheLibrarysLimit) {
    const size_t size = 0x200000;
    char *area = static_cast<char *>(malloc(size));
    EXPECT_EQ(sprintf_s(area, size, "%s", "report"), 6);
    EXPECT_STREQ(area, "report");
    free(area);
}

TEST(BoundsTest, LibraryFunctionsReportErrors) {
    char area[4];
    EXPECT_EQ(strcpy_s(area, sizeof(area), "abc"), 0);
    const volatile size_t too_small = 2;
    EXPECT_NE(strcpy_s(area, too_small, "abc"), 0);
}
