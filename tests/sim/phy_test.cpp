// Ethernet PHYs: the registers of clause 22 agree with link, speed, loopback and enable, whoever sets and reads them;
// links come up in board time.
#include "sim/devices/network/phy.h"

#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

// Port 0 of chip 0 has a gigabit port at its other end, port 1 one of 100 Mbit/s; at chip 1 nothing is plugged in.
const std::string link_0 = "drv_phy_get_port_link(chip_id=0, port_id=0, port_mode=0)";
const std::string speed_0 = "drv_phy_get_port_speed(chip_id=0, port_id=0, port_mode=0)";
const std::string config_0 = "drv_phy_get_port_config_speed(chip_id=0, port_id=0, port_mode=0)";
const std::string enable_0 = "drv_phy_get_port_status(chip_id=0, port_id=0, port_mode=0)";
const std::string looped_0 = "drv_phy_get_port_loopback(chip_id=0, port_id=0, port_mode=0)";
const std::string reset_0 = "drv_phy_port_initialization(chip_id=0, port_id=0)";
const std::string up = "0x0 link_status=1\n";
const std::string down = "0x0 link_status=0\n";
const std::string out_of_range = "0x81110107\n";

std::string read_0(const std::string &reg) {
    return "drv_phy_get_reg(chip_id=0, port_id=0, reg=" + reg + ")";
}

std::string write_0(const std::string &reg, const std::string &value) {
    return "drv_phy_set_reg(chip_id=0, port_id=0, reg=" + reg + ", value=" + value + ")";
}

std::string set_0(const std::string &what, const std::string &argument) {
    return "drv_phy_set_port_" + what + "(chip_id=0, port_id=0, port_mode=0, " + argument + ")";
}

std::string value(uint32_t number) {
    return "0x0 value=" + std::to_string(number) + "\n";
}

std::string speed(uint32_t number) {
    return "0x0 speed=" + std::to_string(number) + "\n";
}

