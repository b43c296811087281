/* Chips on the board's I2C buses: 1 to 256 bytes from one of their registers on.
 *
 * A register of 16 bits is two bytes, the higher one first. Behind the last register of a chip comes its first. */
#ifndef DRV_I2C_H
#define DRV_I2C_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_i2c_read(uint32_t inst_id, uint32_t chip_id, uint32_t address, DRV_OUT_BYTES(length) uint8_t *buffer,
                      uint32_t length);
uint32_t drv_i2c_write(uint32_t inst_id, uint32_t chip_id, uint32_t address, DRV_IN_BYTES(length) const uint8_t *buffer,
                       uint32_t length);

/* Four bytes as one number, the first of them the lowest. */
uint32_t drv_i2c_read_u32(uint32_t inst_id, uint32_t chip_id, uint32_t address, DRV_OUT uint32_t *value);
uint32_t drv_i2c_write_u32(uint32_t inst_id, uint32_t chip_id, uint32_t address, uint32_t value);

DRV_END_DECLS

#endif
