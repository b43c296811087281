// meth_test: packets sent, received and counted, on the real program, with the driver scripted. What comes back is
// tests/threads/late_packets: under a script nothing calls back.
#include <gtest/gtest.h>

#include "tests/support/command.h"
#include "tests/support/failing_allocations.h"

using namespace kestro_tests;

namespace {

// The three calls of a send, with the port's initialisation and the packet as the rest of their lines.
std::string sending(const std::string &port, const std::string &init, const std::string &packet) {
    return "drv_meth_init(port=" + port + ") = " + init + "\n" + "drv_meth_register_callback(port=" + port +
           ", callback=callback, buffer=callback, size=2048) = 0\n" + "drv_meth_tx_pkt(port=" + port + ", " + packet;
}

std::string filling(size_t size) {
    return std::string(size, 'F');
}

const std::string module_fail = operate_fail("meth_test");

} // namespace

TEST(MethPacketsTest, GetRxPkt) {
    expect_success("meth_test drv_meth_get_rx_pkt 3 64",
                   "drv_meth_get_rx_pkt(port=3, buf_len=64, read_len=0) = 0 buffer=\"hello\" read_len=5",
                   "port:3  buf_len:64\n\nread_len:5\nrx_buf:hello\n\n");
    expect_success("meth_test drv_meth_get_rx_pkt eth len", "drv_meth_get_rx_pkt(port=0, buf_len=0, read_len=0) = 0",
                   "port:0  buf_len:0\n\nread_len:0\nrx_buf:\n\n");
    expect_success("meth_test drv_meth_get_rx_pkt 0x10 2048",
                   "drv_meth_get_rx_pkt(port=16, buf_len=2048, read_len=0) = 0",
                   "port:16  buf_len:2048\n\nread_len:0\nrx_buf:\n\n");
    expect_failure("meth_test drv_meth_get_rx_pkt 3 64",
                   "drv_meth_get_rx_pkt(port=3, buf_len=64, read_len=0) = 0x811101a4",
                   "port:3  buf_len:64\n\ndrv_meth_get_rx_pkt ret:2165375396\n\n");
    for (const std::string words : {"", " 3", " 3 64 1"}) {
        expect_failure("meth_test drv_meth_get_rx_pkt" + words, "", "invalid arg num [port] [buf_len]\n");
    }
}

TEST(MethPacketsTest, APacketThatFillsTheAreaEndsThere) {
    expect_success("meth_test drv_meth_get_rx_pkt 3 4",
                   "drv_meth_get_rx_pkt(port=3, buf_len=4, read_len=0) = 0 buffer=\"FFFF\" read_len=4",
                   "port:3  buf_len:4\n\nread_len:4\nrx_buf:FFFF\n\n");
    expect_success("meth_test drv_meth_get_rx_pkt 3 2048",
                   "drv_meth_get_rx_pkt(port=3, buf_len=2048, read_len=0) = 0 buffer=\"" + filling(2048) +
                       "\" read_len=2048",
                   "port:3  buf_len:2048\n\nread_len:2048\nrx_buf:" + filling(2048) + "\n\n");
}

TEST(MethPacketsTest, ReceivingWithoutMemoryAsksNobody) {
    expect_failure("meth_test drv_meth_get_rx_pkt 3 4294967295", "", "port:3  buf_len:4294967295\n\n");
    expect_failure("meth_test drv_meth_get_rx_pkt 3 -1", "", "port:3  buf_len:4294967295\n\n");
    expect_without_text_area(
        "meth_test drv_meth_get_rx_pkt 3 64", "drv_meth_get_rx_pkt = 0",
        "port:3  buf_len:64\n\n" + std::string(timing_lines) + operate_fail("drv_meth_get_rx_pkt") + module_fail, 255);
}

TEST(MethPacketsTest, TxPkt) {
    expect_success("meth_test drv_meth_tx_pkt 2 hello 5", sending("2", "0", "buffer=\"hello\", buf_len=5) = 0"),
                   "port:2  buf_len:5\ntx_buf:hello\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n");
    expect_success("meth_test drv_meth_tx_pkt 0x10 'two words' 0xb",
                   sending("16", "0", "buffer=[74 77 6f 20 77 6f 72 64 73 00 00], buf_len=11) = 0"),
                   "port:16  buf_len:11\ntx_buf:two words\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n");
    expect_failure("meth_test drv_meth_tx_pkt 2 hello 5",
                   sending("2", "0", "buffer=\"hello\", buf_len=5) = 0x811101a4"),
                   "port:2  buf_len:5\ntx_buf:hello\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:2165375396\n\n");
    for (const std::string words : {"", " 2", " 2 hello", " 2 hello 5 6"}) {
        expect_failure("meth_test drv_meth_tx_pkt" + words, "", "invalid arg num [port] [tx_buf] [buf_len]\n");
    }
}

