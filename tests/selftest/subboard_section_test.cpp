// The sub-board section: four items of each sub-board, each with an element of its own.
#include <gtest/gtest.h>

#include "tests/selftest/call_order.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string subboards(int count) {
    return entry_count("board_mng", "subboard_attr", count);
}

std::string entry(int index, const std::string &name, const std::string &answer) {
    return element("board_mng", "subboard_attr", index, name, answer);
}

std::string config(int index, const std::string &type, const std::string &pcb, const std::string &bom_ver,
                   const std::string &online) {
    return entry(index, "type_cfg", type) + entry(index, "pcb_cfg", pcb) + entry(index, "bom_ver_cfg", bom_ver) +
           entry(index, "online_cfg", online);
}

std::string rule(const std::string &operation, int subboard_id, const std::string &answer) {
    return "drv_subboard_" + operation + "(inst_id=0xffffffff, subboard_id=" + std::to_string(subboard_id) +
           ") = " + answer + "\n";
}

std::string ex_rule(int subboard_id, const std::string &answer) {
    return "drv_subboard_get_online_status_ex(inst_id=0xffffffff, subboard_id=" + std::to_string(subboard_id) +
           ", size=255) = " + answer + "\n";
}

std::string all_rules(int subboard_id, const std::string &answer) {
    return rule("get_type", subboard_id, answer) + rule("get_pcb_ver", subboard_id, answer) +
           rule("get_bom_ver", subboard_id, answer) + rule("get_online_status", subboard_id, answer);
}

std::string good_rules(int subboard_id) {
    return rule("get_type", subboard_id, "0 type=0x21") + rule("get_pcb_ver", subboard_id, "0 ver=26") +
           rule("get_bom_ver", subboard_id, "0 ver=3") + rule("get_online_status", subboard_id, "0 status=0") +
           ex_rule(subboard_id, "0 status=0 dfx=\"\"");
}

std::string good_lines(const std::string &which) {
    return "Success: get subboard " + which + " type is 0x21.\r\n" + "Success: get subboard " + which +
           " pcb is 0x1a.\r\n" + "Success: get subboard " + which + " bom version is 0x3.\r\n" +
           "Success: get subboard " + which + " online 0x0\r\n";
}

std::string unsupported_lines(const std::string &which) {
    return "Info: get subboard " + which + " type is not support.\r\n" + "Info: get subboard " + which +
           " pcb is not support.\r\n" + "Info: get subboard " + which + " bom version is not support.\r\n" +
           "Info: get subboard " + which + " online is not support.\r\n";
}

// One sub-board, the one of the processor.
std::string one(const std::string &type, const std::string &pcb, const std::string &bom_ver,
                const std::string &online) {
    return subboards(1) + entry(0, "subboard_id", "0 value=0") + config(0, type, pcb, bom_ver, online);
}

constexpr const char *wired = "0 value=0";
constexpr const char *not_wired = "0 value=255";

} // namespace

TEST(SubboardSectionTest, NodeThatIsMissingOrEmpty) {
    for (const std::string &count : {subboards(0), no_entry_count("board_mng", "subboard_attr", "0x12")}) {
        expect_part("subboard", count, "Info: sub board is not support.\r\n", 0);
    }
}

TEST(SubboardSectionTest, EverySubboardByItsName) {
    const struct {
        int number;
        const char *shown;
    } known[] = {{0, "0 cpu-board"}, {1, "1 cpu-board-1"},  {2, "2 tpm-board"},     {3, "3 mng-board"},
                 {4, "4 unknown"},   {10, "10 mife-board"}, {20, "20 three-board"}, {30, "30 intf-board"}};
    std::string script = subboards(8);
    std::string lines;
    for (int i = 0; i < 8; ++i) {
        script += entry(i, "subboard_id", "0 value=" + std::to_string(known[i].number)) +
                  config(i, "0 value=0", "0 value=1", "0 value=254", "0 value=256") + good_rules(known[i].number);
        lines += good_lines(known[i].shown);
    }
    expect_part("subboard", script, lines, 0);
}

