// Looks at the board, delivers what is due, and rests until the next moment.
#include "sim/core/event_thread.h"

#include "sim/core/operation.h"
#include "sim/core/time.h"

#include <algorithm>
#include <cstdlib>

namespace kestro_sim {

namespace {

// How often changes that other processes made are looked for. Not on the virtual clock: it would never rest.
constexpr int64_t look_around = 100 * nanoseconds_per_millisecond;

void forget_in_child() {
    forget_other_threads();
    leave_queue_to_parent();
}

// What the thread knows after a look at the board.
struct outlook {
    int64_t now = 0;
    std::optional<int64_t> next; // moment of a source
    bool has_sources = false;
};

// The events of one source that are due go into the queue; gives the moment of the next ones.
std::optional<int64_t> collect(board &b, source &known, int64_t now) {
    if (!known.told) {
        known.told = now;
    }
    for (;;) {
        std::optional<due_events> found = known.next(b, *known.told);
        if (!found) {
            return std::nullopt;
        }
        if (found->due > now) {
            return found->due;
        }
        const bool is_later = found->due > *known.told;
        known.told = std::max(found->due, *known.told);
        event_queue &own = queue();
        const std::lock_guard guard(own.lock);
        for (event &what : found->events) {
            append(own, is_later ? found->due : now, std::move(what));
        }
        // A source that only notices changes has no later moment to go on from.
        if (!is_later) {
            return std::nullopt;
        }
    }
}

// Without a board (it was made new under the running program) there is nothing to tell.
std::optional<outlook> look_at_board() {
    outlook seen;
    const uint32_t result = operate([&](board &b) {
        seen.now = b.now();
        for (source &known : sources()) {
            bool is_wanted = false;
            {
                event_queue &own = queue();
                const std::lock_guard guard(own.lock);
                is_wanted = is_listened_to(own, known.topic);
            }
            if (!is_wanted) {
                known.told.reset();
                continue;
            }
            seen.has_sources = true;
            const auto next = collect(b, known, seen.now);
            if (next && (!seen.next || *next < *seen.next)) {
                seen.next = next;
            }
        }
    });
    return result == 0 ? std::optional<outlook>(seen) : std::nullopt;
}

void call(event_queue &own, std::unique_lock<std::mutex> &guard, const queued &which, listener_id who) {
    const auto found = std::find_if(own.listeners.begin(), own.listeners.end(),
                                    [&](const registered &known) { return known.id == who; });
    if (found == own.listeners.end() || own.is_ending) {
        return;
    }
    const std::shared_ptr<listener> target = found->hears;
    own.called = who;
    guard.unlock();
    (*target)(which.what);
    guard.lock();
    own.called = 0;
    own.changed.notify_all();
}

void deliver(event_queue &own, std::unique_lock<std::mutex> &guard, const queued &which) {
    std::vector<listener_id> audience;
    for (const registered &known : own.listeners) {
        if (hears(known, which)) {
            audience.push_back(known.id);
        }
    }
    for (const listener_id who : audience) {
        call(own, guard, which, who);
    }
}

void deliver_due(event_queue &own, std::unique_lock<std::mutex> &guard, int64_t now) {
    while (!own.is_ending) {
        const auto first = first_event(own);
        if (first == own.events.end() || first->due > now) {
            return;
        }
        const queued which = std::move(*first);
        own.events.erase(first);
        deliver(own, guard, which);
    }
}

// How long there is nothing to do; nothing at all when only a change can bring something.
std::optional<int64_t> rest(event_queue &own, const std::optional<outlook> &seen) {
    if (!seen) {
        return std::nullopt;
    }
    std::optional<int64_t> span = seen->next ? std::optional<int64_t>(*seen->next - seen->now) : std::nullopt;
    const auto first = first_event(own);
    if (first != own.events.end() && (!span || first->due - seen->now < *span)) {
        span = std::max<int64_t>(first->due - seen->now, 0);
    }
    if (seen->has_sources && !is_on_virtual_clock() && (!span || *span > look_around)) {
        span = look_around;
    }
    return span;
}

void work(event_queue &own) {
    std::unique_lock guard(own.lock);
    while (!own.is_ending) {
        own.looks_again = false;
        ++own.looks_begun;
        const event_id before = own.last_event;
        guard.unlock();
        const std::optional<outlook> seen = look_at_board();
        guard.lock();
        if (seen) {
            deliver_due(own, guard, seen->now);
        }
        own.looks_done = own.looks_begun;
        own.changed.notify_all();
        const auto is_called = [&] { return own.is_ending || own.looks_again || own.last_event != before; };
        const auto span = rest(own, seen);
        if (!span) {
            own.changed.wait(guard, is_called);
        } else if (*span > 0) {
            own.changed.wait_for(guard, std::chrono::nanoseconds(*span), is_called);
        }
    }
    own.has_ended = true;
    own.changed.notify_all();
}

void *run(void *own) {
    work(*static_cast<event_queue *>(own));
    return nullptr;
}

// Registered when the thread starts, so that it has ended before the objects are destroyed that its callbacks use. An
// exit handler that was registered later still finds it at work.
void end_thread() {
    event_queue *const own = queue_if_any();
    if (own == nullptr) {
        return;
    }
    std::unique_lock guard(own->lock);
    if (!own->has_thread || own->is_ending) {
        return;
    }
    own->is_ending = true;
    own->changed.notify_all();
    if (pthread_equal(own->thread, pthread_self()) != 0) {
        return;
    }
    const bool has_ended = own->changed.wait_for(guard, patience, [&] { return own->has_ended; });
    guard.unlock();
    if (has_ended) {
        pthread_join(own->thread, nullptr);
    } else {
        pthread_detach(own->thread);
    }
}

} // namespace

void need_thread(event_queue &own) {
    if (own.has_thread) {
        return;
    }
    static bool is_prepared = false;
    if (!is_prepared) {
        is_prepared = pthread_atfork(nullptr, nullptr, forget_in_child) == 0 && std::atexit(end_thread) == 0;
    }
    own.has_thread = is_prepared && start_driver_thread(own.thread, run, &own);
    refuse_if(!own.has_thread, error::out_of_memory);
}

} // namespace kestro_sim
