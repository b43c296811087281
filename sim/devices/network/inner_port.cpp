// The two ends of a link depend on each other: what one does the other one sees.
#include "sim/devices/network/inner_port.h"

#include "sim/core/catalogue.h"
#include "sim/devices/network/ethernet_link.h"
#include "sim/devices/network/register_text.h"

#include <algorithm>

namespace kestro_sim {

namespace inner_port {

namespace {

using ethernet_port::line;

bool is_looped(board &b, const one &port) {
    return b.get(port, mac_loop) != 0 || b.get(port, phy_loop) != 0;
}

int64_t began(board &b, const one &port) {
    return static_cast<int64_t>(b.get_wide(port, ethernet_port::since));
}

int64_t negotiation_of(board &b, const one &port) {
    return b.get(port, ethernet_port::negotiation) * nanoseconds_per_millisecond;
}

// A slot may be empty, its board pulled out, or of a kind without such a port.
std::optional<one> far_end(board &b, const ethernet_link::view &link) {
    const std::string place = "slot" + std::to_string(link.far_slot);
    const one far = board::at<family>(place, link.far_port);
    return b.is_present(place) && b.is_described(far) ? std::optional(far) : std::nullopt;
}

line line_of(board &b, const one &port) {
    if (!b.is_present(port.instance)) {
        return {};
    }
    if (is_looped(b, port)) {
        return {true, true, began(b, port)};
    }
    const auto link = ethernet_link::at(b, port.instance, port.id);
    if (!link || b.get(link->link, ethernet_link::cut) != 0) {
        return {};
    }
    const auto far = far_end(b, *link);
    if (!far || is_looped(b, *far)) {
        return {};
    }
    const int64_t from =
        std::max(began(b, port), began(b, *far)) + std::max(negotiation_of(b, port), negotiation_of(b, *far));
    return {b.now() >= from, false, from};
}

ethernet_port::traffic traffic_of(board &b, const one &port) {
    const auto link = ethernet_link::at(b, port.instance, port.id);
    const ethernet_port::rates rates{link ? link->received : 0, link ? link->sent : 0};
    return ethernet_port::traffic_by_now(b, port, line_of(b, port), rates);
}

void settle(board &b, change &writes, const one &port) {
    ethernet_port::settle(b, writes, port, line_of(b, port));
}

// The far end counts what this one sends, and loses its link, or begins one, with it.
void settle_both(board &b, change &writes, const one &port) {
    settle(b, writes, port);
    const auto link = ethernet_link::at(b, port.instance, port.id);
    const auto far = link ? far_end(b, *link) : std::nullopt;
    if (far) {
        settle(b, writes, *far);
    }
}

void begin_link(board &b, change &writes, const one &port) {
    settle_both(b, writes, port);
    b.put(writes, port, ethernet_port::since, static_cast<uint64_t>(b.now()));
}

} // namespace

one find(board &b, uint32_t id) {
    return b.find_at<family>(b.self(), id);
}

bool is_up(board &b, const one &port) {
    return line_of(b, port).is_up;
}

ethernet_port::traffic read_traffic(board &b, const one &port) {
    change writes;
    settle_both(b, writes, port);
    b.commit(writes);
    return traffic_of(b, port);
}

std::string dump(board &b, const one &port, bool of_phy) {
    read_traffic(b, port);
    return register_text(b, of_phy ? phy_registers : mac_registers, port);
}

void set_mac_loop(board &b, const one &port, bool to) {
    if (to != (b.get(port, mac_loop) != 0)) {
        change writes;
        begin_link(b, writes, port);
        b.put(writes, port, mac_loop, to ? 1 : 0);
        b.commit(writes);
    }
}

void set_phy_loop(board &b, const one &port, bool to) {
    if (to != (b.get(port, phy_loop) != 0)) {
        change writes;
        begin_link(b, writes, port);
        b.put(writes, port, phy_loop, to ? 1 : 0);
        b.commit(writes);
    }
}

namespace {

constexpr uint32_t inner_mac_loop = 0x0001;
constexpr uint32_t inner_phy_loop = 0x4000;
// Full duplex at 1000 Mbit/s.
constexpr uint32_t inner_phy_control = 0x0140;

uint32_t low_half(uint64_t number) {
    return static_cast<uint32_t>(number);
}

uint32_t high_half(uint64_t number) {
    return static_cast<uint32_t>(number >> 32);
}

uint32_t read_mac_control(board &b, const device &which, uint32_t) {
    return b.get(one{which}, mac_loop) != 0 ? inner_mac_loop : 0;
}

void write_mac_control(board &b, const device &which, uint32_t, uint32_t value) {
    set_mac_loop(b, one{which}, (value & inner_mac_loop) != 0);
}

uint32_t read_mac_status(board &b, const device &which, uint32_t) {
    const line now = line_of(b, one{which});
    return (now.is_up ? 1U : 0U) | (now.is_looped ? 2U : 0U);
}

uint32_t read_speed(board &b, const device &which, uint32_t) {
    const auto link = ethernet_link::at(b, which.instance, which.id);
    return link && line_of(b, one{which}).is_up ? b.get(link->link, ethernet_link::speed) : 0;
}

// Even addresses hold the low half.
template <bool Sent, bool Bytes> uint32_t read_counter(board &b, const device &which, uint32_t address) {
    const ethernet_port::traffic passed = traffic_of(b, one{which});
    const ethernet_port::tally &tally = Sent ? passed.sent : passed.received;
    const uint64_t number = Bytes ? tally[ethernet_port::bytes] : ethernet_port::packets_of(tally);
    return (address & 1U) == 0 ? low_half(number) : high_half(number);
}

uint32_t read_bad_frames(board &b, const device &which, uint32_t) {
    return b.get(one{which}, ethernet_port::bad_frames);
}

constexpr space_register inner_mac[]{
    {.address = 0x00,
     .name = "control",
     .meaning = "bit 0 loopback",
     .read = read_mac_control,
     .write = write_mac_control},
    {.address = 0x01, .name = "status", .meaning = "bit 0 up, bit 1 looped back", .read = read_mac_status},
    {.address = 0x02, .name = "speed", .meaning = "in Mbit/s", .read = read_speed},
    {.address = 0x03, .name = "bad_frames", .meaning = "with a wrong checksum", .read = read_bad_frames},
    {.address = 0x04,
     .name = "rx_packets",
     .meaning = "low half first",
     .count = 2,
     .read = read_counter<false, false>},
    {.address = 0x06, .name = "rx_bytes", .meaning = "low half first", .count = 2, .read = read_counter<false, true>},
    {.address = 0x08, .name = "tx_packets", .meaning = "low half first", .count = 2, .read = read_counter<true, false>},
    {.address = 0x0A, .name = "tx_bytes", .meaning = "low half first", .count = 2, .read = read_counter<true, true>},
};

uint32_t read_phy_control(board &b, const device &which, uint32_t) {
    return inner_phy_control | (b.get(one{which}, phy_loop) != 0 ? inner_phy_loop : 0);
}

void write_phy_control(board &b, const device &which, uint32_t, uint32_t value) {
    set_phy_loop(b, one{which}, (value & inner_phy_loop) != 0);
}

uint32_t read_phy_status(board &b, const device &which, uint32_t) {
    const line now = line_of(b, one{which});
    return now.is_up ? 0x0024 : 0;
}

uint32_t read_far_end(board &b, const device &which, uint32_t) {
    const auto link = ethernet_link::at(b, which.instance, which.id);
    return link ? link->far_slot << 8 | link->far_port : 0;
}

constexpr space_register inner_phy[]{
    {.address = 0x00,
     .name = "control",
     .meaning = "bit 14 loopback; full duplex at 1000 Mbit/s",
     .reset_value = inner_phy_control,
     .read = read_phy_control,
     .write = write_phy_control},
    {.address = 0x01, .name = "status", .meaning = "bits 2 and 5 up", .read = read_phy_status},
    {.address = 0x10, .name = "far_end", .meaning = "bits 15 to 8 slot, 7 to 0 port", .read = read_far_end},
};

} // namespace

constexpr register_space mac_registers{"inner_mac", &family, 32, 12, undeclared::refused, inner_mac};
constexpr register_space phy_registers{"inner_phy", &family, 16, 32, undeclared::refused, inner_phy};

} // namespace inner_port

device_list devices_of_inner_port() {
    static constexpr const device_family *families[]{&inner_port::family};
    static constexpr const register_space *spaces[]{&inner_port::mac_registers, &inner_port::phy_registers};
    const auto write_down = [](board &b) { ethernet_port::settle_all(b, inner_port::settle); };
    return {families, spaces, {}, write_down};
}

} // namespace kestro_sim