TEST(SubboardSectionTest, AnEntryWithoutItsNumberIsSkipped) {
    expect_part("subboard",
                subboards(2) + entry(0, "subboard_id", "0x51") + entry(1, "subboard_id", "0 value=30") +
                    config(1, wired, wired, wired, wired) + good_rules(30),
                good_lines("30 intf-board"), 0);
}

TEST(SubboardSectionTest, ItemsThatAreNotDescribed) {
    expect_part("subboard",
                subboards(2) + entry(0, "subboard_id", "0 value=2") +
                    config(0, not_wired, not_wired, not_wired, not_wired) + entry(1, "subboard_id", "0 value=3") +
                    config(1, "0x51", "0x51", "0x51", "0x51"),
                unsupported_lines("2 tpm-board") + unsupported_lines("3 mng-board"), 0);
}

TEST(SubboardSectionTest, TwoHundredAndFiftyFiveTurnsOffOneItemOnly) {
    expect_part("subboard",
                one(not_wired, wired, wired, wired) + rule("get_pcb_ver", 0, "0 ver=1") +
                    rule("get_bom_ver", 0, "0 ver=2") + rule("get_online_status", 0, "0") + ex_rule(0, "0 status=1"),
                "Info: get subboard 0 cpu-board type is not support.\r\n"
                "Success: get subboard 0 cpu-board pcb is 0x1.\r\n"
                "Success: get subboard 0 cpu-board bom version is 0x2.\r\n"
                "Success: get subboard 0 cpu-board online 0x1\r\n",
                0);
    expect_part("subboard",
                one(wired, not_wired, wired, not_wired) + rule("get_type", 0, "0 type=1") +
                    rule("get_bom_ver", 0, "0 ver=2"),
                "Success: get subboard 0 cpu-board type is 0x1.\r\n"
                "Info: get subboard 0 cpu-board pcb is not support.\r\n"
                "Success: get subboard 0 cpu-board bom version is 0x2.\r\n"
                "Info: get subboard 0 cpu-board online is not support.\r\n",
                0);
    expect_part("subboard",
                one(wired, wired, not_wired, not_wired) + rule("get_type", 0, "0 type=1") +
                    rule("get_pcb_ver", 0, "0 ver=2"),
                "Success: get subboard 0 cpu-board type is 0x1.\r\n"
                "Success: get subboard 0 cpu-board pcb is 0x2.\r\n"
                "Info: get subboard 0 cpu-board bom version is not support.\r\n"
                "Info: get subboard 0 cpu-board online is not support.\r\n",
                0);
}

TEST(SubboardSectionTest, EveryFailureIsToldAndTheNextSubboardTested) {
    expect_part("subboard",
                subboards(2) + entry(0, "subboard_id", "0 value=1") + config(0, wired, wired, wired, wired) +
                    all_rules(1, "0x1f") + entry(1, "subboard_id", "0 value=20") +
                    config(1, wired, wired, wired, wired) + good_rules(20),
                "Error: get subboard 1 cpu-board-1 type fail 0x1f.\r\n"
                "Error: get subboard 1 cpu-board-1 pcb fail 0x1f.\r\n"
                "Error: get subboard 1 cpu-board-1 bom version fail 0x1f.\r\n"
                "Error: get subboard 1 cpu-board-1 online status fail 0x1f.\r\n" +
                    good_lines("20 three-board"),
                -1);
}

