/* Clock synthesisers, chips with a phase-locked loop: registers of 8 bits. */
#ifndef DRV_PLL_H
#define DRV_PLL_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_pll_get_reg(uint32_t inst_id, uint32_t chip_id, uint32_t reg, DRV_OUT uint32_t *value);
uint32_t drv_pll_set_reg(uint32_t inst_id, uint32_t chip_id, uint32_t reg, uint32_t value);

/* Puts the registers as the board needs them; the loop locks on its reference some time afterwards. */
uint32_t drv_pll_initialization(uint32_t inst_id, uint32_t chip_id);

/* num registers from start on, as text. */
uint32_t drv_pll_reg_dump(uint32_t inst_id, uint32_t chip_id, uint32_t start, uint32_t num,
                          DRV_OUT_TEXT(len) char *buffer, uint32_t len);

DRV_END_DECLS

#endif
