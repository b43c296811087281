// ieth_test: every sub-command on the real program, with the driver scripted; and with the library at fault.
#include <gtest/gtest.h>

#include <csignal>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"
#include "tests/support/library_faults.h"
#include "tests/support/simulator.h"
#include "tests/support/test_lines.h"
#include "tests/support/thoroughness.h"

using namespace kestro_tests;

namespace {

// A sub-command with words that it takes, and what the table has for it.
struct ieth_command {
    std::string name;
    std::string words;
    std::string call;
    std::string echo;
    std::string refused; // the line of an operation that fails with 0x811101a4
    std::string lacking; // the line of a library without the operation
    std::string usage;
};

const std::vector<ieth_command> ieth_commands = {
    {"drv_ieth_get_link_status", "5", "drv_ieth_get_link_status(port=5)", "ieth port:5 \n\n",
     "drv_ieth_get_link_status ret:0x811101a4\n\n", "dlsym drv_ieth_get_link_status fail, error <system> <loader>\n",
     "invalid arg num [port]\n"},
    {"drv_ieth_set_loopback", "5 1 2", "drv_ieth_set_loopback(port=5, mac_phy=1, mode=2)",
     "ieth port:5 mac_phy:1 mode:2\n\n", "drv_ieth_set_loopback ret:0x811101a4\n\n",
     "dlsym drv_ieth_set_loopback fail, error <system> <loader>\n", "invalid arg num [port][mac_phy][mode]\n"},
    {"drv_ieth_get_rx_packets", "5", "drv_ieth_get_rx_packets(port=5)", "ieth port:5 \n\n",
     "drv_ieth_get_rx_packets ret:0x811101a4\n\n", "dlsym drv_ieth_get_rx_packets fail, error <system> <loader>\n",
     "invalid arg num [port]\n"},
    {"drv_ieth_get_tx_packets", "5", "drv_ieth_get_tx_packets(port=5)", "ieth port:5 \n\n",
     "drv_ieth_get_tx_packets ret:0x811101a4\n\n", "dlsym drv_ieth_get_tx_packets fail, error <system> <loader>\n",
     "invalid arg num [port]\n"},
    {"drv_ieth_dump_info", "5 1 64", "drv_ieth_dump_info(port=5, mac_phy=1, buf_len=64)",
     "ieth port:5 mac_phy:1 buf_len:64\n\n", "drv_ieth_dump_info ret:0x811101a4\n\n",
     "dlsym drv_ieth_dump_info fail, error <system> <loader>\n", "invalid arg num [port] [mac_phy] [buf_len]\n"},
    {"drv_ieth_get_statistic", "5", "drv_ieth_get_statistic(port=5)", "ieth port:5 \n\n",
     "drv_ieth_get_statistic ret:0x811101a4\n\n", "dlsym drv_ieth_get_statistic fail, error <system> <loader>\n",
     "invalid arg num [port]\n"},
};

std::string ieth_line(const ieth_command &command) {
    return "ieth_test " + command.name + " " + command.words;
}

void expect_ieth_library_used(const std::string &line, const std::string &script, int opened, int closed) {
    if (lists_lines() || !is_tried_here(line + script)) {
        return;
    }
    SCOPED_TRACE("kestro_test " + line);
    const library_use use = library_used("drv_inner_eth", line, script);
    EXPECT_EQ(use.opened, opened);
    EXPECT_EQ(use.closed, closed);
}

} // namespace

TEST(IethTest, UsageListsTheSubCommandsInOrder) {
    expect_run("ieth_test", "",
               "kestro_test: too few args!\n\n\nUsage: kestro_test [OPTION]\t\n"
               "List the functionalities for kestro_test \n"
               " drv_ieth_get_link_status port\n"
               " drv_ieth_set_loopback port mac_phy mode\n"
               " drv_ieth_get_rx_packets port\n"
               " drv_ieth_get_tx_packets port\n"
               " drv_ieth_dump_info port mac_phy buf_len\n"
               " drv_ieth_get_statistic port\n",
               0);
}

// The whole of one run, written out.
TEST(IethTest, AWholeRun) {
    expect_run("ieth_test drv_ieth_get_link_status 5", "drv_ieth_get_link_status(port=5) = 0 status=1",
               "ieth port:5 \n\nieth port5 link status:1 \n\n"
               "cmd_exec used second:0\r\ncmd_exec used millisecond:0\r\n",
               0);
}

