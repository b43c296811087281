// usb_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

std::string framed_wide(const std::string &test, const std::string &lines, const std::string &items) {
    return framed(banners::wide, test, lines, items);
}

} // namespace

TEST(UsbTest, UsageListsTheSubCommandsInOrder) {
    expect_run("usb_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_usb_init\n"
               " drv_usb_deinit\n"
               " drv_usb_get_num\n"
               " drv_usb_get_devmap           usb_id\n"
               " drv_usb_get_size             usb_id\n"
               " drv_usb_get_hotplug_ability  usb_id\n"
               " drv_usb_get_online_status    usb_id\n"
               " drv_usb_get_partition_num    usb_id\n"
               " drv_usb_hotplug_regist_event usb_id\n"
               " drv_usb_power_on      usb_id\n"
               " drv_usb_power_off     usb_id\n"
               " drv_usb_check_fault   usb_id\n"
               " drv_usb_recover_fault usb_id\n"
               " drv_usb_check_voltage_status usb_id\n"
               " drv_usb_get_irq_no inst_id usb_id\n",
               0);
}

// The root listing shows this module under the name of another.
TEST(UsbTest, RootListingDoesNotNameIt) {
    const process_result result = run_sim({"--state", new_scratch_dir() + "/state"}, {"-h"});
    EXPECT_EQ(result.out.find("usb_test"), std::string::npos);
    EXPECT_NE(result.out.find(" kestro_test mac_test\n kestro_test digital_test\n"), std::string::npos);
}

TEST(UsbTest, BannersStandAlone) {
    expect_success("usb_test drv_usb_init", "drv_usb_init() = 0",
                   "\n\n*********   test_usb_init test begin:  ********\n\n\n"
                   "drv_usb_init::inst_id:0xffffffff ret:0x0\n"
                   "para[0]=0x0 \r\n----kestro_test std result print end----\n"
                   "\n\n*********   test_usb_init test   end:  ********\n\n\n");
}

