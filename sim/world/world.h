// What the parts of the world library share: which world this run wants, and the next definition of a function that
// the library stands in front of.
#pragma once

#include <atomic>
#include <climits>
#include <cstddef>
#include <cstdint>

// A function that stands in front of the C library's. The C++ name differs from the symbol's, so that neither the
// headers' declarations nor their 32- and 64-bit redirections get in the way.
#define WORLD_EXPORT extern "C" __attribute__((visibility("default")))

namespace kestro_sim {

struct world_settings {
    char root[PATH_MAX]; // directory that holds the board's files; empty: the desk's files are used
    size_t root_length;
    const char *own_paths[6]; // the desk's own files of this run, wherever the user put them
    size_t own_path_count;
    bool virtual_clock;
    int64_t board_time;            // at the start of the run, on the virtual clock
    bool is_answered;              // by a script or a replay, in place of the board
    unsigned long fail_allocation; // 0: none
};

extern world_settings settings;

// The definition behind this library's own.
void *find_next(const char *symbol);

template <typename signature> struct next_function {
    const char *symbol;
    std::atomic<signature *> found = nullptr;

    signature *get() {
        signature *function = found.load(std::memory_order_acquire);
        if (function == nullptr) {
            function = reinterpret_cast<signature *>(find_next(symbol));
            found.store(function, std::memory_order_release);
        }
        return function;
    }
};

// Counts the threads, for the virtual clock.
void start_scheduling();

// Finds out which addresses belong to the kestro_test binary, whose allocations are counted.
void start_counting_allocations();

} // namespace kestro_sim
