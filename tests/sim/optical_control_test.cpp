// What can be set of transceivers, by the queries and on their bus, and what their neighbours see of it.
#include "tests/sim/optical.h"

namespace kestro_tests {

namespace {

using OpticalControl = OpticalDriver;

std::string disable(const optical_port &at, int value) {
    return optical_call("set_disable_status", at, "value=" + std::to_string(value));
}

std::string disabled(const optical_port &at) {
    return optical_call("get_disable_status", at);
}

std::string rate(const optical_port &at, int direction, int to) {
    return optical_call("set_rate", at, "direction=" + std::to_string(direction) + ", rate=" + std::to_string(to));
}

std::string los(const optical_port &at) {
    return optical_call("get_los_status", at);
}

std::string received(const optical_port &at) {
    return optical_call("get_ddm_info", at, "item=0x30004");
}

std::string value(int number) {
    return "0x0 value=" + std::to_string(number) + "\n";
}

std::string data(const std::string &bytes) {
    return "0x0 data=[" + bytes + "]\n";
}

} // namespace

TEST_F(OpticalControl, ASmallModuleIsSwitchedOffByItsPin) {
    const std::string status = optical_read(lr_port, "0xa2", 0, 110, 1);
    EXPECT_EQ(answers({disabled(lr_port), disable(lr_port, 1), disabled(lr_port), status,
                       optical_read(lr_port, "0xa2", 0, 100, 4), disable(lr_port, 0), disabled(lr_port), status,
                       optical_read(lr_port, "0xa2", 0, 100, 4)}),
              value(0) + ok + value(1) + data("128") + data("0 0 0 0") + ok + value(0) + data("0") +
                  data("66 104 23 138"));
    // In software, which switching on takes back too.
    EXPECT_EQ(answers({optical_write(lr_port, "0xa2", 0, 110, "0x40"), disabled(lr_port), status, disable(lr_port, 0),
                       disabled(lr_port), status}),
              ok + value(1) + data("64") + ok + value(0) + data("0"));
    EXPECT_EQ(answers({disable(copper_port, 1), disabled(copper_port), disable(copper_port, 0), disabled(copper_port)}),
              ok + value(1) + ok + value(0));
}

TEST_F(OpticalControl, LanesAreSwitchedOffOneByOne) {
    const std::string byte = optical_read(sr4_port, "0xa0", 0, 86, 1);
    EXPECT_EQ(answers({disable({5, 21, "0x6"}, 1), byte, disabled(sr4_port), disabled({5, 21, "0x6"}),
                       disabled({5, 21, "0x2"}), disabled({5, 21, "0x1"}), disable(sr4_port, 1), byte,
                       disabled(sr4_port), disable({5, 21, "0x8"}, 0), byte, disabled(sr4_port)}),
              ok + data("6") + value(0) + value(1) + value(1) + value(0) + ok + data("15") + value(1) + ok + data("7") +
                  value(0));
    const std::string wide = optical_read(wide_port, "0xa0", 0x10, 130, 1);
    EXPECT_EQ(answers({disable({7, 31, "0x81"}, 1), wide, disabled({7, 31, "0x80"}), disable({7, 31, "0xffffffff"}, 1),
                       wide, disabled(wide_port), disable({7, 31, "0xf"}, 0), wide}),
              ok + data("129") + value(1) + ok + data("255") + value(1) + ok + data("240"));
}

TEST_F(OpticalControl, TheBusSwitchesToo) {
    EXPECT_EQ(answers({optical_write(sr4_port, "0xa0", 0, 86, "0xff"), optical_read(sr4_port, "0xa0", 0, 86, 1),
                       disabled(sr4_port), optical_write(wide_port, "0xa0", 0x10, 130, "0xff"), disabled(wide_port),
                       optical_write(wide_port, "0xa0", 0x11, 130, "0"), disabled(wide_port)}),
              ok + data("15") + value(1) + ok + value(1) + ok + value(1));
}

// Port 21 of the two main processing units are connected with each other, port 31 with port 1 of the line card.
TEST_F(OpticalControl, NoLaserIsNoLightAtTheOtherEnd) {
    seat_ = "mpu_slave";
    EXPECT_EQ(answers({los(sr4_port)}), value(0));
    seat_ = "mpu_master";
    EXPECT_EQ(answers({disable({5, 21, "0x9"}, 1), los(sr4_port)}), ok + value(0));
    seat_ = "mpu_slave";
    EXPECT_EQ(answers({los(sr4_port), optical_read(sr4_port, "0xa0", 0, 3, 1)}), value(9) + data("9"));
    const auto powers = asked(received(sr4_port), "value={value");
    EXPECT_EQ(powers.at(0), -40);
    EXPECT_NEAR(powers.at(1), -0.5 + 0.14 - 0.6 - 0.015, 0.01);
    EXPECT_EQ(powers.at(3), -40);
    seat_ = "lpu";
    EXPECT_EQ(answers({los(wide_port_of_lpu), disable(wide_port_of_lpu, 1), los(wide_port_of_lpu)}),
              value(0) + ok + value(0));
    seat_ = "mpu_master";
    EXPECT_EQ(answers({los(wide_port), optical_call("get_ddm_alarm_info", wide_port, "item=0x50004")}).substr(0, 14),
              value(255));
    seat_ = "lpu";
    EXPECT_EQ(answers({disable(wide_port_of_lpu, 0)}), ok);
    seat_ = "mpu_master";
    EXPECT_EQ(answers({los(wide_port)}), value(0));
}

TEST_F(OpticalControl, WhatElseDarkensTheOtherEnd) {
    EXPECT_EQ(answers({los(wide_port)}), value(0));
    EXPECT_EQ(answers({los(wide_port)}, {"slot7/optics/module/1/tx_fault=0x3"}), value(3));
    EXPECT_EQ(answers({los(wide_port)}, {"slot7/optics/module/1/tx_fault=0", "slot7/optics/cage/1/plugged=0"}),
              value(255));
    // Plugged in again, it needs a moment to send.
    EXPECT_EQ(answers({los(wide_port), "wait 1.999", los(wide_port), "wait 0.001", los(wide_port)},
                      {"slot7/optics/cage/1/plugged=1"}),
              value(255) + value(255) + value(0));
    EXPECT_EQ(answers({los(wide_port)}, {"chassis/optics/fibre/7/cut=1"}), value(255));
    EXPECT_EQ(answers({los(wide_port)}, {"chassis/optics/fibre/7/cut=0"}), value(0));
}

TEST_F(OpticalControl, APulledBoardSendsNothing) {
    const std::vector<std::string> options{"--state", state_, "--clock", "virtual", "--pull", "slot7"};
    EXPECT_EQ(answers_of(options, {los(wide_port)}), value(255));
}

// Light that fits the other end: of fewer lanes, of copper, to a port that there is not.
TEST_F(OpticalControl, TheTechnicianPatches) {
    EXPECT_EQ(answers({los(wide_port)}, {"chassis/optics/fibre/7/far_slot=10", "chassis/optics/fibre/7/far_port=11"}),
              value(0xFE));
    EXPECT_EQ(answers({los(wide_port)}, {"chassis/optics/fibre/7/far_port=1"}), value(0xFF));
    EXPECT_EQ(answers({los(wide_port)}, {"chassis/optics/fibre/7/far_port=99"}), value(0xFF));
    EXPECT_EQ(answers({los(wide_port)}, {"chassis/optics/fibre/7/far_slot=8"}), value(0xFF));
    EXPECT_EQ(answers({los(wide_port)}, {"chassis/optics/fibre/7/far_slot=0"}), value(0));
}

TEST_F(OpticalControl, SwitchingRefuses) {
    EXPECT_EQ(
        answers({disable(lr_port, 2), disable({5, 21, "0"}, 1), disable({5, 21, "0x30"}, 1), disabled({5, 21, "0"}),
                 rate(lr_port, 2, 0), rate(lr_port, 0, 2), rate(sr4_port, 1, 4), rate({5, 21, "0"}, 1, 1),
                 rate(copper_port, 0, 1), rate(failed_port, 0, 1), rate(cut_port, 0, 1), rate(wide_port, 0, 1)}),
        bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + not_supported +
            not_supported + not_supported + not_supported);
}

TEST_F(OpticalControl, RatesAreInTheMap) {
    const std::string receiver = optical_read(lr_port, "0xa2", 0, 110, 1);
    const std::string transmitter = optical_read(lr_port, "0xa2", 0, 118, 1);
    EXPECT_EQ(answers({rate(lr_port, 0, 1), receiver, transmitter, rate(lr_port, 1, 1), rate(lr_port, 0, 0), receiver,
                       transmitter, optical_write(lr_port, "0xa2", 0, 110, "0"), receiver}),
              ok + data("0") + data("8") + ok + ok + data("8") + data("0") + ok + data("0"));
    const std::string both = optical_read(sr4_port, "0xa0", 0, 87, 2);
    EXPECT_EQ(answers({rate(sr4_port, 1, 2), both, rate({5, 21, "0x5"}, 0, 3), both, rate({5, 21, "0x1"}, 1, 1), both,
                       optical_write(sr4_port, "0xa0", 0, 87, "1 2"), both}),
              ok + data("170 0") + ok + data("170 51") + ok + data("169 51") + ok + data("1 2"));
    EXPECT_EQ(answers({optical_write(cut_port, "0xa0", 0, 87, "1 2"), optical_read(cut_port, "0xa0", 0, 87, 2)}),
              ok + data("0 0"));
}

// A rate does not switch a laser on or off, and the other way round.
TEST_F(OpticalControl, SwitchesAndRatesOfOneByte) {
    const std::string status = optical_read(lr_port, "0xa2", 0, 110, 1);
    EXPECT_EQ(answers({optical_write(lr_port, "0xa2", 0, 110, "0x40"), rate(lr_port, 1, 1), status, disable(lr_port, 0),
                       status}),
              ok + ok + data("72") + ok + data("8"));
}

TEST_F(OpticalControl, UserAreasKeepWhatIsWritten) {
    EXPECT_EQ(answers({optical_write(lr_port, "0xa2", 0, 128, "1 2 0xff"), optical_write(lr_port, "0xa2", 0, 247, "9"),
                       optical_write(sr4_port, "0xa0", 2, 254, "3 4"), optical_write(wide_port, "0xa0", 3, 200, "5")}),
              ok + ok + ok + ok);
    EXPECT_EQ(answers({optical_read(lr_port, "0xa2", 0, 128, 4), optical_read(lr_port, "0xa2", 0, 247, 1),
                       optical_read(sr4_port, "0xa0", 2, 253, 3), optical_read(wide_port, "0xa0", 3, 199, 3)}),
              data("1 2 255 0") + data("9") + data("0 3 4") + data("0 5 0"));
}

TEST_F(OpticalControl, WhatIsReadOnlyStays) {
    const std::vector<std::pair<optical_port, std::pair<std::string, std::pair<int, int>>>> places{
        {copper_port, {"0xa0", {0, 20}}}, {lr_port, {"0xa0", {0, 0}}},        {lr_port, {"0xa0", {0, 200}}},
        {lr_port, {"0xa2", {0, 98}}},     {lr_port, {"0xa2", {0, 0}}},        {lr_port, {"0xa2", {0, 248}}},
        {sr4_port, {"0xa0", {0, 3}}},     {sr4_port, {"0xa0", {0, 148}}},     {sr4_port, {"0xa0", {3, 128}}},
        {wide_port, {"0xa0", {0, 3}}},    {wide_port, {"0xa0", {0, 130}}},    {wide_port, {"0xa0", {1, 132}}},
        {wide_port, {"0xa0", {2, 128}}},  {wide_port, {"0xa0", {0x10, 131}}}, {wide_port, {"0xa0", {0x11, 147}}}};
    for (const auto &[at, place] : places) {
        const std::string read = optical_read(at, place.first, place.second.first, place.second.second, 1);
        const std::string before = answers({read});
        const auto byte = static_cast<unsigned>(numbers_in(before, "data").at(0));
        EXPECT_EQ(answers({optical_write(at, place.first, place.second.first, place.second.second,
                                         std::to_string(byte ^ 0xFFU)),
                           read}),
                  ok + before)
            << read;
    }
}

// The page of a call stays selected; a call about the lower half alone leaves it.
TEST_F(OpticalControl, PagesAreSelected) {
    const std::string selected = optical_read(wide_port, "0xa0", 0, 127, 1);
    EXPECT_EQ(answers({selected, optical_read(wide_port, "0xa0", 2, 128, 1), selected,
                       optical_write(wide_port, "0xa0", 0, 127, "0x11"), selected,
                       optical_write(wide_port, "0xa0", 0, 127, "0x12"), selected,
                       optical_read(wide_port, "0xa0", 1, 126, 2), optical_read(wide_port, "0xa0", 1, 127, 2)}),
              data("0") + data("75") + data("2") + ok + data("17") + ok + data("0") + data("0 0") + data("1 0"));
    const std::string of_middle = optical_read(sr4_port, "0xa0", 0, 127, 1);
    EXPECT_EQ(
        answers({optical_read(sr4_port, "0xa0", 3, 128, 2), of_middle, optical_write(sr4_port, "0xa0", 0, 127, "2"),
                 of_middle, optical_write(sr4_port, "0xa0", 0, 127, "1"), of_middle}),
        data("75 0") + data("3") + ok + data("2") + ok + data("0"));
}

TEST_F(OpticalControl, RegistersThatThereAreNot) {
    EXPECT_EQ(answers({optical_read(lr_port, "0xa4", 0, 0, 1), optical_read(lr_port, "0x50", 0, 0, 1),
                       optical_read(copper_port, "0xa2", 0, 0, 1), optical_read(sr4_port, "0xa2", 0, 0, 1),
                       optical_write(wide_port, "0xa2", 0, 0, "1")}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device);
    EXPECT_EQ(answers({optical_read(lr_port, "0xa0", 1, 0, 1), optical_read(lr_port, "0xa2", 1, 128, 1),
                       optical_read(sr4_port, "0xa0", 1, 128, 1), optical_read(wide_port, "0xa0", 4, 128, 1),
                       optical_read(wide_port, "0xa0", 0x12, 0, 1), optical_write(wide_port, "0xa0", 0xFF, 128, "1"),
                       optical_read(lr_port, "0", 0, 256, 1), optical_read(lr_port, "0", 0, 255, 2),
                       optical_read(lr_port, "0", 0, 0, 0), optical_read(lr_port, "0", 0, 0, 257),
                       optical_read(lr_port, "0", 0, -1, 2), optical_write(lr_port, "0xa2", 0, 255, "1 2"),
                       optical_call("register_write", lr_port, "length=0, data=[1]")}),
              out_of_its_range + out_of_its_range + out_of_its_range + out_of_its_range + out_of_its_range +
                  out_of_its_range + out_of_its_range + out_of_its_range + out_of_its_range + out_of_its_range +
                  out_of_its_range + out_of_its_range + out_of_its_range);
    // A byte is a byte, and nothing of such a call is written.
    EXPECT_EQ(answers({optical_write(lr_port, "0xa2", 0, 128, "1 0x100"), optical_read(lr_port, "0xa2", 0, 128, 2)}),
              bad_value + data("0 0"));
}

} // namespace kestro_tests
