// Files of a state directory. None is reached through a symbolic link: a link in a state that was handed on would lead
// reads and writes to files of the desk.
#pragma once

#include "sim/core/open_file.h"
#include "sim/core/store_error.h"

#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <span>

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

// Appends one line or nothing: a half line that a killed or a failed writer left is taken back. A file that has grown
// to that size becomes FILE.old first. Throws store_error.
void append_to_ring(const std::filesystem::path &state_dir, const std::filesystem::path &name, std::string_view line,
                    uint64_t size_max);

} // namespace kestro_sim
