// Only regular files and pipes: a device such as /dev/zero has no end, and a terminal no contents.
#include "probe/input_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <vector>

namespace kestro_probe {

namespace {

// A pipe into which nobody writes is given up after that long.
constexpr long patience_seconds = 10;

// Past the C library, whose waits the simulated clock shortens.
bool wait_for_more(int file) {
    struct {
        int descriptor;
        short events;
        short found;
    } wanted{file, 1, 0}; // 1: something to read
    struct {
        long seconds;
        long nanoseconds;
    } patience{patience_seconds, 0};
    return syscall(SYS_ppoll, &wanted, 1, &patience, nullptr, 0) > 0;
}

std::string unfit(int file, bool &is_pipe) {
    struct stat found {};
    if (fstat(file, &found) != 0) {
        return strerror(errno);
    }
    is_pipe = S_ISFIFO(found.st_mode);
    if (S_ISDIR(found.st_mode)) {
        return strerror(EISDIR);
    }
    return S_ISREG(found.st_mode) || is_pipe ? "" : "this is a device";
}

std::string read_all(int file, bool is_pipe, std::string &content) {
    std::vector<char> part(size_t{64} << 10);
    for (;;) {
        if (is_pipe && !wait_for_more(file)) {
            return "nothing comes out of this pipe";
        }
        const ssize_t got = read(file, part.data(), part.size());
        if (got < 0 && errno != EINTR && errno != EAGAIN) {
            return strerror(errno);
        }
        if (got == 0) {
            return "";
        }
        content.append(part.data(), got > 0 ? static_cast<size_t>(got) : 0);
        if (content.size() > longest_input) {
            return "this is longer than " + std::to_string(longest_input >> 20) + " MiB";
        }
    }
}

} // namespace

std::string read_input(const std::string &name, std::string &fault) {
    std::string content;
    const int file = open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    bool is_pipe = false;
    std::string wrong = file < 0 ? strerror(errno) : unfit(file, is_pipe);
    if (wrong.empty()) {
        wrong = read_all(file, is_pipe, content);
    }
    if (file >= 0) {
        close(file);
    }
    fault = wrong.empty() ? "" : name + ": " + wrong + "; name a file that can be read";
    return content;
}

} // namespace kestro_probe
