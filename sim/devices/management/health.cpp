// What is sick is described, or made so by the technician: these devices only show it.
#include "sim/devices/management/health.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

device_list devices_of_health() {
    static constexpr const device_family *families[]{&corner_joint::family, &corrosion_sensor::family,
                                                     &interrupt_line::family, &trusted_module::family};
    return {families, {}};
}

} // namespace kestro_sim
