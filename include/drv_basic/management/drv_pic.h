/* Plug-in cards: their part of the board description. */
#ifndef DRV_PIC_H
#define DRV_PIC_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_pic_xml_load(uint32_t inst_id);
uint32_t drv_pic_xml_unload(uint32_t inst_id);

DRV_END_DECLS

#endif
