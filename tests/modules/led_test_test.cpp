// led_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::string few_words = "[mdio] too few args!\n";

} // namespace

TEST(LedTest, UsageListsTheSubCommandsInOrder) {
    expect_run("led_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " led_func1 inst_id buff_len len\n"
               " led_func2 inst_id buff_len len\n"
               " led_set_lamptest_enable inst_id enable\n"
               " led_get_lamptest_enable inst_id\n"
               " led_set_lamptest_ctrl_enable inst_id enable\n"
               " led_get_lamptest_ctrl_enable inst_id\n"
               " led_get_color inst_id led_type\n"
               " led_set_color inst_id led_type color freq\n"
               " led_get_mode inst_id led_type\n"
               " drv_led_get_lamptest_support inst_id\n"
               " drv_led_get_lamptest_status inst_id\n",
               0);
}

TEST(LedTest, Func1PassesTheTextAndShowsTheAnswer) {
    expect_success("led_test led_func1 0xff000005 'lamp 3 on' 9",
                   "drv_led_patch_func1(inst_id=0xff000005, buffer=\"lamp 3 on\", size=125) = 0 buffer=\"done\"",
                   printed("drv led patch func1:done\r\n", "para[0]=0x0 "));
    expect_success("led_test led_func1 lamp 4",
                   "drv_led_patch_func1(inst_id=0xffffffff, buffer=\"lamp\", size=125) = 0",
                   printed("drv led patch func1:lamp\r\n", "para[0]=0x0 "));
    expect_success("led_test led_func1 1 lamp 4 more", "drv_led_patch_func1(inst_id=1, buffer=\"lamp\", size=125) = 0",
                   printed("drv led patch func1:lamp\r\n", "para[0]=0x0 "));
    expect_success("led_test led_func1 panel %s%n many",
                   "drv_led_patch_func1(inst_id=0, buffer=\"%s%n\", size=125) = 0",
                   printed("drv led patch func1:%s%n\r\n", "para[0]=0x0 "));
    expect_success("led_test led_func1 '' 0", "drv_led_patch_func1(inst_id=0xffffffff, buffer=\"\", size=125) = 0",
                   printed("drv led patch func1:\r\n", "para[0]=0x0 "));
}

TEST(LedTest, Func1ClearsItsAreaAndCutsALongText) {
    const std::string longest(124, 'l');
    expect_success("led_test led_func1 " + longest + " 124",
                   "drv_led_patch_func1(inst_id=0xffffffff, buffer=\"" + longest + "\", size=125) = 0",
                   printed("drv led patch func1:" + longest + "\r\n", "para[0]=0x0 "));
    expect_success("led_test led_func1 " + longest + "x 125",
                   "drv_led_patch_func1(inst_id=0xffffffff, buffer=\"" + longest + "\", size=125) = 0",
                   printed("drv led patch func1:" + longest + "\r\n", "para[0]=0x0 "));
    expect_success("led_test led_func1 " + longest + longest + " 248",
                   "drv_led_patch_func1(inst_id=0xffffffff, buffer=\"" + longest + "\", size=125) = 0",
                   printed("drv led patch func1:" + longest + "\r\n", "para[0]=0x0 "));
    // An answer that fills all 125 bytes is shown whole, and nothing behind it.
    expect_success("led_test led_func1 lamp 4",
                   "drv_led_patch_func1(inst_id=0xffffffff, buffer=\"lamp\", size=125) = 0 buffer=\"" + longest + "m\"",
                   printed("drv led patch func1:" + longest + "m\r\n", "para[0]=0x0 "));
}

TEST(LedTest, Func1FailureAndTooFewWords) {
    expect_failure("led_test led_func1 lamp 4",
                   "drv_led_patch_func1(inst_id=0xffffffff, buffer=\"lamp\", size=125) = 0x12",
                   printed("drv led patch func1 fail, ret:18\r\n", "para[0]=0x12 "));
    expect_failure("led_test led_func1 lamp 4",
                   "drv_led_patch_func1(inst_id=0xffffffff, buffer=\"lamp\", size=125) = 0xffffffff",
                   printed("drv led patch func1 fail, ret:-1\r\n", "para[0]=0xffffffff "));
    expect_failure("led_test led_func1", "", few_words);
    expect_failure("led_test led_func1 lamp", "", few_words);
}

