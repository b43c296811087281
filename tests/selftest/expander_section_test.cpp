// The chip9555 section: registers, polarity and direction of every described expander.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string described(int entries) {
    return entry_count("chip9555", "chip9555_chip", entries);
}

std::string entry(int index, const std::string &answer) {
    return element("chip9555", "chip9555_chip", index, "chip_id", answer);
}

// One chip with number 5.
const std::string one_chip = described(1) + entry(0, "0 value=5");

std::string call(const std::string &operation, const std::string &words, const std::string &answer) {
    return "drv_chip9555_" + operation + "(inst_id=0xffffffff, chip_id=5" + words + ") = " + answer + "\n";
}

std::string reg(int offset, const std::string &answer) {
    return call("get_reg", ", offset=" + std::to_string(offset), answer);
}

std::string set_reg(const std::string &value, const std::string &answer) {
    return call("set_reg", ", offset=4, value=" + value, answer);
}

std::string dump(const std::string &answer) {
    return call("dump", ", len=256", answer);
}

std::string get_polar(const std::string &answer) {
    return call("get_polar", ", pin=1", answer);
}

std::string set_polar(const std::string &polarity, const std::string &answer) {
    return call("set_polar", ", pin=1, polarity=" + polarity, answer);
}

std::string direction(const std::string &answer) {
    return call("get_orientation", ", pin=2", answer);
}

std::string set_input(const std::string &answer) {
    return call("set_indirection", ", pin=2, orientation=1", answer);
}

std::string level(const std::string &answer) {
    return call("get_level", ", pin=2", answer);
}

// The three steps of a chip, good.
const std::string good_registers = reg(4, "0 value=0xa5 x2") + set_reg("0xa5", "0") + dump("0 text=\"all\"");
const std::string good_polarity = reg(0, "0 value=0") + get_polar("0 polarity=0 x2") + set_polar("0", "0");
const std::string good_direction = direction("0 orientation=0");

constexpr const char *register_lines = "Success: pca chip 0x5 read and write reg pass. value: 0xa5\r\n"
                                       "Success: pca chip 0x5 reg dump pass. msg: all\r\n";
constexpr const char *dump_line = "Success: pca chip 0x5 reg dump pass. msg: all\r\n";
constexpr const char *polarity_line = "Success: pca chip 0x5 set and get polar pass. value: 0x0 not inverse\r\n";
constexpr const char *direction_line = "Success: pca chip 0x5 get direction pass. value: 0x0 output\r\n";
constexpr const char *input_line = "Success: pca chip 0x5 get direction pass. value: 0x1 input\r\n";

void expect_chip(const std::string &script, const std::string &lines, int result) {
    expect_part("chip9555", one_chip + script, lines, result);
}

void expect_registers(const std::string &script, const std::string &lines) {
    expect_chip(script + good_polarity + good_direction, lines + polarity_line + direction_line, -1);
}

void expect_polarity(const std::string &script, const std::string &lines, int result) {
    expect_chip(good_registers + script + good_direction, register_lines + lines + direction_line, result);
}

void expect_direction(const std::string &script, const std::string &lines, int result) {
    expect_chip(good_registers + good_polarity + script, std::string(register_lines) + polarity_line + lines, result);
}

} // namespace

TEST(ExpanderSectionTest, AnOutputIsNotTurnedIntoAnInput) {
    expect_direction(good_direction, direction_line, 0);
}

TEST(ExpanderSectionTest, AnInputShowsItsLevel) {
    const std::string as_input = direction("0 orientation=1") + set_input("0");
    expect_direction(as_input + level("0 value=1"),
                     input_line + std::string("Success: pca chip 0x5 get input level pass. value: 0x1 hign\r\n"), 0);
    expect_direction(as_input + level("0 value=0"),
                     input_line + std::string("Success: pca chip 0x5 get input level pass. value: 0x0 low\r\n"), 0);
    expect_direction(as_input + level("0 value=2"),
                     input_line + std::string("Success: pca chip 0x5 get input level pass. value: 0x2 low\r\n"), 0);
}

TEST(ExpanderSectionTest, ABoardWithoutExpandersPasses) {
    expect_part("chip9555", described(0), "No pca9555.\r\n", 0);
    expect_part("chip9555", no_entry_count("chip9555", "chip9555_chip", "0x51 count=2"), "No pca9555.\r\n", 0);
}

TEST(ExpanderSectionTest, AnEntryWithoutItsElementIsSkipped) {
    expect_part("chip9555",
                described(2) + entry(0, "0x51 value=7") + entry(1, "0 value=5") + good_registers + good_polarity +
                    good_direction,
                std::string(register_lines) + polarity_line + direction_line, 0);
}

