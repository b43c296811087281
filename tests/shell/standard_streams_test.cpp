// Output that was lost on the way, called directly; whole runs are in lost_output_run_test.cpp.
#include <gtest/gtest.h>

#include <cstdio>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

#include "shell/standard_streams.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

// What the function leaves on standard error.
template <typename function> std::string reported_by(function run) {
    testing::internal::CaptureStderr();
    run();
    return testing::internal::GetCapturedStderr();
}

} // namespace

TEST(EndOutputTest, WhatArrivedKeepsItsResult) {
    const std::string reported = reported_by([] {
        EXPECT_EQ(printed_by([] {
                      fputs("part", stdout);
                      EXPECT_EQ(end_output(0), 0);
                      EXPECT_EQ(end_output(-1), -1);
                  }),
                  "part");
    });
    EXPECT_EQ(reported, "");
}

TEST(EndOutputTest, ALossInBetweenIsNotForgotten) {
    const std::string reported = reported_by([] {
        printed_by([] {
            const int good = dup(STDOUT_FILENO);
            const int bad = open("/dev/null", O_RDONLY);
            dup2(bad, STDOUT_FILENO);
            fputs("lost", stdout);
            EXPECT_NE(fflush(stdout), 0);
            dup2(good, STDOUT_FILENO);
            close(good);
            close(bad);
            EXPECT_EQ(end_output(0), 1);
            clearerr(stdout);
        });
    });
    EXPECT_EQ(reported, "kestro_test: standard output cannot be written, and lines of this run are lost\n");
}

TEST(EndOutputTest, ALossAtTheEndIsSeen) {
    const std::string reported = reported_by([] {
        printed_by([] {
            const int good = dup(STDOUT_FILENO);
            const int bad = open("/dev/null", O_RDONLY);
            dup2(bad, STDOUT_FILENO);
            fputs("lost", stdout);
            EXPECT_EQ(end_output(-1), 1);
            dup2(good, STDOUT_FILENO);
            close(good);
            close(bad);
            clearerr(stdout);
        });
    });
    EXPECT_EQ(reported, "kestro_test: standard output cannot be written, and lines of this run are lost\n");
}

TEST(HeldOutputTest, NobodyHoldsItOnceTheOutputHasEnded) {
    EXPECT_EQ(printed_by([] { EXPECT_EQ(end_output(0), 0); }), "");
    EXPECT_FALSE(hold_output());
    // What was not taken is not kept from others either.
    std::thread([] {
        EXPECT_EQ(ftrylockfile(stdout), 0);
        funlockfile(stdout);
    }).join();
}
