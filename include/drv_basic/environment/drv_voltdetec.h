/* Voltage detector chips. */
#ifndef DRV_VOLTDETEC_H
#define DRV_VOLTDETEC_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_voltdetec_init(uint32_t inst_id);
uint32_t drv_voltdetec_exit(uint32_t inst_id);

/* What one channel of the chip measures, in millivolts. */
uint32_t drv_voltdetec_get_voltage(uint32_t inst_id, uint32_t chip_id, uint32_t channel, DRV_OUT uint32_t *voltage);

DRV_END_DECLS

#endif
