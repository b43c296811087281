// What transceivers measure, on the bus and in the queries: units, limits and what is beyond them, light and darkness,
// and temperature in time.
#include "tests/sim/optical.h"

#include <cmath>

namespace kestro_tests {

namespace {

using OpticalDiagnostics = OpticalDriver;

// Where a kind of module has its words. Items of the library: temperature, voltage, bias, power sent, power received.
struct word_places {
    optical_port at;
    int lanes;
    std::string device;
    int page[5];
    int value[5];
    int limits_page;
    int limits[5];
};

const word_places small_places{lr_port, 1, "0xa2", {0, 0, 0, 0, 0}, {96, 98, 100, 102, 104}, 0, {0, 8, 16, 24, 32}};
const word_places middle_places{
    sr4_port, 4, "0xa0", {0, 0, 0, 0, 0}, {22, 26, 42, 50, 34}, 3, {128, 144, 184, 192, 176}};
const word_places wide_places{
    wide_port, 8, "0xa0", {0, 0, 0x11, 0x11, 0x11}, {14, 16, 170, 154, 186}, 2, {128, 136, 184, 176, 192}};

double in_units(int item, double high_byte, double low_byte) {
    const double word = high_byte * 256 + low_byte;
    switch (item) {
    case 0:
        return (word >= 32768 ? word - 65536 : word) / 256;
    case 1:
        return word * 0.0001;
    case 2:
        return word * 0.002;
    default:
        return word == 0 ? -40 : 10 * std::log10(word * 0.0001);
    }
}

std::string item_word(int first, int item) {
    return "item=" + std::to_string(first + item);
}

std::string value_of(const optical_port &at, int item) {
    return optical_call("get_ddm_info", at, item_word(0x30000, item));
}

std::string warning_of(const optical_port &at, int item) {
    return optical_call("get_ddm_warning_info", at, item_word(0x50000, item));
}

std::string alarm_of(const optical_port &at, int item) {
    return optical_call("get_ddm_alarm_info", at, item_word(0x50000, item));
}

std::string threshold_of(const optical_port &at, int number) {
    return optical_call("get_threshold_info", at, item_word(0x20000, number));
}

// High and low bit of alarm and warning, as "ahigh alow whigh wlow".
std::string flags(const std::string &alarm, const std::string &warning) {
    std::string text;
    for (const std::string &answer : {alarm, warning}) {
        for (const char *name : {"high_bit_map", "low_bit_map"}) {
            const auto bits = numbers_in(answer, name);
            text += (text.empty() ? "" : " ") + std::to_string(static_cast<int>(bits.empty() ? -1 : bits[0]));
        }
    }
    return text;
}

} // namespace

TEST_F(OpticalDiagnostics, MeasurementsAreWhatTheMapSays) {
    for (const word_places &kind : {small_places, middle_places, wide_places}) {
        for (int item = 0; item < 5; ++item) {
            const int lanes = item < 2 ? 1 : kind.lanes;
            const auto lines =
                lines_of(answers({optical_read(kind.at, kind.device, kind.page[item], kind.value[item], 2 * lanes),
                                  value_of(kind.at, item)}));
            ASSERT_EQ(lines.size(), 2U);
            const auto bytes = numbers_in(lines[0], "data");
            const auto values = numbers_in(lines[1], "value={value");
            ASSERT_EQ(bytes.size(), static_cast<size_t>(2 * lanes));
            ASSERT_EQ(values.size(), 16U);
            EXPECT_EQ(numbers_in(lines[1], "count"), std::vector<double>{static_cast<double>(lanes)});
            for (int lane = 0; lane < lanes; ++lane) {
                const auto at = static_cast<size_t>(lane);
                EXPECT_NEAR(values[at], in_units(item, bytes[2 * at], bytes[2 * at + 1]), 1e-4)
                    << kind.at.port << " item " << item << " lane " << lane;
            }
        }
    }
}

TEST_F(OpticalDiagnostics, LimitsAreWhatTheMapSays) {
    for (const word_places &kind : {small_places, middle_places, wide_places}) {
        for (int item = 0; item < 5; ++item) {
            // In the map alarms and warnings of a value stand together, in the library all alarms come first.
            const auto lines =
                lines_of(answers({optical_read(kind.at, kind.device, kind.limits_page, kind.limits[item], 8),
                                  threshold_of(kind.at, 2 * item), threshold_of(kind.at, 2 * item + 1),
                                  threshold_of(kind.at, 14 + 2 * item), threshold_of(kind.at, 15 + 2 * item)}));
            ASSERT_EQ(lines.size(), 5U);
            const auto bytes = numbers_in(lines[0], "data");
            ASSERT_EQ(bytes.size(), 8U);
            for (size_t i = 0; i < 4; ++i) {
                const auto limit = numbers_in(lines[i + 1], "value");
                ASSERT_EQ(limit.size(), 1U);
                EXPECT_NEAR(limit[0], in_units(item, bytes[2 * i], bytes[2 * i + 1]), 1e-4)
                    << kind.at.port << " item " << item << " limit " << i;
            }
        }
    }
}

TEST_F(OpticalDiagnostics, LimitsOfASmallModule) {
    const double expected[]{75, -5, 3.63,  2.97,  85, 5,  3.5, -12.2, 3.5, -18.4,
                            70, 0,  3.465, 3.135, 80, 10, 0.5, -8.2,  0.5, -14.4};
    std::vector<std::string> calls;
    for (const int first : {0, 14}) {
        for (int number = 0; number < 10; ++number) {
            calls.push_back(threshold_of(lr_port, first + number));
        }
    }
    const auto lines = lines_of(answers(calls));
    ASSERT_EQ(lines.size(), 20U);
    for (size_t i = 0; i < lines.size(); ++i) {
        EXPECT_NEAR(numbers_in(lines[i], "value").at(0), expected[i], 0.02) << calls[i];
    }
    // 75 and -5 degrees, 70 and 0; then 3.63 V, 2.97 V, 3.465 V, 3.135 V.
    EXPECT_EQ(answers({optical_read(lr_port, "0xa2", 0, 0, 16)}),
              "0x0 data=[75 0 251 0 70 0 0 0 141 204 116 4 135 90 122 118]\n");
}

TEST_F(OpticalDiagnostics, UnitsOfASmallModule) {
    // 3.3 V, 34 mA, -2.2 dBm = 0.6026 mW; -2.1 dBm less 1.2 dB and eight kilometres of 0.35 dB: -6.1 dBm = 0.2455 mW.
    EXPECT_EQ(answers({optical_read(lr_port, "0xa2", 0, 98, 8)}), "0x0 data=[128 232 66 104 23 138 9 151]\n");
    EXPECT_NEAR(asked(value_of(lr_port, 1), "value={value").at(0), 3.3, 1e-6);
    EXPECT_NEAR(asked(value_of(lr_port, 2), "value={value").at(0), 34, 1e-6);
    EXPECT_NEAR(asked(value_of(lr_port, 3), "value={value").at(0), -2.2, 0.001);
    EXPECT_NEAR(asked(value_of(lr_port, 4), "value={value").at(0), -6.1, 0.002);
}

TEST_F(OpticalDiagnostics, ValuesBeyondALimitRaiseItsFlags) {
    struct crossing {
        std::string setting;
        int item;
        std::string flags;
    };
    const std::vector<crossing> crossings{
        {"voltage=34650", 1, "0 0 0 0"},     {"voltage=34651", 1, "0 0 1 0"},      {"voltage=36300", 1, "0 0 1 0"},
        {"voltage=36301", 1, "1 0 1 0"},     {"voltage=31350", 1, "0 0 0 0"},      {"voltage=31349", 1, "0 0 0 1"},
        {"voltage=29700", 1, "0 0 0 1"},     {"voltage=29699", 1, "0 1 0 1"},      {"wear=130", 2, "0 0 0 0"},
        {"wear=140", 2, "0 0 1 0"},          {"wear=160", 2, "1 0 1 0"},           {"power_offset=260", 3, "0 0 0 0"},
        {"power_offset=280", 3, "0 0 1 0"},  {"power_offset=580", 3, "1 0 1 0"},   {"power_offset=-590", 3, "0 0 0 0"},
        {"power_offset=-620", 3, "0 0 0 1"}, {"power_offset=-1010", 3, "0 1 0 1"}, {"heat=22000", 0, "0 0 0 0"},
        {"heat=23500", 0, "0 0 1 0"},        {"heat=26000", 0, "1 0 1 0"}};
    for (const crossing &each : crossings) {
        const std::string name = each.setting.substr(0, each.setting.find('='));
        const std::string healthy = name == "voltage" ? "33000" : name == "heat" ? "12000" : "0";
        const auto lines = lines_of(answers({alarm_of(lr_port, each.item), warning_of(lr_port, each.item)},
                                            {"slot9/optics/module/2/" + each.setting}));
        ASSERT_EQ(lines.size(), 2U);
        EXPECT_EQ(flags(lines[0], lines[1]), each.flags) << each.setting;
        answers({"drv_opt_init()"}, {"slot9/optics/module/2/" + name + "=" + healthy});
    }
}

// 1.2 dB in connectors and 2.8 dB on eight kilometres lie between.
TEST_F(OpticalDiagnostics, ReceivedPowerFollowsTheFibre) {
    struct arrival {
        std::string setting;
        double dbm;
        std::string flags;
        int is_dark;
    };
    const std::vector<arrival> arrivals{{"far_power=800", 4.0, "1 0 1 0", 0},
                                        {"far_power=500", 1.0, "0 0 1 0", 0},
                                        {"far_power=-1000", -14.0, "0 0 0 0", 0},
                                        {"far_power=-1100", -15.0, "0 0 0 1", 0},
                                        {"far_power=-1500", -19.0, "0 1 0 1", 0},
                                        {"far_power=-1700", -21.0, "0 1 0 1", 1},
                                        {"far_power=-210", -6.1, "0 0 0 0", 0},
                                        {"length=28000", -13.1, "0 0 0 0", 0},
                                        {"length=8000", -6.1, "0 0 0 0", 0},
                                        {"loss=920", -14.1, "0 0 0 0", 0},
                                        {"loss=120", -6.1, "0 0 0 0", 0},
                                        {"cut=1", -40, "0 1 0 1", 1},
                                        {"cut=0", -6.1, "0 0 0 0", 0}};
    for (const arrival &each : arrivals) {
        const auto lines =
            lines_of(answers({alarm_of(lr_port, 4), warning_of(lr_port, 4), value_of(lr_port, 4),
                              optical_call("get_los_status", lr_port), optical_read(lr_port, "0xa2", 0, 110, 1)},
                             {"chassis/optics/fibre/1/" + each.setting}));
        ASSERT_EQ(lines.size(), 5U);
        EXPECT_EQ(flags(lines[0], lines[1]), each.flags) << each.setting;
        EXPECT_NEAR(numbers_in(lines[2], "value={value").at(0), each.dbm, 0.03) << each.setting;
        EXPECT_EQ(numbers_in(lines[3], "value").at(0), each.is_dark) << each.setting;
        EXPECT_EQ(numbers_in(lines[4], "data").at(0), each.is_dark * 2) << each.setting;
    }
}

TEST_F(OpticalDiagnostics, FlagsOfASmallModuleOnItsBus) {
    // Alarms, two bytes without a meaning, warnings: high and low of temperature, voltage, bias, power sent; received.
    const std::string flag_bytes = optical_read(lr_port, "0xa2", 0, 112, 6);
    EXPECT_EQ(answers({flag_bytes}), "0x0 data=[0 0 0 0 0 0]\n");
    EXPECT_EQ(answers({flag_bytes}, {"slot9/optics/module/2/voltage=36301"}), "0x0 data=[32 0 0 0 32 0]\n");
    EXPECT_EQ(answers({flag_bytes}, {"slot9/optics/module/2/voltage=29699"}), "0x0 data=[16 0 0 0 16 0]\n");
    EXPECT_EQ(answers({flag_bytes}, {"slot9/optics/module/2/heat=26000", "slot9/optics/module/2/voltage=33000"}),
              "0x0 data=[128 0 0 0 128 0]\n");
    EXPECT_EQ(answers({flag_bytes}, {"slot9/optics/module/2/heat=12000", "slot9/optics/module/2/wear=160"}),
              "0x0 data=[8 0 0 0 8 0]\n");
    EXPECT_EQ(answers({flag_bytes}, {"slot9/optics/module/2/wear=0", "slot9/optics/module/2/power_offset=600"}),
              "0x0 data=[2 0 0 0 2 0]\n");
    EXPECT_EQ(answers({flag_bytes}, {"slot9/optics/module/2/power_offset=0", "chassis/optics/fibre/1/cut=1"}),
              "0x0 data=[0 64 0 0 0 64]\n");
}

TEST_F(OpticalDiagnostics, FlagsOfAMiddleModule) {
    // Received power 1 and 2, 3 and 4, bias, power sent: four bits each, high alarm first.
    EXPECT_EQ(answers({optical_read(cut_port, "0xa0", 0, 3, 2), optical_read(cut_port, "0xa0", 0, 6, 9)}),
              "0x0 data=[15 0]\n0x0 data=[1 0 0 85 85 0 0 0 0]\n");
    EXPECT_EQ(answers({optical_read(cut_port, "0xa0", 0, 4, 1), optical_read(cut_port, "0xa0", 0, 6, 9)},
                      {"slot9/optics/module/7/heat=26000", "slot9/optics/module/7/voltage=29000",
                       "slot9/optics/module/7/tx_fault=2", "chassis/optics/fibre/6/cut=0"}),
              "0x0 data=[2]\n0x0 data=[161 80 0 0 0 5 0 5 0]\n");
    EXPECT_EQ(asked(alarm_of(cut_port, 0), "high_bit_map").at(0), 1);
    EXPECT_EQ(asked(alarm_of(cut_port, 1), "low_bit_map").at(0), 1);
    EXPECT_EQ(asked(alarm_of(cut_port, 2), "low_bit_map").at(0), 2);
    EXPECT_EQ(asked(warning_of(cut_port, 3), "low_bit_map").at(0), 2);
    EXPECT_EQ(asked(alarm_of(cut_port, 4), "low_bit_map").at(0), 0);
    EXPECT_EQ(asked(optical_call("get_tx_fault_status", cut_port), "value").at(0), 1);
    EXPECT_EQ(asked(optical_call("get_tx_fault_status", {5, 22, "0xd"}), "value").at(0), 0);
}

TEST_F(OpticalDiagnostics, FlagsOfAWideModule) {
    const std::vector<std::string> settings{"slot9/optics/module/8/heat=26000", "slot9/optics/module/8/voltage=29000",
                                            "slot9/optics/module/8/tx_fault=0x21", "chassis/optics/fibre/7/cut=1"};
    EXPECT_EQ(answers({optical_read(wide_port, "0xa0", 0, 9, 1), optical_read(wide_port, "0xa0", 0x11, 135, 1),
                       optical_read(wide_port, "0xa0", 0x11, 139, 8), optical_read(wide_port, "0xa0", 0x11, 147, 6)},
                      settings),
              "0x0 data=[165]\n0x0 data=[33]\n0x0 data=[0 33 0 33 0 33 0 33]\n0x0 data=[255 0 0 255 0 255]\n");
    EXPECT_EQ(asked(alarm_of(wide_port, 0), "high_bit_map").at(0), 1);
    EXPECT_EQ(asked(warning_of(wide_port, 1), "low_bit_map").at(0), 1);
    EXPECT_EQ(asked(alarm_of(wide_port, 2), "low_bit_map").at(0), 0x21);
    EXPECT_EQ(asked(warning_of(wide_port, 3), "low_bit_map").at(0), 0x21);
    EXPECT_EQ(asked(alarm_of(wide_port, 4), "low_bit_map").at(0), 0xFF);
    EXPECT_EQ(asked(optical_call("get_los_status", wide_port), "value").at(0), 0xFF);
    EXPECT_EQ(asked(optical_call("get_los_status", {7, 31, "0x30"}), "value").at(0), 0x30);
    EXPECT_EQ(asked(optical_call("get_tx_fault_status", wide_port), "value").at(0), 1);
}

// The cooler holds the lasers at 45 degrees, with the more current the hotter the case is.
TEST_F(OpticalDiagnostics, ACooledModule) {
    const auto cooler = [&] { return asked(value_of(wide_port, 6), "value={value").at(0); };
    EXPECT_EQ(asked(value_of(wide_port, 5), "value={value").at(0), 45);
    const double current = cooler();
    EXPECT_GT(current, 0);
    EXPECT_LT(current, 20);
    const auto bytes = numbers_in(answers({optical_read(wide_port, "0xa0", 0, 18, 4)}), "data");
    EXPECT_EQ(bytes.at(2) * 256 + bytes.at(3), 45 * 256);
    EXPECT_EQ(answers({"drv_opt_init()"}, {"slot9/optics/module/8/heat=50000"}), ok);
    EXPECT_NEAR(cooler(), (100 + 25 - 45) * 1.2, 2);
    EXPECT_EQ(asked(alarm_of(wide_port, 6), "high_bit_map").at(0), 1);
    EXPECT_EQ(asked(warning_of(wide_port, 6), "high_bit_map").at(0), 1);
    EXPECT_EQ(asked(warning_of(wide_port, 5), "high_bit_map").at(0), 0);
    EXPECT_EQ(asked(value_of(wide_port, 5), "value={value").at(0), 45);
    const auto limits = lines_of(answers({threshold_of(wide_port, 10), threshold_of(wide_port, 11),
                                          threshold_of(wide_port, 12), threshold_of(wide_port, 27)}));
    EXPECT_EQ(numbers_in(limits.at(0), "value").at(0), 55);
    EXPECT_EQ(numbers_in(limits.at(1), "value").at(0), 35);
    EXPECT_NEAR(numbers_in(limits.at(2), "value").at(0), 90, 0.01);
    EXPECT_NEAR(numbers_in(limits.at(3), "value").at(0), -80, 0.01);
}

TEST_F(OpticalDiagnostics, WhatAModuleDoesNotMeasure) {
    EXPECT_EQ(answers({value_of(lr_port, 5), value_of(sr4_port, 6), value_of(copper_port, 0), value_of(copper_port, 4),
                       alarm_of(sr4_port, 5), warning_of(copper_port, 0), threshold_of(lr_port, 10),
                       threshold_of(copper_port, 0), threshold_of(sr4_port, 27)}),
              not_supported + not_supported + not_supported + not_supported + not_supported + not_supported +
                  not_supported + not_supported + not_supported);
}

TEST_F(OpticalDiagnostics, ItemsThatThereAreNot) {
    EXPECT_EQ(
        answers({value_of(wide_port, -1), value_of(wide_port, 7), alarm_of(wide_port, -1), alarm_of(wide_port, 7),
                 warning_of(wide_port, 7), threshold_of(wide_port, -1), threshold_of(wide_port, 28),
                 optical_call("get_diag_info_support_flag", lr_port, "item=15"), value_of({5, 21, "0"}, 3),
                 value_of({5, 21, "0xf0"}, 3), alarm_of({5, 21, "0x10"}, 0),
                 optical_call("get_los_status", {5, 21, "0"}), optical_call("get_tx_fault_status", {5, 21, "0"})}),
        bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value + bad_value +
            bad_value + bad_value + bad_value + bad_value);
}

TEST_F(OpticalDiagnostics, SupportFlags) {
    const auto supported = [&](const optical_port &at) {
        std::vector<std::string> calls;
        for (int item = 0; item < 15; ++item) {
            calls.push_back(optical_call("get_diag_info_support_flag", at, "item=" + std::to_string(item)));
        }
        std::string digits;
        for (const std::string &line : lines_of(answers(calls))) {
            digits += std::to_string(static_cast<int>(numbers_in(line, "flag").at(0)));
        }
        return digits;
    };
    EXPECT_EQ(supported(copper_port), "000000000000000");
    EXPECT_EQ(supported(lr_port), "111111001111100");
    EXPECT_EQ(supported(sr4_port), "111111001111100");
    EXPECT_EQ(supported(wide_port), "111111111111111");
}

// A lane that is not asked for has no number; all bits mean all lanes.
TEST_F(OpticalDiagnostics, LanesThatAreMeant) {
    const std::string some = answers({value_of({5, 21, "0x4"}, 3)});
    const auto values = numbers_in(some, "value={value");
    EXPECT_TRUE(std::isnan(values.at(0)) && std::isnan(values.at(1))) << some;
    EXPECT_NEAR(values.at(2), -0.59, 0.01);
    EXPECT_EQ(numbers_in(some, "count").at(0), 3);
    EXPECT_EQ(answers({value_of({5, 21, "0xffffffff"}, 3)}), answers({value_of(sr4_port, 3)}));
    EXPECT_EQ(asked(optical_call("get_los_status", {5, 22, "0x5"}), "value").at(0), 5);
    EXPECT_EQ(asked(alarm_of({5, 22, "0x6"}, 4), "low_bit_map").at(0), 6);
}

TEST_F(OpticalDiagnostics, FaultsOfTheDeliveredBoard) {
    EXPECT_EQ(asked(optical_call("get_tx_fault_status", failed_port), "value").at(0), 1);
    EXPECT_EQ(asked(optical_call("get_tx_fault_status", lr_port), "value").at(0), 0);
    EXPECT_EQ(asked(value_of(failed_port, 3), "value={value").at(0), -40);
    EXPECT_EQ(asked(value_of(failed_port, 2), "value={value").at(0), 0);
    EXPECT_EQ(asked(warning_of(warm_port, 0), "high_bit_map").at(0), 1);
    EXPECT_EQ(asked(alarm_of(warm_port, 0), "high_bit_map").at(0), 0);
    EXPECT_EQ(asked(optical_call("get_los_status", cut_port), "value").at(0), 15);
    seat_ = "lpu";
    EXPECT_EQ(asked(optical_call("get_los_status", dark_port_of_lpu), "value").at(0), 15);
    EXPECT_EQ(asked(optical_call("get_los_status", wide_port_of_lpu), "value").at(0), 0);
}

// It has no words to measure, but pins.
TEST_F(OpticalDiagnostics, PinsOfACopperModule) {
    const std::string los = optical_call("get_los_status", copper_port);
    const std::string fault = optical_call("get_tx_fault_status", copper_port);
    EXPECT_EQ(answers({los, fault}), "0x0 value=0\n0x0 value=0\n");
    EXPECT_EQ(answers({los, fault}, {"chassis/optics/fibre/0/cut=1", "slot9/optics/module/1/tx_fault=1"}),
              "0x0 value=1\n0x0 value=1\n");
}

// From the air around it to where it stays, in minutes, and then a little up and down.
TEST_F(OpticalDiagnostics, TemperatureRisesAndWanders) {
    const std::string temperature = value_of(lr_port, 0);
    answers({"drv_opt_init()"}, {"slot9/optics/cage/11/plugged=0"});
    const std::string told = answers({"drv_opt_init()", temperature, "wait 2", temperature, "wait 88", temperature,
                                      "wait 910", temperature, "wait 150", temperature, "wait 150", temperature},
                                     {"slot9/optics/cage/11/plugged=2"});
    const auto lines = lines_of(told);
    ASSERT_EQ(lines.size(), 7U);
    EXPECT_EQ(lines[1] + "\n", not_ready);
    const auto at = [&](size_t i) { return numbers_in(lines[i], "value={value").at(0); };
    // Fans at half speed: 25 degrees and twice 12; two thirds of the way after 90 seconds.
    EXPECT_NEAR(at(2), 25.5, 0.6);
    EXPECT_NEAR(at(3), 25 + 24 * 0.632, 0.6);
    for (const size_t late : {4U, 5U, 6U}) {
        EXPECT_NEAR(at(late), 49, 0.45);
    }
    EXPECT_NE(at(4), at(5));
    EXPECT_NE(at(5), at(6));
}

TEST_F(OpticalDiagnostics, TemperatureFollowsTheAir) {
    EXPECT_NEAR(
        numbers_in(answers({value_of(lr_port, 0)}, {"chassis/temp/ambient/0/celsius=40"}), "value={value").at(0), 64,
        0.45);
    EXPECT_NEAR(numbers_in(answers({value_of(lr_port, 0)},
                                   {"chassis/temp/ambient/0/celsius=-40", "slot9/optics/module/2/heat=0"}),
                           "value={value")
                    .at(0),
                -40, 0.45);
    EXPECT_EQ(asked(alarm_of(lr_port, 0), "low_bit_map").at(0), 1);
}

// On the bus it says so, and has no measurements yet.
TEST_F(OpticalDiagnostics, WhileAModuleComesUp) {
    answers({"drv_opt_init()"},
            {"slot9/optics/cage/11/plugged=0", "slot9/optics/cage/21/plugged=0", "slot9/optics/cage/31/plugged=0"});
    const std::vector<std::string> calls{"drv_opt_init()",
                                         "wait 1",
                                         optical_read(lr_port, "0xa2", 0, 96, 22),
                                         optical_read(sr4_port, "0xa0", 0, 2, 1),
                                         optical_read(wide_port, "0xa0", 0, 3, 1),
                                         optical_call("get_los_status", lr_port),
                                         optical_call("get_tx_fault_status", lr_port),
                                         alarm_of(sr4_port, 0),
                                         value_of(wide_port, 0),
                                         "wait 1",
                                         optical_read(lr_port, "0xa2", 0, 110, 1),
                                         optical_read(sr4_port, "0xa0", 0, 2, 1),
                                         optical_read(wide_port, "0xa0", 0, 3, 1)};
    EXPECT_EQ(answers(calls, {"slot9/optics/cage/11/plugged=2", "slot9/optics/cage/21/plugged=6",
                              "slot9/optics/cage/31/plugged=8"}),
              ok + "0x0 data=[0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 0 0 0 0 0 0 0]\n0x0 data=[1]\n0x0 data=[4]\n" + not_ready +
                  not_ready + not_ready + not_ready + "0x0 data=[0]\n0x0 data=[0]\n0x0 data=[6]\n");
}

} // namespace kestro_tests
