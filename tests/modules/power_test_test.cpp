// power_test: every sub-command on the real program, with the driver scripted; power_test_label_test.cpp has those of
// board properties, power_test_onekey_test.cpp and power_test_board_test.cpp the one-key tests.
#include <gtest/gtest.h>

#include "tests/modules/power_rows.h"
#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

TEST(PowerTest, UsageListsTheSubCommands) {
    expect_run("power_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " power_get_property          slot_id power_id type\n"
               " power_set_property          slot_id power_id type value\n"
               " power_get_num               slot_id\n"
               " power_get_board_property    slot_id power_id type\n"
               " power_set_board_property    slot_id power_id type\n"
               " power_get_alarm             slot_id power_id type\n"
               " power_get_softver           slot_id power_id soft_id module_id\n"
               " power_get_bbox_info         slot_id power_id len\n"
               " power_get_software_info     slot_id power_id\n"
               " power_init                  slot_id power_id\n"
               " power_deinit                slot_id power_id\n"
               " power_patch_func1           null\n"
               " power_patch_func2           null\n"
               " power_onekey_test_all       slot_id\n"
               " power_onekey_test_display   slot_id\n"
               " power_onekey_test_config    slot_id\n"
               " power_onekey_test_init      slot_id\n"
               " power_onekey_test_software  slot_id (load file:/opt/hostx/home/power_app.bin)\n",
               0);
}

TEST(PowerTest, GetProperty) {
    expect_success(
        "power_test power_get_property 13 1 0x11",
        "drv_power_get_property(slot_id=13, power_id=1, type=17) = 0 value=0x24",
        printed("Success: slot 13 power 1 get POWER_TEMPERATURE 0x11 value 0x24.\r\n", "para[0]=0x0 para[1]=0x24 "));
    expect_success("power_test power_get_property 015 0xffffffff 3 more words",
                   "drv_power_get_property(slot_id=13, power_id=0xffffffff, type=3) = 0 value=0xffffffff",
                   printed("Success: slot 13 power 4294967295 get POWER_RATED_POWER 0x3 value 0xffffffff.\r\n",
                           "para[0]=0x0 para[1]=0xffffffff "));
    expect_success("power_test power_get_property frame place type",
                   "drv_power_get_property(slot_id=0, power_id=0, type=0) = 0 value=1",
                   printed("Success: slot 0 power 0 get unknown 0x0 value 0x1.\r\n", "para[0]=0x0 para[1]=0x1 "));
}

TEST(PowerTest, GetPropertyShowsTenWhereTheDriverWritesNothing) {
    expect_success("power_test power_get_property 13 1 2", "drv_power_get_property(slot_id=13, power_id=1, type=2) = 0",
                   printed("Success: slot 13 power 1 get POWER_GOOD 0x2 value 0xa.\r\n", "para[0]=0x0 para[1]=0xa "));
    expect_failure("power_test power_get_property 13 1 2",
                   "drv_power_get_property(slot_id=13, power_id=1, type=2) = 0x811101a4",
                   printed("Error  : slot 13 power 1 get POWER_GOOD 0x2 fail. ret 0x811101a4\r\n",
                           "para[0]=0x811101a4 para[1]=0xa "));
}

TEST(PowerTest, GetPropertyFailure) {
    expect_failure(
        "power_test power_get_property 13 1 77",
        "drv_power_get_property(slot_id=13, power_id=1, type=77) = 0x12 value=7",
        printed("Error  : slot 13 power 1 get unknown 0x4d fail. ret 0x12\r\n", "para[0]=0x12 para[1]=0x7 "));
    expect_silent_refusal("power_get_property", {"13", "1"});
}

TEST(PowerTest, PropertiesAreCalledByTheirNames) {
    for (const named_number &property : power_property_names) {
        const std::string number = std::to_string(property.number);
        const std::string named = property.name + (" " + hex_text(property.number));
        expect_success("power_test power_get_property 1 2 " + number,
                       "drv_power_get_property(slot_id=1, power_id=2, type=" + number + ") = 0 value=3",
                       printed("Success: slot 1 power 2 get " + named + " value 0x3.\r\n", "para[0]=0x0 para[1]=0x3 "));
    }
    expect_success("power_test power_set_property 1 2 4294967295 3",
                   "drv_power_set_property(slot_id=1, power_id=2, type=0xffffffff, value=3) = 0",
                   "Success: slot 1 power 2 set unknown 0xffffffff value 0x3.\r\n");
}

