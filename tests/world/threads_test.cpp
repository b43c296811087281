// Several threads on the virtual clock: it moves only when all of them wait, and then to the earliest deadline.
#include "tests/world/world_run.h"

#include <gtest/gtest.h>

using kestro_tests::process_result;

namespace {

process_result play(const std::string &scene) {
    return kestro_tests::run_in_world({"scene", scene}, {"KESTRO_SIM_CLOCK=virtual"});
}

void expect_scene(const std::string &scene, const std::string &out) {
    const process_result result = play(scene);
    EXPECT_EQ(result.out, out);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
}

// The clock shows 900 seconds at the start.
TEST(VirtualThreads, AMonitorBesideTheMainThreadIsTheSameEachTime) {
    for (int i = 0; i < 20; ++i) {
        expect_scene("monitor", "other ends: 0 at 907000 ms\n"
                                "main ends: 0 at 910000 ms\n"
                                "monitor ends: 30 at 930000 ms\n"
                                "all end: 30 at 930000 ms\n");
    }
}

TEST(VirtualThreads, AConditionIsSignalledOrTimesOut) {
    expect_scene("condition", "too early: 0 at 901500 ms\n"
                              "in time: 1 at 902000 ms\n"
                              "until: 1 at 905000 ms\n");
    expect_scene("clocks", "time of day: 1 at 905000 ms\n"
                           "since boot: 1 at 908000 ms\n"
                           "past: 1 at 908000 ms\n"
                           "wrong: 1 at 908000 ms\n"
                           "mutex is free: 0 at 908000 ms\n");
}

// Ten pieces each at 250 ms; the second consumer begins with the second piece, at 200 ms.
TEST(VirtualThreads, ASignalledThreadRunsBeforeTheClockDoes) {
    for (int i = 0; i < 20; ++i) {
        expect_scene("producer", "taken: 20 at 902700 ms\n");
    }
}

TEST(VirtualThreads, ALockWhoseOwnerSleepsDoesNotStopTheClock) {
    expect_scene("mutex", "mutex: 0 at 905000 ms\n"
                          "not in time: 0 at 907000 ms\n"
                          "in time: 1 at 910000 ms\n");
    expect_scene("readers", "readers together: 0 at 906000 ms\n");
    expect_scene("checked", "twice: 1 at 900000 ms\n");
}

// Eight threads sleep four times a millisecond each while they hold the one mutex.
TEST(VirtualThreads, NoReleaseOfALockIsLost) {
    for (int i = 0; i < 20; ++i) {
        expect_scene("contended", "sum: 16000 at 900032 ms\n");
    }
}

TEST(VirtualThreads, Semaphores) {
    expect_scene("semaphores", "alone: 1 at 902000 ms\n"
                               "first: 0 at 905000 ms\n"
                               "not yet: 1 at 909000 ms\n"
                               "second: 0 at 915000 ms\n");
}

TEST(VirtualThreads, EndsOfThreads) {
    expect_scene("ends", "joined: 0 at 902000 ms\n"
                         "detached sleeps on: 0 at 903000 ms\n"
                         "detached is gone: 0 at 907000 ms\n"
                         "joined late: 0 at 917000 ms\n");
    expect_scene("leaving", "the other: 0 at 907000 ms\n");
}

TEST(VirtualThreads, WhatOneThreadWritesAnotherSeesAtThatMoment) {
    for (int i = 0; i < 20; ++i) {
        expect_scene("descriptors", "nothing yet: 0 at 901000 ms\n"
                                    "written: 1 at 902000 ms\n"
                                    "still there: 1 at 922000 ms\n");
    }
}

TEST(VirtualThreads, ATimerThatIsSetAnewIsWaitedForAnew) {
    expect_scene("timers", "read: 8 at 907000 ms\n"
                           "polled: 1 at 911000 ms\n");
}

TEST(VirtualThreads, ASignalEndsAWait) {
    const std::string interrupted = "-1 Interrupted system call";
    expect_scene("signals", "nanosleep: " + interrupted + ", 1 seen; then: 0 at 902000 ms\n" + "left 58\n" +
                                "poll: " + interrupted + ", 2 seen; then: 0 at 904000 ms\n" + "pause: " + interrupted +
                                ", 3 seen; then: 0 at 906000 ms\n" + "sigsuspend: " + interrupted +
                                ", 4 seen; then: 0 at 908000 ms\n" + "sleep: 58 , 5 seen; then: 0 at 910000 ms\n" +
                                "sem_wait: " + interrupted + ", 6 seen; then: 0 at 912000 ms\n");
}

TEST(VirtualThreads, NothingMovesWhenNobodyHasADeadline) {
    expect_scene("nothing", "only the alarm: 1 at 900000 ms\n");
}

TEST(VirtualThreads, AForkedChildHasOneThreadAndItsOwnClock) {
    expect_scene("fork", "child alone: 0 at 953000 ms\n"
                         "child's own thread: 0 at 958000 ms\n"
                         "parent: 0 at 903000 ms\n"
                         "monitor: 0 at 1000000 ms\n");
}

TEST(VirtualThreads, TheBoardTimeAtTheStartIsAddedToAllClocks) {
    const process_result result =
        kestro_tests::run_in_world({"scene", "clocks"}, {"KESTRO_SIM_CLOCK=virtual", "KESTRO_SIM_TIME=3000000000"});
    EXPECT_EQ(result.out, "time of day: 1 at 905000 ms\n"
                          "since boot: 1 at 908000 ms\n"
                          "past: 1 at 908000 ms\n"
                          "wrong: 1 at 908000 ms\n"
                          "mutex is free: 0 at 908000 ms\n");
    const process_result sleeps =
        kestro_tests::run_in_world({"scene", "readers"}, {"KESTRO_SIM_CLOCK=virtual", "KESTRO_SIM_TIME=3000000000"});
    EXPECT_EQ(sleeps.out, "readers together: 0 at 909000 ms\n");
}

TEST(RealThreads, AreTheDesks) {
    const process_result result = kestro_tests::run_in_world({"scene", "checked"}, {"KESTRO_SIM_CLOCK=real"});
    EXPECT_EQ(result.out.substr(0, 9), "twice: 1 ");
    EXPECT_EQ(result.status, 0);
}

} // namespace