TEST(LedTest, Func2PassesTheTextAndShowsTheAnswer) {
    expect_success("led_test led_func2 0xff000005 'lamp 3 on' 9",
                   "drv_led_patch_func2(inst_id=0xff000005, buffer=\"lamp 3 on\", size=125) = 0 buffer=\"done\"",
                   printed("drv led patch func2:done\r\n", "para[0]=0x0 "));
    expect_success("led_test led_func2 lamp 4",
                   "drv_led_patch_func2(inst_id=0xffffffff, buffer=\"lamp\", size=125) = 0",
                   printed("drv led patch func2:lamp\r\n", "para[0]=0x0 "));
    expect_success("led_test led_func2 1 lamp 4 more", "drv_led_patch_func2(inst_id=1, buffer=\"lamp\", size=125) = 0",
                   printed("drv led patch func2:lamp\r\n", "para[0]=0x0 "));
    expect_success("led_test led_func2 panel lamp many",
                   "drv_led_patch_func2(inst_id=0, buffer=\"lamp\", size=125) = 0",
                   printed("drv led patch func2:lamp\r\n", "para[0]=0x0 "));
}

TEST(LedTest, Func2CutsALongTextFailureAndTooFewWords) {
    const std::string longest(124, 'l');
    expect_success("led_test led_func2 " + longest + "x 125",
                   "drv_led_patch_func2(inst_id=0xffffffff, buffer=\"" + longest + "\", size=125) = 0",
                   printed("drv led patch func2:" + longest + "\r\n", "para[0]=0x0 "));
    expect_failure("led_test led_func2 lamp 4",
                   "drv_led_patch_func2(inst_id=0xffffffff, buffer=\"lamp\", size=125) = 0x811101a4",
                   printed("drv led patch func2 fail, ret:-2129591900\r\n", "para[0]=0x811101a4 "));
    expect_failure("led_test led_func2", "", few_words);
    expect_failure("led_test led_func2 lamp", "", few_words);
}

TEST(LedTest, SetLamptestEnableShowsTheControlsName) {
    expect_success(
        "led_test led_set_lamptest_enable 0xff000005 1",
        "drv_led_set_lamptest_enable(inst_id=0xff000005, enable=1) = 0",
        printed("[ledtest] drv_led_set_lamptest_ctrl_enable success, inst_id = 0xff000005.\r\n", "para[0]=0x0 "));
    expect_success(
        "led_test led_set_lamptest_enable 1", "drv_led_set_lamptest_enable(inst_id=0xffffffff, enable=1) = 0",
        printed("[ledtest] drv_led_set_lamptest_ctrl_enable success, inst_id = 0xffffffff.\r\n", "para[0]=0x0 "));
    expect_success("led_test led_set_lamptest_enable 5 1 7", "drv_led_set_lamptest_enable(inst_id=5, enable=1) = 0",
                   printed("[ledtest] drv_led_set_lamptest_ctrl_enable success, inst_id = 0x5.\r\n", "para[0]=0x0 "));
    expect_success(
        "led_test led_set_lamptest_enable on", "drv_led_set_lamptest_enable(inst_id=0xffffffff, enable=0) = 0",
        printed("[ledtest] drv_led_set_lamptest_ctrl_enable success, inst_id = 0xffffffff.\r\n", "para[0]=0x0 "));
    expect_failure("led_test led_set_lamptest_enable 5 1", "drv_led_set_lamptest_enable(inst_id=5, enable=1) = 0x12",
                   printed("[ledtest] drv_led_set_lamptest_ctrl_enable fail, inst_id = 0x5.\r\n", "para[0]=0x12 "));
    expect_failure("led_test led_set_lamptest_enable", "", few_words);
}

TEST(LedTest, GetLamptestEnableShowsTheControlsName) {
    expect_success("led_test led_get_lamptest_enable 0xff000005",
                   "drv_led_get_lamptest_enable(inst_id=0xff000005) = 0 enable=1",
                   printed("[ledtest] drv_led_get_lamptest_ctrl_enable success, inst_id = 0xff000005, enable=0x1\r\n",
                           "para[0]=0x0 para[1]=0x1 "));
    expect_success("led_test led_get_lamptest_enable", "drv_led_get_lamptest_enable(inst_id=0xffffffff) = 0 enable=10",
                   printed("[ledtest] drv_led_get_lamptest_ctrl_enable success, inst_id = 0xffffffff, enable=0xa\r\n",
                           "para[0]=0x0 para[1]=0xa "));
    expect_success("led_test led_get_lamptest_enable 5 6", "drv_led_get_lamptest_enable(inst_id=5) = 0 enable=0",
                   printed("[ledtest] drv_led_get_lamptest_ctrl_enable success, inst_id = 0x5, enable=0x0\r\n",
                           "para[0]=0x0 para[1]=0x0 "));
    expect_success("led_test led_get_lamptest_enable panel", "drv_led_get_lamptest_enable(inst_id=0) = 0 enable=1",
                   printed("[ledtest] drv_led_get_lamptest_ctrl_enable success, inst_id = 0x0, enable=0x1\r\n",
                           "para[0]=0x0 para[1]=0x1 "));
    expect_failure("led_test led_get_lamptest_enable", "drv_led_get_lamptest_enable(inst_id=0xffffffff) = 0x12",
                   printed("[ledtest] drv_led_get_lamptest_ctrl_enable fail, inst_id = 0xffffffff.\r\n",
                           "para[0]=0x12 para[1]=0x0 "));
}

