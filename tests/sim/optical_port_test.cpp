// Cages in the front of a board: which there are, what is plugged in and pulled out, and the bus to it.
#include "tests/sim/optical.h"

namespace kestro_tests {

namespace {

using OpticalPorts = OpticalDriver;

const std::string one = "0x0 value=1\n";
const std::string none = "0x0 value=0\n";

std::string end_rows(int count) {
    std::string rows;
    for (int i = 0; i < count; ++i) {
        rows += " {package_type=15 number=0 start_id=0}";
    }
    return rows;
}

std::string port_map(const std::string &halves, int size = 192) {
    return "drv_opt_get_card_port_map(" + halves + ", size=" + std::to_string(size) + ")";
}

std::string package_name(const std::string &words) {
    return "drv_cbb_optical_get_port_type_str_from_value(" + words + ")";
}

} // namespace

TEST_F(OpticalPorts, MapOfEachBoard) {
    const std::string of_mpu = "0x0 map=[{package_type=1 number=2 start_id=1} {package_type=2 number=4 start_id=11} "
                               "{package_type=5 number=2 start_id=21} {package_type=7 number=2 start_id=31}" +
                               end_rows(12) + "]\n";
    const std::string of_lpu =
        "0x0 map=[{package_type=7 number=2 start_id=1} {package_type=5 number=2 start_id=11}" + end_rows(14) + "]\n";
    EXPECT_EQ(answers({port_map("slot=0xffff, frame=0xff"), port_map("slot=9, frame=0xff"),
                       port_map("slot=10, frame=0xff"), port_map("slot=7, frame=0xff")}),
              of_mpu + of_mpu + of_mpu + of_lpu);
    seat_ = "lpu";
    EXPECT_EQ(answers({port_map("slot=0xffff, frame=0xff")}), of_lpu);
}

TEST_F(OpticalPorts, MapOfWhatHasNoPorts) {
    EXPECT_EQ(answers({port_map("slot=5, frame=0xff"), port_map("slot=8, frame=0xff"), port_map("slot=99, frame=0xff"),
                       port_map("slot=0, frame=0"), port_map("slot=0x10000, frame=0xff"),
                       port_map("slot=9, frame=0x100"), port_map("slot=0xffff, frame=0xff", 191),
                       "drv_opt_get_card_port_map(slot=0xffff, frame=0xff, size=192, map=null)"}),
              not_supported + no_such_instance + no_such_instance + no_such_instance + no_such_instance +
                  no_such_instance + too_small + null_pointer);
    seat_ = "lpu";
    EXPECT_EQ(answers({port_map("slot=0xffff, frame=1"), port_map("slot=0xffff, frame=3")}),
              not_supported + no_such_instance);
}

TEST_F(OpticalPorts, NamesOfPackages) {
    EXPECT_EQ(
        answers({package_name("value=1, size=16"), package_name("value=2, size=16"), package_name("value=3, size=16"),
                 package_name("value=4, size=16"), package_name("value=5, size=16"), package_name("value=6, size=16"),
                 package_name("value=7, size=16"), package_name("value=8, size=16")}),
        "0x0 text=\"SFP\"\n0x0 text=\"SFP+\"\n0x0 text=\"SFP28\"\n0x0 text=\"QSFP+\"\n0x0 text=\"QSFP28\"\n"
        "0x0 text=\"QSFP56\"\n0x0 text=\"QSFP-DD\"\n0x0 text=\"OSFP\"\n");
    EXPECT_EQ(
        answers({package_name("value=0, size=16"), package_name("value=9, size=16"), package_name("value=15, size=16"),
                 package_name("value=0xffffffff, size=16"), package_name("value=7, size=7"),
                 package_name("value=7, size=8"), package_name("value=1, size=16, text=null")}),
        bad_value + bad_value + bad_value + bad_value + too_small + "0x0 text=\"QSFP-DD\"\n" + null_pointer);
}

TEST_F(OpticalPorts, InitAndExitAreForBoardsWithPorts) {
    EXPECT_EQ(answers({"drv_opt_init()", "drv_opt_exit()", "drv_opt_init(inst_id=0xff000007)",
                       "drv_opt_init(inst_id=0xff000005)", "drv_opt_exit(inst_id=0xff000005)",
                       "drv_opt_init(inst_id=0)", "drv_opt_exit(inst_id=0xff000008)"}),
              ok + ok + ok + not_supported + not_supported + no_such_instance + no_such_instance);
}

TEST_F(OpticalPorts, DelayIsInMicroseconds) {
    const std::string present = optical_call("get_present_status", empty_port);
    answers({"drv_opt_init()"});
    EXPECT_EQ(
        answers({present, "drv_cbb_optical_delay_nointerupt(count=1999999)", present,
                 "drv_cbb_optical_delay_nointerupt(count=1)", present, "drv_cbb_optical_delay_nointerupt(count=0)"},
                {"slot9/optics/cage/2/plugged=1", "slot9/optics/cage/1/plugged=0"}),
        none + ok + none + ok + one + ok);
}

TEST_F(OpticalPorts, PresentAndEmpty) {
    std::vector<std::string> calls;
    for (const optical_port &at : {copper_port, empty_port, lr_port, failed_port, hung_port, sr4_port, wide_port}) {
        calls.push_back(optical_call("get_present_status", at));
        calls.push_back(optical_call("get_physical_present_status", at));
    }
    EXPECT_EQ(answers(calls), one + one + none + none + one + one + one + one + one + one + one + one + one + one);
}

// The pin tells at once, the driver when the module has come up.
TEST_F(OpticalPorts, AModuleThatIsPluggedInNeedsAMoment) {
    const std::string present = optical_call("get_present_status", empty_port);
    const std::string pin = optical_call("get_physical_present_status", empty_port);
    const std::string name = optical_call("get_common_info", empty_port, "item=0x10001, size=44");
    answers({"drv_opt_init()"});
    EXPECT_EQ(answers({"drv_opt_init()", present, pin, name, "wait 0.299", name, "wait 0.001", name, present,
                       "wait 1.699", present, "wait 0.001", present},
                      {"slot9/optics/cage/1/plugged=0", "slot9/optics/cage/2/plugged=1"}),
              ok + none + one + not_ready + not_ready + "0x0 text=\"1000BASE-T\"\n" + none + none + one);
}

TEST_F(OpticalPorts, TheTechnicianSaysHowLongItNeeds) {
    const std::string power = optical_call("get_ddm_info", {2, 12, "1"}, "item=0x30001");
    const std::string answer = answers(
        {"drv_opt_init()", "wait 4.5", power, "wait 0.5", power},
        {"slot9/optics/cage/11/plugged=0", "slot9/optics/cage/12/plugged=2", "slot9/optics/module/2/start_up=5000"});
    EXPECT_EQ(answer.substr(0, 15), ok + not_ready);
    EXPECT_NEAR(numbers_in(answer, "value={value").at(0), 3.3, 0.0001);
}

// The technician may plug in what nobody knows: something is there, and does not answer.
TEST_F(OpticalPorts, AnUnknownModule) {
    EXPECT_EQ(answers({optical_call("get_physical_present_status", empty_port), "wait 10",
                       optical_call("get_present_status", empty_port), optical_call("get_lane_num", empty_port),
                       optical_call("bus_status_get", empty_port), optical_call("bus_status_recovery", empty_port)},
                      {"slot9/optics/cage/2/plugged=77"}),
              one + none + not_ready + not_ready + not_ready);
}

TEST_F(OpticalPorts, APullIsToldOnce) {
    const std::string was_pulled = optical_call("get_physical_pull_status", lr_port);
    EXPECT_EQ(answers({was_pulled}), none);
    EXPECT_EQ(answers({was_pulled, was_pulled}, {"slot9/optics/cage/11/plugged=0"}), one + none);
    // Plugging in is none, and one that was not asked about yet is kept.
    EXPECT_EQ(answers({was_pulled}, {"slot9/optics/cage/11/plugged=2"}), none);
    EXPECT_EQ(answers({"drv_opt_init()"}, {"slot9/optics/cage/11/plugged=0"}), ok);
    EXPECT_EQ(answers({"drv_opt_init()"}, {"slot9/optics/cage/11/plugged=2"}), ok);
    EXPECT_EQ(answers({was_pulled, was_pulled}), one + none);
    // Between two looks of the driver, in one go or in two; what the driver had switched is gone.
    const std::string software = optical_read(lr_port, "0xa2", 0, 110, 1);
    EXPECT_EQ(answers({"wait 2", optical_write(lr_port, "0xa2", 0, 110, "0x40"), software}), ok + "0x0 data=[64]\n");
    EXPECT_EQ(answers({was_pulled, was_pulled}, {"slot9/optics/cage/11/plugged=0", "slot9/optics/cage/11/plugged=2"}),
              one + none);
    EXPECT_EQ(answers({}, {"slot9/optics/cage/11/plugged=0"}), "");
    EXPECT_EQ(answers({was_pulled, was_pulled}, {"slot9/optics/cage/11/plugged=2"}), one + none);
    EXPECT_EQ(answers({"wait 2", software}), "0x0 data=[0]\n");
    // Another module in its place.
    EXPECT_EQ(answers({was_pulled, optical_call("get_physical_pull_status", copper_port)},
                      {"slot9/optics/cage/11/plugged=3", "slot9/optics/cage/12/plugged=0"}),
              one + none);
}

// What a module keeps without power is no more than what is written into its memory.
TEST_F(OpticalPorts, AModuleForgetsItsSwitchesWhenItIsPulled) {
    const std::string disabled = optical_call("get_disable_status", sr4_port);
    answers({optical_call("set_disable_status", sr4_port, "value=1"), optical_write(sr4_port, "0xa0", 2, 128, "7")});
    EXPECT_EQ(answers({"drv_opt_init()"}, {"slot9/optics/cage/21/plugged=0"}), ok);
    EXPECT_EQ(answers({"drv_opt_init()", "wait 2", disabled, optical_read(sr4_port, "0xa0", 0, 127, 1),
                       optical_read(sr4_port, "0xa0", 2, 128, 1)},
                      {"slot9/optics/cage/21/plugged=6"}),
              ok + none + "0x0 data=[0]\n0x0 data=[7]\n");
}

TEST_F(OpticalPorts, AHeldBusIsRecovered) {
    const std::string status = optical_call("bus_status_get", hung_port);
    const std::string recovery = optical_call("bus_status_recovery", hung_port);
    const std::string vendor = optical_call("get_common_info", hung_port, "item=0x10008, size=20");
    EXPECT_EQ(answers({status, vendor, recovery, status, vendor, recovery}),
              one + not_ready + ok + none + "0x0 text=\"KESTRO OPTICS\"\n" + ok);
    EXPECT_EQ(answers({optical_call("bus_status_get", lr_port), optical_call("bus_status_recovery", lr_port)}),
              none + ok);
}

TEST_F(OpticalPorts, ABusThatIsHeldForGood) {
    const std::string status = optical_call("bus_status_get", hung_port);
    const std::string recovery = optical_call("bus_status_recovery", hung_port);
    EXPECT_EQ(answers({recovery, status}, {"slot9/optics/module/5/bus_stays=1"}), not_ready + one);
    EXPECT_EQ(answers({"drv_opt_init()"}, {"slot9/optics/cage/14/plugged=0"}), ok);
    EXPECT_EQ(answers({status}, {"slot9/optics/cage/14/plugged=5"}), one);
}

TEST_F(OpticalPorts, PullingFreesABusThatCanBeFreed) {
    EXPECT_EQ(answers({"drv_opt_init()"}, {"slot9/optics/cage/14/plugged=0"}), ok);
    EXPECT_EQ(answers({optical_call("bus_status_get", hung_port)}, {"slot9/optics/cage/14/plugged=5"}), none);
}

TEST_F(OpticalPorts, EveryQueryRefusesAnUnknownPortAndAnotherPackage) {
    const std::vector<std::pair<std::string, std::string>> queries{{"get_lane_num", ""},
                                                                   {"get_present_status", ""},
                                                                   {"get_physical_present_status", ""},
                                                                   {"get_physical_pull_status", ""},
                                                                   {"get_common_info", "item=0x10008, size=20"},
                                                                   {"get_trans_distance", ""},
                                                                   {"get_los_status", ""},
                                                                   {"get_tx_fault_status", ""},
                                                                   {"get_ddm_info", "item=0x30000"},
                                                                   {"get_ddm_warning_info", "item=0x50000"},
                                                                   {"get_ddm_alarm_info", "item=0x50000"},
                                                                   {"get_threshold_info", "item=0x20000"},
                                                                   {"get_disable_status", ""},
                                                                   {"set_disable_status", "value=1"},
                                                                   {"get_encode_type", ""},
                                                                   {"get_type", ""},
                                                                   {"get_diag_info_support_flag", "item=0"},
                                                                   {"get_linear_attr", ""},
                                                                   {"get_common_register_info", "size=4096"},
                                                                   {"set_rate", "direction=0, rate=1"},
                                                                   {"bus_status_get", ""},
                                                                   {"bus_status_recovery", ""},
                                                                   {"get_dfx_info", "size=100000"},
                                                                   {"register_read", "length=1"},
                                                                   {"register_write", "data=[1]"}};
    std::vector<std::string> calls;
    std::string refused;
    for (const auto &[operation, rest] : queries) {
        const std::string more = rest.empty() ? "" : ", " + rest;
        calls.push_back(optical_call(operation, {2, 15, "1"}, rest));
        calls.push_back(optical_call(operation, {1, 11, "1"}, rest));
        calls.push_back("drv_opt_" + operation + "(inst_id=0xff000005, port_para={package_type=2 port=11}" + more +
                        ")");
        calls.push_back("drv_opt_" + operation + "(inst_id=0xff000008, port_para={package_type=2 port=11}" + more +
                        ")");
        calls.push_back("drv_opt_" + operation + "(port_para=null" + more + ")");
        refused += no_such_device + bad_value + not_supported + no_such_instance + null_pointer;
    }
    EXPECT_EQ(answers(calls), refused);
    // All but the three that look at the cage itself need a module, and all but five its bus.
    calls.clear();
    refused.clear();
    for (const auto &[operation, rest] : queries) {
        if (operation.find("present") == std::string::npos && operation.find("pull") == std::string::npos) {
            calls.push_back(optical_call(operation, empty_port, rest));
            refused += not_ready;
            if (!operation.starts_with("bus")) {
                calls.push_back(optical_call(operation, hung_port, rest));
                refused += not_ready;
            }
        }
    }
    EXPECT_EQ(answers(calls), refused);
}

TEST_F(OpticalPorts, MissingAreas) {
    const std::vector<std::string> calls{optical_call("get_lane_num", lr_port, "lane_num=null"),
                                         optical_call("get_present_status", lr_port, "value=null"),
                                         optical_call("get_physical_present_status", lr_port, "value=null"),
                                         optical_call("get_physical_pull_status", lr_port, "value=null"),
                                         optical_call("get_common_info", lr_port, "item=0x10008, size=20, text=null"),
                                         optical_call("get_trans_distance", lr_port, "distance=null"),
                                         optical_call("get_los_status", lr_port, "value=null"),
                                         optical_call("get_tx_fault_status", lr_port, "value=null"),
                                         optical_call("get_ddm_info", lr_port, "item=0x30000, value=null"),
                                         optical_call("get_ddm_warning_info", lr_port, "item=0x50000, warning=null"),
                                         optical_call("get_ddm_alarm_info", lr_port, "item=0x50000, alarm=null"),
                                         optical_call("get_threshold_info", lr_port, "item=0x20000, value=null"),
                                         optical_call("get_disable_status", lr_port, "value=null"),
                                         optical_call("get_encode_type", lr_port, "value=null"),
                                         optical_call("get_type", lr_port, "types=null"),
                                         optical_call("get_type", lr_port, "num=null"),
                                         optical_call("get_diag_info_support_flag", lr_port, "item=0, flag=null"),
                                         optical_call("get_linear_attr", lr_port, "value=null"),
                                         optical_call("get_common_register_info", lr_port, "size=4096, text=null"),
                                         optical_call("bus_status_get", lr_port, "value=null"),
                                         optical_call("get_dfx_info", lr_port, "size=100, text=null"),
                                         optical_call("register_read", lr_port, "length=1, data=null"),
                                         optical_call("register_write", lr_port, "length=1, data=null")};
    std::string refused;
    for (size_t i = 0; i < calls.size(); ++i) {
        refused += null_pointer;
    }
    EXPECT_EQ(answers(calls), refused);
}

} // namespace kestro_tests
