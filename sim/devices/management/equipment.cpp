// Equipment is as it is described.
#include "sim/devices/management/equipment.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

device_list devices_of_equipment() {
    static constexpr const device_family *families[]{&equipment::family, &bom_pins::family};
    return {families, {}};
}

} // namespace kestro_sim
