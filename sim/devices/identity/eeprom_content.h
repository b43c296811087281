// Identity EEPROMs: how they are divided, and what production wrote into them. What stands in them afterwards is in
// their images.
#pragma once

#include "sim/core/family.h"

namespace kestro_sim {

inline constexpr int64_t eeprom_max = 1 << 20;

namespace eeprom_section_layout {
inline constexpr reg offset =
    reg::number("offset", 0, eeprom_max, "B", "the first byte of the EEPROM section").required().of_production();
inline constexpr reg size =
    reg::number("size", 0, eeprom_max, "B", "the bytes of the EEPROM section").required().of_production();
inline constexpr device_family family =
    device_family{"sim_eeprom_layout", "NAME", "a section of an EEPROM layout", {offset, size}}.named(
        naming::nodes_by_name);
} // namespace eeprom_section_layout

namespace identity_eeprom {
inline constexpr reg layout = reg::text("layout", 64, "the name of the EEPROM's layout").required().of_production();
inline constexpr reg device_id = reg::number("device_id", 0, any_u32, "", "the EEPROM's device number").required();
inline constexpr device_family family =
    device_family{"sim_identity", "eeprom", "an identity EEPROM", {layout, device_id}};
} // namespace identity_eeprom

// How long they may be depends on the section.
inline constexpr reg electronic_label =
    reg::text("text", eeprom_max, "the electronic label").required().of_production();
inline constexpr reg bar_code = reg::text("text", 128, "the bar code").required().of_production();
inline constexpr reg section_start =
    reg::text("text", eeprom_max, "what the section starts with").required().of_production();
inline constexpr reg mac_count =
    reg::number("count", 0, 65535, "", "how many addresses the type has").required().of_production();
inline constexpr reg mac_base =
    reg::bits("base", 0xFFFFFFFFFFFF, "the first address, as a number of 48 bits").required().of_production();

inline constexpr device_family label_family =
    device_family{"sim_identity", "elabel", "an electronic label", {electronic_label}}.up_to(0);
inline constexpr device_family bar_code_family{"sim_identity", "barcode", "a bar code", {bar_code}};
inline constexpr device_family section_family{"sim_identity", "section", "a section", {section_start}};
inline constexpr device_family mac_family =
    device_family{"sim_identity", "mac", "addresses of a type", {mac_count, mac_base}}.up_to(255);

} // namespace kestro_sim
