// The redirected console: a driver calls back from its own thread while the program goes on with its steps.
#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>

#include "drv_basic/service/drv_console_redirect.h"
#include "modules/modules.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

std::mutex callback_mutex;
drv_console_redirect_recv_callback callback = nullptr;
std::atomic<bool> console_ends = false;
std::atomic<int> answers = 0;
std::thread far_console;

// What the far end says, over and over.
void talk() {
    const std::string text = "far console\n";
    while (!console_ends) {
        const std::lock_guard lock(callback_mutex);
        if (callback != nullptr) {
            callback(5, text.data(), static_cast<uint32_t>(text.size()));
            ++answers;
        }
    }
}

int count_of(const std::string &text, const std::string &part) {
    int count = 0;
    for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

} // namespace

uint32_t drv_console_redirect_recv_callback_register(drv_console_redirect_recv_callback handler) {
    const std::lock_guard lock(callback_mutex);
    callback = handler;
    return 0;
}

uint32_t drv_console_redirect_send_data(const char *, uint32_t) {
    const int before = answers;
    while (answers < before + 50) {
        std::this_thread::yield();
    }
    return 0;
}

uint32_t drv_console_redirect_close(uint32_t) {
    const std::lock_guard lock(callback_mutex);
    callback = nullptr;
    return 0;
}

TEST(ConsoleRedirectThreads, NoLineIsTornByAnother) {
    far_console = std::thread(talk);
    std::array<std::string, 6> words = {"drv_console_redirect_func_test", "5", "9600", "hello", "5", "1"};
    std::array<char *, 6> args{};
    for (size_t i = 0; i < words.size(); ++i) {
        args[i] = words[i].data();
    }
    const std::string printed = printed_by([&] { EXPECT_EQ(console_redirect_test(6, args.data()), 0); });
    console_ends = true;
    far_console.join();
    for (const char *line :
         {"\nconsole redirect recv callback register successful!\r\n", "\nconsole redirect send data successful!\r\n",
          "\nconsole redirect close successful!\r\n"}) {
        EXPECT_NE(("\n" + printed).find(line), std::string::npos) << line;
    }
    EXPECT_EQ(count_of(printed, "\nfar console\n"), count_of(printed, "far"));
    EXPECT_GE(answers, 50);
}
