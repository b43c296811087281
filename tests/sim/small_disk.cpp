// Disks that are too small.
#include "tests/sim/small_disk.h"

#include <array>
#include <csignal>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <sched.h>
#include <stdexcept>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestro_tests {

namespace {

namespace fs = std::filesystem;

std::string read_all(int file) {
    std::string text;
    std::array<char, 4096> part{};
    for (ssize_t got = 0; (got = read(file, part.data(), part.size())) > 0;) {
        text.append(part.data(), static_cast<size_t>(got));
    }
    return text;
}

[[noreturn]] void answer(int pipe, const std::function<std::string()> &work) {
    std::string text;
    try {
        text = work();
    } catch (const std::exception &problem) {
        text = problem.what();
    }
    const bool is_said = write(pipe, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    _exit(is_said ? 0 : 1);
}

// What the work in a child returned, or how the child died.
std::string in_child(const std::function<std::string()> &work) {
    std::array<int, 2> pipe{};
    if (pipe2(pipe.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        answer(pipe[1], work);
    }
    close(pipe[1]);
    std::string text = read_all(pipe[0]);
    close(pipe[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? "killed by signal " + std::to_string(WTERMSIG(status)) : text;
}

std::string size_option(size_t size) {
    return "size=" + std::to_string(size);
}

void mount_small(const std::string &directory, size_t size) {
    if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
        throw std::runtime_error("cannot mount: no name space");
    }
    // What is mounted here is nobody else's business.
    if (mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", directory.c_str(), "tmpfs", 0, size_option(size).c_str()) != 0) {
        throw std::runtime_error("cannot mount");
    }
}

void limit_files(size_t size) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{size, size};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
        throw std::runtime_error("cannot limit the size of files");
    }
}

} // namespace

bool can_mount() {
    static const bool can = [] {
        const std::string place = fs::temp_directory_path().string();
        return in_child([&] {
                   mount_small(place, 4096);
                   return std::string("mounted");
               }) == "mounted";
    }();
    return can;
}

std::string on_small_disk(small_disk kind, const std::string &directory, size_t size,
                          const std::function<std::string()> &work) {
    return in_child([&] {
        if (kind == small_disk::mounted) {
            mount_small(directory, size);
        } else {
            limit_files(size);
        }
        return work();
    });
}

void resize_disk(const std::string &directory, size_t size) {
    if (mount("none", directory.c_str(), "tmpfs", MS_REMOUNT, size_option(size).c_str()) != 0) {
        throw std::runtime_error("cannot mount again");
    }
}

void forbid_writing(const std::string &directory) {
    if (mount("none", directory.c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) != 0) {
        throw std::runtime_error("cannot mount again");
    }
}

void make_unwritable(const std::string &directory) {
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(directory)) {
        if (!entry.is_symlink()) {
            fs::permissions(entry.path(), fs::perms(entry.is_directory() ? 0555 : 0444));
        }
    }
    fs::permissions(directory, fs::perms(0555));
}

std::string as_other_user(const std::string &directory, const std::function<std::string()> &work) {
    const size_t top = fs::temp_directory_path().string().size();
    for (fs::path above = fs::path(directory).parent_path(); above.string().size() > top; above = above.parent_path()) {
        fs::permissions(above, fs::perms(0755));
    }
    return in_child([&] {
        constexpr uid_t nobody = 65534;
        if (getuid() == 0 && setuid(nobody) != 0) {
            throw std::runtime_error("cannot become another user");
        }
        return work();
    });
}

} // namespace kestro_tests
