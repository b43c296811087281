/* Chips on the board's SPI buses: frames of bytes, whose layout is that of the chip.
 *
 * A frame that the chip does not know is refused. Beside chips on the board itself the CPLDs of its plug-in cards are
 * reached this way. */
#ifndef DRV_SPI_H
#define DRV_SPI_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Before the first and after the last transfer of a program. */
uint32_t drv_spi_init(uint32_t inst_id);
uint32_t drv_spi_exit(uint32_t inst_id);

uint32_t drv_spi_write(uint32_t inst_id, uint32_t chip_id, DRV_IN_BYTES(length) const uint8_t *frame, uint32_t length);

/* The chip's answer to a command, in one transfer. */
uint32_t drv_spi_read(uint32_t inst_id, uint32_t chip_id, DRV_IN_BYTES(command_length) const uint8_t *command,
                      uint32_t command_length, DRV_OUT_BYTES(length) uint8_t *buffer, uint32_t length);

DRV_END_DECLS

#endif
