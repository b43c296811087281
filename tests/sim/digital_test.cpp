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
                                       "drv_digital_deinit()", get(0), set(0, 1), mode(0, 1)}),
        not_supported + not_supported + not_supported + not_supported + not_supported + not_supported + not_supported);
}

TEST(DigitalDriver, InputsFollowTheRelaysThatTheyAreWiredTo) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {get(0), get(1), set(1, 1), get(0), get(1), set(0, 1), set(1, 0)}),
              "0x0 status=0\n0x0 status=0\n0x0\n0x0 status=0\n0x0 status=1\n0x0\n0x0\n");
    EXPECT_EQ(answers(board, {get(0), get(1)}), "0x0 status=1\n0x0 status=0\n");
}

TEST(DigitalDriver, WiresMayCross) {
    const test_board board = new_altered(
        "mpu_master", {{"self/sim_digital/input/0/wired_to", "1"}, {"self/sim_digital/input/3/wired_to", "0"}});
    EXPECT_EQ(answers(board, {set(0, 1), get(0), get(1), get(3), set(1, 1), get(0), get(1)}),
              "0x0\n0x0 status=0\n0x0 status=0\n0x0 status=1\n0x0\n0x0 status=1\n0x0 status=1\n");
}

// Nothing is wired to inputs 2 and 3: the contact outside the first is closed.
TEST(DigitalDriver, OtherInputsSenseTheOutside) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {set(0, 1), set(1, 1), get(2), get(3)}), "0x0\n0x0\n0x0 status=1\n0x0 status=0\n");
    const auto technician = run_process({build_dir() + "/kestro_sim", "--state", board.state, "--set",
                                         "slot9/digital/input/2/closed=0", "--set", "slot9/digital/input/3/closed=1"});
    EXPECT_EQ(technician.err, "");
    EXPECT_EQ(answers(board, {get(2), get(3)}), "0x0 status=0\n0x0 status=1\n");
}

// In mode 2 an open contact is the active one.
TEST(DigitalDriver, ModeTurnsTheSenseOfAContact) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {mode(2, 2), mode(3, 2), get(2), get(3), mode(2, 1), get(2)}),
              "0x0\n0x0\n0x0 status=0\n0x0 status=1\n0x0\n0x0 status=1\n");
}

// Both ends of channel 0 turn, so what is set is what is read; the relay itself opens, as an input that kept its mode
// notices.
TEST(DigitalDriver, ModeIsThatOfBothEndsOfAChannel) {
    const test_board board = new_altered("mpu_master", {{"self/sim_digital/input/3/wired_to", "0"}});
    EXPECT_EQ(answers(board, {set(0, 1), get(0), get(3), mode(0, 2), get(0), get(3), set(0, 0), get(0), get(3)}),
              "0x0\n0x0 status=1\n0x0 status=1\n0x0\n0x0 status=1\n0x0 status=0\n0x0\n0x0 status=0\n0x0 status=1\n");
}

TEST(DigitalDriver, LimitsAndUnknowns) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {get(4), set(2, 1), mode(4, 1), set(0, 2), mode(0, 0), mode(0, 3), get(0)}),
              no_such_device + no_such_device + no_such_device + bad_value + bad_value + bad_value + "0x0 status=0\n");
    EXPECT_EQ(answers(board, {"drv_digital_init(inst_id=0xff000005)", "drv_digital_init(inst_id=0xff000006)",
                              "drv_digital_get_status(status=null)", "drv_digital_get_in_num(num=null)",
                              "drv_digital_get_out_num(num=null)"}),
              not_supported + no_such_instance + null_pointer + null_pointer + null_pointer);
}

} // namespace kestro_tests
