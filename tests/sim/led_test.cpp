// Panel lamps: colours and blinking are read back, the lamp test is consistent, patch functions answer in place.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

TEST(LedDriver, ColorIsReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_led_get_color(led_type=0)", "drv_led_set_color(led_type=0, color=3, freq=100)"}),
              "0x0 color=1 freq=5\n0x0\n");
    EXPECT_EQ(answers(board, {"drv_led_get_color(led_type=0)", "drv_led_get_color(inst_id=0xff000009, led_type=0)",
                              "drv_led_get_color(led_type=1)"}),
              "0x0 color=3 freq=100\n0x0 color=3 freq=100\n0x0 color=0 freq=0\n");
}

TEST(LedDriver, LampsHaveTheirOwnColors) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_led_set_color(led_type=1, color=1, freq=0)",
                              "drv_led_set_color(led_type=1, color=2, freq=0)",
                              "drv_led_set_color(led_type=0, color=4, freq=0)",
                              "drv_led_set_color(led_type=0, color=0xffffffff, freq=0)",
                              "drv_led_set_color(led_type=0, color=1, freq=101)", "drv_led_get_color(led_type=0)",
                              "drv_led_get_color(led_type=1)"}),
              bad_value + ok + bad_value + bad_value + bad_value + "0x0 color=1 freq=5\n0x0 color=2 freq=0\n");
}

TEST(LedDriver, HardwareDrivenLampIsNotSet) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_led_get_mode(led_type=0)", "drv_led_get_mode(led_type=3)",
                              "drv_led_set_color(led_type=3, color=0, freq=0)", "drv_led_get_color(led_type=3)"}),
              "0x0 mode=1\n0x0 mode=0\n" + not_supported + "0x0 color=1 freq=0\n");
}

TEST(LedDriver, LampTestStatusFollowsEnable) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_led_get_lamptest_support()", "drv_led_get_lamptest_enable()",
                              "drv_led_get_lamptest_status()", "drv_led_get_lamptest_ctrl_enable()",
                              "drv_led_set_lamptest_enable(enable=1)"}),
              "0x0 support=1\n0x0 enable=0\n0x0 status=0\n0x0 enable=0\n0x0\n");
    EXPECT_EQ(answers(board, {"drv_led_get_lamptest_enable()", "drv_led_get_lamptest_status()",
                              "drv_led_get_lamptest_ctrl_enable()", "drv_led_set_lamptest_ctrl_enable(enable=1)",
                              "drv_led_set_lamptest_enable(enable=0)"}),
              "0x0 enable=1\n0x0 status=1\n0x0 enable=0\n0x0\n0x0\n");
    EXPECT_EQ(answers(board, {"drv_led_get_lamptest_enable()", "drv_led_get_lamptest_status()",
                              "drv_led_get_lamptest_ctrl_enable()", "drv_led_set_lamptest_enable(enable=2)",
                              "drv_led_set_lamptest_ctrl_enable(enable=2)"}),
              "0x0 enable=0\n0x0 status=0\n0x0 enable=1\n" + bad_value + bad_value);
}

TEST(LedDriver, PanelWithoutLampTest) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {"drv_led_get_lamptest_support()", "drv_led_get_lamptest_enable()",
                              "drv_led_set_lamptest_enable(enable=1)", "drv_led_get_lamptest_ctrl_enable()",
                              "drv_led_set_lamptest_ctrl_enable(enable=1)", "drv_led_get_lamptest_status()"}),
              "0x0 support=0\n" + not_supported + not_supported + not_supported + not_supported + not_supported);
}

TEST(LedDriver, PatchFunctionsAnswerInPlace) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_led_patch_func1(buffer=\"hello\", size=125)",
                              "drv_led_patch_func2(buffer=\"x\", size=125)"}),
              "0x0 buffer=\"panel logic: hello\"\n0x0 buffer=\"panel wiring: x\"\n");
    EXPECT_EQ(
        answers(board,
                {"drv_led_patch_func1(buffer=\"hello\", size=19)", "drv_led_patch_func1(buffer=\"hello\", size=18)",
                 "drv_led_patch_func1(buffer=\"hello\", size=5)", "drv_led_patch_func1(buffer=\"hello\", size=0)",
                 "drv_led_patch_func2(buffer=null, size=125)"}),
        "0x0 buffer=\"panel logic: hello\"\n" + too_small + bad_value + too_small + null_pointer);
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_led_patch_func1(buffer=\"hello\", size=125)",
                                             "drv_led_patch_func2(buffer=\"hello\", size=125)"}),
              not_supported + not_supported);
}

TEST(LedDriver, UnknownLampsAndInstances) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_led_get_color(led_type=4)", "drv_led_set_color(led_type=4, color=1, freq=0)",
                              "drv_led_get_mode(led_type=4)"}),
              no_such_device + no_such_device + no_such_device);
    EXPECT_EQ(answers(board, {"drv_led_get_color(inst_id=0xff000005, led_type=0)",
                              "drv_led_get_lamptest_support(inst_id=0xff000005)",
                              "drv_led_get_mode(inst_id=0xff000006, led_type=0)",
                              "drv_led_patch_func1(inst_id=7, buffer=\"x\", size=125)"}),
              not_supported + not_supported + no_such_instance + no_such_instance);
}

TEST(LedDriver, MissingAreas) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {"drv_led_get_color(led_type=0, color=null)", "drv_led_get_mode(led_type=0, mode=null)",
                        "drv_led_get_lamptest_enable(enable=null)", "drv_led_get_lamptest_ctrl_enable(enable=null)",
                        "drv_led_get_lamptest_support(support=null)", "drv_led_get_lamptest_status(status=null)"}),
        null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
