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

expander::one chip_with_pin(board &b, uint32_t inst_id, uint32_t chip_id, uint32_t pin) {
    expander::one which = chip(b, inst_id, chip_id);
    refuse_if(pin >= expander::pins, error::no_such_device);
    return which;
}

uint32_t get_pin(uint32_t inst_id, uint32_t chip_id, uint32_t pin, word_of<expander::family> name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(chip_with_pin(b, inst_id, chip_id, pin), name) >> pin & 1U;
    });
}

uint32_t set_pin(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t value,
                 void (*set)(board &, const expander::one &, uint32_t pin, uint32_t value)) {
    return operate([&](board &b) {
        const auto which = chip_with_pin(b, inst_id, chip_id, pin);
        refuse_if(value > 1, error::bad_value);
        set(b, which, pin, value);
    });
}

} // namespace

uint32_t drv_chip9555_get_reg(uint32_t inst_id, uint32_t chip_id, uint32_t offset, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto which = chip(b, inst_id, chip_id);
        *value = expander::read_register(b, which, offset);
    });
}

uint32_t drv_chip9555_set_reg(uint32_t inst_id, uint32_t chip_id, uint32_t offset, uint32_t value) {
    return operate([&](board &b) {
        const auto which = chip(b, inst_id, chip_id);
        refuse_if(value > register_max, error::bad_value);
        expander::write_register(b, which, offset, value);
    });
}

uint32_t drv_chip9555_get_level(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = expander::levels(b, chip_with_pin(b, inst_id, chip_id, pin)) >> pin & 1U;
    });
}

uint32_t drv_chip9555_set_level(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t value) {
    return set_pin(inst_id, chip_id, pin, value, expander::drive);
}

uint32_t drv_chip9555_get_polar(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t *polarity) {
    return get_pin(inst_id, chip_id, pin, expander::polarity, polarity);
}

uint32_t drv_chip9555_set_polar(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t polarity) {
    return set_pin(inst_id, chip_id, pin, polarity, expander::set_polarity);
}

uint32_t drv_chip9555_get_orientation(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t *orientation) {
    return get_pin(inst_id, chip_id, pin, expander::inputs, orientation);
}

uint32_t drv_chip9555_set_indirection(uint32_t inst_id, uint32_t chip_id, uint32_t pin, uint32_t orientation) {
    return set_pin(inst_id, chip_id, pin, orientation, expander::set_direction);
}

uint32_t drv_chip9555_dump(uint32_t inst_id, uint32_t chip_id, char *text, uint32_t len) {
    return operate([&](board &b) { write_text(text, len, expander::dump(b, chip(b, inst_id, chip_id))); });
}
