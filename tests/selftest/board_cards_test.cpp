// The cards of the board: each that is there loses its power for a moment, must be ready and must tell its type.
#include <gtest/gtest.h>

#include "tests/selftest/call_order.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

constexpr const char *on_board_line = "Info   : card is on board.\r\n";
constexpr const char *in_slots_line = "Info   : card is on slot.\r\n";

std::string board_type(const std::string &answer) {
    return entry_count("board_mng", "board_type", 1) +
           element("board_mng", "board_type", 0, "card_on_slot_board", answer);
}

std::string of(const std::string &operation, const std::string &card, const std::string &answer) {
    return "drv_board_" + operation + "(inst_id=" + card + ") = " + answer + " x1\n";
}

std::string power(const std::string &operation, const std::string &card, const std::string &answer) {
    return "drv_board_" + operation + "(inst_id=" + card + ", type=9) = " + answer + " x1\n";
}

std::string good_cycle(const std::string &card) {
    return power("get_power_status", card, "0 status=1") + power("set_power_off", card, "0") +
           power("get_power_status", card, "0 status=0") + power("set_power_on", card, "0") +
           power("get_power_status", card, "0 status=1");
}

std::string cycle_line(const std::string &card) {
    return "Success: " + card + " set power on and off pass. power_type 0x9\r\n";
}

std::string card_ok(int number, const std::string &answer) {
    return "drv_board_get_card_ok(inst_id=0xffffffff, slot_id=" + std::to_string(number) + ") = " + answer + " x1\n";
}

std::string card_list(const std::string &list) {
    return "drv_board_get_card_list(inst_id=0xffffffff) = 0 list={" + list + "}\n";
}

// The one card of the board, which stands in place 2.
std::string card_2() {
    return board_type("0 value=1") + card_list("count=1 card_no=[02]");
}

std::string range(int first, int last) {
    return "drv_slot_get_range() = 0 slot_min=" + std::to_string(first) + " slot_max=" + std::to_string(last) + "\n";
}

std::string slot_type(int slot, const std::string &answer) {
    return "drv_slot_get_type(slot_id=" + std::to_string(slot) + ") = " + answer + " x1\n";
}

// A chassis whose only slot is one for a card.
std::string slot_5() {
    return board_type("0 value=0") + range(5, 5) + slot_type(5, "0 type=7");
}

void expect_cards(const std::string &script, const std::string &lines, int result) {
    expect_part("cards", script, lines, result);
}

} // namespace

TEST(CardsOnBoardTest, EveryListedCard) {
    expect_cards(board_type("0 value=1") + card_list("count=3 card_no=[01 02 fe]") +
                     of("get_online_status", "0x0100ffff", "0 status=0") + good_cycle("0x0100ffff") +
                     card_ok(1, "0 ok=0") + of("get_type", "0x0100ffff", "0 type=0x02302201") +
                     of("get_online_status", "0x0200ffff", "0 status=1") +
                     of("get_online_status", "0xfe00ffff", "0 status=2") + good_cycle("0xfe00ffff") +
                     card_ok(254, "0") + of("get_type", "0xfe00ffff", "0 type=1"),
                 on_board_line + cycle_line("0x100ffff") +
                     "Success: slot 1 card ok is ok.\r\n"
                     "Success: card 0x100ffff type is 0x2302201.\r\n"
                     "Info   : board card 0x200ffff is not online.\r\n" +
                     cycle_line("0xfe00ffff") +
                     "Success: slot 254 card ok is ok.\r\n"
                     "Success: card 0xfe00ffff type is 0x1.\r\n",
                 0);
}

// On the board it is the line first and then the type, in slots the other way round.
TEST(CardsOnBoardTest, TheLinesOfACardThatFailsInAllRespects) {
    expect_cards(card_2() + of("get_online_status", "0x0200ffff", "0 status=0") +
                     power("get_power_status", "0x0200ffff", "0x81") + card_ok(2, "0x82 ok=1") +
                     of("get_type", "0x0200ffff", "0x83 type=4"),
                 std::string(on_board_line) + "Error  : get 33619967 power status fail 0x81. power_type 0x9\r\n"
                                              "Error  : get card 0x200ffff ok fail 0x82.\r\n"
                                              "Error  : get card 0x200ffff hard type fail 0x83. type 0x4 \r\n",
                 -1);
}

