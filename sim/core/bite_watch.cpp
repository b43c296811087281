// The end of a program with its board, and the thread that waits for it.
#include "sim/core/bite_watch.h"

#include "sim/core/driver_thread.h"
#include "sim/core/operation.h"
#include "sim/core/time.h"
#include "sim/devices/management/watchdog.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <mutex>
#include <unistd.h>

// Of the world library, when the process has one: it hands on the requests of /dev/watchdog, and lets the drivers look
// at the board at the start of a run whose watchdog is on.
extern "C" __attribute__((weak)) void kestro_world_join(int (*request)(unsigned long, uint32_t *), void (*begin)());

namespace kestro_sim {

namespace {

using bite_counts = std::array<uint64_t, 2>; // of the system's watchdog and of that of bad hardware

// As this process found them first. Touched within operations.
std::optional<bite_counts> counts_at_first;

bite_counts counts_of_own_board(board &b) {
    return {bites_of(b, b.self(), watchdog::of_system), bites_of(b, b.self(), watchdog::of_bad_hardware)};
}

// What this process has started, and what that has: the parents first.
std::vector<pid_t> descendants_of(const std::string &process) {
    std::vector<pid_t> found;
    std::error_code none;
    for (std::filesystem::directory_iterator task("/proc/" + process + "/task", none);
         !none && task != std::filesystem::directory_iterator(); task.increment(none)) {
        std::ifstream children(task->path() / "children");
        for (pid_t child = 0; children >> child;) {
            found.push_back(child);
            const std::vector<pid_t> further = descendants_of(std::to_string(child));
            found.insert(found.end(), further.begin(), further.end());
        }
    }
    return found;
}

// Nothing comes after it: no exit handler, no rest of a line, nothing of a shell command that was under way. A thread
// that waits for such a command could print once more when that ends, so standard output is held.
[[noreturn]] void end_process(const std::string &what) {
    const std::string line = "kestro_sim: " + what + "\n";
    const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
    static_cast<void>(written);
    static_cast<void>(ftrylockfile(stdout));
    for (const pid_t other : descendants_of("self")) {
        kill(other, SIGKILL);
    }
    for (;;) {
        kill(getpid(), SIGKILL);
    }
}

struct watch {
    std::mutex lock;
    std::condition_variable changed;
    std::optional<int64_t> due;     // the next bite of the own board, as last seen
    std::optional<int64_t> awaited; // by the thread
    bool is_ending = false;
    bool has_ended = false;
    pthread_t thread{};
};

// From one look to the next: at least this long for a bite that is due and cannot be written down, and at most a day,
// which every clock can count.
constexpr int64_t patience_with_state = nanoseconds_per_second;
constexpr int64_t longest_wait = 86400 * nanoseconds_per_second;

std::chrono::nanoseconds span_until(int64_t due, int64_t now) {
    const int64_t span = due < now ? patience_with_state : due - now + 1;
    return std::chrono::nanoseconds(std::min(span, longest_wait));
}

// Made when there is something to wait for, and then kept to the end of the process.
std::atomic<watch *> own_watch{nullptr};

void wait_for_bite(watch &own) {
    std::unique_lock guard(own.lock);
    while (!own.is_ending) {
        guard.unlock();
        int64_t now = 0;
        std::optional<int64_t> due;
        const uint32_t result = operate([&](board &b) {
            now = b.now();
            due = next_bite(b, b.self());
        });
        guard.lock();
        // Without a board (it was made new under the running program) there is nothing to wait for.
        if (result != 0) {
            own.due.reset();
            due.reset();
        }
        own.awaited = due;
        const auto is_called = [&] { return own.is_ending || (own.due && (!own.awaited || *own.due < *own.awaited)); };
        if (due) {
            own.changed.wait_for(guard, span_until(*due, now), is_called);
        } else {
            own.changed.wait(guard, is_called);
        }
    }
    own.has_ended = true;
    own.changed.notify_all();
}

void *run_watch(void *own) {
    wait_for_bite(*static_cast<watch *>(own));
    return nullptr;
}

// Before the objects are destroyed that an operation uses.
void end_watch() {
    watch *const own = own_watch;
    if (own == nullptr) {
        return;
    }
    std::unique_lock guard(own->lock);
    if (own->is_ending || pthread_equal(own->thread, pthread_self()) != 0) {
        return;
    }
    own->is_ending = true;
    own->changed.notify_all();
    const bool has_ended = own->changed.wait_for(guard, patience, [&] { return own->has_ended; });
    guard.unlock();
    if (has_ended) {
        pthread_join(own->thread, nullptr);
    } else {
        pthread_detach(own->thread);
    }
}

// A forked child has no such thread; its lock may have been held by it.
void leave_watch_to_parent() {
    own_watch = nullptr;
}

// Without a thread the bite is noticed at the next operation.
void start_watch(int64_t due) {
    static const bool is_prepared =
        pthread_atfork(nullptr, nullptr, leave_watch_to_parent) == 0 && std::atexit(end_watch) == 0;
    auto made = std::make_unique<watch>();
    made->due = due;
    made->awaited = due;
    if (is_prepared && start_driver_thread(made->thread, run_watch, made.get())) {
        own_watch = made.release();
    }
}

void look_at_start() {
    operate([](board &) {});
}

__attribute__((constructor)) void join_world() {
    if (kestro_world_join != nullptr) {
        kestro_world_join(answer_watchdog_request, look_at_start);
    }
}

} // namespace

void end_with_bitten_board(board &b) {
    if (has_bite(b)) {
        // A run that is killed at any instant from here on leaves a state in which it is at least that late.
        b.note_time();
        settle_bites(b);
    }
    const bite_counts counts = counts_of_own_board(b);
    if (!counts_at_first) {
        counts_at_first = counts;
    }
    if (counts[1] > (*counts_at_first)[1]) {
        end_process("the hardware-bad watchdog of " + b.self() + " bit: the board is reset and out of service");
    }
    if (counts[0] > (*counts_at_first)[0]) {
        end_process("the watchdog of " + b.self() + " bit: the board is reset");
    }
}

void watch_for_bite(board &b) {
    const std::optional<int64_t> due = next_bite(b, b.self());
    watch *const own = own_watch;
    if (own == nullptr) {
        if (due) {
            start_watch(*due);
        }
        return;
    }
    const std::lock_guard guard(own->lock);
    own->due = due;
    if (due && (!own->awaited || *due < *own->awaited)) {
        own->changed.notify_all();
    }
}

} // namespace kestro_sim
