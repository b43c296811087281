// The alarm table of fan trays: a row per fan.
#include "bounds/bounds.h"
#include "drv_basic/environment/drv_fan.h"
#include "onekey/fan/fan_cells.h"
#include "onekey/fan/fan_onekey.h"
#include "onekey/fan/fan_report.h"

namespace {

// Reset, hardware, speed, plug, motor, I2C, ability file. Number 7 is kept for an alarm to come and has no column.
constexpr uint32_t shown_alarms = 7;

void show_alarm(const fan_unit &fan, uint32_t alarm, report_sink sink) {
    uint32_t value = 0;
    const uint32_t ret = drv_fan_get_alarm(fan.slot_id, fan.fan_id, alarm, &value);
    char what[16] = {};
    sprintf_s(what, sizeof(what), "alarm%d", static_cast<int>(alarm));
    show_condition(fan, ret, value, what, sink);
}

void show_alarms_of_fan(const fan_unit &fan, report_sink sink) {
    show_fan_place(fan, sink);
    // A fan whose status is bad is stalled: that is all its status tells.
    show_status(fan, sink);
    for (uint32_t alarm = 0; alarm < shown_alarms; ++alarm) {
        show_alarm(fan, alarm, sink);
    }
    report_append(sink, "\r\n");
}

void show_alarms_of_tray(uint32_t slot_id, report_sink sink) {
    uint32_t num = 0;
    if (count_fans(slot_id, &num, sink) != 0) {
        report_append(sink, "FAN%-3d %-7s %-9s %-9s %-9s %-9s %-9s %-9s %-9s %s\r\n", static_cast<int>(slot_id), "--",
                      "--", "--", "--", "--", "--", "--", "--", "--");
        return;
    }
    for (uint32_t fan_id = 0; fan_id < num; ++fan_id) {
        show_alarms_of_fan({slot_id, fan_id}, sink);
    }
}

void report_table_edge(report_sink sink) {
    report_append(sink, "-------------------------------------------------"
                        "-------------------------------------------------\r\n");
}

} // namespace

uint32_t fan_get_alarm_info(report_sink sink) {
    drv_slot_list list{};
    const uint32_t ret = list_fan_slots(&list, sink);
    if (ret != 0) {
        return ret;
    }
    report_table_edge(sink);
    report_append(sink, "%-6s %-7s %-9s %-9s %-9s %-9s %-9s %-9s %-9s %s\r\n", "FanId", "FanNum", "Stalled", "Reset",
                  "Hardware", "SpeedFail", "NoPlugin", "ElecMach", "I2C", "AbilityFile");
    for (uint32_t i = 0; i < list.num; ++i) {
        show_alarms_of_tray(list.slot_id[i], sink);
    }
    report_table_edge(sink);
    return 0;
}