TEST(PowerTest, SetProperty) {
    expect_success("power_test power_set_property 13 1 0x1b 10",
                   "drv_power_set_property(slot_id=13, power_id=1, type=27, value=10) = 0",
                   "Success: slot 13 power 1 set POWER_STARTUP_DELAY 0x1b value 0xa.\r\n");
    expect_success("power_test power_set_property 13 1 27 010 11",
                   "drv_power_set_property(slot_id=13, power_id=1, type=27, value=8) = 0",
                   "Success: slot 13 power 1 set POWER_STARTUP_DELAY 0x1b value 0x8.\r\n");
    expect_success("power_test power_set_property 13 1 27 ten",
                   "drv_power_set_property(slot_id=13, power_id=1, type=27, value=0) = 0",
                   "Success: slot 13 power 1 set POWER_STARTUP_DELAY 0x1b value 0x0.\r\n");
}

TEST(PowerTest, SetPropertyWithoutAValueSets255) {
    expect_success("power_test power_set_property 13 1 5",
                   "drv_power_set_property(slot_id=13, power_id=1, type=5, value=255) = 0",
                   "Success: slot 13 power 1 set POWER_TEMP_LIMIT 0x5 value 0xff.\r\n");
}

TEST(PowerTest, SetPropertyFailure) {
    expect_failure("power_test power_set_property 13 1 26 1",
                   "drv_power_set_property(slot_id=13, power_id=1, type=26, value=1) = 0x811101a4",
                   "Error  : slot 13 power 1 set POWER_ENABLE_CTRL 0x1a fail. ret 0x811101a4\r\n");
    expect_silent_refusal("power_set_property", {"13", "1"});
}

TEST(PowerTest, GetNum) {
    expect_success("power_test power_get_num 13", "drv_power_get_num(slot_id=13) = 0 num=4",
                   "Success: slot 13 power num 4 \r\n");
    expect_success("power_test power_get_num frame 2", "drv_power_get_num(slot_id=0) = 0",
                   "Success: slot 0 power num 0 \r\n");
    expect_failure("power_test power_get_num 0x10", "drv_power_get_num(slot_id=16) = 0x811101a4 num=4",
                   "Error  : get num fail. ret 0x811101a4\r\n");
    expect_silent_refusal("power_get_num", {});
}

TEST(PowerTest, GetAlarm) {
    expect_success("power_test power_get_alarm 13 1 0xa",
                   "drv_power_get_alarm(slot_id=13, power_id=1, type=10) = 0 alarms=0x80 sub_alarm=1",
                   printed("Success: slot 13 power 1 get POWER_ALARM_FAN 0xa result 0x80 sub_result 0x1.\r\n",
                           "para[0]=0x0 para[1]=0x80 para[2]=0x1 "));
    expect_success("power_test power_get_alarm x 1 16 4", "drv_power_get_alarm(slot_id=0, power_id=1, type=16) = 0",
                   printed("Success: slot 0 power 1 get unknown 0x10 result 0x0 sub_result 0x0.\r\n",
                           "para[0]=0x0 para[1]=0x0 para[2]=0x0 "));
    expect_failure("power_test power_get_alarm 13 1 13",
                   "drv_power_get_alarm(slot_id=13, power_id=1, type=13) = 0x811101a4 alarms=3 sub_alarm=2",
                   printed("Error  : slot 13 power 1 get POWER_ALARM_INPUT 0xd fail. ret 0x811101a4\r\n",
                           "para[0]=0x811101a4 para[1]=0x3 para[2]=0x2 "));
    expect_silent_refusal("power_get_alarm", {"13", "1"});
}

