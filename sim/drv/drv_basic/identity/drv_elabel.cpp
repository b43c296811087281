// Electronic labels: kept twice in the identity EEPROM, master and backup copy.
#include "drv_basic/identity/drv_elabel.h"

#include "sim/devices/identity/identity.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

void check_label(board &b, uint32_t inst_id, uint32_t elabel_id) {
    b.find<label_family>(inst_id, elabel_id);
}

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { check_label(b, inst_id, 0); });
}

} // namespace

uint32_t drv_elabel_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_elabel_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_elabel_read(uint32_t inst_id, uint32_t elabel_id, uint8_t *area, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(area);
        check_label(b, inst_id, elabel_id);
        refuse_if(len == 0 || len > DRV_ELABEL_SIZE, error::out_of_range);
        const auto label = read_label(identity(b, b.instance(inst_id)), len);
        std::copy(label.begin(), label.end(), area);
    });
}

uint32_t drv_elabel_write(uint32_t inst_id, uint32_t elabel_id, const uint8_t *area, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(area);
        check_label(b, inst_id, elabel_id);
        refuse_if(len == 0 || len > DRV_ELABEL_SIZE, error::out_of_range);
        change writes;
        write_label(identity(b, b.instance(inst_id)), writes, {area, len});
        b.commit(writes);
    });
}
