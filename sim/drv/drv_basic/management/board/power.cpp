// Power domains, and the watch over low voltages.
#include "drv_basic/management/drv_board.h"

#include "sim/devices/management/power_domain.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

// A domain that the board lacks is not supported, and one beyond the numbering is an error.
device_of<power_domain::family> find_domain(board &b, uint32_t inst_id, uint32_t type) {
    const std::string instance = b.instance(inst_id);
    refuse_if(type >= power_domain::domain_count, error::no_such_device);
    auto domain = board::at<power_domain::family>(instance, type);
    refuse_if(!b.is_described(domain), error::not_supported);
    return domain;
}

uint32_t switch_domain(uint32_t inst_id, uint32_t type, uint32_t on) {
    return operate([&](board &b) { power_domain::switch_to(b, find_domain(b, inst_id, type), on); });
}

} // namespace

uint32_t drv_board_set_power_on(uint32_t inst_id, uint32_t type) {
    return switch_domain(inst_id, type, 1);
}

uint32_t drv_board_set_power_off(uint32_t inst_id, uint32_t type) {
    return switch_domain(inst_id, type, 0);
}

uint32_t drv_board_get_power_status(uint32_t inst_id, uint32_t type, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = b.get(find_domain(b, inst_id, type), power_domain::on);
    });
}

uint32_t drv_board_check_low_voltage(uint32_t inst_id, uint32_t *status, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        finding found;
        if (b.get(unit(b, inst_id), board_unit::low_voltage) != 0) {
            add_fault(found, "the supply fell below its limit");
        }
        tell(found, status, dfx, size);
    });
}
