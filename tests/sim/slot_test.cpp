// Slots: range, types and the lists of each type agree on every board.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

TEST(SlotDriver, TypesOfTheChassis) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"slot_get_range", "slot_get_type 1", "slot_get_type 8", "slot_get_type 9",
                                  "slot_get_type 16"}),
              "0x0 1 16\n0x0 7\n0x0 2\n0x0 1\n0x0 5\n");
}

TEST(SlotDriver, ListsAreTheSameOnEveryBoardOfTheChassis) {
    for (const char *name : {"mpu_master", "mpu_slave", "lpu"}) {
        const test_board board = new_delivered(name);
        EXPECT_EQ(calls_print(board, {"slot_get_list 1", "slot_get_list 2", "slot_get_list 3", "slot_get_list 4",
                                      "slot_get_list 5", "slot_get_list 6", "slot_get_list 7", "slot_get_list 11"}),
                  "0x0 2: 9 10\n0x0 2: 7 8\n0x0 2: 11 12\n0x0 0:\n0x0 2: 15 16\n0x0 2: 13 14\n"
                  "0x0 6: 1 2 3 4 5 6\n0x0 0:\n")
            << name;
        EXPECT_EQ(calls_print(board, {"slot_get_num 1", "slot_get_num 7", "slot_get_num 8"}), "0x0 2\n0x0 6\n0x0 0\n")
            << name;
        EXPECT_EQ(calls_print(board, {"slot_get_start_num 1", "slot_get_start_num 7", "slot_get_start_num 8"}),
                  "0x0 9\n0x0 1\n0x0 0\n")
            << name;
    }
}

TEST(SlotDriver, ListIsAscendingWhateverTheDescriptionsOrder) {
    const test_board board =
        new_changed("mpu_master", "<slot number=\"11\" type=\"3\"/>\n  <slot number=\"12\" type=\"3\"/>",
                    "<slot number=\"12\" type=\"3\"/>\n  <slot number=\"11\" type=\"3\"/>");
    EXPECT_EQ(calls_print(board, {"slot_get_list 3", "slot_get_start_num 3"}), "0x0 2: 11 12\n0x0 11\n");
}

TEST(SlotDriver, UnknownSlotsAndTypes) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"slot_get_type 0", "slot_get_type 17", "slot_get_type 0xffffffff"}),
              no_such_device + no_such_device + no_such_device);
    EXPECT_EQ(calls_print(board, {"slot_get_num 0", "slot_get_num 12", "slot_get_start_num 0", "slot_get_start_num 12",
                                  "slot_get_list 0", "slot_get_list 12"}),
              bad_value + bad_value + bad_value + bad_value + bad_value + bad_value);
}

TEST(SlotDriver, SlotNumberThatNoListHolds) {
    const test_board board = new_changed("lpu", "<slot number=\"16\"", "<slot number=\"256\"");
    EXPECT_EQ(calls_print(board, {"slot_get_list 5"}), too_small);
}

TEST(SlotDriver, MissingAreas) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(calls_print(board, {"slot_get_type 1 null", "slot_get_range null", "slot_get_num 1 null",
                                  "slot_get_start_num 1 null", "slot_get_list 1 null"}),
              null_pointer + null_pointer + null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
