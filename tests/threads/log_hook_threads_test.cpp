// The log hook: a driver calls it from its own thread while the program waits for Ctrl-C.
#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>
#include <unistd.h>

#include "drv_basic/service/drv_log.h"
#include "modules/modules.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

std::mutex hook_mutex;
drv_log_hook hook = nullptr;
drv_sec_log_hook security_hook = nullptr;
std::atomic<bool> driver_ends = false;
std::atomic<int> told = 0;

const std::string long_text(600, 'l');

// Lines of both logs, one of them longer than the area of a hook, over and over. The operator presses Ctrl-C at last.
void tell() {
    while (!driver_ends) {
        const std::lock_guard lock(hook_mutex);
        if (hook != nullptr) {
            hook("success", "line %d of %s", 7, "the driver");
            hook("fail", "%s", long_text.c_str());
            security_hook(5, "%s", "login");
            if (++told == 200) {
                kill(getpid(), SIGINT);
            }
        }
    }
}

int run_log_test(const char *sub_command) {
    std::string word = sub_command;
    std::array<char *, 1> args{word.data()};
    return log_test(1, args.data());
}

int count_of(const std::string &text, const std::string &part) {
    int count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

} // namespace

uint32_t drv_log_hook_set(drv_log_hook handler) {
    const std::lock_guard lock(hook_mutex);
    hook = handler;
    return 0;
}

uint32_t drv_sec_log_hook_register(uint32_t, const char *, drv_sec_log_hook handler) {
    security_hook = handler;
    return 0;
}

// As the program does it: the handler of the signal writes straight to the descriptor.
TEST(LogHookThreads, NoLineIsTornByAnother) {
    const std::string printed = printed_by([] {
        setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
        EXPECT_EQ(run_log_test("drv_sec_log_hook_register"), 0);
        std::thread driver(tell);
        EXPECT_EQ(run_log_test("log_test_hook"), 0);
        driver_ends = true;
        driver.join();
    });
    const std::string all = "\n" + printed;
    EXPECT_GE(told, 200);
    EXPECT_EQ(count_of(all, "\nresult=success, log=line 7 of the driver\n"), told);
    EXPECT_EQ(count_of(all, "\nresult=fail, log=" + long_text.substr(0, 511) + "\n"), told);
    EXPECT_EQ(count_of(all, "\n[product_sec_log]logid=0x5, log=login\n"), told);
    for (const char *line :
         {"\nenter\n", "\nwait for ctrl+c\n", "\nintr_test_signal_handler exit, sig_no=2\n", "\nexit\n"}) {
        EXPECT_EQ(count_of(all, line), 1) << line;
    }
    // Once more in the same process: the first stop is forgotten.
    told = 199;
    driver_ends = false;
    const std::string again = printed_by([] {
        std::thread driver(tell);
        EXPECT_EQ(run_log_test("log_test_hook"), 0);
        driver_ends = true;
        driver.join();
    });
    EXPECT_EQ(count_of("\n" + again, "\nintr_test_signal_handler exit, sig_no=2\n"), 1);
    EXPECT_EQ(count_of("\n" + again, "\nexit\n"), 1);
}
