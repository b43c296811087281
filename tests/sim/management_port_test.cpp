// Management Ethernet ports: operations, registers, PHY and counters agree; packets come back, wait, and are delivered.
#include "tests/sim/support.h"
#include "tests/support/driver_calls.h"

#include <gtest/gtest.h>
#include <sstream>

namespace kestro_tests {

namespace {

const std::string meth_not_ready = "0x8111010f\n";
const std::string meth_out_of_range = "0x81110107\n";

// At port 0 hangs a station of 1000 Mbit/s that sends packets back after 200 us, at port 1 one of 100 Mbit/s that does
// not.
const std::string meth_status = "drv_meth_get_link_status(port=0)";
const std::string meth_speed = "drv_meth_get_speed(port=0)";
const std::string meth_counters = "drv_meth_get_statistic(port=0)";
const std::string meth_readable = "drv_meth_is_readable(port=0)";
const std::string meth_init = "drv_meth_init(port=0)";
const std::string meth_exit = "drv_meth_exit(port=0)";
const std::string meth_hello = "drv_meth_tx_pkt(port=0, buffer=[68 65 6c 6c 6f])";
const std::string meth_get = "drv_meth_get_rx_pkt(port=0, buf_len=64)";
const std::string hello_came = "0x0 buffer=[68 65 6c 6c 6f] read_len=5\n";
const std::string nothing_came = "0x0 buffer=[] read_len=0\n";

std::string meth_set(const std::string &what, unsigned flag) {
    return "drv_meth_set_" + what + "(port=0, " + (what == "led" ? "oper_type=" : "flag=") + std::to_string(flag) + ")";
}

std::string mac_register(unsigned addr, unsigned port = 0) {
    return "drv_meth_read_reg(port=" + std::to_string(port) + ", mac_phy=0, addr=" + std::to_string(addr) + ")";
}

std::string phy_register(unsigned addr, unsigned port = 0) {
    return "drv_meth_read_reg(port=" + std::to_string(port) + ", mac_phy=1, addr=" + std::to_string(addr) + ")";
}

std::string write_register(unsigned port, unsigned mac_phy, unsigned addr, const std::string &val) {
    return "drv_meth_write_reg(port=" + std::to_string(port) + ", mac_phy=" + std::to_string(mac_phy) +
           ", addr=" + std::to_string(addr) + ", val=" + val + ")";
}

std::string val(uint32_t number) {
    return "0x0 val=" + std::to_string(number) + "\n";
}

// unicast, multicast, broadcast; sizes from 64 bytes on; those with a tag.
struct meth_direction {
    unsigned bytes = 0;
    unsigned kinds[3]{};
    unsigned sizes[7]{};
    unsigned tagged = 0;
};

std::string kinds_and_sizes(const std::string &which, const meth_direction &counted) {
    std::string text;
    const char *const kinds[]{"unicast", "multicast", "broadcast"};
    for (size_t i = 0; i < std::size(kinds); ++i) {
        text += " " + which + "_" + kinds[i] + "=" + std::to_string(counted.kinds[i]);
    }
    const char *const sizes[]{"64", "127", "255", "511", "1023", "1518", "max"};
    for (size_t i = 0; i < std::size(sizes); ++i) {
        text += " " + which + "_pkt_" + sizes[i] + "=" + std::to_string(counted.sizes[i]);
    }
    return text;
}

struct meth_faults {
    unsigned bad = 0;
    unsigned dropped = 0;
    unsigned dropped_bytes = 0;
};

std::string statistic(const meth_direction &rx, const meth_direction &tx, const meth_faults &faults = {}) {
    const std::string bad = std::to_string(faults.bad);
    return "0x0 statistic={rx_bytes_ok=" + std::to_string(rx.bytes) +
           " rx_bytes_err=" + std::to_string(faults.bad * 64) + kinds_and_sizes("rx", rx) + " rx_fcs=" + bad +
           " rx_tagged=" + std::to_string(rx.tagged) + " rx_pkt_err=" + bad +
           " rx_align_err=0 rx_long_err=0 rx_jabber_err=0 rx_pause=0 rx_unknown=0 rx_too_long=0 rx_runt_err=0"
           " rx_short_err=0 rx_filt_pkts=" +
           std::to_string(faults.dropped) + " rx_filt_bytes=" + std::to_string(faults.dropped_bytes) +
           " tx_bytes_ok=" + std::to_string(tx.bytes) + " tx_bytes_err=0" + kinds_and_sizes("tx", tx) +
           " tx_exce_drop=0 tx_under_run=0 tx_tagged=" + std::to_string(tx.tagged) +
           " tx_crc_err=0 tx_pause_frame=0 reserved=0}\n";
}

// 40 frames a second come in and 25 go out.
const meth_direction nothing_counted{};
const meth_direction received_in_400_ms{6878, {13, 1, 2}, {7, 2, 1, 2, 1, 2, 1}, 2};
const meth_direction sent_in_400_ms{2668, {8, 1, 1}, {5, 2, 1, 1, 0, 1, 0}, 1};

// A callback that comes within a call lets the call's line begin once more.
std::string without_events(const std::string &printed) {
    std::string kept;
    std::istringstream lines(printed);
    for (std::string line; std::getline(lines, line);) {
        kept += line.starts_with("#") || line.ends_with(" ...") ? "" : line + "\n";
    }
    return kept;
}

class ManagementPorts : public testing::Test {
  protected:
    std::string answers(const std::vector<std::string> &lines, const std::vector<std::string> &by_hand = {}) const {
        std::vector<std::string> options{"--state", state_, "--clock", "virtual"};
        options.insert(options.end(), by_hand.begin(), by_hand.end());
        return answers_of(options, lines);
    }

