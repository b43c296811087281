#include "onekey/fan/fan_cells.h"

#include "drv_basic/environment/drv_fan.h"
#include "shell/console.h"

void show_fan_place(const fan_unit &fan, report_sink sink) {
    report_append(sink, "FAN%-3d %-8d", static_cast<int>(fan.slot_id), static_cast<int>(fan.fan_id));
    flush_partial_line();
}

uint32_t report_cell_failure(const fan_unit &fan, uint32_t ret, const char *what, report_sink sink) {
    const uint32_t failure = fan_failure(ret);
    if (failure != 0) {
        report_append(sink, "Error: get fan%d %s fail\r\n", static_cast<int>(fan.slot_id), what);
    }
    return failure;
}

uint32_t show_condition(const fan_unit &fan, uint32_t ret, uint32_t value, const char *what, report_sink sink) {
    const char *text = value == 0 ? "Normal" : "Abnormal";
    report_append(sink, "%-10s", ret == 0 ? text : fan_no_value(ret));
    const uint32_t failure = report_cell_failure(fan, ret, what, sink);
    flush_partial_line();
    return failure;
}

uint32_t show_status(const fan_unit &fan, report_sink sink) {
    uint32_t status = 0;
    const uint32_t ret = drv_fan_get_status(fan.slot_id, fan.fan_id, &status);
    return show_condition(fan, ret, status, "status", sink);
}
