// The sub-commands of optical_test, by subject.
#pragma once

namespace optical_commands {

int get_optical_present_status(int count, char **args);
int get_optical_physical_present_status(int count, char **args);
int get_optical_common_info(int count, char **args);
int get_optical_trans_distance(int count, char **args);
int get_optical_los_status(int count, char **args);
int get_optical_tx_fault_status(int count, char **args);
int get_optical_ddm_info(int count, char **args);
int get_optical_ddm_warning_info(int count, char **args);
int get_optical_ddm_alarm_info(int count, char **args);
int get_optical_threshold_info(int count, char **args);
int test_optical_disable_status(int count, char **args);
int get_optical_physical_pull_status(int count, char **args);
int get_optical_encode_type(int count, char **args);
int get_optical_type(int count, char **args);
int get_optical_diag_info_support_flag(int count, char **args);
int get_optical_linear_attr(int count, char **args);
int get_optical_lane_num(int count, char **args);
int get_optical_common_register_info(int count, char **args);
int set_optical_rate(int count, char **args);
int get_optical_bus_status(int count, char **args);
int set_optical_bus_status_recovery(int count, char **args);
int get_optical_dfx_info(int count, char **args);
int read_optical_register(int count, char **args);
int write_optical_register(int count, char **args);

} // namespace optical_commands
