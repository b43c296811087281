/* Power detector chips: each measures a rail's voltage behind its shunt, and the current by the drop across it. */
#ifndef DRV_POWERDETEC_H
#define DRV_POWERDETEC_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* A chip that was left shows what it measured last, until it is started again. */
uint32_t drv_powerdetec_init_chip(uint32_t inst_id, uint32_t chip_id);
uint32_t drv_powerdetec_exit_chip(uint32_t inst_id, uint32_t chip_id);

/* In milliwatts. */
uint32_t drv_powerdetec_get_power(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *power);

/* Across the shunt in microvolts, of the rail in millivolts. */
uint32_t drv_powerdetec_get_shuntvoltage(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *voltage);
uint32_t drv_powerdetec_get_busvoltage(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *voltage);

uint32_t drv_powerdetec_get_chiptype(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *chiptype);

DRV_END_DECLS

#endif
