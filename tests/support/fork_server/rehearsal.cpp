// What is needed while memory is put back lies in shared mappings, of which no copy is made.
#include "tests/support/fork_server/rehearsal.h"

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

namespace kestro_tests {

namespace {

constexpr int most_areas = 512;
constexpr int most_descriptors = 256;
constexpr int most_signals = 65;
constexpr size_t own_stack = size_t{64} * 1024;
constexpr size_t longest_list = size_t{256} * 1024;

struct area {
    uintptr_t *begin;
    uintptr_t *copy;
    size_t words;
};

struct checkpoint {
    ucontext_t server;
    ucontext_t restorer;
    area areas[most_areas];
    int area_count;
    uintptr_t heap_end;
    struct sigaction actions[most_signals];
    bool is_open[most_descriptors];
    int standard_error;
    bool is_over;
    alignas(16) char stack[own_stack];
    char list[longest_list];
};

checkpoint *kept = nullptr;
bool rehearsing = false;

template <typename Kind> Kind *map_shared(size_t size) {
    void *place = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return place == MAP_FAILED ? nullptr : static_cast<Kind *>(place);
}

// A call of memcpy might go through a table that is being put back.
void copy_words(volatile uintptr_t *to, const volatile uintptr_t *from, size_t words) {
    for (size_t i = 0; i < words; ++i) {
        to[i] = from[i];
    }
}

bool read_list_of_mappings() {
    const int file = open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
    size_t length = 0;
    ssize_t got = 0;
    while (file >= 0 && length + 1 < longest_list &&
           (got = read(file, kept->list + length, longest_list - 1 - length)) > 0) {
        length += static_cast<size_t>(got);
    }
    kept->list[length] = '\0';
    close(file);
    return length != 0 && got == 0;
}

// Below the frames of the server the stack holds nothing.
void keep_area(uintptr_t begin, uintptr_t end) {
    const auto here = reinterpret_cast<uintptr_t>(__builtin_frame_address(0));
    constexpr uintptr_t frames = 16384;
    if (begin < here && here < end && here - begin > frames) {
        begin = (here - frames) / sizeof(uintptr_t) * sizeof(uintptr_t);
    }
    const size_t words = (end - begin) / sizeof(uintptr_t);
    auto *copy = kept->area_count < most_areas ? map_shared<uintptr_t>(end - begin) : nullptr;
    if (copy == nullptr) {
        abort();
    }
    kept->areas[kept->area_count++] = {reinterpret_cast<uintptr_t *>(begin), copy, words};
}

void list_areas() {
    kept->area_count = 0;
    for (char *line = kept->list; line != nullptr && *line != '\0';) {
        char *at = nullptr;
        const uintptr_t begin = strtoul(line, &at, 16);
        const uintptr_t end = strtoul(at + 1, &at, 16);
        if (strncmp(at, " rw-p", 5) == 0 || strncmp(at, " rwxp", 5) == 0) {
            keep_area(begin, end);
        }
        line = strchr(line, '\n');
        line = line != nullptr ? line + 1 : nullptr;
    }
}

void keep_what_the_kernel_knows() {
    for (int number = 1; number < most_signals; ++number) {
        sigaction(number, nullptr, &kept->actions[number]);
    }
    kept->standard_error = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
    for (int number = 0; number < most_descriptors; ++number) {
        kept->is_open[number] = fcntl(number, F_GETFD) >= 0;
    }
    kept->heap_end = reinterpret_cast<uintptr_t>(sbrk(0));
}

void tell_the_kernel() {
    for (int number = 1; number < most_signals; ++number) {
        sigaction(number, &kept->actions[number], nullptr);
    }
    dup2(kept->standard_error, STDERR_FILENO);
    close(kept->standard_error);
    for (int number = 0; number < most_descriptors; ++number) {
        if (!kept->is_open[number]) {
            close(number);
        }
    }
}

void forget_copies() {
    for (int i = 0; i < kept->area_count; ++i) {
        munmap(kept->areas[i].copy, kept->areas[i].words * sizeof(uintptr_t));
    }
}

// The heap's new end comes back with zeros when it is asked for again, as the C library expects.
[[noreturn]] void put_back() {
    syscall(SYS_brk, kept->heap_end);
    for (int i = 0; i < kept->area_count; ++i) {
        copy_words(kept->areas[i].begin, kept->areas[i].copy, kept->areas[i].words);
    }
    setcontext(&kept->server);
    abort();
}

} // namespace

bool begin_rehearsal() {
    if (kept == nullptr) {
        kept = map_shared<checkpoint>(sizeof(checkpoint));
    }
    if (kept == nullptr || !read_list_of_mappings()) {
        return false;
    }
    kept->is_over = false;
    list_areas();
    keep_what_the_kernel_knows();
    getcontext(&kept->server);
    if (kept->is_over) {
        tell_the_kernel();
        forget_copies();
        return false;
    }
    for (int i = 0; i < kept->area_count; ++i) {
        copy_words(kept->areas[i].copy, kept->areas[i].begin, kept->areas[i].words);
    }
    rehearsing = true;
    dup2(STDOUT_FILENO, STDERR_FILENO);
    return true;
}

bool is_rehearsing() {
    return rehearsing;
}

void end_rehearsal() {
    kept->is_over = true;
    getcontext(&kept->restorer);
    kept->restorer.uc_stack.ss_sp = kept->stack;
    kept->restorer.uc_stack.ss_size = own_stack;
    kept->restorer.uc_link = nullptr;
    makecontext(&kept->restorer, put_back, 0);
    setcontext(&kept->restorer);
    abort();
}

} // namespace kestro_tests
