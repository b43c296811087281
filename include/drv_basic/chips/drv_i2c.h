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

/* A chip on an I2C bus of the base board, behind a channel of the bus's switch. Widths are in bits: 7 or 10 for the
 * address of the chip, 8, 16, 24 or 32 for the registers within it. */
#define DRV_I2C_BASEBUS_WRITE 0
#define DRV_I2C_BASEBUS_READ 1

struct drv_i2c_basebus_request {
    uint16_t channel;
    uint16_t slave_addr;
    uint32_t offset; /* the register that is the first */
    uint32_t reg_addr_width;
    uint32_t slave_addr_width;
    uint8_t direction; /* one of the two above */
    uint8_t reserved;  /* 0 */
    uint32_t length;
    DRV_INOUT_BYTES(length) uint8_t *data; /* may be null when length is 0 */
};
DRV_STATIC_ASSERT(sizeof(struct drv_i2c_basebus_request) == 24 + sizeof(void *), "the record crosses the interface");
DRV_STATIC_ASSERT(offsetof(struct drv_i2c_basebus_request, direction) == 16, "the record crosses the interface");
DRV_STATIC_ASSERT(offsetof(struct drv_i2c_basebus_request, length) == 20, "the record crosses the interface");
DRV_STATIC_ASSERT(offsetof(struct drv_i2c_basebus_request, data) == 24, "the record crosses the interface");

/* 1 to 256 bytes; the direction must be that of the operation. */
uint32_t drv_i2c_read_basebus(uint32_t inst_id, uint32_t bus_id, DRV_INOUT struct drv_i2c_basebus_request *request);
uint32_t drv_i2c_write_basebus(uint32_t inst_id, uint32_t bus_id, DRV_INOUT struct drv_i2c_basebus_request *request);

DRV_END_DECLS

#endif
