// The bytes of a packet are cells of eight, as those of a text; no technician reads them as registers.
#include "sim/devices/network/packet_ring.h"

#include "sim/core/catalogue.h"

#include <algorithm>

namespace kestro_sim {

namespace packet_ring {

namespace {

constexpr size_t cell_bytes = sizeof(uint64_t);

std::string bytes_key(const one &place, size_t at) {
    return cell_key(place, "bytes") + "/" + std::to_string(at / cell_bytes);
}

std::vector<uint8_t> read_bytes(board &b, const one &place) {
    std::vector<uint8_t> bytes(b.get(place, length));
    for (size_t at = 0; at < bytes.size(); ++at) {
        const uint64_t cell = b.cell(bytes_key(place, at)).value_or(0);
        bytes[at] = static_cast<uint8_t>(cell >> (8 * (at % cell_bytes)));
    }
    return bytes;
}

void write_bytes(change &writes, const one &place, std::span<const uint8_t> bytes) {
    for (size_t at = 0; at < bytes.size(); at += cell_bytes) {
        uint64_t cell = 0;
        for (size_t i = 0; i < cell_bytes && at + i < bytes.size(); ++i) {
            cell |= uint64_t{bytes[at + i]} << (8 * i);
        }
        writes.put(bytes_key(place, at), cell);
    }
}

std::vector<one> places_of(const std::string &board_place, uint32_t port) {
    std::vector<one> found;
    found.reserve(places);
    for (uint32_t i = 0; i < places; ++i) {
        found.push_back(board::at<family>(board_place, port * places + i));
    }
    return found;
}

} // namespace

std::vector<packet> all(board &b, const std::string &board_place, uint32_t port) {
    std::vector<one> taken = places_of(board_place, port);
    std::erase_if(taken, [&](const one &place) { return b.get(place, length) == 0; });
    std::sort(taken.begin(), taken.end(), [&](const one &first, const one &second) {
        return b.get_wide(first, order) < b.get_wide(second, order);
    });
    std::vector<packet> packets;
    packets.reserve(taken.size());
    for (const one &place : taken) {
        packets.push_back({place, read_bytes(b, place), static_cast<int64_t>(b.get_wide(place, arrival)),
                           b.get(place, counted) != 0});
    }
    return packets;
}

std::optional<packet> first_waiting(board &b, const std::string &board_place, uint32_t port,
                                    const std::function<bool(const packet &)> &is_there) {
    std::optional<packet> first;
    for (packet &each : all(b, board_place, port)) {
        if (is_there(each) && (!first || each.arrival < first->arrival)) {
            first = std::move(each);
        }
    }
    return first;
}

void append(board &b, change &writes, const std::string &board_place, uint32_t port, std::span<const uint8_t> bytes,
            int64_t arrives) {
    std::vector<one> found = places_of(board_place, port);
    uint64_t last = 0;
    for (const one &place : found) {
        last = std::max(last, b.get_wide(place, order));
    }
    // Free, or the oldest, which the caller has taken within the same change.
    const one *target = &found.front();
    for (const one &place : found) {
        const bool is_free = b.get(place, length) == 0;
        const bool target_is_free = b.get(*target, length) == 0;
        if (is_free != target_is_free ? is_free : b.get_wide(place, order) < b.get_wide(*target, order)) {
            target = &place;
        }
    }
    write_bytes(writes, *target, bytes);
    b.keep(writes, *target, arrival, static_cast<uint64_t>(arrives));
    b.keep(writes, *target, order, last + 1);
    b.keep(writes, *target, counted, 0);
    b.keep(writes, *target, length, bytes.size());
}

void take(board &b, change &writes, const packet &which) {
    b.keep(writes, which.place, length, 0);
}

void note_counted(board &b, change &writes, const packet &which) {
    b.keep(writes, which.place, counted, 1);
}

} // namespace packet_ring

device_list devices_of_packet_ring() {
    static constexpr const device_family *families[]{&packet_ring::family};
    return {families, {}};
}

} // namespace kestro_sim
