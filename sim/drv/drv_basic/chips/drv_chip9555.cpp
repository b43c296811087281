// Input/output expanders: by register, as their bus reads them, and by pin.
#include "drv_basic/chips/drv_chip9555.h"

#include "sim/devices/chips/expander.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

constexpr uint32_t register_max = 0xFF;

expander::one chip(board &b, uint32_t inst_id, uint32_t chip_id) {
    return b.find<expander::family>(inst_id, chip_id);
}

} // namespace

uint32_t drv_chip9555_get_reg(uint32_t inst_id, uint32_t chip_id, uint32_t offset, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto which = chip(b, inst_id, chip_id);
        *value = read_space(b, expander::space_of(which), which, offset);
    });
}

uint32_t drv_chip9555_set_reg(uint32_t inst_id, uint32_t chip_id, uint32_t offset, uint32_t value) {
    return operate([&](board &b) {
        const auto which = chip(b, inst_id, chip_id);
        refuse_if(value > register_max, error::bad_value);
        write_space(b, expander::space_of(which), which, offset, value);
    });
}

uint32_t drv_chip9555_get_level(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto which = chip(b, inst_id, chip_id);
        refuse_if(pin >= expander::pins, error::no_such_device);
        *value = expander::levels(b, which) >> pin & 1U;
    });
}

uint32_t drv_chip9555_set_level(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t value) {
    return operate([&](board &b) {
        const auto which = chip(b, inst_id, chip_id);
        refuse_if(pin >= expander::pins, error::no_such_device);
        refuse_if(value > 1, error::bad_value);
        expander::drive(b, which, pin, value);
    });
}
