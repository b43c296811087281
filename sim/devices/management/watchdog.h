// The watchdogs of a board. One that is on and was not cleared in time bites: it resets its board.
//
// A bite is at its moment of board time whoever looks, and when. What it leaves behind is written down when the state
// is looked at next, by whichever process that is, and once.
#pragma once

#include "sim/core/board.h"

#include <optional>
#include <string>
#include <vector>

namespace kestro_sim {

namespace watchdog {

inline constexpr uint32_t of_system = 0;
inline constexpr uint32_t of_bad_hardware = 1;

inline constexpr uint32_t longest = 65535; // seconds
inline constexpr int64_t end_of_time = INT64_MAX / 2;

inline constexpr reg enabled = reg::flag("enabled", "whether it is on").or_else(0).written();
inline constexpr reg timeout =
    reg::number("timeout", 1, int64_t{longest} * 1000, "ms", "how long it waits to be cleared").required().written();
inline constexpr reg fed =
    reg::number("fed", 0, end_of_time, "ns", "the board time at which it was cleared, or began").or_else(0).written();
inline constexpr reg bites = reg::number("bites", 0, any_u32, "", "how often it bit").or_else(0).written();
inline constexpr device_family family = device_family{
    "sim_watchdog",
    "timer",
    "a watchdog: 0 of the system, 1 of bad hardware",
    {enabled, timeout, fed, bites}}.up_to(1);

using one = device_of<family>;

// One that is off has nothing to be cleared.
void clear(board &b, const one &which);

// Begins anew, also one that was on.
void enable(board &b, const one &which, bool on);
bool is_enabled(board &b, const one &which);

// Where the technician chose a part of a second, it counts as a whole one.
uint32_t seconds(board &b, const one &which);

// Refuses less than a second and more than the longest (bad_value). One that is on begins anew.
void set_seconds(board &b, const one &which, uint32_t seconds);

std::string dump(board &b, const one &which);

} // namespace watchdog

// Whether any in the chassis is on: without the description, for each start asks it.
bool are_watchdogs_on(const store &kept);

// Those of a board that starts are off and as they were described; of one that is pulled out as well.
void stop_watchdogs(board &b, change &writes, const std::string &place);

// Whether bites are due by now that nobody has written down.
bool has_bite(board &b);

// Writes down what has bitten up to now, one after the other, each as of its moment. A state that cannot be written
// stays as it is: nothing has bitten there.
void settle_bites(board &b);

// When the next watchdog of that place bites; nothing when none is on, or that cannot be read.
std::optional<int64_t> next_bite(board &b, const std::string &place);

// How often that watchdog of a place has bitten; where it cannot be read, never.
uint64_t bites_of(board &b, const std::string &place, uint32_t id);

// What a program asks of /dev/watchdog, the system watchdog of the own board, in the words of Linux. Gives 0 or an
// error number.
int answer_watchdog_request(unsigned long request, uint32_t *value);

// The technician's hand is on the registers: a watchdog that it switches on begins then, and what comes next is worked
// out anew.
class hand_on_watchdogs {
  public:
    explicit hand_on_watchdogs(board &b);
    void take_off();

  private:
    struct seen {
        watchdog::one which;
        uint32_t enabled;
        uint64_t fed;
    };
    board &b_;
    std::vector<seen> before_;
};

} // namespace kestro_sim
