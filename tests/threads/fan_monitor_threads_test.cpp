// The fan monitor beside starts from many threads and the speed test, with a driver whose own thread moves the fans.
#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "drv_basic/environment/drv_fan.h"
#include "drv_basic/management/drv_slot.h"
#include "onekey/fan/fan_monitor.h"
#include "onekey/fan/fan_onekey.h"
#include "tests/support/capture.h"

using namespace kestro_tests;

namespace {

// Trays in slots 1 and 2 with a fan each. The thread of the driver brings each fan nearer to its target.
class driver {
  public:
    driver() : mover_([this] { move(); }) {
    }
    ~driver() {
        ends_ = true;
        mover_.join();
    }
    driver(const driver &) = delete;
    driver &operator=(const driver &) = delete;

    uint32_t percent(uint32_t slot) {
        const std::lock_guard lock(mutex_);
        return fans_.at(slot).percent;
    }
    void set(uint32_t slot, uint32_t target) {
        const std::lock_guard lock(mutex_);
        fans_.at(slot).target = target;
        if (target == 50) {
            ++half_speeds_;
        }
    }
    // How often the monitor has set a fan: nobody else sets half of the speed.
    int half_speeds() {
        const std::lock_guard lock(mutex_);
        return half_speeds_;
    }
    void hold() {
        holds_ = true;
    }

  private:
    struct fan {
        uint32_t percent = 30;
        uint32_t target = 30;
    };

    void move() {
        while (!ends_) {
            {
                const std::lock_guard lock(mutex_);
                for (fan &each : fans_) {
                    if (!holds_ && each.percent != each.target) {
                        each.percent += each.percent < each.target ? 1U : -1U;
                    }
                }
            }
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
    }

    std::mutex mutex_;
    std::vector<fan> fans_{3};
    int half_speeds_ = 0;
    std::atomic<bool> holds_ = false;
    std::atomic<bool> ends_ = false;
    std::thread mover_;
};

driver &fans() {
    static driver one;
    return one;
}

// Real time; a round of the monitor has 30 ms.
void wait_ms(int milliseconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (std::chrono::steady_clock::now() < end) {
        std::this_thread::yield();
    }
}

bool comes_true(bool (*condition)()) {
    for (int i = 0; i < 1000 && !condition(); ++i) {
        wait_ms(10);
    }
    return condition();
}

int half_speeds_before = 0;

} // namespace

uint32_t drv_slot_get_list(uint32_t, drv_slot_list *list) {
    *list = {3, {1, 2, 3}};
    return 0;
}

uint32_t drv_fan_get_num(uint32_t, uint32_t *num) {
    *num = 1;
    return 0;
}

uint32_t drv_fan_get_speed_percent(uint32_t slot_id, uint32_t, uint32_t *percent) {
    *percent = fans().percent(slot_id);
    return 0;
}

uint32_t drv_fan_set_speed_percent(uint32_t slot_id, uint32_t, uint32_t percent) {
    fans().set(slot_id, percent);
    return 0;
}

TEST(FanMonitorThreads, StartedByManyAndEndedBySpeedTests) {
    const std::string printed = printed_by([] {
        std::vector<std::thread> starters;
        for (int i = 0; i < 8; ++i) {
            starters.emplace_back([] { EXPECT_EQ(fan_monitor_start(), 0); });
        }
        for (std::thread &each : starters) {
            each.join();
        }
        EXPECT_TRUE(comes_true([] { return fans().half_speeds() >= 6; }));
        EXPECT_TRUE(comes_true([] { return fans().percent(1) == 50 && fans().percent(2) == 50; }));
    });
    EXPECT_EQ(printed, "fan check create pthread success\n");
    // With fans that stand still the test goes on until the monitor has come to the end of its pause.
    fans().hold();
    printed_by([] { EXPECT_NE(fan_speed_test(1, 40, console_sink), 0U); });
    half_speeds_before = fans().half_speeds();
    printed_by([] { EXPECT_EQ(fan_monitor_start(), 0); });
    wait_ms(200);
    EXPECT_EQ(fans().half_speeds(), half_speeds_before);
}