TEST(SubboardSectionTest, EachItemAloneFailsTheSection) {
    const std::string type = "Success: get subboard 0 cpu-board type is 0x21.\r\n";
    const std::string pcb = "Success: get subboard 0 cpu-board pcb is 0x1a.\r\n";
    const std::string bom_ver = "Success: get subboard 0 cpu-board bom version is 0x3.\r\n";
    const std::string online = "Success: get subboard 0 cpu-board online 0x0\r\n";
    const std::string start = one(wired, wired, wired, wired);
    const std::string good_type = rule("get_type", 0, "0 type=0x21");
    const std::string good_pcb = rule("get_pcb_ver", 0, "0 ver=26");
    const std::string good_bom_ver = rule("get_bom_ver", 0, "0 ver=3");
    const std::string good_online = rule("get_online_status", 0, "0") + ex_rule(0, "0");
    expect_part("subboard", start + rule("get_type", 0, "0x811101a4") + good_pcb + good_bom_ver + good_online,
                "Error: get subboard 0 cpu-board type fail 0x811101a4.\r\n" + pcb + bom_ver + online, -1);
    expect_part("subboard", start + good_type + rule("get_pcb_ver", 0, "0x2f") + good_bom_ver + good_online,
                type + "Error: get subboard 0 cpu-board pcb fail 0x2f.\r\n" + bom_ver + online, -1);
    expect_part("subboard", start + good_type + good_pcb + rule("get_bom_ver", 0, "0x3f") + good_online,
                type + pcb + "Error: get subboard 0 cpu-board bom version fail 0x3f.\r\n" + online, -1);
    expect_part("subboard", start + good_type + good_pcb + good_bom_ver + rule("get_online_status", 0, "0x4f"),
                type + pcb + bom_ver + "Error: get subboard 0 cpu-board online status fail 0x4f.\r\n", -1);
}

TEST(SubboardSectionTest, AnExtendedStatusThatFailsShowsTheWholeMessage) {
    const std::string start = one(not_wired, not_wired, not_wired, wired) + rule("get_online_status", 0, "0 status=1");
    const std::string unsupported = "Info: get subboard 0 cpu-board type is not support.\r\n"
                                    "Info: get subboard 0 cpu-board pcb is not support.\r\n"
                                    "Info: get subboard 0 cpu-board bom version is not support.\r\n";
    const std::string message(255, 'm');
    expect_part("subboard", start + ex_rule(0, "0x5f dfx=\"" + message + "\""),
                unsupported + "Error: get subboard 0 cpu-board online status ex fail 0x5f msg " + message + "\r\n", -1);
    expect_part("subboard", start + ex_rule(0, "0x5f"),
                unsupported + "Error: get subboard 0 cpu-board online status ex fail 0x5f msg \r\n", -1);
}

TEST(SubboardSectionTest, AMessageDoesNotLastUntilTheNextSubboard) {
    expect_part("subboard",
                subboards(2) + entry(0, "subboard_id", "0 value=0") +
                    config(0, not_wired, not_wired, not_wired, wired) + entry(1, "subboard_id", "0 value=2") +
                    config(1, not_wired, not_wired, not_wired, wired) + rule("get_online_status", 0, "0") +
                    ex_rule(0, "0 status=1 dfx=\"contact open\"") + rule("get_online_status", 2, "0") +
                    ex_rule(2, "0x5f"),
                "Info: get subboard 0 cpu-board type is not support.\r\n"
                "Info: get subboard 0 cpu-board pcb is not support.\r\n"
                "Info: get subboard 0 cpu-board bom version is not support.\r\n"
                "Success: get subboard 0 cpu-board online 0x1\r\n"
                "Info: get subboard 2 tpm-board type is not support.\r\n"
                "Info: get subboard 2 tpm-board pcb is not support.\r\n"
                "Info: get subboard 2 tpm-board bom version is not support.\r\n"
                "Error: get subboard 2 tpm-board online status ex fail 0x5f msg \r\n",
                -1);
}

TEST(SubboardSectionTest, WhatTheDriverLeavesUnwrittenIsZero) {
    expect_part("subboard", one("0", "0", "0", "0") + all_rules(0, "0") + ex_rule(0, "0"),
                "Success: get subboard 0 cpu-board type is 0x0.\r\n"
                "Success: get subboard 0 cpu-board pcb is 0x0.\r\n"
                "Success: get subboard 0 cpu-board bom version is 0x0.\r\n"
                "Success: get subboard 0 cpu-board online 0x0\r\n",
                0);
}

TEST(SubboardSectionTest, OrderOfCalls) {
    const std::string which = "(inst_id=0xffffffff, subboard_id=0)\n";
    EXPECT_EQ(driver_calls("subboard", one(wired, wired, wired, wired) + good_rules(0)),
              "drv_subboard_get_type" + which + "drv_subboard_get_pcb_ver" + which + "drv_subboard_get_bom_ver" +
                  which + "drv_subboard_get_online_status" + which +
                  "drv_subboard_get_online_status_ex(inst_id=0xffffffff, subboard_id=0, size=255)\n");
}
