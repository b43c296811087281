// Slots: range, types and the lists of each type agree on every board.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

// The list with these slots, and nothing behind them.
std::string list_of(const std::vector<char> &slots) {
    const size_t room = 128;
    return "{num=" + std::to_string(slots.size()) + " slot_id=" + bytes(std::string(slots.begin(), slots.end()), room) +
           "}";
}

} // namespace

TEST(SlotDriver, TypesOfTheChassis) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_slot_get_range()", "drv_slot_get_type(slot_id=1)", "drv_slot_get_type(slot_id=8)",
                              "drv_slot_get_type(slot_id=9)", "drv_slot_get_type(slot_id=16)"}),
              "0x0 slot_min=1 slot_max=16\n0x0 type=7\n0x0 type=2\n0x0 type=1\n0x0 type=5\n");
}

TEST(SlotDriver, ListsAreTheSameOnEveryBoardOfTheChassis) {
    for (const char *name : {"mpu_master", "mpu_slave", "lpu"}) {
        const test_board board = new_delivered(name);
        EXPECT_EQ(answers(board, {"drv_slot_get_list(type=1)", "drv_slot_get_list(type=2)", "drv_slot_get_list(type=3)",
                                  "drv_slot_get_list(type=4)", "drv_slot_get_list(type=5)", "drv_slot_get_list(type=6)",
                                  "drv_slot_get_list(type=7)", "drv_slot_get_list(type=11)"}),
                  "0x0 list=" + list_of({9, 10}) + "\n0x0 list=" + list_of({7, 8}) + "\n0x0 list=" + list_of({11, 12}) +
                      "\n0x0 list=" + list_of({}) + "\n0x0 list=" + list_of({15, 16}) +
                      "\n0x0 list=" + list_of({13, 14}) + "\n0x0 list=" + list_of({1, 2, 3, 4, 5, 6}) +
                      "\n0x0 list=" + list_of({}) + "\n")
            << name;
        EXPECT_EQ(answers(board, {"drv_slot_get_num(type=1)", "drv_slot_get_num(type=7)", "drv_slot_get_num(type=8)"}),
                  "0x0 num=2\n0x0 num=6\n0x0 num=0\n")
            << name;
        EXPECT_EQ(answers(board, {"drv_slot_get_start_num(type=1)", "drv_slot_get_start_num(type=7)",
                                  "drv_slot_get_start_num(type=8)"}),
                  "0x0 start_num=9\n0x0 start_num=1\n0x0 start_num=0\n")
            << name;
    }
}

TEST(SlotDriver, ListIsAscendingWhateverTheDescriptionsOrder) {
    const test_board board =
        new_changed("mpu_master", "<slot number=\"11\" type=\"3\"/>\n  <slot number=\"12\" type=\"3\"/>",
                    "<slot number=\"12\" type=\"3\"/>\n  <slot number=\"11\" type=\"3\"/>");
    EXPECT_EQ(answers(board, {"drv_slot_get_list(type=3)", "drv_slot_get_start_num(type=3)"}),
              "0x0 list=" + list_of({11, 12}) + "\n0x0 start_num=11\n");
}

TEST(SlotDriver, UnknownSlotsAndTypes) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_slot_get_type(slot_id=0)", "drv_slot_get_type(slot_id=17)",
                              "drv_slot_get_type(slot_id=0xffffffff)"}),
              no_such_device + no_such_device + no_such_device);
    EXPECT_EQ(
        answers(board, {"drv_slot_get_num(type=0)", "drv_slot_get_num(type=12)", "drv_slot_get_start_num(type=0)",
                        "drv_slot_get_start_num(type=12)", "drv_slot_get_list(type=0)", "drv_slot_get_list(type=12)"}),
        bad_value + bad_value + bad_value + bad_value + bad_value + bad_value);
}

TEST(SlotDriver, SlotNumberThatNoListHolds) {
    const test_board board = new_changed("lpu", "<slot number=\"16\"", "<slot number=\"256\"");
    EXPECT_EQ(answers(board, {"drv_slot_get_list(type=5)"}), too_small);
}

TEST(SlotDriver, MissingAreas) {
    const test_board board = new_delivered("lpu");
    EXPECT_EQ(answers(board, {"drv_slot_get_type(slot_id=1, type=null)", "drv_slot_get_range(slot_min=null)",
                              "drv_slot_get_num(type=1, num=null)", "drv_slot_get_start_num(type=1, start_num=null)",
                              "drv_slot_get_list(type=1, list=null)"}),
              null_pointer + null_pointer + null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
