// The configuration of programmable logic.
#include "drv_basic/chips/drv_fpga.h"

#include "sim/devices/chips/fpga.h"
#include "sim/drv/drv_basic/chips/loading.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

logic_chip::one chip_with_logic(board &b, uint32_t inst_id, uint32_t chip_id) {
    logic_chip::one found = b.find<logic_chip::family>(inst_id, chip_id);
    logic_chip::need_logic(b, found);
    return found;
}

} // namespace

uint32_t drv_fpga_check_seu(uint32_t inst_id, uint32_t chip_id, uint32_t *result, char *msg, uint32_t size) {
    return operate(
        [&](board &b) { tell(logic_chip::check_upsets(b, chip_with_logic(b, inst_id, chip_id)), result, msg, size); });
}

uint32_t drv_fpga_clr_seu_err(uint32_t inst_id, uint32_t chip_id) {
    return operate([&](board &b) { logic_chip::clear_upsets(b, chip_with_logic(b, inst_id, chip_id)); });
}

uint32_t drv_fpga_load(uint32_t inst_id, uint32_t chip_id, const uint8_t *buffer, uint32_t length) {
    return load_in_steps(
        buffer, length,
        [&](board &b, image_bytes image) {
            return logic_load::begin_fpga(b, b.find<logic_chip::family>(inst_id, chip_id), image);
        },
        [&](board &b, const logic_load::begun &load) {
            logic_load::finish_fpga(b, b.find<logic_chip::family>(inst_id, chip_id), load);
        });
}
