// A card drives its line "card ok" once it has warmed up: a function of board time, played on the virtual clock.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string ok_of_5 = "drv_board_get_card_ok(slot_id=5)";
const std::string ok_of_4 = "drv_board_get_card_ok(slot_id=4)";
const std::string off_5 = "drv_board_set_power_off(inst_id=0xff000005, type=9)";
const std::string on_5 = "drv_board_set_power_on(inst_id=0xff000005, type=9)";
const std::string status_5 = "drv_board_get_power_status(inst_id=0xff000005, type=9)";
const std::string is_on = "0x0 status=1\n";
const std::string is_off = "0x0 status=0\n";
const std::string ready = "0x0 ok=0\n";
const std::string not_ready = "0x0 ok=1\n";

class CardPower : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual"};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

TEST_F(CardPower, ANewChassisHasWarmCards) {
    EXPECT_EQ(answers({ok_of_5, ok_of_4}), ready + ready);
}

TEST_F(CardPower, ACardIsReadyWhenItHasWarmedUp) {
    EXPECT_EQ(
        answers({off_5, ok_of_5, "wait 0.5", on_5, ok_of_5, ok_of_4, "wait 2.999", ok_of_5, "wait 0.001", ok_of_5}),
        ok + not_ready + ok + not_ready + ready + not_ready + ready);
}

TEST_F(CardPower, WarmsUpFromRunToRun) {
    EXPECT_EQ(answers({off_5, "wait 0.5", on_5, "wait 1", ok_of_5}), ok + ok + not_ready);
    EXPECT_EQ(answers({"wait 1.9", ok_of_5}), not_ready);
    EXPECT_EQ(answers({"wait 3", ok_of_5}), ready);
}

// Power that it has already changes nothing; power that it loses makes it begin anew.
TEST_F(CardPower, BeginsWithTheLastTimeItWasSwitchedOn) {
    EXPECT_EQ(answers({on_5, ok_of_5}), ok + ready);
    EXPECT_EQ(answers({off_5, "wait 0.5", on_5, "wait 2", on_5, "wait 1", ok_of_5}), ok + ok + ok + ready);
    EXPECT_EQ(answers({off_5, "wait 100", ok_of_5, on_5, "wait 2", off_5, "wait 0.5", on_5, "wait 2", ok_of_5, "wait 1",
                       ok_of_5}),
              ok + not_ready + ok + ok + ok + not_ready + ready);
}

TEST_F(CardPower, TheTechnicianSaysHowLongItTakes) {
    EXPECT_EQ(answers({off_5, "wait 0.5", on_5, "wait 3", ok_of_5, "wait 7", ok_of_5},
                      {"--set", "slot5/board/power/9/warm_up=10000"}),
              ok + ok + not_ready + ready);
    EXPECT_EQ(answers({off_5, "wait 0.5", on_5, ok_of_5}, {"--set", "slot5/board/power/9/warm_up=0"}), ok + ok + ready);
}

// The domain is off at once, and so is the line; the card itself lives on for half a second.
TEST_F(CardPower, AShortBreakPassesTheCardBy) {
    EXPECT_EQ(answers({off_5, status_5, ok_of_5, "wait 0.499", on_5, ok_of_5}), ok + is_off + not_ready + ok + ready);
    EXPECT_EQ(answers({off_5, "wait 0.5", on_5, ok_of_5}), ok + ok + not_ready);
    EXPECT_EQ(answers({"wait 2.75", off_5, "wait 0.125", on_5, ok_of_5, "wait 0.125", ok_of_5}),
              ok + ok + not_ready + ready);
}

TEST_F(CardPower, TheTechnicianSaysHowLongTheChargeLasts) {
    EXPECT_EQ(answers({off_5, "wait 1.999", on_5, ok_of_5, off_5, "wait 2", on_5, ok_of_5},
                      {"--set", "slot5/board/power/9/hold_up=2000"}),
              ok + ok + ready + ok + ok + not_ready);
    EXPECT_EQ(answers({"wait 3", off_5, on_5, ok_of_5}, {"--set", "slot5/board/power/9/hold_up=0"}),
              ok + ok + not_ready);
}

// What is off by hand has no charge: when that was is not known.
TEST_F(CardPower, PowerThatTheTechnicianTookBeginsAnew) {
    EXPECT_EQ(answers({on_5, ok_of_5}, {"--set", "slot5/board/power/9/on=0"}), ok + not_ready);
}

TEST_F(CardPower, ASwitchThatIsStuckStaysAsItIs) {
    EXPECT_EQ(answers({off_5, status_5, ok_of_5}, {"--set", "slot5/board/power/9/stuck=1"}), ok + is_on + ready);
    EXPECT_EQ(answers({on_5, status_5, ok_of_5}, {"--set", "slot5/board/power/9/on=0"}), ok + is_off + not_ready);
}

// Moments beyond 32 bits of nanoseconds, on both sides of a sign bit.
TEST_F(CardPower, RemembersTheMoment) {
    EXPECT_EQ(answers({"wait 3", off_5, "wait 0.5", on_5}), ok + ok);
    EXPECT_EQ(answers({ok_of_5}, {"--list", "slot5/board/power/9/since"}),
              "slot5/board/power/9/since = 3500000000 ns\n" + not_ready);
    EXPECT_EQ(answers({ok_of_5}, {"--set", "slot5/board/power/9/since=-3600000000000"}), ready);
}

} // namespace kestro_tests
