// Board management: identity, presence, slots, cards. What is set is read back by another process.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string self = " 0xffffffff ";
const std::string card5 = " 0xff000005 ";

} // namespace

TEST(Board, IdentityOfTheBoard) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(
        calls_print(board, {"board_init" + self, "board_get_type" + self, "board_get_pcb_ver" + self,
                            "board_get_usr_pcb_ver" + self, "board_get_soft_pcb_ver" + self, "board_get_bom_ver" + self,
                            "board_get_bom_id" + self, "board_get_power" + self, "board_deinit" + self}),
        "0x0\n0x0 36709137\n0x0 258\n0x0 258\n0x0 2\n0x0 1\n0x0 3\n0x0 95\n0x0\n"); // 36709137 is 0x02302311
}

TEST(Board, OwnSlotIsTheBoardItself) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"board_get_power 0xff000009"}), "0x0 95\n");
}

TEST(Board, EachInstanceHasItsOwnType) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"board_set_type" + self + "7", "board_set_type" + card5 + "0x89abcdef"}), ok + ok);
    EXPECT_EQ(calls_print(board, {"board_get_type" + self, "board_get_type" + card5, "board_get_type 0xff000002"}),
              "0x0 7\n0x0 2309737967\n0x0 36708353\n");
}

TEST(Board, EmptyAndUnknownPlaces) {
    const test_board board = new_delivered("mpu_master");
    for (const char *place : {" 0xff000006 ", " 0xff000011 ", " 0xff000000 ", " 0x0100ffff ", " 3 "}) {
        for (const char *call : {"board_init", "board_deinit", "board_get_type", "board_get_pcb_ver", "board_get_power",
                                 "board_get_fullin_status"}) {
            EXPECT_EQ(calls_print(board, {call + std::string(place)}), no_such_instance) << call << place;
        }
        EXPECT_EQ(calls_print(board, {"board_set_type" + std::string(place) + "1"}), no_such_instance) << place;
    }
}

TEST(Board, WhatACardLacksIsNotSupported) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"board_get_power 0xff000004", "board_get_power 0xff000005",
                                  "board_get_self_bootstep" + card5, "board_get_cpld_num" + card5,
                                  "board_get_area" + card5, "board_get_sdram_size" + card5}),
              not_supported + "0x0 18\n" + not_supported + not_supported + not_supported + not_supported);
}

TEST(Board, Capabilities) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"board_get_capability" + self + "0", "board_get_capability" + self + "1",
                                  "board_get_capability" + self + "3", "board_get_capability" + self + "4",
                                  "board_get_capability" + card5 + "0"}),
              "0x0 1\n0x0 0\n0x0 1\n" + no_such_device + not_supported);
    EXPECT_EQ(
        calls_print(new_delivered("lpu"), {"board_get_capability" + self + "0", "board_get_capability" + self + "3"}),
        "0x0 0\n0x0 0\n");
}

TEST(Board, ASlaveIsRefusedTheTypeOfACard) {
    const test_board slave = new_delivered("mpu_slave");
    EXPECT_EQ(calls_print(slave, {"board_get_type" + card5, "board_set_type" + card5 + "1", "board_get_type 0xff000009",
                                  "board_get_type" + self, "board_get_power" + card5}),
              not_supported + not_supported + "0x0 36709137\n0x0 36709137\n0x0 18\n");
}

TEST(Presence, FollowsWhatIsInTheSlots) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"board_get_online_status" + self, "board_get_online_status 0xff000002",
                                  "board_get_online_status 0xff000006", "board_get_online_status_ex 0xff000005",
                                  "board_get_online_status_ex 0xff000001", "board_get_self_online_status",
                                  "board_get_peer_online_status"}),
              "0x0 0\n0x0 0\n0x0 1\n0x0 0\n0x0 1\n0x0 0\n0x0 0\n");
    EXPECT_EQ(calls_print(board, {"board_get_online_status 0xff000011", "board_get_online_status_ex 0xff000000",
                                  "board_get_online_status 0x0100ffff"}),
              no_such_instance + no_such_instance + no_such_instance);
}

