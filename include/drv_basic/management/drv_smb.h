/* Serial management bus between the boards of the chassis: error counters per slot. */
#ifndef DRV_SMB_H
#define DRV_SMB_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_smb_get_tx_err_count(uint32_t inst_id, uint32_t slot_id, DRV_OUT uint32_t *count);
uint32_t drv_smb_get_rx_err_count(uint32_t inst_id, uint32_t slot_id, DRV_OUT uint32_t *count);

DRV_END_DECLS

#endif
