// Counters of a healthy chassis stand still; reading does not clear them.
#include "sim/devices/management/bus_links.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

device_list devices_of_bus_links() {
    static constexpr const device_family *families[]{&fabric_link::family, &black_box::family, &smi_source::family,
                                                     &smi_bus::family, &smb_link::family};
    return {families, {}};
}

} // namespace kestro_sim
