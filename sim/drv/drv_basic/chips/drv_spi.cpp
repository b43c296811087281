// Chips on the SPI buses.
#include "drv_basic/chips/drv_spi.h"

#include "sim/devices/chips/spi_chips.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

spi_chip::one chip(board &b, uint32_t inst_id, uint32_t chip_id) {
    return b.find<spi_chip::family>(inst_id, chip_id);
}

// The bus is the processor's own and needs no bringing up.
uint32_t accept_instance_with_spi(uint32_t inst_id) {
    return operate(
        [&](board &b) { refuse_if(b.all_at<spi_chip::family>(b.instance(inst_id)).empty(), error::not_supported); });
}

} // namespace

uint32_t drv_spi_init(uint32_t inst_id) {
    return accept_instance_with_spi(inst_id);
}

uint32_t drv_spi_exit(uint32_t inst_id) {
    return accept_instance_with_spi(inst_id);
}

uint32_t drv_spi_write(uint32_t inst_id, uint32_t chip_id, const uint8_t *frame, uint32_t length) {
    return operate([&](board &b) {
        refuse_null(frame);
        spi_chip::write(b, chip(b, inst_id, chip_id), {frame, length});
    });
}

uint32_t drv_spi_read(uint32_t inst_id, uint32_t chip_id, const uint8_t *command, uint32_t command_length,
                      uint8_t *buffer, uint32_t length) {
    return operate([&](board &b) {
        refuse_null(command, buffer);
        const auto bytes = spi_chip::read(b, chip(b, inst_id, chip_id), {command, command_length}, length);
        std::copy(bytes.begin(), bytes.end(), buffer);
    });
}
