// Presence of the board, its peer and its trusted platform module, and the slots they are in.
#include <gtest/gtest.h>

#include "tests/selftest/call_order.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

// A message of 256 bytes without a terminator, as a driver fills its area to the last byte.
std::string full_message() {
    return std::string(255, 'm') + "!";
}

std::string area_of(const std::string &text) {
    std::string area = "[";
    for (const char one : text) {
        area += (area.size() > 1 ? " " : "") + std::string(one == '!' ? "21" : "6d");
    }
    return area + "]";
}

std::string fullin_rule(const std::string &answer) {
    return "drv_board_get_fullin_status(inst_id=0xffffffff) = " + answer + "\n";
}

std::string fullin_check_rule(const std::string &answer) {
    return "drv_board_check_fullin_status(inst_id=0xffffffff, size=256) = " + answer + "\n";
}

struct slots {
    std::string own = "0 slot_id=9";
    std::string own_logic = "0 slot_id=17";
    std::string peer = "0 slot_id=10";
    std::string peer_logic = "0 slot_id=18";
    std::string check = "0 result=0";
};

void expect_slots(const slots &answers, const std::string &lines, int result) {
    expect_part("slot_id",
                "drv_board_get_self_slotid() = " + answers.own + "\ndrv_board_get_self_logic_slotid() = " +
                    answers.own_logic + "\ndrv_board_get_peer_slotid() = " + answers.peer +
                    "\ndrv_board_get_peer_logic_slotid() = " + answers.peer_logic +
                    "\ndrv_board_check_slotid(inst_id=0xffffffff, size=256) = " + answers.check + "\n",
                lines, result);
}

void expect_tpm(const std::string &online, const std::string &active, const std::string &lines, int result) {
    expect_part("tpm",
                "drv_board_get_tpm_online_status(inst_id=0xffffffff) = " + online +
                    "\ndrv_board_get_tpm_active_status(inst_id=0xffffffff) = " + active + "\n",
                lines, result);
}

} // namespace

TEST(SelfOnlineTest, ABoardThatSeesItself) {
    expect_part("self_online", "drv_board_get_self_online_status() = 0 status=0\n",
                "Success: board self online check pass. present 0\r\n", 0);
    expect_part("self_online", "drv_board_get_self_online_status() = 0\n",
                "Success: board self online check pass. present 0\r\n", 0);
}

TEST(SelfOnlineTest, ABoardThatDoesNot) {
    expect_part("self_online", "drv_board_get_self_online_status() = 0 status=1\n",
                "Error  : board self online check fail. ret 0x0 sts 0x1\r\n", -1);
    expect_part("self_online", "drv_board_get_self_online_status() = 0x41\n",
                "Error  : board self online check fail. ret 0x41 sts 0x0\r\n", -1);
    expect_part("self_online", "drv_board_get_self_online_status() = 0x811101a4\n",
                "Error  : board self online check fail. ret 0x811101a4 sts 0x0\r\n", -1);
}

TEST(PeerOnlineTest, APeerMayBeThereOrNot) {
    expect_part("peer_online", "drv_board_get_peer_online_status() = 0 status=0\n",
                "Success: board peer online check pass. status present 0 \r\n", 0);
    expect_part("peer_online", "drv_board_get_peer_online_status() = 0 status=1\n",
                "Success: board peer online check pass. status unpresent 1 \r\n", 0);
    expect_part("peer_online", "drv_board_get_peer_online_status() = 0\n",
                "Success: board peer online check pass. status present 0 \r\n", 0);
}

TEST(PeerOnlineTest, ABoardThatStandsAlonePassesInSilence) {
    for (const std::string code : {"0x811101a4", "0xa4", "0x1a4 status=2"}) {
        expect_part("peer_online", "drv_board_get_peer_online_status() = " + code + "\n", "", 0);
    }
}

