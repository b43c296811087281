// Trays are watched by slot number, from the first slot of a tray up to the number of trays: that fits a chassis whose
// fan trays have the first slots.
#include "onekey/fan/fan_monitor.h"

#include <atomic>
#include <cstdio>
#include <pthread.h>

#include "drv_basic/environment/drv_fan.h"
#include "drv_basic/service/drv_log.h"
#include "onekey/fan/fan_report.h"
#include "selftest/selftest_log.h"

namespace {

constexpr uint32_t fan_log_id = 17;

// Read by the thread while others write.
struct monitor_state {
    std::atomic<bool> is_started;
    std::atomic<uint32_t> first_slot;
    std::atomic<uint32_t> end_slot; // one behind the last
    std::atomic<uint32_t> rounds;   // since the fans were last checked
    std::atomic<bool> speed_test_runs;
};

monitor_state state;

// A fan that cannot be set now is set again half a minute later.
void set_half_speed(uint32_t slot_id) {
    constexpr uint32_t half = 50;
    uint32_t num = 0;
    const uint32_t ret = drv_fan_get_num(slot_id, &num);
    if (ret != 0) {
        drv_log_record(fan_log_id, log_error, 0, "get fan%d num fail when speed adjust(ret:0x%x)\r\n",
                       static_cast<int>(slot_id), ret);
        return;
    }
    for (uint32_t fan_id = 0; fan_id < num; ++fan_id) {
        drv_fan_set_speed_percent(slot_id, fan_id, half);
    }
}

// A value counts even where the driver says that it has none.
bool is_bad(uint32_t ret, uint32_t value) {
    return fan_failure(ret) != 0 || value != 0;
}

void check_fan(const fan_unit &fan) {
    constexpr uint32_t checked_alarms = 7;
    const int slot = static_cast<int>(fan.slot_id);
    const int number = static_cast<int>(fan.fan_id);
    uint32_t status = 0;
    const uint32_t status_ret = drv_fan_get_status(fan.slot_id, fan.fan_id, &status);
    if (is_bad(status_ret, status)) {
        printf("Warning: FAN%d-%d Stalled.(value:%d,ret:0x%x)\r\n", slot, number, static_cast<int>(status), status_ret);
    }
    for (uint32_t alarm = 0; alarm < checked_alarms; ++alarm) {
        uint32_t value = 0;
        const uint32_t ret = drv_fan_get_alarm(fan.slot_id, fan.fan_id, alarm, &value);
        if (is_bad(ret, value)) {
            printf("Warning: FAN%d-%d alarm(%d) is abnormal.(value:%d,ret:0x%x)\r\n", slot, number,
                   static_cast<int>(alarm), static_cast<int>(value), ret);
        }
    }
}

void check_tray(uint32_t slot_id) {
    uint32_t num = 0;
    const uint32_t ret = drv_fan_get_num(slot_id, &num);
    if (ret != 0) {
        drv_log_record(fan_log_id, log_error, 0, "get fan%d num fail when check fmea(ret:0x%x)\r\n",
                       static_cast<int>(slot_id), ret);
        return;
    }
    for (uint32_t fan_id = 0; fan_id < num; ++fan_id) {
        check_fan({slot_id, fan_id});
    }
}

// Checked in the first round and in every tenth one behind it.
void run_round() {
    constexpr uint32_t rounds_between_checks = 10;
    for (uint32_t slot_id = state.first_slot; slot_id < state.end_slot; ++slot_id) {
        set_half_speed(slot_id);
    }
    if (state.rounds % rounds_between_checks != 0) {
        return;
    }
    for (uint32_t slot_id = state.first_slot; slot_id < state.end_slot; ++slot_id) {
        check_tray(slot_id);
    }
    state.rounds = 0;
}

// Nobody waits for its end: a process that ends takes it along, in the middle of its sleep.
void *watch_fans(void * /*unused*/) {
    constexpr uint32_t pause = 30000;
    pthread_detach(pthread_self());
    while (!state.speed_test_runs) {
        run_round();
        sleep_milliseconds(pause);
        ++state.rounds;
    }
    return nullptr;
}

// No warning gets in front of the line that tells of the monitor's start.
int create_thread() {
    pthread_t thread{};
    flockfile(stdout);
    const int ret = pthread_create(&thread, nullptr, watch_fans, nullptr);
    if (ret == 0) {
        puts("fan check create pthread success");
    } else {
        printf("fan check create pthread failed! ret:0x%x\n", static_cast<unsigned>(ret));
        state.is_started = false;
    }
    funlockfile(stdout);
    return ret == 0 ? 0 : -1;
}

} // namespace

int fan_monitor_start() {
    drv_slot_list list{};
    const uint32_t list_ret = get_fan_slots(&list);
    if (list_ret != 0 || list.num == 0) {
        drv_log_record(fan_log_id, log_error, 0,
                       "No create fan pthread, get fan slot list fail or fan num is zore.(ret:0x%x, fan-num:%d)\r\n",
                       list_ret, static_cast<int>(list.num));
        return 0;
    }
    state.end_slot = list.num;
    state.first_slot = list.slot_id[0];
    // Whoever comes first starts it; the second one need not wait for that.
    if (state.is_started.exchange(true)) {
        return 0;
    }
    return create_thread();
}

void begin_fan_speed_test() {
    state.speed_test_runs = true;
}

void end_fan_speed_test() {
    state.speed_test_runs = false;
}
