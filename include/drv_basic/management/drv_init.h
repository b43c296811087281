/* Bring-up of the drivers of a board or card. */
#ifndef DRV_INIT_H
#define DRV_INIT_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* slot: a plain slot number, or an instance selector as everywhere else. */
uint32_t drv_init_entry(uint32_t slot);
uint32_t drv_exit_entry(uint32_t slot);

DRV_END_DECLS

#endif
