// Clocks: losses show in status and history, the synchronous clock follows a recovered one, and the stratum 3 clock is
// the synthesiser that it is made of.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string there = "0x0 status=0\n";
const std::string lost = "0x0 status=1\n";

std::string status(int clock) {
    return "drv_clk_detect_get_status(clock_id=" + std::to_string(clock) + ")";
}

std::string history(int clock) {
    return "drv_clk_detect_get_status_history(clock_id=" + std::to_string(clock) + ")";
}

std::string enable(int to) {
    return "drv_board_set_synclk_enable(enable=" + std::to_string(to) + ")";
}

std::string los(int port) {
    return "drv_board_set_synclk_los(port=" + std::to_string(port) + ")";
}

class ClockDriver : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual", "--board", seat_};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }

    std::string state_ = new_scratch_dir() + "/state";
    std::string seat_ = "mpu_master";
};

} // namespace

TEST_F(ClockDriver, ANewBoardHasAllItsClocks) {
    for (const std::string seat : {"mpu_master", "lpu"}) {
        seat_ = seat;
        for (int clock = 0; clock <= 4; ++clock) {
            const std::string id = "(clock_id=" + std::to_string(clock) + ")";
            EXPECT_EQ(
                answers({status(clock), history(clock), "drv_clk_check_init" + id, "drv_clk_detect_check_id" + id}),
                there + there + "0x0 status=1\n0x0 status=0\n");
        }
    }
}

TEST_F(ClockDriver, ALossShowsInStatusAndHistory) {
    EXPECT_EQ(answers({status(1), status(0), history(1), history(1)}, {"--set", "slot9/clock/source/1/present=0"}),
              lost + there + lost + lost);
    EXPECT_EQ(answers({status(1), history(1), history(1)}, {"--set", "slot9/clock/source/1/present=1"}),
              there + lost + there);
}

TEST_F(ClockDriver, StartForgetsAndStopKeepsNoLosses) {
    EXPECT_EQ(answers({status(1)}, {"--set", "slot9/clock/source/1/present=0"}), lost);
    EXPECT_EQ(answers({"drv_clk_init()", history(1)}, {"--set", "slot9/clock/source/1/present=1"}), ok + there);
    EXPECT_EQ(answers({"drv_clk_deinit()", "drv_clk_check_init(clock_id=1)", status(1), history(1)},
                      {"--set", "slot9/clock/source/1/present=0"}),
              ok + "0x0 status=0\n" + lost + there);
    EXPECT_EQ(answers({enable(0), enable(1), history(4)}), ok + ok + there);
    EXPECT_EQ(answers({"drv_clk_init()", "drv_clk_check_init(clock_id=1)", history(1)}), ok + "0x0 status=1\n" + lost);
}

TEST_F(ClockDriver, SynchronousClockFollowsARecoveredOne) {
    const std::string source = "drv_board_get_synclk_source()";
    EXPECT_EQ(answers({source, status(4)}, {"--set", "slot9/clock/source/2/present=0"}), "0x0 channel=2\n" + lost);
    EXPECT_EQ(answers({"drv_board_set_synclk_source(channel=3)", source, status(4), history(4), history(4)}),
              ok + "0x0 channel=3\n" + there + lost + there);
    EXPECT_EQ(answers({enable(0), status(4), status(3), enable(1), status(4), history(4), history(3)}),
              ok + lost + there + ok + there + lost + there);
}

// Nobody has looked meanwhile.
TEST_F(ClockDriver, WhatADriverTakesAwayIsNoticed) {
    EXPECT_EQ(answers({enable(0), enable(1), los(1), "drv_clk_detect_get_status_history(clock_id=4)", history(3)}),
              ok + ok + ok + lost + lost);
}

TEST_F(ClockDriver, LossOfSignalIsOfOnePort) {
    EXPECT_EQ(answers({los(0), status(2), status(3), status(4), los(1), status(2), status(3), status(4)}),
              ok + lost + there + lost + ok + there + lost + there);
    EXPECT_EQ(answers({"drv_clk_init()", status(2), status(3), history(3)}), ok + there + there + there);
}

TEST_F(ClockDriver, IdentityOfAnotherDetectorIsFound) {
    EXPECT_EQ(answers({"drv_clk_detect_check_id(clock_id=0)", "drv_clk_detect_check_id(clock_id=1)"},
                      {"--set", "slot9/clock/0/0x00=0xc8"}),
              "0x0 status=1\n0x0 status=0\n");
}

TEST_F(ClockDriver, DumpShowsTheDetector) {
    const std::string dump = "drv_clk_detect_dump_reg(clock_id=1, size=30)";
    EXPECT_EQ(answers({dump, "drv_clk_detect_dump_reg(clock_id=1, size=29)"}),
              "0x0 buffer=\"0x00: c7 00 01 ff 00 08 00 00\"\n" + too_small);
    EXPECT_EQ(answers({dump, status(1), dump}, {"--set", "slot9/clock/source/1/present=0"}),
              "0x0 buffer=\"0x00: c7 01 01 ff 00 00 00 00\"\n" + lost +
                  "0x0 buffer=\"0x00: c7 03 01 ff 00 00 00 00\"\n");
    EXPECT_EQ(answers({dump, "drv_clk_deinit()", dump}, {"--set", "slot9/clock/source/1/present=1"}),
              "0x0 buffer=\"0x00: c7 02 01 ff 00 08 00 00\"\n" + ok + "0x0 buffer=\"0x00: c7 02 00 ff 00 08 00 00\"\n");
}

