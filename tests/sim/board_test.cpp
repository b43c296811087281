// Board management: identity, presence, slots, cards. What is set is read back by another process.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>
#include <sstream>

namespace kestro_tests {

namespace {

// The lines that tell of events.
std::string events_in(const std::string &printed) {
    std::istringstream lines(printed);
    std::string events;
    for (std::string line; std::getline(lines, line);) {
        events += line.starts_with("# event: ") ? line.substr(9) + "\n" : "";
    }
    return events;
}

} // namespace

TEST(Board, IdentityOfTheBoard) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_init()", "drv_board_get_type()", "drv_board_get_pcb_ver()",
                              "drv_board_get_usr_pcb_ver()", "drv_board_get_soft_pcb_ver()", "drv_board_get_bom_ver()",
                              "drv_board_get_bom_id()", "drv_board_get_power()", "drv_board_deinit()"}),
              "0x0\n0x0 type=0x2302311\n0x0 ver=258\n0x0 ver=258\n0x0 ver=2\n0x0 ver=1\n0x0 bom_id=3\n0x0 "
              "power=95\n0x0\n");
}

TEST(Board, OwnSlotIsTheBoardItself) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_get_power(inst_id=0xff000009)"}), "0x0 power=95\n");
}

TEST(Board, EachInstanceHasItsOwnType) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_set_type(type=7)", "drv_board_set_type(inst_id=0xff000005, type=0x89abcdef)"}),
              ok + ok);
    EXPECT_EQ(answers(board, {"drv_board_get_type()", "drv_board_get_type(inst_id=0xff000005)",
                              "drv_board_get_type(inst_id=0xff000002)"}),
              "0x0 type=7\n0x0 type=0x89abcdef\n0x0 type=0x2302001\n");
}

TEST(Board, EmptyAndUnknownPlaces) {
    const test_board board = new_delivered("mpu_master");
    for (const std::string place : {"0xff000006", "0xff000011", "0xff000000", "0x0100ffff", "3"}) {
        const std::string at = "(inst_id=" + place;
        EXPECT_EQ(
            answers(board, {"drv_board_init" + at + ")", "drv_board_deinit" + at + ")", "drv_board_get_type" + at + ")",
                            "drv_board_get_pcb_ver" + at + ")", "drv_board_get_power" + at + ")",
                            "drv_board_get_fullin_status" + at + ")", "drv_board_set_type" + at + ", type=1)"}),
            no_such_instance + no_such_instance + no_such_instance + no_such_instance + no_such_instance +
                no_such_instance + no_such_instance)
            << place;
    }
}

TEST(Board, WhatACardLacksIsNotSupported) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        answers(board, {"drv_board_get_power(inst_id=0xff000004)", "drv_board_get_power(inst_id=0xff000005)",
                        "drv_board_get_self_bootstep(inst_id=0xff000005)", "drv_board_get_cpld_num(inst_id=0xff000005)",
                        "drv_board_get_area(inst_id=0xff000005)", "drv_board_get_sdram_size(inst_id=0xff000005)"}),
        not_supported + "0x0 power=18\n" + not_supported + not_supported + not_supported + not_supported);
}

TEST(Board, Capabilities) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_get_capability(type=0)", "drv_board_get_capability(type=1)",
                              "drv_board_get_capability(type=3)", "drv_board_get_capability(type=4)",
                              "drv_board_get_capability(inst_id=0xff000005, type=0)"}),
              "0x0 capability=1\n0x0 capability=0\n0x0 capability=1\n" + no_such_device + not_supported);
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_board_get_capability(type=0)", "drv_board_get_capability(type=3)"}),
              "0x0 capability=0\n0x0 capability=0\n");
}

TEST(Board, ASlaveIsRefusedTheTypeOfACard) {
    const test_board slave = new_delivered("mpu_slave");
    EXPECT_EQ(
        answers(slave, {"drv_board_get_type(inst_id=0xff000005)", "drv_board_set_type(inst_id=0xff000005, type=1)",
                        "drv_board_get_type(inst_id=0xff000009)", "drv_board_get_type()",
                        "drv_board_get_power(inst_id=0xff000005)"}),
        not_supported + not_supported + "0x0 type=0x2302311\n0x0 type=0x2302311\n0x0 power=18\n");
}

TEST(Presence, FollowsWhatIsInTheSlots) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_get_online_status()", "drv_board_get_online_status(inst_id=0xff000002)",
                              "drv_board_get_online_status(inst_id=0xff000006)",
                              "drv_board_get_online_status_ex(inst_id=0xff000005)",
                              "drv_board_get_online_status_ex(inst_id=0xff000001)",
                              "drv_board_get_self_online_status()", "drv_board_get_peer_online_status()"}),
              "0x0 status=0\n0x0 status=0\n0x0 status=1\n0x0 status=0\n0x0 status=1\n0x0 status=0\n0x0 status=0\n");
    EXPECT_EQ(answers(board, {"drv_board_get_online_status(inst_id=0xff000011)",
                              "drv_board_get_online_status_ex(inst_id=0xff000000)",
                              "drv_board_get_online_status(inst_id=0x0100ffff)"}),
              no_such_instance + no_such_instance + no_such_instance);
}

