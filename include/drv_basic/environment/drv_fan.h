/* Fan trays, by the slot that they are in. */
#ifndef DRV_FAN_H
#define DRV_FAN_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Presence. online: 1 present, 0 absent: the other way round than boards. */
uint32_t drv_fan_get_online_status(uint32_t slot_id, DRV_OUT uint32_t *online);

DRV_END_DECLS

#endif
