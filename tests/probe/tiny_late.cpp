// A driver library that is opened at run time.
#include "drv_basic/management/drv_smb.h"

uint32_t drv_smb_get_rx_err_count(uint32_t, uint32_t slot_id, uint32_t *count) {
    *count = slot_id * 10;
    return 0;
}

// Reaches the other operation of this library through the dynamic linker.
uint32_t drv_smb_get_tx_err_count(uint32_t inst_id, uint32_t slot_id, uint32_t *count) {
    const uint32_t ret = drv_smb_get_rx_err_count(inst_id, slot_id, count);
    *count += 1;
    return ret;
}
