// Board time: nanoseconds since the board was made new. It is kept in the state and goes on from run to run: on the
// real clock with the real time, on the virtual clock from where the last run ended. It never goes back.
//
// How devices behave in time (a ramp, a warm-up, a save that takes three seconds) is worked out from board::now() when
// it is read, never done by a loop in the background.
#pragma once

#include "sim/core/store.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace kestro_sim {

inline constexpr int64_t nanoseconds_per_millisecond = 1'000'000;
inline constexpr int64_t nanoseconds_per_second = 1'000'000'000;

// Whether this process runs on the virtual clock.
bool is_on_virtual_clock();

// For a process without a world that prepares a run on the virtual clock: the time of the board is where it was left.
void let_board_time_stand(bool stands);

// The board time of this process and what the store knows of it. The lock of the state directory is held.
int64_t board_time(store &kept);

// Writes the present moment down, for the runs to come.
void note_board_time(store &kept);

// The same, when it has moved by so much that a killed run would lose something of it. Begins the time of a new board.
void note_board_time_now_and_then(store &kept);

// At the end of a run that has waited and entered no driver. Throws store_error.
void note_time_taken(const std::filesystem::path &state_dir);

// What a run on the virtual clock starts with. Throws store_error.
int64_t board_time_at_start(const std::filesystem::path &state_dir);

} // namespace kestro_sim
