// What a board is equipped with.
#include "drv_basic/management/drv_board_capability.h"

#include "sim/devices/management/equipment.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

uint32_t drv_board_capability_find(uint32_t inst_id, uint32_t mode_id, char *name, uint32_t size) {
    return operate([&](board &b) {
        write_text(name, size, b.text(b.find<equipment::family>(inst_id, mode_id), equipment::name));
    });
}

uint32_t drv_board_get_bom_value(uint32_t inst_id, uint32_t chip_id, uint32_t *bom_value) {
    return operate([&](board &b) {
        refuse_null(bom_value);
        *bom_value = b.get(b.find<bom_pins::family>(inst_id, chip_id), bom_pins::value);
    });
}
