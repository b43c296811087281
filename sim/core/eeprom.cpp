// Sections of the identity EEPROMs, read from the description's layouts.
#include "sim/core/eeprom.h"

#include <algorithm>

namespace kestro_sim {

namespace {

uint32_t number_below(pugi::xml_node entry, std::string_view name) {
    return static_cast<uint32_t>(element_number(named_child(entry, name)).value_or(0));
}

} // namespace

pugi::xml_node eeprom_layout(const description &board, std::string_view instance) {
    const auto layout = element_text(board.element(instance, "sim_identity", "eeprom", "0", "layout"));
    return layout ? board.node(self_instance, "sim_eeprom_layout", *layout) : pugi::xml_node();
}

eeprom_section section_of(pugi::xml_node entry) {
    const auto id = parse_number(entry.attribute("name").value());
    return {static_cast<uint32_t>(id.value_or(0)), number_below(entry, "offset"), number_below(entry, "size")};
}

std::optional<eeprom_section> find_section(const description &board, std::string_view instance, uint32_t section_id) {
    const pugi::xml_node entry = named_child(eeprom_layout(board, instance), std::to_string(section_id));
    return entry ? std::optional<eeprom_section>(section_of(entry)) : std::nullopt;
}

uint32_t eeprom_size(pugi::xml_node layout) {
    uint32_t end = 0;
    for (const pugi::xml_node entry : layout.children("entry")) {
        const eeprom_section section = section_of(entry);
        end = std::max(end, section.offset + section.size);
    }
    return (end + 1023U) / 1024U * 1024U;
}

std::string eeprom_image_name(std::string_view instance) {
    std::string name = "eeprom-" + std::string(instance) + ".bin";
    std::erase(name, '@');
    return name;
}

} // namespace kestro_sim
