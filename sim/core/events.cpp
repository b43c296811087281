// The queue of due events and the thread that delivers them.
//
// Two locks: that of the state directory (operations) and the queue's. The queue's is taken within operations, never
// the other way round, and neither is held during a callback.
#include "sim/core/events.h"

#include "sim/core/operation.h"
#include "sim/core/time.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>
#include <pthread.h>

namespace kestro_sim {

namespace {

// How often changes that other processes made are looked for. Not on the virtual clock: it would never rest.
constexpr int64_t look_around = 100 * nanoseconds_per_millisecond;
// How long the end of the process waits for a callback that does not return.
constexpr std::chrono::seconds patience{2};

struct queued {
    int64_t due;
    event_id id; // in order of posting
    event what;
};

struct registered {
    listener_id id;
    std::string topic;
    std::shared_ptr<listener> hears;
    int64_t since;       // hears what is due after this moment,
    event_id next_event; // and what is posted from here on
};

struct source {
    std::string topic;
    event_source next;
    std::optional<int64_t> told; // up to this moment; nothing while nobody listens
};

struct event_queue {
    std::mutex lock;
    std::condition_variable changed;
    std::vector<queued> events;
    std::vector<registered> listeners;
    event_id last_event = 0;
    listener_id last_listener = 0;
    listener_id called = 0; // whose callback runs
    bool looks_again = false;
    bool has_thread = false;
    bool is_ending = false;
    bool has_ended = false;
    pthread_t thread{};
};

// Never freed: drivers are called from exit handlers too. A forked child begins with an empty one.
std::atomic<event_queue *> present{nullptr};
std::vector<event_queue *> &left_behind() {
    static auto *const queues = new std::vector<event_queue *>;
    return *queues;
}

// Of the program, not of the process: only touched within operations.
std::vector<source> &sources() {
    static auto *const known = new std::vector<source>;
    return *known;
}

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

void forget_in_child() {
    forget_other_threads();
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

// The earliest; of several the one posted first.
std::vector<queued>::iterator first_event(event_queue &own) {
    return std::min_element(own.events.begin(), own.events.end(), [](const queued &a, const queued &b) {
        return a.due != b.due ? a.due < b.due : a.id < b.id;
    });
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
        const event_id before = own.last_event;
        guard.unlock();
        const std::optional<outlook> seen = look_at_board();
        guard.lock();
        if (seen) {
            deliver_due(own, guard, seen->now);
        }
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
    event_queue *const own = present;
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

// The program's signals are for the program's threads; those of a mistake stay with who makes it.
void block_signals(sigset_t &before) {
    sigset_t all;
    sigfillset(&all);
    for (const int mistake : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP, SIGSYS}) {
        sigdelset(&all, mistake);
    }
    pthread_sigmask(SIG_SETMASK, &all, &before);
}

// The queue's lock is held.
void need_thread(event_queue &own) {
    if (own.has_thread) {
        return;
    }
    static bool is_prepared = false;
    if (!is_prepared) {
        is_prepared = pthread_atfork(nullptr, nullptr, forget_in_child) == 0 && std::atexit(end_thread) == 0;
    }
    sigset_t before;
    block_signals(before);
    own.has_thread = is_prepared && pthread_create(&own.thread, nullptr, run, &own) == 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    refuse_if(!own.has_thread, error::out_of_memory);
}

} // namespace

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
    event_queue *const own = present;
    if (own == nullptr) {
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

void add_event_source(const std::string &topic, event_source next) {
    sources().push_back({topic, std::move(next), std::nullopt});
}

void look_at_sources_again() {
    event_queue *const own = present;
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
