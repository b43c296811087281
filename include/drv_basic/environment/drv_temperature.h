/* Temperature sensors: values and thresholds in degrees Celsius, below zero too. */
#ifndef DRV_TEMPERATURE_H
#define DRV_TEMPERATURE_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_temperature_init(uint32_t inst_id);
uint32_t drv_temperature_exit(uint32_t inst_id);
uint32_t drv_temperature_get_value(uint32_t inst_id, uint32_t temperature_id, DRV_OUT int32_t *value);

/* That of the hottest sensor of the board the program runs on. */
uint32_t drv_temperature_get_board_value(DRV_OUT int32_t *value);

uint32_t drv_temperature_get_warning_th(uint32_t inst_id, uint32_t temperature_id, DRV_OUT int32_t *low_th,
                                        DRV_OUT int32_t *high_th);
uint32_t drv_temperature_set_warning_th(uint32_t inst_id, uint32_t temperature_id, int32_t low_th, int32_t high_th);
uint32_t drv_temperature_get_alarm_th(uint32_t inst_id, uint32_t temperature_id, DRV_OUT int32_t *low_th,
                                      DRV_OUT int32_t *high_th);
uint32_t drv_temperature_set_alarm_th(uint32_t inst_id, uint32_t temperature_id, int32_t low_th, int32_t high_th);

/* alarm_status: 0 within all thresholds, 1 beyond a warning threshold, 2 beyond an alarm threshold. */
uint32_t drv_temperature_get_alarm(uint32_t inst_id, uint32_t temperature_id, DRV_OUT uint32_t *alarm_status);

/* What the sensor is called, at most size bytes. */
uint32_t drv_temperature_get_node_desc(uint32_t inst_id, uint32_t temperature_id, DRV_OUT_TEXT(size) char *desc,
                                       uint32_t size);

DRV_END_DECLS

#endif
