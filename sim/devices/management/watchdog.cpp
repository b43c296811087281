// Watchdogs are looked at before every driver operation, so the moment of the earliest bite in the chassis is kept
// beside their registers: one look tells that nothing has happened.
#include "sim/devices/management/watchdog.h"

#include "sim/core/catalogue.h"
#include "sim/core/operation.h"
#include "sim/core/time.h"
#include "sim/devices/management/board_unit.h"
#include "sim/devices/management/mastership.h"
#include "sim/devices/management/restart.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <linux/watchdog.h>

namespace kestro_sim {

namespace {

constexpr const char *earliest_bite = "time/watchdog_ns"; // 0: none is on

struct timer_setting {
    bool enabled;
    uint64_t timeout;
    int64_t fed;

    int64_t due() const {
        return fed + static_cast<int64_t>(timeout) * nanoseconds_per_millisecond;
    }
};

timer_setting read(board &b, const watchdog::one &which) {
    return {b.get(which, watchdog::enabled) != 0, b.get(which, watchdog::timeout),
            static_cast<int64_t>(b.get_wide(which, watchdog::fed))};
}

std::vector<watchdog::one> all_watchdogs(board &b) {
    std::vector<watchdog::one> found;
    for (const pugi::xml_node place : b.described().chassis().children("place")) {
        for (watchdog::one &which : b.all_at<watchdog::family>(place.attribute("name").value())) {
            found.push_back(std::move(which));
        }
    }
    return found;
}

// Of those that fulfil a condition; 0 when none of them is on.
template <typename Condition> int64_t earliest_of(board &b, Condition counts) {
    int64_t earliest = 0;
    for (const watchdog::one &which : all_watchdogs(b)) {
        const timer_setting present = read(b, which);
        if (counts(which) && present.enabled && (earliest == 0 || present.due() < earliest)) {
            earliest = present.due();
        }
    }
    return earliest;
}

void keep_earliest(change &writes, int64_t moment) {
    writes.put(earliest_bite, static_cast<uint64_t>(moment));
}

void write(board &b, const watchdog::one &which, const timer_setting &wanted) {
    change writes;
    b.put(writes, which, watchdog::enabled, wanted.enabled ? 1 : 0);
    b.put(writes, which, watchdog::timeout, wanted.timeout);
    b.put(writes, which, watchdog::fed, static_cast<uint64_t>(wanted.fed));
    int64_t earliest = earliest_of(
        b, [&](const watchdog::one &other) { return other.instance != which.instance || other.id != which.id; });
    if (wanted.enabled && (earliest == 0 || wanted.due() < earliest)) {
        earliest = wanted.due();
    }
    keep_earliest(writes, earliest);
    b.commit(writes);
}

// A board with bad hardware comes up again, but not into service: it reads absent until it is set present, and a main
// processing unit leaves mastery to its peer.
void take_out_of_service(board &b, change &writes, const std::string &place) {
    b.put(writes, board::at<presence::family>(place), presence::status, presence::absent);
    note_fitted(b, writes, place, false);
}

// A bite pulls the reset line of the board: a cold start, for nothing is known of a state that software left so.
void bite(board &b, const watchdog::one &which) {
    change writes;
    note_restart(b, writes, which.instance, restart_reason::watchdog, restart_kind::cold);
    if (which.id == watchdog::of_bad_hardware) {
        take_out_of_service(b, writes, which.instance);
    }
    b.put(writes, which, watchdog::bites, b.get(which, watchdog::bites) + 1U);
    b.commit(writes);
}

// The state as it was at a moment that has gone by.
class look_back {
  public:
    look_back(board &b, int64_t moment) : b_(b) {
        b_.look_back_to(moment);
    }
    look_back(const look_back &) = delete;
    look_back &operator=(const look_back &) = delete;
    ~look_back() {
        b_.look_back_to(std::nullopt);
    }

