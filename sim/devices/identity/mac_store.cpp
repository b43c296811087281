// Which types there are is described; how many addresses each has stands in the EEPROM.
#include "sim/devices/identity/mac_store.h"

#include "sim/core/catalogue.h"

#include <algorithm>

namespace kestro_sim {

mac_store::mac_store(board &b, const std::string &place) : board_(b), eeprom_(b, place) {
    refuse_if(b.all_at<mac_family>(place).empty(), error::not_supported);
    for (const uint32_t section : {mac_section, mac_backup_section}) {
        if (const auto found = eeprom_.find(section)) {
            copies_.push_back(*found);
        }
    }
    for (const eeprom_section &copy : copies_) {
        if (auto records = decode_mac_area(eeprom_.read(copy, 0, copy.size))) {
            records_ = *records;
            return;
        }
    }
    refuse(error::damaged);
}

mac_record &mac_store::of_type(uint32_t type_id) {
    board_.find_at<mac_family>(eeprom_.instance(), type_id);
    const auto found = std::find_if(records_.begin(), records_.end(),
                                    [&](const mac_record &record) { return record.type == type_id; });
    refuse_if(found == records_.end(), error::damaged);
    return *found;
}

void mac_store::save() {
    change writes;
    for (const eeprom_section &copy : copies_) {
        eeprom_.write(writes, copy, 0, encode_mac_area(records_, copy.size));
    }
    board_.commit(writes);
}

void set_base(mac_record &record, const uint8_t *addr) {
    std::copy_n(addr, record.base.size(), record.base.begin());
}

void set_count(mac_record &record, uint32_t num) {
    refuse_if(num > mac_count_max, error::bad_value);
    record.count = static_cast<uint16_t>(num);
}

device_list devices_of_mac_store() {
    static constexpr const device_family *families[]{&mac_family};
    return {families, {}};
}

} // namespace kestro_sim
