// optical_test: what a module measures, and its warnings and alarms.
#include <gtest/gtest.h>

#include "tests/modules/optical_runs.h"

namespace kestro_tests::optical {

namespace {

const row ddm = {"get_optical_ddm_info", "",
                 "drv_opt_get_ddm_info(@, item=0x30003) = 0 value={value=[-1.5 0.25] count=2}\n"
                 "drv_opt_get_ddm_info(@, item=0x30004) = 0 value={value=[-40 -3.125] count=2}\n"
                 "drv_opt_get_ddm_info(@, item=0x30000) = 0 value={value=[36.5 99] count=1}\n"
                 "drv_opt_get_ddm_info(@, item=0x30002) = 0 value={value=[6.75 7] count=2}\n"
                 "drv_opt_get_ddm_info(@, item=0x30001) = 0 value={value=[3.25 99] count=1}\n",
                 "Realtime information:\n"
                 "realtime temperature            :36.50\n"
                 "realtime voltage                :3.25\n"
                 "realtime Lane[0] bias           :6.75\n"
                 "realtime Lane[0] txpower        :-1.50\n"
                 "realtime Lane[0] rxpower        :-40.00\n"
                 "realtime Lane[1] bias           :7.00\n"
                 "realtime Lane[1] txpower        :0.25\n"
                 "realtime Lane[1] rxpower        :-3.12\n"};

// Warnings or alarms: the operation, and the lines of a bitmap and a value.
struct limits {
    std::string name;
    std::string operation;
    std::string title;
    std::string high;
    std::string low;
    std::string value;
    std::vector<std::string> items;
};

const limits warnings = {
    "get_optical_ddm_warning_info",
    "drv_opt_get_ddm_warning_info",
    "ddm_warning_info,ret = ",
    "ddm_warning_value.warning_bit_map.highWarning_bit_map :",
    "ddm_warning_value.warning_bit_map.lowWarning_bit_map :",
    "ddm_warning_value.realtime_value.value",
    {"WARNING_TEMP", "WARNING_VOLTAGE", "WARNING_BIAS", "WARNING_TXPOWER", "WARNING_RXPOWER", "WARNING_LASER_TEMP",
     "WARNING_TEC_CURRENT"},
};

const limits alarms = {
    "get_optical_ddm_alarm_info",
    "drv_opt_get_ddm_alarm_info",
    "ddm_alarm_info,ret = ",
    "ddm_alarm_value.alarm_bit_map.highAlarm_bit_map :",
    "ddm_alarm_value.alarm_bit_map.lowAlarm_bit_map :",
    "ddm_alarm_value.realtime_value.value",
    {"ALARM_TEMP", "ALARM_VOLTAGE", "ALARM_BIAS", "ALARM_TXPOWER", "ALARM_RXPOWER", "ALARM_LASER_TEMP",
     "ALARM_TEC_CURRENT"},
};

// The lines of items without values and with the same bitmaps.
std::string bare_lines(const limits &kind, const std::string &ret, const std::string &high, const std::string &low) {
    std::string lines;
    for (const std::string &item : kind.items) {
        lines += "show " + item + " " + kind.title + ret + "\n" + kind.high + high + "\n" + kind.low + low + "\n";
    }
    return lines;
}

// Different answers for all seven items: the second fails, the third has two values, the last has one.
std::string seven_calls(const limits &kind, const std::string &record) {
    const std::string call = kind.operation + "(@, item=0x5000";
    return call + "0, reserved=0) = 0 " + record + "={high_bit_map=1 low_bit_map=2}\n" + call +
           "1, reserved=0) = 0x811101a4 " + record + "={high_bit_map=3}\n" + call + "2, reserved=0) = 0 " + record +
           "={low_bit_map=0xffffffff realtime_value={value=[6.5 -0.004] count=2}}\n" + call + "3, reserved=0) = 0\n" +
           call + "4, reserved=0) = 7\n" + call + "5, reserved=0) = 0 " + record + "={high_bit_map=0x80000000}\n" +
           call + "6, reserved=0) = 0 " + record + "={realtime_value={value=[1e9] count=1}}\n";
}

void expect_limits(const limits &kind, const std::string &record) {
    const auto show = [&](size_t item, const std::string &ret, const std::string &high, const std::string &low) {
        return "show " + kind.items.at(item) + " " + kind.title + ret + "\n" + kind.high + high + "\n" + kind.low +
               low + "\n";
    };
    expect_all_forms({kind.name, "", seven_calls(kind, record),
                      show(0, "0x0", "0x1", "0x2") + show(1, "0x811101a4", "0x3", "0x0") +
                          show(2, "0x0", "0x0", "0xffffffff") + kind.value + "[0]           :6.50\n" + kind.value +
                          "[1]           :-0.00\n" + show(3, "0x0", "0x0", "0x0") + show(4, "0x7", "0x0", "0x0") +
                          show(5, "0x0", "0x80000000", "0x0") + show(6, "0x0", "0x0", "0x0") + kind.value +
                          "[0]           :1000000000.00\n"});
}

// Sixteen values, as many as a record holds, the N-th of them N.
const std::string sixteen = "[0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15]";

} // namespace

TEST(OpticalMeasurementsTest, MeasuredValuesAreShownLaneByLane) {
    expect_all_forms(ddm);
    expect_calls(ddm, {
                          "drv_opt_get_ddm_info(@, item=0x30003)",
                          "drv_opt_get_ddm_info(@, item=0x30004)",
                          "drv_opt_get_ddm_info(@, item=0x30000)",
                          "drv_opt_get_ddm_info(@, item=0x30002)",
                          "drv_opt_get_ddm_info(@, item=0x30001)",
                      });
}

TEST(OpticalMeasurementsTest, TransmitPowerTellsHowManyLanesThereAre) {
    expect_row({"get_optical_ddm_info", "",
                "drv_opt_get_ddm_info(@, item=0x30003) = 0 value={value=[1] count=1}\n"
                "drv_opt_get_ddm_info(@) = 0 value={value=[5 6 7] count=3}\n",
                "Realtime information:\n"
                "realtime temperature            :5.00\n"
                "realtime voltage                :5.00\n"
                "realtime Lane[0] bias           :5.00\n"
                "realtime Lane[0] txpower        :1.00\n"
                "realtime Lane[0] rxpower        :5.00\n"});
}

TEST(OpticalMeasurementsTest, LastResultIsThatOfTheMeasuredValues) {
    const std::string nothing = "Realtime information:\n"
                                "realtime temperature            :0.00\n"
                                "realtime voltage                :0.00\n";
    expect_row({"get_optical_ddm_info", "",
                "drv_opt_get_ddm_info(@, item=0x30001) = 0\n"
                "drv_opt_get_ddm_info(@) = 0x811101a4\n",
                nothing});
    expect_failed_row({"get_optical_ddm_info", "",
                       "drv_opt_get_ddm_info(@, item=0x30001) = 0x811101a4\n"
                       "drv_opt_get_ddm_info(@) = 0\n",
                       nothing});
}

TEST(OpticalMeasurementsTest, ValuesThatAreNoNumbersAreShownAsSuch) {
    expect_row({"get_optical_ddm_info", "",
                "drv_opt_get_ddm_info(@, item=0x30003) = 0 value={value=[nan inf -inf -0.0] count=4}\n"
                "drv_opt_get_ddm_info(@, item=0x30004) = 0 value={value=[3.4028235e38 1e-45 0.005 0.015] count=4}\n"
                "drv_opt_get_ddm_info(@, item=0x30000) = 0 value={value=[nan] count=1}\n"
                "drv_opt_get_ddm_info(@, item=0x30002) = 0 value={value=[16777216 0.125 0.375 -0.001] count=4}\n"
                "drv_opt_get_ddm_info(@, item=0x30001) = 0 value={value=[inf] count=1}\n",
                "Realtime information:\n"
                "realtime temperature            :nan\n"
                "realtime voltage                :inf\n"
                "realtime Lane[0] bias           :16777216.00\n"
                "realtime Lane[0] txpower        :nan\n"
                "realtime Lane[0] rxpower        :340282346638528859811704183484516925440.00\n"
                "realtime Lane[1] bias           :0.12\n"
                "realtime Lane[1] txpower        :inf\n"
                "realtime Lane[1] rxpower        :0.00\n"
                "realtime Lane[2] bias           :0.38\n"
                "realtime Lane[2] txpower        :-inf\n"
                // The nearest floats to 0.005 and 0.015 are a little below.
                "realtime Lane[2] rxpower        :0.00\n"
                "realtime Lane[3] bias           :-0.00\n"
                "realtime Lane[3] txpower        :-0.00\n"
                "realtime Lane[3] rxpower        :0.01\n"});
}

TEST(OpticalMeasurementsTest, NoMoreThanSixteenLanesAreShown) {
    const std::string head = "Realtime information:\n"
                             "realtime temperature            :0.00\n"
                             "realtime voltage                :0.00\n";
    std::string lanes;
    for (int i = 0; i < 16; ++i) {
        const std::string lane = "realtime Lane[" + std::to_string(i) + "] ";
        const std::string value = std::to_string(i) + ".00\n";
        lanes +=
            lane + "bias           :" + value + lane + "txpower        :" + value + lane + "rxpower        :" + value;
    }
    for (const char *count : {"16", "17", "0xffffffff"}) {
        expect_row({"get_optical_ddm_info", "",
                    "drv_opt_get_ddm_info(@) = 0 value={value=" + sixteen + " count=" + count + "}\n", head + lanes});
    }
}

TEST(OpticalMeasurementsTest, WarningsAreShownItemByItem) {
    expect_limits(warnings, "warning");
}

TEST(OpticalMeasurementsTest, AlarmsAreShownItemByItem) {
    expect_limits(alarms, "alarm");
}

TEST(OpticalMeasurementsTest, WarningsAndAlarmsAreAskedInTheOrderOfTheirItems) {
    for (const limits &kind : {warnings, alarms}) {
        std::vector<std::string> calls;
        for (const char *item : {"0x50000", "0x50001", "0x50002", "0x50003", "0x50004", "0x50005", "0x50006"}) {
            calls.push_back(kind.operation + "(@, item=" + item + ", reserved=0)");
        }
        expect_calls({kind.name, "", kind.operation + "(@) = 0\n", ""}, calls);
    }
}

TEST(OpticalMeasurementsTest, LastResultIsThatOfTheWarningsAndAlarms) {
    for (const limits &kind : {warnings, alarms}) {
        expect_failed_row(
            {kind.name, "", kind.operation + "(@) = 0x811101a4\n", bare_lines(kind, "0x811101a4", "0x0", "0x0")});
        std::string lines = bare_lines(kind, "0x0", "0x0", "0x0");
        lines.replace(lines.rfind("ret = 0x0"), 9, "ret = 0x5");
        expect_failed_row(
            {kind.name, "", kind.operation + "(@, item=0x50006) = 5\n" + kind.operation + "(@) = 0\n", lines});
    }
}

TEST(OpticalMeasurementsTest, NoMoreThanSixteenValuesOfAnItemAreShown) {
    const std::vector<std::pair<limits, std::string>> kinds = {{warnings, "warning"}, {alarms, "alarm"}};
    for (const auto &[kind, record] : kinds) {
        std::string values;
        for (int i = 0; i < 16; ++i) {
            values += kind.value + "[" + std::to_string(i) + "]           :" + std::to_string(i) + ".00\n";
        }
        for (const char *count : {"16", "17", "0xffffffff"}) {
            std::string lines = bare_lines(kind, "0x0", "0x0", "0x0");
            lines += values;
            expect_row({kind.name, "",
                        kind.operation + "(@, item=0x50006) = 0 " + record + "={realtime_value={value=" + sixteen +
                            " count=" + count + "}}\n" + kind.operation + "(@) = 0\n",
                        lines});
        }
    }
}

} // namespace kestro_tests::optical
