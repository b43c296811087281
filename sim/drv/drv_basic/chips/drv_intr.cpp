// Interrupts of the own board. Who handles a line is known to this process alone; whether the line is let through, and
// its source, are the hardware's.
#include "drv_basic/chips/drv_intr.h"

#include "sim/core/events.h"
#include "sim/core/time.h"
#include "sim/devices/management/health.h"
#include "sim/drv/driver.h"

#include <map>
#include <utility>

using namespace kestro_sim;

namespace {

constexpr const char *topic = "interrupt";

// Sources are levels: a handler that leaves its source raised is called again after the time that a round through the
// kernel takes. The way to the processor takes a while, too.
constexpr int64_t latency = nanoseconds_per_millisecond / 10;
constexpr int64_t round_trip = 10 * nanoseconds_per_millisecond;

using line = device_of<interrupt_line::family>;

struct registration {
    listener_id ears = 0;
    std::optional<int64_t> next_call{}; // while it is let through and raised
    bool was_raised = false;
    bool is_spent = false; // nothing more comes, or not before the source is raised anew
};

// By the number of the line. Only touched within operations, and never freed: drivers are called from exit handlers
// too.
std::map<uint32_t, registration> &registrations() {
    static auto *const known = new std::map<uint32_t, registration>;
    return *known;
}

line find_line(board &b, uint32_t index, uint32_t type) {
    const auto lines = b.all_at<interrupt_line::family>(b.self());
    refuse_if(lines.empty(), error::not_supported);
    for (const line &each : lines) {
        const uint32_t own_index = b.get(each, interrupt_line::numbered) != 0 ? each.id : UINT32_MAX;
        if (own_index == index && b.get(each, interrupt_line::type) == type) {
            return each;
        }
    }
    refuse(error::no_such_device);
}

line find_registered_line(board &b, uint32_t index, uint32_t type) {
    line found = find_line(b, index, type);
    refuse_if(!registrations().contains(found.id), error::not_ready);
    return found;
}

bool comes_through(board &b, const line &which) {
    return interrupt_line::is_let_through(b, which) && interrupt_line::is_raised(b, which);
}

bool is_called_once(board &b, const line &which) {
    const uint32_t wrong = b.get(which, interrupt_line::defect);
    return wrong == interrupt_line::once || wrong == interrupt_line::edge;
}

// When a line is to be called next. Most are never raised: that is looked at first.
std::optional<int64_t> next_call(board &b, const line &which, registration &known) {
    if (!interrupt_line::is_raised(b, which)) {
        known.was_raised = false;
        known.next_call.reset();
        return std::nullopt;
    }
    const bool has_risen = !std::exchange(known.was_raised, true);
    const bool is_let_through = interrupt_line::is_let_through(b, which);
    if (has_risen && b.get(which, interrupt_line::defect) == interrupt_line::edge) {
        known.is_spent = !is_let_through;
    }
    if (known.is_spent || !is_let_through) {
        known.next_call.reset();
    } else if (!known.next_call) {
        known.next_call = b.now() + latency;
    }
    return known.next_call;
}

std::optional<due_events> look_at_lines(board &b, int64_t after) {
    const int64_t now = b.now();
    due_events found{after, {}};
    std::optional<int64_t> foreseen;
    for (auto &[id, known] : registrations()) {
        const line which = board::at<interrupt_line::family>(b.self(), id);
        const auto next = next_call(b, which, known);
        if (next && *next <= now) {
            found.events.push_back({topic, id, 0, {}});
            known.is_spent = is_called_once(b, which);
            known.next_call = now + round_trip;
        } else if (next && (!foreseen || *next < *foreseen)) {
            foreseen = next;
        }
    }
    if (found.events.empty() && foreseen) {
        found.due = *foreseen;
        return found;
    }
    return found.events.empty() ? std::nullopt : std::optional<due_events>(std::move(found));
}

void begin_to_watch_lines() {
    static bool is_source = false;
    if (!is_source) {
        add_event_source(topic, look_at_lines);
        is_source = true;
    }
}

// Between the look at the line and the call it may have been disabled, or its source taken back.
bool is_still_wanted(uint32_t id) {
    bool is_wanted = false;
    operate([&](board &b) { is_wanted = comes_through(b, board::at<interrupt_line::family>(b.self(), id)); });
    return is_wanted;
}

uint32_t set_enabled(uint32_t index, uint32_t type, uint32_t enabled) {
    return operate([&](board &b) { b.put(find_registered_line(b, index, type), interrupt_line::enabled, enabled); });
}

} // namespace

uint32_t drv_intr_set_regist(uint32_t index, uint32_t type, drv_intr_handler handler, void *user_data) {
    return operate([&](board &b) {
        refuse_if(handler == nullptr, error::null_pointer);
        const line which = find_line(b, index, type);
        refuse_if(registrations().contains(which.id), error::bad_value);
        begin_to_watch_lines();
        const auto hears = [=, id = which.id](const event &news) {
            if (news.source == id && is_still_wanted(id)) {
                handler(index, type, user_data);
            }
        };
        const listener_id ears = listen(b, topic, hears);
        registrations()[which.id] = {.ears = ears};
        b.put(which, interrupt_line::enabled, 1);
    });
}

// The handler is not called any more when this returns. A running one may be waiting for the lock, so it is waited for
// without.
uint32_t drv_intr_set_unregist(uint32_t index, uint32_t type) {
    listener_id gone = 0;
    const uint32_t result = operate([&](board &b) {
        const line which = find_registered_line(b, index, type);
        b.put(which, interrupt_line::enabled, 0);
        gone = std::exchange(registrations()[which.id], {}).ears;
        registrations().erase(which.id);
    });
    stop_listening(gone);
    return result;
}

uint32_t drv_intr_enable(uint32_t index, uint32_t type) {
    return set_enabled(index, type, 1);
}

uint32_t drv_intr_disable(uint32_t index, uint32_t type) {
    return set_enabled(index, type, 0);
}