TEST(IethTest, GetLinkStatus) {
    expect_success("ieth_test drv_ieth_get_link_status 0xffffffff",
                   "drv_ieth_get_link_status(port=0xffffffff) = 0 status=0xfffffffe",
                   "ieth port:4294967295 \n\nieth port4294967295 link status:4294967294 \n\n");
    expect_success("ieth_test drv_ieth_get_link_status port", "drv_ieth_get_link_status(port=0) = 0",
                   "ieth port:0 \n\nieth port0 link status:0 \n\n");
}

// The code is shown whatever it is.
TEST(IethTest, SetLoopback) {
    expect_success("ieth_test drv_ieth_set_loopback 5 1 2", "drv_ieth_set_loopback(port=5, mac_phy=1, mode=2) = 0",
                   "ieth port:5 mac_phy:1 mode:2\n\ndrv_ieth_set_loopback ret:0\n\n");
    expect_success("ieth_test drv_ieth_set_loopback 0x10 010 0x100000000",
                   "drv_ieth_set_loopback(port=16, mac_phy=8, mode=0xffffffff) = 0",
                   "ieth port:16 mac_phy:8 mode:4294967295\n\ndrv_ieth_set_loopback ret:0\n\n");
    expect_success("ieth_test drv_ieth_set_loopback port mac mode",
                   "drv_ieth_set_loopback(port=0, mac_phy=0, mode=0) = 0",
                   "ieth port:0 mac_phy:0 mode:0\n\ndrv_ieth_set_loopback ret:0\n\n");
}

TEST(IethTest, GetRxPackets) {
    expect_success("ieth_test drv_ieth_get_rx_packets 5", "drv_ieth_get_rx_packets(port=5) = 0 packets=4294967296",
                   "ieth port:5 \n\nieth port5 rx packets:4294967296 \n\n");
    expect_success("ieth_test drv_ieth_get_rx_packets 0xffffffff",
                   "drv_ieth_get_rx_packets(port=0xffffffff) = 0 packets=18446744073709551615",
                   "ieth port:4294967295 \n\nieth port4294967295 rx packets:18446744073709551615 \n\n");
    expect_success("ieth_test drv_ieth_get_rx_packets port", "drv_ieth_get_rx_packets(port=0) = 0",
                   "ieth port:0 \n\nieth port0 rx packets:0 \n\n");
}

TEST(IethTest, GetTxPackets) {
    expect_success("ieth_test drv_ieth_get_tx_packets 5", "drv_ieth_get_tx_packets(port=5) = 0 packets=4294967297",
                   "ieth port:5 \n\nieth port5 tx packets:4294967297 \n\n");
    expect_success("ieth_test drv_ieth_get_tx_packets 0xffffffff",
                   "drv_ieth_get_tx_packets(port=0xffffffff) = 0 packets=18446744073709551615",
                   "ieth port:4294967295 \n\nieth port4294967295 tx packets:18446744073709551615 \n\n");
    expect_success("ieth_test drv_ieth_get_tx_packets port", "drv_ieth_get_tx_packets(port=0) = 0",
                   "ieth port:0 \n\nieth port0 tx packets:0 \n\n");
}

TEST(IethTest, DumpInfo) {
    expect_success("ieth_test drv_ieth_dump_info 5 1 64",
                   "drv_ieth_dump_info(port=5, mac_phy=1, buf_len=64) = 0 buffer=\"reg 0: 1140\\nreg 1: 796d\\n\"",
                   "ieth port:5 mac_phy:1 buf_len:64\n\nbuff:\nreg 0: 1140\nreg 1: 796d\n \n\n");
    expect_success("ieth_test drv_ieth_dump_info 0xffffffff 0xfffffffe 0x10",
                   "drv_ieth_dump_info(port=0xffffffff, mac_phy=0xfffffffe, buf_len=16) = 0",
                   "ieth port:4294967295 mac_phy:4294967294 buf_len:16\n\nbuff:\n \n\n");
}

