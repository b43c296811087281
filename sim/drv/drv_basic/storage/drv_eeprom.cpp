// Identity EEPROM: plain bytes within a section.
#include "drv_basic/storage/drv_eeprom.h"

#include "sim/devices/identity/identity.h"
#include "sim/drv/driver.h"

#include <algorithm>

using namespace kestro_sim;

uint32_t drv_eeprom_read_data(uint32_t inst_id, uint32_t section_id, uint32_t offset, uint8_t *buffer, uint32_t len) {
    return operate([&](board &b) {
        refuse_null(buffer);
        const identity eeprom(b, b.instance(inst_id));
        const auto bytes = eeprom.read(eeprom.require(section_id, error::no_such_section), offset, len);
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
