// Sections of the identity EEPROM and their bounds.
#include "sim/drv/drv_basic/identity/identity.h"

namespace kestro_sim {

namespace {

void check_range(const eeprom_section &section, uint32_t offset, size_t length) {
    refuse_if(length == 0 || offset > section.size || length > section.size - offset, error::out_of_range);
}

} // namespace

identity::identity(board &b, uint32_t inst_id)
    : board_(b), instance_(b.instance(inst_id)), image_(eeprom_image_name(instance_)) {
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

} // namespace kestro_sim
