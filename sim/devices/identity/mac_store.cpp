// Which types there are is described; how many addresses each has stands in the EEPROM.
#include "sim/devices/identity/mac_store.h"

#include "sim/core/catalogue.h"

#include <algorithm>

namespace kestro_sim {

namespace {

std::vector<eeprom_section> mac_sections(board &b, const std::string &place) {
    std::vector<eeprom_section> copies;
    for (const uint32_t section : {mac_section, mac_backup_section}) {
        if (const auto found = find_section(b.described(), place, section)) {
            copies.push_back(*found);
        }
    }
    return copies;
}

std::vector<mac_record> read_records(const board &b, const std::string &place, std::span<const eeprom_section> copies) {
    for (const eeprom_section &copy : copies) {
        if (const auto records = decode_mac_area(b.read_image(eeprom_image_name(place), copy.offset, copy.size))) {
            return *records;
        }
    }
    refuse(error::damaged);
}

mac_record &find_record(std::vector<mac_record> &records, uint32_t type_id) {
    const auto found =
        std::find_if(records.begin(), records.end(), [&](const mac_record &record) { return record.type == type_id; });
    refuse_if(found == records.end(), error::damaged);
    return *found;
}

} // namespace

mac_store::mac_store(board &b, const std::string &place) : board_(b), eeprom_(b, place) {
    refuse_if(b.all_at<mac_family>(place).empty(), error::not_supported);
    copies_ = mac_sections(b, place);
    records_ = read_records(b, place, copies_);
}

mac_record &mac_store::of_type(uint32_t type_id) {
    board_.find_at<mac_family>(eeprom_.instance(), type_id);
    return find_record(records_, type_id);
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

mac_address address_at(board &b, const std::string &place, uint32_t type_id, uint32_t number) {
    std::vector<mac_record> records = read_records(b, place, mac_sections(b, place));
    const mac_record &record = find_record(records, type_id);
    refuse_if(number >= record.count, error::no_such_device);
    return address_from_number(number_from_address(record.base) + number);
}

device_list devices_of_mac_store() {
    static constexpr const device_family *families[]{&mac_family};
    return {families, {}};
}

} // namespace kestro_sim
