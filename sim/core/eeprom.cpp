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
    if (!layout) {
        return {};
    }
    const pugi::xml_node own = board.node(instance, "sim_eeprom_layout", *layout);
    return own ? own : board.node(chassis_place, "sim_eeprom_layout", *layout);
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

std::string image_name(std::string_view device, std::string_view place) {
    std::string name = std::string(device) + "-" + std::string(place) + ".bin";
    std::replace(name.begin(), name.end(), '/', '-');
    return name;
}

std::string eeprom_image_name(std::string_view instance) {
    return image_name("eeprom", instance);
}

} // namespace kestro_sim
