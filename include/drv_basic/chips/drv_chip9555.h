/* The 16-bit input/output expanders. Registers, each a pair for pins 0 to 7 and 8 to 15: 0 and 1 input, 2 and 3 output,
 * 4 and 5 polarity (1 inverts what an input reads), 6 and 7 configuration (1 is an input). */
#ifndef DRV_CHIP9555_H
#define DRV_CHIP9555_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* offset: 0 to 7. value: 0 to 0xFF. */
uint32_t drv_chip9555_get_reg(uint32_t inst_id, uint32_t chip_id, uint32_t offset, DRV_OUT uint32_t *value);
uint32_t drv_chip9555_set_reg(uint32_t inst_id, uint32_t chip_id, uint32_t offset, uint32_t value);

/* pin: 0 to 15. value: 0 low, 1 high; as the input register shows it. */
uint32_t drv_chip9555_get_level(uint32_t inst_id, uint32_t chip_id, uint32_t pin, DRV_OUT uint32_t *value);

/* Only a pin that is configured as an output is driven. */
uint32_t drv_chip9555_set_level(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t value);

/* 1 is a pin that reads inverted as an input. */
uint32_t drv_chip9555_get_polar(uint32_t inst_id, uint32_t chip_id, uint32_t pin, DRV_OUT uint32_t *polarity);
uint32_t drv_chip9555_set_polar(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t polarity);

/* orientation: 0 output, 1 input. */
uint32_t drv_chip9555_get_orientation(uint32_t inst_id, uint32_t chip_id, uint32_t pin, DRV_OUT uint32_t *orientation);
uint32_t drv_chip9555_set_indirection(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t orientation);

/* All registers as text, a pair each. */
uint32_t drv_chip9555_dump(uint32_t inst_id, uint32_t chip_id, DRV_OUT_TEXT(len) char *text, uint32_t len);

DRV_END_DECLS

#endif
