// backplane_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

TEST(BackplaneTest, UsageListsTheSubCommandsInOrder) {
    expect_run("backplane_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " backplane_get_type\n"
               " backplane_get_sds_spd\n"
               " backplane_get_pcb_ver\n"
               " backplane_check_id\n"
               " backplane_fmea_check_id\n",
               0);
}

TEST(BackplaneTest, GetType) {
    expect_success("backplane_test backplane_get_type", "drv_backplane_get_type() = 0 type=0x1a2b",
                   "start to get backplane type ......\nbackplane_type hex:0x00001a2b dec:00006699\r\n");
    expect_success("backplane_test backplane_get_type 0xff000009 words", "drv_backplane_get_type() = 0 type=0xffffffff",
                   "start to get backplane type ......\nbackplane_type hex:0xffffffff dec:-0000001\r\n");
    expect_failure("backplane_test backplane_get_type", "drv_backplane_get_type() = 0x811101a4",
                   "start to get backplane type ......\nbackplane_type hex:0x00000000 dec:00000000\r\n");
}

TEST(BackplaneTest, GetSerdesSpeed) {
    expect_success("backplane_test backplane_get_sds_spd", "drv_backplane_get_serdes_speed() = 0 speed=25781",
                   "start to get backplane serdes speed ......\nserdes speed hex:0x000064b5 dec:00025781\r\n");
    expect_success("backplane_test backplane_get_sds_spd 1 2", "drv_backplane_get_serdes_speed() = 0 speed=0xffffffff",
                   "start to get backplane serdes speed ......\nserdes speed hex:0xffffffff dec:-0000001\r\n");
    expect_failure("backplane_test backplane_get_sds_spd", "drv_backplane_get_serdes_speed() = 0x811101a4",
                   "start to get backplane serdes speed ......\nserdes speed hex:0x00000000 dec:00000000\r\n");
}

TEST(BackplaneTest, GetPcbVersion) {
    expect_success("backplane_test backplane_get_pcb_ver", "drv_backplane_get_pcb_ver() = 0 pcb_ver=258",
                   "start to get backplane pcb version ......\npcb_ver hex:0x00000102 dec:00000258\r\n");
    expect_success("backplane_test backplane_get_pcb_ver 1 2", "drv_backplane_get_pcb_ver() = 0 pcb_ver=0xffffffff",
                   "start to get backplane pcb version ......\npcb_ver hex:0xffffffff dec:-0000001\r\n");
    expect_failure("backplane_test backplane_get_pcb_ver", "drv_backplane_get_pcb_ver() = 0x811101a4",
                   "start to get backplane pcb version ......\npcb_ver hex:0x00000000 dec:00000000\r\n");
}

TEST(BackplaneTest, CheckId) {
    expect_success("backplane_test backplane_check_id", "drv_backplane_check_id() = 0 check=16",
                   "start to get backplane checkid ......\ncheck id hex:0x00000010 dec:00000016\r\n");
    expect_success("backplane_test backplane_check_id 1 2", "drv_backplane_check_id() = 0 check=0xffffffff",
                   "start to get backplane checkid ......\ncheck id hex:0xffffffff dec:-0000001\r\n");
    expect_failure("backplane_test backplane_check_id", "drv_backplane_check_id() = 0x811101a4",
                   "start to get backplane checkid ......\ncheck id hex:0x00000000 dec:00000000\r\n");
}

TEST(BackplaneTest, FmeaCheckId) {
    expect_success("backplane_test backplane_fmea_check_id",
                   "drv_backplane_fmea_check_id(size=256) = 0 check_result=0 dfx=\"\"",
                   printed("start to get backplane checkid ......\r\nsuccess, check_result:0 dfx:\r\n",
                           "para[0]=0x0 para[1]=0x0 "));
    expect_success("backplane_test backplane_fmea_check_id 1 2",
                   "drv_backplane_fmea_check_id(size=256) = 0 check_result=10 dfx=\"pin 3 %s\"",
                   printed("start to get backplane checkid ......\r\nsuccess, check_result:10 dfx:pin 3 %s\r\n",
                           "para[0]=0x0 para[1]=0xa "));
    expect_failure("backplane_test backplane_fmea_check_id",
                   "drv_backplane_fmea_check_id(size=256) = 0x811101a4 check_result=0xffffffff dfx=\"no answer\"",
                   printed("start to get backplane checkid ......\r\n"
                           "failed, check_result:-1 dfx:no answer ret:0x811101a4\r\n",
                           "para[0]=0x811101a4 para[1]=0xffffffff "));
    expect_failure("backplane_test backplane_fmea_check_id", "drv_backplane_fmea_check_id(size=256) = 5",
                   printed("start to get backplane checkid ......\r\nfailed, check_result:0 dfx: ret:0x5\r\n",
                           "para[0]=0x5 para[1]=0x0 "));
}

TEST(BackplaneTest, FmeaCheckIdShowsNothingBehindAFullArea) {
    const std::string full(256, 'F');
    expect_success(
        "backplane_test backplane_fmea_check_id",
        "drv_backplane_fmea_check_id(size=256) = 0 check_result=0x46464646 dfx=\"" + full + "\"",
        printed("start to get backplane checkid ......\r\nsuccess, check_result:1179010630 dfx:" + full + "\r\n",
                "para[0]=0x0 para[1]=0x46464646 "));
}
