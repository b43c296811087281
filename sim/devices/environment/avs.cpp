// The regulator behind a controller is the rail's own: what was set there is what is measured here.
#include "sim/devices/environment/avs.h"

#include "sim/core/catalogue.h"
#include "sim/devices/environment/rail.h"

#include <cstdio>

namespace kestro_sim {

std::string avs::dump_line(board &b, const device_of<family> &controller) {
    const uint32_t number = b.get(controller, rail_number);
    const uint32_t measured = b.get(b.find_at<rail::family>(controller.instance, number), rail::millivolts);
    char line[128];
    const int length = snprintf(line, sizeof line, "avs %u: rail %u, target %u mV, measured %u mV, status 0x%02x\r\n",
                                controller.id, number, b.get(controller, target), measured, b.get(controller, status));
    return {line, static_cast<size_t>(length)};
}

device_list devices_of_avs() {
    static constexpr const device_family *families[]{&avs::family};
    return {families, {}};
}

} // namespace kestro_sim
