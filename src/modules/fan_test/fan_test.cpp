// fan_test: fan trays and their fans (speed, shift, power, alarms, presence, lamp, board properties) and their one-key
// tests. The handlers stand by subject in the files beside this one; each takes exactly the words that it needs and is
// silent about any other number of them. No banners here.
#include <array>
#include <cstdio>

#include "modules/fan_test/handlers.h"
#include "modules/modules.h"
#include "shell/dispatch.h"
#include "shell/result_print.h"

namespace fan_commands {

int report_value(const char *label, uint32_t ret, uint32_t value) {
    if (ret == 0) {
        printf("%s:%d\r\n", label, static_cast<int>(value));
    } else {
        report_failure(label, ret);
    }
    print_result("%x %x", ret, value);
    return static_cast<int>(ret);
}

void report_failure(const char *label, uint32_t ret) {
    printf("%s fail, ret:0x%x\r\n", label, ret);
}

} // namespace fan_commands

namespace {

using namespace fan_commands;

constexpr std::array rows = {
    command_row{"fan_get_speed", fan_get_speed, "fan_get_speed"},
    command_row{"fan_get_num", fan_get_num, "fan_get_num"},
    command_row{"fan_get_max_speed", fan_get_max_speed, "fan_get_max_speed"},
    command_row{"fan_get_status", fan_get_status, "fan_get_status"},
    command_row{"fan_set_speed_percent", fan_set_speed_percent, "fan_set_speed_percent"},
    command_row{"fan_get_speed_percent", fan_get_speed_percent, "fan_get_speed_percent"},
    command_row{"fan_get_max_speed_by_shift", fan_get_max_speed_by_shift, "fan_get_max_speed_by_shift"},
    command_row{"fan_get_max_shift", fan_get_max_shift, "fan_get_max_shift"},
    command_row{"fan_set_led", fan_set_led, "fan_set_led"},
    command_row{"fan_get_led", fan_get_led, "fan_get_led"},
    command_row{"fan_get_online", fan_get_online, "fan_get_online"},
    command_row{"fan_get_wind_direct", fan_get_wind_direct, "fan_get_wind_direct"},
    command_row{"fan_get_volstatus_history", fan_get_volstatus_history, "fan_get_volstatus_history"},
    command_row{"fan_get_his_plug_status", fan_get_his_plug_status, "fan_get_his_plug_status"},
    command_row{"fan_get_alarm", fan_get_alarm, "fan_get_alarm"},
    command_row{"fan_get_controlable", fan_get_controlable, "fan_get_controlable"},
    command_row{"fan_get_detectable", fan_get_detectable, "fan_get_detectable"},
    command_row{"fan_set_shift", fan_set_shift, "fan_set_shift"},
    command_row{"fan_get_shift", fan_get_shift, "fan_get_shift"},
    command_row{"fan_set_power", fan_set_power, "fan_set_power"},
    command_row{"fan_get_power", fan_get_power, "fan_get_power"},
    command_row{"fan_get_board_property", fan_get_board_property, "fan_get_board_property"},
    command_row{"fan_set_board_property", fan_set_board_property, "fan_set_board_property"},
    command_row{"fan_init", fan_init, "fan_init"},
    command_row{"fan_exit", fan_exit, "fan_exit"},
    command_row{"fan_get_max_power_of_curshift", fan_get_max_power_of_curshift, "fan_get_max_power_of_curshift"},
    command_row{"fan_get_max_power_by_shift", fan_get_max_power_by_shift, "fan_get_max_power_by_shift"},
    command_row{"fan_get_max_power", fan_get_max_power, "fan_get_max_power"},
    command_row{"fan_set_elabel", fan_set_elabel, "fan_set_elabel"},
    command_row{"fan_get_operation_complete_status", fan_get_operation_complete_status,
                "fan_get_operation_complete_status"},
    command_row{"fan_get_info_one_key_test", fan_get_info_one_key_test, "fan_get_info_one_key_test"},
    command_row{"fan_get_alarm_info", fan_get_alarm_info, "fan_get_alarm_info"},
    command_row{"fan_get_elabel_info", fan_get_elabel_info, "fan_get_elabel_info"},
    command_row{"fan_elabel_test", fan_elabel_test, "fan_elabel_test"},
    command_row{"fan_speed_test", fan_speed_test, "fan_speed_test"},
    command_row{"fan_get_all_shift_info", fan_get_all_shift_info, "fan_get_all_shift_info"},
    command_row{"fan_shift_test", fan_shift_test, "fan_shift_test"},
    command_row{"fan_led_one_key_test", fan_led_one_key_test, "fan_led_one_key_test"},
    command_row{"fan_get_init_status", fan_get_init_status, "fan_get_init_status"},
    command_row{"fan_multi_init_test", fan_multi_init_test, "fan_multi_init_test"},
    command_row{"fan_multi_deinit_test", fan_multi_deinit_test, "fan_multi_deinit_test"},
    command_row{"fan_init_deinit_test", fan_init_deinit_test, "fan_init_deinit_test"},
    command_row{"fan_one_key_test", fan_one_key_test, "fan_one_key_test"},
};

static_assert(rows_are_sound(rows));

} // namespace

int fan_test(int count, char **args) {
    return run_module(rows, count, args);
}