TEST(Presence, IsReadBackByAnotherProcess) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"board_set_online_status" + card5 + "1", "board_set_online_status 0xff00000a 1"}),
              ok + ok);
    EXPECT_EQ(calls_print(board, {"board_get_online_status" + card5, "board_get_online_status_ex" + card5,
                                  "board_get_peer_online_status", "board_get_online_status 0xff000002"}),
              "0x0 1\n0x0 1\n0x0 1\n0x0 0\n");
    EXPECT_EQ(calls_print(board, {"board_set_online_status" + card5 + "0", "board_get_online_status" + card5}),
              "0x0\n0x0 0\n");
}

TEST(Presence, Limits) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"board_set_online_status" + card5 + "2", "board_set_online_status 0xff000006 0",
                                  "board_get_online_status 0xff000006"}),
              bad_value + no_such_instance + "0x0 1\n");
}

TEST(Presence, PeerOfEachBoard) {
    EXPECT_EQ(calls_print(new_delivered("mpu_slave"), {"board_get_peer_online_status"}), "0x0 0\n");
    EXPECT_EQ(calls_print(new_delivered("lpu"), {"board_get_peer_online_status", "board_get_self_online_status"}),
              not_supported + "0x0 0\n");
}

TEST(Presence, TheSlaveSeesNoCardUntilItIsTold) {
    const test_board slave = new_delivered("mpu_slave");
    EXPECT_EQ(calls_print(slave, {"board_get_online_status" + card5, "board_set_online_status" + card5 + "0",
                                  "board_get_online_status" + card5}),
              "0x0 1\n0x0\n0x0 0\n");
}

TEST(Presence, PlacesOnALineCard) {
    EXPECT_EQ(
        calls_print(new_delivered("lpu"), {"board_get_online_status 0x0100ffff", "board_get_online_status 0x0300ffff",
                                           "board_get_online_status 0x0400ffff", "board_get_online_status 0xff000009"}),
        "0x0 0\n0x0 1\n" + no_such_instance + "0x0 1\n");
}

TEST(Presence, ListenersHearAChange) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"in_out_reg first 0", "board_set_online_status" + card5 + "0",
                                  "board_set_online_status" + card5 + "1", "board_set_online_status" + card5 + "1",
                                  "board_set_online_status" + self + "1", "heard 2", "in_out_unreg",
                                  "board_set_online_status" + card5 + "0", "heard 0"}),
              ok + ok + ok + ok + ok + "listener: slot 5 in 0, told to slot 9 with 0x0\n" +
                  "listener: slot 9 in 0, told to slot 9 with 0x0\n" + ok + ok);
}

TEST(Presence, ListenersAreKnownByName) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"in_out_unreg", "in_out_reg one 0", "in_out_reg one 0", "in_out_reg two 1",
                                  "in_out_unreg", "in_out_reg one 0"}),
              no_such_device + ok + bad_value + bad_value + ok + ok);
    EXPECT_EQ(calls_print(board, {"in_out_unreg_null_handler", "in_out_reg_null_handler one",
                                  "in_out_reg_null_handler one", "board_set_online_status" + card5 + "1",
                                  "in_out_unreg_null_handler", "in_out_reg one 0", "in_out_reg_null_name"}),
              ok + ok + bad_value + ok + ok + ok + null_pointer);
}

TEST(Fullin, HealthyAndNot) {
    EXPECT_EQ(calls_print(new_delivered("mpu_master"),
                          {"board_get_fullin_status" + self, "board_check_fullin_status" + self + "256",
                           "board_get_fullin_status" + card5}),
              "0x0 0\n0x0 0 \"\"\n0x0 0\n");
    EXPECT_EQ(calls_print(new_altered("mpu_master", {{"self/sim_board/unit/0/fullin", "1"}}),
                          {"board_get_fullin_status" + self, "board_check_fullin_status" + self + "256"}),
              "0x0 1\n0x0 1 \"the board is not fully inserted\"\n");
}

