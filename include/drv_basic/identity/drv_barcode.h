/* Bar codes: one text area of 128 bytes per bar code. */
#ifndef DRV_BARCODE_H
#define DRV_BARCODE_H

#include "drv_types.h"

DRV_BEGIN_DECLS

#define DRV_BARCODE_SIZE 128U

uint32_t drv_barcode_init(uint32_t inst_id);
uint32_t drv_barcode_deinit(uint32_t inst_id);

/* len: bytes wanted, at most DRV_BARCODE_SIZE. A bar code that fills its area has no terminator. */
uint32_t drv_barcode_read(uint32_t inst_id, uint32_t barcode_id, DRV_OUT_BYTES(len) uint8_t *area, uint32_t len);
uint32_t drv_barcode_write(uint32_t inst_id, uint32_t barcode_id, DRV_IN_BYTES(len) const uint8_t *area, uint32_t len);

DRV_END_DECLS

#endif
