/* Master/slave control of the two main processing units. */
#ifndef DRV_MSC_H
#define DRV_MSC_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* state: 0 master, 1 slave, 2 abnormal. sw_mode: 0 scc, 1 xsc, 2 all. */
uint32_t drv_msc_get_state(uint32_t inst_id, uint32_t sw_mode, DRV_OUT uint32_t *state);

DRV_END_DECLS

#endif
