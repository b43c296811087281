// The dispatcher's timing lines and the tagged line, on a clock of the test's own.
#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>
#include <sys/time.h>
#include <vector>

#include "shell/console.h"
#include "shell/dispatch.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

// Times of day still to be given out; the real time when there are none.
std::vector<timeval> times;

} // namespace

// Stands in front of the C library's for the whole test program.
extern "C" int gettimeofday(struct timeval *now, void *) noexcept {
    if (!times.empty()) {
        *now = times.front();
        times.erase(times.begin());
        return 0;
    }
    timespec real{};
    clock_gettime(CLOCK_REALTIME, &real);
    *now = {real.tv_sec, static_cast<decltype(now->tv_usec)>(real.tv_nsec / 1000)};
    return 0;
}

namespace {

int do_nothing(int, char **) {
    return 0;
}

std::string timing_of(timeval start, timeval end) {
    times = {start, end};
    const command_table table = new_command_table();
    register_command("cmd", do_nothing, "cmd", table);
    char word[] = "cmd";
    char *args[] = {word, nullptr};
    const std::string printed = printed_by([&] { dispatch(1, args, table, timing_on); });
    free_command_table(table);
    return printed;
}

std::string lines(const std::string &seconds, const std::string &milliseconds) {
    return "cmd_exec used second:" + seconds + "\r\ncmd_exec used millisecond:" + milliseconds + "\r\n";
}

} // namespace

TEST(TimingTest, MicrosecondsBelowAMillisecondAreDropped) {
    EXPECT_EQ(timing_of({100, 0}, {101, 999500}), lines("1", "1999"));
    EXPECT_EQ(timing_of({100, 0}, {100, 999}), lines("0", "0"));
}

TEST(TimingTest, TheSecondsBoundaryShowsInTheSecondsOnly) {
    EXPECT_EQ(timing_of({100, 100000}, {102, 99500}), lines("2", "2000"));
    EXPECT_EQ(timing_of({100, 1000}, {102, 500}), lines("2", "2000"));
    EXPECT_EQ(timing_of({100, 1500}, {102, 0}), lines("2", "1999"));
}

TEST(TimingTest, AClockSetBackShowsNegativeTimes) {
    EXPECT_EQ(timing_of({100, 0}, {98, 0}), lines("-2", "-2000"));
}

class TaggedTimeTest : public testing::Test {
  protected:
    void SetUp() override {
        setenv("TZ", "BRD-1:30", 1);
        tzset();
    }
    void TearDown() override {
        setenv("TZ", "UTC", 1);
        tzset();
    }
};

// 1930367167 is 2031-03-04 05:06:07 where the sun stands highest at noon; the board's zone is an hour and a half ahead.
TEST_F(TaggedTimeTest, ShowsTheTimeOfDayOfTheBoard) {
    times = {{1930367167, 89999}};
    EXPECT_EQ(printed_by([] { EXPECT_EQ(print_tagged_line("t", "%s", "text"), 33); }),
              "<t>[2031-03-04 06:36:07.089]text\n");
    times = {{946677599, 999999}};
    EXPECT_EQ(printed_by([] { print_tagged_line("t", "x"); }), "<t>[1999-12-31 23:29:59.999]x\n");
}

TEST_F(TaggedTimeTest, ATextMayBeEmpty) {
    times = {{1930367167, 1000}};
    EXPECT_EQ(printed_by([] { EXPECT_EQ(print_tagged_line("", "%s", ""), 28); }), "<>[2031-03-04 06:36:07.001]\n");
}
