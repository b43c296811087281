// Dying gasp: which cards are told when the power fails.
#include "drv_basic/protection/drv_dyinggasp.h"

#include "sim/devices/protection/dying_gasp.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

uint32_t accept_instance(uint32_t inst_id) {
    return operate(
        [&](board &b) { refuse_if(b.all_at<gasp_line::family>(b.instance(inst_id)).empty(), error::not_supported); });
}

} // namespace

uint32_t drv_dyinggasp_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_dyinggasp_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_dyinggasp_set_simulation_enable(uint32_t inst_id, uint32_t enable) {
    return operate([&](board &b) { gasp_simulation::simulate(b, b.find<gasp_simulation::family>(inst_id), enable); });
}

uint32_t drv_dyinggasp_set_enable(uint32_t inst_id, uint32_t board_id, uint32_t enable) {
    return operate([&](board &b) { b.put(b.find<gasp_line::family>(inst_id, board_id), gasp_line::enable, enable); });
}
