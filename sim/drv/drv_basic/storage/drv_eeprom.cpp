// Identity EEPROM: plain bytes within a section.
#include "drv_basic/storage/drv_eeprom.h"

#include "drv_basic/identity/drv_elabel.h"
#include "sim/devices/identity/identity.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

namespace {

bool is_short_label(const eeprom_section &section) {
    return (section.id == elabel_section || section.id == elabel_backup_section) && section.size < DRV_ELABEL_SIZE;
}

// Labels are asked for by the length that they have on any card. Cards of the old formats keep 1024 bytes: what lies
// behind them in the EEPROM is another section's, and reads as the zeros that fill a label up.
std::vector<uint8_t> read_section(const identity &eeprom, const eeprom_section &section, uint32_t offset,
                                  uint32_t length) {
    if (!is_short_label(section) || offset >= section.size) {
        return eeprom.read(section, offset, length);
    }
    refuse_if(length > DRV_ELABEL_SIZE - offset, error::out_of_range);
    std::vector<uint8_t> bytes = eeprom.read(section, offset, std::min(length, section.size - offset));
    bytes.resize(length);
    return bytes;
}

uint32_t accept_instance(uint32_t inst_id) {
    return operate([&](board &b) { identity(b, b.instance(inst_id)); });
}

} // namespace

uint32_t drv_eeprom_init(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_eeprom_exit(uint32_t inst_id) {
    return accept_instance(inst_id);
}

uint32_t drv_eeprom_read_data(uint32_t inst_id, uint32_t section_id, uint32_t offset, uint8_t *buffer, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const identity eeprom(b, b.instance(inst_id));
        const auto bytes = read_section(eeprom, eeprom.require(section_id, error::no_such_section), offset, len);
        std::copy(bytes.begin(), bytes.end(), buffer);
    });
}

uint32_t drv_eeprom_write_data(uint32_t inst_id, uint32_t section_id, uint32_t offset, const uint8_t *buffer,
                               uint32_t len) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const identity eeprom(b, b.instance(inst_id));
        change writes;
        eeprom.write(writes, eeprom.require(section_id, error::no_such_section), offset, {buffer, len});
        b.commit(writes);
    });
}
