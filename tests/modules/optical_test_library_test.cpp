// optical_test: the driver library that a board may lack, and operations that it may lack.
#include <gtest/gtest.h>

#include "tests/modules/optical_runs.h"
#include "tests/support/library_faults.h"

namespace kestro_tests::optical {

namespace {

const std::string library = "optical_lib";

// What each sub-command looks up for itself, in this order. With the delay there is no first time: a library without
// it ends the run before the sub-command.
struct looked_up {
    std::string name;
    std::vector<std::string> operations;
};

const std::vector<looked_up> sub_commands = {
    {"get_optical_present_status", {"drv_opt_get_present_status"}},
    {"get_optical_physical_present_status", {"drv_opt_get_physical_present_status"}},
    {"get_optical_common_info", {"drv_opt_get_common_info"}},
    {"get_optical_trans_distance", {"drv_opt_get_trans_distance"}},
    {"get_optical_los_status", {"drv_opt_get_los_status"}},
    {"get_optical_tx_fault_status", {"drv_opt_get_tx_fault_status"}},
    {"get_optical_ddm_info", {"drv_opt_get_ddm_info"}},
    {"get_optical_ddm_warning_info", {"drv_opt_get_ddm_warning_info"}},
    {"get_optical_ddm_alarm_info", {"drv_opt_get_ddm_alarm_info"}},
    {"get_optical_threshold_info", {"drv_opt_get_threshold_info"}},
    {"test_optical_disable_status",
     {"drv_opt_get_disable_status", "drv_opt_set_disable_status", "drv_opt_get_ddm_info"}},
    {"get_optical_physical_pull_status", {"drv_opt_get_physical_pull_status"}},
    {"get_optical_encode_type", {"drv_opt_get_encode_type"}},
    {"get_optical_type", {"drv_opt_get_type"}},
    {"get_optical_diag_info_support_flag", {"drv_opt_get_diag_info_support_flag"}},
    {"get_optical_linear_attr", {"drv_opt_get_linear_attr"}},
    {"get_optical_lane_num", {"drv_opt_get_lane_num"}},
    {"get_optical_common_register_info", {"drv_opt_get_common_register_info"}},
    {"set_optical_rate", {"drv_opt_set_rate"}},
    {"get_optical_bus_status", {"drv_opt_bus_status_get"}},
    {"set_optical_bus_status_recovery", {"drv_opt_bus_status_recovery"}},
    {"get_optical_dfx_info", {"drv_opt_get_dfx_info"}},
    {"read_optical_register", {"drv_opt_register_read"}},
    {"write_optical_register", {"drv_opt_register_write"}},
};

std::string missing_line(const std::string &operation) {
    return "dlsym " + operation + " fail, fd 0x<handle>\r\n";
}

std::string closed_line(const std::string &operation) {
    return "dlsym " + operation + " fail, fd 0x0\r\n";
}

// The run ends before its sub-command, and the library is closed by then.
void expect_not_begun(const std::string &operation, const std::string &script, const std::string &lines) {
    expect_run_with(lacking(library, operation), "optical_test get_optical_encode_type 9 3 0 1", script,
                    lines + missing_line(operation) + closed_line("drv_opt_exit") + operate_fail("optical_test"), 255);
}

void expect_sub_command_without(const std::string &name, const std::string &operation, const std::string &lines) {
    expect_run_with(lacking(library, operation), "optical_test " + name + " 9 3 0 1", begin_calls("9"),
                    begin_lines + lines + timing_lines + operate_fail(name) + closed_line("drv_opt_exit") +
                        operate_fail("optical_test"),
                    255);
}

} // namespace

TEST(OpticalLibraryTest, ItIsOpenedOnceAndNeverUnloaded) {
    if (lists_lines()) {
        return;
    }
    const row one = {"get_optical_encode_type", "", "drv_opt_get_encode_type(@) = 0\n", ""};
    const library_use use = library_used(library, line_of(one, port_3), script_of(one, port_3));
    EXPECT_EQ(use.opened, 1);
    EXPECT_TRUE(use.stays);
}

TEST(OpticalLibraryTest, WithoutItEverySubCommandFails) {
    const std::string lines = "dlopen liboptical_lib.so fail <loader> \r\n" + closed_line("drv_opt_init") +
                              closed_line("drv_opt_exit") + operate_fail("optical_test");
    for (const looked_up &one : sub_commands) {
        expect_run_with(missing(library), "optical_test " + one.name + " 9 3 0 1", "", lines, 255);
    }
    expect_run_with(missing(library), "optical_test", "", lines, 255);
    expect_run_with(no_library(library), "optical_test get_optical_encode_type 9 3 0 1", "", lines, 255);
}

TEST(OpticalLibraryTest, ItsOwnCrashEndsTheRun) {
    expect_run_with(crashing(library), "optical_test get_optical_encode_type 9 3 0 1", "", "", 139);
}

TEST(OpticalLibraryTest, EachStepBeforeTheSubCommandNeedsItsOperation) {
    const std::string init = "drv_opt_init(inst_id=9) = 0\n";
    const std::string map = "drv_opt_get_card_port_map(slot=9, frame=0, size=192) = 0 "
                            "map=[{package_type=1 number=4 start_id=1} {package_type=15}]\n";
    const std::string name = "drv_cbb_optical_get_port_type_str_from_value(value=1, size=16) = 0 text=\"QSFP\"\n";
    expect_not_begun("drv_opt_init", "", "");
    expect_not_begun("drv_opt_get_card_port_map", init, "");
    expect_not_begun("drv_cbb_optical_get_port_type_str_from_value", init + map, "");
    expect_not_begun("drv_cbb_optical_delay_nointerupt", init + map + name,
                     "package_type:QSFP      , package_type_value:1, number:  4, start_id:  1\n");
}

TEST(OpticalLibraryTest, ShutdownWithoutItsOperationIsReportedAlone) {
    const row one = {"get_optical_encode_type", "", "drv_opt_get_encode_type(" + port_3.told + ") = 0 value=3\n", ""};
    expect_run_with(lacking(library, "drv_opt_exit"), line_of(one, port_3), begin_calls("9") + one.calls,
                    begin_lines + port_3.line + "encode_type = 3\n" + timing_lines + missing_line("drv_opt_exit"), 0);
    expect_run_with(
        lacking(library, "drv_opt_exit"), line_of(one, port_3), "drv_opt_init(inst_id=9) = 1\n",
        "optical init failed, inst_id:0x9.\r\n" + missing_line("drv_opt_exit") + operate_fail("optical_test"), 255);
}

TEST(OpticalLibraryTest, SubCommandsFailWithoutTheirOperations) {
    for (const looked_up &one : sub_commands) {
        for (const std::string &operation : one.operations) {
            expect_sub_command_without(one.name, operation, missing_line(operation));
        }
    }
}

// The library is closed when the read is looked up, so the delay is not found either.
TEST(OpticalLibraryTest, RegisterIsNotWrittenWhereItCannotBeReadBack) {
    expect_sub_command_without("write_optical_register", "drv_opt_register_read",
                               missing_line("drv_opt_register_read") + closed_line("drv_cbb_optical_delay_nointerupt"));
}

// The driver is asked with what is known of the port: its lanes and the package of the command line are not, and there
// is no line about it.
TEST(OpticalLibraryTest, LanesThatCannotBeAskedLeaveTheSelectorInPart) {
    expect_run_with(lacking(library, "drv_opt_get_lane_num"), "optical_test get_optical_encode_type 9 3 7 0",
                    begin_calls("9") + "drv_opt_get_encode_type(inst_id=9, port_para={package_type=1 port=3 "
                                       "lanebitmap=0}) = 0 value=3\n",
                    begin_lines + missing_line("drv_opt_get_lane_num") + "encode_type = 3\n" + timing_lines +
                        closed_line("drv_opt_exit"),
                    0);
}

} // namespace kestro_tests::optical
