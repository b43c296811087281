/* Identity EEPROM, addressed by section. */
#ifndef DRV_EEPROM_H
#define DRV_EEPROM_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_eeprom_init(uint32_t inst_id);
uint32_t drv_eeprom_exit(uint32_t inst_id);

/* offset and len: bytes within the section. */
uint32_t drv_eeprom_read_data(uint32_t inst_id, uint32_t section_id, uint32_t offset,
                              DRV_OUT_BYTES(len) uint8_t *buffer, uint32_t len);
uint32_t drv_eeprom_write_data(uint32_t inst_id, uint32_t section_id, uint32_t offset,
                               DRV_IN_BYTES(len) const uint8_t *buffer, uint32_t len);

DRV_END_DECLS

#endif
