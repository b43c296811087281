// Board management: what a board or card is. Its other parts (presence, slots, power, health, ...) are in board/.
#include "drv_basic/management/drv_board.h"

#include "sim/devices/chassis/slots.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

namespace {

// The type of a card stands in the card's own logic, on a bus that only the master drives.
device_of<board_unit::family> typed_unit(board &b, uint32_t inst_id) {
    const std::string place = b.instance(inst_id);
    refuse_if(is_card(b, place) && !b.is_seen(place), error::not_supported);
    return unit(b, inst_id);
}

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { b.instance(inst_id); });
}

} // namespace

uint32_t drv_board_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_board_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_board_get_type(uint32_t inst_id, uint32_t *type) {
    return operate([&](board &b) {
        refuse_null(type);
        *type = b.get(typed_unit(b, inst_id), board_unit::type);
    });
}

uint32_t drv_board_set_type(uint32_t inst_id, uint32_t type) {
    return operate([&](board &b) { b.put(typed_unit(b, inst_id), board_unit::type, type); });
}

uint32_t drv_board_get_pcb_ver(uint32_t inst_id, uint32_t *ver) {
    return read_unit(inst_id, board_unit::pcb_ver, ver);
}

uint32_t drv_board_get_usr_pcb_ver(uint32_t inst_id, uint32_t *ver) {
    return read_unit(inst_id, board_unit::usr_pcb_ver, ver);
}

uint32_t drv_board_get_soft_pcb_ver(uint32_t inst_id, uint32_t *ver) {
    return read_unit(inst_id, board_unit::soft_pcb_ver, ver);
}

uint32_t drv_board_get_bom_ver(uint32_t inst_id, uint32_t *ver) {
    return read_unit(inst_id, board_unit::bom_ver, ver);
}

uint32_t drv_board_get_bom_id(uint32_t inst_id, uint32_t *bom_id) {
    return read_unit(inst_id, board_unit::bom_id, bom_id);
}

uint32_t drv_board_get_power(uint32_t inst_id, uint32_t *power) {
    return read_unit(inst_id, board_unit::power_watts, power);
}

uint32_t drv_board_get_capability(uint32_t inst_id, uint32_t type, uint32_t *capability) {
    return operate([&](board &b) {
        refuse_null(capability);
        *capability = b.get(b.find<capability::family>(inst_id, type), capability::value);
    });
}
