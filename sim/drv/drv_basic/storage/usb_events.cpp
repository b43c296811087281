// Watches the ports that were registered, as long as the process runs. The kernel of a board tells of them in its log;
// here the driver's log takes the lines.
#include "sim/drv/drv_basic/storage/usb_events.h"

#include "drv_basic/service/drv_log.h"
#include "sim/core/events.h"
#include "sim/drv/driver.h"

#include <map>
#include <utility>

namespace kestro_sim {

namespace {

constexpr const char *usb_topic = "usb";
constexpr uint32_t base_log = 0;
constexpr uint32_t level_info = 2;

// What is known of registered ports: whether a stick was in. Only touched within operations, and never freed.
std::map<uint32_t, bool> &known() {
    static auto *const ports = new std::map<uint32_t, bool>;
    return *ports;
}

listener_id listening = 0;
bool is_listening = false;

bool has_stick(board &b, uint32_t id) {
    return b.get(board::at<usb_port::family>(b.self(), id), usb_port::present) != 0;
}

std::optional<due_events> look_at_ports(board &b, int64_t after) {
    due_events found{after, {}};
    for (auto &[id, had_stick] : known()) {
        const bool stick = has_stick(b, id);
        if (std::exchange(had_stick, stick) != stick) {
            found.events.push_back({usb_topic, id, stick ? 1U : 0U, {}});
        }
    }
    return found.events.empty() ? std::nullopt : std::optional<due_events>(std::move(found));
}

void write_down(const event &news) {
    drv_log_record(base_log, level_info, 0, "usb %u: stick %s", news.source, news.value != 0 ? "came" : "went");
}

} // namespace

void begin_to_watch_usb(board &b, const usb_port::port &which) {
    static bool is_source = false;
    if (!is_source) {
        add_event_source(usb_topic, look_at_ports);
        is_source = true;
    }
    if (!is_listening) {
        listening = listen(b, usb_topic, write_down);
        is_listening = true;
    }
    known().try_emplace(which.id, has_stick(b, which.id));
}

void end_watching_usb() {
    bool was_listening = false;
    operate([&](board &) {
        known().clear();
        was_listening = std::exchange(is_listening, false);
    });
    if (was_listening) {
        stop_listening(listening);
    }
}

} // namespace kestro_sim
