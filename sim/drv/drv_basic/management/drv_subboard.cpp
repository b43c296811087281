// Sub-boards, by number.
#include "drv_basic/management/drv_subboard.h"

#include "sim/devices/management/subboard.h"
#include "sim/drv/driver.h"

using namespace kestro_sim;

namespace {

// A sub-board that is not there can only say that.
uint32_t read_of_present(uint32_t inst_id, uint32_t subboard_id, word_of<subboard::family> name, uint32_t *value) {
    return operate([&](board &b) {
        refuse_null(value);
        const auto which = b.find<subboard::family>(inst_id, subboard_id);
        refuse_if(subboard::is_absent(b, which), error::no_such_instance);
        *value = b.get(which, name);
    });
}

} // namespace

uint32_t drv_subboard_get_type(uint32_t inst_id, uint32_t subboard_id, uint32_t *type) {
    return read_of_present(inst_id, subboard_id, subboard::type, type);
}

uint32_t drv_subboard_get_pcb_ver(uint32_t inst_id, uint32_t subboard_id, uint32_t *ver) {
    return read_of_present(inst_id, subboard_id, subboard::pcb_ver, ver);
}

uint32_t drv_subboard_get_bom_ver(uint32_t inst_id, uint32_t subboard_id, uint32_t *ver) {
    return read_of_present(inst_id, subboard_id, subboard::bom_ver, ver);
}

uint32_t drv_subboard_get_bom_id(uint32_t inst_id, uint32_t subboard_id, uint32_t *bom_id) {
    return read_of_present(inst_id, subboard_id, subboard::bom_id, bom_id);
}

uint32_t drv_subboard_get_online_status(uint32_t inst_id, uint32_t subboard_id, uint32_t *status) {
    return operate([&](board &b) {
        refuse_null(status);
        *status = b.get(b.find<subboard::family>(inst_id, subboard_id), subboard::absent);
    });
}

uint32_t drv_subboard_get_online_status_ex(uint32_t inst_id, uint32_t subboard_id, uint32_t *status, char *dfx,
                                           uint32_t size) {
    return operate([&](board &b) {
        refuse_null(status, dfx);
        const uint32_t absent = b.get(b.find<subboard::family>(inst_id, subboard_id), subboard::absent);
        write_text(dfx, size, absent == 0 ? "" : "sub-board " + std::to_string(subboard_id) + " is absent");
        *status = absent;
    });
}
