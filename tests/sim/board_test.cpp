// Board management: identity, presence, slots, cards. What is set is read back by another process.
#include "tests/sim/board_support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string self = " 0xffffffff ";
const std::string card5 = " 0xff000005 ";

} // namespace

TEST(Board, IdentityOfTheBoard) {
    const test_board board = fresh("mpu_master");
    EXPECT_EQ(board_calls_print(board, {"init" + self, "get_type" + self, "get_pcb_ver" + self,
                                        "get_usr_pcb_ver" + self, "get_soft_pcb_ver" + self, "get_bom_ver" + self,
                                        "get_bom_id" + self, "get_power" + self, "deinit" + self}),
              "0x0\n0x0 36709137\n0x0 258\n0x0 258\n0x0 2\n0x0 1\n0x0 3\n0x0 95\n0x0\n"); // 36709137 is 0x02302311
}

TEST(Board, OwnSlotIsTheBoardItself) {
    const test_board board = fresh("mpu_master");
    EXPECT_EQ(board_calls_print(board, {"get_power 0xff000009"}), "0x0 95\n");
}

TEST(Board, EachInstanceHasItsOwnType) {
    const test_board board = fresh("mpu_master");
    EXPECT_EQ(board_calls_print(board, {"set_type" + self + "7", "set_type" + card5 + "0x89abcdef"}), ok + ok);
    EXPECT_EQ(board_calls_print(board, {"get_type" + self, "get_type" + card5, "get_type 0xff000002"}),
              "0x0 7\n0x0 2309737967\n0x0 36708353\n");
}

TEST(Board, EmptyAndUnknownPlaces) {
    const test_board board = fresh("mpu_master");
    for (const char *place : {" 0xff000006 ", " 0xff000011 ", " 0xff000000 ", " 0x0100ffff ", " 3 "}) {
        for (const char *call : {"init", "deinit", "get_type", "get_pcb_ver", "get_power", "get_fullin_status"}) {
            EXPECT_EQ(board_calls_print(board, {call + std::string(place)}), no_such_instance) << call << place;
        }
        EXPECT_EQ(board_calls_print(board, {"set_type" + std::string(place) + "1"}), no_such_instance) << place;
    }
}

TEST(Board, WhatACardLacksIsNotSupported) {
    const test_board board = fresh("mpu_master");
    EXPECT_EQ(board_calls_print(board, {"get_power 0xff000004", "get_power 0xff000005", "get_self_bootstep" + card5,
                                        "get_cpld_num" + card5, "get_area" + card5, "get_sdram_size" + card5}),
              not_supported + "0x0 18\n" + not_supported + not_supported + not_supported + not_supported);
}

TEST(Board, Capabilities) {
    const test_board board = fresh("mpu_master");
    EXPECT_EQ(board_calls_print(board, {"get_capability" + self + "0", "get_capability" + self + "1",
                                        "get_capability" + self + "3", "get_capability" + self + "4",
                                        "get_capability" + card5 + "0"}),
              "0x0 1\n0x0 0\n0x0 1\n" + no_such_device + not_supported);
    EXPECT_EQ(board_calls_print(fresh("lpu"), {"get_capability" + self + "0", "get_capability" + self + "3"}),
              "0x0 0\n0x0 0\n");
}

TEST(Board, ASlaveIsRefusedTheTypeOfACard) {
    const test_board slave = fresh("mpu_slave");
    EXPECT_EQ(board_calls_print(slave, {"get_type" + card5, "set_type" + card5 + "1", "get_type 0xff000009",
                                        "get_type" + self, "get_power" + card5}),
              not_supported + not_supported + "0x0 36709137\n0x0 36709137\n0x0 18\n");
}

