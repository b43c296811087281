// optical_test: the sub-commands that are answered with one value.
#include <gtest/gtest.h>

#include "tests/modules/optical_runs.h"

namespace kestro_tests::optical {

namespace {

// The answers of one operation with the lines about them; the first is also given with all forms of words.
struct value_row {
    std::string name;
    std::string operation;
    struct told {
        std::string answer;
        std::string line;
    };
    std::vector<told> answers;
    std::vector<told> failures;
};

const std::vector<value_row> value_rows = {
    {"get_optical_present_status",
     "drv_opt_get_present_status",
     {{"0 value=1", "present_status: PRESENT  value = 1 ret = 0x0\n"},
      {"0 value=0", "present_status: NO PRESENT  value = 0 ret = 0x0\n"},
      {"0 value=2", "present_status: NO PRESENT  value = 2 ret = 0x0\n"},
      {"0 value=0xffffffff", "present_status: NO PRESENT  value = -1 ret = 0x0\n"},
      {"0", "present_status: NO PRESENT  value = 0 ret = 0x0\n"}},
     {{"0x811101a4", "present_status: NO PRESENT  value = 0 ret = 0x811101a4\n"},
      {"1 value=1", "present_status: PRESENT  value = 1 ret = 0x1\n"}}},
    {"get_optical_physical_present_status",
     "drv_opt_get_physical_present_status",
     {{"0 value=1", "physical_present_status: PRESENT  value = 1 ret = 0x0\n"},
      {"0 value=0", "physical_present_status: NO PRESENT  value = 0 ret = 0x0\n"},
      {"0 value=2", "physical_present_status: NO PRESENT  value = 2 ret = 0x0\n"}},
     {{"0x811101a4", "physical_present_status: NO PRESENT  value = 0 ret = 0x811101a4\n"},
      {"1 value=1", "physical_present_status: PRESENT  value = 1 ret = 0x1\n"}}},
    {"get_optical_los_status",
     "drv_opt_get_los_status",
     {{"0 value=1", "los_status: LOS  value = 1 ret = 0x0\n"},
      {"0 value=0", "los_status: NO LOS  value = 0 ret = 0x0\n"},
      {"0 value=2", "los_status: LOS  value = 2 ret = 0x0\n"},
      {"0 value=0x80000000", "los_status: LOS  value = -2147483648 ret = 0x0\n"}},
     {{"0x811101a4", "los_status: NO LOS  value = 0 ret = 0x811101a4\n"},
      {"1 value=8", "los_status: LOS  value = 8 ret = 0x1\n"}}},
    {"get_optical_tx_fault_status",
     "drv_opt_get_tx_fault_status",
     {{"0 value=1", "tx_fault_status :FAULT  value = 1 ret = 0x0\n"},
      {"0 value=0", "tx_fault_status :NO FAULT  value = 0 ret = 0x0\n"},
      {"0 value=2", "tx_fault_status :NO FAULT  value = 2 ret = 0x0\n"}},
     {{"0x811101a4", "tx_fault_status :NO FAULT  value = 0 ret = 0x811101a4\n"},
      {"1 value=1", "tx_fault_status :FAULT  value = 1 ret = 0x1\n"}}},
    {"get_optical_physical_pull_status",
     "drv_opt_get_physical_pull_status",
     {{"0 value=1", "pull_status: PULL  value = 1\n"},
      {"0 value=0", "pull_status: NO PULL  value = 0\n"},
      {"0 value=2", "pull_status: NO PULL  value = 2\n"},
      {"0 value=0xffffffff", "pull_status: NO PULL  value = -1\n"}},
     {{"0x811101a4", "pull_status: NO PULL  value = 0\n"}, {"1 value=1", "pull_status: PULL  value = 1\n"}}},
    {"get_optical_encode_type",
     "drv_opt_get_encode_type",
     {{"0 value=3", "encode_type = 3\n"}, {"0", "encode_type = 0\n"}, {"0 value=0xffffffff", "encode_type = -1\n"}},
     {{"0x811101a4", "encode_type = 0\n"}, {"1 value=5", "encode_type = 5\n"}}},
    {"get_optical_linear_attr",
     "drv_opt_get_linear_attr",
     {{"0 value=1", "linear_attr: TYPE_LINEAR  value = 1 ret = 0x0\n"},
      {"0 value=0", "linear_attr: TYPE_NO_LINEAR  value = 0 ret = 0x0\n"},
      {"0 value=2", "linear_attr: TYPE_NO_LINEAR  value = 2 ret = 0x0\n"}},
     {{"0x811101a4", "linear_attr: TYPE_NO_LINEAR  value = 0 ret = 0x811101a4\n"},
      {"1 value=1", "linear_attr: TYPE_LINEAR  value = 1 ret = 0x1\n"}}},
    {"get_optical_lane_num",
     "drv_opt_get_lane_num",
     {{"0 lane_num=8", "lane_num = 8, ret = 0\n"},
      {"0", "lane_num = 0, ret = 0\n"},
      {"0 lane_num=0xffffffff", "lane_num = -1, ret = 0\n"}},
     {{"0x811101a4", "lane_num = 0, ret = -2129591900\n"}, {"1 lane_num=4", "lane_num = 4, ret = 1\n"}}},
    {"get_optical_bus_status",
     "drv_opt_bus_status_get",
     {{"0 value=1", "bus status: POK, value = 1 ret = 0x0\n"},
      {"0 value=0", "bus status: OK, value = 0 ret = 0x0\n"},
      {"0 value=0xffffffff", "bus status: POK, value = -1 ret = 0x0\n"}},
     {{"0x811101a4", "bus status: OK, value = 0 ret = 0x811101a4\n"},
      {"1 value=2", "bus status: POK, value = 2 ret = 0x1\n"}}},
};

row row_of(const value_row &values, const value_row::told &told) {
    return {values.name, "", values.operation + "(@) = " + told.answer + "\n", told.line};
}

} // namespace

TEST(OpticalStatusTest, EachAnswerHasItsLine) {
    for (const value_row &values : value_rows) {
        for (const value_row::told &told : values.answers) {
            expect_row(row_of(values, told));
        }
    }
}

TEST(OpticalStatusTest, FailuresAreShownWithTheValueThatTheDriverLeft) {
    for (const value_row &values : value_rows) {
        for (const value_row::told &told : values.failures) {
            expect_failed_row(row_of(values, told));
        }
    }
}

TEST(OpticalStatusTest, WordsMayBeTooManyTooFewOrNoNumbers) {
    for (const value_row &values : value_rows) {
        expect_all_forms(row_of(values, values.answers.front()));
    }
}

// Lanes that are not named are asked first, of a selector without lanes, and then once more for the line.
TEST(OpticalStatusTest, NumberOfLanesIsAskedTwiceWithoutLanes) {
    expect_success("optical_test get_optical_lane_num 9 3",
                   begin_calls("9") +
                       "drv_opt_get_lane_num(inst_id=9, port_para={package_type=1 port=3 lanebitmap=0}) = 0 "
                       "lane_num=2\n"
                       "drv_opt_get_lane_num(inst_id=9, port_para={package_type=1 port=3 lanebitmap=3}) = 0 "
                       "lane_num=8\n" +
                       end_call("9"),
                   begin_lines + "inst_id = 0x9, port_para: package_type = 1, package 0, port = 3, lanebitmap = 0x3\n"
                                 "lane_num = 8, ret = 0\n");
}

} // namespace kestro_tests::optical
