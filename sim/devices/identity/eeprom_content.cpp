// What production writes is checked here, and built into images when a state is made new.
#include "sim/devices/identity/eeprom_content.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

device_list devices_of_eeprom_content() {
    static constexpr const device_family *families[]{&eeprom_section_layout::family,
                                                     &identity_eeprom::family,
                                                     &label_family,
                                                     &bar_code_family,
                                                     &mac_family,
                                                     &section_family};
    return {families, {}};
}

} // namespace kestro_sim
