// Variables by name that a board keeps in flash section 8: a main copy in its first half, a backup in the second.
//
// They are worked on in memory, where all processes of the board see what was set. A start takes the copy in flash that
// is whole, the later one of two; so what was never saved is gone then. A save writes a snapshot to the main copy and
// then to the backup, block by block and in board time. Power that goes in between leaves one of them whole.
//
// The image "environment" is that memory: its first half holds what is worked with, its second half the snapshot.
#pragma once

#include "sim/core/board.h"
#include "sim/core/env_image.h"
#include "sim/devices/management/restart.h"

#include <string>

namespace kestro_sim {

inline constexpr uint32_t env_section = 8;

// What production programs into both copies.
namespace flash_variable {
inline constexpr reg name = reg::text("name", env_name_max, "what it is called").required().of_production();
inline constexpr reg text = reg::text("text", env_value_max, "what it says").required().of_production();
inline constexpr device_family family{"sim_env", "flash", "a variable in flash", {name, text}};
} // namespace flash_variable

namespace flash_environment {

inline constexpr const char *start_names[]{"none", "soft", "power", "reset"};

inline constexpr reg save_time =
    reg::number("save_time", 0, 60000, "ms", "how long it takes to write both copies").or_else(3000);
inline constexpr reg saving = reg::flag("saving", "whether a save is on its way").written().or_else(0);
inline constexpr reg began =
    reg::number("began", 0, INT64_MAX, "ns", "the board time at which the save began").written().or_else(0);
inline constexpr reg steps =
    reg::number("steps", 0, any_u32, "", "how many steps of the save are done").written().or_else(0);
inline constexpr reg backup_first =
    reg::flag("backup_first", "whether the save writes the backup before the main copy").written().or_else(0);
inline constexpr reg start =
    reg::choice("start", start_names, "the start after which nothing was set yet").written().or_else(0);

inline constexpr device_family family =
    device_family{"sim_env", "store", "the variables in flash", {save_time, saving, began, steps, backup_first, start}}
        .up_to(0);

} // namespace flash_environment

// All refuse a board that keeps no such variables: not_supported.
using env_variables = std::vector<env_variable>;
env_variables read_environment(board &b, const std::string &place);

// Refuses more than a copy can hold: store_full.
void write_environment(board &b, const std::string &place, const env_variables &variables);

// Refuses while another save is on its way: not_ready.
void begin_saving(board &b, const std::string &place);
bool is_saving(board &b, const std::string &place);

// Does the steps of a save that are due by now. A place without such variables has none.
void go_on_saving(board &b, const std::string &place);

// Power is gone, or the board starts again: a save stays where it got to, and what was only in memory is gone. Then
// start-up software notes why it started.
void lose_memory(board &b, change &writes, const std::string &place);
void note_start_in_flash(board &b, change &writes, const std::string &place, restart_reason reason, bool is_soft);

} // namespace kestro_sim
