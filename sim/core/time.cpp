// Board time, from the world that the process runs in and from two cells of the store: the board time that was noted
// last, and the moment of the real clock at which it was.
#include "sim/core/time.h"

#include "sim/core/state_dir.h"

#include <algorithm>
#include <atomic>
#include <ctime>
#include <sys/syscall.h>
#include <unistd.h>

// Of the world library, when the process has one; less than 0 on the real clock.
extern "C" __attribute__((weak)) int64_t kestro_world_board_time();
extern "C" __attribute__((weak)) int64_t kestro_world_time_taken();

namespace kestro_sim {

namespace {

constexpr const char *noted_time = "time/board_ns";
constexpr const char *noted_at = "time/real_ns";
constexpr int64_t much = nanoseconds_per_second;

std::atomic<bool> time_stands{false};

std::atomic<int64_t> last_noted{-1}; // by this process, on the clock that it runs on

// The desk's clock, also within a world whose own one is virtual.
int64_t real_now() {
    timespec now{};
    if (is_on_virtual_clock()) {
        struct {
            long seconds;
            long nanoseconds;
        } kernel_time{};
        syscall(SYS_clock_gettime, CLOCK_REALTIME, &kernel_time);
        now.tv_sec = kernel_time.seconds;
        now.tv_nsec = kernel_time.nanoseconds;
    } else {
        clock_gettime(CLOCK_REALTIME, &now);
    }
    return static_cast<int64_t>(now.tv_sec) * nanoseconds_per_second + now.tv_nsec;
}

int64_t own_clock() {
    return is_on_virtual_clock() ? kestro_world_board_time() : real_now();
}

int64_t kept_number(const store &kept, const char *key, int64_t otherwise) {
    const auto value = kept.get(key);
    return value ? static_cast<int64_t>(*value) : otherwise;
}

// Of two runs on the virtual clock at once the later moment counts; a real clock that was set back stands still.
int64_t time_of(const store &kept, int64_t real) {
    const int64_t noted = kept_number(kept, noted_time, 0);
    if (is_on_virtual_clock()) {
        return std::max(noted, kestro_world_board_time());
    }
    if (time_stands) {
        return noted;
    }
    return noted + std::max<int64_t>(real - kept_number(kept, noted_at, real), 0);
}

void write_down(store &kept, int64_t time, int64_t real) {
    change writes;
    writes.put(noted_time, static_cast<uint64_t>(time));
    writes.put(noted_at, static_cast<uint64_t>(real));
    // Without room for it, or where the state may only be read, time stands still between runs.
    try {
        static_cast<void>(kept.commit(writes));
    } catch (const store_error &) {
        return;
    }
}

} // namespace

bool is_on_virtual_clock() {
    return kestro_world_board_time != nullptr && kestro_world_board_time() >= 0;
}

void let_board_time_stand(bool stands) {
    time_stands = stands;
}

int64_t board_time(store &kept) {
    const int64_t real = is_on_virtual_clock() ? 0 : real_now();
    return time_of(kept, real);
}

// Most runs on the virtual clock do not wait, and have nothing to write down.
void note_board_time(store &kept) {
    const int64_t real = real_now();
    const int64_t time = time_of(kept, real);
    if (!is_on_virtual_clock() || !kept.get(noted_at) || time != kept_number(kept, noted_time, 0)) {
        write_down(kept, time, real);
    }
    last_noted = own_clock();
}

void note_board_time_now_and_then(store &kept) {
    const int64_t now = own_clock();
    if (last_noted < 0) {
        if (!kept.get(noted_at)) {
            write_down(kept, 0, real_now());
        }
        last_noted = now;
    } else if (now - last_noted >= much) {
        note_board_time(kept);
    }
}

void note_time_taken(const std::filesystem::path &state_dir) {
    if (is_on_virtual_clock() && kestro_world_time_taken() > 0) {
        const state_lock lock(state_dir);
        store kept(state_dir);
        note_board_time(kept);
    }
}

int64_t board_time_at_start(const std::filesystem::path &state_dir) {
    const state_lock lock(state_dir);
    const store kept(state_dir);
    return kept_number(kept, noted_time, 0);
}

} // namespace kestro_sim
