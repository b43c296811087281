// Sections of the identity EEPROM and their bounds. What production writes is built into the images when a state is
// made new.
#include "sim/devices/identity/identity.h"

#include "sim/core/catalogue.h"

#include <algorithm>

namespace kestro_sim {

namespace {

void check_range(const eeprom_section &section, uint32_t offset, size_t length) {
    refuse_if(length == 0 || offset > section.size || length > section.size - offset, error::out_of_range);
}

// Old cards keep 1024 bytes: a label that needs more is refused, the zeros that fill up a shorter one are not.
void write_copy(const identity &eeprom, change &writes, const eeprom_section &section, std::span<const uint8_t> label) {
    const auto kept = label.first(std::min<size_t>(label.size(), section.size));
    const auto beyond = label.subspan(kept.size());
    refuse_if(std::any_of(beyond.begin(), beyond.end(), [](uint8_t byte) { return byte != 0; }), error::out_of_range);
    eeprom.write(writes, section, 0, kept);
}

} // namespace

identity::identity(board &b, const std::string &place)
    : board_(b), instance_(place), image_(eeprom_image_name(instance_)) {
    refuse_if(!b.is_seen(instance_), error::no_such_instance);
    refuse_if(!eeprom_layout(b.described(), instance_), error::not_supported);
}

std::optional<eeprom_section> identity::find(uint32_t section_id) const {
    return find_section(board_.described(), instance_, section_id);
}

eeprom_section identity::require(uint32_t section_id, error when_missing) const {
    const auto section = find(section_id);
    refuse_if(!section, when_missing);
    return *section;
}

std::vector<uint8_t> identity::read(const eeprom_section &section, uint32_t offset, uint32_t length) const {
    check_range(section, offset, length);
    return board_.read_image(image_, section.offset + offset, length);
}

void identity::write(change &writes, const eeprom_section &section, uint32_t offset,
                     std::span<const uint8_t> bytes) const {
    check_range(section, offset, bytes.size());
    writes.write(image_, section.offset + offset, bytes);
}

std::vector<uint8_t> read_label(const identity &eeprom, uint32_t length) {
    const eeprom_section section = eeprom.require(elabel_section, error::not_supported);
    std::vector<uint8_t> label = eeprom.read(section, 0, std::min(length, section.size));
    label.resize(length);
    return label;
}

void write_label(const identity &eeprom, change &writes, std::span<const uint8_t> label) {
    write_copy(eeprom, writes, eeprom.require(elabel_section, error::not_supported), label);
    if (const auto backup = eeprom.find(elabel_backup_section)) {
        write_copy(eeprom, writes, *backup, label);
    }
}

eeprom_section bar_code_area(const identity &eeprom, uint32_t number) {
    const eeprom_section all = eeprom.require(barcode_section, error::not_supported);
    return {all.id, all.offset + number * bar_code_size, bar_code_size};
}

device_list devices_of_identity() {
    static constexpr const device_family *families[]{&eeprom_section_layout::family, &identity_eeprom::family,
                                                     &label_family, &bar_code_family, &section_family};
    return {families, {}};
}

} // namespace kestro_sim
