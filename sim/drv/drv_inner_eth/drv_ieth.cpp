// Inner Ethernet ports of the own board.
#include "drv_inner_eth/drv_ieth.h"

#include "sim/devices/network/inner_port.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

constexpr uint32_t at_mac = 0;
constexpr uint32_t at_phy = 1;

// A frame with a wrong checksum is an error and no packet.
uint64_t good_packets(const ethernet_port::traffic &passed) {
    return ethernet_port::packets_of(passed.received) - passed.bad;
}

constexpr uint64_t bytes_of_bad_frame = 64;

} // namespace

uint32_t drv_ieth_get_link_status(uint32_t port, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = inner_port::is_up(b, inner_port::find(b, port)) ? 1 : 0;
    });
}

uint32_t drv_ieth_set_loopback(uint32_t port, uint32_t mac_phy, uint32_t mode) {
    return operate([&](board &b) {
        const inner_port::one found = inner_port::find(b, port);
        refuse_if(mac_phy > at_phy || mode > 1, error::bad_value);
        if (mac_phy == at_mac) {
            inner_port::set_mac_loop(b, found, mode == 1);
        } else {
            inner_port::set_phy_loop(b, found, mode == 1);
        }
    });
}

uint32_t drv_ieth_get_rx_packets(uint32_t port, uint64_t *packets) {
    return operate([&](board &b) {
        refuse_null(packets);
        *packets = good_packets(inner_port::read_traffic(b, inner_port::find(b, port)));
    });
}

uint32_t drv_ieth_get_tx_packets(uint32_t port, uint64_t *packets) {
    return operate([&](board &b) {
        refuse_null(packets);
        *packets = ethernet_port::packets_of(inner_port::read_traffic(b, inner_port::find(b, port)).sent);
    });
}

uint32_t drv_ieth_dump_info(uint32_t port, uint32_t mac_phy, char *buffer, uint32_t buf_len) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const inner_port::one found = inner_port::find(b, port);
        refuse_if(mac_phy > at_phy, error::bad_value);
        write_cut_text(buffer, buf_len, inner_port::dump(b, found, mac_phy == at_phy));
    });
}

uint32_t drv_ieth_get_statistic(uint32_t port, struct drv_ieth_statistic *statistic) {
    return operate([&](board &b) {
        refuse_null(statistic);
        const ethernet_port::traffic passed = inner_port::read_traffic(b, inner_port::find(b, port));
        *statistic = {};
        statistic->rx_packets = good_packets(passed);
        statistic->rx_bytes = passed.received[ethernet_port::bytes] - passed.bad * bytes_of_bad_frame;
        statistic->multicast = passed.received[ethernet_port::multicast];
        statistic->rx_errors = passed.bad;
        statistic->rx_crc_errors = passed.bad;
        statistic->tx_packets = ethernet_port::packets_of(passed.sent);
        statistic->tx_bytes = passed.sent[ethernet_port::bytes];
    });
}
