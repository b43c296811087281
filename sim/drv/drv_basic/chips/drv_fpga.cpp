// The configuration of programmable logic.
#include "drv_basic/chips/drv_fpga.h"

#include "sim/devices/chips/fpga.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

uint32_t drv_fpga_check_seu(uint32_t inst_id, uint32_t chip_id, uint32_t *result, char *msg, uint32_t size) {
    return operate([&](board &b) {
        tell(logic_chip::check_upsets(b, b.find<logic_chip::family>(inst_id, chip_id)), result, msg, size);
    });
}
