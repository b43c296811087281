// How the backplane tells that it is read as it is.
#include "sim/devices/chassis/backplane.h"

#include "sim/core/catalogue.h"

namespace kestro_sim {

finding backplane::check_pins(board &b, const device_of<family> &which) {
    const uint32_t stuck = b.get(which, id_pins) ^ ~b.get(which, inverted_pins);
    finding found;
    for (uint32_t pin = 0; pin < pin_count; ++pin) {
        if ((stuck >> pin & 1U) != 0) {
            add_fault(found, "id pin " + std::to_string(pin) + " is stuck");
        }
    }
    return found;
}

device_list devices_of_backplane() {
    static constexpr const device_family *families[]{&backplane::family, &backplane_port::family};
    return {families, {}};
}

} // namespace kestro_sim
