// Bar codes: 128 bytes each, one behind the other in their section of the identity EEPROM. Old cards have no such
// section and no bar codes.
#include "drv_basic/identity/drv_barcode.h"

#include "sim/devices/identity/identity.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

uint32_t accept_instance(uint32_t inst_id) {
    return operate(
        [&](board &b) { refuse_if(b.all_at<bar_code_family>(b.instance(inst_id)).empty(), error::not_supported); });
}

// The part of the section that holds the bar code, if the bar code is there and takes that many bytes.
eeprom_section area_of(board &b, const identity &eeprom, uint32_t inst_id, uint32_t barcode_id, uint32_t len) {
    b.find<bar_code_family>(inst_id, barcode_id);
    refuse_if(len == 0 || len > DRV_BARCODE_SIZE, error::out_of_range);
    return bar_code_area(eeprom, barcode_id);
}

} // namespace

uint32_t drv_barcode_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_barcode_deinit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_barcode_read(uint32_t inst_id, uint32_t barcode_id, uint8_t *area, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(area);
        const identity eeprom(b, b.instance(inst_id));
        const auto text = eeprom.read(area_of(b, eeprom, inst_id, barcode_id, len), 0, len);
        std::copy(text.begin(), text.end(), area);
    });
}

uint32_t drv_barcode_write(uint32_t inst_id, uint32_t barcode_id, const uint8_t *area, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(area);
        const identity eeprom(b, b.instance(inst_id));
        change writes;
        eeprom.write(writes, area_of(b, eeprom, inst_id, barcode_id, len), 0, {area, len});
        b.commit(writes);
    });
}
