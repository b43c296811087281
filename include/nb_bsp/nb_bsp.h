/* Board support below the drivers: pins, reserved memory, plug-in cards. */
#ifndef NB_BSP_H
#define NB_BSP_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* level: 0 low, 1 high. */
uint32_t nb_gpio_read(uint32_t pin, DRV_OUT uint32_t *level);
uint32_t nb_gpio_write(uint32_t pin, uint32_t level);

/* Start and length, in bytes, of the memory that is kept from the kernel. */
uint32_t nb_get_himem_info(DRV_OUT uint64_t *start, DRV_OUT uint64_t *length);

/* The number, 0 to 255, of the card that a card selector names. */
uint32_t get_card_id(uint32_t inst_id, DRV_OUT uint32_t *card_id);

/* Where a section of a card's EEPROM lies, in bytes. */
uint32_t find_section_info_by_section(uint32_t inst_id, uint32_t section_id, DRV_OUT uint32_t *device_id,
                                      DRV_OUT uint32_t *offset, DRV_OUT uint32_t *size);

DRV_END_DECLS

#endif
