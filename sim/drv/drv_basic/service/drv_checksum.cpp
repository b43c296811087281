// Checksums of data in memory. No board is needed for them.
#include "drv_basic/service/drv_checksum.h"

#include "sim/core/checksum.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_crc16_checksum(const uint8_t *data, uint32_t len, uint16_t *crc16) {
    return operate([&](board &) {
        refuse_null(data, crc16);
        *crc16 = crc16_checksum({data, len});
    });
}

uint32_t drv_crc32_checksum(const uint8_t *data, uint32_t len, uint32_t *crc32) {
    return operate([&](board &) {
        refuse_null(data, crc32);
        *crc32 = checksum({data, len});
    });
}
