// The system watchdog's device file. In the board's files it is an empty one; the requests are answered by the
// simulated drivers, so that the device and the driver library are two faces of one watchdog.
#include "sim/world/watchdog.h"
#include "sim/world/paths.h"
#include "sim/world/world.h"

#include <cerrno>
#include <cstdint>
#include <linux/watchdog.h>
#include <sys/stat.h>

namespace kestro_sim {

namespace {

using request_function = int(unsigned long, uint32_t *);
using begin_function = void();

// Told by the drivers when they are loaded, which may be before or after this library has started.
std::atomic<request_function *> request_of_drivers = nullptr;
std::atomic<begin_function *> begin_of_drivers = nullptr;

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

// A program without drivers has no board behind the file.
int answer(unsigned long request, uint32_t *value) {
    request_function *const ask = request_of_drivers;
    const int error = ask != nullptr ? ask(request, value) : ENODEV;
    if (error == 0) {
        return 0;
    }
    errno = error;
    return -1;
}

} // namespace

void look_at_watchdog() {
    if (begin_function *const begin = begin_of_drivers) {
        begin();
    }
}

WORLD_EXPORT void kestro_world_join(request_function *request, begin_function *begin) __asm__("kestro_world_join");
void kestro_world_join(request_function *request, begin_function *begin) {
    request_of_drivers = request;
    begin_of_drivers = begin;
}

WORLD_EXPORT int world_ioctl(int descriptor, unsigned long request, void *argument) __asm__("ioctl");
int world_ioctl(int descriptor, unsigned long request, void *argument) {
    static next_function<int(int, unsigned long, ...)> next{"ioctl"};
    if (is_watchdog_request(request) && is_watchdog(descriptor)) {
        return answer(request, static_cast<uint32_t *>(argument));
    }
    return next.get()(descriptor, request, argument);
}

} // namespace kestro_sim
