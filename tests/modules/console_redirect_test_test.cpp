// console_redirect_test: the one sub-command on the real program, with the driver scripted, and with the simulated
// driver where its thread is wanted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::string name = "console_redirect_test drv_console_redirect_func_test";
const std::string log_pointer = "##############################  use command \"cat /dev/kestro_log/drv_log_console\" "
                                "to check all info  #################\n";

const std::string enabled = "console redirect en successful!\r\n";
const std::string registered = "console redirect recv callback register successful!\r\n";
const std::string sent = "console redirect send data successful!\r\n";
const std::string closed = "console redirect close successful!\r\n";

const std::string en = "drv_console_redirect_en(slot_id=7, baud_rate=9600) = 0\n";
const std::string reg = "drv_console_redirect_recv_callback_register(callback=callback) = 0\n";
const std::string unreg = "drv_console_redirect_recv_callback_register(callback=null) = 0\n";
const std::string send_it = "drv_console_redirect_send_data(len=4, data=[73 68 6f 77]) = 0\n";
const std::string close_it = "drv_console_redirect_close(slot_id=7) = 0\n";

// What stands around the steps of "7 9600 show 9 0".
std::string around(const std::string &steps, const std::string &ret) {
    return framed(banners::bare, "test_console_redirect_func_test",
                  "slot_id:7 baud_rate:2580 data:show data_len:9 delay_time:0\n" + steps +
                      "slot_id:7 baud_rate:2580 data:show data_len:9 delay_time:0 ret:0x" + ret + "  \n" + log_pointer);
}

std::string took(const std::string &seconds) {
    return "cmd_exec used second:" + seconds + "\r\ncmd_exec used millisecond:" + seconds + "000\r\n";
}

} // namespace

TEST(ConsoleRedirectTest, UsageListsTheSubCommand) {
    expect_run("console_redirect_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_console_redirect_func_test slot_id baud_rate data data_len delay_time\n",
               0);
}

// The whole of one run, written out. Each of the two waits is a second of the clock.
TEST(ConsoleRedirectTest, FourStepsWithAWaitBeforeTheThirdAndBehindTheLast) {
    expect_run(name + " 7 9600 show 9 1", en + reg + send_it + close_it,
               "*********   test_console_redirect_func_test test begin:  ********\n"
               "slot_id:7 baud_rate:2580 data:show data_len:9 delay_time:1\n"
               "console redirect en successful!\r\n"
               "console redirect recv callback register successful!\r\n"
               "console redirect send data successful!\r\n"
               "console redirect close successful!\r\n"
               "slot_id:7 baud_rate:2580 data:show data_len:9 delay_time:1 ret:0x0  \n"
               "##############################  use command \"cat /dev/kestro_log/drv_log_console\" to check all info  "
               "#################\n"
               "*********   test_console_redirect_func_test test end:  ********\n"
               "cmd_exec used second:2\r\ncmd_exec used millisecond:2000\r\n",
               0);
}

TEST(ConsoleRedirectTest, NoDelayIsNoWait) {
    expect_success(name + " 7 9600 show 9 0", en + reg + send_it + close_it,
                   around(enabled + registered + sent + closed, "0"));
}

TEST(ConsoleRedirectTest, FirstStepFails) {
    expect_failure(name + " 7 9600 show 9 0", "drv_console_redirect_en(slot_id=7, baud_rate=9600) = 0x811101a4",
                   around("console redirect en fail!, retval 811101a4\r\n", "811101a4"));
}

// What was enabled is closed without a line, and its code is not the outcome.
TEST(ConsoleRedirectTest, SecondStepFails) {
    const std::string failed = "drv_console_redirect_recv_callback_register(callback=callback) = 0x12\n";
    const std::string body = around(enabled + "console redirect recv callback register fail!, retval 12\r\n", "12");
    expect_failure(name + " 7 9600 show 9 0", en + failed + close_it, body);
    expect_failure(name + " 7 9600 show 9 0", en + failed + "drv_console_redirect_close(slot_id=7) = 0x21\n" + unreg,
                   body);
}

TEST(ConsoleRedirectTest, ThirdStepFails) {
    const std::string failed = "drv_console_redirect_send_data(len=4, data=[73 68 6f 77]) = 0x13\n";
    const std::string body = around(enabled + registered + "console redirect send data fail!, retval 13\r\n", "13");
    expect_failure(name + " 7 9600 show 9 0", en + reg + failed + close_it, body);
    expect_failure(name + " 7 9600 show 9 0",
                   en + reg + failed + "drv_console_redirect_close(slot_id=7) = 0x21\n" + unreg, body);
}

