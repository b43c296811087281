// How counters follow from board time.
#include "sim/devices/network/ethernet_port.h"

#include "sim/core/catalogue.h"

#include <algorithm>

namespace kestro_sim {

namespace ethernet_port {

namespace {

// On the wire a frame has at least 64 bytes, its checksum of four among them.
constexpr size_t least_frame = 64;
constexpr size_t frame_checksum = 4;
constexpr uint32_t size_limits[]{64, 127, 255, 511, 1023, 1518};

constexpr size_t address_bytes = 6;
constexpr size_t tag_at = 12;

struct frame_form {
    uint32_t length;
    count kind;
    bool is_tagged;
};

// What the boards say to each other, as it repeats: questions, short answers, addresses sought, a file now and then.
constexpr frame_form mix[]{
    {64, unicast, false},  {98, unicast, false},   {64, unicast, false},   {64, broadcast, false},
    {242, unicast, false}, {64, unicast, false},   {90, multicast, true},  {400, unicast, false},
    {64, unicast, false},  {1518, unicast, false}, {1518, unicast, false}, {64, unicast, false},
    {700, unicast, false}, {1522, unicast, true},  {64, unicast, false},   {342, broadcast, false}};

void add_frame(tally &to, const frame_form &frame, uint64_t times) {
    const auto *limit = std::lower_bound(std::begin(size_limits), std::end(size_limits), frame.length);
    to[bytes] += times * frame.length;
    to[frame.kind] += times;
    to[tagged] += frame.is_tagged ? times : 0;
    to[up_to_64 + static_cast<size_t>(limit - std::begin(size_limits))] += times;
}

tally tally_of_mix(uint64_t packets) {
    tally counted{};
    for (size_t i = 0; i < std::size(mix); ++i) {
        add_frame(counted, mix[i], packets / std::size(mix) + (i < packets % std::size(mix) ? 1 : 0));
    }
    return counted;
}

// Nobody knows what a frame with a wrong checksum was; it counts as the shortest to the port itself.
tally tally_of_bad(uint64_t packets) {
    tally counted{};
    add_frame(counted, {least_frame, unicast, false}, packets);
    return counted;
}

uint64_t packets_in(uint64_t nanoseconds, uint32_t per_second) {
    constexpr auto second = static_cast<uint64_t>(nanoseconds_per_second);
    return nanoseconds / second * per_second + nanoseconds % second * per_second / second;
}

struct spans {
    uint64_t linked;
    uint64_t looped;
};

spans spans_by_now(board &b, const device &port, const line &now) {
    spans known{b.value(port, linked).value_or(0), b.value(port, looped).value_or(0)};
    const auto counted_to = static_cast<int64_t>(b.value(port, seen).value_or(0));
    if (now.is_up) {
        const auto more = static_cast<uint64_t>(std::max<int64_t>(b.now() - std::max(counted_to, now.from), 0));
        (now.is_looped ? known.looped : known.linked) += more;
    }
    return known;
}

count kind_of(std::span<const uint8_t> frame) {
    const auto address = frame.first(std::min(frame.size(), address_bytes));
    const bool is_for_all = address.size() == address_bytes &&
                            std::all_of(address.begin(), address.end(), [](uint8_t byte) { return byte == 0xFF; });
    if (is_for_all) {
        return broadcast;
    }
    return !address.empty() && (address[0] & 1U) != 0 ? multicast : unicast;
}

} // namespace

uint64_t packets_of(const tally &counted) {
    return counted[unicast] + counted[multicast] + counted[broadcast];
}

void add(tally &to, const tally &more) {
    for (size_t i = 0; i < to.size(); ++i) {
        to[i] += more[i];
    }
}

tally tally_of_frame(std::span<const uint8_t> frame) {
    const bool is_tagged = frame.size() >= tag_at + 2 && frame[tag_at] == 0x81 && frame[tag_at + 1] == 0x00;
    tally counted{};
    add_frame(counted,
              {static_cast<uint32_t>(std::max(frame.size() + frame_checksum, least_frame)), kind_of(frame), is_tagged},
              1);
    return counted;
}

traffic traffic_by_now(board &b, const device &port, const line &now, const rates &per_second) {
    const spans up = spans_by_now(b, port, now);
    const uint64_t sent_in_loop = packets_in(up.looped, per_second.sent);
    traffic passed{};
    passed.received = tally_of_mix(packets_in(up.linked, per_second.received) + sent_in_loop);
    passed.sent = tally_of_mix(packets_in(up.linked, per_second.sent) + sent_in_loop);
    passed.bad = b.value(port, bad_frames).value_or(0);
    add(passed.received, tally_of_bad(passed.bad));
    return passed;
}

void settle(board &b, change &writes, const device &port, const line &now) {
    const spans up = spans_by_now(b, port, now);
    b.add(writes, port, linked, up.linked);
    b.add(writes, port, looped, up.looped);
    b.add(writes, port, seen, static_cast<uint64_t>(b.now()));
}

void clear(board &b, change &writes, const device &port) {
    b.add(writes, port, linked, 0);
    b.add(writes, port, looped, 0);
    b.add(writes, port, seen, static_cast<uint64_t>(b.now()));
    b.add(writes, port, bad_frames, 0);
}

uint32_t lamp_shows(board &b, const device &port, const line &now) {
    const auto wanted = static_cast<uint32_t>(b.value(port, lamp).value_or(lamp_as_link));
    return wanted == lamp_as_link ? (now.is_up ? 1 : 0) : wanted;
}

int64_t time_on_wire(size_t frame_bytes, uint32_t mbit_per_s) {
    constexpr size_t preamble_and_gap = 20;
    const size_t on_wire = std::max(frame_bytes + frame_checksum, least_frame) + preamble_and_gap;
    return mbit_per_s == 0 ? 0 : static_cast<int64_t>(on_wire * 8 * 1000 / mbit_per_s);
}

} // namespace ethernet_port

device_list devices_of_ethernet_port() {
    return {{}, {}};
}

} // namespace kestro_sim
