/* Voltage rails: values and thresholds in millivolts. */
#ifndef DRV_VOLTAGE_H
#define DRV_VOLTAGE_H

#include "drv_types.h"

DRV_BEGIN_DECLS

uint32_t drv_voltage_init(uint32_t inst_id);
uint32_t drv_voltage_exit(uint32_t inst_id);
uint32_t drv_voltage_get_value(uint32_t inst_id, uint32_t voltage_id, DRV_OUT uint32_t *value);
uint32_t drv_voltage_set_value(uint32_t inst_id, uint32_t voltage_id, uint32_t value);
uint32_t drv_voltage_get_warning_th(uint32_t inst_id, uint32_t voltage_id, DRV_OUT uint32_t *low_th,
                                    DRV_OUT uint32_t *high_th);
uint32_t drv_voltage_set_warning_th(uint32_t inst_id, uint32_t voltage_id, uint32_t low_th, uint32_t high_th);
uint32_t drv_voltage_get_alarm_th(uint32_t inst_id, uint32_t voltage_id, DRV_OUT uint32_t *low_th,
                                  DRV_OUT uint32_t *high_th);
uint32_t drv_voltage_set_alarm_th(uint32_t inst_id, uint32_t voltage_id, uint32_t low_th, uint32_t high_th);

/* alarm_type: 0 alarm thresholds, 1 warning thresholds. alarm_status: 0 none, 1 below, 2 above; the reason is written
 * as text into an area of len bytes. */
uint32_t drv_voltage_get_alarm(uint32_t inst_id, uint32_t voltage_id, uint32_t alarm_type,
                               DRV_OUT uint32_t *alarm_status, DRV_OUT_TEXT(len) char *buffer, uint32_t len);

/* The highest and the lowest value since power-on. */
uint32_t drv_voltage_get_history_value(uint32_t inst_id, uint32_t voltage_id, DRV_OUT uint32_t *max_value,
                                       DRV_OUT uint32_t *min_value);

/* result: 0 good, else faults found; the findings are written as text. */
uint32_t drv_voltage_check_vrm_alert(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *result,
                                     DRV_OUT_TEXT(len) char *buffer, uint32_t len);
uint32_t drv_voltage_check_power(uint32_t inst_id, uint32_t power_id, DRV_OUT uint32_t *result,
                                 DRV_OUT_TEXT(len) char *buffer, uint32_t len);

/* The state of all power stages as text, at most len bytes. */
uint32_t drv_voltage_dump_power(uint32_t inst_id, DRV_OUT_TEXT(len) char *buffer, uint32_t len);

/* The rail's name, at most size bytes. */
uint32_t drv_voltage_get_node_desc(uint32_t inst_id, uint32_t voltage_id, DRV_OUT_TEXT(size) char *desc, uint32_t size);

DRV_END_DECLS

#endif
