/* Dying gasp: when the power fails, cards are told in time to send a last message. */
#ifndef DRV_DYINGGASP_H
#define DRV_DYINGGASP_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_dyinggasp_init(uint32_t inst_id);
uint32_t drv_dyinggasp_deinit(uint32_t inst_id);

/* enable: 1 does to the cards what a power failure would, until it is 0 again. */
uint32_t drv_dyinggasp_set_simulation_enable(uint32_t inst_id, uint32_t enable);

/* board_id: the card, by its slot or its number on the board. enable: 1 when it is to be told. */
uint32_t drv_dyinggasp_set_enable(uint32_t inst_id, uint32_t board_id, uint32_t enable);

DRV_END_DECLS

#endif
