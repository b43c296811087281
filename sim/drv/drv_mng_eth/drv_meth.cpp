// Management Ethernet ports of the own board.
#include "drv_mng_eth/drv_meth.h"

#include "sim/core/events.h"
#include "sim/devices/network/management_port.h"
#include "sim/devices/network/packet_receiver.h"
#include "sim/drv/driver.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>

using namespace kestro_sim;

namespace {

// How often the MAC gives back what it has sent. Who sends waits that long, and so hears of what comes back at once.
constexpr std::chrono::milliseconds until_sent{1};

constexpr uint32_t at_phy = 1;
constexpr uint64_t bytes_of_bad_frame = 64;

using port_change = void (*)(board &, const management_port::one &, bool);

uint32_t tell(uint32_t port, uint32_t *word, uint32_t (*of)(board &, const management_port::one &)) {
    return operate([&](board &b) {
        refuse_null(word);
        *word = of(b, management_port::find(b, port));
    });
}

uint32_t switch_port(uint32_t port, uint32_t flag, port_change to) {
    return operate([&](board &b) {
        const management_port::one found = management_port::find(b, port);
        refuse_if(flag > 1, error::bad_value);
        management_port::require_in_use(b, found);
        to(b, found, flag == 1);
    });
}

bool is_of_phy(uint32_t mac_phy) {
    refuse_if(mac_phy > at_phy, error::bad_value);
    return mac_phy == at_phy;
}

void fill(drv_meth_statistic &statistic, const management_port::traffic &passed) {
    const auto &received = passed.received;
    const auto &sent = passed.sent;
    statistic.rx_bytes_err = passed.bad * bytes_of_bad_frame;
    statistic.rx_bytes_ok = received[ethernet_port::bytes] - statistic.rx_bytes_err;
    statistic.rx_unicast = received[ethernet_port::unicast];
    statistic.rx_multicast = received[ethernet_port::multicast];
    statistic.rx_broadcast = received[ethernet_port::broadcast];
    statistic.rx_pkt_64 = received[ethernet_port::up_to_64];
    statistic.rx_pkt_127 = received[ethernet_port::up_to_64 + 1];
    statistic.rx_pkt_255 = received[ethernet_port::up_to_64 + 2];
    statistic.rx_pkt_511 = received[ethernet_port::up_to_64 + 3];
    statistic.rx_pkt_1023 = received[ethernet_port::up_to_64 + 4];
    statistic.rx_pkt_1518 = received[ethernet_port::up_to_64 + 5];
    statistic.rx_pkt_max = received[ethernet_port::up_to_64 + 6];
    statistic.rx_fcs = passed.bad;
    statistic.rx_pkt_err = passed.bad;
    statistic.rx_tagged = received[ethernet_port::tagged];
    statistic.rx_filt_pkts = passed.dropped_packets;
    statistic.rx_filt_bytes = passed.dropped_bytes;
    statistic.tx_bytes_ok = sent[ethernet_port::bytes];
    statistic.tx_unicast = sent[ethernet_port::unicast];
    statistic.tx_multicast = sent[ethernet_port::multicast];
    statistic.tx_broadcast = sent[ethernet_port::broadcast];
    statistic.tx_pkt_64 = sent[ethernet_port::up_to_64];
    statistic.tx_pkt_127 = sent[ethernet_port::up_to_64 + 1];
    statistic.tx_pkt_255 = sent[ethernet_port::up_to_64 + 2];
    statistic.tx_pkt_511 = sent[ethernet_port::up_to_64 + 3];
    statistic.tx_pkt_1023 = sent[ethernet_port::up_to_64 + 4];
    statistic.tx_pkt_1518 = sent[ethernet_port::up_to_64 + 5];
    statistic.tx_pkt_max = sent[ethernet_port::up_to_64 + 6];
    statistic.tx_tagged = sent[ethernet_port::tagged];
}

} // namespace

uint32_t drv_meth_init(uint32_t port) {
    return operate([&](board &b) { management_port::bring_up(b, management_port::find(b, port)); });
}

// A running callback may be waiting for the lock, so it is waited for without.
uint32_t drv_meth_exit(uint32_t port) {
    listener_id gone = 0;
    const uint32_t result = operate([&](board &b) {
        const management_port::one found = management_port::find(b, port);
        management_port::take_down(b, found);
        gone = packet_receiver::call_nobody(found);
    });
    stop_listening(gone);
    return result;
}

uint32_t drv_meth_get_port_num(uint32_t *number) {
    return operate([&](board &b) {
        refuse_null(number);
        const size_t ports = b.all_at<management_port::family>(b.self()).size();
        refuse_if(ports == 0, error::not_supported);
        *number = static_cast<uint32_t>(ports);
    });
}

uint32_t drv_meth_set_switch_flag(uint32_t port, uint32_t flag) {
    return switch_port(port, flag, [](board &b, const management_port::one &found, bool to) {
        b.put(found, management_port::joined, to ? 1 : 0);
    });
}

uint32_t drv_meth_is_readable(uint32_t port, uint32_t *readable) {
    return tell(port, readable, [](board &b, const management_port::one &found) {
        management_port::require_in_use(b, found);
        return management_port::has_packet(b, found) ? 1U : 0U;
    });
}