TEST(UsbTest, InitTakesNoWords) {
    for (const std::string words : {"", " 3", " 3 4", " board"}) {
        expect_success("usb_test drv_usb_init" + words, "drv_usb_init() = 0",
                       framed_wide("test_usb_init", "drv_usb_init::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
    }
    expect_failure(
        "usb_test drv_usb_init", "drv_usb_init() = 0x811101a4",
        framed_wide("test_usb_init", "drv_usb_init::inst_id:0xffffffff ret:0x811101a4\n", "para[0]=0x811101a4 "));
}

TEST(UsbTest, DeinitTakesNoWords) {
    for (const std::string words : {"", " 3", " 3 4", " board"}) {
        expect_success("usb_test drv_usb_deinit" + words, "drv_usb_deinit() = 0",
                       framed_wide("test_usb_deinit", "drv_usb_deinit::inst_id:0xffffffff ret:0x0\n", "para[0]=0x0 "));
    }
    expect_failure(
        "usb_test drv_usb_deinit", "drv_usb_deinit() = 0x811101a4",
        framed_wide("test_usb_deinit", "drv_usb_deinit::inst_id:0xffffffff ret:0x811101a4\n", "para[0]=0x811101a4 "));
}

TEST(UsbTest, GetNumTakesNoWords) {
    for (const std::string words : {"", " 3", " 3 4", " board"}) {
        expect_success("usb_test drv_usb_get_num" + words, "drv_usb_get_num() = 0 num=12",
                       framed_wide("test_usb_get_num", "drv_usb_get_num::inst_id:0xffffffff num:12 ret:0x0\n",
                                   "para[0]=0x0 para[1]=0xc "));
    }
    expect_success("usb_test drv_usb_get_num", "drv_usb_get_num() = 0 num=0xffffffff",
                   framed_wide("test_usb_get_num", "drv_usb_get_num::inst_id:0xffffffff num:-1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0xffffffff "));
    expect_failure("usb_test drv_usb_get_num", "drv_usb_get_num() = 0x811101a4",
                   framed_wide("test_usb_get_num", "drv_usb_get_num::inst_id:0xffffffff num:0 ret:0x811101a4\n",
                               "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(UsbTest, GetDevmap) {
    expect_success(
        "usb_test drv_usb_get_devmap 0xff000009 1", "drv_usb_get_devmap(usb_id=1, len=64) = 0 devmap=\"/dev/sda\"",
        framed_wide("test_usb_get_devmap", "drv_usb_get_devmap::inst_id:0xff000009 usb_id:1 devmap:/dev/sda ret:0x0\n",
                    "para[0]=0x0 para[1]=/dev/sda "));
    expect_success("usb_test drv_usb_get_devmap 1", "drv_usb_get_devmap(usb_id=1, len=64) = 0 devmap=\"/dev/sda\"",
                   framed_wide("test_usb_get_devmap",
                               "drv_usb_get_devmap::inst_id:0xffffffff usb_id:1 devmap:/dev/sda ret:0x0\n",
                               "para[0]=0x0 para[1]=/dev/sda "));
    expect_success("usb_test drv_usb_get_devmap", "drv_usb_get_devmap(usb_id=0, len=64) = 0",
                   framed_wide("test_usb_get_devmap",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_get_devmap::inst_id:0xffffffff usb_id:0 devmap: ret:0x0\n",
                               "para[0]=0x0 para[1]= "));
    expect_success("usb_test drv_usb_get_devmap 7 8 9", "drv_usb_get_devmap(usb_id=7, len=64) = 0",
                   framed_wide("test_usb_get_devmap",
                               "drv_usb_get_devmap::inst_id:0xffffffff usb_id:7 devmap: ret:0x0\n",
                               "para[0]=0x0 para[1]= "));
    expect_success("usb_test drv_usb_get_devmap board stick", "drv_usb_get_devmap(usb_id=0, len=64) = 0",
                   framed_wide("test_usb_get_devmap", "drv_usb_get_devmap::inst_id:0x0 usb_id:0 devmap: ret:0x0\n",
                               "para[0]=0x0 para[1]= "));
    expect_failure("usb_test drv_usb_get_devmap 2", "drv_usb_get_devmap(usb_id=2, len=64) = 0x811101a4",
                   framed_wide("test_usb_get_devmap",
                               "drv_usb_get_devmap::inst_id:0xffffffff usb_id:2 devmap: ret:0x811101a4\n",
                               "para[0]=0x811101a4 para[1]= "));
}

TEST(UsbTest, GetDevmapShowsAllSixtyFourBytes) {
    const std::string devmap(64, 'D');
    expect_success("usb_test drv_usb_get_devmap 1",
                   "drv_usb_get_devmap(usb_id=1, len=64) = 0 devmap=\"" + devmap + "\"",
                   framed_wide("test_usb_get_devmap",
                               "drv_usb_get_devmap::inst_id:0xffffffff usb_id:1 devmap:" + devmap + " ret:0x0\n",
                               "para[0]=0x0 para[1]=" + devmap + " "));
}

TEST(UsbTest, GetSizeBearsTheNameOfTheCount) {
    expect_success("usb_test drv_usb_get_size 0xff000009 1", "drv_usb_get_size(usb_id=1) = 0 size=18",
                   framed_wide("test_usb_get_size", "drv_usb_get_num::inst_id:0xff000009 usb_id:1 size:18 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x12 "));
    expect_success("usb_test drv_usb_get_size 0x10", "drv_usb_get_size(usb_id=16) = 0 size=0xfffffffe",
                   framed_wide("test_usb_get_size", "drv_usb_get_num::inst_id:0xffffffff usb_id:16 size:-2 ret:0x0\n",
                               "para[0]=0x0 para[1]=0xfffffffe "));
    expect_success("usb_test drv_usb_get_size", "drv_usb_get_size(usb_id=0) = 0 size=1",
                   framed_wide("test_usb_get_size",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_get_num::inst_id:0xffffffff usb_id:0 size:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_get_size 7 8 9", "drv_usb_get_size(usb_id=7) = 0 size=1",
                   framed_wide("test_usb_get_size", "drv_usb_get_num::inst_id:0xffffffff usb_id:7 size:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_get_size board stick", "drv_usb_get_size(usb_id=0) = 0 size=1",
                   framed_wide("test_usb_get_size", "drv_usb_get_num::inst_id:0x0 usb_id:0 size:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_failure("usb_test drv_usb_get_size 2", "drv_usb_get_size(usb_id=2) = 0x811101a4",
                   framed_wide("test_usb_get_size",
                               "drv_usb_get_num::inst_id:0xffffffff usb_id:2 size:0 ret:0x811101a4\n",
                               "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(UsbTest, GetHotplugAbility) {
    expect_success("usb_test drv_usb_get_hotplug_ability 0xff000009 1",
                   "drv_usb_get_hotplug_ability(usb_id=1) = 0 hotplug=18",
                   framed_wide("test_usb_get_hotplug_ability",
                               "drv_usb_get_hotplug_ability::inst_id:0xff000009 usb_id:1 hotplug:18 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x12 "));
    expect_success("usb_test drv_usb_get_hotplug_ability 0x10",
                   "drv_usb_get_hotplug_ability(usb_id=16) = 0 hotplug=0xfffffffe",
                   framed_wide("test_usb_get_hotplug_ability",
                               "drv_usb_get_hotplug_ability::inst_id:0xffffffff usb_id:16 hotplug:-2 ret:0x0\n",
                               "para[0]=0x0 para[1]=0xfffffffe "));
    expect_success("usb_test drv_usb_get_hotplug_ability", "drv_usb_get_hotplug_ability(usb_id=0) = 0 hotplug=1",
                   framed_wide("test_usb_get_hotplug_ability",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_get_hotplug_ability::inst_id:0xffffffff usb_id:0 hotplug:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_get_hotplug_ability 7 8 9", "drv_usb_get_hotplug_ability(usb_id=7) = 0 hotplug=1",
                   framed_wide("test_usb_get_hotplug_ability",
                               "drv_usb_get_hotplug_ability::inst_id:0xffffffff usb_id:7 hotplug:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_get_hotplug_ability board stick",
                   "drv_usb_get_hotplug_ability(usb_id=0) = 0 hotplug=1",
                   framed_wide("test_usb_get_hotplug_ability",
                               "drv_usb_get_hotplug_ability::inst_id:0x0 usb_id:0 hotplug:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_failure("usb_test drv_usb_get_hotplug_ability 2", "drv_usb_get_hotplug_ability(usb_id=2) = 0x811101a4",
                   framed_wide("test_usb_get_hotplug_ability",
                               "drv_usb_get_hotplug_ability::inst_id:0xffffffff usb_id:2 hotplug:0 ret:0x811101a4\n",
                               "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(UsbTest, GetOnlineStatus) {
    expect_success("usb_test drv_usb_get_online_status 0xff000009 1",
                   "drv_usb_get_online_status(usb_id=1) = 0 online=18",
                   framed_wide("test_usb_get_online_status",
                               "drv_usb_get_online_status::inst_id:0xff000009 usb_id:1 online:18 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x12 "));
    expect_success("usb_test drv_usb_get_online_status 0x10",
                   "drv_usb_get_online_status(usb_id=16) = 0 online=0xfffffffe",
                   framed_wide("test_usb_get_online_status",
                               "drv_usb_get_online_status::inst_id:0xffffffff usb_id:16 online:-2 ret:0x0\n",
                               "para[0]=0x0 para[1]=0xfffffffe "));
    expect_success("usb_test drv_usb_get_online_status", "drv_usb_get_online_status(usb_id=0) = 0 online=1",
                   framed_wide("test_usb_get_online_status",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_get_online_status::inst_id:0xffffffff usb_id:0 online:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_get_online_status 7 8 9", "drv_usb_get_online_status(usb_id=7) = 0 online=1",
                   framed_wide("test_usb_get_online_status",
                               "drv_usb_get_online_status::inst_id:0xffffffff usb_id:7 online:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_get_online_status board stick", "drv_usb_get_online_status(usb_id=0) = 0 online=1",
                   framed_wide("test_usb_get_online_status",
                               "drv_usb_get_online_status::inst_id:0x0 usb_id:0 online:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_failure("usb_test drv_usb_get_online_status 2", "drv_usb_get_online_status(usb_id=2) = 0x811101a4",
                   framed_wide("test_usb_get_online_status",
                               "drv_usb_get_online_status::inst_id:0xffffffff usb_id:2 online:0 ret:0x811101a4\n",
                               "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(UsbTest, GetPartitionNum) {
    expect_success("usb_test drv_usb_get_partition_num 0xff000009 1", "drv_usb_get_partition_num(usb_id=1) = 0 num=18",
                   framed_wide("test_usb_get_partition_num",
                               "drv_usb_get_partition_num::inst_id:0xff000009 usb_id:1 partit:18 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x12 "));
    expect_success("usb_test drv_usb_get_partition_num 0x10", "drv_usb_get_partition_num(usb_id=16) = 0 num=0xfffffffe",
                   framed_wide("test_usb_get_partition_num",
                               "drv_usb_get_partition_num::inst_id:0xffffffff usb_id:16 partit:-2 ret:0x0\n",
                               "para[0]=0x0 para[1]=0xfffffffe "));
    expect_success("usb_test drv_usb_get_partition_num", "drv_usb_get_partition_num(usb_id=0) = 0 num=1",
                   framed_wide("test_usb_get_partition_num",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_get_partition_num::inst_id:0xffffffff usb_id:0 partit:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_get_partition_num 7 8 9", "drv_usb_get_partition_num(usb_id=7) = 0 num=1",
                   framed_wide("test_usb_get_partition_num",
                               "drv_usb_get_partition_num::inst_id:0xffffffff usb_id:7 partit:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_get_partition_num board stick", "drv_usb_get_partition_num(usb_id=0) = 0 num=1",
                   framed_wide("test_usb_get_partition_num",
                               "drv_usb_get_partition_num::inst_id:0x0 usb_id:0 partit:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_failure("usb_test drv_usb_get_partition_num 2", "drv_usb_get_partition_num(usb_id=2) = 0x811101a4",
                   framed_wide("test_usb_get_partition_num",
                               "drv_usb_get_partition_num::inst_id:0xffffffff usb_id:2 partit:0 ret:0x811101a4\n",
                               "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(UsbTest, HotplugRegistEvent) {
    expect_success("usb_test drv_usb_hotplug_regist_event 0xff000009 1", "drv_usb_hotplug_regist_event(usb_id=1) = 0",
                   framed_wide("test_usb_hotplug_regist_event",
                               "drv_usb_hotplug_regist_event::inst_id:0xff000009 usb_id:1 reg ret:0x0\n",
                               "para[0]=0x0 "));
    expect_success(
        "usb_test drv_usb_hotplug_regist_event 0xfffffffe", "drv_usb_hotplug_regist_event(usb_id=0xfffffffe) = 0",
        framed_wide("test_usb_hotplug_regist_event",
                    "drv_usb_hotplug_regist_event::inst_id:0xffffffff usb_id:-2 reg ret:0x0\n", "para[0]=0x0 "));
    expect_success("usb_test drv_usb_hotplug_regist_event", "drv_usb_hotplug_regist_event(usb_id=0) = 0",
                   framed_wide("test_usb_hotplug_regist_event",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_hotplug_regist_event::inst_id:0xffffffff usb_id:0 reg ret:0x0\n",
                               "para[0]=0x0 "));
    expect_success("usb_test drv_usb_hotplug_regist_event 7 8 9", "drv_usb_hotplug_regist_event(usb_id=7) = 0",
                   framed_wide("test_usb_hotplug_regist_event",
                               "drv_usb_hotplug_regist_event::inst_id:0xffffffff usb_id:7 reg ret:0x0\n",
                               "para[0]=0x0 "));
    expect_success("usb_test drv_usb_hotplug_regist_event board stick", "drv_usb_hotplug_regist_event(usb_id=0) = 0",
                   framed_wide("test_usb_hotplug_regist_event",
                               "drv_usb_hotplug_regist_event::inst_id:0x0 usb_id:0 reg ret:0x0\n", "para[0]=0x0 "));
    expect_failure("usb_test drv_usb_hotplug_regist_event 2", "drv_usb_hotplug_regist_event(usb_id=2) = 0x811101a4",
                   framed_wide("test_usb_hotplug_regist_event",
                               "drv_usb_hotplug_regist_event::inst_id:0xffffffff usb_id:2 reg ret:0x811101a4\n",
                               "para[0]=0x811101a4 "));
}

TEST(UsbTest, PowerOn) {
    expect_success("usb_test drv_usb_power_on 0xff000009 1", "drv_usb_power_on(usb_id=1) = 0",
                   framed_wide("test_usb_power_on", "drv_usb_power_on::inst_id:0xff000009 usb_id:1 power on ret:0x0\n",
                               "para[0]=0x0 "));
    expect_success("usb_test drv_usb_power_on 0xfffffffe", "drv_usb_power_on(usb_id=0xfffffffe) = 0",
                   framed_wide("test_usb_power_on", "drv_usb_power_on::inst_id:0xffffffff usb_id:-2 power on ret:0x0\n",
                               "para[0]=0x0 "));
    expect_success("usb_test drv_usb_power_on", "drv_usb_power_on(usb_id=0) = 0",
                   framed_wide("test_usb_power_on",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_power_on::inst_id:0xffffffff usb_id:0 power on ret:0x0\n",
                               "para[0]=0x0 "));
    expect_success("usb_test drv_usb_power_on 7 8 9", "drv_usb_power_on(usb_id=7) = 0",
                   framed_wide("test_usb_power_on", "drv_usb_power_on::inst_id:0xffffffff usb_id:7 power on ret:0x0\n",
                               "para[0]=0x0 "));
    expect_success(
        "usb_test drv_usb_power_on board stick", "drv_usb_power_on(usb_id=0) = 0",
        framed_wide("test_usb_power_on", "drv_usb_power_on::inst_id:0x0 usb_id:0 power on ret:0x0\n", "para[0]=0x0 "));
    expect_failure("usb_test drv_usb_power_on 2", "drv_usb_power_on(usb_id=2) = 0x811101a4",
                   framed_wide("test_usb_power_on",
                               "drv_usb_power_on::inst_id:0xffffffff usb_id:2 power on ret:0x811101a4\n",
                               "para[0]=0x811101a4 "));
}

TEST(UsbTest, PowerOff) {
    expect_success("usb_test drv_usb_power_off 0xff000009 1", "drv_usb_power_off(usb_id=1) = 0",
                   framed_wide("test_usb_power_off",
                               "drv_usb_power_off::inst_id:0xff000009 usb_id:1 power off ret:0x0\n", "para[0]=0x0 "));
    expect_success("usb_test drv_usb_power_off 0xfffffffe", "drv_usb_power_off(usb_id=0xfffffffe) = 0",
                   framed_wide("test_usb_power_off",
                               "drv_usb_power_off::inst_id:0xffffffff usb_id:-2 power off ret:0x0\n", "para[0]=0x0 "));
    expect_success("usb_test drv_usb_power_off", "drv_usb_power_off(usb_id=0) = 0",
                   framed_wide("test_usb_power_off",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_power_off::inst_id:0xffffffff usb_id:0 power off ret:0x0\n",
                               "para[0]=0x0 "));
    expect_success("usb_test drv_usb_power_off 7 8 9", "drv_usb_power_off(usb_id=7) = 0",
                   framed_wide("test_usb_power_off",
                               "drv_usb_power_off::inst_id:0xffffffff usb_id:7 power off ret:0x0\n", "para[0]=0x0 "));
    expect_success("usb_test drv_usb_power_off board stick", "drv_usb_power_off(usb_id=0) = 0",
                   framed_wide("test_usb_power_off", "drv_usb_power_off::inst_id:0x0 usb_id:0 power off ret:0x0\n",
                               "para[0]=0x0 "));
    expect_failure("usb_test drv_usb_power_off 2", "drv_usb_power_off(usb_id=2) = 0x811101a4",
                   framed_wide("test_usb_power_off",
                               "drv_usb_power_off::inst_id:0xffffffff usb_id:2 power off ret:0x811101a4\n",
                               "para[0]=0x811101a4 "));
}

TEST(UsbTest, CheckFault) {
    expect_success("usb_test drv_usb_check_fault 0xff000009 1", "drv_usb_check_fault(usb_id=1) = 0 fault=18",
                   framed_wide("test_usb_check_fault",
                               "drv_usb_check_fault::inst_id:0xff000009 usb_id:1 check_fault:18 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x12 "));
    expect_success("usb_test drv_usb_check_fault 0x10", "drv_usb_check_fault(usb_id=16) = 0 fault=0xfffffffe",
                   framed_wide("test_usb_check_fault",
                               "drv_usb_check_fault::inst_id:0xffffffff usb_id:16 check_fault:-2 ret:0x0\n",
                               "para[0]=0x0 para[1]=0xfffffffe "));
    expect_success("usb_test drv_usb_check_fault", "drv_usb_check_fault(usb_id=0) = 0 fault=1",
                   framed_wide("test_usb_check_fault",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_check_fault::inst_id:0xffffffff usb_id:0 check_fault:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_check_fault 7 8 9", "drv_usb_check_fault(usb_id=7) = 0 fault=1",
                   framed_wide("test_usb_check_fault",
                               "drv_usb_check_fault::inst_id:0xffffffff usb_id:7 check_fault:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_check_fault board stick", "drv_usb_check_fault(usb_id=0) = 0 fault=1",
                   framed_wide("test_usb_check_fault",
                               "drv_usb_check_fault::inst_id:0x0 usb_id:0 check_fault:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_failure("usb_test drv_usb_check_fault 2", "drv_usb_check_fault(usb_id=2) = 0x811101a4",
                   framed_wide("test_usb_check_fault",
                               "drv_usb_check_fault::inst_id:0xffffffff usb_id:2 check_fault:0 ret:0x811101a4\n",
                               "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(UsbTest, RecoverFault) {
    expect_success("usb_test drv_usb_recover_fault 0xff000009 1", "drv_usb_recover_fault(usb_id=1) = 0 result=18",
                   framed_wide("test_usb_recover_fault",
                               "drv_usb_recover_fault::inst_id:0xff000009 usb_id:1 recover_fault:18 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x12 "));
    expect_success("usb_test drv_usb_recover_fault 0x10", "drv_usb_recover_fault(usb_id=16) = 0 result=0xfffffffe",
                   framed_wide("test_usb_recover_fault",
                               "drv_usb_recover_fault::inst_id:0xffffffff usb_id:16 recover_fault:-2 ret:0x0\n",
                               "para[0]=0x0 para[1]=0xfffffffe "));
    expect_success("usb_test drv_usb_recover_fault", "drv_usb_recover_fault(usb_id=0) = 0 result=1",
                   framed_wide("test_usb_recover_fault",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_recover_fault::inst_id:0xffffffff usb_id:0 recover_fault:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_recover_fault 7 8 9", "drv_usb_recover_fault(usb_id=7) = 0 result=1",
                   framed_wide("test_usb_recover_fault",
                               "drv_usb_recover_fault::inst_id:0xffffffff usb_id:7 recover_fault:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_recover_fault board stick", "drv_usb_recover_fault(usb_id=0) = 0 result=1",
                   framed_wide("test_usb_recover_fault",
                               "drv_usb_recover_fault::inst_id:0x0 usb_id:0 recover_fault:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_failure("usb_test drv_usb_recover_fault 2", "drv_usb_recover_fault(usb_id=2) = 0x811101a4",
                   framed_wide("test_usb_recover_fault",
                               "drv_usb_recover_fault::inst_id:0xffffffff usb_id:2 recover_fault:0 ret:0x811101a4\n",
                               "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(UsbTest, CheckVoltageStatus) {
    expect_success("usb_test drv_usb_check_voltage_status 0xff000009 1",
                   "drv_usb_check_voltage_status(usb_id=1) = 0 status=18",
                   framed_wide("test_usb_check_voltage_status",
                               "drv_usb_check_voltage_status::inst_id:0xff000009 usb_id:1 check_volt:18 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x12 "));
    expect_success("usb_test drv_usb_check_voltage_status 0x10",
                   "drv_usb_check_voltage_status(usb_id=16) = 0 status=0xfffffffe",
                   framed_wide("test_usb_check_voltage_status",
                               "drv_usb_check_voltage_status::inst_id:0xffffffff usb_id:16 check_volt:-2 ret:0x0\n",
                               "para[0]=0x0 para[1]=0xfffffffe "));
    expect_success("usb_test drv_usb_check_voltage_status", "drv_usb_check_voltage_status(usb_id=0) = 0 status=1",
                   framed_wide("test_usb_check_voltage_status",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_check_voltage_status::inst_id:0xffffffff usb_id:0 check_volt:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_check_voltage_status 7 8 9", "drv_usb_check_voltage_status(usb_id=7) = 0 status=1",
                   framed_wide("test_usb_check_voltage_status",
                               "drv_usb_check_voltage_status::inst_id:0xffffffff usb_id:7 check_volt:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_check_voltage_status board stick",
                   "drv_usb_check_voltage_status(usb_id=0) = 0 status=1",
                   framed_wide("test_usb_check_voltage_status",
                               "drv_usb_check_voltage_status::inst_id:0x0 usb_id:0 check_volt:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_failure(
        "usb_test drv_usb_check_voltage_status 2", "drv_usb_check_voltage_status(usb_id=2) = 0x811101a4",
        framed_wide("test_usb_check_voltage_status",
                    "drv_usb_check_voltage_status::inst_id:0xffffffff usb_id:2 check_volt:0 ret:0x811101a4\n",
                    "para[0]=0x811101a4 para[1]=0x0 "));
}

TEST(UsbTest, GetIrqNo) {
    expect_success("usb_test drv_usb_get_irq_no 0xff000009 1", "drv_usb_get_irq_no(usb_id=1) = 0 irq_no=18",
                   framed_wide("test_usb_get_irq_no",
                               "drv_usb_get_irq_no::inst_id:0xff000009 usb_id:1 irq_no:18 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x12 "));
    expect_success("usb_test drv_usb_get_irq_no 0x10", "drv_usb_get_irq_no(usb_id=16) = 0 irq_no=0xfffffffe",
                   framed_wide("test_usb_get_irq_no",
                               "drv_usb_get_irq_no::inst_id:0xffffffff usb_id:16 irq_no:-2 ret:0x0\n",
                               "para[0]=0x0 para[1]=0xfffffffe "));
    expect_success("usb_test drv_usb_get_irq_no", "drv_usb_get_irq_no(usb_id=0) = 0 irq_no=1",
                   framed_wide("test_usb_get_irq_no",
                               "input error : in_num : 0 over [1-2] .\n"
                               "drv_usb_get_irq_no::inst_id:0xffffffff usb_id:0 irq_no:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_get_irq_no 7 8 9", "drv_usb_get_irq_no(usb_id=7) = 0 irq_no=1",
                   framed_wide("test_usb_get_irq_no",
                               "drv_usb_get_irq_no::inst_id:0xffffffff usb_id:7 irq_no:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_success("usb_test drv_usb_get_irq_no board stick", "drv_usb_get_irq_no(usb_id=0) = 0 irq_no=1",
                   framed_wide("test_usb_get_irq_no", "drv_usb_get_irq_no::inst_id:0x0 usb_id:0 irq_no:1 ret:0x0\n",
                               "para[0]=0x0 para[1]=0x1 "));
    expect_failure("usb_test drv_usb_get_irq_no 2", "drv_usb_get_irq_no(usb_id=2) = 0x811101a4",
                   framed_wide("test_usb_get_irq_no",
                               "drv_usb_get_irq_no::inst_id:0xffffffff usb_id:2 irq_no:0 ret:0x811101a4\n",
                               "para[0]=0x811101a4 para[1]=0x0 "));
}
