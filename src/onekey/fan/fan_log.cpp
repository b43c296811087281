#include "onekey/fan/fan_log.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "drv_basic/service/drv_log.h"
#include "selftest/selftest_log.h"

namespace {

constexpr const char *log_device = "/dev/kestro_log/fan_mng";

// Log devices have short names. One that leads further away is no log of ours.
int open_log() {
    constexpr size_t path_size = 128;
    char path[PATH_MAX] = {};
    if (realpath(log_device, path) == nullptr || strlen(path) >= path_size) {
        return -1;
    }
    return open(path, O_RDONLY | O_CLOEXEC);
}

} // namespace

int fan_log_fetch(char *buffer, uint32_t size) {
    constexpr uint32_t fan_log_id = 17;
    if (size == 0) {
        return -1;
    }
    const int file = open_log();
    if (file < 0) {
        return -1;
    }
    const ssize_t got = read(file, buffer, size - 1);
    close(file);
    if (got < 0) {
        drv_log_record(fan_log_id, log_error, 0, "Get fan log failed.(err = %d)", static_cast<int>(got));
        return -1;
    }
    return 0;
}
