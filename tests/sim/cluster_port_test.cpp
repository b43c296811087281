// Cluster ports: brought up per process, links that negotiate in board time, counters that agree.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

const std::string cluster_not_ready = "0x8111010f\n";
const std::string cluster_init = "drv_clusterport_init()";

// Port 0 has another chassis at its other end, at port 1 nothing is plugged in.
const std::string cluster_speed = "drv_clusterport_get_speed(port=0)";
const std::string cluster_status = "drv_clusterport_get_link_status(port=0)";
const std::string cluster_mode = "drv_clusterport_get_mode(port=0)";
const std::string cluster_test = "drv_clusterport_get_phy_test(port=0)";
const std::string cluster_counters = "drv_clusterport_get_statistics(port=0)";

struct cluster_direction {
    uint64_t bytes;
    uint64_t frames;
    uint64_t multicast;
    uint64_t broadcast;
    uint64_t unicast;
};

std::string of_direction(const std::string &which, const cluster_direction &counted) {
    return which + "_bytes=" + std::to_string(counted.bytes) + " " + which +
           "_frames=" + std::to_string(counted.frames) + " " + which +
           "_multicast_frames=" + std::to_string(counted.multicast) + " " + which +
           "_brdcast_frames=" + std::to_string(counted.broadcast) + " " + which +
           "_unicast_frames=" + std::to_string(counted.unicast);
}

std::string statistics(const cluster_direction &in, const cluster_direction &out, uint64_t bad = 0) {
    const std::string wrong = std::to_string(bad);
    return "0x0 statistics={" + of_direction("in", in) + " in_fcserr_frames=" + wrong +
           " in_oversize_frames=0 in_jab_frames=0 in_fragment_frames=0 in_drop_frames=0 in_undersize_frames=0"
           " in_err_frames=" +
           wrong + " in_crc_bad_frames=" + wrong + " in_reserved=0 " + of_direction("out", out) +
           " out_err_frames=0 out_drop_frames=0 out_reserved=0}\n";
}

// 120 frames a second come in and 100 go out, a mix of 16 frames with 6878 bytes: one multicast, two broadcasts.
const cluster_direction nothing{0, 0, 0, 0, 0};
const cluster_direction in_of_800_ms{41268, 96, 6, 12, 78};
const cluster_direction out_of_800_ms{34390, 80, 5, 10, 65};

class ClusterPorts : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual"};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }
    // The library is up.
    std::string answers_up(std::vector<std::string> lines, const std::vector<std::string> &by_hand = {}) const {
        lines.insert(lines.begin(), cluster_init);
        const std::string printed = answers(lines, by_hand);
        EXPECT_TRUE(printed.starts_with(ok)) << printed;
        return printed.substr(ok.size());
    }

    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

TEST_F(ClusterPorts, EachProcessBringsThemUp) {
    EXPECT_EQ(answers({cluster_status, cluster_init, cluster_status, "drv_clusterport_exit()", cluster_status}),
              cluster_not_ready + ok + "0x0 status=1\n" + ok + cluster_not_ready);
    EXPECT_EQ(answers({cluster_status, "drv_clusterport_set_led(port=0, oper_type=1)",
                       "drv_clusterport_reset(port=0, reset_type=0)", cluster_counters, "drv_clusterport_exit()"}),
              cluster_not_ready + cluster_not_ready + cluster_not_ready + cluster_not_ready + ok);
}

TEST_F(ClusterPorts, ANewBoardHasItsLinks) {
    EXPECT_EQ(answers_up({cluster_status, cluster_speed, cluster_mode, cluster_test,
                          "drv_clusterport_get_link_status(port=1)", "drv_clusterport_get_speed(port=1)"}),
              "0x0 status=1\n0x0 speed=10000\n0x0 mode=1\n0x0 result=0\n0x0 status=0\n0x0 speed=0\n");
}

TEST_F(ClusterPorts, ASpeedThatIsSetBeginsTheLinkAnew) {
    EXPECT_EQ(answers_up({"drv_clusterport_set_speed(port=0, speed=1000)", cluster_status, "wait 1.999", cluster_status,
                          cluster_speed, "wait 0.001", cluster_status, cluster_speed}),
              ok + "0x0 status=0\n0x0 status=0\n0x0 speed=0\n0x0 status=1\n0x0 speed=1000\n");
    EXPECT_EQ(answers_up({"drv_clusterport_set_speed(port=0, speed=100)", cluster_speed,
                          "drv_clusterport_set_speed(port=0, speed=10000)", "wait 2", cluster_speed,
                          "drv_clusterport_set_speed(port=0, speed=0)", "wait 2", cluster_speed}),
              bad_value + "0x0 speed=1000\n" + ok + "0x0 speed=10000\n" + ok + "0x0 speed=10000\n");
}

