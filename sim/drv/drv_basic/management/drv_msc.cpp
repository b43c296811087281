// Master/slave control of the two main processing units: one register of the chassis says which is the master, in every
// switch mode. Line cards have none.
#include "drv_basic/management/drv_msc.h"

#include "sim/core/instance.h"
#include "sim/devices/management/board_unit.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

constexpr uint32_t master = 0;
constexpr uint32_t slave = 1;
constexpr uint32_t sw_mode_max = 2;

} // namespace

uint32_t drv_msc_get_state(uint32_t inst_id, uint32_t sw_mode, uint32_t *state) {
    return operate([&](board &b) {
        refuse_null(state);
        refuse_if(sw_mode > sw_mode_max, error::bad_value);
        const auto controller = b.find<master_control::family>(inst_id);
        *state = slot_of_place(controller.instance) == b.master_slot() ? master : slave;
    });
}
