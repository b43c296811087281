// The virtual clock stands still, and one who waits alone moves it on by exactly the time asked.
#include "tests/world/world_run.h"

#include <gtest/gtest.h>

using kestro_tests::process_result;

namespace {

void expect_shows(const std::string &words, const std::string &out) {
    const process_result result = kestro_tests::run_in_world({words}, {"KESTRO_SIM_CLOCK=virtual"});
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
}

// 2026-01-15 08:00:00 UTC is 1768464000; the board was started 900 seconds before.
TEST(VirtualClock, StandsStill) {
    const std::string day = "0 1768464000.000000000\n";
    const std::string boot = "0 900.000000000\n";
    const std::string none = "0 0.000000000\n";
    expect_shows("clocks", "realtime: " + day + "realtime coarse: " + day + "monotonic: " + boot +
                               "monotonic raw: " + boot + "monotonic coarse: " + boot + "boot: " + boot +
                               "process: " + none + "thread: " + none +
                               "unknown: -1\n"
                               "time: 1768464000 1768464000\n"
                               "gettimeofday: 0 1768464000.000000\n"
                               "timespec_get: 1 1768464000\n"
                               "clock: 0\n"
                               "chrono: 1768464000\n");
}

TEST(VirtualClock, SleepsMoveItOn) {
    expect_shows("sleeps", "start: 0 at 900.000000000\n"
                           "sleep: 0 at 930.000000000\n"
                           "usleep: 0 at 930.500000000\n"
                           "nanosleep: 0 at 932.750000000\n"
                           "clock_nanosleep: 0 at 935.000000000\n"
                           "until monotonic: 0 at 1000.000000005\n"
                           "until realtime: 0 at 1100.000000000\n"
                           "until the past: 0 at 1100.000000000\n"
                           "nanosleep wrong: -1 at 1100.000000000\n"
                           "clock_nanosleep wrong: 1 at 1100.000000000\n"
                           "year: 0 at 31537100.000000000\n"
                           "time: 1800000200\n");
}

TEST(VirtualClock, ASignalEndsALoopOfSleeps) {
    expect_shows("signal", "signal\n");
}

TEST(VirtualClock, ThreadsSleepSideBySide) {
    expect_shows("threads", "all: 0 at 901.000000000\n");
}

TEST(VirtualClock, TimerDescriptorsRunOnIt) {
    expect_shows("timers", "settime: 0\n"
                           "early: Resource temporarily unavailable\n"
                           "gettime: 0 1 2\n"
                           "three: 3 at 910.000000000\n"
                           "none: Resource temporarily unavailable\n"
                           "settime: 0 1 2\n"
                           "moment: 1 at 930.000000000\n"
                           "once: Resource temporarily unavailable\n"
                           "wrong: -1\n"
                           "reused: 1 8 0\n"
                           "blocking: 1 at 4630.000000000\n"
                           "blocking again: 1 at 4690.000000000\n");
}

TEST(VirtualClock, WaitsForDescriptorsMoveItOn) {
    expect_shows("waits", "poll: 0 at 901.500000000\n"
                          "poll at once: 0 at 901.500000000\n"
                          "poll nothing: 0 at 901.510000000\n"
                          "ppoll: 0 at 902.510000001\n"
                          "select: 0 at 906.010000001\n"
                          "left 0 0.000000\n"
                          "pselect: 0 at 907.010000002\n"
                          "poll with data: 1 at 907.010000002\n"
                          "select with data: 1 at 907.010000002\n"
                          "left 1 9.000000\n"
                          "poll before the timer: 0 at 911.010000002\n"
                          "poll without an end: 1 at 917.010000002\n"
                          "events 1\n"
                          "timer: 1 at 917.010000002\n"
                          "select wrong: -1 at 917.010000002\n"
                          "select closed: -1 at 917.010000002\n"
                          "errno 1\n");
}

TEST(RealClock, IsTheDesks) {
    const process_result first = kestro_tests::run_in_world({"clocks"}, {"KESTRO_SIM_CLOCK=real"});
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.out.find("realtime: 0 1768464000.000000000"), std::string::npos);
    EXPECT_EQ(first.out.find("monotonic: 0 900.000000000"), std::string::npos);
    const process_result second = kestro_tests::run_in_world({"signal"}, {"KESTRO_SIM_CLOCK=real"});
    EXPECT_EQ(second.out, "signal\n");
}

} // namespace
