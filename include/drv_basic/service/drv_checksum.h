/* Checksums of data in memory. */
#ifndef DRV_CHECKSUM_H
#define DRV_CHECKSUM_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* CRC-16 with polynomial 0x1021 and all ones to begin with: the one that images of fan trays bear. Of the text
 * "123456789" it is 0x29B1, of no bytes 0xFFFF. */
uint32_t drv_crc16_checksum(DRV_IN_BYTES(len) const uint8_t *data, uint32_t len, DRV_OUT uint16_t *crc16);

/* CRC-32 of Ethernet frames: reflected, polynomial 0x04C11DB7, all ones to begin with, inverted. Of the text
 * "123456789" it is 0xCBF43926, of no bytes 0. */
uint32_t drv_crc32_checksum(DRV_IN_BYTES(len) const uint8_t *data, uint32_t len, DRV_OUT uint32_t *crc32);

DRV_END_DECLS

#endif
