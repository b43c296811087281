// The dying gasp section: simulation and cards are enabled, disabled and left enabled.
#include <gtest/gtest.h>

#include "tests/selftest/call_order.h"
#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string simulation(int count) {
    return entry_count("dyinggasp_mng", "dyinggasp_simulation_enable", count);
}

std::string cards(int count) {
    return entry_count("dyinggasp_mng", "dyinggasp_enable", count);
}

std::string card_entry(int index, const std::string &answer) {
    return element("dyinggasp_mng", "dyinggasp_enable", index, "id", answer);
}

std::string simulate_rule(int enable, const std::string &answer) {
    return "drv_dyinggasp_set_simulation_enable(inst_id=0xffffffff, enable=" + std::to_string(enable) +
           ") = " + answer + " x1\n";
}

std::string simulate_rules(const std::string &first, const std::string &second, const std::string &third) {
    return simulate_rule(1, first) + simulate_rule(0, second) + simulate_rule(1, third);
}

std::string card_rule(int card, int enable, const std::string &answer) {
    return "drv_dyinggasp_set_enable(inst_id=0xffffffff, board_id=" + std::to_string(card) +
           ", enable=" + std::to_string(enable) + ") = " + answer + " x1\n";
}

std::string card_rules(int card, const std::string &first, const std::string &second, const std::string &third) {
    return card_rule(card, 1, first) + card_rule(card, 0, second) + card_rule(card, 1, third);
}

} // namespace

TEST(DyinggaspSimulationTest, IsLeftEnabled) {
    const std::string script = simulation(1) + simulate_rules("0", "0", "0");
    expect_part("dyinggasp_simulation", script, "Success: dyinggasp simulation pass.\r\n", 0);
    EXPECT_EQ(driver_calls("dyinggasp_simulation", script),
              "drv_dyinggasp_set_simulation_enable(inst_id=0xffffffff, enable=1)\n"
              "drv_dyinggasp_set_simulation_enable(inst_id=0xffffffff, enable=0)\n"
              "drv_dyinggasp_set_simulation_enable(inst_id=0xffffffff, enable=1)\n");
}

TEST(DyinggaspSimulationTest, NodeThatIsMissingOrEmpty) {
    for (const std::string &count :
         {simulation(0), no_entry_count("dyinggasp_mng", "dyinggasp_simulation_enable", "0x12")}) {
        expect_part("dyinggasp_simulation", count, "Info: dyinggasp simulation is not support.\r\n", 0);
    }
}

TEST(DyinggaspSimulationTest, AnyStepMayFailAndTheLastOneIsMade) {
    const std::string start = simulation(2);
    expect_part("dyinggasp_simulation", start + simulate_rules("0x1f", "0", "0"),
                "Error: dyinggasp simulation fail 0x1f.\r\n", -1);
    expect_part("dyinggasp_simulation", start + simulate_rules("0", "0x2f", "0"),
                "Error: dyinggasp simulation fail 0x2f.\r\n", -1);
    expect_part("dyinggasp_simulation", start + simulate_rules("0", "0", "0x811101a4"),
                "Error: dyinggasp simulation fail 0x811101a4.\r\n", -1);
    expect_part("dyinggasp_simulation", start + simulate_rules("0x1f", "0x2f", "0x3f"),
                "Error: dyinggasp simulation fail 0x1f.\r\n", -1);
}

TEST(DyinggaspCardsTest, EveryDescribedCard) {
    const std::string script = cards(3) + card_entry(0, "0 value=2") + card_entry(1, "0x51") +
                               card_entry(2, "0 value=27") + card_rules(2, "0", "0", "0") +
                               card_rules(27, "0", "0", "0");
    expect_part("dyinggasp_cards", script,
                "Success: dyinggasp card 0x2 enable pass.\r\n"
                "Success: dyinggasp card 0x1b enable pass.\r\n",
                0);
    EXPECT_EQ(driver_calls("dyinggasp_cards", script),
              "drv_dyinggasp_set_enable(inst_id=0xffffffff, board_id=2, enable=1)\n"
              "drv_dyinggasp_set_enable(inst_id=0xffffffff, board_id=2, enable=0)\n"
              "drv_dyinggasp_set_enable(inst_id=0xffffffff, board_id=2, enable=1)\n"
              "drv_dyinggasp_set_enable(inst_id=0xffffffff, board_id=27, enable=1)\n"
              "drv_dyinggasp_set_enable(inst_id=0xffffffff, board_id=27, enable=0)\n"
              "drv_dyinggasp_set_enable(inst_id=0xffffffff, board_id=27, enable=1)\n");
}

TEST(DyinggaspCardsTest, NodeThatIsMissingOrEmpty) {
    for (const std::string &count : {cards(0), no_entry_count("dyinggasp_mng", "dyinggasp_enable", "0x12")}) {
        expect_part("dyinggasp_cards", count, "Info: dyinggasp card enable is not support.\r\n", 0);
    }
}

TEST(DyinggaspCardsTest, AnyStepMayFailAndTheNextCardIsTested) {
    const std::string start =
        cards(2) + card_entry(0, "0 value=2") + card_entry(1, "0 value=5") + card_rules(5, "0", "0", "0");
    const std::string next = "Success: dyinggasp card 0x5 enable pass.\r\n";
    expect_part("dyinggasp_cards", start + card_rules(2, "0x1f", "0", "0"),
                "Error: dyinggasp card enable fail 0x1f.\r\n" + next, -1);
    expect_part("dyinggasp_cards", start + card_rules(2, "0", "0x2f", "0"),
                "Error: dyinggasp card enable fail 0x2f.\r\n" + next, -1);
    expect_part("dyinggasp_cards", start + card_rules(2, "0", "0", "0x3f"),
                "Error: dyinggasp card enable fail 0x3f.\r\n" + next, -1);
    expect_part("dyinggasp_cards", start + card_rules(2, "0", "0x2f", "0x3f"),
                "Error: dyinggasp card enable fail 0x2f.\r\n" + next, -1);
}

TEST(DyinggaspSectionTest, ASimulationThatFailsIsFollowedByTheCards) {
    const std::string card = cards(1) + card_entry(0, "0 value=2");
    expect_part("dyinggasp", simulation(1) + simulate_rules("0", "0", "0") + card + card_rules(2, "0", "0", "0"),
                "Success: dyinggasp simulation pass.\r\n"
                "Success: dyinggasp card 0x2 enable pass.\r\n",
                0);
    expect_part("dyinggasp", simulation(1) + simulate_rules("0x1f", "0", "0") + card + card_rules(2, "0", "0", "0"),
                "Error: dyinggasp simulation fail 0x1f.\r\n"
                "Success: dyinggasp card 0x2 enable pass.\r\n",
                -1);
    expect_part("dyinggasp", simulation(1) + simulate_rules("0", "0", "0") + card + card_rules(2, "0", "0x2f", "0"),
                "Success: dyinggasp simulation pass.\r\n"
                "Error: dyinggasp card enable fail 0x2f.\r\n",
                -1);
}

TEST(DyinggaspSectionTest, ABoardWithoutAnyOfIt) {
    expect_part("dyinggasp", simulation(0) + cards(0),
                "Info: dyinggasp simulation is not support.\r\n"
                "Info: dyinggasp card enable is not support.\r\n",
                0);
}
