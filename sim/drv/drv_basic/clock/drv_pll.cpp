// Clock synthesisers.
#include "drv_basic/clock/drv_pll.h"

#include "sim/devices/clock/pll.h"
#include "sim/devices/clock/register_dump.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_pll_get_reg(uint32_t inst_id, uint32_t chip_id, uint32_t reg, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = read_space(b, pll::registers, b.find<pll::family>(inst_id, chip_id), reg);
    });
}

uint32_t drv_pll_set_reg(uint32_t inst_id, uint32_t chip_id, uint32_t reg, uint32_t value) {
    return operate([&](board &b) {
        const pll::one chip = b.find<pll::family>(inst_id, chip_id);
        refuse_if(value > 0xFF, error::bad_value);
        write_space(b, pll::registers, chip, reg, value);
    });
}

uint32_t drv_pll_initialization(uint32_t inst_id, uint32_t chip_id) {
    return operate([&](board &b) { pll::initialise(b, b.find<pll::family>(inst_id, chip_id)); });
}

uint32_t drv_pll_reg_dump(uint32_t inst_id, uint32_t chip_id, uint32_t start, uint32_t num, char *buffer,
                          uint32_t len) {
    return operate([&](board &b) {
        write_text(buffer, len, register_dump(b, pll::registers, b.find<pll::family>(inst_id, chip_id), start, num));
    });
}
