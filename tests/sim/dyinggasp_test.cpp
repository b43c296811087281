// Dying gasp: the cards that are told of a power failure, and one that is simulated.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string fails = "drv_dyinggasp_set_simulation_enable(enable=1)";
const std::string is_back = "drv_dyinggasp_set_simulation_enable(enable=0)";

} // namespace

TEST(Dyinggasp, ASimulatedFailureReachesTheCardsThatAreEnabled) {
    const std::string state = new_scratch_dir() + "/state";
    const auto told = [&](const std::vector<std::string> &lines) {
        return answers_of({"--state", state, "--clock", "virtual", "--get", "slot9/dyinggasp/card/2/told", "--get",
                           "slot9/dyinggasp/card/5/told"},
                          lines);
    };
    EXPECT_EQ(told({"drv_dyinggasp_init()", fails, is_back, "drv_dyinggasp_set_enable(board_id=5, enable=1)"}),
              "0\n0\n" + ok + ok + ok + ok);
    EXPECT_EQ(told({fails, fails}), "0\n0\n" + ok + ok);
    EXPECT_EQ(told({"drv_dyinggasp_set_enable(board_id=2, enable=1)", is_back, fails}), "0\n1\n" + ok + ok + ok);
    EXPECT_EQ(told({is_back, "drv_dyinggasp_set_enable(board_id=5, enable=0)", fails}), "1\n2\n" + ok + ok + ok);
    EXPECT_EQ(told({"drv_dyinggasp_deinit()"}), "2\n2\n" + ok);
}

TEST(Dyinggasp, ALineCardTellsItsOwnCardsAndSimulatesNothing) {
    const test_board lpu = new_delivered("lpu");
    EXPECT_EQ(answers(lpu, {"drv_dyinggasp_init()", "drv_dyinggasp_set_enable(board_id=1, enable=1)",
                            "drv_dyinggasp_set_enable(board_id=2, enable=0)",
                            "drv_dyinggasp_set_enable(board_id=5, enable=1)", fails}),
              ok + ok + ok + no_such_device + not_supported);
}

TEST(Dyinggasp, RefusesWhatItDoesNotHave) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_dyinggasp_set_enable(board_id=3, enable=1)",
                              "drv_dyinggasp_set_enable(board_id=2, enable=2)",
                              "drv_dyinggasp_set_simulation_enable(enable=2)",
                              "drv_dyinggasp_set_enable(inst_id=0xff00000a, board_id=2, enable=1)"}),
              no_such_device + bad_value + bad_value + ok);
    EXPECT_EQ(answers(board, {"drv_dyinggasp_init(inst_id=0xff000005)", "drv_dyinggasp_deinit(inst_id=0xff000006)",
                              "drv_dyinggasp_set_enable(inst_id=0xff000005, board_id=2, enable=1)"}),
              not_supported + no_such_instance + not_supported);
}

} // namespace kestro_tests
