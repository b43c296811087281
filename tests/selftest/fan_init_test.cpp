// The controllers of fan trays, going down and up, with every poll of the wait for them.
#include <gtest/gtest.h>

#include "tests/selftest/fan_script.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string status(const std::string &fan, const std::string &answer) {
    return fan_call("get_operation_complete_status", fan + ", operation=0", answer);
}

// Of all fans, as the waits ask.
std::string complete(const std::string &answer) {
    return status("0xffffffff", answer);
}

std::string init(const std::string &answer) {
    return tray_call("init", answer);
}

std::string exit_driver(const std::string &answer) {
    return tray_call("exit", answer);
}

std::string times(int good, int bad) {
    return "Info: Success times: " + std::to_string(good) + ", Fail times: " + std::to_string(bad) +
           ", total times: 2\r\n";
}

std::string lasts(const std::string &time) {
    return "-----------------Total test time: " + time + "-----------------\r\n";
}

} // namespace

TEST(FanInitStatusTest, WhatAFanTells) {
    expect_part("fan_init_status",
                fan_num(11, "0 num=5") + status("0", "0 status=0") + status("1", "0 status=1") +
                    status("2", "0x811101a4") + status("3", "0x71") + status("4", "0"),
                fan_rule_line +
                    "[FAN11] Init Status:\r\n"
                    "[FAN11-0]: Completed\r\n"
                    "[FAN11-1]: Uncompleted\r\n"
                    "[FAN11-2]: N/A\r\n"
                    "[FAN11-3]: --\r\n"
                    "[FAN11-4]: Completed\r\n" +
                    fan_rule_line,
                0x71);
}

TEST(FanInitStatusTest, TheResultIsTheSumOfTheCodes) {
    expect_part("fan_init_status", fan_num(11, "0 num=2") + status("0", "0x10") + status("1", "0x20"),
                fan_rule_line +
                    "[FAN11] Init Status:\r\n"
                    "[FAN11-0]: --\r\n"
                    "[FAN11-1]: --\r\n" +
                    fan_rule_line,
                0x30);
}

TEST(FanInitStatusTest, ATrayThatDoesNotTellItsFans) {
    expect_part("fan_init_status", fan_num(11, "0x72"), "Error: get fan11 num fail\r\n", 0x72);
}

namespace {

const std::string init_head = fan_rule_line + "[FAN11] Multi Init Test Result: \r\n";
const std::string overtime = "Error: init status overtime init test\r\n";

} // namespace

TEST(FanMultiInitTest, ItComesUpAtOnce) {
    expect_part("fan_multi_init", init("0 x2") + complete("0 status=0 x2"),
                init_head + times(2, 0) + lasts("002s 002000ms"), 0);
    expect_part("fan_multi_init", init("0 x2") + complete("0 x2"), init_head + times(2, 0) + lasts("002s 002000ms"), 0);
}

// A tray that does not tell is ready at the first poll.
TEST(FanMultiInitTest, ATrayThatDoesNotTell) {
    expect_part("fan_multi_init", init("0 x2") + complete("0x811101a4 status=1 x2"),
                init_head + times(2, 0) + lasts("002s 002000ms"), 0);
}

TEST(FanMultiInitTest, ItIsReadyAtTheLastPoll) {
    expect_part("fan_multi_init",
                init("0 x2") + complete("0 status=1 x28") + complete("0x55 x1") + complete("0 status=0 x2"),
                init_head + times(2, 0) + lasts("031s 031000ms"), 0);
}

TEST(FanMultiInitTest, ItIsNeverReady) {
    expect_part("fan_multi_init", init("0 x2") + complete("0 status=1 x60"),
                init_head + overtime + overtime + times(0, 2) + lasts("060s 060000ms"), 2);
    expect_part("fan_multi_init", init("0 x2") + complete("0x55 x30") + complete("0 x1"),
                init_head + overtime + times(1, 1) + lasts("031s 031000ms"), 1);
}

// Nothing is waited for then; "not supported" is a failure.
TEST(FanMultiInitTest, ItDoesNotComeUp) {
    expect_part("fan_multi_init", init("0x10 x1") + init("0x811101a4 x1"),
                init_head +
                    "Error: [0 times]init fail(0x10)\r\n"
                    "Error: [1 times]init fail(0x811101a4)\r\n" +
                    times(0, 2) + lasts("000s 000000ms"),
                static_cast<int>(0x811101b4));
    expect_part("fan_multi_init", init("0 x1") + init("0x11 x1") + complete("0 x1"),
                init_head + "Error: [1 times]init fail(0x11)\r\n" + times(1, 1) + lasts("001s 001000ms"), 0x11);
}

