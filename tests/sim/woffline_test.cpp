// The watch over the power lines: what it finds, what its switches are for, and what the peer tells.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::vector<std::string> looks{"drv_woffline_get_state(chip_id=0)", "drv_woffline_get_state(chip_id=1)",
                                     "drv_woffline_get_irq_state(chip_id=0)", "drv_woffline_get_irq_state(chip_id=1)"};

std::string found(const std::string &down, const std::string &up, const std::string &irq_down,
                  const std::string &irq_up) {
    return "0x0 state=" + down + "\n0x0 state=" + up + "\n0x0 state=" + irq_down + "\n0x0 state=" + irq_up + "\n";
}

class Woffline : public testing::Test {
  protected:
    std::string answers_after(const std::vector<std::string> &by_hand, const std::vector<std::string> &lines,
                              const std::string &seat = "mpu_master") const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual", "--board", seat};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }

  private:
    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

TEST_F(Woffline, ANewBoardHasPower) {
    for (const std::string seat : {"mpu_master", "mpu_slave"}) {
        EXPECT_EQ(answers_after({}, looks, seat), found("0", "0", "0", "0"));
        EXPECT_EQ(answers_after({},
                                {"drv_woffline_init()", "drv_woffline_get_en_state()", "drv_woffline_get_irq_enable()",
                                 "drv_woffline_get_sfu_isolate_en()", "drv_woffline_get_peer_state(chip_id=0)",
                                 "drv_woffline_get_peer_state(chip_id=1)", "drv_woffline_deinit()"},
                                seat),
                  ok + "0x0 enable=1\n0x0 enable=1\n0x0 enable=0\n0x0 state=0\n0x0 state=0\n" + ok);
    }
}

TEST_F(Woffline, FindsALineWithoutPowerAndThatItIsBack) {
    EXPECT_EQ(answers_after({"--set", "slot9/woffline/side/1/lost=1"}, looks), found("0", "1", "0", "1"));
    EXPECT_EQ(answers_after({"--set", "slot9/woffline/side/0/lost=1"}, looks), found("1", "1", "1", "1"));
    EXPECT_EQ(answers_after({"--set", "slot9/woffline/side/1/lost=0"}, looks), found("1", "0", "1", "0"));
}

TEST_F(Woffline, AWatchThatIsOffFindsNothing) {
    EXPECT_EQ(answers_after({"--set", "slot9/woffline/side/0/lost=1"}, {"drv_woffline_set_en_state(enable=0)"}), ok);
    EXPECT_EQ(answers_after({}, looks), found("0", "0", "0", "0"));
    EXPECT_EQ(answers_after({}, {"drv_woffline_get_en_state()", "drv_woffline_set_en_state(enable=1)"}),
              "0x0 enable=0\n" + ok);
    EXPECT_EQ(answers_after({}, looks), found("1", "0", "1", "0"));
}

TEST_F(Woffline, TheInterruptHasASwitchOfItsOwn) {
    EXPECT_EQ(answers_after({"--set", "slot9/woffline/side/0/lost=1"}, {"drv_woffline_set_irq_enable(enable=0)"}), ok);
    EXPECT_EQ(answers_after({}, looks), found("1", "0", "0", "0"));
    EXPECT_EQ(answers_after({}, {"drv_woffline_get_irq_enable()", "drv_woffline_get_irq_enable(inst_id=0xff00000a)"}),
              "0x0 enable=0\n0x0 enable=1\n");
}

TEST_F(Woffline, ThePeerTellsWhatItFinds) {
    EXPECT_EQ(answers_after({"--set", "slot10/woffline/side/1/lost=1"},
                            {"drv_woffline_get_state(chip_id=1)", "drv_woffline_get_peer_state(chip_id=0)",
                             "drv_woffline_get_peer_state(chip_id=1)",
                             "drv_woffline_get_peer_state(inst_id=0xff00000a, chip_id=1)"}),
              "0x0 state=0\n0x0 state=0\n0x0 state=1\n0x0 state=0\n");
    EXPECT_EQ(
        answers_after({}, {"drv_woffline_get_state(chip_id=1)", "drv_woffline_get_peer_state(chip_id=1)"}, "mpu_slave"),
        "0x0 state=1\n0x0 state=0\n");
    EXPECT_EQ(answers_after({"--pull", "slot10"}, {"drv_woffline_get_peer_state(chip_id=1)"}), no_such_instance);
    EXPECT_EQ(answers_after({"--plug", "slot10"}, {"drv_woffline_get_peer_state(chip_id=1)",
                                                   "drv_board_set_online_status(inst_id=0xff00000a, status=1)",
                                                   "drv_woffline_get_peer_state(chip_id=1)"}),
              "0x0 state=1\n" + ok + no_such_instance);
}

TEST_F(Woffline, CutsTheBoardOffFromTheFabricsWhenItMay) {
    const std::vector<std::string> fabrics{"drv_board_get_sfu_isolate(id=0)", "drv_board_get_sfu_isolate(id=1)",
                                           "drv_board_get_sfu_isolate(inst_id=0xff00000a, id=0)"};
    const std::string connected = "0x0 value=0\n0x0 value=0\n0x0 value=0\n";
    EXPECT_EQ(answers_after({"--set", "slot9/woffline/side/1/lost=1"}, fabrics), connected);
    EXPECT_EQ(answers_after({}, {"drv_woffline_set_sfu_isolate_en(enable=1)", "drv_woffline_get_sfu_isolate_en()"}),
              ok + "0x0 enable=1\n");
    EXPECT_EQ(answers_after({}, fabrics), "0x0 value=1\n0x0 value=1\n0x0 value=0\n");
    EXPECT_EQ(answers_after({"--set", "slot9/woffline/side/1/lost=0"}, fabrics), connected);
    EXPECT_EQ(answers_after({}, {"drv_board_set_sfu_isolate(id=1, enable=1)", fabrics[0], fabrics[1]}),
              ok + "0x0 value=0\n0x0 value=1\n");
}

TEST_F(Woffline, AnEnableThatIsStuckTakesAWriteAndStays) {
    EXPECT_EQ(answers_after({"--set", "slot9/woffline/watch/0/stuck=1", "--set", "slot9/woffline/interrupt/0/stuck=1",
                             "--set", "slot9/woffline/isolation/0/stuck=1"},
                            {"drv_woffline_set_en_state(enable=0)", "drv_woffline_get_en_state()",
                             "drv_woffline_set_irq_enable(enable=0)", "drv_woffline_get_irq_enable()",
                             "drv_woffline_set_sfu_isolate_en(enable=1)", "drv_woffline_get_sfu_isolate_en()"}),
              ok + "0x0 enable=1\n" + ok + "0x0 enable=1\n" + ok + "0x0 enable=0\n");
    EXPECT_EQ(answers_after({}, {"drv_woffline_set_en_state(enable=2)", "drv_woffline_set_irq_enable(enable=2)",
                                 "drv_woffline_set_sfu_isolate_en(enable=2)"}),
              bad_value + bad_value + bad_value);
    EXPECT_EQ(answers_after({"--set", "slot9/woffline/interrupt/0/stuck=0"},
                            {"drv_woffline_set_irq_enable(enable=0)", "drv_woffline_get_irq_enable()",
                             "drv_woffline_set_en_state(enable=0)", "drv_woffline_get_en_state()"}),
              ok + "0x0 enable=0\n" + ok + "0x0 enable=1\n");
}

TEST_F(Woffline, RefusesWhatItDoesNotHave) {
    EXPECT_EQ(answers_after({}, {"drv_woffline_set_en_state(enable=2)", "drv_woffline_set_irq_enable(enable=2)",
                                 "drv_woffline_set_sfu_isolate_en(enable=2)", "drv_woffline_get_state(chip_id=2)",
                                 "drv_woffline_get_peer_state(chip_id=2)", "drv_woffline_get_irq_state(chip_id=2)"}),
              bad_value + bad_value + bad_value + no_such_device + no_such_device + no_such_device);
    for (const std::string call :
         {"init()", "deinit()", "set_en_state(enable=1)", "get_en_state()", "get_state(chip_id=0)",
          "get_peer_state(chip_id=0)", "set_irq_enable(enable=1)", "get_irq_enable()", "get_irq_state(chip_id=0)",
          "set_sfu_isolate_en(enable=1)", "get_sfu_isolate_en()"}) {
        EXPECT_EQ(answers_after({}, {"drv_woffline_" + call}, "lpu"), not_supported) << call;
    }
    EXPECT_EQ(answers_after({}, {"drv_woffline_init(inst_id=0xff000006)", "drv_woffline_get_state(inst_id=5)"}),
              no_such_instance + no_such_instance);
    EXPECT_EQ(
        answers_after({}, {"drv_woffline_get_en_state(enable=null)", "drv_woffline_get_state(state=null)",
                           "drv_woffline_get_peer_state(state=null)", "drv_woffline_get_irq_enable(enable=null)",
                           "drv_woffline_get_irq_state(state=null)", "drv_woffline_get_sfu_isolate_en(enable=null)"}),
        null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
