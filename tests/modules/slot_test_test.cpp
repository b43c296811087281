// slot_test: every sub-command on the real program, with the driver scripted.
#include <gtest/gtest.h>

#include "drv_basic/management/drv_slot.h"
#include "tests/support/command.h"

using namespace kestro_tests;

TEST(SlotTest, UsageListsTheSubCommandsInOrder) {
    expect_run("slot_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " slot_get_type\n"
               " slot_get_range\n"
               " slot_get_num\n"
               " slot_get_start_num\n"
               " slot_get_list\n",
               0);
}

TEST(SlotTest, GetType) {
    expect_success("slot_test slot_get_type 5", "drv_slot_get_type(slot_id=5) = 0 type=1", "drv_slot_get_type:1\r\n");
    expect_success("slot_test slot_get_type 0x10 2", "drv_slot_get_type(slot_id=16) = 0 type=0xffffffff",
                   "drv_slot_get_type:-1\r\n");
    expect_success("slot_test slot_get_type fan", "drv_slot_get_type(slot_id=0) = 0 type=5", "drv_slot_get_type:5\r\n");
    expect_failure("slot_test slot_get_type", "", "");
    expect_failure("slot_test slot_get_type 99", "drv_slot_get_type(slot_id=99) = 0x12", "drv_slot_get_type:0\r\n");
}

TEST(SlotTest, GetRangeTakesNoWords) {
    expect_success("slot_test slot_get_range", "drv_slot_get_range() = 0 slot_min=1 slot_max=17",
                   "drv_slot_get_range, slot_min:1, slot_max:17 \r\n");
    expect_success("slot_test slot_get_range 3", "drv_slot_get_range() = 0 slot_min=0 slot_max=0xfffffffe",
                   "drv_slot_get_range, slot_min:0, slot_max:-2 \r\n");
    expect_success("slot_test slot_get_range all 2 3", "drv_slot_get_range() = 0 slot_min=2 slot_max=4",
                   "drv_slot_get_range, slot_min:2, slot_max:4 \r\n");
    expect_failure("slot_test slot_get_range", "drv_slot_get_range() = 0x811101a4",
                   "drv_slot_get_range, slot_min:0, slot_max:0 \r\n");
}

TEST(SlotTest, GetNum) {
    expect_success("slot_test slot_get_num 5", "drv_slot_get_num(type=5) = 0 num=3", "drv_slot_get_num:3 \r\n");
    expect_success("slot_test slot_get_num 010 5", "drv_slot_get_num(type=8) = 0 num=0xffffffff",
                   "drv_slot_get_num:-1 \r\n");
    expect_success("slot_test slot_get_num fan", "drv_slot_get_num(type=0) = 0 num=0", "drv_slot_get_num:0 \r\n");
    expect_failure("slot_test slot_get_num", "", "");
    expect_failure("slot_test slot_get_num 12", "drv_slot_get_num(type=12) = 0x811101a4 num=4",
                   "drv_slot_get_num:4 \r\n");
}

TEST(SlotTest, GetStartNum) {
    expect_success("slot_test slot_get_start_num 5", "drv_slot_get_start_num(type=5) = 0 start_num=20",
                   "drv_slot_get_start_num:20 \r\n");
    expect_success("slot_test slot_get_start_num 2 5", "drv_slot_get_start_num(type=2) = 0 start_num=0xffffffff",
                   "drv_slot_get_start_num:-1 \r\n");
    expect_success("slot_test slot_get_start_num fan", "drv_slot_get_start_num(type=0) = 0 start_num=1",
                   "drv_slot_get_start_num:1 \r\n");
    expect_failure("slot_test slot_get_start_num", "", "");
    expect_failure("slot_test slot_get_start_num 1", "drv_slot_get_start_num(type=1) = 7",
                   "drv_slot_get_start_num:0 \r\n");
}

TEST(SlotTest, GetListShowsASlotALine) {
    expect_success("slot_test slot_get_list 5", "drv_slot_get_list(type=5) = 0 list={num=3 slot_id=[04 05 07]}",
                   "drv_slot_get_list, num:3 \r\n"
                   "drv_slot_get_list, slot_id:4 \r\n"
                   "drv_slot_get_list, slot_id:5 \r\n"
                   "drv_slot_get_list, slot_id:7 \r\n");
    expect_success("slot_test slot_get_list 0xa 5", "drv_slot_get_list(type=10) = 0 list={num=1 slot_id=[07 06]}",
                   "drv_slot_get_list, num:1 \r\n"
                   "drv_slot_get_list, slot_id:7 \r\n");
    expect_success("slot_test slot_get_list fan", "drv_slot_get_list(type=0) = 0", "drv_slot_get_list, num:0 \r\n");
}

TEST(SlotTest, GetListShowsNoMoreThanTheRecordHolds) {
    std::string lines = "drv_slot_get_list, num:-1 \r\n"
                        "drv_slot_get_list, slot_id:6 \r\n";
    for (uint32_t i = 1; i < DRV_SLOT_LIST_MAX; ++i) {
        lines += "drv_slot_get_list, slot_id:0 \r\n";
    }
    expect_success("slot_test slot_get_list 2", "drv_slot_get_list(type=2) = 0 list={num=0xffffffff slot_id=[06]}",
                   lines);
}

TEST(SlotTest, GetListWithoutAWordAndFailure) {
    expect_failure("slot_test slot_get_list", "", "");
    expect_failure("slot_test slot_get_list 5", "drv_slot_get_list(type=5) = 0x15", "drv_slot_get_list, num:0 \r\n");
    expect_failure("slot_test slot_get_list 5", "drv_slot_get_list(type=5) = 0x15 list={num=1 slot_id=[03]}",
                   "drv_slot_get_list, num:1 \r\n"
                   "drv_slot_get_list, slot_id:3 \r\n");
}