uint32_t drv_meth_get_rx_pkt(uint32_t port, uint8_t *buffer, uint32_t buf_len, uint32_t *read_len) {
    return operate([&](board &b) {
        refuse_null(buffer, read_len);
        const management_port::one found = management_port::find(b, port);
        refuse_if(buf_len == 0, error::bad_value);
        management_port::require_in_use(b, found);
        const auto packet = management_port::take_packet(b, found);
        *read_len = packet ? static_cast<uint32_t>(std::min<size_t>(packet->size(), buf_len)) : 0;
        if (packet) {
            std::copy_n(packet->begin(), *read_len, buffer);
        }
    });
}

// No area at all, and no size either: then the callback is given the driver's own.
uint32_t drv_meth_register_callback(uint32_t port, drv_meth_rx_callback callback, void *buffer, uint32_t size) {
    listener_id gone = 0;
    const uint32_t result = operate([&](board &b) {
        refuse_if(callback == nullptr, error::null_pointer);
        refuse_if(buffer == nullptr && size != 0, error::null_pointer);
        const management_port::one found = management_port::find(b, port);
        refuse_if(buffer != nullptr && size == 0, error::bad_value);
        management_port::require_in_use(b, found);
        gone = packet_receiver::call(b, found, callback, buffer, size);
    });
    stop_listening(gone);
    return result;
}

uint32_t drv_meth_tx_pkt(uint32_t port, const uint8_t *buffer, uint32_t buf_len) {
    const uint32_t result = operate([&](board &b) {
        refuse_null(buffer);
        const management_port::one found = management_port::find(b, port);
        refuse_if(buf_len == 0 || buf_len > packet_ring::longest, error::bad_value);
        management_port::require_in_use(b, found);
        management_port::send(b, found, {buffer, buf_len});
    });
    if (result == 0) {
        std::this_thread::sleep_for(until_sent);
        let_deliver();
    }
    return result;
}

uint32_t drv_meth_get_autonego(uint32_t port, uint32_t *enable) {
    return tell(port, enable, [](board &b, const management_port::one &found) {
        return management_port::negotiates(b, found) ? 1U : 0U;
    });
}

uint32_t drv_meth_get_speed(uint32_t port, uint32_t *speed) {
    return tell(port, speed, management_port::speed);
}

uint32_t drv_meth_get_media_type(uint32_t port, uint32_t *media_type) {
    return tell(port, media_type, [](board &b, const management_port::one &found) {
        return b.get(management_port::phy_of(b, found), phy::medium);
    });
}

uint32_t drv_meth_get_link_status(uint32_t port, uint32_t *status) {
    return tell(port, status,
                [](board &b, const management_port::one &found) { return management_port::is_up(b, found) ? 1U : 0U; });
}

uint32_t drv_meth_get_mac(uint32_t port, uint8_t *mac) {
    return operate([&](board &b) {
        refuse_null(mac);
        const mac_address address = management_port::address_of(b, management_port::find(b, port));
        std::copy(address.begin(), address.end(), mac);
    });
}

uint32_t drv_meth_set_active_ornot(uint32_t port, uint32_t flag) {
    return switch_port(port, flag, [](board &b, const management_port::one &found, bool to) {
        b.put(found, management_port::active, to ? 1 : 0);
    });
}

uint32_t drv_meth_set_shutdown(uint32_t port, uint32_t flag) {
    return switch_port(port, flag, management_port::set_shut);
}

uint32_t drv_meth_get_phy_test(uint32_t port, uint32_t *result, char *buffer, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(result, buffer);
        std::string found;
        const bool is_well = management_port::test_phy(b, management_port::find(b, port), found);
        write_text(buffer, size, found);
        *result = is_well ? 0 : 1;
    });
}

uint32_t drv_meth_read_reg(uint32_t port, uint32_t mac_phy, uint32_t addr, uint32_t *val) {
    return operate([&](board &b) {
        refuse_null(val);
        const management_port::one found = management_port::find(b, port);
        *val = management_port::read_register(b, found, is_of_phy(mac_phy), addr);
    });
}

uint32_t drv_meth_write_reg(uint32_t port, uint32_t mac_phy, uint32_t addr, uint32_t val) {
    return operate([&](board &b) {
        const management_port::one found = management_port::find(b, port);
        management_port::write_register(b, found, is_of_phy(mac_phy), addr, val);
    });
}

uint32_t drv_meth_set_led(uint32_t port, uint32_t oper_type) {
    return operate([&](board &b) {
        const management_port::one found = management_port::find(b, port);
        management_port::require_in_use(b, found);
        b.put(found, ethernet_port::lamp, oper_type);
    });
}

uint32_t drv_meth_get_rx_packets(uint32_t port, uint64_t *packets) {
    return operate([&](board &b) {
        refuse_null(packets);
        *packets = ethernet_port::packets_of(management_port::read_traffic(b, management_port::find(b, port)).received);
    });
}

uint32_t drv_meth_get_tx_packets(uint32_t port, uint64_t *packets) {
    return operate([&](board &b) {
        refuse_null(packets);
        *packets = ethernet_port::packets_of(management_port::read_traffic(b, management_port::find(b, port)).sent);
    });
}

uint32_t drv_meth_get_statistic(uint32_t port, struct drv_meth_statistic *statistic) {
    return operate([&](board &b) {
        refuse_null(statistic);
        const management_port::traffic passed = management_port::read_traffic(b, management_port::find(b, port));
        *statistic = {};
        fill(*statistic, passed);
    });
}

uint32_t drv_meth_dump_info(uint32_t port, uint32_t mac_phy, char *buffer, uint32_t size) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const management_port::one found = management_port::find(b, port);
        write_cut_text(buffer, size, management_port::dump(b, found, is_of_phy(mac_phy)));
    });
}
