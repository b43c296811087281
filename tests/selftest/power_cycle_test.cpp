// Power domains of the board's EPLD, switched off and on again one by one.
#include <gtest/gtest.h>

#include "tests/selftest/call_order.h"
#include "tests/selftest/held_signals.h"
#include "tests/selftest/part.h"
#include "tests/support/simulator.h"

using namespace kestro_tests;

namespace {

constexpr const char *no_domain_line = "Info   : board is not support board epld power.\r\n";
constexpr const char *pass_of_3 = "Success: 0xffffffff set power on and off pass. power_type 0x3\r\n";
constexpr const char *pass_of_5 = "Success: 0xffffffff set power on and off pass. power_type 0x5\r\n";

std::string described(const std::vector<std::string> &answers) {
    std::string script = entry_count("board_mng", "board_epld_power", static_cast<int>(answers.size()));
    for (size_t i = 0; i < answers.size(); ++i) {
        script += element("board_mng", "board_epld_power", static_cast<int>(i), "power_type", answers[i]);
    }
    return script;
}

std::string rule(const std::string &operation, int type, const std::string &answer) {
    return "drv_board_" + operation + "(inst_id=0xffffffff, type=" + std::to_string(type) + ") = " + answer + " x1\n";
}

std::string status(int type, const std::string &answer) {
    return rule("get_power_status", type, answer);
}

std::string off(int type, const std::string &answer) {
    return rule("set_power_off", type, answer);
}

std::string on(int type, const std::string &answer) {
    return rule("set_power_on", type, answer);
}

std::string good_cycle(int type) {
    return status(type, "0 status=1") + off(type, "0") + status(type, "0 status=0") + on(type, "0") +
           status(type, "0 status=1");
}

// One domain of type 3; what it says stands in front of nothing else.
void expect_cycle(const std::string &script, const std::string &lines, int result) {
    expect_part("epld_power", described({"0 value=3"}) + script, lines, result);
}

// A domain that fails, and the next one that is tested all the same.
void expect_fault(const std::string &script, const std::string &line) {
    expect_part("epld_power", described({"0 value=3", "0 value=5"}) + script + good_cycle(5), line + pass_of_5, -1);
}

} // namespace

TEST(EpldPowerTest, EveryDomainIsSwitchedOffAndOn) {
    expect_part("epld_power", described({"0 value=3", "0 value=5"}) + good_cycle(3) + good_cycle(5),
                std::string(pass_of_3) + pass_of_5, 0);
}

// What it was before is neither judged nor restored.
TEST(EpldPowerTest, ADomainThatWasOffIsLeftOn) {
    expect_cycle(status(3, "0 status=0") + off(3, "0") + status(3, "0 status=0") + on(3, "0") + status(3, "0 status=1"),
                 pass_of_3, 0);
    expect_cycle(status(3, "0") + off(3, "0") + status(3, "0") + on(3, "0") + status(3, "0 status=1"), pass_of_3, 0);
}

TEST(EpldPowerTest, ADomainThatTheBoardLacksPassesInSilence) {
    expect_cycle(status(3, "0x811101a4"), "", 0);
    expect_cycle(status(3, "0xa4"), "", 0);
    expect_part("epld_power", described({"0 value=3", "0 value=5"}) + status(3, "0x811101a4") + good_cycle(5),
                pass_of_5, 0);
}

TEST(EpldPowerTest, AStatusThatCannotBeRead) {
    expect_fault(status(3, "0x71"), "Error  : get 4294967295 power status fail 0x71. power_type 0x3\r\n");
}

TEST(EpldPowerTest, ADomainThatCannotBeSwitchedOff) {
    expect_fault(status(3, "0 status=1") + off(3, "0x72"),
                 "Error  : set 4294967295 power off fail 0x72. power_type 0x3\r\n");
    expect_fault(status(3, "0 status=1") + off(3, "0x811101a4"),
                 "Error  : set 4294967295 power off fail 0x811101a4. power_type 0x3\r\n");
}

TEST(EpldPowerTest, ADomainThatStaysOn) {
    const std::string begun = status(3, "0 status=1") + off(3, "0");
    expect_fault(begun + status(3, "0x73"), "Error  : get 4294967295 power status fail 0x73. power_type 0x3\r\n");
    expect_fault(begun + status(3, "0xa4"), "Error  : get 4294967295 power status fail 0xa4. power_type 0x3\r\n");
    expect_fault(begun + status(3, "0 status=1"),
                 "Error  : set 4294967295 power off after check fail. status 0x1. power_type 0x3\r\n");
}

TEST(EpldPowerTest, ADomainThatCannotBeSwitchedOn) {
    expect_fault(status(3, "0 status=1") + off(3, "0") + status(3, "0 status=0") + on(3, "0x74"),
                 "Error  : set 4294967295 power on fail 0x74. power_type 0x3\r\n");
}

