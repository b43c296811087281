// The redirected console: what is sent comes back from the far end, on the driver's thread, while and after it is open.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>
#include <sstream>

namespace kestro_tests {

namespace {

const std::string listen = "drv_console_redirect_recv_callback_register(callback=callback)";
const std::string enable = "drv_console_redirect_en(slot_id=7, baud_rate=9600)";
const std::string close_it = "drv_console_redirect_close(slot_id=7)";

std::string send_text(const std::string &text) {
    return "drv_console_redirect_send_data(data=\"" + text + "\", len=" + std::to_string(text.size()) + ")";
}

std::string heard(const std::string &text, size_t len) {
    return "# event: drv_console_redirect_recv_callback(slot_id=7, data=\"" + text + "\", len=" + std::to_string(len) +
           ")\n";
}

// On the virtual clock, on a state of its own.
std::string printed_by(const std::vector<std::string> &lines) {
    return answers_of({"--state", new_scratch_dir() + "/state", "--clock", "virtual"}, lines);
}

} // namespace

// 5 bytes there and 7 back at 9600 bit/s take 12.5 ms, the far end thinks for 2 ms: after 14 ms nothing has come.
TEST(ConsoleRedirectDriver, TheFarConsoleAnswersAfterItsTime) {
    EXPECT_EQ(printed_by({enable, listen, send_text("hello"), "wait 0.014", send_text("x"), "wait 0.0009", "wait 1",
                          close_it}),
              "0x0\n0x0\n0x0\n0x0\n" + heard("hello\\r\\n", 7) + heard("x\\r\\n", 3) + "0x0\n");
}

TEST(ConsoleRedirectDriver, WhatIsOnItsWayStillComesAfterClosing) {
    EXPECT_EQ(printed_by({enable, listen, send_text("hello"), close_it, "wait 1"}),
              "0x0\n0x0\n0x0\n0x0\n" + heard("hello\\r\\n", 7));
}

// Closing forgets the callback: a later redirection is silent until one is registered again.
TEST(ConsoleRedirectDriver, ClosingForgetsTheCallback) {
    EXPECT_EQ(printed_by({enable, listen, send_text("a"), close_it, "wait 1", enable, send_text("b"), "wait 1", listen,
                          send_text("c"), "wait 1", close_it, enable, send_text("d"), "wait 1"}),
              "0x0\n0x0\n0x0\n0x0\n" + heard("a\\r\\n", 3) + "0x0\n0x0\n0x0\n0x0\n" + heard("c\\r\\n", 3) +
                  "0x0\n0x0\n0x0\n");
}

TEST(ConsoleRedirectDriver, NullTakesTheCallbackBack) {
    EXPECT_EQ(printed_by({enable, listen, send_text("a"), "drv_console_redirect_recv_callback_register(callback=null)",
                          "wait 1", "drv_console_redirect_recv_callback_register(callback=null)", close_it}),
              "0x0\n0x0\n0x0\n0x0\n0x0\n0x0\n");
}

// Neither the answer nor the end of a redirection that nobody heard is for one who registers later.
TEST(ConsoleRedirectDriver, WhatNobodyHeardIsGone) {
    EXPECT_EQ(printed_by({enable, send_text("a"), close_it, listen, "wait 1", enable, send_text("b"), "wait 1"}),
              "0x0\n0x0\n0x0\n0x0\n0x0\n0x0\n" + heard("b\\r\\n", 3));
}

// An end that is still to come does not end what was registered since.
TEST(ConsoleRedirectDriver, ANewCallbackOutlivesTheEndOfTheOldOne) {
    EXPECT_EQ(
        printed_by({enable, listen, send_text("a"), close_it, enable, listen, "wait 1", send_text("b"), "wait 1"}),
        "0x0\n0x0\n0x0\n0x0\n0x0\n0x0\n" + heard("a\\r\\n", 3) + "0x0\n" + heard("b\\r\\n", 3));
}

TEST(ConsoleRedirectDriver, WritesItsLog) {
    EXPECT_EQ(printed_by({enable, send_text("hello"), close_it, close_it,
                          "drv_console_redirect_en(slot_id=0xffffffff, baud_rate=9600)", "drv_log_read(log_id=20)"}),
              "0x0\n0x0\n0x0\n" + no_such_device +
                  "0x0\n0x0 buffer=\"2 slot 7: redirected at 9600 bit/s\\n2 slot 7: 5 bytes sent\\n2 slot 7: closed\\n"
                  "2 own slot: redirected at 9600 bit/s\\n\" lines=4\n");
}

// The receiver holds 32 bytes.
TEST(ConsoleRedirectDriver, LongTextsComeInPieces) {
    EXPECT_EQ(printed_by({enable, listen, send_text("0123456789abcdef0123456789abcdefXYZ"), "wait 1", send_text(""),
                          "wait 1", send_text("0123456789abcdef0123456789abcd"), "wait 1"}),
              "0x0\n0x0\n0x0\n" + heard("0123456789abcdef0123456789abcdef", 32) + heard("XYZ\\r\\n", 5) + "0x0\n" +
                  heard("\\r\\n", 2) + "0x0\n" + heard("0123456789abcdef0123456789abcd\\r\\n", 32));
}

TEST(ConsoleRedirectDriver, AnotherRateIsNotUnderstood) {
    EXPECT_EQ(printed_by({"drv_console_redirect_en(slot_id=7, baud_rate=115200)", listen, send_text("hello"), "wait 1",
                          enable, send_text("hello"), "wait 1"}),
              "0x0\n0x0\n0x0\n0x0\n0x0\n" + heard("hello\\r\\n", 7));
}

TEST(ConsoleRedirectDriver, OneConsoleAtATime) {
    EXPECT_EQ(printed_by({enable, "drv_console_redirect_en(slot_id=10, baud_rate=9600)",
                          "drv_console_redirect_close(slot_id=10)", close_it,
                          "drv_console_redirect_en(slot_id=10, baud_rate=9600)",
                          "drv_console_redirect_close(slot_id=10)", "drv_console_redirect_close(slot_id=10)"}),
              "0x0\n" + bad_value + no_such_device + "0x0\n0x0\n0x0\n" + no_such_device);
}

TEST(ConsoleRedirectDriver, Refusals) {
    EXPECT_EQ(printed_by({"drv_console_redirect_en(slot_id=7, baud_rate=9601)",
                          "drv_console_redirect_en(slot_id=6, baud_rate=9600)",
                          "drv_console_redirect_en(slot_id=5, baud_rate=9600)",
                          "drv_console_redirect_en(slot_id=0, baud_rate=9600)",
                          "drv_console_redirect_en(slot_id=0x10000, baud_rate=9600)", close_it, send_text("x"), enable,
                          "drv_console_redirect_send_data(data=null, len=1)"}),
              bad_value + no_such_instance + not_supported + no_such_instance + no_such_instance + no_such_device +
                  no_such_device + "0x0\n" + null_pointer);
}

TEST(ConsoleRedirectDriver, TheOwnConsoleAnswersToo) {
    EXPECT_EQ(printed_by({"drv_console_redirect_en(slot_id=0xffffffff, baud_rate=9600)", listen, send_text("me"),
                          "wait 1", "drv_console_redirect_close(slot_id=0xffffffff)"}),
              "0x0\n0x0\n0x0\n# event: drv_console_redirect_recv_callback(slot_id=0xffffffff, data=\"me\\r\\n\", "
              "len=4)\n0x0\n");
}

} // namespace kestro_tests
