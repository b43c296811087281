// Input/output expanders: registers and pins are two faces of the same bits.
#include "tests/sim/support.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string out_of_range = "0x81110107\n";

std::string reg(uint32_t chip, uint32_t offset) {
    return "drv_chip9555_get_reg(chip_id=" + std::to_string(chip) + ", offset=" + std::to_string(offset) + ")";
}

std::string set_reg(uint32_t chip, uint32_t offset, uint32_t value) {
    return "drv_chip9555_set_reg(chip_id=" + std::to_string(chip) + ", offset=" + std::to_string(offset) +
           ", value=" + std::to_string(value) + ")";
}

std::string level(uint32_t chip, uint32_t pin) {
    return "drv_chip9555_get_level(chip_id=" + std::to_string(chip) + ", pin=" + std::to_string(pin) + ")";
}

std::string set_level(uint32_t chip, uint32_t pin, uint32_t value) {
    return "drv_chip9555_set_level(chip_id=" + std::to_string(chip) + ", pin=" + std::to_string(pin) +
           ", value=" + std::to_string(value) + ")";
}

std::string pin_call(const std::string &operation, uint32_t chip, uint32_t pin) {
    return "drv_chip9555_" + operation + "(chip_id=" + std::to_string(chip) + ", pin=" + std::to_string(pin);
}

std::string polar(uint32_t chip, uint32_t pin) {
    return pin_call("get_polar", chip, pin) + ")";
}

std::string set_polar(uint32_t chip, uint32_t pin, uint32_t to) {
    return pin_call("set_polar", chip, pin) + ", polarity=" + std::to_string(to) + ")";
}

std::string direction(uint32_t chip, uint32_t pin) {
    return pin_call("get_orientation", chip, pin) + ")";
}

std::string set_direction(uint32_t chip, uint32_t pin, uint32_t to) {
    return pin_call("set_indirection", chip, pin) + ", orientation=" + std::to_string(to) + ")";
}

} // namespace

// Chip 1 is as after power-on: all pins are inputs and read what they are wired to, 0x3C7E.
TEST(Chip9555Driver, InputsReadWhatTheyAreWiredTo) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {reg(1, 0), reg(1, 1), reg(1, 2), reg(1, 3), reg(1, 4), reg(1, 5), reg(1, 6), reg(1, 7)}),
              "0x0 value=126\n0x0 value=60\n0x0 value=255\n0x0 value=255\n0x0 value=0\n0x0 value=0\n0x0 value=255\n"
              "0x0 value=255\n");
    EXPECT_EQ(answers(board, {level(1, 0), level(1, 1), level(1, 9), level(1, 10), level(1, 15)}),
              "0x0 value=0\n0x0 value=1\n0x0 value=0\n0x0 value=1\n0x0 value=0\n");
}

// Chip 0 drives 0x0F on its lower pins.
TEST(Chip9555Driver, OutputsReadWhatTheyDrive) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {reg(0, 0), reg(0, 1), set_level(0, 7, 1), set_level(0, 0, 0), reg(0, 0), reg(0, 2),
                              level(0, 7), level(0, 0)}),
              "0x0 value=15\n0x0 value=165\n0x0\n0x0\n0x0 value=142\n0x0 value=142\n0x0 value=1\n0x0 value=0\n");
    EXPECT_EQ(answers(board, {set_reg(0, 2, 0x55), level(0, 0), level(0, 1), reg(0, 0)}),
              "0x0\n0x0 value=1\n0x0 value=0\n0x0 value=85\n");
}

TEST(Chip9555Driver, AnInputIsNotDriven) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {set_level(0, 8, 0), set_level(1, 0, 1), reg(0, 3), set_reg(0, 7, 0xFE),
                              set_level(0, 8, 0), level(0, 8), reg(0, 3), reg(0, 1)}),
              bad_value + bad_value + "0x0 value=255\n0x0\n0x0\n0x0 value=0\n0x0 value=254\n0x0 value=164\n");
}

// What stands in the output register comes to the pin once the pin is an output.
TEST(Chip9555Driver, ConfigurationSwitchesBetweenWireAndOutput) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {set_reg(1, 2, 0x00), level(1, 1), set_reg(1, 6, 0xFD), level(1, 1), reg(1, 0),
                              set_reg(1, 6, 0xFF), level(1, 1)}),
              "0x0\n0x0 value=1\n0x0\n0x0 value=0\n0x0 value=124\n0x0\n0x0 value=1\n");
}

TEST(Chip9555Driver, PolarityInvertsInputsAlone) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {set_reg(0, 4, 0xFF), set_reg(0, 5, 0xF0), reg(0, 0), reg(0, 1), level(0, 15), level(0, 8),
                              level(0, 0)}),
              "0x0\n0x0\n0x0 value=15\n0x0 value=85\n0x0 value=0\n0x0 value=1\n0x0 value=1\n");
}

TEST(Chip9555Driver, InputRegistersTakeNoWrite) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {set_reg(0, 0, 0), set_reg(0, 1, 0), reg(0, 0), reg(0, 1), reg(0, 2)}),
              "0x0\n0x0\n0x0 value=15\n0x0 value=165\n0x0 value=15\n");
}

