/* Electronic labels: one text area of 1200 bytes per label. */
#ifndef DRV_ELABEL_H
#define DRV_ELABEL_H

#include "drv_types.h"

DRV_BEGIN_DECLS

#define DRV_ELABEL_SIZE 1200U

uint32_t drv_elabel_init(uint32_t inst_id);
uint32_t drv_elabel_deinit(uint32_t inst_id);

/* len: bytes wanted, at most DRV_ELABEL_SIZE. A label that fills its area has no terminator. */
uint32_t drv_elabel_read(uint32_t inst_id, uint32_t elabel_id, DRV_OUT_BYTES(len) uint8_t *area, uint32_t len);
uint32_t drv_elabel_write(uint32_t inst_id, uint32_t elabel_id, DRV_IN_BYTES(len) const uint8_t *area, uint32_t len);

DRV_END_DECLS

#endif
