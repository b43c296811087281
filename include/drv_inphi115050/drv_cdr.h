/* Clock-and-data-recovery chips: retimers between the switch fabric's lanes and the front ports, reached over the SMI
 * bus, which the caller brings up first. A library that a board may lack. */
#ifndef DRV_CDR_H
#define DRV_CDR_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* An interface of a chip and the rate of its lanes in Gbit/s: 10, 25 or 28. */
struct drv_cdr_interface {
    uint32_t inf_id;
    uint32_t chl_rate;
};

DRV_STATIC_ASSERT(sizeof(struct drv_cdr_interface) == 8, "interface selector crosses the driver interface");

/* First for the driver, then for all chips of the board; a chip that runs is left as it is. Destroying one forgets what
 * was set in it. */
uint32_t drv_cdr_soft_init(uint32_t inst_id);
uint32_t drv_cdr_init_chip(uint32_t inst_id);
uint32_t drv_cdr_destroy_chip(uint32_t inst_id, uint32_t chip_id);

/* Waits as long as lanes take to lock, half a second at most. An interface answers from then on, for the rate that it
 * was set up for. */
uint32_t drv_cdr_init_interface(uint32_t inst_id, uint32_t chip_id, DRV_IN const struct drv_cdr_interface *selector);
uint32_t drv_cdr_destroy_interface(uint32_t inst_id, uint32_t chip_id, DRV_IN const struct drv_cdr_interface *selector);

/* A chip is made of sub-chips, each with registers of its own; values have 16 bits. */
uint32_t drv_cdr_reg_read(uint32_t inst_id, uint32_t chip_id, uint32_t sub_chip_id, uint32_t reg_addr,
                          DRV_OUT uint32_t *value);
uint32_t drv_cdr_reg_write(uint32_t inst_id, uint32_t chip_id, uint32_t sub_chip_id, uint32_t reg_addr, uint32_t value);

/* Texts of several lines. */
uint32_t drv_cdr_get_interface_config(uint32_t inst_id, uint32_t chip_id,
                                      DRV_IN const struct drv_cdr_interface *selector, DRV_OUT_TEXT(size) char *text,
                                      uint32_t size);
uint32_t drv_cdr_get_interface_status(uint32_t inst_id, uint32_t chip_id,
                                      DRV_IN const struct drv_cdr_interface *selector, DRV_OUT_TEXT(size) char *text,
                                      uint32_t size);
uint32_t drv_cdr_get_digit_eye(uint32_t inst_id, uint32_t chip_id, DRV_IN const struct drv_cdr_interface *selector,
                               DRV_OUT_TEXT(size) char *text, uint32_t size);

/* dir: 0 the line's side, 1 the host's side. A link that is down is a result other than 0. */
uint32_t drv_cdr_get_interface_link(uint32_t inst_id, uint32_t chip_id, DRV_IN const struct drv_cdr_interface *selector,
                                    uint32_t dir, DRV_OUT uint32_t *status);

DRV_END_DECLS

#endif