TEST(LedTest, SetLamptestCtrlEnable) {
    expect_success(
        "led_test led_set_lamptest_ctrl_enable 0xff000005 1",
        "drv_led_set_lamptest_ctrl_enable(inst_id=0xff000005, enable=1) = 0",
        printed("[ledtest] drv_led_set_lamptest_ctrl_enable success, inst_id = 0xff000005.\r\n", "para[0]=0x0 "));
    expect_success(
        "led_test led_set_lamptest_ctrl_enable 1", "drv_led_set_lamptest_ctrl_enable(inst_id=0xffffffff, enable=1) = 0",
        printed("[ledtest] drv_led_set_lamptest_ctrl_enable success, inst_id = 0xffffffff.\r\n", "para[0]=0x0 "));
    expect_success("led_test led_set_lamptest_ctrl_enable 5 1 7",
                   "drv_led_set_lamptest_ctrl_enable(inst_id=5, enable=1) = 0",
                   printed("[ledtest] drv_led_set_lamptest_ctrl_enable success, inst_id = 0x5.\r\n", "para[0]=0x0 "));
    expect_success(
        "led_test led_set_lamptest_ctrl_enable on",
        "drv_led_set_lamptest_ctrl_enable(inst_id=0xffffffff, enable=0) = 0",
        printed("[ledtest] drv_led_set_lamptest_ctrl_enable success, inst_id = 0xffffffff.\r\n", "para[0]=0x0 "));
    expect_failure("led_test led_set_lamptest_ctrl_enable 5 1",
                   "drv_led_set_lamptest_ctrl_enable(inst_id=5, enable=1) = 0x12",
                   printed("[ledtest] drv_led_set_lamptest_ctrl_enable fail, inst_id = 0x5.\r\n", "para[0]=0x12 "));
    expect_failure("led_test led_set_lamptest_ctrl_enable", "", few_words);
}

TEST(LedTest, GetLamptestCtrlEnable) {
    expect_success("led_test led_get_lamptest_ctrl_enable 0xff000005",
                   "drv_led_get_lamptest_ctrl_enable(inst_id=0xff000005) = 0 enable=1",
                   printed("[ledtest] drv_led_get_lamptest_ctrl_enable success, inst_id = 0xff000005, enable=0x1\r\n",
                           "para[0]=0x0 para[1]=0x1 "));
    expect_success("led_test led_get_lamptest_ctrl_enable",
                   "drv_led_get_lamptest_ctrl_enable(inst_id=0xffffffff) = 0 enable=10",
                   printed("[ledtest] drv_led_get_lamptest_ctrl_enable success, inst_id = 0xffffffff, enable=0xa\r\n",
                           "para[0]=0x0 para[1]=0xa "));
    expect_success("led_test led_get_lamptest_ctrl_enable 5 6",
                   "drv_led_get_lamptest_ctrl_enable(inst_id=5) = 0 enable=0",
                   printed("[ledtest] drv_led_get_lamptest_ctrl_enable success, inst_id = 0x5, enable=0x0\r\n",
                           "para[0]=0x0 para[1]=0x0 "));
    expect_success("led_test led_get_lamptest_ctrl_enable panel",
                   "drv_led_get_lamptest_ctrl_enable(inst_id=0) = 0 enable=1",
                   printed("[ledtest] drv_led_get_lamptest_ctrl_enable success, inst_id = 0x0, enable=0x1\r\n",
                           "para[0]=0x0 para[1]=0x1 "));
    expect_failure("led_test led_get_lamptest_ctrl_enable",
                   "drv_led_get_lamptest_ctrl_enable(inst_id=0xffffffff) = 0x12",
                   printed("[ledtest] drv_led_get_lamptest_ctrl_enable fail, inst_id = 0xffffffff.\r\n",
                           "para[0]=0x12 para[1]=0x0 "));
}

