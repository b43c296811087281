#include "drv_mng_eth/drv_meth.h"

uint32_t drv_meth_init(uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_exit(uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_get_port_num(uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_set_switch_flag(uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_is_readable(uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_get_rx_pkt(uint32_t, uint8_t *, uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_register_callback(uint32_t, drv_meth_rx_callback, void *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_tx_pkt(uint32_t, const uint8_t *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_get_autonego(uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_get_speed(uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_get_media_type(uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_get_link_status(uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_get_mac(uint32_t, uint8_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_set_active_ornot(uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_set_shutdown(uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_get_phy_test(uint32_t, uint32_t *, char *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_read_reg(uint32_t, uint32_t, uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_write_reg(uint32_t, uint32_t, uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_set_led(uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_get_rx_packets(uint32_t, uint64_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_get_tx_packets(uint32_t, uint64_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_get_statistic(uint32_t, struct drv_meth_statistic *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_meth_dump_info(uint32_t, uint32_t, char *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
