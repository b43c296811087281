/* Dry contacts: inputs that sense whether an outside contact is closed, and outputs, relays that close one. Channels
 * from 1 on are inputs, from 100 on outputs. */
#ifndef DRV_DIGITAL_H
#define DRV_DIGITAL_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_digital_init(uint32_t inst_id);
uint32_t drv_digital_deinit(uint32_t inst_id);

/* mode: 1 a closed contact is status 1, 2 an open one. */
uint32_t drv_digital_set_mode(uint32_t inst_id, uint32_t chip_id, uint32_t mode);

/* Sets an output; reads an input, or where the contact of an output stands. status: 0 inactive, 1 active. */
uint32_t drv_digital_set_status(uint32_t inst_id, uint32_t chip_id, uint32_t status);
uint32_t drv_digital_get_status(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *status);

uint32_t drv_digital_get_in_num(uint32_t inst_id, DRV_OUT uint32_t *num);
uint32_t drv_digital_get_out_num(uint32_t inst_id, DRV_OUT uint32_t *num);

DRV_END_DECLS

#endif
