// voltage_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

TEST(VoltageTest, UsageListsTheSubCommandsInOrder) {
    expect_run("voltage_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " voltage_get_value  inst_id voltage_id \n"
               " voltage_set_value\n"
               " voltage_get_warning_th\n"
               " voltage_set_warning_th\n"
               " voltage_get_alarm_th\n"
               " voltage_set_alarm_th\n"
               " voltage_alarm_status\n"
               " voltage_history_value\n"
               " voltage_init\n"
               " voltage_exit\n"
               " voltage_avs_dump\n"
               " voltage_check_vrm_alert\n"
               " voltage_check_power\n"
               " voltage_get_desc\n",
               0);
}

TEST(VoltageTest, GetValue) {
    expect_success("voltage_test voltage_get_value 0xff000005 3",
                   "drv_voltage_get_value(inst_id=0xff000005, voltage_id=3) = 0 value=1805",
                   printed("drv_voltage_get_value:1805\r\n", "para[0]=0x0 para[1]=1805 "));
    expect_success("voltage_test voltage_get_value 3",
                   "drv_voltage_get_value(inst_id=0xffffffff, voltage_id=3) = 0 value=0xffffffff",
                   printed("drv_voltage_get_value:-1\r\n", "para[0]=0x0 para[1]=-1 "));
    expect_success("voltage_test voltage_get_value 5 rail",
                   "drv_voltage_get_value(inst_id=5, voltage_id=0) = 0 value=12000",
                   printed("drv_voltage_get_value:12000\r\n", "para[0]=0x0 para[1]=12000 "));
}

TEST(VoltageTest, GetValueWithWrongWordCountsAndFailure) {
    expect_success("voltage_test voltage_get_value",
                   "drv_voltage_get_value(inst_id=0xffffffff, voltage_id=0) = 0 value=900",
                   printed("input error : in_num : 0 over [1-2] .\n"
                           "drv_voltage_get_value:900\r\n",
                           "para[0]=0x0 para[1]=900 "));
    expect_success("voltage_test voltage_get_value 7 8 9",
                   "drv_voltage_get_value(inst_id=0xffffffff, voltage_id=7) = 0 value=900",
                   printed("drv_voltage_get_value:900\r\n", "para[0]=0x0 para[1]=900 "));
    expect_failure("voltage_test voltage_get_value 3",
                   "drv_voltage_get_value(inst_id=0xffffffff, voltage_id=3) = 0x811101a4",
                   printed("drv_voltage_get_value fail, ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0 "));
}

TEST(VoltageTest, SetValue) {
    expect_success("voltage_test voltage_set_value 0xff000005 3 1810",
                   "drv_voltage_set_value(inst_id=0xff000005, voltage_id=3, value=1810) = 0",
                   printed("drv_voltage_set_value:1810\r\n", "para[0]=0x0 "));
    expect_success("voltage_test voltage_set_value 3 0x712",
                   "drv_voltage_set_value(inst_id=0xffffffff, voltage_id=3, value=1810) = 0",
                   printed("drv_voltage_set_value:1810\r\n", "para[0]=0x0 "));
    expect_success("voltage_test voltage_set_value 1 2 3 4",
                   "drv_voltage_set_value(inst_id=1, voltage_id=2, value=3) = 0",
                   printed("drv_voltage_set_value:3\r\n", "para[0]=0x0 "));
    expect_success("voltage_test voltage_set_value board rail high",
                   "drv_voltage_set_value(inst_id=0, voltage_id=0, value=0) = 0",
                   printed("drv_voltage_set_value:0\r\n", "para[0]=0x0 "));
    expect_failure("voltage_test voltage_set_value 3 1810",
                   "drv_voltage_set_value(inst_id=0xffffffff, voltage_id=3, value=1810) = 0xdead",
                   printed("drv_voltage_set_value fail,ret:0xdead\r\n", "para[0]=0xdead "));
}

TEST(VoltageTest, SetValueWithTooFewWordsIsSilent) {
    expect_failure("voltage_test voltage_set_value", "", "");
    expect_failure("voltage_test voltage_set_value 3", "", "");
}