TEST_F(ClusterPorts, CountersAgreeAndStandStillWhileThePortIsShut) {
    const std::string after = statistics(in_of_800_ms, out_of_800_ms);
    EXPECT_EQ(answers_up({cluster_counters, "wait 0.8", cluster_counters, "drv_clusterport_set_shut(port=0, flag=1)",
                          cluster_status, "wait 5", cluster_counters, "drv_clusterport_set_shut(port=0, flag=0)",
                          "wait 1.999", cluster_status, "wait 0.001", cluster_status, cluster_counters}),
              statistics(nothing, nothing) + after + ok + "0x0 status=0\n" + after + ok +
                  "0x0 status=0\n0x0 status=1\n" + after);
    // Without a look before: what passed before the port was shut is counted.
    EXPECT_EQ(answers_up({"drv_clusterport_reset(port=0, reset_type=0)", "wait 0.8",
                          "drv_clusterport_set_shut(port=0, flag=1)", "wait 9", cluster_counters}),
              ok + ok + after);
    EXPECT_EQ(answers_up({"drv_clusterport_set_shut(port=0, flag=2)"}), bad_value);
}

TEST_F(ClusterPorts, ResetsOfMacAndPhy) {
    EXPECT_EQ(answers_up({"wait 0.8", "drv_clusterport_reset(port=0, reset_type=1)", cluster_status, cluster_counters,
                          "wait 2", cluster_status, "drv_clusterport_reset(port=0, reset_type=0)", cluster_status,
                          cluster_counters, "drv_clusterport_reset(port=0, reset_type=2)"}),
              ok + "0x0 status=0\n" + statistics(in_of_800_ms, out_of_800_ms) + "0x0 status=1\n" + ok +
                  "0x0 status=1\n" + statistics(nothing, nothing) + bad_value);
}

TEST_F(ClusterPorts, WhatTheTechnicianDoes) {
    const std::string port = "slot9/ethernet/cluster/0/";
    EXPECT_EQ(answers_up({"wait 0.8", cluster_counters}), statistics(in_of_800_ms, out_of_800_ms));
    EXPECT_EQ(answers_up({cluster_status, "wait 3", cluster_counters}, {"--set", port + "partner=0"}),
              "0x0 status=0\n" + statistics(in_of_800_ms, out_of_800_ms));
    EXPECT_EQ(answers_up({cluster_speed, cluster_mode, cluster_test},
                         {"--set", port + "partner=1", "--set", port + "half_duplex=1", "--set", port + "phy_fault=1"}),
              "0x0 speed=1000\n0x0 mode=0\n0x0 result=1\n");
    EXPECT_EQ(answers_up({"drv_clusterport_reset(port=0, reset_type=0)"}), ok);
    EXPECT_EQ(answers_up({cluster_counters}, {"--set", port + "bad_frames=3"}),
              statistics({192, 3, 0, 0, 3}, nothing, 3));
}

TEST_F(ClusterPorts, TheLamp) {
    EXPECT_EQ(
        answers_up({"drv_clusterport_set_led(port=0, oper_type=2)", "drv_clusterport_set_led(port=0, oper_type=4)"}),
        ok + bad_value);
    EXPECT_EQ(launcher_prints({"--state", state_, "--get", "slot9/ethernet/cluster/0/lamp"}), "2\n");
}

TEST_F(ClusterPorts, WordsThatNameNothing) {
    EXPECT_EQ(
        answers_up({"drv_clusterport_get_speed(port=2)", "drv_clusterport_set_shut(port=2, flag=1)",
                    "drv_clusterport_get_speed(port=0, speed=null)", "drv_clusterport_get_mode(port=0, mode=null)",
                    "drv_clusterport_get_link_status(port=0, status=null)",
                    "drv_clusterport_get_phy_test(port=0, result=null)",
                    "drv_clusterport_get_statistics(port=0, statistics=null)"}),
        no_such_device + no_such_device + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer);
    const std::string without = scratch_file("without_cluster_ports.xml", R"(<board name="without" like="mpu" slot="9">
  <module name="sim_ethernet"><node name="cluster" remove="yes"/></module>
</board>)");
    EXPECT_EQ(answers({cluster_init, "drv_clusterport_exit()", cluster_speed}, {"--board", without}),
              not_supported + not_supported + not_supported);
}

} // namespace kestro_tests
