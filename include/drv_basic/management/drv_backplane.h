/* The backplane, as the main processing units read it. There is one, so no operation has an instance. */
#ifndef DRV_BACKPLANE_H
#define DRV_BACKPLANE_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_backplane_get_type(DRV_OUT uint32_t *type);
uint32_t drv_backplane_get_pcb_ver(DRV_OUT uint32_t *pcb_ver);

/* What its traces are made for, in Mbit/s. */
uint32_t drv_backplane_get_serdes_speed(DRV_OUT uint32_t *speed);

/* The pins that tell which backplane it is. check: 0 good. The second writes its findings as text (dfx) as well. */
uint32_t drv_backplane_check_id(DRV_OUT uint32_t *check);
uint32_t drv_backplane_fmea_check_id(DRV_OUT uint32_t *check_result, DRV_OUT_TEXT(size) char *dfx, uint32_t size);

DRV_END_DECLS

#endif
