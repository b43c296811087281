// Variables by name that software keeps on a board in reserved memory that survives a reset; those in flash are in
// flash_environment.h. Start-up software leaves in both how the board started.
#pragma once

#include "sim/core/board.h"
#include "sim/devices/management/restart.h"

#include <string>
#include <string_view>

namespace kestro_sim {

namespace memory_variable {
inline constexpr reg name = reg::text("name", 63, "what it is called").required().fixed();
inline constexpr reg text = reg::text("text", 255, "what it says").required().written();
inline constexpr device_family family{"sim_env", "memory", "a variable in memory that survives a reset", {name, text}};

// Refuses a name that no variable has (no_such_device), and a board that keeps none (not_supported).
std::string text_of_name(board &b, const std::string &place, std::string_view wanted);
} // namespace memory_variable

// A text as a number to a base from 2 to 36; refuses another base, and a text that is no number: bad_value.
uint32_t number_to_base(const std::string &text, uint32_t base);

// What start-up software writes down when a board has started. A board without such variables keeps nothing.
void note_start(board &b, change &writes, const std::string &place, restart_reason reason, restart_kind kind);

} // namespace kestro_sim