    // The other end answers after 500 ms.
    void expect_scene(const std::string &name, const std::string &out) const {
        const process_result result = run_process({launcher(), "--state", state_, "--clock", "virtual", "--set",
                                                   "slot9/ethernet/management/0/echo=500000", "--run",
                                                   build_dir() + "/tests/packet_scenes", "--", name});
        EXPECT_EQ(result.out, out);
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(result.status, 0);
    }

    std::string state_ = new_scratch_dir() + "/state";
};

} // namespace

TEST_F(ManagementPorts, ANewBoardHasItsLinks) {
    EXPECT_EQ(
        answers({"drv_meth_get_port_num()", meth_status, meth_speed, "drv_meth_get_autonego(port=0)",
                 "drv_meth_get_media_type(port=0)", "drv_meth_get_link_status(port=1)", "drv_meth_get_speed(port=1)"}),
        "0x0 number=2\n0x0 status=1\n0x0 speed=1000\n0x0 enable=1\n0x0 media_type=0\n0x0 status=1\n"
        "0x0 speed=100\n");
    EXPECT_EQ(answers({meth_status, "drv_meth_get_media_type(port=0)"},
                      {"--set", "slot9/phy/port/0/partner=0", "--set", "slot9/phy/port/0/medium=fibre"}),
              "0x0 status=0\n0x0 media_type=1\n");
}

TEST_F(ManagementPorts, CountersAgree) {
    EXPECT_EQ(answers({meth_counters, "wait 0.4", meth_counters, "drv_meth_get_rx_packets(port=0)",
                       "drv_meth_get_tx_packets(port=0)"}),
              statistic(nothing_counted, nothing_counted) + statistic(received_in_400_ms, sent_in_400_ms) +
                  "0x0 packets=16\n0x0 packets=10\n");
    // Bad ones count as the shortest to the port itself, but their bytes apart.
    EXPECT_EQ(answers({meth_counters}, {"--set", "slot9/ethernet/management/0/bad_frames=2"}),
              statistic({6878, {15, 1, 2}, {9, 2, 1, 2, 1, 2, 1}, 2}, sent_in_400_ms, {2, 0, 0}));
    EXPECT_EQ(answers({meth_init, meth_counters}), ok + statistic(nothing_counted, nothing_counted));
}

TEST_F(ManagementPorts, AShutPortCountsNothing) {
    EXPECT_EQ(answers({"wait 0.4", meth_set("shutdown", 1), meth_status, meth_hello, "wait 5", meth_counters,
                       phy_register(0), "drv_phy_get_port_status(chip_id=0, port_id=0, port_mode=0)",
                       meth_set("shutdown", 0), meth_status, "wait 2", meth_status, meth_counters}),
              ok + "0x0 status=0\n" + meth_not_ready + statistic(received_in_400_ms, sent_in_400_ms) + val(0x1940) +
                  "0x0 enable=0\n" + ok + "0x0 status=0\n0x0 status=1\n" +
                  statistic(received_in_400_ms, sent_in_400_ms));
    EXPECT_EQ(answers({meth_set("shutdown", 2)}), bad_value);
}

TEST_F(ManagementPorts, RegistersAgreeWithTheOperations) {
    EXPECT_EQ(answers({"wait 0.4", mac_register(0), mac_register(1), mac_register(2), mac_register(3), mac_register(4),
                       mac_register(6), mac_register(7), mac_register(8), mac_register(9), mac_register(10),
                       mac_register(12), mac_register(14), mac_register(2, 1), phy_register(0), phy_register(2),
                       phy_register(17, 1), mac_register(16), phy_register(32)}),
              val(0x8031) + val(1) + val(1000) + val(1) + val(0x02A0) + val(0) + val(0) + val(16) + val(0) + val(6878) +
                  val(10) + val(2668) + val(100) + val(0x1140) + val(0x0A83) + val(0x6C00) + meth_out_of_range +
                  meth_out_of_range);
    EXPECT_EQ(answers({meth_set("switch_flag", 0), meth_set("active_ornot", 1), meth_set("led", 2), mac_register(0),
                       mac_register(3), meth_set("led", 0), mac_register(3), write_register(0, 0, 0, "0x0011"),
                       mac_register(0), mac_register(3)}),
              ok + ok + ok + val(0x8022) + val(2) + ok + val(0) + ok + val(0x8011) + val(1));
    EXPECT_EQ(launcher_prints({"--state", state_, "--get", "slot9/ethernet/management/0/joined", "--get",
                               "slot9/ethernet/management/0/active", "--get", "slot9/ethernet/management/0/lamp",
                               "--get", "slot9/eth_mac/0/0x05"}),
              "1\n0\n1\n0xc0090000\n");
    EXPECT_EQ(answers({write_register(0, 1, 0, "0x2100"), meth_status, "drv_meth_get_autonego(port=0)", "wait 2",
                       meth_speed, "drv_phy_set_port_speed(chip_id=0, port_id=0, port_mode=0, speed=0)",
                       "drv_meth_get_autonego(port=0)"}),
              ok + "0x0 status=0\n0x0 enable=0\n0x0 speed=100\n" + ok + "0x0 enable=1\n");
    EXPECT_EQ(answers({write_register(0, 1, 0, "0x10000"), write_register(0, 2, 0, "0"),
                       "drv_meth_read_reg(port=0, mac_phy=2)", "drv_meth_read_reg(port=0, val=null)",
                       meth_set("switch_flag", 2), meth_set("active_ornot", 2), meth_set("led", 4)}),
              bad_value + bad_value + bad_value + null_pointer + bad_value + bad_value + bad_value);
}

TEST_F(ManagementPorts, DumpsAreTheRegistersAsText) {
    EXPECT_EQ(
        answers({"wait 0.4", "drv_meth_dump_info(port=0, mac_phy=0, size=1024)",
                 "drv_meth_dump_info(port=0, mac_phy=0, size=24)", "drv_meth_dump_info(port=0, mac_phy=1, size=47)",
                 "drv_meth_dump_info(port=0, mac_phy=2, size=45)", "drv_meth_dump_info(port=0, size=45, buffer=null)"}),
        "0x0 buffer=\"0x00 control 0x00008031\\n0x01 status 0x00000001\\n0x02 speed 0x000003e8\\n"
        "0x03 lamp 0x00000001\\n0x04 address 0x000002a0\\n0x05 address 0xc0090000\\n"
        "0x06 dropped 0x00000000\\n0x07 bad_frames 0x00000000\\n0x08 rx_packets 0x00000010\\n"
        "0x09 rx_packets 0x00000000\\n0x0a rx_bytes 0x00001ade\\n0x0b rx_bytes 0x00000000\\n"
        "0x0c tx_packets 0x0000000a\\n0x0d tx_packets 0x00000000\\n0x0e tx_bytes 0x00000a6c\\n"
        "0x0f tx_bytes 0x00000000\\n\"\n"
        "0x0 buffer=\"0x00 control 0x00008031\"\n"
        "0x0 buffer=\"0x00 control 0x1140\\n0x01 status 0x796d\\n0x02 id\"\n" +
            bad_value + null_pointer);
}

TEST_F(ManagementPorts, AddressesComeFromTheStoreOfTheBoard) {
    EXPECT_EQ(answers({"drv_meth_get_mac(port=0)", "drv_meth_get_mac(port=1)",
                       "drv_mac_set_addr(type_id=0, addr=[02 01 02 03 04 ff])", "drv_meth_get_mac(port=1)",
                       "drv_mac_set_num(type_id=0, num=1)", "drv_meth_get_mac(port=0)", "drv_meth_get_mac(port=1)",
                       "drv_meth_get_mac(port=0, mac=null)"}),
              "0x0 mac=[02 a0 c0 09 00 00]\n0x0 mac=[02 a0 c0 09 00 01]\n" + ok + "0x0 mac=[02 01 02 03 05 00]\n" + ok +
                  "0x0 mac=[02 01 02 03 04 ff]\n" + no_such_device + null_pointer);
}

TEST_F(ManagementPorts, ThePhyTestLooksForTheRightChip) {
    const std::string test = "drv_meth_get_phy_test(port=0, size=64)";
    EXPECT_EQ(
        answers({test, "drv_meth_get_phy_test(port=0, size=8)", "drv_meth_get_phy_test(port=0, size=64, result=null)",
                 "drv_meth_get_phy_test(port=0, size=64, buffer=null)"}),
        "0x0 result=0 buffer=\"phy identifier 0x0a830121, link up\"\n" + too_small + null_pointer + null_pointer);
    EXPECT_EQ(answers({test}, {"--set", "slot9/phy/port/0/identifier=0x0a830122"}),
              "0x0 result=1 buffer=\"phy identifier 0x0a830122, expected 0x0a830121\"\n");
    EXPECT_EQ(
        answers({test}, {"--set", "slot9/phy/port/0/identifier=0x0a830121", "--set", "slot9/phy/port/0/partner=0"}),
        "0x0 result=0 buffer=\"phy identifier 0x0a830121, link down\"\n");
}

TEST_F(ManagementPorts, WhatTheOtherEndSendsBackWaits) {
    EXPECT_EQ(answers({meth_readable, meth_get, meth_hello, meth_readable, mac_register(1), meth_get, meth_readable,
                       meth_get}),
              "0x0 readable=0\n" + nothing_came + ok + "0x0 readable=1\n" + val(9) + hello_came + "0x0 readable=0\n" +
                  nothing_came);
    // One run sends, the next one receives; the area may be shorter.
    EXPECT_EQ(answers({meth_hello}, {"--set", "slot9/ethernet/management/0/echo=500000"}), ok);
    EXPECT_EQ(answers({"wait 0.498", meth_readable, "wait 0.002", meth_readable,
                       "drv_meth_get_rx_pkt(port=0, buf_len=3)", meth_readable}),
              "0x0 readable=0\n0x0 readable=1\n0x0 buffer=[68 65 6c] read_len=3\n0x0 readable=0\n");
    // The other end of port 1 is silent.
    EXPECT_EQ(answers({"drv_meth_tx_pkt(port=1, buffer=\"hello\")", "wait 1", "drv_meth_is_readable(port=1)"}),
              ok + "0x0 readable=0\n");
}

TEST_F(ManagementPorts, FourPacketsWaitAndOlderOnesAreDropped) {
    std::vector<std::string> lines{meth_init};
    std::string expected = ok;
    for (int i = 1; i <= 6; ++i) {
        lines.push_back("drv_meth_tx_pkt(port=0, buffer=[0" + std::to_string(2 * i) + "])");
        expected += ok;
    }
    lines[5] = "drv_meth_tx_pkt(port=0, buffer=[0a])";
    lines[6] = "drv_meth_tx_pkt(port=0, buffer=[0c])";
    lines.insert(lines.end(), {mac_register(6), meth_counters, meth_get, meth_get, meth_get, meth_get, meth_get});
    EXPECT_EQ(answers(lines), expected + val(2) +
                                  statistic({384, {6, 0, 0}, {6, 0, 0, 0, 0, 0, 0}, 0},
                                            {384, {6, 0, 0}, {6, 0, 0, 0, 0, 0, 0}, 0}, {0, 2, 2}) +
                                  "0x0 buffer=[06] read_len=1\n0x0 buffer=[08] read_len=1\n"
                                  "0x0 buffer=[0a] read_len=1\n0x0 buffer=[0c] read_len=1\n" +
                                  nothing_came);
    EXPECT_EQ(answers({meth_hello, meth_init, meth_readable, mac_register(6)}), ok + ok + "0x0 readable=0\n" + val(0));
}

TEST_F(ManagementPorts, PacketsOfDriversAreCountedByKindAndSize) {
    // The first of the five was not taken in time.
    const meth_direction counted{1814, {3, 1, 1}, {3, 1, 0, 0, 0, 1, 0}, 1};
    EXPECT_EQ(answers({meth_init, "drv_meth_tx_pkt(port=0, buffer=[ff ff ff ff ff ff 01])",
                       "drv_meth_tx_pkt(port=0, buffer=[01 00 5e 00 00 01])",
                       "drv_meth_tx_pkt(port=0, buffer=[02 00 00 00 00 01 02 00 00 00 00 02 81 00 00 01])",
                       "drv_meth_tx_pkt(port=0, buffer=\"" + std::string(100, 'b') + "\")",
                       "drv_meth_tx_pkt(port=0, buffer=\"" + std::string(1514, 'b') + "\")", meth_counters}),
              ok + ok + ok + ok + ok + ok + statistic(counted, counted, {0, 1, 7}));
    EXPECT_EQ(answers({"drv_meth_tx_pkt(port=0, buffer=\"" + std::string(1515, 'b') + "\")",
                       "drv_meth_tx_pkt(port=0, buffer=null, buf_len=0)",
                       "drv_meth_tx_pkt(port=0, buffer=null, buf_len=5)", "drv_meth_tx_pkt(port=2, buffer=\"b\")"}),
              bad_value + null_pointer + null_pointer + no_such_device);
}

// At the MAC or at the PHY: what the board sends comes in again.
TEST_F(ManagementPorts, ALoopedPortHearsItself) {
    const std::string rx = "drv_meth_get_rx_packets(port=1)";
    const std::string tx = "drv_meth_get_tx_packets(port=1)";
    for (const std::string &loop : {write_register(1, 0, 0, "0x0131"), write_register(1, 1, 0, "0x4140")}) {
        EXPECT_EQ(
            answers({"drv_meth_init(port=1)", loop, "drv_meth_get_link_status(port=1)", mac_register(1, 1), "wait 3.2",
                     rx, tx, "drv_meth_tx_pkt(port=1, buffer=\"hello\")", "drv_meth_get_rx_pkt(port=1, buf_len=9)", rx,
                     tx, write_register(1, 0, 0, "0x0031"), write_register(1, 1, 0, "0x1140"), "wait 2"}),
            ok + ok + "0x0 status=1\n" + val(3) + "0x0 packets=16\n0x0 packets=16\n" + ok + hello_came +
                "0x0 packets=17\n0x0 packets=17\n" + ok + ok)
            << loop;
    }
}

// A loop at the MAC needs no other end, and has a speed of its own.
TEST_F(ManagementPorts, ALoopAtTheMacWithoutAnotherEnd) {
    EXPECT_EQ(answers({meth_status, meth_speed, mac_register(2), write_register(0, 0, 0, "0x0131"), meth_status,
                       meth_speed, mac_register(2)},
                      {"--set", "slot9/phy/port/0/partner=0"}),
              "0x0 status=0\n0x0 speed=0\n" + val(0) + ok + "0x0 status=1\n0x0 speed=1000\n" + val(1000));
}

TEST_F(ManagementPorts, APacketWhoseWayEndsAtAPortWithoutALinkIsLost) {
    const std::string rx = "drv_meth_get_rx_packets(port=0)";
    EXPECT_EQ(answers({meth_init, meth_hello, meth_set("shutdown", 1), "wait 1", meth_readable, mac_register(1), rx,
                       meth_set("shutdown", 0), "wait 2", meth_readable, meth_get},
                      {"--set", "slot9/ethernet/management/0/echo=500000"}),
              ok + ok + ok + "0x0 readable=0\n" + val(0) + "0x0 packets=0\n" + ok + "0x0 readable=0\n" + nothing_came);
    // One that was there before waits on.
    EXPECT_EQ(answers({meth_init, meth_hello, "wait 1", meth_set("shutdown", 1), meth_readable, meth_get}),
              ok + ok + ok + "0x0 readable=1\n" + hello_came);
}

TEST_F(ManagementPorts, NoLookAtTheCountersIsTakenBack) {
    const std::vector<std::string> no_other_end{"--set", "slot9/phy/port/0/partner=0"};
    EXPECT_EQ(answers({"wait 0.4", "drv_phy_get_port_status(chip_id=0, port_id=0, port_mode=0)"}), "0x0 enable=1\n");
    EXPECT_EQ(answers({mac_register(8), "wait 1", mac_register(8)}, no_other_end), val(16) + val(16));
}

// A callback has run when the sender goes on, also where another clock than the virtual one says when.
TEST_F(ManagementPorts, WhoSendsHasHeardTheAnswer) {
    std::vector<std::string> lines{"drv_meth_register_callback(port=0, callback=callback)"};
    std::string expected = ok;
    for (int i = 0; i < 20; ++i) {
        lines.push_back(meth_hello);
        lines.push_back(meth_readable);
        expected += ok + "0x0 readable=0\n";
    }
    const std::string printed = answers_of({"--state", state_, "--clock", "real"}, lines);
    EXPECT_EQ(without_events(printed), expected) << printed;
}

TEST_F(ManagementPorts, ADriverThatIsNotUpHasNoPackets) {
    EXPECT_EQ(answers({meth_exit, meth_exit, meth_hello, meth_readable, meth_get,
                       "drv_meth_register_callback(port=0, callback=callback)", meth_set("led", 1),
                       meth_set("shutdown", 1), meth_set("switch_flag", 1), meth_set("active_ornot", 1), meth_speed}),
              ok + meth_not_ready + meth_not_ready + meth_not_ready + meth_not_ready + meth_not_ready + meth_not_ready +
                  meth_not_ready + meth_not_ready + meth_not_ready + "0x0 speed=1000\n");
    EXPECT_EQ(answers({mac_register(0), "drv_meth_get_rx_packets(port=0)", meth_init, meth_hello, mac_register(0)}),
              val(0x0031) + "0x0 packets=0\n" + ok + ok + val(0x8031));
}

TEST_F(ManagementPorts, WhoIsRegisteredIsCalled) {
    const auto heard = [](const std::string &printed, unsigned port) {
        const std::string event = "# event: drv_meth_rx_callback(port=" + std::to_string(port) + ", length=5)\n";
        const size_t at = printed.find(event);
        return at != std::string::npos && printed.find("# event", at + 1) == std::string::npos;
    };
    const std::string sent =
        answers({"drv_meth_register_callback(port=0, callback=callback)", meth_hello, meth_readable});
    EXPECT_TRUE(heard(sent, 0)) << sent;
    EXPECT_TRUE(sent.ends_with("0x0 readable=0\n")) << sent;
    // In a loop; the callback of the other port is not meant.
    const std::string looped =
        answers({"drv_meth_register_callback(port=0, callback=callback)",
                 "drv_meth_register_callback(port=1, callback=callback)", write_register(1, 0, 0, "0x0131"),
                 "drv_meth_tx_pkt(port=1, buffer=[68 65 6c 6c 6f])"});
    EXPECT_TRUE(heard(looped, 1)) << looped;
    // Whoever registers hears at once of what waits.
    EXPECT_EQ(answers({meth_hello}), ok);
    const std::string waited = answers({"drv_meth_register_callback(port=0, callback=callback)", "wait 0.001"});
    EXPECT_TRUE(heard(waited, 0)) << waited;
    EXPECT_EQ(answers({"drv_meth_register_callback(port=0, callback=null)",
                       "drv_meth_register_callback(port=2, callback=callback)",
                       "drv_meth_register_callback(port=0, callback=callback, size=2048)"}),
              null_pointer + no_such_device + null_pointer);
}

TEST_F(ManagementPorts, PacketsAreWrittenToTheAreaOfTheCaller) {
    expect_scene("area", "register 0x0\nsend 0x0\n500 ms: port 0, the area, 5 bytes: hello\n1001 ms: end\n");
    expect_scene("own", "register 0x0\nsend 0x0\n500 ms: port 0, own, 5 bytes: hello\n1001 ms: end\n");
    expect_scene("short", "register 0x0\nsend 0x0\nsend 0x0\n500 ms: port 0, the area, 8 bytes: it is lo\n"
                          "501 ms: port 0, the area, 5 bytes: hello\n1002 ms: end\n");
}

TEST_F(ManagementPorts, PacketsComeWhenTheLibraryIsClosed) {
    expect_scene("closed", "register 0x0\nsend 0x0\nclose 0, gone 1\n500 ms: port 0, the area, 5 bytes: hello\n"
                           "1001 ms: end\n");
}

TEST_F(ManagementPorts, WhoComesLastIsCalledAloneAndNobodyAfterTheExit) {
    expect_scene("replaced", "register 0x0\nsend 0x0\nregister 0x0\n500 ms: another of port 0, 5 bytes\n"
                             "1001 ms: end\n");
    expect_scene("exit", "register 0x0\nsend 0x0\nexit 0x0\n1001 ms: end\n");
}

TEST_F(ManagementPorts, WordsThatNameNothing) {
    EXPECT_EQ(answers({"drv_meth_get_speed(port=2)", "drv_meth_init(port=2)", "drv_meth_exit(port=2)",
                       "drv_meth_get_statistic(port=2)", "drv_meth_get_mac(port=2)", mac_register(0, 2),
                       "drv_meth_dump_info(port=2, size=9)", "drv_meth_get_phy_test(port=2, size=9)"}),
              no_such_device + no_such_device + no_such_device + no_such_device + no_such_device + no_such_device +
                  no_such_device + no_such_device);
    EXPECT_EQ(
        answers({"drv_meth_get_port_num(number=null)", "drv_meth_is_readable(port=0, readable=null)",
                 "drv_meth_get_rx_pkt(port=0, buf_len=9, buffer=null)",
                 "drv_meth_get_rx_pkt(port=0, buf_len=9, read_len=null)", "drv_meth_get_autonego(port=0, enable=null)",
                 "drv_meth_get_speed(port=0, speed=null)", "drv_meth_get_media_type(port=0, media_type=null)",
                 "drv_meth_get_link_status(port=0, status=null)", "drv_meth_get_rx_packets(port=0, packets=null)",
                 "drv_meth_get_tx_packets(port=0, packets=null)", "drv_meth_get_statistic(port=0, statistic=null)"}),
        null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer + null_pointer +
            null_pointer + null_pointer + null_pointer + null_pointer);
    const std::string without = scratch_file("without_ports.xml", R"(<board name="without" like="mpu" slot="9">
  <module name="sim_ethernet"><node name="management" remove="yes"/></module>
</board>)");
    EXPECT_EQ(answers({"drv_meth_get_port_num()", meth_speed, meth_init, meth_hello}, {"--board", without}),
              not_supported + not_supported + not_supported + not_supported);
}

} // namespace kestro_tests
