// The slave board special section: cards on line refuse their type to a slave.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

const std::string fail_line = "Error  : slave board cannot get card type test fail.\r\n";
const std::string pass_line = "Suucess  : slave board cannot get card type test pass.\r\n";

const std::string cards_in_slots = no_entry_count("board_mng", "board_type", "0x51");

std::string range_rule(int first, int last) {
    return "drv_slot_get_range() = 0 slot_min=" + std::to_string(first) + " slot_max=" + std::to_string(last) + "\n";
}

std::string slot_rule(int slot, const std::string &answer) {
    return "drv_slot_get_type(slot_id=" + std::to_string(slot) + ") = " + answer + "\n";
}

std::string online_rule(int slot, const std::string &answer) {
    return "drv_board_get_online_status(inst_id=" + std::to_string(0xff000000U + static_cast<unsigned>(slot)) +
           ") = " + answer + "\n";
}

std::string type_rule(int slot, const std::string &answer) {
    return "drv_board_get_type(inst_id=" + std::to_string(0xff000000U + static_cast<unsigned>(slot)) + ") = " + answer +
           "\n";
}

// A card slot whose card is on line.
std::string card(int slot, const std::string &type_answer) {
    return slot_rule(slot, "0 type=7") + online_rule(slot, "0 status=0") + type_rule(slot, type_answer);
}

void expect_slave(const std::string &script, const std::string &lines, int result) {
    expect_part("slave_special", script, lines, result);
}

} // namespace

TEST(SlaveBoardTest, EveryCardOnLineRefuses) {
    expect_slave(cards_in_slots + range_rule(1, 3) + card(1, "0x811101a4") + card(2, "0x21") + card(3, "1"),
                 pass_line + pass_line + pass_line, 0);
}

TEST(SlaveBoardTest, TheFirstTypeThatIsReadEndsTheWalk) {
    expect_slave(cards_in_slots + range_rule(1, 3) + card(1, "0x21") + card(2, "0 type=0x2302201"),
                 pass_line + fail_line, -1);
    expect_slave(cards_in_slots + range_rule(1, 3) + card(1, "0"), fail_line, -1);
}

TEST(SlaveBoardTest, CardsOnTheBoardAreItsOwn) {
    expect_slave(entry_count("board_mng", "board_type", 2) +
                     element("board_mng", "board_type", 0, "card_on_slot_board", "0x51") +
                     element("board_mng", "board_type", 1, "card_on_slot_board", "0 value=1"),
                 "", 0);
}

TEST(SlaveBoardTest, AnyOtherPlaceOfCardsIsASlot) {
    for (const std::string value : {"0", "2"}) {
        expect_slave(entry_count("board_mng", "board_type", 1) +
                         element("board_mng", "board_type", 0, "card_on_slot_board", "0 value=" + value) +
                         range_rule(4, 4) + card(4, "0x21"),
                     pass_line, 0);
    }
}

TEST(SlaveBoardTest, OnlySlotsForCardsAreAsked) {
    expect_slave(cards_in_slots + range_rule(5, 9) + slot_rule(5, "0 type=6") + slot_rule(6, "0 type=8") +
                     slot_rule(7, "0x21 type=7") + slot_rule(8, "0") + card(9, "0x21"),
                 pass_line, 0);
}

// Anything but 1 counts as on line.
TEST(SlaveBoardTest, OnlyCardsOnLineAreAsked) {
    expect_slave(cards_in_slots + range_rule(1, 4) + slot_rule(1, "0 type=7") + online_rule(1, "0 status=1") +
                     slot_rule(2, "0 type=7") + online_rule(2, "0x21 status=0") + slot_rule(3, "0 type=7") +
                     online_rule(3, "0 status=2") + type_rule(3, "0x22") + slot_rule(4, "0 type=7") +
                     online_rule(4, "0") + type_rule(4, "0x23"),
                 pass_line + pass_line, 0);
}

TEST(SlaveBoardTest, ARangeThatCannotBeHadOrIsEmpty) {
    expect_slave(cards_in_slots + "drv_slot_get_range() = 0x21\n", "", 0);
    expect_slave(cards_in_slots + range_rule(5, 4), "", 0);
}

// Selectors have 16 bits for the slot.
TEST(SlaveBoardTest, ARangeBeyondTheSelectorsEnds) {
    expect_slave(cards_in_slots + "drv_slot_get_range() = 0 slot_min=65534 slot_max=0xffffffff\n" +
                     slot_rule(65534, "0x21") + card(65535, "0x21"),
                 pass_line, 0);
}

// What a slave is told of cards it still does not reach.
TEST(SlaveOnABoardTest, CardsThatItIsToldOfRefuse) {
    const std::vector<std::string> told = {"--set", "slot2/board/presence/0/status=present", "--set",
                                           "slot5/board/presence/0/status=present"};
    std::vector<std::string> options = {"--board", "mpu_slave"};
    EXPECT_EQ(run_part(options, "slave_special").out, "result 0\n");
    options.insert(options.end(), told.begin(), told.end());
    EXPECT_EQ(run_part(options, "slave_special").out, pass_line + pass_line + "result 0\n");
    EXPECT_EQ(run_part({"--board", "mpu_master"}, "slave_special").out, fail_line + "result -1\n");
    EXPECT_EQ(run_part({"--board", "lpu"}, "slave_special").out, "result 0\n");
}
