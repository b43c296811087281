// Work on a disk that is too small: a file system of its own where the machine lets us mount one, and else (in a
// container) a limit on the size of files.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace kestro_tests {

enum class small_disk {
    mounted,       // at the directory
    limited_files, // none may be larger
};

// Whether this machine lets a test mount.
bool can_mount();

// Runs the work in a child that sees such a disk, and gives what it returned.
std::string on_small_disk(small_disk kind, const std::string &directory, size_t size,
                          const std::function<std::string()> &work);

// In such a child: a mounted disk of another size, or one that can only be read.
void resize_disk(const std::string &directory, size_t size);
void forbid_writing(const std::string &directory);

// Takes away everybody's right to write what lies below.
void make_unwritable(const std::string &directory);

// Runs the work in a child that is not root and can reach the directory.
std::string as_other_user(const std::string &directory, const std::function<std::string()> &work);

} // namespace kestro_tests