TEST(VoltageTest, GetWarningThresholds) {
    expect_success("voltage_test voltage_get_warning_th 0xff000005 3",
                   "drv_voltage_get_warning_th(inst_id=0xff000005, voltage_id=3) = 0 low_th=1710 high_th=1890",
                   printed("drv_voltage_get_warning_th, low_th:1710, high_th:1890 \r\n",
                           "para[0]=0x0 para[1]=0x6ae para[2]=0x762 "));
    expect_success("voltage_test voltage_get_warning_th 3",
                   "drv_voltage_get_warning_th(inst_id=0xffffffff, voltage_id=3) = 0 low_th=0xfffffff6 high_th=10",
                   printed("drv_voltage_get_warning_th, low_th:-10, high_th:10 \r\n",
                           "para[0]=0x0 para[1]=0xfffffff6 para[2]=0xa "));
    expect_success(
        "voltage_test voltage_get_warning_th 1 2 3",
        "drv_voltage_get_warning_th(inst_id=1, voltage_id=2) = 0 low_th=5 high_th=6",
        printed("drv_voltage_get_warning_th, low_th:5, high_th:6 \r\n", "para[0]=0x0 para[1]=0x5 para[2]=0x6 "));
    expect_success(
        "voltage_test voltage_get_warning_th rail",
        "drv_voltage_get_warning_th(inst_id=0xffffffff, voltage_id=0) = 0 low_th=5 high_th=6",
        printed("drv_voltage_get_warning_th, low_th:5, high_th:6 \r\n", "para[0]=0x0 para[1]=0x5 para[2]=0x6 "));
    expect_failure("voltage_test voltage_get_warning_th 3",
                   "drv_voltage_get_warning_th(inst_id=0xffffffff, voltage_id=3) = 0x12",
                   printed("drv_voltage_get_warning_th fail,ret:0x12\r\n", "para[0]=0x12 para[1]=0x0 para[2]=0x0 "));
    expect_failure("voltage_test voltage_get_warning_th", "", "");
}

TEST(VoltageTest, SetWarningThresholds) {
    expect_success("voltage_test voltage_set_warning_th 0xff000005 3 1700 1900",
                   "drv_voltage_set_warning_th(inst_id=0xff000005, voltage_id=3, low_th=1700, high_th=1900) = 0",
                   printed("drv_voltage_set_warning_th, low_th:1700, high_th:1900 \r\n", "para[0]=0x0 "));
    expect_success("voltage_test voltage_set_warning_th 3 1700 1900",
                   "drv_voltage_set_warning_th(inst_id=0xffffffff, voltage_id=3, low_th=1700, high_th=1900) = 0",
                   printed("drv_voltage_set_warning_th, low_th:1700, high_th:1900 \r\n", "para[0]=0x0 "));
    expect_success("voltage_test voltage_set_warning_th 1 2 3 4 5",
                   "drv_voltage_set_warning_th(inst_id=1, voltage_id=2, low_th=3, high_th=4) = 0",
                   printed("drv_voltage_set_warning_th, low_th:3, high_th:4 \r\n", "para[0]=0x0 "));
    expect_success("voltage_test voltage_set_warning_th rail low high",
                   "drv_voltage_set_warning_th(inst_id=0xffffffff, voltage_id=0, low_th=0, high_th=0) = 0",
                   printed("drv_voltage_set_warning_th, low_th:0, high_th:0 \r\n", "para[0]=0x0 "));
    expect_failure("voltage_test voltage_set_warning_th 3 1900 1700",
                   "drv_voltage_set_warning_th(inst_id=0xffffffff, voltage_id=3, low_th=1900, high_th=1700) = 0x12",
                   printed("drv_voltage_set_warning_th fail,ret:0x12\r\n", "para[0]=0x12 "));
    expect_failure("voltage_test voltage_set_warning_th", "", "");
    expect_failure("voltage_test voltage_set_warning_th 3 1700", "", "");
}

