// What is wrong with a state directory.
#pragma once

#include "sim/core/errors.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kestro_sim {

// "file: what is wrong; what would be right", and the result code of a driver operation that runs into it.
struct store_error : std::runtime_error {
    explicit store_error(const std::string &text, error result = error::no_board)
        : std::runtime_error(text), code(result) {
    }
    error code;
};

// Throws what a failed system call on a file comes to: "FILE: cannot be <done> (reason); what would be right".
[[noreturn]] void fail_on(const std::filesystem::path &file, std::string_view done, int reason);

// For a symbolic link where a part of a state is due.
[[noreturn]] void fail_on_link(const std::filesystem::path &file);

// What the file system library throws, as a line like those: its own text has another form.
std::string said_plainly(const std::filesystem::filesystem_error &problem);

} // namespace kestro_sim
