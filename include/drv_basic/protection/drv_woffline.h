/* The watch over the two lines that power the board: what it finds, its interrupt, and what it may do about it.
 *
 * chip_id is the side of a line: 0 down, 1 up. */
#ifndef DRV_WOFFLINE_H
#define DRV_WOFFLINE_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_woffline_init(uint32_t inst_id);
uint32_t drv_woffline_deinit(uint32_t inst_id);

/* enable: 0 or 1. A watch that is off takes both lines for powered. */
uint32_t drv_woffline_set_en_state(uint32_t inst_id, uint32_t enable);
uint32_t drv_woffline_get_en_state(uint32_t inst_id, DRV_OUT uint32_t *enable);

/* state: 0 powered, 1 without power; of the board itself, or of the other main processing unit. */
uint32_t drv_woffline_get_state(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *state);
uint32_t drv_woffline_get_peer_state(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *state);

/* The interrupt is a level: state is 1 for as long as it is enabled and the line is without power. */
uint32_t drv_woffline_set_irq_enable(uint32_t inst_id, uint32_t enable);
uint32_t drv_woffline_get_irq_enable(uint32_t inst_id, DRV_OUT uint32_t *enable);
uint32_t drv_woffline_get_irq_state(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *state);

/* Whether the board is cut off from the switch fabrics while a line is without power. */
uint32_t drv_woffline_set_sfu_isolate_en(uint32_t inst_id, uint32_t enable);
uint32_t drv_woffline_get_sfu_isolate_en(uint32_t inst_id, DRV_OUT uint32_t *enable);

DRV_END_DECLS

#endif
