// The board or card as a unit.
#include "sim/drv/drv_basic/management/board/unit.h"

namespace kestro_sim {

device_of<board_unit::family> unit(board &b, uint32_t inst_id) {
    return b.find<board_unit::family>(inst_id);
}

uint32_t read_unit(uint32_t inst_id, word_of<board_unit::family> name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        *value = b.get(unit(b, inst_id), name);
    });
}

uint32_t peer_slot(board &b, uint32_t inst_id) {
    return b.get(unit(b, inst_id), board_unit::peer_slot);
}

void tell(const finding &found, uint32_t *status, char *dfx, uint32_t size) {
    refuse_null(status, dfx);
    write_text(dfx, size, found.text);
    *status = found.status;
}

} // namespace kestro_sim