TEST(Presence, IsReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_set_online_status(inst_id=0xff000005, status=1)",
                              "drv_board_set_online_status(inst_id=0xff00000a, status=1)"}),
              ok + ok);
    EXPECT_EQ(answers(board, {"drv_board_get_online_status(inst_id=0xff000005)",
                              "drv_board_get_online_status_ex(inst_id=0xff000005)",
                              "drv_board_get_peer_online_status()", "drv_board_get_online_status(inst_id=0xff000002)"}),
              "0x0 status=1\n0x0 status=1\n0x0 status=1\n0x0 status=0\n");
    EXPECT_EQ(answers(board, {"drv_board_set_online_status(inst_id=0xff000005, status=0)",
                              "drv_board_get_online_status(inst_id=0xff000005)"}),
              "0x0\n0x0 status=0\n");
}

TEST(Presence, Limits) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_board_set_online_status(inst_id=0xff000005, status=2)",
                              "drv_board_set_online_status(inst_id=0xff000006, status=0)",
                              "drv_board_get_online_status(inst_id=0xff000006)"}),
              bad_value + no_such_instance + "0x0 status=1\n");
}

TEST(Presence, PeerOfEachBoard) {
    EXPECT_EQ(answers(new_delivered("mpu_slave"), {"drv_board_get_peer_online_status()"}), "0x0 status=0\n");
    EXPECT_EQ(
        answers(new_delivered("lpu"), {"drv_board_get_peer_online_status()", "drv_board_get_self_online_status()"}),
        not_supported + "0x0 status=0\n");
}

TEST(Presence, TheSlaveSeesNoCardUntilItIsTold) {
    const test_board slave = new_delivered("mpu_slave");
    EXPECT_EQ(answers(slave, {"drv_board_get_online_status(inst_id=0xff000005)",
                              "drv_board_set_online_status(inst_id=0xff000005, status=0)",
                              "drv_board_get_online_status(inst_id=0xff000005)"}),
              "0x0 status=1\n0x0\n0x0 status=0\n");
}

TEST(Presence, PlacesOnALineCard) {
    EXPECT_EQ(
        answers(new_delivered("lpu"),
                {"drv_board_get_online_status(inst_id=0x0100ffff)", "drv_board_get_online_status(inst_id=0x0300ffff)",
                 "drv_board_get_online_status(inst_id=0x0400ffff)", "drv_board_get_online_status(inst_id=0xff000009)"}),
        "0x0 status=0\n0x0 status=1\n" + no_such_instance + "0x0 status=1\n");
}

TEST(Presence, ListenersHearAChange) {
    const test_board board = new_delivered("mpu_master");
    // On the virtual clock a pause ends when there is nothing left to be told.
    const process_result result =
        make_calls({"--board", board.word, "--state", board.state, "--clock", "virtual"},
                   {"drv_board_in_out_reg(handler=callback, name=\"first\")",
                    "drv_board_set_online_status(inst_id=0xff000005, status=0)",
                    "drv_board_set_online_status(inst_id=0xff000005, status=1)",
                    "drv_board_set_online_status(inst_id=0xff000005, status=1)",
                    "drv_board_set_online_status(status=1)", "wait 0.5", "drv_board_in_out_unreg(handler=callback)",
                    "drv_board_set_online_status(inst_id=0xff000005, status=0)", "wait 0.5"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(events_in(result.out), "drv_board_in_out_handler(slot_id=5, in=0)\n"
                                     "drv_board_in_out_handler(slot_id=9, in=0)\n");
}

TEST(Presence, AListenerMayAskADriver) {
    EXPECT_EQ(odd_calls(new_delivered("mpu_master"), {"listen"}).out,
              "listener: slot 5 in 0, told to slot 9 with 0x0\n0x0\n");
}

TEST(Presence, ListenersAreKnownByName) {
    const test_board board = new_delivered("mpu_master");
    const std::string register_one = "drv_board_in_out_reg(handler=callback, name=\"one\")";
    EXPECT_EQ(answers(board, {"drv_board_in_out_unreg(handler=callback)", register_one, register_one,
                              "drv_board_in_out_reg(handler=callback, name=\"two\", flag=1)",
                              "drv_board_in_out_unreg(handler=callback)", register_one}),
              no_such_device + ok + bad_value + bad_value + ok + ok);
    EXPECT_EQ(answers(board, {"drv_board_in_out_unreg()", "drv_board_in_out_reg(name=\"one\")",
                              "drv_board_in_out_reg(name=\"one\")",
                              "drv_board_set_online_status(inst_id=0xff000005, status=1)", "drv_board_in_out_unreg()",
                              register_one, "drv_board_in_out_reg(handler=callback)"}),
              ok + ok + bad_value + ok + ok + ok + null_pointer);
}

TEST(Fullin, HealthyAndNot) {
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {"drv_board_get_fullin_status()", "drv_board_check_fullin_status(size=256)",
                       "drv_board_get_fullin_status(inst_id=0xff000005)"}),
              "0x0 status=0\n0x0 status=0 dfx=\"\"\n0x0 status=0\n");
    EXPECT_EQ(answers(new_altered("mpu_master", {{"self/sim_board/unit/0/fullin", "1"}}),
                      {"drv_board_get_fullin_status()", "drv_board_check_fullin_status(size=256)"}),
              "0x0 status=1\n0x0 status=1 dfx=\"the board is not fully inserted\"\n");
}

