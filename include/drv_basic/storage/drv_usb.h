/* USB ports of the board and the sticks in them. */
#ifndef DRV_USB_H
#define DRV_USB_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_usb_init(void);
uint32_t drv_usb_deinit(void);

/* How many ports the board has. */
uint32_t drv_usb_get_num(DRV_OUT uint32_t *num);

/* online: 1 when a stick is plugged in, has power and answers. */
uint32_t drv_usb_get_online_status(uint32_t usb_id, DRV_OUT uint32_t *online);

/* The following ask the stick itself: it must be on line. devmap: the device that stands for it; size in MiB. */
uint32_t drv_usb_get_devmap(uint32_t usb_id, DRV_OUT_TEXT(len) char *devmap, uint32_t len);
uint32_t drv_usb_get_size(uint32_t usb_id, DRV_OUT uint32_t *size);
uint32_t drv_usb_get_partition_num(uint32_t usb_id, DRV_OUT uint32_t *num);

/* hotplug: 1 when sticks may come and go while the board runs. */
uint32_t drv_usb_get_hotplug_ability(uint32_t usb_id, DRV_OUT uint32_t *hotplug);

/* From then on, as long as the process runs, the driver log tells of sticks that come and go. */
uint32_t drv_usb_hotplug_regist_event(uint32_t usb_id);

/* The power switch of the port. */
uint32_t drv_usb_power_on(uint32_t usb_id);
uint32_t drv_usb_power_off(uint32_t usb_id);

/* fault: 0 none, 1 over-current, 2 the stick does not answer. */
uint32_t drv_usb_check_fault(uint32_t usb_id, DRV_OUT uint32_t *fault);

/* Switches the port off and on again. result: 0 when the fault is gone, 1 when it is back at once. */
uint32_t drv_usb_recover_fault(uint32_t usb_id, DRV_OUT uint32_t *result);

/* status: 0 within its limits, 1 too low, 2 too high. */
uint32_t drv_usb_check_voltage_status(uint32_t usb_id, DRV_OUT uint32_t *status);

/* The interrupt of the port's controller. */
uint32_t drv_usb_get_irq_no(uint32_t usb_id, DRV_OUT uint32_t *irq_no);

DRV_END_DECLS

#endif