TEST(MethPacketsTest, TxPktCutsTheWordToTheLength) {
    expect_success("meth_test drv_meth_tx_pkt 2 hello 1", sending("2", "0", "buffer=\"h\", buf_len=1) = 0"),
                   "port:2  buf_len:1\ntx_buf:h\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n");
    expect_success("meth_test drv_meth_tx_pkt eth hello len", sending("0", "0", "buf_len=0) = 0"),
                   "port:0  buf_len:0\ntx_buf:\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n");
    expect_success("meth_test drv_meth_tx_pkt 2 " + filling(3000) + " 2048",
                   sending("2", "0", "buffer=\"" + filling(2048) + "\", buf_len=2048) = 0"),
                   "port:2  buf_len:2048\ntx_buf:" + filling(2048) + "\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n");
}

TEST(MethPacketsTest, TxPktFillsUpWithZeros) {
    std::string zeros;
    for (int i = 0; i < 2046; ++i) {
        zeros += " 00";
    }
    expect_success("meth_test drv_meth_tx_pkt 2 hi 2048",
                   sending("2", "0", "buffer=[68 69" + zeros + "], buf_len=2048) = 0"),
                   "port:2  buf_len:2048\ntx_buf:hi\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n");
    expect_success("meth_test drv_meth_tx_pkt 2 '' 2", sending("2", "0", "buffer=[00 00], buf_len=2) = 0"),
                   "port:2  buf_len:2\ntx_buf:\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n");
}

TEST(MethPacketsTest, TxPktGoesOnWhenInitOrRegistrationFail) {
    expect_success("meth_test drv_meth_tx_pkt 2 hi 2", sending("2", "0x12", "buffer=\"hi\", buf_len=2) = 0"),
                   "port:2  buf_len:2\ntx_buf:hi\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n");
    expect_success("meth_test drv_meth_tx_pkt 2 hi 2",
                   "drv_meth_init(port=2) = 0\n"
                   "drv_meth_register_callback(port=2, size=2048) = 0x13\n"
                   "drv_meth_tx_pkt(port=2, buffer=\"hi\", buf_len=2) = 0",
                   "port:2  buf_len:2\ntx_buf:hi\r\nrecv_buf:\r\ndrv_meth_tx_pkt ret:0\n\n");
}

TEST(MethPacketsTest, TxPktWithoutMemoryInitialisesThePortFirst) {
    expect_failure("meth_test drv_meth_tx_pkt 2 hello 4294967295", "drv_meth_init(port=2) = 0",
                   "malloc len:4294967295 failure\r\n");
    expect_failure("meth_test drv_meth_tx_pkt 2 hello 2147483648", "drv_meth_init(port=2) = 0x12",
                   "malloc len:2147483648 failure\r\n");
    if (lists_lines()) {
        return;
    }
    const starved_run starved = run_without_text_area("meth_test drv_meth_tx_pkt 2 hello 64",
                                                      "drv_meth_init = 0\ndrv_meth_register_callback = 0\n"
                                                      "drv_meth_tx_pkt = 0");
    EXPECT_EQ(starved.result.out,
              "malloc len:64 failure\r\n" + std::string(timing_lines) + operate_fail("drv_meth_tx_pkt") + module_fail);
    EXPECT_EQ(starved.result.status, 255);
    EXPECT_EQ(starved.calls, "drv_meth_init(port=2) = 0x0\n");
}

TEST(MethPacketsTest, PacketCounts) {
    for (const std::string way : {"rx", "tx"}) {
        const std::string name = "drv_meth_get_" + way + "_packets";
        const std::string line = "meth_test " + name;
        expect_success(line + " 3", name + "(port=3) = 0 packets=12", "port:3\n\n" + way + " packets:12 \n\n");
        expect_success(line + " 0x10", name + "(port=16) = 0 packets=18446744073709551615",
                       "port:16\n\n" + way + " packets:18446744073709551615 \n\n");
        expect_success(line + " eth", name + "(port=0) = 0", "port:0\n\n" + way + " packets:0 \n\n");
        expect_failure(line + " 3", name + "(port=3) = 0x811101a4 packets=12",
                       "port:3\n\n" + name + " ret:2165375396\n\n");
        expect_failure(line, "", "invalid arg num [port]\n");
        expect_failure(line + " 3 4", "", "invalid arg num [port]\n");
    }
}

