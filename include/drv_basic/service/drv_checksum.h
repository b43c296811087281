/* Checksums of data in memory. */
#ifndef DRV_CHECKSUM_H
#define DRV_CHECKSUM_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* CRC-16 with polynomial 0x1021 and all ones to begin with: the one that images of fan trays bear. */
uint32_t drv_crc16_checksum(DRV_IN_BYTES(len) const uint8_t *data, uint32_t len, DRV_OUT uint16_t *crc16);

DRV_END_DECLS

#endif
