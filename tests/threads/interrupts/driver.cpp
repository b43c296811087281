// A driver of interrupts that stands in front of all others and delivers on a thread of its own. INTERRUPT_SCENE says
// how it behaves; several words may be joined:
//
//   good           delivers as long as the source is raised and the line is enabled
//   wrong          delivers besides with another index, another type and another user data
//   times=N        delivers N times when the handler is registered, whatever the source
//   always         delivers as long as a handler is registered
//   late           and goes on when it was unregistered, to the end of the process and once more there
//   refuse         does not unregister, and says so
//   unraisable     the source cannot be raised
//   early          SIGINT comes while the handler is registered, before there is anything to catch it
//   interrupt      SIGINT comes once it is caught, and what is to be delivered has been
//   twice          and comes again at once
//   foreign        and it comes to a thread of the driver
//   between        SIGINT comes while the handler is unregistered
//
// Sleeps take a thousandth of their time. While the source comes through they last until a few more deliveries are
// made, so that a busy desk makes no difference.
#include "drv_basic/chips/drv_cpld.h"
#include "drv_basic/chips/drv_intr.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <mutex>
#include <string>
#include <thread>
#include <unistd.h>

namespace {

struct registration {
    uint32_t index;
    uint32_t type;
    drv_intr_handler handler;
    void *user_data;
};

// Held while the handler runs, so that whoever registers, disables or unregisters waits for it.
std::mutex line;
registration registered;
bool is_enabled;
uint32_t left; // deliveries that do not ask for the source
bool is_late;

std::atomic<uint32_t> latch;
std::atomic<uint32_t> key;
std::atomic<uint32_t> raise_bit;
std::atomic<uint32_t> deliveries;
std::atomic<bool> comes_through; // at the last look
std::atomic<bool> has_begun;
std::atomic<bool> is_ending;
std::atomic<bool> has_ended;

// Never freed: the threads go on while the program's objects are destroyed.
const std::string &scene() {
    static const auto *const words = [] {
        const char *said = getenv("INTERRUPT_SCENE");
        return new std::string("," + std::string(said != nullptr ? said : "") + ",");
    }();
    return *words;
}

bool plays(const char *word) {
    return scene().find("," + std::string(word) + ",") != std::string::npos;
}

uint32_t times() {
    static const uint32_t said = [] {
        constexpr const char *word = "times=";
        const size_t at = scene().find(word);
        return at == std::string::npos ? 0 : static_cast<uint32_t>(std::stoul(scene().substr(at + strlen(word))));
    }();
    return said;
}

bool is_due() {
    if (registered.handler == nullptr) {
        return false;
    }
    return is_late || left > 0 || plays("always") || (is_enabled && latch != 0);
}

void deliver() {
    const registration &to = registered;
    if (plays("wrong")) {
        to.handler(to.index + 1, to.type, to.user_data);
        to.handler(to.index, to.type + 1, to.user_data);
        to.handler(to.index, to.type, nullptr);
    }
    to.handler(to.index, to.type, to.user_data);
    left -= left > 0 ? 1 : 0;
    ++deliveries;
}

bool is_caught() {
    struct sigaction known = {};
    sigaction(SIGINT, nullptr, &known);
    return known.sa_handler != SIG_DFL;
}

// On a thread of its own.
void interrupt_once_caught() {
    sigset_t interrupt;
    sigemptyset(&interrupt);
    sigaddset(&interrupt, SIGINT);
    pthread_sigmask(plays("foreign") ? SIG_UNBLOCK : SIG_BLOCK, &interrupt, nullptr);
    while (!is_caught() || deliveries < times()) {
        std::this_thread::yield();
    }
    if (plays("foreign")) {
        raise(SIGINT);
        return;
    }
    kill(getpid(), SIGINT);
    if (plays("twice")) {
        kill(getpid(), SIGINT);
    }
}

void work() {
    while (!is_ending) {
        {
            const std::lock_guard guard(line);
            comes_through = is_due();
            if (comes_through) {
                deliver();
            }
        }
        std::this_thread::yield();
    }
    const std::lock_guard guard(line);
    if (registered.handler != nullptr) {
        deliver();
    }
    has_ended = true;
}

void begin() {
    if (!has_begun.exchange(true)) {
        std::thread(work).detach();
    }
}

// The thread must not outlive what its library has.
__attribute__((destructor)) void end_with_the_process() {
    is_ending = true;
    while (has_begun && !has_ended) {
        std::this_thread::yield();
    }
}

} // namespace

uint32_t drv_intr_set_regist(uint32_t index, uint32_t type, drv_intr_handler handler, void *user_data) {
    if (plays("early")) {
        kill(getpid(), SIGINT);
    }
    const std::lock_guard guard(line);
    registered = {index, type, handler, user_data};
    is_enabled = true;
    left = times();
    begin();
    if (plays("interrupt") || plays("foreign")) {
        std::thread(interrupt_once_caught).detach();
    }
    return 0;
}

uint32_t drv_intr_set_unregist(uint32_t, uint32_t) {
    if (plays("between")) {
        raise(SIGINT);
    }
    const std::lock_guard guard(line);
    if (plays("refuse")) {
        return 0x14;
    }
    is_late = plays("late");
    if (!is_late) {
        registered = {};
    }
    return 0;
}

uint32_t drv_intr_enable(uint32_t, uint32_t) {
    const std::lock_guard guard(line);
    is_enabled = true;
    comes_through = is_due();
    return 0;
}

uint32_t drv_intr_disable(uint32_t, uint32_t) {
    const std::lock_guard guard(line);
    is_enabled = false;
    comes_through = is_due();
    return 0;
}

// No lock: the handler writes, too. Others than the program's thread write only what takes the source back.
uint32_t drv_cpld_reg_write(uint32_t, uint32_t, uint32_t offset, uint32_t data) {
    if (offset == 0x62F) {
        key = data;
    } else if (offset == 0x630) {
        raise_bit = data;
    }
    if (plays("unraisable") && data != 0) {
        return 0x11;
    }
    latch = key == 0x7788 && raise_bit == 1 ? 1 : (offset == 0x600 ? 0 : latch.load());
    comes_through = comes_through || latch != 0;
    return 0;
}

extern "C" int nanosleep(const timespec *span, timespec *) {
    constexpr long brisk = 1000;
    const auto end = std::chrono::steady_clock::now() +
                     std::chrono::nanoseconds(span->tv_sec * (1000000000 / brisk) + span->tv_nsec / brisk);
    const uint32_t before = deliveries;
    while (std::chrono::steady_clock::now() < end || (comes_through && deliveries < before + 3)) {
        std::this_thread::yield();
    }
    return 0;
}

// A signal ends it, as it ends the true one.
extern "C" unsigned sleep(unsigned seconds) {
    const timespec span = {0, static_cast<long>(seconds) * 1000000};
    return clock_nanosleep(CLOCK_MONOTONIC, 0, &span, nullptr) == 0 ? 0 : seconds;
}
