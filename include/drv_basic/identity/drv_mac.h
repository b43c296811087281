/* MAC address storage: per type a count and a base address, the others follow on it. */
#ifndef DRV_MAC_H
#define DRV_MAC_H

#include "drv_types.h"

DRV_BEGIN_DECLS

#define DRV_MAC_SIZE 6U

uint32_t drv_mac_init(uint32_t inst_id);
uint32_t drv_mac_deinit(uint32_t inst_id);

/* The base address of a type: six bytes, most significant first. */
uint32_t drv_mac_set_addr(uint32_t inst_id, uint32_t type_id, DRV_IN_BYTES(6) const uint8_t *addr);
uint32_t drv_mac_get_addr(uint32_t inst_id, uint32_t type_id, DRV_OUT_BYTES(6) uint8_t *addr);

/* How many addresses a type has. reserved is 0. */
uint32_t drv_mac_set_num(uint32_t inst_id, uint32_t type_id, uint32_t num, uint32_t reserved);
uint32_t drv_mac_get_num(uint32_t inst_id, uint32_t type_id, DRV_OUT uint32_t *num, uint32_t reserved);

/* Sets the first of num consecutive addresses. */
uint32_t drv_mac_set_addr_num(uint32_t inst_id, uint32_t type_id, uint32_t num, DRV_IN_BYTES(6) const uint8_t *addr);

/* Reads num addresses of six bytes each into an area of size bytes. */
uint32_t drv_mac_get_addr_num(uint32_t inst_id, uint32_t type_id, uint32_t num, DRV_OUT_BYTES(size) uint8_t *buffer,
                              uint32_t size);

DRV_END_DECLS

#endif