TEST(VoltageTest, GetAlarmThresholds) {
    expect_success("voltage_test voltage_get_alarm_th 0xff000005 3",
                   "drv_voltage_get_alarm_th(inst_id=0xff000005, voltage_id=3) = 0 low_th=1620 high_th=1980",
                   printed("drv_voltage_get_alarm_th, low_th:1620, high_th:1980 \r\n",
                           "para[0]=0x0 para[1]=0x654 para[2]=0x7bc "));
    expect_success("voltage_test voltage_get_alarm_th 3",
                   "drv_voltage_get_alarm_th(inst_id=0xffffffff, voltage_id=3) = 0 low_th=0xfffffff6 high_th=10",
                   printed("drv_voltage_get_alarm_th, low_th:-10, high_th:10 \r\n",
                           "para[0]=0x0 para[1]=0xfffffff6 para[2]=0xa "));
    expect_success(
        "voltage_test voltage_get_alarm_th 1 2 3",
        "drv_voltage_get_alarm_th(inst_id=1, voltage_id=2) = 0 low_th=5 high_th=6",
        printed("drv_voltage_get_alarm_th, low_th:5, high_th:6 \r\n", "para[0]=0x0 para[1]=0x5 para[2]=0x6 "));
    expect_success(
        "voltage_test voltage_get_alarm_th rail",
        "drv_voltage_get_alarm_th(inst_id=0xffffffff, voltage_id=0) = 0 low_th=5 high_th=6",
        printed("drv_voltage_get_alarm_th, low_th:5, high_th:6 \r\n", "para[0]=0x0 para[1]=0x5 para[2]=0x6 "));
    expect_failure("voltage_test voltage_get_alarm_th 3",
                   "drv_voltage_get_alarm_th(inst_id=0xffffffff, voltage_id=3) = 0x12",
                   printed("drv_voltage_get_alarm_th fail,ret:0x12\r\n", "para[0]=0x12 para[1]=0x0 para[2]=0x0 "));
    expect_failure("voltage_test voltage_get_alarm_th", "", "");
}

TEST(VoltageTest, SetAlarmThresholds) {
    expect_success("voltage_test voltage_set_alarm_th 0xff000005 3 1600 2000",
                   "drv_voltage_set_alarm_th(inst_id=0xff000005, voltage_id=3, low_th=1600, high_th=2000) = 0",
                   printed("drv_voltage_set_alarm_th, low_th:1600, high_th:2000 \r\n", "para[0]=0x0 "));
    expect_success("voltage_test voltage_set_alarm_th 3 1600 2000",
                   "drv_voltage_set_alarm_th(inst_id=0xffffffff, voltage_id=3, low_th=1600, high_th=2000) = 0",
                   printed("drv_voltage_set_alarm_th, low_th:1600, high_th:2000 \r\n", "para[0]=0x0 "));
    expect_success("voltage_test voltage_set_alarm_th 1 2 3 4 5",
                   "drv_voltage_set_alarm_th(inst_id=1, voltage_id=2, low_th=3, high_th=4) = 0",
                   printed("drv_voltage_set_alarm_th, low_th:3, high_th:4 \r\n", "para[0]=0x0 "));
    expect_success("voltage_test voltage_set_alarm_th rail low high",
                   "drv_voltage_set_alarm_th(inst_id=0xffffffff, voltage_id=0, low_th=0, high_th=0) = 0",
                   printed("drv_voltage_set_alarm_th, low_th:0, high_th:0 \r\n", "para[0]=0x0 "));
    expect_failure("voltage_test voltage_set_alarm_th 3 2000 1600",
                   "drv_voltage_set_alarm_th(inst_id=0xffffffff, voltage_id=3, low_th=2000, high_th=1600) = 0x12",
                   printed("drv_voltage_set_alarm_th fail,ret:0x12\r\n", "para[0]=0x12 "));
    expect_failure("voltage_test voltage_set_alarm_th", "", "");
    expect_failure("voltage_test voltage_set_alarm_th 3 1600", "", "");
}

