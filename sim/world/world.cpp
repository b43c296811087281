// Starts the world of the board: reads what the launcher asked for, and takes its words out of the environment so that
// programs started by kestro_test run in the desk's own world.
#include "sim/world/world.h"

#include "sim/world/watchdog.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <unistd.h>

namespace kestro_sim {

world_settings settings;

namespace {

using dlsym_function = void *(void *, const char *);

// The driver probe, which is loaded in front, wraps dlsym; asked through the wrapper, "next" would be next to the
// probe, that is, this library again. Its versions in turn: glibc 2.34 and later, older 64-bit desks, 32-bit ARM.
dlsym_function *real_dlsym() {
    for (const char *version : {"GLIBC_2.34", "GLIBC_2.2.5", "GLIBC_2.4"}) {
        void *found = dlvsym(RTLD_NEXT, "dlsym", version);
        if (found != nullptr) {
            return reinterpret_cast<dlsym_function *>(found);
        }
    }
    return dlsym;
}

bool is_world_library(const char *entry, size_t length) {
    constexpr char name[] = "libkestro_world.so";
    constexpr size_t name_length = sizeof(name) - 1;
    return length >= name_length && memcmp(entry + length - name_length, name, name_length) == 0;
}

// Only this library's own entry goes: other preloaded libraries decide for themselves.
void leave_preload_list() {
    const char *list = getenv("LD_PRELOAD");
    if (list == nullptr) {
        return;
    }
    char *rest = strdup(list);
    if (rest == nullptr) {
        return;
    }
    size_t used = 0;
    while (*list != '\0') {
        const size_t length = strcspn(list, ": ");
        if (length != 0 && !is_world_library(list, length)) {
            if (used != 0) {
                rest[used++] = ':';
            }
            memcpy(rest + used, list, length);
            used += length;
        }
        list += length;
        list += *list != '\0' ? 1 : 0;
    }
    rest[used] = '\0';
    if (used != 0) {
        setenv("LD_PRELOAD", rest, 1);
    } else {
        unsetenv("LD_PRELOAD");
    }
    free(rest);
}

void read_root() {
    const char *root = getenv("KESTRO_SIM_ROOT");
    const size_t length = root == nullptr ? 0 : strlen(root);
    if (length == 0 || length >= sizeof(settings.root)) {
        return;
    }
    memcpy(settings.root, root, length + 1);
    settings.root_length = length;
    while (settings.root_length > 1 && settings.root[settings.root_length - 1] == '/') {
        settings.root[--settings.root_length] = '\0';
    }
}

// A desk's user may well be called "release": what the launcher and the probe were given by name is never the board's.
void read_own_paths() {
    for (const char *name : {"KESTRO_SIM_ROOT", "KESTRO_SIM_STATE", "KESTRO_SIM_BOARD", "KESTRO_PROBE_SCRIPT",
                             "KESTRO_PROBE_TRACE", "KESTRO_PROBE_REPLAY"}) {
        const char *value = getenv(name);
        char *copy = value != nullptr && value[0] == '/' ? strdup(value) : nullptr;
        if (copy != nullptr) {
            settings.own_paths[settings.own_path_count++] = copy;
        }
    }
}

__attribute__((constructor)) void start_world() {
    read_own_paths();
    read_root();
    const char *clock = getenv("KESTRO_SIM_CLOCK");
    settings.virtual_clock = clock != nullptr && strcmp(clock, "virtual") == 0;
    const char *time = getenv("KESTRO_SIM_TIME");
    settings.board_time = time != nullptr ? strtoll(time, nullptr, 10) : 0;
    settings.is_answered = getenv("KESTRO_PROBE_SCRIPT") != nullptr || getenv("KESTRO_PROBE_REPLAY") != nullptr;
    const char *fail = getenv("KESTRO_SIM_FAIL_ALLOC");
    const unsigned long fail_allocation = fail != nullptr ? strtoul(fail, nullptr, 10) : 0;
    const bool is_watched = getenv("KESTRO_SIM_WATCHDOG") != nullptr;
    for (const char *name :
         {"KESTRO_SIM_ROOT", "KESTRO_SIM_CLOCK", "KESTRO_SIM_TIME", "KESTRO_SIM_FAIL_ALLOC", "KESTRO_SIM_WATCHDOG"}) {
        unsetenv(name);
    }
    leave_preload_list();
    if (settings.virtual_clock) {
        start_scheduling();
    }
    if (fail_allocation != 0) {
        settings.fail_allocation = fail_allocation;
        start_counting_allocations();
    }
    if (is_watched) {
        look_at_watchdog();
    }
}

} // namespace

void *find_next(const char *symbol) {
    static std::atomic<dlsym_function *> found = nullptr;
    dlsym_function *look_up = found.load(std::memory_order_acquire);
    if (look_up == nullptr) {
        look_up = real_dlsym();
        found.store(look_up, std::memory_order_release);
    }
    return look_up(RTLD_NEXT, symbol);
}

} // namespace kestro_sim