TEST(Presence, FollowsWhatIsInTheSlots) {
    const test_board board = fresh("mpu_master");
    EXPECT_EQ(board_calls_print(board, {"get_online_status" + self, "get_online_status 0xff000002",
                                        "get_online_status 0xff000006", "get_online_status_ex 0xff000005",
                                        "get_online_status_ex 0xff000001", "get_self_online_status",
                                        "get_peer_online_status"}),
              "0x0 0\n0x0 0\n0x0 1\n0x0 0\n0x0 1\n0x0 0\n0x0 0\n");
    EXPECT_EQ(board_calls_print(board, {"get_online_status 0xff000011", "get_online_status_ex 0xff000000",
                                        "get_online_status 0x0100ffff"}),
              no_such_instance + no_such_instance + no_such_instance);
}

TEST(Presence, IsReadBackByAnotherProcess) {
    const test_board board = fresh("mpu_master");
    EXPECT_EQ(board_calls_print(board, {"set_online_status" + card5 + "1", "set_online_status 0xff00000a 1"}), ok + ok);
    EXPECT_EQ(board_calls_print(board, {"get_online_status" + card5, "get_online_status_ex" + card5,
                                        "get_peer_online_status", "get_online_status 0xff000002"}),
              "0x0 1\n0x0 1\n0x0 1\n0x0 0\n");
    EXPECT_EQ(board_calls_print(board, {"set_online_status" + card5 + "0", "get_online_status" + card5}),
              "0x0\n0x0 0\n");
}

TEST(Presence, Limits) {
    const test_board board = fresh("mpu_master");
    EXPECT_EQ(board_calls_print(board, {"set_online_status" + card5 + "2", "set_online_status 0xff000006 0",
                                        "get_online_status 0xff000006"}),
              bad_value + no_such_instance + "0x0 1\n");
}

TEST(Presence, PeerOfEachBoard) {
    EXPECT_EQ(board_calls_print(fresh("mpu_slave"), {"get_peer_online_status"}), "0x0 0\n");
    EXPECT_EQ(board_calls_print(fresh("lpu"), {"get_peer_online_status", "get_self_online_status"}),
              not_supported + "0x0 0\n");
}

TEST(Presence, TheSlaveSeesNoCardUntilItIsTold) {
    const test_board slave = fresh("mpu_slave");
    EXPECT_EQ(board_calls_print(
                  slave, {"get_online_status" + card5, "set_online_status" + card5 + "0", "get_online_status" + card5}),
              "0x0 1\n0x0\n0x0 0\n");
}

TEST(Presence, PlacesOnALineCard) {
    EXPECT_EQ(board_calls_print(fresh("lpu"), {"get_online_status 0x0100ffff", "get_online_status 0x0300ffff",
                                               "get_online_status 0x0400ffff", "get_online_status 0xff000009"}),
              "0x0 0\n0x0 1\n" + no_such_instance + "0x0 1\n");
}

TEST(Presence, ListenersHearAChange) {
    const test_board board = fresh("mpu_master");
    EXPECT_EQ(
        board_calls_print(board, {"in_out_reg first 0", "set_online_status" + card5 + "0",
                                  "set_online_status" + card5 + "1", "set_online_status" + card5 + "1",
                                  "set_online_status" + self + "1", "in_out_unreg", "set_online_status" + card5 + "0"}),
        ok + ok + "listener: slot 5 in 0, told to slot 9 with 0x0\n" + ok + ok +
            "listener: slot 9 in 0, told to slot 9 with 0x0\n" + ok + ok + ok);
}

TEST(Presence, ListenersAreKnownByName) {
    const test_board board = fresh("mpu_master");
    EXPECT_EQ(board_calls_print(board, {"in_out_unreg", "in_out_reg one 0", "in_out_reg one 0", "in_out_reg two 1",
                                        "in_out_unreg", "in_out_reg one 0"}),
              no_such_device + ok + bad_value + bad_value + ok + ok);
    EXPECT_EQ(board_calls_print(board, {"in_out_unreg_null_handler", "in_out_reg_null_handler one",
                                        "in_out_reg_null_handler one", "set_online_status" + card5 + "1",
                                        "in_out_unreg_null_handler", "in_out_reg one 0", "in_out_reg_null_name"}),
              ok + ok + bad_value + ok + ok + ok + null_pointer + "\n");
}

