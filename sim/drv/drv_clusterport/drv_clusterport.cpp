#include "drv_clusterport/drv_clusterport.h"

uint32_t drv_clusterport_init() {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_clusterport_exit() {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_clusterport_get_phy_test(uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_clusterport_set_shut(uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_clusterport_get_speed(uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_clusterport_set_speed(uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_clusterport_get_mode(uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_clusterport_get_link_status(uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_clusterport_get_statistics(uint32_t, struct drv_clusterport_statistics *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_clusterport_reset(uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_clusterport_set_led(uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