TEST(LedTest, GetColor) {
    expect_success("led_test led_get_color 0xff000005 16",
                   "drv_led_get_color(inst_id=0xff000005, led_type=16) = 0 color=3 freq=20",
                   printed("[ledtest] drv_led_get_color inst_id=0xff000005, led_type=0x10, color=0x3, freq=0x14\r\n",
                           "para[0]=0x0 para[1]=0x3 para[2]=0x14 "));
    expect_success("led_test led_get_color 2", "drv_led_get_color(inst_id=0xffffffff, led_type=2) = 0 color=1 freq=0",
                   printed("[ledtest] drv_led_get_color inst_id=0xffffffff, led_type=0x2, color=0x1, freq=0x0\r\n",
                           "para[0]=0x0 para[1]=0x1 para[2]=0x0 "));
    expect_success("led_test led_get_color 1 2 3", "drv_led_get_color(inst_id=1, led_type=2) = 0 color=1 freq=5",
                   printed("[ledtest] drv_led_get_color inst_id=0x1, led_type=0x2, color=0x1, freq=0x5\r\n",
                           "para[0]=0x0 para[1]=0x1 para[2]=0x5 "));
    expect_success("led_test led_get_color lamp",
                   "drv_led_get_color(inst_id=0xffffffff, led_type=0) = 0 color=1 freq=5",
                   printed("[ledtest] drv_led_get_color inst_id=0xffffffff, led_type=0x0, color=0x1, freq=0x5\r\n",
                           "para[0]=0x0 para[1]=0x1 para[2]=0x5 "));
    expect_failure("led_test led_get_color 2", "drv_led_get_color(inst_id=0xffffffff, led_type=2) = 0x811101a4",
                   printed("[ledtest] drv_led_get_color fail, ret = 0x811101a4!\r\n",
                           "para[0]=0x811101a4 para[1]=0x0 para[2]=0x0 "));
    expect_failure("led_test led_get_color", "", few_words);
}

TEST(LedTest, SetColor) {
    expect_success("led_test led_set_color 0xff000005 16 3 20",
                   "drv_led_set_color(inst_id=0xff000005, led_type=16, color=3, freq=20) = 0",
                   printed("[ledtest] drv_led_set_color inst_id=0xff000005, led_type=0x10, color=0x3, freq=0x14\r\n",
                           "para[0]=0x0 "));
    expect_success("led_test led_set_color 2 1 0",
                   "drv_led_set_color(inst_id=0xffffffff, led_type=2, color=1, freq=0) = 0",
                   printed("[ledtest] drv_led_set_color inst_id=0xffffffff, led_type=0x2, color=0x1, freq=0x0\r\n",
                           "para[0]=0x0 "));
    expect_success(
        "led_test led_set_color 1 2 3 4 5", "drv_led_set_color(inst_id=1, led_type=2, color=3, freq=4) = 0",
        printed("[ledtest] drv_led_set_color inst_id=0x1, led_type=0x2, color=0x3, freq=0x4\r\n", "para[0]=0x0 "));
    expect_success("led_test led_set_color lamp red fast",
                   "drv_led_set_color(inst_id=0xffffffff, led_type=0, color=0, freq=0) = 0",
                   printed("[ledtest] drv_led_set_color inst_id=0xffffffff, led_type=0x0, color=0x0, freq=0x0\r\n",
                           "para[0]=0x0 "));
    expect_failure("led_test led_set_color 2 9 0",
                   "drv_led_set_color(inst_id=0xffffffff, led_type=2, color=9, freq=0) = 0x12",
                   printed("[ledtest] drv_led_set_color fail, ret = 0x12!\r\n", "para[0]=0x12 "));
    expect_failure("led_test led_set_color", "", few_words);
    expect_failure("led_test led_set_color 2 1", "", few_words);
}

