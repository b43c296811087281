// The report sink and the levelled log.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "selftest/report.h"
#include "selftest/selftest_log.h"
#include "tests/selftest/fake_drivers.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

struct report_buffer {
    std::vector<char> area = std::vector<char>(report_capacity);
    uint32_t fill = 0;
    report_sink sink() {
        return {area.data(), &fill};
    }
    std::string text() const {
        return area.data();
    }
};

class LogTest : public testing::Test {
  protected:
    void SetUp() override {
        drivers() = {};
    }
};

} // namespace

TEST(ReportTest, PrintsWhenEitherMemberIsMissing) {
    char buffer[16] = {};
    uint32_t fill = 0;
    EXPECT_EQ(printed_by([] { report_append(console_sink, "Success: %u\r\n", 1U); }), "Success: 1\r\n");
    EXPECT_EQ(printed_by([&] { report_append({buffer, nullptr}, "a"); }), "a");
    EXPECT_EQ(printed_by([&] { report_append({nullptr, &fill}, "b"); }), "b");
    EXPECT_EQ(fill, 0U);
    EXPECT_STREQ(buffer, "");
}

TEST(ReportTest, CutsConsoleLinesAtThousandAndTwentyThreeCharacters) {
    const std::string fits(1023, 'x');
    EXPECT_EQ(printed_by([&] { report_append(console_sink, "%s", fits.c_str()); }), fits);
    EXPECT_EQ(printed_by([&] { report_append(console_sink, "%sy", fits.c_str()); }), fits);
}

TEST(ReportTest, AppendsAtTheFillLength) {
    report_buffer report;
    EXPECT_EQ(printed_by([&] {
                  report_append(report.sink(), "%s", "one");
                  report_append(report.sink(), " two%u", 2U);
              }),
              "");
    EXPECT_EQ(report.text(), "one two2");
    EXPECT_EQ(report.fill, 8U);
}

TEST(ReportTest, ATextThatDoesNotFitLowersTheFillLengthByTheErrorValue) {
    report_buffer report;
    report.fill = report_capacity - 4;
    report_append(report.sink(), "%s", "abcd");
    EXPECT_EQ(report.fill, report_capacity - 5);
    EXPECT_EQ(std::string(report.area.data() + report_capacity - 4), "abc");
    report.fill = report_capacity - 4;
    report_append(report.sink(), "%s", "abc");
    EXPECT_EQ(report.fill, report_capacity - 1);
}

TEST(ReportTest, WritesNothingBeyondTheCapacity) {
    report_buffer report;
    report.fill = report_capacity;
    report_append(report.sink(), "x");
    EXPECT_EQ(report.fill, report_capacity - 1);
    report.fill = 0xFFFFFFFF;
    report_append(report.sink(), "x");
    EXPECT_EQ(report.fill, 0xFFFFFFFEU);
}

TEST(ReportTest, ANullFormatDoesNothing) {
    const char *no_format = nullptr;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security" // a missing format is the case under test
    EXPECT_EQ(printed_by([&] { report_append(console_sink, no_format); }), "");
#pragma GCC diagnostic pop
}

TEST_F(LogTest, LevelsUpToInfoReachTheConsoleWithTheirNames) {
    EXPECT_EQ(printed_by([] { selftest_log("base", 0, 0, "m%u", 1U); }), "\r\n[base][emergency]:m1");
    EXPECT_EQ(printed_by([] { selftest_log("base", 0, 1, "m"); }), "\r\n[base][error]:m");
    EXPECT_EQ(printed_by([] { selftest_log("RTC_TEST", 32, 2, "m"); }), "\r\n[RTC_TEST][info]:m");
    EXPECT_EQ(drivers().log_lines,
              (std::vector<std::string>{"0/0/0: [base]:m1", "0/1/0: [base]:m", "32/2/0: [RTC_TEST]:m"}));
}

TEST_F(LogTest, DebugReachesTheDriverLogOnly) {
    EXPECT_EQ(printed_by([] { selftest_log("base", 7, 3, "quiet"); }), "");
    EXPECT_EQ(printed_by([] { selftest_log("base", 7, 4, "quieter"); }), "");
    EXPECT_EQ(drivers().log_lines, (std::vector<std::string>{"7/3/0: [base]:quiet", "7/4/0: [base]:quieter"}));
}

TEST_F(LogTest, MessagesAreCutAtTwoHundredAndFiftyFiveCharacters) {
    const std::string message(300, 'm');
    const std::string cut(255, 'm');
    EXPECT_EQ(printed_by([&] { selftest_log("t", 0, 1, "%s", message.c_str()); }), "\r\n[t][error]:" + cut);
    EXPECT_EQ(drivers().log_lines, (std::vector<std::string>{"0/1/0: [t]:" + cut}));
}