TEST(Slots, NumbersOfEachBoard) {
    const std::vector<std::string> calls = {"drv_board_get_self_slotid()", "drv_board_get_self_logic_slotid()",
                                            "drv_board_get_peer_slotid()", "drv_board_get_peer_logic_slotid()",
                                            "drv_board_check_slotid(size=128)"};
    EXPECT_EQ(answers(new_delivered("mpu_master"), calls),
              "0x0 slot_id=9\n0x0 slot_id=17\n0x0 slot_id=10\n0x0 slot_id=18\n0x0 result=0 dfx=\"\"\n");
    EXPECT_EQ(answers(new_delivered("mpu_slave"), calls),
              "0x0 slot_id=10\n0x0 slot_id=18\n0x0 slot_id=9\n0x0 slot_id=17\n0x0 result=0 dfx=\"\"\n");
    EXPECT_EQ(answers(new_delivered("lpu"), calls),
              "0x0 slot_id=7\n0x0 slot_id=7\n" + not_supported + not_supported + "0x0 result=0 dfx=\"\"\n");
}

TEST(Slots, ALogicalSlotBelowThePhysicalIsFound) {
    EXPECT_EQ(answers(new_altered("mpu_master", {{"self/sim_board/unit/0/logic_slot", "8"}}),
                      {"drv_board_check_slotid(size=128)"}),
              "0x0 result=1 dfx=\"logical slot 8 is below slot 9\"\n");
    EXPECT_EQ(answers(new_altered("mpu_master", {{"chassis/sim_chassis/slots/range/first", "10"}}),
                      {"drv_board_check_slotid(size=128)"}),
              "0x0 result=1 dfx=\"slot 9 is beyond the chassis\"\n");
}

TEST(Cards, ListsByKindOfBoard) {
    // Slots are words and cards are bytes; the same memory shows as both.
    EXPECT_EQ(answers(new_delivered("mpu_master"),
                      {"drv_board_get_card_list()", "drv_board_get_card_list(inst_id=0xff000005)"}),
              "0x0 list={count=6 slot_id=[1 2 3 4 5 6 0 0] card_no=" +
                  bytes({1, 0, 0, 0, 2, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0, 5, 0, 0, 0, 6}, 32) + "}\n" + not_supported);
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_board_get_card_list()"}),
              "0x0 list={count=3 slot_id=[0x30201 0 0 0 0 0 0 0] card_no=" + bytes({1, 2, 3}, 32) + "}\n");
}

TEST(Cards, ReadyWhenPresentAndPowered) {
    const test_board board = new_altered("mpu_master", {{"slot5/sim_board/power/9/hold_up", "0"}});
    EXPECT_EQ(answers(board, {"drv_board_get_card_ok(slot_id=5)", "drv_board_get_card_ok(slot_id=6)",
                              "drv_board_set_power_off(inst_id=0xff000005, type=9)"}),
              "0x0 ok=0\n0x0 ok=1\n0x0\n");
    EXPECT_EQ(
        answers(board, {"drv_board_get_card_ok(slot_id=5)", "drv_board_get_card_ok(slot_id=2)",
                        "drv_board_set_power_on(inst_id=0xff000005, type=9)", "drv_board_get_card_ok(slot_id=5)"}),
        "0x0 ok=1\n0x0 ok=0\n0x0\n0x0 ok=1\n");
    EXPECT_EQ(answers(board, {"drv_board_get_card_ok(slot_id=7)", "drv_board_get_card_ok(slot_id=17)",
                              "drv_board_get_card_ok(slot_id=0xffffffff)",
                              "drv_board_get_card_ok(inst_id=0xff000005, slot_id=5)"}),
              no_such_device + no_such_device + no_such_device + not_supported);
    EXPECT_EQ(answers(new_altered("mpu_master", {{"slot5/sim_board/unit/0/card_fault", "1"}}),
                      {"drv_board_get_card_ok(slot_id=5)", "drv_board_get_card_ok(slot_id=4)"}),
              "0x0 ok=1\n0x0 ok=0\n");
}

TEST(Cards, OnTheBoardByCardNumber) {
    EXPECT_EQ(answers(new_delivered("lpu"), {"drv_board_get_card_ok(slot_id=1)", "drv_board_get_card_ok(slot_id=2)",
                                             "drv_board_get_card_ok(slot_id=3)", "drv_board_get_card_ok(slot_id=4)"}),
              "0x0 ok=0\n0x0 ok=0\n0x0 ok=1\n" + no_such_device);
}

} // namespace kestro_tests
