// The digital section: inputs are read, outputs switched over and back, and all contacts set to both modes.
#include <gtest/gtest.h>

#include "tests/selftest/part.h"

using namespace kestro_tests;

namespace {

std::string node(const std::string &name, int entries) {
    return entry_count("digital_mng", name, entries);
}

const std::string inputs_described = node("digital_in_num", 1);
const std::string outputs_described = node("digital_out_num", 1);
const std::string no_outputs = node("digital_out_num", 0);
const std::string no_modes = node("digital_set_mode", 0);

constexpr const char *no_outputs_line = "Info: digital out num is not support.\r\n";
constexpr const char *no_modes_line = "Info: digital set mode is not support.\r\n";

std::string number(const std::string &kind, const std::string &answer) {
    return "drv_digital_get_" + kind + "_num(inst_id=0xffffffff) = " + answer + "\n";
}

std::string get(int channel, const std::string &answer) {
    return "drv_digital_get_status(inst_id=0xffffffff, chip_id=" + std::to_string(channel) + ") = " + answer + "\n";
}

std::string set(int channel, int status, const std::string &answer) {
    return "drv_digital_set_status(inst_id=0xffffffff, chip_id=" + std::to_string(channel) +
           ", status=" + std::to_string(status) + ") = " + answer + "\n";
}

std::string mode(int channel, int to, const std::string &answer) {
    return "drv_digital_set_mode(inst_id=0xffffffff, chip_id=" + std::to_string(channel) +
           ", mode=" + std::to_string(to) + ") = " + answer + "\n";
}

std::string both_modes(int channel) {
    return mode(channel, 1, "0 x1") + mode(channel, 2, "0 x1");
}

void expect_digital(const std::string &script, const std::string &lines, int result) {
    expect_part("digital", script, lines, result);
}

// Two inputs alone.
void expect_inputs(const std::string &script, const std::string &lines, int result) {
    expect_digital(inputs_described + no_outputs + no_modes + script, lines + no_outputs_line + no_modes_line, result);
}

// Outputs on a board whose inputs are none.
void expect_outputs(const std::string &script, const std::string &lines, int result) {
    expect_digital(inputs_described + outputs_described + no_modes + number("in", "0 num=0") + script,
                   "Success: digital in num is 0.\r\n" + lines + no_modes_line, result);
}

// The first of two outputs does what the test says, the second is good.
void expect_first_output(const std::string &script, const std::string &lines) {
    expect_outputs(number("out", "0 num=2") + script + get(101, "0 status=1 x1") + set(101, 0, "0 x1") +
                       get(101, "0 status=0 x1") + set(101, 1, "0 x1"),
                   "Success: digital out num is 2.\r\n" + lines +
                       "Success: digital 101 set and get test pass. original_status 1 \r\n",
                   -1);
}

} // namespace

TEST(DigitalSectionTest, WithoutInputsNothingElseIsLookedAt) {
    expect_digital(node("digital_in_num", 0), "Info: digital in num is not support.\r\n", 0);
    expect_digital(no_entry_count("digital_mng", "digital_in_num", "0x51 count=1"),
                   "Info: digital in num is not support.\r\n", 0);
}

TEST(DigitalSectionTest, InputsAreNumberedFromOne) {
    expect_inputs(number("in", "0 num=2") + get(1, "0 status=0") + get(2, "0 status=1"),
                  "Success: digital in num is 2.\r\n"
                  "Success: digital 1 get sts 0 pass\r\n"
                  "Success: digital 2 get sts 1 pass\r\n",
                  0);
}

TEST(DigitalSectionTest, AnInputThatFailsLeavesTheNextOneToBeRead) {
    expect_inputs(number("in", "0 num=2") + get(1, "0x811101a4 status=1") + get(2, "0"),
                  "Success: digital in num is 2.\r\n"
                  "Error: digital 1 get sts fail 0x811101a4.\r\n"
                  "Success: digital 2 get sts 0 pass\r\n",
                  -1);
}

