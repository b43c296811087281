// Files of a state directory. None is reached through a symbolic link: a link in a state that was handed on would lead
// reads and writes to files of the desk.
#pragma once

#include "sim/core/open_file.h"
#include "sim/core/store_error.h"

#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace kestro_sim {

// Opens STATE/name, or STATE/folder/name. No descriptor when it cannot be; errno says why, ELOOP and ENOTDIR for a
// link or something else in the place of a folder.
open_file open_of_state(const std::filesystem::path &state_dir, const std::filesystem::path &name, int flags,
                        mode_t mode = 0644);

// All of them, or the reason in errno.
bool read_at(const open_file &file, void *bytes, size_t size, uint64_t offset);
bool write_at(const open_file &file, const void *bytes, size_t size, uint64_t offset);

// A new file with that content, allocated for real; throws store_error.
void write_new_file(const std::filesystem::path &file, std::span<const uint8_t> content);

// A log: a file of whole lines, in which the oldest make room for new ones. A half line that a killed or a failed
// writer left is none, and is taken back. A line is there entirely or not at all, and so is what replaces all of them.
// All throw store_error.
//
// Appends a line, or several; they are cut where they do not fit at all. A file that would outgrow its size loses its
// older half, or what the line needs.
void append_to_ring(const std::filesystem::path &state_dir, const std::filesystem::path &name, std::string_view line,
                    uint64_t size_max);
// Empty when there is no file yet.
std::string lines_of_ring(const std::filesystem::path &state_dir, const std::filesystem::path &name);
void replace_ring(const std::filesystem::path &state_dir, const std::filesystem::path &name, std::string_view lines);

} // namespace kestro_sim
