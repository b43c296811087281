// The speed test of a fan tray: its fans, one by one, are made faster or slower.
#include "drv_basic/environment/drv_fan.h"
#include "onekey/fan/fan_monitor.h"
#include "onekey/fan/fan_onekey.h"
#include "onekey/fan/fan_report.h"

namespace {

// That the speed moves is enough: a fan may take longer to the target than anybody at a production line waits. One that
// cannot be read any more has failed, and adds nothing to the result.
round_outcome wait_for_change(const fan_unit &fan, uint32_t round, uint32_t before, report_sink sink) {
    constexpr int polls = 20;
    constexpr uint32_t pause = 500;
    for (int poll = 0; poll < polls; ++poll) {
        sleep_milliseconds(pause);
        uint32_t now = 0;
        if (drv_fan_get_speed_percent(fan.slot_id, fan.fan_id, &now) != 0) {
            report_append(sink, "Error: [%d times]get speed-percent fail in third step \r\n", static_cast<int>(round));
            return {false, 0};
        }
        if (now != before) {
            return {true, 0};
        }
    }
    return {false, 1};
}

round_outcome change_speed(const fan_unit &fan, uint32_t round, report_sink sink) {
    constexpr uint32_t middle = 50;
    uint32_t before = 0;
    uint32_t ret = drv_fan_get_speed_percent(fan.slot_id, fan.fan_id, &before);
    if (ret != 0) {
        report_append(sink, "Error: [%d times]get speed-percent fail in first step\r\n", static_cast<int>(round));
        return {false, ret};
    }
    const uint32_t target = before > middle ? 40 : 60;
    ret = drv_fan_set_speed_percent(fan.slot_id, fan.fan_id, target);
    if (ret != 0) {
        report_append(sink, "Error: [%d times]set speed-percent fail in second step\r\n", static_cast<int>(round));
        return {false, ret};
    }
    return wait_for_change(fan, round, before, sink);
}

// A fan that cannot be asked now goes through its rounds all the same; the code counts once more.
uint32_t test_fan(const fan_unit &fan, uint32_t times, report_sink sink) {
    uint32_t percent = 0;
    const uint32_t ret = drv_fan_get_speed_percent(fan.slot_id, fan.fan_id, &percent);
    if (ret == DRV_NOT_SUPPORTED) {
        report_append(sink, "[FAN%d-%d]: N/A\r\n", static_cast<int>(fan.slot_id), static_cast<int>(fan.fan_id));
        return 0;
    }
    report_append(sink, "[FAN%d-%d]: \r\n", static_cast<int>(fan.slot_id), static_cast<int>(fan.fan_id));
    round_sum sum{};
    for (uint32_t round = 0; round < times; ++round) {
        count_round(&sum, change_speed(fan, round + 1, sink));
    }
    report_rounds(sum, times, sink);
    return ret + sum.result;
}

} // namespace

uint32_t fan_speed_test(uint32_t slot_id, uint32_t times, report_sink sink) {
    uint32_t num = 0;
    uint32_t result = count_fans(slot_id, &num, sink);
    if (result != 0) {
        return result;
    }
    begin_fan_speed_test();
    report_rule(sink);
    const timeval start = fan_time();
    report_append(sink, "[FAN%d] Speed Test Result: \r\n", static_cast<int>(slot_id));
    for (uint32_t fan_id = 0; fan_id < num; ++fan_id) {
        result += test_fan({slot_id, fan_id}, times, sink);
    }
    report_fan_time(fan_time_style::rounds, start, sink);
    end_fan_speed_test();
    return result;
}
