/* Flash of the board: by section, by MTD partition, and whether there is NAND beside it. Sections and partitions are
 * two views of the same chips and may overlap.
 *
 * A section is written through: what is not erased yet is erased on the way. A partition is programmed as it stands:
 * bits that are 0 stay 0. */
#ifndef DRV_FLASH_H
#define DRV_FLASH_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* offset and len: bytes within the section. */
uint32_t drv_flash_read(uint32_t inst_id, uint32_t section_id, uint32_t offset, DRV_OUT_BYTES(len) uint8_t *buffer,
                        uint32_t len);
uint32_t drv_flash_write(uint32_t inst_id, uint32_t section_id, uint32_t offset,
                         DRV_IN_BYTES(len) const uint8_t *buffer, uint32_t len);

/* Of the own board; offset and len: bytes within the partition. In NAND whole pages are programmed. */
uint32_t drv_flash_mtd_read(DRV_IN_TEXT const char *mtd_name, uint32_t offset, DRV_OUT_BYTES(len) uint8_t *buffer,
                            uint32_t len);
uint32_t drv_flash_mtd_write(DRV_IN_TEXT const char *mtd_name, uint32_t offset, DRV_IN_BYTES(len) const uint8_t *buffer,
                             uint32_t len);

/* is_exist: 1 where the own board has NAND. num: of its partitions. */
uint32_t drv_flash_get_nand_is_exist(DRV_OUT uint32_t *is_exist);
uint32_t drv_flash_get_nand_part_num(DRV_OUT uint32_t *num);

DRV_END_DECLS

#endif