TEST(Slots, NumbersOfEachBoard) {
    const std::vector<std::string> calls = {"board_get_self_slotid", "board_get_self_logic_slotid",
                                            "board_get_peer_slotid", "board_get_peer_logic_slotid",
                                            "board_check_slotid" + self + "128"};
    EXPECT_EQ(calls_print(new_delivered("mpu_master"), calls), "0x0 9\n0x0 17\n0x0 10\n0x0 18\n0x0 0 \"\"\n");
    EXPECT_EQ(calls_print(new_delivered("mpu_slave"), calls), "0x0 10\n0x0 18\n0x0 9\n0x0 17\n0x0 0 \"\"\n");
    EXPECT_EQ(calls_print(new_delivered("lpu"), calls),
              "0x0 7\n0x0 7\n" + not_supported + not_supported + "0x0 0 \"\"\n");
}

TEST(Slots, ALogicalSlotBelowThePhysicalIsFound) {
    EXPECT_EQ(calls_print(new_altered("mpu_master", {{"self/sim_board/unit/0/logic_slot", "8"}}),
                          {"board_check_slotid" + self + "128"}),
              "0x0 1 \"logical slot 8 is below slot 9\"\n");
    EXPECT_EQ(calls_print(new_altered("mpu_master", {{"chassis/sim_chassis/slots/range/first", "10"}}),
                          {"board_check_slotid" + self + "128"}),
              "0x0 1 \"slot 9 is beyond the chassis\"\n");
}

TEST(Cards, ListsByKindOfBoard) {
    EXPECT_EQ(calls_print(new_delivered("mpu_master"), {"board_get_card_list" + self, "board_get_card_list" + card5}),
              "0x0 6 [0100000002000000030000000400000005000000060000000000000000000000]\n" + not_supported);
    EXPECT_EQ(calls_print(new_delivered("lpu"), {"board_get_card_list" + self}),
              "0x0 3 [0102030000000000000000000000000000000000000000000000000000000000]\n");
}

TEST(Cards, ReadyWhenPresentAndPowered) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(calls_print(board, {"board_get_card_ok" + self + "5", "board_get_card_ok" + self + "6",
                                  "board_set_power_off" + card5 + "9"}),
              "0x0 0\n0x0 1\n0x0\n");
    EXPECT_EQ(calls_print(board, {"board_get_card_ok" + self + "5", "board_get_card_ok" + self + "2",
                                  "board_set_power_on" + card5 + "9", "board_get_card_ok" + self + "5"}),
              "0x0 1\n0x0 0\n0x0\n0x0 1\n");
    EXPECT_EQ(calls_print(board, {"board_get_card_ok" + self + "7", "board_get_card_ok" + self + "17",
                                  "board_get_card_ok" + self + "0xffffffff", "board_get_card_ok" + card5 + "5"}),
              no_such_device + no_such_device + no_such_device + not_supported);
    EXPECT_EQ(calls_print(new_altered("mpu_master", {{"slot5/sim_board/unit/0/card_fault", "1"}}),
                          {"board_get_card_ok" + self + "5", "board_get_card_ok" + self + "4"}),
              "0x0 1\n0x0 0\n");
}

TEST(Cards, OnTheBoardByCardNumber) {
    EXPECT_EQ(calls_print(new_delivered("lpu"), {"board_get_card_ok" + self + "1", "board_get_card_ok" + self + "2",
                                                 "board_get_card_ok" + self + "3", "board_get_card_ok" + self + "4"}),
              "0x0 0\n0x0 0\n0x0 1\n" + no_such_device);
}

} // namespace kestro_tests