TEST(VoltageTest, AlarmStatusShowsStatusAndReason) {
    expect_success("voltage_test voltage_alarm_status 0xff000005 3 1 64",
                   "drv_voltage_get_alarm(inst_id=0xff000005, voltage_id=3, alarm_type=1, len=64) = 0 "
                   "alarm_status=2 buffer=\"1.8V above 1890 mV\"",
                   printed("drv_voltage_get_alarm, alarm_status:2\r\n"
                           "drv_voltage_get_alarm, buffer:1.8V above 1890 mV\r\n",
                           "para[0]=0x0 para[1]=0x2 para[2]=0x40 "));
    expect_success("voltage_test voltage_alarm_status 3 0 100",
                   "drv_voltage_get_alarm(inst_id=0xffffffff, voltage_id=3, alarm_type=0, len=100) = 0 alarm_status=0",
                   printed("drv_voltage_get_alarm, alarm_status:0\r\n"
                           "drv_voltage_get_alarm, buffer:\r\n",
                           "para[0]=0x0 para[1]=0x0 para[2]=0x64 "));
    expect_success("voltage_test voltage_alarm_status 1 2 3 4 5",
                   "drv_voltage_get_alarm(inst_id=1, voltage_id=2, alarm_type=3, len=4) = 0 alarm_status=1",
                   printed("drv_voltage_get_alarm, alarm_status:1\r\n"
                           "drv_voltage_get_alarm, buffer:\r\n",
                           "para[0]=0x0 para[1]=0x1 para[2]=0x4 "));
}

TEST(VoltageTest, AlarmStatusShowsAFullAreaToItsLastByte) {
    expect_success("voltage_test voltage_alarm_status 3 0 4",
                   "drv_voltage_get_alarm(inst_id=0xffffffff, voltage_id=3, alarm_type=0, len=4) = 0 "
                   "alarm_status=1 buffer=[6c 6f 77 21]",
                   printed("drv_voltage_get_alarm, alarm_status:1\r\n"
                           "drv_voltage_get_alarm, buffer:low!\r\n",
                           "para[0]=0x0 para[1]=0x1 para[2]=0x4 "));
}

TEST(VoltageTest, AlarmStatusWithoutAnAreaAndFailure) {
    expect_success("voltage_test voltage_alarm_status rail type long",
                   "drv_voltage_get_alarm(inst_id=0xffffffff, voltage_id=0, alarm_type=0, len=0) = 0 alarm_status=1",
                   printed("drv_voltage_get_alarm, alarm_status:1\r\n"
                           "drv_voltage_get_alarm, buffer:\r\n",
                           "para[0]=0x0 para[1]=0x1 para[2]=0x0 "));
    expect_failure("voltage_test voltage_alarm_status 3 0 64",
                   "drv_voltage_get_alarm(inst_id=0xffffffff, voltage_id=3, alarm_type=0, len=64) = 0x811101a4",
                   printed("drv_voltage_get_alarm, alarm_status:0\r\n"
                           "drv_voltage_get_alarm, buffer:\r\n",
                           "para[0]=0x811101a4 para[1]=0x0 para[2]=0x40 "));
    expect_failure("voltage_test voltage_alarm_status", "", "");
    expect_failure("voltage_test voltage_alarm_status 3 0", "", "");
}

