// Variables by name that a board keeps in part 16 of its reserved memory: a main copy in the first half, a backup in
// the second. They outlive a reset. Power that is gone takes them along; start-up software then puts down those that
// the description names, in both halves.
#pragma once

#include "sim/core/board.h"
#include "sim/core/env_image.h"
#include "sim/devices/management/restart.h"

#include <string>
#include <vector>

namespace kestro_sim {

// What start-up software puts down.
namespace memory_variable {
inline constexpr reg name = reg::text("name", env_name_max, "what it is called").required().of_production();
inline constexpr reg text = reg::text("text", env_value_max, "what it says").required().of_production();
inline constexpr device_family family{"sim_env", "memory", "a variable in memory that survives a reset", {name, text}};
} // namespace memory_variable

namespace memory_environment {

// All refuse a board that keeps no variables in memory: not_supported.
//
// get refuses a name that no variable has (no_such_device).
std::string get(board &b, const std::string &place, const std::string &name);

// Changes the main copy. Refuses a name or a text that no variable can have (bad_value), and what finds no room
// (store_full).
void set(board &b, const std::string &place, const std::string &name, const std::string &text);

// Makes the backup equal to the main copy.
void save(board &b, const std::string &place);

// The variables stay, with an empty text.
void clear(board &b, const std::string &place, const std::string &name);
void clear_all(board &b, const std::string &place);

// A line "name=text" for each.
std::string listing(board &b, const std::string &place);

} // namespace memory_environment

// What start-up software does and writes down when a board has started. A place without such variables keeps nothing.
void note_start_in_memory(board &b, change &writes, const std::string &place, restart_reason reason, bool is_soft);

} // namespace kestro_sim
