// How a management port's MAC, its PHY and the packets of drivers hang together.
#include "sim/devices/network/management_port.h"

#include "sim/core/catalogue.h"
#include "sim/devices/identity/mac_store.h"
#include "sim/devices/network/register_text.h"

#include <algorithm>
#include <cstdio>

namespace kestro_sim {

namespace management_port {

namespace {

using ethernet_port::tally;

constexpr uint32_t phy_negotiates = 0x1000;

enum direction : uint8_t { received, sent };

// In the order of a tally.
constexpr const reg *own_frame_registers[]{&own_frames::bytes,      &own_frames::unicast,    &own_frames::multicast,
                                           &own_frames::broadcast,  &own_frames::tagged,     &own_frames::up_to_64,
                                           &own_frames::up_to_127,  &own_frames::up_to_255,  &own_frames::up_to_511,
                                           &own_frames::up_to_1023, &own_frames::up_to_1518, &own_frames::longer};
static_assert(std::size(own_frame_registers) == ethernet_port::counts);

device own_frames_of(const one &port, direction which) {
    return board::at<own_frames::family>(port.instance, port.id * 2 + which);
}

tally read_own_frames(board &b, const one &port, direction which) {
    tally counted{};
    for (size_t i = 0; i < counted.size(); ++i) {
        counted[i] = b.value(own_frames_of(port, which), *own_frame_registers[i]).value_or(0);
    }
    return counted;
}

void write_own_frames(board &b, change &writes, const one &port, direction which, const tally &counted) {
    for (size_t i = 0; i < counted.size(); ++i) {
        b.add(writes, own_frames_of(port, which), *own_frame_registers[i], counted[i]);
    }
}

ethernet_port::line line_of(board &b, const one &port) {
    const phy::one wire = phy_of(b, port);
    if (!phy::is_on(b, wire)) {
        return {};
    }
    const auto began = static_cast<int64_t>(b.get_wide(wire, phy::since));
    if (b.get(port, mac_loop) != 0 || phy::is_looped(b, wire)) {
        return {true, true, began};
    }
    return {phy::is_up(b, wire), false, began + b.get(wire, phy::negotiation) * nanoseconds_per_millisecond};
}

// A packet whose way ends at a port without a link is lost. Those that the port had before are counted.
bool is_received(board &b, const ethernet_port::line &now, const packet_ring::packet &which) {
    return which.arrival <= b.now() && (which.is_counted || (now.is_up && which.arrival >= now.from));
}

// Those that have arrived and are not among the counted ones yet.
tally newly_arrived(board &b, const one &port) {
    const ethernet_port::line now = line_of(b, port);
    tally counted{};
    for (const packet_ring::packet &each : packet_ring::all(b, port.instance, port.id)) {
        if (is_received(b, now, each) && !each.is_counted) {
            ethernet_port::add(counted, ethernet_port::tally_of_frame(each.bytes));
        }
    }
    return counted;
}

void settle_packets(board &b, change &writes, const one &port, const ethernet_port::line &now) {
    for (const packet_ring::packet &each : packet_ring::all(b, port.instance, port.id)) {
        if (is_received(b, now, each)) {
            packet_ring::note_counted(b, writes, each);
        } else if (each.arrival <= b.now()) {
            packet_ring::take(b, writes, each);
        }
    }
}

void settle(board &b, change &writes, const one &port) {
    const ethernet_port::line now = line_of(b, port);
    ethernet_port::settle(b, writes, port, now);
    tally counted = read_own_frames(b, port, received);
    ethernet_port::add(counted, newly_arrived(b, port));
    write_own_frames(b, writes, port, received, counted);
    settle_packets(b, writes, port, now);
}

std::optional<packet_ring::packet> first_received(board &b, const one &port) {
    const ethernet_port::line now = line_of(b, port);
    return packet_ring::first_waiting(b, port.instance, port.id,
                                      [&](const packet_ring::packet &each) { return is_received(b, now, each); });
}

void settle_now(board &b, const one &port) {
    change writes;
    settle(b, writes, port);
    b.commit(writes);
}

traffic traffic_of(board &b, const one &port) {
    const ethernet_port::traffic passed = ethernet_port::traffic_by_now(
        b, port, line_of(b, port), {b.get(port, ethernet_port::receive_rate), b.get(port, ethernet_port::send_rate)});
    traffic all{passed.received, passed.sent, passed.bad, b.get_wide(port, dropped_packets),
                b.get_wide(port, dropped_bytes)};
    ethernet_port::add(all.received, read_own_frames(b, port, received));
    ethernet_port::add(all.received, newly_arrived(b, port));
    ethernet_port::add(all.sent, read_own_frames(b, port, sent));
    return all;
}

// The oldest of too many goes. It may be on its way still: then it finds no room and is not counted as received.
void make_room(board &b, change &writes, const one &port) {
    const auto packets = packet_ring::all(b, port.instance, port.id);
    if (packets.size() == packet_ring::places) {
        packet_ring::take(b, writes, packets.front());
        b.put(writes, port, dropped_packets, b.get_wide(port, dropped_packets) + 1);
        b.put(writes, port, dropped_bytes, b.get_wide(port, dropped_bytes) + packets.front().bytes.size());
    }
}

} // namespace

one find(board &b, uint32_t id) {
    return b.find_at<family>(b.self(), id);
}

phy::one phy_of(board &b, const one &port) {
    return board::at<phy::family>(port.instance, b.get(port, phy_port));
}

bool is_up(board &b, const one &port) {
    return line_of(b, port).is_up;
}

uint32_t speed(board &b, const one &port) {
    const ethernet_port::line now = line_of(b, port);
    return !now.is_up ? 0 : b.get(port, mac_loop) != 0 ? 1000 : phy::speed(b, phy_of(b, port));
}

bool negotiates(board &b, const one &port) {
    return (b.get(phy_of(b, port), phy::control) & phy_negotiates) != 0;
}

void bring_up(board &b, const one &port) {
    change writes;
    ethernet_port::clear(b, writes, port);
    write_own_frames(b, writes, port, received, {});
    write_own_frames(b, writes, port, sent, {});
    for (const packet_ring::packet &each : packet_ring::all(b, port.instance, port.id)) {
        packet_ring::take(b, writes, each);
    }
    b.put(writes, port, dropped_packets, 0);
    b.put(writes, port, dropped_bytes, 0);
    b.put(writes, port, in_use, 1);
    b.commit(writes);
}

void take_down(board &b, const one &port) {
    require_in_use(b, port);
    b.put(port, in_use, 0);
}

void require_in_use(board &b, const one &port) {
    refuse_if(b.get(port, in_use) == 0, error::not_ready);
}

void set_shut(board &b, const one &port, bool to) {
    settle_now(b, port);
    phy::switch_to(b, phy_of(b, port), !to);
}

void send(board &b, const one &port, std::span<const uint8_t> packet) {
    const ethernet_port::line now = line_of(b, port);
    refuse_if(!now.is_up, error::not_ready);
    settle_now(b, port);
    change writes;
    tally counted = read_own_frames(b, port, sent);
    ethernet_port::add(counted, ethernet_port::tally_of_frame(packet));
    write_own_frames(b, writes, port, sent, counted);
    const int64_t way = ethernet_port::time_on_wire(packet.size(), speed(b, port));
    const uint32_t answers_after = b.get(port, echo);
    if (now.is_looped || answers_after != 0) {
        make_room(b, writes, port);
        const int64_t there_and_back = now.is_looped ? way : 2 * way + int64_t{answers_after} * 1000;
        packet_ring::append(b, writes, port.instance, port.id, packet, b.now() + there_and_back);
    }
    b.commit(writes);
}

bool has_packet(board &b, const one &port) {
    return first_received(b, port).has_value();
}

std::optional<std::vector<uint8_t>> take_packet(board &b, const one &port) {
    const auto packets = packet_ring::all(b, port.instance, port.id);
    if (std::none_of(packets.begin(), packets.end(), [&](const auto &each) { return each.arrival <= b.now(); })) {
        return std::nullopt;
    }
    settle_now(b, port);
    const auto waiting = first_received(b, port);
    if (!waiting) {
        return std::nullopt;
    }
    change writes;
    packet_ring::take(b, writes, *waiting);
    b.commit(writes);
    return waiting->bytes;
}

traffic read_traffic(board &b, const one &port) {
    settle_now(b, port);
    return traffic_of(b, port);
}

// The ports share the addresses of one type, in their order.
mac_address address_of(board &b, const one &port) {
    return address_at(b, port.instance, b.get(port, mac_type), port.id);
}

// A PHY that does not answer as the one that belongs there is not well; one without a link is.
bool test_phy(board &b, const one &port, std::string &found) {
    const phy::one wire = phy_of(b, port);
    const auto chip = board::at<phy_chip::family>(port.instance, b.get(wire, phy::chip));
    const uint32_t is = b.get(wire, phy::identifier);
    const uint32_t should_be = b.get(chip, phy_chip::identifier);
    char text[96];
    if (is != should_be) {
        snprintf(text, sizeof text, "phy identifier 0x%08x, expected 0x%08x", is, should_be);
    } else {
        snprintf(text, sizeof text, "phy identifier 0x%08x, link %s", is, phy::is_up(b, wire) ? "up" : "down");
    }
    found = text;
    return is == should_be;
}

uint32_t read_register(board &b, const one &port, bool of_phy, uint32_t address) {
    settle_now(b, port);
    return of_phy ? read_space(b, phy::registers, phy_of(b, port), address)
                  : read_space(b, mac_registers, port, address);
}

void write_register(board &b, const one &port, bool of_phy, uint32_t address, uint32_t value) {
    const register_space &space = of_phy ? phy::registers : mac_registers;
    refuse_if(value >> (space.width - 1) > 1, error::bad_value);
    settle_now(b, port);
    if (of_phy) {
        write_space(b, space, phy_of(b, port), address, value);
    } else {
        write_space(b, space, port, address, value);
    }
}

std::string dump(board &b, const one &port, bool of_phy) {
    settle_now(b, port);
    return of_phy ? register_text(b, phy::registers, phy_of(b, port)) : register_text(b, mac_registers, port);
}

namespace {

uint32_t read_mac_status(board &b, const device &which, uint32_t) {
    const one port{which};
    const ethernet_port::line now = line_of(b, port);
    const bool is_fibre = b.get(phy_of(b, port), phy::medium) != 0;
    return (now.is_up ? 1U : 0U) | (now.is_looped ? 2U : 0U) | (is_fibre ? 4U : 0U) | (has_packet(b, port) ? 8U : 0U);
}

uint32_t read_mac_speed(board &b, const device &which, uint32_t) {
    return speed(b, one{which});
}

uint32_t read_lamp(board &b, const device &which, uint32_t) {
    return ethernet_port::lamp_shows(b, which, line_of(b, one{which}));
}

// Loaded from the board's store; one that cannot be read leaves them 0.
uint32_t read_address(board &b, const device &which, uint32_t at) {
    try {
        const uint64_t number = number_from_address(address_of(b, one{which}));
        return static_cast<uint32_t>((at & 1U) == 0 ? number >> 32 : number);
    } catch (const refusal &) {
        return 0;
    }
}

// Even addresses hold the low half.
uint32_t half_at(uint32_t address, uint64_t number) {
    return static_cast<uint32_t>((address & 1U) == 0 ? number : number >> 32);
}

uint32_t read_rx_packets(board &b, const device &which, uint32_t at) {
    return half_at(at, ethernet_port::packets_of(traffic_of(b, one{which}).received));
}

uint32_t read_rx_bytes(board &b, const device &which, uint32_t at) {
    return half_at(at, traffic_of(b, one{which}).received[ethernet_port::bytes]);
}

uint32_t read_tx_packets(board &b, const device &which, uint32_t at) {
    return half_at(at, ethernet_port::packets_of(traffic_of(b, one{which}).sent));
}

uint32_t read_tx_bytes(board &b, const device &which, uint32_t at) {
    return half_at(at, traffic_of(b, one{which}).sent[ethernet_port::bytes]);
}

uint32_t read_dropped(board &b, const device &which, uint32_t) {
    return static_cast<uint32_t>(b.get_wide(one{which}, dropped_packets));
}

uint32_t read_bad(board &b, const device &which, uint32_t) {
    return b.get(one{which}, ethernet_port::bad_frames);
}

constexpr space_field mac_control[]{{0x0001, &family, own_id, &joined},
                                    {0x0002, &family, own_id, &active},
                                    {0x0030, &family, own_id, &ethernet_port::lamp},
                                    {0x0100, &family, own_id, &mac_loop},
                                    {0x8000, &family, own_id, &in_use, 0, bus::read_only, {}}};

constexpr space_register mac[]{
    {.address = 0x00,
     .name = "control",
     .meaning = "bit 0 joined to the switch, 1 active, 4 and 5 lamp, 8 loopback, 15 in use",
     .read_only = 0xFFFF7ECC,
     .fields = mac_control},
    {.address = 0x01,
     .name = "status",
     .meaning = "bit 0 up, 1 looped back, 2 fibre, 3 a packet waits",
     .read = read_mac_status},
    {.address = 0x02, .name = "speed", .meaning = "in Mbit/s", .read = read_mac_speed},
    {.address = 0x03, .name = "lamp", .meaning = "what it shows: 0 dark, 1 lit, 2 blinking", .read = read_lamp},
    {.address = 0x04, .name = "address", .meaning = "high half first", .count = 2, .read = read_address},
    {.address = 0x06, .name = "dropped", .meaning = "packets that nobody took", .read = read_dropped},
    {.address = 0x07, .name = "bad_frames", .meaning = "with a wrong checksum", .read = read_bad},
    {.address = 0x08, .name = "rx_packets", .meaning = "low half first", .count = 2, .read = read_rx_packets},
    {.address = 0x0A, .name = "rx_bytes", .meaning = "low half first", .count = 2, .read = read_rx_bytes},
    {.address = 0x0C, .name = "tx_packets", .meaning = "low half first", .count = 2, .read = read_tx_packets},
    {.address = 0x0E, .name = "tx_bytes", .meaning = "low half first", .count = 2, .read = read_tx_bytes},
};

} // namespace

constexpr register_space mac_registers{"eth_mac", &family, 32, 16, undeclared::refused, mac};

} // namespace management_port

device_list devices_of_management_port() {
    static constexpr const device_family *families[]{&management_port::family, &own_frames::family};
    static constexpr const register_space *spaces[]{&management_port::mac_registers};
    const auto write_down = [](board &b) { ethernet_port::settle_all(b, management_port::settle); };
    return {families, spaces, {}, write_down};
}

} // namespace kestro_sim
