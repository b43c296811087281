// Inner Ethernet ports: two ends of one link of the backplane, seen from both seats.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>

namespace kestro_tests {

namespace {

std::string inner_status(unsigned port) {
    return "drv_ieth_get_link_status(port=" + std::to_string(port) + ")";
}

std::string inner_received(unsigned port) {
    return "drv_ieth_get_rx_packets(port=" + std::to_string(port) + ")";
}

std::string inner_sent(unsigned port) {
    return "drv_ieth_get_tx_packets(port=" + std::to_string(port) + ")";
}

std::string inner_loop(unsigned port, unsigned mac_phy, unsigned mode) {
    return "drv_ieth_set_loopback(port=" + std::to_string(port) + ", mac_phy=" + std::to_string(mac_phy) +
           ", mode=" + std::to_string(mode) + ")";
}

const std::string inner_up = "0x0 status=1\n";
const std::string inner_down = "0x0 status=0\n";

std::string packets(unsigned number) {
    return "0x0 packets=" + std::to_string(number) + "\n";
}

class InnerPorts : public testing::Test {
  protected:
    std::string answers(const std::string &seat, const std::vector<std::string> &lines,
                        const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual", "--board", seat};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }

    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

// Port 0 leads to the other main processing unit, port 1 to the line card in slot 7, port 2 to the empty slot 8.
TEST_F(InnerPorts, ANewBoardHasItsLinks) {
    EXPECT_EQ(answers("mpu_master", {inner_status(0), inner_status(1), inner_status(2), inner_status(3)}),
              inner_up + inner_up + inner_down + no_such_device);
    EXPECT_EQ(answers("mpu_slave", {inner_status(0), inner_status(1), inner_status(2)}),
              inner_up + inner_up + inner_down);
    EXPECT_EQ(answers("lpu", {inner_status(0), inner_status(1), inner_status(2)}),
              inner_up + inner_up + no_such_device);
}

// The master sends 20 frames a second to the line card, and the line card 16 to the master.
TEST_F(InnerPorts, WhatOneEndSendsTheOtherReceives) {
    EXPECT_EQ(answers("mpu_master", {"wait 2", inner_received(1), inner_sent(1)}), packets(32) + packets(40));
    EXPECT_EQ(answers("lpu", {inner_received(0), inner_sent(0), inner_sent(1), inner_received(1)}),
              packets(40) + packets(32) + packets(8) + packets(8));
    // 32 frames are two mixes of 6878 bytes; the 40 are half of another one on top, of 1086 bytes.
    EXPECT_EQ(
        answers("mpu_master", {"drv_ieth_get_statistic(port=1)"}, {"--set", "slot9/ethernet/inner/1/bad_frames=5"}),
        "0x0 statistic={rx_packets=32 tx_packets=40 rx_bytes=13756 tx_bytes=14842 rx_errors=5 tx_errors=0"
        " rx_dropped=0 tx_dropped=0 multicast=2 collisions=0 rx_length_errors=0 rx_over_errors=0"
        " rx_crc_errors=5 rx_frame_errors=0 rx_fifo_errors=0 rx_missed_errors=0 tx_aborted_errors=0"
        " tx_carrier_errors=0 tx_fifo_errors=0 tx_heartbeat_errors=0 tx_window_errors=0 rx_compressed=0"
        " tx_compressed=0}\n");
}

TEST_F(InnerPorts, ACutLinkIsDownAtBothEnds) {
    const std::string cut = "chassis/ethernet/link/1/cut=";
    EXPECT_EQ(answers("mpu_master", {"wait 2", inner_sent(1)}), packets(40));
    EXPECT_EQ(answers("mpu_master", {inner_status(0), inner_status(1), "wait 10", inner_sent(1), inner_sent(0)},
                      {"--set", cut + "1"}),
              inner_up + inner_down + packets(40) + packets(600));
    EXPECT_EQ(answers("lpu", {inner_status(0), inner_status(1)}), inner_down + inner_up);
    EXPECT_EQ(answers("lpu", {inner_status(0)}, {"--set", cut + "0"}), inner_up);
    EXPECT_EQ(answers("mpu_master", {inner_status(1), "wait 2", inner_sent(1)}), inner_up + packets(80));
}

TEST_F(InnerPorts, ABoardThatIsPulledTakesItsLinksAlong) {
    EXPECT_EQ(answers("mpu_master", {inner_status(0), inner_status(1)}, {"--pull", "slot7"}), inner_up + inner_down);
    EXPECT_EQ(answers("mpu_master", {inner_status(1)}, {"--plug", "slot7"}), inner_up);
    EXPECT_EQ(answers("lpu", {inner_status(0), inner_status(1)}, {"--pull", "slot9"}), inner_down + inner_up);
}

// What came and went while nobody looked at the far end: a card that was out of the chassis, a link that was cut.
TEST_F(InnerPorts, BothEndsHaveCountedTheSameBehindABreak) {
    EXPECT_EQ(answers("mpu_master", {"wait 10", inner_sent(1)}), packets(200));
    EXPECT_EQ(answers("mpu_master", {"wait 1000", inner_sent(1)}, {"--pull", "slot7"}), packets(200));
    EXPECT_EQ(answers("lpu", {inner_received(0), "wait 1", inner_received(0)}, {"--plug", "slot7"}),
              packets(200) + packets(220));
    EXPECT_EQ(answers("mpu_master", {inner_sent(1)}), packets(220));
    // Looked at by nobody, before or within.
    EXPECT_EQ(answers("mpu_slave", {inner_status(0)}), inner_up);
    const std::string cut = "chassis/ethernet/link/0/cut=";
    const unsigned sent = 50 * 1011;
    EXPECT_EQ(answers("mpu_master", {"wait 1000"}, {"--set", cut + "1"}), "");
    EXPECT_EQ(answers("mpu_slave", {inner_received(0)}, {"--set", cut + "0"}), packets(sent));
    EXPECT_EQ(answers("mpu_master", {inner_sent(0), "wait 1", inner_sent(0)}), packets(sent) + packets(sent + 50));
    EXPECT_EQ(answers("mpu_slave", {inner_received(0)}, {"--set", cut + "1"}), packets(sent + 50));
    EXPECT_EQ(answers("mpu_master", {inner_sent(0)}), packets(sent + 50));
}

// The line card's end is down meanwhile, and comes up with it again.
TEST_F(InnerPorts, ALoopedPortHearsItself) {
    for (const unsigned mac_phy : {0U, 1U}) {
        EXPECT_EQ(answers("mpu_master", {inner_loop(1, mac_phy, 1), inner_status(1)}), ok + inner_up);
        EXPECT_EQ(answers("lpu", {inner_status(0), inner_status(1)}), inner_down + inner_up);
        EXPECT_EQ(answers("mpu_master", {inner_loop(1, mac_phy, 0), inner_status(1), "wait 1.999", inner_status(1)}),
                  ok + inner_down + inner_down);
        EXPECT_EQ(answers("lpu", {inner_status(0), "wait 0.001", inner_status(0)}), inner_down + inner_up);
    }
    EXPECT_EQ(answers("lpu", {inner_sent(0)}), packets(0));
    EXPECT_EQ(answers("mpu_master", {inner_loop(1, 0, 1), "wait 3", inner_received(1), inner_sent(1),
                                     inner_loop(1, 0, 0), "wait 3", inner_received(1), inner_sent(1)}),
              ok + packets(60) + packets(60) + ok + packets(76) + packets(80));
    EXPECT_EQ(answers("lpu", {inner_received(0), inner_sent(0)}), packets(20) + packets(16));
    EXPECT_EQ(answers("mpu_master", {inner_loop(1, 2, 1), inner_loop(1, 0, 2), inner_loop(3, 0, 1)}),
              bad_value + bad_value + no_such_device);
}

TEST_F(InnerPorts, DumpsShowTheRegisters) {
    EXPECT_EQ(answers("mpu_master", {"wait 2", "drv_ieth_dump_info(port=1, mac_phy=0, buf_len=1024)",
                                     "drv_ieth_dump_info(port=1, mac_phy=1, buf_len=1024)",
                                     "drv_ieth_dump_info(port=2, mac_phy=1, buf_len=1024)"}),
              "0x0 buffer=\"0x00 control 0x00000000\\n0x01 status 0x00000001\\n0x02 speed 0x000003e8\\n"
              "0x03 bad_frames 0x00000000\\n0x04 rx_packets 0x00000020\\n0x05 rx_packets 0x00000000\\n"
              "0x06 rx_bytes 0x000035bc\\n0x07 rx_bytes 0x00000000\\n0x08 tx_packets 0x00000028\\n"
              "0x09 tx_packets 0x00000000\\n0x0a tx_bytes 0x000039fa\\n0x0b tx_bytes 0x00000000\\n\"\n"
              "0x0 buffer=\"0x00 control 0x0140\\n0x01 status 0x0024\\n0x10 far_end 0x0700\\n\"\n"
              "0x0 buffer=\"0x00 control 0x0140\\n0x01 status 0x0000\\n0x10 far_end 0x0800\\n\"\n");
    EXPECT_EQ(answers("mpu_master", {inner_loop(1, 1, 1), "drv_ieth_dump_info(port=1, mac_phy=1, buf_len=1024)",
                                     "drv_ieth_dump_info(port=1, mac_phy=1, buf_len=12)",
                                     "drv_ieth_dump_info(port=1, mac_phy=2, buf_len=1024)",
                                     "drv_ieth_dump_info(port=1, buf_len=1024, buffer=null)"}),
              ok + "0x0 buffer=\"0x00 control 0x4140\\n0x01 status 0x0024\\n0x10 far_end 0x0700\\n\"\n" +
                  "0x0 buffer=\"0x00 contro\"\n" + bad_value + null_pointer);
}

// What a bus write sets, the operations tell.
TEST_F(InnerPorts, TheTechnicianReachesTheRegisters) {
    EXPECT_EQ(answers("mpu_master", {inner_status(0)}, {"--set", "slot9/inner_mac/0/0x00=1"}), inner_up);
    EXPECT_EQ(launcher_prints({"--state", state_, "--get", "slot9/ethernet/inner/0/mac_loop"}), "1\n");
    EXPECT_EQ(answers("mpu_slave", {inner_status(0)}), inner_down);
    EXPECT_EQ(answers("mpu_slave", {inner_status(0), "wait 3", inner_status(0)},
                      {"--set", "slot9/inner_mac/0/0x00=0", "--set", "slot9/inner_phy/0/0x00=0"}),
              inner_down + inner_up);
}

TEST_F(InnerPorts, MissingAreasAreRefused) {
    EXPECT_EQ(answers("mpu_master",
                      {"drv_ieth_get_link_status(port=0, status=null)", "drv_ieth_get_rx_packets(port=0, packets=null)",
                       "drv_ieth_get_tx_packets(port=0, packets=null)",
                       "drv_ieth_get_statistic(port=0, statistic=null)", inner_received(9), inner_sent(9),
                       "drv_ieth_get_statistic(port=9)", "drv_ieth_dump_info(port=9, buf_len=8)"}),
              null_pointer + null_pointer + null_pointer + null_pointer + no_such_device + no_such_device +
                  no_such_device + no_such_device);
}

} // namespace kestro_tests
