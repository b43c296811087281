/* What a board is equipped with, chip by chip. */
#ifndef DRV_BOARD_CAPABILITY_H
#define DRV_BOARD_CAPABILITY_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* The name of what is fitted, at most size bytes. mode_id: the kind in the upper bits (0 FPGA, 0x10000 TPM, 0x20000
 * PLL, 0x30000 frequency source, 0x40000 voltage scaling), the number of the chip in the lower. */
uint32_t drv_board_capability_find(uint32_t inst_id, uint32_t mode_id, DRV_OUT_TEXT(size) char *name, uint32_t size);

/* What a chip reads at the pins that tell the bill of materials. */
uint32_t drv_board_get_bom_value(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *bom_value);

DRV_END_DECLS

#endif
