// optical_test: the driver is brought up before each sub-command, says which ports there are, and is shut down.
#include <gtest/gtest.h>

#include "tests/modules/optical_runs.h"

namespace kestro_tests::optical {

namespace {

const char *const listed_sub_commands = "\n\nUsage: kestro_test [OPTION]\t\n"
                                        "List the functionalities for kestro_test \n"
                                        " get_optical_present_status\n"
                                        " get_optical_physical_present_status\n"
                                        " get_optical_common_info\n"
                                        " get_optical_trans_distance\n"
                                        " get_optical_los_status\n"
                                        " get_optical_tx_fault_status\n"
                                        " get_optical_ddm_info\n"
                                        " get_optical_ddm_warning_info\n"
                                        " get_optical_ddm_alarm_info\n"
                                        " get_optical_threshold_info\n"
                                        " test_optical_disable_status\n"
                                        " get_optical_physical_pull_status\n"
                                        " get_optical_encode_type\n"
                                        " get_optical_type\n"
                                        " get_optical_diag_info_support_flag\n"
                                        " get_optical_linear_attr\n"
                                        " get_optical_lane_num\n"
                                        " get_optical_common_register_info\n"
                                        " set_optical_rate\n"
                                        " get_optical_bus_status\n"
                                        " set_optical_bus_status_recovery\n"
                                        " get_optical_dfx_info\n"
                                        " read_optical_register\n"
                                        " write_optical_register\n";

// A run of one sub-command on a card with another map.
struct map_run {
    std::string map;   // the driver's answer
    std::string names; // the calls for the names of the types
    std::string lines;
};

const std::string type_line = "encode_type = 3\n";

void expect_map(const map_run &run) {
    expect_success(
        "optical_test get_optical_encode_type 9 3 5 1",
        "drv_opt_init(inst_id=9) = 0\n"
        "drv_opt_get_card_port_map(slot=9, frame=0, size=192) = " +
            run.map + "\n" + run.names +
            "drv_cbb_optical_delay_nointerupt(count=5000000) = 0\n"
            "drv_opt_get_encode_type(inst_id=9, port_para={package_type=5 port=3 lanebitmap=1}) = 0 value=3\n"
            "drv_opt_exit(inst_id=9) = 0\n",
        run.lines + up_line + "inst_id = 0x9, port_para: package_type = 5, package 5, port = 3, lanebitmap = 0x1\n" +
            type_line);
}

// The name of a type, and the line with it.
std::string name_call(const std::string &value, const std::string &name) {
    return "drv_cbb_optical_get_port_type_str_from_value(value=" + value + ", size=16) = 0 text=\"" + name + "\"\n";
}

std::string repeated(const std::string &text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

} // namespace

TEST(OpticalRunTest, UsageListsTheSubCommandsInOrder) {
    expect_run("optical_test", begin_calls("0") + end_call("0"),
               begin_lines + "kestro_test: too few args!\n" + listed_sub_commands, 0);
    expect_run("optical_test -h", begin_calls("0") + end_call("0"), begin_lines + "\n-h " + (listed_sub_commands + 1),
               0);
}

TEST(OpticalRunTest, AWordThatIsNoSubCommandStillBringsTheDriverUp) {
    expect_run(
        "optical_test get_light 9", begin_calls("9") + end_call("9"),
        begin_lines + "kestro_test: option get_light not recognised.\n\nget_light 9 " + (listed_sub_commands + 1), 0);
}

TEST(OpticalRunTest, DriverIsBroughtUpAndShutDownAroundTheSubCommand) {
    expect_calls({"get_optical_encode_type", "", "drv_opt_get_encode_type(@) = 0 value=3\n", ""},
                 {"drv_opt_get_encode_type(@)"});
}

TEST(OpticalRunTest, MapIsAskedBySlotAndFrameOfTheInstance) {
    struct instance {
        std::string word;
        std::string shown;
        std::string slot_and_frame;
    };
    for (const instance &one : std::vector<instance>{{"0xff000005", "0xff000005", "slot=5, frame=255"},
                                                     {"0x12345678", "0x12345678", "slot=0x5678, frame=0x12"},
                                                     {"0xffffffff", "0xffffffff", "slot=0xffff, frame=0xff"},
                                                     {"017", "0xf", "slot=15, frame=0"}}) {
        expect_success("optical_test get_optical_encode_type " + one.word + " 3 0 1",
                       "drv_opt_init(inst_id=" + one.shown + ") = 0\ndrv_opt_get_card_port_map(" + one.slot_and_frame +
                           ", size=192) = 0 map=[{package_type=1 number=4 start_id=1} {package_type=15}]\n" +
                           name_call("1", "QSFP") +
                           "drv_cbb_optical_delay_nointerupt(count=5000000) = 0\n"
                           "drv_opt_get_encode_type(inst_id=" +
                           one.shown +
                           ", port_para={package_type=1 port=3 lanebitmap=1}) = 0 value=3\n"
                           "drv_opt_exit(inst_id=" +
                           one.shown + ") = 0\n",
                       begin_lines + "inst_id = " + one.shown +
                           ", port_para: package_type = 1, package 0, port = 3, lanebitmap = 0x1\n" + type_line);
    }
}

TEST(OpticalRunTest, FailedInitSkipsTheSubCommandAndStillShutsDown) {
    expect_run("optical_test get_optical_encode_type 9 3 0 1",
               "drv_opt_init(inst_id=9) = 0x811101a4\n"
               "drv_opt_exit(inst_id=9) = 0\n",
               "optical init failed, inst_id:0x9.\r\n" + operate_fail("optical_test"), 255);
    expect_run("optical_test",
               "drv_opt_init(inst_id=0) = 1\n"
               "drv_opt_exit(inst_id=0) = 2\n",
               "optical init failed, inst_id:0x0.\r\ninst_id = 0x0, opitcal exit fail, ret = 0x2\n" +
                   operate_fail("optical_test"),
               255);
}

TEST(OpticalRunTest, FailedExitIsReportedAndChangesNothing) {
    const std::string exit_line = "inst_id = 0x9, opitcal exit fail, ret = 0x811101a4\n";
    const std::string exit_call = "drv_opt_exit(inst_id=9) = 0x811101a4\n";
    const std::string type_call = "drv_opt_get_encode_type(" + port_3.told + ") = ";
    expect_run("optical_test get_optical_encode_type 9 3 0 1", begin_calls("9") + type_call + "0 value=3\n" + exit_call,
               begin_lines + port_3.line + type_line + timing_lines + exit_line, 0);
    expect_run("optical_test get_optical_encode_type 9 3 0 1", begin_calls("9") + type_call + "1\n" + exit_call,
               begin_lines + port_3.line + "encode_type = 0\n" + timing_lines +
                   operate_fail("get_optical_encode_type") + exit_line + operate_fail("optical_test"),
               255);
}

TEST(OpticalRunTest, DelayThatFailsChangesNothing) {
    expect_success("optical_test get_optical_encode_type 9 3 5 1",
                   "drv_opt_init(inst_id=9) = 0\n"
                   "drv_opt_get_card_port_map(slot=9, frame=0, size=192) = 0 map=[{package_type=15}]\n"
                   "drv_cbb_optical_delay_nointerupt(count=5000000) = 0x811101a4\n"
                   "drv_opt_get_encode_type(inst_id=9, port_para={package_type=5 port=3 lanebitmap=1}) = 0 value=3\n"
                   "drv_opt_exit(inst_id=9) = 0\n",
                   up_line + "inst_id = 0x9, port_para: package_type = 5, package 5, port = 3, lanebitmap = 0x1\n" +
                       type_line);
}

TEST(OpticalRunTest, MapIsShownUpToItsEndMarker) {
    expect_map({"0 map=[{package_type=2 number=48 start_id=0} {package_type=11 number=1000 start_id=48}"
                " {package_type=0 number=2 start_id=1048} {package_type=15} {package_type=3 number=9 start_id=9}]",
                name_call("2", "SFP28") + name_call("11", "QSFP-DD800") + name_call("0", ""),
                "package_type:SFP28     , package_type_value:2, number: 48, start_id:  0\n"
                "package_type:QSFP-DD800, package_type_value:11, number:1000, start_id: 48\n"
                "package_type:          , package_type_value:0, number:  2, start_id:1048\n"});
}

TEST(OpticalRunTest, MapWithoutAnEndMarkerHasSixteenRows) {
    expect_map({"0 map=[{package_type=1} {package_type=2} {package_type=3} {package_type=4} {package_type=5}"
                " {package_type=6} {package_type=7} {package_type=8} {package_type=9} {package_type=10}"
                " {package_type=11} {package_type=12} {package_type=13} {package_type=14} {package_type=16}"
                " {package_type=0xffffffff number=0xffffffff start_id=0xfffffffe}]",
                "drv_cbb_optical_get_port_type_str_from_value(size=16) = 0 text=\"SFP\"\n",
                "package_type:SFP       , package_type_value:1, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:2, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:3, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:4, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:5, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:6, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:7, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:8, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:9, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:10, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:11, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:12, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:13, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:14, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:16, number:  0, start_id:  0\n"
                "package_type:SFP       , package_type_value:-1, number: -1, start_id: -2\n"});
}

TEST(OpticalRunTest, MapThatIsNotToldIsShownAsSixteenEmptyRows) {
    expect_map({"0x811101a4", name_call("0", "SFP"),
                repeated("package_type:SFP       , package_type_value:0, number:  0, start_id:  0\n", 16)});
}

TEST(OpticalRunTest, MapThatFailsWithAnAnswerIsShown) {
    expect_map({"0x811101a4 map=[{package_type=2 number=3 start_id=1} {package_type=15}]", name_call("2", "SFP28"),
                "package_type:SFP28     , package_type_value:2, number:  3, start_id:  1\n"});
}

TEST(OpticalRunTest, NameOfATypeThatFillsItsAreaIsShownWhole) {
    expect_map({"0 map=[{package_type=2 number=3 start_id=1} {package_type=15}]", name_call("2", "ABCDEFGHIJKLMNOP"),
                "package_type:ABCDEFGHIJKLMNOP, package_type_value:2, number:  3, start_id:  1\n"});
}

TEST(OpticalRunTest, FailedNameOfATypeEndsTheRun) {
    const std::string asked = "drv_opt_init(inst_id=9) = 0\n"
                              "drv_opt_get_card_port_map(slot=9, frame=0, size=192) = 0 map=[{package_type=7 number=1}"
                              " {package_type=8 number=2} {package_type=9 number=3} {package_type=15}]\n";
    expect_run("optical_test get_optical_encode_type 9 3 0 1",
               asked + "drv_cbb_optical_get_port_type_str_from_value(value=7, size=16) = 0x811101a4\n" + end_call("9"),
               "Failed to get port type string for node of 0!\r\n" + operate_fail("optical_test"), 255);
    expect_run("optical_test get_optical_encode_type 9 3 0 1",
               asked + name_call("7", "SFP") + name_call("8", "SFP+") +
                   "drv_cbb_optical_get_port_type_str_from_value(value=9, size=16) = 1 text=\"SFP28\"\n" +
                   end_call("9"),
               "package_type:SFP       , package_type_value:7, number:  1, start_id:  0\n"
               "package_type:SFP+      , package_type_value:8, number:  2, start_id:  0\n"
               "Failed to get port type string for node of 2!\r\n" +
                   operate_fail("optical_test"),
               255);
}

// The allocations before that of the table are those of the root table and its words; each of them ends the program.
TEST(OpticalRunTest, WithoutItsTableNothingIsBegun) {
    if (lists_lines()) {
        return;
    }
    const std::string trace = scratch_file("trace", "");
    const std::string state = new_scratch_dir();
    const std::string root_failure = "root cmd regist failure\r\n";
    process_result result;
    for (int allocation = 2; allocation < 300; ++allocation) {
        result = run_sim(
            {"--state", state, "--clock", "virtual", "--trace", trace, "--fail-alloc", std::to_string(allocation)},
            {"optical_test", "get_optical_encode_type", "9", "3", "0", "1"});
        if (result.out.find(root_failure) == std::string::npos) {
            break;
        }
    }
    EXPECT_EQ(result.out, operate_fail("optical_test"));
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(read_file(trace), "");
}

} // namespace kestro_tests::optical