namespace {

const std::string exit_head = fan_rule_line + "[FAN11] Multi Deinit Test Result: \r\n";

} // namespace

TEST(FanMultiDeinitTest, DownTwiceAndUpOnce) {
    expect_part("fan_multi_deinit", exit_driver("0 x2") + init("0 x1") + complete("0 x1"),
                exit_head + times(2, 0) + lasts("001s 001000ms"), 0);
}

// What is down already is no fault.
TEST(FanMultiDeinitTest, ItDoesNotGoDown) {
    expect_part("fan_multi_deinit",
                exit_driver("0x811101a4 x1") + exit_driver("0x21 x1") + init("0 x1") + complete("0 x1"),
                exit_head +
                    "Info: [0 times]deinit fail(0x811101a4)\r\n"
                    "Info: [1 times]deinit fail(0x21)\r\n" +
                    times(0, 2) + lasts("001s 001000ms"),
                0);
}

TEST(FanMultiDeinitTest, ItDoesNotComeUpAgain) {
    expect_part("fan_multi_deinit", exit_driver("0 x2") + init("0x31 x1") + complete("0 x1"),
                exit_head + "Error: init fail when recovery(0x31)\r\n" + times(2, 0) + lasts("001s 001000ms"), 0x31);
    expect_part("fan_multi_deinit", exit_driver("0 x2") + init("0 x1") + complete("0x31 x30"),
                exit_head + "Error: init status overtime when recovery\r\n" + times(2, 0) + lasts("030s 030000ms"), 1);
    expect_part("fan_multi_deinit", exit_driver("0 x2") + init("0x31 x1") + complete("0 status=1 x30"),
                exit_head +
                    "Error: init fail when recovery(0x31)\r\n"
                    "Error: init status overtime when recovery\r\n" +
                    times(2, 0) + lasts("030s 030000ms"),
                0x32);
}

namespace {

const std::string cycle_head = fan_rule_line + "[FAN11] Init-Deinit Test Result: \r\n";

} // namespace

TEST(FanInitDeinitTest, DownAndUpTwice) {
    expect_part("fan_init_deinit", exit_driver("0 x2") + init("0 x2") + complete("0 status=1 x2") + complete("0 x2"),
                cycle_head + times(2, 0) + lasts("004s 004000ms"), 0);
}

// It is not brought up then, and there is no line.
TEST(FanInitDeinitTest, ItDoesNotGoDown) {
    expect_part("fan_init_deinit", exit_driver("0x41 x1") + exit_driver("0 x1") + init("0 x1") + complete("0 x1"),
                cycle_head + times(1, 1) + lasts("001s 001000ms"), 0x41);
}

// These lines have no end.
TEST(FanInitDeinitTest, ItDoesNotComeUp) {
    expect_part("fan_init_deinit", exit_driver("0 x2") + init("0x51 x1") + init("0x811101a4 x1"),
                cycle_head +
                    "Error: [0 times]init fail in second step(0x51)"
                    "Error: [1 times]init fail in second step(0x811101a4)" +
                    times(0, 2) + lasts("000s 000000ms"),
                static_cast<int>(0x811101f5));
}

// What the driver said last counts: nothing where it only was not ready.
TEST(FanInitDeinitTest, ItIsNeverReady) {
    expect_part("fan_init_deinit", exit_driver("0 x2") + init("0 x2") + complete("0 status=1"),
                cycle_head +
                    "Error: [0 times]init status overtime in third step"
                    "Error: [1 times]init status overtime in third step" +
                    times(0, 2) + lasts("060s 060000ms"),
                0);
    expect_part("fan_init_deinit",
                exit_driver("0 x2") + init("0 x2") + complete("0x61 x29") + complete("0x62 x1") + complete("0x61 x29") +
                    complete("0 status=1 x1"),
                cycle_head +
                    "Error: [0 times]init status overtime in third step"
                    "Error: [1 times]init status overtime in third step" +
                    times(0, 2) + lasts("060s 060000ms"),
                0x62);
}
