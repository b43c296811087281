// tempdetec_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(TempdetecTest, UsageListsTheSubCommand) {
    expect_run("tempdetec_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " tempdetec_get_temperature\n",
               0);
}

TEST(TempdetecTest, GetTemperature) {
    expect_success("tempdetec_test tempdetec_get_temperature 0xff000007 1 2",
                   "drv_tempdetec_get_temperature(inst_id=0xff000007, chip_id=1, channel=2) = 0 temperature=47",
                   "drv_tempdetec_get_temperature:[ret]:0\r\ntemperature:47\r\n");
    expect_success("tempdetec_test tempdetec_get_temperature 1 0x2",
                   "drv_tempdetec_get_temperature(inst_id=0xffffffff, chip_id=1, channel=2) = 0 temperature=-12",
                   "drv_tempdetec_get_temperature:[ret]:0\r\ntemperature:-12\r\n");
    expect_success("tempdetec_test tempdetec_get_temperature 1 2 3 4",
                   "drv_tempdetec_get_temperature(inst_id=1, chip_id=2, channel=3) = 0 temperature=0",
                   "drv_tempdetec_get_temperature:[ret]:0\r\ntemperature:0\r\n");
    expect_success("tempdetec_test tempdetec_get_temperature chip channel",
                   "drv_tempdetec_get_temperature(inst_id=0xffffffff, chip_id=0, channel=0) = 0 temperature=25",
                   "drv_tempdetec_get_temperature:[ret]:0\r\ntemperature:25\r\n");
}

TEST(TempdetecTest, GetTemperatureWithFailureAndTooFewWords) {
    expect_failure("tempdetec_test tempdetec_get_temperature 1 2",
                   "drv_tempdetec_get_temperature(inst_id=0xffffffff, chip_id=1, channel=2) = 0x811101a4",
                   "drv_tempdetec_get_temperature:[ret]:-2129591900\r\ntemperature:0\r\n");
    expect_failure("tempdetec_test tempdetec_get_temperature", "", "");
    expect_failure("tempdetec_test tempdetec_get_temperature 1", "", "");
}