TEST(CardsOnBoardTest, ACardThatFailsDoesNotKeepTheNextFromItsTest) {
    expect_cards(board_type("0 value=1") + card_list("count=2 card_no=[01 02]") +
                     of("get_online_status", "0x0100ffff", "0x84") +
                     of("get_online_status", "0x0200ffff", "0 status=0") + good_cycle("0x0200ffff") +
                     card_ok(2, "0 ok=0") + of("get_type", "0x0200ffff", "0 type=5"),
                 std::string(on_board_line) + "Error  : board card 0x100ffff get online fail 0x84.\r\n" +
                     cycle_line("0x200ffff") +
                     "Success: slot 2 card ok is ok.\r\n"
                     "Success: card 0x200ffff type is 0x5.\r\n",
                 -1);
}

TEST(CardsOnBoardTest, ACardIsAbsentWhileNothingSaysThatItIsThere) {
    expect_cards(card_2() + of("get_online_status", "0x0200ffff", "0"),
                 std::string(on_board_line) + "Info   : board card 0x200ffff is not online.\r\n", 0);
}

TEST(CardsOnBoardTest, AnEmptyOrUnreadList) {
    expect_cards(board_type("0 value=1") + card_list("count=0"), on_board_line, 0);
    expect_cards(board_type("0 value=1") + "drv_board_get_card_list(inst_id=0xffffffff) = 0\n", on_board_line, 0);
    expect_cards(board_type("0 value=1") + "drv_board_get_card_list(inst_id=0xffffffff) = 0x85 list={count=2}\n",
                 std::string(on_board_line) + "Error  : board get card lists fail 0x85.\r\n", -1);
    expect_cards(board_type("0 value=1") + "drv_board_get_card_list(inst_id=0xffffffff) = 0x811101a4\n",
                 std::string(on_board_line) + "Error  : board get card lists fail 0x811101a4.\r\n", -1);
}

TEST(CardsOnBoardTest, NoMoreThanTheListHolds) {
    expect_cards(
        board_type("0 value=1") + card_list("count=33") +
            "drv_board_get_online_status(inst_id=0x0000ffff) = 0 status=1 x32\n",
        [] {
            std::string lines = on_board_line;
            for (int i = 0; i < 32; ++i) {
                lines += "Info   : board card 0xffff is not online.\r\n";
            }
            return lines;
        }(),
        0);
}

TEST(CardsTest, TheFirstEntryThatHasTheElementDecides) {
    const std::string two = entry_count("board_mng", "board_type", 3) +
                            element("board_mng", "board_type", 0, "card_on_slot_board", "0x51 value=0");
    expect_cards(two + element("board_mng", "board_type", 1, "card_on_slot_board", "0 value=1") + card_list("count=0"),
                 on_board_line, 0);
    expect_cards(two + element("board_mng", "board_type", 1, "card_on_slot_board", "0 value=2") + range(3, 2),
                 in_slots_line, 0);
}

TEST(CardsTest, WithoutTheEntryCardsStandInSlots) {
    expect_cards(entry_count("board_mng", "board_type", 0) + range(3, 2), in_slots_line, 0);
    expect_cards(no_entry_count("board_mng", "board_type", "0x51") + range(3, 2), in_slots_line, 0);
    expect_cards(board_type("0x51 value=1") + range(3, 2), in_slots_line, 0);
}

TEST(CardsInSlotsTest, EverySlotForCards) {
    expect_cards(board_type("0 value=0") + range(1, 6) + slot_type(1, "0 type=7") + slot_type(2, "0 type=1") +
                     slot_type(3, "0x86 type=7") + slot_type(4, "0") + slot_type(5, "0 type=7") +
                     slot_type(6, "0 type=7") + of("get_online_status", "0xff000001", "0 status=1") +
                     of("get_online_status", "0xff000005", "0 status=0") + good_cycle("0xff000005") +
                     of("get_type", "0xff000005", "0 type=0x02302201") + card_ok(5, "0 ok=0") +
                     of("get_online_status", "0xff000006", "0 status=3") + good_cycle("0xff000006") +
                     of("get_type", "0xff000006", "0 type=0xfffffffe") + card_ok(6, "0"),
                 std::string(in_slots_line) + "Info   : board card 1 is not online.\r\n" + cycle_line("0xff000005") +
                     "Success: card 0xff000005 type is 0x2302201.\r\n"
                     "Success: slot 5 card ok is ok.\r\n" +
                     cycle_line("0xff000006") +
                     "Success: card 0xff000006 type is 0xfffffffe.\r\n"
                     "Success: slot 6 card ok is ok.\r\n",
                 0);
}

