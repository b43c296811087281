/* Fan trays, by the slot that they are in, and the fans of a tray, counted from 0. They are seen from the main
 * processing units.
 *
 * What this tray or fan cannot tell or do is refused with DRV_NOT_SUPPORTED. An absent tray answers for its presence
 * and its histories alone. */
#ifndef DRV_FAN_H
#define DRV_FAN_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* All fans of the tray, where an operation says that it takes it. */
#define DRV_FAN_ALL 0xFFFFFFFFU

/* An image: its CRC-16 (drv_checksum.h) of two bytes, the more significant first, then 1024 bytes, filled with
 * zeros. */
#define DRV_FAN_IMAGE_SIZE 1026U

/* Brings the controller of the tray up and down. It takes a while after init until the operation is complete; the fans
 * turn on their own meanwhile. While it is down it answers for presence, histories and the number of fans alone. Both
 * may be done twice. */
uint32_t drv_fan_init(uint32_t slot_id);
uint32_t drv_fan_exit(uint32_t slot_id);

/* status: 0 complete, 1 not yet. operation: 0 init. fan_id may be DRV_FAN_ALL: complete when it is for all. */
uint32_t drv_fan_get_operation_complete_status(uint32_t slot_id, uint32_t fan_id, uint32_t operation,
                                               DRV_OUT uint32_t *status);

/* Presence. online: 1 present, 0 absent: the other way round than boards. plugged: 1 when the tray came or went since
 * it was asked last. */
uint32_t drv_fan_get_online_status(uint32_t slot_id, DRV_OUT uint32_t *online);
uint32_t drv_fan_get_history_plug_status(uint32_t slot_id, DRV_OUT uint32_t *plugged);

/* How many fans the tray has. */
uint32_t drv_fan_get_num(uint32_t slot_id, DRV_OUT uint32_t *num);

/* direct: 1 front to back, 0 back to front. */
uint32_t drv_fan_get_wind_direct(uint32_t slot_id, DRV_OUT uint32_t *direct);

/* status: 1 when the supply voltage of the tray failed since it was asked last. */
uint32_t drv_fan_get_volstatus_history(uint32_t slot_id, DRV_OUT uint32_t *status);

/* Whether the speed can be set, and whether it can be read: 1 yes, 0 no. */
uint32_t drv_fan_get_controlable(uint32_t slot_id, DRV_OUT uint32_t *controlable);
uint32_t drv_fan_get_detectable(uint32_t slot_id, DRV_OUT uint32_t *detectable);

/* status: 0 the fan turns as it should, 1 stalled. */
uint32_t drv_fan_get_status(uint32_t slot_id, uint32_t fan_id, DRV_OUT uint32_t *status);

/* alarm: 0 controller was reset, 1 hardware, 2 speed is not reached, 3 not plugged in, 4 motor, 5 I2C, 6 ability file.
 * status: 0 no alarm, 1 alarm. */
uint32_t drv_fan_get_alarm(uint32_t slot_id, uint32_t fan_id, uint32_t alarm, DRV_OUT uint32_t *status);

/* What is measured, in 1/min and in percent of max_speed. What is set is reached after a while. fan_id of a set may be
 * DRV_FAN_ALL; percent: 0-100. */
uint32_t drv_fan_get_speed(uint32_t slot_id, uint32_t fan_id, DRV_OUT uint32_t *speed);
uint32_t drv_fan_get_max_speed(uint32_t slot_id, uint32_t fan_id, DRV_OUT uint32_t *max_speed);
uint32_t drv_fan_get_speed_percent(uint32_t slot_id, uint32_t fan_id, DRV_OUT uint32_t *percent);
uint32_t drv_fan_set_speed_percent(uint32_t slot_id, uint32_t fan_id, uint32_t percent);

/* Steps of the speed, 1 to max_shift. A fan is in the lowest one that its speed does not exceed. fan_id of a set may be
 * DRV_FAN_ALL. Speeds in 1/min, powers in W. */
uint32_t drv_fan_get_shift(uint32_t slot_id, uint32_t fan_id, DRV_OUT uint32_t *shift);
uint32_t drv_fan_set_shift(uint32_t slot_id, uint32_t fan_id, uint32_t shift);
uint32_t drv_fan_get_max_shift(uint32_t slot_id, uint32_t fan_id, DRV_OUT uint32_t *max_shift);
uint32_t drv_fan_get_max_speed_by_shift(uint32_t slot_id, uint32_t fan_id, uint32_t shift, DRV_OUT uint32_t *max_speed);
uint32_t drv_fan_get_max_power_by_shift(uint32_t slot_id, uint32_t fan_id, uint32_t shift, DRV_OUT uint32_t *max_power);
uint32_t drv_fan_get_max_power_of_curshift(uint32_t slot_id, uint32_t fan_id, DRV_OUT uint32_t *max_power);
uint32_t drv_fan_get_max_power(uint32_t slot_id, uint32_t fan_id, DRV_OUT uint32_t *max_power);

/* The supply of a fan: 1 on, 0 off. fan_id of a set may be DRV_FAN_ALL. */
uint32_t drv_fan_set_power(uint32_t slot_id, uint32_t fan_id, uint32_t power);
uint32_t drv_fan_get_power(uint32_t slot_id, uint32_t fan_id, DRV_OUT uint32_t *power);

/* type: 0, the lamp of the tray. color: 0 off, 1 green, 2 red, 4 yellow. */
uint32_t drv_fan_set_led(uint32_t slot_id, uint32_t type, uint32_t color);
uint32_t drv_fan_get_led(uint32_t slot_id, uint32_t type, DRV_OUT uint32_t *color);

/* type: 1 PCB version as text; images of DRV_FAN_IMAGE_SIZE bytes: 2 electronic label, 3 ability file, 6 expanded
 * electronic label. len: room in the area on entry, how many bytes were written into it on return, the terminator of a
 * text among them. An image that is set is a whole one and bears its CRC-16. */
uint32_t drv_fan_get_board_property(uint32_t slot_id, uint32_t type, DRV_OUT_BYTES(len) uint8_t *buffer,
                                    DRV_INOUT uint32_t *len);
uint32_t drv_fan_set_board_property(uint32_t slot_id, uint32_t type, DRV_IN_BYTES(len) const uint8_t *buffer,
                                    uint32_t len);

DRV_END_DECLS

#endif