TEST(IethTest, DumpThatFillsItsAreaIsShownToItsEnd) {
    expect_success("ieth_test drv_ieth_dump_info 5 1 4",
                   "drv_ieth_dump_info(port=5, mac_phy=1, buf_len=4) = 0 buffer=[31 31 34 30]",
                   "ieth port:5 mac_phy:1 buf_len:4\n\nbuff:\n1140 \n\n");
    expect_success("ieth_test drv_ieth_dump_info 5 1 1",
                   "drv_ieth_dump_info(port=5, mac_phy=1, buf_len=1) = 0 buffer=[31]",
                   "ieth port:5 mac_phy:1 buf_len:1\n\nbuff:\n1 \n\n");
}

TEST(IethTest, DumpIntoNothing) {
    expect_success("ieth_test drv_ieth_dump_info 5 1 0", "drv_ieth_dump_info(port=5, mac_phy=1, buf_len=0) = 0",
                   "ieth port:5 mac_phy:1 buf_len:0\n\nbuff:\n \n\n");
    expect_success("ieth_test drv_ieth_dump_info port mac length",
                   "drv_ieth_dump_info(port=0, mac_phy=0, buf_len=0) = 0",
                   "ieth port:0 mac_phy:0 buf_len:0\n\nbuff:\n \n\n");
}

// No board gives an area of more than half of its address space, and the driver is not called.
TEST(IethTest, DumpOfTheGreatestLength) {
    expect_failure("ieth_test drv_ieth_dump_info 5 1 4294967295", "", "ieth port:5 mac_phy:1 buf_len:4294967295\n\n");
}

TEST(IethTest, DumpWithoutAnArea) {
    expect_without_text_area("ieth_test drv_ieth_dump_info 5 1 64", "drv_ieth_dump_info = 0 buffer=\"reg 0\"",
                             std::string("ieth port:5 mac_phy:1 buf_len:64\n\n") + timing_lines +
                                 operate_fail("drv_ieth_dump_info") + operate_fail("ieth_test"),
                             255);
}

TEST(IethTest, GetStatistic) {
    expect_success("ieth_test drv_ieth_get_statistic 5",
                   "drv_ieth_get_statistic(port=5) = 0 statistic={rx_packets=18446744073709551615 "
                   "tx_packets=4294967296 rx_bytes=203 tx_bytes=204 rx_errors=205 tx_errors=206 rx_dropped=207 "
                   "tx_dropped=208 multicast=209 collisions=210 rx_length_errors=211 rx_over_errors=212 "
                   "rx_crc_errors=213 rx_frame_errors=214 rx_fifo_errors=215 rx_missed_errors=216 "
                   "tx_aborted_errors=217 tx_carrier_errors=218 tx_fifo_errors=219 tx_heartbeat_errors=220 "
                   "tx_window_errors=221 rx_compressed=222 tx_compressed=9223372036854775808}",
                   "ieth port:5 \n\n"
                   "ieth port5 stat:\n"
                   "rx_packets is 18446744073709551615\n"
                   "tx_packets is 4294967296\n"
                   "rx_bytes is 203\n"
                   "tx_bytes is 204\n"
                   "rx_errors is 205\n"
                   "tx_errors is 206\n"
                   "rx_dropped is 207\n"
                   "tx_dropped is 208\n"
                   "multicast is 209\n"
                   "collisions is 210\n"
                   "rx_length_errors is 211\n"
                   "rx_over_errors is 212\n"
                   "rx_crc_errors is 213\n"
                   "rx_frame_errors is 214\n"
                   "rx_fifo_errors is 215\n"
                   "rx_missed_errors is 216\n"
                   "tx_aborted_errors is 217\n"
                   "tx_carrier_errors is 218\n"
                   "tx_fifo_errors is 219\n"
                   "tx_heartbeat_errors is 220\n"
                   "tx_window_errors is 221\n"
                   "rx_compressed is 222\n"
                   "tx_compressed is 9223372036854775808\n");
}

