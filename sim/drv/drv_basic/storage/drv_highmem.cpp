// Reserved regions of high memory.
#include "drv_basic/storage/drv_highmem.h"

#include "sim/drv/driver.h"

uint32_t drv_highmem_init() {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_highmem_exit() {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_highmem_get_base_addr(uint32_t, uint64_t *) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_highmem_get_len(uint32_t, uint32_t *) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_highmem_get_phys_addr(uint32_t, uint64_t *) {
    return DRV_NOT_SUPPORTED;
}
