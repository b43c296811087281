// The virtual clock: it stands still while a thread runs, and when all wait it goes to the earliest deadline
// (scheduler.h). Times are nanoseconds since the start of the run.
#pragma once

#include <cstdint>
#include <ctime>

namespace kestro_sim {

constexpr int64_t nanoseconds_per_second = 1'000'000'000;
// A board that was made new: 2026-01-15 08:00:00 UTC, a quarter of an hour after it was started. Runs add to both.
constexpr int64_t virtual_start_of_day = 1'768'464'000 * nanoseconds_per_second;
constexpr int64_t virtual_start_since_boot = 900 * nanoseconds_per_second;

constexpr int64_t never = INT64_MAX;

int64_t virtual_now();

// The moment after that span; the last one there is when it does not fit.
int64_t moment_after(int64_t span);

// A moment that has passed leaves the clock alone.
void move_clock_to(int64_t moment);

// What the clock of this name shows at the start of the run. Processor time stays 0: waiting uses none.
int64_t clock_at_start(clockid_t clock);

// Seconds and nanoseconds as one number; the largest there is when they do not fit.
int64_t to_nanoseconds(int64_t seconds, int64_t nanoseconds);

} // namespace kestro_sim
