// Flash by section and by partition.
#include "drv_basic/storage/drv_flash.h"

#include "sim/drv/driver.h"

uint32_t drv_flash_read(uint32_t, uint32_t, uint32_t, uint8_t *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_flash_write(uint32_t, uint32_t, uint32_t, const uint8_t *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_flash_mtd_read(const char *, uint32_t, uint8_t *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_flash_mtd_write(const char *, uint32_t, const uint8_t *, uint32_t) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_flash_get_nand_is_exist(uint32_t *) {
    return DRV_NOT_SUPPORTED;
}

uint32_t drv_flash_get_nand_part_num(uint32_t *) {
    return DRV_NOT_SUPPORTED;
}
