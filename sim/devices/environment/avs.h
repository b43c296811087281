// Adaptive voltage scaling: controllers that trim a core rail to what the processor asks for.
#pragma once

#include "sim/core/board.h"
#include "sim/core/finding.h"
#include "sim/core/register_space.h"

namespace kestro_sim::avs {

inline constexpr reg rail_number = reg::number("rail", 0, any_u32, "", "the rail that it trims").required().fixed();
inline constexpr reg input_number = reg::number("input", 0, any_u32, "", "the rail that feeds it").or_else(0).fixed();
inline constexpr reg target = reg::number("target", 0, 60000, "mV", "what the processor asks for").required();
inline constexpr reg status = reg::bits("status", 0xFF, "its status byte").required();
inline constexpr reg status_high =
    reg::bits("status_high", 0xFF, "the upper byte of its status word; faults of the two rails come in by themselves")
        .or_else(0);
inline constexpr reg phase_fault = reg::bits("phase_fault", 0xFF, "a bit per phase at fault").or_else(0);

inline constexpr device_family family{"sim_avs",
                                      "controller",
                                      "a voltage scaling controller",
                                      {rail_number, input_number, target, status, status_high, phase_fault}};

using one = device_of<family>;

// The line of a controller in a dump.
std::string dump_line(board &b, const one &controller);

finding check_phases(board &b, const one &controller);
finding check_status_byte(board &b, const one &controller);
finding check_status_word(board &b, const one &controller);

enum class item : uint32_t { input_voltage, output_voltage, target_voltage, status_byte, status_word };
inline constexpr uint32_t item_count = 5;

uint32_t item_value(board &b, const one &controller, item which);
std::string item_text(board &b, const one &controller, item which);

extern const register_space registers;

} // namespace kestro_sim::avs
