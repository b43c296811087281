// Dry contacts: relays that are wired back to inputs, inputs that sense the outside, and their modes.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

std::string get(uint32_t channel) {
    return "drv_digital_get_status(chip_id=" + std::to_string(channel) + ")";
}

std::string set(uint32_t channel, uint32_t status) {
    return "drv_digital_set_status(chip_id=" + std::to_string(channel) + ", status=" + std::to_string(status) + ")";
}

std::string mode(uint32_t channel, uint32_t to) {
    return "drv_digital_set_mode(chip_id=" + std::to_string(channel) + ", mode=" + std::to_string(to) + ")";
}

} // namespace

TEST(DigitalDriver, NumbersOfInputsAndOutputs) {
    EXPECT_EQ(answers(new_delivered("mpu_master"), {"drv_digital_get_in_num()", "drv_digital_get_out_num()",
                                                    "drv_digital_init()", "drv_digital_deinit()"}),
              "0x0 num=4\n0x0 num=2\n" + ok + ok);
    EXPECT_EQ(
        answers(new_delivered("lpu"), {"drv_digital_get_in_num()", "drv_digital_get_out_num()", "drv_digital_init()",
                                       "drv_digital_deinit()", get(1), set(100, 1), mode(1, 1)}),
        not_supported + not_supported + not_supported + not_supported + not_supported + not_supported + not_supported);
}

TEST(DigitalDriver, InputsFollowTheRelaysThatTheyAreWiredTo) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {get(1), get(2), set(101, 1), get(1), get(2), set(100, 1), set(101, 0)}),
              "0x0 status=0\n0x0 status=0\n0x0\n0x0 status=0\n0x0 status=1\n0x0\n0x0\n");
    EXPECT_EQ(answers(board, {get(1), get(2), get(100), get(101)}),
              "0x0 status=1\n0x0 status=0\n0x0 status=1\n0x0 status=0\n");
}

TEST(DigitalDriver, WiresMayCross) {
    const test_board board = new_altered(
        "mpu_master", {{"self/sim_digital/input/1/wired_to", "101"}, {"self/sim_digital/input/4/wired_to", "100"}});
    EXPECT_EQ(answers(board, {set(100, 1), get(1), get(2), get(4), set(101, 1), get(1), get(2)}),
              "0x0\n0x0 status=0\n0x0 status=0\n0x0 status=1\n0x0\n0x0 status=1\n0x0 status=1\n");
}

// Nothing is wired to inputs 3 and 4: the contact outside the first is closed.
TEST(DigitalDriver, OtherInputsSenseTheOutside) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {set(100, 1), set(101, 1), get(3), get(4)}), "0x0\n0x0\n0x0 status=1\n0x0 status=0\n");
    const auto technician = run_process({launcher(), "--state", board.state, "--set", "slot9/digital/input/3/closed=0",
                                         "--set", "slot9/digital/input/4/closed=1"});
    EXPECT_EQ(technician.err, "");
    EXPECT_EQ(answers(board, {get(3), get(4)}), "0x0 status=0\n0x0 status=1\n");
}

// In mode 2 an open contact is the active one.
TEST(DigitalDriver, ModeTurnsTheSenseOfAnInput) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {mode(3, 2), mode(4, 2), get(3), get(4), mode(3, 1), get(3)}),
              "0x0\n0x0\n0x0 status=0\n0x0 status=1\n0x0\n0x0 status=1\n");
}

// The relay itself changes over and reads as it was set; the input that is wired to it has a mode of its own.
TEST(DigitalDriver, ModeOfARelayIsNotThatOfItsInput) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {set(100, 1), get(1), mode(100, 2), get(100), get(1), mode(1, 2), get(1), set(100, 0),
                              get(100), get(1)}),
              "0x0\n0x0 status=1\n0x0\n0x0 status=1\n0x0 status=0\n0x0\n0x0 status=1\n0x0\n0x0 status=0\n"
              "0x0 status=0\n");
}

TEST(DigitalDriver, AContactThatIsStuckShowsWhereItStands) {
    const test_board open = new_altered("mpu_master", {{"self/sim_digital/output/100/stuck", "0"}});
    EXPECT_EQ(answers(open, {set(100, 1), get(100), get(1), set(101, 1), get(101), mode(100, 2), get(100)}),
              "0x0\n0x0 status=0\n0x0 status=0\n0x0\n0x0 status=1\n0x0\n0x0 status=1\n");
    const test_board closed = new_altered("mpu_master", {{"self/sim_digital/output/100/stuck", "1"}});
    EXPECT_EQ(answers(closed, {get(100), get(1), set(100, 0), get(100)}),
              "0x0 status=1\n0x0 status=1\n0x0\n0x0 status=1\n");
}

TEST(DigitalDriver, LimitsAndUnknowns) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {get(0), get(5), get(102), set(1, 1), set(102, 1), mode(5, 1), set(100, 2), mode(1, 0),
                              mode(100, 3), get(1), get(100)}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + no_such_device +
                  bad_value + bad_value + bad_value + "0x0 status=0\n0x0 status=0\n");
    EXPECT_EQ(answers(board, {"drv_digital_init(inst_id=0xff000005)", "drv_digital_init(inst_id=0xff000006)",
                              "drv_digital_get_status(status=null)", "drv_digital_get_in_num(num=null)",
                              "drv_digital_get_out_num(num=null)"}),
              not_supported + no_such_instance + null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
