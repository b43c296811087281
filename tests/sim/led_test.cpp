// Panel lamps: colours and blinking are read back, the lamp test is consistent, patch functions answer in place.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

TEST(LedDriver, ColorIsReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"led_get_color 0xffffffff 0", "led_set_color 0xffffffff 0 3 100"}), "0x0 1 5\n0x0\n");
    EXPECT_EQ(
        calls_print(board, {"led_get_color 0xffffffff 0", "led_get_color 0xff000009 0", "led_get_color 0xffffffff 1"}),
        "0x0 3 100\n0x0 3 100\n0x0 0 0\n");
}

TEST(LedDriver, LampsHaveTheirOwnColors) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"led_set_color 0xffffffff 1 1 0", "led_set_color 0xffffffff 1 2 0",
                                  "led_set_color 0xffffffff 0 4 0", "led_set_color 0xffffffff 0 0xffffffff 0",
                                  "led_set_color 0xffffffff 0 1 101", "led_get_color 0xffffffff 0",
                                  "led_get_color 0xffffffff 1"}),
              bad_value + ok + bad_value + bad_value + bad_value + "0x0 1 5\n0x0 2 0\n");
}

TEST(LedDriver, HardwareDrivenLampIsNotSet) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"led_get_mode 0xffffffff 0", "led_get_mode 0xffffffff 3",
                                  "led_set_color 0xffffffff 3 0 0", "led_get_color 0xffffffff 3"}),
              "0x0 1\n0x0 0\n" + not_supported + "0x0 1 0\n");
}

TEST(LedDriver, LampTestStatusFollowsEnable) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"led_get_lamptest_support 0xffffffff", "led_get_lamptest_enable 0xffffffff",
                                  "led_get_lamptest_status 0xffffffff", "led_get_lamptest_ctrl_enable 0xffffffff",
                                  "led_set_lamptest_enable 0xffffffff 1"}),
              "0x0 1\n0x0 0\n0x0 0\n0x0 0\n0x0\n");
    EXPECT_EQ(calls_print(board, {"led_get_lamptest_enable 0xffffffff", "led_get_lamptest_status 0xffffffff",
                                  "led_get_lamptest_ctrl_enable 0xffffffff",
                                  "led_set_lamptest_ctrl_enable 0xffffffff 1", "led_set_lamptest_enable 0xffffffff 0"}),
              "0x0 1\n0x0 1\n0x0 0\n0x0\n0x0\n");
    EXPECT_EQ(calls_print(board, {"led_get_lamptest_enable 0xffffffff", "led_get_lamptest_status 0xffffffff",
                                  "led_get_lamptest_ctrl_enable 0xffffffff", "led_set_lamptest_enable 0xffffffff 2",
                                  "led_set_lamptest_ctrl_enable 0xffffffff 2"}),
              "0x0 0\n0x0 0\n0x0 1\n" + bad_value + bad_value);
}

TEST(LedDriver, PanelWithoutLampTest) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(calls_print(board, {"led_get_lamptest_support 0xffffffff", "led_get_lamptest_enable 0xffffffff",
                                  "led_set_lamptest_enable 0xffffffff 1", "led_get_lamptest_ctrl_enable 0xffffffff",
                                  "led_set_lamptest_ctrl_enable 0xffffffff 1", "led_get_lamptest_status 0xffffffff"}),
              "0x0 0\n" + not_supported + not_supported + not_supported + not_supported + not_supported);
}

TEST(LedDriver, PatchFunctionsAnswerInPlace) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"led_patch_func1 0xffffffff =hello 125", "led_patch_func2 0xffffffff =x 125"}),
              "0x0 \"panel logic: hello\"\n0x0 \"panel wiring: x\"\n");
    EXPECT_EQ(calls_print(board, {"led_patch_func1 0xffffffff =hello 19", "led_patch_func1 0xffffffff =hello 18",
                                  "led_patch_func1 0xffffffff =hello 5", "led_patch_func1 0xffffffff =hello 0",
                                  "led_patch_func2 0xffffffff null 125"}),
              "0x0 \"panel logic: hello\"\n" + too_small + bad_value + too_small + null_pointer);
    EXPECT_EQ(calls_print(new_delivered("lpu"),
                          {"led_patch_func1 0xffffffff =hello 125", "led_patch_func2 0xffffffff =hello 125"}),
              not_supported + not_supported);
}

TEST(LedDriver, UnknownLampsAndInstances) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(
                  board, {"led_get_color 0xffffffff 4", "led_set_color 0xffffffff 4 1 0", "led_get_mode 0xffffffff 4"}),
              no_such_device + no_such_device + no_such_device);
    EXPECT_EQ(calls_print(board, {"led_get_color 0xff000005 0", "led_get_lamptest_support 0xff000005",
                                  "led_get_mode 0xff000006 0", "led_patch_func1 7 =x 125"}),
              not_supported + not_supported + no_such_instance + no_such_instance);
}

TEST(LedDriver, MissingAreas) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        calls_print(board, {"led_get_color 0xffffffff 0 null", "led_get_mode 0xffffffff 0 null",
                            "led_get_lamptest_enable 0xffffffff null", "led_get_lamptest_ctrl_enable 0xffffffff null",
                            "led_get_lamptest_support 0xffffffff null", "led_get_lamptest_status 0xffffffff null"}),
        null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
