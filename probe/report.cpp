// Findings and notes on standard error.
#include "probe/report.h"

#include <atomic>
#include <cerrno>
#include <unistd.h>

namespace kestro_probe {

namespace {

std::atomic<size_t> found{0};
std::atomic<bool> child{false};

} // namespace

void report_finding(const std::string &text) {
    ++found;
    report_note(text);
}

void report_note(const std::string &text) {
    if (!child && !write_whole(STDERR_FILENO, text + "\n")) {
        ++found;
    }
}

size_t findings() {
    return found;
}

void become_child() {
    child = true;
}

bool is_child() {
    return child;
}

bool write_whole(int file, const std::string &text) {
    size_t done = 0;
    while (done < text.size()) {
        const ssize_t written = write(file, text.data() + done, text.size() - done);
        if (written < 0 && errno != EINTR) {
            return false;
        }
        done += written > 0 ? static_cast<size_t>(written) : 0;
    }
    return true;
}

} // namespace kestro_probe
