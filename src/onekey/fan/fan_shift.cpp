// The shifts of fans: what each allows, and whether a tray reaches the one it is put into.
#include "drv_basic/environment/drv_fan.h"
#include "onekey/fan/fan_onekey.h"
#include "onekey/fan/fan_report.h"
#include "shell/console.h"

namespace {

uint32_t show_shift_limits(const fan_unit &fan, uint32_t shift, report_sink sink) {
    report_append(sink, "%-8d", static_cast<int>(shift));
    flush_partial_line();
    uint32_t max_power = 0;
    const uint32_t power_ret = drv_fan_get_max_power_by_shift(fan.slot_id, fan.fan_id, shift, &max_power);
    if (power_ret == 0) {
        report_append(sink, "%-11u", max_power);
    } else {
        report_append(sink, "%-11s", fan_no_value(power_ret));
    }
    flush_partial_line();
    uint32_t max_speed = 0;
    const uint32_t speed_ret = drv_fan_get_max_speed_by_shift(fan.slot_id, fan.fan_id, shift, &max_speed);
    if (speed_ret == 0) {
        report_append(sink, "%u\r\n", max_speed);
    } else {
        report_append(sink, "%s\r\n", fan_no_value(speed_ret));
    }
    return fan_failure(power_ret) + fan_failure(speed_ret);
}

uint32_t show_shift_table(const fan_unit &fan, report_sink sink) {
    uint32_t max_shift = 0;
    const uint32_t ret = drv_fan_get_max_shift(fan.slot_id, fan.fan_id, &max_shift);
    if (ret != 0) {
        report_append(sink, "Max Shift    : %s\r\n", fan_no_value(ret));
        return fan_failure(ret);
    }
    report_append(sink, "Max Shift    : %u\r\n", max_shift);
    report_append(sink, "%-7s %-10s %s\r\n", "Shift", "MaxPower", "MaxSpeed");
    uint32_t result = 0;
    for (uint32_t below = 0; below < max_shift; ++below) {
        result += show_shift_limits(fan, below + 1, sink);
    }
    return result;
}

uint32_t show_fan_shifts(const fan_unit &fan, report_sink sink) {
    report_append(sink, "[FAN%d-%d]: ", static_cast<int>(fan.slot_id), static_cast<int>(fan.fan_id));
    flush_partial_line();
    uint32_t shift = 0;
    const uint32_t ret = drv_fan_get_shift(fan.slot_id, fan.fan_id, &shift);
    if (ret != 0) {
        report_append(sink, "%s\r\n", fan_no_value(ret));
        return fan_failure(ret);
    }
    report_append(sink, "\r\nCurrent Shift: %u\r\n", shift);
    return show_shift_table(fan, sink);
}

uint32_t show_tray_shifts(uint32_t slot_id, report_sink sink) {
    uint32_t num = 0;
    uint32_t result = count_fans(slot_id, &num, sink);
    if (result != 0) {
        return result;
    }
    report_append(sink, "[FAN%d]\r\n", static_cast<int>(slot_id));
    for (uint32_t fan_id = 0; fan_id < num; ++fan_id) {
        result += show_fan_shifts({slot_id, fan_id}, sink);
    }
    return result;
}

} // namespace

uint32_t fan_get_all_shift_info(report_sink sink) {
    drv_slot_list list{};
    uint32_t result = list_fan_slots(&list, sink);
    if (result != 0) {
        return result;
    }
    report_rule(sink);
    const timeval start = fan_time();
    for (uint32_t i = 0; i < list.num; ++i) {
        result += show_tray_shifts(list.slot_id[i], sink);
    }
    report_fan_time(fan_time_style::values, start, sink);
    return result;
}

namespace {

// The wait for one fan, which does not know of rounds: the number in its line is that of the fan.
bool reaches_shift(const fan_unit &fan, uint32_t target, report_sink sink) {
    constexpr int polls = 30;
    constexpr uint32_t pause = 1000;
    uint32_t shift = 0;
    for (int poll = 0; poll < polls; ++poll) {
        sleep_milliseconds(pause);
        if (drv_fan_get_shift(fan.slot_id, fan.fan_id, &shift) == 0 && shift == target) {
            return true;
        }
    }
    report_append(sink, "Error: [%d times]check shift(%d!=%d) time out in third step\r\n", static_cast<int>(fan.fan_id),
                  static_cast<int>(target), static_cast<int>(shift));
    return false;
}

uint32_t count_late_fans(uint32_t slot_id, uint32_t num, uint32_t target, report_sink sink) {
    uint32_t late = 0;
    for (uint32_t fan_id = 0; fan_id < num; ++fan_id) {
        late += reaches_shift({slot_id, fan_id}, target, sink) ? 0U : 1U;
    }
    return late;
}

struct tested_tray {
    uint32_t slot_id;
    uint32_t num; // of its fans
    uint32_t max_shift;
};

// The first fan speaks for the tray. A tray in its highest shift goes down one step, any other goes up to the highest.
round_outcome change_shift(const tested_tray &tray, uint32_t round, report_sink sink) {
    const int number = static_cast<int>(round);
    uint32_t shift = 0;
    uint32_t ret = drv_fan_get_shift(tray.slot_id, 0, &shift);
    if (ret != 0) {
        report_append(sink, "Error: [%d times]get shift fail in first step(0x%x)\r\n", number, ret);
        return {false, ret};
    }
    const uint32_t target = shift < tray.max_shift ? tray.max_shift : tray.max_shift - 1;
    ret = drv_fan_set_shift(tray.slot_id, DRV_FAN_ALL, target);
    if (ret != 0) {
        report_append(sink, "Error: [%d times]set shift(%d) fail in second step(0x%x)\r\n", number,
                      static_cast<int>(target), ret);
        return {false, ret};
    }
    const uint32_t late = count_late_fans(tray.slot_id, tray.num, target, sink);
    if (late != 0) {
        report_append(sink, "Error: [%d times]check shift(%d!=%d) time out(%d) in third step\r\n", number,
                      static_cast<int>(target), static_cast<int>(shift), static_cast<int>(late));
    }
    return {late == 0, late};
}

} // namespace

uint32_t fan_shift_test(uint32_t slot_id, uint32_t times, report_sink sink) {
    constexpr uint32_t usual_max_shift = 8;
    tested_tray tray{slot_id, 0, usual_max_shift};
    uint32_t ret = count_fans(slot_id, &tray.num, sink);
    if (ret != 0) {
        return ret;
    }
    report_rule(sink);
    const timeval start = fan_time();
    report_append(sink, "[FAN%d] Shift Test Result: \r\n", static_cast<int>(slot_id));
    ret = drv_fan_get_max_shift(slot_id, 0, &tray.max_shift);
    if (ret != 0) {
        report_append(sink, "[FAN%d-0]: %s\r\n", static_cast<int>(slot_id), fan_no_value(ret));
        return fan_failure(ret);
    }
    round_sum sum{};
    for (uint32_t round = 0; round < times; ++round) {
        count_round(&sum, change_shift(tray, round + 1, sink));
    }
    report_rounds(sum, times, sink);
    report_fan_time(fan_time_style::rounds, start, sink);
    return sum.result;
}