TEST(DigitalSectionTest, ANumberOfInputsThatCannotBeHadIsNone) {
    expect_inputs(number("in", "0x21 num=3"), "Error: get digital in num fail 0x21.\r\n", -1);
    expect_inputs(number("in", "0"), "Success: digital in num is 0.\r\n", 0);
}

TEST(DigitalSectionTest, OutputsAreSwitchedOverAndBack) {
    expect_outputs(number("out", "0 num=2") + get(100, "0 status=0 x1") + set(100, 1, "0 x1") +
                       get(100, "0 status=1 x1") + set(100, 0, "0 x1") + get(101, "0 status=1 x1") +
                       set(101, 0, "0 x1") + get(101, "0 status=0 x1") + set(101, 1, "0 x1"),
                   "Success: digital out num is 2.\r\n"
                   "Success: digital 100 set and get test pass. original_status 0 \r\n"
                   "Success: digital 101 set and get test pass. original_status 1 \r\n",
                   0);
}

// What is no status of a contact is taken for an active one: its inverse is 0, and it is put back as it was.
TEST(DigitalSectionTest, TheInverseIsALogicalOne) {
    expect_outputs(number("out", "0 num=1") + get(100, "0 status=6 x1") + set(100, 0, "0") + get(100, "0 status=0") +
                       set(100, 6, "0"),
                   "Success: digital out num is 1.\r\n"
                   "Success: digital 100 set and get test pass. original_status 6 \r\n",
                   0);
}

TEST(DigitalSectionTest, ANumberOfOutputsThatCannotBeHadIsNone) {
    expect_outputs(number("out", "0x22 num=1"), "Error: get digital out num fail 0x22.\r\n", -1);
    expect_outputs(number("out", "0"), "Success: digital out num is 0.\r\n", 0);
}

TEST(DigitalSectionTest, AnOutputThatCannotBeReadIsNotSwitched) {
    expect_first_output(get(100, "0x23 status=1"), "Error: digital 100 get sts fail 0x23.\r\n");
}

TEST(DigitalSectionTest, AnOutputThatCannotBeSet) {
    expect_first_output(get(100, "0 status=1") + set(100, 0, "0x24"), "Error: digital 100 set sts 0 fail 0x24.\r\n");
}

TEST(DigitalSectionTest, AnOutputThatIsNotWhatItWasSetToIsPutBackFirst) {
    expect_first_output(get(100, "0 status=0 x2") + set(100, 1, "0") + set(100, 0, "0"),
                        "Error: digital 100 set sts 1 and get sts 0 fail 0x0.\r\n");
    expect_first_output(get(100, "0 status=0 x1") + set(100, 1, "0") + get(100, "0x25 status=1") + set(100, 0, "0"),
                        "Error: digital 100 set sts 1 and get sts 1 fail 0x25.\r\n");
    expect_first_output(get(100, "0 status=1 x1") + set(100, 0, "0") + get(100, "0x26") + set(100, 1, "0"),
                        "Error: digital 100 set sts 0 and get sts 0 fail 0x26.\r\n");
}

TEST(DigitalSectionTest, AnOutputThatCannotBePutBack) {
    expect_first_output(get(100, "0 status=1 x1") + set(100, 0, "0") + get(100, "0 status=0") + set(100, 1, "0x27"),
                        "Error: digital 100 set ori sts 1 fail 0x27.\r\n");
    // One line tells of the contact, and that it stands wrong is the worse news.
    expect_first_output(get(100, "0 status=1 x1") + set(100, 0, "0") + get(100, "0x28") + set(100, 1, "0x27"),
                        "Error: digital 100 set ori sts 1 fail 0x27.\r\n");
}

