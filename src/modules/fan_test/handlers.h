// The sub-commands of fan_test, by subject, and what their handlers share.
#pragma once

#include <cstdint>

namespace fan_commands {

// What a query gave, or that it failed, under the name of its operation; then the result print. The operation's code.
int report_value(const char *label, uint32_t ret, uint32_t value);

// The line of an operation that failed.
void report_failure(const char *label, uint32_t ret);

int fan_get_speed(int count, char **args);
int fan_get_num(int count, char **args);
int fan_get_max_speed(int count, char **args);
int fan_get_status(int count, char **args);
int fan_set_speed_percent(int count, char **args);
int fan_get_speed_percent(int count, char **args);
int fan_get_max_speed_by_shift(int count, char **args);
int fan_get_max_shift(int count, char **args);
int fan_set_led(int count, char **args);
int fan_get_led(int count, char **args);
int fan_get_online(int count, char **args);
int fan_get_wind_direct(int count, char **args);
int fan_get_volstatus_history(int count, char **args);
int fan_get_his_plug_status(int count, char **args);
int fan_get_alarm(int count, char **args);
int fan_get_controlable(int count, char **args);
int fan_get_detectable(int count, char **args);
int fan_set_shift(int count, char **args);
int fan_get_shift(int count, char **args);
int fan_set_power(int count, char **args);
int fan_get_power(int count, char **args);
int fan_get_board_property(int count, char **args);
int fan_set_board_property(int count, char **args);
int fan_init(int count, char **args);
int fan_exit(int count, char **args);
int fan_get_max_power_of_curshift(int count, char **args);
int fan_get_max_power_by_shift(int count, char **args);
int fan_get_max_power(int count, char **args);
int fan_set_elabel(int count, char **args);
int fan_get_operation_complete_status(int count, char **args);
int fan_get_info_one_key_test(int count, char **args);
int fan_get_alarm_info(int count, char **args);
int fan_get_elabel_info(int count, char **args);
int fan_elabel_test(int count, char **args);
int fan_speed_test(int count, char **args);
int fan_get_all_shift_info(int count, char **args);
int fan_shift_test(int count, char **args);
int fan_led_one_key_test(int count, char **args);
int fan_get_init_status(int count, char **args);
int fan_multi_init_test(int count, char **args);
int fan_multi_deinit_test(int count, char **args);
int fan_init_deinit_test(int count, char **args);
int fan_one_key_test(int count, char **args);

} // namespace fan_commands