TEST(CardsInSlotsTest, TheLinesOfACardThatFailsInAllRespects) {
    expect_cards(slot_5() + of("get_online_status", "0xff000005", "0 status=0") +
                     power("get_power_status", "0xff000005", "0x81") + of("get_type", "0xff000005", "0x83") +
                     card_ok(5, "0x82"),
                 std::string(in_slots_line) + "Error  : get 4278190085 power status fail 0x81. power_type 0x9\r\n"
                                              "Error  : get card 0xff000005 hard type fail 0x83. type 0x0 \r\n"
                                              "Error  : get card 0xff000005 ok fail 0x82.\r\n",
                 -1);
}

TEST(CardsInSlotsTest, EachStepFailsTheCard) {
    const std::string begun = slot_5() + of("get_online_status", "0xff000005", "0 status=0");
    const std::string lines = in_slots_line + cycle_line("0xff000005");
    expect_cards(begun + good_cycle("0xff000005") + of("get_type", "0xff000005", "0") + card_ok(5, "0 ok=0"),
                 lines + "Error  : get card 0xff000005 hard type fail 0x0. type 0x0 \r\n"
                         "Success: slot 5 card ok is ok.\r\n",
                 -1);
    expect_cards(begun + good_cycle("0xff000005") + of("get_type", "0xff000005", "0 type=0xffffffff") +
                     card_ok(5, "0 ok=0"),
                 lines + "Error  : get card 0xff000005 hard type fail 0x0. type 0xffffffff \r\n"
                         "Success: slot 5 card ok is ok.\r\n",
                 -1);
    expect_cards(begun + good_cycle("0xff000005") + of("get_type", "0xff000005", "0 type=6") + card_ok(5, "0 ok=17"),
                 lines + "Success: card 0xff000005 type is 0x6.\r\n"
                         "Error  : slot 5 card ok is not ok 17.\r\n",
                 -1);
    expect_cards(begun + power("get_power_status", "0xff000005", "0x87") + of("get_type", "0xff000005", "0 type=6") +
                     card_ok(5, "0 ok=0"),
                 std::string(in_slots_line) + "Error  : get 4278190085 power status fail 0x87. power_type 0x9\r\n"
                                              "Success: card 0xff000005 type is 0x6.\r\n"
                                              "Success: slot 5 card ok is ok.\r\n",
                 -1);
}

// A card whose power cannot be switched is tested without it.
TEST(CardsInSlotsTest, ACardWithoutASwitchForItsPower) {
    expect_cards(slot_5() + of("get_online_status", "0xff000005", "0") +
                     power("get_power_status", "0xff000005", "0x811101a4") + of("get_type", "0xff000005", "0 type=6") +
                     card_ok(5, "0 ok=0"),
                 std::string(in_slots_line) + "Success: card 0xff000005 type is 0x6.\r\n"
                                              "Success: slot 5 card ok is ok.\r\n",
                 0);
}

TEST(CardsInSlotsTest, ACardThatFailsDoesNotKeepTheNextFromItsTest) {
    expect_cards(
        board_type("0 value=0") + range(5, 6) + slot_type(5, "0 type=7") + slot_type(6, "0 type=7") +
            of("get_online_status", "0xff000005", "0x88") + of("get_online_status", "0xff000006", "0 status=0") +
            good_cycle("0xff000006") + of("get_type", "0xff000006", "0 type=6") + card_ok(6, "0 ok=0"),
        std::string(in_slots_line) + "Error  : board card 5 get online fail 0x88.\r\n" + cycle_line("0xff000006") +
            "Success: card 0xff000006 type is 0x6.\r\n"
            "Success: slot 6 card ok is ok.\r\n",
        -1);
}

TEST(CardsInSlotsTest, ARangeThatCannotBeRead) {
    expect_cards(board_type("0 value=0") + "drv_slot_get_range() = 0x89 slot_min=5 slot_max=5\n", in_slots_line, -1);
}

TEST(CardsInSlotsTest, ARangeThatIsNotWrittenIsSlot0) {
    expect_cards(board_type("0 value=0") + "drv_slot_get_range() = 0\n" + slot_type(0, "0 type=2"), in_slots_line, 0);
}

