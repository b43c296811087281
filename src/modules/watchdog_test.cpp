// watchdog_test: the two watchdogs of the board. The system watchdog is reached through the driver library and as
// Linux's /dev/watchdog, the hardware-bad watchdog through the driver library alone. No banners here.
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/watchdog.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "drv_basic/management/drv_watchdog.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/words.h"

namespace {

constexpr const char *watchdog_device = "/dev/watchdog";

// The board's kernel and the desk's take the same numbers: scripts and logs name them.
static_assert(WDIOC_KEEPALIVE == 0x80045705);
static_assert(WDIOC_GETTIMEOUT == 0x80045707);
static_assert(WDIOC_SETTIMEOUT == 0xc0045706);
static_assert(WDIOC_SETOPTIONS == 0x80045704);

int report_arg_num() {
    printf("invalid arg num\n");
    return -1;
}

void report_enable(uint32_t enable) {
    printf("enable: %u(%s)\n\n", enable, enable != 0 ? "enable" : "disable");
}

int watchdog_clr(int count, char **) {
    if (count != 0) {
        return report_arg_num();
    }
    printf("no arg \n");
    const uint32_t ret = drv_watchdog_clr();
    printf("drv_watchdog_clr ret:%d\n\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

int watchdog_enable(int count, char **args) {
    if (count != 1) {
        return report_arg_num();
    }
    const uint32_t enable = word_to_u32(args[0]);
    report_enable(enable);
    const uint32_t ret = drv_watchdog_enable(enable);
    printf("drv_watchdog_enable ret:%d\n\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

int watchdog_is_enable(int count, char **) {
    if (count != 0) {
        return report_arg_num();
    }
    printf("no arg \n");
    uint32_t enable = 0;
    const uint32_t ret = drv_watchdog_is_enable(&enable);
    if (ret == 0) {
        report_enable(enable);
    } else {
        printf("drv_watchdog_is_enable ret:%d\n\n", static_cast<int>(ret));
    }
    return static_cast<int>(ret);
}

int watchdog_get_timeout(int count, char **) {
    if (count != 0) {
        return report_arg_num();
    }
    printf("no arg \n");
    uint32_t timeout = 0;
    const uint32_t ret = drv_watchdog_get_timeout(&timeout);
    if (ret == 0) {
        printf("timeout: %u\n\n", timeout);
    } else {
        printf("drv_watchdog_get_timeout ret:%d\n\n", static_cast<int>(ret));
    }
    return static_cast<int>(ret);
}

// Here and below the timeout may be left out; it is 0 then, and the driver's to refuse.
int watchdog_set_timeout(int count, char **args) {
    if (count >= 2) {
        return report_arg_num();
    }
    const uint32_t timeout = count == 1 ? word_to_u32(args[0]) : 0;
    printf("timeout: %u\n\n", timeout);
    const uint32_t ret = drv_watchdog_set_timeout(timeout);
    printf("watchdog_set_timeout ret:%d\n\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

int hardbad_watchdog_enable(int count, char **args) {
    if (count != 1) {
        return report_arg_num();
    }
    const uint32_t enable = word_to_u32(args[0]);
    report_enable(enable);
    const uint32_t ret = drv_hardbad_watchdog_enable(enable);
    if (ret != 0) {
        printf("drv watchdog enable fail, ret:%d\n\n", static_cast<int>(ret));
    }
    printf("drv watchdog enable ret:%d\n\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

int hardbad_watchdog_set_timeout(int count, char **args) {
    if (count >= 2) {
        return report_arg_num();
    }
    const uint32_t timeout = count == 1 ? word_to_u32(args[0]) : 0;
    printf("timeout: %u\n\n", timeout);
    const uint32_t ret = drv_hardbad_watchdog_set_timeout(timeout);
    if (ret != 0) {
        printf("drv watchdog set timeout fail, ret:%d\n\n", static_cast<int>(ret));
    }
    printf("watchdog set timeout ret:%d\n\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

// The line names the other watchdog's operation; scripts look for it.
int hardbad_watchdog_clr(int count, char **) {
    if (count != 0) {
        return report_arg_num();
    }
    printf("no arg \n");
    const uint32_t ret = drv_hardbad_watchdog_clr();
    printf("drv_watchdog_clr ret:%d\n\n", static_cast<int>(ret));
    return static_cast<int>(ret);
}

// The failure line names the timeout, which scripts look for as well.
int hardbad_watchdog_dump_reg(int count, char **args) {
    const uint32_t len = count >= 1 ? word_to_u32(args[0]) : 0;
    char *buffer = new_text_area(len);
    if (buffer == nullptr) {
        printf("hardbad watchdog dump info fail: buffer is null.\n");
        return -1;
    }
    const uint32_t ret = drv_hardbad_watchdog_dump_reg(DRV_INST_SELF, buffer, len);
    if (ret != 0) {
        printf("drv hardbad watchdog set timeout fail, ret:%d\n\n", static_cast<int>(ret));
    } else {
        printf("hardbad watchdog dump reg ,buffer=%s:%d\n\n", buffer, static_cast<int>(len));
    }
    free(buffer);
    return static_cast<int>(ret);
}

// One open, one request, one close each: whoever feeds the watchdog that way does not keep the device from others.
int request_of_device(unsigned long request, uint32_t *value) {
    const int device = open(watchdog_device, O_RDWR | O_CLOEXEC);
    if (device < 0) {
        printf("open /dev/watchdog fail, fd 0x%08x, error %s.\n", static_cast<unsigned>(device), strerror(errno));
        return -1;
    }
    const int ret = ioctl(device, request, value);
    if (ret < 0) {
        printf("ioctrl fail, cmd=0x%x, ret=%d, error %s.\n", static_cast<unsigned>(request), ret, strerror(errno));
    }
    close(device);
    return ret < 0 ? -1 : 0;
}

int report_success(int ret) {
    if (ret == 0) {
        printf("success\n");
    }
    return ret;
}

int watchdog_ioctrl_keepalive(int, char **) {
    return report_success(request_of_device(WDIOC_KEEPALIVE, nullptr));
}

int watchdog_ioctrl_gettimeout(int, char **) {
    uint32_t timeout = 0;
    const int ret = request_of_device(WDIOC_GETTIMEOUT, &timeout);
    if (ret == 0) {
        printf("timeout=%u\n", timeout);
    }
    return report_success(ret);
}

int watchdog_ioctrl_settimeout(int count, char **args) {
    if (count != 1) {
        return report_arg_num();
    }
    uint32_t timeout = word_to_u32(args[0]);
    printf("input timeout=%u\n", timeout);
    return report_success(request_of_device(WDIOC_SETTIMEOUT, &timeout));
}

int watchdog_ioctrl_setoptions(int count, char **args) {
    if (count != 1) {
        return report_arg_num();
    }
    uint32_t options = word_to_u32(args[0]);
    printf("options=%u\n", options);
    return report_success(request_of_device(WDIOC_SETOPTIONS, &options));
}

// Set by the handler and never taken back.
std::atomic<bool> feeding_is_over;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler sets it");

// Whole lines only stand in the stream while the handler is installed, so this one, which goes past the stream, comes
// between them. The stream itself must not be touched here: the signal may have come in the middle of it.
void end_feeding(int sig_no) {
    constexpr char text[] = "watchdog_signal_handler exit, sig_no=";
    constexpr size_t text_length = sizeof(text) - 1;
    const int error = errno;
    char line[text_length + 12];
    memcpy(line, text, text_length);
    size_t length = text_length;
    for (int unit = 100; unit > 0; unit /= 10) {
        if (sig_no >= unit || unit == 1) {
            line[length++] = static_cast<char>('0' + sig_no / unit % 10);
        }
    }
    line[length++] = '\n';
    for (size_t done = 0; done < length;) {
        const ssize_t part = write(STDOUT_FILENO, line + done, length - done);
        if (part < 0 && errno != EINTR) {
            break;
        }
        done += part > 0 ? static_cast<size_t>(part) : 0;
    }
    errno = error;
    feeding_is_over = true;
}

// A signal in the middle of the second ends the sleep: the watchdog is fed once more on the way out.
int auto_feed(int, char **) {
    printf("enter\n");
    signal(SIGINT, end_feeding);
    printf("wait for ctrl+c\n");
    while (!feeding_is_over) {
        sleep(1);
        drv_watchdog_clr();
    }
    printf("exit\n");
    return 0;
}

constexpr std::array rows = {
    command_row{"drv_watchdog_clr", watchdog_clr, "drv_watchdog_clr"},
    command_row{"drv_watchdog_enable", watchdog_enable, "drv_watchdog_enable enable"},
    command_row{"drv_watchdog_is_enable", watchdog_is_enable, "drv_watchdog_is_enable"},
    command_row{"drv_watchdog_get_timeout", watchdog_get_timeout, "drv_watchdog_get_timeout"},
    command_row{"drv_watchdog_set_timeout", watchdog_set_timeout, "drv_watchdog_set_timeout timeout"},
    command_row{"drv_hardbad_watchdog_enable", hardbad_watchdog_enable, "drv_hardbad_watchdog_enable"},
    command_row{"drv_hardbad_watchdog_set_timeout", hardbad_watchdog_set_timeout, "drv_hardbad_watchdog_set_timeout"},
    command_row{"drv_hardbad_watchdog_clr", hardbad_watchdog_clr, "drv_hardbad_watchdog_clr"},
    command_row{"drv_hardbad_watchdog_dump_reg", hardbad_watchdog_dump_reg, "drv_hardbad_watchdog_dump_reg"},
    command_row{"watchdog_ioctrl_keepalive", watchdog_ioctrl_keepalive, "watchdog_ioctrl_keepalive"},
    command_row{"watchdog_ioctrl_gettimeout", watchdog_ioctrl_gettimeout, "watchdog_ioctrl_gettimeout"},
    command_row{"watchdog_ioctrl_settimeout", watchdog_ioctrl_settimeout, "watchdog_ioctrl_settimeout timeout"},
    command_row{"watchdog_ioctrl_setoptions", watchdog_ioctrl_setoptions, "watchdog_ioctrl_setoptions options"},
    command_row{"auto_feed", auto_feed, "auto_feed"},
};

static_assert(rows_are_sound(rows));

} // namespace

int watchdog_test(int count, char **args) {
    return run_module(rows, count, args);
}
