// device_test: every kind of slot on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "tests/support/command.h"

using namespace kestro_tests;

namespace {

const std::string head = "\r\nDevice status:"
                         "\r\nSlot #    Type       Online    Primary       "
                         "\r\n- - - - - - - - - - - - - - - - - - - - - - - - - - - - - -";
const std::string foot = "\r\n- - - - - - - - - - - - - - - - - - - - - - - - - - - - - -\r\n";

const std::string four_slots = "drv_slot_get_range() = 0 slot_min=1 slot_max=4\n";

// A chassis of one slot with a control plane in it, and what is asked of it.
std::string control_plane(const std::string &calls) {
    return "drv_slot_get_range() = 0 slot_min=17 slot_max=17\ndrv_slot_get_type(slot_id=17) = 0 type=8\n" + calls;
}

} // namespace

TEST(DeviceTest, UsageListsTheSubCommand) {
    expect_run("device_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " show_device\n",
               0);
}

TEST(DeviceTest, NamesEveryType) {
    expect_success("device_test show_device",
                   "drv_slot_get_range() = 0 slot_min=0 slot_max=11\n"
                   "drv_slot_get_type(slot_id=0) = 0 type=0\n"
                   "drv_slot_get_type(slot_id=1) = 0 type=1\n"
                   "drv_slot_get_type(slot_id=2) = 0 type=2\n"
                   "drv_slot_get_type(slot_id=3) = 0 type=3\n"
                   "drv_slot_get_type(slot_id=4) = 0 type=4\n"
                   "drv_slot_get_type(slot_id=5) = 0 type=5\n"
                   "drv_fan_get_online_status(slot_id=5) = 0 online=1\n"
                   "drv_slot_get_type(slot_id=6) = 0 type=6\n"
                   "drv_slot_get_type(slot_id=7) = 0 type=7\n"
                   "drv_board_get_online_status(inst_id=0xff000007) = 0 status=0\n"
                   "drv_slot_get_type(slot_id=8) = 0 type=8\n"
                   "drv_board_get_self_logic_slotid() = 0 slot_id=8\n"
                   "drv_board_get_self_online_status() = 0 status=0\n"
                   "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=0\n"
                   "drv_slot_get_type(slot_id=9) = 0 type=9\n"
                   "drv_slot_get_type(slot_id=10) = 0 type=10\n"
                   "drv_slot_get_type(slot_id=11) = 0 type=11",
                   head +
                       "\r\n0         UNKNOWN    Present   NA            "
                       "\r\n1         MPU        Present   NA            "
                       "\r\n2         LPU        Present   NA            "
                       "\r\n3         SFU        Present   NA            "
                       "\r\n4         CMU        Present   NA            "
                       "\r\n5         FAN        Present   NA            "
                       "\r\n6         PWR        Present   NA            "
                       "\r\n7         PIC        Present   NA            "
                       "\r\n8         CXP        Present   Master        "
                       "\r\n9         CLK        Present   NA            "
                       "\r\n10        LCD        Present   NA            "
                       "\r\n11        UNKNOWN    Present   NA            " +
                       foot);
}

TEST(DeviceTest, TakesNoWords) {
    expect_success("device_test show_device 5 six",
                   "drv_slot_get_range() = 0 slot_min=3 slot_max=3\ndrv_slot_get_type(slot_id=3) = 0 type=0xffffffff",
                   head + "\r\n3         UNKNOWN    Present   NA            " + foot);
}

TEST(DeviceTest, LeavesOutTraysThatAreNotThere) {
    expect_success("device_test show_device",
                   four_slots + "drv_slot_get_type(slot_id=1) = 0 type=5\n"
                                "drv_fan_get_online_status(slot_id=1) = 0 online=0\n"
                                "drv_slot_get_type(slot_id=2) = 0 type=5\n"
                                "drv_fan_get_online_status(slot_id=2) = 0x811101a4 online=1\n"
                                "drv_slot_get_type(slot_id=3) = 0 type=5\n"
                                "drv_fan_get_online_status(slot_id=3) = 0 online=2\n"
                                "drv_slot_get_type(slot_id=4) = 0 type=5\n"
                                "drv_fan_get_online_status(slot_id=4) = 0",
                   head + "\r\n3         FAN        Present   NA            " + foot);
}

