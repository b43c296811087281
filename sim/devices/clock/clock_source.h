// The clocks of a board and the detectors that watch them.
//
// Some clocks are recovered from the signal of a line port; the synchronous clock follows one of these. So a clock is
// there or lost for more reasons than its own, and from which moment on it has been there counts for what locks on it.
#pragma once

#include "sim/core/board.h"
#include "sim/core/register_space.h"
#include "sim/core/time.h"

namespace kestro_sim {

namespace clock_unit {
inline constexpr reg watching =
    reg::flag("watching", "whether the detectors keep the losses that they notice").or_else(1).written();
inline constexpr device_family family =
    device_family{"sim_clock", "unit", "the clock detectors of a board", {watching}}.up_to(0);
} // namespace clock_unit

namespace synclk {

inline constexpr uint32_t no_port = UINT32_MAX;

inline constexpr reg channel =
    reg::number("channel", 0, any_u32, "", "the recovered clock that it follows").required().written();
inline constexpr reg enable = reg::flag("enable", "whether it is given out").required().written();
inline constexpr reg los_port =
    reg::number("los_port", 0, any_u32, "", "the line port whose signal is taken for lost; 4294967295 is none")
        .or_else(no_port)
        .written();
inline constexpr device_family family =
    device_family{"sim_clock", "synclk", "the synchronous clock", {channel, enable, los_port}}.up_to(0);

struct settings {
    uint32_t channel;
    uint32_t enable;
    uint32_t los_port;
};

// A board without a synchronous clock gives out none.
settings now_of(board &b, const std::string &place);

// Clocks that come by this begin anew, those that go are noticed.
void change_to(board &b, const device_of<family> &which, const settings &to);

} // namespace synclk

namespace clock_source {

inline constexpr uint32_t detector_identity = 0xC7;

// Before the board was made new, and longer ago than any lock takes.
inline constexpr int64_t long_ago = -3600 * nanoseconds_per_second;

inline constexpr reg desc = reg::text("desc", 63, "what the clock is called");
inline constexpr reg kilohertz = reg::number("kilohertz", 1, 10000000, "kHz", "its frequency").required().fixed();
inline constexpr reg present = reg::flag("present", "whether it arrives").required();
inline constexpr reg port = reg::number("port", 0, 255, "", "the line port that it is recovered from").fixed();
inline constexpr reg synchronous = reg::flag("synchronous", "whether it is the synchronous clock").or_else(0).fixed();
inline constexpr reg identity =
    reg::bits("identity", 0xFF, "what its detector's identity register says").or_else(detector_identity);
inline constexpr reg noticed = reg::flag("noticed", "whether its detector has noticed a loss").or_else(0).written();
inline constexpr reg since =
    reg::number("since", long_ago, INT64_MAX, "ns", "the board time from which on it was there")
        .or_else(static_cast<uint64_t>(long_ago))
        .written();

inline constexpr device_family family{
    "sim_clock", "source", "a clock", {desc, kilohertz, present, port, synchronous, identity, noticed, since}};

using one = device_of<family>;

bool is_lost(board &b, const one &which);

// Lost, and kept as noticed.
bool look_for_loss(board &b, const one &which);

// Lost since the last time that this was asked.
bool take_history(board &b, const one &which);

// Start forgets what was noticed and whatever signal is taken for lost.
void start_detectors(board &b, const device_of<clock_unit::family> &unit);
void stop_detectors(board &b, const device_of<clock_unit::family> &unit);

extern const register_space detector;

} // namespace clock_source

namespace timestamp {
inline constexpr reg np =
    reg::number("np", 0, 63, "", "the network processor that the time stamps come from").required().written();
inline constexpr reg np_count =
    reg::number("np_count", 1, 64, "", "how many network processors give time stamps").required().fixed();
inline constexpr device_family family =
    device_family{"sim_clock", "timestamp", "the source of time stamps", {np, np_count}}.up_to(0);
} // namespace timestamp

} // namespace kestro_sim
