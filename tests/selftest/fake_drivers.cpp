#include "tests/selftest/fake_drivers.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "drv_basic/service/drv_log.h"
#include "drv_basic/storage/drv_eeprom.h"
#include "nb_ctl/board_xml.h"

namespace kestro_tests {

fake_drivers &drivers() {
    static fake_drivers answers;
    return answers;
}

} // namespace kestro_tests

using kestro_tests::drivers;

uint32_t drv_log_record(uint32_t log_id, uint32_t level, uint32_t flag, const char *format, ...) {
    char text[512];
    va_list values;
    va_start(values, format);
    vsnprintf(text, sizeof(text), format, values);
    va_end(values);
    drivers().log_lines.push_back(std::to_string(log_id) + "/" + std::to_string(level) + "/" + std::to_string(flag) +
                                  ": " + text);
    return 0;
}

uint32_t drv_eeprom_read_data(uint32_t, uint32_t section_id, uint32_t offset, uint8_t *buffer, uint32_t len) {
    if (drivers().eeprom_errors.count(section_id) != 0) {
        return drivers().eeprom_errors[section_id];
    }
    const std::string &content = drivers().eeprom_sections[section_id];
    for (uint32_t i = 0; i < len; ++i) {
        buffer[i] = offset + i < content.size() ? static_cast<uint8_t>(content[offset + i]) : 0;
    }
    return 0;
}

uint32_t xml_get_entry_num(uint32_t, const char *, const char *, uint32_t *count) {
    *count = drivers().entry_num;
    return drivers().entry_num_result;
}

uint32_t xml_get_element_value_u32(uint32_t, const char *module, const char *node, const char *entry,
                                   const char *element, uint32_t *value) {
    const auto found = drivers().elements.find(std::string(module) + "/" + node + "/" + entry + "/" + element);
    if (found == drivers().elements.end()) {
        return 0x51;
    }
    *value = found->second;
    return 0;
}

// The board's files are the test's own: these stand in front of the C library's.

namespace {

const char *place_of(const char *path) {
    const auto found = drivers().files.find(path);
    return found == drivers().files.end() ? path : found->second.c_str();
}

template <typename function> function next_of(const char *name) {
    return reinterpret_cast<function>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" FILE *fopen(const char *path, const char *mode) {
    static const auto real = next_of<FILE *(*)(const char *, const char *)>("fopen");
    if (strcmp(path, "/proc/interrupts") == 0) {
        return real(drivers().proc_interrupts.c_str(), mode);
    }
    return real(path, mode);
}

extern "C" int stat(const char *path, struct stat *status) noexcept {
    static const auto real = next_of<int (*)(const char *, struct stat *)>("stat");
    return real(place_of(path), status);
}

extern "C" int execve(const char *path, char *const argv[], char *const environment[]) noexcept {
    static const auto real = next_of<int (*)(const char *, char *const[], char *const[])>("execve");
    return real(place_of(path), argv, environment);
}

extern "C" int open(const char *path, int flags, ...) {
    static const auto real = next_of<int (*)(const char *, int, ...)>("open");
    va_list values;
    va_start(values, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(values, unsigned)) : 0;
    va_end(values);
    if (drivers().files_vanish && drivers().files.contains(path)) {
        errno = ENOENT;
        return -1;
    }
    return real(place_of(path), flags, mode);
}

extern "C" ssize_t read(int file, void *buffer, size_t size) {
    static const auto real = next_of<ssize_t (*)(int, void *, size_t)>("read");
    if (drivers().bad_disk) {
        errno = EIO;
        return -1;
    }
    return real(file, buffer, drivers().short_reads && size > 0 ? size - 1 : size);
}
