// A cluster port and what it knows of its other end.
#include "sim/devices/network/cluster_port.h"

#include "sim/core/catalogue.h"

#include <algorithm>

namespace kestro_sim {

namespace cluster_port {

namespace {

struct cluster_speed {
    uint32_t ability;
    uint32_t mbit_per_s;
};

// The fastest first.
constexpr cluster_speed speeds[]{{2, 10000}, {1, 1000}};

uint32_t ability_of(uint32_t mbit_per_s) {
    if (mbit_per_s == 0) {
        return all_speeds;
    }
    const auto *found = std::find_if(std::begin(speeds), std::end(speeds),
                                     [&](const cluster_speed &each) { return each.mbit_per_s == mbit_per_s; });
    refuse_if(found == std::end(speeds), error::bad_value);
    return found->ability;
}

uint32_t common_abilities(board &b, const one &port) {
    return ability_of(b.get(port, speed)) & b.get(port, partner);
}

ethernet_port::line line_of(board &b, const one &port) {
    if (b.get(port, shut) != 0 || common_abilities(b, port) == 0) {
        return {};
    }
    const int64_t from = static_cast<int64_t>(b.get_wide(port, ethernet_port::since)) +
                         b.get(port, ethernet_port::negotiation) * nanoseconds_per_millisecond;
    return {b.now() >= from, false, from};
}

void settle(board &b, change &writes, const one &port) {
    ethernet_port::settle(b, writes, port, line_of(b, port));
}

void begin_link(board &b, change &writes, const one &port) {
    settle(b, writes, port);
    b.put(writes, port, ethernet_port::since, static_cast<uint64_t>(b.now()));
}

} // namespace

one find(board &b, uint32_t id) {
    return b.find_at<family>(b.self(), id);
}

bool is_up(board &b, const one &port) {
    return line_of(b, port).is_up;
}

uint32_t present_speed(board &b, const one &port) {
    const uint32_t common = is_up(b, port) ? common_abilities(b, port) : 0;
    const auto *found = std::find_if(std::begin(speeds), std::end(speeds),
                                     [&](const cluster_speed &each) { return (each.ability & common) != 0; });
    return found == std::end(speeds) ? 0 : found->mbit_per_s;
}

void set_speed(board &b, const one &port, uint32_t mbit_per_s) {
    ability_of(mbit_per_s);
    change writes;
    begin_link(b, writes, port);
    b.put(writes, port, speed, mbit_per_s);
    b.commit(writes);
}

// Without a link the port is set to full duplex.
bool is_full_duplex(board &b, const one &port) {
    return !is_up(b, port) || b.get(port, half_duplex) == 0;
}

void set_shut(board &b, const one &port, bool to) {
    if (to != (b.get(port, shut) != 0)) {
        change writes;
        begin_link(b, writes, port);
        b.put(writes, port, shut, to ? 1 : 0);
        b.commit(writes);
    }
}

ethernet_port::traffic read_traffic(board &b, const one &port) {
    change writes;
    settle(b, writes, port);
    b.commit(writes);
    return ethernet_port::traffic_by_now(
        b, port, line_of(b, port), {b.get(port, ethernet_port::receive_rate), b.get(port, ethernet_port::send_rate)});
}

void reset_mac(board &b, const one &port) {
    change writes;
    ethernet_port::clear(b, writes, port);
    b.commit(writes);
}

void reset_phy(board &b, const one &port) {
    set_speed(b, port, 0);
}

} // namespace cluster_port

device_list devices_of_cluster_port() {
    static constexpr const device_family *families[]{&cluster_port::family};
    const auto write_down = [](board &b) { ethernet_port::settle_all(b, cluster_port::settle); };
    return {families, {}, {}, write_down};
}

} // namespace kestro_sim
