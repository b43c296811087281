/* Temperature detector chips. */
#ifndef DRV_TEMPDETEC_H
#define DRV_TEMPDETEC_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* What one channel of the chip measures, in degrees Celsius. */
uint32_t drv_tempdetec_get_temperature(uint32_t inst_id, uint32_t chip_id, uint32_t channel,
                                       DRV_OUT int32_t *temperature);

DRV_END_DECLS

#endif
