// Fails one chosen allocation of the kestro_test binary itself. Whose allocation it is, is told by the address that the
// call returns to: those of the C library and of the driver libraries, made on kestro_test's behalf, are not counted.
#include "sim/world/world.h"

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <link.h>

namespace kestro_sim {

namespace {

struct allocators {
    void *(*malloc)(size_t);
    void *(*calloc)(size_t, size_t);
    void *(*realloc)(void *, size_t);
    void (*free)(void *);
};

enum class lookup { not_begun, under_way, done };

allocators real;
std::atomic<lookup> state = lookup::not_begun;

// Memory for the loader while it looks for the real functions on our behalf; never given back.
alignas(16) unsigned char arena[8192];
std::atomic<size_t> arena_used = 0;

uintptr_t binary_begin;
uintptr_t binary_end;
std::atomic<unsigned long> calls = 0;

template <typename function> void find(function *&target, const char *symbol) {
    target = reinterpret_cast<function *>(find_next(symbol));
}

bool found_real() {
    if (state.load(std::memory_order_acquire) == lookup::done) {
        return true;
    }
    lookup expected = lookup::not_begun;
    if (!state.compare_exchange_strong(expected, lookup::under_way)) {
        return expected == lookup::done;
    }
    find(real.malloc, "malloc");
    find(real.calloc, "calloc");
    find(real.realloc, "realloc");
    find(real.free, "free");
    state.store(lookup::done, std::memory_order_release);
    return true;
}

// Static memory is zero, so this serves calloc as well.
void *from_arena(size_t size) {
    const size_t rounded = (size + 15) / 16 * 16;
    const size_t begin = size > sizeof(arena) ? sizeof(arena) : arena_used.fetch_add(rounded);
    return begin + rounded <= sizeof(arena) ? arena + begin : nullptr;
}

bool is_from_arena(const void *block) {
    const auto *byte = static_cast<const unsigned char *>(block);
    return byte >= arena && byte < arena + sizeof(arena);
}

// True once: for the chosen call.
bool is_chosen(const void *return_address) {
    if (settings.fail_allocation == 0) [[likely]] {
        return false;
    }
    const auto address = reinterpret_cast<uintptr_t>(return_address);
    if (address < binary_begin || address >= binary_end || ++calls != settings.fail_allocation) {
        return false;
    }
    errno = ENOMEM;
    return true;
}

// The loader lists the program itself first.
int note_binary(dl_phdr_info *info, size_t, void *) {
    binary_begin = UINTPTR_MAX;
    for (int i = 0; i < info->dlpi_phnum; ++i) {
        const auto &segment = info->dlpi_phdr[i];
        if (segment.p_type != PT_LOAD) {
            continue;
        }
        const uintptr_t begin = info->dlpi_addr + segment.p_vaddr;
        const uintptr_t end = begin + segment.p_memsz;
        binary_begin = begin < binary_begin ? begin : binary_begin;
        binary_end = end > binary_end ? end : binary_end;
    }
    return 1;
}

// The whole of the arena may follow a block; copying too much of it is harmless.
void *move_from_arena(const void *block, size_t size) {
    const auto *byte = static_cast<const unsigned char *>(block);
    const auto left = static_cast<size_t>(arena + sizeof(arena) - byte);
    void *moved = found_real() ? real.malloc(size) : from_arena(size);
    return moved == nullptr ? nullptr : memcpy(moved, block, size < left ? size : left);
}

void *resize(void *block, size_t size) {
    if (is_from_arena(block)) {
        return move_from_arena(block, size);
    }
    return found_real() ? real.realloc(block, size) : from_arena(size);
}

} // namespace

void start_counting_allocations() {
    dl_iterate_phdr(note_binary, nullptr);
}

WORLD_EXPORT void *world_malloc(size_t size) __asm__("malloc");
void *world_malloc(size_t size) {
    if (is_chosen(__builtin_return_address(0))) {
        return nullptr;
    }
    return found_real() ? real.malloc(size) : from_arena(size);
}

WORLD_EXPORT void *world_calloc(size_t count, size_t size) __asm__("calloc");
void *world_calloc(size_t count, size_t size) {
    if (is_chosen(__builtin_return_address(0))) {
        return nullptr;
    }
    return found_real() ? real.calloc(count, size) : from_arena(count * size);
}

WORLD_EXPORT void *world_realloc(void *block, size_t size) __asm__("realloc");
void *world_realloc(void *block, size_t size) {
    return is_chosen(__builtin_return_address(0)) ? nullptr : resize(block, size);
}

// The C library's own jumps to realloc, and what it asks for would be counted once more.
WORLD_EXPORT void *world_reallocarray(void *block, size_t count, size_t size) __asm__("reallocarray");
void *world_reallocarray(void *block, size_t count, size_t size) {
    if (is_chosen(__builtin_return_address(0))) {
        return nullptr;
    }
    size_t bytes = 0;
    if (__builtin_mul_overflow(count, size, &bytes)) {
        errno = ENOMEM;
        return nullptr;
    }
    return resize(block, bytes);
}

WORLD_EXPORT void world_free(void *block) __asm__("free");
void world_free(void *block) {
    if (!is_from_arena(block) && found_real()) {
        real.free(block);
    }
}

WORLD_EXPORT void *world_aligned_alloc(size_t alignment, size_t size) __asm__("aligned_alloc");
void *world_aligned_alloc(size_t alignment, size_t size) {
    static next_function<void *(size_t, size_t)> next{"aligned_alloc"};
    return is_chosen(__builtin_return_address(0)) ? nullptr : next.get()(alignment, size);
}

WORLD_EXPORT void *world_memalign(size_t alignment, size_t size) __asm__("memalign");
void *world_memalign(size_t alignment, size_t size) {
    static next_function<void *(size_t, size_t)> next{"memalign"};
    return is_chosen(__builtin_return_address(0)) ? nullptr : next.get()(alignment, size);
}

// Gives an error number and leaves errno alone.
WORLD_EXPORT int world_posix_memalign(void **block, size_t alignment, size_t size) __asm__("posix_memalign");
int world_posix_memalign(void **block, size_t alignment, size_t size) {
    static next_function<int(void **, size_t, size_t)> next{"posix_memalign"};
    const int error = errno;
    if (is_chosen(__builtin_return_address(0))) {
        errno = error;
        return ENOMEM;
    }
    return next.get()(block, alignment, size);
}

WORLD_EXPORT char *world_strdup(const char *text) __asm__("strdup");
char *world_strdup(const char *text) {
    static next_function<char *(const char *)> next{"strdup"};
    return is_chosen(__builtin_return_address(0)) ? nullptr : next.get()(text);
}

// What the compiler makes of strdup in optimised programs.
WORLD_EXPORT char *world_internal_strdup(const char *text) __asm__("__strdup");
char *world_internal_strdup(const char *text) {
    static next_function<char *(const char *)> next{"__strdup"};
    return is_chosen(__builtin_return_address(0)) ? nullptr : next.get()(text);
}

WORLD_EXPORT char *world_strndup(const char *text, size_t size) __asm__("strndup");
char *world_strndup(const char *text, size_t size) {
    static next_function<char *(const char *, size_t)> next{"strndup"};
    return is_chosen(__builtin_return_address(0)) ? nullptr : next.get()(text, size);
}

WORLD_EXPORT int world_vasprintf(char **text, const char *format, va_list values) __asm__("vasprintf");
int world_vasprintf(char **text, const char *format, va_list values) {
    static next_function<int(char **, const char *, va_list)> next{"vasprintf"};
    return is_chosen(__builtin_return_address(0)) ? -1 : next.get()(text, format, values);
}

WORLD_EXPORT int world_asprintf(char **text, const char *format, ...) __asm__("asprintf");
int world_asprintf(char **text, const char *format, ...) {
    static next_function<int(char **, const char *, va_list)> next{"vasprintf"};
    if (is_chosen(__builtin_return_address(0))) {
        return -1;
    }
    va_list values;
    va_start(values, format);
    const int length = next.get()(text, format, values);
    va_end(values);
    return length;
}

} // namespace kestro_sim