TEST(LedTest, GetMode) {
    expect_success("led_test led_get_mode 0xff000005 16",
                   "drv_led_get_mode(inst_id=0xff000005, led_type=16) = 0 mode=1",
                   printed("[ledtest] drv_led_get_mode inst_id=0xff000005, led_type=0x10, mode=0x1\r\n",
                           "para[0]=0x0 para[1]=0x1 "));
    expect_success("led_test led_get_mode 2", "drv_led_get_mode(inst_id=0xffffffff, led_type=2) = 0 mode=26",
                   printed("[ledtest] drv_led_get_mode inst_id=0xffffffff, led_type=0x2, mode=0x1a\r\n",
                           "para[0]=0x0 para[1]=0x1a "));
    expect_success(
        "led_test led_get_mode 1 2 3", "drv_led_get_mode(inst_id=1, led_type=2) = 0 mode=0",
        printed("[ledtest] drv_led_get_mode inst_id=0x1, led_type=0x2, mode=0x0\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("led_test led_get_mode lamp", "drv_led_get_mode(inst_id=0xffffffff, led_type=0) = 0 mode=1",
                   printed("[ledtest] drv_led_get_mode inst_id=0xffffffff, led_type=0x0, mode=0x1\r\n",
                           "para[0]=0x0 para[1]=0x1 "));
    expect_failure("led_test led_get_mode 2", "drv_led_get_mode(inst_id=0xffffffff, led_type=2) = 0x12",
                   printed("[ledtest] drv_led_get_mode fail, ret = 0x12!\r\n", "para[0]=0x12 para[1]=0x0 "));
    expect_failure("led_test led_get_mode", "", few_words);
}

TEST(LedTest, GetLamptestSupport) {
    expect_success(
        "led_test led_get_lamptest_support 0xff000005",
        "drv_led_get_lamptest_support(inst_id=0xff000005) = 0 support=1",
        printed("[ledtest] led_get_lamptest_support inst_id=0xff000005, support=0x1\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success(
        "led_test led_get_lamptest_support", "drv_led_get_lamptest_support(inst_id=0xffffffff) = 0 support=10",
        printed("[ledtest] led_get_lamptest_support inst_id=0xffffffff, support=0xa\r\n", "para[0]=0x0 para[1]=0xa "));
    expect_success(
        "led_test led_get_lamptest_support 5 6", "drv_led_get_lamptest_support(inst_id=5) = 0 support=0",
        printed("[ledtest] led_get_lamptest_support inst_id=0x5, support=0x0\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success(
        "led_test led_get_lamptest_support panel", "drv_led_get_lamptest_support(inst_id=0) = 0 support=1",
        printed("[ledtest] led_get_lamptest_support inst_id=0x0, support=0x1\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_failure("led_test led_get_lamptest_support", "drv_led_get_lamptest_support(inst_id=0xffffffff) = 0x12",
                   printed("[ledtest] led_get_lamptest_support fail, ret = 0x12!\r\n", "para[0]=0x12 para[1]=0x0 "));
}

TEST(LedTest, GetLamptestStatus) {
    expect_success(
        "led_test led_get_lamptest_status 0xff000005", "drv_led_get_lamptest_status(inst_id=0xff000005) = 0 status=1",
        printed("[ledtest] led_get_lamptest_status inst_id=0xff000005, status=0x1\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_success(
        "led_test led_get_lamptest_status", "drv_led_get_lamptest_status(inst_id=0xffffffff) = 0 status=10",
        printed("[ledtest] led_get_lamptest_status inst_id=0xffffffff, status=0xa\r\n", "para[0]=0x0 para[1]=0xa "));
    expect_success(
        "led_test led_get_lamptest_status 5 6", "drv_led_get_lamptest_status(inst_id=5) = 0 status=0",
        printed("[ledtest] led_get_lamptest_status inst_id=0x5, status=0x0\r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success(
        "led_test led_get_lamptest_status panel", "drv_led_get_lamptest_status(inst_id=0) = 0 status=1",
        printed("[ledtest] led_get_lamptest_status inst_id=0x0, status=0x1\r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_failure("led_test led_get_lamptest_status", "drv_led_get_lamptest_status(inst_id=0xffffffff) = 0x12",
                   printed("[ledtest] led_get_lamptest_status fail, ret = 0x12!\r\n", "para[0]=0x12 para[1]=0x0 "));
}

TEST(LedTest, TheHelpTextsOfSupportAndStatusNameNoSubCommand) {
    expect_run("led_test drv_led_get_lamptest_status 5", "",
               "kestro_test: option drv_led_get_lamptest_status not recognised.\n"
               "\ndrv_led_get_lamptest_status 5 \nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " led_func1 inst_id buff_len len\n"
               " led_func2 inst_id buff_len len\n"
               " led_set_lamptest_enable inst_id enable\n"
               " led_get_lamptest_enable inst_id\n"
               " led_set_lamptest_ctrl_enable inst_id enable\n"
               " led_get_lamptest_ctrl_enable inst_id\n"
               " led_get_color inst_id led_type\n"
               " led_set_color inst_id led_type color freq\n"
               " led_get_mode inst_id led_type\n"
               " drv_led_get_lamptest_support inst_id\n"
               " drv_led_get_lamptest_status inst_id\n",
               0);
}