TEST(EpldPowerTest, ADomainThatStaysOff) {
    const std::string begun = status(3, "0 status=1") + off(3, "0") + status(3, "0 status=0") + on(3, "0");
    expect_fault(begun + status(3, "0x75"), "Error  : get 4294967295 power status fail 0x75. power_type 0x3\r\n");
    expect_fault(begun + status(3, "0"),
                 "Error  : set 4294967295 power on after check fail . status 0x0. power_type 0x3\r\n");
    expect_fault(begun + status(3, "0 status=2"),
                 "Error  : set 4294967295 power on after check fail . status 0x2. power_type 0x3\r\n");
}

TEST(EpldPowerTest, AFailureOfTheLastDomainCountsToo) {
    expect_part("epld_power", described({"0 value=3", "0 value=5"}) + good_cycle(3) + status(5, "0x76"),
                std::string(pass_of_3) + "Error  : get 4294967295 power status fail 0x76. power_type 0x5\r\n", -1);
}

TEST(EpldPowerTest, TypesUpTo34AreHandedToTheDriver) {
    expect_part("epld_power",
                described({"0 value=35", "0 value=34", "0 value=0xffffffff", "0 value=0"}) + status(34, "0x81110103") +
                    good_cycle(0),
                "Error  : get 4294967295 power status fail 0x81110103. power_type 0x22\r\n"
                "Success: 0xffffffff set power on and off pass. power_type 0x0\r\n",
                -1);
}

TEST(EpldPowerTest, AnEntryWithoutItsTypeIsSkipped) {
    expect_part("epld_power", described({"0x51", "0 value=5"}) + good_cycle(5), pass_of_5, 0);
    expect_part("epld_power", described({"0x51 value=3", "0 value=35"}), no_domain_line, 0);
}

TEST(EpldPowerTest, ADescriptionWithoutTheNodeFails) {
    expect_part("epld_power", entry_count("board_mng", "board_epld_power", 0), no_domain_line, -1);
    expect_part("epld_power", no_entry_count("board_mng", "board_epld_power", "0x51"), no_domain_line, -1);
}

TEST(EpldPowerTest, OnTheSimulatedBoards) {
    for (const std::string seat : {"mpu_master", "mpu_slave"}) {
        EXPECT_EQ(run_part({"--board", seat}, "epld_power").out,
                  std::string(pass_of_3) + pass_of_5 +
                      "Success: 0xffffffff set power on and off pass. power_type 0xb\r\nresult 0\n");
    }
    EXPECT_EQ(run_part({"--board", "lpu"}, "epld_power").out,
              std::string(pass_of_3) + "Success: 0xffffffff set power on and off pass. power_type 0x4\r\nresult 0\n");
}

TEST(EpldPowerTest, ASimulatedDomainIsOnBehindIt) {
    const std::string state = new_scratch_dir();
    const process_result was_off = run_part({"--state", state, "--set", "slot9/board/power/5/on=0"}, "epld_power");
    EXPECT_NE(was_off.out.find(pass_of_5), std::string::npos);
    EXPECT_EQ(run_sim({"--state", state, "--get", "slot9/board/power/5/on"}, {}).out, "1\n");
}

TEST(EpldPowerTest, EachDomainIsOnAgainBeforeTheNextOneGoes) {
    std::vector<std::string> expected;
    for (const std::string type : {"3", "4"}) {
        for (const std::string operation :
             {"get_power_status", "set_power_off", "get_power_status", "set_power_on", "get_power_status"}) {
            expected.push_back("drv_board_" + operation + "(inst_id=0xffffffff, type=" + type + ")");
        }
    }
    EXPECT_EQ(calls_of({"--board", "lpu"}, "epld_power"), expected);
}

// An operator's Ctrl-C waits from the moment at which the power may be gone until it is known to be back. Before that,
// and between two domains, it ends the run.
TEST(EpldPowerTest, AnInterruptWaitsUntilThePowerIsBack) {
    const std::string two = described({"0 value=3", "0 value=5"});
    const std::string is_on = "drv_board_get_power_status";
    expect_interrupts("epld_power", two + status(3, "hang"), is_on, 1, 1);
    const std::string begun = two + status(3, "0 status=1");
    expect_interrupts("epld_power", begun + off(3, "hang"), "drv_board_set_power_off", 2, 2);
    const std::string is_off = begun + off(3, "0");
    expect_interrupts("epld_power", is_off + status(3, "hang"), is_on, 3, 2);
    expect_interrupts("epld_power", is_off + status(3, "0 status=0") + on(3, "hang"), "drv_board_set_power_on", 4, 2);
    expect_interrupts("epld_power", is_off + status(3, "0 status=0") + on(3, "0") + status(3, "hang"), is_on, 5, 2);
    expect_interrupts("epld_power", two + good_cycle(3) + status(5, "hang"), is_on, 6, 1);
    expect_interrupts("epld_power", begun + off(3, "0x72") + status(5, "hang"), is_on, 3, 1);
}
