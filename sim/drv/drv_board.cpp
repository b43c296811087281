// Board management: what a board or card is. Its other parts (presence, slots, power, health, ...) are in board/.
#include "drv_board.h"

#include "sim/drv/board/unit.h"

using namespace kestro_sim;

namespace {

constexpr device_kind capabilities{"sim_board", "capability"};
constexpr device_kind controllers{"sim_msc", "controller"};

bool is_slave(board &desk) {
    const std::string self{self_instance};
    return !desk.ids(self, controllers).empty() && desk.get(desk.find_at(self, controllers, 0), "state", 0) == 1;
}

// The type of a card stands in the card's own logic, on a bus that only the master drives.
device typed_unit(board &desk, uint32_t inst_id) {
    refuse_if(is_slave(desk) && is_card(desk, desk.instance(inst_id)), error::not_supported);
    return unit(desk, inst_id);
}

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &desk) { desk.instance(inst_id); });
}

} // namespace

uint32_t drv_board_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_board_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_board_get_type(uint32_t inst_id, uint32_t *type) {
    return operate([&](board &desk) {
        refuse_null(type);
        *type = desk.get(typed_unit(desk, inst_id), "type");
    });
}

uint32_t drv_board_set_type(uint32_t inst_id, uint32_t type) {
    return operate([&](board &desk) {
        const device which = typed_unit(desk, inst_id);
        desk.get(which, "type");
        desk.put(which, "type", type);
    });
}

uint32_t drv_board_get_pcb_ver(uint32_t inst_id, uint32_t *ver) {
    return read_unit(inst_id, "pcb_ver", ver);
}

uint32_t drv_board_get_usr_pcb_ver(uint32_t inst_id, uint32_t *ver) {
    return read_unit(inst_id, "usr_pcb_ver", ver);
}

uint32_t drv_board_get_soft_pcb_ver(uint32_t inst_id, uint32_t *ver) {
    return read_unit(inst_id, "soft_pcb_ver", ver);
}

uint32_t drv_board_get_bom_ver(uint32_t inst_id, uint32_t *ver) {
    return read_unit(inst_id, "bom_ver", ver);
}

uint32_t drv_board_get_bom_id(uint32_t inst_id, uint32_t *bom_id) {
    return read_unit(inst_id, "bom_id", bom_id);
}

uint32_t drv_board_get_power(uint32_t inst_id, uint32_t *power) {
    return read_unit(inst_id, "power_watts", power);
}

uint32_t drv_board_get_capability(uint32_t inst_id, uint32_t type, uint32_t *capability) {
    return operate([&](board &desk) {
        refuse_null(capability);
        *capability = desk.get(desk.find(inst_id, capabilities, type), "value");
    });
}