TEST(VoltageTest, HistoryValue) {
    expect_success("voltage_test voltage_history_value 0xff000005 3",
                   "drv_voltage_get_history_value(inst_id=0xff000005, voltage_id=3) = 0 max_value=1822 min_value=1779",
                   printed("drv_voltage_get_history_value, max_value:1822  min_value:1779\r\n",
                           "para[0]=0x0 para[1]=0x71e para[2]=0x6f3 "));
    expect_success(
        "voltage_test voltage_history_value 3",
        "drv_voltage_get_history_value(inst_id=0xffffffff, voltage_id=3) = 0 max_value=9 min_value=8",
        printed("drv_voltage_get_history_value, max_value:9  min_value:8\r\n", "para[0]=0x0 para[1]=0x9 para[2]=0x8 "));
    expect_success(
        "voltage_test voltage_history_value 1 2 3",
        "drv_voltage_get_history_value(inst_id=1, voltage_id=2) = 0 max_value=9 min_value=8",
        printed("drv_voltage_get_history_value, max_value:9  min_value:8\r\n", "para[0]=0x0 para[1]=0x9 para[2]=0x8 "));
    expect_success(
        "voltage_test voltage_history_value rail",
        "drv_voltage_get_history_value(inst_id=0xffffffff, voltage_id=0) = 0 max_value=9 min_value=8",
        printed("drv_voltage_get_history_value, max_value:9  min_value:8\r\n", "para[0]=0x0 para[1]=0x9 para[2]=0x8 "));
    expect_failure(
        "voltage_test voltage_history_value 3",
        "drv_voltage_get_history_value(inst_id=0xffffffff, voltage_id=3) = 0x12",
        printed("drv_voltage_get_history_value fail, ret:0x12\r\n", "para[0]=0x12 para[1]=0x0 para[2]=0x0 "));
    expect_failure("voltage_test voltage_history_value", "", "");
}

TEST(VoltageTest, InitTakesExactlyOneWord) {
    expect_success("voltage_test voltage_init 0xff000005", "drv_voltage_init(inst_id=0xff000005) = 0",
                   printed("drv_voltage_init, inst_id:0xff000005, ret:0\r\n", "para[0]=0x0 "));
    expect_success("voltage_test voltage_init board", "drv_voltage_init(inst_id=0) = 0",
                   printed("drv_voltage_init, inst_id:0x0, ret:0\r\n", "para[0]=0x0 "));
    expect_failure("voltage_test voltage_init 5", "drv_voltage_init(inst_id=5) = 0xdead",
                   printed("drv_voltage_init fail,ret:0xdead\r\n", "para[0]=0xdead "));
    expect_failure("voltage_test voltage_init", "", "");
    expect_failure("voltage_test voltage_init 5 6", "", "");
}

TEST(VoltageTest, ExitTakesExactlyOneWord) {
    expect_success("voltage_test voltage_exit 0xff000005", "drv_voltage_exit(inst_id=0xff000005) = 0",
                   printed("drv_voltage_exit, inst_id:0xff000005, ret:0\r\n", "para[0]=0x0 "));
    expect_success("voltage_test voltage_exit board", "drv_voltage_exit(inst_id=0) = 0",
                   printed("drv_voltage_exit, inst_id:0x0, ret:0\r\n", "para[0]=0x0 "));
    expect_failure("voltage_test voltage_exit 5", "drv_voltage_exit(inst_id=5) = 0xdead",
                   printed("drv_voltage_exit fail,ret:0xdead\r\n", "para[0]=0xdead "));
    expect_failure("voltage_test voltage_exit", "", "");
    expect_failure("voltage_test voltage_exit 5 6", "", "");
}

TEST(VoltageTest, AvsDump) {
    expect_success("voltage_test voltage_avs_dump 0xff000005 256",
                   "drv_avs_dump_dfx_info(inst_id=0xff000005, len=256) = 0 buffer=\"chip 0: 80 13\"",
                   printed("drv_avs_dump_dfx_info, buffer:chip 0: 80 13\r\n", "para[0]=0x0 para[1]=chip 0: 80 13 "));
    expect_success("voltage_test voltage_avs_dump 0x100",
                   "drv_avs_dump_dfx_info(inst_id=0xffffffff, len=256) = 0 buffer=\"chip 0\"",
                   printed("drv_avs_dump_dfx_info, buffer:chip 0\r\n", "para[0]=0x0 para[1]=chip 0 "));
    expect_success("voltage_test voltage_avs_dump 4",
                   "drv_avs_dump_dfx_info(inst_id=0xffffffff, len=4) = 0 buffer=[63 68 69 70]",
                   printed("drv_avs_dump_dfx_info, buffer:chip\r\n", "para[0]=0x0 para[1]=chip "));
    expect_success("voltage_test voltage_avs_dump 1 2 3", "drv_avs_dump_dfx_info(inst_id=1, len=2) = 0 buffer=\"c\"",
                   printed("drv_avs_dump_dfx_info, buffer:c\r\n", "para[0]=0x0 para[1]=c "));
    expect_success("voltage_test voltage_avs_dump long", "drv_avs_dump_dfx_info(inst_id=0xffffffff, len=0) = 0",
                   printed("drv_avs_dump_dfx_info, buffer:\r\n", "para[0]=0x0 para[1]= "));
    expect_failure("voltage_test voltage_avs_dump 256",
                   "drv_avs_dump_dfx_info(inst_id=0xffffffff, len=256) = 0x811101a4",
                   printed("drv_avs_dump_dfx_info fail,ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]= "));
    expect_failure("voltage_test voltage_avs_dump", "", "");
}

