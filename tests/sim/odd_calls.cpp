// Calls that kestro_call cannot make: thousands in a row, until the process is killed in the middle of one; a format
// that is missing; a callback that asks a driver; reads of mapped memory; what a watchdog is to end. Each prints its
// result on a line of its own.
//
//   odd_calls (fill_label|fill_barcode|fill_mac) BYTE TIMES | kill_after_us MICROSECONDS | log_without_format | listen
//             | show_memory TYPE COUNT | remap_memory TYPE | watch | shell COMMAND | spin
#include "drv_basic/identity/drv_barcode.h"
#include "drv_basic/identity/drv_elabel.h"
#include "drv_basic/identity/drv_mac.h"
#include "drv_basic/management/drv_board.h"
#include "drv_basic/management/drv_watchdog.h"
#include "drv_basic/service/drv_log.h"
#include "drv_basic/storage/drv_env.h"
#include "drv_basic/storage/drv_highmem.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using write_call = std::function<uint32_t(const std::vector<uint8_t> &)>;

// The same byte all over, by turns with the next one, so that a mixture of two writes shows.
uint32_t fill(const write_call &write, size_t size, const char *byte, const char *times) {
    const auto first = static_cast<uint8_t>(strtoul(byte, nullptr, 0));
    uint32_t result = 0;
    for (unsigned long i = 0; i < strtoul(times, nullptr, 0); ++i) {
        result |= write(std::vector<uint8_t>(size, static_cast<uint8_t>(first + (i & 1U))));
    }
    return result;
}

uint32_t write_label(const std::vector<uint8_t> &area) {
    return drv_elabel_write(DRV_INST_SELF, 0, area.data(), DRV_ELABEL_SIZE);
}

uint32_t write_barcode(const std::vector<uint8_t> &area) {
    return drv_barcode_write(DRV_INST_SELF, 0, area.data(), DRV_BARCODE_SIZE);
}

// The count is the byte, too.
uint32_t write_mac(const std::vector<uint8_t> &addr) {
    return drv_mac_set_addr_num(DRV_INST_SELF, 1, addr[0], addr.data());
}

// The kernel ends this process at an instant of the work that nobody chose.
void kill_after_us(const char *microseconds) {
    sigevent how{};
    how.sigev_notify = SIGEV_SIGNAL;
    how.sigev_signo = SIGKILL;
    timer_t timer{};
    const long delay = strtol(microseconds, nullptr, 0);
    const itimerspec when{{0, 0}, {delay / 1000000, delay % 1000000 * 1000 + 1}};
    if (timer_create(CLOCK_MONOTONIC, &how, &timer) != 0 || timer_settime(timer, 0, &when, nullptr) != 0) {
        perror("kill_after_us");
        exit(3);
    }
}

uint32_t log_without_format() {
    uint32_t (*const record)(uint32_t, uint32_t, uint32_t, const char *, ...) = drv_log_record;
    return record(1, 1, 0, nullptr);
}

std::atomic<bool> heard{false};

uint32_t hear(uint32_t slot_id, uint32_t in, void *user_data) {
    uint32_t own_slot = 0;
    const uint32_t result = drv_board_get_self_slotid(&own_slot);
    printf("%s: slot %u in %u, told to slot %u with 0x%x\n", static_cast<const char *>(user_data), slot_id, in,
           own_slot, result);
    heard = true;
    return 0;
}

// A card is pulled. Waits for a minute, but only when nothing is told.
uint32_t listen() {
    char who[] = "listener";
    uint32_t result = drv_board_in_out_reg(hear, who, "odd", 0) | drv_board_set_online_status(0xFF000005U, 1);
    for (int i = 0; i < 6000 && !heard; ++i) {
        usleep(10000);
    }
    return result | drv_board_in_out_unreg(hear);
}

const uint8_t *address_of(uint32_t type) {
    uint64_t address = 0;
    return drv_highmem_get_base_addr(type, &address) == 0
               ? reinterpret_cast<const uint8_t *>(static_cast<uintptr_t>(address))
               : nullptr;
}

// The first bytes of a part of the reserved memory, in hexadecimal, as they stand there now.
uint32_t show_memory(const char *type, const char *count) {
    const uint8_t *const bytes = address_of(static_cast<uint32_t>(strtoul(type, nullptr, 0)));
    for (unsigned long i = 0; bytes != nullptr && i < strtoul(count, nullptr, 0); ++i) {
        printf("%02x ", bytes[i]);
    }
    return bytes == nullptr ? 1 : 0;
}

// The part stays where it was while others write to it and the drivers are brought up again; after an exit it is mapped
// anew.
uint32_t remap_memory(const char *type) {
    const auto number = static_cast<uint32_t>(strtoul(type, nullptr, 0));
    const uint8_t *const before = address_of(number);
    const uint8_t was = *before;
    const uint32_t set = drv_memenv_set("odd", "call");
    printf("%u then %u, %s, ", was, *before,
           drv_highmem_init() == 0 && address_of(number) == before ? "kept" : "moved");
    const uint32_t exited = drv_highmem_exit() | drv_highmem_exit();
    printf("again %u ", *address_of(number));
    return set | exited;
}

// Busy, and no signal of the program's own is let through.
[[noreturn]] void spin() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, nullptr);
    for (volatile unsigned rounds = 0;;) {
        rounds = rounds + 1;
    }
}

} // namespace

int main(int count, char **arguments) {
    for (int i = 1; i < count; ++i) {
        const std::string word = arguments[i];
        const char *next = i + 1 < count ? arguments[i + 1] : "";
        const char *last = i + 2 < count ? arguments[i + 2] : "";
        uint32_t result = 0;
        if (word == "kill_after_us") {
            kill_after_us(next);
            i += 1;
            continue;
        }
        if (word == "fill_label" || word == "fill_barcode" || word == "fill_mac") {
            result = word == "fill_label"     ? fill(write_label, DRV_ELABEL_SIZE, next, last)
                     : word == "fill_barcode" ? fill(write_barcode, DRV_BARCODE_SIZE, next, last)
                                              : fill(write_mac, DRV_MAC_SIZE, next, last);
            i += 2;
        } else if (word == "show_memory") {
            result = show_memory(next, last);
            i += 2;
        } else if (word == "remap_memory") {
            result = remap_memory(next);
            i += 1;
        } else if (word == "watch") {
            result = drv_watchdog_enable(1);
        } else if (word == "spin") {
            spin();
        } else if (word == "shell") {
            result = static_cast<uint32_t>(system(next));
            i += 1;
        } else if (word == "log_without_format" || word == "listen") {
            result = word == "listen" ? listen() : log_without_format();
        } else {
            fprintf(stderr, "odd_calls: '%s' is no call; the calls stand at the head of odd_calls.cpp\n", word.c_str());
            return 2;
        }
        printf("0x%x\n", result);
    }
    return 0;
}