TEST(PowerTest, AlarmsAreCalledByTheirNames) {
    constexpr named_number names[] = {
        {0, "unknown"},
        {1, "POWER_ALARM_CMD"},
        {2, "POWER_ALARM_TEMPERATURE"},
        {3, "POWER_ALARM_VIN_UV_FAULT"},
        {4, "POWER_ALARM_IOUT_OC_FAULT"},
        {5, "POWER_ALARM_VOUT_OV_FAULT"},
        {6, "POWER_ALARM_VIN_OV_DETECT"},
        {7, "POWER_ALARM_VIN_UNIT_OFF"},
        {8, "unknown"},
        {9, "POWER_ALARM_OTHER"},
        {10, "POWER_ALARM_FAN"},
        {11, "unknown"},
        {12, "unknown"},
        {13, "POWER_ALARM_INPUT"},
        {14, "POWER_ALARM_IOUT_POUT"},
        {15, "POWER_ALARM_VOUT"},
        {16, "unknown"},
    };
    for (const named_number &alarm : names) {
        const std::string number = std::to_string(alarm.number);
        const std::string named = alarm.name + (" " + hex_text(alarm.number));
        expect_success("power_test power_get_alarm 1 2 " + number,
                       "drv_power_get_alarm(slot_id=1, power_id=2, type=" + number + ") = 0 alarms=5 sub_alarm=6",
                       printed("Success: slot 1 power 2 get " + named + " result 0x5 sub_result 0x6.\r\n",
                               "para[0]=0x0 para[1]=0x5 para[2]=0x6 "));
    }
}

TEST(PowerTest, GetSoftver) {
    const std::string rule = "drv_power_get_softver(slot_id=13, power_id=1, soft_id=31, module_id=2)";
    expect_success("power_test power_get_softver 13 1 0x1f 2", rule + " = 0 version=204",
                   "Success: slot 13 power 1 get software version. 204 \r\n");
    expect_success("power_test power_get_softver 13 1 0x1f 2 9", rule + " = 0",
                   "Success: slot 13 power 1 get software version. 0 \r\n");
    expect_success("power_test power_get_softver 13 1 0x1f 2", rule + " = 0x811101a4",
                   "Success: slot 13 power 1 not support get software version. ret 0x811101a4\r\n");
    expect_failure("power_test power_get_softver a b c d",
                   "drv_power_get_softver(slot_id=0, power_id=0, soft_id=0, module_id=0) = 0x12",
                   "Error  : slot 0 power 0 get software version fail. ret 0x12\r\n");
    expect_silent_refusal("power_get_softver", {"13", "1", "31"});
}

TEST(PowerTest, GetBboxInfo) {
    expect_success("power_test power_get_bbox_info 13 1 0xc",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=12) = 0 buffer=[41 42 00 ff] retlen=8",
                   "Success: slot 13 power 1 get bbox info return length 8 \r\n"
                   "65 66 0 255 0 0 0 0 0 0 0 0 \r\n"
                   "Success: slot 13 power 1 get bbox info AB \r\n");
    expect_success("power_test power_get_bbox_info 13 1 len 5",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=0) = 0",
                   "Success: slot 13 power 1 get bbox info return length 0 \r\n"
                   "\r\n"
                   "Success: slot 13 power 1 get bbox info  \r\n");
    expect_success("power_test power_get_bbox_info 13 1 3",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=3) = 0 buffer=\"FFF\" retlen=16",
                   "Success: slot 13 power 1 get bbox info return length 16 \r\n"
                   "70 70 70 \r\n"
                   "Success: slot 13 power 1 get bbox info FFF \r\n");
}

TEST(PowerTest, GetBboxInfoFailure) {
    expect_success("power_test power_get_bbox_info 13 1 16",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=16) = 0x811101a4",
                   "Success: slot 13 power 1 not support get bbox info. ret 0x811101a4\r\n");
    expect_failure("power_test power_get_bbox_info 13 1 16",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=16) = 0x12",
                   "Error  : slot 13 power 1 get bbox info fail. ret 0x12\r\n");
    expect_failure("power_test power_get_bbox_info 13 1 16",
                   "drv_power_get_bbox_info(slot_id=13, power_id=1, len=16) = 0 retlen=12",
                   "Error  : slot 13 power 1 get bbox info return length fail. length 0xc\r\n");
    expect_failure("power_test power_get_bbox_info 13 1 -1", "", "malloc fail.\r\n");
    expect_silent_refusal("power_get_bbox_info", {"13", "1"});
}