  private:
    board &b_;
};

// A watchdog may be described as on from the start: then there is a moment that nobody has written down yet.
int64_t moment_of_next(board &b) {
    static std::atomic<bool> has_looked = false;
    if (const auto known = b.cell(earliest_bite)) {
        return static_cast<int64_t>(*known);
    }
    if (has_looked.exchange(true)) {
        return 0;
    }
    const int64_t earliest = earliest_of(b, [](const watchdog::one &) { return true; });
    if (earliest != 0) {
        change writes;
        keep_earliest(writes, earliest);
        b.commit(writes);
    }
    return earliest;
}

// A clear at the very moment is in time. So a program on the virtual clock that sleeps up to that moment is not killed
// or spared by which of two threads comes first.
bool is_over(int64_t due, int64_t now) {
    return due != 0 && now > due;
}

// As Linux takes it: both bits switch it off and on again.
void set_options(board &b, const watchdog::one &which, uint32_t options) {
    refuse_if((options & (WDIOS_DISABLECARD | WDIOS_ENABLECARD)) == 0, error::bad_value);
    watchdog::enable(b, which, (options & WDIOS_ENABLECARD) != 0);
}

void settle_next(board &b, int64_t due) {
    for (const watchdog::one &which : all_watchdogs(b)) {
        const timer_setting present = read(b, which);
        if (present.enabled && present.due() == due) {
            const look_back to_the_moment(b, due);
            bite(b, which);
            return;
        }
    }
    // Somebody has changed registers past everything that would have noticed.
    change writes;
    keep_earliest(writes, earliest_of(b, [](const watchdog::one &) { return true; }));
    b.commit(writes);
}

} // namespace

void watchdog::clear(board &b, const one &which) {
    timer_setting changed = read(b, which);
    if (changed.enabled) {
        changed.fed = b.now();
        write(b, which, changed);
    }
}

void watchdog::enable(board &b, const one &which, bool on) {
    write(b, which, {on, read(b, which).timeout, b.now()});
}

bool watchdog::is_enabled(board &b, const one &which) {
    return read(b, which).enabled;
}

uint32_t watchdog::seconds(board &b, const one &which) {
    return static_cast<uint32_t>((read(b, which).timeout + 999) / 1000);
}

void watchdog::set_seconds(board &b, const one &which, uint32_t seconds) {
    refuse_if(seconds == 0 || seconds > longest, error::bad_value);
    timer_setting changed = read(b, which);
    changed.timeout = uint64_t{seconds} * 1000;
    changed.fed = b.now();
    write(b, which, changed);
}

std::string watchdog::dump(board &b, const one &which) {
    const timer_setting present = read(b, which);
    const int64_t left = present.enabled ? std::max<int64_t>(present.due() - b.now(), 0) : 0;
    return "enable " + std::to_string(present.enabled ? 1 : 0) + " timeout " + std::to_string(present.timeout) +
           " ms left " + std::to_string(left / nanoseconds_per_millisecond) + " ms bites " +
           std::to_string(b.get(which, bites));
}

bool are_watchdogs_on(const store &kept) {
    return kept.get(earliest_bite).value_or(0) != 0;
}

void stop_watchdogs(board &b, change &writes, const std::string &place) {
    bool was_on = false;
    for (const watchdog::one &which : b.all_at<watchdog::family>(place)) {
        const timer_setting present = read(b, which);
        const uint64_t first = b.described_value(which, watchdog::timeout).value_or(present.timeout);
        was_on = was_on || present.enabled;
        if (present.enabled) {
            b.put(writes, which, watchdog::enabled, 0);
        }
        if (present.timeout != first) {
            b.put(writes, which, watchdog::timeout, first);
        }
    }
    if (was_on) {
        keep_earliest(writes, earliest_of(b, [&](const watchdog::one &other) { return other.instance != place; }));
    }
}

bool has_bite(board &b) {
    try {
        return is_over(moment_of_next(b), b.now());
    } catch (const store_error &) {
        return false;
    }
}

void settle_bites(board &b) {
    try {
        for (int64_t due = moment_of_next(b); is_over(due, b.now()); due = moment_of_next(b)) {
            settle_next(b, due);
        }
    } catch (const store_error &) {
        return;
    } catch (const refusal &) {
        return;
    }
}

std::optional<int64_t> next_bite(board &b, const std::string &place) {
    try {
        if (b.cell(earliest_bite).value_or(0) == 0) {
            return std::nullopt;
        }
        const int64_t earliest = earliest_of(b, [&](const watchdog::one &which) { return which.instance == place; });
        return earliest == 0 ? std::nullopt : std::optional(earliest);
    } catch (const store_error &) {
        return std::nullopt;
    }
}

uint64_t bites_of(board &b, const std::string &place, uint32_t id) {
    try {
        // Without a watchdog that was ever on, which is most often so, there is one look.
        return b.cell(earliest_bite) ? b.get(board::at<watchdog::family>(place, id), watchdog::bites) : 0;
    } catch (const store_error &) {
        return 0;
    }
}

// Opening and closing the device neither switches the watchdog on nor off, nor clears it: its users open it for each
// request, and one that only asks for the timeout must not have the board reset for it.
int answer_watchdog_request(unsigned long request, uint32_t *value) {
    if (value == nullptr && request != WDIOC_KEEPALIVE) {
        return EFAULT;
    }
    const uint32_t result = operate([&](board &b) {
        const watchdog::one which = b.find_at<watchdog::family>(b.self(), watchdog::of_system);
        switch (request) {
        case WDIOC_KEEPALIVE:
            watchdog::clear(b, which);
            break;
        case WDIOC_GETTIMEOUT:
            *value = watchdog::seconds(b, which);
            break;
        case WDIOC_SETTIMEOUT:
            watchdog::set_seconds(b, which, *value);
            break;
        default:
            set_options(b, which, *value);
            break;
        }
    });
    if (result == 0) {
        return 0;
    }
    switch (static_cast<error>(result)) {
    case error::bad_value:
        return EINVAL;
    case error::not_supported:
    case error::no_such_device:
        return ENODEV;
    default:
        return EIO;
    }
}

hand_on_watchdogs::hand_on_watchdogs(board &b) : b_(b) {
    for (const watchdog::one &which : all_watchdogs(b)) {
        before_.push_back({which, b.get(which, watchdog::enabled), b.get_wide(which, watchdog::fed)});
    }
}

void hand_on_watchdogs::take_off() {
    change begun;
    for (const seen &one : before_) {
        const bool is_new = one.enabled == 0 && b_.get(one.which, watchdog::enabled) != 0;
        if (is_new && b_.get_wide(one.which, watchdog::fed) == one.fed) {
            b_.put(begun, one.which, watchdog::fed, static_cast<uint64_t>(b_.now()));
        }
    }
    if (!begun.items().empty()) {
        b_.commit(begun);
    }
    const int64_t earliest = earliest_of(b_, [](const watchdog::one &) { return true; });
    if (static_cast<int64_t>(b_.cell(earliest_bite).value_or(0)) != earliest) {
        change writes;
        keep_earliest(writes, earliest);
        b_.commit(writes);
    }
}

device_list devices_of_watchdog() {
    static constexpr const device_family *families[]{&watchdog::family};
    return {families, {}};
}

} // namespace kestro_sim