TEST(DigitalSectionTest, AllContactsAreSetToBothModes) {
    expect_digital(inputs_described + outputs_described + node("digital_set_mode", 2) + number("in", "0 num=2") +
                       get(1, "0") + get(2, "0") + number("out", "0 num=1") + get(100, "0 status=0 x1") +
                       set(100, 1, "0") + get(100, "0 status=1 x1") + set(100, 0, "0") + both_modes(1) + both_modes(2) +
                       both_modes(100),
                   "Success: digital in num is 2.\r\n"
                   "Success: digital 1 get sts 0 pass\r\n"
                   "Success: digital 2 get sts 0 pass\r\n"
                   "Success: digital out num is 1.\r\n"
                   "Success: digital 100 set and get test pass. original_status 0 \r\n"
                   "Success: digital 1 set mode pass.\r\n"
                   "Success: digital 2 set mode pass.\r\n"
                   "Success: digital 100 set mode pass.\r\n",
                   0);
}

TEST(DigitalSectionTest, AModeThatIsNotTakenIsNamedAndTheNextContactSet) {
    expect_digital(inputs_described + no_outputs + node("digital_set_mode", 1) + number("in", "0 num=4") + get(1, "0") +
                       get(2, "0") + get(3, "0") + get(4, "0") + mode(1, 1, "0x31") + mode(1, 2, "0") +
                       mode(2, 1, "0") + mode(2, 2, "0x811101a4") + mode(3, 1, "0x33") + mode(3, 2, "0x34") +
                       both_modes(4),
                   "Success: digital in num is 4.\r\n"
                   "Success: digital 1 get sts 0 pass\r\n"
                   "Success: digital 2 get sts 0 pass\r\n"
                   "Success: digital 3 get sts 0 pass\r\n"
                   "Success: digital 4 get sts 0 pass\r\n"
                   "Info: digital out num is not support.\r\n"
                   "Error: digital 1 set mode 1 fail 0x31.\r\n"
                   "Error: digital 2 set mode 2 fail 0x811101a4.\r\n"
                   "Error: digital 3 set mode 1 fail 0x33.\r\n"
                   "Error: digital 3 set mode 2 fail 0x34.\r\n"
                   "Success: digital 4 set mode pass.\r\n",
                   -1);
}

TEST(DigitalSectionTest, ContactsWhoseNumberFailedHaveNoModeSet) {
    expect_digital(inputs_described + outputs_described + node("digital_set_mode", 1) + number("in", "0x21 num=2") +
                       number("out", "0x22 num=2"),
                   "Error: get digital in num fail 0x21.\r\nError: get digital out num fail 0x22.\r\n", -1);
}

// On a healthy board the relays are at rest, the third contact is closed, and a second run finds the modes of the
// first.
TEST(DigitalSectionTest, AHealthyBoardPasses) {
    const std::string outputs_and_modes = "Success: digital out num is 2.\r\n"
                                          "Success: digital 100 set and get test pass. original_status 0 \r\n"
                                          "Success: digital 101 set and get test pass. original_status 0 \r\n"
                                          "Success: digital 1 set mode pass.\r\n"
                                          "Success: digital 2 set mode pass.\r\n"
                                          "Success: digital 3 set mode pass.\r\n"
                                          "Success: digital 4 set mode pass.\r\n"
                                          "Success: digital 100 set mode pass.\r\n"
                                          "Success: digital 101 set mode pass.\r\n"
                                          "result 0\n";
    const std::string state = new_scratch_dir();
    EXPECT_EQ(run_part({"--state", state}, "digital").out, "Success: digital in num is 4.\r\n"
                                                           "Success: digital 1 get sts 0 pass\r\n"
                                                           "Success: digital 2 get sts 0 pass\r\n"
                                                           "Success: digital 3 get sts 1 pass\r\n"
                                                           "Success: digital 4 get sts 0 pass\r\n" +
                                                               outputs_and_modes);
    EXPECT_EQ(run_part({"--state", state}, "digital").out, "Success: digital in num is 4.\r\n"
                                                           "Success: digital 1 get sts 0 pass\r\n"
                                                           "Success: digital 2 get sts 0 pass\r\n"
                                                           "Success: digital 3 get sts 0 pass\r\n"
                                                           "Success: digital 4 get sts 1 pass\r\n" +
                                                               outputs_and_modes);
    EXPECT_EQ(run_part({"--board", "lpu"}, "digital").out, "Info: digital in num is not support.\r\nresult 0\n");
}