TEST(PeerOnlineTest, AnotherStatusOrNone) {
    expect_part("peer_online", "drv_board_get_peer_online_status() = 0 status=2\n",
                "Error  : board peer online check fail. ret 0x0 sts 0x2\r\n", -1);
    expect_part("peer_online", "drv_board_get_peer_online_status() = 0x42\n",
                "Error  : board peer online check fail. ret 0x42 sts 0x0\r\n", -1);
    expect_part("peer_online", "drv_board_get_peer_online_status() = 0xa400 status=1\n",
                "Error  : board peer online check fail. ret 0xa400 sts 0x1\r\n", -1);
}

TEST(FullinTest, ABoardThatIsFullyIn) {
    expect_part("fullin", fullin_rule("0 status=0") + fullin_check_rule("0 status=0 dfx=\"fine\""),
                "Success: board fullin check pass. sts 0\r\n", 0);
    expect_part("fullin", fullin_rule("0") + fullin_check_rule("0"), "Success: board fullin check pass. sts 0\r\n", 0);
}

// Only 1 says that it is not; the line shows what was read.
TEST(FullinTest, AnyOtherStatusIsLeftToTheCheckOfTheDriver) {
    expect_part("fullin", fullin_rule("0 status=2") + fullin_check_rule("0 status=0"),
                "Success: board fullin check pass. sts 2\r\n", 0);
}

TEST(FullinTest, WhatIsNotSupportedPasses) {
    expect_part("fullin", fullin_rule("0x811101a4") + fullin_check_rule("0 status=0"),
                "Success: board fullin check pass. sts 0\r\n", 0);
    expect_part("fullin", fullin_rule("0 status=0") + fullin_check_rule("0xa4"),
                "Success: board fullin check pass. sts 0\r\n", 0);
}

TEST(FullinTest, ABoardThatIsNotFullyInIsNotCheckedFurther) {
    expect_part("fullin", fullin_rule("0 status=1"), "Error  : board get fullin check fail. ret 0x0 sts 0x1\r\n", -1);
    expect_part("fullin", fullin_rule("0xa4 status=1"), "Error  : board get fullin check fail. ret 0xa4 sts 0x1\r\n",
                -1);
}

TEST(FullinTest, AStatusThatCannotBeRead) {
    expect_part("fullin", fullin_rule("0x43"), "Error  : board get fullin check fail. ret 0x43 sts 0x0\r\n", -1);
}

TEST(FullinTest, TheCheckOfTheDriverFails) {
    expect_part("fullin", fullin_rule("0 status=0") + fullin_check_rule("0x44"),
                "Error  : board fullin check fail. ret 0x44 sts 0x0  \r\n", -1);
    expect_part("fullin", fullin_rule("0 status=0") + fullin_check_rule("0 status=3 dfx=\"short pin\""),
                "Error  : board fullin check fail. ret 0x0 sts 0x3 short pin \r\n", -1);
    expect_part("fullin", fullin_rule("0 status=0") + fullin_check_rule("0x811101a4 status=3 dfx=\"short pin\""),
                "Error  : board fullin check fail. ret 0x811101a4 sts 0x3 short pin \r\n", -1);
}

TEST(FullinTest, AMessageThatFillsItsAreaIsPrintedToItsEnd) {
    expect_part("fullin", fullin_rule("0 status=0") + fullin_check_rule("0 status=1 dfx=" + area_of(full_message())),
                "Error  : board fullin check fail. ret 0x0 sts 0x1 " + full_message() + " \r\n", -1);
}

TEST(SlotIdTest, BoardAndPeer) {
    expect_slots({},
                 "Success: board slotid check pass. slot_id 9 logic_slot_id 17 peer_slot_id 10 peer_logic_slot_id 18 "
                 "\r\n",
                 0);
}

TEST(SlotIdTest, PresetsAndEqualNumbers) {
    expect_slots({"0", "0", "0", "0", "0"},
                 "Success: board slotid check pass. slot_id 0 logic_slot_id 0 peer_slot_id 0 peer_logic_slot_id 0 \r\n",
                 0);
    slots same;
    same.own_logic = "0 slot_id=9";
    expect_slots(same,
                 "Success: board slotid check pass. slot_id 9 logic_slot_id 9 peer_slot_id 10 peer_logic_slot_id 18 "
                 "\r\n",
                 0);
}

