#include "optical_lib/drv_opt.h"

uint32_t drv_opt_init(uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_exit(uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_card_port_map(uint32_t, uint32_t, struct drv_opt_port_row *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cbb_optical_get_port_type_str_from_value(uint32_t, char *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cbb_optical_delay_nointerupt(uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_lane_num(uint32_t, const struct drv_opt_port_para *, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_present_status(uint32_t, const struct drv_opt_port_para *, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_physical_present_status(uint32_t, const struct drv_opt_port_para *, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_common_info(uint32_t, const struct drv_opt_port_para *, uint32_t, char *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_trans_distance(uint32_t, const struct drv_opt_port_para *, struct drv_opt_distance *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_los_status(uint32_t, const struct drv_opt_port_para *, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_tx_fault_status(uint32_t, const struct drv_opt_port_para *, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_ddm_info(uint32_t, const struct drv_opt_port_para *, uint32_t, struct drv_opt_ddm_value *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_ddm_warning_info(uint32_t, const struct drv_opt_port_para *, uint32_t, uint32_t,
                                      struct drv_opt_ddm_warning *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_ddm_alarm_info(uint32_t, const struct drv_opt_port_para *, uint32_t, uint32_t,
                                    struct drv_opt_ddm_warning *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_threshold_info(uint32_t, const struct drv_opt_port_para *, uint32_t, float *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_disable_status(uint32_t, const struct drv_opt_port_para *, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_set_disable_status(uint32_t, const struct drv_opt_port_para *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_physical_pull_status(uint32_t, const struct drv_opt_port_para *, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_encode_type(uint32_t, const struct drv_opt_port_para *, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_type(uint32_t, const struct drv_opt_port_para *, struct drv_opt_type *, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_diag_info_support_flag(uint32_t, const struct drv_opt_port_para *, uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_linear_attr(uint32_t, const struct drv_opt_port_para *, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_common_register_info(uint32_t, const struct drv_opt_port_para *, char *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_set_rate(uint32_t, const struct drv_opt_port_para *, uint8_t, uint8_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_bus_status_get(uint32_t, const struct drv_opt_port_para *, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_bus_status_recovery(uint32_t, const struct drv_opt_port_para *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_get_dfx_info(uint32_t, const struct drv_opt_port_para *, char *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_register_read(uint32_t, const struct drv_opt_port_para *, uint8_t, uint8_t, uint32_t, uint32_t *,
                               uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_opt_register_write(uint32_t, const struct drv_opt_port_para *, uint8_t, uint8_t, uint32_t,
                                const uint32_t *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
