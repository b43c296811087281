/* Slots of the chassis. */
#ifndef DRV_SLOT_H
#define DRV_SLOT_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* The slots of one type, ascending: a count, and one byte per slot number. */
#define DRV_SLOT_LIST_MAX 128U

struct drv_slot_list {
    uint32_t num;
    uint8_t slot_id[128];
};

DRV_STATIC_ASSERT(sizeof(struct drv_slot_list) == 132, "slot list crosses the driver interface");
DRV_STATIC_ASSERT(offsetof(struct drv_slot_list, slot_id) == 4, "slot list crosses the driver interface");

/* Slot types: 1 MPU, 2 LPU, 3 SFU, 4 CMU, 5 fan, 6 power, 7 PIC, 8 CXP, 9 clock, 10 LCD, 11 disk. */
uint32_t drv_slot_get_type(uint32_t slot_id, DRV_OUT uint32_t *type);

/* First and last slot of the chassis, both included. */
uint32_t drv_slot_get_range(DRV_OUT uint32_t *slot_min, DRV_OUT uint32_t *slot_max);

uint32_t drv_slot_get_num(uint32_t type, DRV_OUT uint32_t *num);
uint32_t drv_slot_get_start_num(uint32_t type, DRV_OUT uint32_t *start_num);
uint32_t drv_slot_get_list(uint32_t type, DRV_OUT struct drv_slot_list *list);

DRV_END_DECLS

#endif