TEST(SlotIdTest, ABoardThatStandsAlonePasses) {
    slots alone;
    alone.peer = "0x811101a4";
    alone.peer_logic = "0xa4";
    expect_slots(alone,
                 "Success: board slotid check pass. slot_id 9 logic_slot_id 17 peer_slot_id 0 peer_logic_slot_id 0 "
                 "\r\n",
                 0);
}

// The finding of the driver does not count where its code is 0.
TEST(SlotIdTest, OnlyTheCodeOfTheDriverCounts) {
    slots odd;
    odd.check = "0 result=5 dfx=\"slot 9\"";
    expect_slots(odd,
                 "Success: board slotid check pass. slot_id 9 logic_slot_id 17 peer_slot_id 10 peer_logic_slot_id 18 "
                 "\r\n",
                 0);
    odd.check = "0x45 result=5 dfx=\"slot 9\"";
    expect_slots(odd, "Error  : board check slotid fail. ret 0x45 result 0x5\r\n", -1);
    odd.check = "0x811101a4";
    expect_slots(odd, "Error  : board check slotid fail. ret 0x811101a4 result 0x0\r\n", -1);
    odd.check = "0x46 result=1 dfx=" + area_of(full_message());
    expect_slots(odd, "Error  : board check slotid fail. ret 0x46 result 0x1\r\n", -1);
}

TEST(SlotIdTest, ALogicalSlotBelowThePhysicalOne) {
    slots low;
    low.own_logic = "0 slot_id=8";
    expect_slots(low,
                 "Error  : board logic slotid  check fail. logic_slot_id 8 slot_id 9\r\n"
                 "Error  : board check slotid fail. ret 0x0 result 0x0\r\n",
                 -1);
}

// A number that was not read counts as 0.
TEST(SlotIdTest, AnOwnSlotThatCannotBeRead) {
    slots sick;
    sick.own = "0x47";
    expect_slots(sick,
                 "Error  : board get slotid fail. ret 0x47\r\n"
                 "Error  : board check slotid fail. ret 0x0 result 0x0\r\n",
                 -1);
    sick = {};
    sick.own_logic = "0x48";
    expect_slots(sick,
                 "Error  : board get slotid fail. ret 0x48\r\n"
                 "Error  : board logic slotid  check fail. logic_slot_id 0 slot_id 9\r\n"
                 "Error  : board check slotid fail. ret 0x0 result 0x0\r\n",
                 -1);
    sick.own = "0x811101a4";
    expect_slots(sick,
                 "Error  : board get slotid fail. ret 0x811101a4\r\n"
                 "Error  : board get slotid fail. ret 0x48\r\n"
                 "Error  : board check slotid fail. ret 0x0 result 0x0\r\n",
                 -1);
}

TEST(SlotIdTest, APeerSlotThatCannotBeRead) {
    slots sick;
    sick.peer = "0x49";
    expect_slots(sick,
                 "Error  : board get peer slotid fail. ret 0x49\r\n"
                 "Error  : board check slotid fail. ret 0x0 result 0x0\r\n",
                 -1);
    sick.peer = "0xa4";
    sick.peer_logic = "0x4a";
    sick.check = "0x4b";
    expect_slots(sick,
                 "Error  : board get peer slotid fail. ret 0x4a\r\n"
                 "Error  : board check slotid fail. ret 0x4b result 0x0\r\n",
                 -1);
}

TEST(TpmTest, NeitherValueIsJudged) {
    expect_tpm("0 status=0", "0 status=1",
               "Success: board tpm online 0 (0: present 1: absent) tpm active 1 (0: unactive 1:active)\r\n", 0);
    expect_tpm("0 status=1", "0 status=0",
               "Success: board tpm online 1 (0: present 1: absent) tpm active 0 (0: unactive 1:active)\r\n", 0);
    expect_tpm("0 status=7", "0",
               "Success: board tpm online 7 (0: present 1: absent) tpm active 0 (0: unactive 1:active)\r\n", 0);
    expect_tpm("0", "0 status=9",
               "Success: board tpm online 0 (0: present 1: absent) tpm active 9 (0: unactive 1:active)\r\n", 0);
}

