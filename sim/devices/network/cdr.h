// Clock-and-data-recovery chips: each retimes the lanes between the switch fabric, its host's side, and the front
// ports, its line's side.
//
// A chip is made of sub-chips of four lanes with registers of their own. An interface is a group of adjacent lanes of a
// sub-chip that runs at one rate. A lane locks some time after its interface was set up, when a good signal of that
// rate arrives; link, equaliser and eye follow from that, each side for itself, in the registers as in the texts.
#pragma once

#include "sim/core/board.h"
#include "sim/core/register_space.h"
#include "sim/core/time.h"

#include <string>

namespace kestro_sim {

namespace cdr_chip {

// A chip knows nothing until its driver is there, and does nothing until it was loaded.
inline constexpr const char *state_names[]{"down", "prepared", "running"};
inline constexpr uint32_t down = 0;
inline constexpr uint32_t prepared = 1;
inline constexpr uint32_t running = 2;

inline constexpr reg identity = reg::bits("identity", 0xFFFF, "what its sub-chips say that they are").required();
inline constexpr reg revision = reg::number("revision", 0, 0xFFFF, "", "its revision").required();
inline constexpr reg state = reg::choice("state", state_names, "how far it was brought up").or_else(down).written();
inline constexpr device_family family{"sim_cdr", "chip", "a CDR chip", {identity, revision, state}};

} // namespace cdr_chip

namespace cdr_part {

inline constexpr uint32_t lanes_max = 4;

inline constexpr reg chip = reg::number("chip", 0, any_u32, "", "the chip that it is part of").required().fixed();
inline constexpr reg number = reg::number("number", 0, any_u32, "", "its number in the chip").required().fixed();
inline constexpr reg equaliser =
    reg::bits("equaliser", any_u32,
              "equalisers of the line's side, a byte per lane: bit 7 holds the setting in bits 0 to 3, else it adapts")
        .or_else(0)
        .written();
inline constexpr reg scratch = reg::bits("scratch", 0xFFFF, "kept for software").or_else(0).written();
inline constexpr device_family family{"sim_cdr", "sub_chip", "a CDR sub-chip", {chip, number, equaliser, scratch}};

using one = device_of<family>;

} // namespace cdr_part

namespace cdr_interface {

inline constexpr reg chip = reg::number("chip", 0, any_u32, "", "the chip that it is on").required().fixed();
inline constexpr reg number = reg::number("number", 0, any_u32, "", "its number in the chip").required().fixed();
inline constexpr reg sub_chip = reg::number("sub_chip", 0, any_u32, "", "the sub-chip of its lanes").required().fixed();
inline constexpr reg first_lane = reg::number("first_lane", 0, 3, "", "its first lane there").required().fixed();
inline constexpr reg lanes = reg::number("lanes", 1, 4, "", "how many lanes it has").required().fixed();
inline constexpr reg lock_time =
    reg::number("lock_time", 0, 600000, "ms", "how long a lane takes to lock").or_else(300);

inline constexpr reg line_signal =
    reg::bits("line_signal", 0xF, "its lanes at which a signal arrives from the line").required();
inline constexpr reg line_rate = reg::number("line_rate", 0, 100, "Gbit/s", "the rate of that signal").required();
inline constexpr reg line_quality =
    reg::number("line_quality", 0, 100, "%", "how good that signal is; below 20 nothing locks").or_else(90);
inline constexpr reg host_signal =
    reg::bits("host_signal", 0xF, "its lanes at which a signal arrives from the host").required();
inline constexpr reg host_rate = reg::number("host_rate", 0, 100, "Gbit/s", "the rate of that signal").required();
inline constexpr reg host_quality =
    reg::number("host_quality", 0, 100, "%", "how good that signal is; below 20 nothing locks").or_else(90);

inline constexpr reg rate =
    reg::number("rate", 0, 100, "Gbit/s", "the rate that its lanes were set up for; 0 not set up").or_else(0).written();
inline constexpr reg since =
    reg::number("since", 0, INT64_MAX, "ns", "the board time at which it was set up").or_else(0).written();

inline constexpr device_family family{"sim_cdr",
                                      "interface",
                                      "a CDR interface",
                                      {chip, number, sub_chip, first_lane, lanes, lock_time, line_signal, line_rate,
                                       line_quality, host_signal, host_rate, host_quality, rate, since}};

using one = device_of<family>;

} // namespace cdr_interface

namespace cdr {

enum class side { line, host };

// All chips of a place. A chip that runs already is left as it is.
void prepare(board &b, const std::string &place);
void start(board &b, const std::string &place);

// Forgets everything that was set in the chip.
void stop(board &b, const std::string &place, uint32_t chip_id);

// Chips that do not run answer nothing.
cdr_part::one running_part(board &b, const std::string &place, uint32_t chip_id, uint32_t sub_chip_id);
cdr_interface::one running_interface(board &b, const std::string &place, uint32_t chip_id, uint32_t inf_id);

// Gives the nanoseconds that are left until all that can lock has locked. An interface that runs at this rate already
// keeps its locks.
int64_t set_up(board &b, const cdr_interface::one &which, uint32_t gbit_per_s);
void take_down(board &b, const cdr_interface::one &which, uint32_t gbit_per_s);

// Refuses an interface that was not set up for this rate.
void need_rate(board &b, const cdr_interface::one &which, uint32_t gbit_per_s);

// Every lane of it has locked.
bool is_up(board &b, const cdr_interface::one &which, side at);

std::string config_text(board &b, const cdr_interface::one &which);
std::string status_text(board &b, const cdr_interface::one &which);
std::string eye_text(board &b, const cdr_interface::one &which);

extern const register_space registers;

} // namespace cdr

} // namespace kestro_sim
