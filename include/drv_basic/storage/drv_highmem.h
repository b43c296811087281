/* Reserved regions of high memory, by type. */
#ifndef DRV_HIGHMEM_H
#define DRV_HIGHMEM_H

#include "drv_types.h"

DRV_BEGIN_DECLS

/* Maps the regions into the process, and takes them out of it again. */
uint32_t drv_highmem_init(void);
uint32_t drv_highmem_exit(void);

/* base_addr: where the process sees the region; it reads and writes there. */
uint32_t drv_highmem_get_base_addr(uint32_t type, DRV_OUT uint64_t *base_addr);
uint32_t drv_highmem_get_len(uint32_t type, DRV_OUT uint32_t *len);
uint32_t drv_highmem_get_phys_addr(uint32_t type, DRV_OUT uint64_t *phys_addr);

DRV_END_DECLS

#endif