TEST(ConsoleRedirectTest, ThirdStepFailsAfterTheFirstWaitOnly) {
    expect_run(name + " 7 9600 show 9 2",
               en + reg + "drv_console_redirect_send_data(len=4, data=[73 68 6f 77]) = 0x13\n" + close_it,
               framed(banners::bare, "test_console_redirect_func_test",
                      "slot_id:7 baud_rate:2580 data:show data_len:9 delay_time:2\n" + enabled + registered +
                          "console redirect send data fail!, retval 13\r\n"
                          "slot_id:7 baud_rate:2580 data:show data_len:9 delay_time:2 ret:0x13  \n" +
                          log_pointer) +
                   took("2") + operate_fail("drv_console_redirect_func_test") + operate_fail("console_redirect_test"),
               255);
}

// A driver that cannot close forgets the callback at least; there is no second wait.
TEST(ConsoleRedirectTest, FourthStepFails) {
    const std::string failed = "drv_console_redirect_close(slot_id=7) = 0x811101a4\n";
    expect_failure(
        name + " 7 9600 show 9 0", en + reg + send_it + failed + unreg,
        around(enabled + registered + sent + "console redirect close fail!, retval 811101a4\r\n", "811101a4"));
    expect_run(name + " 7 9600 show 9 3", en + reg + send_it + failed + unreg,
               framed(banners::bare, "test_console_redirect_func_test",
                      "slot_id:7 baud_rate:2580 data:show data_len:9 delay_time:3\n" + enabled + registered + sent +
                          "console redirect close fail!, retval 811101a4\r\n"
                          "slot_id:7 baud_rate:2580 data:show data_len:9 delay_time:3 ret:0x811101a4  \n" +
                          log_pointer) +
                   took("3") + operate_fail("drv_console_redirect_func_test") + operate_fail("console_redirect_test"),
               255);
}

// One word less: the slot is the own one. More words: the same, and what is too much is not read.
TEST(ConsoleRedirectTest, SlotMayBeLeftOut) {
    const std::string script = "drv_console_redirect_en(slot_id=0xffffffff, baud_rate=115200) = 0\n" + reg +
                               "drv_console_redirect_send_data(len=2, data=[68 69]) = 0\n"
                               "drv_console_redirect_close(slot_id=0xffffffff) = 0";
    const std::string body = framed(
        banners::bare, "test_console_redirect_func_test",
        "slot_id:ffffffff baud_rate:1c200 data:hi data_len:10 delay_time:0\n" + enabled + registered + sent + closed +
            "slot_id:ffffffff baud_rate:1c200 data:hi data_len:10 delay_time:0 ret:0x0  \n" + log_pointer);
    expect_success(name + " 115200 hi 0x10 0", script, body);
    expect_success(name + " 115200 hi 0x10 0 7 7", script, body);
}

TEST(ConsoleRedirectTest, TooFewWordsGoOnWithNone) {
    const std::string script = "drv_console_redirect_en(slot_id=0xffffffff, baud_rate=0) = 0\n" + reg +
                               "drv_console_redirect_send_data(len=0) = 0\n"
                               "drv_console_redirect_close(slot_id=0xffffffff) = 0";
    const std::string line = "slot_id:ffffffff baud_rate:0 data: data_len:0 delay_time:0";
    const std::string rest = line + "\n" + enabled + registered + sent + closed + line + " ret:0x0  \n" + log_pointer;
    expect_success(
        name + " 7 9600 show", script,
        framed(banners::bare, "test_console_redirect_func_test", "input error : in_num : 3 over [4-5] .\n" + rest));
    expect_success(
        name, script,
        framed(banners::bare, "test_console_redirect_func_test", "input error : in_num : 0 over [4-5] .\n" + rest));
}

TEST(ConsoleRedirectTest, WordsThatAreNoNumbersAreZero) {
    expect_success(name + " slot fast 12 long later",
                   "drv_console_redirect_en(slot_id=0, baud_rate=0) = 0\n" + reg +
                       "drv_console_redirect_send_data(len=2, data=[31 32]) = 0\n"
                       "drv_console_redirect_close(slot_id=0) = 0",
                   framed(banners::bare, "test_console_redirect_func_test",
                          "slot_id:0 baud_rate:0 data:12 data_len:0 delay_time:0\n" + enabled + registered + sent +
                              closed + "slot_id:0 baud_rate:0 data:12 data_len:0 delay_time:0 ret:0x0  \n" +
                              log_pointer));
}

