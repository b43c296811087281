// The queue's own affairs.
#include "sim/core/event_queue.h"

#include <algorithm>
#include <atomic>

namespace kestro_sim {

namespace {

// Never freed: drivers are called from exit handlers too. A forked child begins with an empty one.
std::atomic<event_queue *> present{nullptr};
std::vector<event_queue *> &left_behind() {
    static auto *const queues = new std::vector<event_queue *>;
    return *queues;
}

} // namespace

event_queue &queue() {
    event_queue *own = present;
    if (own == nullptr) {
        auto made = std::make_unique<event_queue>();
        if (present.compare_exchange_strong(own, made.get())) {
            own = made.release();
        }
    }
    return *own;
}

event_queue *queue_if_any() {
    return present;
}

std::vector<source> &sources() {
    static auto *const known = new std::vector<source>;
    return *known;
}

void leave_queue_to_parent() {
    if (event_queue *parents = present.exchange(nullptr)) {
        left_behind().push_back(parents);
    }
    for (source &known : sources()) {
        known.told.reset();
    }
}

bool is_listened_to(const event_queue &own, const std::string &topic) {
    return std::any_of(own.listeners.begin(), own.listeners.end(),
                       [&](const registered &known) { return known.topic == topic; });
}

bool hears(const registered &who, const queued &which) {
    return who.topic == which.what.topic && (which.id >= who.next_event || which.due > who.since);
}

event_id append(event_queue &own, int64_t due, event what) {
    own.events.push_back({due, ++own.last_event, std::move(what)});
    own.changed.notify_all();
    return own.last_event;
}

std::vector<queued>::iterator first_event(event_queue &own) {
    return std::min_element(own.events.begin(), own.events.end(), [](const queued &a, const queued &b) {
        return a.due != b.due ? a.due < b.due : a.id < b.id;
    });
}

} // namespace kestro_sim
