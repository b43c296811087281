/* Plug-in cards: their part of the board description, and their programmable logic. */
#ifndef DRV_PIC_H
#define DRV_PIC_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_pic_xml_load(uint32_t inst_id);
uint32_t drv_pic_xml_unload(uint32_t inst_id);

/* Loads the CPLD of a card, which does not answer meanwhile and runs the new logic when this returns. inst_id is the
 * card and chip_id 0, or inst_id is the board and chip_id the number of the card, as on the SPI buses. The image says
 * which part it is for, and has a checksum; another one is refused and changes nothing. */
uint32_t drv_logic_pic_load(uint32_t inst_id, uint32_t chip_id, DRV_IN_BYTES(length) const uint8_t *buffer,
                            uint32_t length);

DRV_END_DECLS

#endif
