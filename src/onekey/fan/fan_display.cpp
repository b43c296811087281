// The information table of fan trays: a block per tray, then a row per fan.
#include "drv_basic/environment/drv_fan.h"
#include "onekey/fan/fan_cells.h"
#include "onekey/fan/fan_onekey.h"
#include "onekey/fan/fan_report.h"
#include "shell/console.h"

namespace {

// An absent tray has both lines: the second one closes the presence for those who read the report by program.
uint32_t show_presence(uint32_t slot_id, report_sink sink) {
    uint32_t present = 0;
    const uint32_t ret = drv_fan_get_online_status(slot_id, &present);
    if (ret != 0) {
        report_append(sink, "Error: get fan%d online status fail\r\n", static_cast<int>(slot_id));
    }
    report_append(sink, "[FAN%u]\r\n", slot_id);
    if (present == 0) {
        report_append(sink, "Present: NO\r\n");
    }
    report_append(sink, "Present: YES\r\n");
    return fan_failure(ret);
}

uint32_t show_pcb_version(uint32_t slot_id, report_sink sink) {
    constexpr uint32_t pcb_version = 1;
    constexpr uint32_t size = 128;
    char text[size + 1] = {}; // a driver may fill all that it is told of
    uint32_t len = size;
    const uint32_t ret = drv_fan_get_board_property(slot_id, pcb_version, reinterpret_cast<uint8_t *>(text), &len);
    if (ret == 0) {
        report_append(sink, "PcbVer : %s\r\n", text);
    } else if (ret == DRV_NOT_SUPPORTED) {
        report_append(sink, "PcbVer : N/A\r\n");
    } else {
        report_append(sink, "Error: get fan%d pcbver fail\r\n", static_cast<int>(slot_id));
    }
    return fan_failure(ret);
}

uint32_t show_airflow(uint32_t slot_id, report_sink sink) {
    uint32_t direct = 0;
    const uint32_t ret = drv_fan_get_wind_direct(slot_id, &direct);
    const char *text = direct == 0 ? "Back-to-Front" : "Front-to-Back";
    report_append(sink, "Airflow Direction: %s\r\n", ret == 0 ? text : fan_no_value(ret));
    return report_cell_failure({slot_id, 0}, ret, "wind direct", sink);
}

uint32_t show_tray(uint32_t slot_id, report_sink sink) {
    uint32_t result = show_presence(slot_id, sink);
    result += show_pcb_version(slot_id, sink);
    result += show_airflow(slot_id, sink);
    return result;
}

// The two parts of the speed cell touch: how much of the speed, and behind it in brackets the speed itself.
uint32_t show_speed_percent(const fan_unit &fan, report_sink sink) {
    uint32_t percent = 0;
    const uint32_t ret = drv_fan_get_speed_percent(fan.slot_id, fan.fan_id, &percent);
    if (ret == 0) {
        report_append(sink, "%-2d%%", static_cast<int>(percent));
    } else {
        report_append(sink, "%-3s", fan_no_value(ret));
    }
    const uint32_t failure = report_cell_failure(fan, ret, "speed percent", sink);
    flush_partial_line();
    return failure;
}

// The bracket of a failure stands at the end of the column, that of a fan without a speed behind its text.
uint32_t show_speed(const fan_unit &fan, report_sink sink) {
    uint32_t speed = 0;
    const uint32_t ret = drv_fan_get_speed(fan.slot_id, fan.fan_id, &speed);
    if (ret == 0) {
        report_append(sink, "(%-5d%-4s", static_cast<int>(speed), ")");
    } else if (ret == DRV_NOT_SUPPORTED) {
        report_append(sink, "(N/A%-6s", ")");
    } else {
        report_append(sink, "(--%7s", ")");
    }
    const uint32_t failure = report_cell_failure(fan, ret, "speed", sink);
    flush_partial_line();
    return failure;
}

uint32_t show_number(const fan_unit &fan, uint32_t ret, uint32_t number, const char *what, report_sink sink) {
    if (ret == 0) {
        report_append(sink, "%-10d", static_cast<int>(number));
    } else {
        report_append(sink, "%-10s", fan_no_value(ret));
    }
    const uint32_t failure = report_cell_failure(fan, ret, what, sink);
    flush_partial_line();
    return failure;
}

uint32_t show_limits(const fan_unit &fan, report_sink sink) {
    uint32_t max_speed = 0;
    uint32_t ret = drv_fan_get_max_speed(fan.slot_id, fan.fan_id, &max_speed);
    uint32_t result = show_number(fan, ret, max_speed, "max speed", sink);
    uint32_t max_power = 0;
    ret = drv_fan_get_max_power(fan.slot_id, fan.fan_id, &max_power);
    result += show_number(fan, ret, max_power, "max power", sink);
    uint32_t max_shift = 0;
    ret = drv_fan_get_max_shift(fan.slot_id, fan.fan_id, &max_shift);
    result += show_number(fan, ret, max_shift, "max shift", sink);
    return result;
}

uint32_t show_shift(const fan_unit &fan, report_sink sink) {
    uint32_t shift = 0;
    const uint32_t ret = drv_fan_get_shift(fan.slot_id, fan.fan_id, &shift);
    if (ret == 0) {
        report_append(sink, "%d", static_cast<int>(shift));
    } else {
        report_append(sink, "%s", fan_no_value(ret));
    }
    return report_cell_failure(fan, ret, "shift", sink);
}

uint32_t show_fan(const fan_unit &fan, report_sink sink) {
    show_fan_place(fan, sink);
    uint32_t result = show_status(fan, sink);
    result += show_speed_percent(fan, sink);
    result += show_speed(fan, sink);
    result += show_limits(fan, sink);
    result += show_shift(fan, sink);
    report_append(sink, "\r\n");
    return result;
}

uint32_t show_fans(uint32_t slot_id, report_sink sink) {
    uint32_t num = 0;
    const uint32_t ret = count_fans(slot_id, &num, sink);
    if (ret != 0) {
        report_append(sink, "FAN%-3d %-7s %-8s %-12s %-9s %-9s %-9s %s\r\n", static_cast<int>(slot_id), "--", "--",
                      "--", "--", "--", "--", "--");
        return ret;
    }
    uint32_t result = 0;
    for (uint32_t fan_id = 0; fan_id < num; ++fan_id) {
        result += show_fan({slot_id, fan_id}, sink);
    }
    return result;
}

void report_table_edge(report_sink sink) {
    report_append(sink, "--------------------------------------"
                        "--------------------------------------\r\n");
}

} // namespace

uint32_t fan_check_get_info_one_key_test(report_sink sink) {
    drv_slot_list list{};
    uint32_t result = list_fan_slots(&list, sink);
    if (result != 0) {
        return result;
    }
    for (uint32_t i = 0; i < list.num; ++i) {
        result += show_tray(list.slot_id[i], sink);
    }
    report_table_edge(sink);
    report_append(sink, "%-6s %-7s %-8s %-12s %-9s %-9s %-9s %s\r\n", "FanId", "FanNum", "Status", "Speed", "MaxSpeed",
                  "MaxPower", "MaxShift", "CurShift");
    for (uint32_t i = 0; i < list.num; ++i) {
        result += show_fans(list.slot_id[i], sink);
    }
    report_table_edge(sink);
    return result;
}
