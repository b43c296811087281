// Clock synthesisers: chips with a phase-locked loop on one of two references. The stratum 3 clock is one of them.
#pragma once

#include "sim/core/board.h"
#include "sim/core/register_space.h"
#include "sim/core/time.h"

namespace kestro_sim {

namespace pll {

inline constexpr const char *ref_mode_names[]{"automatic", "first", "second"};

// What the board needs in the dividers.
inline constexpr uint32_t reference_divider_set = 0x04;
inline constexpr uint32_t feedback_divider_set = 0x50;
inline constexpr uint32_t output_divider_set = 0x08;

inline constexpr uint32_t control_set = 0x01;

// Before the board was made new, and longer ago than any lock takes.
inline constexpr int64_t long_ago = -3600 * nanoseconds_per_second;

inline constexpr reg input1 =
    reg::number("input1", 0, any_u32, "", "the clock at its first reference").required().fixed();
inline constexpr reg input2 =
    reg::number("input2", 0, any_u32, "", "the clock at its second reference").required().fixed();
inline constexpr reg lock_time = reg::number("lock_time", 0, 600000, "ms", "how long it takes to lock").or_else(500);
inline constexpr reg ref_mode =
    reg::choice("ref_mode", ref_mode_names, "which reference it takes").or_else(0).written();
inline constexpr reg control =
    reg::bits("control", 0xFF, "its control register: bit 0 gives the outputs out").or_else(control_set).written();
inline constexpr reg reference_divider =
    reg::bits("reference_divider", 0xFF, "what divides the reference").or_else(reference_divider_set).written();
inline constexpr reg feedback_divider =
    reg::bits("feedback_divider", 0xFF, "what divides in the loop").or_else(feedback_divider_set).written();
inline constexpr reg output_divider =
    reg::bits("output_divider", 0xFF, "what divides the output").or_else(output_divider_set).written();
inline constexpr reg since =
    reg::number("since", long_ago, INT64_MAX, "ns", "the board time at which it last began to lock")
        .or_else(static_cast<uint64_t>(long_ago))
        .written();

inline constexpr device_family family{
    "sim_pll",
    "chip",
    "a clock synthesiser",
    {input1, input2, lock_time, ref_mode, control, reference_divider, feedback_divider, output_divider, since}};

using one = device_of<family>;

// Registers as the board needs them; the loop begins to lock.
void initialise(board &b, const one &which);

// 1 or 2: the reference that is taken and is there; 0 when there is none, and the frequency is held.
uint32_t taken_reference(board &b, const one &which);

// A loop on a reference that came later than it began locks on that from there on.
bool is_locked(board &b, const one &which);

// Another reference, another lock; the same one is kept.
void set_ref_mode(board &b, const one &which, uint32_t to);

extern const register_space registers;

} // namespace pll

namespace stratum3 {

inline constexpr reg pll = reg::number("pll", 0, any_u32, "", "the synthesiser that it is").required().fixed();
inline constexpr device_family family = device_family{"sim_clock", "stratum3", "the stratum 3 clock", {pll}}.up_to(0);

enum class state : uint32_t { running_free, locked, holding };

pll::one synthesiser(board &b, const device_of<family> &which);
state state_of(board &b, const device_of<family> &which);

// By itself, or the given clock only, which must be at one of the references.
void select_by_itself(board &b, const device_of<family> &which);
void select(board &b, const device_of<family> &which, uint32_t clock_id);

} // namespace stratum3

} // namespace kestro_sim