namespace {

// The counters of a driver that answered well and wrote none of them.
const std::string no_ieth_packets = "rx_packets is 0\n"
                                    "tx_packets is 0\n"
                                    "rx_bytes is 0\n"
                                    "tx_bytes is 0\n"
                                    "rx_errors is 0\n"
                                    "tx_errors is 0\n"
                                    "rx_dropped is 0\n"
                                    "tx_dropped is 0\n"
                                    "multicast is 0\n"
                                    "collisions is 0\n"
                                    "rx_length_errors is 0\n"
                                    "rx_over_errors is 0\n"
                                    "rx_crc_errors is 0\n"
                                    "rx_frame_errors is 0\n"
                                    "rx_fifo_errors is 0\n"
                                    "rx_missed_errors is 0\n"
                                    "tx_aborted_errors is 0\n"
                                    "tx_carrier_errors is 0\n"
                                    "tx_fifo_errors is 0\n"
                                    "tx_heartbeat_errors is 0\n"
                                    "tx_window_errors is 0\n"
                                    "rx_compressed is 0\n"
                                    "tx_compressed is 0\n";

} // namespace

TEST(IethTest, GetStatisticOfOtherPorts) {
    expect_success("ieth_test drv_ieth_get_statistic 0xffffffff", "drv_ieth_get_statistic(port=0xffffffff) = 0",
                   "ieth port:4294967295 \n\nieth port4294967295 stat:\n" + no_ieth_packets);
    expect_success("ieth_test drv_ieth_get_statistic port", "drv_ieth_get_statistic(port=0) = 0",
                   "ieth port:0 \n\nieth port0 stat:\n" + no_ieth_packets);
}

TEST(IethTest, AnOperationThatFails) {
    for (const ieth_command &command : ieth_commands) {
        expect_failure(ieth_line(command), command.call + " = 0x811101a4", command.echo + command.refused);
    }
}

// The words are counted before the library is opened.
TEST(IethTest, CountsAreExact) {
    for (const ieth_command &command : ieth_commands) {
        expect_failure("ieth_test " + command.name, "", command.usage);
        expect_failure(ieth_line(command) + " 6", "", command.usage);
        expect_failure(ieth_line(command) + " 6 7 8", "", command.usage);
    }
    expect_failure("ieth_test drv_ieth_set_loopback 5 1", "", "invalid arg num [port][mac_phy][mode]\n");
    expect_failure("ieth_test drv_ieth_dump_info 5 1", "", "invalid arg num [port] [mac_phy] [buf_len]\n");
}

TEST(IethTest, WithoutTheLibrary) {
    for (const ieth_command &command : ieth_commands) {
        expect_failure_with(missing("drv_inner_eth"), ieth_line(command), "",
                            "dlopen libdrv_inner_eth.so fail, error <system> <loader>\n");
    }
}

TEST(IethTest, AFileThatIsNoLibrary) {
    for (const ieth_command &command : ieth_commands) {
        expect_failure_with(no_library("drv_inner_eth"), ieth_line(command), "",
                            "dlopen libdrv_inner_eth.so fail, error <system> <loader>\n");
    }
}

TEST(IethTest, ALibraryWithoutTheOperation) {
    for (const ieth_command &command : ieth_commands) {
        expect_failure_with(lacking("drv_inner_eth", command.name), ieth_line(command), "", command.lacking);
    }
}

// Only what a sub-command needs is looked up.
TEST(IethTest, ALibraryWithoutAnotherOperation) {
    expect_run_with(lacking("drv_inner_eth", "drv_ieth_get_statistic"), "ieth_test drv_ieth_get_link_status 5",
                    "drv_ieth_get_link_status(port=5) = 0 status=1",
                    "ieth port:5 \n\nieth port5 link status:1 \n\n" + std::string(timing_lines), 0);
}

// A board without another library is no worse for it.
TEST(IethTest, AnotherLibraryMayBeMissing) {
    expect_run_with(missing("drv_clusterport"), "ieth_test drv_ieth_get_link_status 5",
                    "drv_ieth_get_link_status(port=5) = 0 status=1",
                    "ieth port:5 \n\nieth port5 link status:1 \n\n" + std::string(timing_lines), 0);
}

TEST(IethTest, ALibraryThatCrashesWhileItIsLoaded) {
    expect_run_with(crashing("drv_inner_eth"), "ieth_test drv_ieth_get_link_status 5", "", "", 128 + SIGSEGV);
}

TEST(IethTest, TheLibraryIsClosedAgain) {
    for (const ieth_command &command : ieth_commands) {
        expect_ieth_library_used(ieth_line(command), command.call + " = 0", 1, 1);
        expect_ieth_library_used(ieth_line(command), command.call + " = 0x811101a4", 1, 1);
        expect_ieth_library_used("ieth_test " + command.name, "", 0, 0);
    }
}