TEST_F(ClockDriver, Stratum3ClockLocksHoldsAndRunsFree) {
    const std::string state = "drv_board_get_3clk_status()";
    EXPECT_EQ(answers({state, "drv_pll_initialization(chip_id=0)", state, "wait 0.5", state}),
              "0x0 status=1\n0x0\n0x0 status=0\n0x0 status=1\n");
    EXPECT_EQ(answers({state}, {"--set", "slot9/clock/source/1/present=0"}), "0x0 status=1\n");
    EXPECT_EQ(answers({enable(0), state, enable(1), state, "wait 0.5", state}),
              ok + "0x0 status=2\n" + ok + "0x0 status=0\n0x0 status=1\n");
}

TEST_F(ClockDriver, Stratum3ClockTakesTheSourceThatIsGiven) {
    const std::string state = "drv_board_get_3clk_status()";
    const std::string mode = "drv_board_get_3clk_source_mode()";
    const std::string taken = "drv_pll_get_reg(chip_id=0, reg=3)";
    EXPECT_EQ(answers({mode, "drv_board_set_3clk_source(sel_en=1, l3clk_src=4)", mode, taken, state, "wait 0.5", state,
                       los(0), state}),
              "0x0 sel_en=0\n0x0\n0x0 sel_en=1\n0x0 value=2\n0x0 status=0\n0x0 status=1\n0x0\n0x0 status=2\n");
    EXPECT_EQ(answers({"drv_board_set_3clk_source(sel_en=1, l3clk_src=1)", taken, mode,
                       "drv_board_set_3clk_source(sel_en=0, l3clk_src=77)", taken, mode, state}),
              "0x0\n0x0 value=1\n0x0 sel_en=1\n0x0\n0x0 value=0\n0x0 sel_en=0\n0x0 status=0\n");
}

// The mode of the synthesiser and that of the stratum 3 clock are one.
TEST_F(ClockDriver, PllSourceIsAReferenceOfTheSynthesiser) {
    EXPECT_EQ(answers({"drv_clock_set_pll_source(pll_id=0, ref_mode=2)", "drv_board_get_3clk_source_mode()",
                       "drv_pll_get_reg(chip_id=0, reg=4)", "drv_pll_get_reg(chip_id=1, reg=3)",
                       "drv_clock_set_pll_source(pll_id=1, ref_mode=1)", "drv_pll_get_reg(chip_id=1, reg=3)",
                       "drv_pll_get_reg(chip_id=1, reg=4)"}),
              "0x0\n0x0 sel_en=1\n0x0 value=32\n0x0 value=0\n0x0\n0x0 value=1\n0x0 value=17\n");
}

TEST_F(ClockDriver, TimestampsComeFromANetworkProcessor) {
    const std::string np = "slot9/clock/timestamp/0/np";
    EXPECT_EQ(answers({"drv_clock_set_timestamp_source(np_id=1)"}), ok);
    EXPECT_EQ(answers({"drv_clock_set_timestamp_source(np_id=2)"}, {"--get", np}), "1\n" + no_such_device);
    EXPECT_EQ(answers({"drv_clock_set_timestamp_source(np_id=0)"}, {"--get", np}), "1\n" + ok);
}

TEST_F(ClockDriver, AnotherSeatHasClocksOfItsOwn) {
    EXPECT_EQ(answers({los(0), "drv_clk_detect_get_status(inst_id=0xff000009, clock_id=2)",
                       "drv_clk_detect_get_status(inst_id=0xff000005, clock_id=2)"}),
              ok + lost + not_supported);
    seat_ = "lpu";
    EXPECT_EQ(answers({status(2), "drv_board_get_3clk_status()", "drv_board_get_3clk_source_mode()",
                       "drv_board_set_3clk_source(sel_en=0, l3clk_src=0)"}),
              there + not_supported + not_supported + not_supported);
}

TEST_F(ClockDriver, RefusesWhatThereIsNot) {
    EXPECT_EQ(answers({"drv_clk_check_init(clock_id=5)", "drv_clk_detect_check_id(clock_id=5)", status(5), history(5),
                       "drv_clk_detect_dump_reg(clock_id=5)", "drv_board_set_synclk_source(channel=5)", los(2),
                       "drv_clock_set_pll_source(pll_id=2, ref_mode=0)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + no_such_device +
                  no_such_device + no_such_device);
    EXPECT_EQ(
        answers({"drv_board_set_synclk_source(channel=1)", "drv_board_set_synclk_source(channel=4)", enable(2),
                 "drv_clock_set_pll_source(pll_id=0, ref_mode=3)", "drv_board_set_3clk_source(sel_en=2, l3clk_src=1)",
                 "drv_board_set_3clk_source(sel_en=1, l3clk_src=2)"}),
        bad_value + bad_value + bad_value + bad_value + bad_value + bad_value);
    EXPECT_EQ(answers({"drv_clk_init(inst_id=0xff000006)", "drv_clk_init(inst_id=0xff000005)",
                       "drv_clk_deinit(inst_id=0xff000005)", "drv_board_get_synclk_source(inst_id=0xff000005)",
                       "drv_clock_set_timestamp_source(inst_id=0xff000005, np_id=0)"}),
              no_such_instance + not_supported + not_supported + not_supported + not_supported);
}

TEST_F(ClockDriver, MissingAreas) {
    EXPECT_EQ(answers({"drv_clk_check_init(status=null)", "drv_clk_detect_check_id(status=null)",
                       "drv_clk_detect_get_status(status=null)", "drv_clk_detect_get_status_history(status=null)",
                       "drv_clk_detect_dump_reg(size=64, buffer=null)", "drv_board_get_synclk_source(channel=null)",
                       "drv_board_get_3clk_status(status=null)", "drv_board_set_3clk_source(l3clk_src=null)",
                       "drv_board_get_3clk_source_mode(sel_en=null)"}),
              null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
                  null_pointer + null_pointer);
}

} // namespace kestro_tests
