#include "drv_inphi115050/drv_cdr.h"

uint32_t drv_cdr_soft_init(uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cdr_init_chip(uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cdr_destroy_chip(uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cdr_init_interface(uint32_t, uint32_t, const struct drv_cdr_interface *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cdr_destroy_interface(uint32_t, uint32_t, const struct drv_cdr_interface *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cdr_reg_read(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cdr_reg_write(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cdr_get_interface_config(uint32_t, uint32_t, const struct drv_cdr_interface *, char *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cdr_get_interface_status(uint32_t, uint32_t, const struct drv_cdr_interface *, char *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cdr_get_digit_eye(uint32_t, uint32_t, const struct drv_cdr_interface *, char *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}
uint32_t drv_cdr_get_interface_link(uint32_t, uint32_t, const struct drv_cdr_interface *, uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
