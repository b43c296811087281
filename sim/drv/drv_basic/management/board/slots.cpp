// Slot numbers of the board and its peer: physical, as the backplane wires them, and logical, as the software counts.
#include "drv_basic/management/drv_board.h"

#include "sim/devices/chassis/slots.h"
#include "sim/drv/drv_basic/management/board/unit.h"

using namespace kestro_sim;

uint32_t drv_board_get_self_slotid(uint32_t *slot_id) {
    return operate([&](board &b) {
        refuse_null(slot_id);
        *slot_id = own_slot(b);
    });
}

uint32_t drv_board_get_peer_slotid(uint32_t *slot_id) {
    return operate([&](board &b) {
        refuse_null(slot_id);
        *slot_id = peer_slot(b, DRV_INST_SELF);
    });
}

uint32_t drv_board_get_self_logic_slotid(uint32_t *slot_id) {
    return read_unit(DRV_INST_SELF, board_unit::logic_slot, slot_id);
}

// Wired as the physical one: known even while nothing is in the peer's slot.
uint32_t drv_board_get_peer_logic_slotid(uint32_t *slot_id) {
    return read_unit(DRV_INST_SELF, board_unit::peer_logic_slot, slot_id);
}

uint32_t drv_board_check_slotid(uint32_t inst_id, uint32_t *result, char *dfx, uint32_t size) {
    return operate([&](board &b) {
        const auto self = unit(b, inst_id);
        const uint32_t logic_slot = b.get(self, board_unit::logic_slot);
        const uint32_t slot = own_slot(b);
        finding found;
        if (slot < slot_range::limit(b, slot_range::first) || slot > slot_range::limit(b, slot_range::last)) {
            add_fault(found, "slot " + std::to_string(slot) + " is beyond the chassis");
        }
        if (logic_slot < slot) {
            add_fault(found, "logical slot " + std::to_string(logic_slot) + " is below slot " + std::to_string(slot));
        }
        tell(found, result, dfx, size);
    });
}
