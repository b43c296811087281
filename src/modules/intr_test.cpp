// intr_test: the interrupt service of the driver, tried with the test interrupt of a control FPGA: a level that stays
// until it is taken back by the registers that raised it.
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <pthread.h>
#include <unistd.h>

#include "drv_basic/chips/drv_cpld.h"
#include "drv_basic/chips/drv_intr.h"
#include "modules/modules.h"
#include "shell/console.h"
#include "shell/dispatch.h"
#include "shell/standard_streams.h"
#include "shell/words.h"

namespace {

// Both fill five places, so that the lines stand in columns.
constexpr const char *info = "info ";
constexpr const char *error = "error";

constexpr uint32_t failed = UINT32_MAX;

constexpr uint32_t test_index = 100;
constexpr uint32_t test_type = 200;

constexpr uint32_t test_chip = 1;
constexpr uint32_t latch_register = 0x600; // a written 1 clears
constexpr uint32_t key_register = 0x62F;
constexpr uint32_t raise_register = 0x630;
constexpr uint32_t all_latches = 0xFFFF;
constexpr uint32_t test_key = 0x7788;

// Shared with the thread of the driver that delivers interrupts, and with a signal handler. Nothing is ever set back: a
// second run in one process begins with the counts of the first.
using shared_word = std::atomic<uint32_t>;
static_assert(shared_word::is_always_lock_free);

shared_word common_int_cnt; // whatever was delivered
shared_word test_int_cnt;   // deliveries of the test interrupt
shared_word clears_source;
shared_word tells_delivery;
shared_word stops;

// Tells this module's registration from another one of the same line: only its address counts.
uint32_t cookie;

uint32_t write_test_chip(uint32_t offset, uint32_t data) {
    return drv_cpld_reg_write(DRV_INST_SELF, test_chip, offset, data);
}

// What an earlier run left in the latch goes first.
uint32_t raise_test_interrupt() {
    uint32_t ret = write_test_chip(latch_register, all_latches);
    ret |= write_test_chip(key_register, test_key);
    ret |= write_test_chip(raise_register, 1);
    return ret;
}

// The latch last: while its source stands it is set again at once.
uint32_t clear_test_interrupt() {
    uint32_t ret = write_test_chip(key_register, 0);
    ret |= write_test_chip(raise_register, 0);
    ret |= write_test_chip(latch_register, all_latches);
    return ret;
}

// A driver may deliver late, while the process ends, too; there is no output any more then.
void tell_delivery(uint32_t count) {
    if (hold_output()) {
        print_tagged_line(info, "at handler, g_intr_test_int_cnt=%u", count);
        release_output();
    }
}

uint32_t count_interrupt(uint32_t index, uint32_t type, void *user_data) {
    ++common_int_cnt;
    if (index != test_index || type != test_type || user_data != &cookie) {
        return 0;
    }
    const uint32_t count = ++test_int_cnt;
    if (tells_delivery != 0) {
        tell_delivery(count);
    }
    if (clears_source != 0) {
        clear_test_interrupt();
    }
    return 0;
}

void print_empty_line() {
    print_tagged_line(info, "%s", "");
}

void wait_milliseconds(uint32_t milliseconds) {
    timespec left = {static_cast<time_t>(milliseconds / 1000), static_cast<long>(milliseconds % 1000) * 1000000};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

uint32_t register_counter(uint32_t index, uint32_t type) {
    const uint32_t ret = drv_intr_set_regist(index, type, count_interrupt, &cookie);
    if (ret != 0) {
        print_tagged_line(error, "drv_intr_set_regist fail, ret=0x%x", ret);
        return ret;
    }
    print_tagged_line(info, "registrer int success");
    return 0;
}

// One delivery for one raise: the handler takes the source back.
uint32_t check_single_delivery() {
    const uint32_t ret = raise_test_interrupt();
    if (ret != 0) {
        print_tagged_line(error, "testcase1: simulate int fail, ret=0x%x", ret);
        return ret;
    }
    print_tagged_line(info, "testcase1: simulate int success");
    wait_milliseconds(100);
    print_tagged_line(info, "testcase1: after delay 100ms");
    const uint32_t count = test_int_cnt;
    if (count != 1) {
        print_tagged_line(error, "testcase1: check int cnt fail, cnt=%u", count);
        return failed;
    }
    print_tagged_line(info, "testcase1: check int cnt success, cnt=%u", count);
    print_empty_line();
    return 0;
}

// A source that stays raised is delivered again and again. The first case left the count at 1, so a line that delivers
// no more than that once does not pass.
uint32_t check_repetition() {
    clears_source = 0;
    tells_delivery = 0;
    const uint32_t ret = raise_test_interrupt();
    if (ret != 0) {
        print_tagged_line(error, "testcase2: simulate int fail, ret=0x%x", ret);
        return ret;
    }
    print_tagged_line(info, "testcase2: simulate int success");
    wait_milliseconds(100);
    print_tagged_line(info, "testcase2: after delay 100ms");
    const uint32_t count = test_int_cnt;
    if (count <= 1) {
        print_tagged_line(error, "testcase2: check int cnt fail");
        return failed;
    }
    print_tagged_line(info, "testcase2: check int cnt success, cnt=%u", count);
    print_empty_line();
    return 0;
}

// A delivery may be on its way when the line is disabled; the first wait lets it come.
uint32_t check_disabled() {
    const uint32_t ret = drv_intr_disable(test_index, test_type);
    if (ret != 0) {
        print_tagged_line(error, "testcase3: disable int fail, ret=0x%x", ret);
        return failed;
    }
    print_tagged_line(info, "testcase3: disable int success");
    wait_milliseconds(10);
    const uint32_t last = test_int_cnt;
    wait_milliseconds(1000);
    print_tagged_line(info, "testcase3: after delay 1s");
    const uint32_t count = test_int_cnt;
    if (count != last) {
        print_tagged_line(error, "testcase3: check int cnt fail, last_cnt=%u, new_cnt=%u", last, count);
        return failed;
    }
    print_tagged_line(info, "testcase3: check int cnt success, cnt=%u", count);
    print_empty_line();
    return 0;
}

// The source has been raised all the time.
uint32_t check_enabled_again() {
    const uint32_t ret = drv_intr_enable(test_index, test_type);
    if (ret != 0) {
        print_tagged_line(error, "testcase4: enable int fail, ret=0x%x", ret);
        return failed;
    }
    print_tagged_line(info, "testcase4: enable int success");
    wait_milliseconds(10);
    const uint32_t last = test_int_cnt;
    wait_milliseconds(1000);
    print_tagged_line(info, "testcase4: after delay 1s");
    const uint32_t count = test_int_cnt;
    if (count == last) {
        print_tagged_line(error, "testcase4: check int cnt fail, last_cnt=%u, new_cnt=%u", last, count);
        return failed;
    }
    print_tagged_line(info, "testcase4: check int cnt success, cnt=%u", count);
    print_empty_line();
    return 0;
}

uint32_t run_cases() {
    for (const auto check : {check_single_delivery, check_repetition, check_disabled, check_enabled_again}) {
        const uint32_t ret = check();
        if (ret != 0) {
            return ret;
        }
    }
    return 0;
}

int intr_test_router_kv_lpu_2ta_4ta(int /*count*/, char ** /*args*/) {
    uint32_t ret = register_counter(test_index, test_type);
    if (ret != 0) {
        return static_cast<int>(ret);
    }
    clears_source = 1;
    tells_delivery = 1;
    ret = run_cases();
    clear_test_interrupt();
    const uint32_t unregistered = drv_intr_set_unregist(test_index, test_type);
    if (unregistered != 0) {
        print_tagged_line(error, "unregister int fail, ret=0x%x", unregistered);
        ret = unregistered;
    }
    if (ret == 0) {
        print_tagged_line(info, "pass");
    }
    return static_cast<int>(ret);
}

// A signal's line is printed by its handler only where that cannot stop within another line of the same thread: out of
// the sleep. What comes at another moment, or on a thread of the driver, is told by the sub-command as soon as it may.
shared_word is_asleep;
pthread_t sleeper;
shared_word untold_signals;

void tell_signal(int sig_no) {
    print_tagged_line(info, "intr_test_signal_handler exit, sig_no=%d", sig_no);
}

void intr_test_signal_handler(int sig_no) {
    const int error_before = errno;
    if (is_asleep != 0 && pthread_equal(pthread_self(), sleeper) != 0) {
        tell_signal(sig_no);
    } else {
        ++untold_signals;
    }
    stops = 1;
    errno = error_before;
}

void tell_signals() {
    for (uint32_t left = untold_signals.exchange(0); left > 0; --left) {
        tell_signal(SIGINT);
    }
}

void install_signal_handler() {
    sleeper = pthread_self();
    struct sigaction action = {};
    action.sa_handler = intr_test_signal_handler;
    action.sa_flags = SA_RESTART; // driver calls go on; a sleep ends all the same
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, nullptr);
}

void sleep_until_signal() {
    while (stops == 0) {
        is_asleep = 1;
        sleep(1);
        is_asleep = 0;
        tell_signals();
    }
}

bool has_index_and_type(int count) {
    constexpr int expected = 2;
    if (count != expected) {
        print_tagged_line(error, "invalid arg num, expect=2, real=%d", count);
        return false;
    }
    return true;
}

int intr_test_register_unregister(int count, char **args) {
    if (!has_index_and_type(count)) {
        return -1;
    }
    const uint32_t index = word_to_u32(args[0]);
    const uint32_t type = word_to_u32(args[1]);
    print_tagged_line(info, "index_id=%u, type=%u", index, type);
    uint32_t ret = register_counter(index, type);
    if (ret != 0) {
        return static_cast<int>(ret);
    }
    install_signal_handler();
    sleep_until_signal();
    tell_signals();
    ret = drv_intr_set_unregist(index, type);
    if (ret != 0) {
        print_tagged_line(error, "unregister int fail, ret=0x%x", ret);
    } else {
        print_tagged_line(info, "unregister int success");
    }
    tell_signals();
    print_tagged_line(info, "g_intr_test_common_int_cnt=%u", common_int_cnt.load());
    return 0;
}

// A driver that refuses is told and is no failure of the sub-command.
int intr_test_enable(int count, char **args) {
    if (!has_index_and_type(count)) {
        return -1;
    }
    const uint32_t index = word_to_u32(args[0]);
    const uint32_t type = word_to_u32(args[1]);
    print_tagged_line(info, "index_id=%u, type=%u", index, type);
    const uint32_t ret = drv_intr_enable(index, type);
    if (ret != 0) {
        print_tagged_line(error, "enable int fail, ret=0x%x", ret);
    } else {
        print_tagged_line(info, "enable int success");
    }
    return 0;
}

int intr_test_disable(int count, char **args) {
    if (!has_index_and_type(count)) {
        return -1;
    }
    const uint32_t index = word_to_u32(args[0]);
    const uint32_t type = word_to_u32(args[1]);
    print_tagged_line(info, "index_id=%u, type=%u", index, type);
    const uint32_t ret = drv_intr_disable(index, type);
    if (ret != 0) {
        print_tagged_line(error, "disable int fail, ret=0x%x", ret);
    } else {
        print_tagged_line(info, "disable int success");
    }
    return 0;
}

constexpr std::array rows = {
    command_row{"intr_test_router_kv_lpu_2ta_4ta", intr_test_router_kv_lpu_2ta_4ta, "intr_test_router_kv_lpu_2ta_4ta"},
    command_row{"intr_test_register_unregister", intr_test_register_unregister, "intr_test_register_unregister"},
    command_row{"intr_test_enable", intr_test_enable, "intr_test_enable"},
    command_row{"intr_test_disable", intr_test_disable, "intr_test_disable"},
};

static_assert(rows_are_sound(rows));

} // namespace

int intr_test(int count, char **args) {
    return run_module(rows, count, args);
}
