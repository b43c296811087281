/* Chips on the processor's local bus: 1 to 256 bytes from one of their registers on.
 *
 * A register of 16 bits is two bytes, the higher one first. Behind the last register of a chip comes its first. */
#ifndef DRV_LOCALBUS_H
#define DRV_LOCALBUS_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Before the first and after the last transfer of a program. */
uint32_t drv_localbus_init(uint32_t inst_id);
uint32_t drv_localbus_exit(uint32_t inst_id);

uint32_t drv_localbus_read(uint32_t inst_id, uint32_t chip_id, uint32_t address, DRV_OUT_BYTES(length) uint8_t *buffer,
                           uint32_t length);
uint32_t drv_localbus_write(uint32_t inst_id, uint32_t chip_id, uint32_t address,
                            DRV_IN_BYTES(length) const uint8_t *buffer, uint32_t length);

DRV_END_DECLS

#endif