TEST(Fullin, HealthyAndNot) {
    EXPECT_EQ(board_calls_print(fresh("mpu_master"), {"get_fullin_status" + self, "check_fullin_status" + self + "256",
                                                      "get_fullin_status" + card5}),
              "0x0 0\n0x0 0 \"\"\n0x0 0\n");
    EXPECT_EQ(board_calls_print(fresh_with("mpu_master", {{"self/sim_board/unit/0/fullin", "1"}}),
                                {"get_fullin_status" + self, "check_fullin_status" + self + "256"}),
              "0x0 1\n0x0 1 \"the board is not fully inserted\"\n");
}

TEST(Slots, NumbersOfEachBoard) {
    const std::vector<std::string> calls = {"get_self_slotid", "get_self_logic_slotid", "get_peer_slotid",
                                            "get_peer_logic_slotid", "check_slotid" + self + "128"};
    EXPECT_EQ(board_calls_print(fresh("mpu_master"), calls), "0x0 9\n0x0 17\n0x0 10\n0x0 18\n0x0 0 \"\"\n");
    EXPECT_EQ(board_calls_print(fresh("mpu_slave"), calls), "0x0 10\n0x0 18\n0x0 9\n0x0 17\n0x0 0 \"\"\n");
    EXPECT_EQ(board_calls_print(fresh("lpu"), calls),
              "0x0 7\n0x0 7\n" + not_supported + not_supported + "0x0 0 \"\"\n");
}

TEST(Slots, ALogicalSlotBelowThePhysicalIsFound) {
    EXPECT_EQ(board_calls_print(fresh_with("mpu_master", {{"self/sim_board/unit/0/logic_slot", "8"}}),
                                {"check_slotid" + self + "128"}),
              "0x0 1 \"logical slot 8 is below slot 9\"\n");
    EXPECT_EQ(board_calls_print(fresh_with("mpu_master", {{"self/sim_chassis/slots/range/first", "10"}}),
                                {"check_slotid" + self + "128"}),
              "0x0 1 \"slot 9 is beyond the chassis\"\n");
}

TEST(Cards, ListsByKindOfBoard) {
    EXPECT_EQ(board_calls_print(fresh("mpu_master"), {"get_card_list" + self, "get_card_list" + card5}),
              "0x0 6 [0100000002000000030000000400000005000000060000000000000000000000]\n" + not_supported);
    EXPECT_EQ(board_calls_print(fresh("lpu"), {"get_card_list" + self}),
              "0x0 3 [0102030000000000000000000000000000000000000000000000000000000000]\n");
}

TEST(Cards, ReadyWhenPresentAndPowered) {
    const test_board board = fresh("mpu_master");
    EXPECT_EQ(board_calls_print(
                  board, {"get_card_ok" + self + "5", "get_card_ok" + self + "6", "set_power_off" + card5 + "9"}),
              "0x0 0\n0x0 1\n0x0\n");
    EXPECT_EQ(board_calls_print(board, {"get_card_ok" + self + "5", "get_card_ok" + self + "2",
                                        "set_power_on" + card5 + "9", "get_card_ok" + self + "5"}),
              "0x0 1\n0x0 0\n0x0\n0x0 0\n");
    EXPECT_EQ(board_calls_print(board, {"get_card_ok" + self + "7", "get_card_ok" + self + "17",
                                        "get_card_ok" + self + "0xffffffff", "get_card_ok" + card5 + "5"}),
              no_such_device + no_such_device + no_such_device + not_supported);
    EXPECT_EQ(board_calls_print(fresh_with("mpu_master", {{"slot@5/sim_board/unit/0/card_fault", "1"}}),
                                {"get_card_ok" + self + "5", "get_card_ok" + self + "4"}),
              "0x0 1\n0x0 0\n");
}

TEST(Cards, OnTheBoardByCardNumber) {
    EXPECT_EQ(board_calls_print(fresh("lpu"), {"get_card_ok" + self + "1", "get_card_ok" + self + "2",
                                               "get_card_ok" + self + "3", "get_card_ok" + self + "4"}),
              "0x0 0\n0x0 0\n0x0 1\n" + no_such_device);
}

} // namespace kestro_tests
