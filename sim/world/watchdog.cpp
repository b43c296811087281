// The system watchdog's device file. In the board's files it is an ordinary file that holds the watchdog's setting, so
// that it lasts from one run to the next and can be looked at; the device's requests are answered from it. It never
// bites.
#include "sim/world/paths.h"
#include "sim/world/world.h"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <linux/watchdog.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kestro_sim {

namespace {

struct watchdog_setting {
    unsigned timeout; // seconds
    unsigned enabled;
};

constexpr watchdog_setting setting_of_new_board = {60, 1};

bool is_watchdog_request(unsigned long request) {
    return request == WDIOC_KEEPALIVE || request == WDIOC_GETTIMEOUT || request == WDIOC_SETTIMEOUT ||
           request == WDIOC_SETOPTIONS;
}

bool is_watchdog(int descriptor) {
    char place[PATH_MAX];
    struct stat device {};
    struct stat opened {};
    return settings.root_length != 0 && place_on_desk("/dev/watchdog", last_link::follow, place) &&
           stat(place, &device) == 0 && fstat(descriptor, &opened) == 0 && S_ISREG(opened.st_mode) &&
           device.st_dev == opened.st_dev && device.st_ino == opened.st_ino;
}

watchdog_setting read_setting(int descriptor) {
    char text[64] = "";
    watchdog_setting setting = setting_of_new_board;
    const ssize_t length = pread(descriptor, text, sizeof(text) - 1, 0);
    if (length <= 0 || sscanf(text, "timeout %u enabled %u", &setting.timeout, &setting.enabled) != 2) {
        return setting_of_new_board;
    }
    return setting;
}

// Lines of fixed width: a run that is killed here leaves a whole setting, the old or the new.
int write_setting(int descriptor, const watchdog_setting &setting) {
    char text[64];
    const int length = snprintf(text, sizeof(text), "timeout %10u\nenabled %u\n", setting.timeout, setting.enabled);
    return pwrite(descriptor, text, static_cast<size_t>(length), 0) == length ? 0 : -1;
}

int refuse() {
    errno = EINVAL;
    return -1;
}

int set_timeout(int descriptor, unsigned seconds) {
    watchdog_setting setting = read_setting(descriptor);
    setting.timeout = seconds;
    return seconds == 0 ? refuse() : write_setting(descriptor, setting);
}

int set_options(int descriptor, unsigned options) {
    watchdog_setting setting = read_setting(descriptor);
    const bool disables = options == WDIOS_DISABLECARD;
    setting.enabled = disables ? 0 : 1;
    return disables || options == WDIOS_ENABLECARD ? write_setting(descriptor, setting) : refuse();
}

int answer(int descriptor, unsigned long request, uint32_t *value) {
    if (request == WDIOC_KEEPALIVE) {
        return 0;
    }
    if (value == nullptr) {
        errno = EFAULT;
        return -1;
    }
    if (request == WDIOC_SETTIMEOUT) {
        return set_timeout(descriptor, *value);
    }
    if (request == WDIOC_SETOPTIONS) {
        return set_options(descriptor, *value);
    }
    *value = read_setting(descriptor).timeout;
    return 0;
}

} // namespace

WORLD_EXPORT int world_ioctl(int descriptor, unsigned long request, void *argument) __asm__("ioctl");
int world_ioctl(int descriptor, unsigned long request, void *argument) {
    static next_function<int(int, unsigned long, ...)> next{"ioctl"};
    if (is_watchdog_request(request) && is_watchdog(descriptor)) {
        return answer(descriptor, request, static_cast<uint32_t *>(argument));
    }
    return next.get()(descriptor, request, argument);
}

} // namespace kestro_sim
