// Diagnose commands: there are some once the family has begun, and devices answer them.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string begin = "drv_diag_cmd_init()";
const std::string rtc_info = "drv_diag_cmd_process(command=\"rtc info\", size=200)";
const std::string not_ready = "0x8111010f\n";

} // namespace

TEST(DiagCmdDriver, TellsOfTheClock) {
    const std::string state = new_scratch_dir() + "/state";
    EXPECT_EQ(answers_of({"--state", state, "--clock", "virtual"}, {begin, "wait 2.5", rtc_info, begin, rtc_info}),
              ok +
                  "0x0 output=\"time: 2026-01-15 08:00:02.50, day 4 of the week\\r\\noscillator: running\\r\\n"
                  "battery: 3012 mV\\r\\n\"\n" +
                  ok +
                  "0x0 output=\"time: 2026-01-15 08:00:02.50, day 4 of the week\\r\\noscillator: running\\r\\n"
                  "battery: 3012 mV\\r\\n\"\n");
    EXPECT_EQ(answers_of({"--state", state, "--clock", "virtual", "--set", "slot9/rtc/chip/0/battery=2000", "--set",
                          "slot9/rtc/chip/0/oscillator_stopped=1"},
                         {begin, rtc_info}),
              ok +
                  "0x0 output=\"time: 2026-01-15 08:00:02.50, day 4 of the week\\r\\noscillator: has stopped, the time "
                  "is not to be trusted\\r\\nbattery: 2000 mV, low\\r\\n\"\n");
}

TEST(DiagCmdDriver, ThereAreNoCommandsBeforeItBegins) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {rtc_info, begin}), not_ready + ok);
    EXPECT_EQ(answers(board, {rtc_info}), not_ready);
}

TEST(DiagCmdDriver, WrongCalls) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {begin, "drv_diag_cmd_process(command=\"rtc\", size=200)",
                              "drv_diag_cmd_process(command=\"\", size=200)",
                              "drv_diag_cmd_process(command=\"rtc info \", size=200)",
                              "drv_diag_cmd_process(command=null, size=200)",
                              "drv_diag_cmd_process(command=\"rtc info\", size=200, output=null)",
                              "drv_diag_cmd_process(command=\"rtc info\", size=20)"}),
              ok + no_such_device + no_such_device + no_such_device + null_pointer + null_pointer + too_small);
    const std::string clockless =
        R"(<board name="clockless" like="mpu" slot="9"><module name="sim_rtc" remove="yes"/></board>)";
    EXPECT_EQ(answers(new_board(scratch_file("clockless.xml", clockless)), {begin, rtc_info}), ok + not_supported);
}

} // namespace kestro_tests
