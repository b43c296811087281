/* Sub-boards: boards mounted on the board the program runs on. */
#ifndef DRV_SUBBOARD_H
#define DRV_SUBBOARD_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_subboard_get_type(uint32_t inst_id, uint32_t subboard_id, DRV_OUT uint32_t *type);
uint32_t drv_subboard_get_pcb_ver(uint32_t inst_id, uint32_t subboard_id, DRV_OUT uint32_t *ver);
uint32_t drv_subboard_get_bom_ver(uint32_t inst_id, uint32_t subboard_id, DRV_OUT uint32_t *ver);
uint32_t drv_subboard_get_bom_id(uint32_t inst_id, uint32_t subboard_id, DRV_OUT uint32_t *bom_id);

/* status: 0 present, 1 absent. The second form writes its findings as text, at most size bytes. */
uint32_t drv_subboard_get_online_status(uint32_t inst_id, uint32_t subboard_id, DRV_OUT uint32_t *status);
uint32_t drv_subboard_get_online_status_ex(uint32_t inst_id, uint32_t subboard_id, DRV_OUT uint32_t *status,
                                           DRV_OUT_TEXT(size) char *dfx, uint32_t size);

DRV_END_DECLS

#endif