TEST(VoltageTest, CheckVrmAlert) {
    expect_success("voltage_test voltage_check_vrm_alert 0xff000005 2 64",
                   "drv_voltage_check_vrm_alert(inst_id=0xff000005, chip_id=2, len=64) = 0 result=1 "
                   "buffer=\"over current\"",
                   printed("drv_voltage_check_vrm_alert, result:1\r\n"
                           "drv_voltage_check_vrm_alert, buffer:over current\r\n",
                           "para[0]=0x0 para[1]=0x1 para[2]=over current "));
    expect_success("voltage_test voltage_check_vrm_alert 2 4",
                   "drv_voltage_check_vrm_alert(inst_id=0xffffffff, chip_id=2, len=4) = 0 result=0xffffffff "
                   "buffer=[67 6f 6f 64]",
                   printed("drv_voltage_check_vrm_alert, result:-1\r\n"
                           "drv_voltage_check_vrm_alert, buffer:good\r\n",
                           "para[0]=0x0 para[1]=0xffffffff para[2]=good "));
    expect_success("voltage_test voltage_check_vrm_alert 1 2 3 4",
                   "drv_voltage_check_vrm_alert(inst_id=1, chip_id=2, len=3) = 0 result=0",
                   printed("drv_voltage_check_vrm_alert, result:0\r\n"
                           "drv_voltage_check_vrm_alert, buffer:\r\n",
                           "para[0]=0x0 para[1]=0x0 para[2]= "));
    expect_success("voltage_test voltage_check_vrm_alert chip long",
                   "drv_voltage_check_vrm_alert(inst_id=0xffffffff, chip_id=0, len=0) = 0 result=0",
                   printed("drv_voltage_check_vrm_alert, result:0\r\n"
                           "drv_voltage_check_vrm_alert, buffer:\r\n",
                           "para[0]=0x0 para[1]=0x0 para[2]= "));
    expect_failure("voltage_test voltage_check_vrm_alert 2 64",
                   "drv_voltage_check_vrm_alert(inst_id=0xffffffff, chip_id=2, len=64) = 0x12",
                   printed("drv_voltage_check_vrm_alert, result:0\r\n"
                           "drv_voltage_check_vrm_alert, buffer:\r\n",
                           "para[0]=0x12 para[1]=0x0 para[2]= "));
    expect_failure("voltage_test voltage_check_vrm_alert", "", "");
    expect_failure("voltage_test voltage_check_vrm_alert 2", "", "");
}

