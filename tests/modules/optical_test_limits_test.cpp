// optical_test: a module's thresholds, and how far it reaches.
#include <gtest/gtest.h>

#include "tests/modules/optical_runs.h"

namespace kestro_tests::optical {

namespace {

const char *const threshold_lines[] = {
    "TEMP_HIGH_ALARM           Threshold      :", "TEMP_LOW_ALARM            Threshold      :",
    "VOLT_HIGH_ALARM           Threshold      :", "VOLT_LOW_ALARM            Threshold      :",
    "BIAS_HIGH_ALARM           Threshold      :", "BIAS_LOW_ALARM            Threshold      :",
    "TXPOWER_HIGH_ALARM        Threshold      :", "TXPOWER_LOW_ALARM         Threshold      :",
    "RXPOWER_HIGH_ALARM        Threshold      :", "RXPOWER_LOW_ALARM         Threshold      :",
    "LASER_TEMP_HIGH_ALARM     Threshold      :", "LASER_TEMP_LOW_ALARM      Threshold      :",
    "TEC_CURRENT_HIGH_ALARM    Threshold      :", "TEC_CURRENT_LOW_ALARM     Threshold      :",
    "TEMP_HIGH_WARNING         Threshold      :", "TEMP_LOW_WARNING          Threshold      :",
    "VOLT_HIGH_WARNING         Threshold      :", "VOLT_LOW_WARNING          Threshold      :",
    "BIAS_HIGH_WARNING         Threshold      :", "BIAS_LOW_WARNING          Threshold      :",
    "TXPOWER_HIGH_WARNING      Threshold      :", "TXPOWER_LOW_WARNING       Threshold      :",
    "RXPOWER_HIGH_WARNING      Threshold      :", "RXPOWER_LOW_WARNING       Threshold      :",
    "LASER_TEMP_HIGH_WARNING   Threshold      :", "LASER_TEMP_LOW_WARNING    Threshold      :",
    "TEC_CURRENT_HIGH_WARNING  Threshold      :", "TEC_CURRENT_LOW_WARNING   Threshold      :",
};

const char *const threshold_items[] = {
    "0x20000", "0x20001", "0x20002", "0x20003", "0x20004", "0x20005", "0x20006", "0x20007", "0x20008", "0x20009",
    "0x2000a", "0x2000b", "0x2000c", "0x2000d", "0x2000e", "0x2000f", "0x20010", "0x20011", "0x20012", "0x20013",
    "0x20014", "0x20015", "0x20016", "0x20017", "0x20018", "0x20019", "0x2001a", "0x2001b",
};

const std::string dashed_line = "-------------------------------------------------------------------\n";

std::string listed_thresholds(const std::vector<std::string> &values) {
    std::string lines = dashed_line + "Threshold information:\n";
    for (size_t i = 0; i < values.size(); ++i) {
        lines += threshold_lines[i] + values[i] + "\n";
    }
    return lines + dashed_line;
}

// Each threshold has its own value: 0.5, 1.5, 2.5 and so on.
row distinct_thresholds(const std::string &first_answer, const std::string &last_answer) {
    row one = {"get_optical_threshold_info", "", "", ""};
    std::vector<std::string> values;
    for (size_t i = 0; i < std::size(threshold_items); ++i) {
        const std::string value = std::to_string(i) + ".5";
        const std::string answer = i == 0 ? first_answer : i == 27 ? last_answer : "0";
        one.calls += "drv_opt_get_threshold_info(@, item=" + std::string(threshold_items[i]) + ") = " + answer +
                     " value=" + value + "\n";
        values.push_back(value + "0");
    }
    one.body = listed_thresholds(values);
    return one;
}

row distance(const std::string &answer, const std::vector<std::string> &shown) {
    return {"get_optical_trans_distance", "", "drv_opt_get_trans_distance(@) = " + answer + "\n",
            dashed_line +
                "Threshold information:\n"
                "om1_distance         :" +
                shown.at(0) + "\nom2_distance         :" + shown.at(1) + "\nom3_distance         :" + shown.at(2) +
                "\nom4_distance         :" + shown.at(3) + "\nsm_distance          :" + shown.at(4) +
                "\nsm_fec_distance      :" + shown.at(5) + "\nsm_no_fec_distance   :" + shown.at(6) +
                "\ncopper_distance      :" + shown.at(7) + "\n" + dashed_line};
}

} // namespace

TEST(OpticalLimitsTest, ThresholdsAreListedWithTheirNames) {
    const row one = distinct_thresholds("0", "0");
    expect_all_forms(one);
    std::vector<std::string> calls;
    for (const char *item : threshold_items) {
        calls.push_back("drv_opt_get_threshold_info(@, item=" + std::string(item) + ")");
    }
    expect_calls(one, calls);
}

TEST(OpticalLimitsTest, LastResultIsThatOfTheThresholds) {
    expect_row(distinct_thresholds("0x811101a4", "0"));
    expect_failed_row(distinct_thresholds("0", "0x811101a4"));
    expect_failed_row({"get_optical_threshold_info", "", "drv_opt_get_threshold_info(@) = 0x811101a4\n",
                       listed_thresholds(std::vector<std::string>(28, "0.00"))});
}

// What a threshold's query does not write is 0, whatever the one before it said.
TEST(OpticalLimitsTest, ThresholdsThatAreNoNumbersAreShownAsSuch) {
    std::vector<std::string> values(28, "0.00");
    values.at(0) = "nan";
    values.at(1) = "-inf";
    values.at(2) = "-0.00";
    values.at(27) = "-1000000015047466219876688855040.00";
    expect_row({"get_optical_threshold_info", "",
                "drv_opt_get_threshold_info(@, item=0x20000) = 0 value=nan\n"
                "drv_opt_get_threshold_info(@, item=0x20001) = 0 value=-inf\n"
                "drv_opt_get_threshold_info(@, item=0x20002) = 0 value=-0.0\n"
                "drv_opt_get_threshold_info(@, item=0x2001b) = 0 value=-1e30\n"
                "drv_opt_get_threshold_info(@) = 0\n",
                listed_thresholds(values)});
}

TEST(OpticalLimitsTest, DistancesAreListedByKindOfCable) {
    expect_all_forms(distance("0 distance={om1=33 om2=82.5 om3=300 om4=400.25 sm=10000 sm_fec=40000 sm_no_fec=30000"
                              " copper=7}",
                              {"33.00", "82.50", "300.00", "400.25", "10000.00", "40000.00", "30000.00", "7.00"}));
    const std::vector<std::string> nowhere(8, "0.00");
    expect_row(distance("0", nowhere));
    expect_failed_row(distance("0x811101a4", nowhere));
    expect_failed_row(
        distance("1 distance={om1=nan copper=-inf}", {"nan", "0.00", "0.00", "0.00", "0.00", "0.00", "0.00", "-inf"}));
}

} // namespace kestro_tests::optical
