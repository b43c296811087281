/* Panel lamps. */
#ifndef DRV_LED_H
#define DRV_LED_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Board-specific patch functions: the text is read, and the answer is written in its place. */
uint32_t drv_led_patch_func1(uint32_t inst_id, DRV_INOUT_TEXT(size) char *buffer, uint32_t size);
uint32_t drv_led_patch_func2(uint32_t inst_id, DRV_INOUT_TEXT(size) char *buffer, uint32_t size);

/* Lamp test: enable is 0 or 1; ctrl_enable hands the lamps over to the lamp-test logic. */
uint32_t drv_led_set_lamptest_enable(uint32_t inst_id, uint32_t enable);
uint32_t drv_led_get_lamptest_enable(uint32_t inst_id, DRV_OUT uint32_t *enable);
uint32_t drv_led_set_lamptest_ctrl_enable(uint32_t inst_id, uint32_t enable);
uint32_t drv_led_get_lamptest_ctrl_enable(uint32_t inst_id, DRV_OUT uint32_t *enable);
uint32_t drv_led_get_lamptest_support(uint32_t inst_id, DRV_OUT uint32_t *support);
uint32_t drv_led_get_lamptest_status(uint32_t inst_id, DRV_OUT uint32_t *status);

/* color: 0 off, 1 green, 2 red, 3 yellow; freq: blinks, in tenths of a hertz, 0 steady. */
uint32_t drv_led_get_color(uint32_t inst_id, uint32_t led_type, DRV_OUT uint32_t *color, DRV_OUT uint32_t *freq);
uint32_t drv_led_set_color(uint32_t inst_id, uint32_t led_type, uint32_t color, uint32_t freq);

/* mode: 0 driven by hardware, 1 driven by software. */
uint32_t drv_led_get_mode(uint32_t inst_id, uint32_t led_type, DRV_OUT uint32_t *mode);

DRV_END_DECLS

#endif
