/* Adaptive voltage scaling controllers: each trims a core rail. */
#ifndef DRV_AVS_H
#define DRV_AVS_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Diagnostic registers of all controllers as text, at most len bytes. */
uint32_t drv_avs_dump_dfx_info(uint32_t inst_id, DRV_OUT_TEXT(len) char *buffer, uint32_t len);

/* Phases, status byte and status word of one controller. result: 0 good, else faults found; these are written as text,
 * unless there is no area: a null pointer with length 0. */
uint32_t drv_avs_check_phase_fault(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *result,
                                   DRV_OUT_TEXT(len) char *buffer, uint32_t len);
uint32_t drv_avs_check_chip(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *result,
                            DRV_OUT_TEXT(len) char *buffer, uint32_t len);
uint32_t drv_avs_check_word_fault(uint32_t inst_id, uint32_t chip_id, DRV_OUT uint32_t *result,
                                  DRV_OUT_TEXT(len) char *buffer, uint32_t len);

/* item: 0 input voltage, 1 output voltage, 2 target voltage, all in millivolts; 3 status byte, 4 status word. */
uint32_t drv_avs_get_item_value(uint32_t inst_id, uint32_t chip_id, uint32_t item, DRV_OUT uint32_t *value);

/* The same for people, with its name and unit. */
uint32_t drv_avs_get_item_string(uint32_t inst_id, uint32_t chip_id, uint32_t item, DRV_OUT_TEXT(len) char *buffer,
                                 uint32_t len);

DRV_END_DECLS

#endif
