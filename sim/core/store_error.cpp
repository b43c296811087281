// What system errors on the files of a state come to: one line each, and a result code.
#include "sim/core/store_error.h"

#include <cerrno>
#include <cstring>

namespace kestro_sim {

namespace {

constexpr const char *elsewhere = "choose another directory with --state";

struct verdict {
    error code;
    std::string right;
};

verdict verdict_on(int reason) {
    switch (reason) {
    case ENOSPC:
    case EDQUOT:
        return {error::disk_full, std::string("make room there, or ") + elsewhere};
    case EFBIG:
        return {error::disk_full, "raise the limit on the size of files (ulimit -f)"};
    case EROFS:
        return {error::read_only, "choose a directory that can be written with --state"};
    case EACCES:
    case EPERM:
        return {error::read_only, std::string("give this user the right to it, or ") + elsewhere};
    default:
        return {error::no_board, elsewhere};
    }
}

} // namespace

void fail_on_link(const std::filesystem::path &file) {
    throw store_error(file.string() + ": is a symbolic link, which would lead out of the state; put there what it "
                                      "leads to, or make the chassis new with --reset");
}

void fail_on(const std::filesystem::path &file, std::string_view done, int reason) {
    std::error_code none;
    if (reason == ELOOP) {
        fail_on_link(file);
    }
    for (std::filesystem::path folder = file.parent_path(); reason == ENOTDIR && folder.has_relative_path();
         folder = folder.parent_path()) {
        if (std::filesystem::is_symlink(folder, none)) {
            fail_on_link(folder);
        }
    }
    const verdict on = verdict_on(reason);
    throw store_error(
        file.string() + ": cannot be " + std::string(done) + " (" + std::strerror(reason) + "); " + on.right, on.code);
}

std::string said_plainly(const std::filesystem::filesystem_error &problem) {
    // Of two files the second is the one that was to be made.
    const std::filesystem::path &file = problem.path2().empty() ? problem.path1() : problem.path2();
    return file.string() + ": cannot be used (" + problem.code().message() + "); " +
           verdict_on(problem.code().value()).right;
}

} // namespace kestro_sim