// Nothing else is asked of a chip that does not answer, and the next one is tested.
TEST(ExpanderSectionTest, AChipThatCannotBeReadPasses) {
    expect_part("chip9555",
                described(2) + entry(0, "0 value=12") + entry(1, "0 value=5") +
                    "drv_chip9555_get_reg(inst_id=0xffffffff, chip_id=12, offset=4) = 0x21\n" + good_registers +
                    good_polarity + good_direction,
                std::string("Info   : pca chip 0xc read reg fail 0x21.\r\n") + register_lines + polarity_line +
                    direction_line,
                0);
}

TEST(ExpanderSectionTest, AFaultOfOneChipLeavesTheNextOneToBeTested) {
    expect_part("chip9555",
                described(2) + entry(0, "0 value=12") + entry(1, "0 value=5") +
                    "drv_chip9555_get_reg(chip_id=12, offset=4) = 0 value=0\n" +
                    "drv_chip9555_set_reg(chip_id=12, offset=4, value=0) = 0x22\n" +
                    "drv_chip9555_dump(chip_id=12) = 0x23\ndrv_chip9555_get_reg(chip_id=12, offset=0) = 0x24\n" +
                    "drv_chip9555_get_orientation(chip_id=12) = 0x25\n" + good_registers + good_polarity +
                    good_direction,
                std::string("Error  : pca chip 0xc reg write fail 0x22. reg_value 0x0\r\n"
                            "Error  : pca chip 0xc reg dump fail 0x23.\r\n"
                            "Error  : pca chip 0xc get direction fail 0x25. direction 0 \r\n") +
                    register_lines + polarity_line + direction_line,
                -1);
}

TEST(ExpanderSectionTest, ARegisterThatCannotBeWritten) {
    expect_registers(reg(4, "0 value=0xa5") + set_reg("0xa5", "0x26") + dump("0 text=\"all\""),
                     std::string("Error  : pca chip 0x5 reg write fail 0x26. reg_value 0xa5\r\n") + dump_line);
}

TEST(ExpanderSectionTest, ARegisterThatCannotBeReadAgain) {
    expect_registers(reg(4, "0 value=0xa5 x1") + reg(4, "0x27") + set_reg("0xa5", "0") + dump("0 text=\"all\""),
                     std::string("Error  : pca chip 0x5 read write reg fail 0x27. read_value 0x0 expect_value "
                                 "0xa5\r\n") +
                         dump_line);
}

TEST(ExpanderSectionTest, ARegisterThatDoesNotHold) {
    expect_registers(reg(4, "0 value=0xa5 x1") + reg(4, "0 value=0xa4") + set_reg("0xa5", "0") + dump("0 text=\"all\""),
                     std::string("Error  : pca chip 0x5 read write reg fail 0x0. read_value 0xa4 expect_value "
                                 "0xa5\r\n") +
                         dump_line);
}

TEST(ExpanderSectionTest, ADumpThatFails) {
    expect_registers(reg(4, "0 value=0xa5 x2") + set_reg("0xa5", "0") + dump("0x28 text=\"half\""),
                     "Success: pca chip 0x5 read and write reg pass. value: 0xa5\r\n"
                     "Error  : pca chip 0x5 reg dump fail 0x28.\r\n");
}

// The driver was told 256 bytes and fills them all, without a terminator.
TEST(ExpanderSectionTest, ADumpThatFillsItsArea) {
    const std::string text = std::string(255, 'a') + "z";
    expect_chip(reg(4, "0 value=0xa5 x2") + set_reg("0xa5", "0") + dump("0 text=\"" + text + "\"") + good_polarity +
                    good_direction,
                "Success: pca chip 0x5 read and write reg pass. value: 0xa5\r\n"
                "Success: pca chip 0x5 reg dump pass. msg: " +
                    text + "\r\n" + polarity_line + direction_line,
                0);
}

TEST(ExpanderSectionTest, WithoutTheInputRegisterThePolarityIsLeftAlone) {
    expect_polarity(reg(0, "0x29"), "", 0);
}

TEST(ExpanderSectionTest, AnInvertedInput) {
    expect_polarity(reg(0, "0 value=0") + get_polar("0 polarity=1 x2") + set_polar("1", "0"),
                    "Success: pca chip 0x5 set and get polar pass. value: 0x1 inverse\r\n", 0);
    expect_polarity(reg(0, "0 value=0") + get_polar("0 polarity=2 x2") + set_polar("2", "0"),
                    "Success: pca chip 0x5 set and get polar pass. value: 0x2 not inverse\r\n", 0);
}

