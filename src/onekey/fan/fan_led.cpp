// The lamp of a fan tray: each of its colours is set and read back.
#include "drv_basic/environment/drv_fan.h"
#include "onekey/fan/fan_onekey.h"
#include "onekey/fan/fan_report.h"

namespace {

constexpr uint32_t tray_lamp = 0;

// 0, the driver's code, or 1 for a colour that was taken and does not show.
uint32_t set_and_read_back(uint32_t slot_id, uint32_t color, report_sink sink) {
    uint32_t ret = drv_fan_set_led(slot_id, tray_lamp, color);
    if (ret != 0) {
        report_append(sink, "Error: set led color(%d) fail in first step\r\n", static_cast<int>(color));
        return ret;
    }
    uint32_t shown = 0;
    ret = drv_fan_get_led(slot_id, tray_lamp, &shown);
    if (ret != 0) {
        report_append(sink, "Error: get led color fail in second step\r\n");
        return ret;
    }
    if (shown != color) {
        report_append(sink, "Error: contrast led color(%d) fail in last step\r\n", static_cast<int>(color));
        return 1;
    }
    return 0;
}

uint32_t test_colors(uint32_t slot_id, report_sink sink) {
    constexpr uint32_t off_green_red_yellow[] = {0, 1, 2, 4};
    round_sum sum{};
    report_append(sink, "[FAN%u] Led Test Result:\r\n", slot_id);
    for (const uint32_t color : off_green_red_yellow) {
        const uint32_t ret = set_and_read_back(slot_id, color, sink);
        report_append(sink, "type-%d color-%d: %s\r\n", static_cast<int>(tray_lamp), static_cast<int>(color),
                      ret == 0 ? "pass" : "fail");
        count_round(&sum, {ret == 0, ret});
    }
    report_append(sink, "Info: Success color: %u, Fail color: %u\r\n", sum.good, sum.bad);
    return sum.result;
}

uint32_t test_lamp(uint32_t slot_id, report_sink sink) {
    uint32_t color = 0;
    const uint32_t ret = drv_fan_get_led(slot_id, tray_lamp, &color);
    if (ret != 0) {
        report_append(sink, "[FAN%u] Led-Test: %s\r\n", slot_id, fan_no_value(ret));
        return fan_failure(ret);
    }
    return test_colors(slot_id, sink);
}

} // namespace

uint32_t fan_led_one_key_test(report_sink sink) {
    drv_slot_list list{};
    uint32_t result = list_fan_slots(&list, sink);
    if (result != 0) {
        return result;
    }
    report_rule(sink);
    const timeval start = fan_time();
    for (uint32_t i = 0; i < list.num; ++i) {
        result += test_lamp(list.slot_id[i], sink);
    }
    report_fan_time(fan_time_style::values, start, sink);
    return result;
}