TEST(PowerTest, GetBboxInfoWithoutMemory) {
    expect_without_text_area("power_test power_get_bbox_info 13 1 16", "drv_power_get_bbox_info = 0 retlen=8",
                             std::string("malloc fail.\r\n") + timing_lines + operate_fail("power_get_bbox_info") +
                                 operate_fail("power_test"),
                             255);
}

TEST(PowerTest, GetSoftwareInfo) {
    expect_success("power_test power_get_software_info 13 1 9",
                   "drv_power_get_software_info(slot_id=13, power_id=1) = 0 "
                   "info={soft_cnt=2 software=[{soft_id=1 module_num=255} {soft_id=0x1f module_num=2}]}\n"
                   "drv_power_get_softver(slot_id=13, power_id=1, soft_id=1, module_id=0) = 0 version=204\n"
                   "drv_power_get_softver(slot_id=13, power_id=1, soft_id=31, module_id=0) = 0 version=117\n"
                   "drv_power_get_softver(slot_id=13, power_id=1, soft_id=31, module_id=1) = 0x12",
                   "Success: slot 13 power 1 get software info. soft_cnt 2 \r\n"
                   "soft_id 0x1 module_num 0xff\r\n"
                   "Success: slot 13 power 1 soft_id 0x1 module_id 0x0 version 204\r\n"
                   "soft_id 0x1f module_num 0x2\r\n"
                   "Success: slot 13 power 1 soft_id 0x1f module_id 0x0 version 117\r\n"
                   "Error  : slot 13 power 1 soft_id 0x1f module_id 0x1 get version fail. ret 0x12\r\n");
    expect_success("power_test power_get_software_info 13 1",
                   "drv_power_get_software_info(slot_id=13, power_id=1) = 0x811101a4",
                   "Success: slot 13 power 1 not support get software info. ret 0x811101a4\r\n");
    expect_failure("power_test power_get_software_info frame 0x1",
                   "drv_power_get_software_info(slot_id=0, power_id=1) = 0x12",
                   "Error  : slot 0 power 1 get software info fail. ret 0x12\r\n");
    expect_silent_refusal("power_get_software_info", {"13"});
}

TEST(PowerTest, Init) {
    expect_success("power_test power_init 13 0x1", "drv_power_init(slot_id=13, power_id=1) = 0",
                   "Success: slot 13 power 1 init success. \r\n");
    expect_success("power_test power_init frame 2 3", "drv_power_init(slot_id=0, power_id=2) = 0",
                   "Success: slot 0 power 2 init success. \r\n");
    expect_failure("power_test power_init 13 1", "drv_power_init(slot_id=13, power_id=1) = 0x811101a4",
                   "Error  : slot 13 power 1 init fail . ret = 0x811101a4 \r\n");
    expect_silent_refusal("power_init", {"13"});
}

TEST(PowerTest, Deinit) {
    expect_success("power_test power_deinit 13 0x1", "drv_power_deinit(slot_id=13, power_id=1) = 0",
                   "Success: slot 13 power 1 deinit success. \r\n");
    expect_success("power_test power_deinit frame 2 3", "drv_power_deinit(slot_id=0, power_id=2) = 0",
                   "Success: slot 0 power 2 deinit success. \r\n");
    expect_failure("power_test power_deinit 13 1", "drv_power_deinit(slot_id=13, power_id=1) = 0x811101a4",
                   "Error  : slot 13 power 1 deinit fail . ret = 0x811101a4 \r\n");
    expect_silent_refusal("power_deinit", {"13"});
}

// What the driver answers is not looked at, and no word is either.
TEST(PowerTest, PatchFunctions) {
    for (const std::string number : {"1", "2"}) {
        const std::string name = "power_patch_func" + number;
        const std::string rule = "drv_" + name + "(text=\"test start " + number + "\", len=12)";
        expect_success("power_test " + name, rule + " = 0", "");
        expect_success("power_test " + name + " null 2", rule + " = 0x811101a4", "");
    }
}
