// The log of the fan driver.
#include <filesystem>
#include <gtest/gtest.h>

#include "tests/selftest/part.h"
#include "tests/support/simulator.h"

using namespace kestro_tests;

namespace {

const std::string untouched = "################\n";

// A directory of board files with that log.
std::string board_with_log(const std::string &text) {
    const std::string root = new_scratch_dir();
    std::filesystem::create_directories(root + "/dev/kestro_log");
    write_file(root + "/dev/kestro_log/fan_mng", text);
    return root;
}

} // namespace

// The last byte of the buffer is left alone, and nothing is terminated.
TEST(FanLogTest, WhatTheBufferHolds) {
    expect_part_on(board_with_log("fan 0 stalls\n"), "fan_log", "", "fan 0 stalls\n###\n", 0);
    expect_part_on(board_with_log("123456789012345678"), "fan_log", "", "123456789012345#\n", 0);
    expect_part_on(board_with_log(""), "fan_log", "", untouched, 0);
    expect_part_on(board_with_log("123"), "fan_log_1_byte", "", untouched, 0);
    expect_part_on(board_with_log("123"), "fan_log_0_bytes", "", untouched, -1);
}

// The drivers of the simulated board have a log of that name; a link that leads nowhere hides it.
TEST(FanLogTest, WithoutALog) {
    const std::string root = new_scratch_dir();
    std::filesystem::create_directories(root + "/dev/kestro_log");
    std::filesystem::create_symlink("none", root + "/dev/kestro_log/fan_mng");
    expect_part_on(root, "fan_log", "", untouched, -1);
}

// Where the board's files have none, it is what the fan driver recorded.
TEST(FanLogTest, IsTheDriverLog) {
    expect_part_on(new_scratch_dir(), "fan_log", "", untouched, 0);
    const std::string state = new_scratch_dir() + "/state";
    run_sim({"--state", state}, {"log_test", "write_log", "17", "2", "fan"});
    const process_result run = run_sim({"--state", state, "--run", build_dir() + "/tests/selftest_part"}, {"fan_log"});
    EXPECT_TRUE(run.out.starts_with("2 fan\n##########\n")) << run.out;
}

TEST(FanLogTest, ALogThatCannotBeRead) {
    const std::string root = new_scratch_dir();
    std::filesystem::create_directories(root + "/dev/kestro_log/fan_mng");
    expect_part_on(root, "fan_log",
                   "drv_log_record(log_id=17, level=1, flag=0, text=\"Get fan log failed.(err = -1)\") = 0\n",
                   untouched, -1);
}

// A link is followed, to a path of at most 127 characters.
TEST(FanLogTest, TheLengthOfItsPath) {
    for (const size_t length : {127U, 128U}) {
        const std::string root = new_scratch_dir();
        const std::string file = "/dev/kestro_log/" + std::string(length - 16, 'f');
        std::filesystem::create_directories(root + "/dev/kestro_log");
        write_file(root + file, "far away");
        std::filesystem::create_symlink(file, root + "/dev/kestro_log/fan_mng");
        if (length == 127) {
            expect_part_on(root, "fan_log", "", "far away########\n", 0);
        } else {
            expect_part_on(root, "fan_log", "", untouched, -1);
        }
    }
}
