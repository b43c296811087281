// Chips on the local bus.
#include "drv_basic/chips/drv_localbus.h"

#include "sim/devices/chips/bus_chips.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

localbus_chip::one chip(board &b, uint32_t inst_id, uint32_t chip_id) {
    return b.find<localbus_chip::family>(inst_id, chip_id);
}

// The bus is the processor's own and needs no bringing up.
uint32_t accept_instance_with_bus(uint32_t inst_id) {
    return operate([&](board &b) {
        refuse_if(b.all_at<localbus_chip::family>(b.instance(inst_id)).empty(), error::not_supported);
    });
}

} // namespace

uint32_t drv_localbus_init(uint32_t inst_id) {
    return accept_instance_with_bus(inst_id);
}

uint32_t drv_localbus_exit(uint32_t inst_id) {
    return accept_instance_with_bus(inst_id);
}

uint32_t drv_localbus_read(uint32_t inst_id, uint32_t chip_id, uint32_t address, uint8_t *buffer, uint32_t length) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const auto bytes = localbus_chip::read(b, chip(b, inst_id, chip_id), address, length);
        std::copy(bytes.begin(), bytes.end(), buffer);
    });
}

uint32_t drv_localbus_write(uint32_t inst_id, uint32_t chip_id, uint32_t address, const uint8_t *buffer,
                            uint32_t length) {
    return operate([&](board &b) {
        refuse_null(buffer);
        localbus_chip::write(b, chip(b, inst_id, chip_id), address, {buffer, length});
    });
}