TEST(MethPacketsTest, StatisticOfAPort) {
    expect_success(
        "meth_test drv_meth_get_statistic 3",
        "drv_meth_get_statistic(port=3) = 0 statistic={rx_bytes_ok=101 rx_bytes_err=102 rx_unicast=103 "
        "rx_multicast=104 rx_broadcast=105 rx_pkt_64=106 rx_pkt_127=107 rx_pkt_255=108 rx_pkt_511=109 "
        "rx_pkt_1023=110 rx_pkt_1518=111 rx_pkt_max=112 rx_fcs=113 rx_tagged=114 rx_pkt_err=115 rx_align_err=116 "
        "rx_long_err=117 rx_jabber_err=118 rx_pause=119 rx_unknown=120 rx_too_long=121 rx_runt_err=122 "
        "rx_short_err=123 rx_filt_pkts=124 rx_filt_bytes=125 tx_bytes_ok=201 tx_bytes_err=202 tx_unicast=203 "
        "tx_multicast=204 tx_broadcast=205 tx_pkt_64=206 tx_pkt_127=207 tx_pkt_255=208 tx_pkt_511=209 "
        "tx_pkt_1023=210 tx_pkt_1518=211 tx_pkt_max=212 tx_exce_drop=213 tx_under_run=214 tx_tagged=215 "
        "tx_crc_err=216 tx_pause_frame=18446744073709551615 reserved=999}",
        "meth port3 stat:\n"
        "rx_bytes_ok is 101\n"
        "rx_bytes_err is 102\n"
        "rx_unicast is 103\n"
        "rx_multicast is 104\n"
        "rx_broadcast is 105\n"
        "rx_pkt_64 is 106\n"
        "rx_pkt_127 is 107\n"
        "rx_pkt_255 is 108\n"
        "rx_pkt_511 is 109\n"
        "rx_pkt_1023 is 110\n"
        "rx_pkt_1518 is 111\n"
        "rx_pkt_max is 112\n"
        "rx_fcs is 113\n"
        "rx_tagged is 114\n"
        "rx_pkt_err is 115\n"
        "rx_align_err is 116\n"
        "rx_long_err is 117\n"
        "rx_jabber_err is 118\n"
        "rx_pause is 119\n"
        "rx_unknown is 120\n"
        "rx_too_long is 121\n"
        "rx_runt_err is 122\n"
        "rx_short_err is 123\n"
        "rx_filt_pkts is 124\n"
        "rx_filt_bytes is 125\n"
        "tx_bytes_ok is 201\n"
        "tx_bytes_err is 202\n"
        "tx_unicast is 203\n"
        "tx_multicast is 204\n"
        "tx_broadcast is 205\n"
        "tx_pkt_64 is 206\n"
        "tx_pkt_127 is 207\n"
        "tx_pkt_255 is 208\n"
        "tx_pkt_511 is 209\n"
        "tx_pkt_1023 is 210\n"
        "tx_pkt_1518 is 211\n"
        "tx_pkt_max is 212\n"
        "tx_exce_drop is 213\n"
        "tx_under_run is 214\n"
        "tx_tagged is 215\n"
        "tx_crc_err is 216\n"
        "tx_pause_frame is 18446744073709551615\n");
}

TEST(MethPacketsTest, StatisticOfAPortThatWroteNothing) {
    expect_success("meth_test drv_meth_get_statistic eth", "drv_meth_get_statistic(port=0) = 0",
                   "meth port0 stat:\nrx_bytes_ok is 0\nrx_bytes_err is 0\nrx_unicast is 0\nrx_multicast is 0\n"
                   "rx_broadcast is 0\nrx_pkt_64 is 0\nrx_pkt_127 is 0\nrx_pkt_255 is 0\nrx_pkt_511 is 0\n"
                   "rx_pkt_1023 is 0\nrx_pkt_1518 is 0\nrx_pkt_max is 0\nrx_fcs is 0\nrx_tagged is 0\n"
                   "rx_pkt_err is 0\nrx_align_err is 0\nrx_long_err is 0\nrx_jabber_err is 0\nrx_pause is 0\n"
                   "rx_unknown is 0\nrx_too_long is 0\nrx_runt_err is 0\nrx_short_err is 0\nrx_filt_pkts is 0\n"
                   "rx_filt_bytes is 0\ntx_bytes_ok is 0\ntx_bytes_err is 0\ntx_unicast is 0\ntx_multicast is 0\n"
                   "tx_broadcast is 0\ntx_pkt_64 is 0\ntx_pkt_127 is 0\ntx_pkt_255 is 0\ntx_pkt_511 is 0\n"
                   "tx_pkt_1023 is 0\ntx_pkt_1518 is 0\ntx_pkt_max is 0\ntx_exce_drop is 0\ntx_under_run is 0\n"
                   "tx_tagged is 0\ntx_crc_err is 0\ntx_pause_frame is 0\n");
}

TEST(MethPacketsTest, StatisticThatFailed) {
    expect_failure("meth_test drv_meth_get_statistic 0xffffffff",
                   "drv_meth_get_statistic(port=0xffffffff) = 0x811101a4 statistic={rx_bytes_ok=1}",
                   "drv_meth_get_statistic ret:2165375396\n\n");
    expect_failure("meth_test drv_meth_get_statistic", "", "invalid arg num [port]\n");
    expect_failure("meth_test drv_meth_get_statistic 3 4", "", "invalid arg num [port]\n");
}
