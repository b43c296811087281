// Takes packets that have arrived out of their ring and delivers them.
#include "sim/devices/network/packet_receiver.h"

#include "sim/core/catalogue.h"

#include <algorithm>
#include <cstring>
#include <map>

namespace kestro_sim {

namespace packet_receiver {

namespace {

constexpr const char *packet_topic = "packet";

// By the number of the port. Only touched within operations, and never freed: drivers are called from exit handlers
// too.
std::map<uint32_t, listener_id> &receivers() {
    static auto *const known = new std::map<uint32_t, listener_id>;
    return *known;
}

std::optional<due_events> look_at_rings(board &b, int64_t after) {
    due_events found{after, {}};
    std::optional<int64_t> foreseen;
    for (const auto &[id, ears] : receivers()) {
        const auto port = board::at<management_port::family>(b.self(), id);
        while (auto packet = management_port::take_packet(b, port)) {
            found.events.push_back({packet_topic, id, 0, std::move(*packet)});
        }
        for (const packet_ring::packet &each : packet_ring::all(b, b.self(), id)) {
            foreseen = std::min(foreseen.value_or(each.arrival), each.arrival);
        }
    }
    if (found.events.empty() && foreseen) {
        found.due = *foreseen;
        return found;
    }
    return found.events.empty() ? std::nullopt : std::optional<due_events>(std::move(found));
}

void begin_to_watch_rings() {
    static bool is_source = false;
    if (!is_source) {
        add_event_source(packet_topic, look_at_rings);
        is_source = true;
    }
}

} // namespace

listener_id call(board &b, const management_port::one &port, function callee, void *area, uint32_t size) {
    const listener_id before = call_nobody(port);
    begin_to_watch_rings();
    const auto hears = [=, id = port.id](const event &news) {
        if (news.source != id) {
            return;
        }
        if (area == nullptr) {
            std::vector<uint8_t> own = news.bytes;
            callee(id, own.data(), nullptr, static_cast<uint32_t>(own.size()));
            return;
        }
        const auto length = static_cast<uint32_t>(std::min<size_t>(news.bytes.size(), size));
        std::memcpy(area, news.bytes.data(), length);
        callee(id, area, nullptr, length);
    };
    receivers()[port.id] = listen(b, packet_topic, hears);
    return before;
}

listener_id call_nobody(const management_port::one &port) {
    const auto found = receivers().find(port.id);
    if (found == receivers().end()) {
        return 0;
    }
    const listener_id before = found->second;
    receivers().erase(found);
    return before;
}

} // namespace packet_receiver

device_list devices_of_packet_receiver() {
    return {{}, {}};
}

} // namespace kestro_sim
