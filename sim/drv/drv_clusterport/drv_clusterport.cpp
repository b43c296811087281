// Cluster ports of the own board.
#include "drv_clusterport/drv_clusterport.h"

#include "sim/devices/network/cluster_port.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

// Each process brings the library up for itself, each time that it has opened it.
bool is_initialised = false;

constexpr uint32_t reset_of_mac = 0;
constexpr uint32_t reset_of_phy = 1;

void require_ports(board &b) {
    refuse_if(b.all_at<cluster_port::family>(b.self()).empty(), error::not_supported);
}

cluster_port::one find_port(board &b, uint32_t port) {
    cluster_port::one found = cluster_port::find(b, port);
    refuse_if(!is_initialised, error::not_ready);
    return found;
}

uint32_t tell(uint32_t port, uint32_t *word, uint32_t (*of)(board &, const cluster_port::one &)) {
    return operate([&](board &b) {
        refuse_null(word);
        *word = of(b, find_port(b, port));
    });
}

} // namespace

uint32_t drv_clusterport_init() {
    return operate([](board &b) {
        require_ports(b);
        is_initialised = true;
    });
}

// A library that was not brought up has nothing to put down.
uint32_t drv_clusterport_exit() {
    return operate([](board &b) {
        require_ports(b);
        is_initialised = false;
    });
}

uint32_t drv_clusterport_get_phy_test(uint32_t port, uint32_t *result) {
    return tell(port, result,
                [](board &b, const cluster_port::one &found) { return b.get(found, cluster_port::phy_fault); });
}

uint32_t drv_clusterport_set_shut(uint32_t port, uint32_t flag) {
    return operate([&](board &b) {
        const cluster_port::one found = find_port(b, port);
        refuse_if(flag > 1, error::bad_value);
        cluster_port::set_shut(b, found, flag == 1);
    });
}

uint32_t drv_clusterport_get_speed(uint32_t port, uint32_t *speed) {
    return tell(port, speed, cluster_port::present_speed);
}

uint32_t drv_clusterport_set_speed(uint32_t port, uint32_t speed) {
    return operate([&](board &b) { cluster_port::set_speed(b, find_port(b, port), speed); });
}

uint32_t drv_clusterport_get_mode(uint32_t port, uint32_t *mode) {
    return tell(port, mode, [](board &b, const cluster_port::one &found) {
        return cluster_port::is_full_duplex(b, found) ? 1U : 0U;
    });
}

uint32_t drv_clusterport_get_link_status(uint32_t port, uint32_t *status) {
    return tell(port, status,
                [](board &b, const cluster_port::one &found) { return cluster_port::is_up(b, found) ? 1U : 0U; });
}

uint32_t drv_clusterport_get_statistics(uint32_t port, struct drv_clusterport_statistics *statistics) {
    return operate([&](board &b) {
        refuse_null(statistics);
        const ethernet_port::traffic passed = cluster_port::read_traffic(b, find_port(b, port));
        const auto &[received, sent, bad] = passed;
        *statistics = {};
        statistics->in_bytes = received[ethernet_port::bytes];
        statistics->in_frames = ethernet_port::packets_of(received);
        statistics->in_unicast_frames = received[ethernet_port::unicast];
        statistics->in_multicast_frames = received[ethernet_port::multicast];
        statistics->in_brdcast_frames = received[ethernet_port::broadcast];
        statistics->in_fcserr_frames = bad;
        statistics->in_crc_bad_frames = bad;
        statistics->in_err_frames = bad;
        statistics->out_bytes = sent[ethernet_port::bytes];
        statistics->out_frames = ethernet_port::packets_of(sent);
        statistics->out_unicast_frames = sent[ethernet_port::unicast];
        statistics->out_multicast_frames = sent[ethernet_port::multicast];
        statistics->out_brdcast_frames = sent[ethernet_port::broadcast];
    });
}

uint32_t drv_clusterport_reset(uint32_t port, uint32_t reset_type) {
    return operate([&](board &b) {
        const cluster_port::one found = find_port(b, port);
        refuse_if(reset_type > reset_of_phy, error::bad_value);
        if (reset_type == reset_of_mac) {
            cluster_port::reset_mac(b, found);
        } else {
            cluster_port::reset_phy(b, found);
        }
    });
}

uint32_t drv_clusterport_set_led(uint32_t port, uint32_t oper_type) {
    return operate([&](board &b) { b.put(find_port(b, port), ethernet_port::lamp, oper_type); });
}
