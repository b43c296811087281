// Non-volatile RAM.
#include "drv_basic/storage/drv_nvram.h"

#include "sim/devices/storage/nvram.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

uint32_t drv_nvram_read(uint32_t inst_id, uint32_t chip_id, uint32_t offset, uint8_t *buffer, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const auto bytes = nvram_chip::read(b, b.find<nvram_chip::family>(inst_id, chip_id), offset, len);
        std::copy(bytes.begin(), bytes.end(), buffer);
    });
}

uint32_t drv_nvram_write(uint32_t inst_id, uint32_t chip_id, uint32_t offset, const uint8_t *buffer, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(buffer);
        nvram_chip::write(b, b.find<nvram_chip::family>(inst_id, chip_id), offset, {buffer, len});
    });
}

uint32_t drv_nvram_get_sync_status(uint32_t inst_id, uint32_t pair_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = nvram_mirror::status(b, b.find<nvram_mirror::family>(inst_id, pair_id));
    });
}
