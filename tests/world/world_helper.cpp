// Chooses what the helper program does; allocations.
#include "tests/world/world_helper.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <pthread.h>

namespace {

void tell(const char *name, void *block) {
    printf("%s: %s\n", name, block != nullptr ? "ok" : strerror(errno));
    free(block);
    errno = 0;
}

char *print_text(const char *format, ...) {
    va_list values;
    va_start(values, format);
    char *text = nullptr;
    const int length = vasprintf(&text, format, values);
    va_end(values);
    return length < 0 ? nullptr : text;
}

} // namespace

// Ten allocations of this program's own, one of each kind. The C library makes more on its behalf.
int allocate(int, char **) {
    setvbuf(stdout, nullptr, _IOLBF, 0);
    errno = 0;
    tell("malloc", malloc(100));
    tell("calloc", calloc(10, 10));
    tell("realloc", realloc(nullptr, 100));
    // Hidden from the compiler, which would copy a text it knows by itself.
    const char *volatile text = "a text";
    tell("strdup", strdup(text));
    tell("strndup", strndup(text, 3));
    char *printed = nullptr;
    tell("asprintf", asprintf(&printed, "%d", 5) < 0 ? nullptr : printed);
    tell("vasprintf", print_text("%d", 6));
    tell("aligned_alloc", aligned_alloc(64, 128));
    void *aligned = nullptr;
    const int error = posix_memalign(&aligned, 64, 128);
    printf("posix_memalign: %s, errno %d\n", error == 0 ? "ok" : strerror(error), errno);
    free(error == 0 ? aligned : nullptr);
    tell("reallocarray", reallocarray(nullptr, 10, 10));
    // A file's record is the C library's own allocation.
    FILE *file = fopen("/dev/null", "r");
    printf("fopen: %s\n", file != nullptr ? "ok" : strerror(errno));
    if (file != nullptr) {
        fclose(file);
    }
    return 0;
}

int main(int count, char **words) {
    static const struct {
        const char *name;
        int (*run)(int count, char **words);
    } table[] = {
        {"files", show_files},         {"status", show_status},
        {"realpath", show_realpath},   {"directory", show_directory},
        {"entries", change_entries},   {"script", run_script},
        {"command", run_command},      {"environment", show_environment},
        {"watchdog", use_watchdog},    {"clocks", show_clocks},
        {"sleeps", show_sleeps},       {"signal", wait_for_signal},
        {"timers", show_timers},       {"waits", show_waits},
        {"threads", sleep_in_threads}, {"allocate", allocate},
        {"scene", show_threads},
    };
    for (const auto &row : table) {
        if (count > 1 && strcmp(words[1], row.name) == 0) {
            return row.run(count - 2, words + 2);
        }
    }
    return 1;
}
