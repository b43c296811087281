// A domain is switched at once.
#include "sim/devices/management/power_domain.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

device_list devices_of_power_domain() {
    static constexpr const device_family *families[]{&power_domain::family};
    return {families, {}};
}

} // namespace kestro_sim