// 64 bytes hold 63 characters. The length of the command line is shown and not used.
TEST(ConsoleRedirectTest, DataIsCutToItsArea) {
    const std::string kept(63, 'd');
    for (const std::string &word : {kept, kept + "d", kept + "ddddefgh"}) {
        expect_success(name + " 7 9600 " + word + " 0xffffffff 0",
                       en + reg + "drv_console_redirect_send_data(len=63, data=\"" + kept + "\") = 0\n" + close_it,
                       framed(banners::bare, "test_console_redirect_func_test",
                              "slot_id:7 baud_rate:2580 data:" + kept + " data_len:ffffffff delay_time:0\n" + enabled +
                                  registered + sent + closed + "slot_id:7 baud_rate:2580 data:" + kept +
                                  " data_len:ffffffff delay_time:0 ret:0x0  \n" + log_pointer));
    }
}

TEST(ConsoleRedirectTest, PercentSignsInDataAreNothingSpecial) {
    expect_success(name + " 7 9600 %s%n 4 0",
                   en + reg + "drv_console_redirect_send_data(len=4, data=[25 73 25 6e]) = 0\n" + close_it,
                   framed(banners::bare, "test_console_redirect_func_test",
                          "slot_id:7 baud_rate:2580 data:%s%n data_len:4 delay_time:0\n" + enabled + registered + sent +
                              closed + "slot_id:7 baud_rate:2580 data:%s%n data_len:4 delay_time:0 ret:0x0  \n" +
                              log_pointer));
}

// A day is the longest wait: two of them are 172800 s.
TEST(ConsoleRedirectTest, DelayIsBounded) {
    expect_run(name + " 7 9600 show 9 0xffffffff", en + reg + send_it + close_it,
               framed(banners::bare, "test_console_redirect_func_test",
                      "slot_id:7 baud_rate:2580 data:show data_len:9 delay_time:ffffffff\n" + enabled + registered +
                          sent + closed +
                          "slot_id:7 baud_rate:2580 data:show data_len:9 delay_time:ffffffff ret:0x0  \n" +
                          log_pointer) +
                   took("172800"),
               0);
}

// The simulated driver: the far console sends the text back, on the driver's thread, while the main one waits.
TEST(ConsoleRedirectTest, WhatComesBackIsPrintedInLinesOfItsOwn) {
    const std::string script = "drv_console_redirect_en = pass\ndrv_console_redirect_recv_callback_register = pass\n"
                               "drv_console_redirect_send_data = pass\ndrv_console_redirect_close = pass";
    expect_run(name + " 7 9600 'show 50%s' 9 1", script,
               framed(banners::bare, "test_console_redirect_func_test",
                      "slot_id:7 baud_rate:2580 data:show 50%s data_len:9 delay_time:1\n" + enabled + registered +
                          sent + closed + "show 50%s\r\n" +
                          "slot_id:7 baud_rate:2580 data:show 50%s data_len:9 delay_time:1 ret:0x0  \n" + log_pointer) +
                   took("2"),
               0);
}

// A receiver holds 32 bytes: a longer text comes in pieces, and the first does not end a line by itself.
TEST(ConsoleRedirectTest, PiecesOfATextAreLinesOfTheirOwn) {
    const std::string script = "drv_console_redirect_en = pass\ndrv_console_redirect_recv_callback_register = pass\n"
                               "drv_console_redirect_send_data = pass\ndrv_console_redirect_close = pass";
    const std::string first = "abcdefghijklmnopqrstuvwxyz012345";
    expect_run(name + " 7 9600 " + first + "6789 36 1", script,
               framed(banners::bare, "test_console_redirect_func_test",
                      "slot_id:7 baud_rate:2580 data:" + first + "6789 data_len:24 delay_time:1\n" + enabled +
                          registered + sent + closed + first + "\n6789\r\n" + "slot_id:7 baud_rate:2580 data:" + first +
                          "6789 data_len:24 delay_time:1 ret:0x0  \n" + log_pointer) +
                   took("2"),
               0);
}
