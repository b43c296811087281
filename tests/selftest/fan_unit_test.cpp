// Fan trays when the system fails the test, or an operator breaks it off.
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <dlfcn.h>
#include <pthread.h>
#include <string>
#include <vector>

#include "bounds/bounds.h"
#include "drv_basic/environment/drv_fan.h"
#include "drv_basic/management/drv_slot.h"
#include "onekey/fan/fan_monitor.h"
#include "onekey/fan/fan_onekey.h"
#include "onekey/fan/fan_report.h"
#include "selftest/report.h"
#include "tests/selftest/fake_drivers.h"
#include "tests/selftest/faults.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

// One tray, what the system refuses it, and what an operator does meanwhile.
struct fake_tray {
    std::string label = "AAthe label";
    bool is_up = true;
    int label_writes = 0;
    uint32_t trays = 0;
    void (*at_call)() = nullptr;
    bool no_copies = false;
    int thread_error = 0;
    bool is_time_fake = false; // sleeps take none
    int interrupted_sleeps = 0;
    std::vector<long> sleeps; // milliseconds
};

fake_tray tray;

void tray_meanwhile() {
    if (tray.at_call != nullptr) {
        tray.at_call();
    }
}

template <typename function> function next_system_call(const char *name) {
    return reinterpret_cast<function>(dlsym(RTLD_NEXT, name));
}

} // namespace

uint32_t drv_slot_get_list(uint32_t, drv_slot_list *list) {
    list->num = tray.trays;
    return 0;
}

uint32_t drv_fan_get_board_property(uint32_t, uint32_t, uint8_t *buffer, uint32_t *len) {
    memcpy(buffer, tray.label.data(), std::min<size_t>(tray.label.size(), *len));
    return 0;
}

uint32_t drv_fan_set_board_property(uint32_t, uint32_t, const uint8_t *buffer, uint32_t) {
    tray.label = "";
    tray_meanwhile();
    tray.label = reinterpret_cast<const char *>(buffer);
    ++tray.label_writes;
    return 0;
}

uint32_t drv_fan_init(uint32_t) {
    tray.is_up = true;
    return 0;
}

uint32_t drv_fan_exit(uint32_t) {
    tray.is_up = false;
    tray_meanwhile();
    return 0;
}

extern "C" errno_t _memcpy_s_chk(void *dest, rsize_t dest_size, const void *source, rsize_t size, size_t dest_object,
                                 size_t source_object) {
    using function = errno_t (*)(void *, rsize_t, const void *, rsize_t, size_t, size_t);
    static const auto real = next_system_call<function>("_memcpy_s_chk");
    return tray.no_copies ? EINVAL : real(dest, dest_size, source, size, dest_object, source_object);
}

extern "C" int pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*routine)(void *),
                              void *argument) noexcept {
    using function = int (*)(pthread_t *, const pthread_attr_t *, void *(*)(void *), void *);
    static const auto real = next_system_call<function>("pthread_create");
    return tray.thread_error != 0 ? tray.thread_error : real(thread, attributes, routine, argument);
}

extern "C" int nanosleep(const timespec *span, timespec *left) {
    static const auto real = next_system_call<int (*)(const timespec *, timespec *)>("nanosleep");
    if (!tray.is_time_fake) {
        return real(span, left);
    }
    tray.sleeps.push_back(span->tv_sec * 1000 + span->tv_nsec / 1000000);
    if (tray.interrupted_sleeps == 0) {
        return 0;
    }
    --tray.interrupted_sleeps;
    // Half of it is left; both may be the same record.
    const long half = tray.sleeps.back() / 2;
    left->tv_sec = half / 1000;
    left->tv_nsec = half % 1000 * 1000000;
    errno = EINTR;
    return -1;
}

namespace {

class FanUnitTest : public testing::Test {
  protected:
    void SetUp() override {
        drivers() = {};
        tray = {};
        tray.is_time_fake = true;
    }
    void TearDown() override {
        drivers() = {};
        tray = {};
    }
};

// What the tray was like when the signal was let through.
fake_tray seen_tray;
int tray_signals = 0;

void look_at_tray(int) {
    seen_tray = tray;
    ++tray_signals;
}

void interrupt_tray_once() {
    tray.at_call = nullptr;
    raise(SIGTERM);
}

class FanTestInterrupted : public FanUnitTest {
  protected:
    void SetUp() override {
        FanUnitTest::SetUp();
        tray_signals = 0;
        tray.at_call = interrupt_tray_once;
        struct sigaction action {};
        action.sa_handler = look_at_tray;
        sigaction(SIGTERM, &action, &before_);
    }
    void TearDown() override {
        EXPECT_EQ(tray_signals, 1);
        sigaction(SIGTERM, &before_, nullptr);
        FanUnitTest::TearDown();
    }

  private:
    struct sigaction before_ {};
};

} // namespace

TEST_F(FanUnitTest, ALabelThatCannotBeCopied) {
    tray.no_copies = true;
    EXPECT_EQ(printed_by([] { EXPECT_EQ(fan_elabel_test(11, 2, console_sink), 0x811101b1U); }),
              "----------------------------------------------------------------\r\n"
              "Error: memcpy buffer fail\r\n");
    EXPECT_EQ(tray.label_writes, 0);
}

TEST_F(FanUnitTest, ThereCanBeNoThread) {
    tray.trays = 2;
    tray.thread_error = EAGAIN;
    // The first failure is no start: the second one tries again.
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(printed_by([] { EXPECT_EQ(fan_monitor_start(), -1); }), "fan check create pthread failed! ret:0xb\n");
    }
}

TEST_F(FanUnitTest, SleepsOfWholeSecondsAndParts) {
    sleep_milliseconds(0);
    sleep_milliseconds(999);
    sleep_milliseconds(1000);
    sleep_milliseconds(30000);
    EXPECT_EQ(tray.sleeps, (std::vector<long>{0, 999, 1000, 30000}));
}

TEST_F(FanUnitTest, ASleepGoesOnBehindASignal) {
    tray.interrupted_sleeps = 2;
    sleep_milliseconds(2000);
    EXPECT_EQ(tray.sleeps, (std::vector<long>{2000, 1000, 500}));
}

TEST_F(FanTestInterrupted, WhileTheLabelIsWritten) {
    printed_by([] { EXPECT_EQ(fan_elabel_test(11, 2, console_sink), 0U); });
    EXPECT_EQ(seen_tray.label, "AAthe label");
    EXPECT_EQ(seen_tray.label_writes, 3);
}

TEST_F(FanTestInterrupted, WhileTheDriverIsDown) {
    printed_by([] { EXPECT_EQ(fan_multi_deinit_test(11, 2, console_sink), 0U); });
    EXPECT_TRUE(seen_tray.is_up);
    EXPECT_TRUE(seen_tray.sleeps.empty());
}

TEST_F(FanTestInterrupted, WhileTheDriverIsDownForARound) {
    printed_by([] { EXPECT_EQ(fan_init_deinit_test(11, 2, console_sink), 0U); });
    EXPECT_TRUE(seen_tray.is_up);
    EXPECT_TRUE(seen_tray.sleeps.empty());
}