class PhyDriver : public testing::Test {
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

TEST_F(PhyDriver, ANewBoardHasItsLinks) {
    EXPECT_EQ(answers({link_0, speed_0, config_0, enable_0, looped_0,
                       "drv_phy_get_port_speed(chip_id=0, port_id=1, port_mode=0)",
                       "drv_phy_get_port_link(chip_id=1, port_id=4, port_mode=0)",
                       "drv_phy_get_port_speed(chip_id=1, port_id=4, port_mode=0)"}),
              up + speed(1000) + speed(0) + "0x0 enable=1\n0x0 loopback=0\n" + speed(100) + down + speed(0));
}

TEST_F(PhyDriver, RegistersOfANewBoard) {
    EXPECT_EQ(
        answers({read_0("0"), read_0("1"), read_0("2"), read_0("3"), read_0("4"), read_0("5"), read_0("6"), read_0("7"),
                 read_0("9"), read_0("10"), read_0("15"), read_0("16"), read_0("17"), read_0("30"), read_0("31")}),
        value(0x1140) + value(0x796D) + value(0x0A83) + value(0x0121) + value(0x01E1) + value(0x41E1) + value(1) +
            value(0) + value(0x0300) + value(0x3C00) + value(0x3000) + value(0) + value(0xAC00) + value(0) + value(0));
    EXPECT_EQ(
        answers({"drv_phy_get_reg(chip_id=0, port_id=1, reg=10)", "drv_phy_get_reg(chip_id=0, port_id=1, reg=17)",
                 "drv_phy_get_reg(chip_id=1, port_id=4, reg=1)", "drv_phy_get_reg(chip_id=1, port_id=4, reg=3)",
                 "drv_phy_get_reg(chip_id=1, port_id=4, reg=5)", "drv_phy_get_reg(chip_id=1, port_id=4, reg=17)"}),
        value(0) + value(0x6C00) + value(0x7949) + value(0x0152) + value(0) + value(0));
}

TEST_F(PhyDriver, LinkComesUpSomeTimeAfterAReset) {
    EXPECT_EQ(answers({reset_0, link_0, "wait 1.999", link_0, speed_0, "wait 0.001", link_0, speed_0}),
              ok + down + down + speed(0) + up + speed(1000));
    EXPECT_EQ(answers({write_0("0", "0x8000"), read_0("0"), link_0, "wait 2", link_0}), ok + value(0x1140) + down + up);
}

TEST_F(PhyDriver, LinkComesUpFromRunToRun) {
    EXPECT_EQ(answers({reset_0, "wait 1", link_0}), ok + down);
    EXPECT_EQ(answers({"wait 0.9", link_0}), down);
    EXPECT_EQ(answers({"wait 0.1", link_0}), up);
}

TEST_F(PhyDriver, TheTechnicianSaysHowLongItTakes) {
    EXPECT_EQ(
        answers({reset_0, "wait 4.5", link_0, "wait 0.5", link_0}, {"--set", "slot9/phy/port/0/negotiation=5000"}),
        ok + down + up);
}

TEST_F(PhyDriver, AResetPutsEverythingBack) {
    EXPECT_EQ(answers({set_0("loopback", "loopback=1"), set_0("speed", "speed=10"), set_0("status", "enable=0"),
                       write_0("4", "0x0021"), write_0("9", "0"), read_0("0"), read_0("4"), read_0("9"), reset_0,
                       read_0("0"), read_0("4"), read_0("9"), looped_0, config_0, enable_0}),
              ok + ok + ok + ok + ok + value(0x4900) + value(0x0021) + value(0) + ok + value(0x1140) + value(0x01E1) +
                  value(0x0300) + "0x0 loopback=0\n" + speed(0) + "0x0 enable=1\n");
}

TEST_F(PhyDriver, StatusTellsALostLinkOnce) {
    EXPECT_EQ(answers({reset_0, "wait 3", read_0("1"), read_0("1")}), ok + value(0x7969) + value(0x796D));
    EXPECT_EQ(answers({reset_0, read_0("1"), "wait 3", read_0("1"), read_0("1")}),
              ok + value(0x7949) + value(0x7969) + value(0x796D));
    EXPECT_EQ(answers({read_0("1")}, {"--set", "slot9/phy/port/0/partner=0"}), value(0x7949));
    EXPECT_EQ(answers({read_0("1"), read_0("1")}, {"--set", "slot9/phy/port/0/partner=7"}),
              value(0x7969) + value(0x796D));
}

// Whoever merely looks at the registers does not take back what a driver has not read yet.
TEST_F(PhyDriver, TheTechnicianLooksWithoutClearing) {
    EXPECT_EQ(answers({reset_0, "wait 3"}), ok);
    EXPECT_EQ(answers({read_0("1"), read_0("1")},
                      {"--get", "slot9/phy/0/0x01", "--get", "slot9/phy/port/0/link_lost"}),
              "0x7969\n1\n" + value(0x7969) + value(0x796D));
}

TEST_F(PhyDriver, PowerDownTakesTheLinkDown) {
    EXPECT_EQ(answers({set_0("status", "enable=0"), link_0, enable_0, read_0("0"), "wait 10", link_0,
                       set_0("status", "enable=1"), link_0, read_0("0"), "wait 2", link_0}),
              ok + down + "0x0 enable=0\n" + value(0x1940) + down + ok + down + value(0x1140) + up);
    EXPECT_EQ(answers({write_0("0", "0x1940"), enable_0, link_0}), ok + "0x0 enable=0\n" + down);
}

TEST_F(PhyDriver, SwitchingOnWhatIsOnLeavesTheLink) {
    EXPECT_EQ(answers({set_0("status", "enable=1"), link_0}), ok + up);
}

TEST_F(PhyDriver, LoopbackForcesTheLink) {
    const std::string lonely = "drv_phy_get_port_link(chip_id=1, port_id=4, port_mode=0)";
    EXPECT_EQ(answers({"drv_phy_set_port_loopback(chip_id=1, port_id=4, port_mode=0, loopback=1)", lonely,
                       "drv_phy_get_port_speed(chip_id=1, port_id=4, port_mode=0)",
                       "drv_phy_get_reg(chip_id=1, port_id=4, reg=0)",
                       "drv_phy_set_port_loopback(chip_id=1, port_id=4, port_mode=0, loopback=0)", lonely}),
              ok + up + speed(1000) + value(0x5140) + ok + down);
    EXPECT_EQ(answers({write_0("0", "0x4140"), looped_0, link_0, read_0("5"), read_0("1"), read_0("1")}),
              ok + "0x0 loopback=1\n" + up + value(0) + value(0x7949) + value(0x794D));
    EXPECT_EQ(answers({set_0("status", "enable=0"), link_0}), ok + down);
}

TEST_F(PhyDriver, LinkBeginsAnewAfterLoopback) {
    EXPECT_EQ(answers({set_0("loopback", "loopback=1"), "wait 10", link_0, set_0("loopback", "loopback=0"), link_0,
                       "wait 2", link_0}),
              ok + up + ok + down + up);
}

TEST_F(PhyDriver, SpeedIsWhatBothEndsCan) {
    EXPECT_EQ(answers({set_0("speed", "speed=100"), config_0, read_0("0"), speed_0, "wait 2", speed_0, link_0}),
              ok + speed(100) + value(0x2100) + speed(0) + speed(100) + up);
    EXPECT_EQ(answers({set_0("speed", "speed=10"), read_0("0"), "wait 2", speed_0, read_0("17")}),
              ok + value(0x0100) + speed(10) + value(0x2C00));
    EXPECT_EQ(answers({set_0("speed", "speed=1000"), read_0("0"), "wait 2", speed_0, read_0("5"), read_0("6")}),
              ok + value(0x0140) + speed(1000) + value(0) + value(0));
    EXPECT_EQ(answers({set_0("speed", "speed=0"), read_0("0"), config_0, "wait 2", speed_0}),
              ok + value(0x1140) + speed(0) + speed(1000));
    EXPECT_EQ(answers({"drv_phy_set_port_speed(chip_id=0, port_id=1, port_mode=0, speed=1000)", "wait 60",
                       "drv_phy_get_port_link(chip_id=0, port_id=1, port_mode=0)"}),
              ok + down);
}

TEST_F(PhyDriver, SpeedIsWrittenOverTheBusToo) {
    EXPECT_EQ(answers({write_0("0", "0x2100"), config_0, "wait 2", speed_0}), ok + speed(100) + speed(100));
    EXPECT_EQ(answers({write_0("0", "0x2000"), "wait 2", read_0("17")}), ok + value(0x4C00));
    // Both speed bits together mean nothing.
    EXPECT_EQ(answers({write_0("0", "0x2140"), config_0, "wait 60", link_0}), ok + speed(0) + down);
}

TEST_F(PhyDriver, OffersCountWhenTheLinkBeginsAnew) {
    EXPECT_EQ(answers({write_0("9", "0"), write_0("4", "0x0061"), speed_0, write_0("0", "0x1340"), read_0("0"), link_0,
                       "wait 2", speed_0, read_0("10")}),
              ok + ok + speed(1000) + ok + value(0x1140) + down + speed(10) + value(0x0C00));
    EXPECT_EQ(answers({write_0("4", "0xffff"), read_0("4"), write_0("0", "0x1340"), "wait 2", speed_0}),
              ok + value(0x0FE1) + ok + speed(100));
    EXPECT_EQ(answers({write_0("4", "0x0001"), write_0("0", "0x1340"), "wait 60", link_0}), ok + ok + down);
}

// The restart bit is for negotiation.
TEST_F(PhyDriver, NothingBeginsAnewWithoutNegotiation) {
    EXPECT_EQ(answers({set_0("speed", "speed=100"), "wait 2", link_0, write_0("0", "0x2300"), link_0, read_0("0")}),
              ok + up + ok + up + value(0x2100));
}

TEST_F(PhyDriver, IsolationKeepsTheLink) {
    EXPECT_EQ(answers({write_0("0", "0x15c0"), read_0("0"), link_0}), ok + value(0x15C0) + up);
}

TEST_F(PhyDriver, WhatIsReadOnlyStays) {
    EXPECT_EQ(answers({write_0("1", "0"), write_0("2", "0xffff"), write_0("3", "0"), write_0("5", "1"),
                       write_0("7", "0x2001"), write_0("15", "0"), write_0("17", "0"), write_0("31", "1"), read_0("1"),
                       read_0("2"), read_0("3"), read_0("5"), read_0("7"), read_0("15"), read_0("17"), read_0("31")}),
              ok + ok + ok + ok + ok + ok + ok + ok + value(0x796D) + value(0x0A83) + value(0x0121) + value(0x41E1) +
                  value(0) + value(0x3000) + value(0xAC00) + value(0));
}

TEST_F(PhyDriver, MediumIsTheMode) {
    const std::string mode = "drv_phy_get_port_mode(chip_id=0, port_id=0)";
    const std::string fibre_link = "drv_phy_get_port_link(chip_id=0, port_id=0, port_mode=1)";
    EXPECT_EQ(answers({mode, fibre_link, "drv_phy_set_port_mode(chip_id=0, port_id=0, port_mode=0)", link_0,
                       "drv_phy_set_port_mode(chip_id=0, port_id=0, port_mode=1)", mode, read_0("16"), link_0,
                       fibre_link, "wait 2", fibre_link}),
              "0x0 port_mode=0\n" + bad_value + ok + up + ok + "0x0 port_mode=1\n" + value(1) + bad_value + down + up);
    // It survives a reset, and the bus sets it as well.
    EXPECT_EQ(answers({reset_0, mode, write_0("16", "0"), mode}), ok + "0x0 port_mode=1\n" + ok + "0x0 port_mode=0\n");
    EXPECT_EQ(answers({"drv_phy_set_port_mode(chip_id=0, port_id=1, port_mode=1)",
                       "drv_phy_set_port_mode(chip_id=0, port_id=0, port_mode=2)",
                       "drv_phy_set_port_mode(chip_id=0, port_id=0, port_mode=0xffffffff)",
                       "drv_phy_set_reg(chip_id=0, port_id=1, reg=16, value=1)",
                       "drv_phy_get_port_mode(chip_id=0, port_id=1)"}),
              bad_value + bad_value + bad_value + ok + "0x0 port_mode=0\n");
}

TEST_F(PhyDriver, IdentifierOfAnotherChipIsFound) {
    EXPECT_EQ(answers({"drv_phy_check_deviceid(chip_id=0)", "drv_phy_check_deviceid(chip_id=1)",
                       "drv_phy_check_deviceid(chip_id=2)"}),
              ok + ok + no_such_device);
    EXPECT_EQ(answers({"drv_phy_check_deviceid(chip_id=0)", "drv_phy_check_deviceid(chip_id=1)",
                       "drv_phy_get_reg(chip_id=0, port_id=1, reg=3)"},
                      {"--set", "slot9/phy/1/0x03=0x0122"}),
              no_such_device + ok + value(0x0122));
}

TEST_F(PhyDriver, NickIsGoneAfterAReset) {
    const std::string check = "drv_phy_check_nick(chip_id=0)";
    EXPECT_EQ(answers({check, "drv_phy_nick(chip_id=0)", check, "drv_phy_check_nick(chip_id=1)"}),
              "0x0 check_result=1\n0x0\n0x0 check_result=0\n0x0 check_result=1\n");
    EXPECT_EQ(answers({check, "drv_phy_port_initialization(chip_id=0, port_id=1)", check, read_0("30")}),
              "0x0 check_result=0\n0x0\n0x0 check_result=1\n" + value(0x4B54));
    EXPECT_EQ(answers({"drv_phy_nick(chip_id=0)", write_0("30", "0x4B55"), check, write_0("30", "0x4B54"), check}),
              ok + ok + "0x0 check_result=1\n" + ok + "0x0 check_result=0\n");
}

TEST_F(PhyDriver, AnotherSeatHasPhysOfItsOwn) {
    seat_ = "lpu";
    const std::string second = "drv_phy_get_port_link(chip_id=0, port_id=8, port_mode=0)";
    EXPECT_EQ(answers({reset_0, link_0, second, "drv_phy_get_port_link(chip_id=0, port_id=1, port_mode=0)",
                       "drv_phy_get_port_link(chip_id=1, port_id=4, port_mode=0)"}),
              ok + down + up + no_such_device + no_such_device);
    seat_ = "mpu_master";
    EXPECT_EQ(answers({link_0}), up);
}

TEST_F(PhyDriver, RefusesWhatThereIsNot) {
    EXPECT_EQ(answers({"drv_phy_port_initialization(chip_id=2, port_id=0)",
                       "drv_phy_port_initialization(chip_id=0, port_id=4)", "drv_phy_nick(chip_id=9)",
                       "drv_phy_check_nick(chip_id=9)", "drv_phy_get_port_mode(chip_id=1, port_id=0)",
                       "drv_phy_get_reg(chip_id=3, port_id=0, reg=0)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + no_such_device);
    EXPECT_EQ(answers({set_0("loopback", "loopback=2"), set_0("status", "enable=2"), set_0("speed", "speed=1"),
                       set_0("speed", "speed=0xffffffff"), write_0("30", "0x10000"),
                       "drv_phy_set_port_speed(chip_id=0, port_id=0, port_mode=1, speed=10)"}),
              bad_value + bad_value + bad_value + bad_value + bad_value + bad_value);
    EXPECT_EQ(answers({read_0("32"), write_0("32", "0")}), out_of_range + out_of_range);
}

TEST_F(PhyDriver, MissingAreas) {
    EXPECT_EQ(answers({"drv_phy_get_port_link(link_status=null)", "drv_phy_get_port_loopback(loopback=null)",
                       "drv_phy_get_port_speed(speed=null)", "drv_phy_get_port_config_speed(speed=null)",
                       "drv_phy_get_port_mode(port_mode=null)", "drv_phy_get_reg(value=null)",
                       "drv_phy_get_port_status(enable=null)", "drv_phy_check_nick(check_result=null)"}),
              null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
                  null_pointer);
}

} // namespace kestro_tests
