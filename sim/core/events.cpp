// Events: who listens, and what is posted.
#include "sim/core/events.h"

#include "sim/core/event_thread.h"

#include <algorithm>

namespace kestro_sim {

listener_id listen(board &b, const std::string &topic, listener hears) {
    const int64_t now = b.now();
    event_queue &own = queue();
    const std::lock_guard guard(own.lock);
    // What came due before anybody listened has gone by.
    if (own.listeners.empty()) {
        std::erase_if(own.events, [&](const queued &old) { return old.due <= now; });
    }
    need_thread(own);
    own.listeners.push_back(
        {++own.last_listener, topic, std::make_shared<listener>(std::move(hears)), now, own.last_event + 1});
    own.looks_again = true;
    own.changed.notify_all();
    return own.last_listener;
}

void stop_listening(listener_id who) {
    event_queue *const own = queue_if_any();
    // No listener has the number 0, by which the thread says that it calls none.
    if (own == nullptr || who == 0) {
        return;
    }
    std::unique_lock guard(own->lock);
    std::erase_if(own->listeners, [&](const registered &known) { return known.id == who; });
    if (own->has_thread && pthread_equal(own->thread, pthread_self()) == 0) {
        const auto is_over = [&] { return own->called != who; };
        if (own->is_ending) {
            own->changed.wait_for(guard, patience, is_over);
        } else {
            own->changed.wait(guard, is_over);
        }
    }
}

event_id post(board &b, event what) {
    const int64_t now = b.now();
    event_queue &own = queue();
    const std::lock_guard guard(own.lock);
    // Nobody hears it, and nobody would take it away.
    return own.listeners.empty() ? ++own.last_event : append(own, now, std::move(what));
}

event_id post_at(int64_t due, event what) {
    event_queue &own = queue();
    const std::lock_guard guard(own.lock);
    return append(own, due, std::move(what));
}

bool cancel(event_id what) {
    event_queue &own = queue();
    const std::lock_guard guard(own.lock);
    return std::erase_if(own.events, [&](const queued &known) { return known.id == what; }) != 0;
}

void let_deliver() {
    event_queue *const own = queue_if_any();
    if (own == nullptr) {
        return;
    }
    std::unique_lock guard(own->lock);
    if (!own->has_thread || own->listeners.empty() || pthread_equal(own->thread, pthread_self()) != 0) {
        return;
    }
    const uint64_t looks = own->looks_begun;
    own->looks_again = true;
    own->changed.notify_all();
    own->changed.wait_for(guard, patience, [&] { return own->is_ending || own->looks_done > looks; });
}

void add_event_source(const std::string &topic, event_source next) {
    sources().push_back({topic, std::move(next), std::nullopt});
}

void look_at_sources_again() {
    event_queue *const own = queue_if_any();
    if (own == nullptr) {
        return;
    }
    const std::lock_guard guard(own->lock);
    if (own->has_thread) {
        own->looks_again = true;
        own->changed.notify_all();
    }
}

} // namespace kestro_sim