TEST(TpmTest, AStatusThatCannotBeRead) {
    expect_tpm("0x51", "0 status=1", "Error  : get tpm online sts fail 0x51.\r\n", -1);
    expect_tpm("0 status=0", "0x52", "Error  : get tpm active sts fail 0x52.\r\n", -1);
    expect_tpm("0x811101a4", "0xa4",
               "Error  : get tpm online sts fail 0x811101a4.\r\nError  : get tpm active sts fail 0xa4.\r\n", -1);
}

TEST(BoardPresenceTest, OnTheSimulatedMasterAndSlave) {
    for (const std::string seat : {"mpu_master", "mpu_slave"}) {
        EXPECT_EQ(run_part({"--board", seat}, "self_online").out,
                  "Success: board self online check pass. present 0\r\nresult 0\n");
        EXPECT_EQ(run_part({"--board", seat}, "peer_online").out,
                  "Success: board peer online check pass. status present 0 \r\nresult 0\n");
        EXPECT_EQ(run_part({"--board", seat}, "fullin").out, "Success: board fullin check pass. sts 0\r\nresult 0\n");
        EXPECT_EQ(run_part({"--board", seat}, "tpm").out,
                  "Success: board tpm online 0 (0: present 1: absent) tpm active 1 (0: unactive 1:active)\r\n"
                  "result 0\n");
    }
    EXPECT_EQ(run_part({}, "slot_id").out,
              "Success: board slotid check pass. slot_id 9 logic_slot_id 17 peer_slot_id 10 peer_logic_slot_id 18 \r\n"
              "result 0\n");
    EXPECT_EQ(run_part({"--board", "mpu_slave"}, "slot_id").out,
              "Success: board slotid check pass. slot_id 10 logic_slot_id 18 peer_slot_id 9 peer_logic_slot_id 17 \r\n"
              "result 0\n");
}

TEST(BoardPresenceTest, OnTheSimulatedLineCard) {
    EXPECT_EQ(run_part({"--board", "lpu"}, "self_online").out,
              "Success: board self online check pass. present 0\r\nresult 0\n");
    EXPECT_EQ(run_part({"--board", "lpu"}, "peer_online").out, "result 0\n");
    EXPECT_EQ(run_part({"--board", "lpu"}, "fullin").out, "Success: board fullin check pass. sts 0\r\nresult 0\n");
    EXPECT_EQ(run_part({"--board", "lpu"}, "slot_id").out,
              "Success: board slotid check pass. slot_id 7 logic_slot_id 7 peer_slot_id 0 peer_logic_slot_id 0 \r\n"
              "result 0\n");
    EXPECT_EQ(run_part({"--board", "lpu"}, "tpm").out,
              "Success: board tpm online 1 (0: present 1: absent) tpm active 0 (0: unactive 1:active)\r\n"
              "result 0\n");
}

TEST(BoardPresenceTest, TheOrderOfTheQueries) {
    EXPECT_EQ(calls_of({}, "fullin"),
              (std::vector<std::string>{"drv_board_get_fullin_status(inst_id=0xffffffff)",
                                        "drv_board_check_fullin_status(inst_id=0xffffffff, size=256)"}));
    EXPECT_EQ(calls_of({}, "slot_id"),
              (std::vector<std::string>{"drv_board_get_self_slotid()", "drv_board_get_self_logic_slotid()",
                                        "drv_board_get_peer_slotid()", "drv_board_get_peer_logic_slotid()",
                                        "drv_board_check_slotid(inst_id=0xffffffff, size=256)"}));
    EXPECT_EQ(calls_of({}, "tpm"), (std::vector<std::string>{"drv_board_get_tpm_online_status(inst_id=0xffffffff)",
                                                             "drv_board_get_tpm_active_status(inst_id=0xffffffff)"}));
}