TEST(ExpanderSectionTest, APolarityThatCannotBeReadOrWritten) {
    expect_polarity(reg(0, "0 value=0") + get_polar("0x31 polarity=1"),
                    "Error  : pca chip 0x5 get polar fail 0x31.\r\n", -1);
    expect_polarity(reg(0, "0 value=0") + get_polar("0 polarity=1") + set_polar("1", "0x32"),
                    "Error  : pca chip 0x5 set polar fail 0x32. polarity 0x1\r\n", -1);
}

// Told with "Info", and a failure all the same.
TEST(ExpanderSectionTest, APolarityThatDoesNotHold) {
    expect_polarity(reg(0, "0 value=0") + get_polar("0 polarity=1 x1") + get_polar("0 polarity=0") +
                        set_polar("1", "0"),
                    "Info  : pca chip 0x5 read write polar fail 0x0. read_value 0x0 expect_value 0x1\r\n", -1);
    expect_polarity(reg(0, "0 value=0") + get_polar("0 polarity=1 x1") + get_polar("0x33") + set_polar("1", "0"),
                    "Info  : pca chip 0x5 read write polar fail 0x33. read_value 0x0 expect_value 0x1\r\n", -1);
}

TEST(ExpanderSectionTest, ADirectionThatIsNone) {
    expect_direction(direction("0 orientation=2"), "Error  : pca chip 0x5 get direction fail 0x0. direction 2 \r\n",
                     -1);
    expect_direction(direction("0x34"), "Error  : pca chip 0x5 get direction fail 0x34. direction 0 \r\n", -1);
    expect_direction(direction("0x34 orientation=1"), "Error  : pca chip 0x5 get direction fail 0x34. direction 1 \r\n",
                     -1);
}

TEST(ExpanderSectionTest, AnInputThatCannotBeSetOrRead) {
    expect_direction(direction("0 orientation=1") + set_input("0x35"),
                     input_line + std::string("Error  : pca chip 0x5 set input direction fail 0x35.\r\n"), -1);
    expect_direction(direction("0 orientation=1") + set_input("0") + level("0x36 value=1"),
                     input_line + std::string("Error  : pca chip 0x5 get level fail 0x36.\r\n"), -1);
}

TEST(ExpanderSectionTest, ADriverThatWritesNothingGivesZeros) {
    expect_chip(reg(4, "0 x2") + set_reg("0", "0") + dump("0") + reg(0, "0") + get_polar("0 x2") + set_polar("0", "0") +
                    direction("0"),
                std::string("Success: pca chip 0x5 read and write reg pass. value: 0x0\r\n"
                            "Success: pca chip 0x5 reg dump pass. msg: \r\n") +
                    polarity_line + direction_line,
                0);
    expect_direction(direction("0 orientation=1") + set_input("0") + level("0"),
                     input_line + std::string("Success: pca chip 0x5 get input level pass. value: 0x0 low\r\n"), 0);
}

// Chip 0 drives its lower pins, chip 1 reads all of them; both are afterwards as they were.
TEST(ExpanderSectionTest, AHealthyBoardPasses) {
    const std::string lines =
        "Success: pca chip 0x0 read and write reg pass. value: 0x0\r\n"
        "Success: pca chip 0x0 reg dump pass. msg: input 0x0f 0xa5, output 0x0f 0xff, polarity 0x00 0x00, config 0x00 "
        "0xff\r\n"
        "Success: pca chip 0x0 set and get polar pass. value: 0x0 not inverse\r\n"
        "Success: pca chip 0x0 get direction pass. value: 0x0 output\r\n"
        "Success: pca chip 0x1 read and write reg pass. value: 0x0\r\n"
        "Success: pca chip 0x1 reg dump pass. msg: input 0x7e 0x3c, output 0xff 0xff, polarity 0x00 0x00, config 0xff "
        "0xff\r\n"
        "Success: pca chip 0x1 set and get polar pass. value: 0x0 not inverse\r\n"
        "Success: pca chip 0x1 get direction pass. value: 0x1 input\r\n"
        "Success: pca chip 0x1 get input level pass. value: 0x1 hign\r\n"
        "result 0\n";
    const std::string state = new_scratch_dir();
    EXPECT_EQ(run_part({"--state", state}, "chip9555").out, lines);
    EXPECT_EQ(run_part({"--state", state}, "chip9555").out, lines);
    EXPECT_EQ(run_part({"--board", "lpu"}, "chip9555").out, "No pca9555.\r\nresult 0\n");
}
