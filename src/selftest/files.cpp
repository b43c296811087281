// File utilities of the self-test.
#include "selftest/files.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

#include "bounds/bounds.h"
#include "selftest/selftest_log.h"

int open_regular_file(const char *path) {
    struct stat status {};
    if (stat(path, &status) != 0 || !S_ISREG(status.st_mode)) {
        return -1;
    }
    return open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
}

namespace {

constexpr size_t line_size = 256;

FILE *open_resolved(const char *path) {
    char resolved[PATH_MAX];
    if (strlen(path) >= sizeof(resolved) || realpath(path, resolved) == nullptr) {
        return nullptr;
    }
    return fopen(resolved, "r");
}

} // namespace

int grep_file(const char *path, const char *needle, uint32_t *found, report_sink sink) {
    if (path == nullptr || needle == nullptr || found == nullptr) {
        return -1;
    }
    FILE *file = open_resolved(path);
    if (file == nullptr) {
        return -1;
    }
    *found = 0;
    char *line = static_cast<char *>(calloc(line_size, 1));
    if (line == nullptr) {
        fclose(file);
        return -1;
    }
    while (fgets(line, line_size, file) != nullptr) {
        if (strstr(line, needle) != nullptr) {
            report_append(sink, "%s", line);
            *found = 1;
        }
    }
    free(line);
    fclose(file);
    return 0;
}

int append_line_to_file(const char *path, const char *text) {
    FILE *file = fopen(path, "a+");
    if (file == nullptr) {
        selftest_log("base", 0, log_error, "open file %s failed:%s", path, strerror(errno));
        return -1;
    }
    fprintf(file, "%s\r\n", text);
    fflush(file);
    fclose(file);
    return 0;
}

namespace {

// The number stands six characters behind the start of the key, whatever the length of the index: one behind the key
// of a one-digit index, right behind that of a two-digit one.
bool line_names_irq(const char *line, const char *key, uint32_t expected) {
    constexpr size_t number_offset = 6;
    const char *match = strstr(line, key);
    if (match == nullptr || strlen(match) < number_offset) {
        return false;
    }
    return static_cast<uint32_t>(strtoll(match + number_offset, nullptr, 10)) == expected;
}

} // namespace

int irq_in_proc_interrupts(uint32_t index, uint32_t expected, uint32_t *found) {
    char key[line_size] = {};
    if (sprintf_s(key, sizeof(key), "intr%u", index) < 0) {
        return -1;
    }
    FILE *file = fopen("/proc/interrupts", "r");
    if (file == nullptr) {
        return -1;
    }
    *found = 0;
    char line[line_size] = {};
    while (*found == 0 && fgets(line, sizeof(line), file) != nullptr) {
        *found = line_names_irq(line, key, expected) ? 1 : 0;
    }
    fclose(file);
    return 0;
}
