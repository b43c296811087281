/* Soft resets: the processor starts again while packets go on. */
#ifndef DRV_SOFTRESET_H
#define DRV_SOFTRESET_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* How the board started last. reset_type: 0 soft reset, 1 hard reset, 2 power-on. */
uint32_t drv_softreset_get_reset_type(uint32_t inst_id, DRV_OUT uint32_t *reset_type);

DRV_END_DECLS

#endif
