// What start-up software goes by: which files it takes, and the lock word in front of its menu.
#pragma once

#include "sim/core/board.h"

#include <string>
#include <string_view>

namespace kestro_sim {

namespace startup_file {

inline constexpr size_t path_max = 127;

inline constexpr reg kind = reg::text("kind", 31, "what the file is for").required().fixed();
inline constexpr reg next = reg::text("next", path_max, "what the next start takes; empty: as delivered").written();
inline constexpr reg running =
    reg::text("running", path_max, "what the latest start took; empty: as delivered").written();
inline constexpr device_family family{
    "sim_startup", "file", "a file that start-up software takes", {kind, next, running}};

// A path, or a name in the home directory of the board's software. Refuses one that is too long, leads elsewhere than
// to the software of the board, or is no file with something in it: bad_value.
void choose_next(board &b, const device_of<family> &file, std::string_view name);

} // namespace startup_file

// The word stands in a section of the boot flash, which no restart touches: "LOCKWORD=" and the word, up to a zero
// byte. An erased section is that of a delivered board. Whoever writes the section sets the word, as the menu does.
namespace boot_lock {

enum class kind : uint32_t { delivered = 1, none = 2, of_user = 3 };

inline constexpr reg section =
    reg::number("section", 0, any_u32, "", "the section of flash that begins with the lock word").required().fixed();
inline constexpr device_family family{"sim_startup", "lock", "the lock of the start-up menu", {section}};

// Refuses what is neither erased nor a lock word: damaged.
kind read(board &b, const device_of<family> &lock);
void clear(board &b, const device_of<family> &lock);

} // namespace boot_lock

// What a board finds after starting again. A place without start-up files has nothing to take.
void note_start_of_files(board &b, change &writes, const std::string &place);

} // namespace kestro_sim