TEST(Chip9555Driver, PolarityAndDirectionOfAPin) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {polar(0, 12), set_polar(0, 12, 1), set_polar(0, 3, 1), polar(0, 12), polar(0, 3),
                              polar(0, 4), reg(0, 4), reg(0, 5), level(0, 13), level(0, 12), set_polar(0, 12, 0),
                              polar(0, 12), level(0, 12)}),
              "0x0 polarity=0\n0x0\n0x0\n0x0 polarity=1\n0x0 polarity=1\n0x0 polarity=0\n0x0 value=8\n0x0 value=16\n"
              "0x0 value=1\n0x0 value=1\n0x0\n0x0 polarity=0\n0x0 value=0\n");
    EXPECT_EQ(answers(board, {direction(0, 2), direction(0, 8), set_direction(0, 2, 1), direction(0, 2), level(0, 2),
                              reg(0, 6), set_direction(0, 2, 0), reg(0, 6)}),
              "0x0 orientation=0\n0x0 orientation=1\n0x0\n0x0 orientation=1\n0x0 value=1\n0x0 value=4\n0x0\n"
              "0x0 value=0\n");
}

TEST(Chip9555Driver, DumpShowsAllRegisters) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {"drv_chip9555_dump(chip_id=1, len=256)", "drv_chip9555_dump(chip_id=1, len=71)"}),
              "0x0 text=\"input 0x7e 0x3c, output 0xff 0xff, polarity 0x00 0x00, config 0xff 0xff\"\n" + too_small);
}

// A short holds bit 4 of whatever is written; what the chip held before stays until then.
TEST(Chip9555Driver, ADataLineThatIsHeldHigh) {
    const test_board board = new_altered("mpu_master", {{"self/sim_chip9555/chip/0/data_high", "0x10"}});
    EXPECT_EQ(answers(board, {reg(0, 4), set_reg(0, 4, 0), reg(0, 4), set_polar(0, 0, 1), reg(0, 4), set_level(0, 0, 0),
                              reg(0, 2)}),
              "0x0 value=0\n0x0\n0x0 value=16\n0x0\n0x0 value=17\n0x0\n0x0 value=30\n");
}

TEST(Chip9555Driver, AnotherProcessAndTheTechnicianSeeTheSamePins) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {set_level(0, 6, 1)}), ok);
    EXPECT_EQ(answers(board, {level(0, 6), level(1, 6)}), "0x0 value=1\n0x0 value=1\n");
    const auto technician = run_process({launcher(), "--state", board.state, "--set", "slot9/chip9555/chip/1/wired=0",
                                         "--get", "slot9/expander/0/0x2"});
    EXPECT_EQ(technician.out, "0x4f\n") << technician.err;
    EXPECT_EQ(answers(board, {reg(1, 0), reg(1, 1)}), "0x0 value=0\n0x0 value=0\n");
}

TEST(Chip9555Driver, LimitsAndUnknowns) {
    const test_board board = new_delivered("mpu_master");
    EXPECT_EQ(answers(board, {reg(0, 8), set_reg(0, 8, 0), set_reg(0, 2, 256), level(0, 16), set_level(0, 16, 0),
                              set_level(0, 0, 2), reg(2, 0), level(2, 0)}),
              out_of_range + out_of_range + bad_value + no_such_device + no_such_device + bad_value + no_such_device +
                  no_such_device);
    EXPECT_EQ(answers(board, {polar(0, 16), set_polar(0, 16, 0), set_polar(0, 0, 2), polar(2, 0), direction(0, 16),
                              set_direction(0, 16, 1), set_direction(0, 0, 2), set_direction(2, 0, 1)}),
              no_such_device + no_such_device + bad_value + no_such_device + no_such_device + no_such_device +
                  bad_value + no_such_device);
    EXPECT_EQ(answers(board, {"drv_chip9555_get_polar(polarity=null)", "drv_chip9555_get_orientation(orientation=null)",
                              "drv_chip9555_dump(text=null)"}),
              null_pointer + null_pointer + null_pointer);
    EXPECT_EQ(answers(board, {"drv_chip9555_get_reg(inst_id=0xff000005)", "drv_chip9555_set_level(inst_id=0xff000006)",
                              "drv_chip9555_get_reg(value=null)", "drv_chip9555_get_level(value=null)"}),
              not_supported + no_such_instance + null_pointer + null_pointer);
    EXPECT_EQ(answers(new_delivered("lpu"), {reg(0, 0), set_level(0, 0, 1)}), not_supported + not_supported);
}

// The description names the chips that there are.
TEST(Chip9555Driver, DescribedChipsAreThere) {
    const auto chassis = read_board("mpu_master");
    uint32_t chips = 0;
    for (const pugi::xml_node entry :
         chassis->node(place_of_seat("mpu_master"), "chip9555", "chip9555_chip").children("entry")) {
        const auto id = kestro_sim::element_number(kestro_sim::named_child(entry, "chip_id")).value();
        EXPECT_TRUE(
            answers(new_delivered("mpu_master"), {reg(static_cast<uint32_t>(id), 0)}).starts_with("0x0 value="));
        ++chips;
    }
    EXPECT_EQ(chips, 2U);
}

} // namespace kestro_tests