TEST(VoltageTest, CheckPower) {
    expect_success("voltage_test voltage_check_power 0xff000005 2 64",
                   "drv_voltage_check_power(inst_id=0xff000005, power_id=2, len=64) = 0 result=1 "
                   "buffer=\"phase 3 open\"",
                   printed("drv_voltage_check_power, result:1\r\n"
                           "drv_voltage_check_power, buffer:phase 3 open\r\n",
                           "para[0]=0x0 para[1]=0x1 para[2]=phase 3 open "));
    expect_success("voltage_test voltage_check_power 2 4",
                   "drv_voltage_check_power(inst_id=0xffffffff, power_id=2, len=4) = 0 result=0xffffffff "
                   "buffer=[67 6f 6f 64]",
                   printed("drv_voltage_check_power, result:-1\r\n"
                           "drv_voltage_check_power, buffer:good\r\n",
                           "para[0]=0x0 para[1]=0xffffffff para[2]=good "));
    expect_success("voltage_test voltage_check_power 1 2 3 4",
                   "drv_voltage_check_power(inst_id=1, power_id=2, len=3) = 0 result=0",
                   printed("drv_voltage_check_power, result:0\r\n"
                           "drv_voltage_check_power, buffer:\r\n",
                           "para[0]=0x0 para[1]=0x0 para[2]= "));
    expect_success("voltage_test voltage_check_power stage long",
                   "drv_voltage_check_power(inst_id=0xffffffff, power_id=0, len=0) = 0 result=0",
                   printed("drv_voltage_check_power, result:0\r\n"
                           "drv_voltage_check_power, buffer:\r\n",
                           "para[0]=0x0 para[1]=0x0 para[2]= "));
    expect_failure("voltage_test voltage_check_power 2 64",
                   "drv_voltage_check_power(inst_id=0xffffffff, power_id=2, len=64) = 0x12",
                   printed("drv_voltage_check_power, result:0\r\n"
                           "drv_voltage_check_power, buffer:\r\n",
                           "para[0]=0x12 para[1]=0x0 para[2]= "));
    expect_failure("voltage_test voltage_check_power", "", "");
    expect_failure("voltage_test voltage_check_power 2", "", "");
}

TEST(VoltageTest, GetDesc) {
    expect_success("voltage_test voltage_get_desc 0xff000005 3",
                   "drv_voltage_get_node_desc(inst_id=0xff000005, voltage_id=3, size=64) = 0 desc=\"VCC 1.8V\"",
                   printed("voltage_get_desc:VCC 1.8V\r\n", "para[0]=0x0 para[1]=VCC 1.8V "));
    expect_success("voltage_test voltage_get_desc 3",
                   "drv_voltage_get_node_desc(inst_id=0xffffffff, voltage_id=3, size=64) = 0 desc=\"VCC\"",
                   printed("voltage_get_desc:VCC\r\n", "para[0]=0x0 para[1]=VCC "));
    expect_success("voltage_test voltage_get_desc 1 2 3",
                   "drv_voltage_get_node_desc(inst_id=1, voltage_id=2, size=64) = 0 desc=\"VCC\"",
                   printed("voltage_get_desc:VCC\r\n", "para[0]=0x0 para[1]=VCC "));
    expect_success("voltage_test voltage_get_desc rail",
                   "drv_voltage_get_node_desc(inst_id=0xffffffff, voltage_id=0, size=64) = 0 desc=\"VCC\"",
                   printed("voltage_get_desc:VCC\r\n", "para[0]=0x0 para[1]=VCC "));
    expect_failure("voltage_test voltage_get_desc 3",
                   "drv_voltage_get_node_desc(inst_id=0xffffffff, voltage_id=3, size=64) = 0x12",
                   printed("drv_voltage_get_node_desc fail,ret:0x12\r\n", "para[0]=0x12 para[1]= "));
    expect_failure("voltage_test voltage_get_desc", "", "");
}

TEST(VoltageTest, GetDescShowsAllSixtyFourBytes) {
    const std::string name(64, 'V');
    expect_success("voltage_test voltage_get_desc 3",
                   "drv_voltage_get_node_desc(inst_id=0xffffffff, voltage_id=3, size=64) = 0 desc=\"" + name + "\"",
                   printed("voltage_get_desc:" + name + "\r\n", "para[0]=0x0 para[1]=" + name + " "));
}

TEST(VoltageTest, NothingIsPrintedWithoutATextArea) {
    expect_without_text_area("voltage_test voltage_alarm_status 3 0 64", "drv_voltage_get_alarm = 0", timing_lines, 0);
    expect_without_text_area("voltage_test voltage_avs_dump 64", "drv_avs_dump_dfx_info = 0", timing_lines, 0);
    expect_without_text_area("voltage_test voltage_check_vrm_alert 2 64", "drv_voltage_check_vrm_alert = 0",
                             timing_lines, 0);
    expect_without_text_area("voltage_test voltage_check_power 2 64", "drv_voltage_check_power = 0", timing_lines, 0);
}