// Selectors have room for 16 bits of the number; the walk ends behind the last number that there is.
TEST(CardsInSlotsTest, TheLastNumbersThatThereAre) {
    expect_cards(board_type("0 value=0") + "drv_slot_get_range() = 0 slot_min=0xfffffffe slot_max=0xffffffff\n" +
                     "drv_slot_get_type(slot_id=0xfffffffe) = 0 type=7 x1\n" +
                     "drv_slot_get_type(slot_id=0xffffffff) = 0 type=6 x1\n" +
                     of("get_online_status", "0xff00fffe", "0 status=1"),
                 std::string(in_slots_line) + "Info   : board card 4294967294 is not online.\r\n", 0);
}

TEST(CardsTest, OnTheSimulatedMaster) {
    std::string lines = std::string(in_slots_line) + "Info   : board card 1 is not online.\r\n";
    for (const auto &[slot, type] : std::vector<std::pair<std::string, std::string>>{
             {"2", "0x2302001"}, {"3", "0x2302002"}, {"4", "0x2302003"}, {"5", "0x2302201"}}) {
        lines += cycle_line("0xff00000" + slot) + "Success: card 0xff00000" + slot + " type is " + type +
                 ".\r\nSuccess: slot " + slot + " card ok is ok.\r\n";
    }
    lines += "Info   : board card 6 is not online.\r\n";
    EXPECT_EQ(run_part({}, "cards").out, lines + "result 0\n");
}

// The presence lines of the cards end at the master.
TEST(CardsTest, OnTheSimulatedSlave) {
    std::string lines = in_slots_line;
    for (int slot = 1; slot <= 6; ++slot) {
        lines += "Info   : board card " + std::to_string(slot) + " is not online.\r\n";
    }
    EXPECT_EQ(run_part({"--board", "mpu_slave"}, "cards").out, lines + "result 0\n");
}

TEST(CardsTest, OnTheSimulatedLineCard) {
    EXPECT_EQ(run_part({"--board", "lpu"}, "cards").out,
              on_board_line + cycle_line("0x100ffff") +
                  "Success: slot 1 card ok is ok.\r\nSuccess: card 0x100ffff type is 0x2302201.\r\n" +
                  cycle_line("0x200ffff") +
                  "Success: slot 2 card ok is ok.\r\nSuccess: card 0x200ffff type is 0x2302201.\r\n"
                  "Info   : board card 0x300ffff is not online.\r\nresult 0\n");
}

// The type of a slot is asked when the walk comes to it, and a card is done before the next one loses its power.
TEST(CardsTest, TheOrderOfTheCalls) {
    const std::vector<std::string> calls = calls_of({"--board", "lpu"}, "cards");
    std::vector<std::string> expected{"drv_board_get_card_list(inst_id=0xffffffff)"};
    for (const auto &[card, number] : {std::pair<std::string, std::string>{"0x100ffff", "1"}, {"0x200ffff", "2"}}) {
        expected.push_back("drv_board_get_online_status(inst_id=" + card + ")");
        for (const std::string operation :
             {"get_power_status", "set_power_off", "get_power_status", "set_power_on", "get_power_status"}) {
            expected.push_back("drv_board_" + operation + "(inst_id=" + card + ", type=9)");
        }
        expected.push_back("drv_board_get_card_ok(inst_id=0xffffffff, slot_id=" + number + ")");
        expected.push_back("drv_board_get_type(inst_id=" + card + ")");
    }
    expected.push_back("drv_board_get_online_status(inst_id=0x300ffff)");
    EXPECT_EQ(calls, expected);
}

TEST(CardsInSlotsTest, TheOrderOfTheCalls) {
    const std::vector<std::string> calls = calls_of({}, "cards");
    ASSERT_GT(calls.size(), 11U);
    EXPECT_EQ(
        std::vector<std::string>(calls.begin(), calls.begin() + 12),
        (std::vector<std::string>{
            "drv_slot_get_range()", "drv_slot_get_type(slot_id=1)", "drv_board_get_online_status(inst_id=0xff000001)",
            "drv_slot_get_type(slot_id=2)", "drv_board_get_online_status(inst_id=0xff000002)",
            "drv_board_get_power_status(inst_id=0xff000002, type=9)",
            "drv_board_set_power_off(inst_id=0xff000002, type=9)",
            "drv_board_get_power_status(inst_id=0xff000002, type=9)",
            "drv_board_set_power_on(inst_id=0xff000002, type=9)",
            "drv_board_get_power_status(inst_id=0xff000002, type=9)", "drv_board_get_type(inst_id=0xff000002)",
            "drv_board_get_card_ok(inst_id=0xffffffff, slot_id=2)"}));
    EXPECT_EQ(calls.back(), "drv_slot_get_type(slot_id=16)");
}
