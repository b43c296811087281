// The calls that change files, counted.
#include "tests/sim/fault_points.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <dlfcn.h>
#include <exception>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kestro_tests {

namespace {

int due_at = 0; // 0: never
int changes = 0;
fault kind_due = fault::killed;

bool is_due() {
    if (due_at == 0) {
        return false;
    }
    ++changes;
    return changes == due_at || (changes > due_at && kind_due == fault::full_for_good);
}

template <typename Function> Function next(const char *name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

// A change that is not a write of bytes happens or does not; a kill comes before it.
bool fails_here() {
    if (!is_due()) {
        return false;
    }
    if (kind_due == fault::killed) {
        _exit(9);
    }
    errno = ENOSPC;
    return true;
}

} // namespace

outcome run_with_fault(fault kind, int n, const std::function<void()> &work) {
    const pid_t child = fork();
    if (child == 0) {
        kind_due = kind;
        due_at = n;
        try {
            work();
        } catch (const std::exception &) {
            _exit(3);
        }
        _exit(changes < n ? 0 : 4);
    }
    int status = 0;
    waitpid(child, &status, 0);
    switch (WIFEXITED(status) ? WEXITSTATUS(status) : -1) {
    case 0:
        return outcome::done;
    case 9:
        return outcome::killed;
    default:
        return outcome::refused;
    }
}

extern "C" {

// Of a write, half has been done. A record lies within a page and is written whole or not at all.
ssize_t pwrite64(int file, const void *bytes, size_t size, off64_t offset) {
    static auto *const real = next<ssize_t (*)(int, const void *, size_t, off64_t)>("pwrite64");
    if (!is_due()) {
        return real(file, bytes, size, offset);
    }
    const off64_t page = 4096;
    const off64_t first_page_end = (offset / page + 1) * page;
    if (offset + static_cast<off64_t>(size) > first_page_end) {
        real(file, bytes, static_cast<size_t>(first_page_end - offset), offset);
    }
    if (kind_due == fault::killed) {
        _exit(9);
    }
    errno = ENOSPC;
    return -1;
}

int rename(const char *from, const char *to) noexcept {
    static auto *const real = next<int (*)(const char *, const char *)>("rename");
    return fails_here() ? -1 : real(from, to);
}

int unlinkat(int directory, const char *name, int flags) noexcept {
    static auto *const real = next<int (*)(int, const char *, int)>("unlinkat");
    return fails_here() ? -1 : real(directory, name, flags);
}

int mkdir(const char *name, mode_t mode) noexcept {
    static auto *const real = next<int (*)(const char *, mode_t)>("mkdir");
    return fails_here() ? -1 : real(name, mode);
}

} // extern "C"

} // namespace kestro_tests
