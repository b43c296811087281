/* SATA disks of the board. */
#ifndef DRV_SATA_H
#define DRV_SATA_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* How many disks are on line. */
uint32_t drv_sata_get_num(DRV_OUT uint32_t *num);

/* status: 1 on line. A disk without power is not, nor one that is still starting. */
uint32_t drv_sata_get_online_status(uint32_t sata_id, DRV_OUT uint32_t *status);

/* The following ask the disk itself: it must be on line. */
uint32_t drv_sata_get_partition_num(uint32_t sata_id, DRV_OUT uint32_t *num);

/* speed: the generation of the link, 1 to 3. */
uint32_t drv_sata_get_property(uint32_t sata_id, DRV_OUT uint32_t *vendor, DRV_OUT uint32_t *speed,
                               DRV_OUT_TEXT(firm_size) char *firm, uint32_t firm_size,
                               DRV_OUT_TEXT(serial_size) char *serial, uint32_t serial_size);

/* In KiB. */
uint32_t drv_sata_get_capacity(uint32_t sata_id, DRV_OUT uint32_t *capacity);

/* In per cent. */
uint32_t drv_sata_get_remaining_life(uint32_t sata_id, DRV_OUT uint32_t *remaining_life);

/* The disk's attribute table as text. */
uint32_t drv_sata_get_smartinfo(uint32_t sata_id, DRV_OUT_TEXT(buf_len) char *buf, uint32_t buf_len);

/* The power switch of the bay; status: 1 on. */
uint32_t drv_sata_get_power_status(uint32_t sata_id, DRV_OUT uint32_t *status);
uint32_t drv_sata_power_on(uint32_t sata_id);
uint32_t drv_sata_power_off(uint32_t sata_id);

/* status: 0 when the disk sits fully in its connector; else the finding is written as text. */
uint32_t drv_sata_check_fullin_status(uint32_t sata_id, DRV_OUT uint32_t *status, DRV_OUT_TEXT(buf_len) char *buf,
                                      uint32_t buf_len);

DRV_END_DECLS

#endif