TEST(DeviceTest, LeavesOutCardsThatAreNotThere) {
    expect_success("device_test show_device",
                   four_slots + "drv_slot_get_type(slot_id=1) = 0 type=7\n"
                                "drv_board_get_online_status(inst_id=0xff000001) = 0 status=1\n"
                                "drv_slot_get_type(slot_id=2) = 0 type=7\n"
                                "drv_board_get_online_status(inst_id=0xff000002) = 0x811101a4 status=0\n"
                                "drv_slot_get_type(slot_id=3) = 0 type=7\n"
                                "drv_board_get_online_status(inst_id=0xff000003) = 0 status=2\n"
                                "drv_slot_get_type(slot_id=4) = 0 type=7\n"
                                "drv_board_get_online_status(inst_id=0xff000004) = 0",
                   head + "\r\n3         PIC        Present   NA            " + foot);
}

TEST(DeviceTest, TheOtherControlPlaneIsWhatThisOneIsNot) {
    const std::string both = "drv_slot_get_range() = 0 slot_min=17 slot_max=18\n"
                             "drv_slot_get_type(slot_id=17) = 0 type=8\n"
                             "drv_slot_get_type(slot_id=18) = 0 type=8\n"
                             "drv_board_get_self_logic_slotid() = 0 slot_id=18 x2\n"
                             "drv_board_get_peer_online_status() = 0 status=0\n"
                             "drv_board_get_self_online_status() = 0 status=0\n";
    expect_success("device_test show_device", both + "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=0 x2",
                   head +
                       "\r\n17        CXP        Present   Slave         "
                       "\r\n18        CXP        Present   Master        " +
                       foot);
    expect_success("device_test show_device", both + "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=1 x2",
                   head +
                       "\r\n17        CXP        Present   Master        "
                       "\r\n18        CXP        Present   Slave         " +
                       foot);
    expect_success("device_test show_device", both + "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0 state=2 x2",
                   head +
                       "\r\n17        CXP        Present   NA            "
                       "\r\n18        CXP        Present   NA            " +
                       foot);
}

TEST(DeviceTest, LeavesOutControlPlanesThatAreNotThere) {
    expect_success("device_test show_device",
                   control_plane("drv_board_get_self_logic_slotid() = 0 slot_id=18\n"
                                 "drv_board_get_peer_online_status() = 0 status=1"),
                   head + foot);
    expect_success("device_test show_device",
                   control_plane("drv_board_get_self_logic_slotid() = 0 slot_id=18\n"
                                 "drv_board_get_peer_online_status() = 0x12 status=0"),
                   head + foot);
    expect_success("device_test show_device",
                   control_plane("drv_board_get_self_logic_slotid() = 0 slot_id=17\n"
                                 "drv_board_get_self_online_status() = 0 status=1"),
                   head + foot);
    expect_success("device_test show_device",
                   control_plane("drv_board_get_self_logic_slotid() = 0 slot_id=17\n"
                                 "drv_board_get_self_online_status() = 0x12 status=0"),
                   head + foot);
}

TEST(DeviceTest, FailuresOfThePrimaryColumnAreTold) {
    expect_success("device_test show_device", control_plane("drv_board_get_self_logic_slotid() = 0x811101a4"),
                   head +
                       "\r\nError: drv_board_get_self_logic_slotid ret[0x811101a4]"
                       "\r\n17        CXP        Present   NA            " +
                       foot);
    expect_success("device_test show_device",
                   control_plane("drv_board_get_self_logic_slotid() = 0 slot_id=17\n"
                                 "drv_board_get_self_online_status() = 0 status=0\n"
                                 "drv_msc_get_state(inst_id=0xffffffff, sw_mode=0) = 0x811101a4"),
                   head +
                       "\r\nError: drv_msc_get_state ret[0x811101a4]"
                       "\r\n17        CXP        Present   NA            " +
                       foot);
}

TEST(DeviceTest, EndsAtOnceWithoutRangeOrType) {
    expect_failure("device_test show_device", "drv_slot_get_range() = 0x811101a4",
                   head + "\r\nError: drv_slot_get_range ret[0x811101a4]");
    expect_failure("device_test show_device",
                   four_slots + "drv_slot_get_type(slot_id=1) = 0 type=2\ndrv_slot_get_type(slot_id=2) = 0x12",
                   head + "\r\n1         LPU        Present   NA            \r\nError: drv_slot_get_type ret[0x12]");
}

// A range that ends before it begins is an empty one; the last slot there can be is the end of any.
TEST(DeviceTest, ShowsTheRangeAsItIs) {
    expect_success("device_test show_device", "drv_slot_get_range() = 0 slot_min=5 slot_max=4", head + foot);
    expect_success("device_test show_device",
                   "drv_slot_get_range() = 0 slot_min=0xffffffff slot_max=0xffffffff\n"
                   "drv_slot_get_type(slot_id=0xffffffff) = 0 type=1",
                   head + "\r\n4294967295MPU        Present   NA            " + foot);
}
