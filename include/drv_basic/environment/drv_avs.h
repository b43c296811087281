/* Adaptive voltage scaling controllers. */
#ifndef DRV_AVS_H
#define DRV_AVS_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Diagnostic registers of all controllers as text, at most len bytes. */
uint32_t drv_avs_dump_dfx_info(uint32_t inst_id, DRV_OUT_TEXT(len) char *buffer, uint32_t len);

DRV_END_DECLS

#endif
