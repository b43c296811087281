// temp_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(TempTest, UsageListsTheSubCommandsInOrder) {
    expect_run("temp_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " temp_get\n"
               " board_temp_get\n"
               " temp_warning_get\n"
               " temp_warning_set\n"
               " temp_alarm_get\n"
               " temp_alarm_set\n"
               " temp_alarm_status\n"
               " temp_init\n"
               " temp_exit\n"
               " temp_get_desc\n",
               0);
}

TEST(TempTest, Get) {
    expect_success("temp_test temp_get 0xff000007 3",
                   "drv_temperature_get_value(inst_id=0xff000007, temperature_id=3) = 0 value=43",
                   printed("drv_temperature_get_value:43\r\n", "para[0]=0x0 para[1]=0x2b "));
    expect_success("temp_test temp_get 010",
                   "drv_temperature_get_value(inst_id=0xffffffff, temperature_id=8) = 0 value=-7",
                   printed("drv_temperature_get_value:-7\r\n", "para[0]=0x0 para[1]=0xfffffff9 "));
    expect_success("temp_test temp_get 1 2 3", "drv_temperature_get_value(inst_id=1, temperature_id=2) = 0 value=9",
                   printed("drv_temperature_get_value:9\r\n", "para[0]=0x0 para[1]=0x9 "));
    expect_success("temp_test temp_get inlet",
                   "drv_temperature_get_value(inst_id=0xffffffff, temperature_id=0) = 0 value=25",
                   printed("drv_temperature_get_value:25\r\n", "para[0]=0x0 para[1]=0x19 "));
    expect_failure("temp_test temp_get 3",
                   "drv_temperature_get_value(inst_id=0xffffffff, temperature_id=3) = 0x811101a4",
                   printed("drv_temperature_get_value fail ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("temp_test temp_get", "", "");
}

TEST(TempTest, GetOfTheBoardTakesNoWord) {
    expect_success("temp_test board_temp_get", "drv_temperature_get_board_value() = 0 value=62",
                   "drv_temperature_get_board_value:62\r\n");
    expect_success("temp_test board_temp_get 5 inlet", "drv_temperature_get_board_value() = 0 value=-40",
                   "drv_temperature_get_board_value:-40\r\n");
    expect_failure("temp_test board_temp_get", "drv_temperature_get_board_value() = 0x811101a4",
                   "drv_temperature_get_board_value fail ret:0x811101a4\r\n");
}

TEST(TempTest, GetWarningThresholds) {
    expect_success(
        "temp_test temp_warning_get 0xff000007 3",
        "drv_temperature_get_warning_th(inst_id=0xff000007, temperature_id=3) = 0 low_th=0 high_th=80",
        printed("drv_temperature_get_warning_th, low_th:0, high_th:80 \r\n", "para[0]=0x0 para[1]=0x0 para[2]=0x50 "));
    expect_success("temp_test temp_warning_get 3",
                   "drv_temperature_get_warning_th(inst_id=0xffffffff, temperature_id=3) = 0 low_th=-10 high_th=10",
                   printed("drv_temperature_get_warning_th, low_th:-10, high_th:10 \r\n",
                           "para[0]=0x0 para[1]=0xfffffff6 para[2]=0xa "));
    expect_success(
        "temp_test temp_warning_get 1 2 3",
        "drv_temperature_get_warning_th(inst_id=1, temperature_id=2) = 0 low_th=5 high_th=6",
        printed("drv_temperature_get_warning_th, low_th:5, high_th:6 \r\n", "para[0]=0x0 para[1]=0x5 para[2]=0x6 "));
    expect_success(
        "temp_test temp_warning_get inlet",
        "drv_temperature_get_warning_th(inst_id=0xffffffff, temperature_id=0) = 0 low_th=5 high_th=6",
        printed("drv_temperature_get_warning_th, low_th:5, high_th:6 \r\n", "para[0]=0x0 para[1]=0x5 para[2]=0x6 "));
    expect_failure(
        "temp_test temp_warning_get 3", "drv_temperature_get_warning_th(inst_id=0xffffffff, temperature_id=3) = 0x12",
        printed("drv_temperature_get_warning_th fail ret:0x12\r\n", "para[0]=0x12 para[1]=0x0 para[2]=0x0 "));
    expect_failure("temp_test temp_warning_get", "", "");
}

TEST(TempTest, SetWarningThresholds) {
    expect_success("temp_test temp_warning_set 0xff000007 3 -5 85",
                   "drv_temperature_set_warning_th(inst_id=0xff000007, temperature_id=3, low_th=-5, high_th=85) = 0",
                   printed("drv_temperature_set_warning_th, low_th:-5, high_th:85 \r\n", "para[0]=0x0 "));
    expect_success("temp_test temp_warning_set 3 0x5 0x55",
                   "drv_temperature_set_warning_th(inst_id=0xffffffff, temperature_id=3, low_th=5, high_th=85) = 0",
                   printed("drv_temperature_set_warning_th, low_th:5, high_th:85 \r\n", "para[0]=0x0 "));
    expect_success("temp_test temp_warning_set 1 2 3 4 5",
                   "drv_temperature_set_warning_th(inst_id=1, temperature_id=2, low_th=3, high_th=4) = 0",
                   printed("drv_temperature_set_warning_th, low_th:3, high_th:4 \r\n", "para[0]=0x0 "));
    expect_success("temp_test temp_warning_set inlet low high",
                   "drv_temperature_set_warning_th(inst_id=0xffffffff, temperature_id=0, low_th=0, high_th=0) = 0",
                   printed("drv_temperature_set_warning_th, low_th:0, high_th:0 \r\n", "para[0]=0x0 "));
    expect_failure("temp_test temp_warning_set 3 85 5",
                   "drv_temperature_set_warning_th(inst_id=0xffffffff, temperature_id=3, low_th=85, high_th=5) = 0x12",
                   printed("drv_temperature_set_warning_th fail ret:0x12\r\n", "para[0]=0x12 "));
    expect_failure("temp_test temp_warning_set", "", "");
    expect_failure("temp_test temp_warning_set 3 5", "", "");
}

TEST(TempTest, GetAlarmThresholds) {
    expect_success("temp_test temp_alarm_get 0xff000007 3",
                   "drv_temperature_get_alarm_th(inst_id=0xff000007, temperature_id=3) = 0 low_th=-5 high_th=95",
                   printed("drv_temperature_get_alarm_th, low_th:-5, high_th:95 \r\n",
                           "para[0]=0x0 para[1]=0xfffffffb para[2]=0x5f "));
    expect_success(
        "temp_test temp_alarm_get 3",
        "drv_temperature_get_alarm_th(inst_id=0xffffffff, temperature_id=3) = 0 low_th=7 high_th=8",
        printed("drv_temperature_get_alarm_th, low_th:7, high_th:8 \r\n", "para[0]=0x0 para[1]=0x7 para[2]=0x8 "));
    expect_success(
        "temp_test temp_alarm_get 1 2 3",
        "drv_temperature_get_alarm_th(inst_id=1, temperature_id=2) = 0 low_th=5 high_th=6",
        printed("drv_temperature_get_alarm_th, low_th:5, high_th:6 \r\n", "para[0]=0x0 para[1]=0x5 para[2]=0x6 "));
    expect_success(
        "temp_test temp_alarm_get inlet",
        "drv_temperature_get_alarm_th(inst_id=0xffffffff, temperature_id=0) = 0 low_th=5 high_th=6",
        printed("drv_temperature_get_alarm_th, low_th:5, high_th:6 \r\n", "para[0]=0x0 para[1]=0x5 para[2]=0x6 "));
    expect_failure("temp_test temp_alarm_get 3",
                   "drv_temperature_get_alarm_th(inst_id=0xffffffff, temperature_id=3) = 0x12",
                   printed("drv_temperature_get_alarm_th fail ret:0x12\r\n", "para[0]=0x12 para[1]=0x0 para[2]=0x0 "));
    expect_failure("temp_test temp_alarm_get", "", "");
}

TEST(TempTest, SetAlarmThresholds) {
    expect_success("temp_test temp_alarm_set 0xff000007 3 -5 95",
                   "drv_temperature_set_alarm_th(inst_id=0xff000007, temperature_id=3, low_th=-5, high_th=95) = 0",
                   printed("drv_temperature_set_alarm_th, low_th:-5, high_th:95 \r\n", "para[0]=0x0 "));
    expect_success("temp_test temp_alarm_set 3 5 95",
                   "drv_temperature_set_alarm_th(inst_id=0xffffffff, temperature_id=3, low_th=5, high_th=95) = 0",
                   printed("drv_temperature_set_alarm_th, low_th:5, high_th:95 \r\n", "para[0]=0x0 "));
    expect_success("temp_test temp_alarm_set 1 2 3 4 5",
                   "drv_temperature_set_alarm_th(inst_id=1, temperature_id=2, low_th=3, high_th=4) = 0",
                   printed("drv_temperature_set_alarm_th, low_th:3, high_th:4 \r\n", "para[0]=0x0 "));
    expect_success("temp_test temp_alarm_set inlet low high",
                   "drv_temperature_set_alarm_th(inst_id=0xffffffff, temperature_id=0, low_th=0, high_th=0) = 0",
                   printed("drv_temperature_set_alarm_th, low_th:0, high_th:0 \r\n", "para[0]=0x0 "));
    expect_failure("temp_test temp_alarm_set 3 95 5",
                   "drv_temperature_set_alarm_th(inst_id=0xffffffff, temperature_id=3, low_th=95, high_th=5) = 0x12",
                   printed("drv_temperature_set_alarm_th fail ret:0x12\r\n", "para[0]=0x12 "));
    expect_failure("temp_test temp_alarm_set", "", "");
    expect_failure("temp_test temp_alarm_set 3 5", "", "");
}

TEST(TempTest, AlarmStatus) {
    expect_success("temp_test temp_alarm_status 0xff000007 3",
                   "drv_temperature_get_alarm(inst_id=0xff000007, temperature_id=3) = 0 alarm_status=2",
                   printed("drv_temperature_get_alarm, alarm_status:2 \r\n", "para[0]=0x0 para[1]=0x2 "));
    expect_success("temp_test temp_alarm_status 3",
                   "drv_temperature_get_alarm(inst_id=0xffffffff, temperature_id=3) = 0 alarm_status=0xffffffff",
                   printed("drv_temperature_get_alarm, alarm_status:-1 \r\n", "para[0]=0x0 para[1]=0xffffffff "));
    expect_success("temp_test temp_alarm_status 1 2 3",
                   "drv_temperature_get_alarm(inst_id=1, temperature_id=2) = 0 alarm_status=0",
                   printed("drv_temperature_get_alarm, alarm_status:0 \r\n", "para[0]=0x0 para[1]=0x0 "));
    expect_success("temp_test temp_alarm_status inlet",
                   "drv_temperature_get_alarm(inst_id=0xffffffff, temperature_id=0) = 0 alarm_status=1",
                   printed("drv_temperature_get_alarm, alarm_status:1 \r\n", "para[0]=0x0 para[1]=0x1 "));
    expect_failure("temp_test temp_alarm_status 3",
                   "drv_temperature_get_alarm(inst_id=0xffffffff, temperature_id=3) = 0x811101a4",
                   printed("drv_temperature_get_alarm fail ret:0x811101a4\r\n", "para[0]=0x811101a4 para[1]=0x0 "));
    expect_failure("temp_test temp_alarm_status", "", "");
}

TEST(TempTest, InitTakesExactlyOneWord) {
    expect_success("temp_test temp_init 0xff000007", "drv_temperature_init(inst_id=0xff000007) = 0",
                   printed("drv_temperature_init, inst_id:0xff000007 ret:0 \r\n", "para[0]=0x0 "));
    expect_success("temp_test temp_init board", "drv_temperature_init(inst_id=0) = 0",
                   printed("drv_temperature_init, inst_id:0x0 ret:0 \r\n", "para[0]=0x0 "));
    expect_failure("temp_test temp_init 5", "drv_temperature_init(inst_id=5) = 0xdead",
                   printed("drv_temperature_init fail ret:0xdead\r\n", "para[0]=0xdead "));
    expect_failure("temp_test temp_init", "", "");
    expect_failure("temp_test temp_init 5 6", "", "");
}

TEST(TempTest, ExitTakesExactlyOneWord) {
    expect_success("temp_test temp_exit 0xff000007", "drv_temperature_exit(inst_id=0xff000007) = 0",
                   printed("drv_temperature_exit,inst_id:0xff000007 ret:0 \r\n", "para[0]=0x0 "));
    expect_success("temp_test temp_exit board", "drv_temperature_exit(inst_id=0) = 0",
                   printed("drv_temperature_exit,inst_id:0x0 ret:0 \r\n", "para[0]=0x0 "));
    expect_failure("temp_test temp_exit 5", "drv_temperature_exit(inst_id=5) = 0xdead",
                   printed("drv_temperature_exit fail ret:0xdead\r\n", "para[0]=0xdead "));
    expect_failure("temp_test temp_exit", "", "");
    expect_failure("temp_test temp_exit 5 6", "", "");
}

TEST(TempTest, GetDesc) {
    expect_success(
        "temp_test temp_get_desc 0xff000007 3",
        "drv_temperature_get_node_desc(inst_id=0xff000007, temperature_id=3, size=64) = 0 desc=\"air outlet\"",
        printed("temp_get_desc:air outlet\r\n", "para[0]=0x0 para[1]=air outlet "));
    expect_success("temp_test temp_get_desc 3",
                   "drv_temperature_get_node_desc(inst_id=0xffffffff, temperature_id=3, size=64) = 0 desc=\"memory\"",
                   printed("temp_get_desc:memory\r\n", "para[0]=0x0 para[1]=memory "));
    expect_success("temp_test temp_get_desc 1 2 3",
                   "drv_temperature_get_node_desc(inst_id=1, temperature_id=2, size=64) = 0 desc=\"switch\"",
                   printed("temp_get_desc:switch\r\n", "para[0]=0x0 para[1]=switch "));
    expect_success("temp_test temp_get_desc inlet",
                   "drv_temperature_get_node_desc(inst_id=0xffffffff, temperature_id=0, size=64) = 0 desc=\"\"",
                   printed("temp_get_desc:\r\n", "para[0]=0x0 para[1]= "));
    expect_failure("temp_test temp_get_desc 3",
                   "drv_temperature_get_node_desc(inst_id=0xffffffff, temperature_id=3, size=64) = 0x12",
                   printed("drv_temperature_get_node_desc fail ret:0x12\r\n", "para[0]=0x12 para[1]= "));
    expect_failure("temp_test temp_get_desc", "", "");
}

TEST(TempTest, GetDescShowsAllSixtyFourBytes) {
    const std::string name(64, 'T');
    expect_success("temp_test temp_get_desc 3",
                   "drv_temperature_get_node_desc(inst_id=0xffffffff, temperature_id=3, size=64) = 0 desc=\"" + name +
                       "\"",
                   printed("temp_get_desc:" + name + "\r\n", "para[0]=0x0 para[1]=" + name + " "));
}
