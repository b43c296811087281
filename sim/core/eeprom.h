// The identity EEPROM of a board or card: one raw image, divided into sections.
#pragma once

#include "sim/core/description.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kestro_sim {

// Section numbers as cards write them.
inline constexpr uint32_t elabel_section = 0;
inline constexpr uint32_t elabel_backup_section = 1;
inline constexpr uint32_t barcode_section = 2;
inline constexpr uint32_t mac_section = 8;
inline constexpr uint32_t mac_backup_section = 9;

struct eeprom_section {
    uint32_t id;
    uint32_t offset;
    uint32_t size;
};

// The layout node that the instance's identity names, a layout of its own or one of the chassis; an empty handle when
// it has no EEPROM.
pugi::xml_node eeprom_layout(const description &board, std::string_view instance);

std::optional<eeprom_section> find_section(const description &board, std::string_view instance, uint32_t section_id);

// The section that an entry of a layout node describes.
eeprom_section section_of(pugi::xml_node entry);

// Large enough for every section, in whole KiB.
uint32_t eeprom_size(pugi::xml_node layout);

// The image file of a storage device ("eeprom-slot9.bin", "eeprom-slot7-card1.bin").
std::string image_name(std::string_view device, std::string_view place);
std::string eeprom_image_name(std::string_view instance);

} // namespace kestro_sim
