#include "drv_inner_eth/drv_ieth.h"

uint32_t drv_ieth_get_link_status(uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_ieth_set_loopback(uint32_t, uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_ieth_get_rx_packets(uint32_t, uint64_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_ieth_get_tx_packets(uint32_t, uint64_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_ieth_dump_info(uint32_t, uint32_t, char *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_ieth_get_statistic(uint32_t, struct drv_ieth_statistic *) {
    return DRV_NOT_SUPPORTED;
}
