/* Non-volatile RAM: two chips that mirror each other. What is written to one is in the other once they are in step. */
#ifndef DRV_NVRAM_H
#define DRV_NVRAM_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* offset and len: bytes within the chip. */
uint32_t drv_nvram_read(uint32_t inst_id, uint32_t chip_id, uint32_t offset, DRV_OUT_BYTES(len) uint8_t *buffer,
                        uint32_t len);
uint32_t drv_nvram_write(uint32_t inst_id, uint32_t chip_id, uint32_t offset, DRV_IN_BYTES(len) const uint8_t *buffer,
                         uint32_t len);

/* status: 0 when both chips hold the same; bit 0: something is still on its way from one to the other; bit 1: a chip
 * does not answer, and nothing is mirrored. Boards have one pair of chips, number 0. */
uint32_t drv_nvram_get_sync_status(uint32_t inst_id, uint32_t pair_id, DRV_OUT uint32_t *status);

DRV_END_DECLS

#endif
